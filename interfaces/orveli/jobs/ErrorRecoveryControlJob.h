// The job "ErrorRecoveryControl": how long a SATA drive may try to recover from an error.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// ReadErrorRecoveryTimer and WriteErrorRecoveryTimer are 0 to 65535 in units of 100 ms, and 0 is
/// no limit. 10/62 for other values, for less than the drive's minimum, and if the drive refuses.
class ErrorRecoveryControlJob : public SettingJob {
public:
    ErrorRecoveryControlJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
