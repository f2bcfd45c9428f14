// SMART Command Transport: the data that its commands take and give.
#pragma once

#include "core/Payload.h"
#include "protocols/ata/ReturnedTaskFile.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvel::protocols::ata::sct {

/// ACS-4, "SCT Error Recovery Control".
enum class RecoveryTimer : std::uint16_t { READ = 1, WRITE = 2 };

/// ACS-4, "SCT Feature Control", table "Feature code list".
enum class Feature : std::uint16_t {
    WRITE_CACHE = 1,
    WRITE_CACHE_REORDERING = 2,
    TEMPERATURE_LOGGING_INTERVAL = 3  ///< its state is in minutes
};

/// How long a feature's state holds: option flags, bit 0.
enum class FeatureLifetime { UNTIL_POWER_OFF, OVER_POWER_OFF };

/// States of Feature::WRITE_CACHE.
namespace write_cache_state {
inline constexpr std::uint16_t BY_SET_FEATURES = 1;
inline constexpr std::uint16_t ENABLED = 2;
inline constexpr std::uint16_t DISABLED = 3;
}  // namespace write_cache_state

/// States of Feature::WRITE_CACHE_REORDERING.
namespace write_cache_reordering_state {
inline constexpr std::uint16_t ENABLED = 1;
inline constexpr std::uint16_t DISABLED = 2;
}  // namespace write_cache_reordering_state

/// ACS-4, "SCT Data Tables command".
inline constexpr std::uint16_t TEMPERATURE_HISTORY_TABLE = 2;

/// Bits of the SCT status response's status flags.
inline constexpr std::uint32_t SEGMENT_INITIALIZED = 1U << 0;

// The block of 512 bytes for `sctCommand`.

/// `timeLimit` is in units of 100 ms; 0 is no limit.
core::Payload setRecoveryTime(RecoveryTimer timer, std::uint16_t timeLimit);
core::Payload returnRecoveryTime(RecoveryTimer timer);
core::Payload setFeature(Feature feature, std::uint16_t state, FeatureLifetime lifetime);
core::Payload returnFeatureState(Feature feature);
core::Payload returnFeatureOptions(Feature feature);
core::Payload readDataTable(std::uint16_t tableId);

/// What the commands that return a value leave in COUNT (7:0) and LBA (7:0).
std::uint16_t returnedValue(const ReturnedTaskFile& returned);

/// The samples of a temperature history, the oldest first; nothing where there is no sample. Throws
/// core::Status by value, code 14, if the payload ends before the circular buffer does, or if the
/// index lies outside of the buffer.
std::vector<std::optional<int>> temperatureHistory(const core::Payload& table);

}  // namespace orvel::protocols::ata::sct
