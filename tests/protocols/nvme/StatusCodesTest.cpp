// Status codes against a second list of the standard's values.
#include "protocols/nvme/StatusCodes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace orvel::protocols::nvme {
namespace {

struct Row {
    unsigned type;
    unsigned code;
    const char* words;
};

// clang-format off
constexpr Row ROWS[] = {
    {0, 0x00, "Successful Completion"},
    {0, 0x01, "Invalid Command Opcode"},
    {0, 0x02, "Invalid Field in Command"},
    {0, 0x03, "Command ID Conflict"},
    {0, 0x04, "Data Transfer Error"},
    {0, 0x05, "Commands Aborted due to Power Loss Notification"},
    {0, 0x06, "Internal Error"},
    {0, 0x07, "Command Abort Requested"},
    {0, 0x08, "Command Aborted due to SQ Deletion"},
    {0, 0x09, "Command Aborted due to Failed Fused Command"},
    {0, 0x0A, "Command Aborted due to Missing Fused Command"},
    {0, 0x0B, "Invalid Namespace or Format"},
    {0, 0x0C, "Command Sequence Error"},
    {0, 0x0D, "Invalid SGL Segment Descriptor"},
    {0, 0x0E, "Invalid Number of SGL Descriptors"},
    {0, 0x0F, "Data SGL Length Invalid"},
    {0, 0x10, "Metadata SGL Length Invalid"},
    {0, 0x11, "SGL Descriptor Type Invalid"},
    {0, 0x12, "Invalid Use of Controller Memory Buffer"},
    {0, 0x13, "PRP Offset Invalid"},
    {0, 0x14, "Atomic Write Unit Exceeded"},
    {0, 0x15, "Operation Denied"},
    {0, 0x16, "SGL Offset Invalid"},
    {0, 0x18, "Host Identifier Inconsistent Format"},
    {0, 0x19, "Keep Alive Timer Expired"},
    {0, 0x1A, "Keep Alive Timeout Invalid"},
    {0, 0x1B, "Command Aborted due to Preempt and Abort"},
    {0, 0x1C, "Sanitize Failed"},
    {0, 0x1D, "Sanitize In Progress"},
    {0, 0x1E, "SGL Data Block Granularity Invalid"},
    {0, 0x1F, "Command Not Supported for Queue in CMB"},
    {0, 0x20, "Namespace is Write Protected"},
    {0, 0x21, "Command Interrupted"},
    {0, 0x22, "Transient Transport Error"},
    {0, 0x80, "LBA Out of Range"},
    {0, 0x81, "Capacity Exceeded"},
    {0, 0x82, "Namespace Not Ready"},
    {0, 0x83, "Reservation Conflict"},
    {0, 0x84, "Format In Progress"},
    {1, 0x00, "Completion Queue Invalid"},
    {1, 0x01, "Invalid Queue Identifier"},
    {1, 0x02, "Invalid Queue Size"},
    {1, 0x03, "Abort Command Limit Exceeded"},
    {1, 0x05, "Asynchronous Event Request Limit Exceeded"},
    {1, 0x06, "Invalid Firmware Slot"},
    {1, 0x07, "Invalid Firmware Image"},
    {1, 0x08, "Invalid Interrupt Vector"},
    {1, 0x09, "Invalid Log Page"},
    {1, 0x0A, "Invalid Format"},
    {1, 0x0B, "Firmware Activation Requires Conventional Reset"},
    {1, 0x0C, "Invalid Queue Deletion"},
    {1, 0x0D, "Feature Identifier Not Saveable"},
    {1, 0x0E, "Feature Not Changeable"},
    {1, 0x0F, "Feature Not Namespace Specific"},
    {1, 0x10, "Firmware Activation Requires NVM Subsystem Reset"},
    {1, 0x11, "Firmware Activation Requires Controller Level Reset"},
    {1, 0x12, "Firmware Activation Requires Maximum Time Violation"},
    {1, 0x13, "Firmware Activation Prohibited"},
    {1, 0x14, "Overlapping Range"},
    {1, 0x15, "Namespace Insufficient Capacity"},
    {1, 0x16, "Namespace Identifier Unavailable"},
    {1, 0x18, "Namespace Already Attached"},
    {1, 0x19, "Namespace Is Private"},
    {1, 0x1A, "Namespace Not Attached"},
    {1, 0x1B, "Thin Provisioning Not Supported"},
    {1, 0x1C, "Controller List Invalid"},
    {1, 0x1D, "Device Self-test In Progress"},
    {1, 0x1E, "Boot Partition Write Prohibited"},
    {1, 0x1F, "Invalid Controller Identifier"},
    {1, 0x20, "Invalid Secondary Controller State"},
    {1, 0x21, "Invalid Number of Controller Resources"},
    {1, 0x22, "Invalid Resource Identifier"},
    {1, 0x23, "Sanitize Prohibited While Persistent Memory Region is Enabled"},
    {1, 0x24, "ANA Group Identifier Invalid"},
    {1, 0x25, "ANA Attach Failed"},
    {1, 0x7F, "Stream Resource Allocation Failed"},
    {1, 0x80, "Conflicting Attributes"},
    {1, 0x81, "Invalid Protection Information"},
    {1, 0x82, "Attempted Write to Read Only Range"},
    {2, 0x80, "Write Fault"},
    {2, 0x81, "Unrecovered Read Error"},
    {2, 0x82, "End-to-end Guard Check Error"},
    {2, 0x83, "End-to-end Application Tag Check Error"},
    {2, 0x84, "End-to-end Reference Tag Check Error"},
    {2, 0x85, "Compare Failure"},
    {2, 0x86, "Access Denied"},
    {2, 0x87, "Deallocated or Unwritten Logical Block"},
    {3, 0x00, "Internal Path Error"},
    {3, 0x01, "Asymmetric Access Persistent Loss"},
    {3, 0x02, "Asymmetric Access Inaccessible"},
    {3, 0x03, "Asymmetric Access Transition"},
    {3, 0x60, "Controller Pathing Error"},
    {3, 0x70, "Host Pathing Error"},
    {3, 0x71, "Command Aborted By Host"},
};

// clang-format on

TEST(StatusCodes, HaveTheStandardsWordsForEachTypeAndCode) {
    std::map<std::pair<unsigned, unsigned>, std::string> texts;
    for (const Row& row : ROWS)
        texts[{row.type, row.code}] = row.words;
    for (unsigned type = 0; type <= 0xFF; ++type) {
        for (unsigned code = 0; code <= 0xFF; ++code) {
            const auto found = texts.find({type, code});
            const std::string expected =
                found == texts.end() ? "Unknown status code" : found->second;
            ASSERT_EQ(statusText({.type = static_cast<std::uint8_t>(type),
                                  .code = static_cast<std::uint8_t>(code)}),
                      expected)
                << type << ", " << code;
        }
    }
}

TEST(StatusCodes, HaveAConstantForEachRow) {
    constexpr StatusCode CONSTANTS[] = {
#define STATUS(type, code, name, words) status_codes::name,
#include "protocols/nvme/StatusCodes.def"
    };
    ASSERT_EQ(std::size(CONSTANTS), std::size(ROWS));
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(ROWS[i].words);
        EXPECT_EQ(CONSTANTS[i].type, ROWS[i].type);
        EXPECT_EQ(CONSTANTS[i].code, ROWS[i].code);
    }
}

TEST(StatusCodes, OfEachKindThatCallersNameAreTheStandards) {
    EXPECT_EQ(status_codes::SUCCESSFUL_COMPLETION, (StatusCode{0, 0x00}));
    EXPECT_EQ(status_codes::SUCCESSFUL_COMPLETION, StatusCode());
    EXPECT_EQ(status_codes::INVALID_FIELD_IN_COMMAND, (StatusCode{0, 0x02}));
    EXPECT_EQ(status_codes::INVALID_NAMESPACE_OR_FORMAT, (StatusCode{0, 0x0B}));
    EXPECT_EQ(status_codes::INVALID_LOG_PAGE, (StatusCode{1, 0x09}));
    EXPECT_EQ(status_codes::FIRMWARE_REQUIRES_CONVENTIONAL_RESET, (StatusCode{1, 0x0B}));
    EXPECT_EQ(status_codes::FIRMWARE_REQUIRES_NVM_SUBSYSTEM_RESET, (StatusCode{1, 0x10}));
    EXPECT_EQ(status_codes::FIRMWARE_REQUIRES_CONTROLLER_LEVEL_RESET, (StatusCode{1, 0x11}));
    EXPECT_EQ(status_codes::ACCESS_DENIED, (StatusCode{2, 0x86}));
    EXPECT_EQ(status_code_types::VENDOR_SPECIFIC, 7U);
}

}  // namespace
}  // namespace orvel::protocols::nvme
