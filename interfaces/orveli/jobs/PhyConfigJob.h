// The job "PhyConfig": the electrical settings of a SATA drive's interface.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// PhyConfig is 0 to 3, else 10/89; 10/90 if the drive refuses, 10/1 for one of another maker.
/// Shows after a power cycle.
class PhyConfigJob : public SettingJob {
public:
    PhyConfigJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
