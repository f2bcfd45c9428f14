// Job HealthMetrics: what sensors and counters tell of each drive's health.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// An object "Health Sensors" for each drive, with the rows of features::health_metrics that the
/// drive has: of an NVMe drive out of its logs, of a SATA drive out of its SMART attributes and
/// device statistics. Temperatures are in degrees Celsius. The request may name some of them, and
/// only they cost commands.
class HealthMetricsJob : public DriveJob {
public:
    HealthMetricsJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
