// The job "PowerGovernor": how much power a drive may draw.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// PowerGovernorMode is 0 to 2, the last drawing least, else 10/18. A SATA drive that refuses:
/// 10/56. A drive of another maker: 10/1.
class PowerGovernorJob : public SettingJob {
public:
    PowerGovernorJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
