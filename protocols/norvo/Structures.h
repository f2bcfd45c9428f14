// The structures of Norvo drives. In each namespace: a constant for each row of the table of the
// same name, all rows as `ALL`, and the size in bytes.
#pragma once

#include "protocols/Entries.h"
#include "protocols/Field.h"
#include "protocols/ata/Structures.h"

#include <cstdint>

namespace orvel::protocols::norvo {

/// The vendor's part of Identify Controller.
namespace identify_controller {
inline constexpr std::uint32_t SIZE = 4096;
#define FIELD_TABLE "protocols/norvo/tables/IdentifyController.def"
#include "protocols/FieldTable.def"
}  // namespace identify_controller

/// The vendor's part of IDENTIFY DEVICE data.
namespace identify_device {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/IdentifyDevice.def"
#include "protocols/FieldTable.def"
}  // namespace identify_device

/// Header of Nlog, event log and assert log, on both kinds of drive. What follows it belongs to the
/// log. Each is a multiple of 512 bytes.
namespace stored_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/StoredLog.def"
#include "protocols/FieldTable.def"
inline constexpr const char* NLOG_SIGNATURE = "NLOG";
inline constexpr const char* EVENT_LOG_SIGNATURE = "EVNT";
inline constexpr const char* ASSERT_LOG_SIGNATURE = "ASRT";
}  // namespace stored_log

namespace latency_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/LatencyStatistics.def"
#include "protocols/FieldTable.def"
inline constexpr Entries BUCKETS{16, 16, 31};
}  // namespace latency_statistics

/// An entry of `latency_statistics::BUCKETS`.
namespace latency_bucket {
inline constexpr std::uint32_t SIZE = 16;
#define FIELD_TABLE "protocols/norvo/tables/LatencyBucket.def"
#include "protocols/FieldTable.def"
}  // namespace latency_bucket

namespace temperature_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/TemperatureStatistics.def"
#include "protocols/FieldTable.def"
}  // namespace temperature_statistics

namespace health_statistics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/HealthStatistics.def"
#include "protocols/FieldTable.def"
/// Of the timed workload's wear and host reads until the workload has run for an hour: what neither
/// can come to.
inline constexpr std::uint64_t RESET_VALUE = 0xFFFFFFFFFFFFFFFF;
}  // namespace health_statistics

namespace queue_metrics {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/norvo/tables/QueueMetrics.def"
#include "protocols/FieldTable.def"
inline constexpr Entries QUEUES{16, 16, 31};
}  // namespace queue_metrics

/// An entry of `queue_metrics::QUEUES`.
namespace queue_metrics_entry {
inline constexpr std::uint32_t SIZE = 16;
#define FIELD_TABLE "protocols/norvo/tables/QueueMetricsEntry.def"
#include "protocols/FieldTable.def"
}  // namespace queue_metrics_entry

/// One lane's eye: the share of failed bits at each phase and voltage.
namespace eye_diagram {
inline constexpr std::uint32_t SIZE = 2048;
#define FIELD_TABLE "protocols/norvo/tables/EyeDiagram.def"
#include "protocols/FieldTable.def"
inline constexpr std::uint32_t COLUMNS = 64;
inline constexpr std::uint32_t ROWS = 31;
/// One byte for each place, row by row, the highest voltage first: 0 for no errors, else the
/// exponent of the error rate 10^-n with 1 for the worst.
inline constexpr Entries CELLS{64, 1, COLUMNS* ROWS};
}  // namespace eye_diagram

}  // namespace orvel::protocols::norvo
