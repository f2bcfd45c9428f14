#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

const TaskFile SCT_WRITE = writeLog(0xE0);
const TaskFile SCT_STATUS = readLog(0xE0);
const TaskFile SCT_DATA = readLog(0xE1);

struct SctSimulation : AtaSimulation {
    /// The value that a command returns.
    unsigned value(const std::vector<std::uint16_t>& words) {
        const auto returned = run(SCT_WRITE, blockOf(words)).returned;
        EXPECT_EQ(returned.status, 0x50);
        return (returned.count & 0xFFU) | static_cast<unsigned>(returned.lba & 0xFF) << 8;
    }

    /// The extended status code, from the registers and from the status response alike.
    unsigned extendedStatus(const std::vector<std::uint16_t>& words) {
        const auto returned = run(SCT_WRITE, blockOf(words)).returned;
        const auto status = get(output(SCT_STATUS), 14, 2);
        EXPECT_EQ(returned.error, status == 0 ? 0x00 : 0x04);
        EXPECT_EQ(status, status == 0 ? 0 : returned.count | returned.lba << 8);
        return static_cast<unsigned>(status);
    }
};

TEST(SctStatus, TellsTheStateOfTheDrive) {
    SctSimulation simulation;
    const auto status = simulation.output(SCT_STATUS);
    ASSERT_EQ(status.size(), 512U);
    EXPECT_EQ(get(status, 0, 2), 3U);
    EXPECT_EQ(get(status, 10, 1), 0U);
    EXPECT_EQ(get(status, 200, 1), 35U);
    EXPECT_EQ(get(status, 214, 2), 0xC24FU);
    simulation.run({.command = 0xE0});
    EXPECT_EQ(get(simulation.output(SCT_STATUS), 10, 1), 1U);
    simulation.run(smart(0xD4, 0x01));
    EXPECT_EQ(get(simulation.output(SCT_STATUS), 10, 1), 3U);
    put(simulation.drive.smartData, 5, 1, 1);
    EXPECT_EQ(get(simulation.output(SCT_STATUS), 214, 2), 0x2CF4U);
}

TEST(SctStatus, RemembersTheLastCommand) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({4, 2, 0x0099}), 0x000DU);
    auto status = simulation.output(SCT_STATUS);
    EXPECT_EQ(get(status, 16, 2), 4U);
    EXPECT_EQ(get(status, 18, 2), 2U);
    EXPECT_EQ(simulation.extendedStatus({3, 2, 1}), 0U);
    status = simulation.output(SCT_STATUS);
    EXPECT_EQ(get(status, 16, 2), 3U);
    EXPECT_EQ(get(status, 18, 2), 2U);
}

TEST(SctStatus, IsNotPartOfWhatTheDriveKeeps) {
    SctSimulation simulation;
    const AtaDrive before = simulation.drive;
    EXPECT_EQ(simulation.extendedStatus({3, 2, 1}), 0U);
    EXPECT_EQ(simulation.extendedStatus({5, 1, 2}), 0U);
    EXPECT_NE(core::Payload(simulation.drive.volatileState.sctData).size(), 0U);
    EXPECT_EQ(simulation.drive, before);
    EXPECT_EQ(simulation.drive.sctStatus, before.sctStatus);
}

TEST(SctStatus, StartsAnewWithPower) {
    SctSimulation simulation;
    simulation.run(SCT_WRITE, blockOf({4, 2, 0x0099}));
    put(simulation.drive.sctStatus, 206, 8, 4);
    put(simulation.drive.sctStatus, 210, 9, 4);
    simulation.controller.powerCycle();
    const auto status = simulation.output(SCT_STATUS);
    EXPECT_EQ(get(status, 14, 6), 0U);
    EXPECT_EQ(get(status, 200, 3), 0x232323U);
    EXPECT_EQ(get(status, 206, 8), 0U);
}

TEST(Sct, IsReachedBySmartLogsAsWell) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.error(smart(0xD6, 0xE0, 1), blockOf({5, 1, 2})), 0U);
    EXPECT_EQ(get(simulation.output(smart(0xD5, 0xE0, 1)), 16, 2), 5U);
    EXPECT_EQ(get(simulation.output(smart(0xD5, 0xE1, 1)), 0, 2), 2U);
}

TEST(Sct, RefusesWhatTheDriveDoesNotSupport) {
    struct Row {
        const char* what;
        std::uint64_t word206;
        std::uint16_t action;
    };

    constexpr Row ROWS[] = {{"error recovery control", 0x0031, 3},
                            {"feature control", 0x0029, 4},
                            {"data tables", 0x0019, 5},
                            {"long sector access", 0x0039, 1},
                            {"write same", 0x0039, 2},
                            {"action 0", 0x0039, 0},
                            {"action 0104h", 0x0039, 0x0104}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        SctSimulation simulation;
        put(simulation.drive.identifyDevice, 412, row.word206, 2);
        EXPECT_EQ(simulation.extendedStatus({row.action, 2, 2}), 0x0010U);
    }
}

TEST(Sct, IsNotThereWithoutTheCapability) {
    SctSimulation simulation;
    put(simulation.drive.identifyDevice, 412, 0x0038, 2);
    EXPECT_EQ(simulation.error(SCT_WRITE, blockOf({3, 2, 1})), 0x04U);
    EXPECT_EQ(simulation.error(SCT_STATUS), 0x04U);
    EXPECT_EQ(simulation.error(SCT_DATA), 0x04U);
}

TEST(Sct, TakesOnePageOfAddressE0) {
    AtaSimulation simulation;
    const core::Payload block = blockOf({5, 1, 2});
    EXPECT_EQ(simulation.error(SCT_WRITE, core::Payload(511)), 0x04U);
    EXPECT_EQ(simulation.error(writeLog(0xE0, 2), core::Payload(1024)), 0x04U);
    EXPECT_EQ(simulation.error(writeLog(0xE0, 0), block), 0x04U);
    EXPECT_EQ(simulation.error(writeLog(0x01E0), block), 0x04U);
    EXPECT_EQ(simulation.error(writeLog(0xE1), block), 0x04U);
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

// Error recovery control: function, selection, limit.

TEST(SctErrorRecovery, SetsAndReturnsTimers) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.value({3, 2, 1}), 0U);
    EXPECT_EQ(simulation.extendedStatus({3, 1, 1, 70}), 0U);
    EXPECT_EQ(simulation.extendedStatus({3, 1, 2, 0x1234}), 0U);
    EXPECT_EQ(simulation.value({3, 2, 1}), 70U);
    EXPECT_EQ(simulation.value({3, 2, 2}), 0x1234U);
    EXPECT_EQ(simulation.extendedStatus({3, 1, 2, 0}), 0U);
    EXPECT_EQ(simulation.value({3, 2, 2}), 0U);
}

TEST(SctErrorRecovery, GoesBackWithPower) {
    SctSimulation simulation;
    simulation.drive.recoveryTimersAtPowerOn = {20, 30};
    simulation.run(SCT_WRITE, blockOf({3, 1, 1, 70}));
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.value({3, 2, 1}), 20U);
    EXPECT_EQ(simulation.value({3, 2, 2}), 30U);
}

TEST(SctErrorRecovery, Refuses) {
    struct Row {
        std::vector<std::uint16_t> words;
        unsigned status;
    };

    const Row ROWS[] = {{{3, 0, 1}, 0x0004},   {{3, 3, 1}, 0x0004},     {{3, 2, 0}, 0x0005},
                        {{3, 2, 3}, 0x0005},   {{3, 1, 3, 70}, 0x0005}, {{3, 1, 1, 9}, 0x0006},
                        {{3, 1, 2, 9}, 0x0007}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(&row - ROWS);
        SctSimulation simulation;
        EXPECT_EQ(simulation.extendedStatus(row.words), row.status);
        EXPECT_EQ(simulation.drive.recoveryTimers, makeAtaDrive().recoveryTimers);
    }
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({3, 1, 1, 10}), 0U);
}

// Feature control: function, feature, state, options.

TEST(SctFeatures, ReturnDefaults) {
    struct Row {
        std::uint16_t feature;
        unsigned state;
    };

    constexpr Row ROWS[] = {{0x0001, 1}, {0x0002, 1}, {0x0003, 10}, {0xD000, 3}, {0xD001, 512},
                            {0xD002, 0}, {0xD003, 0}, {0xD004, 3},  {0xD005, 1}, {0xD006, 0}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.feature);
        SctSimulation simulation;
        EXPECT_EQ(simulation.value({4, 2, row.feature}), row.state);
        EXPECT_EQ(simulation.value({4, 3, row.feature}), 0U);
    }
}

TEST(SctFeatures, TakeTheirStatesOnly) {
    struct Row {
        std::uint16_t feature;
        std::uint16_t low;
        std::uint16_t high;
        std::vector<std::uint16_t> wrong;
    };

    const Row ROWS[] = {
        {0x0001, 1, 3, {0, 4, 0x0102}},
        {0x0002, 1, 2, {0, 3}},
        {0x0003, 1, 0xFFFF, {0}},
        {0xD000, 0, 6, {7, 0xFFFF}},
        {0xD001, 512, 4096, {0, 511, 513, 1024, 4097}},
        {0xD002, 0, 2, {3}},
        {0xD003, 0, 3, {4}},
        {0xD004, 1, 3, {0, 4}},
        {0xD005, 0, 1, {2}},
        {0xD006, 1, 1, {0, 2}},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.feature);
        SctSimulation simulation;
        for (const std::uint16_t state : row.wrong) {
            EXPECT_EQ(simulation.extendedStatus({4, 1, row.feature, state, 1}), 0x000EU) << state;
        }
        EXPECT_EQ(simulation.drive.sctFeatures, makeAtaDrive().sctFeatures);
        EXPECT_EQ(simulation.extendedStatus({4, 1, row.feature, row.low, 1}), 0U);
        EXPECT_EQ(simulation.extendedStatus({4, 1, row.feature, row.high, 1}), 0U);
    }
}

TEST(SctFeatures, AreForgottenOrPreserved) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD000, 5, 1}), 0U);
    EXPECT_EQ(simulation.value({4, 3, 0xD000}), 1U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD000, 6, 0}), 0U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD002, 2, 0}), 0U);
    EXPECT_EQ(simulation.value({4, 2, 0xD000}), 6U);
    EXPECT_EQ(simulation.value({4, 2, 0xD002}), 2U);
    EXPECT_EQ(simulation.value({4, 3, 0xD002}), 0U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.value({4, 2, 0xD000}), 5U);
    EXPECT_EQ(simulation.value({4, 2, 0xD002}), 0U);
}

TEST(SctFeatures, Refuse) {
    struct Row {
        const char* what;
        std::vector<std::uint16_t> words;
        unsigned status;
    };

    const Row ROWS[] = {
        {"function 0", {4, 0, 1}, 0x000C},
        {"function 4", {4, 4, 1}, 0x000C},
        {"feature 4", {4, 2, 4}, 0x000D},
        {"vendor's feature D007h", {4, 1, 0xD007, 1, 1}, 0x000D},
        {"options of feature 0", {4, 3, 0}, 0x000D},
        {"option bit 1", {4, 1, 1, 2, 2}, 0x000F},
        {"option bits 1 and 0", {4, 1, 1, 2, 3}, 0x000F},
        {"for the next power-on, not preserved", {4, 1, 0xD003, 1, 0}, 0x000F},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        SctSimulation simulation;
        EXPECT_EQ(simulation.extendedStatus(row.words), row.status);
        EXPECT_EQ(simulation.drive.sctFeatures, makeAtaDrive().sctFeatures);
    }
}

TEST(SctFeatures, RefuseWhatOneDriveLacks) {
    SctSimulation simulation;
    simulation.drive.sctFeatures.erase(0xD002);
    EXPECT_EQ(simulation.extendedStatus({4, 2, 0xD002}), 0x000DU);
}

TEST(SctFeatures, WaitForTheNextPowerOn) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD004, 2, 1}), 0U);
    EXPECT_EQ(simulation.value({4, 2, 0xD004}), 3U);
    EXPECT_EQ(simulation.word(77), 0x0006U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD004, 1, 1}), 0U);
    EXPECT_EQ(simulation.value({4, 2, 0xD004}), 3U);
    EXPECT_EQ(simulation.value({4, 3, 0xD004}), 1U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.value({4, 2, 0xD004}), 1U);
    EXPECT_EQ(simulation.word(77), 0x0002U);
}

TEST(SctFeatures, ForceTheWriteCache) {
    SctSimulation simulation;
    const TaskFile on = setFeatures(0x02);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 1, 3, 1}), 0U);
    EXPECT_EQ(simulation.word(85), 0x0449U);
    EXPECT_EQ(simulation.error(on), 0x04U);
    EXPECT_EQ(simulation.error(setFeatures(0x82)), 0x04U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(85), 0x0449U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 1, 1, 0}), 0U);
    EXPECT_EQ(simulation.word(85), 0x0449U);
    EXPECT_EQ(simulation.error(on), 0U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 1, 3, 0}), 0U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 1, 2, 0}), 0U);
    EXPECT_EQ(simulation.word(85), 0x0469U);
    EXPECT_EQ(simulation.error(on), 0x04U);
}

TEST(SctFeatures, ShowTheSectorSizeInIdentifyDevice) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD001, 4096, 0}), 0U);
    EXPECT_EQ(simulation.word(106), 0x6003U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(106), 0x4000U);
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD001, 4096, 1}), 0U);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(106), 0x6003U);
}

TEST(SctFeatures, ResetTheTimedWorkload) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({4, 1, 0xD006, 1, 1}), 0U);
    const auto data = simulation.output(smart(0xD0));
    EXPECT_EQ(get(data, 43, 6), 0xFFFFU);
    EXPECT_EQ(get(data, 55, 6), 0xFFFFU);
    EXPECT_EQ(get(data, 355, 6), 0U);
    EXPECT_EQ(simulation.value({4, 2, 0xD006}), 0U);
    EXPECT_EQ(simulation.value({4, 3, 0xD006}), 0U);
}

// Data tables: function, table.

TEST(SctDataTable, GivesTheTemperatureHistory) {
    SctSimulation simulation;
    const auto returned = simulation.run(SCT_WRITE, blockOf({5, 1, 2})).returned;
    EXPECT_EQ(returned.status, 0x50);
    EXPECT_EQ(returned.lba, 0x000100U);  // one page
    const auto table = simulation.output(SCT_DATA);
    ASSERT_EQ(table.size(), 512U);
    EXPECT_EQ(get(table, 0, 2), 2U);
    EXPECT_EQ(get(table, 2, 2), 1U);
    EXPECT_EQ(get(table, 4, 2), 10U);
    EXPECT_EQ(get(table, 6, 4), 0xFBFB4B46U);  // limits: -5, -5, 75, 70
    EXPECT_EQ(get(table, 30, 2), 478U);
    EXPECT_EQ(get(table, 32, 2), 2U);
    EXPECT_EQ(get(table, 34, 4), 0x802322FDU);
    EXPECT_EQ(get(table, 511, 1), 0x80U);
}

TEST(SctDataTable, HasTheIntervalThatWasSet) {
    SctSimulation simulation;
    simulation.run(SCT_WRITE, blockOf({4, 1, 3, 0x0102, 0}));
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    EXPECT_EQ(get(simulation.output(SCT_DATA), 4, 2), 0x0102U);
}

TEST(SctDataTable, BeginsAnewWithAnotherInterval) {
    SctSimulation simulation;
    simulation.run(SCT_WRITE, blockOf({4, 1, 3, 10, 0}));
    EXPECT_EQ(simulation.drive.temperatureHistory.size(), 3U) << "it is the same interval";
    simulation.run(SCT_WRITE, blockOf({4, 1, 3, 60, 0}));
    EXPECT_TRUE(simulation.drive.temperatureHistory.empty());
    simulation.run(SCT_WRITE, blockOf({4, 1, 2, 2, 0}));
    simulation.drive.temperatureHistory = {20};
    simulation.run(SCT_WRITE, blockOf({4, 1, 2, 1, 0}));
    EXPECT_EQ(simulation.drive.temperatureHistory.size(), 1U) << "another feature";
    simulation.controller.powerCycle();
    EXPECT_TRUE(simulation.drive.temperatureHistory.empty()) << "60 was not to be preserved";
    simulation.drive.temperatureHistory = {20};
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.drive.temperatureHistory.size(), 1U);
}

TEST(SctDataTable, LeavesOutWhatNobodyKnows) {
    SctSimulation simulation;
    simulation.drive.temperatureHistory.clear();
    simulation.drive.deviceStatistics.clear();
    simulation.drive.sctFeatures.clear();
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    const auto table = simulation.output(SCT_DATA);
    EXPECT_EQ(get(table, 4, 2), 1U);
    EXPECT_EQ(get(table, 6, 4), 0x80808046U);
    EXPECT_EQ(get(table, 32, 4), 0x80800000U);
}

TEST(SctDataTable, KeepsTheNewestTemperatures) {
    SctSimulation simulation;
    simulation.drive.temperatureHistory.assign(600, 20);
    simulation.drive.temperatureHistory[0] = 1;
    simulation.drive.temperatureHistory[477] = 2;
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    const auto table = simulation.output(SCT_DATA);
    EXPECT_EQ(get(table, 32, 3), 0x0201DDU);
    EXPECT_EQ(get(table, 511, 1), 1U);
}

TEST(SctDataTable, IsReadOnce) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.error(SCT_DATA), 0x04U);
    EXPECT_EQ(get(simulation.output(SCT_STATUS), 14, 2), 0x000BU);
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    EXPECT_EQ(simulation.error(SCT_DATA), 0U);
    EXPECT_EQ(simulation.error(SCT_DATA), 0x04U);
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    simulation.run(SCT_WRITE, blockOf({3, 2, 1}));
    EXPECT_EQ(simulation.error(SCT_DATA), 0x04U);
    simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(SCT_DATA), 0x04U);
}

TEST(SctDataTable, IsReadWhole) {
    for (const std::uint16_t pages : std::vector<std::uint16_t>{0, 2}) {
        SCOPED_TRACE(pages);
        SctSimulation simulation;
        simulation.run(SCT_WRITE, blockOf({5, 1, 2}));
        EXPECT_EQ(simulation.error(readLog(0xE1, pages)), 0x04U);
        EXPECT_EQ(get(simulation.output(SCT_STATUS), 14, 2), 0x0003U);
    }
}

TEST(SctDataTable, Refuses) {
    SctSimulation simulation;
    EXPECT_EQ(simulation.extendedStatus({5, 2, 2}), 0x0001U);
    EXPECT_EQ(simulation.extendedStatus({5, 0, 2}), 0x0001U);
    EXPECT_EQ(simulation.extendedStatus({5, 1, 1}), 0x0011U);
    EXPECT_EQ(simulation.extendedStatus({5, 1, 0}), 0x0011U);
}

}  // namespace
}  // namespace orvel::simulator
