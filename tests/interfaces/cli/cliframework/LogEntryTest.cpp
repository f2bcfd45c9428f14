// One record of the framework's log.
#include "interfaces/cli/cliframework/LogEntry.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(LogEntry, StartsAtTheLevelOfTheTrace) {
    const LogEntry entry;
    EXPECT_EQ(3, entry.getLevel());
    EXPECT_EQ("", entry.getMessage());
    EXPECT_EQ("", entry.getFile());
    EXPECT_EQ(0, entry.getLine());
}

TEST(LogEntry, TakesLevelAndMessageWithoutAPlace) {
    const LogEntry entry(1, "text");
    EXPECT_EQ(1, entry.getLevel());
    EXPECT_EQ("text", entry.getMessage());
    EXPECT_EQ("", entry.getFile());
    EXPECT_EQ(0, entry.getLine());
}

TEST(LogEntry, KeepsWhatItIsGiven) {
    LogEntry entry;
    entry.setLevel(-4);
    entry.setMessage("message");
    entry.setFile("file.cpp");
    entry.setLine(12);
    EXPECT_EQ(-4, entry.getLevel());
    EXPECT_EQ("message", entry.getMessage());
    EXPECT_EQ("file.cpp", entry.getFile());
    EXPECT_EQ(12, entry.getLine());
}

}  // namespace
}  // namespace cli::framework
