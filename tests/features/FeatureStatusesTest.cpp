// Tests of the features' status table.
#include "features/FeatureStatuses.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <string>

namespace orvel::features::statuses {
namespace {

using core::Status;

/// The table's functions, in its order.
Status (*const TABLE[])() = {
#define STATUS(code, name, text) &name,
#include "features/FeatureStatuses.def"
};

struct Row {
    Status (*make)();
    std::int32_t code;
    const char* message;
};

// clang-format off
const Row ROWS[] = {
//   function                                    code  message
    {&notAnNorvoSsd,                               1,  "Drive is not an Norvo SSD."},
    {&driveDisabled,                               2,  "Selected drive is in a disable logical state."},
    {&featureNotSupportedByDrive,                  3,  "The selected drive does not support this feature."},
    {&invalidLogId,                                4,  "Invalid log ID given."},
    {&noDeviceSelected,                            5,  "No device selected."},
    {&multipleDevicesSelected,                     6,  "Multiple devices selected."},
    {&securityFrozen,                              7,  "The selected Norvo SSD is in the Security Frozen state. Secure Erase cannot run "
                                                       "until the Security Freeze Lock is cleared. To remove the lock, power-cycle the SSD "
                                                       "while the operating system is running. This can be done by unplugging and plugging "
                                                       "in the SSD."},
    {&secureErasePrepareFailed,                    8,  "Secure Erase Prepare command failed. Reboot your system and try again. If error "
                                                       "persists, consider using a DOS-based tool for Secure Erase."},
    {&secureEraseUnitFailed,                       9,  "Secure Erase Unit command failed. Reboot and try again. If error persists, consider "
                                                       "using a DOS-based tool for Secure Erase."},
    {&securitySetPasswordFailed,                  10,  "Security Set Password command failed. Reboot your system and try again. If error "
                                                       "persists, consider using a DOS-based tool for Secure Erase."},
    {&notRunnableOnRaidVolume,                    11,  "This feature cannot run on a RAID volume. Select a specific RAID member to run this "
                                                       "feature."},
    {&notRunnableOnRaidMember,                    12,  "This feature cannot run on a RAID member."},
    {&partOfStorageSpace,                         13,  "The selected Norvo SSD is part of a Storage Space. The SSD must be removed from the "
                                                       "Storage Space to use this feature."},
    {&ataSecurityNotSupported,                    14,  "Secure Erase cannot be run on the selected drive because ATA security is not "
                                                       "supported."},
    {&ataSecurityEnabled,                         15,  "The firmware cannot be updated on the selected drive because ATA security is "
                                                       "enabled. Consider turning off ATA security before updating the firmware with the "
                                                       "tool."},
    {&standbyImmediateFailed,                     16,  "Standby Immediate command failed. Reboot your system and try again. If error "
                                                       "persists, consider using a DOS-based tool for Secure Erase."},
    {&invalidFeatureId,                           17,  "Invalid feature ID given."},
    {&invalidPowerMode,                           18,  "Invalid power mode given. Valid modes are 0 1 and 2."},
    {&invalidTemperatureThreshold,                19,  "Invalid temperature threshold given."},
    {&sanitizeNotSupported,                       20,  "Sanitize command not supported on the selected device."},
    {&sanitizeCryptoScrambleNotSupported,         21,  "Sanitize crypto scramble not supported on the selected device."},
    {&sanitizeBlockEraseNotSupported,             22,  "Sanitize block erase not supported on the selected device."},
    {&sanitizeFrozen,                             23,  "The selected device is in the Sanitize Frozen state. Sanitize cannot run until the "
                                                       "Sanitize Freeze is cleared. To remove the freeze, power-cycle the SSD while the "
                                                       "operating system is running. This can be done by unplugging and plugging in the SSD."},
    {&unsupportedSanitizeValue,                   24,  "Unsupported value for sanitize."},
    {&sanitizeFailed,                             25,  "Sanitize command failed."},
    {&sanitizeFailedForUnknownReason,             26,  "Sanitize failed for an unknown reason."},
    {&invalidSecureEraseSetting,                  27,  "Invalid setting for secure erase."},
    {&invalidLbaFormat,                           28,  "Invalid LBA format."},
    {&invalidProtectionInformation,               29,  "Invalid protection information value."},
    {&invalidProtectionInformationLocation,       30,  "Invalid protection information location."},
    {&invalidMetadataSettings,                    31,  "Invalid metadata settings."},
    {&invalidFormatType,                          32,  "Invalid format type. Supported types are ATA sanitize, ATA secure erase, delete, "
                                                       "and NVMe format."},
    {&dataRetrievalFailed,                        33,  "Failed to retrieve data from selected device."},
    {&featureNotSupported,                        34,  "The desired feature is not supported."},
    {&invalidSmBusAddress,                        35,  "Invalid SM Bus address."},
    {&invalidProperty,                            36,  "Invalid property specified."},
    {&tooManyProperties,                          37,  "Too many properties specified for this feature."},
    {&noProperties,                               38,  "No properties specified for this feature."},
    {&propertyWithoutValue,                       39,  "No value associated with specified property."},
    {&sanitizeNotSupportedOnWindows,              40,  "Sanitize cannot be run on the selected drive because it is not a supported feature "
                                                       "under Windows Server 2012 R2, Windows 8, or newer."},
    {&secureEraseNotSupportedOnWindows,           41,  "Secure Erase cannot be run on the selected drive because it is not a supported "
                                                       "feature under Windows Server 2012, Windows 8, or newer."},
    {&invalidMaxAddressValue,                     42,  "Invalid max address value. Please select a positive value less than or equal to the "
                                                       "native max LBA."},
    {&invalidMaxAddressParameter,                 43,  "Invalid parameter for max address feature. Supported parameters are capacity, "
                                                       "native, percent, and value."},
    {&smartSelfTestNotSupported,                  44,  "The selected device does not support SMART Self-Test."},
    {&driveSelfTestFailed,                        45,  "Drive self-test failed."},
    {&invalidDriveSelfTestParameters,             46,  "Invalid parameter(s) for drive self test feature."},
    {&dipmNotSupported,                           47,  "Drive does not support DIPM."},
    {&writeCacheNotSupported,                     48,  "Drive does not support Write Cache."},
    {&noSctActionCode,                            49,  "No action code specified for SCT command."},
    {&noSctFunctionCode,                          50,  "No function code specified for SCT command."},
    {&invalidPhySpeed,                            51,  "Invalid PHY speed given. Supported values are: 1.5 3.0 and 6.0."},
    {&noFirmwareFileOrModule,                     52,  "No firmware file provided or module found."},
    {&firmwareUpdateFailed,                       53,  "Firmware update failed."},
    {&fileReadFailed,                             54,  "Failed reading a file necessary for the feature. Reboot and try again."},
    {&invalidSctDataTableCommand,                 55,  "Invalid SCT Data Table command."},
    {&invalidSctFeatureControlCommand,            56,  "Invalid SCT Feature Control command."},
    {&invalidWriteCacheState,                     57,  "Invalid write cache state option given. Valid options are: 1 2 and 3."},
    {&invalidPliTestTimeInterval,                 58,  "Invalid value given for PLI test time interval. Valid values are: 0-6 (inclusive)."},
    {&invalidSectorSize,                          59,  "Invalid sector size."},
    {&smartNotEnabled,                            60,  "SMART is not enabled."},
    {&invalidNlogData,                            61,  "Invalid Nlog data."},
    {&invalidErrorRecoveryTimer,                  62,  "Invalid Error Recovery Timer value."},
    {&invalidSsdGenerationForEnduranceAnalyzer,   63,  "Failed to start Endurance Analyzer. Invalid SSD Generation. Norvo Quillbrook SSD "
                                                       "must have firmware version 02M0 or newer."},
    {&firmwareCurrent,                            64,  "The selected Norvo SSD contains current firmware as of this tool release."},
    {&firmwareUpdateAvailable,                    65,  "Firmware update available for the selected Norvo SSD as of this tool release."},
    {&firmwareUnsupported,                        66,  "Your Norvo SSD has unsupported firmware. Please contact Norvo Customer Support for "
                                                       "further assistance at the following website: "
                                                       "https://www.norvo.example/go/ssdsupport."},
    {&firmwarePreProduction,                      67,  "Your Norvo SSD has pre-production firmware. Please contact Norvo Customer Support "
                                                       "for further assistance at the following website: "
                                                       "https://www.norvo.example/go/ssdsupport."},
    {&contactCustomerSupport,                     68,  "Please contact Norvo Customer Support for further assistance at the following "
                                                       "website: https://www.norvo.example/go/ssdsupport."},
    {&firmwareUpdateNeedsUpdateTool,              69,  "The firmware update process cannot be completed in Windows or Linux for this "
                                                       "firmware. Please use the Norvo SSD Firmware Update Tool."},
    {&contactRepresentativeAboutFirmware,         70,  "Please contact your Norvo representative about firmware update for this drive."},
    {&noFirmwareModule,                           71,  "No firmware module found."},
    {&invalidTargetAudience,                      72,  "Invalid target audience."},
    {&invalidFirmwareModuleType,                  73,  "Invalid firmware module type."},
    {&workloadInducedNoWear,                      74,  "Workload did not induce any wear on the drive. Expected life calculation is "
                                                       "invalid. Ensure that workloads run for an hour or more for valid calculations."},
    {&workloadIndicatorsReset,                    75,  "Media Workload Indicators have reset values. Run 60+ minute workload prior to "
                                                       "running the endurance analyzer."},
    {&noNamespaceId,                              76,  "No namespace ID given."},
    {&noControllerId,                             77,  "No controller ID given."},
    {&noNamespaceSize,                            78,  "No namespace size given."},
    {&invalidNamespaceManagementAction,           79,  "Invalid namespace management action. Supported actions are create, delete, attach, "
                                                       "and detach."},
    {&invalidNamespaceId,                         80,  "Invalid namespace ID given."},
    {&lbaFormatNotSupported,                      81,  "The LBA Format specified is not supported."},
    {&namespaceNeedsMoreSpace,                    82,  "More free space is required to create the namespace."},
    {&tooManyNamespaces,                          83,  "The number of namespaces supported has been exceeded."},
    {&thinProvisioningNotSupported,               84,  "Thin provisioning is not supported by the controller."},
    {&controllerAlreadyAttached,                  85,  "The specified controller is already attached to the given namespace."},
    {&privateNamespaceAlreadyAttached,            86,  "Could not attach the given controller. The specified namespace is private and is "
                                                       "already attached to one controller."},
    {&controllerNotAttached,                      87,  "The specified controller is not attached to the given namespace."},
    {&invalidControllerList,                      88,  "The controller list provided is invalid."},
    {&invalidPhyConfig,                           89,  "Invalid PHY Config value given. Supported values are: 0 1 2 and 3."},
    {&invalidPhyConfigSettings,                   90,  "Invalid PHY Config settings given."},
    {&enduranceManagerNotSupported,               91,  "Enabling endurance manager is not supported."},
    {&invalidAssertLogData,                       92,  "Invalid assert log data."},
    {&invalidEventLogData,                        93,  "Invalid event log data."},
    {&driveContainsPartition,                     94,  "Selected Drive contains a partition. Remove all partitions to proceed."},
    {&timedWorkloadResetFailed,                   95,  "Failed to reset the timed workload attributes."},
    {&trimNotSupported,                           96,  "Drive does not support Trim."},
    {&partitionWithoutDriveLetter,                97,  "Selected Partition has no drive letter."},
    {&partitionNotNtfs,                           98,  "Selected Partition is not NTFS."},
    {&partitionDynamic,                           99,  "Selected Partition is a dynamic partition."},
    {&partitionWithoutEnoughSpace,               100,  "Selected Partition does not have enough free space for this feature."},
    {&partitionOffsetUnreadable,                 101,  "Unable to read the partition offset."},
    {&vssServiceDisabled,                        102,  "VSS service is disabled. Unable to run this feature."},
    {&partitionHandleCreationFailed,             103,  "Unable to create HANDLE for the partition."},
    {&fileCreationFailed,                        104,  "Unable to create file."},
    {&fileResizeFailed,                          105,  "Failed to change the size of the file."},
    {&filePinFailed,                             106,  "Failed to pin the file."},
    {&notSupportedOnOperatingSystem,             107,  "This feature is not supported on this operating system."},
    {&partitionNotOnDevice,                      108,  "This selected partition was not found on the selected device."},
    {&canceled,                                  109,  "Canceled."},
    {&optimizerNeedsRaid0,                       110,  "The Norvo SSD Optimizer can only run on a RAID0 array using an Norvo Velo driver "
                                                       "version 11.0 or later."},
    {&optimizerNeedsNewerRaidDriver,             111,  "The Norvo SSD Optimizer cannot run on a RAID array using an Norvo Velo driver "
                                                       "version earlier than 11.0. Consider upgrading to Norvo Velo 11.0 or newer to "
                                                       "utilize the SSD Optimizer with a RAID0 array."},
    {&optimizerRaidNotHealthy,                   112,  "The Norvo SSD Optimizer cannot run on the selected RAID array because it is "
                                                       "degraded, rebuilding, or in a failed state."},
    {&optimizerRaidNotSupportedOnWindows,        113,  "The Norvo SSD Optimizer cannot run on a RAID array under Windows Server 2012, "
                                                       "Windows 8, or newer."},
    {&vssServiceQueryFailed,                     114,  "Failed to query the VSS service."},
    {&temporaryFileLbasUnreadable,               115,  "Failed to read LBAs associated with the temporary file."},
    {&setPrivilegesFailed,                       116,  "Failed to set required privileges."},
    {&restorePrivilegesFailed,                   117,  "Failed to restore privileges."},
    {&serviceConnectionFailed,                   118,  "Failed to connect to the service."},
    {&lbaNotInUserRange,                         119,  "Given LBA is not in user LBA range."},
    {&countExceedsLbaRange,                      120,  "Given count will exceed LBA range."},
    {&invalidWriteSamePattern,                   121,  "Invalid write same pattern given."},
    {&noFormattedPartition,                      122,  "The selected Norvo SSD does not have a formatted partition. This feature requires a "
                                                       "formatted partition to run."},
    {&readErrorDetected,                         123,  "An error was detected reading data from the selected Norvo SSD."},
    {&fileOpenFailed,                            124,  "Failed opening a file necessary for the feature. Reboot and try again."},
    {&featureOptimized,                          125,  "Feature is optimized."},
    {&featureNotOptimized,                       126,  "Feature is not optimized."},
    {&featureNotImplemented,                     127,  "Feature is not implemented."},
    {&defragDisableFailed,                       128,  "Failed to disable defrag."},
    {&defragStateNotSettable,                    129,  "The tool cannot set the state of defrag, but the operating system may do so "
                                                       "automatically for SSDs."},
    {&configDefragError,                         130,  "Config Defrag encountered an error. See tool log for more details."},
    {&configDefragNotFound,                      131,  "Config Defrag not found."},
    {&raidDetected,                              132,  "Norvo RAID Detected."},
    {&windowsServiceStopped,                     133,  "Windows service is stopped."},
    {&windowsServiceNotStopped,                  134,  "Windows service is not stopped."},
    {&windowsServiceError,                       135,  "Error with Windows service."},
    {&windowsServiceDisabled,                    136,  "Windows service is disabled."},
    {&windowsServiceNotDisabled,                 137,  "Windows service is not disabled."},
    {&systemTunerRollbackFailed,                 138,  "System tuner rollback failed."},
    {&systemNotTuned,                            139,  "System configuration was not tuned."},
    {&systemAlreadyTuned,                        140,  "System configuration is already tuned."},
    {&registryReadError,                         141,  "Error reading the registry."},
    {&registrySettingEnabled,                    142,  "Registry setting is enabled."},
    {&registrySettingDisabled,                   143,  "Registry setting is disabled."},
    {&superfetchRegistryError,                   144,  "Error checking superfetch registry."},
    {&superfetchServiceError,                    145,  "Error checking superfetch service."},
    {&readyboostServiceError,                    146,  "Error checking Readyboost service."},
    {&dataIntegrityMismatch,                     147,  "Data mismatch during data inegrity scan."},
    {&optimizerRaidFilePointerError,             148,  "Error setting file pointer in Optimizer RAID check."},
    {&optimizerRaidWriteFileError,               149,  "Error with WriteFile in Optimizer RAID check."},
    {&optimizerRaidVendorReadError,              150,  "Vendor Read error in Optimizer RAID check."},
    {&optimizerRaidDetected,                     151,  "Optimizer RAID detected."},
    {&optimizerRaidPrompt,                       152,  "Optimizer RAID prompt."},
    {&optimizerDecompressionFailed,              153,  "Optimizer failed to decompress files."},
    {&optimizerBufferCreationFailed,             154,  "Optimizer failed to create buffers."},
    {&running,                                   155,  "Running"},
    {&dipmNotSupportedByStorageDriver,           156,  "Current storage driver does not support DIPM settings."},
    {&systemNotLaptop,                           157,  "System is not a laptop."},
    {&firmwareUpdateNeedsTavik,                  158,  "The firmware update process cannot be completed. Please use the Norvo SSD Tavik."},
    {&featurePending,                            159,  "The feature is pending."},
    {&opalNotActivated,                          160,  "The selected drive cannot run this feature. Opal is not activated or is in an "
                                                       "unknown state."},
    {&edriveEnablingNotSupported,                161,  "Enabling eDrive with this tool is not supported on the selected Norvo SSD. Please "
                                                       "ensure the tool and the drive's firmware are up to date."},
    {&edriveAlreadySupported,                    162,  "eDrive is already supported."},
    {&configurationBlockedBySecurity,            163,  "The configuration cannot be updated on the selected drive because security is "
                                                       "enabled. Consider turning off security before changing the configuration with the "
                                                       "tool."},
    {&configurationUpdateFailed,                 164,  "Configuration update failed."},
    {&notRunnableWithCurrentDriver,              165,  "This feature cannot be ran with the current driver. Try installing the Norvo NVMe "
                                                       "driver and run the feature again."},
    {&opalActivated,                             166,  "Device is Opal Activated."},
    {&streamAllocationFailed,                    167,  "Failed to allocate stream resources."},
    {&fileWriteFailed,                           168,  "Failed to write to file."},
    {&invalidPpid,                               169,  "Invalid PPID. Max size is 24 characters"},
    {&setPpidFailed,                             170,  "Failed to set PPID."},
    {&formatFailed,                              171,  "Failed to format drive."},
    {&driveNotAsserted,                          172,  "Drive is not asserted."},
    {&statusNotFound,                            173,  "Failed to find a status."},
    {&invalidFirmwareCommitAction,               174,  "Invalid firmware commit action value."},
    {&invalidFirmwareSlot,                       175,  "Invalid firmware slot value."},
    {&resetAfterFirmwareActivateFailed,          176,  "Reset failed after successful firmware activate. Attempt a power cycle to apply "
                                                       "firmware."},
    {&nlogAnalysisFailed,                        177,  "Failed to analyze nlogs."},
    {&endOfNlogBuffer,                           178,  "Reached the end of the nLog buffer."},
    {&invalidNlogEvent,                          179,  "Not a valid nLog event."},
    {&dieOffline,                                180,  "Die offline. Data loss possible."},
    {&criticalErrorCaught,                       181,  "Critical error caught by drive. Drive is in a disable logical state."},
    {&potentiallyCriticalHardwareError,          182,  "Potentially critical hardware error."},
    {&potentiallyCriticalNandError,              183,  "Potentially critical NAND error."},
    {&potentiallyCriticalFirmwareError,          184,  "Potentially critical firmware error."},
    {&dataLossByLbaMismatch,                     185,  "Data loss due to caught LBA mismatch."},
    {&dataLossByNandError,                       186,  "Data loss due to NAND error(s)."},
    {&xorDisabling,                              187,  "XOR disabling. Data loss will occur on the next NAND fatal event."},
    {&wmiInitializationFailed,                   188,  "Failed to initialize WMI."},
    {&wmiQueryFailed,                            189,  "Failed to query desired WMI object."},
    {&wmiNextObjectFailed,                       190,  "Failed to retrieve next WMI class object."},
    {&failureInLogData,                          191,  "Failure detected in log data."},
    {&restrictedOnOsDrive,                       192,  "Restricted feature on OS drive."},
    {&noPartitionForDriveLetter,                 193,  "No partitions found for specified drive letter."},
    {&directoryCreationFailed,                   194,  "Failed to create directory."},
    {&invalidNlogHeader,                         195,  "Invalid Nlog Header."},
    {&directoryNotFound,                         196,  "Directory does not exist."},
    {&driveNotDisabled,                          197,  "Drive needs to be in disable logical state to run feature."},
    {&backgroundProcessRunning,                  198,  "Background process is running."},
    {&backgroundProcessNotRunning,               199,  "Background process is not running."},
    {&telemetryRetrievalFailed,                  200,  "Failed to retrieve telemetry data."},
    {&invalidAggregationThreshold,               201,  "Invalid Aggregate threshold given."},
    {&invalidAggregationTime,                    202,  "Invalid Aggregate Time given."},
    {&aggregationRetrievalFailed,                203,  "Failed to retrieve Aggregate Data."},
    {&invalidSerdesGroup,                        204,  "Invalid SerDes group specified."},
    {&invalidSerdesLane,                         205,  "Invalid SerDes lane specified."},
    {&alreadyLoggingToFile,                      206,  "Already logging tool debug to file."},
    {&deviceUnhealthy,                           207,  "Device is unhealthy based on device status calculations."},
    {&driveSelfTestNotSupported,                 208,  "Drive Self-Test Not Supported."},
    {&driveSelfTestInProgress,                   209,  "Drive Self-Test Already In Progress."},
    {&invalidMaxAddressSectorSize,               210,  "Invalid sector size for max address."},
    {&firmwareUpdateNeedsReboot,                 211,  "Firmware update successful. Please reboot to apply update."},
};

// clang-format on

TEST(FeatureStatuses, HasItsRowsInTheOrderOfTheirCodes) {
    ASSERT_EQ(std::size(TABLE), 211U);
    ASSERT_EQ(std::size(ROWS), 211U);
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(ROWS[i].message);
        EXPECT_EQ(TABLE[i], ROWS[i].make);
    }
}

TEST(FeatureStatuses, MakesEachRow) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.message);
        const Status status = row.make();
        EXPECT_EQ(status.getCategory(), 10);
        EXPECT_EQ(status.getCode(), row.code);
        EXPECT_EQ(status.getMessage(), row.message);
    }
}

TEST(FeatureStatuses, MakesANewValueAtEachCall) {
    Status changed = sanitizeFailed();
    changed.setMessage("With detail");
    EXPECT_TRUE(changed == sanitizeFailed());
    EXPECT_NE(sanitizeFailed().getMessage(), "With detail");
}

}  // namespace
}  // namespace orvel::features::statuses
