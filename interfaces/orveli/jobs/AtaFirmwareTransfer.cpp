#include "interfaces/orveli/jobs/AtaFirmwareTransfer.h"

#include "core/CoreStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/TimeLimit.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/Structures.h"

#include <algorithm>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using core::Status;
using namespace protocols::ata;
namespace statuses = features::statuses;
namespace id = identify_device;

namespace {

constexpr std::int32_t SECONDS = 120;
constexpr DownloadMode DEFERRED = DownloadMode::OFFSETS_AND_DEFERRED_ACTIVATION;
constexpr DownloadMode IMMEDIATE = DownloadMode::OFFSETS_AND_IMMEDIATE_ACTIVATION;

/// Within words 234 and 235, of which a drive may tell neither.
std::uint32_t segmentBlocks(const Payload& identify) {
    constexpr std::uint32_t BY_DEFAULT = 64;
    constexpr std::uint32_t NOT_TOLD = 0xFFFF;
    const auto word = [&](const protocols::Field& field) {
        const auto blocks = static_cast<std::uint32_t>(readNumber(identify, field));
        return blocks == NOT_TOLD ? 0 : blocks;
    };
    const std::uint32_t least = word(id::MinimumDownloadBlocks);
    const std::uint32_t most = word(id::MaximumDownloadBlocks);
    const std::uint32_t blocks = std::max(BY_DEFAULT, least);
    return most == 0 ? blocks : std::min(blocks, most);
}

/// Which there may be, the better one first. Nothing tells of the deferred mode but the drive's
/// answer.
std::vector<DownloadMode> modesFor(const Payload& identify, const FirmwareModule& module) {
    if (!isReported(identify, id::word_119::DOWNLOAD_MICROCODE_MODE_3)) return {DEFERRED};
    if (module.activation == FirmwareModule::Activation::IMMEDIATE) return {IMMEDIATE, DEFERRED};
    return {DEFERRED, IMMEDIATE};
}

}  // namespace

std::string AtaFirmwareTransfer::requireReadiness() {
    const Payload identify = ata_access::identifyDevice(device);
    if (!isReported(identify, id::word_83::DOWNLOAD_MICROCODE))
        throw statuses::firmwareUpdateNeedsUpdateTool();
    if (isSet(identify, id::word_128::ENABLED)) throw statuses::ataSecurityEnabled();
    return readText(identify, id::FirmwareRevision);
}

FirmwareTransfer::Outcome AtaFirmwareTransfer::send(const FirmwareModule& module) {
    const TimeLimit limit(device, AtaCommand::COMMAND_SET, SECONDS);
    const Payload identify = ata_access::identifyDevice(device);
    const Payload& image = module.image;
    const Segments segments{(image.size() + BLOCK_SIZE - 1) / BLOCK_SIZE, segmentBlocks(identify)};
    if (segments.blocks > UINT16_MAX) throw failure("The image is too large for the drive.");
    const DownloadMode mode = sendFirst(image, segments, modesFor(identify, module));
    for (std::uint32_t offset = segments.each; offset < segments.blocks; offset += segments.each)
        sendSegment(image, segments, offset, mode);
    if (mode == DEFERRED) {
        if (module.activation == FirmwareModule::Activation::AT_RESET) return Outcome::AFTER_RESET;
        ata_access::send(device, downloadMicrocode(DownloadMode::ACTIVATE_DEFERRED, 0, 0));
    }
    requireRunning(readText(ata_access::identifyDevice(device), id::FirmwareRevision), module);
    return Outcome::NOW;
}

void AtaFirmwareTransfer::sendSegment(const Payload& image, const Segments& segments,
                                      std::uint32_t offset, DownloadMode mode) {
    const std::uint32_t blocks = std::min(segments.each, segments.blocks - offset);
    ata_access::send(device,
                     downloadMicrocode(mode, static_cast<std::uint16_t>(offset),
                                       static_cast<std::uint16_t>(blocks)),
                     pieceOf(image, offset * BLOCK_SIZE, blocks * BLOCK_SIZE));
    tellProgress(std::uint64_t{offset} + blocks, segments.blocks);
}

DownloadMode AtaFirmwareTransfer::sendFirst(const Payload& image, const Segments& segments,
                                            const std::vector<DownloadMode>& modes) {
    for (const DownloadMode mode : modes) {
        try {
            sendSegment(image, segments, 0, mode);
            return mode;
        } catch (const Status& status) {
            const bool isRefused = status == core::statuses::ataCommandProblem();
            if (!isRefused || mode == modes.back()) throw;
        }
    }
    throw statuses::firmwareUpdateFailed();
}

}  // namespace orvel::interfaces::orveli::jobs
