#include "simulator/SimulatedDriveFinder.h"

#include "FleetSimulation.h"
#include "core/CommandResult.h"
#include "features/DeviceAttributes.h"
#include "features/JobProperties.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/nvme/AdminCommands.h"
#include "tests/core/FinderDoubles.h"

#include <vector>

namespace orvel::simulator {
namespace {

using core::doubles::FakeProductIdentifier;
using core::doubles::FakeProtocolIdentifier;

std::string text(const core::AttributeHolder& holder, const core::Attribute& descriptor) {
    return holder.hasAttribute(descriptor.getName())
               ? holder.getAttribute(descriptor).valueAsString()
               : "none";
}

namespace attributes = features::device_attributes;
namespace partition_information = features::partition_information;

struct FinderSimulation : FleetSimulation {
    core::Device::Devices find() {
        core::Device::Devices devices;
        finder.find(devices);
        return devices;
    }

    std::shared_ptr<FleetFolder> folder = makeFolder();
    SimulatedDriveFinder finder{folder,
                                {{std::make_shared<FakeProtocolIdentifier>("nvme")},
                                 {std::make_shared<FakeProtocolIdentifier>("ata"),
                                  std::make_shared<FakeProtocolIdentifier>("sata")}}};
};

TEST(SimulatedDriveFinder, FindsADeviceForEachDrive) {
    FinderSimulation simulation;
    EXPECT_EQ(simulation.finder.getName(), "Simulated");
    const auto devices = simulation.find();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(text(*devices[0], attributes::DevicePath()), "/dev/nvme0");
    EXPECT_EQ(text(*devices[0], attributes::BusType()), "17");
    EXPECT_EQ(text(*devices[0], attributes::DriverDescription()), "Simulated drives");
    EXPECT_EQ(text(*devices[0], attributes::RAIDMember()), "False");
    EXPECT_EQ(text(*devices[0], attributes::RAIDVolumeName()), "none");
    EXPECT_EQ(text(*devices[1], attributes::DevicePath()), "/dev/sda");
    EXPECT_EQ(text(*devices[1], attributes::BusType()), "11");
}

TEST(SimulatedDriveFinder, GivesDevicesAWayToTheirDrive) {
    FinderSimulation simulation;
    const auto devices = simulation.find();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_FALSE(devices[0]->supportsCommandSet("ATA"));
    EXPECT_FALSE(devices[1]->supportsCommandSet("NVMe Admin"));
    const auto nvme = devices[0]->sendCommand(protocols::nvme::identify(1));
    EXPECT_EQ(nvme.status.getCode(), 0);
    EXPECT_EQ(nvme.outputPayload.size(), 4096U);
    const auto ata = devices[1]->sendCommand(protocols::ata::identifyDevice());
    EXPECT_EQ(ata.status.getCode(), 0);
    EXPECT_EQ(ata.outputPayload.size(), 512U);
    EXPECT_TRUE(devices[0]->isAvailable());
    EXPECT_EQ(devices[0]->checkPartitions().getCode(), 3);
}

TEST(SimulatedDriveFinder, LeavesDrivesOutThatAreLost) {
    FinderSimulation simulation;
    simulation.folder->open().drives[0].isLost = true;
    const auto devices = simulation.find();
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_EQ(text(*devices[0], attributes::DevicePath()), "/dev/sda");
}

TEST(SimulatedDriveFinder, TellsOfTheVolumeThatADriveIsAMemberOf) {
    FinderSimulation simulation;
    simulation.folder->open().drives[1].raid = RaidFacts{"Volume0", 3, 1, 2, 128};
    const auto devices = simulation.find();
    EXPECT_EQ(text(*devices[1], attributes::RAIDMember()), "True");
    EXPECT_EQ(text(*devices[1], attributes::RAIDVolumeName()), "Volume0");
    EXPECT_EQ(text(*devices[1], attributes::RAIDSetIndex()), "3");
    EXPECT_EQ(text(*devices[1], attributes::RAIDType()), "1");
    EXPECT_EQ(text(*devices[1], attributes::RAIDDriveCount()), "2");
    EXPECT_EQ(text(*devices[1], attributes::RAIDStripeSize()), "128");
}

TEST(SimulatedDriveFinder, TellsOfPartitions) {
    FinderSimulation simulation;
    simulation.folder->open().drives[1].partitions = {{"/dev/sda1", "ext4", 1048576, 500000000000},
                                                      {"/dev/sda2", "", 600000000000, 512}};
    const auto partitions = simulation.find().at(1)->getPartitions();
    ASSERT_EQ(partitions.size(), 2U);
    EXPECT_EQ(text(partitions[0], partition_information::Path()), "/dev/sda1");
    EXPECT_EQ(text(partitions[0], partition_information::FileSystemType()), "ext4");
    EXPECT_EQ(text(partitions[0], partition_information::Offset()), "1048576");
    EXPECT_EQ(text(partitions[0], partition_information::Size()), "500000000000");
    EXPECT_EQ(text(partitions[1], partition_information::Path()), "/dev/sda2");
    EXPECT_EQ(text(partitions[1], partition_information::FileSystemType()), "none");
    EXPECT_EQ(text(partitions[1], partition_information::Offset()), "600000000000");
    EXPECT_EQ(simulation.find().at(1)->checkPartitions().getCode(), 2);
}

TEST(SimulatedDriveFinder, HandsTheIdentifiersOn) {
    FinderSimulation simulation;
    simulation.finder.setProductIdentifiers({std::make_shared<FakeProductIdentifier>("product")});
    const auto finder = simulation.finder.clone();
    EXPECT_EQ(finder->getName(), "Simulated");
    core::Device::Devices devices;
    finder->find(devices);
    ASSERT_EQ(devices.size(), 2U);
    ASSERT_EQ(devices[0]->getProtocolIdentifiers().size(), 1U);
    EXPECT_EQ(
        dynamic_cast<FakeProtocolIdentifier&>(*devices[0]->getProtocolIdentifiers()[0]).getName(),
        "nvme");
    ASSERT_EQ(devices[1]->getProtocolIdentifiers().size(), 2U);
    EXPECT_EQ(
        dynamic_cast<FakeProtocolIdentifier&>(*devices[1]->getProtocolIdentifiers()[1]).getName(),
        "sata");
    for (const auto& device : devices) {
        ASSERT_EQ(device->getProductIdentifiers().size(), 1U);
        EXPECT_EQ(
            dynamic_cast<FakeProductIdentifier&>(*device->getProductIdentifiers()[0]).getName(),
            "product");
    }
}

TEST(SimulatedDriveFinder, FindsNothingInADamagedFleet) {
    FinderSimulation simulation;
    writeAll(simulation.state, "no fleet");
    EXPECT_THROW(simulation.find(), core::Status);
}

}  // namespace
}  // namespace orvel::simulator
