#include "AtaSimulation.h"

namespace orvel::simulator {
namespace {

TEST(AtaSetFeatures, SwitchesSettings) {
    struct Row {
        const char* what;
        TaskFile on;
        TaskFile off;
        std::uint32_t word;
        std::uint64_t valueOn;
        std::uint64_t valueOff;
    };

    const Row ROWS[] = {
        {"write cache", setFeatures(0x02), setFeatures(0x82), 85, 0x0469, 0x0449},
        {"read look-ahead", setFeatures(0xAA), setFeatures(0x55), 85, 0x0469, 0x0429},
        {"DIPM", setFeatures(0x10, 3), setFeatures(0x90, 3), 79, 0x0008, 0x0000},
        {"APM", setFeatures(0x05, 0x80), setFeatures(0x85), 86, 0x2409, 0x2401},
        {"APM level", setFeatures(0x05, 0xFE), setFeatures(0x85), 91, 0x00FE, 0x0000},
        {"lowest APM level", setFeatures(0x05, 0x01), setFeatures(0x85), 91, 0x0001, 0x0000},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.off), 0U);
        EXPECT_EQ(simulation.word(row.word), row.valueOff);
        EXPECT_EQ(simulation.error(row.on), 0U);
        EXPECT_EQ(simulation.word(row.word), row.valueOn);
    }
}

TEST(AtaSetFeatures, Refuses) {
    const AtaRefusal ROWS[] = {
        {"transfer mode", setFeatures(0x03, 0x46)},
        {"APM level 0", setFeatures(0x05, 0x00)},
        {"APM level FFh", setFeatures(0x05, 0xFF)},
        {"PUIS", setFeatures(0x06)},
        {"other SATA feature on", setFeatures(0x10, 0x02)},
        {"other SATA feature off", setFeatures(0x90, 0x06)},
        {"reverting to defaults", setFeatures(0x66)},
        {"zero", setFeatures(0x00)},
        {"FFh", setFeatures(0xFF)},
    };
    for (const AtaRefusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(AtaSetFeatures, RefusesWhatTheDriveDoesNotSupport) {
    struct Row {
        const char* what;
        TaskFile fields;
        std::uint32_t word;
        std::uint64_t without;
    };

    const Row ROWS[] = {
        {"write cache on", setFeatures(0x02), 82, 0x044B},
        {"write cache off", setFeatures(0x82), 82, 0x044B},
        {"look-ahead on", setFeatures(0xAA), 82, 0x042B},
        {"look-ahead off", setFeatures(0x55), 82, 0x042B},
        {"DIPM on", setFeatures(0x10, 3), 78, 0x0000},
        {"DIPM off", setFeatures(0x90, 3), 78, 0x0000},
        {"APM on", setFeatures(0x05, 1), 83, 0x6401},
        {"APM off", setFeatures(0x85), 83, 0x6401},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields), 0U);
        put(simulation.drive.identifyDevice, 2 * row.word, row.without, 2);
        EXPECT_EQ(simulation.error(row.fields), 0x04U);
    }
}

TEST(AtaSetFeatures, LastUntilPowerGoes) {
    AtaSimulation simulation;
    simulation.drive.powerOnSettings = {.isWriteCacheEnabled = false, .apmLevel = 0x40};
    simulation.run(setFeatures(0x55));
    simulation.run(setFeatures(0x10, 3));
    simulation.run(setFeatures(0x85));
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(85), 0x0449U);
    EXPECT_EQ(simulation.word(79), 0x0000U);
    EXPECT_EQ(simulation.word(86), 0x2409U);
    EXPECT_EQ(simulation.word(91), 0x0040U);
}

TEST(AtaSetFeatures, StayOutOfDrivesThatDoNotSupportThem) {
    AtaSimulation simulation;
    put(simulation.drive.identifyDevice, 164, 0x0409, 2);
    put(simulation.drive.identifyDevice, 166, 0x6401, 2);
    put(simulation.drive.identifyDevice, 170, 0x0409, 2);
    simulation.drive.powerOnSettings.apmLevel = 0x40;
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.word(85), 0x0409U);
    EXPECT_EQ(simulation.word(86), 0x2401U);
}

TEST(AtaPower, GoesToStandbyAndBack) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run({.command = 0xE5}).returned.count, 0xFF);
    EXPECT_EQ(simulation.error({.command = 0xE0}), 0U);
    EXPECT_EQ(simulation.run({.command = 0xE5}).returned.count, 0x00);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.run({.command = 0xE5}).returned.count, 0xFF);
    simulation.run({.command = 0xE0});
    simulation.run(smart(0xD4, 0x01));
    EXPECT_EQ(simulation.run({.command = 0xE5}).returned.count, 0xFF);
}

// The highest address: 0FFFFh is accessible of 1FFFFh.

TaskFile maxAddress(std::uint16_t feature, std::uint64_t lba = 0) {
    return {.feature = feature, .lba = lba, .device = 0x40, .command = 0x78, .is48Bit = true};
}

constexpr TaskFile READ_NATIVE{.device = 0x40, .command = 0x27, .is48Bit = true};

TaskFile setMax(std::uint64_t lba, std::uint16_t count) {
    return {.count = count, .lba = lba, .device = 0x40, .command = 0x37, .is48Bit = true};
}

void expectSectors(AtaSimulation& simulation, std::uint64_t sectors) {
    const auto identify = simulation.output(IDENTIFY);
    EXPECT_EQ(get(identify, 120, 4), sectors);
    EXPECT_EQ(get(identify, 200, 8), sectors);
    EXPECT_EQ(get(identify, 460, 8), sectors);
}

TEST(AccessibleMaxAddress, IsSetUpToTheNativeOne) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(maxAddress(0)).returned.lba, 0x1FFFFU);
    EXPECT_EQ(simulation.error(maxAddress(1, 0x20000)), 0x10U);
    EXPECT_EQ(simulation.error(maxAddress(1, 0x1FFFF)), 0U);
    expectSectors(simulation, 0x20000);
    simulation.controller.powerCycle();
    expectSectors(simulation, 0x20000);
}

TEST(AccessibleMaxAddress, IsSetOnceInAPowerCycle) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(maxAddress(1, 0x7FFF)), 0U);
    EXPECT_EQ(simulation.error(maxAddress(1, 0xFFFF)), 0x04U);
    expectSectors(simulation, 0x8000);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(maxAddress(1, 0xFFFF)), 0U);
    expectSectors(simulation, 0x10000);
}

TEST(AccessibleMaxAddress, IsFrozenUntilPowerGoes) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(maxAddress(2)), 0U);
    EXPECT_EQ(simulation.error(maxAddress(1, 0x7FFF)), 0x04U);
    EXPECT_EQ(simulation.run(maxAddress(0)).returned.lba, 0x1FFFFU);
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.error(maxAddress(1, 0x7FFF)), 0U);
}

TEST(AccessibleMaxAddress, HasNoOtherSubcommands) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(maxAddress(3)), 0x04U);
    EXPECT_EQ(simulation.error(maxAddress(0x0100)), 0x04U);
}

TEST(AccessibleMaxAddress, FitsTheFieldOf28Bits) {
    AtaSimulation simulation;
    simulation.drive.nativeMaxAddress = 0x1FFFFFFFF;
    put(simulation.drive.identifyDevice, 138, 0, 2);
    EXPECT_EQ(simulation.error(maxAddress(1, 0x1FFFFFFFF)), 0U);
    const auto identify = simulation.output(IDENTIFY);
    EXPECT_EQ(get(identify, 120, 4), 0x0FFFFFFFU);
    EXPECT_EQ(get(identify, 200, 8), 0x200000000U);
    EXPECT_EQ(get(identify, 460, 8), 0x10000U);  // not supported
}

TEST(SetMaxAddressExt, HoldsUntilPowerGoes) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(READ_NATIVE).returned.lba, 0x1FFFFU);
    EXPECT_EQ(simulation.error(setMax(0x7FFF, 0)), 0U);
    expectSectors(simulation, 0x8000);
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0x3FFF, 0)), 0U);
    expectSectors(simulation, 0x4000);
    simulation.controller.powerCycle();
    expectSectors(simulation, 0x10000);
}

TEST(SetMaxAddressExt, HoldsForever) {
    AtaSimulation simulation;
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0x3FFF, 0)), 0U);
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0x7FFF, 1)), 0U);
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0xFFFF, 1)), 0x10U);
    simulation.controller.powerCycle();
    expectSectors(simulation, 0x8000);
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0xFFFF, 1)), 0U);
}

TEST(SetMaxAddressExt, FollowsRightBehindTheNativeAddress) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(setMax(0x7FFF, 1)), 0x04U);
    simulation.run(READ_NATIVE);
    simulation.run(IDENTIFY);
    EXPECT_EQ(simulation.error(setMax(0x7FFF, 1)), 0x04U);
    simulation.run(READ_NATIVE);
    EXPECT_EQ(simulation.error(setMax(0x20000, 1)), 0x04U);
    expectSectors(simulation, 0x10000);
}

// Firmware.

constexpr std::uint32_t BLOCKS = 4;

TaskFile download(std::uint16_t mode, std::uint64_t offset = 0, std::uint16_t blocks = BLOCKS) {
    return {.feature = mode, .count = blocks, .lba = offset << 8, .command = 0x92};
}

core::Payload image(const std::string& revision = "NEW00002", std::uint32_t length = 2048,
                    const std::string& magic = "TAVIKSIM") {
    const core::Payload bytes(BLOCKS * 512);
    putText(bytes, 0, magic + revision);
    put(bytes, 16, length, 4);
    return bytes;
}

std::string revision(AtaSimulation& simulation) {
    return textAt(simulation.output(IDENTIFY), 46, 8);
}

/// In words 133 to 136, which are Norvo's own.
std::string pendingRevision(AtaSimulation& simulation) {
    return textAt(simulation.output({.command = 0xEC}), 266, 8);
}

TEST(DownloadMicrocode, ActivatesAWholeImageAtOnce) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.error(download(0x07), image()), 0U);
    EXPECT_EQ(revision(simulation), "EN0W0020");
}

TEST(DownloadMicrocode, TakesTheUpperHalfOfTheBlockCount) {
    AtaSimulation simulation;
    const core::Payload bytes(0x101 * 512);
    putText(bytes, 0, "TAVIKSIMNEW00002");
    put(bytes, 16, 0x101 * 512, 4);
    const TaskFile fields{.feature = 0x07, .count = 0x01, .lba = 0x000001, .command = 0x92};
    EXPECT_EQ(simulation.error(fields, bytes), 0U);
    EXPECT_EQ(revision(simulation), "EN0W0020");
}

TEST(DownloadMicrocode, ActivatesAfterTheLastPiece) {
    AtaSimulation simulation;
    const auto first = simulation.run(download(0x03), image("NEW00002", 3000)).returned;
    EXPECT_EQ(first.status, 0x50);
    EXPECT_EQ(first.count, 0x01);
    EXPECT_EQ(revision(simulation), "WF000010");
    const auto last = simulation.run(download(0x03, 4, 2), core::Payload(1024)).returned;
    EXPECT_EQ(last.status, 0x50);
    EXPECT_EQ(last.count, 0x02);
    EXPECT_EQ(revision(simulation), "EN0W0020");
    EXPECT_TRUE(simulation.drive.downloadedMicrocode.empty());
}

TEST(DownloadMicrocode, DefersTheActivation) {
    AtaSimulation simulation;
    EXPECT_EQ(simulation.run(download(0x0E), image("NEW00002", 3000)).returned.count, 0x01);
    EXPECT_EQ(pendingRevision(simulation), std::string(8, '\0'));
    EXPECT_EQ(simulation.run(download(0x0E, 4), core::Payload(2048)).returned.count, 0x03);
    EXPECT_EQ(revision(simulation), "WF000010");
    EXPECT_EQ(pendingRevision(simulation), "EN0W0020");
    AtaSimulation other;
    other.drive = simulation.drive;
    EXPECT_EQ(simulation.error({.feature = 0x0F, .command = 0x92}), 0U);
    EXPECT_EQ(revision(simulation), "EN0W0020");
    EXPECT_EQ(pendingRevision(simulation), std::string(8, '\0'));
    EXPECT_EQ(simulation.error({.feature = 0x0F, .command = 0x92}), 0x04U);
    other.controller.powerCycle();
    EXPECT_EQ(revision(other), "EN0W0020");
    EXPECT_EQ(other.drive.deferredRevision, "");
}

TEST(DownloadMicrocode, ForgetsPiecesInAPowerCycle) {
    AtaSimulation simulation;
    simulation.run(download(0x03), image("NEW00002", 3000));
    simulation.controller.powerCycle();
    EXPECT_TRUE(simulation.drive.downloadedMicrocode.empty());
    EXPECT_EQ(simulation.error(download(0x03, 4), core::Payload(2048)), 0x04U);
}

TEST(DownloadMicrocode, StartsAnewAtOffsetZero) {
    AtaSimulation simulation;
    simulation.run(download(0x03), image("OLD00001", 8000));
    EXPECT_EQ(simulation.run(download(0x03), image()).returned.count, 0x02);
    EXPECT_EQ(revision(simulation), "EN0W0020");
}

TEST(DownloadMicrocode, RefusesWhatIsNoImage) {
    const core::Payload images[] = {image("NEW00002", 2048, "TAVIKSIX"),
                                    image("        "),
                                    image("NEW00002", 19),
                                    image("NEW00002", 2049),
                                    core::Payload(2048),
                                    core::Payload(2047)};
    for (const core::Payload& bytes : images) {
        SCOPED_TRACE(&bytes - images);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(download(0x07), bytes), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(DownloadMicrocode, RefusesPieces) {
    struct Row {
        const char* what;
        TaskFile fields;
        core::Payload input;
    };

    const Row ROWS[] = {
        {"no image", download(0x03), image("NEW00002", 2048, "TAVIKSIX")},
        {"no image, deferred", download(0x0E), image("NEW00002", 19)},
        {"no beginning", download(0x03, 4), core::Payload(2048)},
        {"too few blocks", download(0x03, 0, 1), image()},
        {"too many blocks", download(0x03, 0, 9), core::Payload(9 * 512)},
        {"no blocks", download(0x03, 0, 0), image()},
        {"short data", download(0x03, 0, 5), image()},
        {"mode 0", download(0x00), image()},
        {"mode 1", download(0x01), image()},
        {"mode FFh", download(0xFF), image()},
        {"nothing deferred", download(0x0F, 0, 0), core::Payload()},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        AtaSimulation simulation;
        EXPECT_EQ(simulation.error(row.fields, row.input), 0x04U);
        EXPECT_EQ(simulation.drive, makeAtaDrive());
    }
}

TEST(DownloadMicrocode, DropsAllPiecesWithOneThatDoesNotFit) {
    for (const std::uint64_t offset : {3, 5}) {
        SCOPED_TRACE(offset);
        AtaSimulation simulation;
        simulation.run(download(0x03), image("NEW00002", 3000));
        EXPECT_EQ(simulation.error(download(0x03, offset), core::Payload(2048)), 0x04U);
        EXPECT_TRUE(simulation.drive.downloadedMicrocode.empty());
    }
}

TEST(DownloadMicrocode, HasNoPiecesWithoutTheCapability) {
    for (const std::uint16_t mode : std::vector<std::uint16_t>{0x03, 0x0E, 0x0F}) {
        SCOPED_TRACE(mode);
        AtaSimulation simulation;
        simulation.drive.deferredRevision = "NEW00002";
        put(simulation.drive.identifyDevice, 238, 0x4108, 2);
        EXPECT_EQ(simulation.error(download(mode), image()), 0x04U);
    }
}

TEST(DownloadMicrocode, TakesAnyNumberOfBlocksFromADriveWithoutLimits) {
    for (const std::uint64_t nothing : {0x0000, 0xFFFF}) {
        SCOPED_TRACE(nothing);
        AtaSimulation simulation;
        put(simulation.drive.identifyDevice, 468, nothing, 2);
        put(simulation.drive.identifyDevice, 470, nothing, 2);
        EXPECT_EQ(simulation.error(download(0x03, 0, 1), image()), 0U);
        EXPECT_EQ(simulation.error(download(0x03, 1, 9), core::Payload(9 * 512)), 0U);
        EXPECT_EQ(revision(simulation), "EN0W0020");
    }
}

}  // namespace
}  // namespace orvel::simulator
