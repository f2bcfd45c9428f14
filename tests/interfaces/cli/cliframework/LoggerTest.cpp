// The framework's logger: its threshold, its channel and its stream.
#include "interfaces/cli/cliframework/Logger.h"

#include "interfaces/cli/cliframework/StreamChannel.h"

#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <vector>

namespace cli::framework {
namespace {

class RecordingChannel : public LogChannelBase {
public:
    void log(const LogEntry& entry) override { entries.push_back(entry); }

    std::vector<LogEntry> entries;
};

TEST(Logger, StartsWithoutAChannelAtLevelTwo) {
    const Logger log;
    EXPECT_EQ(nullptr, log.getChannel());
    EXPECT_EQ(2, log.getLevel());
    EXPECT_EQ(2, log.getThreshold());
}

TEST(Logger, IsOneObjectOfTheFrameworkWithoutAChannel) {
    EXPECT_EQ(nullptr, logger.getChannel());
    EXPECT_EQ(2, logger.getThreshold());
}

TEST(Logger, DropsEntriesAboveItsThreshold) {
    std::ostringstream stream;
    StreamChannel channel(&stream);
    Logger log;
    log.setChannel(&channel);
    EXPECT_EQ(&channel, log.getChannel());
    log.log(2, "text");
    log.log(3, "dropped");
    log.log(LogEntry(3, "dropped"));
    log.log(LogEntry(0, "fault"));
    EXPECT_EQ("2: text\n"
              "0: fault\n",
              stream.str());
}

TEST(Logger, PassesTheTraceOnceTheThresholdIsRaised) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log.log("dropped");
    log.setThreshold(3);
    EXPECT_EQ(3, log.getThreshold());
    log.log("message");
    log.log("placed", "file.cpp", 12);
    ASSERT_EQ(2U, channel.entries.size());
    EXPECT_EQ(3, channel.entries[0].getLevel());
    EXPECT_EQ("message", channel.entries[0].getMessage());
    EXPECT_EQ("", channel.entries[0].getFile());
    EXPECT_EQ(0, channel.entries[0].getLine());
    EXPECT_EQ(3, channel.entries[1].getLevel());
    EXPECT_EQ("placed", channel.entries[1].getMessage());
    EXPECT_EQ("file.cpp", channel.entries[1].getFile());
    EXPECT_EQ(12, channel.entries[1].getLine());
}

TEST(Logger, TellsWhetherALevelPasses) {
    RecordingChannel channel;
    Logger log;
    EXPECT_FALSE(log.passes(0));
    log.setChannel(&channel);
    EXPECT_TRUE(log.passes(0));
    EXPECT_TRUE(log.passes(2));
    EXPECT_FALSE(log.passes(3));
}

TEST(Logger, DropsEverythingWithoutAChannel) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log.setChannel(nullptr);
    log.log(0, "dropped");
    EXPECT_TRUE(channel.entries.empty());
}

TEST(Logger, EmptiesItsBufferAlsoWithoutAChannel) {
    Logger log;
    log << "text" << std::endl;
    EXPECT_EQ("text\n", log.str());
    log.flushLine();
    EXPECT_EQ("", log.str());
}

TEST(Logger, MakesOneEntryOfWhatWasStreamedIn) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log << "count: " << 12 << std::endl;
    log.flushLine();
    ASSERT_EQ(1U, channel.entries.size());
    EXPECT_EQ(2, channel.entries[0].getLevel());
    EXPECT_EQ("count: 12\n", channel.entries[0].getMessage());
}

TEST(Logger, GivesStreamedTextItsCurrentLevel) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log.setLevel(1);
    EXPECT_EQ(1, log.getLevel());
    log << "one";
    log.flushLine();
    log.setLevel(3);
    log << "dropped";
    log.flushLine();
    ASSERT_EQ(1U, channel.entries.size());
    EXPECT_EQ(1, channel.entries[0].getLevel());
}

TEST(Logger, CanBeWrittenToAgainAfterAFailedInsertion) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log << "before";
    log.setstate(std::ios::failbit);
    log << "lost";
    log.flushLine();
    EXPECT_TRUE(log.good());
    log << "after";
    log.flushLine();
    ASSERT_EQ(2U, channel.entries.size());
    EXPECT_EQ("before", channel.entries[0].getMessage());
    EXPECT_EQ("after", channel.entries[1].getMessage());
}

TEST(Logger, WritesALineWithItsNewline) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log.writeLine([] { return std::string("text"); });
    ASSERT_EQ(1U, channel.entries.size());
    EXPECT_EQ(2, channel.entries[0].getLevel());
    EXPECT_EQ("text\n", channel.entries[0].getMessage());
    EXPECT_EQ("", log.str());
}

TEST(Logger, ComposesALineOnlyIfItPasses) {
    RecordingChannel channel;
    Logger log;
    bool composed = false;
    const auto compose = [&composed] {
        composed = true;
        return std::string("text");
    };
    log.writeLine(compose);
    EXPECT_FALSE(composed);
    log.setChannel(&channel);
    log.setThreshold(1);
    log.writeLine(compose);
    EXPECT_FALSE(composed);
    EXPECT_TRUE(channel.entries.empty());
}

TEST(Logger, ForgetsWhatWasStreamedInBeforeALineThatDoesNotPass) {
    RecordingChannel channel;
    Logger log;
    log.setChannel(&channel);
    log.setThreshold(1);
    log << "before ";
    log.writeLine([] { return std::string("dropped"); });
    EXPECT_EQ("", log.str());
    log.setstate(std::ios::failbit);
    log.writeLine([] { return std::string("dropped"); });
    EXPECT_TRUE(log.good());
    log.setThreshold(2);
    log.writeLine([] { return std::string("text"); });
    ASSERT_EQ(1U, channel.entries.size());
    EXPECT_EQ("text\n", channel.entries[0].getMessage());
}

}  // namespace
}  // namespace cli::framework
