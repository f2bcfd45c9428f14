#include "interfaces/orveli/identification/AtaProtocolIdentifier.h"

#include "features/DeviceAttributes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/identification/AttributeLines.h"

#include <gtest/gtest.h>

#include <cstring>

namespace orvel::interfaces::orveli::identification {
namespace {

using core::Payload;
namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
constexpr std::uint8_t ACCESSIBLE_MAX_ADDRESS = 0x78;

void setWord(Payload& data, std::uint32_t word, int value) {
    *data.at(2 * word) = static_cast<std::uint8_t>(value & 0xFF);
    *data.at(2 * word + 1) = static_cast<std::uint8_t>(value >> 8);
}

/// Each word holds two characters, the first in its upper byte.
void setText(Payload& data, std::uint32_t word, const std::string& text) {
    for (std::uint32_t i = 0; i < text.size(); ++i)
        *data.at((2 * word + i) ^ 1U) = static_cast<std::uint8_t>(text[i]);
}

Payload identifyData() {
    Payload data(512);
    setText(data, 10, "NSX3110C0004G480    ");
    setText(data, 23, "SX31A044");
    setText(data, 27, "NORVO SX3110 480GB                      ");
    setWord(data, 48, 0x4001);
    setWord(data, 59, 0xB000);
    setWord(data, 60, 0xFFFF);
    setWord(data, 69, 0x0080);
    setWord(data, 76, 0x010E);
    setWord(data, 77, 0x0006);
    setWord(data, 78, 0x0008);
    setWord(data, 79, 0x0008);
    setWord(data, 82, 0x0021);
    setWord(data, 83, 0x4401);
    setWord(data, 84, 0x4002);
    setWord(data, 85, 0x0021);
    setWord(data, 86, 0x8000);
    setWord(data, 87, 0x4100);
    setWord(data, 100, 0x0000);
    setWord(data, 101, 0x0002);
    setWord(data, 105, 0x0008);
    setWord(data, 108, 0x5001);
    setWord(data, 109, 0x0203);
    setWord(data, 110, 0x0405);
    setWord(data, 111, 0x0607);
    setWord(data, 119, 0x4100);
    setWord(data, 128, 0x0009);
    setText(data, 129, "BL000017");
    setWord(data, 169, 0x0001);
    setWord(data, 217, 0x0001);
    return data;
}

ScriptedDrive driveWith(const Payload& data) {
    ScriptedDrive drive("ATA", "FROM THE FINDER");
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = data}});
    protocols::ata::ReturnedTaskFile native;
    native.lba = 0x3FFFF;
    native.is48Bit = true;
    drive.onAta(ACCESSIBLE_MAX_ADDRESS, 0, 0, {{.returned = native}});
    drive->addProtocolIdentifier(AtaProtocolIdentifier());
    return drive;
}

std::string textOf(ScriptedDrive& drive, const core::Attribute& descriptor) {
    return drive->getAttribute(descriptor).valueAsString();
}

TEST(AtaProtocolIdentifier, FillsInWhatIdentifyDeviceTells) {
    ScriptedDrive drive = driveWith(identifyData());
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(attributeLines(*drive.getDevice()), "AccessibleMaxAddressSupported=True\n"
                                                  "Bootloader=BL000017\n"
                                                  "DIPMEnabled=True\n"
                                                  "DIPMSupported=True\n"
                                                  "DeviceStatus=Healthy\n"
                                                  "DownloadMicrocodePossible=True\n"
                                                  "Firmware=SX31A044\n"
                                                  "HDD=False\n"
                                                  "Index=0\n"
                                                  "MaximumLBA=131071\n"
                                                  "ModelNumber=NORVO SX3110 480GB\n"
                                                  "NCQ=True\n"
                                                  "NativeMaxLBA=262143\n"
                                                  "PhysicalSize=67108864\n"
                                                  "ProductProtocol=ATA\n"
                                                  "SMARTEnabled=True\n"
                                                  "SMARTSelfTestSupported=True\n"
                                                  "SanitizeBlockEraseSupported=True\n"
                                                  "SanitizeCryptoScrambleSupported=True\n"
                                                  "SanitizeSupported=True\n"
                                                  "SataGen1=True\n"
                                                  "SataGen2=True\n"
                                                  "SataGen3=True\n"
                                                  "SataNegotiatedSpeed=6.0 Gb/s\n"
                                                  "SectorSize=512\n"
                                                  "SecurityEnabled=False\n"
                                                  "SecurityFrozen=True\n"
                                                  "SecurityLocked=False\n"
                                                  "SecuritySupported=True\n"
                                                  "SelfTestSupported=True\n"
                                                  "SerialNumber=NSX3110C0004G480\n"
                                                  "TCGSupported=True\n"
                                                  "TrimSize=8\n"
                                                  "TrimSupported=True\n"
                                                  "WWID=5764891209986541063\n"
                                                  "WriteCacheEnabled=True\n"
                                                  "WriteCacheSupported=True\n"
                                                  "eDriveSupported=True\n");
}

TEST(AtaProtocolIdentifier, BelievesNoWordThatSaysItIsNotValid) {
    Payload data = identifyData();
    for (const std::uint32_t word : {48U, 83U, 84U, 87U, 119U})
        setWord(data, word, 0x8FFF);
    setWord(data, 76, 0xFFFF);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    for (const auto& descriptor :
         {attributes::TCGSupported(), attributes::WriteCacheSupported(), attributes::SMARTEnabled(),
          attributes::SelfTestSupported(), attributes::AccessibleMaxAddressSupported(),
          attributes::SataGen3(), attributes::DIPMEnabled()}) {
        EXPECT_EQ(textOf(drive, descriptor), "False") << descriptor.getName();
    }
    EXPECT_FALSE(drive->hasAttribute("SataNegotiatedSpeed"));
    EXPECT_FALSE(drive->hasAttribute("WWID"));
    EXPECT_EQ(textOf(drive, attributes::MaximumLBA()), "65534") << "of the 28-bit words";
    EXPECT_EQ(drive.sentAta().size(), 1U);
}

TEST(AtaProtocolIdentifier, BelievesWord119OnlyIfWord86SaysSo) {
    Payload data = identifyData();
    setWord(data, 86, 0x0000);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::AccessibleMaxAddressSupported()), "False");
}

TEST(AtaProtocolIdentifier, ADriveWithoutSectorsHasNoSize) {
    Payload data = identifyData();
    setWord(data, 101, 0x0000);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_FALSE(drive->hasAttribute("MaximumLBA"));
    EXPECT_FALSE(drive->hasAttribute("PhysicalSize"));
}

TEST(AtaProtocolIdentifier, TakesTheLargerNumberOfSectorsIfThereIsOne) {
    Payload data = identifyData();
    setWord(data, 69, 0x0008);
    setWord(data, 230, 0x0010);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::MaximumLBA()), "15");
}

TEST(AtaProtocolIdentifier, ReadsTheSizeOfLongSectors) {
    Payload data = identifyData();
    setWord(data, 106, 0x5000);
    setWord(data, 117, 0x0800);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::SectorSize()), "4096");
    EXPECT_EQ(textOf(drive, attributes::PhysicalSize()), "536870912");
}

TEST(AtaProtocolIdentifier, TellsARotatingDrive) {
    Payload data = identifyData();
    setWord(data, 217, 7200);
    ScriptedDrive drive = driveWith(data);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::HDD()), "True");
}

TEST(AtaProtocolIdentifier, ARefusedNativeMaximumIsNoFailure) {
    ScriptedDrive drive = driveWith(identifyData());
    drive.onAta(ACCESSIBLE_MAX_ADDRESS, 0, 0, {});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_FALSE(drive->hasAttribute("NativeMaxLBA"));
    EXPECT_EQ(textOf(drive, attributes::DeviceStatus()), "Healthy");
}

TEST(AtaProtocolIdentifier, APathThatFailsLaterKeepsWhatIsKnown) {
    ScriptedDrive drive = driveWith(identifyData());
    drive.onAta(ACCESSIBLE_MAX_ADDRESS, 0, 0,
                {{.pathStatus = core::statuses::ataToScsiConversionFailed()}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::Firmware()), "SX31A044");
    EXPECT_EQ(textOf(drive, attributes::DriverCommunicationError()), "27");
    EXPECT_EQ(textOf(drive, attributes::DeviceStatus()),
              "Unable to convert ATA command into an ATA-SCSI command.");
}

TEST(AtaProtocolIdentifier, AFailingIdentifyDeviceShowsInTheAttributes) {
    Payload damaged = identifyData();
    setWord(damaged, 255, 0x00A5);
    const std::string refused =
        "ATA command reported a problem. IDENTIFY DEVICE: error register 0x04.";

    struct Row {
        std::deque<Reply> replies;
        std::string error;
        std::string code;
    };

    const Row rows[] = {
        {{}, refused, "10"},
        {{{.data = Payload(511)}},
         "The IO command passed, but did not return the expected amount of data.",
         "49"},
        {{{.data = damaged}},
         "Failed to retrieve data from selected device. IDENTIFY DEVICE: wrong checksum.",
         "33"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        ScriptedDrive drive = driveWith(identifyData());
        drive.onAta(IDENTIFY_DEVICE, 0, 0, row.replies);
        EXPECT_EQ(drive->identify(), core::Status());
        EXPECT_EQ(attributeLines(*drive.getDevice()),
                  "DeviceStatus=" + row.error + "\nDriverCommunicationError=" + row.code +
                      "\nErrorString=" + row.error +
                      "\nIndex=0\nProductProtocol=ATA\nSectorSize=512\n"
                      "SerialNumber=FROM THE FINDER\n");
    }
}

TEST(AtaProtocolIdentifier, BearsGarbage) {
    Payload garbage(512);
    std::memset(garbage.data(), 0xFF, 510);
    std::memset(garbage.at(20), 'x', 74);  // words 10 to 46
    ScriptedDrive drive = driveWith(garbage);
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::SectorSize()), "512");
    EXPECT_FALSE(drive->hasAttribute("HDD"));
    EXPECT_FALSE(drive->hasAttribute("Bootloader"));
}

TEST(AtaProtocolIdentifier, BelievesNoDataWhoseTextsAreNone) {
    for (const std::uint32_t word : {10U, 23U, 46U}) {
        SCOPED_TRACE(word);
        Payload wrong = identifyData();
        setWord(wrong, word, 0x2080);
        ScriptedDrive drive = driveWith(wrong);
        EXPECT_EQ(drive->identify(), core::Status());
        EXPECT_FALSE(drive->hasAttribute("ModelNumber"));
        EXPECT_EQ(textOf(drive, attributes::SerialNumber()), "FROM THE FINDER");
        EXPECT_EQ(textOf(drive, attributes::DeviceStatus()),
                  "Failed to retrieve data from selected device. The Identify data make "
                  "no sense.");
    }
}

TEST(AtaProtocolIdentifier, LeavesOtherKindsOfDriveAlone) {
    ScriptedDrive drive("NVMe Admin", "SERIAL1");
    AtaProtocolIdentifier identifier;
    EXPECT_EQ(identifier.identify(*drive.getDevice()), core::Status());
    EXPECT_EQ(attributeLines(*drive.getDevice()), "Index=0\nSerialNumber=SERIAL1\n");
    EXPECT_TRUE(drive.sentAta().empty());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::identification
