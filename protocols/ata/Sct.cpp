#include "protocols/ata/Sct.h"

#include "core/CoreStatuses.h"
#include "protocols/ata/Logs.h"
#include "protocols/ata/SctCodes.h"
#include "protocols/ata/Structures.h"

namespace orvel::protocols::ata::sct {

namespace {

core::Payload recoveryRequest(std::uint16_t function, RecoveryTimer timer) {
    core::Payload request(sct_error_recovery_control::SIZE);
    writeNumber(request, sct_error_recovery_control::ActionCode, actions::ERROR_RECOVERY_CONTROL);
    writeNumber(request, sct_error_recovery_control::FunctionCode, function);
    writeNumber(request, sct_error_recovery_control::SelectionCode,
                static_cast<std::uint16_t>(timer));
    return request;
}

core::Payload featureRequest(std::uint16_t function, Feature feature) {
    core::Payload request(sct_feature_control::SIZE);
    writeNumber(request, sct_feature_control::ActionCode, actions::FEATURE_CONTROL);
    writeNumber(request, sct_feature_control::FunctionCode, function);
    writeNumber(request, sct_feature_control::FeatureCode, static_cast<std::uint16_t>(feature));
    return request;
}

}  // namespace

core::Payload setRecoveryTime(RecoveryTimer timer, std::uint16_t timeLimit) {
    core::Payload request = recoveryRequest(recovery_functions::SET_TIMER, timer);
    writeNumber(request, sct_error_recovery_control::RecoveryTimeLimit, timeLimit);
    return request;
}

core::Payload returnRecoveryTime(RecoveryTimer timer) {
    return recoveryRequest(recovery_functions::RETURN_TIMER, timer);
}

core::Payload setFeature(Feature feature, std::uint16_t state, FeatureLifetime lifetime) {
    core::Payload request = featureRequest(feature_functions::SET_STATE, feature);
    writeNumber(request, sct_feature_control::State, state);
    writeNumber(request, sct_feature_control::OptionFlags,
                lifetime == FeatureLifetime::OVER_POWER_OFF ? PRESERVE_OVER_POWER_CYCLES : 0U);
    return request;
}

core::Payload returnFeatureState(Feature feature) {
    return featureRequest(feature_functions::RETURN_STATE, feature);
}

core::Payload returnFeatureOptions(Feature feature) {
    return featureRequest(feature_functions::RETURN_OPTIONS, feature);
}

core::Payload readDataTable(std::uint16_t tableId) {
    core::Payload request(sct_data_table::SIZE);
    writeNumber(request, sct_data_table::ActionCode, actions::DATA_TABLES);
    writeNumber(request, sct_data_table::FunctionCode, table_functions::READ_TABLE);
    writeNumber(request, sct_data_table::TableID, tableId);
    return request;
}

std::uint16_t returnedValue(const ReturnedTaskFile& returned) {
    return static_cast<std::uint16_t>((returned.count & 0xFFU) | (returned.lba & 0xFFU) << 8U);
}

std::vector<std::optional<int>> temperatureHistory(const core::Payload& table) {
    const auto size =
        static_cast<std::uint32_t>(readNumber(table, sct_temperature_history::CBSize));
    const auto latest =
        static_cast<std::uint32_t>(readNumber(table, sct_temperature_history::CBIndex));
    if (size == 0) return {};
    if (latest >= size) throw core::statuses::requestOutOfBounds();
    // The buffer may be longer than the rest of the first block.
    const Entries buffer{sct_temperature_history::SAMPLES.offset, 1, size};
    constexpr Field SAMPLE{"Sample", "Temperature", 0, 1, Encoding::NUMBER};
    std::vector<std::optional<int>> samples;
    for (std::uint32_t i = 1; i <= size; ++i)
        samples.push_back(readTemperature(table, fieldOf(buffer, (latest + i) % size, SAMPLE)));
    return samples;
}

}  // namespace orvel::protocols::ata::sct
