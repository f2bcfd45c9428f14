// The structures of the ATA standards: a namespace for each, with its fields by name, all of them
// in order, its size in bytes, and where its repeated parts lie. The rows stand in tables/.
#pragma once

#include "protocols/Entries.h"
#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// The standard counts some structures in words of two bytes.
inline constexpr std::uint32_t WORD = 2;

/// Whether the fields stand in order, share no byte and end before `size`.
constexpr bool areInOrder(Fields fields, std::uint32_t size) {
    std::uint32_t end = 0;
    for (const Field& field : fields) {
        if (field.offset < end) return false;
        end = field.offset + field.size;
    }
    return end <= size;
}

// The two forms of a row: the field itself, and its name in the list of all.
#define FIELD_DEFINITION(name, offset, size, encoding, meaning)                                    \
    inline constexpr Field name{#name, meaning, offset, size, Encoding::encoding};
#define FIELD_NAME(name, offset, size, encoding, meaning) name,

/// IDENTIFY DEVICE data.
namespace identify_device {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/IdentifyDevice.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/IdentifyDevice.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace identify_device

/// Page 00h of the IDENTIFY DEVICE data log: the list of its pages.
namespace identify_device_log {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/IdentifyDeviceLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/IdentifyDeviceLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
/// Of which NumberOfEntries count.
inline constexpr Entries PAGE_NUMBERS{9, 1, 503};
static_assert(areInOrder(ALL, SIZE));
}  // namespace identify_device_log

namespace smart_data {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SmartData.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SmartData.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries ATTRIBUTES{2, 12, 30};
static_assert(areInOrder(ALL, SIZE));
}  // namespace smart_data

/// An entry of `smart_data::ATTRIBUTES`.
namespace smart_attribute {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SmartAttribute.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SmartAttribute.def"
};
inline constexpr std::uint32_t SIZE = 12;
static_assert(areInOrder(ALL, SIZE));
}  // namespace smart_attribute

namespace smart_thresholds {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SmartThresholds.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SmartThresholds.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries THRESHOLDS{2, 12, 30};
static_assert(areInOrder(ALL, SIZE));
}  // namespace smart_thresholds

/// An entry of `smart_thresholds::THRESHOLDS`.
namespace smart_threshold {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SmartThreshold.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SmartThreshold.def"
};
inline constexpr std::uint32_t SIZE = 12;
static_assert(areInOrder(ALL, SIZE));
}  // namespace smart_threshold

/// The log directory, by whichever command.
namespace log_directory {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/LogDirectory.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/LogDirectory.def"
};
inline constexpr std::uint32_t SIZE = 512;
/// The first is that of log address 1.
inline constexpr Entries ADDRESSES{2, 2, 255};
static_assert(areInOrder(ALL, SIZE));
}  // namespace log_directory

/// An entry of `log_directory::ADDRESSES`, by SMART READ LOG.
namespace smart_log_directory_entry {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SmartLogDirectoryEntry.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SmartLogDirectoryEntry.def"
};
inline constexpr std::uint32_t SIZE = 2;
static_assert(areInOrder(ALL, SIZE));
}  // namespace smart_log_directory_entry

/// An entry of `log_directory::ADDRESSES`, by READ LOG EXT.
namespace general_purpose_log_directory_entry {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/GeneralPurposeLogDirectoryEntry.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/GeneralPurposeLogDirectoryEntry.def"
};
inline constexpr std::uint32_t SIZE = 2;
static_assert(areInOrder(ALL, SIZE));
}  // namespace general_purpose_log_directory_entry

/// Summary and Comprehensive SMART Error log: one page.
namespace error_log {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ErrorLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ErrorLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries ERRORS{2, 90, 5};
/// Within one of `ERRORS`, the oldest first.
inline constexpr Entries COMMANDS{0, 12, 5};
/// Within one of `ERRORS`.
inline constexpr Entries ERROR{60, 30, 1};
static_assert(areInOrder(ALL, SIZE));
}  // namespace error_log

/// An entry of `error_log::COMMANDS`.
namespace error_log_command {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ErrorLogCommand.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ErrorLogCommand.def"
};
inline constexpr std::uint32_t SIZE = 12;
static_assert(areInOrder(ALL, SIZE));
}  // namespace error_log_command

/// The entry of `error_log::ERROR`.
namespace error_log_error {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ErrorLogError.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ErrorLogError.def"
};
inline constexpr std::uint32_t SIZE = 30;
static_assert(areInOrder(ALL, SIZE));
}  // namespace error_log_error

/// Extended Comprehensive SMART Error log: one page.
namespace extended_error_log {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ExtendedErrorLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ExtendedErrorLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries ERRORS{4, 124, 4};
/// Within one of `ERRORS`, the oldest first.
inline constexpr Entries COMMANDS{0, 18, 5};
/// Within one of `ERRORS`.
inline constexpr Entries ERROR{90, 34, 1};
static_assert(areInOrder(ALL, SIZE));
}  // namespace extended_error_log

/// An entry of `extended_error_log::COMMANDS`.
namespace extended_error_log_command {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ExtendedErrorLogCommand.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ExtendedErrorLogCommand.def"
};
inline constexpr std::uint32_t SIZE = 18;
static_assert(areInOrder(ALL, SIZE));
}  // namespace extended_error_log_command

/// The entry of `extended_error_log::ERROR`.
namespace extended_error_log_error {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ExtendedErrorLogError.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ExtendedErrorLogError.def"
};
inline constexpr std::uint32_t SIZE = 34;
static_assert(areInOrder(ALL, SIZE));
}  // namespace extended_error_log_error

namespace self_test_log {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SelfTestLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SelfTestLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries DESCRIPTORS{2, 24, 21};
static_assert(areInOrder(ALL, SIZE));
}  // namespace self_test_log

/// An entry of `self_test_log::DESCRIPTORS`.
namespace self_test_descriptor {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SelfTestDescriptor.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SelfTestDescriptor.def"
};
inline constexpr std::uint32_t SIZE = 24;
static_assert(areInOrder(ALL, SIZE));
}  // namespace self_test_descriptor

/// One page.
namespace extended_self_test_log {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ExtendedSelfTestLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ExtendedSelfTestLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries DESCRIPTORS{4, 26, 19};
static_assert(areInOrder(ALL, SIZE));
}  // namespace extended_self_test_log

/// An entry of `extended_self_test_log::DESCRIPTORS`.
namespace extended_self_test_descriptor {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/ExtendedSelfTestDescriptor.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/ExtendedSelfTestDescriptor.def"
};
inline constexpr std::uint32_t SIZE = 26;
static_assert(areInOrder(ALL, SIZE));
}  // namespace extended_self_test_descriptor

namespace sct_status {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SctStatus.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SctStatus.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace sct_status

/// The table with the largest circular buffer of one block.
namespace sct_temperature_history {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SctTemperatureHistory.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SctTemperatureHistory.def"
};
inline constexpr std::uint32_t SIZE = 512;
/// Of which CBSize count.
inline constexpr Entries SAMPLES{34, 1, 478};
static_assert(areInOrder(ALL, SIZE));
}  // namespace sct_temperature_history

namespace sct_error_recovery_control {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SctErrorRecoveryControl.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SctErrorRecoveryControl.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace sct_error_recovery_control

namespace sct_feature_control {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SctFeatureControl.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SctFeatureControl.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace sct_feature_control

namespace sct_data_table {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SctDataTable.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SctDataTable.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace sct_data_table

namespace security_password {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SecurityPassword.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SecurityPassword.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace security_password

/// Page 00h of the Device Statistics log: the list of its pages.
namespace device_statistics_list {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/DeviceStatisticsList.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/DeviceStatisticsList.def"
};
inline constexpr std::uint32_t SIZE = 512;
/// Of which NumberOfEntries count.
inline constexpr Entries PAGE_NUMBERS{9, 1, 503};
static_assert(areInOrder(ALL, SIZE));
}  // namespace device_statistics_list

namespace general_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/GeneralStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/GeneralStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace general_statistics

namespace general_errors_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/GeneralErrorsStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/GeneralErrorsStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace general_errors_statistics

namespace temperature_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/TemperatureStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/TemperatureStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace temperature_statistics

namespace transport_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/TransportStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/TransportStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace transport_statistics

namespace solid_state_device_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/ata/tables/SolidStateDeviceStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/ata/tables/SolidStateDeviceStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace solid_state_device_statistics

#undef FIELD_DEFINITION
#undef FIELD_NAME

}  // namespace orvel::protocols::ata
