#include "interfaces/orveli/jobs/PerformanceJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"
#include "tests/interfaces/orveli/jobs/AnswerLines.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t SMART_HEALTH = 0x02;
constexpr std::uint8_t READ_LOG_EXT = 0x2F;
constexpr std::uint8_t STATISTICS = 0x04;
constexpr const char* ALL = R"(<Object name="Performance" type="GetProperties"/>)";

std::string run(ScriptedDrive& drive, const std::string& request = ALL) {
    PerformanceJob job;
    return answerLines(runJob(job, request, {drive.getDevice()}).output);
}

void setSize(ScriptedDrive& drive, core::Attribute descriptor, std::uint32_t bytes) {
    descriptor.setValue(bytes);
    drive->setAttribute(descriptor);
}

ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin", "N1");
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH,
                 {{.data = structure(512, {{32, {8}},
                                           {48, {0x10, 0x27}},
                                           {64, {0x34, 0x12}},
                                           {80, {0x78, 0x56}},
                                           {96, {0, 1}}})}});
    return drive;
}

TEST(PerformanceJob, ShowsTheTotalsOfAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive), "[Performance N1]\n"
                          " TotalLBAsRead=8000\n"
                          " TotalLBAsWritten=10000000\n"
                          " HostReadCommands=4660\n"
                          " HostWriteCommands=22136\n"
                          " ControllerBusyTime=256\n");
    EXPECT_EQ(drive.sentNvme().size(), 1U);
}

TEST(PerformanceJob, CountsInBlocksOfTheDrive) {
    ScriptedDrive drive = nvmeDrive();
    setSize(drive, attributes::SectorSize(), 4104);
    setSize(drive, attributes::SectorDataSize(), 4096);
    EXPECT_NE(run(drive).find(" TotalLBAsRead=1000\n TotalLBAsWritten=1250000\n"),
              std::string::npos);
}

TEST(PerformanceJob, BearsTotalsThatNoNumberHolds) {
    ScriptedDrive drive = nvmeDrive();
    const std::initializer_list<int> huge = {255, 255, 255, 255, 255, 255, 255, 255,
                                             255, 255, 255, 255, 255, 255, 255, 255};
    drive.onNvme(
        GET_LOG_PAGE, SMART_HEALTH,
        {{.data = structure(512, {{32, huge}, {48, {0, 0, 0, 0, 0, 0, 0, 1}}, {64, huge}})}});
    EXPECT_EQ(run(drive), "[Performance N1]\n"
                          " TotalLBAsRead=18446744073709551615\n"
                          " TotalLBAsWritten=18446744073709551615\n"
                          " HostReadCommands=340282366920938463463374607431768211455\n"
                          " HostWriteCommands=0\n"
                          " ControllerBusyTime=0\n");
}

TEST(PerformanceJob, ShowsOnlyWhatTheRequestNames) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, R"(<Object name="Performance" type="GetProperties"><Object )"
                         R"(name="Properties"><Property name="totallbaswritten"/><Property )"
                         R"(name="Speed"/></Object></Object>)"),
              "[Performance N1]\n TotalLBAsWritten=10000000\n Speed=Property not found\n");
}

TEST(PerformanceJob, ShowsTheStatisticsOfASataDrive) {
    ScriptedDrive drive("ATA", "S1");
    drive.onAta(READ_LOG_EXT, 0, STATISTICS,
                {{.data = structure(512, {{24, {1, 0, 0, 0, 0, 1, 0, 0xC0}},
                                          {32, {2, 0, 0, 0, 0, 0, 0, 0xC0}},
                                          {40, {3, 0, 0, 0, 0, 0, 0, 0xC0}},
                                          {48, {4, 0, 0, 0, 0, 0, 0, 0xC0}}})}});
    EXPECT_EQ(run(drive), "[Performance S1]\n"
                          " TotalLBAsRead=3\n"
                          " TotalLBAsWritten=1099511627777\n"
                          " HostReadCommands=4\n"
                          " HostWriteCommands=2\n");
    ASSERT_EQ(drive.sentAta().size(), 1U);
    EXPECT_EQ(drive.sentAta()[0].taskFile.lba, 0x104U);
}

TEST(PerformanceJob, TakesTheSmartAttributesOfASataDriveWithoutStatistics) {
    ScriptedDrive drive("ATA", "S1");
    drive.onAta(0xB0, 0xD0, 0,
                {{.data = checkedStructure(
                      {{2, {241, 0x32, 0, 100, 100, 2}}, {14, {242, 0x32, 0, 100, 100, 3}}})}});
    EXPECT_EQ(run(drive), "[Performance S1]\n"
                          " TotalLBAsRead=196608\n"
                          " TotalLBAsWritten=131072\n");
}

TEST(PerformanceJob, SaysWhyADriveTellsNothing) {
    ScriptedDrive sata("ATA", "S1");
    EXPECT_EQ(run(sata),
              "[Performance S1]\n [ status]\n  Category=0\n  Code=10\n"
              "  Message=ATA command reported a problem. READ LOG EXT: error register 0x04.\n");
    ScriptedDrive nvme("NVMe Admin", "N1");
    EXPECT_EQ(run(nvme),
              "[Performance N1]\n [ status]\n  Category=0\n  Code=25\n"
              "  Message=NVMe command reported a problem. Get Log Page: Invalid Command Opcode.\n");
}

TEST(PerformanceJob, ANewCloneRunsByItself) {
    ScriptedDrive drive = nvmeDrive();
    const auto clone = PerformanceJob().clone();
    EXPECT_EQ(runJob(*clone, ALL, {drive.getDevice()}).status, core::Status());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
