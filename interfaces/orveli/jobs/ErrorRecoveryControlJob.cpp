#include "interfaces/orveli/jobs/ErrorRecoveryControlJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/ata/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Device;
namespace ata = protocols::ata;
namespace properties = features::error_recovery_control;
namespace statuses = features::statuses;

namespace {

ata::sct::RecoveryTimer timerOf(const Attribute& property) {
    if (isNamed(property, properties::ReadErrorRecoveryTimer()))
        return ata::sct::RecoveryTimer::READ;
    requireName(property, properties::WriteErrorRecoveryTimer());
    return ata::sct::RecoveryTimer::WRITE;
}

/// In units of 100 ms.
std::uint64_t shortestTime(Device& device) {
    return protocols::readNumber(ata_access::sctStatus(device), ata::sct_status::MinErcTimeLimit);
}

}  // namespace

ErrorRecoveryControlJob::ErrorRecoveryControlJob() : SettingJob(ErrorRecoveryControl, Kind::ATA) {}

std::unique_ptr<Job> ErrorRecoveryControlJob::clone() const {
    return std::make_unique<ErrorRecoveryControlJob>();
}

core::Status ErrorRecoveryControlJob::set(Device& device, const Attribute& property) {
    const ata::sct::RecoveryTimer timer = timerOf(property);
    const auto number = numberOf(property, {0, UINT16_MAX}, statuses::invalidErrorRecoveryTimer());
    const auto time = static_cast<std::uint16_t>(number);
    ata_access::requireSct(device, ata::identify_device::word_206::ERROR_RECOVERY_CONTROL);
    const bool isTooShort = time != 0 && time < shortestTime(device);
    if (isTooShort) throw statuses::invalidErrorRecoveryTimer();

    const auto answer = ata_access::askSct(device, ata::sct::setRecoveryTime(timer, time));
    if (!answer.returned.isSuccess()) throw statuses::invalidErrorRecoveryTimer();
    const auto check = ata_access::sct(device, ata::sct::returnRecoveryTime(timer));
    if (ata::sct::returnedValue(check.returned) != time) throw setting_writes::valueNotTaken();
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
