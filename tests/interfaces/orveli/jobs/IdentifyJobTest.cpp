#include "interfaces/orveli/jobs/IdentifyJob.h"

#include "tests/interfaces/orveli/access/Bytes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;

std::string identify(const std::string& arguments = "") {
    return R"(<Object name="Identify" type="Method">)" + arguments + "</Object>";
}

std::string structure(const std::string& number) {
    return R"(<Property name="ControllerNamespaceStructure" value=")" + number + R"("/>)";
}

std::string namespaceId(const std::string& nsid) {
    return R"(<Property name="NamespaceId" value=")" + nsid + R"("/>)";
}

enum class Management { SUPPORTED, NOT_SUPPORTED };

/// Controller 5.
ScriptedDrive nvmeDrive(Management management = Management::SUPPORTED) {
    ScriptedDrive drive("NVMe Admin");
    const char* const oacs = management == Management::SUPPORTED ? "08" : "00";
    drive.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096, {{78, "05"}, {256, oacs}})}});
    return drive;
}

std::string inDrive(const std::string& contents) {
    return R"(<Object><Object key="SERIAL1" name="Identify">)" + contents + "</Object></Object>";
}

void expectParts(const std::string& output, std::initializer_list<const char*> parts) {
    std::size_t at = 0;
    for (const char* const part : parts) {
        const std::size_t found = output.find(part, at);
        ASSERT_NE(found, std::string::npos) << part << "\n" << output;
        at = found;
    }
}

void expectFailure(const std::string& request, const ScriptedDrive& drive, std::int32_t category,
                   std::int32_t code) {
    IdentifyJob job;
    const Outcome outcome = runJob(job, request, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getCategory(), category) << outcome.status.getMessage();
    EXPECT_EQ(outcome.status.getCode(), code) << outcome.status.getMessage();
    EXPECT_EQ(outcome.output, "");
}

std::string outputOf(const std::string& request, const ScriptedDrive& drive) {
    IdentifyJob job;
    return runJob(job, request, {drive.getDevice()}).output;
}

TEST(IdentifyJob, ShowsAControllersDataUnlessToldOtherwise) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01,
                 {{.data = bytesOf(4096, {{0, "FEFF"},
                                          {4, "4E5658343531302020"},
                                          {73, "564E02"},
                                          {77, "05"},
                                          {80, "00040100"},
                                          {256, "1E00"},
                                          {260, "14"},
                                          {263, "01"},
                                          {280, "000000000000000001"},
                                          {2048, "F401"},
                                          {2080, "64000003"},
                                          {2084, "E8030000"},
                                          {2070, "41"},
                                          {3072, "4E58343542303037"},
                                          {3080, "AF02"},
                                          {4095, "EE"}})}});
    const std::string output = outputOf(identify(), drive);
    expectParts(
        output,
        {R"(<Property description="PCI Vendor ID" name="VID" value="0xFFFE"/>)",
         R"(<Property description="Serial Number" name="SN" value="NVX4510"/>)",
         R"(<Property description="IEEE OUI Identifier" name="IEEE" value="0x024E56"/>)",
         R"(<Property description="Maximum Data Transfer Size" name="MDTS" value="5"/>)",
         R"(<Property description="Version" name="VER" value="0x00010400"/>)",
         R"(<Property description="Tertiary Version Number" name="VER.TER" value="0"/>)",
         R"(<Property description="Minor Version Number" name="VER.MNR" value="4"/>)",
         R"(<Property description="Major Version Number" name="VER.MJR" value="1"/>)",
         R"(<Property description="Optional Admin Command Support" name="OACS" value="0x001E"/>)",
         R"(name="OACS.SECURITY" value="0"/>)",
         R"(name="OACS.FORMAT_NVM" value="1"/>)",
         R"(name="OACS.GET_LBA_STATUS" value="0"/>)",
         R"(name="FRMW" value="0x14"/>)",
         R"(name="FRMW.NUMBER_OF_SLOTS" value="2"/>)",
         R"(<Property description="Total NVM Capacity" name="TNVMCAP" )"
         R"(value="18446744073709551616"/>)",
         R"(name="SGLS" value="0x00000000"/>)",
         R"(<Property description="Bootloader Revision" name="Bootloader" value="NX45B007"/>)",
         R"(<Property description="Native Maximum LBA of namespace 1, in blocks of 512 bytes" name="NativeMaximumLBA" )"
         R"(value="687"/>)",
         R"(<Property name="VendorUniqueIdentifyPayload" value="4E58343542303037AF02)",
         R"(EE"/><Object key="0" name="PowerState">)",
         R"(<Property description="Maximum Power" name="MP" value="500"/>)",
         R"(name="APW_APS" value="0x41"/>)",
         R"(<Property description="Active Power Workload" name="APW_APS.APW" value="1"/>)",
         R"(name="APW_APS.APS" value="1"/>)",
         R"(</Object><Object key="1" name="PowerState">)",
         R"(name="MP" value="100"/>)",
         R"(name="MXPS_NOPS" value="0x03"/>)",
         R"(name="MXPS_NOPS.MXPS" value="1"/>)",
         R"(name="MXPS_NOPS.NOPS" value="1"/>)",
         R"(name="ENLAT" value="1000"/>)",
         R"(</Object></Object></Object>)"});
    EXPECT_EQ(output.find(R"(key="2")"), std::string::npos);
    EXPECT_EQ(output.find(R"(name="PSD")"), std::string::npos);
    EXPECT_EQ(output.find(R"(name="VS")"), std::string::npos);
    EXPECT_EQ(outputOf(identify(structure("1") + namespaceId("0")), drive), output);
}

TEST(IdentifyJob, ShowsNoMorePowerStatesAndFormatsThanThereIsRoomFor) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096, {{256, "08"}, {263, "FF"}})}});
    drive.onNvme(IDENTIFY, 0x11, {{.data = bytesOf(4096, {{0, "01"}, {25, "FF"}})}});
    const std::string controller = outputOf(identify(), drive);
    EXPECT_NE(controller.find(R"(<Object key="31" name="PowerState">)"), std::string::npos);
    EXPECT_EQ(controller.find(R"(<Object key="32")"), std::string::npos);
    const std::string names = outputOf(identify(structure("17") + namespaceId("1")), drive);
    EXPECT_NE(names.find(R"(<Object key="15" name="LBAFormat">)"), std::string::npos);
    EXPECT_EQ(names.find(R"(<Object key="16")"), std::string::npos);
}

TEST(IdentifyJob, ShowsANamespaceWithItsFormats) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x11,
                 {{.data = bytesOf(4096, {{0, "0010"},
                                          {25, "01"},
                                          {26, "11"},
                                          {104, "0123456789ABCDEF0123456789ABCDEF"},
                                          {128, "00000902"},
                                          {132, "08000C00"}})}});
    expectParts(outputOf(identify(structure("17") + namespaceId("0x2")), drive),
                {R"(<Property description="Namespace Size" name="NSZE" value="4096"/>)",
                 R"(<Property description="Number of LBA Formats" name="NLBAF" value="1"/>)",
                 R"(<Property description="Formatted LBA Size" name="FLBAS" value="0x11"/>)",
                 R"(name="FLBAS.FORMAT" value="1"/>)",
                 R"(name="FLBAS.METADATA_AT_END" value="1"/>)",
                 R"(name="NGUID" value="0123456789ABCDEF0123456789ABCDEF"/>)",
                 R"(<Object key="0" name="LBAFormat">)", R"(name="MS" value="0"/>)",
                 R"(name="LBADS" value="9"/>)", R"(name="RP" value="0x02"/>)",
                 R"(name="RP.RP" value="2"/>)", R"(<Object key="1" name="LBAFormat">)",
                 R"(name="MS" value="8"/>)", R"(name="LBADS" value="12"/>)"});
    EXPECT_EQ(drive.sentNvme().back().fields.nsid, 2U);
}

TEST(IdentifyJob, ListsNamespacesAndControllers) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x02, {{.data = bytesOf(4096, {{0, "0100000002000000"}})}});
    drive.onNvme(IDENTIFY, 0x10, {{.data = bytesOf(4096)}});
    drive.onNvme(IDENTIFY, 0x11, {{.data = bytesOf(4096, {{0, "01"}})}});
    drive.onNvme(IDENTIFY, 0x12, {{.data = bytesOf(4096, {{0, "01000500"}})}});
    drive.onNvme(IDENTIFY, 0x13, {{.data = bytesOf(4096, {{0, "0200050001FF"}})}});
    EXPECT_EQ(outputOf(identify(structure("2") + namespaceId("0")), drive),
              inDrive(R"(<Property name="NumberOfNamespaces" value="2"/>)"
                      R"(<Property name="NamespaceId 0" value="1"/>)"
                      R"(<Property name="NamespaceId 1" value="2"/>)"));
    EXPECT_EQ(outputOf(identify(structure("16") + namespaceId("0")), drive),
              inDrive(R"(<Property name="NumberOfNamespaces" value="0"/>)"));
    EXPECT_EQ(outputOf(identify(structure("18") + namespaceId("3")), drive),
              inDrive(R"(<Property name="NumberOfControllers" value="1"/>)"
                      R"(<Property name="NVMeControllerID 0" value="5"/>)"));
    EXPECT_EQ(drive.sentNvme().back().fields.nsid, 3U);
    EXPECT_EQ(outputOf(identify(structure("19") + namespaceId("0")), drive),
              inDrive(R"(<Property name="NumberOfControllers" value="2"/>)"
                      R"(<Property name="NVMeControllerID 0" value="5"/>)"
                      R"(<Property name="NVMeControllerID 1" value="65281"/>)"));
}

TEST(IdentifyJob, AsksForWhatFollowsAFullList) {
    core::Payload full(4096);
    for (std::uint32_t i = 0; i < 1024; ++i) {
        *full.at(4 * i) = static_cast<std::uint8_t>(i + 1);
        *full.at(4 * i + 1) = static_cast<std::uint8_t>((i + 1) / 256);
    }
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x02, {{.data = full}, {.data = bytesOf(4096, {{0, "0104"}})}});
    expectParts(outputOf(identify(structure("2")), drive),
                {R"(name="NumberOfNamespaces" value="1025")",
                 R"(name="NamespaceId 1023" value="1024")",
                 R"(name="NamespaceId 1024" value="1025")"});
    EXPECT_EQ(drive.sentNvme().back().fields.nsid, 1024U);

    drive.onNvme(IDENTIFY, 0x02, {{.data = full}});
    expectFailure(identify(structure("2")), drive, 10, 33);
}

TEST(IdentifyJob, AsksForWhatFollowsAFullListOfControllers) {
    core::Payload full = bytesOf(4096, {{0, "FF07"}});
    for (std::uint32_t i = 0; i < 2047; ++i) {
        *full.at(2 * i + 2) = static_cast<std::uint8_t>(i);
        *full.at(2 * i + 3) = static_cast<std::uint8_t>(i / 256);
    }
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x13, {{.data = full}, {.data = bytesOf(4096, {{0, "0100FF0F"}})}});
    expectParts(outputOf(identify(structure("19")), drive),
                {R"(name="NumberOfControllers" value="2048")",
                 R"(name="NVMeControllerID 2046" value="2046")",
                 R"(name="NVMeControllerID 2047" value="4095")"});
    EXPECT_EQ(drive.sentNvme().back().fields.cdw10, 0x07FF0013U);
}

TEST(IdentifyJob, FailsForAListThatIsNotAscending) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x02, {{.data = bytesOf(4096, {{0, "0100000001000000"}})}});
    expectFailure(identify(structure("2")), drive, 10, 33);
    drive.onNvme(IDENTIFY, 0x13, {{.data = bytesOf(4096, {{0, "020005000400"}})}});
    expectFailure(identify(structure("19")), drive, 10, 33);
}

TEST(IdentifyJob, ADriveWithoutNamespaceManagementHasOneController) {
    ScriptedDrive drive = nvmeDrive(Management::NOT_SUPPORTED);
    drive.onNvme(IDENTIFY, 0x00, {{.data = bytesOf(4096, {{0, "77"}})}});
    drive.onNvme(IDENTIFY, 0x02, {{.data = bytesOf(4096, {{0, "01"}})}});
    const std::string controllers = inDrive(R"(<Property name="NumberOfControllers" value="1"/>)"
                                            R"(<Property name="NVMeControllerID 0" value="5"/>)");
    EXPECT_EQ(outputOf(identify(structure("19")), drive), controllers);
    EXPECT_EQ(outputOf(identify(structure("18") + namespaceId("1")), drive), controllers);
    EXPECT_EQ(outputOf(identify(structure("16")), drive),
              inDrive(R"(<Property name="NumberOfNamespaces" value="1"/>)"
                      R"(<Property name="NamespaceId 0" value="1"/>)"));
    expectParts(outputOf(identify(structure("17") + namespaceId("1")), drive),
                {R"(name="NSZE" value="119")"});
}

TEST(IdentifyJob, RefusesStructuresAndNamespacesThatThereAreNot) {
    struct Row {
        std::string arguments;
        std::int32_t code;
    };

    // clang-format off
    const Row rows[] = {
    //  arguments                                     code
        {structure("0") + namespaceId("1"),           36},
        {structure("257"),                            36},
        {structure("x"),                              36},
        {structure("17"),                             76},
        {structure("18"),                             76},
        {structure("17") + namespaceId(""),           80},
        {structure("17") + namespaceId("x"),          80},
        {structure("17") + namespaceId("0"),          80},
        {structure("17") + namespaceId("0xZ1"),       80},
        {structure("17") + namespaceId("4294967295"), 80},
        {structure("17") + namespaceId("4294967297"), 80},
        {structure("17") + namespaceId("7"),          80},
        {structure("18") + namespaceId("7"),          80},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(IDENTIFY, 0x11, {{.nvmeStatus = {0, 0x0B}}});
        expectFailure(identify(row.arguments), drive, 10, row.code);
        drive.onNvme(IDENTIFY, 0x11, {{.data = bytesOf(4096)}});
        expectFailure(identify(row.arguments), drive, 10, row.code);
    }
}

TEST(IdentifyJob, NamesTheStructuresThatThereAre) {
    IdentifyJob job;
    EXPECT_EQ(
        runJob(job, identify(structure("3")), {nvmeDrive().getDevice()}).status.getMessage(),
        "Invalid property specified. ControllerNamespaceStructure must be 1, 2, 16, 17, 18 or "
        "19.");
}

TEST(IdentifyJob, FailsForMoreControllersThanFitAndForHalfAStructure) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x13, {{.data = bytesOf(4096, {{0, "0008"}})}});
    expectFailure(identify(structure("19")), drive, 10, 33);
    drive.onNvme(IDENTIFY, 0x13, {{.data = bytesOf(4095)}});
    expectFailure(identify(structure("19")), drive, 0, 49);
    drive.onNvme(IDENTIFY, 0x13, {{.nvmeStatus = {0, 0x06}}});
    expectFailure(identify(structure("19")), drive, 0, 25);
}

TEST(IdentifyJob, ShowsIdentifyDeviceData) {
    ScriptedDrive drive("ATA");
    drive.onAta(IDENTIFY_DEVICE, 0, 0,
                {{.data = bytesOf(512, {{0, "4000"},
                                        {20, "534E2058202020202020"},
                                        {150, "1F00"},
                                        {200, "B0A3E037"},
                                        {216, "EA5C01C123450000"},
                                        {258, "5853313330423730"},
                                        {319, "99"}})}});
    const std::string output = outputOf(identify(), drive);
    expectParts(output, {R"(<Property name="GeneralConfiguration" value="0x0040"/>)",
                         R"(<Property description="0 = ATA device" )"
                         R"(name="GeneralConfiguration.NOT_AN_ATA_DEVICE" value="0"/>)",
                         R"(<Property name="SerialNumber" value="NSX"/>)",
                         R"(<Property name="QueueDepth" value="0x001F"/>)",
                         R"(<Property description="Maximum queue depth - 1" )"
                         R"(name="QueueDepth.MAXIMUM_QUEUE_DEPTH" value="31"/>)",
                         R"(<Property name="UserAddressableSectors" value="937468848"/>)",
                         R"(<Property name="WorldWideName" value="5CEAC10145230000"/>)",
                         R"(<Property name="IntegrityWord" value="0x0000"/>)",
                         R"(<Property name="Bootloader" value="SX31B007"/>)",
                         R"(<Property name="VendorUniqueIdentifyPayload" value="5853313330423730)",
                         R"(99"/></Object></Object>)"});
    EXPECT_EQ(output.find(R"(name="VendorSpecific")"), std::string::npos);
}

TEST(IdentifyJob, SataDrivesHaveNoStructuresToChooseFrom) {
    ScriptedDrive drive("ATA");
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = bytesOf(512)}});
    expectFailure(identify(structure("1") + namespaceId("0")), drive, 10, 3);
    EXPECT_TRUE(drive.sentAta().empty());
}

TEST(IdentifyJob, FailsForIdentifyDeviceDataWithAWrongChecksum) {
    ScriptedDrive drive("ATA");
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = bytesOf(512, {{510, "A500"}})}});
    expectFailure(identify(), drive, 10, 33);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
