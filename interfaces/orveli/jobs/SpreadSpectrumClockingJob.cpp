#include "interfaces/orveli/jobs/SpreadSpectrumClockingJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

SpreadSpectrumClockingJob::SpreadSpectrumClockingJob()
    : SettingJob(SpreadSpectrumClocking, Kind::ATA) {}

std::unique_ptr<Job> SpreadSpectrumClockingJob::clone() const {
    return std::make_unique<SpreadSpectrumClockingJob>();
}

core::Status SpreadSpectrumClockingJob::set(core::Device& device, const core::Attribute& property) {
    requireName(property, features::spread_spectrum_clocking::SSCEnabled());
    const std::uint16_t state = booleanOf(property) ? 1 : 0;
    requireNorvo(device);
    setting_writes::set(device, {protocols::norvo::sct_features::SPREAD_SPECTRUM_CLOCKING, state},
                        features::statuses::invalidSctFeatureControlCommand());
    return successAfterPowerCycle();
}

}  // namespace orvel::interfaces::orveli::jobs
