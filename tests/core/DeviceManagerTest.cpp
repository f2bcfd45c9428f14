// Scans, look-ups and removals.
#include "core/DeviceManager.h"

#include "core/Attribute.h"
#include "core/Payload.h"
#include "tests/core/DeviceDoubles.h"
#include "tests/core/FinderDoubles.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::FakeExtension;
using doubles::FakeFinder;
using doubles::FakePath;
using doubles::FakeProductIdentifier;
using doubles::FakeProtocolIdentifier;
using doubles::newDiary;
using tavik::testing::LogCapture;
using namespace std::string_literals;

using Bytes = std::vector<std::uint8_t>;
using Texts = std::vector<std::string>;
using DevicePointer = std::shared_ptr<Device>;

Payload payloadOf(const Bytes& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

Bytes bytesOf(const Payload& payload) {
    return {payload.data(), payload.data() + payload.size()};
}

/// A device with these attributes, in this order.
Device deviceWith(const std::vector<Attribute>& attributes) {
    Device device;
    for (const Attribute& attribute : attributes)
        device.setAttribute(attribute);
    return device;
}

DevicePointer sharedDeviceWith(const std::vector<Attribute>& attributes) {
    return std::make_shared<Device>(deviceWith(attributes));
}

DevicePointer driveAt(const std::string& path) {
    return sharedDeviceWith({{"DevicePath", path}});
}

Partition partitionAt(const std::string& path) {
    Partition partition;
    partition.setAttribute(Attribute("Path", path));
    return partition;
}

/// Finds new copies of these devices at every scan; an empty pointer stays one.
FakeFinder finderOf(const Device::Devices& devices, const std::string& name = "finder") {
    return FakeFinder(name, [devices](const auto&, auto& found) {
        for (const auto& device : devices)
            found.push_back(device ? std::make_shared<Device>(*device) : nullptr);
    });
}

void scan(DeviceManager& manager, const Device::Devices& devices) {
    manager.addDeviceFinder(finderOf(devices));
    manager.scan();
}

/// A manager with a copy of each, in this order.
std::unique_ptr<DeviceManager> managerOf(const std::vector<Device>& devices) {
    auto manager = std::make_unique<DeviceManager>();
    for (const Device& device : devices)
        manager->addDevice(device);
    return manager;
}

std::string textOf(const Device& device, const std::string& key) {
    return device.getAttribute(Attribute(key, "absent")).valueAsString();
}

Texts textsOf(const DeviceManager& manager, const std::string& key) {
    Texts texts;
    for (const auto& device : manager.getDevices())
        texts.push_back(textOf(*device, key));
    return texts;
}

/// The place of a device in the manager's list; -1 for null.
int placeOf(const DeviceManager& manager, const DevicePointer& device) {
    const Device::Devices& devices = manager.getDevices();
    for (std::size_t i = 0; i < devices.size(); ++i) {
        if (device && devices[i] == device) return static_cast<int>(i);
    }
    return -1;
}

int placeOf(const DeviceManager& manager, const std::string& kind, const std::string& value) {
    return placeOf(manager, manager.GetDevice(Attribute(kind, value)));
}

FakeFinder writingFinder(const Diary& diary, const std::string& name, const std::string& entry) {
    return FakeFinder(name, [=](const auto&, auto& devices) {
        diary->push_back(entry + " sees " + std::to_string(devices.size()));
        devices.push_back(driveAt(entry));
    });
}

FakeExtension writingExtension(const Diary& diary, const std::string& name,
                               const std::string& entry) {
    return FakeExtension(name, [=](const auto&, auto& devices) {
        diary->push_back(entry + " sees " + std::to_string(devices.size()));
        devices.push_back(driveAt(entry));
    });
}

// Scans.

TEST(DeviceManager, RunsTheFindersAndThenTheExtensionsOnOneList) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDeviceFinderExtension(writingExtension(diary, "x", "extension x"));
    manager.addDeviceFinder(writingFinder(diary, "b", "finder b"));
    manager.addDeviceFinderExtension(writingExtension(diary, "w", "extension w"));
    manager.addDeviceFinder(writingFinder(diary, "a", "finder a"));

    manager.scan();

    EXPECT_EQ(*diary, Texts({"finder b sees 0", "finder a sees 1", "extension x sees 2",
                             "extension w sees 3"}));
    EXPECT_EQ(textsOf(manager, "DevicePath"),
              Texts({"extension w", "extension x", "finder a", "finder b"}));
}

TEST(DeviceManager, LeavesWhatAnExtensionTookOffTheList) {
    DeviceManager manager;
    manager.addDeviceFinder(finderOf({driveAt("a"), driveAt("b")}));
    manager.addDeviceFinderExtension(
        FakeExtension("x", [](const auto&, auto& devices) { devices.erase(devices.begin()); }));
    manager.scan();
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"b"}));
}

template <class Base>
auto notingIdentifiers(const Diary& diary, const std::string& name) {
    return doubles::FakeDiscovery<Base>(name, [=](const Base& self, auto&) {
        std::string entry = name + ":";
        for (const auto& identifier : self.getProductIdentifiers())
            entry += " " + dynamic_cast<FakeProductIdentifier&>(*identifier).getName();
        diary->push_back(entry);
    });
}

TEST(DeviceManager, HandsItsProductIdentifiersOverBeforeEachFind) {
    const Diary diary = newDiary();
    auto finder = notingIdentifiers<DeviceFinder>(diary, "finder");
    auto extension = notingIdentifiers<DeviceFinderExtension>(diary, "extension");
    finder.setProductIdentifiers({std::make_shared<FakeProductIdentifier>("own")});
    extension.setProductIdentifiers({std::make_shared<FakeProductIdentifier>("own")});
    DeviceManager manager;
    manager.addDeviceFinder(finder);
    manager.addDeviceFinderExtension(extension);

    manager.scan();
    manager.addProductIdentifier(FakeProductIdentifier("one"));
    manager.addProductIdentifier(FakeProductIdentifier("two"));
    manager.scan();

    EXPECT_EQ(*diary, Texts({"finder:", "extension:", "finder: one two", "extension: one two"}));
}

TEST(DeviceManager, SharesAClonedIdentifierAmongFindersAndExtensions) {
    const FakeProductIdentifier identifier("one");
    DeviceManager manager;
    manager.addProductIdentifier(identifier);
    manager.addDeviceFinder(FakeFinder("a"));
    manager.addDeviceFinderExtension(FakeExtension("b"));
    manager.scan();
    const auto ofFinder = manager.getDeviceFinder("a")->getProductIdentifiers();
    ASSERT_EQ(ofFinder.size(), 1U);
    EXPECT_NE(ofFinder[0].get(), &identifier);
    EXPECT_EQ(ofFinder, manager.getDeviceFinderExtension("b")->getProductIdentifiers());
}

TEST(DeviceManager, SortsPlainDrivesByTheBytesOfTheirPath) {
    DeviceManager manager;
    scan(manager, {driveAt("b"), driveAt("\xC3\xA4"), driveAt("a10"), driveAt("B"), driveAt("a2"),
                   driveAt("a"), driveAt(" "), driveAt("/dev/sda")});
    EXPECT_EQ(textsOf(manager, "DevicePath"),
              Texts({" ", "/dev/sda", "B", "a", "a10", "a2", "b", "\xC3\xA4"}));
}

TEST(DeviceManager, SortsAnAbsentPathAsAnEmptyOne) {
    DeviceManager manager;
    scan(manager, {driveAt("a"), sharedDeviceWith({{"SerialNumber", "no path"}}), driveAt("\x01")});
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"absent", "\x01", "a"}));
}

TEST(DeviceManager, SortsRaidMembersBehindPlainDrivesEachByPath) {
    const auto member = [](const char* path) {
        return sharedDeviceWith({{"DevicePath", path}, {"RAIDMember", true}});
    };
    const DevicePointer memberWithoutPath = sharedDeviceWith({{"RAIDMember", true}});
    DeviceManager manager;
    scan(manager, {member("c"), driveAt("z"), member("a"), driveAt("b"), memberWithoutPath});
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"b", "z", "absent", "a", "c"}));
}

TEST(DeviceManager, TakesADriveForARaidMemberByTheFirstByteOne) {
    struct Row {
        const char* text;
        Bytes value;
        bool isMember;
    };

    const Row rows[] = {
        {"one", {1}, true},   {"one and more", {1, 0}, true},
        {"zero", {0}, false}, {"zero, one", {0, 1}, false},
        {"two", {2}, false},  {"255", {255}, false},
        {"empty", {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const DevicePointer drive = driveAt("a");
        drive->setAttribute(Attribute("RAIDMember", payloadOf(row.value)));
        DeviceManager manager;
        scan(manager, {drive, driveAt("z")});
        EXPECT_EQ(textsOf(manager, "DevicePath"),
                  row.isMember ? Texts({"z", "a"}) : Texts({"a", "z"}));
    }
}

TEST(DeviceManager, KeepsTheSameDriveOfTwoFindersTwice) {
    DeviceManager manager;
    manager.addDeviceFinder(finderOf({driveAt("a")}, "one"));
    manager.addDeviceFinder(finderOf({driveAt("b"), driveAt("a")}, "two"));
    manager.scan();
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "a", "b"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1", "2"}));
}

TEST(DeviceManager, KeepsADeviceThatIsFoundTwiceInBothPlaces) {
    const DevicePointer drive = driveAt("a");
    const auto find = [&](const auto&, auto& devices) { devices.push_back(drive); };
    DeviceManager manager;
    manager.addDeviceFinder(FakeFinder("one", find));
    manager.addDeviceFinder(FakeFinder("two", find));
    manager.scan();
    EXPECT_EQ(manager.getDevices(), Device::Devices({drive, drive}));
}

TEST(DeviceManager, SortsManyDrives) {
    Device::Devices drives;
    for (int i = 0; i < 100; ++i)
        drives.push_back(sharedDeviceWith({{"DevicePath", "p" + std::to_string(i * 37 % 100 + 100)},
                                           {"RAIDMember", i % 2 == 0}}));
    DeviceManager manager;
    scan(manager, drives);
    ASSERT_EQ(manager.getDevices().size(), 100U);
    const Texts paths = textsOf(manager, "DevicePath");
    EXPECT_EQ(Texts(paths.begin(), paths.begin() + 3), Texts({"p101", "p103", "p105"}));
    EXPECT_EQ(Texts(paths.begin() + 49, paths.begin() + 52), Texts({"p199", "p100", "p102"}));
    EXPECT_EQ(paths.back(), "p198");
}

TEST(DeviceManager, NumbersFromZeroInListOrder) {
    DeviceManager manager;
    scan(manager, {driveAt("c"), driveAt("a"), driveAt("b")});
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "b", "c"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1", "2"}));
}

TEST(DeviceManager, StoresTheIndexInFourBytes) {
    DeviceManager manager;
    scan(manager, {driveAt("a"), driveAt("b")});
    const Attribute index = manager.getDevices()[1]->getAttribute(Attribute("Index", "absent"));
    EXPECT_EQ(bytesOf(index.getPayload()), Bytes({1, 0, 0, 0}));
    EXPECT_EQ(index.getType(), "sint32");
    EXPECT_EQ(index.getDisplayName(), "Index");
}

TEST(DeviceManager, ReplacesTheIndexThatADeviceCameWith) {
    DeviceManager manager;
    scan(manager, {sharedDeviceWith({{"Index", std::int32_t{77}}})});
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0"}));
}

TEST(DeviceManager, HoldsTheVeryDevicesThatWereFound) {
    const DevicePointer drive = driveAt("a");
    DeviceManager manager;
    manager.addDeviceFinder(
        FakeFinder("f", [&](const auto&, auto& devices) { devices.push_back(drive); }));
    manager.scan();
    EXPECT_EQ(manager.getDevices(), Device::Devices{drive});
    EXPECT_EQ(textOf(*drive, "Index"), "0");
}

/// Drives that write their path down when they are identified.
FakeFinder identifiedFinder(const Diary& diary, const Texts& paths) {
    Device::Devices devices;
    for (const std::string& path : paths) {
        devices.push_back(driveAt(path));
        devices.back()->addProtocolIdentifier(FakeProtocolIdentifier("i", [diary](Device& device) {
            diary->push_back(textOf(device, "DevicePath") + " index " + textOf(device, "Index"));
        }));
    }
    return finderOf(devices);
}

TEST(DeviceManager, IdentifiesNoDeviceUnlessToldTo) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDeviceFinder(identifiedFinder(diary, {"a"}));
    manager.scan();
    EXPECT_EQ(*diary, Texts());
    EXPECT_EQ(textsOf(manager, "DeviceStatus"), Texts({"absent"}));
}

TEST(DeviceManager, IdentifiesEachDeviceBeforeItIsNumberedIfToldTo) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDeviceFinder(identifiedFinder(diary, {"b", "a"}));
    manager.setIdentifyOnScan(true);
    manager.scan();
    EXPECT_EQ(*diary, Texts({"a index absent", "b index absent"}));
    EXPECT_EQ(textsOf(manager, "DeviceStatus"), Texts({"Healthy", "Healthy"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1"}));
}

TEST(DeviceManager, IdentifiesNoMoreWhenToldToStop) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDeviceFinder(identifiedFinder(diary, {"a"}));
    manager.setIdentifyOnScan(true);
    manager.setIdentifyOnScan(false);
    manager.scan();
    EXPECT_EQ(*diary, Texts());
}

TEST(DeviceManager, SortsByWhatIsKnownBeforeIdentification) {
    const DevicePointer drive = driveAt("b");
    drive->addProductIdentifier(FakeProductIdentifier(
        "i", [](Device& device) { device.setAttribute(Attribute("DevicePath", "0")); }));
    DeviceManager manager;
    manager.setIdentifyOnScan(true);
    scan(manager, {drive, driveAt("a")});
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "0"}));
}

TEST(DeviceManager, ReplacesTheDevicesAtEachScan) {
    int scans = 0;
    DeviceManager manager;
    manager.addDevice(*driveAt("added"));
    manager.addDeviceFinder(FakeFinder("f", [&scans](const auto&, auto& devices) {
        devices.push_back(driveAt("z" + std::to_string(scans)));
        devices.push_back(driveAt("a" + std::to_string(scans)));
        ++scans;
    }));
    manager.scan();
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a0", "z0"}));
    manager.scan();
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a1", "z1"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1"}));
}

TEST(DeviceManager, DropsTheDevicesBeforeTheFindersRun) {
    std::size_t countDuringFind = 99;
    DeviceManager manager;
    manager.addDevice(Device());
    manager.addDeviceFinder(FakeFinder(
        "f", [&](const auto&, auto&) { countDuringFind = manager.getDevices().size(); }));
    manager.scan();
    EXPECT_EQ(countDuringFind, 0U);
}

TEST(DeviceManager, LeavesADeviceToThoseWhoHoldItAfterARescan) {
    DeviceManager manager;
    scan(manager, {driveAt("a")});
    const DevicePointer held = manager.getDevices()[0];
    manager.scan();
    EXPECT_NE(manager.getDevices()[0], held);
    EXPECT_EQ(textOf(*held, "DevicePath"), "a");
}

TEST(DeviceManager, LogsEachDeviceInFull) {
    const DevicePointer drive = sharedDeviceWith({
        {"SerialNumber", "PHYF1234"},
        {"DevicePath", "/dev/sdb"},
        {"SASAddress", payloadOf({0x50, 0, 0xC5, 0xFF})},
        {"CSMI", true},
        {"MaximumLBA", std::uint64_t{999}},
        {"Firmware", ""},
    });
    Partition partition = partitionAt("/dev/sdb1");
    partition.setAttribute(Attribute("Size", std::uint32_t{4096}));
    drive->addPartition(partition);
    Partition partitionWithoutPath;
    partitionWithoutPath.setAttribute(Attribute("Label", "data"));
    drive->addPartition(partitionWithoutPath);
    drive->addCommandSet("SMART", "raid");
    drive->addCommandSet("ATA", "ahci");
    drive->addCommandSet("Block", "gone");
    drive->addCommandPath(std::make_shared<FakePath>("raid"));
    drive->addCommandPath(std::make_shared<FakePath>("ahci"));
    DeviceManager manager;
    manager.addDeviceFinder(finderOf({drive, driveAt("/dev/sda")}));

    const LogCapture log;
    manager.scan();

    EXPECT_EQ(
        log.lines(),
        Texts({
            "[info] DeviceManager.cpp scan: Device 0",
            "[info] DeviceManager.cpp scan: DevicePath = /dev/sda",
            "[info] DeviceManager.cpp scan: Index = 0",
            "[info] DeviceManager.cpp scan: Device 1",
            "[info] DeviceManager.cpp scan: SerialNumber = PHYF1234",
            "[info] DeviceManager.cpp scan: DevicePath = /dev/sdb",
            "[info] DeviceManager.cpp scan: SASAddress = 5000C5FF",
            "[info] DeviceManager.cpp scan: CSMI = True",
            "[info] DeviceManager.cpp scan: MaximumLBA = 999",
            "[info] DeviceManager.cpp scan: Firmware = ",
            "[info] DeviceManager.cpp scan: Index = 1",
            "[info] DeviceManager.cpp scan: Partition: /dev/sdb1",
            "[info] DeviceManager.cpp scan: Path = /dev/sdb1",
            "[info] DeviceManager.cpp scan: Size = 4096",
            "[info] DeviceManager.cpp scan: Partition: ",
            "[info] DeviceManager.cpp scan: Label = data",
            "[info] DeviceManager.cpp scan: Command Set = ATA supported by Command Path = ahci",
            "[info] DeviceManager.cpp scan: Command Set = Block supported by Command Path = gone",
            "[info] DeviceManager.cpp scan: Command Set = SMART supported by Command Path = raid",
            "[info] DeviceManager.cpp scan: Command Path: ahci",
            "[info] DeviceManager.cpp scan: Command Path: raid",
        }));
}

TEST(DeviceManager, LogsWhatIdentificationFilledIn) {
    const DevicePointer drive = driveAt("a");
    drive->addProtocolIdentifier(FakeProtocolIdentifier(
        "i", [](Device& device) { device.setAttribute(Attribute("ErrorString", "Worn out")); }));
    DeviceManager manager;
    manager.setIdentifyOnScan(true);
    manager.addDeviceFinder(finderOf({drive}));
    const LogCapture log;
    manager.scan();
    EXPECT_EQ(log.lines(), Texts({
                               "[info] DeviceManager.cpp scan: Device 0",
                               "[info] DeviceManager.cpp scan: DevicePath = a",
                               "[info] DeviceManager.cpp scan: SectorSize = 512",
                               "[info] DeviceManager.cpp scan: ErrorString = Worn out",
                               "[info] DeviceManager.cpp scan: DeviceStatus = Worn out",
                               "[info] DeviceManager.cpp scan: Index = 0",
                           }));
}

TEST(DeviceManager, FindsAndLogsNothingWithoutFinders) {
    DeviceManager manager;
    manager.addDevice(*driveAt("a"));
    const LogCapture log;
    manager.scan();
    EXPECT_TRUE(manager.getDevices().empty());
    EXPECT_EQ(log.lines(), Texts());
}

TEST(DeviceManager, LogsNothingOfFindersThatFindNothing) {
    DeviceManager manager;
    manager.addDeviceFinder(FakeFinder("a"));
    manager.addDeviceFinderExtension(FakeExtension("b"));
    const LogCapture log;
    manager.scan();
    EXPECT_EQ(log.lines(), Texts());
}

void expectNothingOfAScanThatThrows(DeviceManager& manager) {
    const LogCapture log;
    try {
        manager.scan();
        FAIL() << "nothing thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "no driver");
    }
    EXPECT_TRUE(manager.getDevices().empty());
    EXPECT_EQ(log.lines(), Texts());
}

TEST(DeviceManager, HasNoDevicesWhenAFinderThrows) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDevice(*driveAt("of an earlier scan"));
    manager.addDeviceFinder(writingFinder(diary, "a", "finder a"));
    manager.addDeviceFinder(
        FakeFinder("b", [](const auto&, auto&) { throw std::runtime_error("no driver"); }));
    manager.addDeviceFinder(writingFinder(diary, "c", "finder c"));
    manager.addDeviceFinderExtension(writingExtension(diary, "x", "extension x"));
    expectNothingOfAScanThatThrows(manager);
    EXPECT_EQ(*diary, Texts({"finder a sees 0"}));
}

TEST(DeviceManager, HasNoDevicesWhenAnExtensionThrows) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDevice(*driveAt("of an earlier scan"));
    manager.addDeviceFinder(writingFinder(diary, "a", "finder a"));
    manager.addDeviceFinderExtension(
        FakeExtension("x", [](const auto&, auto&) { throw std::runtime_error("no driver"); }));
    manager.addDeviceFinderExtension(writingExtension(diary, "y", "extension y"));
    expectNothingOfAScanThatThrows(manager);
    EXPECT_EQ(*diary, Texts({"finder a sees 0"}));
}

TEST(DeviceManager, ScansAgainAfterAFinderThatThrew) {
    bool throws = true;
    DeviceManager manager;
    manager.addDeviceFinder(FakeFinder("a", [&](const auto&, auto& devices) {
        if (throws) throw std::runtime_error("no driver");
        devices.push_back(driveAt("a"));
    }));
    EXPECT_THROW(manager.scan(), std::runtime_error);
    throws = false;
    manager.scan();
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a"}));
}

TEST(DeviceManager, LeavesOutNullPointersThatWereFound) {
    DeviceManager manager;
    scan(manager, {nullptr, driveAt("b"), nullptr, driveAt("a"), nullptr});
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "b"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1"}));
}

// Finders and extensions by name: the same holds for both.

template <class Fake>
class DeviceManagerDiscovery : public ::testing::Test {
protected:
    void add(const FakeFinder& finder) { manager.addDeviceFinder(finder); }

    void add(const FakeExtension& extension) { manager.addDeviceFinderExtension(extension); }

    auto get(const std::string& name) const {
        if constexpr (std::is_same_v<Fake, FakeFinder>) {
            return manager.getDeviceFinder(name);
        } else {
            return manager.getDeviceFinderExtension(name);
        }
    }

    /// Writes the entry down when it is asked to find.
    Fake writing(const std::string& name, const std::string& entry) const {
        return Fake(name, [diary = diary, entry](const auto&, auto&) { diary->push_back(entry); });
    }

    Diary diary = newDiary();
    DeviceManager manager;
};

struct KindNames {
    template <class Fake>
    static std::string GetName(int) {
        return std::is_same_v<Fake, FakeFinder> ? "Finder" : "Extension";
    }
};

using Kinds = ::testing::Types<FakeFinder, FakeExtension>;
TYPED_TEST_SUITE(DeviceManagerDiscovery, Kinds, KindNames);

TYPED_TEST(DeviceManagerDiscovery, IsFoundByItsExactName) {
    this->add(TypeParam("ahci"));
    this->add(TypeParam("nvme"));
    ASSERT_NE(this->get("nvme"), nullptr);
    EXPECT_EQ(this->get("nvme")->getName(), "nvme");
    EXPECT_EQ(this->get("ahci")->getName(), "ahci");
    for (const char* name : {"", "AHCI", "ahc", "ahci ", "scsi"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(this->get(name), nullptr);
    }
}

TYPED_TEST(DeviceManagerDiscovery, IsSharedByThoseWhoAskForIt) {
    this->add(TypeParam("ahci"));
    EXPECT_EQ(this->get("ahci"), this->get("ahci"));
}

TYPED_TEST(DeviceManagerDiscovery, GoesInAsAClone) {
    TypeParam original("ahci");
    this->add(original);
    original.assign(TypeParam("other"));
    EXPECT_NE(this->get("ahci").get(), &original);
    EXPECT_EQ(this->get("other"), nullptr);
}

TYPED_TEST(DeviceManagerDiscovery, ReplacesTheOneOfItsNameAndGoesToTheEnd) {
    this->add(this->writing("a", "a"));
    this->add(this->writing("b", "b"));
    this->add(this->writing("a", "new a"));
    this->manager.scan();
    EXPECT_EQ(*this->diary, Texts({"b", "new a"}));
}

TYPED_TEST(DeviceManagerDiscovery, StandsBesideOneWhoseNameDiffersInCase) {
    this->add(this->writing("a", "a"));
    this->add(this->writing("A", "A"));
    this->manager.scan();
    EXPECT_EQ(*this->diary, Texts({"a", "A"}));
}

TYPED_TEST(DeviceManagerDiscovery, MayBeAddedFromTheManagersOwnList) {
    this->add(this->writing("a", "a"));
    this->add(this->writing("b", "b"));
    this->add(dynamic_cast<const TypeParam&>(*this->get("a")));
    this->manager.scan();
    EXPECT_EQ(*this->diary, Texts({"b", "a"}));
}

TEST(DeviceManager, KeepsAFinderAndAnExtensionOfOneName) {
    const Diary diary = newDiary();
    DeviceManager manager;
    manager.addDeviceFinder(writingFinder(diary, "a", "finder"));
    manager.addDeviceFinderExtension(writingExtension(diary, "a", "extension"));
    manager.addDeviceFinder(writingFinder(diary, "a", "new finder"));
    manager.scan();
    EXPECT_EQ(*diary, Texts({"new finder sees 0", "extension sees 1"}));
}

// Additions and removals.

TEST(DeviceManager, AppendsACopyOfADevice) {
    Device device = deviceWith({{"DevicePath", "a"}, {"Index", std::int32_t{5}}});
    const auto manager = managerOf({deviceWith({{"DevicePath", "z"}})});
    manager->addDevice(device);
    device.setAttribute(Attribute("DevicePath", "changed"));
    EXPECT_EQ(textsOf(*manager, "DevicePath"), Texts({"z", "a"}));
    EXPECT_EQ(textsOf(*manager, "Index"), Texts({"absent", "5"}));
}

TEST(DeviceManager, GivesItsListItself) {
    DeviceManager manager;
    const DevicePointer drive = driveAt("a");
    manager.getDevices().push_back(drive);
    EXPECT_EQ(manager.GetDevice(Attribute("Path", "a")), drive);
}

TEST(DeviceManager, RemovesADeviceByItsPointerAndNumbersTheOthers) {
    DeviceManager manager;
    scan(manager, {driveAt("a"), driveAt("b"), driveAt("c")});
    const DevicePointer removed = manager.getDevices()[1];
    EXPECT_TRUE(manager.removeDevice(removed));
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "c"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1"}));
    EXPECT_EQ(textOf(*removed, "Index"), "1");
}

TEST(DeviceManager, RemovesADeviceByItsIndexAndNumbersTheOthers) {
    DeviceManager manager;
    scan(manager, {driveAt("a"), driveAt("b"), driveAt("c")});
    EXPECT_TRUE(manager.removeDevice(1));
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "c"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1"}));
}

TEST(DeviceManager, RemovesTheOnlyDevice) {
    DeviceManager manager;
    scan(manager, {driveAt("a")});
    EXPECT_TRUE(manager.removeDevice(0));
    EXPECT_TRUE(manager.getDevices().empty());
    EXPECT_FALSE(manager.removeDevice(0));
}

TEST(DeviceManager, RemovesByTheAttributeAndNotByThePlace) {
    const auto manager = managerOf({deviceWith({{"DevicePath", "a"}, {"Index", std::int32_t{1}}}),
                                    deviceWith({{"DevicePath", "b"}, {"Index", std::int32_t{0}}}),
                                    deviceWith({{"DevicePath", "c"}, {"Index", std::int32_t{0}}})});
    EXPECT_TRUE(manager->removeDevice(0));
    EXPECT_EQ(textsOf(*manager, "DevicePath"), Texts({"a", "c"}));
    EXPECT_EQ(textsOf(*manager, "Index"), Texts({"0", "1"}));
}

TEST(DeviceManager, RemovesOneEntryOfADeviceThatIsInTheListTwice) {
    DeviceManager manager;
    const DevicePointer drive = driveAt("a");
    manager.getDevices() = {drive, drive};
    EXPECT_TRUE(manager.removeDevice(drive));
    EXPECT_EQ(manager.getDevices(), Device::Devices{drive});
}

TEST(DeviceManager, RemovesNoDeviceThatIsNotThere) {
    DeviceManager manager;
    scan(manager, {driveAt("a"), driveAt("b")});
    manager.addDevice(*driveAt("without index"));
    const DevicePointer copy = std::make_shared<Device>(*manager.getDevices()[0]);
    EXPECT_FALSE(manager.removeDevice(copy));
    EXPECT_FALSE(manager.removeDevice(nullptr));
    EXPECT_FALSE(manager.removeDevice(2));
    EXPECT_FALSE(manager.removeDevice(-1));
    EXPECT_EQ(textsOf(manager, "DevicePath"), Texts({"a", "b", "without index"}));
    EXPECT_EQ(textsOf(manager, "Index"), Texts({"0", "1", "absent"}));
}

// Look-ups.

TEST(DeviceManager, FindsADeviceByItsIndex) {
    const auto manager = managerOf({
        deviceWith({}),
        deviceWith({{"Index", std::int32_t{0}}}),
        deviceWith({{"Index", std::int32_t{10}}}),
        deviceWith({{"Index", std::int32_t{10}}}),
        deviceWith({{"Index", std::int32_t{-1}}}),
        deviceWith({{"Index", std::int32_t{2147483647}}}),
        deviceWith({{"Index", payloadOf({7})}}),
        deviceWith({{"Index", payloadOf({8, 0, 0, 0, 1})}}),
        deviceWith({{"Index", payloadOf({})}}),
    });

    struct Row {
        std::string value;
        int expected;
    };

    const Row rows[] = {
        {"0", 1},
        {"000", 1},
        {"10", 2},
        {"0010", 2},
        {"2147483647", 5},
        {"7", 6},
        {"8", 7},
        {"1", -1},
        {"16", -1},
        // Not numeric.
        {"", -1},
        {"-1", -1},
        {"+10", -1},
        {" 10", -1},
        {"10 ", -1},
        {"0x0A", -1},
        {"A", -1},
        {"0A", -1},
        {"ten", -1},
        {"10\0"s, -1},
        // Too large for an index, whatever is left of them at fewer bits.
        {"2147483648", -1},
        {"4294967295", -1},
        {"4294967296", -1},
        {"4294967306", -1},
        {"18446744073709551615", -1},
        {"18446744073709551616", -1},
        {"99999999999999999999", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "Index", row.value), row.expected);
    }
}

TEST(DeviceManager, FindsADeviceByItsSerialNumberInAnyCase) {
    const auto manager = managerOf({
        deviceWith({{"SerialNumber", "first"}}),
        deviceWith({{"SerialNumber", "PhYf 12"}}),
        deviceWith({{"SerialNumber", "PHYF 12"}}),
    });

    struct Row {
        const char* value;
        int expected;
    };

    const Row rows[] = {{"PhYf 12", 1}, {"phyf 12", 1},   {"PHYF 12", 1},   {"FIRST", 0},
                        {"PHYF", -1},   {"PHYF 123", -1}, {"PHYF 12 ", -1}, {"", -1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "SerialNumber", row.value), row.expected);
    }
}

TEST(DeviceManager, ReadsAnAbsentSerialNumberAsEmpty) {
    const auto manager = managerOf({deviceWith({{"SerialNumber", "a"}}), Device()});
    EXPECT_EQ(placeOf(*manager, "SerialNumber", ""), 1);
}

TEST(DeviceManager, FindsADeviceByItsPathInAnyCase) {
    const auto manager = managerOf({
        deviceWith({{"DevicePath", R"(\\.\PhysicalDrive1)"}}),
        deviceWith({{"DevicePath", R"(\\.\PHYSICALDRIVE0)"}}),
        deviceWith({{"DevicePath", R"(\\.\physicaldrive0)"}}),
        deviceWith({{"Path", "/dev/sda"}}),
    });

    struct Row {
        const char* value;
        int expected;
    };

    const Row rows[] = {
        {R"(\\.\PHYSICALDRIVE0)", 1},
        {R"(\\.\PhysicalDrive0)", 1},
        {R"(\\.\PHYSICALDRIVE1)", 0},
        {R"(\\.\PHYSICALDRIVE)", -1},
        {R"(PHYSICALDRIVE0)", -1},
        {R"(\\.\PHYSICALDRIVE00)", -1},
        {"/dev/sda", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "Path", row.value), row.expected);
    }
}

TEST(DeviceManager, FindsADeviceByTheExactPathOfAPartition) {
    Device two;
    two.addPartition(partitionAt("C:"));
    two.addPartition(partitionAt("D:"));
    Device again;
    again.addPartition(Partition());
    again.addPartition(partitionAt("D:"));
    again.addPartition(partitionAt("d:"));
    const auto manager =
        managerOf({deviceWith({{"Path", "C:"}, {"DevicePath", "C:"}}), two, again});

    struct Row {
        const char* value;
        int expected;
    };

    const Row rows[] = {{"C:", 1}, {"D:", 1}, {"d:", 2}, {"c:", -1}, {"C", -1}, {"C:\\", -1}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "DriveLetter", row.value), row.expected);
    }
}

TEST(DeviceManager, FindsADeviceByItsWindowsInterfacePath) {
    const auto manager = managerOf({
        Device(),
        deviceWith({{"PNPString", R"(scsi\disk&ven_norvo\4&1a2b&0&000000)"}}),
        deviceWith({{"PNPString", R"(SCSI\DISK&VEN_NORVO\4&1A2B&0&000000)"}}),
        deviceWith({{"PNPString", R"(SCSI\DISK&VEN_NORVO\4&1A2B&0&000000)"}}),
        deviceWith({{"PNPString", "ABCD"}}),
        deviceWith({{"PNPString", "{53F56307}"}}),
    });

    struct Row {
        const char* value;
        int expected;
    };

    const Row rows[] = {
        {R"(\\?\scsi#disk&ven_norvo#4&1a2b&0&000000#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})", 2},
        {R"(\\?\scsi#disk&ven_norvo#4&1a2b&0&000000)", 2},
        {R"(scsi\disk&ven_norvo\4&1a2b&0&000000)", 2},
        {R"(scsi#disk&ven_norvo#4&1a2b&0&000000)", -1},
        {R"(\\?\scsi#disk&ven_norvo#4&1a2b&0&000001#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})", -1},
        {R"(\\?\scsi#disk&ven_norvo)", -1},
        {"ABCD", -1},
        {R"(\\?\abcd)", 4},
        {R"(\\?\{53f56307})", 5},
        {"", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "DriveId", row.value), row.expected);
    }
}

std::vector<Device> csmiDevices() {
    const Payload address = payloadOf({0x50, 0x00, 0xC5, 0x00, 0xA1, 0xB2, 0xC3, 0xD4});
    const Attribute port("SCSIPortNumber", std::int32_t{3});
    return {
        deviceWith({port, {"SASAddress", address}}),
        deviceWith({{"CSMI", true}, {"SCSIPortNumber", std::int32_t{4}}, {"SASAddress", address}}),
        deviceWith({{"CSMI", true}, port, {"SASAddress", address}}),
        deviceWith({{"CSMI", true}, port, {"SASAddress", address}}),
    };
}

TEST(DeviceManager, FindsADeviceByItsCsmiIdentifiers) {
    const auto manager = managerOf(csmiDevices());

    struct Row {
        const char* value;
        int expected;
    };

    const Row rows[] = {
        {"5000c500a1b2c3d4,3", 2},    {"5000C500A1B2C3D4,3", 2},
        {"5000C500A1B2C3D4,4", 1},    {"5000C500A1B2C3D4,5", -1},
        {"d4c3b2a100c50050,3", -1},   {"5000C500A1B2C3D5,3", -1},
        {"5000C500A1B2C3D4,", -1},    {"0x5000C500A1B2C3D4,3", -1},
        {"5000C500A1B2C3D4,0x3", -1}, {",3", -1},
        {"5000C500A1B2C3D400,3", -1},
    };
    const LogCapture log;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(placeOf(*manager, "CSMIIdentifiers", row.value), row.expected);
    }
    EXPECT_EQ(log.lines(), Texts());
}

TEST(DeviceManager, LogsCsmiIdentifiersThatAreNotTwoParts) {
    const auto manager = managerOf(csmiDevices());
    for (const char* value : {"", "5000C500A1B2C3D4", "5000C500A1B2C3D4,3,"}) {
        SCOPED_TRACE(value);
        const LogCapture log;
        EXPECT_EQ(placeOf(*manager, "CSMIIdentifiers", value), -1);
        EXPECT_EQ(log.lines(),
                  Texts({"[debug] DeviceIdentifiers.cpp readCsmiIdentifiers: Failed to split "
                         "passed in CSMI string into the two recognized identifiers"}));
    }
}

TEST(DeviceManager, FindsNothingByAnUnknownKeyAndLogsNothing) {
    const auto manager = managerOf({deviceWith({{"Index", std::int32_t{1}},
                                                {"SerialNumber", "1"},
                                                {"DevicePath", "1"},
                                                {"Firmware", "1"}})});
    const LogCapture log;
    for (const char* key : {"", "index", "INDEX", "Index ", "SerialNumbers", "serialnumber",
                            "Serial Number", "path", "DevicePath", "Device Path", "Firmware",
                            "CSMIIdentifier", "DriveID", "Device", "Devices"}) {
        SCOPED_TRACE(key);
        EXPECT_EQ(placeOf(*manager, key, "1"), -1);
    }
    EXPECT_EQ(log.lines(), Texts());
}

TEST(DeviceManager, FindsNothingInAnEmptyList) {
    const DeviceManager manager;
    const LogCapture log;
    for (const char* kind :
         {"Index", "SerialNumber", "DriveId", "DriveLetter", "Path", "CSMIIdentifiers"}) {
        SCOPED_TRACE(kind);
        EXPECT_EQ(manager.GetDevice(Attribute(kind, "12345,1")), nullptr);
    }
    EXPECT_EQ(manager.GetDevice("C:", "1"), nullptr);
    EXPECT_EQ(log.lines(), Texts());
}

TEST(DeviceManager, FindsTheDevicesOfAScanByTheirNumbers) {
    DeviceManager manager;
    scan(manager, {driveAt("b"), driveAt("a")});
    EXPECT_EQ(placeOf(manager, "Index", "0"), 0);
    EXPECT_EQ(placeOf(manager, "Index", "1"), 1);
    EXPECT_EQ(placeOf(manager, "Index", "2"), -1);
}

TEST(DeviceManager, FindsADeviceByPartitionAndSerialNumber) {
    const auto withPartitions = [](const char* serialNumber, const Texts& paths) {
        Device device = deviceWith({{"SerialNumber", serialNumber}});
        for (const std::string& path : paths)
            device.addPartition(partitionAt(path));
        return device;
    };
    const auto manager = managerOf({
        withPartitions("S1", {}),
        withPartitions("S2", {"/dev/sda1", "/dev/sda2"}),
        withPartitions("s1", {"/dev/sdb1"}),
        withPartitions("S1", {"/dev/sdb1", "/dev/sdb2"}),
        withPartitions("S1", {"/dev/sdb2"}),
    });

    struct Row {
        const char* path;
        const char* serialNumber;
        int expected;
    };

    const Row rows[] = {
        {"/dev/sda1", "S2", 1},  {"/dev/sda2", "s2", 1},  {"/dev/sdb1", "S1", 2},
        {"/dev/sdb2", "s1", 3},  {"/dev/sda1", "S1", -1}, {"/dev/sdb1", "S2", -1},
        {"/DEV/SDA1", "S2", -1}, {"/dev/sda", "S2", -1},  {"/dev/sda1", "S", -1},
        {"", "S1", -1},          {"/dev/sda1", "", -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.path) + " " + row.serialNumber);
        EXPECT_EQ(placeOf(*manager, manager->GetDevice(row.path, row.serialNumber)), row.expected);
    }
}

}  // namespace
}  // namespace orvel::core
