// Sends a SATA drive to sleep.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// Method "StandbyImmediate". Whatever goes wrong is 10/16.
class StandbyImmediateJob : public DriveJob {
public:
    StandbyImmediateJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
