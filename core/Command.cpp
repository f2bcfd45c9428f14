#include "core/Command.h"

#include <utility>

namespace orvel::core {

Command::Command(std::string commandSetName, std::string name)
    : commandSetName(std::move(commandSetName)),
      name(std::move(name)) {}

void Command::assign(const Command& other) {
    commandSetName = other.commandSetName;
    name = other.name;
}

}  // namespace orvel::core
