// One record of the framework's log.
#pragma once

#include <string>
#include <utility>

namespace cli::framework {

namespace log_levels {
inline constexpr int FAULT = 0;  ///< of the program's own
inline constexpr int LINE = 2;   ///< what is written to the logger's stream
inline constexpr int TRACE = 3;
}  // namespace log_levels

/// A lower level is more serious.
class LogEntry {
public:
    LogEntry() = default;

    LogEntry(int level, std::string message) : level(level), message(std::move(message)) {}

    int getLevel() const { return level; }

    void setLevel(int value) { level = value; }

    const std::string& getMessage() const { return message; }

    void setMessage(std::string text) { message = std::move(text); }

    const std::string& getFile() const { return file; }

    void setFile(std::string path) { file = std::move(path); }

    int getLine() const { return line; }

    void setLine(int number) { line = number; }

private:
    int level = log_levels::TRACE;
    std::string message;
    std::string file;
    int line = 0;
};

}  // namespace cli::framework
