#include "interfaces/orveli/jobs/EnduranceEstimate.h"

#include "core/Strings.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/NvmeLogs.h"
#include "interfaces/orveli/jobs/SmartAttributes.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

using core::Device;
namespace attributes = orvel::features::device_attributes;
namespace norvo = protocols::norvo;
namespace statuses = orvel::features::statuses;

namespace {

constexpr std::uint64_t SHORTEST_MINUTES = 60;
constexpr double WHOLE_WEAR = 100.0 * 1024.0;
constexpr double MINUTES_PER_YEAR = 365.0 * 24.0 * 60.0;

TimedWorkload ofNvme(Device& device) {
    NvmeLogs logs(device);
    const core::Payload* page = logs.findVendorPage(norvo::log_pages::HEALTH_STATISTICS);
    if (page == nullptr) throw statuses::featureNotSupportedByDrive();
    const auto wear =
        protocols::readNumber(*page, norvo::health_statistics::TimedWorkloadMediaWear);
    return {wear == norvo::health_statistics::RESET_VALUE, wear,
            protocols::readNumber(*page, norvo::health_statistics::TimedWorkloadTimer)};
}

TimedWorkload ofSata(Device& device) {
    if (!device.isSet(attributes::Norvo())) throw statuses::featureNotSupportedByDrive();
    const auto all = readSmartAttributes(device);
    const SmartAttribute* wear =
        findAttribute(all, norvo::smart_attributes::TIMED_WORKLOAD_MEDIA_WEAR);
    const SmartAttribute* timer = findAttribute(all, norvo::smart_attributes::TIMED_WORKLOAD_TIMER);
    if (wear == nullptr || timer == nullptr) throw statuses::featureNotSupportedByDrive();
    return {wear->raw == norvo::smart_attributes::RESET_VALUE, wear->raw, timer->raw};
}

}  // namespace

std::string expectedLife(const TimedWorkload& workload) {
    if (workload.isReset || workload.minutes < SHORTEST_MINUTES)
        return statuses::workloadIndicatorsReset().getMessage();
    if (workload.mediaWear == 0) return statuses::workloadInducedNoWear().getMessage();
    const double minutesOfLife = static_cast<double>(workload.minutes) * WHOLE_WEAR /
                                 static_cast<double>(workload.mediaWear);
    return core::strings::toString(minutesOfLife / MINUTES_PER_YEAR, 0, 2) + " years";
}

TimedWorkload readTimedWorkload(Device& device) {
    return isNvme(device) ? ofNvme(device) : ofSata(device);
}

}  // namespace orvel::interfaces::orveli::jobs
