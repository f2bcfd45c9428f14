// SET FEATURES, power modes and the cache of SATA drives.
#include "protocols/ata/CommandCodes.h"
#include "protocols/ata/Sct.h"
#include "simulator/AtaExecutors.h"

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

constexpr std::uint8_t LOWEST_APM_LEVEL = 0x01;
constexpr std::uint8_t HIGHEST_APM_LEVEL = 0xFE;

/// A setting that is on or off: where the drive says that it can be changed, and what it is.
AtaAnswer change(AtaDrive& drive, const id::Bits& capability, const id::Bits& setting, bool value) {
    if (!supports(drive, capability)) return aborted();
    id::writeBits(drive.identifyDevice, setting, value ? 1 : 0);
    return {};
}

AtaAnswer changeWriteCache(AtaDrive& drive, bool value) {
    const auto feature = static_cast<std::uint16_t>(sct::Feature::WRITE_CACHE);
    constexpr std::uint16_t FREE = sct::write_cache_state::BY_SET_FEATURES;
    const bool isForced = sctFeatureState(drive, feature).value_or(FREE) > FREE;
    // To report a success that has no effect would mislead whoever relies on it.
    if (isForced) return aborted();
    return change(drive, id::word_82::VOLATILE_WRITE_CACHE, id::word_85::VOLATILE_WRITE_CACHE,
                  value);
}

AtaAnswer changeReadLookAhead(AtaDrive& drive, bool value) {
    return change(drive, id::word_82::READ_LOOK_AHEAD, id::word_85::READ_LOOK_AHEAD, value);
}

AtaAnswer changeSataFeature(AtaDrive& drive, std::uint16_t feature, bool value) {
    if (feature != sata_feature::DEVICE_INITIATED_POWER_TRANSITIONS) return aborted();
    return change(drive, id::word_78::DEVICE_INITIATED_POWER_MANAGEMENT,
                  id::word_79::DEVICE_INITIATED_POWER_MANAGEMENT, value);
}

AtaAnswer enableApm(AtaDrive& drive, std::uint16_t level) {
    if (level < LOWEST_APM_LEVEL || level > HIGHEST_APM_LEVEL) return aborted();
    AtaAnswer answer = change(drive, id::word_83::APM, id::word_86::APM, true);
    if (answer.error == 0) id::writeBits(drive.identifyDevice, id::word_91::APM_LEVEL, level);
    return answer;
}

AtaAnswer disableApm(AtaDrive& drive) {
    AtaAnswer answer = change(drive, id::word_83::APM, id::word_86::APM, false);
    if (answer.error == 0) id::writeBits(drive.identifyDevice, id::word_91::APM_LEVEL, 0);
    return answer;
}

}  // namespace

AtaAnswer executeAtaSetFeatures(AtaDrive& drive, const AtaRequest& request) {
    const std::uint16_t count = request.fields.count;
    switch (request.fields.feature) {
    case set_features::ENABLE_VOLATILE_WRITE_CACHE:
        return changeWriteCache(drive, true);
    case set_features::DISABLE_VOLATILE_WRITE_CACHE:
        return changeWriteCache(drive, false);
    case set_features::ENABLE_READ_LOOK_AHEAD:
        return changeReadLookAhead(drive, true);
    case set_features::DISABLE_READ_LOOK_AHEAD:
        return changeReadLookAhead(drive, false);
    case set_features::ENABLE_SATA_FEATURE:
        return changeSataFeature(drive, count, true);
    case set_features::DISABLE_SATA_FEATURE:
        return changeSataFeature(drive, count, false);
    case set_features::ENABLE_APM:
        return enableApm(drive, count);
    case set_features::DISABLE_APM:
        return disableApm(drive);
    default:
        return aborted();
    }
}

// Before `resetSct`, which has the last word on the write cache. What isn't supported stays as it
// is.
void resetSettings(AtaDrive& drive) {
    const AtaSettings& settings = drive.powerOnSettings;
    change(drive, id::word_82::VOLATILE_WRITE_CACHE, id::word_85::VOLATILE_WRITE_CACHE,
           settings.isWriteCacheEnabled);
    change(drive, id::word_82::READ_LOOK_AHEAD, id::word_85::READ_LOOK_AHEAD,
           settings.isReadLookAheadEnabled);
    change(drive, id::word_78::DEVICE_INITIATED_POWER_MANAGEMENT,
           id::word_79::DEVICE_INITIATED_POWER_MANAGEMENT,
           settings.isDeviceInitiatedPowerManagementEnabled);
    if (enableApm(drive, settings.apmLevel).error != 0) disableApm(drive);
}

AtaAnswer executeStandbyImmediate(AtaDrive& drive, const AtaRequest& request) {
    abortSelfTest(drive, ata_self_test_results::ABORTED_BY_HOST, request.now);
    drive.isInStandby = true;
    return {};
}

AtaAnswer executeCheckPowerMode(AtaDrive& drive, const AtaRequest& /*request*/) {
    return {.count = drive.isInStandby ? power_modes::STANDBY : power_modes::ACTIVE_OR_IDLE};
}

AtaAnswer executeFlushCacheExt(AtaDrive& /*drive*/, const AtaRequest& /*request*/) {
    return {};
}

}  // namespace orvel::simulator
