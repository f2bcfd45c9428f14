#include "simulator/SimulatedDriveFinder.h"

#include "features/DeviceAttributes.h"
#include "features/JobProperties.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/nvme/AdminCommand.h"
#include "simulator/SimulatedAtaPath.h"
#include "simulator/SimulatedNvmePath.h"

#include <utility>
#include <variant>

namespace orvel::simulator {

namespace attributes = features::device_attributes;
namespace partition_information = features::partition_information;

namespace {

/// As operating systems number what drives are attached to.
constexpr std::int32_t BUS_SATA = 11;
constexpr std::int32_t BUS_NVME = 17;

template <class Holder, class Value>
void put(Holder& holder, core::Attribute descriptor, const Value& value) {
    descriptor.setValue(value);
    holder.setAttribute(descriptor);
}

core::Partition partition(const PartitionFacts& facts) {
    core::Partition made;
    put(made, partition_information::Path(), facts.path);
    if (!facts.fileSystemType.empty())
        put(made, partition_information::FileSystemType(), facts.fileSystemType);
    put(made, partition_information::Size(), facts.size);
    // The catalogue's type has no room for an offset in bytes.
    const core::Attribute row = partition_information::Offset();
    core::Attribute offset(row.getName(), facts.offset);
    offset.setDisplayName(row.getDisplayName());
    made.setAttribute(offset);
    return made;
}

void putRaid(core::Device& device, const RaidFacts& raid) {
    put(device, attributes::RAIDMember(), true);
    put(device, attributes::RAIDVolumeName(), raid.volumeName);
    put(device, attributes::RAIDSetIndex(), raid.setIndex);
    put(device, attributes::RAIDType(), raid.type);
    put(device, attributes::RAIDDriveCount(), raid.driveCount);
    put(device, attributes::RAIDStripeSize(), raid.stripeSize);
}

}  // namespace

SimulatedDriveFinder::SimulatedDriveFinder(std::shared_ptr<FleetFolder> folder,
                                           Identifiers identifiers, SimulatedPath::Wait wait)
    : DeviceFinder("Simulated"),
      folder(std::move(folder)),
      identifiers(std::move(identifiers)),
      wait(std::move(wait)) {}

void SimulatedDriveFinder::find(core::Device::Devices& devices) {
    for (const SimulatedDrive& drive : folder->open().drives) {
        if (!drive.isLost) devices.push_back(makeDevice(drive));
    }
}

std::unique_ptr<core::DeviceFinder> SimulatedDriveFinder::clone() const {
    return std::make_unique<SimulatedDriveFinder>(*this);
}

std::shared_ptr<core::Device> SimulatedDriveFinder::makeDevice(const SimulatedDrive& drive) const {
    auto device = std::make_shared<core::Device>();
    const bool isNvme = std::holds_alternative<NvmeDrive>(drive.drive);
    if (isNvme) {
        device->addCommandPath(std::make_shared<SimulatedNvmePath>(folder, drive.devicePath, wait));
        device->addCommandSet(protocols::nvme::ADMIN_COMMAND_SET, SimulatedNvmePath::NAME);
    } else {
        device->addCommandPath(std::make_shared<SimulatedAtaPath>(folder, drive.devicePath, wait));
        device->addCommandSet(protocols::ata::AtaCommand::COMMAND_SET, SimulatedAtaPath::NAME);
    }
    put(*device, attributes::DevicePath(), drive.devicePath);
    put(*device, attributes::BusType(), isNvme ? BUS_NVME : BUS_SATA);
    put(*device, attributes::DriverDescription(), std::string("Simulated drives"));
    put(*device, attributes::RAIDMember(), drive.raid.has_value());
    if (drive.raid) putRaid(*device, *drive.raid);
    for (const PartitionFacts& facts : drive.partitions)
        device->addPartition(partition(facts));

    for (const auto& identifier : isNvme ? identifiers.nvme : identifiers.ata)
        device->addProtocolIdentifier(*identifier);
    for (const auto& identifier : getProductIdentifiers())
        device->addProductIdentifier(*identifier);
    return device;
}

}  // namespace orvel::simulator
