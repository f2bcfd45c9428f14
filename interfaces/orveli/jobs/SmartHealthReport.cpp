#include "interfaces/orveli/jobs/SmartHealthReport.h"

#include "core/Attribute.h"
#include "core/Strings.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/jobs/DriveJob.h"
#include "interfaces/orveli/jobs/FieldReport.h"
#include "protocols/nvme/Structures.h"
#include "protocols/nvme/Temperature.h"

#include <algorithm>
#include <cstdint>

namespace orvel::interfaces::orveli::jobs {

using core::Attribute;
using core::Payload;
using core::xml::XmlObject;
using protocols::Field;
namespace catalogue = orvel::features::nvme_smart_health;
namespace log = protocols::nvme::smart_health_log;
namespace warning = protocols::nvme::critical_warning;

namespace {

struct WarningRow {
    protocols::nvme::BitField bit;
    Attribute (*property)();
};

struct FieldRow {
    Field field;
    Attribute (*property)();
};

// clang-format off
constexpr WarningRow WARNINGS[] = {
//   bit                              property
    {warning::SPARE,                  &catalogue::AvailableSpareWarning},
    {warning::TEMPERATURE,            &catalogue::TemperatureWarning},
    {warning::RELIABILITY,            &catalogue::ReliabilityWarning},
    {warning::READ_ONLY,              &catalogue::ReadOnlyWarning},
    {warning::VOLATILE_MEMORY_BACKUP, &catalogue::VolatileMemoryWarning},
};

constexpr FieldRow PERCENTAGES[] = {
//   field                          property
    {log::AvailableSpare,           &catalogue::AvailableSpare},
    {log::AvailableSpareThreshold,  &catalogue::AvailableSpareThreshold},
    {log::PercentageUsed,           &catalogue::PercentageUsed},
};

constexpr FieldRow COUNTS[] = {
//   field                                    property
    {log::DataUnitsRead,                      &catalogue::DataUnitsRead},
    {log::DataUnitsWritten,                   &catalogue::DataUnitsWritten},
    {log::HostReadCommands,                   &catalogue::HostReadCommands},
    {log::HostWriteCommands,                  &catalogue::HostWriteCommands},
    {log::ControllerBusyTime,                 &catalogue::ControllerBusyTime},
    {log::PowerCycles,                        &catalogue::PowerCycles},
    {log::PowerOnHours,                       &catalogue::PowerOnHours},
    {log::UnsafeShutdowns,                    &catalogue::UnsafeShutdowns},
    {log::MediaAndDataIntegrityErrors,        &catalogue::MediaErrors},
    {log::NumberOfErrorInformationLogEntries, &catalogue::NumErrorInfoLogEntries},
};

constexpr FieldRow TEMPERATURE_TIMES[] = {
//   field                                  property
    {log::WarningCompositeTemperatureTime,  &catalogue::WarningCompositeTemperatureTime},
    {log::CriticalCompositeTemperatureTime, &catalogue::CriticalCompositeTemperatureTime},
};

constexpr FieldRow SENSORS[] = {
//   field                    property
    {log::TemperatureSensor1, &catalogue::TemperatureSensor1},
    {log::TemperatureSensor2, &catalogue::TemperatureSensor2},
    {log::TemperatureSensor3, &catalogue::TemperatureSensor3},
    {log::TemperatureSensor4, &catalogue::TemperatureSensor4},
    {log::TemperatureSensor5, &catalogue::TemperatureSensor5},
    {log::TemperatureSensor6, &catalogue::TemperatureSensor6},
    {log::TemperatureSensor7, &catalogue::TemperatureSensor7},
    {log::TemperatureSensor8, &catalogue::TemperatureSensor8},
};

constexpr Field THERMAL_MANAGEMENT[] = {
    log::ThermalManagementTemperature1TransitionCount,
    log::ThermalManagementTemperature2TransitionCount,
    log::TotalTimeForThermalManagementTemperature1,
    log::TotalTimeForThermalManagementTemperature2,
};

// clang-format on

void putWarnings(XmlObject& section, const Payload& page) {
    put(section, catalogue::CriticalWarnings(),
        static_cast<std::uint8_t>(protocols::readNumber(page, log::CriticalWarning)));
    for (const auto& [bit, property] : WARNINGS)
        put(section, property(), readBits(page, log::CriticalWarning, bit) != 0);
    const bool isReadOnly =
        readBits(page, log::CriticalWarning, warning::PERSISTENT_MEMORY_REGION) != 0;
    section.addValue("PersistentMemoryRegionWarning", core::strings::toString(isReadOnly));
}

/// As text, because the catalogue's type has no numbers below zero. 0 K stands for no temperature.
void putTemperatureIfTold(XmlObject& section, const Payload& page, const FieldRow& row) {
    const auto kelvins = static_cast<int>(protocols::readNumber(page, row.field));
    if (kelvins == 0) return;
    section.addValue(row.property().getName(),
                     core::strings::toString(kelvins - protocols::nvme::ZERO_CELSIUS));
}

/// The catalogue's numbers of any width have their most significant byte first.
void putCount(XmlObject& section, const Payload& page, const FieldRow& row) {
    const Payload bytes = protocols::readBytes(page, row.field);
    std::reverse(bytes.data(), bytes.data() + bytes.size());
    put(section, row.property(), bytes);
}

}  // namespace

void putSmartHealth(XmlObject& section, const Payload& page) {
    putWarnings(section, page);
    putTemperatureIfTold(section, page, {log::CompositeTemperature, &catalogue::Celsius});
    for (const auto& [field, property] : PERCENTAGES)
        put(section, property(), static_cast<std::uint8_t>(protocols::readNumber(page, field)));
    field_report::putField(section, page, log::EnduranceGroupCriticalWarningSummary);
    for (const FieldRow& row : COUNTS)
        putCount(section, page, row);
    for (const auto& [field, property] : TEMPERATURE_TIMES)
        put(section, property(), static_cast<std::uint32_t>(protocols::readNumber(page, field)));
    for (const FieldRow& row : SENSORS)
        putTemperatureIfTold(section, page, row);
    field_report::putFields(section, page, THERMAL_MANAGEMENT);
}

}  // namespace orvel::interfaces::orveli::jobs
