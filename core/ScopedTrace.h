// Traces entry to and exit from a scope in the tool-kit's log.
#pragma once

#include "core/GlobalLogging.h"

#include <string>

namespace orvel::core::global_logging {

/// Writes "file(line) function: Entering" and, at the end of the scope, "file function: Exiting",
/// both at debug severity.
class ScopedTrace {
public:
    explicit ScopedTrace(const Place& place);
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;
    ~ScopedTrace();

private:
    std::string file;
    std::string function;
};

}  // namespace orvel::core::global_logging
