#include "interfaces/orveli/jobs/PerformanceJob.h"

#include "features/DeviceAttributes.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaReadings.h"
#include "interfaces/orveli/jobs/NvmeLogs.h"
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Structures.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Device;
using core::Payload;
using core::Status;
using core::xml::XmlObject;
using protocols::Field;
using protocols::Number128;
namespace ata = protocols::ata;
namespace attributes = orvel::features::device_attributes;
namespace performance = orvel::features::performance;
namespace smart_health = protocols::nvme::smart_health_log;
namespace totals = orvel::features::nvme_smart_health;

namespace {

constexpr const char* TITLE = "Performance";
constexpr std::uint64_t USUAL_BLOCK_SIZE = 512;
constexpr std::uint64_t DATA_UNIT = 512ULL * 1000;         // of SMART / Health Information
constexpr std::uint64_t SMART_UNIT = 32ULL * 1024 * 1024;  // of the attributes for host data
constexpr std::uint8_t TOTAL_HOST_WRITES = 241;
constexpr std::uint8_t TOTAL_HOST_READS = 242;

std::uint64_t blockSize(const Device& device) {
    for (const Attribute& size : {attributes::SectorDataSize(), attributes::SectorSize()}) {
        const std::uint64_t bytes = device.readUnsigned64(size);
        if (bytes != 0) return bytes;
    }
    return USUAL_BLOCK_SIZE;
}

/// In blocks. A total that no 64 bits can hold is the largest number.
std::uint64_t blocksOf(const Device& device, const Number128& units, std::uint64_t unit) {
    constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint64_t>::max();
    const std::uint64_t size = blockSize(device);
    const Number128 largestUnits = Number128(LARGEST) * size / unit;
    if (units > largestUnits) return LARGEST;
    return static_cast<std::uint64_t>(units * unit / size);
}

/// Decimal as the totals beside it are, though the catalogue's type is hexadecimal.
void addCount(XmlObject& drive, const Attribute& descriptor, const Number128& count) {
    drive.addValue(descriptor.getName(), protocols::toText(count));
}

// NVMe.

void addNvme(Device& device, XmlObject& drive) {
    NvmeLogs logs(device);
    const Payload& page = logs.smartHealth();
    const auto blocks = [&](const Field& field) {
        return blocksOf(device, protocols::readWideNumber(page, field), DATA_UNIT);
    };
    const auto add = [&](const Attribute& descriptor, const Field& field) {
        addCount(drive, descriptor, protocols::readWideNumber(page, field));
    };
    put(drive, performance::TotalLBAsRead(), blocks(smart_health::DataUnitsRead));
    put(drive, performance::TotalLBAsWritten(), blocks(smart_health::DataUnitsWritten));
    add(totals::HostReadCommands(), smart_health::HostReadCommands);
    add(totals::HostWriteCommands(), smart_health::HostWriteCommands);
    add(totals::ControllerBusyTime(), smart_health::ControllerBusyTime);
}

// SATA.

/// By the statistics, which count blocks, or else by the SMART attribute.
std::optional<std::uint64_t> totalBlocks(const Device& device, AtaReadings& readings,
                                         const Field& statistic, std::uint8_t attributeId) {
    if (const auto blocks = readings.findStatistic(ata::statistics_page::GENERAL, statistic))
        return blocks;
    const SmartAttribute* attribute = readings.find(attributeId);
    if (attribute == nullptr) return std::nullopt;
    return blocksOf(device, attribute->raw, SMART_UNIT);
}

void addAta(Device& device, XmlObject& drive) {
    namespace general = ata::general_statistics;
    AtaReadings readings(device);
    const auto addBlocks = [&](const Attribute& descriptor, const Field& statistic,
                               std::uint8_t attributeId) {
        if (const auto blocks = totalBlocks(device, readings, statistic, attributeId))
            put(drive, descriptor, *blocks);
    };
    const auto addCommands = [&](const Attribute& descriptor, const Field& statistic) {
        if (const auto count = readings.findStatistic(ata::statistics_page::GENERAL, statistic))
            addCount(drive, descriptor, *count);
    };
    addBlocks(performance::TotalLBAsRead(), general::LogicalSectorsRead, TOTAL_HOST_READS);
    addBlocks(performance::TotalLBAsWritten(), general::LogicalSectorsWritten, TOTAL_HOST_WRITES);
    addCommands(totals::HostReadCommands(), general::NumberOfReadCommands);
    addCommands(totals::HostWriteCommands(), general::NumberOfWriteCommands);
    readings.explainNothing(drive);
}

}  // namespace

PerformanceJob::PerformanceJob() : DriveJob(Performance, Kind::ANY, TITLE) {}

std::unique_ptr<Job> PerformanceJob::clone() const {
    return std::make_unique<PerformanceJob>();
}

Status PerformanceJob::runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status PerformanceJob::report(Device& device, XmlObject& drive) {
    if (isNvme(device)) {
        addNvme(device, drive);
    } else {
        addAta(device, drive);
    }
    keepRequested(drive);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
