// The job "SpreadSpectrumClocking" of SATA drives.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// SSCEnabled is true or false; 10/56 if the drive refuses, 10/1 for one of another maker. Shows
/// after a power cycle.
class SpreadSpectrumClockingJob : public SettingJob {
public:
    SpreadSpectrumClockingJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
