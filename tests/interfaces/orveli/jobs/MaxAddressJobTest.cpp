#include "interfaces/orveli/jobs/MaxAddressJob.h"

#include "interfaces/orveli/jobs/MaxAddressGoal.h"
#include "tests/interfaces/orveli/jobs/SettingSupport.h"

#include <gtest/gtest.h>

#include <map>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr const char* INVALID_VALUE =
    "10/42 Invalid max address value. Please select a positive value less than or equal to the "
    "native max LBA.";
constexpr const char* INVALID_PARAMETER =
    "10/43 Invalid parameter for max address feature. Supported parameters are capacity, native, "
    "percent, and value.";
constexpr const char* INVALID_SECTOR_SIZE = "10/210 Invalid sector size for max address.";

/// The LBA that a text means, or the status instead.
std::string lbaOf(const std::string& text, std::uint64_t native, std::uint64_t sectorBytes) {
    try {
        return std::to_string(MaxAddressGoal(text).toLba(native, sectorBytes));
    } catch (const core::Status& status) {
        return textOf(status);
    }
}

TEST(MaxAddressGoal, IsNativeGigabytesAPercentageOrAnLba) {
    struct Row {
        const char* text;
        std::uint64_t native;
        std::uint64_t sectorBytes;
        const char* lba;
    };

    // clang-format off
    constexpr Row ROWS[] = {
    //   text                    native                  sector  LBA
        {"native",               937703087,              512,    "937703087"},
        {"NATIVE",               937703087,              0,      "937703087"},
        {"native",               18446744073709551615U,  512,    "18446744073709551615"},
        {"1",                    937703087,              512,    "1"},
        {"937703087",            937703087,              0,      "937703087"},
        {"937703088",            937703087,              512,    INVALID_VALUE},
        {"18446744073709551615", 18446744073709551615U,  512,    "18446744073709551615"},
        {"100%",                 937703087,              0,      "937703087"},
        {"80%",                  937703087,              512,    "750162469"},
        {"80 %",                 937703087,              512,    "750162469"},
        {"1%",                   937703087,              512,    "9377029"},
        {"1%",                   99,                     512,    "0"},
        {"1%",                   98,                     512,    INVALID_VALUE},
        {"100%",                 18446744073709551615U,  512,    "18446744073709551615"},
        {"99%",                  18446744073709551615U,  512,    "18262276632972456098"},
        {"480GB",                937703087,              512,    "937703087"},
        {"480gb",                937703087,              512,    "937703087"},
        {"400 Gb",               937703087,              512,    "781422767"},
        {"50GB",                 937703087,              512,    "97696367"},
        {"1GB",                  937703087,              512,    "1974671"},
        {"481GB",                937703087,              512,    INVALID_VALUE},
        {"480GB",                117212885,              4096,   "117212885"},
        {"50GB",                 117212885,              4096,   "12212045"},
        {"400GB",                117212885,              4096,   "97677845"},
        {"1600GB",               3124999999,             512,    "3124999999"},
        {"1600GB",               3124999998,             512,    INVALID_VALUE},
        {"1GB",                  18446744073709551615U,  512,    "1974671"},
        {"18446744073709551615GB", 18446744073709551615U, 512,   INVALID_VALUE},
        {"480GB",                937703087,              520,    INVALID_SECTOR_SIZE},
        {"480GB",                937703087,              528,    INVALID_SECTOR_SIZE},
        {"480GB",                937703087,              1024,   INVALID_SECTOR_SIZE},
        {"480GB",                937703087,              0,      INVALID_SECTOR_SIZE},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(lbaOf(row.text, row.native, row.sectorBytes), row.lba);
    }
}

TEST(MaxAddressGoal, RefusesNumbersThatNoDriveTakes) {
    for (const char* text :
         {"0", "-1", "0GB", "-5GB", "0%", "101%", "-1%", "00", "18446744073709551616",
          "99999999999999999999999GB", "18446744073709551616%"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(lbaOf(text, 937703087, 512), INVALID_VALUE);
    }
}

TEST(MaxAddressGoal, RefusesWhatIsNoGoalAtAll) {
    for (const char* text : {"", "GB", "%", "-", "--1", "+1", "natives", "1.5GB", "50.5%", "0x10",
                             "10TB", "10GB%", "10%GB", "1 0", "ten", "10 G B"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(lbaOf(text, 937703087, 512), INVALID_PARAMETER);
    }
}

constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
constexpr std::uint8_t READ_NATIVE_MAX = 0x27;
constexpr std::uint8_t SET_MAX = 0x37;
constexpr std::uint8_t ACCESSIBLE_MAX = 0x78;
constexpr std::uint64_t NATIVE = 937703087;

using Words = std::map<std::uint32_t, std::uint16_t>;

/// IDENTIFY DEVICE data of a drive with so many sectors, and these words besides or instead.
Reply identified(std::uint64_t sectors, const Words& words) {
    Reply reply;
    reply.data = core::Payload(512);
    const auto put = [&](std::uint32_t word, std::uint64_t value) {
        *reply.data[word * 2] = static_cast<std::uint8_t>(value);
        *reply.data[word * 2 + 1] = static_cast<std::uint8_t>(value >> 8U);
    };
    put(83, 0x4400);
    put(86, 0x8000);
    put(87, 0x4000);
    put(100, sectors);
    put(101, sectors >> 16U);
    put(102, sectors >> 32U);
    for (const auto& [word, value] : words)
        put(word, value);
    return reply;
}

Reply addressed(std::uint64_t lba) {
    Reply reply;
    reply.returned.lba = lba;
    return reply;
}

class MaxAddress : public testing::Test {
protected:
    MaxAddress() { nvmeDrive.setNorvo(true); }

    std::string setMaximum(const std::string& value) {
        return set<MaxAddressJob>(drive, {"MaximumLBA", "string", value});
    }

    std::string setNvmeMaximum(const std::string& value) {
        return set<MaxAddressJob>(nvmeDrive, {"MaximumLBA", "string", value});
    }

    static void setAttribute(ScriptedDrive& drive, core::Attribute attribute) {
        attribute.setValue(true);
        drive->setAttribute(attribute);
    }

    /// A drive with ACCESSIBLE MAX ADDRESS CONFIGURATION, which then has so many sectors.
    void onAccessibleMaxAddress(std::uint64_t sectorsAfter, const Words& words = {{119, 0x4100}}) {
        drive.onAta(IDENTIFY_DEVICE, 0, 0,
                    {identified(NATIVE + 1, words), identified(sectorsAfter, words)});
        drive.onAta(ACCESSIBLE_MAX, 0, 0, {addressed(NATIVE)});
    }

    /// An NVMe drive whose namespace 1 has LBA format 1 of this size, and then so many blocks.
    void onNvmeDrive(std::uint64_t native, std::uint8_t exponent, std::uint8_t metadata,
                     std::uint64_t blocksAfter = 0) {
        Reply controller;
        controller.data = core::Payload(4096);
        *controller.data[520] = 0x10;
        for (std::uint32_t i = 0; i < 8; ++i)
            *controller.data[3080 + i] = static_cast<std::uint8_t>(native >> (8 * i));
        Reply space;
        space.data = core::Payload(4096);
        *space.data[26] = 0x11;
        *space.data[132] = metadata;
        *space.data[134] = exponent;
        nvmeDrive.onNvme(0x06, 0x01, {controller});
        Reply changed;
        changed.data = core::Payload(space.data.data(), space.data.size());
        for (std::uint32_t i = 0; i < 8; ++i)
            *changed.data[i] = static_cast<std::uint8_t>(blocksAfter >> (8 * i));
        Reply saveable;
        saveable.dword0 = 0x05;
        nvmeDrive.onNvme(0x06, 0x00, {space, changed});
        nvmeDrive.onNvme(0x09, 0xC1, {Reply{}});
        nvmeDrive.onNvme(0x0A, 0xC1, {saveable});
    }

    ScriptedDrive drive{"ATA"};
    ScriptedDrive nvmeDrive{"NVMe Admin"};
};

TEST_F(MaxAddress, IsSetByAccessibleMaxAddressConfiguration) {
    onAccessibleMaxAddress(750162470);
    drive.onAta(ACCESSIBLE_MAX, 1, 0x25, {Reply{}});
    EXPECT_EQ(setMaximum("80%"), DONE);
    ASSERT_EQ(drive.sentAta().size(), 4U);
    const protocols::ata::TaskFile getting{0, 0, 0, 0x40, 0x78, true};
    const protocols::ata::TaskFile setting{1, 0, 750162469, 0x40, 0x78, true};
    EXPECT_EQ(drive.sentAta()[1].taskFile, getting);
    EXPECT_EQ(drive.sentAta()[2].taskFile, setting);
}

TEST_F(MaxAddress, ADriveKnownToHaveAccessibleMaxAddressNeedsNoWord119) {
    onAccessibleMaxAddress(NATIVE + 1, {});
    setAttribute(drive, features::device_attributes::AccessibleMaxAddressSupported());
    drive.onAta(ACCESSIBLE_MAX, 1, 0xAF, {Reply{}});
    EXPECT_EQ(setMaximum("Native"), DONE);
    const protocols::ata::TaskFile setting{1, 0, NATIVE, 0x40, 0x78, true};
    EXPECT_EQ(drive.sentAta()[2].taskFile, setting);
}

TEST_F(MaxAddress, OlderDrivesHaveAHostProtectedArea) {
    // Word 119 isn't valid and counts nothing.
    const Words words = {{82, 0x0400}, {119, 0x0100}};
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {identified(NATIVE + 1, words), identified(4097, words)});
    drive.onAta(READ_NATIVE_MAX, 0, 0, {addressed(NATIVE)});
    drive.onAta(SET_MAX, 0, 0x00, {Reply{}});
    EXPECT_EQ(setMaximum("4096"), DONE);
    ASSERT_EQ(drive.sentAta().size(), 4U);
    const protocols::ata::TaskFile reading{0, 0, 0, 0x40, 0x27, true};
    const protocols::ata::TaskFile setting{0, 1, 4096, 0x40, 0x37, true};
    EXPECT_EQ(drive.sentAta()[1].taskFile, reading);
    EXPECT_EQ(drive.sentAta()[2].taskFile, setting);
}

TEST_F(MaxAddress, NvmeDrivesOfOtherMakersHaveNoSuchFeature) {
    onNvmeDrive(1000, 9, 0, 1001);
    nvmeDrive.setNorvo(false);
    EXPECT_EQ(setNvmeMaximum("native"), NOT_A_NORVO_SSD);
    EXPECT_TRUE(nvmeDrive.sentNvme().empty());
}

TEST_F(MaxAddress, ADriveWithNeitherIsNotSupported) {
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {identified(NATIVE + 1, {})});
    EXPECT_EQ(setMaximum("native"), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(drive.sentAta().size(), 1U);
}

TEST_F(MaxAddress, GigabytesFollowTheLogicalSectorSize) {
    onAccessibleMaxAddress(12212046, {{106, 0x5000}, {117, 0x0800}, {119, 0x4100}});
    drive.onAta(ACCESSIBLE_MAX, 1, 0x4D, {Reply{}});
    EXPECT_EQ(setMaximum("50GB"), DONE);
    EXPECT_EQ(drive.sentAta()[2].taskFile.lba, 12212045U);

    onAccessibleMaxAddress(NATIVE + 1, {{106, 0x5000}, {117, 0x0104}, {119, 0x4100}});
    EXPECT_EQ(setMaximum("50GB"), INVALID_SECTOR_SIZE);

    // Without bit 12 words 117 and 118 say nothing.
    onAccessibleMaxAddress(97696368, {{106, 0x4000}, {117, 0x0800}, {119, 0x4100}});
    drive.onAta(ACCESSIBLE_MAX, 1, 0x6F, {Reply{}});
    EXPECT_EQ(setMaximum("50GB"), DONE);

    // Nor if the word that has the bit isn't valid.
    onAccessibleMaxAddress(97696368, {{106, 0x1000}, {117, 0x0800}, {119, 0x4100}});
    EXPECT_EQ(setMaximum("50GB"), DONE);
}

TEST_F(MaxAddress, ARefusalTellsWhatMayBeBehindIt) {
    onAccessibleMaxAddress(NATIVE + 1);
    EXPECT_EQ(setMaximum("1"),
              "0/10 ATA command reported a problem. SET ACCESSIBLE MAX ADDRESS EXT: error register "
              "0x04. A drive takes one change of its maximum address in a power cycle.");
}

TEST_F(MaxAddress, MoreThanTheNativeSizeIsRefusedBeforeAnythingIsSet) {
    onAccessibleMaxAddress(NATIVE + 1);
    EXPECT_EQ(setMaximum("937703088"), INVALID_VALUE);
    EXPECT_EQ(drive.sentAta().size(), 2U);
}

TEST_F(MaxAddress, ASizeThatStaysIsTold) {
    onAccessibleMaxAddress(NATIVE + 1);
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {Reply{}});
    EXPECT_EQ(setMaximum("1"), VALUE_NOT_TAKEN);
}

TEST_F(MaxAddress, LargeDrivesTellTheirSizeInTheExtendedNumber) {
    const Words words = {{69, 0x0008}, {119, 0x4100}, {230, 0x0002}};
    onAccessibleMaxAddress(7, words);
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {Reply{}});
    EXPECT_EQ(setMaximum("1"), DONE);
}

TEST_F(MaxAddress, SmallDrivesTellTheirSizeInAnyOfItsNumbers) {
    onAccessibleMaxAddress(2, {{69, 0x0008}, {119, 0x4100}, {230, 0x0000}});
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {Reply{}});
    EXPECT_EQ(setMaximum("1"), DONE);
    onAccessibleMaxAddress(0, {{60, 2}, {83, 0x4000}, {119, 0x4100}});
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {Reply{}});
    EXPECT_EQ(setMaximum("1"), DONE);
}

TEST_F(MaxAddress, APathThatFailsIsNoRefusalOfTheDrive) {
    onAccessibleMaxAddress(NATIVE + 1);
    Reply unreachable;
    unreachable.pathStatus = core::Status(0, 50, "No way.");
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {unreachable});
    EXPECT_EQ(setMaximum("1"), "0/50 No way.");
}

TEST_F(MaxAddress, NvmeDrivesTakeItAsAFeatureThatIsSaved) {
    onNvmeDrive(6251233967, 9, 0, 4294967296);
    EXPECT_EQ(setNvmeMaximum("4294967295"), DONE);
    ASSERT_EQ(nvmeDrive.sentNvme().size(), 6U);
    EXPECT_EQ(nvmeDrive.sentNvme()[0].fields.nsid, 1U);
    EXPECT_EQ(nvmeDrive.sentNvme()[0].fields.cdw10, 0U);
    const auto& setting = nvmeDrive.sentNvme()[4].fields;
    EXPECT_EQ(setting.opcode, 0x09);
    EXPECT_EQ(setting.nsid, 0U);
    EXPECT_EQ(setting.cdw10, 0x800000C1U);
    EXPECT_EQ(setting.cdw11, 0xFFFFFFFFU);
    EXPECT_EQ(setting.cdw12, 0U);
    EXPECT_EQ(nvmeDrive.sentNvme()[5].fields.opcode, 0x06);
    EXPECT_EQ(nvmeDrive.sentNvme()[5].fields.nsid, 1U);

    // 6251233967 is 1749A42AFh.
    nvmeDrive.sentNvme().clear();
    onNvmeDrive(6251233967, 9, 0, 6251233968);
    EXPECT_EQ(setNvmeMaximum("3200GB"), DONE);
    ASSERT_EQ(nvmeDrive.sentNvme().size(), 6U);
    EXPECT_EQ(nvmeDrive.sentNvme()[4].fields.cdw11, 0x749A42AFU);
    EXPECT_EQ(nvmeDrive.sentNvme()[4].fields.cdw12, 1U);
}

TEST_F(MaxAddress, ANativeMaximumCountsBlocksOf512BytesInAnyFormat) {
    onNvmeDrive(781404247, 12, 0, 97675531);
    EXPECT_EQ(setNvmeMaximum("native"), DONE);
    EXPECT_EQ(nvmeDrive.sentNvme()[4].fields.cdw11, 97675530U);
    EXPECT_EQ(setNvmeMaximum("97675531"), INVALID_VALUE);

    // Seven blocks of 512 bytes at the end are no block of 4096.
    nvmeDrive.sentNvme().clear();
    onNvmeDrive(781404254, 12, 0, 97675531);
    EXPECT_EQ(setNvmeMaximum("100%"), DONE);

    // Metadata doesn't count.
    nvmeDrive.sentNvme().clear();
    onNvmeDrive(1000, 9, 8, 1001);
    EXPECT_EQ(setNvmeMaximum("native"), DONE);
}

TEST_F(MaxAddress, GigabytesFollowTheFormatOfTheFirstNamespace) {
    onNvmeDrive(781404247, 12, 0, 12212046);
    EXPECT_EQ(setNvmeMaximum("50GB"), DONE);
    EXPECT_EQ(nvmeDrive.sentNvme()[4].fields.cdw11, 12212045U);
    for (const std::uint8_t metadata : std::initializer_list<std::uint8_t>{8, 16, 64}) {
        onNvmeDrive(781404247, 9, metadata);
        EXPECT_EQ(setNvmeMaximum("50GB"), INVALID_SECTOR_SIZE);
    }
    onNvmeDrive(781404247, 10, 0);
    EXPECT_EQ(setNvmeMaximum("50GB"), INVALID_SECTOR_SIZE);
}

TEST_F(MaxAddress, AnNvmeDriveWithoutANativeSizeOrAFirstNamespaceIsNotSupported) {
    for (const std::uint64_t native : {std::uint64_t{0}, UINT64_MAX}) {
        onNvmeDrive(native, 9, 0);
        EXPECT_EQ(setNvmeMaximum("native"), NOT_SUPPORTED_BY_DRIVE);
    }
    onNvmeDrive(6, 12, 0);
    EXPECT_EQ(setNvmeMaximum("native"), NOT_SUPPORTED_BY_DRIVE);
    for (const std::uint8_t exponent : std::initializer_list<std::uint8_t>{0, 8, 32, 255}) {
        onNvmeDrive(1000, exponent, 0);
        EXPECT_EQ(setNvmeMaximum("native"), NOT_SUPPORTED_BY_DRIVE);
    }
}

TEST_F(MaxAddress, AnNvmeDriveMayKeepItsSizeOrRefuse) {
    onNvmeDrive(1000, 9, 0, 1000);
    EXPECT_EQ(setNvmeMaximum("native"), VALUE_NOT_TAKEN);
    // The lower halves are the same.
    onNvmeDrive(6251233967, 9, 0, 1956266672);
    EXPECT_EQ(setNvmeMaximum("native"), VALUE_NOT_TAKEN);
    onNvmeDrive(1000, 9, 0, 1001);
    Reply refused;
    refused.nvmeStatus = {0, 0x80};
    nvmeDrive.onNvme(0x09, 0xC1, {refused});
    EXPECT_EQ(setNvmeMaximum("native"),
              "0/25 NVMe command reported a problem. Set Features: LBA Out of Range. A drive takes "
              "it while namespace 1 is its only one.");
}

TEST_F(MaxAddress, ASizeThatCannotBeReadBackIsNoRefusalOfTheChange) {
    onNvmeDrive(1000, 9, 0);
    Reply space;
    space.data = core::Payload(4096);
    *space.data[130] = 9;
    Reply refused;
    refused.nvmeStatus = {0, 0x06};
    nvmeDrive.onNvme(0x06, 0x00, {space, refused});
    EXPECT_EQ(setNvmeMaximum("native"),
              "0/25 NVMe command reported a problem. Identify: Internal Error.");
}

TEST_F(MaxAddress, IsNeitherForRaidMembersNorForDrivesWithPartitions) {
    drive->addPartition(core::Partition());
    EXPECT_EQ(setMaximum("native"),
              "10/94 Selected Drive contains a partition. Remove all partitions to proceed.");
    setAttribute(nvmeDrive, features::device_attributes::RAIDMember());
    EXPECT_EQ(setNvmeMaximum("native"), "10/12 This feature cannot run on a RAID member.");
    EXPECT_EQ(drive.sentAta().size() + nvmeDrive.sentNvme().size(), 0U);
}

TEST_F(MaxAddress, IsNotForADriveWhosePathCannotTellOfPartitions) {
    drive.onPartitionCheck(core::Status(1, 13, "Permission denied"));
    EXPECT_EQ(setMaximum("native"), "1/13 Permission denied");
    EXPECT_TRUE(drive.sentAta().empty());
}

TEST_F(MaxAddress, ReadsItsPropertyBeforeItLooksAtTheDrive) {
    EXPECT_EQ(setMaximum("much"), INVALID_PARAMETER);
    EXPECT_EQ(setMaximum("0"), INVALID_VALUE);
    EXPECT_EQ(set<MaxAddressJob>(drive, {"NativeMaxLBA", "uint64", "1"}), INVALID_PROPERTY);
    EXPECT_EQ(drive.sentAta().size(), 0U);
    EXPECT_EQ(MaxAddressJob().getName(), "MaxAddress");
}

TEST_F(MaxAddress, TakesBlanksAroundTheValueAndNumbersOfAnyType) {
    onAccessibleMaxAddress(2);
    drive.onAta(ACCESSIBLE_MAX, 1, 0x01, {Reply{}});
    EXPECT_EQ(setMaximum("  1 "), DONE);
    onAccessibleMaxAddress(2);
    EXPECT_EQ(set<MaxAddressJob>(drive, {"MaximumLBA", "uint64", "1"}), DONE);
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
