#include "interfaces/orveli/jobs/PhyConfigJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

namespace statuses = features::statuses;

PhyConfigJob::PhyConfigJob() : SettingJob(PhyConfig, Kind::ATA) {}

std::unique_ptr<Job> PhyConfigJob::clone() const {
    return std::make_unique<PhyConfigJob>();
}

core::Status PhyConfigJob::set(core::Device& device, const core::Attribute& property) {
    requireName(property, features::phy_config::PhyConfig());
    const auto config = numberOf(property, {0, 3}, statuses::invalidPhyConfig());
    requireNorvo(device);
    setting_writes::set(
        device, {protocols::norvo::sct_features::PHY_CONFIG, static_cast<std::uint16_t>(config)},
        statuses::invalidPhyConfigSettings());
    return successAfterPowerCycle();
}

}  // namespace orvel::interfaces::orveli::jobs
