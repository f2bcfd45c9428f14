// A feature of declared commands that writes down what is asked of it.
#pragma once

#include "interfaces/cli/cliframework/FeatureBase.h"
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli::framework::testing {

class FakeFeature : public FeatureBase {
public:
    /// `journal` is borrowed and outlives the feature.
    FakeFeature(std::string name, std::vector<std::string>& journal, std::vector<CommandSpec> specs)
        : name(std::move(name)),
          journal(journal),
          specs(std::move(specs)) {}

    ~FakeFeature() override { journal.push_back(name + " destroyed"); }

    std::unique_ptr<ResultBase> run(const CommandSpec& command,
                                    const ParsedCommand& parsed) override {
        journal.push_back(name + " runs " + command.name + " of " + parsed.verb);
        return std::make_unique<SimpleResult>("ran " + command.name);
    }

    void getPaths(std::vector<CommandSpec>& commands) override {
        commands.insert(commands.end(), specs.begin(), specs.end());
    }

private:
    std::string name;
    std::vector<std::string>& journal;
    std::vector<CommandSpec> specs;
};

}  // namespace cli::framework::testing
