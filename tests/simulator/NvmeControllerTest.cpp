#include "Simulation.h"

namespace orvel::simulator {
namespace {

constexpr AdminCommandFields REFUSED{.opcode = 0x06, .nsid = 5, .transferLength = 4096};

TEST(NvmeController, RefusesWhatItDoesNotKnow) {
    for (const int opcode : {0x00, 0x04, 0x08, 0x18, 0x1C, 0x81, 0x84, 0xC0, 0xFF}) {
        SCOPED_TRACE(opcode);
        Simulation simulation;
        EXPECT_EQ(simulation.status({.opcode = static_cast<std::uint8_t>(opcode)}), 0x001U);
    }
}

TEST(NvmeController, RefusesCommandsWithoutTheCapability) {
    struct Row {
        std::uint8_t opcode;
        std::uint64_t without;  ///< OACS
    };

    constexpr Row ROWS[] = {{0x80, 0x1C}, {0x10, 0x1A}, {0x11, 0x1A},
                            {0x0D, 0x16}, {0x15, 0x16}, {0x14, 0x0E}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(static_cast<int>(row.opcode));
        Simulation simulation;
        EXPECT_NE(simulation.status({.opcode = row.opcode}), 0x001U);
        put(simulation.drive.identifyController, 256, row.without, 2);
        EXPECT_EQ(simulation.status({.opcode = row.opcode}), 0x001U);
    }
}

TEST(NvmeController, AnswersASuccessWithZeroes) {
    Simulation simulation;
    const auto result = simulation.run({.opcode = 0x06, .cdw10 = 1, .transferLength = 4096});
    EXPECT_EQ(result.completion.toBytes(), core::Payload(16));
    EXPECT_EQ(simulation.drive, makeDrive());
}

TEST(NvmeController, MarksARefusalAsFinalAndInTheErrorLog) {
    Simulation simulation;
    const auto result = simulation.run(REFUSED);
    const std::uint8_t expected[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x16, 0xC0};
    EXPECT_EQ(result.completion.toBytes(), core::Payload(expected, 16));
    EXPECT_EQ(result.output.size(), 0U);
}

TEST(NvmeController, WritesARefusalIntoTheErrorLog) {
    Simulation simulation;
    simulation.run(REFUSED);
    const auto log = simulation.log(0x01, 256);
    EXPECT_EQ(get(log, 0, 8), 0x11U);
    EXPECT_EQ(get(log, 8, 4), 0U);
    EXPECT_EQ(get(log, 12, 2), 0xC016U);
    EXPECT_EQ(get(log, 14, 2), 0xFFFFU);
    EXPECT_EQ(get(log, 16, 8), 0U);
    EXPECT_EQ(get(log, 24, 4), 5U);
    EXPECT_EQ(get(log, 32, 8), 0U);
    EXPECT_EQ(get(log, 64, 8), 0U);
    EXPECT_EQ(get(simulation.log(0x02, 512), 176, 8), 0x11U);
}

TEST(NvmeController, KeepsTheNewestErrors) {
    Simulation simulation;
    for (int i = 0; i < 6; ++i)
        simulation.run(REFUSED);
    const auto log = simulation.log(0x01, 256);
    EXPECT_EQ(get(log, 0, 8), 0x16U);
    EXPECT_EQ(get(log, 64, 8), 0x15U);
    EXPECT_EQ(get(log, 192, 8), 0x13U);
    EXPECT_EQ(simulation.drive.errorLog.size(), 4U);
    EXPECT_EQ(get(simulation.log(0x02, 512), 176, 8), 0x16U);
}

TEST(NvmeController, CountsPowerCycles) {
    Simulation simulation;
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.log(0x02, 512), 112, 8), 8U);
    EXPECT_EQ(get(simulation.log(0x02, 512), 144, 8), 1U) << "no shutdown went before";
    EXPECT_EQ(textAt(simulation.drive.identifyController, 64, 8), "FW000001");
    EXPECT_EQ(simulation.drive.activeSlot, 1);
}

TEST(NvmeController, ForgetsWhatWasNotSavedInAPowerCycle) {
    Simulation simulation;
    simulation.run({.opcode = 0x09, .cdw10 = 0x80000004, .cdw11 = 0x150});
    simulation.run({.opcode = 0x09, .cdw10 = 0x00000004, .cdw11 = 0x140});
    simulation.run({.opcode = 0x09, .cdw10 = 0x00000006, .cdw11 = 0});
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.run({.opcode = 0x0A, .cdw10 = 0x04}).completion.dword0, 0x150U);
    EXPECT_EQ(simulation.run({.opcode = 0x0A, .cdw10 = 0x06}).completion.dword0, 1U);
}

TEST(NvmeController, ActivatesTheNextFirmwareInAPowerCycle) {
    Simulation simulation;
    simulation.drive.firmwareRevisions[1] = "NEW2";
    simulation.drive.nextSlot = 2;
    simulation.controller.powerCycle();
    EXPECT_EQ(simulation.drive.activeSlot, 2);
    EXPECT_EQ(simulation.drive.nextSlot, 0);
    EXPECT_EQ(textAt(simulation.drive.identifyController, 64, 8), "NEW2    ");
}

TEST(NvmeController, DropsAPartlyDownloadedImageInAPowerCycle) {
    Simulation simulation;
    simulation.drive.downloadedImage.emplace(0, StoredBytes(4096));
    simulation.controller.powerCycle();
    EXPECT_TRUE(simulation.drive.downloadedImage.empty());
}

TEST(NvmeController, AbortsAShortSelfTestInAPowerCycle) {
    Simulation simulation;
    simulation.run({.opcode = 0x14, .nsid = 1, .cdw10 = 1});
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x12U);
}

TEST(NvmeController, FinishesASelfTestWhoseTimeWasUpBeforeAPowerCycle) {
    Simulation simulation;
    simulation.run({.opcode = 0x14, .nsid = 1, .cdw10 = 1});
    simulation.time = std::chrono::minutes(2);
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x10U);
}

TEST(NvmeController, GoesOnWithAnExtendedSelfTestAfterAPowerCycle) {
    Simulation simulation;
    simulation.run({.opcode = 0x14, .nsid = 1, .cdw10 = 2});
    simulation.controller.powerCycle();
    EXPECT_EQ(get(simulation.log(0x06, 564), 0, 1), 0x02U);
    simulation.time = std::chrono::minutes(10);
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x20U);
}

TEST(NvmeController, AnswersAnyCommandOnAnyDrive) {
    const core::Payload zeroes(4096);
    core::Payload ones(4096);
    for (std::uint32_t i = 0; i < ones.size(); ++i)
        put(ones, i, 0xFF, 1);
    NvmeDrive full = makeDrive();
    full.identifyController = StoredBytes(ones);
    full.commonNamespace = StoredBytes(ones);
    full.namespaces.at(1).identify = StoredBytes(ones);
    full.smartHealthLog = StoredBytes(ones);
    full.namespaces.at(1).controllers = {0xFFFF};

    for (const NvmeDrive& drive : {NvmeDrive(), makeDrive(), full}) {
        for (const core::Payload& input : {core::Payload(), zeroes, ones}) {
            for (const std::uint32_t nsid : {0U, 1U, 0xFFFFFFFFU}) {
                Simulation simulation;
                simulation.drive = drive;
                for (std::uint32_t i = 0; i < 256 * 16; ++i) {
                    simulation.run({.opcode = static_cast<std::uint8_t>(i / 16),
                                    .nsid = nsid,
                                    .cdw10 = i % 16 == 15 ? 0xFFFFFFFF : i % 16 * 9,
                                    .cdw11 = i % 2 == 0 ? 0 : 0xFFFFFFFF,
                                    .transferLength = 4096},
                                   input);
                }
                simulation.controller.powerCycle();
                EXPECT_LE(simulation.drive.errorLog.size(), 256U);
            }
        }
    }
}

}  // namespace
}  // namespace orvel::simulator
