// SMART: data and thresholds of a drive byte by byte, flags, health, names.
#include "protocols/ata/Smart.h"

#include "protocols/ata/Structures.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

TEST(Smart, DataHoldsItsAttributes) {
    const Payload data(512);
    put(data, 0, {0x10, 0x00});
    put(data, 2, {0x05, 0x32, 0x00, 100, 99, 1, 2, 3, 4, 5, 6, 0});         // the first
    put(data, 350, {0xF9, 0x13, 0x01, 98, 97, 0xFF, 0, 0, 0, 0, 0x80, 0});  // the thirtieth
    put(data, 362, {0x82, 0xF9, 0x34, 0x12, 0x00, 0x7B, 0x03, 0x00, 0x01, 0x00});
    put(data, 372, {1, 255, 2, 0x2C, 0x01});

    const auto attribute = [](std::uint32_t index, const Field& field) {
        return fieldOf(smart_data::ATTRIBUTES, index, field);
    };
    EXPECT_EQ(readNumber(data, smart_data::RevisionNumber), 0x10U);
    EXPECT_EQ(readNumber(data, attribute(0, smart_attribute::Id)), 5U);
    EXPECT_EQ(readNumber(data, attribute(0, smart_attribute::StatusFlags)), 0x32U);
    EXPECT_EQ(readNumber(data, attribute(0, smart_attribute::Current)), 100U);
    EXPECT_EQ(readNumber(data, attribute(0, smart_attribute::Worst)), 99U);
    EXPECT_EQ(readNumber(data, attribute(0, smart_attribute::Raw)), 0x060504030201U);
    EXPECT_EQ(readNumber(data, attribute(29, smart_attribute::Id)), 249U);
    EXPECT_EQ(readNumber(data, attribute(29, smart_attribute::StatusFlags)), 0x113U);
    EXPECT_EQ(readNumber(data, attribute(29, smart_attribute::Raw)), 0x8000000000FFU);
    EXPECT_EQ(thrownCode([&] { attribute(30, smart_attribute::Id); }), 14);

    EXPECT_EQ(readNumber(data, smart_data::OfflineDataCollectionStatus), 0x82U);
    EXPECT_EQ(readNumber(data, smart_data::SelfTestExecutionStatus), 0xF9U);
    EXPECT_EQ(readNumber(data, smart_data::OfflineDataCollectionSeconds), 0x1234U);
    EXPECT_EQ(readNumber(data, smart_data::OfflineDataCollectionCapability), 0x7BU);
    EXPECT_EQ(readNumber(data, smart_data::SmartCapability), 3U);
    EXPECT_EQ(readNumber(data, smart_data::ErrorLoggingCapability), 1U);
    EXPECT_EQ(readNumber(data, smart_data::ShortSelfTestPollingMinutes), 1U);
    EXPECT_EQ(readNumber(data, smart_data::ExtendedSelfTestPollingMinutes), 255U);
    EXPECT_EQ(readNumber(data, smart_data::ConveyanceSelfTestPollingMinutes), 2U);
    EXPECT_EQ(readNumber(data, smart_data::ExtendedSelfTestPollingMinutesWord), 300U);
}

TEST(Smart, ThresholdsStandTwelveBytesApart) {
    const Payload thresholds(512);
    put(thresholds, 2, {5, 10});
    put(thresholds, 14, {9, 20});
    put(thresholds, 350, {249, 30});

    const struct {
        std::uint32_t index;
        unsigned id;
        unsigned threshold;
    } ROWS[] = {{0, 5, 10}, {1, 9, 20}, {29, 249, 30}};

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.index);
        const auto read = [&](const Field& field) {
            return readNumber(thresholds, fieldOf(smart_thresholds::THRESHOLDS, row.index, field));
        };
        EXPECT_EQ(read(smart_threshold::Id), row.id);
        EXPECT_EQ(read(smart_threshold::Threshold), row.threshold);
    }
}

TEST(Smart, HasTheStandardsFlags) {
    EXPECT_EQ(smart_attribute_flags::PRE_FAILURE, 0x01);
    EXPECT_EQ(smart_attribute_flags::ONLINE_COLLECTION, 0x02);
    EXPECT_EQ(smart_attribute_flags::PERFORMANCE, 0x04);
    EXPECT_EQ(smart_attribute_flags::ERROR_RATE, 0x08);
    EXPECT_EQ(smart_attribute_flags::EVENT_COUNT, 0x10);
    EXPECT_EQ(smart_attribute_flags::SELF_PRESERVING, 0x20);
    EXPECT_EQ(offline_collection_capability::EXECUTE_OFFLINE_IMMEDIATE, 0x01);
    EXPECT_EQ(offline_collection_capability::AUTOMATIC_OFFLINE, 0x02);
    EXPECT_EQ(offline_collection_capability::ABORTS_ON_COMMAND, 0x04);
    EXPECT_EQ(offline_collection_capability::READ_SCANNING, 0x08);
    EXPECT_EQ(offline_collection_capability::SELF_TEST, 0x10);
    EXPECT_EQ(offline_collection_capability::CONVEYANCE_SELF_TEST, 0x20);
    EXPECT_EQ(offline_collection_capability::SELECTIVE_SELF_TEST, 0x40);
    EXPECT_EQ(smart_capability::SAVES_BEFORE_POWER_MODE, 0x01);
    EXPECT_EQ(smart_capability::ATTRIBUTE_AUTOSAVE, 0x02);
    EXPECT_EQ(error_logging_capability::ERROR_LOGGING, 0x01);
}

TEST(Smart, TakesTheSelfTestByteApart) {
    EXPECT_EQ(selfTestExecution(0xF9), (SelfTestExecution{15, 90}));
    EXPECT_EQ(selfTestExecution(0x70), (SelfTestExecution{7, 0}));
    EXPECT_EQ(selfTestExecution(0x0A), (SelfTestExecution{0, 100}));
    EXPECT_EQ(selfTestExecutionByte({15, 90}), 0xF9);
    EXPECT_EQ(selfTestExecutionByte({7, 0}), 0x70);
    EXPECT_EQ(selfTestExecutionByte({1, 49}), 0x14);
}

TEST(Smart, TellsHealthFromTheReturnedAddress) {
    const struct {
        std::uint64_t lba;
        SmartHealth health;
    } ROWS[] = {
        {0xC24F00, SmartHealth::GOOD},    {0xC24FAA, SmartHealth::GOOD},
        {0x11C24F00, SmartHealth::GOOD},  {0x2CF400, SmartHealth::THRESHOLD_EXCEEDED},
        {0x000000, SmartHealth::UNKNOWN}, {0xFFFFFF, SmartHealth::UNKNOWN},
        {0x00C24F, SmartHealth::UNKNOWN},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.lba);
        ReturnedTaskFile returned;
        returned.lba = row.lba;
        EXPECT_EQ(smartHealth(returned), row.health);
    }
    EXPECT_EQ(SMART_GOOD, 0xC24F);
    EXPECT_EQ(SMART_THRESHOLD_EXCEEDED, 0x2CF4);
}

TEST(Smart, NamesAttributes) {
    const struct {
        std::uint8_t id;
        const char* name;
    } ROWS[] = {
        {1, "Raw Read Error Rate"},
        {3, "Spin-Up Time"},
        {4, "Start/Stop Count"},
        {5, "Reallocated Sector Count"},
        {9, "Power-On Hours"},
        {12, "Power Cycle Count"},
        {13, "Soft Read Error Rate"},
        {170, "Available Reserved Space"},
        {171, "Program Fail Count"},
        {172, "Erase Fail Count"},
        {173, "Average Block Erase Count"},
        {174, "Unexpected Power Loss Count"},
        {175, "Power Loss Protection Failure"},
        {176, "Erase Fail Count (Worst Component)"},
        {177, "Wear Leveling Count"},
        {178, "Used Reserved Block Count (Worst Component)"},
        {179, "Used Reserved Block Count"},
        {180, "Unused Reserved Block Count"},
        {181, "Program Fail Count (Total)"},
        {182, "Erase Fail Count (Total)"},
        {183, "SATA Downshift Count"},
        {184, "End-to-End Error Detection Count"},
        {187, "Uncorrectable Error Count"},
        {188, "Command Timeout Count"},
        {190, "Temperature (Case)"},
        {192, "Unsafe Shutdown Count"},
        {194, "Temperature (Device Internal)"},
        {195, "Corrected Error Count"},
        {196, "Reallocation Event Count"},
        {197, "Pending Sector Count"},
        {198, "Off-line Uncorrectable Sector Count"},
        {199, "Interface CRC Error Count"},
        {225, "Host Writes"},
        {226, "Timed Workload Media Wear"},
        {227, "Timed Workload Host Read/Write Ratio"},
        {228, "Timed Workload Timer"},
        {231, "Life Left"},
        {232, "Available Reserved Space (Percentage)"},
        {233, "Media Wearout Indicator"},
        {234, "Thermal Throttle Status"},
        {241, "Total Host Writes"},
        {242, "Total Host Reads"},
        {249, "Total Media Writes"},
    };

    std::size_t named = 0;
    for (unsigned id = 0; id < 256; ++id)
        if (smartAttributeName(static_cast<std::uint8_t>(id)) != std::string("Unknown Attribute"))
            ++named;
    EXPECT_EQ(named, std::size(ROWS));
    for (const auto& row : ROWS)
        EXPECT_STREQ(smartAttributeName(row.id), row.name);
}

}  // namespace
}  // namespace orvel::protocols::ata
