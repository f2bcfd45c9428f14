// The job "DIPM": power management of the interface that a SATA drive starts by itself.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// DIPMEnabled is true or false; 10/47 for a drive without it.
class DipmJob : public SettingJob {
public:
    DipmJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
