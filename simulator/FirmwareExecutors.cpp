// Firmware Image Download and Firmware Commit.
#include "simulator/NvmeExecutors.h"

#include <algorithm>
#include <optional>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace ic = identify_controller;

void activateFirmware(NvmeDrive& drive, std::uint8_t slot) {
    drive.activeSlot = slot;
    drive.nextSlot = 0;
    const std::string& revision = drive.firmwareRevisions.at(slot - 1U);
    // A drive record without revisions keeps what Identify Controller says.
    if (!revision.empty()) protocols::writeText(drive.identifyController, ic::FR, revision);
}

namespace {

constexpr std::uint64_t DWORD = 4;

/// Whether offset and length are such as the drive takes.
bool hasGranularity(const NvmeDrive& drive, std::uint64_t offset, std::uint64_t bytes) {
    constexpr std::uint64_t UNIT = 4096;
    constexpr std::uint64_t NO_RESTRICTION = 0xFF;
    const auto granularity = protocols::readNumber(drive.identifyController, ic::FWUG);
    if (granularity == 0 || granularity == NO_RESTRICTION) return true;
    return offset % (granularity * UNIT) == 0 && bytes % (granularity * UNIT) == 0;
}

bool overlaps(const NvmeDrive& drive, std::uint64_t offset, std::uint64_t bytes) {
    return std::ranges::any_of(drive.downloadedImage, [&](const auto& one) {
        const auto& [start, piece] = one;
        const core::Payload& content = piece;
        return offset < start + content.size() && start < offset + bytes;
    });
}

/// All pieces in their order; nothing if one is missing in between.
std::optional<core::Payload> joinedImage(const NvmeDrive& drive) {
    std::uint64_t expected = 0;
    for (const auto& [offset, piece] : drive.downloadedImage) {
        const core::Payload& content = piece;
        if (offset != expected) return {};
        expected += content.size();
    }
    if (expected > UINT32_MAX) return {};
    core::Payload image(static_cast<std::uint32_t>(expected));
    for (const auto& [offset, piece] : drive.downloadedImage) {
        const core::Payload& content = piece;
        std::copy_n(content.data(), content.size(), image.data() + offset);
    }
    return image;
}

/// The revision of the downloaded image; nothing if it isn't one. It may be followed by filling.
std::optional<std::string> revisionOfImage(const NvmeDrive& drive) {
    const auto image = joinedImage(drive);
    if (!image) return {};
    const auto header = readFirmwareImageHeader(*image);
    if (!header || header->length > image->size()) return {};
    return header->revision;
}

std::uint8_t numberOfSlots(const NvmeDrive& drive) {
    return static_cast<std::uint8_t>(
        readBits(drive.identifyController, ic::FRMW, frmw::NUMBER_OF_SLOTS));
}

bool isReadOnly(const NvmeDrive& drive, std::uint8_t slot) {
    return slot == 1 && supports(drive, ic::FRMW, frmw::SLOT_1_READ_ONLY);
}

/// The drive's own choice: rather a slot that isn't running.
std::uint8_t chooseSlot(const NvmeDrive& drive, bool replaces) {
    std::uint8_t choice = drive.activeSlot;
    for (std::uint8_t slot = numberOfSlots(drive); slot > 0; --slot) {
        const bool isPossible =
            replaces ? !isReadOnly(drive, slot) : !drive.firmwareRevisions.at(slot - 1U).empty();
        if (slot != drive.activeSlot && isPossible) choice = slot;
    }
    return choice;
}

StatusCode statusOfActivationAtReset(const NvmeDrive& drive) {
    switch (drive.firmwareActivation) {
    case FirmwareActivation::CONVENTIONAL_RESET:
        return status_codes::FIRMWARE_REQUIRES_CONVENTIONAL_RESET;
    case FirmwareActivation::NVM_SUBSYSTEM_RESET:
        return status_codes::FIRMWARE_REQUIRES_NVM_SUBSYSTEM_RESET;
    default:
        return {};
    }
}

/// Now, if the drive can do that.
StatusCode activate(NvmeDrive& drive, std::uint8_t slot, std::uint32_t action) {
    const bool isNow = action == commit_action::ACTIVATE_IMMEDIATELY;
    const StatusCode status = statusOfActivationAtReset(drive);
    if (isNow && status == status_codes::SUCCESSFUL_COMPLETION &&
        supports(drive, ic::FRMW, frmw::ACTIVATION_WITHOUT_RESET)) {
        activateFirmware(drive, slot);
        return {};
    }
    drive.nextSlot = slot;
    return isNow && status == status_codes::SUCCESSFUL_COMPLETION
               ? status_codes::FIRMWARE_REQUIRES_CONTROLLER_LEVEL_RESET
               : status;
}

/// Puts the downloaded image into the slot. Whatever comes of it, the next image starts anew.
StatusCode replace(NvmeDrive& drive, std::uint8_t slot) {
    const auto revision = revisionOfImage(drive);
    drive.downloadedImage.clear();
    if (!revision) return status_codes::INVALID_FIRMWARE_IMAGE;
    drive.firmwareRevisions.at(slot - 1U) = *revision;
    return {};
}

}  // namespace

NvmeAnswer executeFirmwareDownload(NvmeDrive& drive, const NvmeRequest& request) {
    const std::uint64_t offset = request.fields.cdw11 * DWORD;
    const std::uint64_t bytes = firmwareImageBytes(request.fields);
    if (request.input.size() < bytes) return refusal(status_codes::DATA_TRANSFER_ERROR);
    if (!hasGranularity(drive, offset, bytes)) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    // Somebody who was stopped in the middle begins again.
    if (offset == 0 && drive.downloadedImage.contains(0)) drive.downloadedImage.clear();
    if (overlaps(drive, offset, bytes)) return refusal(status_codes::OVERLAPPING_RANGE);
    const core::Payload piece(request.input.data(), static_cast<std::uint32_t>(bytes));
    drive.downloadedImage.emplace(offset, piece);
    return {};
}

NvmeAnswer executeFirmwareCommit(NvmeDrive& drive, const NvmeRequest& request) {
    const std::uint32_t action = readBits(request.fields.cdw10, firmware_commit_cdw10::CA);
    if (action > commit_action::ACTIVATE_IMMEDIATELY) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    // Immediate activation takes what has been downloaded, or else what the slot has.
    const bool replaces =
        action == commit_action::REPLACE ||
        action == commit_action::REPLACE_AND_ACTIVATE_AT_RESET ||
        (action == commit_action::ACTIVATE_IMMEDIATELY && !drive.downloadedImage.empty());
    auto slot =
        static_cast<std::uint8_t>(readBits(request.fields.cdw10, firmware_commit_cdw10::FS));
    if (slot == 0) slot = chooseSlot(drive, replaces);
    if (slot > numberOfSlots(drive) || (replaces && isReadOnly(drive, slot))) {
        return refusal(status_codes::INVALID_FIRMWARE_SLOT);
    }

    if (replaces) {
        const StatusCode status = replace(drive, slot);
        if (status != status_codes::SUCCESSFUL_COMPLETION) return refusal(status);
    } else if (drive.firmwareRevisions.at(slot - 1U).empty()) {
        return refusal(status_codes::INVALID_FIRMWARE_IMAGE);
    }
    if (action == commit_action::REPLACE) return {};
    NvmeAnswer answer;
    answer.status = activate(drive, slot, action);
    return answer;
}

}  // namespace orvel::simulator
