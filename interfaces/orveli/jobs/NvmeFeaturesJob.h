// The job "NVMeFeatures": settings of NVMe drives.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// TempThreshold is 0 to 80 degrees Celsius, else 10/19. SMBusAddress is 1 to 255, else 10/35; 255
/// disables. AggregationThreshold and AggregationTime, the latter in units of 100 microseconds, are
/// 0 to 255, else 10/201 and 10/202, and leave each other alone: 10/203 if the drive doesn't tell
/// them. ResetCRCError sets the counter back and must be true, else 10/36. 10/1 for it
/// and for SMBusAddress of another maker's drive.
class NvmeFeaturesJob : public SettingJob {
public:
    NvmeFeaturesJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
