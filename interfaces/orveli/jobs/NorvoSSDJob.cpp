#include "interfaces/orveli/jobs/NorvoSSDJob.h"

#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/DriveSettings.h"
#include "interfaces/orveli/jobs/EnduranceEstimate.h"
#include "interfaces/orveli/jobs/NvmeLogs.h"
#include "interfaces/orveli/jobs/SmartAttributes.h"
#include "protocols/ata/Smart.h"
#include "protocols/norvo/Structures.h"
#include "protocols/nvme/Structures.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Device;
using core::Status;
using core::xml::XmlObject;
namespace attributes = orvel::features::device_attributes;
namespace ata = protocols::ata;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace statuses = orvel::features::statuses;

namespace {

constexpr const char* TITLE = "Norvo SSD";
constexpr char FOLDER_SEPARATOR = '~';

/// For programs, and in part of a thousand bytes: nothing to show.
bool isHidden(const Attribute& attribute) {
    return attribute.getType() == core::types::bytepointer();
}

const Attribute* findAttributeOf(const Device& device, const std::string& name) {
    if (const Attribute* exact = device.getAttributes().find(name)) return exact;
    for (const Attribute& attribute : device.getAttributes()) {
        if (core::strings::equals(attribute.getName(), name, true)) return &attribute;
    }
    return nullptr;
}

bool hasNvmeWarning(Device& device) {
    NvmeLogs logs(device);
    return protocols::readNumber(logs.smartHealth(), nvme::smart_health_log::CriticalWarning) != 0;
}

bool exceedsSmartThreshold(Device& device) {
    const Attribute enabled = attributes::SMARTEnabled();
    if (device.hasAttribute(enabled.getName()) && !device.isSet(enabled))
        throw statuses::smartNotEnabled();
    const auto answer = ata_access::send(device, ata::smartReturnStatus());
    const auto health = ata::smartHealth(answer.returned);
    if (health == ata::SmartHealth::UNKNOWN) throw statuses::dataRetrievalFailed();
    if (health == ata::SmartHealth::THRESHOLD_EXCEEDED) return true;
    // Nobody knows what a drive's judgement is worth that can't show what it rests on.
    readSmartAttributes(device);
    return false;
}

/// The property, or nothing if it can't be read.
std::optional<Attribute> tryTo(const std::function<Attribute()>& read) {
    try {
        return read();
    } catch (const Status&) {
        return std::nullopt;
    }
}

/// The property, or one with the failure's words.
void addOrExplain(XmlObject& drive, const Attribute& descriptor,
                  const std::function<Attribute()>& read) {
    try {
        drive.addProperty(core::XmlConverter::toXml(read()));
    } catch (const Status& status) {
        drive.addValue(descriptor.getName(), status.getMessage());
    }
}

/// The revision that the next activation makes the running one. Empty if there is none, and for a
/// drive that won't tell.
std::string pendingFirmware(Device& device) {
    namespace slots = nvme::firmware_slot_log;  // each slot's row has its number
    if (isAta(device)) {
        const auto identify = ata_access::tryToIdentify(device);
        if (!identify) return {};
        return protocols::readText(*identify, norvo::identify_device::PendingFirmware);
    }
    try {
        const auto page =
            nvme_access::logPage(device, {.logPage = nvme::log_pages::FIRMWARE_SLOT_INFORMATION,
                                          .bytes = slots::SIZE,
                                          .retainAsynchronousEvent = true});
        const std::uint32_t slot = nvme::readBits(page, slots::AFI, nvme::afi::NEXT_SLOT);
        if (slot == 0) return {};
        return protocols::readText(page, slots::ALL[slot]);
    } catch (const Status&) {
        return {};
    }
}

Attribute withText(Attribute descriptor, const std::string& text) {
    descriptor.setValue(text);
    return descriptor;
}

}  // namespace

// clang-format off
const NorvoSSDJob::Finding NorvoSSDJob::FINDINGS[] = {
//   descriptor                                                    value
    {&attributes::DeviceStatus,                                    &NorvoSSDJob::deviceStatus},
    {&attributes::EnduranceAnalyzer,                               &NorvoSSDJob::enduranceAnalyzer},
    {&orvel::features::firmware_update::FirmwareUpdateAvailable,   &NorvoSSDJob::firmwareUpdateAvailable},
};

// clang-format on

NorvoSSDJob::NorvoSSDJob(std::shared_ptr<const FirmwareCatalogue> catalogue)
    : DriveJob(NorvoSSD, Kind::ANY, TITLE),
      catalogue(std::move(catalogue)) {}

std::unique_ptr<Job> NorvoSSDJob::clone() const {
    return std::make_unique<NorvoSSDJob>(catalogue);
}

bool NorvoSSDJob::supports(const Device&) const {
    return true;
}

Status NorvoSSDJob::runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

std::string NorvoSSDJob::keyOf(const Device& device) const {
    return device.getAttribute(attributes::Index()).valueAsString();
}

Status NorvoSSDJob::report(Device& device, XmlObject& drive) {
    const auto names = requestedNames();
    if (names.empty()) addAll(device, drive);
    for (const std::string& name : names)
        addNamed(device, name, drive);
    return {};
}

void NorvoSSDJob::addAll(Device& device, XmlObject& drive) const {
    std::map<std::string, Attribute> all;  // by name in small letters
    for (const Attribute& attribute : device.getAttributes()) {
        if (!isHidden(attribute))
            all.insert_or_assign(core::strings::lowered(attribute.getName()), attribute);
    }
    const auto take = [&](const std::optional<Attribute>& attribute) {
        if (attribute)
            all.insert_or_assign(core::strings::lowered(attribute->getName()), *attribute);
    };
    for (const std::string& name : drive_settings::namesFor(device)) {
        take(tryTo([&] {
            return drive_settings::read(device, drive_settings::find(device, name).value());
        }));
    }
    for (const Finding& finding : FINDINGS) {
        take(tryTo([&] { return withText(finding.descriptor(), (this->*finding.value)(device)); }));
    }
    for (const auto& [name, attribute] : all)
        drive.addProperty(core::XmlConverter::toXml(attribute));
}

void NorvoSSDJob::addNamed(Device& device, const std::string& name, XmlObject& drive) const {
    for (const Finding& finding : FINDINGS) {
        const Attribute descriptor = finding.descriptor();
        if (!core::strings::equals(descriptor.getName(), name, true)) continue;
        addOrExplain(drive, descriptor,
                     [&] { return withText(descriptor, (this->*finding.value)(device)); });
        return;
    }
    if (const auto setting = drive_settings::find(device, name)) {
        addOrExplain(drive, *setting, [&] {
            drive_settings::requireSupport(device, *setting);
            return drive_settings::read(device, *setting);
        });
    } else if (const Attribute* attribute = findAttributeOf(device, name)) {
        drive.addProperty(core::XmlConverter::toXml(*attribute));
    } else {
        drive.addValue(name, orvel::features::PROPERTY_NOT_FOUND);
    }
}

/// What the identification met with counts first; then the drive's own judgement. A drive that
/// can't be asked for it must not pass for healthy.
std::string NorvoSSDJob::deviceStatus(Device& device) const {
    std::string identified = device.readText(attributes::DeviceStatus());
    if (!device.readText(attributes::ErrorString()).empty()) return identified;
    try {
        const bool isUnhealthy = (isNvme(device) && hasNvmeWarning(device)) ||
                                 (isAta(device) && exceedsSmartThreshold(device));
        return isUnhealthy ? statuses::deviceUnhealthy().getMessage() : identified;
    } catch (const Status& status) {
        return status.getMessage();
    }
}

std::string NorvoSSDJob::enduranceAnalyzer(Device& device) const {
    return expectedLife(readTimedWorkload(device));
}

std::string NorvoSSDJob::firmwareUpdateAvailable(Device& device) const {
    const std::string product = device.readText(attributes::Product());
    if (product.empty()) throw statuses::featureNotSupportedByDrive();
    std::vector<std::string> folders;
    const auto joined = findArgument(orvel::features::firmware_update::AdditionalModuleDirs());
    if (joined && !joined->empty()) folders = core::strings::split(*joined, FOLDER_SEPARATOR);
    const std::string running = device.readText(attributes::Firmware());
    const std::string pending = pendingFirmware(device);
    const bool isPending = !pending.empty() && pending != running;
    if (catalogue && catalogue->newerVersion(product, isPending ? pending : running, folders))
        return statuses::firmwareUpdateAvailable().getMessage();
    return (isPending ? statuses::firmwareUpdateNeedsReboot() : statuses::firmwareCurrent())
        .getMessage();
}

}  // namespace orvel::interfaces::orveli::jobs
