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
    CommandSpec(std::int32_t id, Text name, Text verb, Text helpText);

    /// Appends a copy of `part`, unless `list` holds a part of that name, which then stays as it
    /// is. Returns the part that the list holds.
    static CommandPart& addPart(std::vector<CommandPart>& list, const CommandPart& part);
    static CommandPart& addPart(std::vector<CommandPart>& list, CommandPart&& part);

    CommandPart& addOption(const CommandPart& part);
    CommandPart& addTarget(const CommandPart& part);
    CommandPart& addProperty(const CommandPart& part);

    CommandPart& addOption(Text name, bool required, Text valueText, bool valueRequired,
                           Text helpText, Text shortName);
    CommandPart& addTarget(Text name, bool required, Text valueText, bool valueRequired,
                           Text helpText);
    CommandPart& addProperty(Text name, bool required, Text valueText, bool valueRequired,
                             Text helpText);

    /// Text form of one list: each part followed by one blank.
    static std::string listToString(const std::vector<CommandPart>& list, bool isProperty);

    /// Text form of the command, as logs, usage lines and suggestions show it.
    std::string asStr() const;

    std::int32_t id = 0;               ///< what the feature's `run` switches on
    Text name;                         ///< short name, such as "EnableLog"
    Text verb;                         ///< one of the shared verb constants
    std::vector<CommandPart> options;  ///< in declared order, like the two lists below
    std::vector<CommandPart> targets;
    std::vector<CommandPart> properties;
    Text helpText;
};

}  // namespace cli::framework
