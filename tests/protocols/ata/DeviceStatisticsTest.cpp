// Statistics: value and flags in 8 bytes.
#include "protocols/ata/DeviceStatistics.h"

#include "protocols/ata/Logs.h"
#include "protocols/ata/Structures.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

TEST(DeviceStatistics, ReadsValueAndFlags) {
    const Payload page(512);
    put(page, 8, {0x78, 0x56, 0x34, 0x12, 0xEE, 0xEE, 0xEE, 0xC0});
    put(page, 24, {1, 2, 3, 4, 5, 6, 0xEE, 0x80});
    EXPECT_EQ(readStatistic(page, general_statistics::LifetimePowerOnResets),
              (Statistic{0x12345678, 0xC0}));
    EXPECT_EQ(readStatistic(page, general_statistics::LogicalSectorsWritten),
              (Statistic{0x060504030201, 0x80}));
}

TEST(DeviceStatistics, WritesValueAndFlags) {
    const Payload page(512);
    writeStatistic(page, solid_state_device_statistics::PercentageUsedEndurance, {0x1FF, 0xE0});
    Payload expected(512);
    put(expected, 8, {0xFF, 0, 0, 0, 0, 0, 0, 0xE0});
    EXPECT_EQ(page, expected);
}

TEST(DeviceStatistics, AreValidIfSupportedAndValid) {
    EXPECT_TRUE((Statistic{0, 0xC0}.isValid()));
    EXPECT_TRUE((Statistic{0, 0xF8}.isValid()));
    EXPECT_FALSE((Statistic{0, 0x80}.isValid()));
    EXPECT_FALSE((Statistic{0, 0x40}.isValid()));
    EXPECT_FALSE((Statistic{0, 0x3F}.isValid()));
}

TEST(DeviceStatistics, HaveSignedTemperatures) {
    const Payload page(512);
    put(page, 8, {0xF6, 0, 0, 0, 0, 0, 0, 0xC0});
    EXPECT_EQ(readTemperature(page, temperature_statistics::CurrentTemperature), -10);
}

TEST(DeviceStatistics, HaveTheStandardsNumbers) {
    EXPECT_EQ(statistics_page::LIST_OF_PAGES, 0x00);
    EXPECT_EQ(statistics_page::GENERAL, 0x01);
    EXPECT_EQ(statistics_page::FREE_FALL, 0x02);
    EXPECT_EQ(statistics_page::ROTATING_MEDIA, 0x03);
    EXPECT_EQ(statistics_page::GENERAL_ERRORS, 0x04);
    EXPECT_EQ(statistics_page::TEMPERATURE, 0x05);
    EXPECT_EQ(statistics_page::TRANSPORT, 0x06);
    EXPECT_EQ(statistics_page::SOLID_STATE_DEVICE, 0x07);
    EXPECT_EQ(statistic_flags::SUPPORTED, 0x80);
    EXPECT_EQ(statistic_flags::VALID, 0x40);
    EXPECT_EQ(statistic_flags::NORMALIZED, 0x20);
    EXPECT_EQ(statistic_flags::SUPPORTS_DSN, 0x10);
    EXPECT_EQ(statistic_flags::MONITORED_CONDITION_MET, 0x08);
}

TEST(DeviceStatistics, ThrowForShortPayloads) {
    const Field& field = general_statistics::LifetimePowerOnResets;
    EXPECT_EQ(thrownCode([&] { readStatistic(Payload(15), field); }), 14);
    EXPECT_EQ(thrownCode([&] { readStatistic(Payload(16), field); }), -1);
    EXPECT_EQ(thrownCode([&] { writeStatistic(Payload(15), field, {}); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata
