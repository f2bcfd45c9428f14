// The scope object that traces entry and exit.
#include "interfaces/cli/cliframework/TraceObject.h"

#include "tests/interfaces/cli/cliframework/CapturedLog.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cli::framework {
namespace {

using testing::CapturedLog;

TEST(TraceObject, LogsEntryWithItsPlaceAndExitWithout) {
    const CapturedLog log(3);
    {
        const TraceObject trace("interfaces/cli/cliframework/Parser.cpp", "parse", 12);
        ASSERT_EQ(1U, log.entries.size());
    }
    ASSERT_EQ(2U, log.entries.size());
    EXPECT_EQ(3, log.entries[0].getLevel());
    EXPECT_EQ("Entering parse", log.entries[0].getMessage());
    EXPECT_EQ("interfaces/cli/cliframework/Parser.cpp", log.entries[0].getFile());
    EXPECT_EQ(12, log.entries[0].getLine());
    EXPECT_EQ(3, log.entries[1].getLevel());
    EXPECT_EQ("Exiting parse", log.entries[1].getMessage());
    EXPECT_EQ("", log.entries[1].getFile());
    EXPECT_EQ(0, log.entries[1].getLine());
}

TEST(TraceObject, LogsExitWhenAnExceptionPasses) {
    const CapturedLog log(3);
    try {
        const TraceObject trace("file.cpp", "run", 1);
        throw std::runtime_error("passes");
    } catch (const std::runtime_error&) {
        EXPECT_EQ((std::vector<std::string>{"Entering run", "Exiting run"}), log.messages());
    }
}

TEST(TraceObject, LogsNothingAtTheInitialThreshold) {
    const CapturedLog log(2);
    { const TraceObject trace("file.cpp", "run", 1); }
    EXPECT_TRUE(log.entries.empty());
}

}  // namespace
}  // namespace cli::framework
