// The job "MaxAddress": the highest LBA that a drive lets be used.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// MaximumLBA is what MaxAddressGoal reads: "native", gigabytes, a percentage or an LBA.
///
/// SATA drives change it by ACCESSIBLE MAX ADDRESS CONFIGURATION, older ones by SET MAX ADDRESS
/// EXT, NVMe drives for namespace 1; it holds at once and for good. 10/43 and 10/42 for what makes
/// no sense or goes beyond the native size, 10/210 for gigabytes in sectors of an odd size, 10/12
/// for a RAID member, 10/94 for a drive with partitions, the path's status if it can't tell of
/// partitions, 10/3 for a drive that can't, 10/1 for an NVMe drive of another maker.
class MaxAddressJob : public SettingJob {
public:
    MaxAddressJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
};

}  // namespace orvel::interfaces::orveli::jobs
