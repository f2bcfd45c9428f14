// DOWNLOAD MICROCODE.
#include "protocols/ata/CommandCodes.h"
#include "simulator/AtaExecutors.h"
#include "simulator/FirmwareImage.h"

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

/// The parts of a download command, in units of 512 bytes.
struct Download {
    std::uint32_t offset;
    std::uint32_t blocks;
};

Download readDownload(const TaskFile& fields) {
    constexpr std::uint64_t BYTE = 0xFF;
    constexpr std::uint64_t WORD_MASK = 0xFFFF;
    return {static_cast<std::uint32_t>(fields.lba >> 8U & WORD_MASK),
            static_cast<std::uint32_t>(fields.count | (fields.lba & BYTE) << 8U)};
}

/// Words 234 and 235 say nothing if they are 0000h or FFFFh.
bool isAllowedSize(const AtaDrive& drive, std::uint32_t blocks) {
    constexpr std::uint64_t NOTHING = 0xFFFF;
    const auto least = readNumber(drive.identifyDevice, id::MinimumDownloadBlocks);
    const auto most = readNumber(drive.identifyDevice, id::MaximumDownloadBlocks);
    const bool isTooSmall = least != NOTHING && blocks < least;
    const bool isTooLarge = most != 0 && most != NOTHING && blocks > most;
    return !isTooSmall && !isTooLarge;
}

bool canActivate(const std::optional<FirmwareImageHeader>& header) {
    return header && header->length >= firmware_image::HEADER_SIZE;
}

AtaAnswer downloadWhole(AtaDrive& drive, const AtaRequest& request) {
    const Download download = readDownload(request.fields);
    const auto header = readFirmwareImageHeader(request.input);
    drive.downloadedMicrocode.clear();
    if (!canActivate(header) || request.input.size() / BLOCK_SIZE < download.blocks ||
        header->length > download.blocks * BLOCK_SIZE) {
        return aborted();
    }
    activateMicrocode(drive, header->revision);
    return {};
}

/// Pieces come in order; the one at the beginning starts anew.
bool addPiece(AtaDrive& drive, const Download& download, const core::Payload& input) {
    auto& pieces = drive.downloadedMicrocode;
    std::uint32_t expected = 0;
    if (download.offset == 0) pieces.clear();
    if (!pieces.empty()) {
        const core::Payload& last = pieces.rbegin()->second;
        expected = pieces.rbegin()->first + last.size() / BLOCK_SIZE;
    }
    if (download.blocks == 0 || download.offset != expected ||
        input.size() / BLOCK_SIZE < download.blocks) {
        return false;
    }
    const core::Payload piece(input.data(), download.blocks * BLOCK_SIZE);
    pieces.emplace(download.offset, piece);
    return canActivate(readFirmwareImageHeader(pieces.begin()->second));
}

AtaAnswer downloadPiece(AtaDrive& drive, const AtaRequest& request, bool isDeferred) {
    const Download download = readDownload(request.fields);
    auto& pieces = drive.downloadedMicrocode;
    if (!isAllowedSize(drive, download.blocks) || !addPiece(drive, download, request.input)) {
        pieces.clear();
        return aborted();
    }
    const auto header = readFirmwareImageHeader(pieces.begin()->second);
    const auto bytes = std::uint64_t{download.offset + download.blocks} * BLOCK_SIZE;
    if (bytes < header->length) return {.count = download_progress::MORE_EXPECTED};
    pieces.clear();
    if (isDeferred) {
        drive.deferredRevision = header->revision;
        return {.count = download_progress::DEFERRED};
    }
    activateMicrocode(drive, header->revision);
    return {.count = download_progress::APPLIED};
}

AtaAnswer activateDeferred(AtaDrive& drive) {
    if (drive.deferredRevision.empty()) return aborted();
    activateMicrocode(drive, drive.deferredRevision);
    return {};
}

}  // namespace

void activateMicrocode(AtaDrive& drive, const std::string& revision) {
    protocols::writeText(drive.identifyDevice, id::FirmwareRevision, revision);
    drive.deferredRevision.clear();
}

AtaAnswer executeDownloadMicrocode(AtaDrive& drive, const AtaRequest& request) {
    const auto mode = static_cast<DownloadMode>(request.fields.feature);
    if (mode == DownloadMode::IMMEDIATE_ACTIVATION) return downloadWhole(drive, request);
    if (!supports(drive, id::word_119::DOWNLOAD_MICROCODE_MODE_3)) return aborted();
    switch (mode) {
    case DownloadMode::OFFSETS_AND_IMMEDIATE_ACTIVATION:
        return downloadPiece(drive, request, false);
    case DownloadMode::OFFSETS_AND_DEFERRED_ACTIVATION:
        return downloadPiece(drive, request, true);
    case DownloadMode::ACTIVATE_DEFERRED:
        return activateDeferred(drive);
    default:
        return aborted();
    }
}

}  // namespace orvel::simulator
