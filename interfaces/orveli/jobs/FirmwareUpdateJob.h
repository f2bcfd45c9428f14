// Brings a drive the newest firmware there is for it.
#pragma once

#include "interfaces/orveli/firmware_modules/FirmwareModules.h"
#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/FirmwareTransfer.h"

#include <memory>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// Method "FirmwareUpdate". Argument `AdditionalModuleDirs`: more folders with modules, joined by
/// "~". The drive's object gets a property "Status" that tells what has been done: the words of
/// success, or of 10/211 if the firmware waits for a reset, or of 10/64 if there was nothing to do.
///
/// Members of RAID volumes are refused with 10/12, drives that take no firmware with 10/69, ATA
/// security with 10/15. 10/53 with the reason if the drive refuses the firmware, gets lost, or
/// doesn't run it afterwards. What may be wrong with modules: FirmwareModules.h.
class FirmwareUpdateJob : public DriveJob {
public:
    /// Not null.
    explicit FirmwareUpdateJob(std::shared_ptr<const FirmwareModules> modules);

    std::unique_ptr<Job> clone() const override;
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

private:
    std::vector<std::string> additionalFolders() const;
    std::unique_ptr<FirmwareTransfer> transferTo(core::Device& device);

    std::shared_ptr<const FirmwareModules> modules;
};

}  // namespace orvel::interfaces::orveli::jobs
