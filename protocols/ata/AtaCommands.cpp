#include "protocols/ata/AtaCommands.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols::ata {

namespace {

// Command codes: ACS-4, "Command codes".
constexpr std::uint8_t READ_LOG_EXT = 0x2F;
constexpr std::uint8_t SET_MAX_ADDRESS_EXT = 0x37;
constexpr std::uint8_t WRITE_LOG_EXT = 0x3F;
constexpr std::uint8_t READ_LOG_DMA_EXT = 0x47;
constexpr std::uint8_t ACCESSIBLE_MAX_ADDRESS_CONFIGURATION = 0x78;
constexpr std::uint8_t DOWNLOAD_MICROCODE = 0x92;
constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint8_t SANITIZE_DEVICE = 0xB4;
constexpr std::uint8_t SET_FEATURES = 0xEF;

// SMART's subcommands, and the key in LBA (23:8).
constexpr std::uint16_t SMART_EXECUTE_OFF_LINE_IMMEDIATE = 0x00D4;
constexpr std::uint16_t SMART_READ_LOG = 0x00D5;
constexpr std::uint16_t SMART_WRITE_LOG = 0x00D6;
constexpr std::uint64_t SMART_KEY = 0xC24F00;

// The sanitize operations' subcommands, keys in the LBA and bits of the count.
constexpr std::uint16_t SANITIZE_STATUS_EXT = 0x0000;
constexpr std::uint16_t CRYPTO_SCRAMBLE_EXT = 0x0011;
constexpr std::uint16_t BLOCK_ERASE_EXT = 0x0012;
constexpr std::uint16_t OVERWRITE_EXT = 0x0014;
constexpr std::uint64_t CRYPTO_SCRAMBLE_KEY = 0x43727970;  // "Cryp"
constexpr std::uint64_t BLOCK_ERASE_KEY = 0x426B4572;      // "BkEr"
constexpr std::uint64_t OVERWRITE_KEY = 0x4F5700000000;    // "OW" above the pattern
constexpr std::uint16_t CLEAR_SANITIZE_OPERATION_FAILED = 1U << 0;
constexpr std::uint16_t FAILURE_MODE = 1U << 4;
constexpr std::uint16_t INVERT_PATTERN = 1U << 7;
constexpr unsigned MAX_PASSES = 16;
constexpr unsigned PASSES_MASK = 0xF;  // 16 passes are written as 0

constexpr std::uint16_t SET_ACCESSIBLE_MAX_ADDRESS_EXT = 0x0001;
constexpr std::uint16_t VALUE_VOLATILE = 1U << 0;
constexpr std::uint64_t LARGEST_LBA = 0xFFFFFFFFFFFF;
constexpr std::uint8_t LBA_DEVICE = 0x40;

constexpr bool BITS_28 = false;
constexpr bool BITS_48 = true;
constexpr Protocol NON_DATA = Protocol::NON_DATA;
constexpr Protocol PIO_IN = Protocol::PIO_IN;
constexpr Protocol PIO_OUT = Protocol::PIO_OUT;

/// Both directions: the reads' page number stands in the LBA as the writes' does.
AtaCommand logExt(const char* name, std::uint8_t command, Protocol protocol,
                  std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                  std::uint16_t feature) {
    const std::uint64_t pageLow = firstPage & 0xFFU;
    const std::uint64_t pageHigh = firstPage >> 8U;
    const std::uint64_t lba = logAddress | pageLow << 8U | pageHigh << 32U;
    return {name, {feature, pages, lba, 0, command, BITS_48}, protocol, pages * BLOCK_SIZE};
}

AtaCommand smartLog(const char* name, std::uint16_t feature, Protocol protocol,
                    std::uint8_t logAddress, std::uint8_t pages) {
    return {name,
            {feature, pages, SMART_KEY | logAddress, 0, SMART, BITS_28},
            protocol,
            pages * BLOCK_SIZE};
}

AtaCommand sanitize(const char* name, std::uint16_t feature, std::uint16_t count,
                    std::uint64_t lba) {
    return {name, {feature, count, lba, 0, SANITIZE_DEVICE, BITS_48}, NON_DATA, 0};
}

std::uint16_t failureModeBit(SanitizeFailureMode failureMode) {
    return failureMode == SanitizeFailureMode::STATUS_EXT_SUFFICES ? FAILURE_MODE
                                                                   : std::uint16_t{0};
}

std::uint64_t checkedMaxAddress(std::uint64_t maxAddress) {
    if (maxAddress > LARGEST_LBA) throw core::statuses::invalidArguments();
    return maxAddress;
}

}  // namespace

#define COMMAND(function, name, command, feature, count, lba, device, addressing, protocol,        \
                blocks)                                                                            \
    AtaCommand function() {                                                                        \
        return {name,                                                                              \
                {feature, count, lba, device, command, addressing},                                \
                protocol,                                                                          \
                (blocks)*BLOCK_SIZE};                                                              \
    }
#include "protocols/ata/tables/Commands.def"

AtaCommand smartExecuteOfflineImmediate(OfflineSubcommand subcommand) {
    const std::uint64_t lba = SMART_KEY | static_cast<std::uint8_t>(subcommand);
    return {"SMART EXECUTE OFF-LINE IMMEDIATE",
            {SMART_EXECUTE_OFF_LINE_IMMEDIATE, 0, lba, 0, SMART, BITS_28},
            NON_DATA,
            0};
}

AtaCommand smartReadLog(std::uint8_t logAddress, std::uint8_t pages) {
    return smartLog("SMART READ LOG", SMART_READ_LOG, PIO_IN, logAddress, pages);
}

AtaCommand smartWriteLog(std::uint8_t logAddress, std::uint8_t pages) {
    return smartLog("SMART WRITE LOG", SMART_WRITE_LOG, PIO_OUT, logAddress, pages);
}

AtaCommand readLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                      std::uint16_t feature) {
    return logExt("READ LOG EXT", READ_LOG_EXT, PIO_IN, logAddress, firstPage, pages, feature);
}

AtaCommand readLogDmaExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                         std::uint16_t feature) {
    return logExt("READ LOG DMA EXT", READ_LOG_DMA_EXT, Protocol::DMA_IN, logAddress, firstPage,
                  pages, feature);
}

AtaCommand writeLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages) {
    return logExt("WRITE LOG EXT", WRITE_LOG_EXT, PIO_OUT, logAddress, firstPage, pages, 0);
}

AtaCommand sctCommand(LogAccess access) {
    return access == LogAccess::SMART ? smartWriteLog(log_address::SCT_COMMAND_STATUS, 1)
                                      : writeLogExt(log_address::SCT_COMMAND_STATUS, 0, 1);
}

AtaCommand sctStatus(LogAccess access) {
    return access == LogAccess::SMART ? smartReadLog(log_address::SCT_COMMAND_STATUS, 1)
                                      : readLogExt(log_address::SCT_COMMAND_STATUS, 0, 1);
}

AtaCommand sctReadData(LogAccess access, std::uint8_t pages) {
    return access == LogAccess::SMART ? smartReadLog(log_address::SCT_DATA_TRANSFER, pages)
                                      : readLogExt(log_address::SCT_DATA_TRANSFER, 0, pages);
}

AtaCommand setFeatures(std::uint8_t subcommand, std::uint8_t count) {
    return {"SET FEATURES", {subcommand, count, 0, 0, SET_FEATURES, BITS_28}, NON_DATA, 0};
}

AtaCommand setAccessibleMaxAddressExt(std::uint64_t maxAddress) {
    return {"SET ACCESSIBLE MAX ADDRESS EXT",
            {SET_ACCESSIBLE_MAX_ADDRESS_EXT, 0, checkedMaxAddress(maxAddress), LBA_DEVICE,
             ACCESSIBLE_MAX_ADDRESS_CONFIGURATION, BITS_48},
            NON_DATA,
            0};
}

AtaCommand setMaxAddressExt(std::uint64_t maxAddress, MaxAddressLifetime lifetime) {
    const std::uint16_t count =
        lifetime == MaxAddressLifetime::OVER_POWER_OFF ? VALUE_VOLATILE : std::uint16_t{0};
    return {"SET MAX ADDRESS EXT",
            {0, count, checkedMaxAddress(maxAddress), LBA_DEVICE, SET_MAX_ADDRESS_EXT, BITS_48},
            NON_DATA,
            0};
}

AtaCommand sanitizeStatusExt(SanitizeFailure failure) {
    return sanitize(
        "SANITIZE STATUS EXT", SANITIZE_STATUS_EXT,
        failure == SanitizeFailure::CLEAR ? CLEAR_SANITIZE_OPERATION_FAILED : std::uint16_t{0}, 0);
}

AtaCommand cryptoScrambleExt(SanitizeFailureMode failureMode) {
    return sanitize("CRYPTO SCRAMBLE EXT", CRYPTO_SCRAMBLE_EXT, failureModeBit(failureMode),
                    CRYPTO_SCRAMBLE_KEY);
}

AtaCommand blockEraseExt(SanitizeFailureMode failureMode) {
    return sanitize("BLOCK ERASE EXT", BLOCK_ERASE_EXT, failureModeBit(failureMode),
                    BLOCK_ERASE_KEY);
}

AtaCommand overwriteExt(SanitizeFailureMode failureMode, std::uint32_t pattern, unsigned passes,
                        OverwritePattern passPattern) {
    if (passes < 1 || passes > MAX_PASSES) throw core::statuses::invalidArguments();
    const unsigned invert =
        passPattern == OverwritePattern::INVERTED_BETWEEN_PASSES ? INVERT_PATTERN : 0U;
    const unsigned count = failureModeBit(failureMode) | invert | (passes & PASSES_MASK);
    return sanitize("OVERWRITE EXT", OVERWRITE_EXT, static_cast<std::uint16_t>(count),
                    OVERWRITE_KEY | pattern);
}

AtaCommand downloadMicrocode(DownloadMode mode, std::uint16_t offset, std::uint16_t blocks) {
    const bool transfersData = mode != DownloadMode::ACTIVATE_DEFERRED;
    const bool takesOffset = transfersData && mode != DownloadMode::IMMEDIATE_ACTIVATION;
    const std::uint16_t sentBlocks = transfersData ? blocks : std::uint16_t{0};
    const std::uint64_t sentOffset = takesOffset ? offset : std::uint16_t{0};
    const std::uint64_t lba = sentOffset << 8U | static_cast<std::uint64_t>(sentBlocks >> 8U);
    return {"DOWNLOAD MICROCODE",
            {static_cast<std::uint8_t>(mode), static_cast<std::uint16_t>(sentBlocks & 0xFFU), lba,
             0, DOWNLOAD_MICROCODE, BITS_28},
            transfersData ? PIO_OUT : NON_DATA,
            sentBlocks * BLOCK_SIZE};
}

}  // namespace orvel::protocols::ata
