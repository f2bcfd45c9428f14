#include "interfaces/orveli/jobs/NlogJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

namespace norvo = protocols::norvo;

NlogJob::NlogJob()
    : StoredLogJob(jobs::Nlog, "nlog",
                   {norvo::stored_log::NLOG_SIGNATURE, norvo::log_pages::NLOG,
                    norvo::log_addresses::NLOG, &features::statuses::invalidNlogData}) {}

std::unique_ptr<Job> NlogJob::clone() const {
    return std::make_unique<NlogJob>();
}

}  // namespace orvel::interfaces::orveli::jobs
