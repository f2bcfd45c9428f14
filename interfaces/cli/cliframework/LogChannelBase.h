// Where the framework's log entries go.
#pragma once

#include "interfaces/cli/cliframework/LogEntry.h"

namespace cli::framework {

class LogChannelBase {
public:
    virtual ~LogChannelBase() = default;
    virtual void log(const LogEntry& entry) = 0;
};

}  // namespace cli::framework
