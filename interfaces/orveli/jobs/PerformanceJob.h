// Job Performance: how much each drive has done.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// An object "Performance" for each drive: TotalLBAsRead and TotalLBAsWritten, in logical blocks of
/// the drive; HostReadCommands and HostWriteCommands; and ControllerBusyTime of an NVMe drive, in
/// minutes. Without what the drive doesn't tell. The request may name some of them.
class PerformanceJob : public DriveJob {
public:
    PerformanceJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
