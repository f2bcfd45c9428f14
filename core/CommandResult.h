// All that is known after a command was run.
#pragma once

#include "core/Command.h"
#include "core/CommandPath.h"
#include "core/Payload.h"
#include "core/ProtocolResult.h"
#include "core/Status.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <memory>
#include <string>

namespace orvel::core {

/// A record. Copies are deep for the three owned pointers, each through its `clone`, and share the
/// bytes of the payloads.
struct CommandResult {
    CommandResult() = default;
    CommandResult(const CommandResult& other);
    CommandResult(CommandResult&&) = default;
    CommandResult& operator=(const CommandResult& other);
    CommandResult& operator=(CommandResult&&) = default;
    ~CommandResult() = default;

    /// The result as lines of text, each with its newline. Throws core::Status by value, code 36,
    /// without a command path: such a result has no text form.
    std::string toString() const;

    std::unique_ptr<Command> command;  ///< a copy; may be null
    Status status;
    Payload inputPayload;
    Payload outputPayload;
    std::unique_ptr<ProtocolResult> protocolResult;  ///< may be null
    boost::posix_time::time_duration duration;       ///< in microseconds
    boost::posix_time::ptime startTime;              ///< UTC
    boost::posix_time::ptime endTime;                ///< UTC
    std::unique_ptr<CommandPath> commandPath;        ///< a copy; null if no path took the command
    bool quietToXml = false;                         ///< the XML form leaves both payloads out
};

}  // namespace orvel::core
