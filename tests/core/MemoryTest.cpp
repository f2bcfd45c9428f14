// The checked copy routine and the line that it logs.
#include "core/Memory.h"

#include "core/GlobalLogging.h"

#include <gtest/gtest.h>

#include <string>

namespace orvel::core {
namespace {

/// Logs into a string for the length of each test.
class Memory : public ::testing::Test {
protected:
    void SetUp() override {
        global_logging::initialize();
        global_logging::enableString();
        global_logging::enable();
    }

    void TearDown() override { global_logging::initialize(); }

    static std::string logged() { return global_logging::getString()->str(); }
};

TEST_F(Memory, CopiesAllBytes) {
    char target[4] = {'w', 'x', 'y', 'z'};
    EXPECT_EQ(memCopy(target, 4, "a\0c", 3), 0);
    EXPECT_EQ(std::string(target, 4), std::string("a\0cz", 4));
    EXPECT_EQ(logged(), "");
}

TEST_F(Memory, CopiesNoBytes) {
    char target[1] = {'x'};
    EXPECT_EQ(memCopy(target, 1, "a", 0), 0);
    EXPECT_EQ(memCopy(target, 0, "a", 0), 0);
    EXPECT_EQ(target[0], 'x');
    EXPECT_EQ(logged(), "");
}

TEST_F(Memory, RefusesNullPointers) {
    char target[1] = {'x'};
    EXPECT_EQ(memCopy(nullptr, 1, "a", 1), 22);
    EXPECT_EQ(memCopy(target, 1, nullptr, 1), 22);
    EXPECT_EQ(memCopy(target, 1, nullptr, 0), 22);
    EXPECT_EQ(memCopy(nullptr, 0, nullptr, 0), 22);
    EXPECT_EQ(target[0], 'x');
    EXPECT_EQ(logged(), "");
}

TEST_F(Memory, RefusesAndLogsASourceThatDoesNotFit) {
    char target[2] = {'x', 'y'};
    EXPECT_EQ(memCopy(target, 2, "abc", 3), 34);
    EXPECT_EQ(std::string(target, 2), "xy");
    const std::string line = logged();
    EXPECT_NE(line.find(" [error] Memory.cpp("), std::string::npos) << line;
    EXPECT_TRUE(line.ends_with(") memCopy: Invalid call to memCopy: source size (3) is greater "
                               "than destination size (2)\n"))
        << line;
}

TEST_F(Memory, LogsTheSizesBeforeItLooksAtThePointers) {
    char target[1] = {'x'};
    EXPECT_EQ(memCopy(target, 1, nullptr, 18446744073709551615U), 22);
    EXPECT_TRUE(logged().ends_with("source size (18446744073709551615) is greater than "
                                   "destination size (1)\n"))
        << logged();
    global_logging::clearString();
    EXPECT_EQ(memCopy(nullptr, 0, "a", 1), 22);
    EXPECT_TRUE(logged().ends_with("source size (1) is greater than destination size (0)\n"))
        << logged();
}

}  // namespace
}  // namespace orvel::core
