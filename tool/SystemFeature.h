// The tool's own settings: shows them, changes them, and repairs their file at every start.
#pragma once

#include "core/AttributeTable.h"
#include "interfaces/cli/cliframework/FeatureBase.h"

#include <memory>
#include <string>
#include <vector>

namespace tavik::system {

class SystemFeature : public cli::framework::FeatureBase {
public:
    /// Reads the configuration file; a file that is absent or not valid is written anew with the
    /// defaults, without a word.
    SystemFeature();

    std::unique_ptr<cli::framework::ResultBase>
    run(const cli::framework::CommandSpec& command,
        const cli::framework::ParsedCommand& parsed) override;
    void getPaths(std::vector<cli::framework::CommandSpec>& commands) override;

private:
    void loadConfig();
    std::unique_ptr<cli::framework::ResultBase>
    setProperty(orvel::core::Attribute descriptor, const cli::framework::ParsedCommand& parsed);
    std::unique_ptr<cli::framework::ResultBase>
    writeConfig(const orvel::core::Attribute& descriptor);
    std::unique_ptr<cli::framework::ResultBase>
    showConfig(const cli::framework::ParsedCommand& parsed) const;

    /// Writes `configObject` over the file; false if that failed.
    bool saveConfig() const;

    std::string name;
    orvel::core::AttributeTable configObject;
};

}  // namespace tavik::system
