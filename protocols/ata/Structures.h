// The structures of the ATA standards: a namespace for each, with its fields by name, all of them
// in order, its size in bytes, and where its repeated parts lie. The rows stand in tables/.
#pragma once

#include "protocols/Entries.h"
#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// The standard counts some structures in words of two bytes.
inline constexpr std::uint32_t WORD = 2;

/// IDENTIFY DEVICE data.
namespace identify_device {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/IdentifyDevice.def"
#include "protocols/FieldTable.def"
}  // namespace identify_device

/// Page 00h of the IDENTIFY DEVICE data log: the list of its pages.
namespace identify_device_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/IdentifyDeviceLog.def"
#include "protocols/FieldTable.def"
/// Of which NumberOfEntries count.
inline constexpr Entries PAGE_NUMBERS{9, 1, 503};
}  // namespace identify_device_log

namespace smart_data {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SmartData.def"
#include "protocols/FieldTable.def"
inline constexpr Entries ATTRIBUTES{2, 12, 30};
}  // namespace smart_data

/// An entry of `smart_data::ATTRIBUTES`.
namespace smart_attribute {
inline constexpr std::uint32_t SIZE = 12;
#define FIELD_TABLE "protocols/ata/tables/SmartAttribute.def"
#include "protocols/FieldTable.def"
}  // namespace smart_attribute

namespace smart_thresholds {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SmartThresholds.def"
#include "protocols/FieldTable.def"
inline constexpr Entries THRESHOLDS{2, 12, 30};
}  // namespace smart_thresholds

/// An entry of `smart_thresholds::THRESHOLDS`.
namespace smart_threshold {
inline constexpr std::uint32_t SIZE = 12;
#define FIELD_TABLE "protocols/ata/tables/SmartThreshold.def"
#include "protocols/FieldTable.def"
}  // namespace smart_threshold

/// The log directory, by whichever command.
namespace log_directory {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/LogDirectory.def"
#include "protocols/FieldTable.def"
/// The first is that of log address 1.
inline constexpr Entries ADDRESSES{2, 2, 255};
}  // namespace log_directory

/// An entry of `log_directory::ADDRESSES`, by SMART READ LOG.
namespace smart_log_directory_entry {
inline constexpr std::uint32_t SIZE = 2;
#define FIELD_TABLE "protocols/ata/tables/SmartLogDirectoryEntry.def"
#include "protocols/FieldTable.def"
}  // namespace smart_log_directory_entry

/// An entry of `log_directory::ADDRESSES`, by READ LOG EXT.
namespace general_purpose_log_directory_entry {
inline constexpr std::uint32_t SIZE = 2;
#define FIELD_TABLE "protocols/ata/tables/GeneralPurposeLogDirectoryEntry.def"
#include "protocols/FieldTable.def"
}  // namespace general_purpose_log_directory_entry

/// Summary and Comprehensive SMART Error log: one page.
namespace error_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/ErrorLog.def"
#include "protocols/FieldTable.def"
inline constexpr Entries ERRORS{2, 90, 5};
/// Within one of `ERRORS`, the oldest first.
inline constexpr Entries COMMANDS{0, 12, 5};
/// Within one of `ERRORS`.
inline constexpr Entries ERROR{60, 30, 1};
}  // namespace error_log

/// An entry of `error_log::COMMANDS`.
namespace error_log_command {
inline constexpr std::uint32_t SIZE = 12;
#define FIELD_TABLE "protocols/ata/tables/ErrorLogCommand.def"
#include "protocols/FieldTable.def"
}  // namespace error_log_command

/// The entry of `error_log::ERROR`.
namespace error_log_error {
inline constexpr std::uint32_t SIZE = 30;
#define FIELD_TABLE "protocols/ata/tables/ErrorLogError.def"
#include "protocols/FieldTable.def"
}  // namespace error_log_error

/// Extended Comprehensive SMART Error log: one page.
namespace extended_error_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/ExtendedErrorLog.def"
#include "protocols/FieldTable.def"
inline constexpr Entries ERRORS{4, 124, 4};
/// Within one of `ERRORS`, the oldest first.
inline constexpr Entries COMMANDS{0, 18, 5};
/// Within one of `ERRORS`.
inline constexpr Entries ERROR{90, 34, 1};
}  // namespace extended_error_log

/// An entry of `extended_error_log::COMMANDS`.
namespace extended_error_log_command {
inline constexpr std::uint32_t SIZE = 18;
#define FIELD_TABLE "protocols/ata/tables/ExtendedErrorLogCommand.def"
#include "protocols/FieldTable.def"
}  // namespace extended_error_log_command

/// The entry of `extended_error_log::ERROR`.
namespace extended_error_log_error {
inline constexpr std::uint32_t SIZE = 34;
#define FIELD_TABLE "protocols/ata/tables/ExtendedErrorLogError.def"
#include "protocols/FieldTable.def"
}  // namespace extended_error_log_error

namespace self_test_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SelfTestLog.def"
#include "protocols/FieldTable.def"
inline constexpr Entries DESCRIPTORS{2, 24, 21};
}  // namespace self_test_log

/// An entry of `self_test_log::DESCRIPTORS`.
namespace self_test_descriptor {
inline constexpr std::uint32_t SIZE = 24;
#define FIELD_TABLE "protocols/ata/tables/SelfTestDescriptor.def"
#include "protocols/FieldTable.def"
}  // namespace self_test_descriptor

/// One page.
namespace extended_self_test_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/ExtendedSelfTestLog.def"
#include "protocols/FieldTable.def"
inline constexpr Entries DESCRIPTORS{4, 26, 19};
}  // namespace extended_self_test_log

/// An entry of `extended_self_test_log::DESCRIPTORS`.
namespace extended_self_test_descriptor {
inline constexpr std::uint32_t SIZE = 26;
#define FIELD_TABLE "protocols/ata/tables/ExtendedSelfTestDescriptor.def"
#include "protocols/FieldTable.def"
}  // namespace extended_self_test_descriptor

namespace sct_status {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SctStatus.def"
#include "protocols/FieldTable.def"
}  // namespace sct_status

/// The table with the largest circular buffer of one block.
namespace sct_temperature_history {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SctTemperatureHistory.def"
#include "protocols/FieldTable.def"
/// Of which CBSize count.
inline constexpr Entries SAMPLES{34, 1, 478};
}  // namespace sct_temperature_history

namespace sct_error_recovery_control {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SctErrorRecoveryControl.def"
#include "protocols/FieldTable.def"
}  // namespace sct_error_recovery_control

namespace sct_feature_control {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SctFeatureControl.def"
#include "protocols/FieldTable.def"
}  // namespace sct_feature_control

namespace sct_data_table {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SctDataTable.def"
#include "protocols/FieldTable.def"
}  // namespace sct_data_table

namespace security_password {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SecurityPassword.def"
#include "protocols/FieldTable.def"
}  // namespace security_password

/// Page 00h of the Device Statistics log: the list of its pages.
namespace device_statistics_list {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/DeviceStatisticsList.def"
#include "protocols/FieldTable.def"
/// Of which NumberOfEntries count.
inline constexpr Entries PAGE_NUMBERS{9, 1, 503};
}  // namespace device_statistics_list

namespace general_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/GeneralStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace general_statistics

namespace general_errors_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/GeneralErrorsStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace general_errors_statistics

namespace temperature_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/TemperatureStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace temperature_statistics

namespace transport_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/TransportStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace transport_statistics

namespace solid_state_device_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/ata/tables/SolidStateDeviceStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace solid_state_device_statistics

}  // namespace orvel::protocols::ata
