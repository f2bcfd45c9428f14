#include "interfaces/orveli/jobs/FirmwareUpdateJob.h"

#include "core/CoreStatuses.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaFirmwareTransfer.h"
#include "interfaces/orveli/jobs/NvmeFirmwareTransfer.h"

#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Status;
namespace attributes = features::device_attributes;
namespace statuses = features::statuses;

namespace {

/// The firmware isn't that of the last scan: an update may have come since.
FirmwareModules::Drive describe(const Device& device, const std::string& firmware) {
    return {device.readText(attributes::Product()), firmware, device.readText(attributes::OEM())};
}

void requireDownload(const Device& device) {
    const core::Attribute possible = attributes::DownloadMicrocodePossible();
    if (device.hasAttribute(possible.getName()) && !device.isSet(possible))
        throw statuses::firmwareUpdateNeedsUpdateTool();
}

/// Whatever goes wrong on the way means that the update failed.
FirmwareTransfer::Outcome send(FirmwareTransfer& transfer, const FirmwareModule& module) {
    try {
        return transfer.send(module);
    } catch (const Status& status) {
        if (status == statuses::firmwareUpdateFailed()) throw;
        throw core::withWords(statuses::firmwareUpdateFailed(), status.getMessage());
    }
}

}  // namespace

FirmwareUpdateJob::FirmwareUpdateJob(std::shared_ptr<const FirmwareModules> modules)
    : DriveJob(FirmwareUpdate, Kind::ANY, "Firmware Update"),
      modules(std::move(modules)) {}

std::unique_ptr<Job> FirmwareUpdateJob::clone() const {
    return std::make_unique<FirmwareUpdateJob>(modules);
}

Status FirmwareUpdateJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportSelected(response);
}

std::vector<std::string> FirmwareUpdateJob::additionalFolders() const {
    constexpr char SEPARATOR = '~';
    const auto text = findArgument(features::firmware_update::AdditionalModuleDirs());
    return core::strings::split(text.value_or(""), SEPARATOR);
}

std::unique_ptr<FirmwareTransfer> FirmwareUpdateJob::transferTo(Device& device) {
    const auto progress = [this](std::uint8_t percent) {
        setProgress(percent);
        reportProgress();
    };
    if (isAta(device)) return std::make_unique<AtaFirmwareTransfer>(device, progress);
    return std::make_unique<NvmeFirmwareTransfer>(device, progress);
}

Status FirmwareUpdateJob::report(Device& device, core::xml::XmlObject& drive) {
    constexpr const char* STATUS = "Status";
    requireNoRaidMember(device);
    requireDownload(device);
    const auto transfer = transferTo(device);
    const std::string firmware = transfer->requireReadiness();
    const auto module = modules->moduleFor(describe(device, firmware), additionalFolders());
    if (!module) {
        drive.addValue(STATUS, statuses::firmwareCurrent().getMessage());
        return {};
    }
    const auto outcome = send(*transfer, *module);
    const Status words = outcome == FirmwareTransfer::Outcome::NOW
                             ? core::statuses::completedSuccessfully()
                             : statuses::firmwareUpdateNeedsReboot();
    drive.addValue(STATUS, words.getMessage());
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
