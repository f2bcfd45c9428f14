#include "interfaces/orveli/jobs/GplJob.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/AtaLogReader.h"

#include <cstdint>
#include <limits>

namespace orvel::interfaces::orveli::jobs {

GplJob::GplJob() : DriveJob(jobs::GPL, Kind::ATA, "gpl") {}

std::unique_ptr<Job> GplJob::clone() const {
    return std::make_unique<GplJob>();
}

core::Status GplJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status GplJob::report(core::Device& device, core::xml::XmlObject& drive) {
    constexpr std::uint64_t LARGEST_ADDRESS = std::numeric_limits<std::uint8_t>::max();
    const auto address = findNumber(features::gpl::LogAddress());
    if (!address || *address > LARGEST_ADDRESS) return features::statuses::invalidLogId();
    const std::uint64_t first = findNumber(features::gpl::PageNum()).value_or(0);
    const std::uint64_t count = findNumber(features::gpl::SectorCount()).value_or(1);

    const auto logAddress = static_cast<std::uint8_t>(*address);
    const std::uint64_t pages = ata_logs::pagesAt(device, logAddress);
    if (pages == 0) return features::statuses::invalidLogId();
    const bool isInside = count != 0 && first < pages && count <= pages - first;
    if (!isInside) return core::statuses::requestOutOfBounds();
    addPayload(drive, ata_logs::read(device, logAddress, static_cast<std::uint32_t>(first),
                                     static_cast<std::uint32_t>(count)));
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
