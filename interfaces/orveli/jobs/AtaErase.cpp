#include "interfaces/orveli/jobs/AtaErase.h"

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/TimeLimit.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/StatusCodes.h"
#include "protocols/ata/Structures.h"

#include <string>
#include <string_view>
#include <tuple>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::Status;
using namespace protocols::ata;
namespace statuses = orvel::features::statuses;
namespace id = identify_device;

namespace {

/// SECURITY ERASE UNIT wants a password. It is no secret, and always the same: should power fail in
/// between, the next erase opens the drive again, or somebody types it elsewhere.
constexpr std::string_view PASSWORD = "tavik";

Payload password() {
    return {PASSWORD.data(), static_cast<std::uint32_t>(PASSWORD.size())};
}

bool supportsSanitize(const Payload& identify) {
    return isSet(identify, id::word_59::SANITIZE);
}

bool isFrozen(const ReturnedTaskFile& sanitizeStatus) {
    return (sanitizeStatus.count & sanitize_status::FROZEN) != 0;
}

Status sanitizeRefusal(const ReturnedTaskFile& returned) {
    constexpr std::uint64_t REASON = 0xFF;
    constexpr std::uint16_t FROZEN_REASON = 0x03;
    const auto reason = static_cast<std::uint16_t>(returned.lba & REASON);
    if (reason == FROZEN_REASON) return statuses::sanitizeFrozen();
    return core::withWords(statuses::sanitizeFailed(),
                           statusText(StatusType::SANITIZE_ERROR, reason));
}

void requireSanitize(const Payload& identify, AtaErase::Sanitize method) {
    if (!supportsSanitize(identify)) throw statuses::sanitizeNotSupported();
    if (method == AtaErase::Sanitize::CRYPTO_SCRAMBLE &&
        !isSet(identify, id::word_59::CRYPTO_SCRAMBLE_EXT)) {
        throw statuses::sanitizeCryptoScrambleNotSupported();
    }
    if (method == AtaErase::Sanitize::BLOCK_ERASE &&
        !isSet(identify, id::word_59::BLOCK_ERASE_EXT)) {
        throw statuses::sanitizeBlockEraseNotSupported();
    }
}

void requireSecureErase(const Payload& identify, EraseMode mode) {
    if (!isSet(identify, id::word_128::SUPPORTED)) throw statuses::ataSecurityNotSupported();
    if (isSet(identify, id::word_128::FROZEN)) throw statuses::securityFrozen();
    if (mode == EraseMode::ENHANCED && !isSet(identify, id::word_128::ENHANCED_ERASE))
        throw core::withWords(statuses::invalidProperty(), "The drive has no enhanced erase mode.");
}

/// A locked drive refuses it, and says no reason.
void requireUnlocked(const Payload& identify) {
    if (isSet(identify, id::word_128::LOCKED))
        throw core::withWords(statuses::sanitizeFailed(), "The drive is security locked.");
}

/// Of a drive that had a password before the erase.
std::string passwordWords(const Payload& identify) {
    const std::string state = isSet(identify, id::word_128::LOCKED)
                                  ? "The drive is security locked."
                                  : "The drive has a user password already.";
    return state + " An erase with the password '" + std::string(PASSWORD) +
           "', which an interrupted erase leaves behind, failed. "
           "If the drive has another password, disable security with that first.";
}

/// Twice what the drive tells, at least an hour.
std::int32_t eraseSeconds(const Payload& identify, EraseMode mode) {
    constexpr int MARGIN = 2;
    constexpr int SECONDS_PER_UNIT = 120;
    constexpr int HOUR = 3600;
    const bool isNormal = mode == EraseMode::NORMAL;
    const bool isLongForm = isSet(identify, isNormal ? id::word_89::EXTENDED_TIME_REPORTED
                                                     : id::word_90::EXTENDED_TIME_REPORTED);
    const id::Bits& shortTime = isNormal ? id::word_89::TIME : id::word_90::TIME;
    const id::Bits& longTime = isNormal ? id::word_89::EXTENDED_TIME : id::word_90::EXTENDED_TIME;
    const int units = readBits(identify, isLongForm ? longTime : shortTime);
    return HOUR + MARGIN * SECONDS_PER_UNIT * units;
}

/// Whether the drive carried the command out; a drive that can't be reached did not.
bool isDone(core::Device& device, const AtaCommand& command, const Payload& input = {}) {
    try {
        return ata_access::ask(device, command, input).returned.isSuccess();
    } catch (const Status&) {
        return false;
    }
}

}  // namespace

AtaErase::AtaErase(core::Device& device, Pause pause, Progress progress)
    : device(device),
      pause(std::move(pause)),
      progress(std::move(progress)) {}

void AtaErase::eraseAnyWay() {
    const Payload identify = ata_access::identifyDevice(device);
    // Sanitize would work on such a drive. But somebody has locked it against being erased, and
    // whoever wants it erased is to take the lock off first.
    if (isSet(identify, id::word_128::FROZEN)) throw statuses::securityFrozen();
    const bool canSanitize = supportsSanitize(identify) &&
                             isSet(identify, id::word_59::BLOCK_ERASE_EXT) &&
                             !isSet(identify, id::word_128::LOCKED);
    const bool canSecureErase = isSet(identify, id::word_128::SUPPORTED);
    if (canSanitize && (!canSecureErase || !isFrozen(sanitizeStatus()))) {
        sanitize(Sanitize::BLOCK_ERASE);
    } else {
        secureErase(EraseMode::NORMAL);
    }
}

ReturnedTaskFile AtaErase::sanitizeStatus() {
    return ata_access::ask(device, sanitizeStatusExt(SanitizeFailure::KEEP)).returned;
}

void AtaErase::sanitize(Sanitize method) {
    const Payload identify = ata_access::identifyDevice(device);
    requireSanitize(identify, method);
    requireUnlocked(identify);
    if (isFrozen(sanitizeStatus())) throw statuses::sanitizeFrozen();
    // So that a failure can be cleared.
    constexpr auto MODE = SanitizeFailureMode::STATUS_EXT_SUFFICES;
    const auto answer = ata_access::ask(
        device, method == Sanitize::BLOCK_ERASE ? blockEraseExt(MODE) : cryptoScrambleExt(MODE));
    if (!answer.returned.isSuccess()) throw sanitizeRefusal(answer.returned);
    waitForSanitize();
}

void AtaErase::waitForSanitize() {
    constexpr std::chrono::milliseconds BETWEEN_LOOKS{500};
    constexpr int MAX_LOOKS = 4 * 60 * 60 * 2;
    constexpr std::uint64_t PARTS_MASK = sanitize_status::PROGRESS_PARTS - 1;
    constexpr std::uint64_t WHOLE = 100;
    for (int look = 0; look < MAX_LOOKS; ++look) {
        const ReturnedTaskFile now = sanitizeStatus();
        if (!now.isSuccess()) throw withoutSanitizeFailure(sanitizeRefusal(now));
        if ((now.count & sanitize_status::IN_PROGRESS) == 0) {
            if ((now.count & sanitize_status::COMPLETED_WITHOUT_ERROR) == 0)
                throw withoutSanitizeFailure(statuses::sanitizeFailed());
            return;
        }
        progress(static_cast<std::uint8_t>((now.lba & PARTS_MASK) * WHOLE /
                                           sanitize_status::PROGRESS_PARTS));
        pause(BETWEEN_LOOKS);
    }
    throw statuses::sanitizeFailedForUnknownReason();
}

Status AtaErase::withoutSanitizeFailure(const Status& failure) {
    std::ignore = isDone(device, sanitizeStatusExt(SanitizeFailure::CLEAR));
    return failure;
}

void AtaErase::secureErase(EraseMode mode) {
    const Payload identify = ata_access::identifyDevice(device);
    requireSecureErase(identify, mode);
    // A new password would take the place of the owner's, who needs it if the erase fails. But it
    // may be one that an erase has left behind.
    if (isSet(identify, id::word_128::ENABLED)) return eraseWithOldPassword(identify, mode);
    setPassword();
    const TimeLimit limit(device, AtaCommand::COMMAND_SET, eraseSeconds(identify, mode));
    prepareAndErase(mode);
}

void AtaErase::setPassword() {
    const auto data = userPasswordData(password(), MasterPasswordCapability::HIGH);
    try {
        if (ata_access::ask(device, securitySetPassword(), data).returned.isSuccess()) return;
    } catch (const Status& unanswered) {
        throw withoutPassword(unanswered);  // the drive may have taken it
    }
    throw statuses::securitySetPasswordFailed();
}

void AtaErase::eraseWithOldPassword(const Payload& identify, EraseMode mode) {
    const TimeLimit limit(device, AtaCommand::COMMAND_SET, eraseSeconds(identify, mode));
    if (!isDone(device, securityErasePrepare()))
        throw core::withWords(statuses::secureErasePrepareFailed(), passwordWords(identify));
    const auto data = eraseUnitData(PasswordKind::USER, password(), mode);
    if (!isDone(device, securityEraseUnit(), data))
        throw core::withWords(statuses::secureEraseUnitFailed(), passwordWords(identify));
}

/// The erase takes the password away. Where it fails, nobody is to be locked out.
void AtaErase::prepareAndErase(EraseMode mode) {
    sendWithPassword(securityErasePrepare(), {}, statuses::secureErasePrepareFailed());
    const auto data = eraseUnitData(PasswordKind::USER, password(), mode);
    sendWithPassword(securityEraseUnit(), data, statuses::secureEraseUnitFailed());
}

void AtaErase::sendWithPassword(const AtaCommand& command, const Payload& data,
                                const Status& refusal) {
    Status problem = refusal;
    try {
        if (ata_access::ask(device, command, data).returned.isSuccess()) return;
    } catch (const Status& unanswered) {
        problem = unanswered;
    }
    throw withoutPassword(problem);
}

Status AtaErase::withoutPassword(const Status& failure) {
    const auto data = disablePasswordData(PasswordKind::USER, password());
    if (isDone(device, securityDisablePassword(), data)) return failure;
    std::string kept = "may have kept";
    try {
        if (!isSet(ata_access::identifyDevice(device), id::word_128::ENABLED)) return failure;
        kept = "has kept";
    } catch (const Status&) {
        // Nobody can tell.
    }
    return core::withWords(failure, "The drive " + kept + " the user password '" +
                                        std::string(PASSWORD) + "', which was set for the erase.");
}

}  // namespace orvel::interfaces::orveli::jobs
