#include "interfaces/orveli/jobs/EventLogJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

namespace norvo = protocols::norvo;

EventLogJob::EventLogJob()
    : StoredLogJob(jobs::EventLog, "eventlog",
                   {norvo::stored_log::EVENT_LOG_SIGNATURE, norvo::log_pages::EVENT_LOG,
                    norvo::log_addresses::EVENT_LOG, &features::statuses::invalidEventLogData}) {}

std::unique_ptr<Job> EventLogJob::clone() const {
    return std::make_unique<EventLogJob>();
}

}  // namespace orvel::interfaces::orveli::jobs
