// What the ATA commands are numbered: for those who make commands and for those who carry them out.
#pragma once

#include <cstdint>

namespace orvel::protocols::ata {

/// The COMMAND field: ACS-4, "Command codes" (the HPA commands: ACS-2).
namespace command_codes {
inline constexpr std::uint8_t READ_NATIVE_MAX_ADDRESS_EXT = 0x27;
inline constexpr std::uint8_t READ_LOG_EXT = 0x2F;
inline constexpr std::uint8_t SET_MAX_ADDRESS_EXT = 0x37;
inline constexpr std::uint8_t WRITE_LOG_EXT = 0x3F;
inline constexpr std::uint8_t READ_LOG_DMA_EXT = 0x47;
inline constexpr std::uint8_t ACCESSIBLE_MAX_ADDRESS_CONFIGURATION = 0x78;
inline constexpr std::uint8_t DOWNLOAD_MICROCODE = 0x92;
inline constexpr std::uint8_t SMART = 0xB0;
inline constexpr std::uint8_t SANITIZE_DEVICE = 0xB4;
inline constexpr std::uint8_t STANDBY_IMMEDIATE = 0xE0;
inline constexpr std::uint8_t CHECK_POWER_MODE = 0xE5;
inline constexpr std::uint8_t FLUSH_CACHE_EXT = 0xEA;
inline constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
inline constexpr std::uint8_t SET_FEATURES = 0xEF;
inline constexpr std::uint8_t SECURITY_SET_PASSWORD = 0xF1;
inline constexpr std::uint8_t SECURITY_UNLOCK = 0xF2;
inline constexpr std::uint8_t SECURITY_ERASE_PREPARE = 0xF3;
inline constexpr std::uint8_t SECURITY_ERASE_UNIT = 0xF4;
inline constexpr std::uint8_t SECURITY_FREEZE_LOCK = 0xF5;
inline constexpr std::uint8_t SECURITY_DISABLE_PASSWORD = 0xF6;
}  // namespace command_codes

/// The FEATURE field of SMART.
namespace smart_subcommands {
inline constexpr std::uint8_t READ_DATA = 0xD0;
inline constexpr std::uint8_t READ_THRESHOLDS = 0xD1;
inline constexpr std::uint8_t EXECUTE_OFF_LINE_IMMEDIATE = 0xD4;
inline constexpr std::uint8_t READ_LOG = 0xD5;
inline constexpr std::uint8_t WRITE_LOG = 0xD6;
inline constexpr std::uint8_t ENABLE_OPERATIONS = 0xD8;
inline constexpr std::uint8_t DISABLE_OPERATIONS = 0xD9;
inline constexpr std::uint8_t RETURN_STATUS = 0xDA;
}  // namespace smart_subcommands

/// LBA (23:8) of SMART commands, with bits (7:0) left to the command.
inline constexpr std::uint64_t SMART_KEY = 0xC24F00;

/// The FEATURE field of SANITIZE DEVICE.
namespace sanitize_subcommands {
inline constexpr std::uint16_t STATUS_EXT = 0x0000;
inline constexpr std::uint16_t CRYPTO_SCRAMBLE_EXT = 0x0011;
inline constexpr std::uint16_t BLOCK_ERASE_EXT = 0x0012;
inline constexpr std::uint16_t OVERWRITE_EXT = 0x0014;
inline constexpr std::uint16_t FREEZE_LOCK_EXT = 0x0020;
inline constexpr std::uint16_t ANTIFREEZE_LOCK_EXT = 0x0040;
}  // namespace sanitize_subcommands

/// The LBA field of SANITIZE DEVICE.
namespace sanitize_keys {
inline constexpr std::uint64_t CRYPTO_SCRAMBLE = 0x43727970;  // "Cryp"
inline constexpr std::uint64_t BLOCK_ERASE = 0x426B4572;      // "BkEr"
inline constexpr std::uint64_t OVERWRITE = 0x4F5700000000;    // "OW" above the pattern
inline constexpr std::uint64_t FREEZE_LOCK = 0x46724C6B;      // "FrLk"
inline constexpr std::uint64_t ANTIFREEZE_LOCK = 0x416E7469;  // "Anti"
}  // namespace sanitize_keys

/// Bits of the COUNT field of SANITIZE DEVICE.
namespace sanitize_count {
inline constexpr std::uint16_t CLEAR_SANITIZE_OPERATION_FAILED = 1U << 0;
inline constexpr std::uint16_t FAILURE_MODE = 1U << 4;
inline constexpr std::uint16_t INVERT_PATTERN = 1U << 7;
}  // namespace sanitize_count

/// The FEATURE field of Accessible Max Address Configuration.
namespace max_address_subcommands {
inline constexpr std::uint16_t GET_NATIVE = 0x0000;
inline constexpr std::uint16_t SET_ACCESSIBLE = 0x0001;
inline constexpr std::uint16_t FREEZE_ACCESSIBLE = 0x0002;
}  // namespace max_address_subcommands

/// Bit of SET MAX ADDRESS EXT's COUNT field: the value outlasts power cycles.
inline constexpr std::uint16_t VALUE_VOLATILE = 1U << 0;

/// The COUNT field in which DOWNLOAD MICROCODE with offsets returns how far it is: ACS-4, table
/// "COUNT field output for DOWNLOAD MICROCODE".
namespace download_progress {
inline constexpr std::uint8_t NOT_REPORTED = 0x00;
inline constexpr std::uint8_t MORE_EXPECTED = 0x01;
inline constexpr std::uint8_t APPLIED = 0x02;
inline constexpr std::uint8_t DEFERRED = 0x03;
}  // namespace download_progress

/// The COUNT field that CHECK POWER MODE returns; see StatusType::POWER_MODE for the others.
namespace power_modes {
inline constexpr std::uint8_t STANDBY = 0x00;
inline constexpr std::uint8_t ACTIVE_OR_IDLE = 0xFF;
}  // namespace power_modes

}  // namespace orvel::protocols::ata
