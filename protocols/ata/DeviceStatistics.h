// The statistics of the Device Statistics log.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// Pages of the Device Statistics log: ACS-4, table "Defined Device Statistics log pages".
namespace statistics_page {
inline constexpr std::uint8_t LIST_OF_PAGES = 0x00;
inline constexpr std::uint8_t GENERAL = 0x01;
inline constexpr std::uint8_t FREE_FALL = 0x02;
inline constexpr std::uint8_t ROTATING_MEDIA = 0x03;
inline constexpr std::uint8_t GENERAL_ERRORS = 0x04;
inline constexpr std::uint8_t TEMPERATURE = 0x05;
inline constexpr std::uint8_t TRANSPORT = 0x06;
inline constexpr std::uint8_t SOLID_STATE_DEVICE = 0x07;
}  // namespace statistics_page

/// The flags of a statistic, bits 63:56: ACS-4, table "DEVICE STATISTICS FLAGS format".
namespace statistic_flags {
inline constexpr std::uint8_t SUPPORTED = 1U << 7;
inline constexpr std::uint8_t VALID = 1U << 6;
inline constexpr std::uint8_t NORMALIZED = 1U << 5;
inline constexpr std::uint8_t SUPPORTS_DSN = 1U << 4;
inline constexpr std::uint8_t MONITORED_CONDITION_MET = 1U << 3;
}  // namespace statistic_flags

/// Where a statistic's flags lie behind its first byte.
inline constexpr std::uint32_t STATISTIC_FLAGS_OFFSET = 7;

struct Statistic {
    std::uint64_t value = 0;
    std::uint8_t flags = 0;

    /// Supported and valid: the value means something.
    bool isValid() const;

    bool operator==(const Statistic&) const = default;
};

// `field` is a statistic's row. Both throw core::Status by value, code 14, if the payload ends
// before the flags.
Statistic readStatistic(const core::Payload& page, const Field& field);
void writeStatistic(const core::Payload& page, const Field& field, const Statistic& statistic);

}  // namespace orvel::protocols::ata
