#include "interfaces/orveli/jobs/HdaTemperatureJob.h"
#include "interfaces/orveli/jobs/PhyCountersJob.h"
#include "tests/interfaces/orveli/access/Bytes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr const char* TEMPERATURE = R"(<Object name="HDATemperature" type="Method"/>)";
constexpr const char* COUNTERS = R"(<Object name="PhyCounters" type="Method"/>)";

constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint16_t READ_LOG = 0xD5;
constexpr std::uint16_t WRITE_LOG = 0xD6;
constexpr std::uint8_t SCT_STATUS = 0xE0;
constexpr std::uint8_t SCT_DATA = 0xE1;
constexpr std::uint8_t READ_LOG_EXT = 0x2F;
constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;

/// Answers SCT commands, and tells its temperatures; `table` is its history.
ScriptedDrive driveWithHistory(std::deque<Reply> table) {
    ScriptedDrive drive("ATA");
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = bytesOf(512, {{412, "2100"}})}});
    drive.onAta(SMART, READ_LOG, SCT_STATUS,
                {{.data = bytesOf(512, {{200, "2012340080"}, {206, "0100000002000000"}})}});
    drive.onAta(SMART, WRITE_LOG, SCT_STATUS, {{}});
    drive.onAta(SMART, READ_LOG, SCT_DATA, std::move(table));
    return drive;
}

void expectFailure(Job& job, const std::string& request, const ScriptedDrive& drive,
                   std::int32_t category, std::int32_t code) {
    const Outcome outcome = runJob(job, request, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getCategory(), category) << outcome.status.getMessage();
    EXPECT_EQ(outcome.status.getCode(), code) << outcome.status.getMessage();
    EXPECT_EQ(outcome.output, "");
}

TEST(HdaTemperatureJob, ShowsTemperaturesLimitsAndTheHistoryOldestFirst) {
    // The third of four entries is the most recent one.
    ScriptedDrive drive = driveWithHistory({{.data = bytesOf(512, {{0, "020005000A00"
                                                                       "465500FB"},
                                                                   {30, "04000200"},
                                                                   {34, "1EFE2080"}})}});
    HdaTemperatureJob job;
    EXPECT_EQ(runJob(job, TEMPERATURE, {drive.getDevice()}).output,
              R"(<Object><Object key="SERIAL1" name="HDATemperature">)"
              R"(<Property name="Temperature" value="32"/>)"
              R"(<Property name="MinTemperature" value="18"/>)"
              R"(<Property name="MaxTemperature" value="52"/>)"
              R"(<Property name="LifeMinTemperature" value="0"/>)"
              R"(<Property name="LifeMaxTemperature" value="None"/>)"
              R"(<Property name="OverLimitCount" value="1"/>)"
              R"(<Property name="UnderLimitCount" value="2"/>)"
              R"(<Object name="TemperatureHistory">)"
              R"(<Property name="SamplingPeriod" value="5"/>)"
              R"(<Property name="Interval" value="10"/>)"
              R"(<Property name="MaxOpLimit" value="70"/>)"
              R"(<Property name="OverLimit" value="85"/>)"
              R"(<Property name="MinOpLimit" value="0"/>)"
              R"(<Property name="UnderLimit" value="-5"/>)"
              R"(<Property name="NumberOfSamples" value="4"/>)"
              R"(<Property name="Sample 1" value="30"/>)"
              R"(<Property name="Sample 2" value="-2"/>)"
              R"(<Property name="Sample 3" value="32"/>)"
              R"(</Object></Object></Object>)");
    ASSERT_EQ(drive.sentAta().size(), 4U);
    EXPECT_TRUE(drive.sentAta()[2].input == bytesOf(512, {{0, "050001000200"}}));
}

TEST(HdaTemperatureJob, AsksAgainForAHistoryLongerThanOneBlock) {
    ScriptedDrive drive =
        driveWithHistory({{.data = bytesOf(512, {{0, "0200"}, {30, "DF01"}})},
                          {.data = bytesOf(1024, {{0, "0200"}, {30, "DF01"}, {512, "21"}})}});
    HdaTemperatureJob job;
    const std::string output = runJob(job, TEMPERATURE, {drive.getDevice()}).output;
    EXPECT_NE(output.find(R"(<Property name="NumberOfSamples" value="479"/>)"), std::string::npos);
    EXPECT_NE(output.find(R"(<Property name="Sample 477" value="33"/>)"), std::string::npos);
    EXPECT_EQ(drive.sentAta().back().taskFile.count, 2U);
}

TEST(HdaTemperatureJob, AHistoryWithoutAnEntryIsEmpty) {
    ScriptedDrive drive = driveWithHistory({{.data = bytesOf(512, {{0, "0200"}})}});
    HdaTemperatureJob job;
    const std::string output = runJob(job, TEMPERATURE, {drive.getDevice()}).output;
    EXPECT_NE(output.find(R"(<Property name="NumberOfSamples" value="0"/></Object>)"),
              std::string::npos);
}

TEST(HdaTemperatureJob, FailsForAHistoryThatMakesNoSense) {
    HdaTemperatureJob job;
    expectFailure(job, TEMPERATURE,
                  driveWithHistory({{.data = bytesOf(512, {{0, "0300"}, {30, "0400"}})}}), 10, 33);
    // An index outside of the buffer.
    expectFailure(job, TEMPERATURE,
                  driveWithHistory({{.data = bytesOf(512, {{0, "0200"}, {30, "04000400"}})}}), 10,
                  33);
    expectFailure(job, TEMPERATURE, driveWithHistory({{.data = bytesOf(100)}}), 0, 49);
}

TEST(HdaTemperatureJob, ADriveThatRefusesSctSaysSoInItsWords) {
    ScriptedDrive drive("ATA");
    HdaTemperatureJob job;
    const Outcome outcome = runJob(job, TEMPERATURE, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getMessage(),
              "ATA command reported a problem. SMART READ LOG: error register 0x04.");
}

TEST(HdaTemperatureJob, ADriveThatSaysThatItHasNoSctTablesIsNotAskedForThem) {
    for (const char* word206 : {"2000", "1D00"}) {
        ScriptedDrive drive("ATA");
        drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = bytesOf(512, {{412, word206}})}});
        HdaTemperatureJob job;
        expectFailure(job, TEMPERATURE, drive, 10, 3);
        EXPECT_EQ(drive.sentAta().size(), 1U);
    }
}

/// Its log directory gives one page to the counters.
ScriptedDrive driveWithCounters(const core::Payload& counters) {
    ScriptedDrive drive("ATA");
    drive.onAta(READ_LOG_EXT, 0, 0x00, {{.data = bytesOf(512, {{0, "0100"}, {0x22, "0100"}})}});
    drive.onAta(READ_LOG_EXT, 0, 0x11, {{.data = counters}});
    return drive;
}

TEST(PhyCountersJob, ShowsEachCounterByTheStandardsName) {
    ScriptedDrive drive = driveWithCounters(bytesOf(512, {{4, "0120"
                                                              "07000000"},
                                                          {10, "0A10"
                                                               "0001"},
                                                          {14, "01A0"
                                                               "FFFFFFFF"},
                                                          {20, "0E10"
                                                               "0100"},
                                                          {511, "01"}}));
    PhyCountersJob job;
    EXPECT_EQ(runJob(job, COUNTERS, {drive.getDevice()}).output,
              R"(<Object><Object key="SERIAL1" name="PhyCounters">)"
              R"(<Property name="Command failed and ICRC error bit set to one in Error register" )"
              R"(value="7"/>)"
              R"(<Property name="Signature Device-to-Host Register FISes sent due to a COMRESET" )"
              R"(value="256"/>)"
              R"(<Property name="Vendor specific 0x8001" value="4294967295"/>)"
              R"(<Property name="Unknown counter 0x000E" value="1"/>)"
              R"(</Object></Object>)");
}

TEST(PhyCountersJob, FailsForAWrongChecksum) {
    ScriptedDrive drive = driveWithCounters(bytesOf(512, {{4, "012007000000"}}));
    PhyCountersJob job;
    expectFailure(job, COUNTERS, drive, 10, 33);
}

TEST(PhyCountersJob, FailsForHalfAPage) {
    ScriptedDrive drive = driveWithCounters(bytesOf(256));
    PhyCountersJob job;
    expectFailure(job, COUNTERS, drive, 0, 49);
}

TEST(PhyCountersJob, ADriveWithoutTheLogIsNotAskedForIt) {
    ScriptedDrive drive = driveWithCounters(bytesOf(512));
    drive.onAta(READ_LOG_EXT, 0, 0x00, {{.data = bytesOf(512, {{0, "0100"}})}});
    PhyCountersJob job;
    expectFailure(job, COUNTERS, drive, 10, 3);
    EXPECT_EQ(drive.sentAta().back().taskFile.lba, 0U);

    // Nor one without any such log: word 84 is valid and lacks bit 5.
    drive.sentAta().clear();
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = bytesOf(512, {{168, "0341"}})}});
    expectFailure(job, COUNTERS, drive, 10, 3);
    EXPECT_EQ(drive.sentAta().size(), 1U);
}

TEST(PhyCountersJob, NvmeDrivesHaveNoPhyCountersAndNoHdaTemperature) {
    ScriptedDrive drive("NVMe Admin");
    PhyCountersJob counters;
    expectFailure(counters, COUNTERS, drive, 10, 3);
    HdaTemperatureJob temperature;
    expectFailure(temperature, TEMPERATURE, drive, 10, 3);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
