#include "core/Device.h"

#include "core/CoreStatuses.h"
#include "features/DeviceAttributes.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace orvel::core {

namespace {

namespace device_attributes = features::device_attributes;

constexpr std::uint32_t USUAL_SECTOR_SIZE = 512;
constexpr const char* HEALTHY = "Healthy";

template <class Value>
void store(Device& device, Attribute attribute, const Value& value) {
    attribute.setValue(value);
    device.setAttribute(attribute);
}

template <class Cloneable>
std::vector<std::shared_ptr<Cloneable>>
clonesOf(const std::vector<std::shared_ptr<Cloneable>>& originals) {
    std::vector<std::shared_ptr<Cloneable>> clones;
    clones.reserve(originals.size());
    for (const auto& original : originals)
        clones.push_back(original->clone());
    return clones;
}

Device::CommandPaths clonesOf(const Device::CommandPaths& originals) {
    Device::CommandPaths clones;
    for (const auto& [name, path] : originals)
        clones.emplace(name, path->clone());
    return clones;
}

Device::Devices copiesOf(const Device::Devices& originals) {
    Device::Devices copies;
    copies.reserve(originals.size());
    for (const auto& original : originals)
        copies.push_back(std::make_shared<Device>(*original));
    return copies;
}

}  // namespace

Device::Device(const Device& other)
    : AttributeHolder(other),
      commandPaths(clonesOf(other.commandPaths)),
      commandSets(other.commandSets),
      protocolIdentifiers(clonesOf(other.protocolIdentifiers)),
      productIdentifiers(clonesOf(other.productIdentifiers)),
      childDevices(copiesOf(other.childDevices)),
      partitions(other.partitions),
      commandHistory(other.commandHistory) {}

Device& Device::operator=(const Device& other) {
    if (this == &other) return *this;
    Device copy(other);
    commandHistory = copy.commandHistory;  // the last step that may fail, and then changes nothing
    commandPaths = std::move(copy.commandPaths);
    commandSets = std::move(copy.commandSets);
    protocolIdentifiers = std::move(copy.protocolIdentifiers);
    productIdentifiers = std::move(copy.productIdentifiers);
    childDevices = std::move(copy.childDevices);
    partitions = std::move(copy.partitions);
    AttributeHolder::operator=(std::move(copy));
    return *this;
}

void Device::addCommandPath(const std::shared_ptr<CommandPath>& path) {
    if (path) commandPaths.insert_or_assign(path->getName(), path);
}

std::shared_ptr<CommandPath> Device::getCommandPath(const std::string& name) const {
    const auto found = commandPaths.find(name);
    return found == commandPaths.end() ? nullptr : found->second;
}

void Device::addCommandSet(const std::string& setName, const std::string& pathName) {
    commandSets.insert_or_assign(setName, pathName);
}

void Device::removeCommandSet(const std::string& setName) {
    commandSets.erase(setName);
}

bool Device::supportsCommandSet(const std::string& setName) const {
    return commandSets.contains(setName);
}

void Device::setTimeout(std::int32_t seconds, const std::string& setName) {
    if (const auto path = findPath(setName)) path->setTimeout(seconds);
}

std::int32_t Device::getTimeout(const std::string& setName) const {
    const auto path = findPath(setName);
    return path ? path->getTimeout() : -1;
}

void Device::setTimeouts(std::int32_t seconds) {
    for (const auto& [name, path] : commandPaths)
        path->setTimeout(seconds);
}

void Device::setTimeouts(const std::map<std::shared_ptr<CommandPath>, std::int32_t>& seconds) {
    for (const auto& [path, limit] : seconds) {
        if (path) path->setTimeout(limit);
    }
}

void Device::addProtocolIdentifier(const ProtocolIdentifier& identifier) {
    protocolIdentifiers.push_back(identifier.clone());
}

void Device::addProductIdentifier(const ProductIdentifier& identifier) {
    productIdentifiers.push_back(identifier.clone());
}

void Device::addChildDevice(const Device& device) {
    childDevices.push_back(std::make_shared<Device>(device));
}

void Device::addPartition(const Partition& partition) {
    partitions.push_back(partition);
}

CommandResult Device::sendCommand(const Command& command) {
    return sendCommand(command, Payload());
}

CommandResult Device::sendCommand(const Command& command, const Payload& input) {
    CommandResult result;
    if (const auto path = findPath(command.getCommandSetName())) {
        result = path->send(command, input, *this);
        result.commandPath = path->clone();
        result.quietToXml = isSet(device_attributes::CommandResultQuietXml());
    } else {
        result.command = command.clone();
        result.inputPayload = input;
        result.status = statuses::commandSetNotSupported();
    }
    commandHistory.add(result);
    return result;
}

Status Device::identify() {
    store(*this, device_attributes::SectorSize(), USUAL_SECTOR_SIZE);
    // Each walk is over a copy of the list: an identifier may add to the device's own.
    for (const auto& identifier : ProtocolIdentifiers(protocolIdentifiers))
        std::ignore = identifier->identify(*this);
    for (const auto& child : Devices(childDevices))
        std::ignore = child->identify();
    for (const auto& identifier : ProductIdentifiers(productIdentifiers))
        std::ignore = identifier->identify(*this);

    const std::string error = readText(device_attributes::ErrorString());
    store(*this, device_attributes::DeviceStatus(), error.empty() ? HEALTHY : error);

    if (hasAttribute(device_attributes::MaximumLBA().getName())) {
        const std::uint64_t sectors = readUnsigned64(device_attributes::MaximumLBA()) + 1;
        const std::uint64_t sectorSize = readUnsigned64(device_attributes::SectorSize());
        store(*this, device_attributes::PhysicalSize(),
              static_cast<std::int64_t>(sectors * sectorSize));
    }
    return {};
}

Status Device::checkPartitions() {
    if (!partitions.empty()) return statuses::deviceHasPartitions();
    for (const auto& [name, path] : commandPaths) {
        Status status = path->checkPartitions();
        if (status == statuses::deviceHasPartitions()) return status;
    }
    return statuses::deviceHasNoPartitions();
}

bool Device::isAvailable() {
    return !commandPaths.empty() &&
           std::all_of(commandPaths.begin(), commandPaths.end(),
                       [this](const auto& entry) { return entry.second->isAvailable(*this); });
}

std::shared_ptr<CommandPath> Device::findPath(const std::string& setName) const {
    const auto found = commandSets.find(setName);
    return found == commandSets.end() ? nullptr : getCommandPath(found->second);
}

}  // namespace orvel::core
