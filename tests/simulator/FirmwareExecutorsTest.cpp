#include "Simulation.h"

namespace orvel::simulator {
namespace {

constexpr std::uint32_t PIECE = 4096;

AdminCommandFields download(std::uint32_t offsetDwords, std::uint32_t dwords = 1024) {
    return {
        .opcode = 0x11, .cdw10 = dwords - 1, .cdw11 = offsetDwords, .transferLength = dwords * 4};
}

/// Slot in bits 2:0, action in bits 5:3.
AdminCommandFields commit(std::uint32_t cdw10) {
    return {.opcode = 0x10, .cdw10 = cdw10};
}

/// The first piece of an image of this length.
core::Payload firstPiece(const char* revision = "NEW00002", std::uint32_t length = PIECE) {
    core::Payload piece(PIECE);
    putText(piece, 0, "TAVIKSIM");
    putText(piece, 8, revision);
    put(piece, 16, length, 4);
    return piece;
}

TEST(FirmwareCommit, PutsTheImageIntoTheSlotOnly) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(download(0), firstPiece()), 0U);
    EXPECT_EQ(simulation.status(commit(0x02)), 0U);
    EXPECT_EQ(simulation.drive.firmwareRevisions[1], "NEW00002");
    EXPECT_EQ(simulation.drive.activeSlot, 1);
    EXPECT_EQ(simulation.drive.nextSlot, 0);
    EXPECT_TRUE(simulation.drive.downloadedImage.empty());
    EXPECT_EQ(textAt(simulation.drive.identifyController, 64, 8), "FW000001");
}

TEST(FirmwareCommit, ActivatesTheImageAtTheNextReset) {
    Simulation simulation;
    simulation.run(download(0), firstPiece());
    EXPECT_EQ(simulation.status(commit(0x0A)), 0U);
    EXPECT_EQ(simulation.drive.firmwareRevisions[1], "NEW00002");
    EXPECT_EQ(simulation.drive.activeSlot, 1);
    EXPECT_EQ(simulation.drive.nextSlot, 2);
}

TEST(FirmwareCommit, ActivatesWhatASlotHasAtTheNextReset) {
    Simulation simulation;
    simulation.drive.firmwareRevisions[2] = "OLD00003";
    EXPECT_EQ(simulation.status(commit(0x13)), 0U);
    EXPECT_EQ(simulation.drive.nextSlot, 3);
    EXPECT_EQ(simulation.drive.activeSlot, 1);
}

TEST(FirmwareCommit, ActivatesTheImageNow) {
    Simulation simulation;
    simulation.run(download(0), firstPiece());
    EXPECT_EQ(simulation.status(commit(0x1A)), 0U);
    EXPECT_EQ(simulation.drive.activeSlot, 2);
    EXPECT_EQ(simulation.drive.nextSlot, 0);
    EXPECT_EQ(textAt(simulation.drive.identifyController, 64, 8), "NEW00002");
}

TEST(FirmwareCommit, ActivatesWhatASlotHasNow) {
    Simulation simulation;
    simulation.drive.firmwareRevisions[2] = "OLD00003";
    EXPECT_EQ(simulation.status(commit(0x1B)), 0U);
    EXPECT_EQ(simulation.drive.activeSlot, 3);
}

TEST(FirmwareCommit, TellsWhichResetItNeeds) {
    struct Row {
        const char* what;
        FirmwareActivation activation;
        std::uint64_t frmw;
        std::uint32_t cdw10;
        unsigned status;
    };

    constexpr Row ROWS[] = {
        {"now, on a drive that can't", FirmwareActivation::ANY_RESET, 0x07, 0x1A, 0x111},
        {"now, conventional", FirmwareActivation::CONVENTIONAL_RESET, 0x17, 0x1A, 0x10B},
        {"now, subsystem", FirmwareActivation::NVM_SUBSYSTEM_RESET, 0x17, 0x1A, 0x110},
        {"at reset, conventional", FirmwareActivation::CONVENTIONAL_RESET, 0x17, 0x0A, 0x10B},
        {"at reset, subsystem", FirmwareActivation::NVM_SUBSYSTEM_RESET, 0x17, 0x0A, 0x110},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        simulation.drive.firmwareActivation = row.activation;
        put(simulation.drive.identifyController, 260, row.frmw, 1);
        simulation.run(download(0), firstPiece());
        const auto completion = simulation.run(commit(row.cdw10)).completion;
        EXPECT_EQ(completion.status.type * 0x100U + completion.status.code, row.status);
        EXPECT_FALSE(completion.more);
        EXPECT_FALSE(completion.doNotRetry);
        EXPECT_TRUE(simulation.drive.errorLog.empty());
        EXPECT_EQ(simulation.drive.activeSlot, 1);
        EXPECT_EQ(simulation.drive.nextSlot, 2);
        EXPECT_EQ(simulation.drive.firmwareRevisions[1], "NEW00002");
    }
}

TEST(FirmwareCommit, ChoosesASlotThatIsNotRunning) {
    struct Row {
        const char* what;
        std::uint64_t frmw;
        std::uint8_t active;
        std::uint32_t expected;
    };

    constexpr Row ROWS[] = {{"second of three", 0x17, 1, 2},
                            {"read only first", 0x17, 2, 3},
                            {"writable first", 0x16, 2, 1},
                            {"only one", 0x12, 1, 1}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        put(simulation.drive.identifyController, 260, row.frmw, 1);
        simulation.drive.activeSlot = row.active;
        simulation.run(download(0), firstPiece());
        EXPECT_EQ(simulation.status(commit(0x00)), 0U);
        EXPECT_EQ(simulation.drive.firmwareRevisions.at(row.expected - 1), "NEW00002");
    }
}

TEST(FirmwareCommit, ChoosesAmongTheSlotsThatHaveAnImage) {
    Simulation simulation;
    simulation.drive.firmwareRevisions[2] = "OLD00003";
    EXPECT_EQ(simulation.status(commit(0x10)), 0U);
    EXPECT_EQ(simulation.drive.nextSlot, 3);
}

TEST(FirmwareCommit, Refuses) {
    const Refusal ROWS[] = {
        {"slot above the last", commit(0x04), 0x106},
        {"slot 7", commit(0x17), 0x106},
        {"read only slot", commit(0x01), 0x106},
        {"read only slot now", commit(0x19), 0x106},
        {"empty slot at reset", commit(0x12), 0x107},
        {"action 4", commit(0x22), 0x002},
        {"action 5", commit(0x2A), 0x002},
        {"boot partition", commit(0x32), 0x002},
        {"active boot partition", commit(0x3A), 0x002},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        simulation.run(download(0), firstPiece());
        EXPECT_EQ(simulation.status(row.fields), row.status);
        EXPECT_EQ(simulation.drive.firmwareRevisions, makeDrive().firmwareRevisions);
        EXPECT_EQ(simulation.drive.nextSlot, 0);
    }
}

TEST(FirmwareCommit, RefusesWithoutAnyImage) {
    for (const std::uint32_t cdw10 : {0x02U, 0x0AU, 0x12U, 0x1AU}) {
        SCOPED_TRACE(cdw10);
        Simulation simulation;
        EXPECT_EQ(simulation.status(commit(cdw10)), 0x107U);
    }
}

TEST(FirmwareCommit, RefusesWhatIsNoImageAndDropsIt) {
    core::Payload otherMagic = firstPiece();
    put(otherMagic, 0, 'X', 1);
    const core::Payload images[] = {otherMagic, firstPiece("        "),
                                    firstPiece("NEW00002", PIECE + 1), core::Payload(PIECE)};
    for (const core::Payload& image : images) {
        SCOPED_TRACE(&image - images);
        Simulation simulation;
        simulation.run(download(0), image);
        EXPECT_EQ(simulation.status(commit(0x0A)), 0x107U);
        EXPECT_TRUE(simulation.drive.downloadedImage.empty());
        EXPECT_EQ(simulation.drive.firmwareRevisions[1], "");
        EXPECT_EQ(simulation.drive.nextSlot, 0);
    }
}

TEST(FirmwareCommit, RefusesAnImageShorterThanItsHeader) {
    Simulation simulation;
    put(simulation.drive.identifyController, 319, 0xFF, 1);
    EXPECT_EQ(simulation.status(download(0, 4), firstPiece("NEW00002", 16)), 0U);
    EXPECT_EQ(simulation.status(commit(0x0A)), 0x107U);
}

TEST(FirmwareImageDownload, TakesPiecesInAnyOrder) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(download(1024), core::Payload(PIECE)), 0U);
    EXPECT_EQ(simulation.status(download(0), firstPiece("NEW00002", 2 * PIECE)), 0U);
    EXPECT_EQ(simulation.status(commit(0x02)), 0U);
    EXPECT_EQ(simulation.drive.firmwareRevisions[1], "NEW00002");
}

TEST(FirmwareImageDownload, LeavesAGapThatTheCommitFinds) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(download(0), firstPiece()), 0U);
    EXPECT_EQ(simulation.status(download(2048), core::Payload(PIECE)), 0U);
    EXPECT_EQ(simulation.status(commit(0x02)), 0x107U);
}

TEST(FirmwareImageDownload, StartsAnewAtTheBeginning) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(download(0), firstPiece("OLD00001", 2 * PIECE)), 0U);
    EXPECT_EQ(simulation.status(download(1024), core::Payload(PIECE)), 0U);
    EXPECT_EQ(simulation.status(commit(0x0C)), 0x106U);
    EXPECT_EQ(simulation.status(download(0), firstPiece("NEW00002", 2 * PIECE)), 0U);
    EXPECT_EQ(simulation.drive.downloadedImage.size(), 1U);
    EXPECT_EQ(simulation.status(download(1024), core::Payload(PIECE)), 0U);
    EXPECT_EQ(simulation.status(commit(0x0A)), 0U);
    EXPECT_EQ(simulation.drive.firmwareRevisions[1], "NEW00002");
}

TEST(FirmwareImageDownload, RefusesPiecesThatOverlap) {
    struct Row {
        std::uint32_t offset;
        std::uint32_t dwords;
        unsigned status;
    };

    constexpr Row ROWS[] = {{1024, 1024, 0x114}, {1025, 1, 0x114},    {1023, 2, 0x114},
                            {0, 4096, 0x114},    {2047, 1024, 0x114}, {0, 1024, 0},
                            {2048, 1024, 0}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(testing::Message() << row.offset << " " << row.dwords);
        Simulation simulation;
        put(simulation.drive.identifyController, 319, 0xFF, 1);
        simulation.run(download(1024), core::Payload(PIECE));
        EXPECT_EQ(simulation.status(download(row.offset, row.dwords), core::Payload(16384)),
                  row.status);
    }
}

TEST(FirmwareImageDownload, StartsAnewWithTheFirstPiece) {
    Simulation simulation;
    put(simulation.drive.identifyController, 319, 0xFF, 1);
    simulation.run(download(0), core::Payload(PIECE));
    simulation.run(download(1024), core::Payload(PIECE));
    EXPECT_EQ(simulation.status(download(0), core::Payload(PIECE)), 0U);
    EXPECT_EQ(simulation.drive.downloadedImage.size(), 1U);
    EXPECT_EQ(simulation.status(download(1024), core::Payload(PIECE)), 0U);
}

TEST(FirmwareImageDownload, HoldsToTheGranularity) {
    struct Row {
        std::uint64_t fwug;
        std::uint32_t offset;
        std::uint32_t dwords;
        unsigned status;
    };

    constexpr Row ROWS[] = {{1, 1024, 1024, 0},  {1, 512, 1024, 0x002}, {1, 0, 512, 0x002},
                            {2, 0, 1024, 0x002}, {2, 0, 2048, 0},       {0, 1, 1, 0},
                            {0xFF, 1, 1, 0}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(testing::Message() << row.fwug << " " << row.offset << " " << row.dwords);
        Simulation simulation;
        put(simulation.drive.identifyController, 319, row.fwug, 1);
        EXPECT_EQ(simulation.status(download(row.offset, row.dwords), core::Payload(8192)),
                  row.status);
    }
}

TEST(FirmwareImageDownload, RefusesShortData) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(download(0), core::Payload(4095)), 0x004U);
    EXPECT_TRUE(simulation.drive.downloadedImage.empty());
}

TEST(FirmwareImageDownload, KeepsACopyOfThePiece) {
    Simulation simulation;
    const core::Payload piece = firstPiece();
    simulation.run(download(0), piece);
    put(piece, 0, 'X', 1);
    EXPECT_EQ(simulation.status(commit(0x02)), 0U);
}

}  // namespace
}  // namespace orvel::simulator
