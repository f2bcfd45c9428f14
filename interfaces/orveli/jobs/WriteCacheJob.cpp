#include "interfaces/orveli/jobs/WriteCacheJob.h"

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/nvme/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Device;
namespace ata = protocols::ata;
namespace identify_device = protocols::ata::identify_device;
namespace nvme = protocols::nvme;
namespace properties = features::write_cache;
namespace sct = protocols::ata::sct;
namespace statuses = features::statuses;

namespace {

void requireWriteCache(Device& device) {
    if (!identify_device::isReported(ata_access::identifyDevice(device),
                                     identify_device::word_82::VOLATILE_WRITE_CACHE))
        throw statuses::writeCacheNotSupported();
}

void setBySetFeatures(Device& device, bool isWanted) {
    const ata::AtaCommand command =
        ata::setFeatures(isWanted ? ata::set_features::ENABLE_VOLATILE_WRITE_CACHE
                                  : ata::set_features::DISABLE_VOLATILE_WRITE_CACHE);
    // While the SCT feature decides, drives refuse, or agree and do nothing.
    const std::string words = properties::WriteCacheState().getName() + " may decide it.";
    setting_writes::explainRefusal([&] { ata_access::send(device, command); }, words);
    const bool isEnabled = identify_device::isReported(
        ata_access::identifyDevice(device), identify_device::word_85::VOLATILE_WRITE_CACHE);
    if (isEnabled != isWanted) throw core::withWords(setting_writes::valueNotTaken(), words);
}

void setByFeature(Device& device, bool isWanted) {
    const core::Payload controller = nvme_access::identify(device, nvme::cns::CONTROLLER);
    if (nvme::readBits(controller, nvme::identify_controller::VWC, nvme::vwc::PRESENT) == 0)
        throw statuses::writeCacheNotSupported();
    setting_writes::setAndCheck(
        device, {.feature = nvme::features::VOLATILE_WRITE_CACHE, .cdw11 = isWanted ? 1U : 0U});
}

}  // namespace

WriteCacheJob::WriteCacheJob() : SettingJob(WriteCache, Kind::ANY) {}

std::unique_ptr<Job> WriteCacheJob::clone() const {
    return std::make_unique<WriteCacheJob>();
}

core::Status WriteCacheJob::set(Device& device, const core::Attribute& property) {
    return isNvme(device) ? setOnNvme(device, property) : setOnAta(device, property);
}

core::Status WriteCacheJob::setOnNvme(Device& device, const core::Attribute& property) const {
    const bool isForAta = isNamed(property, properties::WriteCacheState()) ||
                          isNamed(property, properties::WriteCacheReorderingStateEnabled());
    if (isForAta) throw statuses::featureNotSupportedByDrive();
    requireName(property, properties::WriteCacheEnabled());
    setByFeature(device, booleanOf(property));
    return {};
}

core::Status WriteCacheJob::setOnAta(Device& device, const core::Attribute& property) const {
    if (isNamed(property, properties::WriteCacheEnabled())) {
        const bool isWanted = booleanOf(property);
        requireWriteCache(device);
        setBySetFeatures(device, isWanted);
        return {};
    }
    setting_writes::SctSetting setting{sct::Feature::WRITE_CACHE, 0};
    if (isNamed(property, properties::WriteCacheState())) {
        const Range states{sct::write_cache_state::BY_SET_FEATURES,
                           sct::write_cache_state::DISABLED};
        setting.state = static_cast<std::uint16_t>(
            numberOf(property, states, statuses::invalidWriteCacheState()));
    } else {
        requireName(property, properties::WriteCacheReorderingStateEnabled());
        setting.feature = sct::Feature::WRITE_CACHE_REORDERING;
        setting.state = booleanOf(property) ? sct::write_cache_reordering_state::ENABLED
                                            : sct::write_cache_reordering_state::DISABLED;
    }
    requireWriteCache(device);
    setting_writes::setAndCheck(device, setting, statuses::invalidSctFeatureControlCommand());
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
