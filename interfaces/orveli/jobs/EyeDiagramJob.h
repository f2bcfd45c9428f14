// Shows the eye diagram of one PCIe lane of an NVMe drive.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// Arguments: Group ("A" unless given), Lane (0 unless given). 10/1 for a drive of another
/// maker.
class EyeDiagramJob : public DriveJob {
public:
    EyeDiagramJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
