// The feature behind `help`, the line without arguments, and the option -help.
#pragma once

#include "interfaces/cli/cliframework/FeatureBase.h"

#include <string>

namespace cli::framework {

/// Selects the commands to show; their layout is `HelpResult`'s.
class HelpFeature : public FeatureBase {
public:
    /// The registered feature, named "Help".
    HelpFeature();

    /// Stands in for the feature of `command`, to show the help of that command.
    explicit HelpFeature(CommandSpec command);

    std::unique_ptr<ResultBase> run(const CommandSpec& command,
                                    const ParsedCommand& parsed) override;
    void getPaths(std::vector<CommandSpec>& commands) override;

    /// Whether `filter` occurs in `commandName`, in any case.
    static bool matchCommandName(const std::string& filter, const std::string& commandName);

private:
    std::string name;
    CommandSpec command;
};

}  // namespace cli::framework
