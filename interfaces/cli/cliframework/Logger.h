// The framework's own small logger: a text stream that hands entries to one channel.
#pragma once

#include "interfaces/cli/cliframework/LogChannelBase.h"
#include "interfaces/cli/cliframework/LogEntry.h"

#include <ostream>
#include <sstream>
#include <string>

namespace cli::framework {

/// Text is streamed in with `<<` and becomes one entry at `flushLine`. Without a channel every
/// entry is dropped. One thread; independent of the tool-kit's log.
class Logger : public std::ostringstream {
public:
    void setChannel(LogChannelBase* newChannel) { channel = newChannel; }

    LogChannelBase* getChannel() const { return channel; }

    void setLevel(int newLevel) { level = newLevel; }

    int getLevel() const { return level; }

    void setThreshold(int newThreshold) { threshold = newThreshold; }

    int getThreshold() const { return threshold; }

    /// Whether an entry of `entryLevel` would reach a channel: lets callers skip composing it.
    bool passes(int entryLevel) const { return channel != nullptr && entryLevel <= threshold; }

    void log(const LogEntry& entry);
    void log(int entryLevel, const std::string& message);
    // At the level of the trace, which the initial threshold drops.
    void log(const std::string& message);
    void log(const std::string& message, const std::string& file, int line);

    /// Logs the text streamed in so far as one entry at the current level, then empties the
    /// buffer and clears the stream's state.
    void flushLine();

    /// Writes one line at the current level: what was streamed in before, the text, a newline,
    /// `flushLine`. `compose` makes the text and is called only if the line passes.
    template <typename Compose>
    void writeLine(Compose compose) {
        if (passes(level)) {
            *this << compose() << std::endl;
            flushLine();
        } else if (!good() || tellp() > 0) {
            flushLine();
        }
    }

private:
    LogChannelBase* channel = nullptr;  ///< borrowed; null drops every entry
    int level = log_levels::LINE;       ///< of entries made from the stream's text
    int threshold = log_levels::LINE;   ///< highest level that passes
};

extern Logger logger;

}  // namespace cli::framework
