// Tests of what a device holds, of its timeouts and of what it asks its paths.
#include "core/Device.h"

#include "tests/core/DeviceParts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::FakePath;
using doubles::newDiary;

TEST(Device, HoldsNothingAtFirst) {
    const Device device;
    EXPECT_TRUE(device.getAttributes().empty());
    EXPECT_TRUE(device.getCommandPaths().empty());
    EXPECT_TRUE(device.getCommandSets().empty());
    EXPECT_TRUE(device.getProtocolIdentifiers().empty());
    EXPECT_TRUE(device.getProductIdentifiers().empty());
    EXPECT_TRUE(device.getChildDevices().empty());
    EXPECT_TRUE(device.getPartitions().empty());
    EXPECT_EQ(device.getCommandHistory().size(), 0U);
    EXPECT_EQ(device.getCommandHistory().getMaxSize(), 1U);
}

TEST(Device, HasAttributes) {
    Device device;
    device.setAttribute(Attribute("Firmware", "1.0"));
    device.setAttribute(Attribute("Firmware", "2.0"));
    EXPECT_TRUE(device.hasAttribute("Firmware"));
    EXPECT_EQ(device.getAttribute(Attribute("Firmware", "absent")).valueAsString(), "2.0");
    device.removeAttribute("Firmware");
    EXPECT_FALSE(device.hasAttribute("Firmware"));
    EXPECT_EQ(device.getAttribute(Attribute("Firmware", "absent")).valueAsString(), "absent");
}

TEST(Device, KeepsACommandPathUnderItsName) {
    Device device;
    const auto path = addPath(device, "NVMe");
    EXPECT_EQ(device.getCommandPath("NVMe"), path);
    EXPECT_EQ(device.getCommandPaths().size(), 1U);
    EXPECT_EQ(device.getCommandPaths().begin()->first, "NVMe");
}

TEST(Device, GivesNullForAnUnknownCommandPath) {
    Device device;
    addPath(device, "NVMe");
    for (const char* name : {"nvme", "NVM", "NVMe ", ""}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(device.getCommandPath(name), nullptr);
    }
    EXPECT_EQ(device.getCommandPaths().size(), 1U);
}

TEST(Device, ReplacesACommandPathOfTheSameName) {
    Device device;
    const auto first = addPath(device, "NVMe");
    const auto other = addPath(device, "ATA");
    const auto second = addPath(device, "NVMe");
    EXPECT_EQ(device.getCommandPath("NVMe"), second);
    EXPECT_EQ(device.getCommandPath("ATA"), other);
    EXPECT_EQ(device.getCommandPaths().size(), 2U);
    EXPECT_EQ(first.use_count(), 1);
}

TEST(Device, IgnoresANullCommandPath) {
    Device device;
    device.addCommandPath(nullptr);
    EXPECT_TRUE(device.getCommandPaths().empty());
    EXPECT_FALSE(device.isAvailable());
}

TEST(Device, SupportsACommandSetUntilItIsRemoved) {
    Device device;
    device.addCommandSet("ATA", "no such path");
    EXPECT_TRUE(device.supportsCommandSet("ATA"));
    EXPECT_FALSE(device.supportsCommandSet("ata"));
    EXPECT_FALSE(device.supportsCommandSet("SCSI"));
    EXPECT_FALSE(device.supportsCommandSet("no such path"));
    device.removeCommandSet("ATA");
    EXPECT_FALSE(device.supportsCommandSet("ATA"));
}

TEST(Device, ReplacesTheEntryOfACommandSet) {
    Device device;
    device.addCommandSet("ATA", "first");
    device.addCommandSet("ATA", "second");
    EXPECT_EQ(device.getCommandSets(), (Device::CommandSets{{"ATA", "second"}}));
}

TEST(Device, RemovesOnlyTheNamedCommandSet) {
    Device device;
    device.addCommandSet("ATA", "one");
    device.addCommandSet("SCSI", "one");
    device.removeCommandSet("NVMe");
    EXPECT_EQ(device.getCommandSets().size(), 2U);
    device.removeCommandSet("ATA");
    EXPECT_EQ(device.getCommandSets(), (Device::CommandSets{{"SCSI", "one"}}));
}

TEST(Device, StoresClonesOfIdentifiers) {
    const Diary diary = newDiary();
    Device device;
    const FakeProtocol protocol(diary, "protocol");
    device.addProtocolIdentifier(protocol);
    {
        const FakeProduct product(diary, "product");
        device.addProductIdentifier(product);
    }
    ASSERT_EQ(device.getProtocolIdentifiers().size(), 1U);
    ASSERT_EQ(device.getProductIdentifiers().size(), 1U);
    EXPECT_NE(device.getProtocolIdentifiers()[0].get(), &protocol);
    EXPECT_NE(dynamic_cast<FakeProtocol*>(device.getProtocolIdentifiers()[0].get()), nullptr);
    expectSuccess(device.identify());
    EXPECT_EQ(*diary, (Lines{"protocol", "product"}));
}

TEST(Device, KeepsTheSameIdentifierTwice) {
    const Diary diary = newDiary();
    Device device;
    device.addProtocolIdentifier(FakeProtocol(diary, "same"));
    device.addProtocolIdentifier(*device.getProtocolIdentifiers()[0]);
    expectSuccess(device.identify());
    EXPECT_EQ(*diary, (Lines{"same", "same"}));
}

TEST(Device, StoresACopyOfAChildDevice) {
    Device device;
    Device child;
    child.setAttribute(Attribute("Firmware", "1.0"));
    device.addChildDevice(child);
    child.setAttribute(Attribute("Firmware", "2.0"));
    ASSERT_EQ(device.getChildDevices().size(), 1U);
    EXPECT_NE(device.getChildDevices()[0].get(), &child);
    EXPECT_EQ(textIn(*device.getChildDevices()[0], "Firmware"), "1.0");
}

TEST(Device, MayHaveACopyOfItselfAsAChild) {
    Device device;
    device.setAttribute(Attribute("Firmware", "1.0"));
    device.addChildDevice(device);
    device.addChildDevice(device);
    ASSERT_EQ(device.getChildDevices().size(), 2U);
    EXPECT_TRUE(device.getChildDevices()[0]->getChildDevices().empty());
    EXPECT_EQ(device.getChildDevices()[1]->getChildDevices().size(), 1U);
    EXPECT_EQ(textIn(*device.getChildDevices()[1], "Firmware"), "1.0");
}

TEST(Device, AppendsACopyOfAPartition) {
    Device device;
    Partition partition;
    for (const char* path : {"/dev/sda1", "/dev/sda2"}) {
        partition.setAttribute(Attribute("Path", path));
        device.addPartition(partition);
    }
    partition.setAttribute(Attribute("Path", "changed"));
    device.addPartition(device.getPartitions()[0]);
    ASSERT_EQ(device.getPartitions().size(), 3U);
    EXPECT_EQ(textIn(device.getPartitions()[0], "Path"), "/dev/sda1");
    EXPECT_EQ(textIn(device.getPartitions()[1], "Path"), "/dev/sda2");
    EXPECT_EQ(textIn(device.getPartitions()[2], "Path"), "/dev/sda1");
}

TEST(Device, HandsOutTheContainersThemselves) {
    const Diary diary = newDiary();
    Device device;
    const auto path = std::make_shared<FakePath>("added");
    device.getCommandPaths()["added"] = path;
    device.getCommandSets()["ATA"] = "added";
    device.getProtocolIdentifiers().push_back(std::make_shared<FakeProtocol>(diary, "protocol"));
    device.getProductIdentifiers().push_back(std::make_shared<FakeProduct>(diary, "product"));
    const auto child = std::make_shared<Device>();
    device.getChildDevices().push_back(child);
    device.getAttributes().set(Attribute("Firmware", "1.0"));
    device.getCommandHistory().setMaxSize(4);

    EXPECT_EQ(device.getCommandPath("added"), path);
    EXPECT_EQ(device.getTimeout("ATA"), 5);
    expectSuccess(device.identify());
    EXPECT_EQ(*diary, (Lines{"protocol", "product"}));
    EXPECT_EQ(textIn(*child, "DeviceStatus"), "Healthy");
    EXPECT_TRUE(device.hasAttribute("Firmware"));
    EXPECT_EQ(device.getCommandHistory().getMaxSize(), 4U);
    device.getPartitions().emplace_back();
    EXPECT_EQ(device.checkPartitions().getCode(), 2);
}

TEST(Device, HandsOutTheSameContainersWhenConst) {
    Device device;
    const Device& same = device;
    EXPECT_EQ(&same.getAttributes(), &device.getAttributes());
    EXPECT_EQ(&same.getCommandPaths(), &device.getCommandPaths());
    EXPECT_EQ(&same.getCommandSets(), &device.getCommandSets());
    EXPECT_EQ(&same.getProtocolIdentifiers(), &device.getProtocolIdentifiers());
    EXPECT_EQ(&same.getProductIdentifiers(), &device.getProductIdentifiers());
    EXPECT_EQ(&same.getChildDevices(), &device.getChildDevices());
    EXPECT_EQ(&same.getPartitions(), &device.getPartitions());
    EXPECT_EQ(&same.getCommandHistory(), &device.getCommandHistory());
}

TEST(Device, SetsTheTimeoutOfTheSetsPath) {
    Device device;
    const auto alpha = addPath(device, "alpha");
    const auto beta = addPath(device, "beta");
    device.addCommandSet("ATA", "beta");
    device.setTimeout(30, "ATA");
    EXPECT_EQ(device.getTimeout("ATA"), 30);
    EXPECT_EQ(beta->getTimeout(), 30);
    EXPECT_EQ(alpha->getTimeout(), 5);
}

TEST(Device, HasOneTimeoutForAllSetsOfAPath) {
    DeviceWithPath only;
    only.device.addCommandSet("SCSI", "only");
    only.device.setTimeout(30, "SCSI");
    EXPECT_EQ(only.device.getTimeout("ATA"), 30);
}

TEST(Device, TakesAnyNumberAsATimeout) {
    DeviceWithPath only;
    for (const std::int32_t seconds : {0, -1, -2147483647 - 1, 2147483647}) {
        SCOPED_TRACE(seconds);
        only.device.setTimeout(seconds, "ATA");
        EXPECT_EQ(only.device.getTimeout("ATA"), seconds);
    }
}

TEST(Device, IgnoresTheTimeoutOfAnUnknownSetOrPath) {
    Device device;
    const auto alpha = addPath(device, "alpha");
    device.addCommandSet("ATA", "gone");
    // The last is the name of a path, not of a set.
    for (const char* set : {"ATA", "SCSI", "", "alpha"}) {
        SCOPED_TRACE(set);
        device.setTimeout(30, set);
        EXPECT_EQ(device.getTimeout(set), -1);
    }
    EXPECT_EQ(alpha->getTimeout(), 5);
    EXPECT_EQ(device.getCommandSets(), (Device::CommandSets{{"ATA", "gone"}}));
    EXPECT_EQ(device.getCommandPaths().size(), 1U);
}

TEST(Device, SetsTheTimeoutsOfAllPaths) {
    Device device;
    const auto alpha = addPath(device, "alpha");
    const auto beta = addPath(device, "beta");
    device.setTimeouts(60);
    EXPECT_EQ(alpha->getTimeout(), 60);
    EXPECT_EQ(beta->getTimeout(), 60);
}

TEST(Device, SetsNoTimeoutsWithoutPaths) {
    Device device;
    device.setTimeouts(60);
    EXPECT_TRUE(device.getCommandPaths().empty());
}

TEST(Device, SetsTheTimeoutsOfATableOfPaths) {
    Device device;
    const auto alpha = addPath(device, "alpha");
    const auto beta = addPath(device, "beta");
    const auto gamma = addPath(device, "gamma");
    device.setTimeouts({{alpha, 10}, {gamma, 20}});
    EXPECT_EQ(alpha->getTimeout(), 10);
    EXPECT_EQ(beta->getTimeout(), 5);
    EXPECT_EQ(gamma->getTimeout(), 20);
}

TEST(Device, TellsThePathsOfATableDirectly) {
    Device device;
    const auto own = addPath(device, "same name");
    const auto other = std::make_shared<FakePath>("same name");
    device.setTimeouts({{other, 10}});
    EXPECT_EQ(other->getTimeout(), 10);
    EXPECT_EQ(own->getTimeout(), 5);
    EXPECT_EQ(device.getCommandPath("same name"), own);
}

TEST(Device, PassesOverNullInATableOfTimeouts) {
    Device device;
    const auto alpha = addPath(device, "alpha");
    device.setTimeouts({{nullptr, 10}, {alpha, 20}});
    EXPECT_EQ(alpha->getTimeout(), 20);
}

/// Three paths with one diary, added out of the order of their names.
struct ThreePaths {
    ThreePaths() : c(addPath(device, "c")), a(addPath(device, "a")), b(addPath(device, "b")) {
        for (const auto& path : {a, b, c}) {
            path->diary = diary;
            path->partitionStatus = Status(0, 3, "Device has no partitions.");
        }
    }

    Device device;
    Diary diary = newDiary();
    std::shared_ptr<FakePath> c, a, b;
};

TEST(Device, AsksNoPathForPartitionsIfItHasOne) {
    ThreePaths three;
    three.device.addPartition(Partition());
    expectStatus(three.device.checkPartitions(), 0, 2, "Device has one or more partitions.");
    EXPECT_TRUE(three.diary->empty());
}

TEST(Device, AsksItsPathsForPartitionsInTheOrderOfTheirNames) {
    ThreePaths three;
    expectStatus(three.device.checkPartitions(), 0, 3, "Device has no partitions.");
    EXPECT_EQ(*three.diary, (Lines{"a checkPartitions", "b checkPartitions", "c checkPartitions"}));
}

TEST(Device, AsksNoFurtherPathOnceOneHasPartitions) {
    ThreePaths three;
    three.b->partitionStatus = Status(0, 2, "Device has one or more partitions.");
    expectStatus(three.device.checkPartitions(), 0, 2, "Device has one or more partitions.");
    EXPECT_EQ(*three.diary, (Lines{"a checkPartitions", "b checkPartitions"}));
}

TEST(Device, CountsAPathsAnswerByCodeAndCategory) {
    ThreePaths three;
    three.a->partitionStatus = Status(0, 2, "in the words of the path");
    const Status status = three.device.checkPartitions();
    EXPECT_EQ(status.getCategory(), 0);
    EXPECT_EQ(status.getCode(), 2);
    EXPECT_EQ(*three.diary, (Lines{"a checkPartitions"}));
}

TEST(Device, HasNoPartitionsWhateverElseItsPathsAnswer) {
    const Status OTHERS[] = {
        Status(),
        Status(0, 1, "Not run."),
        Status(0, 3, "Device has no partitions."),
        Status(0, 9, "Unable to check if partition exists on the selected device."),
        Status(1, 2, "No such file or directory"),
        Status(10, 2, "of another category"),
        Status(-1, 2, "Device has one or more partitions."),
    };
    for (const Status& other : OTHERS) {
        SCOPED_TRACE(other.toString());
        ThreePaths three;
        for (const auto& path : {three.a, three.b, three.c})
            path->partitionStatus = other;
        expectStatus(three.device.checkPartitions(), 0, 3, "Device has no partitions.");
        EXPECT_EQ(three.diary->size(), 3U);
    }
}

TEST(Device, HasNoPartitionsWithoutPathsAndChildrensDoNotCount) {
    Device child;
    child.addPartition(Partition());
    Device device;
    device.addChildDevice(child);
    expectStatus(device.checkPartitions(), 0, 3, "Device has no partitions.");
}

TEST(Device, IsNotAvailableWithoutPaths) {
    Device device;
    EXPECT_FALSE(device.isAvailable());
    Device child;
    addPath(child, "of the child");
    device.addChildDevice(child);
    device.addCommandSet("ATA", "gone");
    EXPECT_FALSE(device.isAvailable());
}

TEST(Device, IsAvailableIfAllPathsReachIt) {
    ThreePaths three;
    EXPECT_TRUE(three.device.isAvailable());
    EXPECT_EQ(*three.diary, (Lines{"a isAvailable", "b isAvailable", "c isAvailable"}));
}

TEST(Device, AsksNoFurtherPathOnceOneDoesNotReachIt) {
    ThreePaths three;
    three.b->available = false;
    EXPECT_FALSE(three.device.isAvailable());
    EXPECT_EQ(*three.diary, (Lines{"a isAvailable", "b isAvailable"}));
}

TEST(Device, HandsItselfToThePathThatIsAsked) {
    class AskedPath : public FakePath {
    public:
        using FakePath::FakePath;

        bool isAvailable(Device& device) override {
            asker = &device;
            return true;
        }

        const Device* asker = nullptr;
    };

    Device device;
    const auto path = std::make_shared<AskedPath>("asked");
    device.addCommandPath(path);
    EXPECT_TRUE(device.isAvailable());
    EXPECT_EQ(path->asker, &device);
}

}  // namespace
}  // namespace orvel::core
