#include "simulator/DefaultFleet.h"

#include "Simulation.h"
#include "simulator/FleetText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace orvel::simulator {
namespace {

const Fleet& fleet() {
    static const Fleet one = readFleet(defaultFleet(), Unmentioned::TYPICAL);
    return one;
}

const NvmeDrive& nvme(std::size_t index) {
    return std::get<NvmeDrive>(fleet().drives.at(index).drive);
}

const AtaDrive& ata(std::size_t index) {
    return std::get<AtaDrive>(fleet().drives.at(index).drive);
}

/// Text of IDENTIFY DEVICE data in the order in which people read it.
std::string swapped(const core::Payload& bytes, std::uint32_t offset, std::uint32_t size) {
    std::string text = textAt(bytes, offset, size);
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        std::swap(text[i], text[i + 1]);
    return text;
}

/// The attribute of this number from its flags on: flags, normalized, worst, raw.
std::uint64_t attribute(const AtaDrive& drive, unsigned id) {
    for (std::uint32_t offset = 2; offset < 362; offset += 12) {
        if (get(drive.smartData, offset, 1) == id) return get(drive.smartData, offset + 3, 8);
    }
    return 0;
}

/// Of `attribute`: normalized, worst, raw.
constexpr std::uint64_t values(std::uint64_t normalized, std::uint64_t raw) {
    return raw << 16 | normalized << 8 | normalized;
}

struct NameRow {
    const char* path;
    const char* model;
    const char* serialNumber;
    const char* firmware;
    const char* bootloader;
    std::uint64_t sectors;
};

// clang-format off
constexpr NameRow NVME_DRIVES[] = {
    {"/dev/nvme0", "NORVO NX4510 1.6TB                      ", "NVX4510A0001K1P6    ", "NX45A120", "NX45B012", 3125627568},
    {"/dev/nvme1", "NORVO NX4610 3.2TB                      ", "NVX4610B0002M3P2    ", "NX46A210", "NX46B020", 6251233968},
    {"/dev/nvme2", "NORVO NX4510 800GB                      ", "NVX4510A0003H800    ", "NX45A130", "NX45B012", 1562824368},
};
constexpr NameRow SATA_DRIVES[] = {
    {"/dev/sda",   "NORVO SX3110 480GB                      ", "NSX3110C0004G480    ", "SX31A044", "SX31B007",  937703088},
    {"/dev/sdb",   "NORVO SX3110 960GB                      ", "NSX3110C0005G960    ", "SX31A040", "SX31B007", 1875385008},
    {"/dev/sdc",   "NORVO SX3520 1.9TB                      ", "NSX3520D0006T1P9    ", "SX35B102", "SX35B004", 3750748848},
    {"/dev/sdd",   "NORVO SX3520 480GB                      ", "NSX3520D0007G480    ", "SX35B102", "SX35B004",  937703088},
    {"/dev/sde",   "NORVO SX3520 480GB                      ", "NSX3520D0008G480    ", "SX35B102", "SX35B004",  937703088},
};

// clang-format on

TEST(DefaultFleet, HasEightDrives) {
    ASSERT_EQ(fleet().drives.size(), 8U);
    EXPECT_EQ(fleet().timeFactor, 120U);
    std::size_t index = 0;
    for (const NameRow& row : NVME_DRIVES) {
        SCOPED_TRACE(row.path);
        const core::Payload& controller = nvme(index).identifyController;
        EXPECT_EQ(fleet().drives.at(index).devicePath, row.path);
        EXPECT_EQ(textAt(controller, 24, 40), row.model);
        EXPECT_EQ(textAt(controller, 4, 20), row.serialNumber);
        EXPECT_EQ(textAt(controller, 64, 8), row.firmware);
        EXPECT_EQ(textAt(controller, 3072, 8), row.bootloader);
        EXPECT_EQ(get(controller, 280, 8), row.sectors * 512);
        ++index;
    }
    for (const NameRow& row : SATA_DRIVES) {
        SCOPED_TRACE(row.path);
        const core::Payload& identify = ata(index).identifyDevice;
        EXPECT_EQ(fleet().drives.at(index).devicePath, row.path);
        EXPECT_EQ(swapped(identify, 54, 40), row.model);
        EXPECT_EQ(swapped(identify, 20, 20), row.serialNumber);
        EXPECT_EQ(swapped(identify, 46, 8), row.firmware);
        EXPECT_EQ(swapped(identify, 258, 8), row.bootloader);
        EXPECT_EQ(get(identify, 200, 8), row.sectors);
        EXPECT_EQ(ata(index).nativeMaxAddress, row.sectors - 1);
        ++index;
    }
}

TEST(DefaultFleet, HasAHealthyDriveOfOlderFirmware) {
    EXPECT_EQ(nvme(0).firmwareRevisions.at(0), "NX45A120");
    EXPECT_EQ(nvme(0).activeSlot, 1);
    EXPECT_EQ(nvme(0).nextSlot, 0);
    EXPECT_EQ(nvme(0).namespaces.size(), 1U);
    EXPECT_EQ(get(nvme(0).namespaces.at(1).identify, 0, 8), 3125627568U);
    EXPECT_EQ(get(nvme(0).smartHealthLog, 0, 1), 0U);    // critical warning
    EXPECT_EQ(get(nvme(0).smartHealthLog, 3, 1), 100U);  // spare
    const core::Payload& health = nvme(0).vendorLogs.at(0xCA);
    EXPECT_EQ(get(health, 40, 8), 1536U);
    EXPECT_EQ(get(health, 48, 8), 68U);
    EXPECT_EQ(get(health, 56, 8), 14400U);
}

TEST(DefaultFleet, HasADriveOfThreeNamespaces) {
    const auto& namespaces = nvme(1).namespaces;
    ASSERT_EQ(namespaces.size(), 3U);
    EXPECT_EQ(namespaces.at(1).controllers, (std::set<std::uint16_t>{0, 1}));
    EXPECT_EQ(namespaces.at(2).controllers, (std::set<std::uint16_t>{0}));
    EXPECT_EQ(namespaces.at(3).controllers, (std::set<std::uint16_t>{}));
    EXPECT_EQ(get(namespaces.at(1).identify, 0, 8), 3125627568U);
    EXPECT_EQ(get(namespaces.at(2).identify, 0, 8), 195353046U);  // of 4096 bytes
    EXPECT_EQ(get(namespaces.at(3).identify, 0, 8), 781422768U);
    EXPECT_EQ(get(nvme(1).identifyController, 296, 8), 400055943168U);
    EXPECT_EQ(nvme(1).controllers, (std::set<std::uint16_t>{0, 1}));
    const core::Payload& health = nvme(1).vendorLogs.at(0xCA);
    EXPECT_EQ(get(health, 40, 8), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(get(health, 48, 8), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(get(health, 56, 8), 0U);
}

TEST(DefaultFleet, HasAWornDrive) {
    const core::Payload& health = nvme(2).smartHealthLog;
    EXPECT_EQ(get(health, 0, 1), 0x05U);  // critical warning
    EXPECT_EQ(get(health, 3, 1), 4U);     // spare
    EXPECT_EQ(get(health, 4, 1), 10U);    // its threshold
    EXPECT_EQ(get(health, 160, 8), 37U);  // media errors
    EXPECT_EQ(get(health, 176, 8), 41U);  // entries of the error log
    ASSERT_EQ(nvme(2).errorLog.size(), 3U);
    EXPECT_EQ(get(nvme(2).errorLog.at(0), 0, 8), 41U);
    EXPECT_EQ(get(nvme(2).errorLog.at(0), 12, 2), 0x4502U);
    EXPECT_EQ(nvme(2).selfTestOutcome, 7);
}

TEST(DefaultFleet, HasAHealthySataDrive) {
    EXPECT_EQ(attribute(ata(3), 5), values(100, 0));
    EXPECT_EQ(attribute(ata(3), 226), values(100, 512));
    EXPECT_EQ(attribute(ata(3), 227), values(100, 71));
    EXPECT_EQ(attribute(ata(3), 228), values(100, 9840));
    EXPECT_TRUE(ata(3).errorLog.empty());
}

TEST(DefaultFleet, HasASataDriveThatIsAboutToFail) {
    EXPECT_EQ(get(ata(4).smartData, 2, 3), 0x003305U);      // attribute 5, pre-failure
    EXPECT_EQ(get(ata(4).smartThresholds, 2, 2), 0x0A05U);  // its threshold is 10
    EXPECT_EQ(attribute(ata(4), 5), values(4, 2216));
    EXPECT_EQ(attribute(ata(4), 197), values(95, 24));
    EXPECT_EQ(attribute(ata(4), 199), values(98, 187));
    EXPECT_EQ(attribute(ata(4), 226), values(100, 0));
    ASSERT_EQ(ata(4).errorLog.size(), 2U);
    EXPECT_EQ(get(ata(4).errorLog.at(0), 18 + 12, 1), 0x25U);  // the second command
    EXPECT_EQ(get(ata(4).errorLog.at(0), 90 + 1, 1), 0x40U);   // its error
    EXPECT_EQ(ata(4).errorCount, 31);
    EXPECT_EQ(get(ata(4).deviceStatistics.at(6), 24, 8), 0xC0000000000000BBU);
    EXPECT_EQ(ata(4).phyEventCounters.at(0x00B), 187U);
    EXPECT_EQ(ata(4).phyEventCounters.at(0x00A), 12U);
}

TEST(DefaultFleet, HasAPartitionedDriveWithFrozenSecurity) {
    EXPECT_EQ(fleet().drives.at(5).partitions,
              (std::vector<PartitionFacts>{{"/dev/sdc1", "vfat", 1048576, 536870912},
                                           {"/dev/sdc2", "ext4", 537919488, 1919844089856}}));
    EXPECT_TRUE(ata(5).security.isFrozen);
    EXPECT_FALSE(ata(5).security.isFrozenAtPowerOn);
    EXPECT_FALSE(ata(3).security.isFrozen);
}

TEST(DefaultFleet, HasTwoMembersOfAVolume) {
    const RaidFacts volume{"Volume0", 0, 1, 2, 64};
    EXPECT_EQ(fleet().drives.at(6).raid, volume);
    EXPECT_EQ(fleet().drives.at(7).raid, volume);
    EXPECT_FALSE(fleet().drives.at(5).raid.has_value());
}

TEST(DefaultFleet, HasNoFaults) {
    for (const SimulatedDrive& drive : fleet().drives) {
        EXPECT_TRUE(drive.faults.empty());
        EXPECT_FALSE(drive.isLost);
    }
}

TEST(DefaultFleet, OutlastsATripThroughText) {
    const std::string text = writeFleet(fleet());
    EXPECT_EQ(readFleet(text, Unmentioned::BLANK), fleet());
    EXPECT_LT(text.size(), 100'000U);
}

}  // namespace
}  // namespace orvel::simulator
