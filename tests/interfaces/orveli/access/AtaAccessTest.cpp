#include "interfaces/orveli/access/AtaAccess.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"

#include <gtest/gtest.h>

#include <functional>

namespace orvel::interfaces::orveli {
namespace {

namespace ata = protocols::ata;

constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint16_t READ_LOG = 0xD5;
constexpr std::uint16_t WRITE_LOG = 0xD6;
constexpr std::uint8_t READ_LOG_EXT = 0x2F;
constexpr std::uint8_t SCT_COMMAND_STATUS = 0xE0;
constexpr std::uint8_t SCT_DATA = 0xE1;

/// Category, code and message of what is thrown.
std::string thrownBy(const std::function<void()>& action) {
    try {
        action();
    } catch (const core::Status& status) {
        return std::to_string(status.getCategory()) + "/" + std::to_string(status.getCode()) + " " +
               status.getMessage();
    }
    return "nothing";
}

ata::ReturnedTaskFile returned(std::uint8_t count, std::uint64_t lba) {
    ata::ReturnedTaskFile registers;
    registers.count = count;
    registers.lba = lba;
    return registers;
}

TEST(AtaAccess, AskReturnsWhatTheDriveAnswers) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, 0xDA, 0, {{.returned = returned(0, 0x2CF400)}});
    const auto answer = ata_access::ask(*drive.getDevice(), ata::smartReturnStatus());
    EXPECT_EQ(answer.returned.lba, 0x2CF400U);
    const auto refused = ata_access::ask(*drive.getDevice(), ata::standbyImmediate());
    EXPECT_FALSE(refused.returned.isSuccess());
    EXPECT_EQ(refused.returned.error, 0x04);
}

TEST(AtaAccess, AskThrowsThePathsStatusIfThereIsNoAnswer) {
    ScriptedDrive drive("ATA");
    drive.onAta(0xE0, 0, 0, {{.pathStatus = core::statuses::ataToScsiConversionFailed()}});
    EXPECT_EQ(thrownBy([&] { (void)ata_access::ask(*drive.getDevice(), ata::standbyImmediate()); }),
              "0/27 Unable to convert ATA command into an ATA-SCSI command.");
    ScriptedDrive other("NVMe Admin");
    EXPECT_EQ(thrownBy([&] { (void)ata_access::ask(*other.getDevice(), ata::standbyImmediate()); }),
              "0/35 Device does not support this command set.");
}

TEST(AtaAccess, SendThrowsARefusalWithTheErrorField) {
    ScriptedDrive drive("ATA");
    EXPECT_EQ(
        thrownBy([&] { (void)ata_access::send(*drive.getDevice(), ata::standbyImmediate()); }),
        "0/10 ATA command reported a problem. STANDBY IMMEDIATE: error register 0x04.");
}

TEST(AtaAccess, ReadTakesNoLessThanWasAskedFor) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, 0xD0, 0, {{.data = core::Payload(511)}, {.data = core::Payload(512)}});
    EXPECT_EQ(thrownBy([&] { (void)ata_access::read(*drive.getDevice(), ata::smartReadData()); }),
              "0/49 The IO command passed, but did not return the expected amount of data.");
    EXPECT_EQ(ata_access::read(*drive.getDevice(), ata::smartReadData()).size(), 512U);
}

TEST(AtaAccess, IdentifyDeviceLooksAtTheChecksum) {
    ScriptedDrive drive("ATA");
    drive.onAta(IDENTIFY_DEVICE, 0, 0,
                {{.data = structure(512, {{0, {1}}})},
                 {.data = checkedStructure({{0, {1}}, {510, {0xA5}}})},
                 {.data = structure(512, {{0, {1}}, {510, {0xA5, 0x00}}})}});
    EXPECT_EQ(*ata_access::identifyDevice(*drive.getDevice()).at(0), 1) << "without a checksum";
    EXPECT_EQ(*ata_access::identifyDevice(*drive.getDevice()).at(510), 0xA5);
    EXPECT_EQ(
        thrownBy([&] { (void)ata_access::identifyDevice(*drive.getDevice()); }),
        "10/33 Failed to retrieve data from selected device. IDENTIFY DEVICE: wrong checksum.");
}

/// IDENTIFY DEVICE data of a drive that has both.
core::Payload identifyWith(int word84High, int word84Low, int word206) {
    return structure(512, {{168, {word84Low, word84High}}, {412, {word206}}});
}

TEST(AtaAccess, RequiresWhatTheDriveDoesNotSayThatItLacks) {
    constexpr const char* LACKING = "10/3 The selected drive does not support this feature.";
    const auto& command = ata::identify_device::word_206::DATA_TABLES;

    struct Row {
        core::Payload identify;
        const char* logs;
        const char* sct;
    };

    const Row rows[] = {
        {identifyWith(0x40, 0x20, 0x21), "nothing", "nothing"},
        {identifyWith(0x40, 0x00, 0x20), LACKING, LACKING},
        {identifyWith(0x00, 0x00, 0x1D), "nothing", LACKING},  // word 84 isn't valid
        {core::Payload(100), "nothing", "nothing"},
        {structure(512, {{510, {0xA5, 0x00}}}), "nothing", "nothing"},  // wrong checksum
    };
    for (const Row& row : rows) {
        ScriptedDrive drive("ATA");
        core::Device& device = *drive.getDevice();
        drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = row.identify}});
        EXPECT_EQ(thrownBy([&] { ata_access::requireGeneralPurposeLogs(device); }), row.logs);
        EXPECT_EQ(thrownBy([&] { ata_access::requireSct(device, command); }), row.sct);
    }
    ScriptedDrive refusing("ATA");
    EXPECT_EQ(thrownBy([&] { ata_access::requireSct(*refusing.getDevice(), command); }), "nothing");
}

TEST(AtaAccess, ReadsPagesOfALog) {
    ScriptedDrive drive("ATA");
    drive.onAta(READ_LOG_EXT, 0, 0x04, {{.data = core::Payload(1024)}});
    EXPECT_EQ(ata_access::readLog(*drive.getDevice(), 0x04, 0x0203, 2).size(), 1024U);
    ASSERT_EQ(drive.sentAta().size(), 1U);
    EXPECT_EQ(drive.sentAta()[0].taskFile.lba, 0x0200000304U);
    EXPECT_EQ(drive.sentAta()[0].taskFile.count, 2);
    EXPECT_EQ(thrownBy([&] { (void)ata_access::readLog(*drive.getDevice(), 0x04, 0, 3); }),
              "0/49 The IO command passed, but did not return the expected amount of data.");
}

TEST(AtaAccess, GivesSctCommandsThroughTheSmartLogs) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, WRITE_LOG, SCT_COMMAND_STATUS, {{.returned = returned(3, 0x00)}});
    const core::Payload key = structure(512, {{0, {4, 0, 2}}});
    EXPECT_EQ(ata_access::sct(*drive.getDevice(), key).returned.count, 3);
    ASSERT_EQ(drive.sentAta().size(), 1U);
    EXPECT_EQ(drive.sentAta()[0].input, key);
    ScriptedDrive refusing("ATA");
    EXPECT_EQ(thrownBy([&] { (void)ata_access::sct(*refusing.getDevice(), key); }).substr(0, 4),
              "0/10");
}

/// SMART is disabled. Bit 5 of words 84 and 87 is General Purpose Logging.
core::Payload identifyWithoutSmart(int word84, int word87) {
    return structure(512, {{84 * 2, {word84, 0x40}}, {87 * 2, {word87, 0x40}}});
}

TEST(AtaAccess, GivesSctCommandsByGeneralPurposeLoggingWhileSmartIsDisabled) {
    constexpr std::uint8_t WRITE_LOG_EXT = 0x3F;
    for (const bool isInWord84 : {true, false}) {
        ScriptedDrive drive("ATA");
        drive.onAta(IDENTIFY_DEVICE, 0, 0,
                    {{.data = identifyWithoutSmart(isInWord84 ? 0x20 : 0, isInWord84 ? 0 : 0x20)}});
        drive.onAta(WRITE_LOG_EXT, 0, SCT_COMMAND_STATUS, {{.returned = returned(3, 0x00)}});
        drive.onAta(READ_LOG_EXT, 0, SCT_COMMAND_STATUS, {{.data = structure(512, {{200, {33}}})}});
        drive.onAta(READ_LOG_EXT, 0, SCT_DATA, {{.data = structure(512, {{0, {2}}})}});
        core::Device& device = *drive.getDevice();
        const core::Payload key = structure(512, {{0, {4, 0, 2}}});
        EXPECT_EQ(ata_access::askSct(device, key).returned.count, 3);
        EXPECT_EQ(drive.sentAta().back().input, key);
        EXPECT_EQ(ata_access::sct(device, key).returned.count, 3);
        EXPECT_EQ(*ata_access::sctStatus(device).at(200), 33);
        EXPECT_EQ(*ata_access::sctTable(device, 2, 1).at(0), 2);
    }
}

TEST(AtaAccess, TellsThatSmartIsDisabledIfThatClosesTheOnlyWayToSct) {
    ScriptedDrive drive("ATA");
    const core::Payload key(512);
    core::Device& device = *drive.getDevice();
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = identifyWithoutSmart(0, 0)}});
    EXPECT_EQ(thrownBy([&] { (void)ata_access::askSct(device, key); }),
              "10/60 SMART is not enabled.");
    EXPECT_EQ(thrownBy([&] { (void)ata_access::sctStatus(device); }),
              "10/60 SMART is not enabled.");
    // SMART is enabled, and the refusal has another reason.
    drive.onAta(IDENTIFY_DEVICE, 0, 0,
                {{.data = structure(512, {{85 * 2, {0x01}}, {87 * 2, {0x20, 0x40}}})}});
    EXPECT_FALSE(ata_access::askSct(device, key).returned.isSuccess());
    EXPECT_EQ(thrownBy([&] { (void)ata_access::sct(device, key); }),
              "0/10 ATA command reported a problem. SMART WRITE LOG: error register 0x04.");
}

TEST(AtaAccess, ReadsTheSctStatus) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, READ_LOG, SCT_COMMAND_STATUS, {{.data = structure(512, {{200, {33}}})}});
    EXPECT_EQ(*ata_access::sctStatus(*drive.getDevice()).at(200), 33);
}

TEST(AtaAccess, ReadsAnSctTableAfterAskingForIt) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, WRITE_LOG, SCT_COMMAND_STATUS, {{}});
    drive.onAta(SMART, READ_LOG, SCT_DATA, {{.data = structure(512, {{0, {2}}})}});
    EXPECT_EQ(*ata_access::sctTable(*drive.getDevice(), 2, 1).at(0), 2);
    ASSERT_EQ(drive.sentAta().size(), 2U);
    EXPECT_EQ(drive.sentAta()[0].input, structure(512, {{0, {5, 0, 1, 0, 2}}}));
}

TEST(AtaAccess, ReadsTheStateOfAnSctFeature) {
    ScriptedDrive drive("ATA");
    drive.onAta(SMART, WRITE_LOG, SCT_COMMAND_STATUS, {{.returned = returned(0x34, 0x12)}});
    EXPECT_EQ(ata_access::sctFeature(*drive.getDevice(), ata::sct::Feature::WRITE_CACHE), 0x1234);
    EXPECT_EQ(drive.sentAta()[0].input, structure(512, {{0, {4, 0, 2, 0, 1}}}));
}

}  // namespace
}  // namespace orvel::interfaces::orveli
