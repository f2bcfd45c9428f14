#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

using std::chrono::minutes;

TEST(Smart, GivesDataAndThresholdsWithChecksums) {
    AtaSimulation simulation;
    const auto data = simulation.output(smart(0xD0));
    ASSERT_EQ(data.size(), 512U);
    EXPECT_EQ(get(data, 0, 2), 0x10U);
    EXPECT_EQ(get(data, 14, 1), 9U);
    EXPECT_TRUE(sumsToZero(data));
    const auto thresholds = simulation.output(smart(0xD1));
    ASSERT_EQ(thresholds.size(), 512U);
    EXPECT_EQ(get(thresholds, 2, 2), 0x0A05U);
    EXPECT_TRUE(sumsToZero(thresholds));
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

TEST(Smart, IsDisabledAlsoOverPowerCycles) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(smart(0xD9)), 0U);
    EXPECT_EQ(simulation.word(85), 0x0468U);
    simulation.controller.powerCycle();
    for (const TaskFile& fields : {smart(0xD0), smart(0xD1), smart(0xD4, 1), smart(0xD5, 0, 1),
                                   smart(0xD6, 0x80, 1), smart(0xD9), smart(0xDA)}) {
        SCOPED_TRACE(fields.feature);
        EXPECT_EQ(simulation.error(fields, core::Payload(512)), 0x04U);
    }
    EXPECT_EQ(simulation.error(smart(0xD8)), 0U);
    EXPECT_EQ(simulation.word(85), 0x0469U);
    EXPECT_EQ(simulation.error(smart(0xD0)), 0U);
}

TEST(Smart, Refuses) {
    const AtaRefusal ROWS[] = {
        {"no key", {.feature = 0xD0, .command = 0xB0}},
        {"half a key", {.feature = 0xD8, .lba = 0x4F00, .command = 0xB0}},
        {"autosave", smart(0xD2)},
        {"save attributes", smart(0xD3)},
        {"automatic off-line", smart(0xDB)},
        {"subcommand 0", smart(0x00)},
    };
    for (const AtaRefusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(Smart, ComparesPreFailAttributesWithTheirThresholds) {
    struct Row {
        const char* what;
        std::uint64_t flags;
        std::uint64_t current;
        std::uint64_t threshold;
        std::uint64_t lba;
    };

    constexpr Row ROWS[] = {
        {"above", 0x0033, 11, 10, 0xC24F00},       {"at", 0x0033, 10, 10, 0x2CF400},
        {"below", 0x0033, 1, 10, 0x2CF400},        {"advisory", 0x0032, 1, 10, 0xC24F00},
        {"always passes", 0x0033, 0, 0, 0xC24F00}, {"always fails", 0x0033, 0xFF, 0xFF, 0x2CF400},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        put(simulation.drive.smartData, 3, row.flags, 2);
        put(simulation.drive.smartData, 5, row.current, 1);
        put(simulation.drive.smartThresholds, 3, row.threshold, 1);
        const auto returned = simulation.run(smart(0xDA)).returned;
        EXPECT_EQ(returned.status, 0x50);
        EXPECT_EQ(returned.lba, row.lba);
    }
}

TEST(Smart, FindsAThresholdByItsIdentifier) {
    AtaSimulation simulation;
    put(simulation.drive.smartData, 353, 0x1, 1);      // the last attribute is pre-fail
    put(simulation.drive.smartThresholds, 2, 228, 1);  // and the first threshold is its
    EXPECT_EQ(simulation.run(smart(0xDA)).returned.lba, 0xC24F00U);
    put(simulation.drive.smartData, 353, 10, 1);
    put(simulation.drive.smartData, 351, 0x1, 1);
    EXPECT_EQ(simulation.run(smart(0xDA)).returned.lba, 0x2CF400U);
    put(simulation.drive.smartData, 350, 0, 1);  // unused
    EXPECT_EQ(simulation.run(smart(0xDA)).returned.lba, 0xC24F00U);
}

// Self-tests.

std::uint64_t testStatus(AtaSimulation& simulation) {
    return get(simulation.output(smart(0xD0)), 363, 1);
}

TEST(SelfTest, RunsInTheBackgroundByTheClock) {
    struct Row {
        std::uint64_t subcommand;
        int minutes;
    };

    for (const Row& row : {Row{0x01, 2}, Row{0x02, 300}, Row{0x03, 3}}) {
        SCOPED_TRACE(row.subcommand);
        AtaSimulation simulation;
        simulation.time = minutes(7);
        EXPECT_EQ(simulation.error(smart(0xD4, row.subcommand)), 0U);
        EXPECT_EQ(testStatus(simulation), 0xF9U);
        const std::chrono::milliseconds half = std::chrono::seconds(30 * row.minutes);
        simulation.time += half;
        EXPECT_EQ(testStatus(simulation), 0xF5U);
        simulation.time += half - std::chrono::milliseconds(1);
        EXPECT_EQ(testStatus(simulation), 0xF0U);
        EXPECT_TRUE(simulation.drive.selfTestResults.empty());
        simulation.time += std::chrono::milliseconds(1);
        EXPECT_EQ(testStatus(simulation), 0x00U);
        const auto log = simulation.output(smart(0xD5, 0x06, 1));
        EXPECT_EQ(get(log, 2, 1), row.subcommand);
        EXPECT_EQ(get(log, 3, 1), 0x00U);
        EXPECT_EQ(get(log, 4, 2), 0x1234U);
        EXPECT_EQ(get(log, 7, 4), 0U);
    }
}

TEST(SelfTest, TakesTheShortFormOfTheExtendedTime) {
    AtaSimulation simulation;
    put(simulation.drive.smartData, 373, 4, 1);
    simulation.run(smart(0xD4, 0x02));
    simulation.time = minutes(4);
    EXPECT_EQ(testStatus(simulation), 0x00U);
}

TEST(SelfTest, FailsInTheBackground) {
    AtaSimulation simulation;
    simulation.drive.selfTestOutcome = 7;
    simulation.drive.selfTestFailingLba = 0x123456789A;
    EXPECT_EQ(simulation.error(smart(0xD4, 0x01)), 0U);
    simulation.time = minutes(2);
    EXPECT_EQ(testStatus(simulation), 0x70U);
    EXPECT_EQ(get(simulation.output(smart(0xD5, 0x06, 1)), 7, 4), 0x3456789AU);
    EXPECT_EQ(get(simulation.output(readLog(0x07)), 9, 6), 0x123456789AU);
}

TEST(SelfTest, IsOverInCaptiveModeWhenTheCommandComesBack) {
    for (const std::uint64_t subcommand : {0x81U, 0x82U, 0x83U}) {
        SCOPED_TRACE(subcommand);
        AtaSimulation simulation;
        const auto returned = simulation.run(smart(0xD4, subcommand)).returned;
        EXPECT_EQ(returned.status, 0x50);
        EXPECT_EQ(returned.lba, 0xC24F00 | subcommand);
        EXPECT_EQ(get(simulation.output(readLog(0x07)), 4, 2), subcommand);
        EXPECT_EQ(testStatus(simulation), 0x00U);
    }
}

TEST(SelfTest, FailsInCaptiveMode) {
    AtaSimulation simulation;
    simulation.drive.selfTestOutcome = 5;
    const auto returned = simulation.run(smart(0xD4, 0x81)).returned;
    EXPECT_EQ(returned.status, 0x51);
    EXPECT_EQ(returned.error, 0x04);
    EXPECT_EQ(returned.lba, 0x2CF481U);
    EXPECT_EQ(get(simulation.output(readLog(0x07)), 4, 2), 0x5081U);
    EXPECT_EQ(testStatus(simulation), 0x50U);
}

TEST(SelfTest, EndsWithAnUnknownErrorForAnOutcomeThatThereIsNot) {
    for (const int outcome : {0x9, 0xF, 0x10, 0xFF}) {
        SCOPED_TRACE(outcome);
        AtaSimulation simulation;
        simulation.drive.selfTestOutcome = static_cast<std::uint8_t>(outcome);
        EXPECT_EQ(simulation.error(smart(0xD4, 0x81)), 0x04U);
        EXPECT_EQ(testStatus(simulation), 0x30U);
    }
}

TEST(SelfTest, IsAbortedByTheHost) {
    struct Row {
        const char* what;
        TaskFile fields;
    };

    const Row ROWS[] = {{"abort", smart(0xD4, 0x7F)},
                        {"another test", smart(0xD4, 0x02)},
                        {"off-line collection", smart(0xD4, 0x00)},
                        {"SMART DISABLE OPERATIONS", smart(0xD9)},
                        {"STANDBY IMMEDIATE", {.command = 0xE0}}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        simulation.run(smart(0xD4, 0x01));
        simulation.time = std::chrono::seconds(30);
        EXPECT_EQ(simulation.error(row.fields), 0U);
        simulation.run(smart(0xD8));
        EXPECT_EQ(get(simulation.output(readLog(0x07)), 4, 2), 0x1701U);
    }
}

TEST(SelfTest, GoesOnWithOtherCommands) {
    AtaSimulation simulation;
    simulation.run(smart(0xD4, 0x01));
    simulation.run(IDENTIFY);
    simulation.run(smart(0xD4, 0x04));  // refused
    EXPECT_EQ(testStatus(simulation), 0xF9U);
}

TEST(SelfTest, IsNotThereToBeAborted) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(smart(0xD4, 0x7F)), 0U);
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

TEST(SelfTest, IsInterruptedByAPowerCycle) {
    AtaSimulation simulation;
    simulation.run(smart(0xD4, 0x02));
    simulation.controller.powerCycle();
    EXPECT_EQ(testStatus(simulation), 0x29U);
    simulation.run(smart(0xD4, 0x01));
    simulation.time = minutes(2);
    simulation.controller.powerCycle();
    EXPECT_EQ(testStatus(simulation), 0x00U);
}

TEST(SelfTest, KeepsTheNewestResults) {
    AtaSimulation simulation;
    for (int i = 0; i < 30; ++i)
        simulation.run(smart(0xD4, i == 9 ? 0x81 : 0x82));
    EXPECT_EQ(simulation.drive.selfTestResults.size(), 21U);
    const auto log = simulation.output(smart(0xD5, 0x06, 1));
    EXPECT_EQ(get(log, 508, 1), 21U);
    EXPECT_EQ(get(log, 2, 1), 0x81U);
    EXPECT_EQ(get(log, 2 + 20 * 24, 1), 0x82U);
}

TEST(SelfTest, RefusesSubcommands) {
    for (const std::uint64_t subcommand : {0x04U, 0x05U, 0x40U, 0x7EU, 0x80U, 0x84U, 0xFFU}) {
        SCOPED_TRACE(subcommand);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(smart(0xD4, subcommand)), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(SelfTest, RefusesWhatTheDriveDoesNotSupport) {
    struct Row {
        const char* what;
        std::uint64_t subcommand;
        std::uint64_t capability;
        std::uint64_t word84;
        unsigned error;
    };

    constexpr Row ROWS[] = {
        {"nothing", 0x01, 0x30, 0x4023, 0x04},
        {"nothing off-line", 0x00, 0x30, 0x4023, 0x04},
        {"no self-test", 0x01, 0x21, 0x4023, 0x04},
        {"no extended self-test", 0x82, 0x21, 0x4023, 0x04},
        {"no abort", 0x7F, 0x21, 0x4023, 0x04},
        {"no self-test by IDENTIFY DEVICE", 0x01, 0x31, 0x4021, 0x04},
        {"no conveyance self-test", 0x03, 0x11, 0x4023, 0x04},
        {"short without conveyance", 0x01, 0x11, 0x4023, 0},
        {"collection only", 0x00, 0x01, 0x4021, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        put(simulation.drive.smartData, 367, row.capability, 1);
        put(simulation.drive.identifyDevice, 168, row.word84, 2);
        EXPECT_EQ(simulation.error(smart(0xD4, row.subcommand)), row.error);
    }
}

TEST(OfflineCollection, CompletesAtOnce) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(smart(0xD4, 0x00)), 0U);
    EXPECT_EQ(get(simulation.output(smart(0xD0)), 362, 1), 0x82U);
}

}  // namespace
}  // namespace orvel::simulator
