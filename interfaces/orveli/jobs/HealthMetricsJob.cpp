#include "interfaces/orveli/jobs/HealthMetricsJob.h"

#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaReadings.h"
#include "interfaces/orveli/jobs/NvmeLogs.h"
#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Smart.h"
#include "protocols/ata/Structures.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Structures.h"
#include "protocols/nvme/Temperature.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Device;
using core::Payload;
using core::Status;
using core::xml::XmlObject;
using protocols::Field;
using protocols::readNumber;
namespace ata = protocols::ata;
namespace health = protocols::norvo::health_statistics;
namespace metrics = orvel::features::health_metrics;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace smart_health = nvme::smart_health_log;
namespace temperatures = protocols::norvo::temperature_statistics;

namespace {

constexpr const char* TITLE = "Health Sensors";

using Descriptor = Attribute (*)();

/// What the drive tells may be too large for the row's type; then there is no such property.
void putText(XmlObject& drive, Attribute descriptor, const std::string& number) {
    const Status status = descriptor.setValueFromText(number);
    if (status == Status()) drive.addProperty(core::XmlConverter::toXml(descriptor));
}

/// The catalogue has temperatures that can't be negative; a drive in the cold has others.
void putCelsius(XmlObject& drive, Attribute descriptor, std::int64_t degrees) {
    if (descriptor.getType() == core::types::sint32()) {
        descriptor.setValue(static_cast<std::int32_t>(degrees));
    } else {
        descriptor.setValue(degrees);
    }
    drive.addProperty(core::XmlConverter::toXml(descriptor))
        .setAttribute(core::xml::tags::Value, core::strings::toString(degrees));
}

bool hasProperty(const XmlObject& drive, const Attribute& descriptor) {
    const auto& all = drive.getProperties();
    return std::any_of(all.begin(), all.end(), [&](const auto& property) {
        return property->getAttribute(core::xml::tags::Name) == descriptor.getName();
    });
}

bool isAskedFor(const std::vector<std::string>& names, const Attribute& descriptor) {
    return names.empty() || std::any_of(names.begin(), names.end(), [&](const auto& name) {
               return core::strings::equals(name, descriptor.getName(), true);
           });
}

// NVMe.

struct NvmeWarning {
    Descriptor descriptor;
    nvme::BitField bits;
};

/// `page` is 0 for SMART / Health Information.
struct NvmeNumber {
    Descriptor descriptor;
    std::uint8_t page;
    Field field;
};

constexpr std::uint8_t SMART_HEALTH = 0;
constexpr std::uint8_t HEALTH = norvo::log_pages::HEALTH_STATISTICS;
constexpr std::uint8_t TEMPERATURE = norvo::log_pages::TEMPERATURE_STATISTICS;

// clang-format off
constexpr NvmeWarning NVME_WARNINGS[] = {
//   descriptor                               bits of the critical warning
    {&metrics::AvailableSpareBelowThreshold,  nvme::critical_warning::SPARE},
    {&metrics::TemperatureThresholdExceeded,  nvme::critical_warning::TEMPERATURE},
    {&metrics::ReliabilityDegraded,           nvme::critical_warning::RELIABILITY},
    {&metrics::ReadOnlyMode,                  nvme::critical_warning::READ_ONLY},
    {&metrics::MemoryBackupDeviceFailed,      nvme::critical_warning::VOLATILE_MEMORY_BACKUP},
};

constexpr NvmeNumber NVME_NUMBERS[] = {
//   descriptor                               page          field
    {&metrics::AvailableSpare,                SMART_HEALTH, smart_health::AvailableSpare},
    {&metrics::PercentageUsed,                SMART_HEALTH, smart_health::PercentageUsed},
    {&metrics::PowerOnHours,                  SMART_HEALTH, smart_health::PowerOnHours},
    {&metrics::PowerCycles,                   SMART_HEALTH, smart_health::PowerCycles},
    {&metrics::UnsafeShutdowns,               SMART_HEALTH, smart_health::UnsafeShutdowns},
    {&metrics::MediaErrors,                   SMART_HEALTH, smart_health::MediaAndDataIntegrityErrors},
    {&metrics::ErrorInfoLogEntries,           SMART_HEALTH, smart_health::NumberOfErrorInformationLogEntries},
    {&metrics::ProgramFailCount,              HEALTH,       health::ProgramFailCount},
    {&metrics::EraseFailCount,                HEALTH,       health::EraseFailCount},
    {&metrics::MinNandEraseCycles,            HEALTH,       health::MinNandEraseCycles},
    {&metrics::MaxNandEraseCycles,            HEALTH,       health::MaxNandEraseCycles},
    {&metrics::AverageNandEraseCycles,        HEALTH,       health::AverageNandEraseCycles},
    {&metrics::EndToEndErrorDetectionCount,   HEALTH,       health::EndToEndErrorDetectionCount},
    {&metrics::CrcErrorCount,                 HEALTH,       health::CrcErrorCount},
    {&metrics::ThermalThrottleStatus,         HEALTH,       health::ThermalThrottleStatus},
    {&metrics::ThermalThrottleCount,          HEALTH,       health::ThermalThrottleCount},
};

constexpr NvmeNumber NVME_TEMPERATURES[] = {
//   descriptor                               page          field, in degrees Celsius
    {&metrics::HighestLifetimeTemperature,    TEMPERATURE,  temperatures::HighestLifetimeTemperature},
    {&metrics::LowestLifetimeTemperature,     TEMPERATURE,  temperatures::LowestLifetimeTemperature},
    {&metrics::SpecifiedPCBMaxOperatingTemp,  TEMPERATURE,  temperatures::SpecifiedPCBMaxOperatingTemp},
    {&metrics::SpecifiedPCBMinOperatingTemp,  TEMPERATURE,  temperatures::SpecifiedPCBMinOperatingTemp},
};

// clang-format on

/// The drive's temperature is optional: 0 K stands for none.
void addCompositeTemperature(XmlObject& drive, NvmeLogs& logs) {
    const std::uint64_t kelvins =
        readNumber(logs.smartHealth(), smart_health::CompositeTemperature);
    if (kelvins != 0) {
        putCelsius(drive, metrics::Celsius(),
                   static_cast<std::int64_t>(kelvins) - nvme::ZERO_CELSIUS);
    }
}

void addNvme(Device& device, const std::vector<std::string>& names, XmlObject& drive) {
    NvmeLogs logs(device);
    const auto find = [&](std::uint8_t page) {
        return page == SMART_HEALTH ? &logs.smartHealth() : logs.findVendorPage(page);
    };
    if (isAskedFor(names, metrics::Celsius())) addCompositeTemperature(drive, logs);
    for (const NvmeWarning& row : NVME_WARNINGS) {
        if (!isAskedFor(names, row.descriptor())) continue;
        put(drive, row.descriptor(),
            nvme::readBits(logs.smartHealth(), smart_health::CriticalWarning, row.bits) != 0);
    }
    for (const NvmeNumber& row : NVME_NUMBERS) {
        if (!isAskedFor(names, row.descriptor())) continue;
        if (const Payload* page = find(row.page))
            putText(drive, row.descriptor(), protocols::valueAsText(*page, row.field));
    }
    for (const NvmeNumber& row : NVME_TEMPERATURES) {
        if (!isAskedFor(names, row.descriptor())) continue;
        if (const Payload* page = find(row.page)) {
            putCelsius(drive, row.descriptor(),
                       static_cast<std::int64_t>(readNumber(*page, row.field)));
        }
    }
}

// SATA.

/// What of a SMART attribute is the value.
enum class Part {
    NORMALIZED,
    RAW_BYTE,   ///< the lowest byte of the raw value; drives use the others for themselves
    RAW_WORD,   ///< the lowest two
    RAW_DWORD,  ///< the lowest four
    RAW,        ///< all six
    AT_THRESHOLD
};

struct SmartRow {
    Descriptor descriptor;
    std::uint8_t id;
    Part part;
};

struct StatisticRow {
    Descriptor descriptor;
    std::uint8_t page;
    Field field;
};

// What stands in both tables is taken from the statistics, whose meaning is a standard's, if they
// have it; and from the first attribute that the drive has.
// clang-format off
constexpr StatisticRow STATISTICS[] = {
//   descriptor                               page                                   field
    {&metrics::PercentageUsed,                ata::statistics_page::SOLID_STATE_DEVICE, ata::solid_state_device_statistics::PercentageUsedEndurance},
    {&metrics::PowerOnHours,                  ata::statistics_page::GENERAL,            ata::general_statistics::PowerOnHours},
    {&metrics::PowerCycles,                   ata::statistics_page::GENERAL,            ata::general_statistics::LifetimePowerOnResets},
    {&metrics::MediaErrors,                   ata::statistics_page::GENERAL_ERRORS,     ata::general_errors_statistics::ReportedUncorrectableErrors},
    {&metrics::CrcErrorCount,                 ata::statistics_page::TRANSPORT,          ata::transport_statistics::InterfaceCRCErrors},
};

constexpr StatisticRow STATISTIC_TEMPERATURES[] = {
//   descriptor                               page                                   field, one signed byte
    {&metrics::Celsius,                       ata::statistics_page::TEMPERATURE,        ata::temperature_statistics::CurrentTemperature},
    {&metrics::HighestLifetimeTemperature,    ata::statistics_page::TEMPERATURE,        ata::temperature_statistics::HighestTemperature},
    {&metrics::LowestLifetimeTemperature,     ata::statistics_page::TEMPERATURE,        ata::temperature_statistics::LowestTemperature},
    {&metrics::SpecifiedPCBMaxOperatingTemp,  ata::statistics_page::TEMPERATURE,        ata::temperature_statistics::SpecifiedMaximumOperating},
    {&metrics::SpecifiedPCBMinOperatingTemp,  ata::statistics_page::TEMPERATURE,        ata::temperature_statistics::SpecifiedMinimumOperating},
};

constexpr SmartRow SMART_ROWS[] = {
//   descriptor                               id    part
    {&metrics::AvailableSpare,                0xAA, Part::NORMALIZED},
    {&metrics::AvailableSpare,                0xE8, Part::NORMALIZED},
    {&metrics::AvailableSpareBelowThreshold,  0xAA, Part::AT_THRESHOLD},
    {&metrics::AvailableSpareBelowThreshold,  0xE8, Part::AT_THRESHOLD},
    {&metrics::PowerOnHours,                  0x09, Part::RAW_DWORD},
    {&metrics::PowerCycles,                   0x0C, Part::RAW},
    {&metrics::UnsafeShutdowns,               0xAE, Part::RAW},
    {&metrics::UnsafeShutdowns,               0xC0, Part::RAW},
    {&metrics::MediaErrors,                   0xBB, Part::RAW},
    {&metrics::ProgramFailCount,              0xAB, Part::RAW},
    {&metrics::EraseFailCount,                0xAC, Part::RAW},
    {&metrics::AverageNandEraseCycles,        0xAD, Part::RAW_WORD},
    {&metrics::EndToEndErrorDetectionCount,   0xB8, Part::RAW},
    {&metrics::CrcErrorCount,                 0xC7, Part::RAW},
    {&metrics::ThermalThrottleStatus,         0xEA, Part::RAW_BYTE},
    {&metrics::Celsius,                       0xC2, Part::RAW_BYTE},
    {&metrics::Celsius,                       0xBE, Part::RAW_BYTE},
};

// clang-format on

std::uint64_t valueOf(const SmartAttribute& attribute, Part part) {
    switch (part) {
    case Part::NORMALIZED:
        return attribute.normalized;
    case Part::RAW_BYTE:
        return attribute.raw & 0xFF;
    case Part::RAW_WORD:
        return attribute.raw & 0xFFFF;
    case Part::RAW_DWORD:
        return attribute.raw & 0xFFFFFFFF;
    case Part::RAW:
        return attribute.raw;
    case Part::AT_THRESHOLD:
        return attribute.isAtThreshold() ? 1 : 0;
    }
    return 0;
}

/// A temperature's byte is signed.
std::int64_t celsiusOf(std::uint64_t value) {
    return static_cast<std::int8_t>(value & 0xFF);
}

void addSmartRow(XmlObject& drive, AtaReadings& readings, const SmartRow& row) {
    const SmartAttribute* attribute = readings.find(row.id);
    if (attribute == nullptr) return;
    const std::uint64_t value = valueOf(*attribute, row.part);
    if (row.descriptor == &metrics::Celsius) {
        putCelsius(drive, row.descriptor(), celsiusOf(value));
    } else {
        putText(drive, row.descriptor(), core::strings::toString(value));
    }
}

/// The identifiers of the pre-failure attributes at their thresholds, or "None".
std::string failingAttributes(const std::vector<SmartAttribute>& attributes) {
    std::string text;
    for (const SmartAttribute& attribute : attributes) {
        if (!attribute.isPreFailure() || !attribute.isAtThreshold()) continue;
        if (!text.empty()) text += ", ";
        text += core::strings::toHexString(attribute.id, 2);
    }
    return text.empty() ? "None" : text;
}

void addSmartJudgement(Device& device, const std::vector<std::string>& names, XmlObject& drive,
                       AtaReadings& readings) {
    if (isAskedFor(names, metrics::SMARTPrefail()) && !readings.smartAttributes().empty())
        put(drive, metrics::SMARTPrefail(), failingAttributes(readings.smartAttributes()));
    if (!isAskedFor(names, metrics::ReliabilityDegraded())) return;
    const auto answer = ata_access::ask(device, ata::smartReturnStatus());
    const ata::SmartHealth judgement = ata::smartHealth(answer.returned);
    if (answer.returned.isSuccess() && judgement != ata::SmartHealth::UNKNOWN) {
        put(drive, metrics::ReliabilityDegraded(),
            judgement == ata::SmartHealth::THRESHOLD_EXCEEDED);
    }
}

void addAta(Device& device, const std::vector<std::string>& names, XmlObject& drive) {
    AtaReadings readings(device);
    for (const StatisticRow& row : STATISTICS) {
        if (!isAskedFor(names, row.descriptor())) continue;
        if (const auto value = readings.findStatistic(row.page, row.field))
            putText(drive, row.descriptor(), core::strings::toString(*value));
    }
    for (const StatisticRow& row : STATISTIC_TEMPERATURES) {
        if (!isAskedFor(names, row.descriptor())) continue;
        if (const auto value = readings.findStatistic(row.page, row.field))
            putCelsius(drive, row.descriptor(), celsiusOf(*value));
    }
    for (const SmartRow& row : SMART_ROWS) {
        const Attribute descriptor = row.descriptor();
        if (isAskedFor(names, descriptor) && !hasProperty(drive, descriptor))
            addSmartRow(drive, readings, row);
    }
    addSmartJudgement(device, names, drive, readings);
    readings.explainNothing(drive);
}

}  // namespace

HealthMetricsJob::HealthMetricsJob() : DriveJob(HealthMetrics, Kind::ANY, TITLE) {}

std::unique_ptr<Job> HealthMetricsJob::clone() const {
    return std::make_unique<HealthMetricsJob>();
}

Status HealthMetricsJob::runGetProperties(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

Status HealthMetricsJob::report(Device& device, XmlObject& drive) {
    const auto names = requestedNames();
    if (isNvme(device)) {
        addNvme(device, names, drive);
    } else {
        addAta(device, names, drive);
    }
    keepRequested(drive);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
