// SCT Command Transport.
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Sct.h"
#include "protocols/ata/SctCodes.h"
#include "protocols/norvo/Vendor.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;
namespace extended_status = sct::extended_status;
namespace vendor = protocols::norvo;

namespace {

constexpr std::uint8_t NO_TEMPERATURE = 0x80;

/// What an SCT command comes to.
struct SctAnswer {
    std::uint16_t status = extended_status::SUCCESS;
    std::uint16_t value = 0;  ///< of the commands that return one
};

constexpr std::uint16_t codeOf(sct::Feature feature) {
    return static_cast<std::uint16_t>(feature);
}

/// The states that a feature can have: those from `low` to `high` by steps.
struct FeatureStates {
    std::uint16_t code;
    std::uint16_t low;
    std::uint16_t high;
    std::uint16_t factor;  ///< from a state to the next one; 0 for the next number
};

// clang-format off
constexpr FeatureStates STATES[] = {
//   code                                                       low     high  factor
    {codeOf(sct::Feature::WRITE_CACHE),                           1,       3,  0},
    {codeOf(sct::Feature::WRITE_CACHE_REORDERING),                1,       2,  0},
    {codeOf(sct::Feature::TEMPERATURE_LOGGING_INTERVAL),          1,  0xFFFF,  0},
    {codeOf(vendor::sct_features::PLI_TEST_TIME_INTERVAL),        0,       6,  0},
    {codeOf(vendor::sct_features::PHYSICAL_SECTOR_SIZE),        512,    4096,  8},
    {codeOf(vendor::sct_features::POWER_GOVERNOR),                0,       2,  0},
    {codeOf(vendor::sct_features::PHY_CONFIG),                    0,       3,  0},
    {codeOf(vendor::sct_features::PHY_SPEED),                     1,       3,  0},
    {codeOf(vendor::sct_features::SPREAD_SPECTRUM_CLOCKING),      0,       1,  0},
    {codeOf(vendor::sct_features::RESET_TIMED_WORKLOAD),          1,       1,  0},
};

// clang-format on

bool isState(std::uint16_t code, std::uint16_t state) {
    const auto* const row = std::ranges::find(STATES, code, &FeatureStates::code);
    if (row == std::end(STATES)) return false;
    if (row->factor != 0) return state == row->low || state == row->low * row->factor;
    return state >= row->low && state <= row->high;
}

std::uint16_t stateOf(const SctFeatureState& feature) {
    return feature.current.value_or(feature.saved.value_or(feature.defaultState));
}

void resetTimedWorkload(AtaDrive& drive) {
    namespace attributes = vendor::smart_attributes;
    setRawAttribute(drive, attributes::TIMED_WORKLOAD_MEDIA_WEAR, attributes::RESET_VALUE);
    setRawAttribute(drive, attributes::TIMED_WORKLOAD_HOST_READS, attributes::RESET_VALUE);
    setRawAttribute(drive, attributes::TIMED_WORKLOAD_TIMER, 0);
}

/// Leaves it to SET FEATURES unless the state says otherwise.
void applyWriteCache(AtaDrive& drive, std::uint16_t state) {
    if (state == sct::write_cache_state::BY_SET_FEATURES) return;
    const bool isEnabled = state == sct::write_cache_state::ENABLED;
    id::writeBits(drive.identifyDevice, id::word_85::VOLATILE_WRITE_CACHE, isEnabled ? 1 : 0);
}

void applySectorSize(AtaDrive& drive, std::uint16_t state) {
    constexpr std::uint16_t LARGE = 4096;
    constexpr std::uint16_t EIGHT = 3;  // as a power of two
    const bool isLarge = state == LARGE;
    constexpr std::uint16_t VALID = 1;
    id::writeBits(drive.identifyDevice, id::word_106::VALIDITY, VALID);
    id::writeBits(drive.identifyDevice, id::word_106::MULTIPLE_LOGICAL_PER_PHYSICAL, isLarge);
    id::writeBits(drive.identifyDevice, id::word_106::LOGICAL_PER_PHYSICAL_EXPONENT,
                  isLarge ? EIGHT : 0);
}

/// Shows a feature's state where else it is to be seen.
void apply(AtaDrive& drive, std::uint16_t code, std::uint16_t state) {
    if (!isState(code, state)) return;
    switch (code) {
    case codeOf(sct::Feature::WRITE_CACHE):
        applyWriteCache(drive, state);
        break;
    case codeOf(vendor::sct_features::PHYSICAL_SECTOR_SIZE):
        applySectorSize(drive, state);
        break;
    case codeOf(vendor::sct_features::PHY_SPEED):
        id::writeBits(drive.identifyDevice, id::word_77::NEGOTIATED_SPEED, state);
        break;
    default:
        break;
    }
}

/// Samples of one interval would stand beside those of another.
void clearHistoryIfIntervalChanged(AtaDrive& drive, std::uint16_t code, std::uint16_t before) {
    if (code != codeOf(sct::Feature::TEMPERATURE_LOGGING_INTERVAL)) return;
    if (stateOf(drive.sctFeatures.at(code)) != before) drive.temperatureHistory.clear();
}

SctAnswer setState(AtaDrive& drive, std::uint16_t code, std::uint16_t state, std::uint16_t flags) {
    SctFeatureState& feature = drive.sctFeatures.at(code);
    const bool isPreserved = flags == sct::PRESERVE_OVER_POWER_CYCLES;
    if (!isState(code, state)) return {extended_status::INVALID_FEATURE_STATE};
    if (flags != 0 && !isPreserved) return {extended_status::INVALID_OPTION_FLAGS};
    if (code == codeOf(vendor::sct_features::RESET_TIMED_WORKLOAD)) {
        resetTimedWorkload(drive);
        return {};
    }
    if (feature.isAppliedAtPowerOn) {
        // It would be forgotten before it counts.
        if (!isPreserved) return {extended_status::INVALID_OPTION_FLAGS};
        feature.current = stateOf(feature);
        feature.saved = state;
        return {};
    }
    const std::uint16_t before = stateOf(feature);
    feature.current = state;
    if (isPreserved) feature.saved = state;
    apply(drive, code, state);
    clearHistoryIfIntervalChanged(drive, code, before);
    return {};
}

SctAnswer controlFeature(AtaDrive& drive, const core::Payload& keyPage) {
    namespace fields = sct_feature_control;
    const auto read = [&](const protocols::Field& field) {
        return static_cast<std::uint16_t>(readNumber(keyPage, field));
    };
    const std::uint16_t function = read(fields::FunctionCode);
    const std::uint16_t code = read(fields::FeatureCode);
    if (function < sct::feature_functions::SET_STATE ||
        function > sct::feature_functions::RETURN_OPTIONS) {
        return {extended_status::INVALID_FEATURE_FUNCTION};
    }
    const auto feature = drive.sctFeatures.find(code);
    if (feature == drive.sctFeatures.end()) return {extended_status::INVALID_FEATURE};
    const auto& [key, state] = *feature;
    switch (function) {
    case sct::feature_functions::SET_STATE:
        return setState(drive, code, read(fields::State), read(fields::OptionFlags));
    case sct::feature_functions::RETURN_STATE:
        return {extended_status::SUCCESS, stateOf(state)};
    default:
        return {extended_status::SUCCESS,
                state.saved ? sct::PRESERVE_OVER_POWER_CYCLES : std::uint16_t{0}};
    }
}

SctAnswer controlRecovery(AtaDrive& drive, const core::Payload& keyPage) {
    namespace fields = sct_error_recovery_control;
    const auto function = readNumber(keyPage, fields::FunctionCode);
    const auto selection = readNumber(keyPage, fields::SelectionCode);
    const auto limit = static_cast<std::uint16_t>(readNumber(keyPage, fields::RecoveryTimeLimit));
    const bool isRead = selection == static_cast<std::uint16_t>(sct::RecoveryTimer::READ);
    const bool isWrite = selection == static_cast<std::uint16_t>(sct::RecoveryTimer::WRITE);
    if (function != sct::recovery_functions::SET_TIMER &&
        function != sct::recovery_functions::RETURN_TIMER) {
        return {extended_status::INVALID_RECOVERY_FUNCTION};
    }
    if (!isRead && !isWrite) return {extended_status::INVALID_RECOVERY_SELECTION};
    std::uint16_t& timer = drive.recoveryTimers.at(isRead ? 0 : 1);
    if (function == sct::recovery_functions::RETURN_TIMER) {
        return {extended_status::SUCCESS, timer};
    }
    // 0 is no limit at all.
    if (limit != 0 && limit < readNumber(drive.sctStatus, sct_status::MinErcTimeLimit)) {
        return {isRead ? extended_status::READ_TIMER_TOO_SHORT
                       : extended_status::WRITE_TIMER_TOO_SHORT};
    }
    timer = limit;
    return {};
}

/// The byte of a specified temperature; "no temperature" if the statistics don't tell it.
std::uint8_t specified(const AtaDrive& drive, const protocols::Field& field) {
    const auto page = drive.deviceStatistics.find(statistics_page::TEMPERATURE);
    if (page == drive.deviceStatistics.end()) return NO_TEMPERATURE;
    const Statistic statistic = readStatistic(page->second, field);
    return statistic.isValid() ? static_cast<std::uint8_t>(statistic.value) : NO_TEMPERATURE;
}

core::Payload makeTemperatureHistory(const AtaDrive& drive) {
    namespace fields = sct_temperature_history;
    constexpr std::uint64_t VERSION = 2;
    constexpr std::uint16_t MINUTE = 1;
    constexpr std::uint32_t CAPACITY = fields::SAMPLES.count;
    const auto maximum = specified(drive, temperature_statistics::SpecifiedMaximumOperating);
    const auto minimum = specified(drive, temperature_statistics::SpecifiedMinimumOperating);
    const auto& newestFirst = drive.temperatureHistory;
    const auto count =
        static_cast<std::uint32_t>(std::min<std::size_t>(newestFirst.size(), CAPACITY));
    const core::Payload table(fields::SIZE);
    writeNumber(table, fields::FormatVersion, VERSION);
    writeNumber(table, fields::SamplingPeriod, MINUTE);
    writeNumber(table, fields::Interval,
                sctFeatureState(drive, codeOf(sct::Feature::TEMPERATURE_LOGGING_INTERVAL))
                    .value_or(MINUTE));
    writeNumber(table, fields::MaxOpLimit, readNumber(drive.sctStatus, sct_status::MaxOpLimit));
    writeNumber(table, fields::OverLimit, maximum);
    writeNumber(table, fields::MinOpLimit, minimum);
    writeNumber(table, fields::UnderLimit, minimum);
    writeNumber(table, fields::CBSize, CAPACITY);
    writeNumber(table, fields::CBIndex, count > 0 ? count - 1 : 0);
    for (std::uint32_t i = 0; i < CAPACITY; ++i) {
        *table.at(fields::SAMPLES.offset + i) =
            i < count ? static_cast<std::uint8_t>(newestFirst[count - 1 - i]) : NO_TEMPERATURE;
    }
    return table;
}

SctAnswer readTable(AtaDrive& drive, const core::Payload& keyPage) {
    namespace fields = sct_data_table;
    if (readNumber(keyPage, fields::FunctionCode) != sct::table_functions::READ_TABLE) {
        return {extended_status::INVALID_FUNCTION};
    }
    if (readNumber(keyPage, fields::TableID) != sct::TEMPERATURE_HISTORY_TABLE) {
        return {extended_status::INVALID_TABLE};
    }
    drive.volatileState.sctData = StoredBytes(makeTemperatureHistory(drive));
    return {};
}

struct ActionRow {
    std::uint16_t code;
    const id::Bits& capability;
    SctAnswer (*execute)(AtaDrive& drive, const core::Payload& keyPage);
};

// clang-format off
constexpr ActionRow ACTIONS[] = {
    {sct::actions::ERROR_RECOVERY_CONTROL, id::word_206::ERROR_RECOVERY_CONTROL, controlRecovery},
    {sct::actions::FEATURE_CONTROL,        id::word_206::FEATURE_CONTROL,        controlFeature},
    {sct::actions::DATA_TABLES,            id::word_206::DATA_TABLES,            readTable},
};

// clang-format on

SctAnswer execute(AtaDrive& drive, const core::Payload& keyPage) {
    const auto action = readNumber(keyPage, sct_data_table::ActionCode);
    const auto* const row = std::ranges::find(ACTIONS, action, &ActionRow::code);
    if (row == std::end(ACTIONS) || !supports(drive, row->capability)) {
        return {extended_status::INVALID_ACTION};
    }
    return row->execute(drive, keyPage);
}

/// ACS-4, "SCT command transport error outputs" and "normal outputs": a code or a value stands in
/// COUNT (7:0) and LBA (7:0), the number of pages to be read in LBA (23:8).
AtaAnswer toAnswer(const AtaDrive& drive, const SctAnswer& answer) {
    constexpr std::uint16_t BYTE = 0xFF;
    const bool isRefused = answer.status != extended_status::SUCCESS;
    const std::uint16_t word = isRefused ? answer.status : answer.value;
    const core::Payload& data = drive.volatileState.sctData;
    AtaAnswer result;
    result.error = isRefused ? error_bits::ABRT : std::uint8_t{0};
    result.count = word & BYTE;
    result.lba = static_cast<std::uint64_t>(word >> 8U) |
                 static_cast<std::uint64_t>(data.size() / BLOCK_SIZE) << 8U;
    return result;
}

}  // namespace

std::optional<std::uint16_t> sctFeatureState(const AtaDrive& drive, std::uint16_t code) {
    const auto feature = drive.sctFeatures.find(code);
    if (feature == drive.sctFeatures.end()) return {};
    return stateOf(feature->second);
}

core::Payload makeSctStatus(const AtaDrive& drive) {
    namespace states = sct::device_states;
    std::uint8_t state = states::ACTIVE;
    if (drive.isInStandby) state = states::STANDBY;
    if (drive.runningSelfTest) state = states::SELF_TEST;
    const core::Payload status = drive.sctStatus.copy();
    writeNumber(status, sct_status::DeviceState, state);
    writeNumber(status, sct_status::SmartStatus, smartStatus(drive));
    writeNumber(status, sct_status::ExtendedStatusCode, drive.volatileState.sctExtendedStatus);
    writeNumber(status, sct_status::ActionCode, drive.volatileState.sctAction);
    writeNumber(status, sct_status::FunctionCode, drive.volatileState.sctFunction);
    return status;
}

AtaAnswer executeSct(AtaDrive& drive, const core::Payload& keyPage) {
    drive.volatileState.sctData = StoredBytes();
    const SctAnswer answer = execute(drive, keyPage);
    drive.volatileState.sctExtendedStatus = answer.status;
    drive.volatileState.sctAction =
        static_cast<std::uint16_t>(readNumber(keyPage, sct_data_table::ActionCode));
    drive.volatileState.sctFunction =
        static_cast<std::uint16_t>(readNumber(keyPage, sct_data_table::FunctionCode));
    return toAnswer(drive, answer);
}

AtaAnswer readSctData(AtaDrive& drive, std::uint32_t pages) {
    const core::Payload data = drive.volatileState.sctData.copy();
    if (data.size() == 0 || data.size() != pages * BLOCK_SIZE) {
        drive.volatileState.sctData = StoredBytes();
        const SctAnswer refused{data.size() == 0 ? extended_status::NO_COMMAND_BEFORE_DATA
                                                 : extended_status::BLOCK_COUNT_OVERFLOW};
        drive.volatileState.sctExtendedStatus = refused.status;
        return toAnswer(drive, refused);
    }
    drive.volatileState.sctData = StoredBytes();
    return {.output = data};
}

void resetSct(AtaDrive& drive) {
    namespace fields = sct_status;
    drive.volatileState = NotCompared<AtaVolatileState>();
    drive.recoveryTimers = drive.recoveryTimersAtPowerOn;
    for (const auto& field : {fields::OverLimitCount, fields::UnderLimitCount})
        writeNumber(drive.sctStatus, field, 0);
    const auto temperature = readNumber(drive.sctStatus, fields::Temperature);
    writeNumber(drive.sctStatus, fields::MinTemperature, temperature);
    writeNumber(drive.sctStatus, fields::MaxTemperature, temperature);
    for (auto& [code, feature] : drive.sctFeatures) {
        const std::uint16_t before = stateOf(feature);
        feature.current.reset();
        apply(drive, code, stateOf(feature));
        clearHistoryIfIntervalChanged(drive, code, before);
    }
}

}  // namespace orvel::simulator
