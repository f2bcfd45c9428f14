#include "core/AsyncEngineCommand.h"

#include <tuple>
#include <typeinfo>

namespace orvel::core {

namespace {

std::unique_ptr<QueueableCommand> copyOf(const QueueableCommand& command) {
    std::unique_ptr<Command> copy = command.clone();
    auto* queueable = dynamic_cast<QueueableCommand*>(copy.get());
    if (queueable == nullptr) throw std::bad_cast();
    std::ignore = copy.release();
    return std::unique_ptr<QueueableCommand>(queueable);
}

}  // namespace

AsyncEngineCommand::AsyncEngineCommand(std::uint32_t owner, const QueueableCommand& command,
                                       const Payload& payload, std::uint32_t token)
    : token(token),
      owner(owner),
      command(copyOf(command)),
      payload(payload) {}

}  // namespace orvel::core
