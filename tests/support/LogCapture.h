// Reads back what a piece of code writes to the tool-kit's log.
#pragma once

#include "core/GlobalLogging.h"

#include <sstream>
#include <string>
#include <vector>

namespace tavik::testing {

/// Sends the log to a string for as long as it lives. One at a time, since the log is one.
class LogCapture {
public:
    LogCapture() {
        orvel::core::global_logging::initialize();
        orvel::core::global_logging::enableString();
        orvel::core::global_logging::enable();
    }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    ~LogCapture() { orvel::core::global_logging::disable(); }

    /// The lines so far, each without its time: "[info] Job.cpp(12) run: Type = Method" where
    /// `withLineNumbers` is set, else "[info] Job.cpp run: Type = Method".
    static std::vector<std::string> lines(bool withLineNumbers = false) {
        std::vector<std::string> all;
        std::istringstream log(orvel::core::global_logging::getString()->str());
        for (std::string line; std::getline(log, line);) {
            line.erase(0, line.find('['));
            const std::size_t open = line.find('(');
            const std::size_t close = line.find(") ");
            if (!withLineNumbers && open != std::string::npos && close != std::string::npos &&
                open < close) {
                line.erase(open, close + 1 - open);
            }
            all.push_back(line);
        }
        return all;
    }
};

}  // namespace tavik::testing
