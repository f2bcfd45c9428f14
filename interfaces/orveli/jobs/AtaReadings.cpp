#include "interfaces/orveli/jobs/AtaReadings.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Status;
namespace ata = protocols::ata;

void AtaReadings::note(const Status& status) {
    const bool isRefusal = status == core::statuses::ataCommandProblem() ||
                           status == orvel::features::statuses::smartNotEnabled();
    if (!isRefusal) throw status;
    if (refusal == Status()) refusal = status;
}

const std::vector<SmartAttribute>& AtaReadings::smartAttributes() {
    if (!attributes) {
        attributes.emplace();
        try {
            attributes = readSmartAttributes(device);
        } catch (const Status& status) {
            note(status);
        }
    }
    return *attributes;
}

const SmartAttribute* AtaReadings::find(std::uint8_t id) {
    return findAttribute(smartAttributes(), id);
}

std::optional<std::uint64_t> AtaReadings::findStatistic(std::uint8_t page,
                                                        const protocols::Field& row) {
    auto found = pages.find(page);
    if (found == pages.end()) {
        found = pages.emplace(page, core::Payload()).first;
        try {
            found->second =
                ata_access::readLog(device, ata::log_address::DEVICE_STATISTICS, page, 1);
        } catch (const Status& status) {
            note(status);
        }
    }
    if (found->second.size() < ata::BLOCK_SIZE) return std::nullopt;
    const ata::Statistic statistic = ata::readStatistic(found->second, row);
    if (!statistic.isValid()) return std::nullopt;
    return statistic.value;
}

void AtaReadings::explainNothing(const core::xml::XmlObject& drive) const {
    if (drive.getProperties().empty() && !(refusal == Status())) throw refusal;
}

}  // namespace orvel::interfaces::orveli::jobs
