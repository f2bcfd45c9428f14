#include "core/DeviceManager.h"

#include "core/DeviceIdentifiers.h"
#include "core/GlobalLogging.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "features/DeviceAttributes.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orvel::core {

namespace {

namespace device_attributes = features::device_attributes;

constexpr std::int32_t NO_INDEX = -1;

/// A partition's place in the system; no device attribute, hence in no catalogue.
Attribute pathOfPartition() {
    return {xml::identifiers::Path, xml::identifiers::Path, features::types::string()};
}

bool hasPartition(const Device& device, const std::string& path) {
    return std::any_of(
        device.getPartitions().begin(), device.getPartitions().end(),
        [&](const Partition& partition) { return partition.readText(pathOfPartition()) == path; });
}

bool hasSerialNumber(const Device& device, const std::string& serialNumber) {
    return strings::equals(device.readText(device_attributes::SerialNumber()), serialNumber, true);
}

std::int32_t indexOf(const Device& device) {
    return device.readSigned32(device_attributes::Index(), NO_INDEX);
}

void setIndex(Device& device, std::int32_t index) {
    Attribute attribute = device_attributes::Index();
    attribute.setValue(index);
    device.setAttribute(attribute);
}

/// Plain drives before RAID members, both by path.
bool goesBefore(const std::shared_ptr<Device>& device, const std::shared_ptr<Device>& other) {
    const bool isMember = device->isSet(device_attributes::RAIDMember());
    const bool isOtherMember = other->isSet(device_attributes::RAIDMember());
    if (isMember != isOtherMember) return isOtherMember;
    return device->readText(device_attributes::DevicePath()) <
           other->readText(device_attributes::DevicePath());
}

template <class Finders>
auto findByName(const Finders& finders, const std::string& name) {
    const auto found = std::find_if(finders.begin(), finders.end(),
                                    [&](const auto& finder) { return finder->getName() == name; });
    return found == finders.end() ? nullptr : *found;
}

template <class Finders, class Finder>
void replaceByName(Finders& finders, const Finder& finder) {
    auto copy = finder.clone();
    std::erase_if(finders, [&](const auto& other) { return other->getName() == copy->getName(); });
    finders.push_back(std::move(copy));
}

/// Writes lines that all stand for one place in the code.
class DeviceLog {
public:
    explicit DeviceLog(const global_logging::Place& place) : place(place) {}

    void write(const Device& device, std::int32_t index) const {
        line("Device " + strings::toString(index));
        attributes(device);
        for (const Partition& partition : device.getPartitions()) {
            line("Partition: " + partition.readText(pathOfPartition()));
            attributes(partition);
        }
        for (const auto& [setName, pathName] : device.getCommandSets())
            line(std::string("Command Set = ")
                     .append(setName)
                     .append(" supported by Command Path = ")
                     .append(pathName));
        for (const auto& [pathName, path] : device.getCommandPaths())
            line("Command Path: " + pathName);
    }

private:
    void line(const std::string& text) const {
        global_logging::write(boost::log::trivial::info, place, text);
    }

    void attributes(const AttributeHolder& holder) const {
        for (const Attribute& attribute : holder.getAttributes())
            line(attribute.getName() + " = " + attribute.valueAsString());
    }

    global_logging::Place place;
};

}  // namespace

void DeviceManager::scan() {
    devices.clear();
    Device::Devices found;
    for (const auto& finder : deviceFinders) {
        finder->setProductIdentifiers(productIdentifiers);
        finder->find(found);
    }
    for (const auto& extension : deviceFinderExtensions) {
        extension->setProductIdentifiers(productIdentifiers);
        extension->find(found);
    }
    std::erase(found, nullptr);
    devices.insert(devices.end(), found.begin(), found.end());
    std::sort(devices.begin(), devices.end(), goesBefore);

    const DeviceLog log(ORVEL_HERE);
    std::int32_t index = 0;
    for (const auto& device : devices) {
        if (identifyOnScan) std::ignore = device->identify();
        setIndex(*device, index);
        log.write(*device, index);
        ++index;
    }
}

std::shared_ptr<Device> DeviceManager::GetDevice(const Attribute& identifier) const {
    const std::string& kind = identifier.getName();
    const std::string value = identifier.valueAsString();
    if (kind == xml::identifiers::Index) {
        if (!strings::isNumeric(value)) return nullptr;
        const std::uint64_t index = strings::toInteger(value);
        return findFirst([&](const Device& device) {
            const std::int32_t place = indexOf(device);
            return place >= 0 && static_cast<std::uint64_t>(place) == index;
        });
    }
    if (kind == xml::identifiers::SerialNumber) {
        return findFirst([&](const Device& device) { return hasSerialNumber(device, value); });
    }
    if (kind == xml::identifiers::CSMIIdentifier) {
        const auto csmi = readCsmiIdentifiers(value);
        if (!csmi) return nullptr;
        return findFirst([&](const Device& device) { return matches(device, *csmi); });
    }
    if (kind == xml::identifiers::DriveId) {
        const auto pnpString = readDriveId(value);
        if (!pnpString) return nullptr;
        return findFirst([&](const Device& device) {
            return device.readText(device_attributes::PNPString()) == *pnpString;
        });
    }
    if (kind == xml::identifiers::DriveLetter) {
        return findFirst([&](const Device& device) { return hasPartition(device, value); });
    }
    if (kind == xml::identifiers::Path) {
        return findFirst([&](const Device& device) {
            return strings::equals(device.readText(device_attributes::DevicePath()), value, true);
        });
    }
    return nullptr;
}

std::shared_ptr<Device> DeviceManager::GetDevice(const std::string& partitionPath,
                                                 const std::string& serialNumber) const {
    return findFirst([&](const Device& device) {
        return hasSerialNumber(device, serialNumber) && hasPartition(device, partitionPath);
    });
}

void DeviceManager::addDeviceFinder(const DeviceFinder& finder) {
    replaceByName(deviceFinders, finder);
}

void DeviceManager::addDeviceFinderExtension(const DeviceFinderExtension& extension) {
    replaceByName(deviceFinderExtensions, extension);
}

std::shared_ptr<DeviceFinder> DeviceManager::getDeviceFinder(const std::string& name) const {
    return findByName(deviceFinders, name);
}

std::shared_ptr<DeviceFinderExtension>
DeviceManager::getDeviceFinderExtension(const std::string& name) const {
    return findByName(deviceFinderExtensions, name);
}

void DeviceManager::addProductIdentifier(const ProductIdentifier& identifier) {
    productIdentifiers.push_back(identifier.clone());
}

bool DeviceManager::removeDevice(const std::shared_ptr<Device>& device) {
    return removeAt(std::find(devices.begin(), devices.end(), device));
}

bool DeviceManager::removeDevice(std::int32_t index) {
    return removeAt(std::find_if(devices.begin(), devices.end(), [&](const auto& device) {
        return index >= 0 && indexOf(*device) == index;
    }));
}

void DeviceManager::addDevice(const Device& device) {
    devices.push_back(std::make_shared<Device>(device));
}

std::shared_ptr<Device> DeviceManager::findFirst(const Predicate& matches) const {
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const auto& device) { return matches(*device); });
    return found == devices.end() ? nullptr : *found;
}

bool DeviceManager::removeAt(Device::Devices::iterator place) {
    if (place == devices.end()) return false;
    devices.erase(place);
    std::int32_t index = 0;
    for (const auto& device : devices)
        setIndex(*device, index++);
    return true;
}

}  // namespace orvel::core
