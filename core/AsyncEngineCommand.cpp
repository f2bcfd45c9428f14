#include "core/AsyncEngineCommand.h"

namespace orvel::core {

namespace {

std::unique_ptr<QueueableCommand> copyOf(const QueueableCommand& command) {
    std::unique_ptr<Command> copy = command.clone();
    auto* queueable = &dynamic_cast<QueueableCommand&>(*copy);
    copy.release();
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
