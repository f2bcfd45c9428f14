// Job NorvoSSD: what there is to know of each drive.
#pragma once

#include "interfaces/orveli/firmware_modules/FirmwareCatalogue.h"
#include "interfaces/orveli/jobs/DriveJob.h"

#include <memory>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// An object "Norvo SSD" for each drive, with its index as the key: the drive's attributes, its
/// settings (DriveSettings.h), and what is worked out of them: DeviceStatus, EnduranceAnalyzer and
/// FirmwareUpdateAvailable. A setting hides an attribute of its name.
///
/// Properties that the request names come in its order, and only they cost commands. What can't be
/// read has the failure's words as its value, and what a drive doesn't have "Property not found".
/// Without names all come, sorted by name, without those that can't be read. DeviceStatus is never
/// left out: why the drive's health can't be read is a status, too.
class NorvoSSDJob : public DriveJob {
public:
    /// `catalogue` is shared with all clones; null knows of no firmware.
    explicit NorvoSSDJob(std::shared_ptr<const FirmwareCatalogue> catalogue);

    std::unique_ptr<Job> clone() const override;

    /// Every drive: one of which nothing is known can be shown too.
    bool supports(const core::Device& device) const override;

    core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;
    std::string keyOf(const core::Device& device) const override;

private:
    /// A property that is worked out.
    struct Finding {
        core::Attribute (*descriptor)();
        std::string (NorvoSSDJob::*value)(core::Device& device) const;
    };

    static const Finding FINDINGS[3];

    void addAll(core::Device& device, core::xml::XmlObject& drive) const;
    void addNamed(core::Device& device, const std::string& name, core::xml::XmlObject& drive) const;
    std::string deviceStatus(core::Device& device) const;
    std::string enduranceAnalyzer(core::Device& device) const;
    std::string firmwareUpdateAvailable(core::Device& device) const;

    std::shared_ptr<const FirmwareCatalogue> catalogue;
};

}  // namespace orvel::interfaces::orveli::jobs
