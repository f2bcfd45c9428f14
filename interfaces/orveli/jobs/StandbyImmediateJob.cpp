#include "interfaces/orveli/jobs/StandbyImmediateJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "interfaces/orveli/access/AtaAccess.h"

namespace orvel::interfaces::orveli::jobs {

using core::Status;

StandbyImmediateJob::StandbyImmediateJob()
    : DriveJob(StandbyImmediate, Kind::ATA, "Standby Immediate") {}

std::unique_ptr<Job> StandbyImmediateJob::clone() const {
    return std::make_unique<StandbyImmediateJob>();
}

Status StandbyImmediateJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status StandbyImmediateJob::report(core::Device& device, core::xml::XmlObject&) {
    try {
        ata_access::send(device, protocols::ata::standbyImmediate());
    } catch (const Status&) {
        return features::statuses::standbyImmediateFailed();
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
