// Admin commands as values: names, copies and printed forms.
#include "protocols/nvme/AdminCommand.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <string>

namespace orvel::protocols::nvme {
namespace {

struct OpcodeRow {
    unsigned code;
    std::uint8_t constant;
    const char* name;
};

// clang-format off
constexpr OpcodeRow OPCODES[] = {
    {0x00, opcodes::DELETE_IO_SUBMISSION_QUEUE, "Delete I/O Submission Queue"},
    {0x01, opcodes::CREATE_IO_SUBMISSION_QUEUE, "Create I/O Submission Queue"},
    {0x02, opcodes::GET_LOG_PAGE,               "Get Log Page"},
    {0x04, opcodes::DELETE_IO_COMPLETION_QUEUE, "Delete I/O Completion Queue"},
    {0x05, opcodes::CREATE_IO_COMPLETION_QUEUE, "Create I/O Completion Queue"},
    {0x06, opcodes::IDENTIFY,                   "Identify"},
    {0x08, opcodes::ABORT,                      "Abort"},
    {0x09, opcodes::SET_FEATURES,               "Set Features"},
    {0x0A, opcodes::GET_FEATURES,               "Get Features"},
    {0x0C, opcodes::ASYNCHRONOUS_EVENT_REQUEST, "Asynchronous Event Request"},
    {0x0D, opcodes::NAMESPACE_MANAGEMENT,       "Namespace Management"},
    {0x10, opcodes::FIRMWARE_COMMIT,            "Firmware Commit"},
    {0x11, opcodes::FIRMWARE_IMAGE_DOWNLOAD,    "Firmware Image Download"},
    {0x14, opcodes::DEVICE_SELF_TEST,           "Device Self-test"},
    {0x15, opcodes::NAMESPACE_ATTACHMENT,       "Namespace Attachment"},
    {0x18, opcodes::KEEP_ALIVE,                 "Keep Alive"},
    {0x19, opcodes::DIRECTIVE_SEND,             "Directive Send"},
    {0x1A, opcodes::DIRECTIVE_RECEIVE,          "Directive Receive"},
    {0x1C, opcodes::VIRTUALIZATION_MANAGEMENT,  "Virtualization Management"},
    {0x1D, opcodes::NVME_MI_SEND,               "NVMe-MI Send"},
    {0x1E, opcodes::NVME_MI_RECEIVE,            "NVMe-MI Receive"},
    {0x7C, opcodes::DOORBELL_BUFFER_CONFIG,     "Doorbell Buffer Config"},
    {0x7F, opcodes::NVME_OVER_FABRICS,          "NVMe over Fabrics"},
    {0x80, opcodes::FORMAT_NVM,                 "Format NVM"},
    {0x81, opcodes::SECURITY_SEND,              "Security Send"},
    {0x82, opcodes::SECURITY_RECEIVE,           "Security Receive"},
    {0x84, opcodes::SANITIZE,                   "Sanitize"},
    {0x86, opcodes::GET_LBA_STATUS,             "Get LBA Status"},
};
// clang-format on

constexpr AdminCommandFields SAMPLE{.opcode = 0x06,
                                    .nsid = 0x89ABCDEF,
                                    .cdw10 = 10,
                                    .cdw11 = 0x11111111,
                                    .cdw12 = 0x12,
                                    .cdw13 = 0x13,
                                    .cdw14 = 0x14,
                                    .cdw15 = 0xF5,
                                    .dataDirection = DataDirection::FROM_DRIVE,
                                    .transferLength = 4096};

TEST(AdminCommand, HasTheStandardsNameForEachOpcode) {
    std::map<unsigned, std::string> names;
    for (const OpcodeRow& row : OPCODES) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.constant, row.code);
        names[row.code] = row.name;
    }
    for (unsigned code = 0; code <= 0xFF; ++code) {
        SCOPED_TRACE(code);
        const std::string other = code < 0xC0 ? "Reserved" : "Vendor Specific";
        const std::string expected = names.contains(code) ? names[code] : other;
        EXPECT_EQ(opcodeName(static_cast<std::uint8_t>(code)), expected);
    }
}

TEST(AdminCommand, HasNoOpcodesBesidesThese) {
    constexpr const char* ALL[] = {
#define OPCODE(code, name, words) words,
#include "protocols/nvme/Opcodes.def"
    };
    EXPECT_EQ(std::size(ALL), std::size(OPCODES));
}

TEST(AdminCommand, IsRoutedByItsSetAndNamedAfterItsOpcode) {
    const AdminCommand command(SAMPLE);
    EXPECT_EQ(command.getCommandSetName(), "NVMe Admin");
    EXPECT_EQ(command.getName(), "Identify");
    EXPECT_EQ(command.getFields(), SAMPLE);
    EXPECT_EQ(AdminCommand({.opcode = 0xC0}).getName(), "Vendor Specific");
}

TEST(AdminCommand, IsAllZeroesWhereNothingIsTold) {
    const AdminCommandFields fields{.opcode = 0x18};
    EXPECT_EQ(fields.nsid | fields.cdw10 | fields.cdw11 | fields.cdw12, 0U);
    EXPECT_EQ(fields.cdw13 | fields.cdw14 | fields.cdw15 | fields.transferLength, 0U);
    EXPECT_EQ(fields.dataDirection, DataDirection::NONE);
}

TEST(AdminCommand, ShowsItselfAsLines) {
    EXPECT_EQ(AdminCommand(SAMPLE).toString(), "CommandSet: NVMe Admin\n"
                                               "Command: Identify\n"
                                               "Opcode: 0x06\n"
                                               "NSID: 0x89ABCDEF\n"
                                               "CDW10: 0x0000000A\n"
                                               "CDW11: 0x11111111\n"
                                               "CDW12: 0x00000012\n"
                                               "CDW13: 0x00000013\n"
                                               "CDW14: 0x00000014\n"
                                               "CDW15: 0x000000F5\n"
                                               "DataDirection: From Drive\n"
                                               "TransferLength: 4096");
}

TEST(AdminCommand, ShowsEachDirection) {
    const auto lastLines = [](DataDirection direction) {
        const std::string text =
            AdminCommand({.opcode = 0x81, .dataDirection = direction}).toString();
        return text.substr(text.find("DataDirection"));
    };
    EXPECT_EQ(lastLines(DataDirection::NONE), "DataDirection: None\nTransferLength: 0");
    EXPECT_EQ(lastLines(DataDirection::FROM_DRIVE), "DataDirection: From Drive\nTransferLength: 0");
    EXPECT_EQ(lastLines(DataDirection::TO_DRIVE), "DataDirection: To Drive\nTransferLength: 0");
}

TEST(AdminCommand, ShowsItselfAsAnElement) {
    std::string text;
    AdminCommand(SAMPLE).toXml()->toXml(text);
    EXPECT_EQ(text, "<Object category=\"command\">"
                    "<Property name=\"CommandSet\" value=\"NVMe Admin\"/>"
                    "<Property name=\"Command\" value=\"Identify\"/>"
                    "<Property name=\"Opcode\" value=\"0x06\"/>"
                    "<Property name=\"NSID\" value=\"0x89ABCDEF\"/>"
                    "<Property name=\"CDW10\" value=\"0x0000000A\"/>"
                    "<Property name=\"CDW11\" value=\"0x11111111\"/>"
                    "<Property name=\"CDW12\" value=\"0x00000012\"/>"
                    "<Property name=\"CDW13\" value=\"0x00000013\"/>"
                    "<Property name=\"CDW14\" value=\"0x00000014\"/>"
                    "<Property name=\"CDW15\" value=\"0x000000F5\"/>"
                    "<Property name=\"DataDirection\" value=\"From Drive\"/>"
                    "<Property name=\"TransferLength\" value=\"4096\"/>"
                    "</Object>");
}

TEST(AdminCommand, IsClonedWithItsFieldsAndItsRecord) {
    AdminCommand command(SAMPLE);
    command.getCompletionRecord().userWord1 = 77;
    const std::unique_ptr<core::Command> clone = command.clone();
    const auto* copy = dynamic_cast<const AdminCommand*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, &command);
    EXPECT_EQ(copy->getFields(), SAMPLE);
    EXPECT_EQ(copy->getName(), "Identify");
    EXPECT_EQ(copy->getCompletionRecord().userWord1, 77U);
}

}  // namespace
}  // namespace orvel::protocols::nvme
