#include "interfaces/orveli/access/NvmeAccess.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"

#include <gtest/gtest.h>

#include <functional>

namespace orvel::interfaces::orveli {
namespace {

namespace nvme = protocols::nvme;

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t GET_FEATURES = 0x0A;
constexpr nvme::StatusCode INVALID_FIELD{0, 2};

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

TEST(NvmeAccess, AskReturnsWhatTheDriveAnswers) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(
        GET_FEATURES, 0x02,
        {{.data = structure(2, {{0, {7, 8}}}), .dword0 = 5}, {.nvmeStatus = INVALID_FIELD}});
    const auto command = nvme::getFeatures({.feature = 0x02});
    const auto answer = nvme_access::ask(*drive.getDevice(), command);
    EXPECT_TRUE(answer.completion.isSuccess());
    EXPECT_EQ(answer.completion.dword0, 5U);
    EXPECT_EQ(answer.data, structure(2, {{0, {7, 8}}}));
    const auto refused = nvme_access::ask(*drive.getDevice(), command);
    EXPECT_EQ(refused.completion.status, INVALID_FIELD);
}

TEST(NvmeAccess, AskSendsTheInput) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(0x11, 0x00, {{}});
    (void)nvme_access::ask(*drive.getDevice(), nvme::firmwareImageDownload(0, 4),
                           structure(4, {{0, {1, 2, 3, 4}}}));
    ASSERT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(drive.sentNvme()[0].input, structure(4, {{0, {1, 2, 3, 4}}}));
}

TEST(NvmeAccess, AskThrowsThePathsStatusIfThereIsNoAnswer) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(GET_FEATURES, 0x02, {{.pathStatus = core::statuses::adminCommandNotSendable()}});
    EXPECT_EQ(thrownBy([&] {
                  (void)nvme_access::ask(*drive.getDevice(), nvme::getFeatures({.feature = 2}));
              }),
              "0/50 The given admin command could not be sent down the given command path.");
    ScriptedDrive other("ATA");
    EXPECT_EQ(thrownBy([&] {
                  (void)nvme_access::ask(*other.getDevice(), nvme::getFeatures({.feature = 2}));
              }),
              "0/35 Device does not support this command set.");
}

TEST(NvmeAccess, SendThrowsARefusalInTheDrivesWords) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(GET_FEATURES, 0x02, {{.nvmeStatus = INVALID_FIELD}});
    EXPECT_EQ(thrownBy([&] {
                  (void)nvme_access::send(*drive.getDevice(), nvme::getFeatures({.feature = 2}));
              }),
              "0/25 NVMe command reported a problem. Get Features: Invalid Field in Command.");
}

TEST(NvmeAccess, ReadsTheStructuresOfIdentify) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x12, {{.data = structure(4096, {{4095, {9}}})}});
    EXPECT_EQ(nvme_access::identify(*drive.getDevice(), 0x12, 3, 0x0102),
              structure(4096, {{4095, {9}}}));
    ASSERT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(drive.sentNvme()[0].fields.nsid, 3U);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw10, 0x01020012U);
    EXPECT_EQ(thrownBy([&] { (void)nvme_access::identify(*drive.getDevice(), 0x01); }),
              "0/25 NVMe command reported a problem. Identify: Invalid Command Opcode.");
}

TEST(NvmeAccess, ReadsLogPages) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {{0, {1}}})}});
    EXPECT_EQ(nvme_access::logPage(*drive.getDevice(), {.logPage = 0x02, .bytes = 512}),
              structure(512, {{0, {1}}}));
}

TEST(NvmeAccess, TakesNoStructureThatIsTooShort) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = core::Payload(4095)}});
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = core::Payload(511)}});
    const std::string tooLittle =
        "0/49 The IO command passed, but did not return the expected amount of data.";
    EXPECT_EQ(thrownBy([&] { (void)nvme_access::identify(*drive.getDevice(), 0x01); }), tooLittle);
    EXPECT_EQ(thrownBy([&] {
                  (void)nvme_access::logPage(*drive.getDevice(), {.logPage = 2, .bytes = 512});
              }),
              tooLittle);
}

TEST(NvmeAccess, ReadsTheDwordOfAFeature) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(GET_FEATURES, 0x04, {{.dword0 = 0x15D}});
    EXPECT_EQ(nvme_access::feature(*drive.getDevice(), {.feature = 0x04, .cdw11 = 0x10000}),
              0x15DU);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw11, 0x10000U);
    EXPECT_EQ(thrownBy([&] { (void)nvme_access::feature(*drive.getDevice(), {.feature = 5}); }),
              "0/25 NVMe command reported a problem. Get Features: Invalid Command Opcode.");
}

}  // namespace
}  // namespace orvel::interfaces::orveli
