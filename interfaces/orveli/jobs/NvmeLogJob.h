// Shows the log pages of an NVMe drive.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// Argument: LogId, one of `nvme_get_log::log_ids`; all of them unless given. Of all, the vendor's
/// pages are left out if the drive doesn't have them; one of them alone is 10/1 for a drive of
/// another maker.
class NvmeLogJob : public DriveJob {
public:
    NvmeLogJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
