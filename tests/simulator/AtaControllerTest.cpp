#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

TEST(AtaController, RefusesWhatItDoesNotKnow) {
    for (const int code :
         {0x00, 0x06, 0x20, 0x25, 0x35, 0x57, 0x5C, 0x93, 0xA1, 0xB1, 0xE7, 0xF8, 0xF9, 0xFF}) {
        SCOPED_TRACE(code);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error({.command = static_cast<std::uint8_t>(code)}), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(AtaController, RefusesCommandsWithoutTheCapability) {
    struct Row {
        const char* what;
        TaskFile fields;
        std::uint32_t word;
        std::uint64_t without;
    };

    constexpr Row ROWS[] = {
        {"SMART", {.feature = 0xDA, .lba = 0xC24F00, .command = 0xB0}, 82, 0x046A},
        {"READ LOG EXT", {.count = 1, .command = 0x2F, .is48Bit = true}, 84, 0x4003},
        {"READ LOG DMA EXT", {.count = 1, .command = 0x47, .is48Bit = true}, 119, 0x4110},
        {"WRITE LOG EXT", {.count = 1, .lba = 0x80, .command = 0x3F, .is48Bit = true}, 84, 0x4003},
        {"FLUSH CACHE EXT", {.command = 0xEA, .is48Bit = true}, 83, 0x4409},
        {"GET NATIVE MAX ADDRESS EXT", {.command = 0x78, .is48Bit = true}, 119, 0x4018},
        {"READ NATIVE MAX ADDRESS EXT", {.command = 0x27, .is48Bit = true}, 82, 0x006B},
        {"SET MAX ADDRESS EXT", {.command = 0x37, .is48Bit = true}, 82, 0x006B},
        {"SANITIZE STATUS EXT", {.command = 0xB4, .is48Bit = true}, 59, 0xE400},
        {"DOWNLOAD MICROCODE", {.feature = 0x03, .count = 2, .command = 0x92}, 83, 0x6408},
        {"SECURITY SET PASSWORD", {.command = 0xF1}, 82, 0x0469},
        {"SECURITY UNLOCK", {.command = 0xF2}, 82, 0x0469},
        {"SECURITY ERASE PREPARE", {.command = 0xF3}, 82, 0x0469},
        {"SECURITY ERASE UNIT", {.command = 0xF4}, 82, 0x0469},
        {"SECURITY FREEZE LOCK", {.command = 0xF5}, 82, 0x0469},
        {"SECURITY DISABLE PASSWORD", {.command = 0xF6}, 82, 0x0469},
    };
    core::Payload input = core::Payload(1024);
    putText(input, 0, "TAVIKSIMNEW00001");
    put(input, 16, 1024, 4);
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        // What these need besides the capability.
        simulation.drive.security.isEnabled = true;
        simulation.drive.volatileState.isErasePrepared = true;
        put(simulation.drive.security.userPassword, 0, get(input, 2, 8), 8);
        put(simulation.drive.security.userPassword, 8, get(input, 10, 8), 8);
        put(simulation.drive.security.userPassword, 16, 0, 2);
        simulation.drive.volatileState.hasReadNativeMaxAddress = true;
        AtaSimulation without;
        without.drive = simulation.drive;
        EXPECT_EQ(simulation.error(row.fields, input), 0U);
        put(without.drive.identifyDevice, 2 * row.word, row.without, 2);
        EXPECT_EQ(without.error(row.fields, input), 0x04U);
    }
}

TEST(AtaController, AnswersWithRegisters) {
    AtaSimulation simulation;
    const auto done = simulation.run({.device = 0xA0, .command = 0xE5}).returned;
    EXPECT_EQ(done.status, 0x50);
    EXPECT_EQ(done.error, 0x00);
    EXPECT_EQ(done.count, 0xFF);
    EXPECT_EQ(done.lba, 0U);
    EXPECT_EQ(done.device, 0xA0);
    EXPECT_FALSE(done.is48Bit);
    const auto refused = simulation.run({.command = 0x3F, .is48Bit = true});
    EXPECT_EQ(refused.returned.status, 0x51);
    EXPECT_EQ(refused.returned.error, 0x04);
    EXPECT_TRUE(refused.returned.is48Bit);
    EXPECT_EQ(refused.output.size(), 0U);
}

TEST(AtaController, LooksAtNoMoreThanTheCommandTakes) {
    AtaSimulation simulation;
    // The upper bytes of a 28-bit command mean nothing.
    EXPECT_EQ(simulation.error({.feature = 0x0103,
                                .count = 0x0103,
                                .lba = 0xFF0000C24F00,
                                .command = 0xEF,
                                .is48Bit = true}),
              0x04U);
    EXPECT_EQ(simulation.error({.feature = 0x01DA,
                                .count = 0x0100,
                                .lba = 0xFF0000C24F00,
                                .command = 0xB0,
                                .is48Bit = true}),
              0U);
    // Without its upper bytes this is page 0 of the directory, one page.
    const TaskFile cut{.count = 0x0101, .lba = 0x0100000000, .command = 0x2F};
    EXPECT_EQ(simulation.output(cut).size(), 512U);
}

TEST(AtaController, GivesNoMoreThanTheHostHasRoomFor) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(IDENTIFY, {}, 512).output.size(), 512U);
    EXPECT_EQ(simulation.run(IDENTIFY, {}, 100).output.size(), 100U);
    EXPECT_EQ(simulation.run(IDENTIFY, {}, 0).output.size(), 0U);
}

TEST(IdentifyDevice, GivesTheDataWithItsIntegrityWord) {
    AtaSimulation simulation;
    const auto data = simulation.output(IDENTIFY);
    ASSERT_EQ(data.size(), 512U);
    EXPECT_EQ(textAt(data, 46, 8), "WF000010");
    EXPECT_EQ(get(data, 510, 1), 0xA5U);
    EXPECT_TRUE(sumsToZero(data));
    EXPECT_EQ(get(data, 256, 2), 0x0021U);
    EXPECT_EQ(get(simulation.drive.identifyDevice, 510, 2), 0U);
}

TEST(IdentifyDevice, TellsTheStateOfSecurity) {
    AtaSimulation simulation;
    AtaSecurity& security = simulation.drive.security;
    security.isEnabled = true;
    EXPECT_EQ(simulation.word(128), 0x0023U);
    EXPECT_EQ(simulation.word(85), 0x046BU);
    security.isLocked = true;
    EXPECT_EQ(simulation.word(128), 0x0027U);
    security.isLocked = false;
    security.isFrozen = true;
    EXPECT_EQ(simulation.word(128), 0x002BU);
    security.isMaximum = true;
    security.attemptsLeft = 0;
    EXPECT_EQ(simulation.word(128), 0x013BU);
    put(simulation.drive.identifyDevice, 164, 0x0469, 2);
    EXPECT_EQ(simulation.word(128), 0x0000U);
    EXPECT_EQ(simulation.word(85), 0x0469U);
}

TEST(AtaController, ObeysOnlyASanitizeOrAReaderAfterASanitizeThatFailed) {
    struct Row {
        const char* what;
        TaskFile fields;
        unsigned error;
    };

    const Row ROWS[] = {
        {"IDENTIFY DEVICE", IDENTIFY, 0},
        {"SMART RETURN STATUS", smart(0xDA), 0},
        {"READ LOG EXT", readLog(0), 0},
        {"CHECK POWER MODE", {.command = 0xE5}, 0},
        {"BLOCK ERASE EXT",
         {.feature = 0x12, .lba = 0x426B4572, .command = 0xB4, .is48Bit = true},
         0},
        {"SET FEATURES", {.feature = 0x02, .command = 0xEF}, 0x04},
        {"FLUSH CACHE EXT", {.command = 0xEA, .is48Bit = true}, 0x04},
        {"GET NATIVE MAX ADDRESS EXT", {.command = 0x78, .is48Bit = true}, 0x04},
        {"SECURITY ERASE PREPARE", {.command = 0xF3}, 0x04},
        {"SECURITY FREEZE LOCK", {.command = 0xF5}, 0x04},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        simulation.drive.sanitize.hasFailed = true;
        EXPECT_EQ(simulation.error(row.fields), row.error);
    }
}

TEST(AtaPowerCycle, IsCounted) {
    AtaSimulation simulation;
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.drive.smartData, 31, 6), 8U);
    EXPECT_EQ(get(simulation.drive.deviceStatistics[1], 8, 4), 8U);
    EXPECT_EQ(get(simulation.drive.deviceStatistics[1], 15, 1), 0xC0U);
}

TEST(AtaPowerCycle, IsALossOfPowerUnlessTheDriveIsInStandby) {
    AtaSimulation simulation;
    putAttribute(simulation.drive.smartData, 5, 174, 0x0032, 3);
    putAttribute(simulation.drive.smartData, 6, 192, 0x0032, 9);
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.drive.smartData, 67, 6), 4U);
    EXPECT_EQ(get(simulation.drive.smartData, 79, 6), 10U);
    simulation.run({.command = 0xE0});
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.drive.smartData, 31, 6), 9U);
    EXPECT_EQ(get(simulation.drive.smartData, 67, 6), 4U);
    EXPECT_EQ(get(simulation.drive.smartData, 79, 6), 10U);
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.drive.smartData, 67, 6), 5U);
}

TEST(AtaPowerCycle, LeavesAStatisticAloneThatIsNotKept) {
    AtaSimulation simulation;
    put(simulation.drive.deviceStatistics[1], 15, 0x80, 1);
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.drive.deviceStatistics[1], 8, 4), 7U);
}

TEST(AtaPowerCycle, ChangesNothingElseOnADriveThatHasNothingToForget) {
    AtaSimulation simulation;
    simulation.controller.powerCycle();
    put(simulation.drive.smartData, 31, 7, 6);
    put(simulation.drive.deviceStatistics[1], 8, 7, 4);
    put(simulation.drive.sctStatus, 201, 30, 1);  // of this power cycle
    put(simulation.drive.sctStatus, 202, 40, 1);
    // What word 106 says of the sectors and word 77 of the speed was so before.
    EXPECT_EQ(simulation.drive, makeAtaDrive());
}

TEST(AtaController, AnswersAnyTaskFileOnAnyDrive) {
    constexpr std::uint64_t LBAS[] = {0x000000C24F00, 0x000000C24F80, 0x00000000, 0xFFFFFFFFFFFF};
    constexpr std::uint16_t FEATURES[] = {0x00, 0x01, 0x02, 0x03, 0x07, 0x0E, 0x0F, 0x12,
                                          0xD0, 0xD1, 0xD4, 0xD5, 0xD6, 0xD8, 0xDA, 0xFFFF};
    const core::Payload zeroes(1024);
    core::Payload ones(1024);
    for (std::uint32_t i = 0; i < ones.size(); ++i)
        put(ones, i, 0xFF, 1);
    const StoredBytes page(core::Payload(ones.data(), 512));
    AtaDrive full = makeAtaDrive();
    full.identifyDevice = page;
    full.smartData = page;
    full.smartThresholds = page;
    full.sctStatus = page;
    full.nativeMaxAddress = UINT64_MAX;
    full.errorLog.assign(100, StoredBytes(3));
    full.selfTestResults.assign(100, page);
    full.selfTestOutcome = 0xFF;
    full.runningSelfTest = RunningAtaSelfTest{0xFF, std::chrono::hours(1)};
    full.temperatureHistory.assign(1000, -128);
    full.volatileState.sctData = StoredBytes(1000);
    for (std::uint32_t i = 0; i < 300; ++i) {
        full.phyEventCounters[static_cast<std::uint16_t>(i * 219)] = UINT64_MAX;
        full.deviceStatistics[static_cast<std::uint8_t>(i)] = page;
        full.otherLogs[static_cast<std::uint8_t>(i)].assign(i % 20, StoredBytes(i));
        full.sctFeatures[static_cast<std::uint16_t>(i)].saved = static_cast<std::uint16_t>(i);
    }

    for (const AtaDrive& drive : {AtaDrive(), makeAtaDrive(), full}) {
        for (const core::Payload& input : {core::Payload(), zeroes, ones}) {
            for (const std::uint64_t lba : LBAS) {
                AtaSimulation simulation;
                simulation.drive = drive;
                for (std::uint32_t i = 0; i < 256 * 16; ++i) {
                    simulation.run({.feature = FEATURES[i % 16],
                                    .count = static_cast<std::uint16_t>(i % 3 == 0 ? 1 : i * 31),
                                    .lba = lba ^ (i * 7 % 64),
                                    .device = 0xFF,
                                    .command = static_cast<std::uint8_t>(i / 16),
                                    .is48Bit = i % 2 == 0},
                                   input);
                }
                simulation.controller.powerCycle();
                EXPECT_LE(simulation.drive.selfTestResults.size(), 100U);
            }
        }
    }
}

}  // namespace
}  // namespace orvel::simulator
