#include "interfaces/orveli/jobs/PowerGovernorJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

namespace norvo = protocols::norvo;
namespace statuses = features::statuses;

PowerGovernorJob::PowerGovernorJob() : SettingJob(PowerGovernor, Kind::ANY) {}

std::unique_ptr<Job> PowerGovernorJob::clone() const {
    return std::make_unique<PowerGovernorJob>();
}

core::Status PowerGovernorJob::set(core::Device& device, const core::Attribute& property) {
    requireName(property, features::power_governor::PowerGovernorMode());
    const auto mode = numberOf(property, {0, 2}, statuses::invalidPowerMode());
    requireNorvo(device);
    if (isNvme(device)) {
        setting_writes::setAndCheck(device,
                                    {.feature = norvo::feature_ids::POWER_GOVERNOR, .cdw11 = mode});
    } else {
        setting_writes::setAndCheck(
            device, {norvo::sct_features::POWER_GOVERNOR, static_cast<std::uint16_t>(mode)},
            statuses::invalidSctFeatureControlCommand());
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
