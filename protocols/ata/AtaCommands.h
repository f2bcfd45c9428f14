// The commands of the ATA standards, ready to be sent: one function for each.
#pragma once

#include "protocols/ata/AtaCommand.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// Addresses of logs: ACS-4, table "Log address definition".
namespace log_address {
inline constexpr std::uint8_t DIRECTORY = 0x00;
inline constexpr std::uint8_t SUMMARY_SMART_ERROR = 0x01;
inline constexpr std::uint8_t COMPREHENSIVE_SMART_ERROR = 0x02;
inline constexpr std::uint8_t EXTENDED_COMPREHENSIVE_SMART_ERROR = 0x03;
inline constexpr std::uint8_t DEVICE_STATISTICS = 0x04;
inline constexpr std::uint8_t SMART_SELF_TEST = 0x06;
inline constexpr std::uint8_t EXTENDED_SMART_SELF_TEST = 0x07;
inline constexpr std::uint8_t SELECTIVE_SELF_TEST = 0x09;
inline constexpr std::uint8_t NCQ_COMMAND_ERROR = 0x10;
inline constexpr std::uint8_t PHY_EVENT_COUNTERS = 0x11;
inline constexpr std::uint8_t IDENTIFY_DEVICE_DATA = 0x30;
inline constexpr std::uint8_t SCT_COMMAND_STATUS = 0xE0;
inline constexpr std::uint8_t SCT_DATA_TRANSFER = 0xE1;
}  // namespace log_address

/// Subcommands of SET FEATURES: ACS-4, table "FEATURE field definitions". What each takes in the
/// count stands behind it.
namespace set_features {
inline constexpr std::uint8_t ENABLE_VOLATILE_WRITE_CACHE = 0x02;
inline constexpr std::uint8_t SET_TRANSFER_MODE = 0x03;  // the transfer mode
inline constexpr std::uint8_t ENABLE_APM = 0x05;         // the APM level, 01h to FEh
inline constexpr std::uint8_t ENABLE_PUIS = 0x06;
inline constexpr std::uint8_t PUIS_SPIN_UP = 0x07;
inline constexpr std::uint8_t ENABLE_WRITE_READ_VERIFY = 0x0B;  // blocks to verify in mode 3
inline constexpr std::uint8_t ENABLE_SATA_FEATURE = 0x10;       // the SATA feature
inline constexpr std::uint8_t EXTENDED_POWER_CONDITIONS = 0x4A;
inline constexpr std::uint8_t DISABLE_READ_LOOK_AHEAD = 0x55;
inline constexpr std::uint8_t DISABLE_REVERTING_TO_DEFAULTS = 0x66;
inline constexpr std::uint8_t DISABLE_VOLATILE_WRITE_CACHE = 0x82;
inline constexpr std::uint8_t DISABLE_APM = 0x85;
inline constexpr std::uint8_t DISABLE_PUIS = 0x86;
inline constexpr std::uint8_t DISABLE_WRITE_READ_VERIFY = 0x8B;
inline constexpr std::uint8_t DISABLE_SATA_FEATURE = 0x90;  // the SATA feature
inline constexpr std::uint8_t ENABLE_READ_LOOK_AHEAD = 0xAA;
inline constexpr std::uint8_t SENSE_DATA_REPORTING = 0xC3;  // 01h = enable, 00h = disable
inline constexpr std::uint8_t ENABLE_REVERTING_TO_DEFAULTS = 0xCC;
}  // namespace set_features

/// SATA features of SET FEATURES: ACS-4, table "COUNT field values for SATA features".
namespace sata_feature {
inline constexpr std::uint8_t NON_ZERO_BUFFER_OFFSETS = 0x01;
inline constexpr std::uint8_t DMA_SETUP_AUTO_ACTIVATION = 0x02;
inline constexpr std::uint8_t DEVICE_INITIATED_POWER_TRANSITIONS = 0x03;
inline constexpr std::uint8_t IN_ORDER_DATA_DELIVERY = 0x04;
inline constexpr std::uint8_t ASYNCHRONOUS_NOTIFICATION = 0x05;
inline constexpr std::uint8_t SOFTWARE_SETTINGS_PRESERVATION = 0x06;
inline constexpr std::uint8_t DEVICE_AUTO_PARTIAL_TO_SLUMBER = 0x07;
inline constexpr std::uint8_t HARDWARE_FEATURE_CONTROL = 0x08;
inline constexpr std::uint8_t DEVICE_SLEEP = 0x09;
inline constexpr std::uint8_t HYBRID_INFORMATION = 0x0A;
inline constexpr std::uint8_t POWER_DISABLE = 0x0B;
}  // namespace sata_feature

/// Subcommands of SMART EXECUTE OFF-LINE IMMEDIATE: ACS-4, table "SMART EXECUTE OFF-LINE IMMEDIATE
/// LBA field".
enum class OfflineSubcommand : std::uint8_t {
    OFFLINE_ROUTINE = 0x00,
    SHORT_SELF_TEST = 0x01,
    EXTENDED_SELF_TEST = 0x02,
    CONVEYANCE_SELF_TEST = 0x03,
    SELECTIVE_SELF_TEST = 0x04,
    ABORT_SELF_TEST = 0x7F,
    CAPTIVE_SHORT_SELF_TEST = 0x81,
    CAPTIVE_EXTENDED_SELF_TEST = 0x82,
    CAPTIVE_CONVEYANCE_SELF_TEST = 0x83,
    CAPTIVE_SELECTIVE_SELF_TEST = 0x84
};

/// The two ways to a log that SCT may take.
enum class LogAccess { SMART, GENERAL_PURPOSE };

/// How long a setting of SET MAX ADDRESS EXT holds.
enum class MaxAddressLifetime { UNTIL_POWER_OFF, OVER_POWER_OFF };

/// What a drive may do after a sanitize operation that failed: ACS-4, FAILURE MODE bit.
enum class SanitizeFailureMode {
    COMPLETED_SANITIZE_NEEDED,  ///< only another sanitize operation that completes frees the drive
    STATUS_EXT_SUFFICES         ///< so does SANITIZE STATUS EXT with the failure cleared
};

enum class SanitizeFailure { KEEP, CLEAR };

/// What is written between the passes of OVERWRITE EXT.
enum class OverwritePattern { SAME_IN_EACH_PASS, INVERTED_BETWEEN_PASSES };

/// Bits of the count that the sanitize commands return: ACS-4, "SANITIZE STATUS EXT".
namespace sanitize_status {
inline constexpr std::uint16_t COMPLETED_WITHOUT_ERROR = 1U << 15;
inline constexpr std::uint16_t IN_PROGRESS = 1U << 14;
inline constexpr std::uint16_t FROZEN = 1U << 13;
inline constexpr std::uint16_t ANTIFREEZE = 1U << 12;
/// While in progress, LBA (15:0) is how many of these parts are done.
inline constexpr std::uint32_t PROGRESS_PARTS = 65536;
}  // namespace sanitize_status

/// Subcommands of DOWNLOAD MICROCODE: ACS-4, table "DOWNLOAD MICROCODE SUBCOMMAND field".
enum class DownloadMode : std::uint8_t {
    OFFSETS_AND_IMMEDIATE_ACTIVATION = 0x03,
    IMMEDIATE_ACTIVATION = 0x07,
    OFFSETS_AND_DEFERRED_ACTIVATION = 0x0E,
    ACTIVATE_DEFERRED = 0x0F
};

// Those without arguments are rows of a table: tables/Commands.def.
#define COMMAND(function, name, command, feature, count, lba, device, addressing, protocol,        \
                blocks)                                                                            \
    AtaCommand function();
#include "protocols/ata/tables/Commands.def"

AtaCommand smartExecuteOfflineImmediate(OfflineSubcommand subcommand);

// Logs. A count of pages is 1 or more.
AtaCommand smartReadLog(std::uint8_t logAddress, std::uint8_t pages);
AtaCommand smartWriteLog(std::uint8_t logAddress, std::uint8_t pages);

/// `feature` is the log's own.
AtaCommand readLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                      std::uint16_t feature = 0);
AtaCommand readLogDmaExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                         std::uint16_t feature = 0);
AtaCommand writeLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages);

// SCT. The data of a command is made in Sct.h.

/// Gives an SCT command to the drive: SMART WRITE LOG or WRITE LOG EXT of one block.
AtaCommand sctCommand(LogAccess access);
AtaCommand sctStatus(LogAccess access);

/// Fetches the data of the SCT command that was given before.
AtaCommand sctReadData(LogAccess access, std::uint8_t pages);

/// `subcommand` is one of `set_features`.
AtaCommand setFeatures(std::uint8_t subcommand, std::uint8_t count = 0);

// The highest LBA that is accessible. Each throws core::Status by value, code 36, for an address of
// more than 48 bits: cut, it would hide almost all of the drive.
AtaCommand setAccessibleMaxAddressExt(std::uint64_t maxAddress);
AtaCommand setMaxAddressExt(std::uint64_t maxAddress, MaxAddressLifetime lifetime);

// Sanitize.
AtaCommand sanitizeStatusExt(SanitizeFailure failure);
AtaCommand cryptoScrambleExt(SanitizeFailureMode failureMode);
AtaCommand blockEraseExt(SanitizeFailureMode failureMode);

/// `passes` is 1 to 16; another number throws core::Status by value, code 36.
AtaCommand overwriteExt(SanitizeFailureMode failureMode, std::uint32_t pattern, unsigned passes,
                        OverwritePattern passPattern);

/// `offset` and `blocks` are in units of 512 bytes. The offset counts only in the modes with
/// offsets, and neither in ACTIVATE_DEFERRED, which transfers nothing.
AtaCommand downloadMicrocode(DownloadMode mode, std::uint16_t offset, std::uint16_t blocks);

}  // namespace orvel::protocols::ata
