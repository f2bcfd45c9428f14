// Shows what a drive tells of itself.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <cstdint>
#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// Arguments, for NVMe drives alone: ControllerNamespaceStructure, one of
/// `identify::nvme::structures`, and NamespaceId. Without them an NVMe drive shows its controller's
/// data, a SATA drive its IDENTIFY DEVICE data.
class IdentifyJob : public DriveJob {
public:
    IdentifyJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

private:
    void reportAta(core::Device& device, core::xml::XmlObject& drive) const;
    void reportNvme(core::Device& device, core::xml::XmlObject& drive) const;
    std::uint32_t requireNamespaceId() const;
};

}  // namespace orvel::interfaces::orveli::jobs
