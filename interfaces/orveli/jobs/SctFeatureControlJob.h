// The job "SCTFeatureControl": what a SATA drive keeps as SCT features.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// PhysicalSectorSize is 512 or 4096 bytes, else 10/59; PLITestTimeInterval is 0 to 6, else 10/58;
/// TemperatureLoggingInterval is 1 to 65535 minutes, else 10/36. 10/56 if the drive refuses,
/// 10/1 for the first two of another maker's drive.
class SctFeatureControlJob : public SettingJob {
public:
    SctFeatureControlJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
