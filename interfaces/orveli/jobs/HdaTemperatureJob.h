// Shows temperature, limits and temperature history of a SATA drive.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

class HdaTemperatureJob : public DriveJob {
public:
    HdaTemperatureJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
