// The feature behind `version`: the tool's name, version, description and licence.
#pragma once

#include "interfaces/cli/cliframework/FeatureBase.h"

#include <memory>
#include <string>
#include <vector>

namespace cli::version {

class VersionFeature : public framework::FeatureBase {
public:
    VersionFeature();

    std::unique_ptr<framework::ResultBase> run(const framework::CommandSpec& command,
                                               const framework::ParsedCommand& parsed) override;
    void getPaths(std::vector<framework::CommandSpec>& commands) override;

private:
    static std::unique_ptr<framework::ResultBase>
    showVersion(const framework::ParsedCommand& parsed);

    std::string name;
};

}  // namespace cli::version
