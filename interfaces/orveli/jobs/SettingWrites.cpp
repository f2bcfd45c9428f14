#include "interfaces/orveli/jobs/SettingWrites.h"

#include "core/CoreStatuses.h"
#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/SettingJob.h"
#include "protocols/nvme/Structures.h"

namespace orvel::interfaces::orveli::jobs::setting_writes {

using core::Device;
using core::Status;
namespace ata = protocols::ata;
namespace nvme = protocols::nvme;

namespace {

/// Supported Capabilities of Get Features (NVM Express Base Specification 1.4, section 5.13).
constexpr nvme::BitField SAVEABLE{"SAVEABLE", "the feature is saveable", 0, 1};

/// Vendors' features are no exception, so a drive that doesn't tell can't save.
bool canSave(Device& device, std::uint8_t feature) {
    namespace ic = nvme::identify_controller;
    const core::Payload controller = nvme_access::identify(device, nvme::cns::CONTROLLER);
    if (nvme::readBits(controller, ic::ONCS, nvme::oncs::SAVE_AND_SELECT) == 0) return false;
    const auto answer = nvme_access::ask(
        device, nvme::getFeatures(
                    {.feature = feature, .select = nvme::feature_select::SUPPORTED_CAPABILITIES}));
    return answer.completion.isSuccess() && nvme::readBits(answer.completion.dword0, SAVEABLE) != 0;
}

}  // namespace

void set(Device& device, const SctSetting& setting, const Status& refusal) {
    ata_access::requireSct(device, ata::identify_device::word_206::FEATURE_CONTROL);
    const core::Payload request = ata::sct::setFeature(setting.feature, setting.state,
                                                       ata::sct::FeatureLifetime::OVER_POWER_OFF);
    const auto answer = ata_access::askSct(device, request);
    if (!answer.returned.isSuccess()) throw refusal;
}

void setAndCheck(Device& device, const SctSetting& setting, const Status& refusal) {
    set(device, setting, refusal);
    if (ata_access::sctFeature(device, setting.feature) != setting.state) throw valueNotTaken();
}

void set(Device& device, nvme::FeatureChange change) {
    change.save = canSave(device, change.feature);
    nvme_access::send(device, nvme::setFeatures(change));
}

void setAndCheck(Device& device, const nvme::FeatureChange& change) {
    set(device, change);
    const std::uint32_t value = nvme_access::feature(device, {.feature = change.feature});
    if (value != change.cdw11) throw valueNotTaken();
}

void explainRefusal(const std::function<void()>& send, const std::string& words) {
    try {
        send();
    } catch (const Status& status) {
        const bool isRefusal = status == core::statuses::ataCommandProblem() ||
                               status == core::statuses::nvmeCommandProblem();
        if (!isRefusal) throw;
        throw core::withWords(status, words);
    }
}

Status valueNotTaken() {
    return core::withWords(features::statuses::configurationUpdateFailed(),
                           "The drive kept another value.");
}

}  // namespace orvel::interfaces::orveli::jobs::setting_writes
