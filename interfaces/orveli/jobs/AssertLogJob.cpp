#include "interfaces/orveli/jobs/AssertLogJob.h"

#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"

namespace orvel::interfaces::orveli::jobs {

namespace norvo = protocols::norvo;

AssertLogJob::AssertLogJob()
    : StoredLogJob(jobs::AssertLog, "assert",
                   {norvo::stored_log::ASSERT_LOG_SIGNATURE, norvo::log_pages::ASSERT_LOG,
                    norvo::log_addresses::ASSERT_LOG, &features::statuses::invalidAssertLogData}) {}

std::unique_ptr<Job> AssertLogJob::clone() const {
    return std::make_unique<AssertLogJob>();
}

void AssertLogJob::checkHeader(const core::Payload& header) const {
    if (protocols::readNumber(header, norvo::stored_log::EntryCount) == 0)
        throw features::statuses::driveNotAsserted();
}

}  // namespace orvel::interfaces::orveli::jobs
