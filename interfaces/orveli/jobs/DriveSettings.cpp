#include "interfaces/orveli/jobs/DriveSettings.h"

#include "core/Strings.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/DriveJob.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Features.h"
#include "protocols/nvme/Temperature.h"

#include <cstdint>
#include <iterator>
#include <map>

namespace orvel::interfaces::orveli::jobs::drive_settings {

using core::Attribute;
using core::Device;
namespace attributes = orvel::features::device_attributes;
namespace catalogue = orvel::features;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace sct = protocols::ata::sct;
namespace word_206 = protocols::ata::identify_device::word_206;

namespace {

/// Drives that have a setting.
enum class Drives { NVME, NORVO_NVME, ATA, NORVO_ATA };

std::uint32_t nvmeFeature(Device& device, std::uint8_t feature) {
    nvme::FeatureRequest request;
    request.feature = feature;
    return nvme_access::feature(device, request);
}

// How the value of each is read. The template's argument says where.

template <std::uint8_t feature>
void readDword(Device& device, Attribute& setting) {
    setting.setValue(nvmeFeature(device, feature));
}

template <std::uint8_t feature>
void readSwitch(Device& device, Attribute& setting) {
    setting.setValue((nvmeFeature(device, feature) & 1U) != 0);
}

void readTemperatureThreshold(Device& device, Attribute& setting) {
    const std::uint32_t dword = nvmeFeature(device, nvme::features::TEMPERATURE_THRESHOLD);
    const std::uint32_t kelvins = nvme::readBits(dword, nvme::temperature_threshold::TMPTH);
    setting.setValue(static_cast<std::int32_t>(kelvins) - nvme::ZERO_CELSIUS);
}

void readAggregationThreshold(Device& device, Attribute& setting) {
    const std::uint32_t dword = nvmeFeature(device, nvme::features::INTERRUPT_COALESCING);
    setting.setValue(nvme::readBits(dword, nvme::interrupt_coalescing::THR));
}

void readAggregationTime(Device& device, Attribute& setting) {
    const std::uint32_t dword = nvmeFeature(device, nvme::features::INTERRUPT_COALESCING);
    setting.setValue(nvme::readBits(dword, nvme::interrupt_coalescing::TIME));
}

template <sct::Feature feature>
void readState(Device& device, Attribute& setting) {
    setting.setValue(ata_access::sctFeature(device, feature));
}

template <sct::Feature feature>
void readWideState(Device& device, Attribute& setting) {
    setting.setValue(std::uint32_t{ata_access::sctFeature(device, feature)});
}

template <sct::Feature feature, std::uint16_t enabled>
void readStateIs(Device& device, Attribute& setting) {
    setting.setValue(ata_access::sctFeature(device, feature) == enabled);
}

template <sct::RecoveryTimer timer>
void readTimer(Device& device, Attribute& setting) {
    setting.setValue(
        sct::returnedValue(ata_access::sct(device, sct::returnRecoveryTime(timer)).returned));
}

/// In the words in which a user sets it: gigabits per second by generation.
void readPhySpeed(Device& device, Attribute& setting) {
    constexpr const char* SPEEDS[] = {"1.5", "3", "6"};
    const unsigned generation = ata_access::sctFeature(device, norvo::sct_features::PHY_SPEED);
    if (generation == 0 || generation > std::size(SPEEDS))
        throw orvel::features::statuses::dataRetrievalFailed();
    setting.setValue(SPEEDS[generation - 1]);
}

struct Setting {
    Attribute (*descriptor)();
    Drives drives;
    const protocols::ata::identify_device::Bits* sct;  ///< SCT command that it needs, or null
    void (*read)(Device& device, Attribute& setting);
};

// clang-format off
constexpr Setting SETTINGS[] = {
//   descriptor                                                     drives              sct                                read
    {&catalogue::power_governor::PowerGovernorMode,                 Drives::NORVO_NVME, nullptr,                           &readDword<norvo::feature_ids::POWER_GOVERNOR>},
    {&catalogue::nvme_features::SMBusAddress,                       Drives::NORVO_NVME, nullptr,                           &readDword<norvo::feature_ids::SMBUS_ADDRESS>},
    {&catalogue::latency_tracking::LatencyTrackingEnabled,          Drives::NORVO_NVME, nullptr,                           &readSwitch<norvo::feature_ids::LATENCY_TRACKING>},
    {&catalogue::nvme_features::TempThreshold,                      Drives::NVME,       nullptr,                           &readTemperatureThreshold},
    {&catalogue::nvme_features::AggregationThreshold,               Drives::NVME,       nullptr,                           &readAggregationThreshold},
    {&catalogue::nvme_features::AggregationTime,                    Drives::NVME,       nullptr,                           &readAggregationTime},
    {&catalogue::write_cache::WriteCacheEnabled,                    Drives::NVME,       nullptr,                           &readSwitch<nvme::features::VOLATILE_WRITE_CACHE>},

    {&catalogue::phy_speed::PhySpeed,                               Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readPhySpeed},
    {&catalogue::phy_config::PhyConfig,                             Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readState<norvo::sct_features::PHY_CONFIG>},
    {&catalogue::spread_spectrum_clocking::SSCEnabled,              Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readStateIs<norvo::sct_features::SPREAD_SPECTRUM_CLOCKING, 1>},
    {&catalogue::sct_feature_control::PLITestTimeInterval,          Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readState<norvo::sct_features::PLI_TEST_TIME_INTERVAL>},
    {&catalogue::sct_feature_control::PhysicalSectorSize,           Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readState<norvo::sct_features::PHYSICAL_SECTOR_SIZE>},
    {&catalogue::power_governor::PowerGovernorMode,                 Drives::NORVO_ATA,  &word_206::FEATURE_CONTROL,        &readWideState<norvo::sct_features::POWER_GOVERNOR>},
    {&catalogue::sct_feature_control::TemperatureLoggingInterval,   Drives::ATA,        &word_206::FEATURE_CONTROL,        &readState<sct::Feature::TEMPERATURE_LOGGING_INTERVAL>},
    {&attributes::TempLoggingInterval,                              Drives::ATA,        &word_206::FEATURE_CONTROL,        &readState<sct::Feature::TEMPERATURE_LOGGING_INTERVAL>},
    {&catalogue::write_cache::WriteCacheState,                      Drives::ATA,        &word_206::FEATURE_CONTROL,        &readState<sct::Feature::WRITE_CACHE>},
    {&catalogue::write_cache::WriteCacheReorderingStateEnabled,     Drives::ATA,        &word_206::FEATURE_CONTROL,        &readStateIs<sct::Feature::WRITE_CACHE_REORDERING, sct::write_cache_reordering_state::ENABLED>},
    {&catalogue::error_recovery_control::ReadErrorRecoveryTimer,    Drives::ATA,        &word_206::ERROR_RECOVERY_CONTROL, &readTimer<sct::RecoveryTimer::READ>},
    {&catalogue::error_recovery_control::WriteErrorRecoveryTimer,   Drives::ATA,        &word_206::ERROR_RECOVERY_CONTROL, &readTimer<sct::RecoveryTimer::WRITE>},
};

// clang-format on

bool isFor(const Device& device, Drives drives) {
    const bool isNorvo = device.isSet(attributes::Norvo());
    switch (drives) {
    case Drives::NVME:
        return isNvme(device);
    case Drives::NORVO_NVME:
        return isNvme(device) && isNorvo;
    case Drives::ATA:
        return isAta(device);
    case Drives::NORVO_ATA:
        return isAta(device) && isNorvo;
    }
    return false;
}

/// The rows by name in small letters. Made once: whole fleets are shown, name by name.
const std::multimap<std::string, const Setting*>& rowsByName() {
    static const auto rows = [] {
        std::multimap<std::string, const Setting*> byName;
        for (const Setting& row : SETTINGS)
            byName.emplace(core::strings::lowered(row.descriptor().getName()), &row);
        return byName;
    }();
    return rows;
}

const Setting* findRow(const Device& device, const std::string& name) {
    const auto [first, last] = rowsByName().equal_range(core::strings::lowered(name));
    for (auto row = first; row != last; ++row) {
        if (isFor(device, row->second->drives)) return row->second;
    }
    return nullptr;
}

}  // namespace

std::vector<std::string> namesFor(Device& device) {
    const auto identify = isAta(device) ? ata_access::tryToIdentify(device) : std::nullopt;
    std::vector<std::string> names;
    for (const Setting& row : SETTINGS) {
        const bool isLacking =
            row.sct != nullptr && identify && ata_access::lacksSct(*identify, *row.sct);
        if (isFor(device, row.drives) && !isLacking) names.push_back(row.descriptor().getName());
    }
    return names;
}

std::optional<Attribute> find(const Device& device, const std::string& name) {
    const Setting* row = findRow(device, name);
    if (row == nullptr) return std::nullopt;
    return row->descriptor();
}

void requireSupport(Device& device, const Attribute& setting) {
    const Setting* row = findRow(device, setting.getName());
    if (row != nullptr && row->sct != nullptr) ata_access::requireSct(device, *row->sct);
}

Attribute read(Device& device, const Attribute& setting) {
    const Setting* row = findRow(device, setting.getName());
    if (row == nullptr) throw orvel::features::statuses::featureNotSupportedByDrive();
    Attribute value = row->descriptor();
    row->read(device, value);
    return value;
}

}  // namespace orvel::interfaces::orveli::jobs::drive_settings
