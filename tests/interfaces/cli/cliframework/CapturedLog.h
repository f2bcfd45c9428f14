// A channel on the framework's logger for the length of one test.
#pragma once

#include "interfaces/cli/cliframework/Logger.h"

#include <vector>

namespace cli::framework::testing {

class CapturedLog : public LogChannelBase {
public:
    explicit CapturedLog(int threshold) {
        logger.setChannel(this);
        logger.setThreshold(threshold);
    }

    CapturedLog(const CapturedLog&) = delete;
    CapturedLog& operator=(const CapturedLog&) = delete;

    ~CapturedLog() override {
        logger.setChannel(nullptr);
        logger.setThreshold(2);
    }

    void log(const LogEntry& entry) override { entries.push_back(entry); }

    std::vector<std::string> messages() const {
        std::vector<std::string> texts;
        for (const LogEntry& entry : entries) {
            texts.push_back(entry.getMessage());
        }
        return texts;
    }

    std::vector<LogEntry> entries;
};

}  // namespace cli::framework::testing
