// Dumps the assert log.
#pragma once

#include "interfaces/orveli/jobs/StoredLogJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

class AssertLogJob : public StoredLogJob {
public:
    AssertLogJob();

    std::unique_ptr<Job> clone() const override;

protected:
    /// Throws 10/172 for the log of a drive that never asserted.
    void checkHeader(const core::Payload& header) const override;
};

}  // namespace orvel::interfaces::orveli::jobs
