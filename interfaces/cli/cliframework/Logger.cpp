#include "interfaces/cli/cliframework/Logger.h"

namespace cli::framework {

Logger logger;

void Logger::log(const LogEntry& entry) {
    if (passes(entry.getLevel())) channel->log(entry);
}

void Logger::log(int entryLevel, const std::string& message) {
    log(LogEntry(entryLevel, message));
}

void Logger::log(const std::string& message) {
    log(log_levels::TRACE, message);
}

void Logger::log(const std::string& message, const std::string& file, int line) {
    LogEntry entry(log_levels::TRACE, message);
    entry.setFile(file);
    entry.setLine(line);
    log(entry);
}

void Logger::flushLine() {
    log(level, str());
    str({});
    clear();
}

}  // namespace cli::framework
