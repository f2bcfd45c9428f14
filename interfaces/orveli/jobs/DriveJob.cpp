#include "interfaces/orveli/jobs/DriveJob.h"

#include "core/CoreStatuses.h"
#include "core/Exceptions.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "interfaces/orveli/access/DriveKind.h"

#include <algorithm>
#include <map>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Status;
using core::xml::XmlElement;
using core::xml::XmlObject;
namespace tags = core::xml::tags;
namespace categories = core::xml::categories;

namespace {

/// A key becomes part of a file's name, and a JSON name, where nothing is escaped.
bool isUnfitForKey(char character) {
    return character == '/' || character == '\\' || character == '"' ||
           core::strings::isNotAscii(character);
}

bool isSuccess(const Status& status) {
    return status == core::statuses::completedSuccessfully();
}

/// Digits, and every one of them: the general test lets the first behind "0x" pass, and so would a
/// slip of the finger become the number 0.
bool isNumberText(const std::string& text) {
    const bool hasPrefix = core::strings::startsWith(text, "0x", true);
    const std::string digits = hasPrefix ? text.substr(2) : text;
    return !digits.empty() &&
           digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
}

const XmlObject* asObject(const XmlElement* element) {
    return dynamic_cast<const XmlObject*>(element);
}

bool hasDeviceList(const XmlElement* request) {
    const XmlObject* root = asObject(request);
    if (root == nullptr) return false;
    const auto& lists = root->getLists();
    return std::any_of(lists.begin(), lists.end(), [](const auto& list) {
        return list->getAttribute(tags::Name) == core::xml::identifiers::Devices;
    });
}

}  // namespace

DriveJob::DriveJob(std::string name, Kind kind, std::string title)
    : Job(std::move(name)),
      kind(kind),
      title(std::move(title)) {}

bool DriveJob::supports(const Device& device) const {
    return (kind != Kind::NVME && isAta(device)) || (kind != Kind::ATA && isNvme(device));
}

Status DriveJob::runSetProperty(const core::Attribute& property) {
    Device& device = *getDevices().front();
    if (!supports(device)) return features::statuses::featureNotSupportedByDrive();
    return core::guarded([&] { return set(device, property); });
}

Status DriveJob::reportEach(std::unique_ptr<XmlElement>& response) {
    if (getDevices().empty()) return features::statuses::noDeviceSelected();
    const bool isMethod = getRequest()->getAttribute(tags::Type) == xml::tags::types::Method;
    auto output = std::make_unique<XmlObject>();
    for (const auto& device : getDevices()) {
        XmlObject& drive = addSection(*output, title, keyOf(*device));
        Status status = reportOne(*device, drive);
        if (!isSuccess(status) && isMethod && getDevices().size() == 1) return status;
        if (!isSuccess(status)) {
            drive.addObject(core::XmlConverter::toXml(status));
        } else if (drive.getProperties().empty() && drive.getObjects().empty()) {
            drive.addValue("Status", status.getMessage());
        }
    }
    response = std::move(output);
    return {};
}

Status DriveJob::reportSelected(std::unique_ptr<XmlElement>& response) {
    if (!hasDeviceList(getRequest())) return features::statuses::noDeviceSelected();
    if (getDevices().size() > 1) return features::statuses::multipleDevicesSelected();
    return reportEach(response);
}

Status DriveJob::reportOne(Device& device, XmlObject& drive) {
    if (!supports(device)) return features::statuses::featureNotSupportedByDrive();
    // What one drive makes go wrong must not cost the answers of the others.
    return core::guarded([&] { return report(device, drive); });
}

Status DriveJob::report(Device&, XmlObject&) {
    return features::statuses::featureNotSupported();
}

Status DriveJob::set(Device&, const core::Attribute&) {
    return features::statuses::featureNotSupported();
}

std::string DriveJob::keyOf(const Device& device) const {
    std::string key = device.readText(features::device_attributes::SerialNumber());
    std::replace_if(key.begin(), key.end(), isUnfitForKey, '_');
    return key;
}

std::optional<std::string> DriveJob::findArgument(const core::Attribute& descriptor) const {
    std::optional<std::string> value;
    const XmlObject* root = asObject(getRequest());
    if (root == nullptr) return value;
    for (const auto& property : root->getProperties()) {
        if (property->getAttribute(tags::Name) == descriptor.getName()) {
            value = property->getAttribute(tags::Value);
        }
    }
    return value;
}

std::optional<std::uint64_t> DriveJob::findNumber(const core::Attribute& descriptor) const {
    const auto text = findArgument(descriptor);
    if (!text) return std::nullopt;
    if (isNumberText(*text)) return core::strings::toInteger(*text);
    throw core::withWords(features::statuses::invalidProperty(),
                          descriptor.getName() + " must be a number.");
}

std::vector<std::string> DriveJob::requestedNames() const {
    std::vector<std::string> names;
    const XmlObject* root = asObject(getRequest());
    if (root == nullptr) return names;
    for (const auto& object : root->getObjects()) {
        if (object->getAttribute(tags::Name) != xml::tags::names::Properties) continue;
        for (const auto& property : object->getProperties())
            names.push_back(property->getAttribute(tags::Name));
    }
    return names;
}

void DriveJob::keepRequested(XmlObject& drive) const {
    const auto names = requestedNames();
    if (names.empty()) return;
    std::vector<std::pair<std::string, std::string>> kept;
    for (const std::string& name : names) {
        const auto& all = drive.getProperties();
        const auto found = std::find_if(all.begin(), all.end(), [&](const auto& property) {
            return core::strings::equals(property->getAttribute(tags::Name), name, true);
        });
        if (found == all.end()) {
            kept.emplace_back(name, features::PROPERTY_NOT_FOUND);
        } else {
            kept.emplace_back((*found)->getAttribute(tags::Name),
                              (*found)->getAttribute(tags::Value));
        }
    }
    while (!drive.getProperties().empty())
        drive.removeProperty(drive.getProperties().front()->getAttribute(tags::Name));
    for (const auto& [name, value] : kept)
        drive.addValue(name, value);
}

XmlObject& addSection(XmlObject& parent, const std::string& name, const std::string& key) {
    auto section = std::make_unique<XmlObject>();
    section->setAttribute(tags::Name, name);
    if (!key.empty()) section->setAttribute(tags::Key, key);
    return parent.addObject(std::move(section));
}

void addPayload(XmlObject& parent, const core::Payload& bytes) {
    auto payload = std::make_unique<XmlObject>();
    payload->setAttribute(tags::Category, categories::Payload);
    payload->setAttribute(tags::Value, core::strings::bytesToHex(bytes));
    parent.addObject(std::move(payload));
}

void requireNoRaidMember(const Device& device) {
    if (device.isSet(features::device_attributes::RAIDMember()))
        throw features::statuses::notRunnableOnRaidMember();
}

void requireNoPartitions(Device& device) {
    if (device.checkPartitions() == core::statuses::deviceHasPartitions())
        throw features::statuses::driveContainsPartition();
    for (const auto& [name, path] : device.getCommandPaths()) {
        const Status status = path->checkPartitions();
        if (!(status == core::statuses::deviceHasNoPartitions())) throw status;
    }
}

void requireNorvo(const Device& device) {
    if (!device.isSet(features::device_attributes::Norvo()))
        throw features::statuses::notAnNorvoSsd();
}

}  // namespace orvel::interfaces::orveli::jobs
