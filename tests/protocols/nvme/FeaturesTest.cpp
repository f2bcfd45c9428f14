// The values of features against a second list of the standard's bits.
#include "protocols/nvme/Features.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

TEST(Features, HaveTheStandardsBits) {
    constexpr tables::GroupedBits ALL[] = {
#define BITS(group, name, lowBit, bits, meaning) {#group, group::name},
#include "protocols/nvme/FeatureBits.def"
    };
    // clang-format off
    constexpr tables::BitRow ROWS[] = {
        {"arbitration",                      "AB",                                2,  0},
        {"arbitration",                      "LPW",                              15,  8},
        {"arbitration",                      "MPW",                              23, 16},
        {"arbitration",                      "HPW",                              31, 24},
        {"power_management",                 "PS",                                4,  0},
        {"power_management",                 "WH",                                7,  5},
        {"temperature_threshold",            "TMPTH",                            15,  0},
        {"temperature_threshold",            "TMPSEL",                           19, 16},
        {"temperature_threshold",            "THSEL",                            21, 20},
        {"error_recovery",                   "TLER",                             15,  0},
        {"error_recovery",                   "DULBE",                            16, 16},
        {"volatile_write_cache",             "WCE",                               0,  0},
        {"number_of_queues",                 "NSQR",                             15,  0},
        {"number_of_queues",                 "NCQR",                             31, 16},
        {"number_of_queues",                 "NSQA",                             15,  0},
        {"number_of_queues",                 "NCQA",                             31, 16},
        {"interrupt_coalescing",             "THR",                               7,  0},
        {"interrupt_coalescing",             "TIME",                             15,  8},
        {"interrupt_vector_configuration",   "IV",                               15,  0},
        {"interrupt_vector_configuration",   "CD",                               16, 16},
        {"write_atomicity",                  "DN",                                0,  0},
        {"asynchronous_event_configuration", "SMART_HEALTH_CRITICAL_WARNINGS",    7,  0},
        {"asynchronous_event_configuration", "NAMESPACE_ATTRIBUTE_NOTICES",       8,  8},
        {"asynchronous_event_configuration", "FIRMWARE_ACTIVATION_NOTICES",       9,  9},
        {"asynchronous_event_configuration", "TELEMETRY_LOG_NOTICES",            10, 10},
        {"asynchronous_event_configuration", "ANA_CHANGE_NOTICES",               11, 11},
        {"asynchronous_event_configuration", "PREDICTABLE_LATENCY_EVENT_NOTICES",12, 12},
        {"asynchronous_event_configuration", "LBA_STATUS_INFORMATION_NOTICES",   13, 13},
        {"asynchronous_event_configuration", "ENDURANCE_GROUP_EVENT_NOTICES",    14, 14},
    };
    // clang-format on
    tables::expectBits(ALL, ROWS);
}

TEST(Features, AreReadFromADword) {
    EXPECT_EQ(readBits(0x04030205, arbitration::AB), 5U);
    EXPECT_EQ(readBits(0x04030205, arbitration::LPW), 2U);
    EXPECT_EQ(readBits(0x04030205, arbitration::MPW), 3U);
    EXPECT_EQ(readBits(0x04030205, arbitration::HPW), 4U);
    EXPECT_EQ(readBits(0x001F0166, temperature_threshold::TMPTH), 0x166U);
    EXPECT_EQ(readBits(0x001F0166, temperature_threshold::TMPSEL), 15U);
    EXPECT_EQ(readBits(0x001F0166, temperature_threshold::THSEL), 1U);
}

TEST(Features, AreMadeBitByBit) {
    std::uint32_t value = withBits(0, power_management::PS, 4);
    value = withBits(value, power_management::WH, 2);
    EXPECT_EQ(value, 0x44U);
    EXPECT_EQ(withBits(0xFFFFFFFF, volatile_write_cache::WCE, 0), 0xFFFFFFFEU);
}

}  // namespace
}  // namespace orvel::protocols::nvme
