// The structures of Norvo drives. In each namespace: a constant for each row of the table of the
// same name, all rows as `ALL`, and the size in bytes.
#pragma once

#include "protocols/Entries.h"
#include "protocols/Field.h"
#include "protocols/ata/Structures.h"

#include <cstdint>

namespace orvel::protocols::norvo {

using ata::areInOrder;

// The two forms of a row: the field itself, and its name in the list of all.
#define FIELD_DEFINITION(name, offset, size, encoding, meaning)                                    \
    inline constexpr Field name{#name, meaning, offset, size, Encoding::encoding};
#define FIELD_NAME(name, offset, size, encoding, meaning) name,

/// The vendor's part of Identify Controller.
namespace identify_controller {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/IdentifyController.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/IdentifyController.def"
};
inline constexpr std::uint32_t SIZE = 4096;
static_assert(areInOrder(ALL, SIZE));
}  // namespace identify_controller

/// The vendor's part of IDENTIFY DEVICE data.
namespace identify_device {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/IdentifyDevice.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/IdentifyDevice.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace identify_device

/// Header of Nlog, event log and assert log, on both kinds of drive. What follows it belongs to the
/// log. Each is a multiple of 512 bytes.
namespace stored_log {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/StoredLog.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/StoredLog.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
inline constexpr const char* NLOG_SIGNATURE = "NLOG";
inline constexpr const char* EVENT_LOG_SIGNATURE = "EVNT";
inline constexpr const char* ASSERT_LOG_SIGNATURE = "ASRT";
}  // namespace stored_log

namespace latency_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/LatencyStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/LatencyStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries BUCKETS{16, 16, 31};
static_assert(areInOrder(ALL, SIZE));
}  // namespace latency_statistics

/// An entry of `latency_statistics::BUCKETS`.
namespace latency_bucket {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/LatencyBucket.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/LatencyBucket.def"
};
inline constexpr std::uint32_t SIZE = 16;
static_assert(areInOrder(ALL, SIZE));
}  // namespace latency_bucket

namespace temperature_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/TemperatureStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/TemperatureStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
}  // namespace temperature_statistics

namespace health_statistics {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/HealthStatistics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/HealthStatistics.def"
};
inline constexpr std::uint32_t SIZE = 512;
static_assert(areInOrder(ALL, SIZE));
/// Of the timed workload's wear and host reads until the workload has run for an hour: what neither
/// can come to.
inline constexpr std::uint64_t RESET_VALUE = 0xFFFFFFFFFFFFFFFF;
}  // namespace health_statistics

namespace queue_metrics {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/QueueMetrics.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/QueueMetrics.def"
};
inline constexpr std::uint32_t SIZE = 512;
inline constexpr Entries QUEUES{16, 16, 31};
static_assert(areInOrder(ALL, SIZE));
}  // namespace queue_metrics

/// An entry of `queue_metrics::QUEUES`.
namespace queue_metrics_entry {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/QueueMetricsEntry.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/QueueMetricsEntry.def"
};
inline constexpr std::uint32_t SIZE = 16;
static_assert(areInOrder(ALL, SIZE));
}  // namespace queue_metrics_entry

/// One lane's eye: the share of failed bits at each phase and voltage.
namespace eye_diagram {
#define FIELD FIELD_DEFINITION
#include "protocols/norvo/tables/EyeDiagram.def"
inline constexpr Field ALL[] = {
#define FIELD FIELD_NAME
#include "protocols/norvo/tables/EyeDiagram.def"
};
inline constexpr std::uint32_t COLUMNS = 64;
inline constexpr std::uint32_t ROWS = 31;
/// One byte for each place, row by row, the highest voltage first: 0 for no errors, else the
/// exponent of the error rate 10^-n with 1 for the worst.
inline constexpr Entries CELLS{64, 1, COLUMNS* ROWS};
inline constexpr std::uint32_t SIZE = 2048;
static_assert(areInOrder(ALL, SIZE));
}  // namespace eye_diagram

#undef FIELD_DEFINITION
#undef FIELD_NAME

}  // namespace orvel::protocols::norvo
