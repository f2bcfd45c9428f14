#include "protocols/ata/AtaCommands.h"

#include "core/CoreStatuses.h"
#include "protocols/ata/CommandCodes.h"

namespace orvel::protocols::ata {

namespace {

constexpr unsigned MAX_PASSES = 16;
constexpr unsigned PASSES_MASK = 0xF;  // 16 passes are written as 0

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
            {feature, pages, SMART_KEY | logAddress, 0, command_codes::SMART, BITS_28},
            protocol,
            pages * BLOCK_SIZE};
}

AtaCommand sanitize(const char* name, std::uint16_t feature, std::uint16_t count,
                    std::uint64_t lba) {
    return {name, {feature, count, lba, 0, command_codes::SANITIZE_DEVICE, BITS_48}, NON_DATA, 0};
}

std::uint16_t failureModeBit(SanitizeFailureMode failureMode) {
    return failureMode == SanitizeFailureMode::STATUS_EXT_SUFFICES ? sanitize_count::FAILURE_MODE
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
    return {
        "SMART EXECUTE OFF-LINE IMMEDIATE",
        {smart_subcommands::EXECUTE_OFF_LINE_IMMEDIATE, 0, lba, 0, command_codes::SMART, BITS_28},
        NON_DATA,
        0};
}

AtaCommand smartReadLog(std::uint8_t logAddress, std::uint8_t pages) {
    return smartLog("SMART READ LOG", smart_subcommands::READ_LOG, PIO_IN, logAddress, pages);
}

AtaCommand smartWriteLog(std::uint8_t logAddress, std::uint8_t pages) {
    return smartLog("SMART WRITE LOG", smart_subcommands::WRITE_LOG, PIO_OUT, logAddress, pages);
}

AtaCommand readLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                      std::uint16_t feature) {
    return logExt("READ LOG EXT", command_codes::READ_LOG_EXT, PIO_IN, logAddress, firstPage, pages,
                  feature);
}

AtaCommand readLogDmaExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages,
                         std::uint16_t feature) {
    return logExt("READ LOG DMA EXT", command_codes::READ_LOG_DMA_EXT, Protocol::DMA_IN, logAddress,
                  firstPage, pages, feature);
}

AtaCommand writeLogExt(std::uint8_t logAddress, std::uint16_t firstPage, std::uint16_t pages) {
    return logExt("WRITE LOG EXT", command_codes::WRITE_LOG_EXT, PIO_OUT, logAddress, firstPage,
                  pages, 0);
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
    return {"SET FEATURES",
            {subcommand, count, 0, 0, command_codes::SET_FEATURES, BITS_28},
            NON_DATA,
            0};
}

AtaCommand setAccessibleMaxAddressExt(std::uint64_t maxAddress) {
    return {"SET ACCESSIBLE MAX ADDRESS EXT",
            {max_address_subcommands::SET_ACCESSIBLE, 0, checkedMaxAddress(maxAddress), LBA_DEVICE,
             command_codes::ACCESSIBLE_MAX_ADDRESS_CONFIGURATION, BITS_48},
            NON_DATA,
            0};
}

AtaCommand setMaxAddressExt(std::uint64_t maxAddress, MaxAddressLifetime lifetime) {
    const std::uint16_t count =
        lifetime == MaxAddressLifetime::OVER_POWER_OFF ? VALUE_VOLATILE : std::uint16_t{0};
    return {"SET MAX ADDRESS EXT",
            {0, count, checkedMaxAddress(maxAddress), LBA_DEVICE,
             command_codes::SET_MAX_ADDRESS_EXT, BITS_48},
            NON_DATA,
            0};
}

AtaCommand sanitizeStatusExt(SanitizeFailure failure) {
    return sanitize("SANITIZE STATUS EXT", sanitize_subcommands::STATUS_EXT,
                    failure == SanitizeFailure::CLEAR
                        ? sanitize_count::CLEAR_SANITIZE_OPERATION_FAILED
                        : std::uint16_t{0},
                    0);
}

AtaCommand cryptoScrambleExt(SanitizeFailureMode failureMode) {
    return sanitize("CRYPTO SCRAMBLE EXT", sanitize_subcommands::CRYPTO_SCRAMBLE_EXT,
                    failureModeBit(failureMode), sanitize_keys::CRYPTO_SCRAMBLE);
}

AtaCommand blockEraseExt(SanitizeFailureMode failureMode) {
    return sanitize("BLOCK ERASE EXT", sanitize_subcommands::BLOCK_ERASE_EXT,
                    failureModeBit(failureMode), sanitize_keys::BLOCK_ERASE);
}

AtaCommand overwriteExt(SanitizeFailureMode failureMode, std::uint32_t pattern, unsigned passes,
                        OverwritePattern passPattern) {
    if (passes < 1 || passes > MAX_PASSES) throw core::statuses::invalidArguments();
    const unsigned invert = passPattern == OverwritePattern::INVERTED_BETWEEN_PASSES
                                ? sanitize_count::INVERT_PATTERN
                                : 0U;
    const unsigned count = failureModeBit(failureMode) | invert | (passes & PASSES_MASK);
    return sanitize("OVERWRITE EXT", sanitize_subcommands::OVERWRITE_EXT,
                    static_cast<std::uint16_t>(count), sanitize_keys::OVERWRITE | pattern);
}

AtaCommand downloadMicrocode(DownloadMode mode, std::uint16_t offset, std::uint16_t blocks) {
    const bool transfersData = mode != DownloadMode::ACTIVATE_DEFERRED;
    const bool takesOffset = transfersData && mode != DownloadMode::IMMEDIATE_ACTIVATION;
    const std::uint16_t sentBlocks = transfersData ? blocks : std::uint16_t{0};
    const std::uint64_t sentOffset = takesOffset ? offset : std::uint16_t{0};
    const std::uint64_t lba = sentOffset << 8U | static_cast<std::uint64_t>(sentBlocks >> 8U);
    return {"DOWNLOAD MICROCODE",
            {static_cast<std::uint8_t>(mode), static_cast<std::uint16_t>(sentBlocks & 0xFFU), lba,
             0, command_codes::DOWNLOAD_MICROCODE, BITS_28},
            transfersData ? PIO_OUT : NON_DATA,
            sentBlocks * BLOCK_SIZE};
}

}  // namespace orvel::protocols::ata
