#include "interfaces/orveli/jobs/NvmeFirmwareTransfer.h"

#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/TimeLimit.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using namespace protocols::nvme;
namespace ic = identify_controller;

namespace {

constexpr std::int32_t SECONDS = 120;
constexpr std::uint32_t DWORD = 4;

bool needsReset(const StatusCode& status) {
    return status == status_codes::FIRMWARE_REQUIRES_CONVENTIONAL_RESET ||
           status == status_codes::FIRMWARE_REQUIRES_NVM_SUBSYSTEM_RESET ||
           status == status_codes::FIRMWARE_REQUIRES_CONTROLLER_LEVEL_RESET;
}

/// Slot 0 leaves the choice to the drive; one that doesn't make it gets the first that it can
/// write.
StatusCode sendCommit(Device& device, const Payload& controller, std::uint8_t action) {
    const auto status = nvme_access::ask(device, firmwareCommit(0, action)).completion.status;
    if (!(status == status_codes::INVALID_FIRMWARE_SLOT)) return status;
    const std::uint8_t slot = has(controller, ic::FRMW, frmw::SLOT_1_READ_ONLY) ? 2 : 1;
    return nvme_access::ask(device, firmwareCommit(slot, action)).completion.status;
}

}  // namespace

std::string NvmeFirmwareTransfer::requireReadiness() {
    const Payload controller = nvme_access::identify(device, cns::CONTROLLER);
    if (!has(controller, ic::OACS, oacs::FIRMWARE))
        throw orvel::features::statuses::firmwareUpdateNeedsUpdateTool();
    return protocols::readText(controller, ic::FR);
}

FirmwareTransfer::Outcome NvmeFirmwareTransfer::send(const FirmwareModule& module) {
    const TimeLimit limit(device, ADMIN_COMMAND_SET, SECONDS);
    const Payload controller = nvme_access::identify(device, cns::CONTROLLER);
    download(controller, module.image);
    return commit(controller, module);
}

void NvmeFirmwareTransfer::download(const Payload& controller, const Payload& image) {
    constexpr std::uint32_t UNIT = 4096;
    constexpr std::uint32_t NO_RESTRICTION = 0xFF;
    const auto granularity = static_cast<std::uint32_t>(readNumber(controller, ic::FWUG));
    const bool isRestricted = granularity != 0 && granularity != NO_RESTRICTION;
    const std::uint32_t segment = isRestricted ? granularity * UNIT : UNIT;
    // The last piece is filled up, too, so that the drive takes it.
    const std::uint32_t alignment = isRestricted ? segment : DWORD;
    for (std::uint32_t offset = 0; offset < image.size(); offset += segment) {
        const std::uint32_t rest = (image.size() - offset + alignment - 1) / alignment * alignment;
        const std::uint32_t bytes = std::min(segment, rest);
        nvme_access::send(device, firmwareImageDownload(offset / DWORD, bytes),
                          pieceOf(image, offset, bytes));
        tellProgress(std::uint64_t{offset} + bytes, image.size());
    }
}

FirmwareTransfer::Outcome NvmeFirmwareTransfer::commit(const Payload& controller,
                                                       const FirmwareModule& module) {
    const bool isNow = module.activation == FirmwareModule::Activation::IMMEDIATE &&
                       has(controller, ic::FRMW, frmw::ACTIVATION_WITHOUT_RESET);
    const std::uint8_t atReset = commit_action::REPLACE_AND_ACTIVATE_AT_RESET;
    auto status =
        sendCommit(device, controller, isNow ? commit_action::ACTIVATE_IMMEDIATELY : atReset);
    const bool isTooSlow = status == status_codes::FIRMWARE_REQUIRES_MAXIMUM_TIME_VIOLATION;
    if (isTooSlow) status = sendCommit(device, controller, atReset);
    if (needsReset(status)) return Outcome::AFTER_RESET;
    if (!(status == status_codes::SUCCESSFUL_COMPLETION))
        throw failure(firmwareCommit(0, atReset).getName() + ": " + statusText(status) + ".");
    if (!isNow || isTooSlow) return Outcome::AFTER_RESET;
    requireRunning(protocols::readText(nvme_access::identify(device, cns::CONTROLLER), ic::FR),
                   module);
    return Outcome::NOW;
}

}  // namespace orvel::interfaces::orveli::jobs
