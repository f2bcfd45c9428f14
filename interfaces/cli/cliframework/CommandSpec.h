// The declaration of one command: its verb, the parts it takes, and how they are described.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace cli::framework {

/// A plain value, copied freely. Within one list of parts, names are unique (exact comparison).
class CommandSpec {
public:
    CommandSpec() = default;
    CommandSpec(std::int32_t id, std::string name, std::string verb, std::string helpText);

    /// Appends a copy of `part`, unless `list` holds a part of that name, which then stays as it
    /// is. Returns the part that the list holds.
    static CommandPart& addPart(std::vector<CommandPart>& list, const CommandPart& part);
    static CommandPart& addPart(std::vector<CommandPart>& list, CommandPart&& part);

    CommandPart& addOption(const CommandPart& part);
    CommandPart& addTarget(const CommandPart& part);
    CommandPart& addProperty(const CommandPart& part);

    CommandPart& addOption(const std::string& name, bool required, const std::string& valueText,
                           bool valueRequired, const std::string& helpText,
                           const std::string& shortName);
    CommandPart& addTarget(const std::string& name, bool required, const std::string& valueText,
                           bool valueRequired, const std::string& helpText);
    CommandPart& addProperty(const std::string& name, bool required, const std::string& valueText,
                             bool valueRequired, const std::string& helpText);

    /// Text form of one list: each part followed by one blank.
    static std::string listToString(const std::vector<CommandPart>& list, bool isProperty);

    /// Text form of the command, as logs, usage lines and suggestions show it.
    std::string asStr() const;

    std::int32_t id = 0;               ///< what the feature's `run` switches on
    std::string name;                  ///< short name, such as "EnableLog"
    std::string verb;                  ///< one of the shared verb constants
    std::vector<CommandPart> options;  ///< in declared order, like the two lists below
    std::vector<CommandPart> targets;
    std::vector<CommandPart> properties;
    std::string helpText;
};

}  // namespace cli::framework
