#include "core/QueueableCommand.h"

#include <utility>

namespace orvel::core {

QueueableCommand::QueueableCommand(std::string commandSetName, std::string name)
    : Command(std::move(commandSetName), std::move(name)) {}

void QueueableCommand::assign(const QueueableCommand& other) {
    completionRecord = other.completionRecord;
    Command::assign(other);
}

}  // namespace orvel::core
