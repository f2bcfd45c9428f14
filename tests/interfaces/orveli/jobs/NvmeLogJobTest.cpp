#include "interfaces/orveli/jobs/NvmeLogJob.h"

#include "interfaces/orveli/jobs/EyeDiagramJob.h"
#include "tests/interfaces/orveli/access/Bytes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr const char* ALL_LOGS = R"(<Object name="NVMeLog" type="Method"/>)";
constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t GET_LOG_PAGE = 0x02;

constexpr protocols::nvme::StatusCode INVALID_FIELD{0, 0x02};
constexpr protocols::nvme::StatusCode INVALID_LOG_PAGE{1, 0x09};

std::string oneLog(const std::string& id) {
    return R"(<Object name="NVMeLog" type="Method"><Property name="LogId" value=")" + id +
           R"("/></Object>)";
}

std::string eyeDiagram(const std::string& arguments) {
    return R"(<Object name="EyeDiagram" type="GetProperties">)" + arguments + "</Object>";
}

/// Keeps three entries of error information, and takes 4096 bytes at once.
ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin");
    drive.setNorvo(true);
    drive.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096, {{77, "01"}, {262, "02"}})}});
    return drive;
}

std::string inDrive(const std::string& title, const std::string& contents) {
    return R"(<Object><Object key="SERIAL1" name=")" + title + R"(">)" + contents +
           "</Object></Object>";
}

void expectFailure(Job& job, const std::string& request, const ScriptedDrive& drive,
                   std::int32_t category, std::int32_t code) {
    const Outcome outcome = runJob(job, request, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getCategory(), category) << outcome.status.getMessage();
    EXPECT_EQ(outcome.status.getCode(), code) << outcome.status.getMessage();
    EXPECT_EQ(outcome.output, "");
}

std::string property(const std::string& name, const std::string& value) {
    return R"(<Property name=")" + name + R"(" value=")" + value + R"("/>)";
}

TEST(NvmeLogJob, AnErrorThatIsAboutNoParameterHasNoPlaceInTheCommand) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x01,
                 {{.data = bytesOf(192, {{128, "0500000000000000"
                                               "00000A000440"
                                               "FFFF"}})}});
    NvmeLogJob job;
    const std::string output = runJob(job, oneLog("1"), {drive.getDevice()}).output;
    EXPECT_NE(output.find(R"(name="ParameterErrorLocation" value="65535"/>)"), std::string::npos)
        << output;
    EXPECT_EQ(output.find("ParameterErrorLocation."), std::string::npos);
}

TEST(NvmeLogJob, ShowsEachEntryOfErrorInformationThatCounts) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x01,
                 {{.data = bytesOf(192, {{128, "0500000000000000"
                                               "00000A000440"
                                               "28041122334455667788"
                                               "01000000"
                                               "0002"},
                                         {160, "FF"},
                                         {168, "09"}})}});
    NvmeLogJob job;
    EXPECT_EQ(
        runJob(job, oneLog("1"), {drive.getDevice()}).output,
        inDrive("NVMeLog",
                R"(<Object name="ErrorInfo"><Property name="NumberOfEntries" value="1"/>)"
                R"(<Object key="2" name="Entry">)"
                R"(<Property name="ErrorCount" value="5"/>)"
                R"(<Property name="SubmissionQueueID" value="0"/>)"
                R"(<Property name="CommandID" value="10"/>)"
                R"(<Property name="StatusField" value="0x4004"/>)"
                R"(<Property description="Status Code Type" name="StatusField.SCT" value="0"/>)"
                R"(<Property description="Status Code" name="StatusField.SC" value="2"/>)"
                R"(<Property description="Command Retry Delay" name="StatusField.CRD" value="0"/>)"
                R"(<Property description="More" name="StatusField.M" value="1"/>)"
                R"(<Property description="Do Not Retry" name="StatusField.DNR" value="0"/>)"
                R"(<Property name="Status" value="Invalid Field in Command"/>)"
                R"(<Property name="ParameterErrorLocation" value="1064"/>)"
                R"(<Property description="byte in the command that contained the error" )"
                R"(name="ParameterErrorLocation.BYTE" value="40"/>)"
                R"(<Property description="bit in the command that contained the error" )"
                R"(name="ParameterErrorLocation.BIT" value="4"/>)"
                R"(<Property name="LBA" value="9833440827789222417"/>)"
                R"(<Property name="Namespace" value="1"/>)"
                R"(<Property name="VendorSpecificInformationAvailable" value="0"/>)"
                R"(<Property name="TRTYPE" value="2"/>)"
                R"(<Property name="CommandSpecificInformation" value="255"/>)"
                R"(<Property name="TransportTypeSpecificInformation" value="9"/>)"
                R"(</Object></Object>)"));
    EXPECT_EQ(drive.sentNvme().back().fields.cdw10, 0x002F8001U);
}

TEST(NvmeLogJob, ShowsAsManyErrorsAsADriveWithoutOffsetsGivesAtOnce) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096, {{77, "01"}, {262, "FF"}})}});
    drive.onNvme(GET_LOG_PAGE, 0x01, {{.data = bytesOf(8192, {{8128, "09"}})}});
    NvmeLogJob job;
    const std::string output = runJob(job, oneLog("1"), {drive.getDevice()}).output;
    EXPECT_NE(output.find(property("NumberOfEntries", "1")), std::string::npos) << output;
    ASSERT_EQ(drive.sentNvme().size(), 2U);
    EXPECT_EQ(drive.sentNvme()[1].fields.cdw10, 0x07FF8001U);
}

TEST(NvmeLogJob, SplitsNoLocationOfAnErrorThatIsAboutNoParameter) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x01,
                 {{.data = bytesOf(192, {{0, "0600000000000000"}, {14, "FFFF1122334455667788"}})}});
    NvmeLogJob job;
    EXPECT_NE(runJob(job, oneLog("1"), {drive.getDevice()})
                  .output.find(R"(<Property name="ParameterErrorLocation" value="65535"/>)"
                               R"(<Property name="LBA" value="9833440827789222417"/>)"),
              std::string::npos);
}

TEST(NvmeLogJob, ShowsSmartHealthUnderTheCataloguesNames) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x02,
                 {{.data = bytesOf(512, {{0, "2D3A01040A61"
                                             "07"},
                                         {32, "E803"},
                                         {48, "000102030405060708090A0B0C0D0E0F"},
                                         {128, "10"},
                                         {144, "11"},
                                         {160, "12"},
                                         {176, "13"},
                                         {192, "0100000002000000"},
                                         {200, "2C01000010010000"},
                                         {216, "03000000040000000500000006000000"}})}});
    NvmeLogJob job;
    const std::string output = runJob(job, oneLog("2"), {drive.getDevice()}).output;
    const char* const expected[] = {
        R"(<Object name="SmartHealthInfo">)",
        R"(name="CriticalWarnings" size="1" type="uint8" value="45"/>)",
        R"(name="AvailableSpareWarning" size="1" type="boolean" value="True"/>)",
        R"(name="TemperatureWarning" size="1" type="boolean" value="False"/>)",
        R"(name="ReliabilityWarning" size="1" type="boolean" value="True"/>)",
        R"(name="ReadOnlyWarning" size="1" type="boolean" value="True"/>)",
        R"(name="VolatileMemoryWarning" size="1" type="boolean" value="False"/>)",
        R"(name="PersistentMemoryRegionWarning" value="True"/>)",
        R"(name="Celsius" value="41"/>)",
        R"(name="AvailableSpare" size="1" type="uint8" value="4"/>)",
        R"(name="AvailableSpareThreshold" size="1" type="uint8" value="10"/>)",
        R"(name="PercentageUsed" size="1" type="uint8" value="97"/>)",
        R"(name="EnduranceGroupCriticalWarningSummary" value="7"/>)",
        R"(name="DataUnitsRead" size="16" type="hexValue" value="0x03E8"/>)",
        R"(name="DataUnitsWritten" size="16" type="hexValue" )"
        R"(value="0x0F0E0D0C0B0A09080706050403020100"/>)",
        R"(name="HostReadCommands" size="16" type="hexValue" value="0x0"/>)",
        R"(name="PowerOnHours" size="16" type="hexValue" value="0x10"/>)",
        R"(name="UnsafeShutdowns" size="16" type="hexValue" value="0x11"/>)",
        R"(name="MediaErrors" size="16" type="hexValue" value="0x12"/>)",
        R"(name="NumErrorInfoLogEntries" size="16" type="hexValue" value="0x13"/>)",
        R"(name="WarningCompositeTemperatureTime" size="4" type="uint32" value="1"/>)",
        R"(name="CriticalCompositeTemperatureTime" size="4" type="uint32" value="2"/>)",
        R"(name="TemperatureSensor1" value="27"/>)",
        R"(name="TemperatureSensor3" value="-1"/>)",
        R"(name="ThermalManagementTemperature1TransitionCount" value="3"/>)",
        R"(name="TotalTimeForThermalManagementTemperature2" value="6"/></Object>)",
    };
    std::size_t at = 0;
    for (const char* const part : expected) {
        at = output.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << "\n" << output;
    }
    EXPECT_EQ(output.find("TemperatureSensor2"), std::string::npos);
}

TEST(NvmeLogJob, ShowsTheFirmwareOfFilledSlots) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(
        GET_LOG_PAGE, 0x03,
        {{.data = bytesOf(512, {{0, "21"}, {8, "4E58343541313230"}, {16, "4E58343541313330"}})}});
    NvmeLogJob job;
    EXPECT_EQ(runJob(job, oneLog("3"), {drive.getDevice()}).output,
              inDrive("NVMeLog",
                      R"(<Object name="FirmwareSlotInfo">)"
                      R"(<Property description="Active Firmware Info" name="AFI" value="33"/>)"
                      R"(<Property description="slot from which the running firmware was loaded" )"
                      R"(name="AFI.ACTIVE_SLOT" value="1"/>)"
                      R"(<Property description="slot to be activated at the next Controller Level )"
                      R"(Reset, or 0" name="AFI.NEXT_SLOT" value="2"/>)"
                      R"(<Property description="Firmware Revision for Slot 1" name="FRS1" )"
                      R"(value="NX45A120"/>)"
                      R"(<Property description="Firmware Revision for Slot 2" name="FRS2" )"
                      R"(value="NX45A130"/></Object>)"));
}

TEST(NvmeLogJob, ShowsTemperatureStatisticsBelowZeroToo) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(
        GET_LOG_PAGE, 0xC5,
        {{.data = bytesOf(
              512, {{0, "29"}, {8, "01"}, {24, "46"}, {32, "FBFFFFFFFFFFFFFF"}, {40, "46"}})}});
    NvmeLogJob job;
    EXPECT_EQ(runJob(job, oneLog("197"), {drive.getDevice()}).output,
              inDrive("NVMeLog", R"(<Object name="TemperatureStatistics">)"
                                 R"(<Property name="CurrentTemperature" value="41"/>)"
                                 R"(<Property name="OvertempShutdownFlagLastChange" value="1"/>)"
                                 R"(<Property name="OvertempShutdownFlagLifetime" value="0"/>)"
                                 R"(<Property name="HighestLifetimeTemperature" value="70"/>)"
                                 R"(<Property name="LowestLifetimeTemperature" value="-5"/>)"
                                 R"(<Property name="SpecifiedPCBMaxOperatingTemp" value="70"/>)"
                                 R"(<Property name="SpecifiedPCBMinOperatingTemp" value="0"/>)"
                                 R"(</Object>)"));
}

TEST(NvmeLogJob, ShowsEachQueue) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xCB,
                 {{.data = bytesOf(512, {{0, "01000100"}, {16, "0300000402002000E803"}})}});
    NvmeLogJob job;
    EXPECT_EQ(runJob(job, oneLog("203"), {drive.getDevice()}).output,
              inDrive("NVMeLog", R"(<Object name="QueueMetrics">)"
                                 R"(<Property name="NumberOfQueues" value="1"/>)"
                                 R"(<Object key="3" name="Queue">)"
                                 R"(<Property name="QueueId" value="3"/>)"
                                 R"(<Property name="Depth" value="1024"/>)"
                                 R"(<Property name="OutstandingCommands" value="2"/>)"
                                 R"(<Property name="HighestOutstanding" value="32"/>)"
                                 R"(<Property name="CompletedCommands" value="1000"/>)"
                                 R"(</Object></Object>)"));
}

TEST(NvmeLogJob, FailsForMoreQueuesThanFit) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xCB, {{.data = bytesOf(512, {{2, "2000"}})}});
    NvmeLogJob job;
    expectFailure(job, oneLog("203"), drive, 10, 33);
}

TEST(NvmeLogJob, OfAllLogsLeavesOutThoseOfTheVendorThatTheDriveDoesNotHave) {
    ScriptedDrive drive = nvmeDrive();
    for (const int page : {0x01, 0x02, 0x03, 0xCB})
        drive.onNvme(GET_LOG_PAGE, static_cast<std::uint8_t>(page), {{.data = bytesOf(512)}});
    for (const auto& refusal : {INVALID_LOG_PAGE, INVALID_FIELD}) {
        drive.onNvme(GET_LOG_PAGE, 0xC5, {{.nvmeStatus = refusal}});
        NvmeLogJob job;
        const std::string output = runJob(job, ALL_LOGS, {drive.getDevice()}).output;
        std::size_t at = 0;
        for (const char* const name :
             {"ErrorInfo", "SmartHealthInfo", "FirmwareSlotInfo", "QueueMetrics"}) {
            at = output.find(std::string("<Object name=\"") + name + '"', at);
            EXPECT_NE(at, std::string::npos) << name;
        }
        EXPECT_EQ(output.find("TemperatureStatistics"), std::string::npos);
        EXPECT_EQ(output.find("status"), std::string::npos);
    }
}

TEST(NvmeLogJob, FailsForALogThatTheDriveDoesNotHave) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xC5, {{.nvmeStatus = INVALID_LOG_PAGE}});
    drive.onNvme(GET_LOG_PAGE, 0x01, {{.nvmeStatus = INVALID_LOG_PAGE}});
    NvmeLogJob job;
    expectFailure(job, oneLog("197"), drive, 10, 3);
    expectFailure(job, ALL_LOGS, drive, 10, 3);
}

TEST(NvmeLogJob, AsksNoDriveOfAnotherMakerForTheVendorsLogs) {
    ScriptedDrive drive = nvmeDrive();
    drive.setNorvo(false);
    for (const int page : {0x01, 0x02, 0x03, 0xC5, 0xCB})
        drive.onNvme(GET_LOG_PAGE, static_cast<std::uint8_t>(page), {{.data = bytesOf(512)}});
    NvmeLogJob job;
    expectFailure(job, oneLog("197"), drive, 10, 1);
    EXPECT_TRUE(drive.sentNvme().empty());
    const std::string output = runJob(job, ALL_LOGS, {drive.getDevice()}).output;
    EXPECT_NE(output.find("FirmwareSlotInfo"), std::string::npos);
    EXPECT_EQ(drive.sentNvme().size(), 4U);
}

TEST(NvmeLogJob, RefusesOtherLogsAndOtherDrives) {
    ScriptedDrive nvme = nvmeDrive();
    NvmeLogJob job;
    expectFailure(job, oneLog("4"), nvme, 10, 4);
    expectFailure(job, oneLog("4294967297"), nvme, 10, 4);
    expectFailure(job, oneLog("x"), nvme, 10, 36);
    EXPECT_TRUE(nvme.sentNvme().empty());
    expectFailure(job, ALL_LOGS, ScriptedDrive("ATA"), 10, 3);
}

TEST(NvmeLogJob, FailsForLessThanAPage) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = bytesOf(511)}});
    NvmeLogJob job;
    expectFailure(job, oneLog("2"), drive, 0, 49);
}

/// Rows of zeroes, but for the first and the last cells.
core::Payload diagram(const std::string& group, const std::string& lane) {
    return bytesOf(
        2048, {{0, "0100" + group + lane + "40001F002A007600"}, {64, "01090AFF"}, {2047, "03"}});
}

TEST(EyeDiagramJob, ShowsACharacterForEachPlace) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xC8, {{.data = diagram("00", "00")}});
    EyeDiagramJob job;
    const std::string output = runJob(job, eyeDiagram(""), {drive.getDevice()}).output;
    const std::string start =
        R"(<Object><Object key="SERIAL1" name="EyeDiagram">)"
        R"(<Property category="attribute" displayName="Group" name="Group" size="2" type="string" )"
        R"(value="A"/>)"
        R"(<Property category="attribute" displayName="Lane" name="Lane" size="2" type="uint16" )"
        R"(value="0"/>)"
        R"(<Property description="Number of phases" name="Columns" value="64"/>)"
        R"(<Property description="Number of voltages" name="Rows" value="31"/>)"
        R"(<Property description="Width of the open eye in hundredths of a unit interval" )"
        R"(name="EyeWidth" value="42"/>)"
        R"(<Property description="Height of the open eye in millivolts" name="EyeHeight" )"
        R"(value="118"/>)"
        R"(<Property name="Legend" )"
        R"(value="1 to 9 = error rate of 10^-1 to 10^-9 or less, . = no errors"/>)"
        R"(<Property name="Row 00" )"
        R"(value="|1999............................................................|"/>)"
        R"(<Property name="Row 01" )"
        R"(value="|................................................................|"/>)";
    EXPECT_EQ(output.substr(0, start.size()), start);
    const std::string end =
        R"(<Property name="Row 30" )"
        R"(value="|...............................................................3|"/>)"
        R"(</Object></Object>)";
    ASSERT_GT(output.size(), end.size());
    EXPECT_EQ(output.substr(output.size() - end.size()), end);
}

TEST(EyeDiagramJob, AsksForTheGroupAndTheLaneThatWereGiven) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xC8, {{.data = diagram("01", "01")}});
    EyeDiagramJob job;
    const std::string output =
        runJob(job, eyeDiagram(property("Group", "b") + property("Lane", "1")), {drive.getDevice()})
            .output;
    EXPECT_NE(output.find(R"(name="Group" size="2" type="string" value="B")"), std::string::npos);
    EXPECT_NE(output.find(R"(name="Lane" size="2" type="uint16" value="1")"), std::string::npos);
    ASSERT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw10, 0x01FF01C8U);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw11, 0x00010000U);
}

TEST(EyeDiagramJob, TellsWhatIsWrongInAStatus) {
    const std::string groupB = property("Group", "B");
    const std::string lane1 = property("Lane", "1");

    struct Row {
        std::string arguments;
        Reply reply;
        const char* code;
    };

    // clang-format off
    const Row rows[] = {
    //  arguments                reply                                 code
        {property("Group", "C"), {.data = diagram("00", "00")},        "204"},
        {property("Group", ""),  {.data = diagram("00", "00")},        "204"},
        {property("Lane", "2"),  {.data = diagram("00", "00")},        "205"},
        {property("Lane", "-1"), {.data = diagram("00", "00")},        "205"},
        {groupB,                 {.nvmeStatus = INVALID_FIELD},        "204"},
        {groupB + lane1,         {.nvmeStatus = INVALID_FIELD},        "205"},
        {lane1,                  {.nvmeStatus = INVALID_FIELD},        "205"},
        {"",                     {.nvmeStatus = INVALID_FIELD},        "25"},
        {lane1,                  {.nvmeStatus = INVALID_LOG_PAGE},     "3"},
        {groupB,                 {.data = diagram("00", "00")},        "33"},
        {lane1,                  {.data = diagram("00", "00")},        "33"},
        {"",                     {.data = bytesOf(2047, {{0, "01"}})}, "33"},
        {"",                     {.data = bytesOf(2048)},              "33"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments + " " + row.code);
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(GET_LOG_PAGE, 0xC8, {row.reply});
        EyeDiagramJob job;
        const std::string output =
            runJob(job, eyeDiagram(row.arguments), {drive.getDevice()}).output;
        EXPECT_NE(output.find(property("Code", row.code)), std::string::npos) << output;
        EXPECT_EQ(output.find("Row"), std::string::npos);
    }
}

TEST(EyeDiagramJob, DrivesOfOtherMakersHaveNone) {
    EyeDiagramJob job;
    ScriptedDrive drive = nvmeDrive();
    drive.setNorvo(false);
    const std::string output = runJob(job, eyeDiagram(""), {drive.getDevice()}).output;
    EXPECT_NE(output.find(property("Code", "1")), std::string::npos) << output;
    EXPECT_TRUE(drive.sentNvme().empty());
}

TEST(EyeDiagramJob, SataDrivesHaveNone) {
    EyeDiagramJob job;
    ScriptedDrive drive("ATA");
    const std::string output = runJob(job, eyeDiagram(""), {drive.getDevice()}).output;
    EXPECT_NE(output.find(property("Code", "3")), std::string::npos) << output;
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
