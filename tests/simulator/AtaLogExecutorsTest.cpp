#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

TaskFile smartReadLog(std::uint64_t address, std::uint16_t count = 1) {
    return smart(0xD5, address, count);
}

/// An error of LBA 123456789ABCh. All bytes of a command or an error are different.
StoredBytes makeError(std::uint8_t number) {
    StoredBytes error(124);
    for (std::uint32_t i = 0; i < 124; ++i)
        put(error, i, i, 1);
    put(error, 91, number, 1);  // ERROR field
    const std::uint64_t lba[] = {0xBC, 0x56, 0x9A, 0x34, 0x78, 0x12};
    for (std::uint32_t i = 0; i < 6; ++i)
        put(error, 94 + i, lba[i], 1);
    return error;
}

void addErrors(AtaSimulation& simulation, std::uint8_t count) {
    simulation.drive.errorCount = 0x0100;
    for (std::uint8_t i = 1; i <= count; ++i)
        simulation.drive.errorLog.push_front(makeError(i));
}

TEST(AtaLogs, AreListedInTheDirectories) {
    AtaSimulation simulation;
    const auto bySmart = simulation.output(smartReadLog(0));
    const auto general = simulation.output(readLog(0));
    ASSERT_EQ(bySmart.size(), 512U);
    ASSERT_EQ(general.size(), 512U);

    struct Row {
        std::uint32_t address;
        std::uint64_t smart;
        std::uint64_t general;
    };

    constexpr Row ROWS[] = {
        {0x00, 1, 1}, {0x01, 1, 0}, {0x02, 4, 0}, {0x03, 0, 5},   {0x04, 6, 6},   {0x05, 0, 0},
        {0x06, 1, 0}, {0x07, 0, 1}, {0x08, 0, 0}, {0x09, 0, 0},   {0x10, 0, 1},   {0x11, 0, 1},
        {0x12, 0, 0}, {0x30, 2, 2}, {0x7F, 0, 0}, {0x80, 16, 16}, {0x9F, 16, 16}, {0xA0, 2, 2},
        {0xA1, 0, 0}, {0xE0, 1, 1}, {0xE1, 1, 1}, {0xFF, 0, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.address);
        EXPECT_EQ(get(bySmart, 2 * row.address, 2), row.smart);
        EXPECT_EQ(get(general, 2 * row.address, 2), row.general);
        if (row.address == 0) continue;
        const auto last = static_cast<std::uint16_t>(row.smart);
        const bool isSctData = row.address == 0xE1;  // nothing to be read
        EXPECT_EQ(simulation.error(smartReadLog(row.address, last == 0 ? 1 : last)),
                  last == 0 || isSctData ? 0x04U : 0U);
        EXPECT_EQ(simulation.error(smartReadLog(row.address, last + 1)), 0x04U);
        const auto lastOfAll = static_cast<std::uint16_t>(row.general);
        EXPECT_EQ(simulation.error(readLog(row.address, lastOfAll == 0 ? 1 : lastOfAll)),
                  lastOfAll == 0 || isSctData ? 0x04U : 0U);
        EXPECT_EQ(simulation.error(readLog(row.address, lastOfAll + 1)), 0x04U);
    }
}

TEST(AtaLogs, AreThereOnlyWithTheCapability) {
    struct Row {
        const char* what;
        TaskFile fields;
        std::uint32_t word;
        std::uint64_t without;
    };

    const Row ROWS[] = {
        {"summary error log", smartReadLog(0x01), 84, 0x4022},
        {"comprehensive error log", smartReadLog(0x02), 84, 0x4022},
        {"extended error log", readLog(0x03), 84, 0x4022},
        {"self-test log", smartReadLog(0x06), 84, 0x4021},
        {"extended self-test log", readLog(0x07), 84, 0x4021},
        {"NCQ error log", readLog(0x10), 76, 0x0400},
        {"phy event counters", readLog(0x11), 76, 0x0100},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields), 0U);
        put(simulation.drive.identifyDevice, 2 * row.word, row.without, 2);
        EXPECT_EQ(simulation.error(row.fields), 0x04U);
    }
}

TEST(AtaLogs, AreReadByPages) {
    AtaSimulation simulation;
    EXPECT_EQ(get(simulation.output(readLog(0x01A0)), 0, 2), 0xBEEFU);
    EXPECT_EQ(simulation.output(readLog(0x00A0, 2)).size(), 1024U);
    EXPECT_EQ(get(simulation.output(readLog(0x00A0, 2)), 512, 2), 0xBEEFU);
    EXPECT_EQ(get(simulation.output(smartReadLog(0xA0, 2)), 512, 2), 0xBEEFU);
    const auto byDma =
        simulation.output({.count = 1, .lba = 0x01A0, .command = 0x47, .is48Bit = true});
    EXPECT_EQ(get(byDma, 0, 2), 0xBEEFU);
    simulation.drive.otherLogs[0xA1].assign(0x102, StoredBytes(512));
    put(simulation.drive.otherLogs[0xA1][0x101], 0, 0xCAFE, 2);
    EXPECT_EQ(get(simulation.output(readLog(0x01000001A1)), 0, 2), 0xCAFEU);
}

TEST(AtaLogs, RefuseRangesBeyondTheirEnd) {
    const AtaRefusal ROWS[] = {
        {"no pages", readLog(0xA0, 0)},
        {"no pages by SMART", smartReadLog(0xA0, 0)},
        {"behind the end", readLog(0x02A0)},
        {"over the end", readLog(0x01A0, 2)},
        {"far behind the end", readLog(0x01000000A0)},
        {"very many", readLog(0x00A0, 0xFFFF)},
        {"all at the very end", readLog(0xFF0000FFA0, 0xFFFF)},
        {"second directory", readLog(0x0100)},
    };
    for (const AtaRefusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields), 0x04U);
    }
}

TEST(AtaLogs, OfHostsAreWritten) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.output(readLog(0x80, 16)), core::Payload(16 * 512));
    core::Payload two = blockOf({0x1111});
    two.append(blockOf({0x2222}));
    EXPECT_EQ(simulation.error(writeLog(0x0E80, 2), two), 0U);
    EXPECT_EQ(simulation.error(smart(0xD6, 0x80, 1), blockOf({0x3333})), 0U);
    simulation.controller.powerCycle();
    const auto log = simulation.output(readLog(0x80, 16));
    EXPECT_EQ(get(log, 0, 2), 0x3333U);
    EXPECT_EQ(get(log, 14 * 512, 2), 0x1111U);
    EXPECT_EQ(get(log, 15 * 512, 2), 0x2222U);
    EXPECT_EQ(simulation.output(readLog(0x81, 16)), core::Payload(16 * 512));
    EXPECT_EQ(simulation.error(writeLog(0x9F), two), 0U);
    EXPECT_EQ(get(simulation.output(smartReadLog(0x9F)), 0, 2), 0x1111U);
}

TEST(AtaLogs, OfHostsFillUpWhatADescriptionHas) {
    AtaSimulation simulation;
    simulation.drive.otherLogs[0x85] = {StoredBytes(blockOf({0x1234})), StoredBytes(3)};
    EXPECT_EQ(get(simulation.output(readLog(0x85, 16)), 0, 2), 0x1234U);
    EXPECT_EQ(simulation.error(writeLog(0x0F85), blockOf({0x5678})), 0U);
    const auto log = simulation.output(readLog(0x85, 16));
    EXPECT_EQ(get(log, 0, 2), 0x1234U);
    EXPECT_EQ(get(log, 15 * 512, 2), 0x5678U);
}

TEST(AtaLogs, RefuseToBeWritten) {
    struct Row {
        const char* what;
        TaskFile fields;
        std::uint32_t bytes;
    };

    const Row ROWS[] = {
        {"no pages", writeLog(0x80, 0), 512},
        {"over the end", writeLog(0x0F80, 2), 1024},
        {"over the end by SMART", smart(0xD6, 0x80, 17), 17 * 512},
        {"short data", writeLog(0x80, 2), 1023},
        {"directory", writeLog(0x00), 512},
        {"statistics", writeLog(0x04), 512},
        {"selective self-test log by SMART", smart(0xD6, 0x09, 1), 512},
        {"vendor's log", writeLog(0xA0), 512},
        {"below the hosts' logs", writeLog(0x7F), 512},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields, core::Payload(row.bytes)), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(DeviceStatisticsLog, HasThePagesThatTheDriveKeeps) {
    AtaSimulation simulation;
    const auto log = simulation.output(readLog(0x04, 6));
    EXPECT_EQ(get(log, 0, 2), 1U);
    EXPECT_EQ(get(log, 2, 1), 0U);
    EXPECT_EQ(get(log, 8, 5), 0x05010003U);  // three: 0, 1 and 5
    EXPECT_EQ(get(log, 512 + 8, 4), 7U);
    EXPECT_EQ(get(log, 4 * 512, 8), 0U);
    EXPECT_EQ(get(log, 5 * 512 + 2, 1), 5U);
    EXPECT_EQ(get(simulation.output(readLog(0x0504)), 88, 1), 75U);
    simulation.drive.deviceStatistics.clear();
    EXPECT_EQ(simulation.error(readLog(0x04)), 0x04U);
}

TEST(IdentifyDeviceLog, HasACopyOfTheData) {
    AtaSimulation simulation;
    const auto log = simulation.output(readLog(0x30, 2));
    EXPECT_EQ(get(log, 0, 8), 1U);
    EXPECT_EQ(get(log, 8, 4), 0x00010002U);  // two: 0 and 1
    const core::Payload copy(log.data() + 512, 512);
    EXPECT_EQ(copy, simulation.output(IDENTIFY));
}

TEST(NcqErrorLog, HasNoError) {
    AtaSimulation simulation;
    const auto log = simulation.output(readLog(0x10));
    EXPECT_EQ(get(log, 0, 1), 0x80U);
    EXPECT_TRUE(sumsToZero(log));
}

TEST(PhyEventCounters, AreReadAndReset) {
    AtaSimulation simulation;
    const auto log = simulation.output(readLog(0x11));
    EXPECT_EQ(get(log, 4, 6), 0x2001U);
    EXPECT_EQ(get(log, 10, 6), 0x0005200AU);
    EXPECT_EQ(get(log, 16, 2), 0U);
    EXPECT_TRUE(sumsToZero(log));
    const TaskFile reset{.feature = 1, .count = 1, .lba = 0x11, .command = 0x2F, .is48Bit = true};
    EXPECT_EQ(get(simulation.output(reset), 10, 6), 0x0005200AU);
    EXPECT_EQ(get(simulation.output(reset), 10, 6), 0x200AU);
    simulation.drive.phyEventCounters[0x001] = 0x123456789;
    EXPECT_EQ(get(simulation.output(readLog(0x11)), 4, 6), 0xFFFFFFFF2001U);
}

TEST(PhyEventCounters, AreNotResetByOtherReads) {
    AtaSimulation simulation;
    simulation.run({.feature = 1, .count = 1, .lba = 0x30, .command = 0x2F, .is48Bit = true});
    simulation.run({.feature = 1, .count = 2, .lba = 0x11, .command = 0x2F, .is48Bit = true});
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

TEST(SummaryErrorLog, HasTheNewestErrorsInTheShortForm) {
    AtaSimulation simulation;
    addErrors(simulation, 7);
    const auto log = simulation.output(smartReadLog(0x01));
    EXPECT_EQ(get(log, 0, 2), 0x0501U);
    EXPECT_EQ(get(log, 452, 2), 0x0100U);
    EXPECT_TRUE(sumsToZero(log));
    EXPECT_EQ(get(log, 2 + 61, 1), 3U);           // the oldest of them
    EXPECT_EQ(get(log, 2 + 4 * 90 + 61, 1), 7U);  // the newest
    const std::uint8_t command[] = {18, 19, 21, 23, 25, 27, 29, 30, 32, 33, 34, 35};
    EXPECT_EQ(core::Payload(log.data() + 2 + 12, 12), core::Payload(command, 12));
    const std::uint8_t error[] = {0,   3,   92,  0xBC, 0x9A, 0x78, 100, 101, 102, 103,
                                  104, 105, 106, 107,  108,  109,  110, 111, 112, 113,
                                  114, 115, 116, 117,  118,  119,  120, 121, 122, 123};
    EXPECT_EQ(core::Payload(log.data() + 2 + 60, 30), core::Payload(error, 30));
}

TEST(ComprehensiveErrorLog, GoesOnOverItsPages) {
    AtaSimulation simulation;
    addErrors(simulation, 25);
    const auto log = simulation.output(smartReadLog(0x02, 4));
    EXPECT_EQ(get(log, 0, 2), 0x1401U);
    EXPECT_EQ(get(log, 2 + 61, 1), 6U);
    EXPECT_EQ(get(log, 512, 2), 0U);
    EXPECT_EQ(get(log, 512 + 452, 2), 0U);
    EXPECT_EQ(get(log, 512 + 2 + 61, 1), 11U);
    EXPECT_EQ(get(log, 3 * 512 + 2 + 4 * 90 + 61, 1), 25U);
}

TEST(ExtendedErrorLog, GoesOnOverItsPages) {
    AtaSimulation simulation;
    addErrors(simulation, 6);
    const auto log = simulation.output(readLog(0x03, 5));
    EXPECT_EQ(get(log, 0, 4), 0x00060001U);
    EXPECT_EQ(get(log, 500, 2), 0x0100U);
    EXPECT_EQ(get(log, 512, 4), 0U);
    EXPECT_EQ(get(log, 512 + 500, 2), 0U);
    const core::Payload stored = makeError(5);
    EXPECT_EQ(core::Payload(log.data() + 512 + 4, 124), stored);
    EXPECT_EQ(get(log, 512 + 4 + 124 + 91, 1), 6U);
    EXPECT_EQ(get(log, 512 + 4 + 2 * 124 + 91, 1), 0U);
    for (std::uint32_t page = 0; page < 5; ++page)
        EXPECT_TRUE(sumsToZero(core::Payload(log.data() + page * 512, 512)));
}

TEST(ErrorLogs, AreEmptyOnADriveThatMadeNoErrors) {
    AtaSimulation simulation;
    EXPECT_EQ(get(simulation.output(smartReadLog(0x01)), 0, 8), 1U);
    EXPECT_EQ(get(simulation.output(readLog(0x03)), 0, 8), 1U);
}

TEST(SelfTestLogs, HaveTheNewestResultLast) {
    AtaSimulation simulation;
    simulation.run(smart(0xD4, 0x81));
    simulation.run(smart(0xD4, 0x82));
    const auto log = simulation.output(smartReadLog(0x06));
    EXPECT_EQ(get(log, 0, 2), 1U);
    EXPECT_EQ(get(log, 508, 1), 2U);
    EXPECT_EQ(get(log, 2, 1), 0x81U);
    EXPECT_EQ(get(log, 26, 1), 0x82U);
    EXPECT_TRUE(sumsToZero(log));
    const auto extended = simulation.output(readLog(0x07));
    EXPECT_EQ(get(extended, 0, 4), 0x00020001U);
    EXPECT_EQ(get(extended, 4, 1), 0x81U);
    EXPECT_EQ(get(extended, 30, 1), 0x82U);
    EXPECT_TRUE(sumsToZero(extended));
}

TEST(SelfTestLogs, ShowAllOfAResult) {
    AtaSimulation simulation;
    StoredBytes result(26);
    for (std::uint32_t i = 0; i < 26; ++i)
        put(result, i, i + 1, 1);
    simulation.drive.selfTestResults = {result};
    const auto log = simulation.output(smartReadLog(0x06));
    const std::uint8_t expected[] = {1,  2,  3,  4,  5,  6,  7,  8,  9,  12, 13, 14,
                                     15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26};
    EXPECT_EQ(core::Payload(log.data() + 2, 24), core::Payload(expected, 24));
    const core::Payload stored = result;
    EXPECT_EQ(core::Payload(simulation.output(readLog(0x07)).data() + 4, 26), stored);
}

TEST(SelfTestLogs, FitTheirPage) {
    AtaSimulation simulation;
    for (int i = 0; i < 21; ++i)
        simulation.run(smart(0xD4, i == 2 ? 0x81 : 0x82));
    const auto extended = simulation.output(readLog(0x07));
    EXPECT_EQ(get(extended, 2, 2), 19U);
    EXPECT_EQ(get(extended, 4, 1), 0x81U);
    EXPECT_EQ(get(extended, 4 + 18 * 26, 1), 0x82U);
}

}  // namespace
}  // namespace orvel::simulator
