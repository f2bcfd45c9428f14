// The job "WriteCache".
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// WriteCacheEnabled is true or false, by SET FEATURES or the NVMe feature. For SATA drives alone,
/// else 10/3, there are two more. WriteCacheState is 1 to 3, else 10/57: what
/// SET FEATURES says, enabled, or disabled whatever it says. WriteCacheReorderingStateEnabled is
/// true or false. 10/48 for a drive without a volatile write cache, 10/56 if the drive refuses an
/// SCT feature.
class WriteCacheJob : public SettingJob {
public:
    WriteCacheJob();

    std::unique_ptr<Job> clone() const override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;

private:
    core::Status setOnNvme(core::Device& device, const core::Attribute& property) const;
    core::Status setOnAta(core::Device& device, const core::Attribute& property) const;
};

}  // namespace orvel::interfaces::orveli::jobs
