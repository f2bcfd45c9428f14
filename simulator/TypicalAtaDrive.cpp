// What a healthy SATA drive is like.
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/Sct.h"
#include "protocols/ata/Structures.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "simulator/TypicalDrives.h"
#include "simulator/TypicalStructures.h"

#include <algorithm>

namespace orvel::simulator {

namespace ata = protocols::ata;
namespace norvo = protocols::norvo;
namespace id = ata::identify_device;
namespace smart = ata::smart_data;
using protocols::Field;

namespace {

constexpr std::uint64_t BLOCK_SIZE = 512;

// clang-format off
constexpr NumberRow IDENTIFY[] = {
//   field                                 value
    {id::GeneralConfiguration,             0x0040},
    {id::SpecificConfiguration,            0xC837},
    {id::SectorsPerDRQDataBlock,           0x8010},
    {id::TrustedComputing,                 0x4000},
    {id::Capabilities49,                   0x2F00},
    {id::Capabilities50,                   0x4000},
    {id::FieldValidity,                    0x0006},
    {id::SanitizeAndMultiple,              0xFD10},  // all of Sanitize
    {id::MultiwordDMA,                     0x0007},
    {id::PIOModes,                         0x0003},
    {id::MinimumMultiwordDMACycleTime,        120},
    {id::RecommendedMultiwordDMACycleTime,    120},
    {id::MinimumPIOCycleTime,                 120},
    {id::MinimumPIOCycleTimeWithIORDY,        120},
    {id::AdditionalSupported,              0x4030},  // DRAT, RZAT, encryption
    {id::QueueDepth,                           31},
    {id::SerialATACapabilities,            0x870E},  // Gen1 to Gen3, NCQ, HIPM, Phy event counters
    {id::SerialATAAdditionalCapabilities,  0x0006},  // at Gen3 now
    {id::SerialATAFeaturesSupported,       0x004C},  // DIPM, auto-activation, settings preservation
    {id::SerialATAFeaturesEnabled,         0x0040},
    {id::MajorVersion,                     0x0FE0},  // up to ACS-4
    {id::FeaturesSupported82,              0x706B},  // SMART, Security, write cache, look-ahead
    {id::FeaturesSupported83,              0x7409},  // 48-bit, flush, APM, DOWNLOAD MICROCODE
    {id::FeaturesSupported84,              0x4163},  // GPL, self-test, error log, world wide name
    {id::FeaturesEnabled85,                0x7069},
    {id::FeaturesEnabled86,                0xB401},
    {id::FeaturesEnabled87,                0x4163},
    {id::UltraDMA,                         0x407F},
    {id::NormalEraseTime,                       2},
    {id::EnhancedEraseTime,                     2},
    {id::MasterPasswordIdentifier,         0xFFFE},
    {id::MaximumDataSetManagementBlocks,        8},
    {id::SectorSizes,                      0x6003},  // 8 logical sectors in a physical one
    {id::FeaturesSupported119,             0x411C},  // accessible max address, log DMA, offsets
    {id::FeaturesEnabled120,               0x401C},
    {id::SecurityStatus,                   0x0021},
    {id::NominalFormFactor,                     3},  // 2.5 inches
    {id::DataSetManagement,                     1},
    {id::SCTCommandTransport,              0x0039},  // error recovery, features, data tables
    {id::SectorAlignment,                  0x4000},
    {id::NominalMediaRotationRate,              1},  // none
    {id::TransportMajorVersion,            0x10FF},  // SATA 3.2
    {id::MinimumDownloadBlocks,                 1},
    {id::MaximumDownloadBlocks,               256},
};

constexpr NumberRow SMART[] = {
    {smart::RevisionNumber,                    1},
    {smart::OfflineDataCollectionStatus,    0x02},
    {smart::OfflineDataCollectionSeconds,     24},
    {smart::OfflineDataCollectionCapability, 0x39},
    {smart::SmartCapability,              0x0003},
    {smart::ErrorLoggingCapability,         0x01},
    {smart::ShortSelfTestPollingMinutes,       1},
    {smart::ExtendedSelfTestPollingMinutes,   10},
    {smart::ConveyanceSelfTestPollingMinutes,  1},
};

struct AttributeRow {
    std::uint64_t id;
    std::uint64_t flags;
    std::uint64_t normalized;  ///< the worst ever, too
    std::uint64_t raw;
    std::uint64_t threshold;
};

constexpr AttributeRow ATTRIBUTES[] = {
//    id  flags   normalized        raw  threshold
    {  5, 0x0033, 100,                0, 10},
    {  9, 0x0032, 100,             2190,  0},
    { 12, 0x0032, 100,               27,  0},
    {170, 0x0033, 100,                0, 10},
    {171, 0x0032, 100,                0,  0},
    {172, 0x0032, 100,                0,  0},
    {174, 0x0032, 100,                3,  0},
    {175, 0x0033, 100,              612, 10},
    {183, 0x0032, 100,                0,  0},
    {184, 0x0033, 100,                0, 90},
    {187, 0x0032, 100,                0,  0},
    {190, 0x0022,  68,               32,  0},
    {192, 0x0032, 100,                3,  0},
    {194, 0x0022,  68,               32,  0},
    {197, 0x0012, 100,                0,  0},
    {199, 0x003E, 100,                0,  0},
    {225, 0x0032, 100,          145'920,  0},
    {226, 0x0032, 100,           0xFFFF,  0},
    {227, 0x0032, 100,           0xFFFF,  0},
    {228, 0x0032, 100,                0,  0},
    {232, 0x0033, 100,              100, 10},
    {233, 0x0032,  99,                1,  0},
    {234, 0x0032, 100,                0,  0},
    {241, 0x0032, 100,          145'920,  0},
    {242, 0x0032, 100,          201'344,  0},
    {249, 0x0032, 100,          182'400,  0},
};

namespace status = ata::sct_status;
constexpr NumberRow SCT_STATUS[] = {
    {status::FormatVersion,        3},
    {status::SCTVersion,      0x0100},
    {status::SCTSpecification,     1},
    {status::Temperature,         32},
    {status::MinTemperature,      24},
    {status::MaxTemperature,      41},
    {status::LifeMinTemperature,  17},
    {status::LifeMaxTemperature,  48},
    {status::MaxOpLimit,          70},
};

struct SctFeatureRow {
    ata::sct::Feature feature;
    std::uint16_t state;
    bool isAppliedAtPowerOn;
};

constexpr SctFeatureRow SCT_FEATURES[] = {
    {ata::sct::Feature::WRITE_CACHE,                  1, false},
    {ata::sct::Feature::WRITE_CACHE_REORDERING,       1, false},
    {ata::sct::Feature::TEMPERATURE_LOGGING_INTERVAL, 1, false},
    {norvo::sct_features::PLI_TEST_TIME_INTERVAL,     2, false},
    {norvo::sct_features::PHYSICAL_SECTOR_SIZE,    4096, false},
    {norvo::sct_features::POWER_GOVERNOR,             0, false},
    {norvo::sct_features::PHY_CONFIG,                 0, true},
    {norvo::sct_features::PHY_SPEED,                  3, true},
    {norvo::sct_features::SPREAD_SPECTRUM_CLOCKING,   0, true},
    {norvo::sct_features::RESET_TIMED_WORKLOAD,       0, false},
};

constexpr std::int8_t TEMPERATURE_HISTORY[] = {32, 32, 31, 31, 32, 33, 34, 34, 33, 32, 31, 30,
                                               30, 30, 31, 32, 33, 33, 32, 31, 30, 29, 28, 26};

namespace general = ata::general_statistics;
constexpr NumberRow GENERAL[] = {
    {general::LifetimePowerOnResets,              27},
    {general::PowerOnHours,                     2190},
    {general::LogicalSectorsWritten,   9'563'013'120},
    {general::NumberOfWriteCommands,     153'008'210},
    {general::LogicalSectorsRead,     13'195'280'384},
    {general::NumberOfReadCommands,      211'124'486},
};

namespace errors = ata::general_errors_statistics;
constexpr NumberRow GENERAL_ERRORS[] = {
    {errors::ReportedUncorrectableErrors, 0},
    {errors::ResetsDuringCommands,        0},
};

namespace temperature = ata::temperature_statistics;
constexpr NumberRow TEMPERATURE[] = {
    {temperature::CurrentTemperature,        32},
    {temperature::AverageShortTerm,          31},
    {temperature::AverageLongTerm,           31},
    {temperature::HighestTemperature,        48},
    {temperature::LowestTemperature,         17},
    {temperature::HighestAverageShortTerm,   43},
    {temperature::LowestAverageShortTerm,    21},
    {temperature::HighestAverageLongTerm,    38},
    {temperature::LowestAverageLongTerm,     25},
    {temperature::TimeInOverTemperature,      0},
    {temperature::SpecifiedMaximumOperating, 70},
    {temperature::TimeInUnderTemperature,     0},
    {temperature::SpecifiedMinimumOperating,  0},
};

namespace transport = ata::transport_statistics;
constexpr NumberRow TRANSPORT[] = {
    {transport::HardwareResets,     61},
    {transport::ASREvents,           0},
    {transport::InterfaceCRCErrors,  0},
};

namespace solid_state = ata::solid_state_device_statistics;
constexpr NumberRow SOLID_STATE[] = {
    {solid_state::PercentageUsedEndurance, 1},
};

struct StatisticsRow {
    std::uint8_t page;
    std::span<const NumberRow> rows;
};

constexpr StatisticsRow STATISTICS[] = {
    {ata::statistics_page::GENERAL,            GENERAL},
    {ata::statistics_page::GENERAL_ERRORS,     GENERAL_ERRORS},
    {ata::statistics_page::TEMPERATURE,        TEMPERATURE},
    {ata::statistics_page::TRANSPORT,          TRANSPORT},
    {ata::statistics_page::SOLID_STATE_DEVICE, SOLID_STATE},
};

// clang-format on

void fillIdentify(const core::Payload& identify, const DriveBasics& basics) {
    constexpr std::uint64_t MOST_28_BIT = 0x0FFFFFFF;
    constexpr std::uint64_t LOCALLY_ASSIGNED = UINT64_C(3) << 60U;
    constexpr unsigned NAME_BITS = 4;
    const std::uint64_t sectors = basics.capacity / BLOCK_SIZE;
    writeRows(identify, IDENTIFY);
    writeText(identify, id::SerialNumber, basics.serialNumber);
    writeText(identify, id::FirmwareRevision, basics.firmware);
    writeText(identify, id::ModelNumber, basics.model);
    writeText(identify, norvo::identify_device::Bootloader, basics.bootloader);
    writeNumber(identify, id::UserAddressableSectors28, std::min(sectors, MOST_28_BIT));
    writeNumber(identify, id::UserAddressableSectors, sectors);
    id::writeWorldWideName(identify,
                           LOCALLY_ASSIGNED | numberFromText(basics.serialNumber) >> NAME_BITS);
}

void fillSmart(const core::Payload& data, const core::Payload& thresholds) {
    writeRows(data, SMART);
    writeNumber(thresholds, ata::smart_thresholds::RevisionNumber, 1);
    std::uint32_t index = 0;
    for (const AttributeRow& row : ATTRIBUTES) {
        const auto write = [&](const Field& field, std::uint64_t value) {
            writeNumber(data, fieldOf(smart::ATTRIBUTES, index, field), value);
        };
        write(ata::smart_attribute::Id, row.id);
        write(ata::smart_attribute::StatusFlags, row.flags);
        write(ata::smart_attribute::Current, row.normalized);
        write(ata::smart_attribute::Worst, row.normalized);
        write(ata::smart_attribute::Raw, row.raw);
        const auto& places = ata::smart_thresholds::THRESHOLDS;
        writeNumber(thresholds, fieldOf(places, index, ata::smart_threshold::Id), row.id);
        writeNumber(thresholds, fieldOf(places, index, ata::smart_threshold::Threshold),
                    row.threshold);
        ++index;
    }
}

void fillSct(AtaDrive& drive) {
    writeRows(drive.sctStatus, SCT_STATUS);
    for (const SctFeatureRow& row : SCT_FEATURES) {
        drive.sctFeatures[static_cast<std::uint16_t>(row.feature)] = {
            .defaultState = row.state, .isAppliedAtPowerOn = row.isAppliedAtPowerOn};
    }
    drive.temperatureHistory.assign(std::begin(TEMPERATURE_HISTORY), std::end(TEMPERATURE_HISTORY));
}

std::map<std::uint8_t, StoredBytes> makeStatistics() {
    constexpr std::uint8_t VALID = ata::statistic_flags::SUPPORTED | ata::statistic_flags::VALID;
    std::map<std::uint8_t, StoredBytes> pages;
    for (const auto& [number, rows] : STATISTICS) {
        StoredBytes page(ata::general_statistics::SIZE);
        writeNumber(page, general::RevisionNumber, 1);
        writeNumber(page, general::PageNumber, number);
        for (const auto& [field, value] : rows)
            ata::writeStatistic(page, field, {value, VALID});
        pages.emplace(number, page);
    }
    return pages;
}

std::map<std::uint16_t, std::uint64_t> makeCounters() {
    constexpr std::uint16_t RESETS = 0x00A;
    std::map<std::uint16_t, std::uint64_t> counters;
    constexpr std::uint16_t IDENTIFIERS[] = {0x001, 0x002, 0x003, 0x004, 0x005, 0x006,
                                             0x007, 0x008, 0x009, 0x00A, 0x00B, 0x00D,
                                             0x00F, 0x010, 0x012, 0x013};
    for (const std::uint16_t identifier : IDENTIFIERS) {
        counters[identifier] = identifier == RESETS ? 12 : 0;
    }
    return counters;
}

std::vector<StoredBytes> inPages(const StoredBytes& log) {
    const core::Payload& bytes = log;
    std::vector<StoredBytes> pages;
    for (std::uint32_t offset = 0; offset < bytes.size(); offset += BLOCK_SIZE)
        pages.emplace_back(core::Payload(bytes.data() + offset, BLOCK_SIZE));
    return pages;
}

std::map<std::uint8_t, std::vector<StoredBytes>> makeLogs() {
    namespace address = norvo::log_addresses;
    namespace stored = norvo::stored_log;
    // clang-format off
    return {
        {address::NLOG,       inPages(makeStoredLog(stored::NLOG_SIGNATURE, 48, 1024))},
        {address::EVENT_LOG,  inPages(makeStoredLog(stored::EVENT_LOG_SIGNATURE, 12, 512))},
        {address::ASSERT_LOG, inPages(makeStoredLog(stored::ASSERT_LOG_SIGNATURE, 0, 512))},
    };
    // clang-format on
}

}  // namespace

DriveBasics typicalAtaBasics() {
    return {.model = "NORVO SX3110 480GB",
            .serialNumber = {},
            .firmware = "SX31A044",
            .bootloader = "SX31B007",
            .capacity = 480'103'981'056};
}

AtaDrive typicalAtaDrive(const DriveBasics& basics) {
    AtaDrive drive;
    fillIdentify(drive.identifyDevice, basics);
    drive.nativeMaxAddress = basics.capacity / BLOCK_SIZE - 1;
    fillSmart(drive.smartData, drive.smartThresholds);
    fillSct(drive);
    drive.deviceStatistics = makeStatistics();
    drive.phyEventCounters = makeCounters();
    drive.otherLogs = makeLogs();
    return drive;
}

}  // namespace orvel::simulator
