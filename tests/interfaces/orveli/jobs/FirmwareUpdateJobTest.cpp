#include "interfaces/orveli/jobs/FirmwareUpdateJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>

namespace orvel::interfaces::orveli::jobs {
namespace {

using core::Payload;
using tavik::testing::TemporaryFolder;

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t DOWNLOAD = 0x11;
constexpr std::uint8_t COMMIT = 0x10;
constexpr std::uint8_t MICROCODE = 0x92;

std::string answer(const std::string& status) {
    return R"(<Object><Object key="SERIAL1" name="Firmware Update"><Property name="Status" value=")" +
           status + R"("/></Object></Object>)";
}

const std::string DONE = answer("Completed successfully.");
const std::string AT_RESET = answer("Firmware update successful. Please reboot to apply update.");

/// Version 130, with 9000 bytes of 5Ah as its image, or as many as told with their checksum.
void addModule(const TemporaryFolder& folder, const std::string& more = "", std::size_t size = 9000,
               const std::string& checksum = "6529F217") {
    std::ofstream(folder.path("a.nfm"), std::ios::binary)
        << "Norvo Firmware Module 1\nProduct: Quillbrook\nVersion: NX45A130\nAudience: Generic\n"
        << more << "Length: " << size << "\nChecksum: " << checksum << "\n\n"
        << std::string(size, '\x5A');
}

constexpr const char* IMMEDIATE = "Activation: immediate\n";

void describe(ScriptedDrive& drive) {
    core::Attribute product = features::device_attributes::Product();
    product.setValue("Quillbrook");
    drive->setAttribute(product);
    core::Attribute firmware = features::device_attributes::Firmware();
    firmware.setValue("NX45A110");  // what it was at some scan
    drive->setAttribute(firmware);
}

Outcome run(ScriptedDrive& drive, const TemporaryFolder& folder,
            const std::string& arguments = "") {
    FirmwareUpdateJob first(std::make_shared<FirmwareModules>(folder.path().string()));
    const auto job = first.clone();
    return runJob(*job,
                  R"(<Object name="FirmwareUpdate" type="Method">)" + arguments + ONE_DEVICE +
                      "</Object>",
                  {drive.getDevice()});
}

void expectFailure(const Outcome& outcome, int code, const std::string& message) {
    EXPECT_EQ(outcome.status.getCategory(), 10);
    EXPECT_EQ(outcome.status.getCode(), code);
    EXPECT_EQ(outcome.status.getMessage(), message);
    EXPECT_EQ(outcome.output, "");
}

Payload identifyController(std::uint8_t granularity, std::uint8_t frmw = 0x12,
                           const std::string& revision = "NX45A120", std::uint8_t oacsBits = 0x04) {
    Payload data(4096);
    std::copy(revision.begin(), revision.end(), data[64]);
    *data[256] = oacsBits;
    *data[260] = frmw;
    *data[319] = granularity;
    return data;
}

/// The drive is looked at before its firmware is compared, before it is sent, and afterwards.
std::deque<Reply> updated(const Payload& before, const Payload& after) {
    return {{.data = before}, {.data = before}, {.data = after}};
}

/// Takes pieces of 4096 bytes and one of 808.
ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin");
    describe(drive);
    drive.onNvme(IDENTIFY, 0x01,
                 updated(identifyController(0xFF), identifyController(0xFF, 0x12, "NX45A130")));
    drive.onNvme(DOWNLOAD, 0xFF, {{}});
    drive.onNvme(DOWNLOAD, 0xC9, {{}});
    drive.onNvme(COMMIT, 0x08, {{}});
    drive.onNvme(COMMIT, 0x18, {{}});
    return drive;
}

/// Dword 10 of each Firmware Commit.
std::vector<std::uint32_t> commits(ScriptedDrive& drive) {
    std::vector<std::uint32_t> sent;
    for (const SentNvme& one : drive.sentNvme()) {
        if (one.fields.opcode == COMMIT) sent.push_back(one.fields.cdw10);
    }
    return sent;
}

using Commits = std::vector<std::uint32_t>;

/// Offset, size and number of image bytes of each piece.
using Pieces = std::vector<std::array<std::uint64_t, 3>>;

std::uint64_t imageBytes(const Payload& piece) {
    return static_cast<std::uint64_t>(
        std::count(piece.data(), piece.data() + piece.size(), std::uint8_t{0x5A}));
}

Pieces pieces(ScriptedDrive& drive) {
    Pieces sent;
    for (const SentNvme& one : drive.sentNvme()) {
        if (one.fields.opcode != DOWNLOAD) continue;
        EXPECT_EQ((std::uint64_t{one.fields.cdw10} + 1) * 4, one.input.size());
        sent.push_back(
            {std::uint64_t{one.fields.cdw11} * 4, one.input.size(), imageBytes(one.input)});
    }
    return sent;
}

TEST(FirmwareUpdateJob, SendsAnImageInPiecesToAnNvmeDriveAndLeavesItToTheReset) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, folder).output, AT_RESET);
    EXPECT_EQ(pieces(drive), (Pieces{{0, 4096, 4096}, {4096, 4096, 4096}, {8192, 808, 808}}));
    EXPECT_EQ(commits(drive), (Commits{0x08}));
}

TEST(FirmwareUpdateJob, KeepsToTheGranularityOfTheDrive) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(2)}});
    EXPECT_EQ(run(drive, folder).output, AT_RESET);
    EXPECT_EQ(pieces(drive), (Pieces{{0, 8192, 8192}, {8192, 8192, 808}}));

    addModule(folder, "", 4099, "85C89311");
    ScriptedDrive odd = nvmeDrive();
    odd.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0)}});
    odd.onNvme(DOWNLOAD, 0x00, {{}});
    EXPECT_EQ(run(odd, folder).output, AT_RESET);
    EXPECT_EQ(pieces(odd), (Pieces{{0, 4096, 4096}, {4096, 4, 3}}));
}

TEST(FirmwareUpdateJob, ActivatesAtOnceIfModuleAndDriveAllowIt) {
    TemporaryFolder folder;
    addModule(folder, IMMEDIATE);
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, folder).output, DONE);
    EXPECT_EQ(commits(drive), (Commits{0x18}));
    ASSERT_EQ(drive.sentNvme().back().fields.opcode, IDENTIFY);

    ScriptedDrive other = nvmeDrive();
    other.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xFF, 0x02)}});
    EXPECT_EQ(run(other, folder).output, AT_RESET);
    EXPECT_EQ(commits(other), (Commits{0x08}));
}

TEST(FirmwareUpdateJob, TakesTheNeedForAResetAsSuccess) {
    TemporaryFolder folder;
    addModule(folder, IMMEDIATE);
    for (const int code : {0x0B, 0x10, 0x11}) {
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(COMMIT, 0x18, {{.nvmeStatus = {1, static_cast<std::uint8_t>(code)}}});
        EXPECT_EQ(run(drive, folder).output, AT_RESET);
        EXPECT_EQ(commits(drive), (Commits{0x18}));
    }
    ScriptedDrive slow = nvmeDrive();
    slow.onNvme(COMMIT, 0x18, {{.nvmeStatus = {1, 0x12}}});
    EXPECT_EQ(run(slow, folder).output, AT_RESET);
    EXPECT_EQ(commits(slow), (Commits{0x18, 0x08}));
}

TEST(FirmwareUpdateJob, ChoosesTheSlotOnlyIfTheDriveDoesNot) {
    TemporaryFolder folder;
    addModule(folder);
    for (const bool isFirstReadOnly : {false, true}) {
        ScriptedDrive drive = nvmeDrive();
        const std::uint8_t frmw = isFirstReadOnly ? 0x05 : 0x04;
        drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0, frmw)}});
        drive.onNvme(COMMIT, 0x08, {{.nvmeStatus = {1, 0x06}}});
        drive.onNvme(COMMIT, 0x09, {{}});
        drive.onNvme(COMMIT, 0x0A, {{}});
        EXPECT_EQ(run(drive, folder).output, AT_RESET);
        EXPECT_EQ(commits(drive), (Commits{0x08, isFirstReadOnly ? 0x0AU : 0x09U}));
    }
}

TEST(FirmwareUpdateJob, TellsWhyAnNvmeDriveDidNotTakeTheFirmware) {
    TemporaryFolder folder;
    addModule(folder, IMMEDIATE);

    ScriptedDrive image = nvmeDrive();
    image.onNvme(COMMIT, 0x18, {{.nvmeStatus = {1, 0x07}}});
    expectFailure(run(image, folder), 53,
                  "Firmware update failed. Firmware Commit: Invalid Firmware Image.");

    ScriptedDrive piece = nvmeDrive();
    piece.onNvme(DOWNLOAD, 0xC9, {{.nvmeStatus = {1, 0x14}}});
    expectFailure(run(piece, folder), 53,
                  "Firmware update failed. NVMe command reported a problem. Firmware Image "
                  "Download: Overlapping Range.");
    EXPECT_TRUE(commits(piece).empty());

    ScriptedDrive lost = nvmeDrive();
    lost.onNvme(DOWNLOAD, 0xFF, {{}, {.pathStatus = core::Status(1, 5, "Input/output error")}});
    expectFailure(run(lost, folder), 53, "Firmware update failed. Input/output error");

    ScriptedDrive unchanged = nvmeDrive();
    unchanged.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xFF, 0x12, "NX45A120")}});
    expectFailure(run(unchanged, folder), 53,
                  "Firmware update failed. The drive still runs NX45A120.");
}

/// Words 234 and 235 allow 1 to 8 blocks; modes by what the drive answers.
Payload identifyDevice(std::uint8_t word119 = 0x10, std::uint8_t security = 0x01,
                       const std::string& revision = "NX45A120", std::uint8_t word83 = 0x01) {
    Payload data(512);
    for (std::uint32_t place = 0; place < revision.size(); ++place)
        *data[46 + (place ^ 1U)] = static_cast<std::uint8_t>(revision[place]);
    *data[83 * 2] = word83;
    *data[83 * 2 + 1] = 0x40;
    *data[86 * 2 + 1] = 0x80;  // word 119 counts
    *data[87 * 2 + 1] = 0x40;
    *data[119 * 2] = word119;
    *data[119 * 2 + 1] = 0x40;
    *data[128 * 2] = security;
    *data[234 * 2] = 1;
    *data[235 * 2] = 8;
    return data;
}

ScriptedDrive sataDrive(const Payload& identify, std::initializer_list<std::uint16_t> modes) {
    ScriptedDrive drive("ATA");
    describe(drive);
    drive.onAta(0xEC, 0, 0, updated(identify, identifyDevice(0x10, 0x01, "NX45A130")));
    for (const std::uint16_t mode : modes)
        drive.onAta(MICROCODE, mode, 0, {{}});
    return drive;
}

/// Mode, LBA and count of each DOWNLOAD MICROCODE, and the number of image bytes.
using Downloads = std::vector<std::array<std::uint64_t, 4>>;

Downloads downloads(ScriptedDrive& drive) {
    Downloads sent;
    for (const SentAta& one : drive.sentAta()) {
        const protocols::ata::TaskFile& file = one.taskFile;
        if (file.command == MICROCODE)
            sent.push_back({file.feature, file.lba, file.count, imageBytes(one.input)});
    }
    return sent;
}

TEST(FirmwareUpdateJob, SendsSegmentsToASataDriveAndLeavesThemToThePowerOn) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive drive = sataDrive(identifyDevice(), {0x03, 0x0E});
    EXPECT_EQ(run(drive, folder).output, AT_RESET);
    EXPECT_EQ(
        downloads(drive),
        (Downloads{{0x0E, 0x0000, 8, 4096}, {0x0E, 0x0800, 8, 4096}, {0x0E, 0x1000, 2, 808}}));
    EXPECT_EQ(drive.sentAta().back().input.size(), 1024U);
}

TEST(FirmwareUpdateJob, FallsBackToTheImmediateModeOfASataDrive) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive drive = sataDrive(identifyDevice(), {0x03});
    EXPECT_EQ(run(drive, folder).output, DONE);
    EXPECT_EQ(downloads(drive), (Downloads{{0x0E, 0x0000, 8, 4096},
                                           {0x03, 0x0000, 8, 4096},
                                           {0x03, 0x0800, 8, 4096},
                                           {0x03, 0x1000, 2, 808}}));
}

TEST(FirmwareUpdateJob, ActivatesOnASataDriveAtOnceIfTheModuleAllowsIt) {
    TemporaryFolder folder;
    addModule(folder, IMMEDIATE);
    ScriptedDrive drive = sataDrive(identifyDevice(), {0x03, 0x0E, 0x0F});
    EXPECT_EQ(run(drive, folder).output, DONE);
    EXPECT_EQ(downloads(drive).front()[0], 0x03U);
    EXPECT_EQ(downloads(drive).size(), 3U);

    ScriptedDrive deferred = sataDrive(identifyDevice(0x00), {0x03, 0x0E, 0x0F});
    EXPECT_EQ(run(deferred, folder).output, DONE);
    EXPECT_EQ(downloads(deferred), (Downloads{{0x0E, 0x0000, 8, 4096},
                                              {0x0E, 0x0800, 8, 4096},
                                              {0x0E, 0x1000, 2, 808},
                                              {0x0F, 0, 0, 0}}));
}

TEST(FirmwareUpdateJob, SendsSegmentsOf64BlocksIfTheDriveDoesNotTell) {
    struct Row {
        std::uint16_t least;
        std::uint16_t most;
        std::uint64_t first;
    };

    constexpr Row ROWS[] = {{0, 0, 64},      {0xFFFF, 0xFFFF, 64}, {65, 0, 65},
                            {1, 0xFFFF, 64}, {0, 63, 63},          {65, 100, 65}};
    TemporaryFolder folder;
    addModule(folder, "", 33000, "702AAAE3");
    for (const Row& row : ROWS) {
        const Payload identify = identifyDevice();
        *identify[234 * 2] = static_cast<std::uint8_t>(row.least);
        *identify[234 * 2 + 1] = static_cast<std::uint8_t>(row.least >> 8U);
        *identify[235 * 2] = static_cast<std::uint8_t>(row.most);
        *identify[235 * 2 + 1] = static_cast<std::uint8_t>(row.most >> 8U);
        ScriptedDrive drive = sataDrive(identify, {0x0E});
        EXPECT_EQ(run(drive, folder).output, AT_RESET);
        EXPECT_EQ(downloads(drive).front()[2], row.first);
    }
}

TEST(FirmwareUpdateJob, TellsWhyASataDriveDidNotTakeTheFirmware) {
    TemporaryFolder folder;
    addModule(folder);
    const std::string refused = "Firmware update failed. ATA command reported a problem. DOWNLOAD "
                                "MICROCODE: error register 0x04.";

    ScriptedDrive without = sataDrive(identifyDevice(), {});
    expectFailure(run(without, folder), 53, refused);
    EXPECT_EQ(downloads(without).size(), 2U);

    ScriptedDrive image = sataDrive(identifyDevice(), {0x03});
    protocols::ata::ReturnedTaskFile abort;
    abort.status = 0x51;
    abort.error = 0x04;
    image.onAta(MICROCODE, 0x0E, 0, {{}, {.returned = abort}});
    expectFailure(run(image, folder), 53, refused);
    EXPECT_EQ(downloads(image).size(), 2U);

    ScriptedDrive lost = sataDrive(identifyDevice(), {0x03});
    lost.onAta(MICROCODE, 0x0E, 0, {{.pathStatus = core::Status(1, 5, "Input/output error")}});
    expectFailure(run(lost, folder), 53, "Firmware update failed. Input/output error");
    EXPECT_EQ(downloads(lost).size(), 1U);

    ScriptedDrive unchanged = sataDrive(identifyDevice(), {0x03});
    unchanged.onAta(0xEC, 0, 0, {{.data = identifyDevice()}});
    expectFailure(run(unchanged, folder), 53,
                  "Firmware update failed. The drive still runs NX45A120.");
}

TEST(FirmwareUpdateJob, SaysThatTheFirmwareThatTheDriveRunsIsCurrent) {
    TemporaryFolder folder;
    addModule(folder);
    const std::string current =
        answer("The selected Norvo SSD contains current firmware as of this tool release.");
    ScriptedDrive nvme = nvmeDrive();
    nvme.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xFF, 0x12, "NX45A130")}});
    EXPECT_EQ(run(nvme, folder).output, current);
    EXPECT_TRUE(pieces(nvme).empty());
    ScriptedDrive sata = sataDrive(identifyDevice(0x10, 0x01, "NX45A130"), {0x0E});
    EXPECT_EQ(run(sata, folder).output, current);
    EXPECT_TRUE(downloads(sata).empty());
}

TEST(FirmwareUpdateJob, LooksIntoTheFoldersOfTheRequest) {
    TemporaryFolder own;
    TemporaryFolder other;
    addModule(other);
    ScriptedDrive drive = nvmeDrive();
    expectFailure(run(drive, own), 52, "No firmware file provided or module found.");
    EXPECT_EQ(run(drive, own,
                  R"(<Property name="AdditionalModuleDirs" value="/nonexistent/modules~)" +
                      other.path().string() + R"("/>)")
                  .output,
              AT_RESET);
}

TEST(FirmwareUpdateJob, NeverSendsADamagedModule) {
    TemporaryFolder folder;
    addModule(folder, "", 9000, "00000000");
    ScriptedDrive drive = nvmeDrive();
    expectFailure(run(drive, folder), 73,
                  "Invalid firmware module type. " + folder.path("a.nfm") +
                      ": Its image doesn't match the checksum.");
    EXPECT_TRUE(pieces(drive).empty());
}

TEST(FirmwareUpdateJob, RefusesDrivesThatAreNotToBeUpdated) {
    TemporaryFolder folder;
    addModule(folder);

    ScriptedDrive member = nvmeDrive();
    core::Attribute attribute = features::device_attributes::RAIDMember();
    attribute.setValue(true);
    member->setAttribute(attribute);
    EXPECT_EQ(run(member, folder).status.getCode(), 12);
    EXPECT_TRUE(member.sentNvme().empty());

    ScriptedDrive told = sataDrive(identifyDevice(), {0x0E});
    core::Attribute possible = features::device_attributes::DownloadMicrocodePossible();
    possible.setValue(false);
    told->setAttribute(possible);
    EXPECT_EQ(run(told, folder).status.getCode(), 69);
    possible.setValue(true);
    told->setAttribute(possible);
    EXPECT_EQ(run(told, folder).output, AT_RESET);

    ScriptedDrive without = sataDrive(identifyDevice(0x10, 0x01, "NX45A120", 0x00), {0x0E});
    EXPECT_EQ(run(without, folder).status.getCode(), 69);
    const Payload invalid = identifyDevice();
    *invalid[83 * 2 + 1] = 0x00;
    ScriptedDrive untold = sataDrive(invalid, {0x0E});
    EXPECT_EQ(run(untold, folder).status.getCode(), 69);
    ScriptedDrive nvme = nvmeDrive();
    nvme.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0, 0x12, "NX45A120", 0xFB)}});
    EXPECT_EQ(run(nvme, folder).status.getCode(), 69);

    ScriptedDrive secured = sataDrive(identifyDevice(0x10, 0x03), {0x0E});
    EXPECT_EQ(run(secured, folder).status.getCode(), 15);
    EXPECT_TRUE(downloads(secured).empty());
}

/// What the callback, a plain function, was told.
std::vector<std::string> progressTexts;

TEST(FirmwareUpdateJob, TellsHowFarItIs) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive drive = nvmeDrive();
    FirmwareUpdateJob job(std::make_shared<FirmwareModules>(folder.path().string()));
    progressTexts.clear();
    job.setProgressCallback(
        [](std::uint32_t, std::uint64_t, std::unique_ptr<core::xml::XmlElement>* element) {
            const auto* object = dynamic_cast<const core::xml::XmlObject*>(element->get());
            for (const auto& property : object->getProperties()) {
                if (property->getAttribute("name") == "Progress")
                    progressTexts.push_back(property->getAttribute("value"));
            }
        },
        1);
    EXPECT_EQ(runJob(job,
                     std::string(R"(<Object name="FirmwareUpdate" type="Method">)") + ONE_DEVICE +
                         "</Object>",
                     {drive.getDevice()})
                  .output,
              AT_RESET);
    EXPECT_EQ(progressTexts, (std::vector<std::string>{"45", "91", "100"}));
}

TEST(FirmwareUpdateJob, MeetsNoDriveThatNobodyNamed) {
    TemporaryFolder folder;
    addModule(folder);
    ScriptedDrive first = nvmeDrive();
    ScriptedDrive second = nvmeDrive();
    FirmwareUpdateJob job(std::make_shared<FirmwareModules>(folder.path().string()));
    const std::string start = R"(<Object name="FirmwareUpdate" type="Method">)";
    expectFailure(runJob(job, start + "</Object>", {first.getDevice()}), 5, "No device selected.");
    expectFailure(
        runJob(job, start + ONE_DEVICE + "</Object>", {first.getDevice(), second.getDevice()}), 6,
        "Multiple devices selected.");
    EXPECT_TRUE(first.sentNvme().empty());
    EXPECT_TRUE(second.sentNvme().empty());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
