// What a healthy NVMe drive and its namespaces are like.
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/LbaFormats.h"
#include "protocols/nvme/Structures.h"
#include "simulator/TypicalDrives.h"
#include "simulator/TypicalStructures.h"

namespace orvel::simulator {

namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace ic = nvme::identify_controller;
namespace in = nvme::identify_namespace;
namespace smart = nvme::smart_health_log;
using protocols::Number128;

namespace {

constexpr std::uint64_t NATIVE_BLOCK = 512;

// clang-format off
constexpr NumberRow CONTROLLER[] = {
//   field       value
    {ic::VID,    0xFFFE},       // nobody's
    {ic::SSVID,  0xFFFE},
    {ic::RAB,    6},
    {ic::IEEE,   0x024E56},     // locally administered
    {ic::MDTS,   5},            // 128 KiB
    {ic::VER,    0x00010300},
    {ic::RTD3R,  8'000'000},
    {ic::RTD3E,  8'000'000},
    {ic::OAES,   0x00000300},   // namespaces, firmware activation
    {ic::OACS,   0x001E},       // Format NVM, firmware, namespaces, self-test
    {ic::ACL,    3},
    {ic::AERL,   3},
    {ic::FRMW,   0x16},         // 3 slots, activation without a reset
    {ic::LPA,    0x06},         // effects log, extended data
    {ic::ELPE,   63},
    {ic::NPSS,   2},
    {ic::AVSCC,  1},
    {ic::WCTEMP, 343},
    {ic::CCTEMP, 353},
    {ic::MTFA,   50},
    {ic::EDSTT,  30},
    {ic::DSTO,   1},
    {ic::FWUG,   1},
    {ic::SQES,   0x66},
    {ic::CQES,   0x44},
    {ic::NN,     128},
    {ic::ONCS,   0x001C},       // Dataset Management, Write Zeroes, save and select
    {ic::FNA,    0x04},         // cryptographic erase
    {ic::VWC,    0x01},
    {ic::NVSCC,  1},
};

namespace psd = nvme::power_state_descriptor;

struct PowerStateRow {
    std::uint64_t centiwatts;
    std::uint64_t latency;       ///< in microseconds, to enter and to leave
    std::uint64_t relativeSpeed; ///< 0 is the best
};

constexpr PowerStateRow POWER_STATES[] = {
    {2500,   0, 0},
    {1600, 100, 1},
    {1000, 100, 2},
};

struct FormatRow {
    std::uint64_t exponent;  ///< of the block size
    std::uint64_t performance;
};

constexpr FormatRow FORMATS[] = {
    { 9, 2},
    {12, 0},
};

constexpr NumberRow HEALTH[] = {
//   field                            value
    {smart::CompositeTemperature,       311},
    {smart::AvailableSpare,             100},
    {smart::AvailableSpareThreshold,     10},
    {smart::PercentageUsed,               1},
    {smart::DataUnitsRead,       31'415'926},
    {smart::DataUnitsWritten,    27'182'818},
    {smart::HostReadCommands,   812'345'678},
    {smart::HostWriteCommands,  654'321'987},
    {smart::ControllerBusyTime,         318},
    {smart::PowerCycles,                 27},
    {smart::PowerOnHours,              2190},
    {smart::UnsafeShutdowns,              3},
    {smart::TemperatureSensor1,         311},
    {smart::TemperatureSensor2,         318},
};

namespace ids = norvo::feature_ids;

struct FeatureRow {
    std::uint8_t id;
    bool isSaveable;
    bool isChangeable;
    bool isNamespaceSpecific;
    NvmeFeature::Values defaults;
};

/// LBA Range Type (03h) is more than a dword. A part's bits stand in its value, too.
std::span<const FeatureRow> featureRows() {
    namespace f = nvme::features;
    static const FeatureRow ROWS[] = {
    //   id                                    saveable changeable by namespace defaults
        {f::ARBITRATION,                       true,    true,      false,       {{0, 0x06}}},
        {f::POWER_MANAGEMENT,                  true,    true,      false,       {{0, 0}}},
        {f::TEMPERATURE_THRESHOLD,             true,    true,      false,       {{0x000000, 0x000157}, {0x100000, 0x100000},
                                                                                 {0x010000, 0x01FFFF}, {0x110000, 0x110000},
                                                                                 {0x020000, 0x02FFFF}, {0x120000, 0x120000}}},
        {f::ERROR_RECOVERY,                    true,    true,      true,        {{0, 0}}},
        {f::VOLATILE_WRITE_CACHE,              true,    true,      false,       {{0, 1}}},
        {f::NUMBER_OF_QUEUES,                  false,   true,      false,       {{0, 0x003F003F}}},
        {f::INTERRUPT_COALESCING,              true,    true,      false,       {{0, 0}}},
        {f::INTERRUPT_VECTOR_CONFIGURATION,    true,    true,      false,       {{0, 0x00010000}, {1, 1}, {2, 2}, {3, 3},
                                                                                 {4, 4}, {5, 5}, {6, 6}, {7, 7}}},
        {f::WRITE_ATOMICITY,                   true,    true,      false,       {{0, 0}}},
        {f::ASYNCHRONOUS_EVENT_CONFIGURATION,  true,    true,      false,       {{0, 0}}},
        {ids::POWER_GOVERNOR,                  true,    true,      false,       {{0, 0}}},
        {ids::MAXIMUM_LBA,                     false,   true,      false,       {{0, 0}}},
        {ids::RESET_TIMED_WORKLOAD,            false,   true,      false,       {{0, 0}}},
        {ids::RESET_CRC_ERROR_COUNT,           false,   true,      false,       {{0, 0}}},
        {ids::SMBUS_ADDRESS,                   true,    true,      false,       {{0, 0x6A}}},
        {ids::LATENCY_TRACKING,                true,    true,      false,       {{0, 0}}},
    };
    return ROWS;
}

namespace temperature = norvo::temperature_statistics;
constexpr NumberRow TEMPERATURES[] = {
    {temperature::CurrentTemperature,           38},
    {temperature::HighestLifetimeTemperature,   52},
    {temperature::LowestLifetimeTemperature,    19},
    {temperature::SpecifiedPCBMaxOperatingTemp, 85},
    {temperature::SpecifiedPCBMinOperatingTemp,  0},
};

namespace health = norvo::health_statistics;
constexpr NumberRow HEALTH_STATISTICS[] = {
    {health::MinNandEraseCycles,              12},
    {health::MaxNandEraseCycles,              41},
    {health::AverageNandEraseCycles,          28},
    {health::TimedWorkloadMediaWear, health::RESET_VALUE},
    {health::TimedWorkloadHostReads, health::RESET_VALUE},
    {health::TimedWorkloadTimer,               0},
    {health::MediaBytesWritten,          518'000},
    {health::HostBytesWritten,           414'776},
};

/// In microseconds, and a share of the commands in thousandths.
struct LatencyRow {
    std::uint64_t upperLimit;
    std::uint64_t readShare;
    std::uint64_t writeShare;
};

constexpr LatencyRow LATENCIES[] = {
    {        16,   0,   3},
    {        32,   5, 611},
    {        64,  88, 244},
    {       128, 642,  79},
    {       256, 201,  38},
    {       512,  43,  16},
    {      1024,  14,   6},
    {      4096,   5,   2},
    {     16384,   1,   1},
    {0xFFFFFFFF,   1,   0},
};

namespace eye = norvo::eye_diagram;
constexpr NumberRow EYE[] = {
    {eye::Version,        1},
    {eye::Columns,        eye::COLUMNS},
    {eye::Rows,           eye::ROWS},
    {eye::EyeWidth,      62},
    {eye::EyeHeight,    180},
};

// clang-format on

void fillController(const core::Payload& controller, const DriveBasics& basics) {
    writeRows(controller, CONTROLLER);
    writeText(controller, ic::SN, basics.serialNumber);
    writeText(controller, ic::MN, basics.model);
    writeText(controller, ic::FR, basics.firmware);
    writeText(controller, ic::SUBNQN, "nqn.2020-01.example.norvo:" + basics.serialNumber);
    writeWideNumber(controller, ic::TNVMCAP, basics.capacity);
    writeText(controller, norvo::identify_controller::Bootloader, basics.bootloader);
    writeNumber(controller, norvo::identify_controller::NativeMaximumLBA,
                basics.capacity / NATIVE_BLOCK - 1);
    std::uint32_t index = 0;
    for (const auto& [centiwatts, latency, relativeSpeed] : POWER_STATES) {
        const auto write = [&](const protocols::Field& row, std::uint64_t value) {
            writeNumber(controller, fieldOf(ic::POWER_STATES, index, row), value);
        };
        write(psd::MP, centiwatts);
        write(psd::ENLAT, latency);
        write(psd::EXLAT, latency);
        for (const auto* row : {&psd::RRT, &psd::RRL, &psd::RWT, &psd::RWL})
            write(*row, relativeSpeed);
        ++index;
    }
}

void fillCommonNamespace(const core::Payload& identify) {
    constexpr std::uint64_t DEALLOCATED_BLOCKS_ARE_ZEROES = 1;
    std::uint32_t index = 0;
    for (const auto& [exponent, performance] : FORMATS) {
        writeNumber(identify, fieldOf(in::LBA_FORMATS, index, nvme::lba_format::LBADS), exponent);
        writeNumber(identify, fieldOf(in::LBA_FORMATS, index, nvme::lba_format::RP), performance);
        ++index;
    }
    writeNumber(identify, in::NLBAF, std::size(FORMATS) - 1);
    writeNumber(identify, in::DLFEAT, DEALLOCATED_BLOCKS_ARE_ZEROES);
}

std::map<std::uint8_t, NvmeFeature> makeFeatures() {
    std::map<std::uint8_t, NvmeFeature> features;
    for (const FeatureRow& row : featureRows()) {
        features[row.id] = {.isSaveable = row.isSaveable,
                            .isChangeable = row.isChangeable,
                            .isNamespaceSpecific = row.isNamespaceSpecific,
                            .defaults = row.defaults};
    }
    return features;
}

StoredBytes makeLatencies(std::uint64_t LatencyRow::*share) {
    namespace statistics = norvo::latency_statistics;
    constexpr std::uint64_t COMMANDS_IN_THOUSANDS = 654'321;
    StoredBytes page(statistics::SIZE);
    writeNumber(page, statistics::Version, 1);
    writeNumber(page, statistics::NumberOfBuckets, std::size(LATENCIES));
    std::uint32_t index = 0;
    for (const LatencyRow& row : LATENCIES) {
        writeNumber(page, fieldOf(statistics::BUCKETS, index, norvo::latency_bucket::UpperLimit),
                    row.upperLimit);
        writeNumber(page, fieldOf(statistics::BUCKETS, index, norvo::latency_bucket::Count),
                    row.*share * COMMANDS_IN_THOUSANDS);
        ++index;
    }
    return page;
}

StoredBytes makeQueueMetrics() {
    namespace metrics = norvo::queue_metrics;
    namespace entry = norvo::queue_metrics_entry;
    constexpr std::uint32_t QUEUES = 8;
    constexpr std::uint64_t DEPTH = 1024;
    constexpr std::uint64_t HIGHEST = 31;
    constexpr std::uint64_t COMMANDS = 1'250'000;
    StoredBytes page(metrics::SIZE);
    writeNumber(page, metrics::Version, 1);
    writeNumber(page, metrics::NumberOfQueues, QUEUES);
    for (std::uint32_t i = 0; i < QUEUES; ++i) {
        writeNumber(page, fieldOf(metrics::QUEUES, i, entry::QueueId), i + 1);
        writeNumber(page, fieldOf(metrics::QUEUES, i, entry::Depth), DEPTH);
        writeNumber(page, fieldOf(metrics::QUEUES, i, entry::HighestOutstanding), HIGHEST - i);
        writeNumber(page, fieldOf(metrics::QUEUES, i, entry::CompletedCommands),
                    COMMANDS / (i + 1));
    }
    return page;
}

StoredBytes makePage(std::uint32_t size, std::span<const NumberRow> rows) {
    StoredBytes page(size);
    writeRows(page, rows);
    return page;
}

std::map<std::uint8_t, StoredBytes> makeVendorLogs() {
    namespace pages = norvo::log_pages;
    namespace stored = norvo::stored_log;
    // clang-format off
    return {
        {pages::NLOG,                     makeStoredLog(stored::NLOG_SIGNATURE, 48, 1024)},
        {pages::READ_LATENCY_STATISTICS,  makeLatencies(&LatencyRow::readShare)},
        {pages::WRITE_LATENCY_STATISTICS, makeLatencies(&LatencyRow::writeShare)},
        {pages::EVENT_LOG,                makeStoredLog(stored::EVENT_LOG_SIGNATURE, 12, 512)},
        {pages::ASSERT_LOG,               makeStoredLog(stored::ASSERT_LOG_SIGNATURE, 0, 512)},
        {pages::TEMPERATURE_STATISTICS,   makePage(temperature::SIZE, TEMPERATURES)},
        {pages::EYE_DIAGRAM,              makePage(eye::SIZE, EYE)},
        {pages::HEALTH_STATISTICS,        makePage(health::SIZE, HEALTH_STATISTICS)},
        {pages::QUEUE_METRICS,            makeQueueMetrics()},
    };
    // clang-format on
}

}  // namespace

DriveBasics typicalNvmeBasics() {
    return {.model = "NORVO NX4510 1.6TB",
            .serialNumber = {},
            .firmware = "NX45A130",
            .bootloader = "NX45B012",
            .capacity = 1'600'321'314'816};
}

NvmeDrive typicalNvmeDrive(const DriveBasics& basics) {
    NvmeDrive drive;
    fillController(drive.identifyController, basics);
    fillCommonNamespace(drive.commonNamespace);
    writeRows(drive.smartHealthLog, HEALTH);
    drive.firmwareRevisions[0] = basics.firmware;
    drive.features = makeFeatures();
    drive.vendorLogs = makeVendorLogs();
    const NvmeNamespace whole = typicalNamespace(drive, 1);
    setNamespaceCapacity(whole, basics.capacity);
    setNamespaceBytes(whole);
    drive.namespaces.emplace(1, whole);
    return drive;
}

NvmeNamespace typicalNamespace(const NvmeDrive& drive, std::uint32_t nsid) {
    constexpr std::uint64_t LOCALLY_ADMINISTERED = 0x02;
    NvmeNamespace made{drive.commonNamespace, {controllerId(drive)}};
    const std::string owner = protocols::readText(drive.identifyController, ic::SN);
    const std::uint64_t number = numberFromText(owner + '/' + std::to_string(nsid));
    writeNumber(made.identify, in::EUI64, (number & ~UINT64_C(0xFF)) | LOCALLY_ADMINISTERED);
    return made;
}

void setNamespaceCapacity(const NvmeNamespace& one, std::uint64_t bytes) {
    const std::uint64_t size = nvme::blockSize(one.identify, nvme::formatInUse(one.identify));
    const std::uint64_t blocks = size > 0 ? bytes / size : 0;
    for (const auto* field : {&in::NSZE, &in::NCAP, &in::NUSE})
        writeNumber(one.identify, *field, blocks);
}

void setNamespaceBytes(const NvmeNamespace& one) {
    const std::uint64_t size = nvme::blockSize(one.identify, nvme::formatInUse(one.identify));
    writeWideNumber(one.identify, in::NVMCAP,
                    Number128(protocols::readNumber(one.identify, in::NCAP)) * size);
}

}  // namespace orvel::simulator
