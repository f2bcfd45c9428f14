#include "interfaces/orveli/jobs/EnduranceAnalyzerJob.h"

#include "core/Strings.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Status;
namespace ata = protocols::ata;
namespace nvme = protocols::nvme;
namespace norvo = protocols::norvo;
namespace statuses = features::statuses;

namespace {

constexpr const char* RESET_WORD = "reset";
constexpr std::uint16_t RESET = 1;

bool resetNvme(Device& device) {
    const nvme::AdminCommand command =
        nvme::setFeatures({.feature = norvo::feature_ids::RESET_TIMED_WORKLOAD, .cdw11 = RESET});
    return nvme_access::ask(device, command).completion.isSuccess();
}

bool resetAta(Device& device) {
    // It is an order and no state that a drive might keep.
    const core::Payload request =
        ata::sct::setFeature(norvo::sct_features::RESET_TIMED_WORKLOAD, RESET,
                             ata::sct::FeatureLifetime::UNTIL_POWER_OFF);
    const ata::AtaCommand command = ata::sctCommand(ata::LogAccess::SMART);
    return ata_access::ask(device, command, request).returned.isSuccess();
}

}  // namespace

EnduranceAnalyzerJob::EnduranceAnalyzerJob() : SettingJob(EnduranceAnalyzer, Kind::ANY) {}

std::unique_ptr<Job> EnduranceAnalyzerJob::clone() const {
    return std::make_unique<EnduranceAnalyzerJob>();
}

Status EnduranceAnalyzerJob::set(Device& device, const core::Attribute& property) {
    const auto descriptor = features::endurance_analyzer::EnduranceAnalyzer();
    requireName(property, descriptor);
    if (!core::strings::equals(textOf(property), RESET_WORD, true)) {
        throw withWords(statuses::invalidProperty(),
                        descriptor.getName() + " can only be set to '" + RESET_WORD + "'.");
    }
    const bool isReset = isNvme(device) ? resetNvme(device) : resetAta(device);
    return isReset ? Status() : statuses::timedWorkloadResetFailed();
}

}  // namespace orvel::interfaces::orveli::jobs
