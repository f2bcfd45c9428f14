// One record of the framework's log.
#pragma once

#include <string>
#include <utility>

namespace cli::framework {

/// Levels are plain integers, a lower number being more serious: 0 a fault of the program's own,
/// 2 what is written to the stream, 3 the trace.
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
    int level = 3;
    std::string message;
    std::string file;
    int line = 0;
};

}  // namespace cli::framework
