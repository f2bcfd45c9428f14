#include "interfaces/orveli/jobs/NvmeLogReader.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>

namespace orvel::interfaces::orveli::jobs {

namespace nvme = protocols::nvme;

namespace {

constexpr std::uint32_t PAGE = 4096;
constexpr std::uint32_t LARGEST_EXPONENT = 5;  // a drive's limit beyond 128 KiB isn't made use of
constexpr std::uint32_t LARGEST_SHORT_LENGTH = 4096 * 4;  // twelve bits of dwords, zeroes based

/// Without extended data the upper part of a page's length and its offset are reserved.
bool hasExtendedData(const core::Payload& controller) {
    return nvme::readBits(controller, nvme::identify_controller::LPA, nvme::lpa::EXTENDED_DATA) !=
           0;
}

std::uint32_t largestPieceOf(const core::Payload& controller) {
    const auto exponent = static_cast<std::uint32_t>(
        protocols::readNumber(controller, nvme::identify_controller::MDTS));
    const bool hasLimit = exponent != 0;
    const std::uint32_t limit =
        PAGE << (hasLimit ? std::min(exponent, LARGEST_EXPONENT) : LARGEST_EXPONENT);
    return hasExtendedData(controller) ? limit : std::min(limit, LARGEST_SHORT_LENGTH);
}

core::Payload readPiece(core::Device& device, const nvme::LogPageRequest& piece) {
    const auto command = nvme::getLogPage(piece);
    const auto answer = nvme_access::ask(device, command);
    const auto& status = answer.completion.status;
    if (status == nvme::status_codes::INVALID_LOG_PAGE)
        throw features::statuses::featureNotSupportedByDrive();
    if (!answer.completion.isSuccess()) throw nvme_access::refusal(command, status);
    if (answer.data.size() < piece.bytes) throw core::statuses::ioCommandReturnedTooLittleData();
    return answer.data;
}

}  // namespace

NvmeLogReader::NvmeLogReader(core::Device& device)
    : device(device),
      controller(nvme_access::identify(device, nvme::cns::CONTROLLER)),
      hasOffsets(hasExtendedData(controller)),
      largestPiece(largestPieceOf(controller)) {}

core::Payload NvmeLogReader::read(const nvme::LogPageRequest& request) const {
    const bool isReadable = hasOffsets || (request.offset == 0 && canRead(request.bytes));
    if (!isReadable) throw features::statuses::featureNotSupportedByDrive();
    core::Payload page(request.bytes);
    nvme::LogPageRequest piece = request;
    for (std::uint32_t done = 0; done < request.bytes; done += piece.bytes) {
        piece.offset = request.offset + done;
        piece.bytes = std::min(largestPiece, request.bytes - done);
        std::copy_n(readPiece(device, piece).data(), piece.bytes, page.data() + done);
    }
    return page;
}

}  // namespace orvel::interfaces::orveli::jobs
