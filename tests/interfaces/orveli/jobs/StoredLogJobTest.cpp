#include "interfaces/orveli/jobs/StoredLogJob.h"

#include "interfaces/orveli/jobs/AssertLogJob.h"
#include "interfaces/orveli/jobs/EventLogJob.h"
#include "interfaces/orveli/jobs/GplJob.h"
#include "interfaces/orveli/jobs/NlogJob.h"
#include "tests/interfaces/orveli/access/Bytes.h"
#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr const char* NLOG = R"(<Object name="Nlog" type="Method"/>)";
constexpr const char* EVENT_LOG = R"(<Object name="EventLog" type="Method"/>)";
constexpr const char* ASSERT_LOG = R"(<Object name="AssertLog" type="Method"/>)";

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t READ_LOG_EXT = 0x2F;

std::string gpl(const std::string& arguments) {
    return R"(<Object name="GPL" type="Method">)" + arguments + "</Object>";
}

/// An NVMe drive with a limit of 8192 bytes for a transfer. Bit 2 of LPA: it knows offsets.
ScriptedDrive nvmeDrive(const std::string& mdts = "01", const std::string& lpa = "04") {
    ScriptedDrive drive("NVMe Admin");
    drive.setNorvo(true);
    drive.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096, {{77, mdts}, {261, lpa}})}});
    return drive;
}

/// A SATA drive with two pages of Nlog, one of event log and 300 pages at address B0h.
ScriptedDrive sataDrive() {
    ScriptedDrive drive("ATA");
    drive.setNorvo(true);
    drive.onAta(
        READ_LOG_EXT, 0, 0x00,
        {{.data = bytesOf(512, {{0, "0100"}, {320, "0200"}, {322, "0100"}, {352, "2C01"}})}});
    return drive;
}

std::string answer(const std::string& title, const std::string& payload) {
    return R"(<Object><Object key="SERIAL1" name=")" + title +
           R"("><Object category="payload" value=")" + payload + R"("></Object></Object></Object>)";
}

void expectFailure(Job& job, const std::string& request, const ScriptedDrive& drive,
                   std::int32_t category, std::int32_t code) {
    const Outcome outcome = runJob(job, request, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getCategory(), category) << outcome.status.getMessage();
    EXPECT_EQ(outcome.status.getCode(), code) << outcome.status.getMessage();
    EXPECT_EQ(outcome.output, "");
}

TEST(StoredLogJob, ReadsALogOfAnNvmeDriveInPiecesThatTheDriveTakes) {
    ScriptedDrive drive = nvmeDrive();
    const auto first = bytesOf(8192, {{0, "4E4C4F47"}, {8, "00220000"}, {12, "05"}});
    drive.onNvme(GET_LOG_PAGE, 0xC0,
                 {{.data = bytesOf(512, {{0, "4E4C4F47"}, {8, "00220000"}})},
                  {.data = first},
                  {.data = bytesOf(512, {{0, "AB"}, {511, "CD"}})}});
    NlogJob job;
    const Outcome outcome = runJob(job, NLOG, {drive.getDevice()});
    EXPECT_EQ(outcome.output,
              answer("nlog", "4E4C4F4700000000"
                             "0022000005" +
                                 repeated("00", 8179) + "AB" + repeated("00", 510) + "CD"));

    ASSERT_EQ(drive.sentNvme().size(), 4U);
    EXPECT_EQ(drive.sentNvme()[1].fields.cdw10, 0x007F00C0U);
    EXPECT_EQ(drive.sentNvme()[2].fields.cdw10, 0x07FF00C0U);
    EXPECT_EQ(drive.sentNvme()[2].fields.cdw12, 0U);
    EXPECT_EQ(drive.sentNvme()[3].fields.cdw10, 0x007F00C0U);
    EXPECT_EQ(drive.sentNvme()[3].fields.cdw12, 8192U);
}

TEST(StoredLogJob, ReadsALogAtOnceFromANvmeDriveWithoutOffsets) {
    struct Row {
        const char* mdts;
        const char* length;  ///< in the log's header
        std::uint32_t bytes;
        std::int32_t code;
    };

    constexpr Row ROWS[] = {
        {"01", "00200000", 8192, 0},  {"01", "00220000", 8704, 3},  {"00", "00400000", 16384, 0},
        {"00", "00420000", 16896, 3}, {"05", "00400000", 16384, 0}, {"05", "00420000", 16896, 3},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.mdts) + " " + row.length);
        ScriptedDrive drive = nvmeDrive(row.mdts, "FB");
        drive.onNvme(GET_LOG_PAGE, 0xC0,
                     {{.data = bytesOf(512, {{0, "4E4C4F47"}, {8, row.length}})},
                      {.data = bytesOf(row.bytes, {{0, "4E4C4F47"}, {8, row.length}})}});
        NlogJob job;
        EXPECT_EQ(runJob(job, NLOG, {drive.getDevice()}).status.getCode(), row.code);
        EXPECT_EQ(drive.sentNvme().size(), row.code == 0 ? 3U : 2U);
        EXPECT_EQ(drive.sentNvme().back().fields.cdw12, 0U);
    }
}

TEST(StoredLogJob, ReadsALogOfASataDrive) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(READ_LOG_EXT, 0, 0xA0,
                {{.data = bytesOf(512, {{0, "4E4C4F47"}, {8, "00040000"}})},
                 {.data = bytesOf(1024, {{0, "4E4C4F47"}, {8, "00040000"}, {1023, "EE"}})}});
    NlogJob job;
    EXPECT_EQ(runJob(job, NLOG, {drive.getDevice()}).output,
              answer("nlog", "4E4C4F470000000000040000" + repeated("00", 1011) + "EE"));
    EXPECT_EQ(drive.sentAta().back().taskFile.count, 2U);
}

TEST(StoredLogJob, EachLogHasItsPageItsSignatureAndItsFailure) {
    struct Row {
        std::uint8_t page;
        const char* signature;
        const char* request;
        std::unique_ptr<Job> job;
        const char* title;
        std::int32_t invalidData;
    };

    const Row rows[] = {
        {0xC0, "4E4C4F47", NLOG, std::make_unique<NlogJob>(), "nlog", 61},
        {0xC3, "45564E54", EVENT_LOG, std::make_unique<EventLogJob>(), "eventlog", 93},
        {0xC4, "41535254", ASSERT_LOG, std::make_unique<AssertLogJob>(), "assert", 92},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.title);
        const auto header = [&](const std::string& length) {
            return Reply{.data = bytesOf(512, {{0, row.signature}, {8, length}, {12, "01"}})};
        };
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(GET_LOG_PAGE, row.page, {header("00020000")});
        EXPECT_EQ(runJob(*row.job, row.request, {drive.getDevice()}).output,
                  answer(row.title, std::string(row.signature) +
                                        "00000000"
                                        "00020000"
                                        "01" +
                                        repeated("00", 499)));
        for (const char* const length : {"00000000", "FF010000", "01020000", "FFFFFFFF"}) {
            drive.onNvme(GET_LOG_PAGE, row.page, {header(length)});
            expectFailure(*row.job, row.request, drive, 10, row.invalidData);
        }
        drive.onNvme(GET_LOG_PAGE, row.page, {{.data = bytesOf(512, {{8, "00020000"}})}});
        expectFailure(*row.job, row.request, drive, 10, row.invalidData);
        drive.onNvme(GET_LOG_PAGE, row.page, {{.data = bytesOf(11)}});
        expectFailure(*row.job, row.request, drive, 10, row.invalidData);
        drive.onNvme(GET_LOG_PAGE, row.page, {header("00040000")});
        expectFailure(*row.job, row.request, drive, 10, row.invalidData);
    }
}

TEST(StoredLogJob, ALogOfASataDriveIsNoLongerThanTheDirectoryTells) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(READ_LOG_EXT, 0, 0xA1,
                {{.data = bytesOf(1024, {{0, "45564E54"}, {8, "00040000"}})}});
    EventLogJob job;
    expectFailure(job, EVENT_LOG, drive, 10, 93);
}

TEST(StoredLogJob, ADriveWithoutTheLogDoesNotSupportIt) {
    ScriptedDrive sata = sataDrive();
    AssertLogJob job;
    expectFailure(job, ASSERT_LOG, sata, 10, 3);
    ScriptedDrive nvme = nvmeDrive();
    nvme.onNvme(GET_LOG_PAGE, 0xC4, {{.nvmeStatus = {1, 0x09}}});
    expectFailure(job, ASSERT_LOG, nvme, 10, 3);
}

TEST(StoredLogJob, DrivesOfOtherMakersAreNotAskedForIt) {
    ScriptedDrive sata = sataDrive();
    ScriptedDrive nvme = nvmeDrive();
    sata.setNorvo(false);
    nvme.setNorvo(false);
    NlogJob job;
    expectFailure(job, NLOG, sata, 10, 1);
    expectFailure(job, NLOG, nvme, 10, 1);
    EXPECT_TRUE(sata.sentAta().empty());
    EXPECT_TRUE(nvme.sentNvme().empty());
}

TEST(StoredLogJob, AnotherRefusalIsToldInTheDrivesWords) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xC0, {{.nvmeStatus = {0, 0x06}}});
    NlogJob job;
    const Outcome outcome = runJob(job, NLOG, {drive.getDevice()});
    EXPECT_EQ(outcome.status.getMessage(),
              "NVMe command reported a problem. Get Log Page: Internal Error.");
}

TEST(StoredLogJob, ADriveThatNeverAssertedHasNoAssertLog) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0xC4, {{.data = bytesOf(512, {{0, "41535254"}, {8, "00020000"}})}});
    AssertLogJob job;
    expectFailure(job, ASSERT_LOG, drive, 10, 172);
}

TEST(StoredLogJob, AFailureOfOneDriveOfSeveralStandsInItsObject) {
    ScriptedDrive good = nvmeDrive();
    good.onNvme(GET_LOG_PAGE, 0xC0, {{.data = bytesOf(512, {{0, "4E4C4F47"}, {8, "00020000"}})}});
    ScriptedDrive bad("NVMe Admin", "SERIAL2");
    bad.setNorvo(true);
    bad.onNvme(IDENTIFY, 0x01, {{.data = bytesOf(4096)}});
    bad.onNvme(GET_LOG_PAGE, 0xC0, {{.data = bytesOf(512)}});
    NlogJob job;
    EXPECT_EQ(
        runJob(job, NLOG, {good.getDevice(), bad.getDevice()}).output,
        R"(<Object><Object key="SERIAL1" name="nlog"><Object category="payload" )"
        R"(value="4E4C4F470000000000020000)" +
            repeated("00", 500) +
            R"("></Object></Object><Object key="SERIAL2" name="nlog"><Object category="status">)"
            R"(<Property name="Category" value="10"/><Property name="Code" value="61"/>)"
            R"(<Property name="Message" value="Invalid Nlog data."/></Object></Object>)"
            R"(</Object>)");
}

TEST(GplJob, ReadsOnePageFromTheFirstOnUnlessToldOtherwise) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(READ_LOG_EXT, 0, 0xB0, {{.data = bytesOf(512, {{0, "0102"}, {511, "FF"}})}});
    GplJob job;
    const Outcome outcome =
        runJob(job, gpl(R"(<Property name="LogAddress" value="0xB0"/>)"), {drive.getDevice()});
    EXPECT_EQ(outcome.output, answer("gpl", "0102" + repeated("00", 509) + "FF"));
    EXPECT_EQ(drive.sentAta().back().taskFile.lba, 0x0000000000B0U);
    EXPECT_EQ(drive.sentAta().back().taskFile.count, 1U);
}

TEST(GplJob, ReadsManyPagesInPieces) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(READ_LOG_EXT, 0, 0xB0,
                {{.data = bytesOf(65536, {{0, "01"}, {65535, "02"}})},
                 {.data = bytesOf(65536, {{0, "03"}})},
                 {.data = bytesOf(65536, {{0, "04"}, {22015, "05"}})}});
    GplJob job;
    const Outcome outcome = runJob(job,
                                   gpl(R"(<Property name="LogAddress" value="176"/>)"
                                       R"(<Property name="PageNum" value="1"/>)"
                                       R"(<Property name="SectorCount" value="0x12B"/>)"),
                                   {drive.getDevice()});
    EXPECT_EQ(outcome.output,
              answer("gpl", "01" + repeated("00", 65534) + "0203" + repeated("00", 65535) + "04" +
                                repeated("00", 22014) + "05"));
    ASSERT_EQ(drive.sentAta().size(), 5U) << "IDENTIFY DEVICE, the directory and the log";
    EXPECT_EQ(drive.sentAta()[2].taskFile.lba, 0x0000000001B0U);
    EXPECT_EQ(drive.sentAta()[2].taskFile.count, 128U);
    EXPECT_EQ(drive.sentAta()[3].taskFile.lba, 0x0000000081B0U);
    EXPECT_EQ(drive.sentAta()[4].taskFile.lba, 0x0001000001B0U);
    EXPECT_EQ(drive.sentAta()[4].taskFile.count, 43U);
}

TEST(GplJob, TheDirectoryItselfIsALogOfOnePage) {
    ScriptedDrive drive = sataDrive();
    GplJob job;
    const Outcome outcome =
        runJob(job, gpl(R"(<Property name="LogAddress" value="0"/>)"), {drive.getDevice()});
    EXPECT_EQ(outcome.output, answer("gpl", "0100" + repeated("00", 318) + "02000100" +
                                                repeated("00", 28) + "2C01" + repeated("00", 158)));
}

TEST(GplJob, RefusesAddressesAndPagesThatThereAreNot) {
    struct Row {
        const char* arguments;
        std::int32_t category;
        std::int32_t code;
    };

    // clang-format off
    const Row rows[] = {
    //  arguments                                                                                       category code
        {"",                                                                                                  10,  4},
        {R"(<Property name="LogAddress" value="256"/>)",                                                      10,  4},
        {R"(<Property name="LogAddress" value="0xB1"/>)",                                                     10,  4},
        {R"(<Property name="LogAddress" value="log"/>)",                                                      10, 36},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="SectorCount" value="0"/>)",              0, 14},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="SectorCount" value="301"/>)",            0, 14},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="PageNum" value="299"/><Property name="SectorCount" value="2"/>)", 0, 14},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="SectorCount" value="99999999999"/>)",    0, 14},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="PageNum" value="300"/>)",                0, 14},
        {R"(<Property name="LogAddress" value="0xB0"/><Property name="PageNum" value="65536"/>)",              0, 14},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments);
        ScriptedDrive drive = sataDrive();
        drive.onAta(READ_LOG_EXT, 0, 0xB0, {{.data = bytesOf(65536)}});
        GplJob job;
        expectFailure(job, gpl(row.arguments), drive, row.category, row.code);
    }
}

TEST(GplJob, TrustsNoDirectoryOfAnotherVersion) {
    ScriptedDrive drive("ATA");
    drive.onAta(READ_LOG_EXT, 0, 0x00,
                {{.data = bytesOf(512, {{0, "0101"}, {320, "0200"}, {352, "2C01"}})}});
    drive.onAta(READ_LOG_EXT, 0, 0xB0, {{.data = bytesOf(512)}});
    GplJob job;
    expectFailure(job, gpl(R"(<Property name="LogAddress" value="0xB0"/>)"), drive, 10, 33);
}

TEST(GplJob, NvmeDrivesHaveNoGeneralPurposeLog) {
    ScriptedDrive drive = nvmeDrive();
    GplJob job;
    expectFailure(job, gpl(R"(<Property name="LogAddress" value="0"/>)"), drive, 10, 3);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
