#include "interfaces/cli/cliframework/StreamChannel.h"

namespace cli::framework {

void StreamChannel::log(const LogEntry& entry) {
    *stream << entry.getLevel() << ": " << entry.getMessage() << '\n';
}

}  // namespace cli::framework
