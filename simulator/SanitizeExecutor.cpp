// The sanitize commands of SATA drives.
#include "protocols/ata/CommandCodes.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

/// LBA (7:0) of a refusal: ACS-4, table "Sanitize Device error reason".
namespace reasons {
constexpr std::uint64_t NOT_REPORTED = 0x00;
constexpr std::uint64_t UNSUCCESSFUL = 0x01;
constexpr std::uint64_t INVALID_FEATURE = 0x02;
constexpr std::uint64_t FROZEN = 0x03;
constexpr std::uint64_t ANTIFREEZE = 0x04;
}  // namespace reasons

AtaAnswer refusedFor(std::uint64_t reason) {
    AtaAnswer answer = aborted();
    answer.lba = reason;
    return answer;
}

/// Operations are over when their command comes back, so none is ever in progress.
AtaAnswer status(const AtaSanitize& sanitize) {
    constexpr std::uint64_t NO_PROGRESS = 0xFFFF;
    unsigned count = 0;
    if (sanitize.hasCompleted) count |= sanitize_status::COMPLETED_WITHOUT_ERROR;
    if (sanitize.isFrozen) count |= sanitize_status::FROZEN;
    if (sanitize.isAntifrozen) count |= sanitize_status::ANTIFREEZE;
    return {.count = static_cast<std::uint16_t>(count), .lba = NO_PROGRESS};
}

AtaAnswer reportStatus(AtaDrive& drive, const TaskFile& fields) {
    AtaSanitize& sanitize = drive.sanitize;
    const bool clears = (fields.count & sanitize_count::CLEAR_SANITIZE_OPERATION_FAILED) != 0;
    if (clears && sanitize.isFailureClearable) sanitize.hasFailed = false;
    return sanitize.hasFailed ? refusedFor(reasons::UNSUCCESSFUL) : status(sanitize);
}

/// What a subcommand needs: its key in the upper part of the LBA, and the drive's capability.
struct SanitizeRow {
    std::uint16_t subcommand;
    std::uint64_t keyMask;
    std::uint64_t key;
    const id::Bits& capability;
};

constexpr std::uint64_t WHOLE_LBA = 0xFFFFFFFFFFFF;
constexpr std::uint64_t ABOVE_PATTERN = 0xFFFF00000000;

// clang-format off
constexpr SanitizeRow ERASES[] = {
    {sanitize_subcommands::CRYPTO_SCRAMBLE_EXT, WHOLE_LBA,     sanitize_keys::CRYPTO_SCRAMBLE, id::word_59::CRYPTO_SCRAMBLE_EXT},
    {sanitize_subcommands::BLOCK_ERASE_EXT,     WHOLE_LBA,     sanitize_keys::BLOCK_ERASE,     id::word_59::BLOCK_ERASE_EXT},
    {sanitize_subcommands::OVERWRITE_EXT,       ABOVE_PATTERN, sanitize_keys::OVERWRITE,       id::word_59::OVERWRITE_EXT},
};

// clang-format on

AtaAnswer erase(AtaDrive& drive, const AtaRequest& request) {
    const TaskFile& fields = request.fields;
    const auto* const row = std::ranges::find(ERASES, fields.feature, &SanitizeRow::subcommand);
    if (row == std::end(ERASES) || !supports(drive, row->capability)) {
        return refusedFor(reasons::INVALID_FEATURE);
    }
    if (drive.sanitize.isFrozen) return refusedFor(reasons::FROZEN);
    if (drive.security.isLocked || (fields.lba & row->keyMask) != row->key) {
        return refusedFor(reasons::NOT_REPORTED);
    }
    eraseUserData(drive, request.now);
    drive.sanitize.hasCompleted = true;
    drive.sanitize.hasFailed = false;
    drive.sanitize.isFailureClearable = false;
    return status(drive.sanitize);
}

AtaAnswer freeze(AtaDrive& drive, const TaskFile& fields) {
    AtaSanitize& sanitize = drive.sanitize;
    if (sanitize.isAntifrozen) return refusedFor(reasons::ANTIFREEZE);
    if (sanitize.hasFailed || fields.lba != sanitize_keys::FREEZE_LOCK) {
        return refusedFor(reasons::NOT_REPORTED);
    }
    sanitize.isFrozen = true;
    return status(sanitize);
}

AtaAnswer antifreeze(AtaDrive& drive, const TaskFile& fields) {
    AtaSanitize& sanitize = drive.sanitize;
    if (!supports(drive, id::word_59::SANITIZE_ANTIFREEZE_LOCK_EXT)) {
        return refusedFor(reasons::INVALID_FEATURE);
    }
    if (sanitize.isFrozen) return refusedFor(reasons::FROZEN);
    if (sanitize.hasFailed || fields.lba != sanitize_keys::ANTIFREEZE_LOCK) {
        return refusedFor(reasons::NOT_REPORTED);
    }
    sanitize.isAntifrozen = true;
    return status(sanitize);
}

}  // namespace

void eraseUserData(AtaDrive& drive, std::chrono::milliseconds now) {
    abortSelfTest(drive, ata_self_test_results::ABORTED_BY_HOST, now);
    drive.isInStandby = false;
    ++drive.eraseCount;
}

AtaAnswer executeSanitize(AtaDrive& drive, const AtaRequest& request) {
    switch (request.fields.feature) {
    case sanitize_subcommands::STATUS_EXT:
        return reportStatus(drive, request.fields);
    case sanitize_subcommands::FREEZE_LOCK_EXT:
        return freeze(drive, request.fields);
    case sanitize_subcommands::ANTIFREEZE_LOCK_EXT:
        return antifreeze(drive, request.fields);
    default:
        return erase(drive, request);
    }
}

}  // namespace orvel::simulator
