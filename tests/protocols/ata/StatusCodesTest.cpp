// The words of every code.
#include "protocols/ata/StatusCodes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>

namespace orvel::protocols::ata {
namespace {

constexpr StatusType TYPES[] = {
    StatusType::OFFLINE_COLLECTION, StatusType::SELF_TEST,  StatusType::SCT_EXTENDED,
    StatusType::SCT_DEVICE_STATE,   StatusType::POWER_MODE, StatusType::SANITIZE_ERROR,
};

struct Row {
    StatusType type;
    std::uint16_t code;
    const char* text;
};

// clang-format off
constexpr Row ROWS[] = {
    {StatusType::OFFLINE_COLLECTION,  0x0000, "Off-line data collection activity was never started."},
    {StatusType::OFFLINE_COLLECTION,  0x0002, "Off-line data collection activity was completed without error."},
    {StatusType::OFFLINE_COLLECTION,  0x0003, "Off-line data collection activity is in progress."},
    {StatusType::OFFLINE_COLLECTION,  0x0004, "Off-line data collection activity was suspended by an interrupting command from the host."},
    {StatusType::OFFLINE_COLLECTION,  0x0005, "Off-line data collection activity was aborted by an interrupting command from the host."},
    {StatusType::OFFLINE_COLLECTION,  0x0006, "Off-line data collection activity was aborted by the device with a fatal error."},
    {StatusType::SELF_TEST,           0x0000, "The self-test routine completed without error or no self-test has ever been run."},
    {StatusType::SELF_TEST,           0x0001, "The self-test routine was aborted by the host."},
    {StatusType::SELF_TEST,           0x0002, "The self-test routine was interrupted by the host with a hardware or software reset."},
    {StatusType::SELF_TEST,           0x0003, "A fatal error or unknown test error occurred while the device was executing its self-test routine and the device was unable to complete the self-test routine."},
    {StatusType::SELF_TEST,           0x0004, "The previous self-test completed having a test element that failed and the test element that failed is not known."},
    {StatusType::SELF_TEST,           0x0005, "The previous self-test completed having the electrical element of the test failed."},
    {StatusType::SELF_TEST,           0x0006, "The previous self-test completed having the servo and/or seek test element of the test failed."},
    {StatusType::SELF_TEST,           0x0007, "The previous self-test completed having the read element of the test failed."},
    {StatusType::SELF_TEST,           0x0008, "The previous self-test completed having a test element that failed and the device is suspected of having handling damage."},
    {StatusType::SELF_TEST,           0x000F, "Self-test routine in progress."},
    {StatusType::SCT_EXTENDED,        0x0000, "Command complete without error."},
    {StatusType::SCT_EXTENDED,        0x0001, "Invalid function code."},
    {StatusType::SCT_EXTENDED,        0x0002, "Input LBA out of range."},
    {StatusType::SCT_EXTENDED,        0x0003, "Request 512-byte data block count overflow."},
    {StatusType::SCT_EXTENDED,        0x0004, "Invalid function code in the SCT Error Recovery command."},
    {StatusType::SCT_EXTENDED,        0x0005, "Invalid selection code in the SCT Error Recovery command."},
    {StatusType::SCT_EXTENDED,        0x0006, "Host read command timer is less than the minimum value."},
    {StatusType::SCT_EXTENDED,        0x0007, "Host write command timer is less than the minimum value."},
    {StatusType::SCT_EXTENDED,        0x0008, "Background SCT operation was aborted because of an interrupting host command."},
    {StatusType::SCT_EXTENDED,        0x0009, "Background SCT operation was terminated because of an unrecoverable error."},
    {StatusType::SCT_EXTENDED,        0x000A, "Invalid function code in the SCT Read/Write Long command."},
    {StatusType::SCT_EXTENDED,        0x000B, "SCT data transfer command was issued without first issuing an SCT command."},
    {StatusType::SCT_EXTENDED,        0x000C, "Invalid function code in the SCT Feature Control command."},
    {StatusType::SCT_EXTENDED,        0x000D, "Invalid feature code in the SCT Feature Control command."},
    {StatusType::SCT_EXTENDED,        0x000E, "Invalid state value in the SCT Feature Control command."},
    {StatusType::SCT_EXTENDED,        0x000F, "Invalid option flags value in the SCT Feature Control command."},
    {StatusType::SCT_EXTENDED,        0x0010, "Invalid SCT action code."},
    {StatusType::SCT_EXTENDED,        0x0011, "Invalid table ID (table not supported)."},
    {StatusType::SCT_EXTENDED,        0x0012, "Operation was terminated due to device security being locked."},
    {StatusType::SCT_EXTENDED,        0x0013, "Invalid revision code in the SCT data."},
    {StatusType::SCT_EXTENDED,        0x0014, "Foreground SCT operation was terminated because of an unrecoverable error."},
    {StatusType::SCT_EXTENDED,        0x0015, "The most recent non-SCT command completed with an error due to the SCT Error Recovery Control read or write command timer expiring."},
    {StatusType::SCT_EXTENDED,        0xFFFF, "SCT command executing in background."},
    {StatusType::SCT_DEVICE_STATE,    0x0000, "Active waiting for a command."},
    {StatusType::SCT_DEVICE_STATE,    0x0001, "Stand-by."},
    {StatusType::SCT_DEVICE_STATE,    0x0002, "Sleep."},
    {StatusType::SCT_DEVICE_STATE,    0x0003, "DST executing in background."},
    {StatusType::SCT_DEVICE_STATE,    0x0004, "SMART off-line data collection executing in background."},
    {StatusType::SCT_DEVICE_STATE,    0x0005, "SCT command executing in background."},
    {StatusType::POWER_MODE,          0x0000, "Standby mode."},
    {StatusType::POWER_MODE,          0x0001, "Standby mode, Standby_y power condition."},
    {StatusType::POWER_MODE,          0x0080, "Idle mode."},
    {StatusType::POWER_MODE,          0x0081, "Idle mode, Idle_a power condition."},
    {StatusType::POWER_MODE,          0x0082, "Idle mode, Idle_b power condition."},
    {StatusType::POWER_MODE,          0x0083, "Idle mode, Idle_c power condition."},
    {StatusType::POWER_MODE,          0x00FF, "Active mode or Idle mode."},
    {StatusType::SANITIZE_ERROR,      0x0000, "Reason not reported or sanitize device command failed."},
    {StatusType::SANITIZE_ERROR,      0x0001, "Sanitize command unsuccessful."},
    {StatusType::SANITIZE_ERROR,      0x0002, "Invalid or unsupported value in the Sanitize Device FEATURE field."},
    {StatusType::SANITIZE_ERROR,      0x0003, "Device is in the Sanitize Frozen state."},
    {StatusType::SANITIZE_ERROR,      0x0004, "SANITIZE FREEZE LOCK is disabled by the SANITIZE ANTIFREEZE LOCK state."},
};

// clang-format on

TEST(StatusCodes, HaveTheStandardsWords) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.text);
        EXPECT_STREQ(statusText(row.type, row.code), row.text);
    }
}

TEST(StatusCodes, AreNoMoreThanTheRows) {
    std::size_t known = 0;
    for (const StatusType type : TYPES)
        for (unsigned code = 0; code <= 0xFFFF; ++code)
            if (statusText(type, static_cast<std::uint16_t>(code)) !=
                std::string("Unknown status code"))
                ++known;
    // Those of the off-line data collection count again with bit 7.
    EXPECT_EQ(known, std::size(ROWS) + 6);
}

TEST(StatusCodes, LeaveTheVendorsBitOfOfflineCollectionOut) {
    EXPECT_STREQ(statusText(StatusType::OFFLINE_COLLECTION, 0x82),
                 "Off-line data collection activity was completed without error.");
    EXPECT_STREQ(statusText(StatusType::POWER_MODE, 0x7F), "Unknown status code");
}

}  // namespace
}  // namespace orvel::protocols::ata
