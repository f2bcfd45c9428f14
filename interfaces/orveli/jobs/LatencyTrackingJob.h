// The job "LatencyTracking": how long the commands of NVMe drives take.
#pragma once

#include "interfaces/orveli/jobs/SettingJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// LatencyTrackingEnabled is true or false.
///
/// The method shows for each drive how many commands took how long: read commands for the argument
/// LatencyStatisticsForReadCommands "true", write commands for "false", both without it, and 10/36
/// for another text. 10/34 while tracking is not enabled; 10/33 for a log page that makes no sense.
/// Both: 10/1 for a drive of another maker.
class LatencyTrackingJob : public SettingJob {
public:
    LatencyTrackingJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status set(core::Device& device, const core::Attribute& property) override;
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
