#include "interfaces/orveli/jobs/HealthMetricsJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"
#include "tests/interfaces/orveli/jobs/AnswerLines.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t SMART_HEALTH = 0x02;
constexpr std::uint8_t TEMPERATURES = 0xC5;
constexpr std::uint8_t HEALTH_STATISTICS = 0xCA;
constexpr std::uint8_t SMART_COMMAND = 0xB0;
constexpr std::uint16_t READ_DATA = 0xD0;
constexpr std::uint16_t READ_THRESHOLDS = 0xD1;
constexpr std::uint16_t RETURN_STATUS = 0xDA;
constexpr std::uint8_t READ_LOG_EXT = 0x2F;
constexpr std::uint8_t STATISTICS = 0x04;
constexpr const char* ALL = R"(<Object name="HealthMetrics" type="GetProperties"/>)";

void setFlag(ScriptedDrive& drive, core::Attribute descriptor, bool value) {
    descriptor.setValue(value);
    drive->setAttribute(descriptor);
}

std::string run(ScriptedDrive& drive, const std::string& request = ALL) {
    HealthMetricsJob job;
    return answerLines(runJob(job, request, {drive.getDevice()}).output);
}

std::string ask(ScriptedDrive& drive, const std::vector<std::string>& names) {
    std::string request =
        R"(<Object name="HealthMetrics" type="GetProperties"><Object name="Properties">)";
    for (const std::string& name : names)
        request += "<Property name=\"" + name + "\"/>";
    return run(drive, request + "</Object></Object>");
}

ScriptedDrive nvmeDrive(int criticalWarning = 0x15) {
    ScriptedDrive drive("NVMe Admin", "N1");
    setFlag(drive, attributes::Norvo(), true);
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH,
                 {{.data = structure(512, {{0, {criticalWarning, 0x3E, 0x01, 98, 10, 5}},
                                           {112, {1}},
                                           {128, {2}},
                                           {144, {3}},
                                           {160, {4}},
                                           {176, {5}}})}});
    drive.onNvme(GET_LOG_PAGE, HEALTH_STATISTICS,
                 {{.data = structure(512, {{0, {6}},
                                           {8, {7}},
                                           {16, {0x08, 0x00, 0x00, 0x01, 0x09}},
                                           {24, {10}},
                                           {32, {11}},
                                           {64, {12, 0, 0, 0, 13, 1}}})}});
    drive.onNvme(GET_LOG_PAGE, TEMPERATURES,
                 {{.data = structure(512, {{24, {71}},
                                           {32, {0xFB, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}},
                                           {40, {85}},
                                           {48, {0}}})}});
    return drive;
}

TEST(HealthMetricsJob, ShowsWhatTheLogsOfAnNvmeDriveTell) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive), "[Health Sensors N1]\n"
                          " Celsius=45\n"
                          " AvailableSpareBelowThreshold=True\n"
                          " TemperatureThresholdExceeded=False\n"
                          " ReliabilityDegraded=True\n"
                          " ReadOnlyMode=False\n"
                          " MemoryBackupDeviceFailed=True\n"
                          " AvailableSpare=98\n"
                          " PercentageUsed=5\n"
                          " PowerOnHours=2\n"
                          " PowerCycles=1\n"
                          " UnsafeShutdowns=3\n"
                          " MediaErrors=4\n"
                          " ErrorInfoLogEntries=5\n"
                          " ProgramFailCount=6\n"
                          " EraseFailCount=7\n"
                          " MinNandEraseCycles=8\n"
                          " MaxNandEraseCycles=256\n"
                          " AverageNandEraseCycles=9\n"
                          " EndToEndErrorDetectionCount=10\n"
                          " CrcErrorCount=11\n"
                          " ThermalThrottleStatus=12\n"
                          " ThermalThrottleCount=269\n"
                          " HighestLifetimeTemperature=71\n"
                          " LowestLifetimeTemperature=-5\n"
                          " SpecifiedPCBMaxOperatingTemp=85\n"
                          " SpecifiedPCBMinOperatingTemp=0\n");
    EXPECT_EQ(drive.sentNvme().size(), 3U) << "each log page is read once";
}

TEST(HealthMetricsJob, ShowsTheOtherWarningsOfAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive(0x0A);
    EXPECT_EQ(ask(drive, {"AvailableSpareBelowThreshold", "TemperatureThresholdExceeded",
                          "ReliabilityDegraded", "ReadOnlyMode", "MemoryBackupDeviceFailed"}),
              "[Health Sensors N1]\n"
              " AvailableSpareBelowThreshold=False\n"
              " TemperatureThresholdExceeded=True\n"
              " ReliabilityDegraded=False\n"
              " ReadOnlyMode=True\n"
              " MemoryBackupDeviceFailed=False\n");
}

TEST(HealthMetricsJob, ReadsOnlyTheLogPagesThatAreAskedFor) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(ask(drive, {"crcerrorcount", "Humidity"}),
              "[Health Sensors N1]\n CrcErrorCount=11\n Humidity=Property not found\n");
    ASSERT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw10, 0x007F00CAU);
}

TEST(HealthMetricsJob, AnswersWithWhatTheRequestNames) {
    ScriptedDrive drive = nvmeDrive();
    HealthMetricsJob job;
    EXPECT_EQ(runJob(job,
                     R"(<Object name="HealthMetrics" type="GetProperties"><Object )"
                     R"(name="Properties"><Property name="Celsius"/></Object></Object>)",
                     {drive.getDevice()})
                  .output,
              R"(<Object><Object key="N1" name="Health Sensors"><Property name="Celsius" )"
              R"(value="45"/></Object></Object>)");
}

TEST(HealthMetricsJob, LeavesOutWhatAnNvmeDriveDoesNotHave) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH, {{.data = structure(512, {})}});
    drive.onNvme(GET_LOG_PAGE, HEALTH_STATISTICS, {});
    drive.onNvme(GET_LOG_PAGE, TEMPERATURES, {});
    EXPECT_EQ(
        ask(drive, {"Celsius", "CrcErrorCount", "HighestLifetimeTemperature", "PercentageUsed"}),
        "[Health Sensors N1]\n"
        " Celsius=Property not found\n"
        " CrcErrorCount=Property not found\n"
        " HighestLifetimeTemperature=Property not found\n"
        " PercentageUsed=0\n");
}

TEST(HealthMetricsJob, ReportsAnNvmeDriveThatRefusesItsHealth) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH, {});
    EXPECT_EQ(run(drive),
              "[Health Sensors N1]\n [ status]\n  Category=0\n  Code=25\n"
              "  Message=NVMe command reported a problem. Get Log Page: Invalid Command Opcode.\n");
}

TEST(HealthMetricsJob, ReportsAnNvmeDriveThatIsLostInBetween) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, HEALTH_STATISTICS,
                 {{.pathStatus = core::statuses::adminCommandNotSendable()}});
    EXPECT_NE(run(drive).find("  Code=50\n"), std::string::npos);
}

/// A page of statistics: supported and valid.
core::Payload statistics(std::initializer_list<BytesAt> values) {
    core::Payload page = structure(512, values);
    for (const BytesAt& value : values)
        *page.at(value.offset + 7) = 0xC0;
    return page;
}

ScriptedDrive sataDrive() {
    ScriptedDrive drive("ATA", "S1");
    drive.onAta(SMART_COMMAND, READ_DATA, 0,
                {{.data = checkedStructure({{2, {0x05, 0x33, 0, 10, 10, 77}},
                                            {14, {0x09, 0x32, 0, 100, 100, 1, 0, 0, 0, 9}},
                                            {26, {0x0C, 0x32, 0, 100, 100, 2}},
                                            {38, {0xAA, 0x33, 0, 10, 10, 0}},
                                            {50, {0xAB, 0x32, 0, 100, 100, 3}},
                                            {62, {0xAC, 0x32, 0, 100, 100, 4}},
                                            {74, {0xAD, 0x32, 0, 100, 100, 5, 0, 9}},
                                            {86, {0xB8, 0x32, 0, 100, 100, 6}},
                                            {98, {0xBB, 0x32, 0, 100, 100, 7}},
                                            {110, {0xC0, 0x32, 0, 100, 100, 8}},
                                            {122, {0xC2, 0x22, 0, 100, 100, 0xFE, 0, 50}},
                                            {134, {0xC7, 0x32, 0, 100, 100, 9}},
                                            {146, {0xEA, 0x32, 0, 100, 100, 10, 3}}})}});
    drive.onAta(SMART_COMMAND, READ_THRESHOLDS, 0,
                {{.data = checkedStructure({{2, {0x05, 10}}, {14, {0xAA, 10}}})}});
    protocols::ata::ReturnedTaskFile exceeded;
    exceeded.lba = 0x2CF400;
    drive.onAta(SMART_COMMAND, RETURN_STATUS, 0, {{.returned = exceeded}});
    return drive;
}

TEST(HealthMetricsJob, ShowsWhatTheSmartAttributesOfASataDriveTell) {
    ScriptedDrive drive = sataDrive();
    EXPECT_EQ(run(drive), "[Health Sensors S1]\n"
                          " AvailableSpare=10\n"
                          " AvailableSpareBelowThreshold=True\n"
                          " PowerOnHours=1\n"
                          " PowerCycles=2\n"
                          " UnsafeShutdowns=8\n"
                          " MediaErrors=7\n"
                          " ProgramFailCount=3\n"
                          " EraseFailCount=4\n"
                          " AverageNandEraseCycles=5\n"
                          " EndToEndErrorDetectionCount=6\n"
                          " CrcErrorCount=9\n"
                          " ThermalThrottleStatus=10\n"
                          " Celsius=-2\n"
                          " SMARTPrefail=05, AA\n"
                          " ReliabilityDegraded=True\n");
}

TEST(HealthMetricsJob, PrefersTheStatisticsOfASataDrive) {
    ScriptedDrive drive = sataDrive();
    // All pages of the log have the same address: in the order in which they are asked for.
    drive.onAta(READ_LOG_EXT, 0, STATISTICS,
                {{.data = statistics({{8, {42}}})},
                 {.data = statistics({{8, {21}}, {16, {0x10, 0x27}}})},
                 {.data = statistics({{8, {22}}})},
                 {.data = statistics({{24, {23}}})},
                 {.data = statistics({{8, {30}}, {32, {66}}, {40, {0xF6}}, {88, {70}}})}});
    EXPECT_EQ(run(drive), "[Health Sensors S1]\n"
                          " PercentageUsed=42\n"
                          " PowerOnHours=10000\n"
                          " PowerCycles=21\n"
                          " MediaErrors=22\n"
                          " CrcErrorCount=23\n"
                          " Celsius=30\n"
                          " HighestLifetimeTemperature=66\n"
                          " LowestLifetimeTemperature=-10\n"
                          " SpecifiedPCBMaxOperatingTemp=70\n"
                          " AvailableSpare=10\n"
                          " AvailableSpareBelowThreshold=True\n"
                          " UnsafeShutdowns=8\n"
                          " ProgramFailCount=3\n"
                          " EraseFailCount=4\n"
                          " AverageNandEraseCycles=5\n"
                          " EndToEndErrorDetectionCount=6\n"
                          " ThermalThrottleStatus=10\n"
                          " SMARTPrefail=05, AA\n"
                          " ReliabilityDegraded=True\n");
    std::vector<std::uint64_t> pages;
    for (const SentAta& sent : drive.sentAta()) {
        if (sent.taskFile.command == READ_LOG_EXT) pages.push_back(sent.taskFile.lba >> 8);
    }
    EXPECT_EQ(pages, (std::vector<std::uint64_t>{7, 1, 4, 6, 5})) << "each page is read once";
}

TEST(HealthMetricsJob, NamesNoFailingAttributeOfAHealthySataDrive) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART_COMMAND, READ_THRESHOLDS, 0, {});
    protocols::ata::ReturnedTaskFile good;
    good.lba = 0xC24F00;
    drive.onAta(SMART_COMMAND, RETURN_STATUS, 0, {{.returned = good}});
    EXPECT_EQ(ask(drive, {"SMARTPrefail", "ReliabilityDegraded", "AvailableSpareBelowThreshold"}),
              "[Health Sensors S1]\n SMARTPrefail=None\n ReliabilityDegraded=False\n"
              " AvailableSpareBelowThreshold=False\n");
}

TEST(HealthMetricsJob, AsksASataDriveForNothingThatIsNotWanted) {
    ScriptedDrive drive = sataDrive();
    EXPECT_EQ(ask(drive, {"Humidity"}), "[Health Sensors S1]\n Humidity=Property not found\n");
    EXPECT_TRUE(drive.sentAta().empty());
}

TEST(HealthMetricsJob, SaysWhyASataDriveTellsNothing) {
    ScriptedDrive refusing("ATA", "S1");
    EXPECT_EQ(run(refusing),
              "[Health Sensors S1]\n [ status]\n  Category=0\n  Code=10\n"
              "  Message=ATA command reported a problem. READ LOG EXT: error register 0x04.\n");
    ScriptedDrive disabled("ATA", "S1");
    setFlag(disabled, attributes::SMARTEnabled(), false);
    EXPECT_EQ(ask(disabled, {"ProgramFailCount"}),
              "[Health Sensors S1]\n [ status]\n  Category=10\n  Code=60\n"
              "  Message=SMART is not enabled.\n");
}

TEST(HealthMetricsJob, LeavesOutAStatisticThatIsNotValid) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(READ_LOG_EXT, 0, STATISTICS, {{.data = structure(512, {{8, {42}}})}});
    EXPECT_EQ(ask(drive, {"PercentageUsed"}),
              "[Health Sensors S1]\n PercentageUsed=Property not found\n");
}

TEST(HealthMetricsJob, ANewCloneRunsByItself) {
    ScriptedDrive drive = sataDrive();
    const auto clone = HealthMetricsJob().clone();
    EXPECT_EQ(runJob(*clone, ALL, {drive.getDevice()}).status, core::Status());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
