// SCT: what its commands bring, what they return.
#include "protocols/ata/Sct.h"

#include "protocols/ata/Structures.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace orvel::protocols::ata::sct {
namespace {

using core::Payload;
using Samples = std::vector<std::optional<int>>;

Payload block(std::initializer_list<int> front) {
    Payload payload(512);
    put(payload, 0, front);
    return payload;
}

TEST(Sct, MakesEachRequest) {
    const struct {
        const char* name;
        Payload made;
        Payload expected;
    } ROWS[] = {
        {"read timer", setRecoveryTime(RecoveryTimer::READ, 0x1234),
         block({3, 0, 1, 0, 1, 0, 0x34, 0x12})},
        {"write timer", setRecoveryTime(RecoveryTimer::WRITE, 70),
         block({3, 0, 1, 0, 2, 0, 70, 0})},
        {"return read timer", returnRecoveryTime(RecoveryTimer::READ), block({3, 0, 2, 0, 1, 0})},
        {"return write timer", returnRecoveryTime(RecoveryTimer::WRITE), block({3, 0, 2, 0, 2, 0})},
        {"write cache",
         setFeature(Feature::WRITE_CACHE, write_cache_state::DISABLED,
                    FeatureLifetime::OVER_POWER_OFF),
         block({4, 0, 1, 0, 1, 0, 3, 0, 1, 0})},
        {"write cache until power off",
         setFeature(Feature::WRITE_CACHE, write_cache_state::ENABLED,
                    FeatureLifetime::UNTIL_POWER_OFF),
         block({4, 0, 1, 0, 1, 0, 2, 0, 0, 0})},
        {"write cache by SET FEATURES",
         setFeature(Feature::WRITE_CACHE, write_cache_state::BY_SET_FEATURES,
                    FeatureLifetime::UNTIL_POWER_OFF),
         block({4, 0, 1, 0, 1, 0, 1, 0, 0, 0})},
        {"reordering",
         setFeature(Feature::WRITE_CACHE_REORDERING, write_cache_reordering_state::ENABLED,
                    FeatureLifetime::UNTIL_POWER_OFF),
         block({4, 0, 1, 0, 2, 0, 1, 0, 0, 0})},
        {"no reordering",
         setFeature(Feature::WRITE_CACHE_REORDERING, write_cache_reordering_state::DISABLED,
                    FeatureLifetime::OVER_POWER_OFF),
         block({4, 0, 1, 0, 2, 0, 2, 0, 1, 0})},
        {"interval",
         setFeature(Feature::TEMPERATURE_LOGGING_INTERVAL, 0x0203, FeatureLifetime::OVER_POWER_OFF),
         block({4, 0, 1, 0, 3, 0, 3, 2, 1, 0})},
        {"return state", returnFeatureState(Feature::WRITE_CACHE), block({4, 0, 2, 0, 1, 0})},
        {"return options", returnFeatureOptions(Feature::TEMPERATURE_LOGGING_INTERVAL),
         block({4, 0, 3, 0, 3, 0})},
        {"table", readDataTable(TEMPERATURE_HISTORY_TABLE), block({5, 0, 1, 0, 2, 0})},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.made, row.expected);
    }
}

TEST(Sct, PutsTheReturnedValueTogether) {
    ReturnedTaskFile returned;
    returned.count = 0xFF34;
    returned.lba = 0xFFFFFF12;
    EXPECT_EQ(returnedValue(returned), 0x1234);
}

TEST(Sct, HasAStatusResponse) {
    const Payload status(512);
    put(status, 0, {3, 0, 0x34, 0x12, 1, 0, 1, 0, 0, 0, 5});
    put(status, 14, {0xFF, 0xFF, 4, 0, 1, 0});
    put(status, 40, {1, 2, 3, 4, 5, 6, 0, 0});
    put(status, 205, {70, 1, 0, 0, 0, 2, 0, 0, 0, 0x4F, 0xC2, 0x41, 0x00});
    EXPECT_EQ(readNumber(status, sct_status::FormatVersion), 3U);
    EXPECT_EQ(readNumber(status, sct_status::SCTVersion), 0x1234U);
    EXPECT_EQ(readNumber(status, sct_status::SCTSpecification), 1U);
    EXPECT_EQ(readNumber(status, sct_status::StatusFlags), SEGMENT_INITIALIZED);
    EXPECT_EQ(readNumber(status, sct_status::DeviceState), 5U);
    EXPECT_EQ(readNumber(status, sct_status::ExtendedStatusCode), 0xFFFFU);
    EXPECT_EQ(readNumber(status, sct_status::ActionCode), 4U);
    EXPECT_EQ(readNumber(status, sct_status::FunctionCode), 1U);
    EXPECT_EQ(readNumber(status, sct_status::LBA), 0x060504030201U);
    EXPECT_EQ(readNumber(status, sct_status::MaxOpLimit), 70U);
    EXPECT_EQ(readNumber(status, sct_status::OverLimitCount), 1U);
    EXPECT_EQ(readNumber(status, sct_status::UnderLimitCount), 2U);
    EXPECT_EQ(readNumber(status, sct_status::SmartStatus), 0xC24FU);
    EXPECT_EQ(readNumber(status, sct_status::MinErcTimeLimit), 65U);
}

TEST(Sct, UnrollsTheTemperatureHistory) {
    Payload table(512);
    put(table, 30, {4, 0, 1, 0, 21, 22, 0x80, 0xFF});
    EXPECT_EQ(temperatureHistory(table), (Samples{std::nullopt, -1, 21, 22}));
    put(table, 32, {3, 0});
    EXPECT_EQ(temperatureHistory(table), (Samples{21, 22, std::nullopt, -1}));
    put(table, 32, {0, 0});
    EXPECT_EQ(temperatureHistory(table), (Samples{22, std::nullopt, -1, 21}));
}

TEST(Sct, TakesHistoriesOfAnySize) {
    EXPECT_EQ(temperatureHistory(Payload(512)), Samples());
    Payload full(512);
    put(full, 30, {0xDE, 0x01, 0xDD, 0x01});
    put(full, 511, {40});
    const Samples samples = temperatureHistory(full);
    EXPECT_EQ(samples.size(), 478U);
    EXPECT_EQ(samples.back(), 40);
    Payload longer(1024);
    put(longer, 30, {0xDE, 0x03, 0xDD, 0x03});
    put(longer, 1023, {41});
    EXPECT_EQ(temperatureHistory(longer).size(), 990U);
    EXPECT_EQ(temperatureHistory(longer).back(), 41);
}

TEST(Sct, ThrowsForHistoriesOutOfBounds) {
    Payload table(512);
    put(table, 30, {0xDF, 0x01, 0x00, 0x00});
    EXPECT_EQ(thrownCode([&] { temperatureHistory(table); }), 14);
    put(table, 30, {4, 0, 4, 0});
    EXPECT_EQ(thrownCode([&] { temperatureHistory(table); }), 14);
    EXPECT_EQ(thrownCode([] { temperatureHistory(Payload(33)); }), 14);
    EXPECT_EQ(thrownCode([] { temperatureHistory(filledWith(0xFF, 512)); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata::sct
