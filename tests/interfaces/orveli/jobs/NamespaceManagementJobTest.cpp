#include "interfaces/orveli/jobs/NamespaceManagementJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

using core::Payload;
using Arguments = std::vector<std::pair<std::string, std::string>>;

constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t MANAGEMENT = 0x0D;
constexpr std::uint8_t ATTACHMENT = 0x15;
constexpr const char* SUCCESS =
    R"(<Object><Object key="SERIAL1" name="Namespace Management">)"
    R"(<Property name="Status" value="Completed successfully."/></Object></Object>)";

Outcome run(ScriptedDrive& drive, const Arguments& arguments) {
    std::string request = R"(<Object name="NamespaceManagement" type="Method">)";
    for (const auto& [name, value] : arguments)
        request.append(R"(<Property name=")")
            .append(name)
            .append(R"(" value=")")
            .append(value)
            .append(R"("/>)");
    const auto job = NamespaceManagementJob().clone();
    return runJob(*job, request + ONE_DEVICE + "</Object>", {drive.getDevice()});
}

Payload identifyController(std::uint8_t oacsBits = 0x08) {
    Payload data(4096);
    *data[78] = 0x05;  // CNTLID
    *data[79] = 0x01;
    *data[256] = oacsBits;
    return data;
}

/// What namespaces have in common: formats 0 without metadata, 1 with 8 bytes.
Payload commonNamespace(std::uint8_t mc = 0x03, std::uint8_t dpc = 0x11) {
    Payload data(4096);
    *data[25] = 1;
    *data[27] = mc;
    *data[28] = dpc;
    *data[132] = 8;
    return data;
}

ScriptedDrive nvmeDrive(const Payload& common = commonNamespace()) {
    ScriptedDrive drive("NVMe Admin");
    drive.onNvme(IDENTIFY, 0x01, {{.data = identifyController()}});
    drive.onNvme(IDENTIFY, 0x00, {{.data = common}});
    drive.onNvme(MANAGEMENT, 0x00, {{.dword0 = 4}});
    for (const std::uint8_t opcode : {MANAGEMENT, ATTACHMENT})
        drive.onNvme(opcode, 0x01, {{}});
    drive.onNvme(ATTACHMENT, 0x00, {{}});
    return drive;
}

TEST(NamespaceManagementJob, CreatesANamespaceAndTellsItsNumber) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, {{"Action", "Create"}, {"Size", "4660"}}).output,
              R"(<Object><Object key="SERIAL1" name="Namespace Management"><Property )"
              R"(category="attribute" displayName="NamespaceId" name="NamespaceId" size="4" )"
              R"(type="uint32" value="4"/></Object></Object>)");
    const SentNvme& sent = drive.sentNvme().back();
    EXPECT_EQ(sent.fields.opcode, 0x0D);
    EXPECT_EQ(sent.fields.nsid, 0U);
    EXPECT_EQ(sent.fields.cdw10, 0U);
    Payload expected(4096);
    *expected[0] = 0x34;
    *expected[1] = 0x12;
    *expected[8] = 0x34;
    *expected[9] = 0x12;
    *expected[30] = 1;  // shared
    EXPECT_EQ(sent.input, expected);
}

TEST(NamespaceManagementJob, CreatesANamespaceOfAnotherFormat) {
    struct Row {
        const char* shared;
        const char* protection;
        Payload common;
        std::uint8_t flbas;
        std::uint8_t dps;
    };

    const Row rows[] = {{"0", "0", commonNamespace(), 0x01, 0x00},
                        {"1", "1", commonNamespace(), 0x01, 0x01},
                        {"1", "1", commonNamespace(0x01, 0x09), 0x11, 0x09}};
    for (const Row& row : rows) {
        ScriptedDrive drive = nvmeDrive(row.common);
        EXPECT_EQ(run(drive, {{"Action", "create"},
                              {"Size", "1"},
                              {"LBAFormat", "1"},
                              {"ProtectionInformation", row.protection},
                              {"MultiPathIoCapabilities", row.shared}})
                      .status.getCode(),
                  0);
        const Payload& input = drive.sentNvme().back().input;
        EXPECT_EQ(*input[26], row.flbas);
        EXPECT_EQ(*input[29], row.dps);
        EXPECT_EQ(*input[30], row.shared[0] - '0');
        EXPECT_EQ(drive.sentNvme()[1].fields.nsid, 0xFFFFFFFFU);
    }
}

TEST(NamespaceManagementJob, DeletesANamespace) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, {{"Action", "DELETE"}, {"NamespaceId", "3"}}).output, SUCCESS);
    const SentNvme& sent = drive.sentNvme().back();
    EXPECT_EQ(sent.fields.opcode, 0x0D);
    EXPECT_EQ(sent.fields.nsid, 3U);
    EXPECT_EQ(sent.fields.cdw10, 1U);
}

TEST(NamespaceManagementJob, AttachesToAndDetachesFromAController) {
    struct Row {
        const char* action;
        Arguments controller;
        std::uint32_t select;
        std::uint8_t low;
        std::uint8_t high;
    };

    const Row rows[] = {{"attach", {}, 0, 0x05, 0x01},
                        {"attach", {{"NVMeControllerID", "1"}}, 0, 0x01, 0x00},
                        {"Detach", {}, 1, 0x05, 0x01},
                        {"detach", {{"NVMeControllerID", "65535"}}, 1, 0xFF, 0xFF}};
    for (const Row& row : rows) {
        ScriptedDrive drive = nvmeDrive();
        Arguments arguments = row.controller;
        arguments.emplace_back("Action", row.action);
        arguments.emplace_back("NamespaceId", "0x1F");
        EXPECT_EQ(run(drive, arguments).output, SUCCESS);
        const SentNvme& sent = drive.sentNvme().back();
        EXPECT_EQ(sent.fields.opcode, 0x15);
        EXPECT_EQ(sent.fields.nsid, 0x1FU);
        EXPECT_EQ(sent.fields.cdw10, row.select);
        Payload expected(4096);
        *expected[0] = 1;
        *expected[2] = row.low;
        *expected[3] = row.high;
        EXPECT_EQ(sent.input, expected);
    }
}

TEST(NamespaceManagementJob, RefusesWrongArgumentsBeforeAnythingIsDone) {
    struct Row {
        Arguments arguments;
        int code;
    };

    const Row rows[] = {
        {{}, 79},
        {{{"Action", "format"}}, 79},
        {{{"Action", "create"}}, 78},
        {{{"Action", "create"}, {"Size", ""}}, 78},
        {{{"Action", "create"}, {"Size", "0"}}, 36},
        {{{"Action", "create"}, {"Size", "1GB"}}, 36},
        {{{"Action", "create"}, {"Size", "18446744073709551616"}}, 36},
        {{{"Action", "create"}, {"Size", "1"}, {"LBAFormat", "2"}}, 81},
        {{{"Action", "create"}, {"Size", "1"}, {"LBAFormat", "16"}}, 81},
        {{{"Action", "create"}, {"Size", "1"}, {"LBAFormat", "x"}}, 81},
        {{{"Action", "create"}, {"Size", "1"}, {"ProtectionInformation", "1"}}, 29},
        {{{"Action", "create"}, {"Size", "1"}, {"ProtectionInformation", "4"}}, 29},
        {{{"Action", "create"}, {"Size", "1"}, {"LBAFormat", "1"}, {"ProtectionInformation", "2"}},
         29},
        {{{"Action", "create"}, {"Size", "1"}, {"MultiPathIoCapabilities", "2"}}, 36},
        {{{"Action", "delete"}}, 76},
        {{{"Action", "attach"}}, 76},
        {{{"Action", "detach"}}, 76},
        {{{"Action", "delete"}, {"NamespaceId", "attached"}}, 80},
        {{{"Action", "delete"}, {"NamespaceId", "0"}}, 80},
        {{{"Action", "attach"}, {"NamespaceId", "0xFFFFFFFF"}}, 80},
        {{{"Action", "attach"}, {"NamespaceId", "1"}, {"NVMeControllerID", ""}}, 77},
        {{{"Action", "detach"}, {"NamespaceId", "1"}, {"NVMeControllerID", "65536"}}, 88},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.empty()
                         ? "none"
                         : row.arguments.back().first + "=" + row.arguments.back().second);
        ScriptedDrive drive = nvmeDrive();
        const Outcome outcome = run(drive, row.arguments);
        EXPECT_EQ(outcome.status.getCategory(), 10);
        EXPECT_EQ(outcome.status.getCode(), row.code);
        EXPECT_EQ(outcome.output, "");
        for (const SentNvme& sent : drive.sentNvme())
            EXPECT_EQ(sent.fields.opcode, IDENTIFY);
    }
}

TEST(NamespaceManagementJob, SaysWhatIsWrongWithANumber) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(run(drive, {{"Action", "create"}, {"Size", "0"}}).status.getMessage(),
              "Invalid property specified. Size must be a number of blocks from 1 on.");
    EXPECT_EQ(run(drive, {{"Action", "create"}, {"Size", "1"}, {"MultiPathIoCapabilities", "a"}})
                  .status.getMessage(),
              "Invalid property specified. MultiPathIoCapabilities must be 0 or 1.");
}

TEST(NamespaceManagementJob, TellsWhatTheDriveRefusesByARowOfItsOwn) {
    struct Row {
        const char* action;
        protocols::nvme::StatusCode drive;
        int category;
        int code;
    };

    constexpr Row ROWS[] = {
        {"create", {1, 0x15}, 10, 82}, {"create", {1, 0x16}, 10, 83}, {"create", {1, 0x1B}, 10, 84},
        {"create", {1, 0x0A}, 10, 81}, {"create", {0, 0x02}, 0, 25},  {"delete", {0, 0x0B}, 10, 80},
        {"delete", {0, 0x02}, 10, 80}, {"attach", {0, 0x02}, 10, 80}, {"attach", {1, 0x18}, 10, 85},
        {"attach", {1, 0x19}, 10, 86}, {"detach", {1, 0x1A}, 10, 87}, {"attach", {1, 0x1C}, 10, 88},
        {"delete", {0, 0x06}, 0, 25},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::to_string(row.drive.type) + "/" + std::to_string(row.drive.code));
        ScriptedDrive drive = nvmeDrive();
        for (const std::uint8_t select : {std::uint8_t{0}, std::uint8_t{1}}) {
            drive.onNvme(MANAGEMENT, select, {{.nvmeStatus = row.drive}});
            drive.onNvme(ATTACHMENT, select, {{.nvmeStatus = row.drive}});
        }
        const Outcome outcome =
            run(drive, {{"Action", row.action}, {"Size", "1"}, {"NamespaceId", "1"}});
        EXPECT_EQ(outcome.status.getCategory(), row.category);
        EXPECT_EQ(outcome.status.getCode(), row.code);
        EXPECT_EQ(outcome.output, "");
    }
}

TEST(NamespaceManagementJob, PassesOnTheWordsForWhichThereIsNoRow) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(MANAGEMENT, 0x01, {{.nvmeStatus = {0, 0x06}}});
    EXPECT_EQ(run(drive, {{"Action", "delete"}, {"NamespaceId", "1"}}).status.getMessage(),
              "NVMe command reported a problem. Namespace Management: Internal Error.");
}

TEST(NamespaceManagementJob, NeedsADriveWithTheFeatureThatIsNotInAVolume) {
    ScriptedDrive without = nvmeDrive();
    without.onNvme(IDENTIFY, 0x01, {{.data = identifyController(0xF7)}});
    EXPECT_EQ(run(without, {{"Action", "create"}, {"Size", "1"}}).status.getCode(), 3);

    ScriptedDrive sata("ATA");
    EXPECT_EQ(run(sata, {{"Action", "create"}, {"Size", "1"}}).status.getCode(), 3);

    ScriptedDrive member = nvmeDrive();
    core::Attribute attribute = features::device_attributes::RAIDMember();
    attribute.setValue(true);
    member->setAttribute(attribute);
    EXPECT_EQ(run(member, {{"Action", "delete"}, {"NamespaceId", "1"}}).status.getCode(), 12);
    EXPECT_TRUE(member.sentNvme().empty());
}

TEST(NamespaceManagementJob, MeetsNoDriveThatNobodyNamed) {
    ScriptedDrive first = nvmeDrive();
    ScriptedDrive second = nvmeDrive();
    const std::string start = R"(<Object name="NamespaceManagement" type="Method">)"
                              R"(<Property name="Action" value="Delete"/>)"
                              R"(<Property name="NamespaceId" value="1"/>)";
    NamespaceManagementJob job;
    EXPECT_EQ(runJob(job, start + "</Object>", {first.getDevice()}).status.getCode(), 5);
    EXPECT_EQ(runJob(job, start + ONE_DEVICE + "</Object>", {first.getDevice(), second.getDevice()})
                  .status.getCode(),
              6);
    EXPECT_TRUE(first.sentNvme().empty());
    EXPECT_TRUE(second.sentNvme().empty());
}

TEST(NamespaceManagementJob, RefusesARaidMemberWhateverTheAction) {
    for (const char* action : {"Create", "Delete", "Attach", "Detach"}) {
        SCOPED_TRACE(action);
        ScriptedDrive drive = nvmeDrive();
        core::Attribute member = orvel::features::device_attributes::RAIDMember();
        member.setValue(true);
        drive->setAttribute(member);
        EXPECT_EQ(run(drive, {{"Action", action}, {"NamespaceId", "1"}, {"Size", "4096"}})
                      .status.getCode(),
                  12);
        EXPECT_TRUE(drive.sentNvme().empty());
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
