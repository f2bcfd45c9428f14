// Words and numbers that the tool and the feature library agree on: job names, log pages, modes.
#pragma once

#include <cstdint>

// clang-format off
namespace orvel::interfaces::orveli::jobs {

// The words that select a job in a request.
// Intended: the words of IEEE1667 and NVMeGetLog differ from their names.
inline constexpr const char* AssertLog              = "AssertLog";
inline constexpr const char* BackgroundProcessing   = "BackgroundProcessing";
inline constexpr const char* BridgeNlog             = "BridgeNlog";
inline constexpr const char* DIPM                   = "DIPM";
inline constexpr const char* Directives             = "Directives";
inline constexpr const char* DriveSelfTest          = "DriveSelfTest";
inline constexpr const char* EnduranceAnalyzer      = "EnduranceAnalyzer";
inline constexpr const char* EnduranceManager       = "EnduranceManager";
inline constexpr const char* EraseAssert            = "EraseAssert";
inline constexpr const char* ErrorRecoveryControl   = "ErrorRecoveryControl";
inline constexpr const char* EventLog               = "EventLog";
inline constexpr const char* EyeDiagram             = "EyeDiagram";
inline constexpr const char* FirmwareActivate       = "FirmwareActivate";
inline constexpr const char* FirmwareUpdate         = "FirmwareUpdate";
inline constexpr const char* ForceFlush             = "ForceFlush";
inline constexpr const char* Format                 = "Format";
inline constexpr const char* GPL                    = "GPL";
inline constexpr const char* HDATemperature         = "HDATemperature";
inline constexpr const char* HealthMetrics          = "HealthMetrics";
inline constexpr const char* HealthScan             = "HealthScan";
inline constexpr const char* IEEE1667               = "EnableEdrive";
inline constexpr const char* Identify               = "Identify";
inline constexpr const char* NorvoSSD               = "NorvoSSD";
inline constexpr const char* LatencyTracking        = "LatencyTracking";
inline constexpr const char* LedActivity            = "LedActivity";
inline constexpr const char* LowLevelFormat         = "LowLevelFormat";
inline constexpr const char* MaxAddress             = "MaxAddress";
inline constexpr const char* NCQSupport             = "NCQSupport";
inline constexpr const char* NVMeAdminCommand       = "NVMeAdminCommand";
inline constexpr const char* NVMeFeatures           = "NVMeFeatures";
inline constexpr const char* NVMeGetLog             = "NVMeLog";
inline constexpr const char* NamespaceManagement    = "NamespaceManagement";
inline constexpr const char* Nlog                   = "Nlog";
inline constexpr const char* Optimizer              = "Optimizer";
inline constexpr const char* PSIDRevert             = "PSIDRevert";
inline constexpr const char* PartitionInformation   = "PartitionInformation";
inline constexpr const char* Performance            = "Performance";
inline constexpr const char* PhyConfig              = "PhyConfig";
inline constexpr const char* PhyCounters            = "PhyCounters";
inline constexpr const char* PhySpeed               = "PhySpeed";
inline constexpr const char* PowerGovernor          = "PowerGovernor";
inline constexpr const char* SCTFeatureControl      = "SCTFeatureControl";
inline constexpr const char* SMART                  = "SMART";
inline constexpr const char* SecurityInformation    = "SecurityInformation";
inline constexpr const char* SpreadSpectrumClocking = "SpreadSpectrumClocking";
inline constexpr const char* StandbyImmediate       = "StandbyImmediate";
inline constexpr const char* SystemParser           = "SystemParser";
inline constexpr const char* TelemetryLog           = "TelemetryLog";
inline constexpr const char* ThermalThrottle        = "ThermalThrottle";
inline constexpr const char* TimeToReady            = "TimeToReady";
inline constexpr const char* Trim                   = "Trim";
inline constexpr const char* WriteCache             = "WriteCache";
inline constexpr const char* WriteSame              = "WriteSame";

}  // namespace orvel::interfaces::orveli::jobs

namespace orvel::features {

/// Text of a property that a job does not have.
inline constexpr const char* PROPERTY_NOT_FOUND = "Property not found";

namespace nvme_get_log::log_ids {

// Log page identifiers of the NVMe Get Log Page command.
inline constexpr std::uint32_t ERROR_INFO         = 1;
inline constexpr std::uint32_t SMART_HEALTH       = 2;
inline constexpr std::uint32_t FIRMWARE_SLOT_INFO = 3;
inline constexpr std::uint32_t TEMP_STATISTICS    = 197;
inline constexpr std::uint32_t QUEUE_METRICS      = 203;

}  // namespace nvme_get_log::log_ids

namespace nvme_get_log::log_names {

inline constexpr const char* ErrorInfo             = "ErrorInfo";
inline constexpr const char* SmartHealthInfo       = "SmartHealthInfo";
inline constexpr const char* FirmwareSlotInfo      = "FirmwareSlotInfo";
inline constexpr const char* TemperatureStatistics = "TemperatureStatistics";
inline constexpr const char* QueueMetrics          = "QueueMetrics";

// Logs that are named without an identifier constant.
inline constexpr const char* ChangedNamespaceList = "ChangedNamespaceList";
inline constexpr const char* CommandEffectsLog    = "CommandEffectsLog";

}  // namespace nvme_get_log::log_names

namespace identify::nvme::structures {

// Values of the CNS field of the NVMe Identify command.
inline constexpr std::uint8_t CONTROLLER_DATA              = 1;
inline constexpr std::uint8_t ATTACHED_NAMESPACE_LIST      = 2;
inline constexpr std::uint8_t ALLOCATED_NAMESPACE_LIST     = 16;
inline constexpr std::uint8_t NAMESPACE_DATA_WITH_NSID     = 17;
inline constexpr std::uint8_t CONTROLLERS_ATTACHED_TO_NSID = 18;
inline constexpr std::uint8_t ALL_CONTROLLERS              = 19;

}  // namespace identify::nvme::structures

namespace drive_self_test::constants {

inline constexpr const char* OFFLINE_MODE         = "offline";
inline constexpr const char* CAPTIVE_MODE         = "captive";
inline constexpr const char* TEST_TYPE_SHORT      = "short";
inline constexpr const char* TEST_TYPE_EXTENDED   = "extended";
inline constexpr const char* TEST_TYPE_CONVEYANCE = "conveyance";
inline constexpr const char* TEST_TYPE_STATUS     = "status";
inline constexpr const char* TEST_TYPE_ABORT      = "abort";

}  // namespace drive_self_test::constants

namespace format::types {

inline constexpr const char* ATA_SANITIZE     = "ATASanitize";
inline constexpr const char* ATA_SECURE_ERASE = "ATASecureErase";
inline constexpr const char* DELETE_TYPE      = "Delete";
inline constexpr const char* NVME_FORMAT      = "NVMeFormat";

}  // namespace format::types

namespace namespace_management::actions {

inline constexpr const char* ATTACH        = "attach";
inline constexpr const char* DETACH        = "detach";
inline constexpr const char* CREATE        = "create";
inline constexpr const char* DELETE_ACTION = "delete";

}  // namespace namespace_management::actions

namespace health_scan {

inline constexpr const char* HEALTH_SCAN_STATUS_CODE_NAME = "HealthScanStatusCode";

}  // namespace health_scan

}  // namespace orvel::features

// clang-format on
