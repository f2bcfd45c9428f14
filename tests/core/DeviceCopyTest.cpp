// Tests of the copies of a device.
#include "core/Device.h"

#include "tests/core/DeviceParts.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::FakeCommand;
using doubles::FakePath;
using doubles::newDiary;

/// A device with something in every field, down to a grandchild.
Device fullDevice(const Diary& diary) {
    Device grandchild;
    grandchild.setAttribute(Attribute("Level", "grandchild"));
    addPath(grandchild, "grandchild's");
    Device child;
    child.setAttribute(Attribute("Level", "child"));
    child.addChildDevice(grandchild);
    Partition partition;
    partition.setAttribute(Attribute("Path", "/dev/sda1"));

    Device device;
    device.setAttribute(Attribute("Level", "top"));
    device.setAttribute(Attribute("Bytes", payloadOf({1, 2, 3})));
    addPath(device, "alpha")->setTimeout(10);
    addPath(device, "beta")->setTimeout(20);
    device.addCommandSet("ATA", "alpha");
    device.addCommandSet("SCSI", "beta");
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol"));
    device.addProductIdentifier(FakeProduct(diary, "product"));
    device.addChildDevice(child);
    device.addPartition(partition);
    device.setCommandHistorySize(3);
    device.sendCommand(FakeCommand("ATA", "first"), payloadOf({4}));
    device.sendCommand(FakeCommand("none", "second"));
    return device;
}

Device& childOf(const Device& device) {
    return *device.getChildDevices().at(0);
}

/// Runs the check with each way to come by a copy.
void withEachCopy(const std::function<void(Device& original, Device& copy)>& check) {
    {
        SCOPED_TRACE("constructed");
        Device original = fullDevice(newDiary());
        Device copy = original;
        check(original, copy);
    }
    {
        SCOPED_TRACE("assigned to an empty device");
        Device original = fullDevice(newDiary());
        Device copy;
        copy = original;
        check(original, copy);
    }
    {
        SCOPED_TRACE("assigned to a filled device");
        Device original = fullDevice(newDiary());
        Device copy = fullDevice(newDiary());
        copy.setAttribute(Attribute("Old", "1"));
        copy.setAttribute(Attribute("Level", "old"));
        addPath(copy, "alpha")->setTimeout(99);
        addPath(copy, "old");
        copy.addCommandSet("old", "old");
        copy.addCommandSet("ATA", "old");
        copy.addProtocolIdentifier(FakeProtocol(newDiary(), "old"));
        copy.addProductIdentifier(FakeProduct(newDiary(), "old"));
        copy.addChildDevice(Device());
        copy.addPartition(Partition());
        copy.setCommandHistorySize(7);
        copy.sendCommand(FakeCommand("none", "old"));
        copy = original;
        check(original, copy);
    }
    {
        SCOPED_TRACE("as a child");
        Device original = fullDevice(newDiary());
        Device parent;
        parent.addChildDevice(original);
        check(original, childOf(parent));
    }
}

TEST(DeviceCopy, HasTheAttributes) {
    withEachCopy([](Device& original, Device& copy) {
        EXPECT_EQ(namesIn(copy), (Lines{"Level", "Bytes"}));
        copy.setAttribute(Attribute("Level", "copy"));
        copy.removeAttribute("Bytes");
        original.setAttribute(Attribute("New", "1"));
        EXPECT_EQ(textIn(original, "Level"), "top");
        EXPECT_EQ(textIn(original, "Bytes"), "010203");
        EXPECT_EQ(namesIn(copy), (Lines{"Level"}));
    });
}

TEST(DeviceCopy, HasBytesOfItsOwnInItsAttributes) {
    withEachCopy([](Device& original, Device& copy) {
        *copy.getAttribute(blank("Bytes")).getPayload().at(0) = 0xAA;
        *original.getAttribute(blank("Bytes")).getPayload().at(1) = 0xBB;
        *copy.getPartitions().at(0).getAttribute(blank("Path")).getPayload().at(8) = '2';
        *childOf(copy).getAttribute(blank("Level")).getPayload().at(0) = 'C';
        EXPECT_EQ(textIn(copy, "Bytes"), "AA0203");
        EXPECT_EQ(textIn(original, "Bytes"), "01BB03");
        EXPECT_EQ(textIn(original.getPartitions().at(0), "Path"), "/dev/sda1");
        EXPECT_EQ(textIn(childOf(original), "Level"), "child");
    });
}

TEST(DeviceCopy, HasClonesOfThePaths) {
    withEachCopy([](Device& original, Device& copy) {
        ASSERT_EQ(copy.getCommandPaths().size(), 2U);
        for (const char* name : {"alpha", "beta"}) {
            SCOPED_TRACE(name);
            ASSERT_NE(copy.getCommandPath(name), nullptr);
            EXPECT_NE(copy.getCommandPath(name), original.getCommandPath(name));
            EXPECT_EQ(copy.getCommandPath(name)->getName(), name);
        }
        EXPECT_EQ(copy.getTimeout("ATA"), 10);
        EXPECT_EQ(copy.getTimeout("SCSI"), 20);
    });
}

TEST(DeviceCopy, SharesNoPath) {
    withEachCopy([](Device& original, Device& copy) {
        copy.setTimeout(33, "ATA");
        original.setTimeout(44, "SCSI");
        EXPECT_EQ(original.getTimeout("ATA"), 10);
        EXPECT_EQ(copy.getTimeout("SCSI"), 20);
        copy.getCommandPaths().erase("alpha");
        addPath(original, "gamma");
        EXPECT_NE(original.getCommandPath("alpha"), nullptr);
        EXPECT_EQ(copy.getCommandPath("gamma"), nullptr);
    });
}

TEST(DeviceCopy, HasTheCommandSets) {
    withEachCopy([](Device& original, Device& copy) {
        EXPECT_EQ(copy.getCommandSets(), (Device::CommandSets{{"ATA", "alpha"}, {"SCSI", "beta"}}));
        copy.removeCommandSet("ATA");
        original.addCommandSet("NVMe", "alpha");
        EXPECT_TRUE(original.supportsCommandSet("ATA"));
        EXPECT_FALSE(copy.supportsCommandSet("NVMe"));
    });
}

TEST(DeviceCopy, HasClonesOfTheIdentifiers) {
    withEachCopy([](Device& original, Device& copy) {
        ASSERT_EQ(copy.getProtocolIdentifiers().size(), 1U);
        ASSERT_EQ(copy.getProductIdentifiers().size(), 1U);
        EXPECT_NE(copy.getProtocolIdentifiers()[0], original.getProtocolIdentifiers()[0]);
        EXPECT_NE(copy.getProductIdentifiers()[0], original.getProductIdentifiers()[0]);
        copy.getProtocolIdentifiers().clear();
        original.getProductIdentifiers().clear();
        EXPECT_EQ(original.getProtocolIdentifiers().size(), 1U);
        EXPECT_EQ(copy.getProductIdentifiers().size(), 1U);
    });
}

TEST(DeviceCopy, IsIdentifiedByTheSameIdentifiersAndLeavesTheOriginal) {
    const Diary diary = newDiary();
    const Device original = fullDevice(diary);
    Device copy = original;
    expectSuccess(copy.identify());
    EXPECT_EQ(*diary, (Lines{"protocol", "product"}));
    EXPECT_EQ(textIn(copy, "DeviceStatus"), "Healthy");
    EXPECT_FALSE(original.hasAttribute("DeviceStatus"));
    EXPECT_TRUE(childOf(childOf(copy)).hasAttribute("DeviceStatus"));
    EXPECT_FALSE(childOf(childOf(original)).hasAttribute("DeviceStatus"));
}

TEST(DeviceCopy, HasThePartitions) {
    withEachCopy([](Device& original, Device& copy) {
        ASSERT_EQ(copy.getPartitions().size(), 1U);
        copy.getPartitions()[0].setAttribute(Attribute("Path", "/dev/sdb1"));
        original.addPartition(Partition());
        EXPECT_EQ(textIn(original.getPartitions()[0], "Path"), "/dev/sda1");
        EXPECT_EQ(copy.getPartitions().size(), 1U);
    });
}

TEST(DeviceCopy, HasTheHistoryAndItsSize) {
    withEachCopy([](Device& original, Device& copy) {
        EXPECT_EQ(copy.getCommandHistory().getMaxSize(), 3U);
        ASSERT_EQ(copy.getCommandHistory().size(), 2U);
        EXPECT_EQ(copy.getCommandHistory().front().command->toString(), "ATA/first");
        EXPECT_EQ(copy.getCommandHistory().front().commandPath->getName(), "alpha");
        EXPECT_EQ(bytesOf(copy.getCommandHistory().front().inputPayload), (Bytes{4}));
        EXPECT_EQ(copy.getCommandHistory().back().status.getCode(), 35);
        copy.sendCommand(FakeCommand("SCSI", "third"));
        original.setCommandHistorySize(1);
        EXPECT_EQ(original.getCommandHistory().back().command->getName(), "second");
        EXPECT_EQ(copy.getCommandHistory().size(), 3U);
        EXPECT_EQ(copy.getCommandHistory().getMaxSize(), 3U);
    });
}

TEST(DeviceCopy, HasNewDevicesAsChildrenAtAllLevels) {
    withEachCopy([](Device& original, Device& copy) {
        ASSERT_EQ(copy.getChildDevices().size(), 1U);
        ASSERT_EQ(childOf(copy).getChildDevices().size(), 1U);
        EXPECT_NE(&childOf(copy), &childOf(original));
        EXPECT_NE(&childOf(childOf(copy)), &childOf(childOf(original)));
        EXPECT_EQ(textIn(childOf(copy), "Level"), "child");
        EXPECT_EQ(textIn(childOf(childOf(copy)), "Level"), "grandchild");
        EXPECT_NE(childOf(childOf(copy)).getCommandPath("grandchild's"),
                  childOf(childOf(original)).getCommandPath("grandchild's"));

        childOf(childOf(copy)).setAttribute(Attribute("Level", "of the copy"));
        childOf(original).setAttribute(Attribute("Level", "of the original"));
        copy.addChildDevice(Device());
        EXPECT_EQ(textIn(childOf(childOf(original)), "Level"), "grandchild");
        EXPECT_EQ(textIn(childOf(copy), "Level"), "child");
        EXPECT_EQ(original.getChildDevices().size(), 1U);
    });
}

TEST(DeviceCopy, OutlivesTheOriginal) {
    std::optional<Device> original = fullDevice(newDiary());
    Device copy = *original;
    original.reset();
    expectSuccess(copy.identify());
    EXPECT_TRUE(copy.isAvailable());
    EXPECT_EQ(copy.sendCommand(FakeCommand("SCSI", "third")).commandPath->getName(), "beta");
}

TEST(DeviceAssignment, ReturnsTheDeviceThatWasAssignedTo) {
    const Device original;
    Device device;
    EXPECT_EQ(&(device = original), &device);
}

TEST(DeviceAssignment, DropsWhatTheDeviceHeld) {
    Device device;
    const std::weak_ptr<FakePath> path = addPath(device, "old");
    device.addChildDevice(Device());
    const std::weak_ptr<Device> child = device.getChildDevices()[0];
    device = Device();
    EXPECT_TRUE(path.expired());
    EXPECT_TRUE(child.expired());
}

TEST(DeviceAssignment, MakesADeviceEmptyFromAnEmptyOne) {
    Device device = fullDevice(newDiary());
    device = Device();
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

TEST(DeviceAssignment, LeavesADeviceThatIsAssignedToItself) {
    Device device = fullDevice(newDiary());
    const Device& same = device;
    device = same;
    EXPECT_EQ(textIn(device, "Level"), "top");
    EXPECT_EQ(textIn(device, "Bytes"), "010203");
    EXPECT_EQ(device.getTimeout("ATA"), 10);
    EXPECT_EQ(device.getCommandSets().size(), 2U);
    EXPECT_EQ(device.getProtocolIdentifiers().size(), 1U);
    EXPECT_EQ(device.getProductIdentifiers().size(), 1U);
    EXPECT_EQ(device.getPartitions().size(), 1U);
    EXPECT_EQ(device.getCommandHistory().size(), 2U);
    ASSERT_EQ(device.getChildDevices().size(), 1U);
    EXPECT_EQ(textIn(childOf(childOf(device)), "Level"), "grandchild");
}

TEST(DeviceAssignment, TakesADevicesOwnChildAndGrandchild) {
    Device device = fullDevice(newDiary());
    device = childOf(device);
    EXPECT_EQ(textIn(device, "Level"), "child");
    EXPECT_EQ(textIn(childOf(device), "Level"), "grandchild");
    EXPECT_TRUE(device.getCommandPaths().empty());
    EXPECT_EQ(device.getCommandHistory().size(), 0U);

    device = fullDevice(newDiary());
    device = childOf(childOf(device));
    EXPECT_EQ(textIn(device, "Level"), "grandchild");
    EXPECT_NE(device.getCommandPath("grandchild's"), nullptr);
    EXPECT_TRUE(device.getChildDevices().empty());
}

TEST(DeviceAssignment, ChangesNothingIfACopyCannotBeMade) {
    /// Shares with its clones how many more there may be.
    class ScarceCommand : public FakeCommand {
    public:
        explicit ScarceCommand(std::shared_ptr<int> left)
            : FakeCommand("none", "scarce"),
              left(std::move(left)) {}

        std::unique_ptr<Command> clone() const override {
            if (--*left < 0) throw std::runtime_error("no more clones");
            return std::make_unique<ScarceCommand>(*this);
        }

    private:
        std::shared_ptr<int> left;
    };

    const auto left = std::make_shared<int>(100);
    Device original = fullDevice(newDiary());
    original.setAttribute(Attribute("Level", "original"));
    original.removeCommandSet("ATA");
    original.getCommandPaths().clear();
    original.getPartitions().clear();
    original.getChildDevices().clear();
    original.setCommandHistorySize(4);
    original.sendCommand(ScarceCommand(left));
    Device device = fullDevice(newDiary());

    // Each round gets one clone further, until there are enough.
    int failures = 0;
    for (bool done = false; !done; failures += done ? 0 : 1) {
        SCOPED_TRACE(failures);
        ASSERT_LT(failures, 100);
        *left = failures;
        try {
            device = original;
            done = true;
        } catch (const std::runtime_error&) {
            EXPECT_EQ(textIn(device, "Level"), "top");
            EXPECT_EQ(device.getCommandSets().size(), 2U);
            EXPECT_EQ(device.getCommandPaths().size(), 2U);
            EXPECT_EQ(device.getPartitions().size(), 1U);
            EXPECT_EQ(device.getChildDevices().size(), 1U);
            EXPECT_EQ(device.getCommandHistory().getMaxSize(), 3U);
            EXPECT_EQ(device.getCommandHistory().size(), 2U);
        }
    }
    EXPECT_GT(failures, 0);
    EXPECT_EQ(textIn(device, "Level"), "original");
    EXPECT_EQ(device.getCommandHistory().size(), 3U);
}

}  // namespace
}  // namespace orvel::core
