// Tests of the descriptors of the job properties.
#include "features/JobProperties.h"

#include "features/DeviceAttributes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

namespace orvel::features {
namespace {

using Descriptor = core::Attribute (*)();

/// The table's functions, in its order.
constexpr Descriptor TABLE[] = {
#define PROPERTY(group, name, displayName, type) &group::name,
#define PROPERTY_NAMED(name, group, function, displayName, type) &group::function,
#define PROPERTY_WITH_VALUE(value, group, name, displayName, type) &group::name,
#include "features/JobProperties.def"
};

struct Row {
    Descriptor make;
    const char* name;
    const char* displayName;
    const char* type;
};

// clang-format off
constexpr Row ROWS[] = {
//   function                                                   name                                         display name                                            type
    {&gpl::LogAddress,                                          "LogAddress",                                "Log Address",                                          "uint8"},
    {&gpl::PageNum,                                             "PageNum",                                   "Page Num",                                             "uint16"},
    {&gpl::SectorCount,                                         "SectorCount",                               "Sector Count",                                         "uint32"},
    {&gpl::SectorsPerTransfer,                                  "SectorsPerTransfer",                        "Sectors Per Transfer",                                 "uint8"},
    {&nlog::Bytes,                                              "Bytes",                                     "Bytes",                                                "uint32"},
    {&nlog::DWORDOffset,                                        "DWORDOffset",                               "DWORD Offset",                                         "uint32"},
    {&nlog::LogPage,                                            "LogPage",                                   "Log Page",                                             "uint32"},
    {&format::Force,                                            "Force",                                     "Force",                                                "boolean"},
    {&format::Type,                                             "Type",                                      "Type",                                                 "string"},
    {&format::EnhancedErase,                                    "EnhancedErase",                             "Enhanced Erase",                                       "boolean"},
    {&format::CryptoErase,                                      "CryptoErase",                               "Crypto Erase",                                         "boolean"},
    {&format::ReturnImmediately,                                "ReturnImmediately",                         "Return Immediately",                                   "boolean"},
    {&format::LBAFormat,                                        "LBAFormat",                                 "LBA Format",                                           "uint8"},
    {&format::MetadataSettings,                                 "MetadataSettings",                          "Metadata Settings",                                    "uint8"},
    {&format::ProtectionInformation,                            "ProtectionInformation",                     "Protection Information",                               "uint8"},
    {&format::ProtectionInformationLocation,                    "ProtectionInformationLocation",             "Protection Information Location",                      "uint8"},
    {&format::SecureEraseSetting,                               "SecureEraseSetting",                        "Secure Erase Setting",                                 "uint8"},
    {&nvme_get_log::file,                                       "file",                                      "file",                                                 "string"},
    {&nvme_get_log::LogId,                                      "LogId",                                     "Log Id",                                               "uint32"},
    {&nvme_get_log::NumDWORDs,                                  "NumDWORDs",                                 "NumDWORDs",                                            "uint16"},
    {&nvme_get_log::LogPageOffset,                              "LogPageOffset",                             "Log Page Offset",                                      "uint64"},
    {&nvme_smart_health::AvailableSpare,                        "AvailableSpare",
                                                                "Available Spare Normalized percentage of the remaining spare capacity available",
                                                                                                                                                                     "uint8"},
    {&nvme_smart_health::AvailableSpareThreshold,               "AvailableSpareThreshold",                   "Available Spare Threshold Percentage",                 "uint8"},
    {&nvme_smart_health::AvailableSpareWarning,                 "AvailableSpareWarning",                     "Available Spare Space has fallen below the threshold", "boolean"},
    {&nvme_smart_health::ControllerBusyTime,                    "ControllerBusyTime",                        "Controller Busy Time",                                 "hexValue"},
    {&nvme_smart_health::CriticalCompositeTemperatureTime,      "CriticalCompositeTemperatureTime",          "Critical Composite Temperature Time",                  "uint32"},
    {&nvme_smart_health::CriticalWarnings,                      "CriticalWarnings",                          "Critical Warnings",                                    "uint8"},
    {&nvme_smart_health::DataUnitsRead,                         "DataUnitsRead",                             "Data Units Read",                                      "hexValue"},
    {&nvme_smart_health::DataUnitsWritten,                      "DataUnitsWritten",                          "Data Units Written",                                   "hexValue"},
    {&nvme_smart_health::HostReadCommands,                      "HostReadCommands",                          "Host Read Commands",                                   "hexValue"},
    {&nvme_smart_health::HostWriteCommands,                     "HostWriteCommands",                         "Host Write Commands",                                  "hexValue"},
    {&nvme_smart_health::MediaErrors,                           "MediaErrors",                               "Media Errors",                                         "hexValue"},
    {&nvme_smart_health::NumErrorInfoLogEntries,                "NumErrorInfoLogEntries",                    "Number of Error Info Log Entries",                     "hexValue"},
    {&nvme_smart_health::PercentageUsed,                        "PercentageUsed",                            "Percentage Used",                                      "uint8"},
    {&nvme_smart_health::PowerCycles,                           "PowerCycles",                               "Power Cycles",                                         "hexValue"},
    {&nvme_smart_health::PowerOnHours,                          "PowerOnHours",                              "Power On Hours",                                       "hexValue"},
    {&nvme_smart_health::ReadOnlyWarning,                       "ReadOnlyWarning",                           "Media is in a read-only mode",                         "boolean"},
    {&nvme_smart_health::ReliabilityWarning,                    "ReliabilityWarning",                        "Device reliability has degraded",                      "boolean"},
    {&nvme_smart_health::Celsius,                               "Celsius",                                   "Temperature",                                          "uint16"},
    {&nvme_smart_health::TemperatureSensor1,                    "TemperatureSensor1",                        "Temperature Sensor 1",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor2,                    "TemperatureSensor2",                        "Temperature Sensor 2",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor3,                    "TemperatureSensor3",                        "Temperature Sensor 3",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor4,                    "TemperatureSensor4",                        "Temperature Sensor 4",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor5,                    "TemperatureSensor5",                        "Temperature Sensor 5",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor6,                    "TemperatureSensor6",                        "Temperature Sensor 6",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor7,                    "TemperatureSensor7",                        "Temperature Sensor 7",                                 "uint16"},
    {&nvme_smart_health::TemperatureSensor8,                    "TemperatureSensor8",                        "Temperature Sensor 8",                                 "uint16"},
    {&nvme_smart_health::TemperatureWarning,                    "TemperatureWarning",                        "Temperature has exceeded a critical threshold",        "boolean"},
    {&nvme_smart_health::UnsafeShutdowns,                       "UnsafeShutdowns",                           "Unsafe Shutdowns",                                     "hexValue"},
    {&nvme_smart_health::VolatileMemoryWarning,                 "VolatileMemoryWarning",                     "Volatile memory backup device has failed",             "boolean"},
    {&nvme_smart_health::WarningCompositeTemperatureTime,       "WarningCompositeTemperatureTime",           "Warning Composite Temperature Time",                   "uint32"},
    {&nvme_features::DWORD11,                                   "DWORD11",                                   "DWORD11",                                              "uint32"},
    {&nvme_features::DWORD12,                                   "DWORD12",                                   "DWORD12",                                              "uint32"},
    {&nvme_features::FeatureId,                                 "FeatureId",                                 "Feature Id",                                           "uint8"},
    {&nvme_features::file,                                      "file",                                      "file",                                                 "string"},
    {&nvme_features::NumDWORDs,                                 "NumDWORDs",                                 "NumDWORDs",                                            "uint16"},
    {&nvme_features::AggregationThreshold,                      "AggregationThreshold",                      "Aggregation Threshold",                                "uint32"},
    {&nvme_features::AggregationTime,                           "AggregationTime",                           "Aggregation Time",                                     "uint32"},
    {&nvme_features::ArbitrationBurst,                          "ArbitrationBurst",                          "Arbitration Burst",                                    "uint32"},
    {&nvme_features::CoalescingDisable,                         "CoalescingDisable",                         "Coalescing Disable",                                   "uint32"},
    {&nvme_features::DynamicMMIOEnabled,                        "DynamicMMIOEnabled",                        "Dynamic MMIO Enabled",                                 "boolean"},
    {&nvme_features::FirmwareActivationNoticesConfiguration,    "FirmwareActivationNoticesConfiguration",    "Firmware Activation Notices Configuration",            "boolean"},
    {&nvme_features::HighPriorityWeightArbitration,             "HighPriorityWeightArbitration",             "High Priority Weight Arbitration",                     "uint32"},
    {&nvme_features::InterruptVector,                           "InterruptVector",                           "Interrupt Vector",                                     "uint32"},
    {&nvme_features::IOCompletionQueuesRequested,               "IOCompletionQueuesRequested",               "IO Completion Queues Requested",                       "uint32"},
    {&nvme_features::IOSubmissionQueuesRequested,               "IOSubmissionQueuesRequested",               "IO Submission Queues Requested",                       "uint32"},
    {&nvme_features::LowPriorityWeightArbitration,              "LowPriorityWeightArbitration",              "Low Priority Weight Arbitration",                      "uint32"},
    {&nvme_features::MediumPriorityWeightArbitration,           "MediumPriorityWeightArbitration",           "Medium Priority Weight Arbitration",                   "uint32"},
    {&nvme_features::NamespaceAttributeNoticesConfiguration,    "NamespaceAttributeNoticesConfiguration",    "Namespace Attribute Notices Configuration",            "boolean"},
    {&nvme_features::NativeMaxLBA,                              "NativeMaxLBA",                              "Native Max LBA",                                       "uint64"},
    {&nvme_features::NVMePowerState,                            "NVMePowerState",                            "NVMe Power State",                                     "uint32"},
    {&nvme_features::Raw,                                       "Raw",                                       "Raw",                                                  "uint64"},
    {&nvme_features::ResetCRCError,                             "ResetCRCError",                             "Reset CRC Error",                                      "boolean"},
    {&nvme_features::SMBusAddress,                              "SMBusAddress",                              "SM Bus Address",                                       "uint32"},
    {&nvme_features::SMARTHealthCriticalWarningsConfiguration,  "SMARTHealthCriticalWarningsConfiguration",  "SMART Health Critical Warnings Configuration",         "uint32"},
    {&nvme_features::TelemetryLogNoticesConfiguration,          "TelemetryLogNoticesConfiguration",          "Telemetry Log Notices Configuration",                  "boolean"},
    {&nvme_features::TempThreshold,                             "TempThreshold",                             "Temperature Threshold",                                "sint32"},
    {&nvme_features::TimeLimitedErrorRecovery,                  "TimeLimitedErrorRecovery",                  "Time Limited Error Recovery",                          "uint32"},
    {&nvme_features::VolatileWriteCacheEnabled,                 "VolatileWriteCacheEnabled",                 "Volatile Write Cache Enabled",                         "boolean"},
    {&nvme_features::WriteAtomicityDisableNormal,               "WriteAtomicityDisableNormal",               "Write Atomicity Disable Normal",                       "uint32"},
    {&max_address::Capacity,                                    "Capacity",                                  "Capacity",                                             "uint64"},
    {&max_address::Native,                                      "Native",                                    "Native",                                               "boolean"},
    {&max_address::Percent,                                     "Percent",                                   "Percent",                                              "uint64"},
    {&max_address::Value,                                       "Value",                                     "Value",                                                "uint64"},
    {&max_address::MaximumLBA,                                  "MaximumLBA",                                "Maximum LBA",                                          "string"},
    {&max_address::NativeMaxLBA,                                "NativeMaxLBA",                              "Native Max LBA",                                       "uint64"},
    {&drive_self_test::TestType,                                "TestType",                                  "Test Type",                                            "string"},
    {&drive_self_test::Mode,                                    "Mode",                                      "Mode",                                                 "string"},
    {&drive_self_test::SelfTestStatus,                          "SelfTestStatus",                            "Self Test Status",                                     "string"},
    {&drive_self_test::SelfTestProgress,                        "SelfTestProgress",                          "Self Test Progress",                                   "uint8"},
    {&identify::ControllerNamespaceStructure,                   "ControllerNamespaceStructure",              "Controller Namespace Structure",                       "uint8"},
    {&write_cache::WriteCacheReorderingStateEnabled,            "WriteCacheReorderingStateEnabled",          "Write Cache Reordering State Enabled",                 "boolean"},
    {&write_cache::WriteCacheState,                             "WriteCacheState",                           "Write Cache State",                                    "uint16"},
    {&error_recovery_control::ReadErrorRecoveryTimer,           "ReadErrorRecoveryTimer",                    "Read Error Recovery Timer",                            "uint16"},
    {&error_recovery_control::WriteErrorRecoveryTimer,          "WriteErrorRecoveryTimer",                   "Write Error Recovery Timer",                           "uint16"},
    {&phy_config::AmplitudePreEmphasisD1,                       "AmplitudePreEmphasisD1",                    "Amplitude Pre-Emphasis D1",                            "uint16"},
    {&phy_config::SlewRateD1,                                   "SlewRateD1",                                "Slew Rate D1",                                         "uint16"},
    {&phy_config::AmplitudePreEmphasisD2,                       "AmplitudePreEmphasisD2",                    "Amplitude Pre-Emphasis D2",                            "uint16"},
    {&phy_config::SlewRateD2,                                   "SlewRateD2",                                "Slew Rate D2",                                         "uint16"},
    {&phy_config::AmplitudePreEmphasisD4,                       "AmplitudePreEmphasisD4",                    "Amplitude Pre-Emphasis D4",                            "uint16"},
    {&phy_config::SlewRateD4,                                   "SlewRateD4",                                "Slew Rate D4",                                         "uint16"},
    {&phy_speed::PhySpeed,                                      "PhySpeed",                                  "Phy Speed",                                            "string"},
    {&sct_feature_control::TemperatureLoggingInterval,          "TemperatureLoggingInterval",                "Temperature Logging Interval",                         "uint16"},
    {&sct_feature_control::PLITestTimeInterval,                 "PLITestTimeInterval",                       "PLI Test Time Interval",                               "uint16"},
    {&sct_feature_control::PhysicalSectorSize,                  "PhysicalSectorSize",                        "Physical Sector Size",                                 "uint16"},
    {&sct_feature_control::TableId,                             "TableId",                                   "Table Id",                                             "uint16"},
    {&sct_feature_control::FeatureCode,                         "FeatureCode",                               "Feature Code",                                         "uint16"},
    {&sct_feature_control::VolatileFlag,                        "VolatileFlag",                              "Volatile Flag",                                        "boolean"},
    {&sct_feature_control::OptionFlags,                         "OptionFlags",                               "Option Flags",                                         "uint16"},
    {&power_governor::PowerGovernorAveragePower,                "PowerGovernorAveragePower",                 "Power Governor Average Power",                         "uint16"},
    {&power_governor::PowerGovernorBurstPower,                  "PowerGovernorBurstPower",                   "Power Governor Burst Power",                           "uint16"},
    {&power_governor::PowerGovernorMode,                        "PowerGovernorMode",                         "Power Governor Mode",                                  "uint32"},
    {&latency_tracking::LatencyStatisticsForReadCommands,       "LatencyStatisticsForReadCommands",          "Latency Statistics For Read Commands",                 "boolean"},
    {&latency_tracking::LatencyTrackingEnabled,                 "LatencyTrackingEnabled",                    "Latency Tracking Enabled",                             "boolean"},
    {&namespace_management::Action,                             "Action",                                    "Action",                                               "string"},
    {&namespace_management::MultiPathIoCapabilities,            "MultiPathIoCapabilities",                   "Multi Path IO Capabilities",                           "uint8"},
    {&namespace_management::Size,                               "Size",                                      "Size",                                                 "uint64"},
    {&endurance_manager::EnduranceManagerEnabled,               "EnduranceManagerEnabled",                   "Endurance Manager Enabled",                            "boolean"},
    {&firmware_update::AdditionalModuleDirs,                    "AdditionalModuleDirs",                      "Additional Module Directories",                        "vectorOfStrings"},
    {&firmware_update::CommitAction,                            "CommitAction",                              "Commit Action",                                        "uint8"},
    {&firmware_update::FirmwareBinaryPayloads,                  "FirmwareBinaryPayloads",                    "Firmware Binary Payloads",                             "vectorOfPayloads"},
    {&firmware_update::FirmwareFile,                            "FirmwareFile",                              "Firmware File",                                        "string"},
    {&firmware_update::FirmwareSlot,                            "FirmwareSlot",                              "Firmware Slot",                                        "uint8"},
    {&firmware_update::TargetModuleAudience,                    "TargetModuleAudience",                      "Target Module Audience",                               "string"},
    {&firmware_update::Destination,                             "Destination",                               "Destination",                                          "string"},
    {&firmware_update::FirmwareUpdateAvailable,                 "FirmwareUpdateAvailable",                   "Firmware Update Available",                            "string"},
    {&firmware_update::Package,                                 "Package",                                   "Package",                                              "vectorOfStrings"},
    {&firmware_update::Source,                                  "Source",                                    "Source",                                               "string"},
    {&firmware_update::Status,                                  "Status",                                    "Status",                                               "uint64"},
    {&ppid::PPID,                                               "PPID",                                      "PPID",                                                 "string"},
    {&endurance_analyzer::EnduranceAnalyzer,                    "EnduranceAnalyzer",                         "Endurance Analyzer",                                   "string"},
    {&thermal_throttle::ThermalThrottleEnabled,                 "ThermalThrottleEnabled",                    "Thermal Throttle Enabled",                             "boolean"},
    {&performance::TotalLBAsRead,                               "TotalLBAsRead",                             "Total LBAs Read",                                      "uint64"},
    {&performance::TotalLBAsWritten,                            "TotalLBAsWritten",                          "Total LBAs Written",                                   "uint64"},
    {&health_metrics::AvailableSpare,                           "AvailableSpare",                            "Available Spare",                                      "uint8"},
    {&health_metrics::AvailableSpareBelowThreshold,             "AvailableSpareBelowThreshold",              "Available Spare Below Threshold",                      "boolean"},
    {&health_metrics::AverageNandEraseCycles,                   "AverageNandEraseCycles",                    "Average NAND Erase Cycles",                            "uint16"},
    {&health_metrics::CrcErrorCount,                            "CrcErrorCount",                             "CRC Error Count",                                      "uint64"},
    {&health_metrics::EndToEndErrorDetectionCount,              "EndToEndErrorDetectionCount",               "End-to-End Error Detection Count",                     "uint64"},
    {&health_metrics::EraseFailCount,                           "EraseFailCount",                            "Erase Fail Count",                                     "uint64"},
    {&health_metrics::ErrorInfoLogEntries,                      "ErrorInfoLogEntries",                       "Number of Error Info Log Entries",                     "string"},
    {&health_metrics::FailureLog,                               "FailureLog",                                "Failure Log",                                          "string"},
    {&health_metrics::HighestLifetimeTemperature,               "HighestLifetimeTemperature",                "Highest Lifetime Temperature",                         "uint64"},
    {&health_metrics::LowestLifetimeTemperature,                "LowestLifetimeTemperature",                 "Lowest Lifetime Temperature",                          "uint64"},
    {&health_metrics::MediaErrors,                              "MediaErrors",                               "Media Errors",                                         "string"},
    {&health_metrics::MaxNandEraseCycles,                       "MaxNandEraseCycles",                        "Maximum NAND Erase Cycles",                            "uint16"},
    {&health_metrics::MemoryBackupDeviceFailed,                 "MemoryBackupDeviceFailed",                  "MemoryBackupDeviceFailed",                             "boolean"},
    {&health_metrics::MinNandEraseCycles,                       "MinNandEraseCycles",                        "Minimum NAND Erase Cycles",                            "uint16"},
    {&health_metrics::PercentageUsed,                           "PercentageUsed",                            "Percentage Used",                                      "uint8"},
    {&health_metrics::PowerCycles,                              "PowerCycles",                               "Power Cycles",                                         "string"},
    {&health_metrics::PowerOnHours,                             "PowerOnHours",                              "Power On Hours",                                       "string"},
    {&health_metrics::ProgramFailCount,                         "ProgramFailCount",                          "Program Fail Count",                                   "uint64"},
    {&health_metrics::ReadOnlyMode,                             "ReadOnlyMode",                              "Read Only Mode",                                       "boolean"},
    {&health_metrics::ReliabilityDegraded,                      "ReliabilityDegraded",                       "Reliability Degraded",                                 "boolean"},
    {&health_metrics::SMARTPrefail,                             "SMARTPrefail",                              "SMARTPrefail",                                         "string"},
    {&health_metrics::SpecifiedPCBMaxOperatingTemp,             "SpecifiedPCBMaxOperatingTemp",              "Specified PCB Maximum Operating Temperature",          "uint64"},
    {&health_metrics::SpecifiedPCBMinOperatingTemp,             "SpecifiedPCBMinOperatingTemp",              "Specified PCB Minimum Operating Temperature",          "uint64"},
    {&health_metrics::Celsius,                                  "Celsius",                                   "Temperature",                                          "sint32"},
    {&health_metrics::TemperatureThresholdExceeded,             "TemperatureThresholdExceeded",              "Temperature Threshold Exceeded",                       "boolean"},
    {&health_metrics::ThermalThrottleCount,                     "ThermalThrottleCount",                      "Thermal Throttle Count",                               "uint32"},
    {&health_metrics::ThermalThrottleStatus,                    "ThermalThrottleStatus",                     "Thermal Throttle Status",                              "uint8"},
    {&health_metrics::UnsafeShutdowns,                          "UnsafeShutdowns",                           "Unsafe Shutdowns",                                     "string"},
    {&trim::Count,                                              "Count",                                     "Count",                                                "uint64"},
    {&trim::StartLBA,                                           "StartLBA",                                  "Starting LBA",                                         "uint64"},
    {&smart::ID,                                                "ID",                                        "ID",                                                   "string"},
    {&smart::IncludeNVMeSmartHealthLog,                         "IncludeNVMeSmartHealthLog",                 "Include NVMe Smart Health Log",                        "boolean"},
    {&led_activity::DurationBase,                               "DurationBase",                              "Duration Base",                                        "uint32"},
    {&led_activity::FormatOffMultiplier,                        "FormatOffMultiplier",                       "Format Off Multiplier",                                "uint32"},
    {&led_activity::FormatOnMultiplier,                         "FormatOnMultiplier",                        "Format On Multiplier",                                 "uint32"},
    {&led_activity::IdleState,                                  "IdleState",                                 "Idle State",                                           "string"},
    {&led_activity::IoOffMultiplier,                            "IoOffMultiplier",                           "I/O Off Multiplier",                                   "uint32"},
    {&led_activity::IoOnMultiplier,                             "IoOnMultiplier",                            "I/O On Multiplier",                                    "uint32"},
    {&led_activity::Color,                                      "Color",                                     "Color",                                                "string"},
    {&partition_information::Path,                              "Path",                                      "Path",                                                 "string"},
    {&partition_information::BytesPerCluster,                   "BytesPerCluster",                           "Bytes Per Cluster",                                    "uint64"},
    {&partition_information::BytesPerSector,                    "BytesPerSector",                            "Bytes Per Sector",                                     "uint32"},
    {&partition_information::Dynamic,                           "Dynamic",                                   "Dynamic",                                              "boolean"},
    {&partition_information::FileSystemType,                    "FileSystemType",                            "File System Type",                                     "string"},
    {&partition_information::FreeClusters,                      "FreeClusters",                              "Free Clusters",                                        "uint32"},
    {&partition_information::FreeSpace,                         "FreeSpace",                                 "Free Space",                                           "uint64"},
    {&partition_information::FreeSpacePercentage,               "FreeSpacePercentage",                       "Free Space Percentage",                                "sint8"},
    {&partition_information::NTFS,                              "NTFS",                                      "NTFS",                                                 "boolean"},
    {&partition_information::Offset,                            "Offset",                                    "Offset",                                               "sint16"},
    {&partition_information::Raw,                               "Raw",                                       "Raw",                                                  "boolean"},
    {&partition_information::SectorsPerCluster,                 "SectorsPerCluster",                         "Sectors Per Cluster",                                  "uint32"},
    {&partition_information::Size,                              "Size",                                      "Size",                                                 "uint64"},
    {&partition_information::UsedSpace,                         "UsedSpace",                                 "Used Space",                                           "uint64"},
    {&optimizer::Force,                                         "Force",                                     "Force",                                                "boolean"},
    {&optimizer::Path,                                          "Path",                                      "Path",                                                 "string"},
    {&write_same::Count,                                        "Count",                                     "Count",                                                "uint64"},
    {&write_same::HexPattern,                                   "HexPattern",                                "Hex Pattern",                                          "uint32"},
    {&write_same::LBA,                                          "LBA",                                       "LBA",                                                  "uint64"},
    {&nvme_admin_command::DataIn,                               "DataIn",                                    "Data In",                                              "boolean"},
    {&nvme_admin_command::DataOut,                              "DataOut",                                   "Data Out",                                             "boolean"},
    {&nvme_admin_command::DataPayload,                          "DataPayload",                               "Data Payload",                                         "bytepointer"},
    {&nvme_admin_command::DWORD10,                              "DWORD10",                                   "DWORD10",                                              "uint32"},
    {&nvme_admin_command::DWORD11,                              "DWORD11",                                   "DWORD11",                                              "uint32"},
    {&nvme_admin_command::DWORD12,                              "DWORD12",                                   "DWORD12",                                              "uint32"},
    {&nvme_admin_command::DWORD13,                              "DWORD13",                                   "DWORD13",                                              "uint32"},
    {&nvme_admin_command::DWORD14,                              "DWORD14",                                   "DWORD14",                                              "uint32"},
    {&nvme_admin_command::DWORD15,                              "DWORD15",                                   "DWORD15",                                              "uint32"},
    {&nvme_admin_command::MetadataPointer,                      "MetadataPointer",                           "Metadata Pointer",                                     "uint64"},
    {&nvme_admin_command::Opcode,                               "Opcode",                                    "Opcode",                                               "uint8"},
    {&nvme_admin_command::PRPEntry1,                            "PRPEntry1",                                 "PRP Entry 1",                                          "uint64"},
    {&nvme_admin_command::PRPEntry2,                            "PRPEntry2",                                 "PRP Entry 2",                                          "uint64"},
    {&nvme_admin_command::Timeout,                              "Timeout",                                   "Timeout",                                              "uint32"},
    {&nvme_admin_command::TransferBytes,                        "TransferBytes",                             "Transfer Bytes",                                       "uint32"},
    {&nvme_admin_command::OutputData,                           "OutputData",                                "Output Data",                                          "bytepointer"},
    {&dipm::Enable,                                             "Enable",                                    "Enable",                                               "boolean"},
    {&health_scan::StoreLogs,                                   "StoreLogs",                                 "Store Logs",                                           "boolean"},
    {&health_scan::DataIntegrityScan,                           "DataIntegrityScan",                         "Data Integrity Scan",                                  "boolean"},
    {&health_scan::HealthScan,                                  "HealthScan",                                "Health Scan",                                          "boolean"},
    {&health_scan::FullScan,                                    "FullScan",                                  "Full Scan",                                            "boolean"},
    {&health_scan::IncludeOS,                                   "IncludeOS",                                 "Include OS",                                           "boolean"},
    {&health_scan::IncludeSystemParser,                         "IncludeSystemParser",                       "Include System Parser",                                "boolean"},
    {&health_scan::ReadScan,                                    "ReadScan",                                  "Read Scan",                                            "boolean"},
    {&health_scan::DirectoryPath,                               "DirectoryPath",                             "DirectoryPath",                                        "string"},
    {&health_scan::Path,                                        "Path",                                      "Path",                                                 "string"},
    {&health_scan::SpecificScan,                                "SpecificScan",                              "Specific Scan",                                        "boolean"},
    {&health_scan::LBA,                                         "LBA",                                       "LBA",                                                  "list_uint64"},
    {&time_to_ready::TimeToReady,                               "TimeToReady",                               "Time to Ready",                                        "uint16"},
    {&psid_revert::PSID,                                        "PSID",                                      "PSID",                                                 "string"},
    {&edrive::eDriveSupported,                                  "eDriveSupported",                           "eDrive Supported",                                     "boolean"},
    {&directives::EnableStreams,                                "EnableStreams",                             "Enable Streams",                                       "boolean"},
    {&directives::GetStatus,                                    "GetStatus",                                 "Get Status",                                           "boolean"},
    {&directives::IdentifyReturnParameters,                     "IdentifyReturnParameters",                  "Identify Return Parameters",                           "boolean"},
    {&directives::NamespaceStreamsRequested,                    "NamespaceStreamsRequested",                 "NamespaceStreamsRequested",                            "uint16"},
    {&directives::ReleaseStreams,                               "ReleaseStreams",                            "Release Streams",                                      "boolean"},
    {&directives::ReleaseResources,                             "ReleaseResources",                          "Release Resources",                                    "boolean"},
    {&directives::StreamIdentifier,                             "StreamIdentifier",                          "Stream Identifier",                                    "uint8"},
    {&directives::StreamsReturnParameters,                      "StreamsReturnParameters",                   "Streams Return Parameters",                            "boolean"},
    {&directives_support::StreamsDirectiveSupported,            "StreamsDirectiveSupported",                 "Streams Directive Supported",                          "boolean"},
    {&directives_support::StreamsDirectiveEnabled,              "StreamsDirectiveEnabled",                   "Stream Directive Enabled",                             "boolean"},
    {&streams_parameters::MaxStreamsLimit,                      "MaxStreamsLimit",                           " Max Streams Limit",                                   "uint16"},
    {&streams_parameters::NamespaceStreamsAllocated,            "NamespaceStreamsAllocated",                 "Namespace Streams Allocated",                          "uint16"},
    {&streams_parameters::NamespaceStreamsOpen,                 "NamespaceStreamsOpen",                      "Namespace Streams Open",                               "uint16"},
    {&streams_parameters::StreamSize,                           "StreamSize",                                "Stream Size",                                          "uint32"},
    {&streams_parameters::StreamGranularitySize,                "StreamGranularitySize",                     "Stream Granularity Size",                              "uint16"},
    {&streams_parameters::SubsystemStreamsAvailable,            "SubsystemStreamsAvailable",                 "Subsystem Streams Available",                          "uint16"},
    {&streams_parameters::SubsystemStreamsOpen,                 "SubsystemStreamsOpen",                      "Subsystem Streams Open",                               "uint16"},
    {&streams_status::OpenStreamCount,                          "OpenStreamCount",                           "Open Stream Count",                                    "uint16"},
    {&streams_status::StreamIdentifier,                         "StreamIdentifier",                          "Stream Identifier",                                    "uint16"},
    {&streams_resources::NamespaceStreamsAllocated,             "NamespaceStreamsAllocated",                 "Namespace Streams Allocated",                          "boolean"},
    {&ata_identify::Word47,                                     "Word47",                                    "Word 47",                                              "boolean"},
    {&system_parser::Path,                                      "Path",                                      "Path",                                                 "string"},
    {&system_information::ComputerCPU,                          "ComputerCPU",                               "Computer CPU",                                         "string"},
    {&system_information::ComputerManufacturer,                 "ComputerManufacturer",                      "Computer Manufacturer",                                "string"},
    {&system_information::ComputerModel,                        "ComputerModel",                             "Computer Model",                                       "string"},
    {&system_information::IDEController,                        "IDEController",                             "IDE Controller",                                       "vectorOfStrings"},
    {&system_information::OperatingSystem,                      "OperatingSystem",                           "Operating System",                                     "string"},
    {&system_information::OperatingSystemVersion,               "OperatingSystemVersion",                    "Operating System Version",                             "string"},
    {&system_information::SCSIController,                       "SCSIController",                            "SCSI Controller",                                      "vectorOfStrings"},
    {&system_information::WindowsServicePack,                   "Windows Service Pack",                      "Windows Service Pack",                                 "string"},
    {&background_processing::BackgroundProcessing,              "BackgroundProcessing",                      "Background Processing",                                "uint64"},
    {&force_flush::StartForceFlush,                             "StartForceFlush",                           "Start Force Flush",                                    "boolean"},
    {&eye_diagram::Lane,                                        "Lane",                                      "Lane",                                                 "uint16"},
    {&eye_diagram::Group,                                       "Group",                                     "Group",                                                "string"},
};

// clang-format on

TEST(JobProperties, HasItsRowsInTheOrderOfTheCatalogue) {
    ASSERT_EQ(std::size(TABLE), 257U);
    ASSERT_EQ(std::size(ROWS), 257U);
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(std::to_string(i) + " " + ROWS[i].name);
        EXPECT_EQ(TABLE[i], ROWS[i].make);
    }
}

TEST(JobProperties, DescribesEachRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.name);
        const core::Attribute attribute = row.make();
        EXPECT_EQ(attribute.getName(), row.name);
        EXPECT_EQ(attribute.getDisplayName(), row.displayName);
        EXPECT_EQ(attribute.getType(), row.type);
        EXPECT_EQ(attribute.getDescription(), "");
    }
}

TEST(JobProperties, AreBlankButForDurationBase) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.name);
        const bool hasDefault = row.make == &led_activity::DurationBase;
        EXPECT_EQ(row.make().getPayload().size(), hasDefault ? 13U : 0U);
    }
}

TEST(JobProperties, GiveDurationBaseAWordUnderTheTypeOfANumber) {
    const core::Attribute attribute = led_activity::DurationBase();
    const core::Payload& payload = attribute.getPayload();
    EXPECT_EQ(std::string(payload.data(), payload.data() + payload.size()),
              std::string("Milliseconds\0", 13));
    EXPECT_EQ(attribute.getType(), "uint32");
}

TEST(JobProperties, AreMadeAnewAtEachCall) {
    core::Attribute changed = gpl::LogAddress();
    changed.setValue(std::uint8_t{7});
    changed.setDisplayName("Other");
    EXPECT_EQ(gpl::LogAddress().getPayload().size(), 0U);
    EXPECT_EQ(gpl::LogAddress().getDisplayName(), "Log Address");
}

TEST(JobProperties, OfTheSameNameStandSideBySide) {
    EXPECT_EQ(nvme_smart_health::MediaErrors().getType(), "hexValue");
    EXPECT_EQ(health_metrics::MediaErrors().getType(), "string");
    EXPECT_EQ(format::LBAFormat().getType(), "uint8");
    EXPECT_EQ(device_attributes::LBAFormat().getType(), "uint16");
}

TEST(JobProperties, TakenFromTheDeviceAttributesForwardToThem) {
    // clang-format off
    constexpr Row FORWARDERS[] = {
    //   function                                name                 display name           type
        {&namespace_management::NamespaceId,      "NamespaceId",       "NamespaceId",         "uint32"},
        {&namespace_management::NVMeControllerID, "NVMeControllerID",  "NVMe Controller ID",  "uint16"},
        {&phy_config::PhyConfig,                  "PhyConfig",         "Phy Config",          "uint16"},
        {&spread_spectrum_clocking::SSCEnabled,   "SSCEnabled",        "SSC Enabled",         "boolean"},
        {&dipm::DIPMEnabled,                      "DIPMEnabled",       "DIPM Enabled",        "boolean"},
        {&write_cache::WriteCacheEnabled,         "WriteCacheEnabled", "Write Cache Enabled", "boolean"},
    };
    // clang-format on
    for (const Row& row : FORWARDERS) {
        SCOPED_TRACE(row.name);
        const core::Attribute attribute = row.make();
        EXPECT_EQ(attribute.getName(), row.name);
        EXPECT_EQ(attribute.getDisplayName(), row.displayName);
        EXPECT_EQ(attribute.getType(), row.type);
    }
}

}  // namespace
}  // namespace orvel::features
