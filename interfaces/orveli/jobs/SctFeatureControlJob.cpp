#include "interfaces/orveli/jobs/SctFeatureControlJob.h"

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
namespace properties = features::sct_feature_control;
namespace sct = protocols::ata::sct;
namespace sct_features = protocols::norvo::sct_features;
namespace statuses = features::statuses;

namespace {

constexpr Range SECTOR_SIZES{512, 4096};

core::Status invalidInterval(const Attribute& property) {
    return core::withWords(statuses::invalidProperty(),
                           property.getName() + " must be 1 to 65535 minutes.");
}

}  // namespace

SctFeatureControlJob::SctFeatureControlJob() : SettingJob(SCTFeatureControl, Kind::ATA) {}

std::unique_ptr<Job> SctFeatureControlJob::clone() const {
    return std::make_unique<SctFeatureControlJob>();
}

core::Status SctFeatureControlJob::set(core::Device& device, const Attribute& property) {
    sct::Feature feature{};
    std::uint32_t state = 0;
    if (isNamed(property, properties::PhysicalSectorSize())) {
        feature = sct_features::PHYSICAL_SECTOR_SIZE;
        state = numberOf(property, SECTOR_SIZES, statuses::invalidSectorSize());
        const bool isSize = state == SECTOR_SIZES.lowest || state == SECTOR_SIZES.highest;
        if (!isSize) throw statuses::invalidSectorSize();
        requireNorvo(device);
    } else if (isNamed(property, properties::PLITestTimeInterval())) {
        feature = sct_features::PLI_TEST_TIME_INTERVAL;
        state = numberOf(property, {0, 6}, statuses::invalidPliTestTimeInterval());
        requireNorvo(device);
    } else {
        requireName(property, properties::TemperatureLoggingInterval());
        feature = sct::Feature::TEMPERATURE_LOGGING_INTERVAL;
        state = numberOf(property, {1, UINT16_MAX}, invalidInterval(property));
    }
    setting_writes::setAndCheck(device, {feature, static_cast<std::uint16_t>(state)},
                                statuses::invalidSctFeatureControlCommand());
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
