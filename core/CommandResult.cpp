#include "core/CommandResult.h"

#include "core/CoreStatuses.h"
#include "core/Strings.h"

#include <boost/date_time/posix_time/posix_time.hpp>

#include <cstddef>
#include <utility>

namespace orvel::core {

namespace {

constexpr std::size_t BYTES_PER_LINE = 16;

template <class Cloneable>
std::unique_ptr<Cloneable> cloneOf(const std::unique_ptr<Cloneable>& original) {
    return original ? original->clone() : nullptr;
}

std::string payloadText(const char* title, const Payload& payload) {
    return title + (" (" + strings::toString(payload.size())) + " bytes)\n" +
           strings::hexDump(payload, BYTES_PER_LINE) + "\n\n";
}

}  // namespace

CommandResult::CommandResult(const CommandResult& other)
    : command(cloneOf(other.command)),
      status(other.status),
      inputPayload(other.inputPayload),
      outputPayload(other.outputPayload),
      protocolResult(cloneOf(other.protocolResult)),
      duration(other.duration),
      startTime(other.startTime),
      endTime(other.endTime),
      commandPath(cloneOf(other.commandPath)),
      quietToXml(other.quietToXml) {}

CommandResult& CommandResult::operator=(const CommandResult& other) {
    return *this = CommandResult(other);
}

std::string CommandResult::toString() const {
    if (!commandPath) throw statuses::invalidArguments();
    std::string text;
    if (command) text += command->toString() + "\n";
    text += payloadText("Input Payload", inputPayload);
    if (protocolResult) text += protocolResult->toString() + "\n";
    text += payloadText("Output Payload", outputPayload);
    text += "Status Code: " + strings::toString(status.getCode()) + "\n";
    text += "Status Category: " + strings::toString(status.getCategory()) + "\n";
    text += "Status Message: " + status.getMessage() + "\n";
    text += "Duration: " + boost::posix_time::to_simple_string(duration) + "\n";
    text += "Command Path Name: " + commandPath->getName() + "\n";
    text +=
        "Command Path Timeout (seconds): " + strings::toString(commandPath->getTimeout()) + "\n";
    return text;
}

}  // namespace orvel::core
