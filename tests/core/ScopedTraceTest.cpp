// Entry and exit lines.
#include "core/ScopedTrace.h"

#include <gtest/gtest.h>

#include <ios>
#include <sstream>
#include <streambuf>
#include <string>

namespace orvel::core::global_logging {
namespace {

class ScopedTraceTest : public ::testing::Test {
protected:
    void SetUp() override {
        initialize();
        enableString();
        enable();
    }

    void TearDown() override { initialize(); }

    /// What was logged since the last call, without the time in front of each line.
    static std::string takeMessages() {
        std::istringstream lines(getString()->str());
        clearString();
        std::string messages;
        for (std::string line; std::getline(lines, line);) {
            messages += line.substr(line.find(' ') + 1) + "\n";
        }
        return messages;
    }
};

TEST_F(ScopedTraceTest, TracesEntryWithTheLineAndExitWithout) {
    {
        const ScopedTrace trace({"jobs/sub/Job.cpp", 42, "orvel::interfaces::orveli::Job::run"});
        EXPECT_EQ(takeMessages(), "[debug] Job.cpp(42) run: Entering\n");
    }
    EXPECT_EQ(takeMessages(), "[debug] Job.cpp run: Exiting\n");
}

TEST_F(ScopedTraceTest, TracesNestedScopesInReverse) {
    {
        const ScopedTrace outer({"a.cpp", 1, "outer"});
        const ScopedTrace inner({"b.cpp", 2, "inner"});
    }
    EXPECT_EQ(takeMessages(), "[debug] a.cpp(1) outer: Entering\n"
                              "[debug] b.cpp(2) inner: Entering\n"
                              "[debug] b.cpp inner: Exiting\n"
                              "[debug] a.cpp outer: Exiting\n");
}

TEST_F(ScopedTraceTest, KeepsTheNamesItWasGiven) {
    std::string file = "path/File.cpp";
    std::string function = "Class::work";
    {
        const ScopedTrace trace({file.c_str(), 7, function.c_str()});
        file.assign("gone");
        function.assign("gone");
        takeMessages();
    }
    EXPECT_EQ(takeMessages(), "[debug] File.cpp work: Exiting\n");
}

TEST_F(ScopedTraceTest, TakesThePlaceItStandsIn) {
    const ScopedTrace trace(ORVEL_HERE);
    EXPECT_TRUE(takeMessages().starts_with("[debug] ScopedTraceTest.cpp("));
}

TEST_F(ScopedTraceTest, LosesAnExitLineThatCanNotBeWritten) {
    struct : std::streambuf {
    } full;  // takes no character

    std::ios& log = *getString();
    std::streambuf* usual = nullptr;
    {
        const ScopedTrace trace({"a.cpp", 1, "work"});
        takeMessages();
        usual = log.rdbuf(&full);
        log.exceptions(std::ios::badbit);
    }
    EXPECT_TRUE(log.bad());
    log.exceptions(std::ios::goodbit);
    log.rdbuf(usual);
    EXPECT_EQ(takeMessages(), "");
    writePlain(boost::log::trivial::debug, "later");
    EXPECT_EQ(takeMessages(), "[debug] later\n");
}

TEST_F(ScopedTraceTest, WritesNothingAboveDebugSeverity) {
    setSeverity(boost::log::trivial::info);
    { const ScopedTrace trace({"a.cpp", 1, "work"}); }
    EXPECT_EQ(takeMessages(), "");
}

}  // namespace
}  // namespace orvel::core::global_logging
