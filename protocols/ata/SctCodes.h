// What SMART Command Transport numbers its actions, functions and outcomes.
#pragma once

#include <cstdint>

namespace orvel::protocols::ata::sct {

/// ACS-4, table "SCT action codes".
namespace actions {
inline constexpr std::uint16_t ERROR_RECOVERY_CONTROL = 3;
inline constexpr std::uint16_t FEATURE_CONTROL = 4;
inline constexpr std::uint16_t DATA_TABLES = 5;
}  // namespace actions

// Function codes, of each action its own.
namespace recovery_functions {
inline constexpr std::uint16_t SET_TIMER = 1;
inline constexpr std::uint16_t RETURN_TIMER = 2;
}  // namespace recovery_functions

namespace feature_functions {
inline constexpr std::uint16_t SET_STATE = 1;
inline constexpr std::uint16_t RETURN_STATE = 2;
inline constexpr std::uint16_t RETURN_OPTIONS = 3;
}  // namespace feature_functions

namespace table_functions {
inline constexpr std::uint16_t READ_TABLE = 1;
}  // namespace table_functions

/// Option flag of SCT Feature Control.
inline constexpr std::uint16_t PRESERVE_OVER_POWER_CYCLES = 1U << 0;

/// Extended status codes; see StatusType::SCT_EXTENDED for their words and for the others.
namespace extended_status {
inline constexpr std::uint16_t SUCCESS = 0x0000;
inline constexpr std::uint16_t INVALID_FUNCTION = 0x0001;
inline constexpr std::uint16_t BLOCK_COUNT_OVERFLOW = 0x0003;
inline constexpr std::uint16_t INVALID_RECOVERY_FUNCTION = 0x0004;
inline constexpr std::uint16_t INVALID_RECOVERY_SELECTION = 0x0005;
inline constexpr std::uint16_t READ_TIMER_TOO_SHORT = 0x0006;
inline constexpr std::uint16_t WRITE_TIMER_TOO_SHORT = 0x0007;
inline constexpr std::uint16_t NO_COMMAND_BEFORE_DATA = 0x000B;
inline constexpr std::uint16_t INVALID_FEATURE_FUNCTION = 0x000C;
inline constexpr std::uint16_t INVALID_FEATURE = 0x000D;
inline constexpr std::uint16_t INVALID_FEATURE_STATE = 0x000E;
inline constexpr std::uint16_t INVALID_OPTION_FLAGS = 0x000F;
inline constexpr std::uint16_t INVALID_ACTION = 0x0010;
inline constexpr std::uint16_t INVALID_TABLE = 0x0011;
}  // namespace extended_status

/// Device states of the SCT status response; see StatusType::SCT_DEVICE_STATE for the others.
namespace device_states {
inline constexpr std::uint8_t ACTIVE = 0x00;
inline constexpr std::uint8_t STANDBY = 0x01;
inline constexpr std::uint8_t SELF_TEST = 0x03;
}  // namespace device_states

}  // namespace orvel::protocols::ata::sct
