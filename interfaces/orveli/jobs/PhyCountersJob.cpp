#include "interfaces/orveli/jobs/PhyCountersJob.h"

#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/AtaLogReader.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/Checksum.h"
#include "protocols/ata/PhyEventCounters.h"

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

namespace ata = protocols::ata;

namespace {

/// The standard's words; with the identifier where these don't tell one counter from another.
std::string nameOf(const ata::PhyEventCounter& counter) {
    constexpr std::uint16_t RESERVED = 0x0FFF;
    constexpr std::uint16_t VENDOR_SPECIFIC = 0x8000;
    std::string words = ata::phyEventCounterName(counter.id);
    const bool isNamed = words != ata::phyEventCounterName(RESERVED) &&
                         words != ata::phyEventCounterName(VENDOR_SPECIFIC);
    if (isNamed) return words;
    return words + " 0x" + core::strings::toHexString(counter.id, 4);
}

}  // namespace

PhyCountersJob::PhyCountersJob() : DriveJob(jobs::PhyCounters, Kind::ATA, "PhyCounters") {}

std::unique_ptr<Job> PhyCountersJob::clone() const {
    return std::make_unique<PhyCountersJob>();
}

core::Status PhyCountersJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

core::Status PhyCountersJob::report(core::Device& device, core::xml::XmlObject& drive) {
    constexpr std::uint8_t LOG = ata::log_address::PHY_EVENT_COUNTERS;
    if (ata_logs::pagesAt(device, LOG) == 0)
        return features::statuses::featureNotSupportedByDrive();
    const core::Payload page = ata_access::readLog(device, LOG, 0, 1);
    if (!ata::isChecksumRight(page)) return features::statuses::dataRetrievalFailed();
    for (const auto& counter : ata::readPhyEventCounters(page))
        drive.addValue(nameOf(counter), core::strings::toString(counter.value));
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
