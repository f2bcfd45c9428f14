// Dumps pages of a general purpose log of a SATA drive.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// Arguments: LogAddress, PageNum (0 unless given), SectorCount (1 unless given).
class GplJob : public DriveJob {
public:
    GplJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
