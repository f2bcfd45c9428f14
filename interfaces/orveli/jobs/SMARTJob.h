// Job SMART: the SMART attributes of each drive.
#pragma once

#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>

namespace orvel::interfaces::orveli::jobs {

/// An object "SMART Attributes" for each drive, and in it one for each attribute, named by its
/// identifier in two hexadecimal digits. An attribute has ID, Description, Normalized, Worst,
/// Threshold, Status (its flags), Action ("Fail" for a pre-failure attribute at its threshold, else
/// "Pass") and Raw, of which the request may name some.
///
/// The request's property ID selects one attribute: hexadecimal digits, with or without "0x", or
/// three decimal ones. A drive without it answers 10/36.
///
/// An NVMe drive has no SMART attributes. What its logs tell is shown in the same form, under the
/// identifiers that SATA drives use for the same things (see the table in the source).
class SMARTJob : public DriveJob {
public:
    SMARTJob();

    std::unique_ptr<Job> clone() const override;
    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
};

}  // namespace orvel::interfaces::orveli::jobs
