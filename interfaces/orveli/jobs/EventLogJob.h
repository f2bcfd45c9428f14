// Dumps the event log.
#pragma once

#include "interfaces/orveli/jobs/StoredLogJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

class EventLogJob : public StoredLogJob {
public:
    EventLogJob();

    std::unique_ptr<Job> clone() const override;
};

}  // namespace orvel::interfaces::orveli::jobs
