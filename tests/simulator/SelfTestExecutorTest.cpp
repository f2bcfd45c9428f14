#include "Simulation.h"

namespace orvel::simulator {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

AdminCommandFields selfTest(std::uint32_t code, std::uint32_t nsid = 0xFFFFFFFF) {
    return {.opcode = 0x14, .nsid = nsid, .cdw10 = code};
}

TEST(SelfTestExecutor, HasAnEmptyLogAtFirst) {
    Simulation simulation;
    const auto log = simulation.log(0x06, 564);
    EXPECT_EQ(get(log, 0, 4), 0U);
    EXPECT_EQ(get(log, 4, 1), 0x0FU);
    EXPECT_EQ(get(log, 4 + 19 * 28, 1), 0x0FU);
}

TEST(SelfTestExecutor, RunsUntilItsTimeIsUp) {
    struct Row {
        std::uint32_t code;
        seconds almost;
        std::uint64_t percent;
        std::uint64_t result;
    };

    constexpr Row ROWS[] = {{1, seconds(119), 99, 0x10}, {2, seconds(540), 90, 0x20}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.code);
        Simulation simulation;
        simulation.time = minutes(5);
        EXPECT_EQ(simulation.status(selfTest(row.code)), 0U);
        simulation.time += row.almost;
        const auto running = simulation.log(0x06, 564);
        EXPECT_EQ(get(running, 0, 1), row.code);
        EXPECT_EQ(get(running, 1, 1), row.percent);
        EXPECT_EQ(get(running, 4, 1), 0x0FU);

        simulation.time = minutes(5) + (row.code == 1 ? minutes(2) : minutes(10));
        const auto finished = simulation.log(0x06, 564);
        EXPECT_EQ(get(finished, 0, 2), 0U);
        EXPECT_EQ(get(finished, 4, 1), row.result);
        EXPECT_EQ(get(finished, 8, 8), 0x64U);
        EXPECT_EQ(get(finished, 32, 1), 0x0FU);
    }
}

TEST(SelfTestExecutor, RefusesASecondTestWhileOneIsRunning) {
    Simulation simulation;
    simulation.run(selfTest(2));
    const auto result = simulation.run(selfTest(1));
    EXPECT_EQ(simulation.status(selfTest(2)), 0x11DU);
    EXPECT_EQ(result.completion.status.type, 1);
    EXPECT_EQ(result.completion.status.code, 0x1D);
    EXPECT_FALSE(result.completion.doNotRetry);
    simulation.time = minutes(10);
    EXPECT_EQ(simulation.status(selfTest(1)), 0U);
}

TEST(SelfTestExecutor, IsAborted) {
    Simulation simulation;
    simulation.run(selfTest(2, 1));
    EXPECT_EQ(simulation.status(selfTest(0xF)), 0U);
    const auto log = simulation.log(0x06, 564);
    EXPECT_EQ(get(log, 0, 2), 0U);
    EXPECT_EQ(get(log, 4, 1), 0x21U);
}

TEST(SelfTestExecutor, HasNothingToAbortWhenNoneIsRunning) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(selfTest(0xF)), 0U);
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x0FU);
}

TEST(SelfTestExecutor, ComesToTheOutcomeOfTheDrive) {
    Simulation simulation;
    simulation.drive.selfTestOutcome = 7;
    simulation.run(selfTest(1));
    simulation.time = minutes(2);
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x17U);
    EXPECT_EQ(get(simulation.log(0x06, 564), 5, 1), 1U);  // the first of its segments
}

TEST(SelfTestExecutor, KeepsTwentyResultsNewestFirst) {
    Simulation simulation;
    for (int i = 0; i < 21; ++i) {
        simulation.run(selfTest(i == 0 ? 2 : 1));
        simulation.run(selfTest(0xF));
    }
    simulation.run(selfTest(2));
    simulation.time = minutes(10);
    const auto log = simulation.log(0x06, 564);
    EXPECT_EQ(simulation.drive.selfTestResults.size(), 20U);
    EXPECT_EQ(get(log, 4, 1), 0x20U);
    EXPECT_EQ(get(log, 32, 1), 0x11U);
    EXPECT_EQ(get(log, 536, 1), 0x11U);
}

TEST(SelfTestExecutor, TestsTheControllerAloneOrANamespace) {
    for (const std::uint32_t nsid : {0U, 1U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(nsid);
        Simulation simulation;
        EXPECT_EQ(simulation.status(selfTest(1, nsid)), 0U);
    }
}

TEST(SelfTestExecutor, Refuses) {
    const Refusal ROWS[] = {
        {"code 0", selfTest(0x0), 0x002},
        {"reserved code", selfTest(0x3), 0x002},
        {"vendor specific code", selfTest(0xE), 0x002},
        {"invalid namespace", selfTest(1, 5), 0x00B},
        {"detached namespace", selfTest(1, 2), 0x002},
        {"no namespace", selfTest(1, 3), 0x002},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields), row.status);
        EXPECT_FALSE(simulation.drive.runningSelfTest);
    }
}

}  // namespace
}  // namespace orvel::simulator
