// What is to be known of SMART below its structures' fields.
#pragma once

#include "protocols/ata/ReturnedTaskFile.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// Status flags of an attribute: SFF-8035i.
namespace smart_attribute_flags {
inline constexpr std::uint16_t PRE_FAILURE = 1U << 0;  ///< 0 = advisory
inline constexpr std::uint16_t ONLINE_COLLECTION = 1U << 1;
inline constexpr std::uint16_t PERFORMANCE = 1U << 2;
inline constexpr std::uint16_t ERROR_RATE = 1U << 3;
inline constexpr std::uint16_t EVENT_COUNT = 1U << 4;
inline constexpr std::uint16_t SELF_PRESERVING = 1U << 5;
}  // namespace smart_attribute_flags

/// ACS-3, "Off-line data collection capability".
namespace offline_collection_capability {
inline constexpr std::uint8_t EXECUTE_OFFLINE_IMMEDIATE = 1U << 0;
inline constexpr std::uint8_t AUTOMATIC_OFFLINE = 1U << 1;  ///< vendor specific in the standard
inline constexpr std::uint8_t ABORTS_ON_COMMAND = 1U << 2;
inline constexpr std::uint8_t READ_SCANNING = 1U << 3;
inline constexpr std::uint8_t SELF_TEST = 1U << 4;
inline constexpr std::uint8_t CONVEYANCE_SELF_TEST = 1U << 5;
inline constexpr std::uint8_t SELECTIVE_SELF_TEST = 1U << 6;
}  // namespace offline_collection_capability

/// ACS-3, "SMART capability".
namespace smart_capability {
inline constexpr std::uint16_t SAVES_BEFORE_POWER_MODE = 1U << 0;
inline constexpr std::uint16_t ATTRIBUTE_AUTOSAVE = 1U << 1;
}  // namespace smart_capability

/// ACS-3, "Error logging capability".
namespace error_logging_capability {
inline constexpr std::uint8_t ERROR_LOGGING = 1U << 0;
}  // namespace error_logging_capability

/// A self-test execution status byte: ACS-3, "Self-test execution status byte".
struct SelfTestExecution {
    std::uint8_t status = 0;            ///< a code of StatusType::SELF_TEST
    std::uint8_t percentRemaining = 0;  ///< in steps of 10

    bool operator==(const SelfTestExecution&) const = default;
};

SelfTestExecution selfTestExecution(std::uint8_t statusByte);
std::uint8_t selfTestExecutionByte(const SelfTestExecution& execution);

/// What SMART RETURN STATUS says.
enum class SmartHealth { GOOD, THRESHOLD_EXCEEDED, UNKNOWN };

SmartHealth smartHealth(const ReturnedTaskFile& returned);

/// LBA (23:8) of SMART RETURN STATUS, which the SCT status response repeats.
inline constexpr std::uint16_t SMART_GOOD = 0xC24F;
inline constexpr std::uint16_t SMART_THRESHOLD_EXCEEDED = 0x2CF4;

/// The name in common use, or "Unknown Attribute".
const char* smartAttributeName(std::uint8_t id);

}  // namespace orvel::protocols::ata
