// The vendor's identifiers, number by number, and that each lies in the range left to vendors.
#include "protocols/norvo/Vendor.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace orvel::protocols::norvo {
namespace {

struct Row {
    const char* name;
    unsigned actual;
    unsigned expected;
};

template <std::size_t COUNT>
void expectNumbers(const Row (&rows)[COUNT], unsigned first, unsigned last) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.actual, row.expected);
        EXPECT_GE(row.actual, first);
        EXPECT_LE(row.actual, last);
    }
}

constexpr unsigned number(ata::sct::Feature feature) {
    return static_cast<std::uint16_t>(feature);
}

// clang-format off

TEST(Vendor, HasLogPages) {
    constexpr Row ROWS[] = {
        {"Nlog",                     log_pages::NLOG,                     0xC0},
        {"read latency statistics",  log_pages::READ_LATENCY_STATISTICS,  0xC1},
        {"write latency statistics", log_pages::WRITE_LATENCY_STATISTICS, 0xC2},
        {"event log",                log_pages::EVENT_LOG,                0xC3},
        {"assert log",               log_pages::ASSERT_LOG,               0xC4},
        {"temperature statistics",   log_pages::TEMPERATURE_STATISTICS,   0xC5},
        {"eye diagram",              log_pages::EYE_DIAGRAM,              0xC8},
        {"health statistics",        log_pages::HEALTH_STATISTICS,        0xCA},
        {"queue metrics",            log_pages::QUEUE_METRICS,            0xCB},
    };
    expectNumbers(ROWS, 0xC0, 0xFF);
}

TEST(Vendor, HasNvmeFeatures) {
    constexpr Row ROWS[] = {
        {"power governor",        feature_ids::POWER_GOVERNOR,        0xC0},
        {"maximum LBA",           feature_ids::MAXIMUM_LBA,           0xC1},
        {"reset timed workload",  feature_ids::RESET_TIMED_WORKLOAD,  0xC6},
        {"reset CRC error count", feature_ids::RESET_CRC_ERROR_COUNT, 0xC7},
        {"SMBus address",         feature_ids::SMBUS_ADDRESS,         0xC8},
        {"latency tracking",      feature_ids::LATENCY_TRACKING,      0xE2},
    };
    expectNumbers(ROWS, 0xC0, 0xFF);
}

TEST(Vendor, HasSctFeatures) {
    constexpr Row ROWS[] = {
        {"PLI test time interval",     number(sct_features::PLI_TEST_TIME_INTERVAL),    0xD000},
        {"physical sector size",       number(sct_features::PHYSICAL_SECTOR_SIZE),      0xD001},
        {"power governor",             number(sct_features::POWER_GOVERNOR),            0xD002},
        {"PHY configuration",          number(sct_features::PHY_CONFIG),                0xD003},
        {"PHY speed",                  number(sct_features::PHY_SPEED),                 0xD004},
        {"spread spectrum clocking",   number(sct_features::SPREAD_SPECTRUM_CLOCKING),  0xD005},
        {"reset timed workload",       number(sct_features::RESET_TIMED_WORKLOAD),      0xD006},
    };
    expectNumbers(ROWS, 0xD000, 0xFFFF);
}

TEST(Vendor, HasSataLogs) {
    constexpr Row ROWS[] = {
        {"Nlog",       log_addresses::NLOG,       0xA0},
        {"event log",  log_addresses::EVENT_LOG,  0xA1},
        {"assert log", log_addresses::ASSERT_LOG, 0xA2},
    };
    expectNumbers(ROWS, 0xA0, 0xDF);
}

TEST(Vendor, HasSmartAttributesForTheTimedWorkload) {
    EXPECT_EQ(smart_attributes::TIMED_WORKLOAD_MEDIA_WEAR, 226);
    EXPECT_EQ(smart_attributes::TIMED_WORKLOAD_HOST_READS, 227);
    EXPECT_EQ(smart_attributes::TIMED_WORKLOAD_TIMER, 228);
    EXPECT_EQ(smart_attributes::RESET_VALUE, 65535);
}

TEST(Vendor, HasTwoLanesInTwoSerdesGroups) {
    EXPECT_EQ(serdes::GROUP_A, 0);
    EXPECT_EQ(serdes::GROUP_B, 1);
    EXPECT_EQ(serdes::GROUPS, 2);
    EXPECT_EQ(serdes::LANES, 2);
}

// clang-format on

}  // namespace
}  // namespace orvel::protocols::norvo
