#include "interfaces/orveli/identification/NvmeProtocolIdentifier.h"

#include "features/DeviceAttributes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/identification/AttributeLines.h"

#include <gtest/gtest.h>

#include <cstring>
#include <stdexcept>

namespace orvel::interfaces::orveli::identification {
namespace {

using core::Payload;
namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t NAMESPACE = 0x00;
constexpr std::uint8_t CONTROLLER = 0x01;
constexpr std::uint8_t ACTIVE_NAMESPACES = 0x02;

Payload page(std::initializer_list<std::pair<std::uint32_t, std::string>> parts) {
    Payload bytes(4096);
    for (const auto& [offset, part] : parts)
        std::memcpy(bytes.at(offset), part.data(), part.size());
    return bytes;
}

std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values)
        text += static_cast<char>(value);
    return text;
}

Payload controllerData() {
    return page({{4, "NVX4510A0001K1P6    "},
                 {24, "NORVO NX4510 1.6TB                      "},
                 {64, "NX45A120"},
                 {76, bytes({0x01})},                     // CMIC: two ports
                 {78, bytes({0x07, 0x00})},               // CNTLID
                 {80, bytes({0x02, 0x04, 0x01, 0x00})},   // VER 1.4.2
                 {256, bytes({0x1E, 0x00})},              // OACS
                 {261, bytes({0x0A})},                    // LPA: effects, telemetry
                 {262, bytes({0x3F})},                    // ELPE
                 {312, bytes({0x01, 0x00, 0x00, 0x04})},  // RPMBS
                 {328, bytes({0x03, 0x00, 0x00, 0x00})},  // SANICAP: crypto, block
                 {516, bytes({0x80, 0x00, 0x00, 0x00})},  // NN
                 {520, bytes({0x04, 0x00})},              // ONCS: dataset management
                 {524, bytes({0x04})},                    // FNA: cryptographic erase
                 {525, bytes({0x01})},                    // VWC
                 {3072, "BOOT0042"},
                 {3080, bytes({0xFF, 0xFF, 0x03, 0, 0, 0, 0, 0})}});
}

Payload namespaceData() {
    return page({{0, bytes({0x00, 0x00, 0x02, 0, 0, 0, 0, 0})},  // NSZE
                 {25, bytes({0x04})},                            // NLBAF
                 {26, bytes({0x13})},                            // FLBAS: 3, extended
                 {28, bytes({0x1F})},                            // DPC
                 {29, bytes({0x09})},                            // DPS: type 1, first
                 {128 + 12, bytes({0x08, 0x00, 0x0C, 0x00})}});  // LBA format 3
}

ScriptedDrive healthyDrive() {
    ScriptedDrive drive("NVMe Admin", "FROM THE FINDER");
    drive.onNvme(IDENTIFY, CONTROLLER, {{.data = controllerData()}});
    drive.onNvme(IDENTIFY, ACTIVE_NAMESPACES, {{.data = page({{0, bytes({1, 0, 0, 0, 2})}})}});
    drive.onNvme(IDENTIFY, NAMESPACE, {{.data = namespaceData()}});
    drive->addProtocolIdentifier(NvmeProtocolIdentifier());
    return drive;
}

std::string textOf(ScriptedDrive& drive, const core::Attribute& descriptor) {
    return drive->getAttribute(descriptor).valueAsString();
}

TEST(NvmeProtocolIdentifier, FillsInWhatTheStructuresTell) {
    ScriptedDrive drive = healthyDrive();
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(attributeLines(*drive.getDevice()), "Bootloader=BOOT0042\n"
                                                  "DeviceStatus=Healthy\n"
                                                  "DirectivesSupported=False\n"
                                                  "DownloadMicrocodePossible=True\n"
                                                  "EndToEndDataProtCapabilities=31\n"
                                                  "Firmware=NX45A120\n"
                                                  "FormatNVMCryptoEraseSupported=True\n"
                                                  "FormatNVMSupported=True\n"
                                                  "Index=0\n"
                                                  "IsDualPort=True\n"
                                                  "LBAFormat=3\n"
                                                  "MaximumLBA=131071\n"
                                                  "MetadataSetting=1\n"
                                                  "MetadataSize=8\n"
                                                  "ModelNumber=NORVO NX4510 1.6TB\n"
                                                  "NVMe1Point2OrGreater=True\n"
                                                  "NVMe1Point3OrGreater=True\n"
                                                  "NVMeControllerID=7\n"
                                                  "NVMeMajorVersion=1\n"
                                                  "NVMeMinorVersion=4\n"
                                                  "NVMeTertiaryVersion=2\n"
                                                  "NamespaceId=1\n"
                                                  "NamespaceManagementSupported=True\n"
                                                  "NativeMaxLBA=32767\n"
                                                  "NumErrorLogPageEntries=64\n"
                                                  "NumLBAFormats=5\n"
                                                  "NumberOfNamespacesSupported=128\n"
                                                  "PhysicalSize=537919488\n"
                                                  "ProductProtocol=NVME\n"
                                                  "ProtectionInformation=1\n"
                                                  "ProtectionInformationLocation=1\n"
                                                  "RPMBAccessSize=4\n"
                                                  "RPMBSupported=True\n"
                                                  "SanitizeBlockEraseSupported=True\n"
                                                  "SanitizeCryptoScrambleSupported=True\n"
                                                  "SanitizeSupported=True\n"
                                                  "SectorDataSize=4096\n"
                                                  "SectorSize=4104\n"
                                                  "SelfTestSupported=True\n"
                                                  "SerialNumber=NVX4510A0001K1P6\n"
                                                  "TelemetryLogSupported=True\n"
                                                  "TrimSupported=True\n"
                                                  "WriteCacheSupported=True\n");
}

TEST(NvmeProtocolIdentifier, CountsTheNativeMaximumInBlocksOfTheFormat) {
    struct Row {
        char exponent;
        const char* native;
    };

    for (const Row& row : {Row{9, "262143"}, {10, "131071"}, {12, "32767"}, {27, "0"}}) {
        Payload formatted = namespaceData();
        *formatted.at(128 + 12 + 2) = static_cast<std::uint8_t>(row.exponent);
        ScriptedDrive drive = healthyDrive();
        drive.onNvme(IDENTIFY, NAMESPACE, {{.data = formatted}});
        EXPECT_EQ(drive->identify(), core::Status());
        EXPECT_EQ(textOf(drive, attributes::NativeMaxLBA()), row.native);
    }
}

TEST(NvmeProtocolIdentifier, AsksForTheFirstAttachedNamespace) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, ACTIVE_NAMESPACES, {{.data = page({{0, bytes({5, 0, 0, 0})}})}});
    EXPECT_EQ(drive->identify(), core::Status());
    ASSERT_EQ(drive.sentNvme().size(), 3U);
    EXPECT_EQ(drive.sentNvme()[2].fields.cdw10, 0U);
    EXPECT_EQ(drive.sentNvme()[2].fields.nsid, 5U);
    EXPECT_EQ(textOf(drive, attributes::NamespaceId()), "5");
    EXPECT_FALSE(drive->hasAttribute("NativeMaxLBA")) << "told of namespace 1 alone";
}

TEST(NvmeProtocolIdentifier, TakesNamespace1OfADriveThatDoesNotKnowTheList) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, ACTIVE_NAMESPACES, {});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::NamespaceId()), "1");
    EXPECT_EQ(textOf(drive, attributes::DeviceStatus()), "Healthy");
}

TEST(NvmeProtocolIdentifier, ADriveWithoutNamespacesIsHealthyAndHasNoSize) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, ACTIVE_NAMESPACES, {{.data = page({})}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_FALSE(drive->hasAttribute("MaximumLBA"));
    EXPECT_FALSE(drive->hasAttribute("PhysicalSize"));
    EXPECT_EQ(textOf(drive, attributes::ModelNumber()), "NORVO NX4510 1.6TB");
    EXPECT_EQ(textOf(drive, attributes::DeviceStatus()), "Healthy");
}

TEST(NvmeProtocolIdentifier, ARefusedIdentifyControllerShowsInTheAttributes) {
    ScriptedDrive drive("NVMe Admin", "SERIAL1");
    drive->addProtocolIdentifier(NvmeProtocolIdentifier());
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(attributeLines(*drive.getDevice()),
              "DeviceStatus=NVMe command reported a problem. Identify: Invalid Command Opcode.\n"
              "DriverCommunicationError=25\n"
              "ErrorString=NVMe command reported a problem. Identify: Invalid Command Opcode.\n"
              "Index=0\n"
              "ProductProtocol=NVME\n"
              "SectorSize=512\n"
              "SerialNumber=SERIAL1\n");
}

TEST(NvmeProtocolIdentifier, KeepsWhatItKnowsWhenALaterCommandFails) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, NAMESPACE, {{.data = Payload(100)}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::Firmware()), "NX45A120");
    EXPECT_FALSE(drive->hasAttribute("MaximumLBA"));
    EXPECT_EQ(textOf(drive, attributes::DriverCommunicationError()), "49");
    EXPECT_EQ(textOf(drive, attributes::ErrorString()),
              "The IO command passed, but did not return the expected amount of data.");
}

TEST(NvmeProtocolIdentifier, APathThatFailsDuringTheListIsAFailure) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, ACTIVE_NAMESPACES,
                 {{.pathStatus = core::statuses::adminCommandNotSendable()}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_FALSE(drive->hasAttribute("NamespaceId"));
    EXPECT_EQ(textOf(drive, attributes::DriverCommunicationError()), "50");
}

TEST(NvmeProtocolIdentifier, BearsGarbage) {
    Payload garbage(4096);
    std::memset(garbage.data(), 0xFF, 4096);
    ScriptedDrive drive = healthyDrive();
    for (const std::uint8_t structure : {ACTIVE_NAMESPACES, NAMESPACE})
        drive.onNvme(IDENTIFY, structure, {{.data = garbage}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::SectorSize()), "512");
    EXPECT_FALSE(drive->hasAttribute("NativeMaxLBA"));
    EXPECT_EQ(textOf(drive, attributes::MaximumLBA()), "18446744073709551614");
}

TEST(NvmeProtocolIdentifier, BelievesNoControllerDataWhoseTextsAreNone) {
    for (const std::uint32_t offset : {4U, 43U, 71U}) {
        for (const int byte : {0x01, 0x1F, 0x7F, 0x80, 0xFF}) {
            SCOPED_TRACE(offset);
            Payload wrong = controllerData();
            *wrong.at(offset) = static_cast<std::uint8_t>(byte);
            ScriptedDrive drive = healthyDrive();
            drive.onNvme(IDENTIFY, CONTROLLER, {{.data = wrong}});
            EXPECT_EQ(drive->identify(), core::Status());
            EXPECT_FALSE(drive->hasAttribute("ModelNumber"));
            EXPECT_EQ(textOf(drive, attributes::DeviceStatus()),
                      "Failed to retrieve data from selected device. The Identify data make "
                      "no sense.");
        }
    }
}

TEST(NvmeProtocolIdentifier, BelievesTextsThatAreFilledUpWithZeroes) {
    Payload filled = controllerData();
    std::memset(filled.at(42), 0, 22);
    *filled.at(4) = '~';
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, CONTROLLER, {{.data = filled}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::ModelNumber()), "NORVO NX4510 1.6TB");
    EXPECT_EQ(textOf(drive, attributes::SerialNumber()), "~VX4510A0001K1P6");
}

TEST(NvmeProtocolIdentifier, KeepsTheUsualSectorSizeForAFormatThatIsNone) {
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, NAMESPACE, {{.data = page({{0, bytes({0x08})}})}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::SectorSize()), "512");
    EXPECT_FALSE(drive->hasAttribute("SectorDataSize"));
    EXPECT_EQ(textOf(drive, attributes::MaximumLBA()), "7");
}

TEST(NvmeProtocolIdentifier, ReadsTheVendorsPartOfNoOtherMaker) {
    Payload other = controllerData();
    std::memcpy(other.at(24), "OTHER", 5);
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, CONTROLLER, {{.data = other}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::ModelNumber()), "OTHER NX4510 1.6TB");
    EXPECT_FALSE(drive->hasAttribute("Bootloader"));
    EXPECT_FALSE(drive->hasAttribute("NativeMaxLBA"));
}

TEST(NvmeProtocolIdentifier, TellsNoNumbersOfAVersionThatIsNotReported) {
    Payload old = controllerData();
    std::memset(old.at(80), 0, 4);
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, CONTROLLER, {{.data = old}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::NVMe1Point2OrGreater()), "False");
    EXPECT_FALSE(drive->hasAttribute("NVMeMajorVersion"));
}

TEST(NvmeProtocolIdentifier, TellsVersions1Point2And1Point3Apart) {
    Payload older = controllerData();
    std::memcpy(older.at(80), "\x00\x02\x01\x00", 4);
    ScriptedDrive drive = healthyDrive();
    drive.onNvme(IDENTIFY, CONTROLLER, {{.data = older}});
    EXPECT_EQ(drive->identify(), core::Status());
    EXPECT_EQ(textOf(drive, attributes::NVMe1Point2OrGreater()), "True");
    EXPECT_EQ(textOf(drive, attributes::NVMe1Point3OrGreater()), "False");
}

TEST(NvmeProtocolIdentifier, LeavesOtherKindsOfDriveAlone) {
    ScriptedDrive drive("ATA", "SERIAL1");
    NvmeProtocolIdentifier identifier;
    EXPECT_EQ(identifier.identify(*drive.getDevice()), core::Status());
    EXPECT_EQ(attributeLines(*drive.getDevice()), "Index=0\nSerialNumber=SERIAL1\n");
    EXPECT_TRUE(drive.sentNvme().empty());
}

/// A path that fails by an exception of its own.
class BrokenPath : public core::CommandPath {
public:
    BrokenPath() : CommandPath(nullptr, "broken") {}

    core::Status checkPartitions() override { return core::statuses::deviceHasNoPartitions(); }

    std::unique_ptr<CommandPath> clone() const override { return std::make_unique<BrokenPath>(); }

    bool isAvailable(core::Device&) override { return false; }

    core::CommandResult send(const core::Command&, core::Payload, core::Device&) override {
        throw std::runtime_error("the cable is gone");
    }
};

TEST(NvmeProtocolIdentifier, OutlivesAnyExceptionOfAPath) {
    core::Device device;
    device.addCommandPath(std::make_shared<BrokenPath>());
    device.addCommandSet("NVMe Admin", "broken");
    NvmeProtocolIdentifier identifier;
    EXPECT_EQ(identifier.identify(device).getCode(), 33);
    EXPECT_EQ(attributeLines(device),
              "DriverCommunicationError=33\n"
              "ErrorString=Failed to retrieve data from selected device. the cable is gone\n"
              "ProductProtocol=NVME\n");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::identification
