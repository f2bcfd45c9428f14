#include "interfaces/orveli/jobs/DipmJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/ata/IdentifyDevice.h"

namespace orvel::interfaces::orveli::jobs {

namespace ata = protocols::ata;
namespace identify_device = protocols::ata::identify_device;

DipmJob::DipmJob() : SettingJob(DIPM, Kind::ATA) {}

std::unique_ptr<Job> DipmJob::clone() const {
    return std::make_unique<DipmJob>();
}

core::Status DipmJob::set(core::Device& device, const core::Attribute& property) {
    requireName(property, features::dipm::DIPMEnabled());
    const bool isWanted = booleanOf(property);
    if (!identify_device::isReported(ata_access::identifyDevice(device),
                                     identify_device::word_78::DEVICE_INITIATED_POWER_MANAGEMENT))
        throw features::statuses::dipmNotSupported();

    const std::uint8_t subcommand =
        isWanted ? ata::set_features::ENABLE_SATA_FEATURE : ata::set_features::DISABLE_SATA_FEATURE;
    ata_access::send(
        device,
        ata::setFeatures(subcommand, ata::sata_feature::DEVICE_INITIATED_POWER_TRANSITIONS));
    const bool isEnabled =
        identify_device::isReported(ata_access::identifyDevice(device),
                                    identify_device::word_79::DEVICE_INITIATED_POWER_MANAGEMENT);
    if (isEnabled != isWanted) throw setting_writes::valueNotTaken();
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
