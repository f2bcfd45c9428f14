#include "interfaces/orveli/jobs/FormatJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

using core::Payload;
using protocols::ata::ReturnedTaskFile;
using std::chrono::milliseconds;

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t FORMAT_NVM = 0x80;
constexpr const char* SUCCESS =
    R"(<Object><Object key="SERIAL1" name="Format">)"
    R"(<Property name="Status" value="Completed successfully."/></Object></Object>)";

/// `arguments` as "Name=value" each.
Outcome run(
    ScriptedDrive& drive, const std::vector<std::pair<std::string, std::string>>& arguments,
    Pause pause = [](milliseconds) {}) {
    FormatJob job(std::move(pause));
    std::string request = R"(<Object name="Format" type="Method">)";
    for (const auto& [name, value] : arguments)
        request.append(R"(<Property name=")")
            .append(name)
            .append(R"(" value=")")
            .append(value)
            .append(R"("/>)");
    return runJob(job, request + ONE_DEVICE + "</Object>", {drive.getDevice()});
}

void expectCode(const Outcome& outcome, int code) {
    EXPECT_EQ(outcome.status.getCategory(), 10);
    EXPECT_EQ(outcome.status.getCode(), code);
    EXPECT_EQ(outcome.output, "");
}

Payload identifyController(std::uint8_t oacsBits = 0x02, std::uint8_t fnaBits = 0x04) {
    Payload data(4096);
    *data[256] = oacsBits;
    *data[524] = fnaBits;
    return data;
}

/// Formats: 0 without metadata, 1 with 8 bytes, 2 with 4 bytes.
Payload identifyNamespace(std::uint8_t flbas = 0, std::uint8_t dps = 0, std::uint8_t mc = 0x03,
                          std::uint8_t dpc = 0x1B) {
    Payload data(4096);
    *data[25] = 2;
    *data[26] = flbas;
    *data[27] = mc;
    *data[28] = dpc;
    *data[29] = dps;
    *data[132] = 8;
    *data[136] = 4;
    return data;
}

Payload list(std::initializer_list<std::uint8_t> identifiers) {
    Payload data(4096);
    std::uint32_t place = 0;
    for (const std::uint8_t one : identifiers) {
        *data[place] = one;
        place += 4;
    }
    return data;
}

ScriptedDrive nvmeDrive(std::initializer_list<std::uint8_t> attached = {1},
                        const std::deque<Reply>& namespaces = {{.data = identifyNamespace()}}) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController()}});
    drive.onNvme(IDENTIFY, 0x02, {{.data = list(attached)}});
    drive.onNvme(IDENTIFY, 0x00, namespaces);
    return drive;
}

/// Namespace and dword 10 of each Format NVM.
std::vector<std::pair<std::uint32_t, std::uint32_t>> formats(ScriptedDrive& drive) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> sent;
    for (const SentNvme& one : drive.sentNvme()) {
        if (one.fields.opcode == FORMAT_NVM) sent.emplace_back(one.fields.nsid, one.fields.cdw10);
    }
    return sent;
}

using Formats = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

TEST(FormatJob, DeletesAllNamespacesOfOneFormatWithOneCommand) {
    ScriptedDrive drive = nvmeDrive({1, 2}, {{.data = identifyNamespace(0x11, 0x09)}});
    drive.onNvme(FORMAT_NVM, 0x31, {{}});
    EXPECT_EQ(run(drive, {{"Type", "delete"}}).output, SUCCESS);
    EXPECT_EQ(formats(drive), (Formats{{0xFFFFFFFF, 0x331}}));
}

TEST(FormatJob, DeletesNamespacesOfDifferentFormatsOneByOne) {
    ScriptedDrive drive =
        nvmeDrive({1, 4}, {{.data = identifyNamespace(0)}, {.data = identifyNamespace(2)}});
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    drive.onNvme(FORMAT_NVM, 0x02, {{}});
    EXPECT_EQ(run(drive, {{"Type", "Delete"}}).output, SUCCESS);
    EXPECT_EQ(formats(drive), (Formats{{1, 0x200}, {4, 0x202}}));
}

TEST(FormatJob, TellsWhichNamespacesADeleteHasNotReached) {
    ScriptedDrive drive = nvmeDrive({1, 2});
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x0A)}});
    drive.onNvme(IDENTIFY, 0x10, {{.data = list({1, 2, 3, 7})}});
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    EXPECT_EQ(run(drive, {{"Type", "Delete"}}).output,
              R"(<Object><Object key="SERIAL1" name="Format">)"
              R"(<Property name="Status" value="Completed successfully."/>)"
              R"(<Property name="NotDeleted" value="Namespaces that are not attached to the )"
              R"(controller: 3, 7"/></Object></Object>)");
}

TEST(FormatJob, FormatsOneNamespaceAsToldAndLeavesTheRestAsItIs) {
    struct Row {
        std::vector<std::pair<std::string, std::string>> arguments;
        std::uint8_t flbas;
        std::uint8_t dps;
        std::uint32_t cdw10;
    };

    const Row rows[] = {
        {{}, 0x00, 0x00, 0x000},
        {{}, 0x11, 0x01, 0x031},
        {{{"SecureEraseSetting", "0"}}, 0x01, 0x00, 0x001},
        {{{"SecureEraseSetting", "1"}}, 0x00, 0x00, 0x200},
        {{{"SecureEraseSetting", "2"}}, 0x00, 0x00, 0x400},
        {{{"LBAFormat", "1"}}, 0x00, 0x00, 0x001},
        {{{"LBAFormat", "1"}, {"MetadataSettings", "1"}}, 0x00, 0x00, 0x011},
        {{{"LBAFormat", "1"}, {"ProtectionInformation", "1"}}, 0x00, 0x00, 0x021},
        {{{"ProtectionInformation", "2"}, {"ProtectionInformationLocation", "1"}},
         0x01,
         0x00,
         0x141},
        {{{"ProtectionInformation", "0"}, {"LBAFormat", "0"}}, 0x01, 0x09, 0x000},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.cdw10);
        ScriptedDrive drive = nvmeDrive({1, 2}, {{.data = identifyNamespace(row.flbas, row.dps)}});
        drive.onNvme(FORMAT_NVM, static_cast<std::uint8_t>(row.cdw10), {{}});
        auto arguments = row.arguments;
        arguments.emplace_back("Type", "NVMEFORMAT");
        arguments.emplace_back("NamespaceId", "0x2");
        EXPECT_EQ(run(drive, arguments).output, SUCCESS);
        EXPECT_EQ(formats(drive), (Formats{{2, row.cdw10}}));
    }
}

TEST(FormatJob, ChoosesWhereMetadataAndProtectionGoIfThereIsOnlyOneWay) {
    ScriptedDrive drive = nvmeDrive({1}, {{.data = identifyNamespace(0, 0, 0x01, 0x09)}});
    drive.onNvme(FORMAT_NVM, 0x31, {{}});
    EXPECT_EQ(
        run(drive, {{"Type", "NVMeFormat"}, {"LBAFormat", "1"}, {"ProtectionInformation", "1"}})
            .output,
        SUCCESS);
    EXPECT_EQ(formats(drive), (Formats{{0xFFFFFFFF, 0x131}}));
}

TEST(FormatJob, RefusesWhatNoDriveCanHave) {
    struct Row {
        const char* name;
        const char* value;
        int code;
    };

    constexpr Row ROWS[] = {{"SecureEraseSetting", "3", 27},
                            {"SecureEraseSetting", "x", 27},
                            {"SecureEraseSetting", "", 27},
                            {"LBAFormat", "16", 28},
                            {"LBAFormat", "-1", 28},
                            {"LBAFormat", "300", 28},
                            {"ProtectionInformation", "4", 29},
                            {"ProtectionInformationLocation", "2", 30},
                            {"MetadataSettings", "2", 31},
                            {"NamespaceId", "0", 80},
                            {"NamespaceId", "one", 80},
                            {"NamespaceId", "0x", 80},
                            {"NamespaceId", "", 80},
                            {"NamespaceId", "0x100000001", 80},
                            {"NamespaceId", "4294967296", 80}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.name) + "=" + row.value);
        ScriptedDrive drive = nvmeDrive();
        expectCode(run(drive, {{"Type", "NVMeFormat"}, {row.name, row.value}}), row.code);
        EXPECT_TRUE(drive.sentNvme().empty());
    }
}

TEST(FormatJob, RefusesWhatTheNamespaceCannotHave) {
    struct Row {
        std::vector<std::pair<std::string, std::string>> arguments;
        Payload identify;
        int code;
    };

    const Row rows[] = {
        {{{"LBAFormat", "3"}}, identifyNamespace(), 28},
        {{{"ProtectionInformation", "1"}}, identifyNamespace(), 29},
        {{{"ProtectionInformation", "1"}}, identifyNamespace(2), 29},
        {{{"ProtectionInformation", "3"}}, identifyNamespace(1), 29},
        {{{"LBAFormat", "0"}}, identifyNamespace(1, 1), 29},
        {{{"ProtectionInformation", "1"}, {"ProtectionInformationLocation", "1"}},
         identifyNamespace(1, 0, 0x03, 0x11),
         30},
        {{{"ProtectionInformation", "1"}, {"ProtectionInformationLocation", "0"}},
         identifyNamespace(1, 0, 0x03, 0x09),
         30},
        {{{"LBAFormat", "1"}, {"MetadataSettings", "1"}}, identifyNamespace(0, 0, 0x02), 31},
        {{{"LBAFormat", "1"}, {"MetadataSettings", "0"}}, identifyNamespace(0, 0, 0x01), 31},
        {{{"NamespaceId", "2"}}, identifyNamespace(), 80},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.front().first + "=" + row.arguments.front().second);
        ScriptedDrive drive = nvmeDrive({1}, {{.data = row.identify}});
        auto arguments = row.arguments;
        arguments.emplace_back("Type", "NVMeFormat");
        expectCode(run(drive, arguments), row.code);
        EXPECT_TRUE(formats(drive).empty());
    }
}

TEST(FormatJob, NeedsADriveThatFormats) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xFD)}});
    expectCode(run(drive, {{"Type", "Delete"}, {"NamespaceId", "1"}}), 3);
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x02, 0x03)}});
    expectCode(run(drive, {{"Type", "NVMeFormat"}, {"SecureEraseSetting", "2"}}), 27);
    drive.onNvme(IDENTIFY, 0x02, {{.data = list({})}});
    const Outcome empty = run(drive, {{"Type", "Delete"}});
    expectCode(empty, 171);
    EXPECT_EQ(empty.status.getMessage(),
              "Failed to format drive. No namespace is attached to the controller.");
}

TEST(FormatJob, NeverReachesDetachedNamespacesWithTheOnlyAttachedOne) {
    struct Row {
        const char* type;
        std::uint8_t fna;
        int code;
    };

    constexpr Row ROWS[] = {{"NVMeFormat", 0x01, 171},
                            {"Delete", 0x01, 171},
                            {"NVMeFormat", 0x02, 0},
                            {"Delete", 0x02, 171}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.type) + " " + std::to_string(row.fna));
        ScriptedDrive drive = nvmeDrive({1});
        drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x0A, row.fna)}});
        drive.onNvme(IDENTIFY, 0x10, {{.data = list({1, 3})}});
        drive.onNvme(FORMAT_NVM, 0x00, {{}});
        EXPECT_EQ(run(drive, {{"Type", row.type}, {"NamespaceId", "1"}}).status.getCode(),
                  row.code);
        EXPECT_EQ(formats(drive).empty(), row.code != 0);
        // With nothing else on the drive there is nothing to lose.
        drive.onNvme(IDENTIFY, 0x10, {{.data = list({1})}});
        EXPECT_EQ(run(drive, {{"Type", row.type}, {"NamespaceId", "1"}}).output, SUCCESS);
    }
}

TEST(FormatJob, TellsWhichDetachedNamespacesItHasReachedBesides) {
    struct Row {
        const char* type;
        std::uint8_t fna;
        const char* told;
    };

    constexpr Row ROWS[] = {{"NVMeFormat", 0x00, nullptr},         {"Delete", 0x00, "NotDeleted"},
                            {"NVMeFormat", 0x01, "AlsoFormatted"}, {"Delete", 0x01, "AlsoDeleted"},
                            {"NVMeFormat", 0x02, nullptr},         {"Delete", 0x02, "AlsoDeleted"}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.type) + " " + std::to_string(row.fna));
        ScriptedDrive drive = nvmeDrive({1, 2});
        drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x0A, row.fna)}});
        drive.onNvme(IDENTIFY, 0x10, {{.data = list({1, 2, 3, 7})}});
        drive.onNvme(FORMAT_NVM, 0x00, {{}});
        const std::string expected =
            row.told == nullptr
                ? SUCCESS
                : std::string(R"(<Object><Object key="SERIAL1" name="Format">)"
                              R"(<Property name="Status" value="Completed successfully."/>)"
                              R"(<Property name=")") +
                      row.told +
                      R"(" value="Namespaces that are not attached to the )"
                      R"(controller: 3, 7"/></Object></Object>)";
        EXPECT_EQ(run(drive, {{"Type", row.type}}).output, expected);
        EXPECT_EQ(formats(drive).size(), 1U);
    }
}

TEST(FormatJob, FormatsNothingByAListThatMakesNoSense) {
    ScriptedDrive drive = nvmeDrive({1, 3, 2});
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    expectCode(run(drive, {{"Type", "Delete"}}), 33);

    // As many as a list can have, and the next one begins anew.
    Payload full(4096);
    for (std::uint32_t i = 0; i < 1024; ++i) {
        *full[4 * i] = static_cast<std::uint8_t>(i + 1);
        *full[4 * i + 1] = static_cast<std::uint8_t>((i + 1) >> 8U);
    }
    drive.onNvme(IDENTIFY, 0x02, {{.data = full}, {.data = list({1})}});
    expectCode(run(drive, {{"Type", "Delete"}}), 33);
    EXPECT_TRUE(formats(drive).empty());
}

TEST(FormatJob, NeverFormatsMoreNamespacesThanItWasAskedTo) {
    ScriptedDrive drive = nvmeDrive({1, 2});
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x02, 0x01)}});
    const Outcome outcome = run(drive, {{"Type", "NVMeFormat"}, {"NamespaceId", "1"}});
    expectCode(outcome, 171);
    EXPECT_EQ(outcome.status.getMessage(),
              "Failed to format drive. The drive can only format all of its namespaces at once. "
              "Name 0xFFFFFFFF as the namespace to do that.");
    EXPECT_TRUE(formats(drive).empty());

    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0x02, 0x02)}});
    expectCode(run(drive, {{"Type", "Delete"}, {"NamespaceId", "1"}}), 171);
    EXPECT_EQ(run(drive, {{"Type", "NVMeFormat"}, {"NamespaceId", "1"}}).output, SUCCESS);
    EXPECT_EQ(run(drive, {{"Type", "Delete"}, {"NamespaceId", "FFFFFFFF"}}).output, SUCCESS);
    EXPECT_EQ(formats(drive), (Formats{{1, 0x000}, {0xFFFFFFFF, 0x200}}));
}

TEST(FormatJob, TellsTheWordsOfAnNvmeDriveThatRefuses) {
    struct Row {
        protocols::nvme::StatusCode drive;
        int code;
        const char* message;
    };

    constexpr Row ROWS[] = {
        {{0, 0x0B}, 80, "Invalid namespace ID given."},
        {{1, 0x0A}, 28, "Invalid LBA format."},
        {{0, 0x84}, 171, "Failed to format drive. Namespace 1: Format In Progress."},
    };
    for (const Row& row : ROWS) {
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(FORMAT_NVM, 0x00, {{.nvmeStatus = row.drive}});
        const Outcome outcome = run(drive, {{"Type", "NVMeFormat"}, {"NamespaceId", "1"}});
        expectCode(outcome, row.code);
        EXPECT_EQ(outcome.status.getMessage(), row.message);
    }
}

TEST(FormatJob, KnowsFourTypesEachForItsKindOfDrive) {
    ScriptedDrive nvme = nvmeDrive();
    ScriptedDrive sata("ATA");
    expectCode(run(nvme, {}), 32);
    expectCode(run(nvme, {{"Type", "Erase"}}), 32);
    expectCode(run(nvme, {{"Type", "ATASanitize"}}), 3);
    expectCode(run(nvme, {{"Type", "atasecureerase"}}), 3);
    expectCode(run(sata, {{"Type", "NVMeFormat"}, {"Force", "true"}}), 3);
    EXPECT_TRUE(nvme.sentNvme().empty());
    EXPECT_TRUE(sata.sentAta().empty());
}

TEST(FormatJob, RefusesMembersOfRaidVolumes) {
    for (const char* commandSet : {"ATA", "NVMe Admin"}) {
        ScriptedDrive drive(commandSet);
        core::Attribute member = features::device_attributes::RAIDMember();
        member.setValue(true);
        drive->setAttribute(member);
        expectCode(run(drive, {{"Type", "Delete"}, {"Force", "true"}}), 12);
        EXPECT_TRUE(drive.sentAta().empty() && drive.sentNvme().empty());
    }
}

TEST(FormatJob, RefusesADriveWithPartitionsUnlessForced) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    drive->addPartition(core::Partition());
    expectCode(run(drive, {{"Type", "Delete"}}), 94);
    expectCode(run(drive, {{"Type", "NVMeFormat"}, {"Force", "false"}}), 94);
    EXPECT_TRUE(drive.sentNvme().empty());
    EXPECT_EQ(run(drive, {{"Type", "Delete"}, {"Force", "true"}}).output, SUCCESS);
}

TEST(FormatJob, NeedsForceIfThePathCannotTellOfPartitions) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(FORMAT_NVM, 0x00, {{}});
    drive.onPartitionCheck(core::Status(1, 13, "Permission denied"));
    const Outcome outcome = run(drive, {{"Type", "Delete"}});
    EXPECT_EQ(outcome.status.toString(), "Category: 1\nCode: 13\nMessage: Permission denied");
    EXPECT_TRUE(drive.sentNvme().empty());
    drive.onPartitionCheck(core::Status(0, 2, "Device has one or more partitions."));
    expectCode(run(drive, {{"Type", "Delete"}}), 94);
    drive.onPartitionCheck(core::Status(1, 13, "Permission denied"));
    EXPECT_EQ(run(drive, {{"Type", "Delete"}, {"Force", "true"}}).output, SUCCESS);
}

ReturnedTaskFile returned(std::uint16_t count, std::uint64_t lba = 0, std::uint8_t status = 0x50) {
    ReturnedTaskFile one;
    one.status = status;
    one.error = status == 0x51 ? 0x04 : 0x00;
    one.count = count;
    one.lba = lba;
    one.is48Bit = true;
    return one;
}

/// Word 59: sanitize features; word 128: security.
Payload identifyDevice(std::uint16_t sanitize, std::uint8_t security) {
    Payload data(512);
    *data[118] = static_cast<std::uint8_t>(sanitize);
    *data[119] = static_cast<std::uint8_t>(sanitize >> 8U);
    *data[178] = 2;  // erase time, in units of two minutes
    *data[256] = security;
    return data;
}

constexpr std::uint16_t BLOCK_ERASE = 0x9000;
constexpr std::uint16_t CRYPTO_SCRAMBLE = 0x3000;
constexpr std::uint8_t SECURITY = 0x01;
constexpr std::uint8_t FROZEN = 0x09;

ScriptedDrive sataDrive(std::uint16_t sanitize, std::uint8_t security) {
    ScriptedDrive drive("ATA");
    drive.onAta(0xEC, 0, 0, {{.data = identifyDevice(sanitize, security)}});
    return drive;
}

/// Command and feature of all but IDENTIFY DEVICE, one behind the other.
std::vector<std::uint16_t> commands(ScriptedDrive& drive) {
    std::vector<std::uint16_t> sent;
    for (const SentAta& one : drive.sentAta()) {
        const protocols::ata::TaskFile& file = one.taskFile;
        if (file.command != 0xEC)
            sent.push_back(static_cast<std::uint16_t>(file.command << 8U | file.feature));
    }
    return sent;
}

using Commands = std::vector<std::uint16_t>;

TEST(FormatJob, SanitizesByBlockEraseAndWaitsForTheEnd) {
    for (const char* type : {"Delete", "ATASanitize"}) {
        ScriptedDrive drive = sataDrive(BLOCK_ERASE, 0);
        drive.onAta(0xB4, 0x00, 0x00,
                    {{.returned = returned(0x8000)},
                     {.returned = returned(0x4000, 0x8000)},
                     {.returned = returned(0x8000)}});
        drive.onAta(0xB4, 0x12, 0x72, {{}});
        std::vector<milliseconds> pauses;
        const auto pause = [&](milliseconds time) { pauses.push_back(time); };
        EXPECT_EQ(run(drive, {{"Type", type}}, pause).output, SUCCESS);
        EXPECT_EQ(commands(drive), (Commands{0xB400, 0xB412, 0xB400, 0xB400}));
        EXPECT_EQ(pauses, (std::vector<milliseconds>{milliseconds(500)}));
        for (const SentAta& one : drive.sentAta()) {
            if (one.taskFile.feature != 0x12) continue;
            EXPECT_EQ(one.taskFile.lba, 0x426B4572U);
            EXPECT_EQ(one.taskFile.count, 0x10);
        }
    }
}

TEST(FormatJob, SanitizesByCryptoScrambleIfTold) {
    for (const char* value : {"True", "1"}) {
        ScriptedDrive drive = sataDrive(CRYPTO_SCRAMBLE, 0);
        drive.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0x8000)}});
        drive.onAta(0xB4, 0x11, 0x70, {{}});
        EXPECT_EQ(run(drive, {{"Type", "ATASanitize"}, {"CryptoErase", value}}).output, SUCCESS);
        EXPECT_EQ(commands(drive), (Commands{0xB400, 0xB411, 0xB400}));
    }
}

TEST(FormatJob, ChoosesNoSanitizeByAWordThatIsNeitherYesNorNo) {
    for (const char* value : {"yes", "", "2", "crypto"}) {
        ScriptedDrive drive = sataDrive(BLOCK_ERASE | CRYPTO_SCRAMBLE, SECURITY);
        expectCode(run(drive, {{"Type", "ATASanitize"}, {"CryptoErase", value}}), 24);
        EXPECT_TRUE(commands(drive).empty());
    }
}

TEST(FormatJob, NeedsTheSanitizeOperationOnTheDrive) {
    ScriptedDrive none = sataDrive(0x8000, SECURITY);
    ScriptedDrive blockErase = sataDrive(BLOCK_ERASE, SECURITY);
    ScriptedDrive scramble = sataDrive(CRYPTO_SCRAMBLE, SECURITY);
    expectCode(run(none, {{"Type", "ATASanitize"}}), 20);
    expectCode(run(scramble, {{"Type", "ATASanitize"}}), 22);
    expectCode(run(blockErase, {{"Type", "ATASanitize"}, {"CryptoErase", "true"}}), 21);
    EXPECT_TRUE(commands(none).empty());
    EXPECT_TRUE(commands(scramble).empty());
    EXPECT_TRUE(commands(blockErase).empty());
}

TEST(FormatJob, TellsThatSanitizeIsFrozen) {
    ScriptedDrive drive = sataDrive(BLOCK_ERASE, 0);
    drive.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0x2000)}});
    expectCode(run(drive, {{"Type", "ATASanitize"}}), 23);
    expectCode(run(drive, {{"Type", "Delete"}}), 23);
    drive.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0x0000)}});
    drive.onAta(0xB4, 0x12, 0x72, {{.returned = returned(0, 0x03, 0x51)}});
    expectCode(run(drive, {{"Type", "ATASanitize"}}), 23);
}

TEST(FormatJob, TellsThatSanitizeFailed) {
    ScriptedDrive drive = sataDrive(BLOCK_ERASE, 0);
    drive.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0)}});
    const Outcome refused = run(drive, {{"Type", "ATASanitize"}});
    expectCode(refused, 25);
    EXPECT_EQ(refused.status.getMessage(),
              "Sanitize command failed. Reason not reported or sanitize device command failed.");

    drive.onAta(0xB4, 0x12, 0x72, {{}});
    const Outcome incomplete = run(drive, {{"Type", "ATASanitize"}});
    expectCode(incomplete, 25);
    EXPECT_EQ(incomplete.status.getMessage(), "Sanitize command failed.");

    drive.onAta(0xB4, 0x00, 0x00,
                {{.returned = returned(0)}, {.returned = returned(0, 0x01, 0x51)}});
    const Outcome failed = run(drive, {{"Type", "ATASanitize"}});
    expectCode(failed, 25);
    EXPECT_EQ(failed.status.getMessage(),
              "Sanitize command failed. Sanitize command unsuccessful.");

    drive.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0x4000)}});
    milliseconds waited{0};
    expectCode(run(drive, {{"Type", "ATASanitize"}}, [&](milliseconds time) { waited += time; }),
               26);
    EXPECT_EQ(waited, std::chrono::hours(4));
}

TEST(FormatJob, ClearsTheFailureOfASanitizeOperationSoThatTheDriveTakesCommandsAgain) {
    const ReturnedTaskFile failures[] = {returned(0, 0x01, 0x51), returned(0)};
    for (const ReturnedTaskFile& failure : failures) {
        ScriptedDrive drive = sataDrive(BLOCK_ERASE, 0);
        drive.onAta(0xB4, 0x00, 0x00,
                    {{.returned = returned(0)}, {.returned = failure}, {.returned = returned(0)}});
        drive.onAta(0xB4, 0x12, 0x72, {{}});
        expectCode(run(drive, {{"Type", "ATASanitize"}}), 25);
        EXPECT_EQ(commands(drive), (Commands{0xB400, 0xB412, 0xB400, 0xB400}));
        EXPECT_EQ(drive.sentAta().end()[-2].taskFile.count, 0x00);
        EXPECT_EQ(drive.sentAta().back().taskFile.count, 0x01);
    }
}

void letErase(ScriptedDrive& drive) {
    for (const int command : {0xF1, 0xF3, 0xF4, 0xF6})
        drive.onAta(static_cast<std::uint8_t>(command), 0, 0, {{}});
}

/// Control word 0 or 2, then the password.
void expectPassword(const SentAta& sent, std::uint8_t control) {
    ASSERT_EQ(sent.input.size(), 512U);
    EXPECT_EQ(*sent.input[0], control);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(sent.input.data()) + 2, 6),
              std::string("tavik\0", 6));
}

TEST(FormatJob, ErasesByATASecurityWithAPasswordOfItsOwn) {
    for (const bool isEnhanced : {false, true}) {
        ScriptedDrive drive = sataDrive(BLOCK_ERASE, 0x21);
        letErase(drive);
        EXPECT_EQ(run(drive, {{"Type", "ATASecureErase"},
                              {"EnhancedErase", isEnhanced ? "true" : "false"}})
                      .output,
                  SUCCESS);
        EXPECT_EQ(commands(drive), (Commands{0xF100, 0xF300, 0xF400}));
        expectPassword(drive.sentAta()[1], 0);
        expectPassword(drive.sentAta()[3], isEnhanced ? 2 : 0);
    }
}

TEST(FormatJob, DeletesByATASecurityWhereSanitizeIsNoWay) {
    ScriptedDrive without = sataDrive(CRYPTO_SCRAMBLE, SECURITY);
    letErase(without);
    EXPECT_EQ(run(without, {{"Type", "Delete"}}).output, SUCCESS);
    EXPECT_EQ(commands(without), (Commands{0xF100, 0xF300, 0xF400}));

    ScriptedDrive frozen = sataDrive(BLOCK_ERASE, SECURITY);
    letErase(frozen);
    frozen.onAta(0xB4, 0x00, 0x00, {{.returned = returned(0x2000)}});
    EXPECT_EQ(run(frozen, {{"Type", "Delete"}}).output, SUCCESS);
    EXPECT_EQ(commands(frozen), (Commands{0xB400, 0xF100, 0xF300, 0xF400}));
}

/// A drive that has a password, and may be locked.
constexpr std::uint8_t ENABLED = 0x03;
constexpr std::uint8_t LOCKED = 0x07;

TEST(FormatJob, ErasesADriveThatHasThePasswordOfAnInterruptedErase) {
    for (const std::uint8_t security : {ENABLED, LOCKED}) {
        for (const char* type : {"Delete", "ATASecureErase"}) {
            ScriptedDrive drive = sataDrive(0, security);
            letErase(drive);
            EXPECT_EQ(run(drive, {{"Type", type}}).output, SUCCESS);
            EXPECT_EQ(commands(drive), (Commands{0xF300, 0xF400}));
            expectPassword(drive.sentAta().back(), 0);
        }
    }
}

TEST(FormatJob, DoesNotSanitizeALockedDriveWhichWouldRefuse) {
    ScriptedDrive drive = sataDrive(BLOCK_ERASE, LOCKED);
    letErase(drive);
    EXPECT_EQ(run(drive, {{"Type", "Delete"}}).output, SUCCESS);
    EXPECT_EQ(commands(drive), (Commands{0xF300, 0xF400}));
    const Outcome outcome = run(drive, {{"Type", "ATASanitize"}});
    expectCode(outcome, 25);
    EXPECT_EQ(outcome.status.getMessage(),
              "Sanitize command failed. The drive is security locked.");
}

TEST(FormatJob, LeavesADriveWithAnotherPasswordAsItIs) {
    constexpr const char* TRIED =
        " An erase with the password 'tavik', which an interrupted erase leaves behind, failed. "
        "If the drive has another password, disable security with that first.";
    ScriptedDrive drive = sataDrive(0, ENABLED);
    letErase(drive);
    drive.onAta(0xF4, 0, 0, {{.returned = returned(0, 0, 0x51)}});
    const Outcome enabled = run(drive, {{"Type", "Delete"}});
    expectCode(enabled, 9);
    EXPECT_EQ(enabled.status.getMessage(),
              "Secure Erase Unit command failed. Reboot and try again. If error persists, consider "
              "using a DOS-based tool for Secure Erase. The drive has a user password already." +
                  std::string(TRIED));
    EXPECT_EQ(commands(drive), (Commands{0xF300, 0xF400}));

    ScriptedDrive locked = sataDrive(BLOCK_ERASE, LOCKED);
    letErase(locked);
    locked.onAta(0xF3, 0, 0, {{.returned = returned(0, 0, 0x51)}});
    const Outcome unprepared = run(locked, {{"Type", "Delete"}});
    expectCode(unprepared, 8);
    EXPECT_EQ(unprepared.status.getMessage(),
              "Secure Erase Prepare command failed. Reboot your system and try again. If error "
              "persists, consider using a DOS-based tool for Secure Erase. The drive is security "
              "locked." +
                  std::string(TRIED));
    EXPECT_EQ(commands(locked), (Commands{0xF300}));
}

TEST(FormatJob, NeedsATASecurityThatIsNotFrozen) {
    struct Row {
        std::uint8_t security;
        const char* type;
        int code;
    };

    constexpr Row ROWS[] = {{0x00, "ATASecureErase", 14},
                            {0x00, "Delete", 14},
                            {FROZEN, "ATASecureErase", 7},
                            {FROZEN, "Delete", 7}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.type) + " " + std::to_string(row.security));
        ScriptedDrive drive = sataDrive(0, row.security);
        letErase(drive);
        expectCode(run(drive, {{"Type", row.type}}), row.code);
        EXPECT_TRUE(commands(drive).empty());
    }
}

TEST(FormatJob, DoesNotDeleteADriveWithSecurityFrozenEvenIfSanitizeCould) {
    ScriptedDrive drive = sataDrive(BLOCK_ERASE, FROZEN);
    drive->addPartition(core::Partition());
    expectCode(run(drive, {{"Type", "Delete"}, {"Force", "false"}}), 94);
    expectCode(run(drive, {{"Type", "Delete"}, {"Force", "true"}}), 7);
    EXPECT_TRUE(commands(drive).empty());
}

TEST(FormatJob, RefusesAnEnhancedEraseThatTheDriveLacks) {
    ScriptedDrive drive = sataDrive(0, SECURITY);
    const Outcome outcome = run(drive, {{"Type", "ATASecureErase"}, {"EnhancedErase", "true"}});
    expectCode(outcome, 36);
    EXPECT_EQ(outcome.status.getMessage(),
              "Invalid property specified. The drive has no enhanced erase mode.");
}

TEST(FormatJob, TakesThePasswordAwayIfTheEraseFails) {
    struct Row {
        std::uint8_t refused;
        int code;
        Commands sent;
    };

    const Row rows[] = {{0xF1, 10, {0xF100}},
                        {0xF3, 8, {0xF100, 0xF300, 0xF600}},
                        {0xF4, 9, {0xF100, 0xF300, 0xF400, 0xF600}}};
    for (const Row& row : rows) {
        ScriptedDrive drive = sataDrive(0, SECURITY);
        letErase(drive);
        drive.onAta(row.refused, 0, 0, {{.returned = returned(0, 0, 0x51)}});
        const Outcome outcome = run(drive, {{"Type", "ATASecureErase"}});
        expectCode(outcome, row.code);
        EXPECT_EQ(outcome.status.getMessage().find("tavik"), std::string::npos);
        EXPECT_EQ(commands(drive), row.sent);
        if (row.sent.back() == 0xF600) expectPassword(drive.sentAta().back(), 0);
    }
}

const core::Status IO_ERROR(1, 5, "Input/output error.");

TEST(FormatJob, TellsThePasswordThatItCannotTakeAway) {
    ScriptedDrive drive = sataDrive(0, SECURITY);
    letErase(drive);
    drive.onAta(0xEC, 0, 0,
                {{.data = identifyDevice(0, SECURITY)}, {.data = identifyDevice(0, 0x03)}});
    drive.onAta(0xF4, 0, 0, {{.returned = returned(0, 0, 0x51)}});
    drive.onAta(0xF6, 0, 0, {{.pathStatus = IO_ERROR}});
    const Outcome outcome = run(drive, {{"Type", "ATASecureErase"}});
    expectCode(outcome, 9);
    EXPECT_EQ(outcome.status.getMessage(),
              "Secure Erase Unit command failed. Reboot and try again. If error persists, consider "
              "using a DOS-based tool for Secure Erase. The drive has kept the user password "
              "'tavik', which was set for the erase.");
}

TEST(FormatJob, TellsThePathsStatusIfNoAnswerComesToAnEraseAndTakesThePasswordAway) {
    for (const int command : {0xF1, 0xF3, 0xF4}) {
        SCOPED_TRACE(command);
        ScriptedDrive drive = sataDrive(0, SECURITY);
        letErase(drive);
        drive.onAta(static_cast<std::uint8_t>(command), 0, 0, {{.pathStatus = IO_ERROR}});
        EXPECT_EQ(run(drive, {{"Type", "ATASecureErase"}}).status.toString(),
                  "Category: 1\nCode: 5\nMessage: Input/output error.");
        EXPECT_EQ(commands(drive).back(), 0xF600);
    }
}

TEST(FormatJob, TellsOfAPasswordThatTheDriveMayHaveTakenWithoutAnAnswer) {
    ScriptedDrive drive = sataDrive(0, SECURITY);
    drive.onAta(0xF1, 0, 0, {{.pathStatus = IO_ERROR}});
    EXPECT_EQ(run(drive, {{"Type", "ATASecureErase"}}).status.toString(),
              "Category: 1\nCode: 5\nMessage: Input/output error.")
        << "without a password the drive refuses to disable one";
    drive.onAta(0xEC, 0, 0, {{.data = identifyDevice(0, SECURITY)}, {.pathStatus = IO_ERROR}});
    EXPECT_EQ(run(drive, {{"Type", "ATASecureErase"}}).status.toString(),
              "Category: 1\nCode: 5\nMessage: Input/output error. The drive may have kept the user "
              "password 'tavik', which was set for the erase.");
}

TEST(FormatJob, MeetsNoDriveThatNobodyNamed) {
    ScriptedDrive first = nvmeDrive();
    ScriptedDrive second = nvmeDrive();
    const std::string start = R"(<Object name="Format" type="Method">)"
                              R"(<Property name="Type" value="Delete"/>)";
    FormatJob job;
    expectCode(runJob(job, start + "</Object>", {first.getDevice()}), 5);
    expectCode(
        runJob(job, start + ONE_DEVICE + "</Object>", {first.getDevice(), second.getDevice()}), 6);
    EXPECT_TRUE(first.sentNvme().empty());
    EXPECT_TRUE(second.sentNvme().empty());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
