#include "interfaces/cli/cliframework/TraceObject.h"

#include "interfaces/cli/cliframework/Logger.h"

namespace cli::framework {

// The names are kept as they came: no text is composed unless it will be written.

TraceObject::TraceObject(const char* sourcePath, const char* functionName, int line)
    : functionName(functionName) {
    if (logger.passes(log_levels::TRACE)) {
        logger.log("Entering " + std::string(functionName), sourcePath, line);
    }
}

TraceObject::~TraceObject() {
    if (logger.passes(log_levels::TRACE)) logger.log("Exiting " + std::string(functionName));
}

}  // namespace cli::framework
