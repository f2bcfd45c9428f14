#include "interfaces/orveli/jobs/AtaLogReader.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "protocols/Field.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/Logs.h"
#include "protocols/ata/Structures.h"

#include <algorithm>
#include <cstddef>

namespace orvel::interfaces::orveli::jobs::ata_logs {

namespace ata = protocols::ata;

namespace {

constexpr std::uint32_t LARGEST_PIECE = 128;  // 64 KiB
constexpr std::uint32_t LARGEST_LOG = 65536;
constexpr std::uint64_t DIRECTORY_VERSION = 1;

}  // namespace

std::uint16_t pagesAt(core::Device& device, std::uint8_t logAddress) {
    ata_access::requireGeneralPurposeLogs(device);
    if (logAddress == ata::log_address::DIRECTORY) return 1;
    const core::Payload directory = ata_access::readLog(device, ata::log_address::DIRECTORY, 0, 1);
    if (protocols::readNumber(directory, ata::log_directory::LoggingVersion) != DIRECTORY_VERSION)
        throw features::statuses::dataRetrievalFailed();
    return static_cast<std::uint16_t>(
        protocols::readNumber(directory, ata::generalPurposeLogPages(logAddress)));
}

core::Payload read(core::Device& device, std::uint8_t logAddress, std::uint32_t firstPage,
                   std::uint32_t pages) {
    if (firstPage > LARGEST_LOG || pages > LARGEST_LOG - firstPage)
        throw core::statuses::requestOutOfBounds();
    core::Payload log(pages * PAGE_SIZE);
    for (std::uint32_t done = 0; done < pages; done += LARGEST_PIECE) {
        const std::uint32_t count = std::min(LARGEST_PIECE, pages - done);
        const core::Payload piece =
            ata_access::readLog(device, logAddress, static_cast<std::uint16_t>(firstPage + done),
                                static_cast<std::uint16_t>(count));
        std::copy_n(piece.data(), count * PAGE_SIZE, log.data() + std::size_t{done} * PAGE_SIZE);
    }
    return log;
}

}  // namespace orvel::interfaces::orveli::jobs::ata_logs
