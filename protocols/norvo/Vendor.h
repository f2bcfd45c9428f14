// What Norvo drives have beyond the standards: identifiers from the ranges that the standards leave
// to vendors.
#pragma once

#include "protocols/ata/Sct.h"
#include "protocols/nvme/BitField.h"

#include <cstdint>

namespace orvel::protocols::norvo {

// NVMe.

/// Log Page Identifiers C0h to FFh. Each is a structure of Structures.h.
namespace log_pages {
inline constexpr std::uint8_t NLOG = 0xC0;                      // stored_log
inline constexpr std::uint8_t READ_LATENCY_STATISTICS = 0xC1;   // latency_statistics
inline constexpr std::uint8_t WRITE_LATENCY_STATISTICS = 0xC2;  // latency_statistics
inline constexpr std::uint8_t EVENT_LOG = 0xC3;                 // stored_log
inline constexpr std::uint8_t ASSERT_LOG = 0xC4;                // stored_log
inline constexpr std::uint8_t TEMPERATURE_STATISTICS = 0xC5;    // temperature_statistics
inline constexpr std::uint8_t EYE_DIAGRAM = 0xC8;               // eye_diagram
inline constexpr std::uint8_t HEALTH_STATISTICS = 0xCA;         // health_statistics
inline constexpr std::uint8_t QUEUE_METRICS = 0xCB;             // queue_metrics
}  // namespace log_pages

/// The eye diagram's Log Specific Field is the SerDes group, its Log Specific Identifier the lane.
namespace serdes {
inline constexpr std::uint8_t GROUP_A = 0;
inline constexpr std::uint8_t GROUP_B = 1;
inline constexpr std::uint8_t GROUPS = 2;
inline constexpr std::uint16_t LANES = 2;
}  // namespace serdes

/// Feature Identifiers C0h to FFh. What a feature takes in dword 11 stands behind it.
namespace feature_ids {
inline constexpr std::uint8_t POWER_GOVERNOR = 0xC0;         // 0 high, 1 medium, 2 low
inline constexpr std::uint8_t MAXIMUM_LBA = 0xC1;            // LBA (31:0), dword 12: LBA (63:32)
inline constexpr std::uint8_t RESET_TIMED_WORKLOAD = 0xC6;   // 1
inline constexpr std::uint8_t RESET_CRC_ERROR_COUNT = 0xC7;  // 1
inline constexpr std::uint8_t SMBUS_ADDRESS = 0xC8;          // 1 to 255; 255 disables
inline constexpr std::uint8_t LATENCY_TRACKING = 0xE2;       // 0 or 1
}  // namespace feature_ids

// SATA.

/// Feature codes D000h to FFFFh of SCT Feature Control. What a feature's state is stands behind it.
namespace sct_features {
using ata::sct::Feature;
inline constexpr Feature PLI_TEST_TIME_INTERVAL{0xD000};    // 0 to 6
inline constexpr Feature PHYSICAL_SECTOR_SIZE{0xD001};      // 512 or 4096
inline constexpr Feature POWER_GOVERNOR{0xD002};            // 0 unconstrained, 1 typical, 2 low
inline constexpr Feature PHY_CONFIG{0xD003};                // 0 to 3; from the next power-on
inline constexpr Feature PHY_SPEED{0xD004};                 // Gen 1 to 3; from the next power-on
inline constexpr Feature SPREAD_SPECTRUM_CLOCKING{0xD005};  // 0 or 1; from the next power-on
inline constexpr Feature RESET_TIMED_WORKLOAD{0xD006};      // 1
}  // namespace sct_features

/// Log addresses A0h to DFh. Each is a stored_log of Structures.h.
namespace log_addresses {
inline constexpr std::uint8_t NLOG = 0xA0;
inline constexpr std::uint8_t EVENT_LOG = 0xA1;
inline constexpr std::uint8_t ASSERT_LOG = 0xA2;
}  // namespace log_addresses

/// SMART attributes that only Norvo drives fill in this way.
namespace smart_attributes {
inline constexpr std::uint8_t TIMED_WORKLOAD_MEDIA_WEAR = 226;  // in 1/1024 of a percent
inline constexpr std::uint8_t TIMED_WORKLOAD_HOST_READS = 227;  // percent of all commands
inline constexpr std::uint8_t TIMED_WORKLOAD_TIMER = 228;       // in minutes
/// The raw value of the first two until the workload has run for an hour.
inline constexpr std::uint16_t RESET_VALUE = 0xFFFF;
}  // namespace smart_attributes

}  // namespace orvel::protocols::norvo
