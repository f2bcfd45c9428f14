#include "interfaces/orveli/jobs/DriveSelfTestJob.h"

#include "interfaces/orveli/jobs/TimeLimit.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

using core::Payload;
using std::chrono::milliseconds;

constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint16_t READ_DATA = 0xD0;
constexpr std::uint16_t EXECUTE = 0xD4;
constexpr std::uint8_t DEVICE_SELF_TEST = 0x14;
constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t IDENTIFY = 0x06;

std::string request(const std::string& type, const std::string& mode = "captive") {
    return R"(<Object name="DriveSelfTest" type="Method"><Property name="TestType" value="short"/>)"
           R"(<Property name="Mode" value=")" +
           mode + R"("/><Property name="TestType" value=")" + type + R"("/></Object>)";
}

/// Without the waiting, which would take minutes.
Outcome run(ScriptedDrive& drive, const std::string& type, const std::string& mode = "captive") {
    DriveSelfTestJob job([](milliseconds) {});
    return runJob(job, request(type, mode), {drive.getDevice()});
}

void expectStatus(const Outcome& outcome, int code, const std::string& message) {
    EXPECT_EQ(outcome.status.getCategory(), 10);
    EXPECT_EQ(outcome.status.getCode(), code);
    EXPECT_EQ(outcome.status.getMessage(), message);
    EXPECT_EQ(outcome.output, "");
}

Payload identifyDevice() {
    Payload data(512);
    *data[82 * 2] = 0x01;      // SMART
    *data[83 * 2 + 1] = 0x40;  // words 82 and 83 are valid
    *data[84 * 2] = 0x02;      // self-test
    *data[84 * 2 + 1] = 0x40;  // the word is valid
    *data[85 * 2] = 0x01;      // SMART is on
    *data[87 * 2 + 1] = 0x40;  // words 85 to 87 are valid
    return data;
}

/// With a short test of 1, an extended one of 300, a conveyance test of 2 minutes.
Payload smartData(std::uint8_t execution, std::uint8_t capability = 0x31) {
    Payload data(512);
    *data[363] = execution;
    *data[367] = capability;
    *data[372] = 1;
    *data[373] = 0xFF;
    *data[374] = 2;
    *data[375] = 0x2C;
    *data[376] = 0x01;
    return data;
}

ScriptedDrive sataDrive(std::uint8_t execution = 0) {
    ScriptedDrive drive("ATA");
    drive.onAta(0xEC, 0, 0, {{.data = identifyDevice()}});
    drive.onAta(SMART, READ_DATA, 0, {{.data = smartData(execution)}});
    return drive;
}

TEST(TimeLimit, IsRaisedForAScopeAndNeverLowered) {
    ScriptedDrive drive("ATA");
    drive->setTimeout(60, "ATA");
    {
        const TimeLimit longer(*drive.getDevice(), "ATA", 61);
        EXPECT_EQ(drive->getTimeout("ATA"), 61);
        const TimeLimit shorter(*drive.getDevice(), "ATA", 59);
        EXPECT_EQ(drive->getTimeout("ATA"), 61);
        const TimeLimit other(*drive.getDevice(), "NVMe Admin", 90);
    }
    EXPECT_EQ(drive->getTimeout("ATA"), 60);
}

TEST(DriveSelfTestJob, RunsACaptiveShortTestOnASataDrive) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, EXECUTE, 0x81, {{}});
    EXPECT_EQ(run(drive, "Short").output,
              R"(<Object><Object key="SERIAL1" name="Drive Self-Test">)"
              R"(<Property category="attribute" displayName="Test Type" name="TestType" size="6" )"
              R"(type="string" value="short"/>)"
              R"(<Property category="attribute" displayName="Self Test Status" )"
              R"(name="SelfTestStatus" size="81" type="string" value="The self-test routine )"
              R"(completed without error or no self-test has ever been run."/>)"
              R"(<Property category="attribute" displayName="Self Test Progress" )"
              R"(name="SelfTestProgress" size="1" type="uint8" value="100"/></Object></Object>)");
    ASSERT_GE(drive.sentAta().size(), 3U);
    const protocols::ata::TaskFile& sent = drive.sentAta()[2].taskFile;
    EXPECT_EQ(sent.command, 0xB0);
    EXPECT_EQ(sent.feature, 0x00D4);
    EXPECT_EQ(sent.lba, 0xC24F81U);
}

TEST(DriveSelfTestJob, TakesTheLastTestTypeInEitherMode) {
    struct Row {
        const char* type;
        const char* mode;
        std::uint8_t lba;
    };

    constexpr Row ROWS[] = {{"short", "offline", 0x01},      {"extended", "Captive", 0x82},
                            {"EXTENDED", "OFFLINE", 0x02},   {"conveyance", "captive", 0x83},
                            {"conveyance", "offline", 0x03}, {"abort", "captive", 0x7F}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.type) + " " + row.mode);
        ScriptedDrive drive = sataDrive();
        drive.onAta(SMART, EXECUTE, row.lba, {{}});
        EXPECT_EQ(run(drive, row.type, row.mode).status.getCode(), 0);
        int sent = 0;
        for (const SentAta& one : drive.sentAta()) {
            if (one.taskFile.feature == EXECUTE && one.taskFile.lba == (0xC24F00U | row.lba))
                ++sent;
        }
        EXPECT_EQ(sent, 1);
    }
}

TEST(DriveSelfTestJob, LeavesTheTimeLimitAsItWas) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, EXECUTE, 0x82, {{}});
    drive->setTimeout(7, "ATA");
    EXPECT_EQ(run(drive, "extended").status.getCode(), 0);
    EXPECT_EQ(drive->getTimeout("ATA"), 7);
}

TEST(DriveSelfTestJob, ReportsARunningTestOfASataDrive) {
    ScriptedDrive drive = sataDrive(0xF3);
    EXPECT_NE(run(drive, "status").output.find(R"(value="Self-test routine in progress."/>)"),
              std::string::npos);
    EXPECT_NE(run(drive, "status").output.find(R"(value="70"/>)"), std::string::npos);
    EXPECT_EQ(run(drive, "status").output.find("TestType"), std::string::npos);
    expectStatus(run(drive, "short"), 209, "Drive Self-Test Already In Progress.");
}

TEST(DriveSelfTestJob, TellsWhyASataDriveFailedItsTest) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, READ_DATA, 0, {{.data = smartData(0)}, {.data = smartData(0x70)}});
    drive.onAta(SMART, EXECUTE, 0x81, {{.returned = [] {
                    protocols::ata::ReturnedTaskFile refused;
                    refused.status = 0x51;
                    refused.error = 0x04;
                    return refused;
                }()}});
    expectStatus(run(drive, "short"), 45,
                 "Drive self-test failed. The previous self-test completed having the read element "
                 "of the test failed.");
}

TEST(DriveSelfTestJob, DoesNotTakeATestThatStillRunsForOneThatCameToAGoodEnd) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, READ_DATA, 0, {{.data = smartData(0)}, {.data = smartData(0xF9)}});
    drive.onAta(SMART, EXECUTE, 0x81, {{}});
    expectStatus(run(drive, "short"), 209, "Drive Self-Test Already In Progress.");
}

TEST(DriveSelfTestJob, TellsOfARefusalBySataDrives) {
    ScriptedDrive drive = sataDrive();
    expectStatus(run(drive, "short"), 45, "Drive self-test failed. The drive refused to start it.");
    expectStatus(run(drive, "short", "offline"), 45,
                 "Drive self-test failed. The drive refused to start it.");
    expectStatus(run(drive, "abort"), 45, "Drive self-test failed. The drive refused to abort it.");
}

TEST(DriveSelfTestJob, NeedsASataDriveThatHasTheTest) {
    ScriptedDrive drive = sataDrive();
    const Payload none = identifyDevice();
    *none[84 * 2] = 0;
    drive.onAta(0xEC, 0, 0, {{.data = none}});
    expectStatus(run(drive, "short"), 44, "The selected device does not support SMART Self-Test.");

    *none[87 * 2] = 0x02;
    drive.onAta(SMART, EXECUTE, 0x81, {{}});
    EXPECT_EQ(run(drive, "short").status.getCode(), 0);

    *none[82 * 2] = 0;
    EXPECT_EQ(run(drive, "short").status.getCode(), 44);
}

TEST(DriveSelfTestJob, NeedsTheCapabilityForEachTestOfItsOwn) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, READ_DATA, 0, {{.data = smartData(0, 0x10)}});
    drive.onAta(SMART, EXECUTE, 0x81, {{}});
    EXPECT_EQ(run(drive, "short").status.getCode(), 0);
    EXPECT_EQ(run(drive, "conveyance").status.getCode(), 44);
    drive.onAta(SMART, READ_DATA, 0, {{.data = smartData(0, 0x20)}});
    EXPECT_EQ(run(drive, "short").status.getCode(), 44);
}

TEST(DriveSelfTestJob, NeedsSmartToBeOn) {
    ScriptedDrive drive = sataDrive();
    const Payload off = identifyDevice();
    *off[85 * 2] = 0;
    drive.onAta(0xEC, 0, 0, {{.data = off}});
    for (const char* type : {"short", "status", "abort"})
        expectStatus(run(drive, type), 60, "SMART is not enabled.");
}

TEST(DriveSelfTestJob, RefusesUnknownWords) {
    ScriptedDrive drive = sataDrive();
    expectStatus(run(drive, "long"), 46, "Invalid parameter(s) for drive self test feature.");
    expectStatus(run(drive, "short", "later"), 46,
                 "Invalid parameter(s) for drive self test feature.");
    EXPECT_TRUE(drive.sentAta().empty());
}

Payload identifyController(std::uint8_t oacsBits = 0x10) {
    Payload data(4096);
    *data[256] = oacsBits;
    *data[316] = 3;  // EDSTT, minutes
    return data;
}

/// `status` of the newest result: code in the upper, result in the lower half.
Payload page(std::uint8_t operation, std::uint8_t percent, std::uint8_t status = 0x10) {
    Payload data(564);
    *data[0] = operation;
    *data[1] = percent;
    *data[4] = status;
    *data[5] = 2;  // segment
    return data;
}

ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController()}});
    return drive;
}

TEST(DriveSelfTestJob, WaitsForTheEndOfACaptiveTestOnAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x01, {{}});
    drive.onNvme(GET_LOG_PAGE, 0x06,
                 {{.data = page(1, 0)}, {.data = page(1, 55)}, {.data = page(0, 0)}});
    std::vector<milliseconds> pauses;
    DriveSelfTestJob job([&](milliseconds time) { pauses.push_back(time); });
    EXPECT_EQ(runJob(job, request("short"), {drive.getDevice()}).output,
              R"(<Object><Object key="SERIAL1" name="Drive Self-Test">)"
              R"(<Property category="attribute" displayName="Test Type" name="TestType" size="6" )"
              R"(type="string" value="short"/>)"
              R"(<Property category="attribute" displayName="Self Test Status" )"
              R"(name="SelfTestStatus" size="35" type="string" )"
              R"(value="Operation completed without error."/>)"
              R"(<Property category="attribute" displayName="Self Test Progress" )"
              R"(name="SelfTestProgress" size="1" type="uint8" value="100"/></Object></Object>)");
    EXPECT_EQ(pauses, (std::vector<milliseconds>{milliseconds(100), milliseconds(100)}));
    EXPECT_EQ(job.getProgress(), 55);
    const SentNvme& sent = drive.sentNvme()[1];
    EXPECT_EQ(sent.fields.opcode, 0x14);
    EXPECT_EQ(sent.fields.nsid, 0xFFFFFFFFU);
    EXPECT_EQ(sent.fields.cdw10, 0x01U);
}

TEST(DriveSelfTestJob, StartsAnExtendedOfflineTestOnAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x02, {{}});
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(2, 1)}});
    const std::string output = run(drive, "extended", "offline").output;
    EXPECT_NE(output.find(R"(value="Operation in progress."/>)"), std::string::npos);
    EXPECT_NE(output.find(R"(type="uint8" value="1"/>)"), std::string::npos);
}

/// Log pages of a test that gets on by 1 % every minute and never ends.
std::deque<Reply> slowTest(std::uint8_t operation) {
    std::deque<Reply> replies;
    for (std::uint8_t percent = 1; percent < 15; ++percent)
        replies.insert(replies.end(), 600, {.data = page(operation, percent)});
    return replies;
}

struct Waited {
    Outcome outcome;
    milliseconds time{0};
};

Waited waitFor(ScriptedDrive& drive, const std::string& type) {
    Waited waited;
    DriveSelfTestJob job([&](milliseconds time) { waited.time += time; });
    waited.outcome = runJob(job, request(type), {drive.getDevice()});
    return waited;
}

TEST(DriveSelfTestJob, GivesAnNvmeDriveTwiceTheTimeButNotHours) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x01, {{}});
    drive.onNvme(DEVICE_SELF_TEST, 0x02, {{}});
    drive.onNvme(GET_LOG_PAGE, 0x06, slowTest(1));
    const Waited shortTest = waitFor(drive, "short");
    expectStatus(shortTest.outcome, 45,
                 "Drive self-test failed. It has not come to an end after 4 minutes, and goes on "
                 "in the drive.");
    EXPECT_EQ(shortTest.time, milliseconds(240100));
    drive.onNvme(GET_LOG_PAGE, 0x06, slowTest(2));
    expectStatus(run(drive, "extended"), 45,
                 "Drive self-test failed. It has not come to an end after 6 minutes, and goes on "
                 "in the drive.");
    for (const std::uint8_t minutes : {std::uint8_t{0xFF}, std::uint8_t{0}}) {
        const Payload controller = identifyController();
        *controller[316] = minutes;
        *controller[317] = minutes;
        drive.onNvme(IDENTIFY, 0x01, {{.data = controller}});
        drive.onNvme(GET_LOG_PAGE, 0x06, slowTest(2));
        const Waited longTest = waitFor(drive, "extended");
        expectStatus(longTest.outcome, 45,
                     "Drive self-test failed. It has not come to an end after 10 minutes, and "
                     "goes on in the drive.");
        EXPECT_EQ(longTest.time, milliseconds(600100));
    }
}

TEST(DriveSelfTestJob, WaitsForNoTestThatMakesNoProgress) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x02, {{}});
    // Back and forth is no progress.
    std::deque<Reply> replies = {{.data = page(2, 98)}};
    for (int i = 0; i < 3000; ++i)
        replies.push_back({.data = page(2, i % 2 == 0 ? 3 : 98)});
    drive.onNvme(GET_LOG_PAGE, 0x06, replies);
    const Waited waited = waitFor(drive, "extended");
    expectStatus(waited.outcome, 45,
                 "Drive self-test failed. It has made no progress for 3 minutes.");
    EXPECT_EQ(waited.time, milliseconds(180100));
}

TEST(DriveSelfTestJob, WaitsForNothingThatMakesNoSense) {
    for (const Payload& senseless : {page(3, 10), page(2, 10), page(0xE, 10), page(1, 101)}) {
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(DEVICE_SELF_TEST, 0x01, {{}});
        drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = senseless}});
        const Waited waited = waitFor(drive, "short");
        expectStatus(waited.outcome, 45,
                     "Drive self-test failed. The drive's log tells nothing sensible of it.");
        EXPECT_EQ(waited.time, milliseconds(0));
    }
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(1, 127)}});
    EXPECT_NE(run(drive, "status").output.find(R"(type="uint8" value="100"/>)"), std::string::npos);
}

TEST(DriveSelfTestJob, TellsWhyAnNvmeDriveFailedItsTest) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x01, {{}});
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(0, 0, 0x17)}});
    expectStatus(
        run(drive, "short"), 45,
        "Drive self-test failed. Operation completed with one or more failed segments. The "
        "first one is segment 2.");
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(0, 0, 0x14)}});
    expectStatus(run(drive, "short"), 45,
                 "Drive self-test failed. Operation was aborted due to the processing of a Format "
                 "NVM command.");
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(0, 0, 0x1C)}});
    expectStatus(run(drive, "short"), 45, "Drive self-test failed. Unknown result.");
}

TEST(DriveSelfTestJob, TellsWhatTheLastTestOfAnNvmeDriveCameTo) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(0, 0, 0x0F)}});
    const Outcome none = run(drive, "status");
    EXPECT_NE(none.output.find("No device self-test has been run."), std::string::npos);
    EXPECT_NE(none.output.find(R"(type="uint8" value="0"/>)"), std::string::npos);

    drive.onNvme(GET_LOG_PAGE, 0x06, {{.data = page(0, 0, 0x11)}});
    drive.onNvme(DEVICE_SELF_TEST, 0x0F, {{}});
    EXPECT_NE(
        run(drive, "abort").output.find("Operation was aborted by a Device Self-test command"),
        std::string::npos);
}

TEST(DriveSelfTestJob, TellsOfARefusalByNvmeDrives) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(DEVICE_SELF_TEST, 0x01, {{.nvmeStatus = {1, 0x1D}}});
    drive.onNvme(DEVICE_SELF_TEST, 0x02, {{.nvmeStatus = {0, 0x06}}});
    expectStatus(run(drive, "short"), 209, "Drive Self-Test Already In Progress.");
    expectStatus(run(drive, "extended"), 45, "Drive self-test failed. Internal Error.");
    expectStatus(run(drive, "conveyance"), 46, "Invalid parameter(s) for drive self test feature.");
}

TEST(DriveSelfTestJob, NeedsAnNvmeDriveThatHasTheTest) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xEF)}});
    for (const char* type : {"short", "status", "abort"})
        expectStatus(run(drive, type), 208, "Drive Self-Test Not Supported.");
}

TEST(DriveSelfTestJob, PassesThePathsStatusOn) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.pathStatus = core::Status(1, 5, "Input/output error")}});
    const Outcome outcome = run(drive, "short");
    EXPECT_EQ(outcome.status.getCategory(), 1);
    EXPECT_EQ(outcome.status.getMessage(), "Input/output error");
}

TEST(DriveSelfTestJob, ShortAndCaptiveAreTheDefaults) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, EXECUTE, 0x81, {{}});
    const auto job = DriveSelfTestJob().clone();
    EXPECT_EQ(runJob(*job, R"(<Object name="DriveSelfTest" type="Method"/>)", {drive.getDevice()})
                  .status.getCode(),
              0);
    EXPECT_EQ(drive.sentAta()[2].taskFile.lba, 0xC24F81U);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
