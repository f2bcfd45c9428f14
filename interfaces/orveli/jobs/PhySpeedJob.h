// The job "PhySpeed": the highest speed that a SATA drive may agree on.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// PhySpeed is 1.5, 3 or 6 gigabits a second, with or without ".0". 10/51 for another and for more
/// than the drive is made for, 10/56 if the drive refuses, 10/1 for one of another maker. Shows
/// after a power cycle.
class PhySpeedJob : public SettingJob {
public:
    PhySpeedJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
