// The element of an asynchronous engine's queues.
#pragma once

#include "core/Payload.h"
#include "core/QueueableCommand.h"
#include "core/Status.h"

#include <cstdint>
#include <memory>

namespace orvel::core {

/// A command on its way through an engine, with its data and its outcome. One place at a time owns
/// it: the submitter, a queue, or the thread that works on it.
class AsyncEngineCommand {
public:
    /// Takes a private copy of `command`, by its `clone`, and shares the payload's bytes. `owner`
    /// and `token` are the submitter's and the concrete engine's business.
    /// Throws std::bad_cast if the clone is no `QueueableCommand`.
    AsyncEngineCommand(std::uint32_t owner, const QueueableCommand& command, const Payload& payload,
                       std::uint32_t token);

    AsyncEngineCommand(const AsyncEngineCommand&) = delete;
    AsyncEngineCommand& operator=(const AsyncEngineCommand&) = delete;
    virtual ~AsyncEngineCommand() = default;

    std::uint32_t getToken() const { return token; }

    std::uint32_t getOwner() const { return owner; }

    /// Never null.
    const std::unique_ptr<QueueableCommand>& getCommand() const { return command; }

    const Payload& getPayload() const { return payload; }

    void setPayload(const Payload& newPayload) { payload = newPayload; }

    /// Time taken, in the unit that the concrete engine reports.
    double getDuration() const { return duration; }

    void setDuration(double newDuration) { duration = newDuration; }

    /// The outcome; the send operation sets it in place.
    Status& getStatus() { return status; }

    const Status& getStatus() const { return status; }

private:
    std::uint32_t token;
    std::uint32_t owner;
    std::unique_ptr<QueueableCommand> command;
    Payload payload;
    double duration = 0;
    Status status;
};

}  // namespace orvel::core
