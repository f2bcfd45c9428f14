// Dumps the Nlog.
#pragma once

#include "interfaces/orveli/jobs/StoredLogJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

class NlogJob : public StoredLogJob {
public:
    NlogJob();

    std::unique_ptr<Job> clone() const override;
};

}  // namespace orvel::interfaces::orveli::jobs
