// A log channel that writes to an output stream.
#pragma once

#include "interfaces/cli/cliframework/LogChannelBase.h"

#include <ostream>

namespace cli::framework {

class StreamChannel : public LogChannelBase {
public:
    /// `stream` is borrowed and must outlive the channel.
    explicit StreamChannel(std::ostream* stream) : stream(stream) {}

    /// Writes the level, ": ", the message and a newline.
    void log(const LogEntry& entry) override;

private:
    std::ostream* stream;
};

}  // namespace cli::framework
