#include "simulator/DefaultFleet.h"

namespace orvel::simulator {

namespace {

// What isn't mentioned is that of a typical drive of the kind.
constexpr std::string_view DESCRIPTION = R"json({
  "drives": [
    {
      "kind": "NVMe",
      "devicePath": "/dev/nvme0",
      "model": "NORVO NX4510 1.6TB",
      "serialNumber": "NVX4510A0001K1P6",
      "firmware": "NX45A120",
      "bootloader": "NX45B012",
      "capacity": 1600321314816,
      "features": {"0xE2": {"saved": {"0": 1}}},
      "vendorLogs": {
        "0xCA": {
          "TimedWorkloadMediaWear": 1536,
          "TimedWorkloadHostReads": 68,
          "TimedWorkloadTimer": 14400
        }
      }
    },
    {
      "kind": "NVMe",
      "devicePath": "/dev/nvme1",
      "model": "NORVO NX4610 3.2TB",
      "serialNumber": "NVX4610B0002M3P2",
      "firmware": "NX46A210",
      "bootloader": "NX46B020",
      "capacity": 3200631791616,
      "identifyController": {"CMIC": 3},
      "controllers": [0, 1],
      "namespaces": {
        "1": {"capacity": 1600321314816, "controllers": [0, 1], "identify": {"NMIC": 1}},
        "2": {"capacity": 800166076416, "controllers": [0], "identify": {"FLBAS": 1}},
        "3": {"capacity": 400088457216, "controllers": []}
      },
      "vendorLogs": {
        "0xCA": {
          "TimedWorkloadMediaWear": "0xFFFFFFFFFFFFFFFF",
          "TimedWorkloadHostReads": "0xFFFFFFFFFFFFFFFF",
          "TimedWorkloadTimer": 0
        }
      }
    },
    {
      "kind": "NVMe",
      "devicePath": "/dev/nvme2",
      "model": "NORVO NX4510 800GB",
      "serialNumber": "NVX4510A0003H800",
      "firmware": "NX45A130",
      "bootloader": "NX45B012",
      "capacity": 800166076416,
      "smartHealthLog": {
        "CriticalWarning": "0x05",
        "CompositeTemperature": 331,
        "AvailableSpare": 4,
        "AvailableSpareThreshold": 10,
        "PercentageUsed": 108,
        "DataUnitsRead": 4211983221,
        "DataUnitsWritten": 9876543210,
        "HostReadCommands": 88123456789,
        "HostWriteCommands": 151234567890,
        "ControllerBusyTime": 211904,
        "PowerCycles": 214,
        "PowerOnHours": 39412,
        "UnsafeShutdowns": 19,
        "MediaAndDataIntegrityErrors": 37,
        "NumberOfErrorInformationLogEntries": 41,
        "WarningCompositeTemperatureTime": 96,
        "TemperatureSensor1": 331,
        "TemperatureSensor2": 338
      },
      "errorLog": [
        {"ErrorCount": 41, "SubmissionQueueID": 3, "CommandID": 118, "StatusField": "0x4502",
         "ParameterErrorLocation": "0xFFFF", "LBA": 912345678, "Namespace": 1},
        {"ErrorCount": 40, "SubmissionQueueID": 5, "CommandID": 77, "StatusField": "0x4502",
         "ParameterErrorLocation": "0xFFFF", "LBA": 912345672, "Namespace": 1},
        {"ErrorCount": 39, "SubmissionQueueID": 3, "CommandID": 9, "StatusField": "0x4500",
         "ParameterErrorLocation": "0xFFFF", "LBA": 401122334, "Namespace": 1}
      ],
      "selfTestResults": [
        {"DeviceSelfTestStatus": "0x27", "SegmentNumber": 4, "ValidDiagnosticInformation": 3,
         "POH": 39388, "NSID": 1, "FailingLBA": 912345678}
      ],
      "selfTestOutcome": 7,
      "vendorLogs": {
        "0xC5": {"CurrentTemperature": 58, "HighestLifetimeTemperature": 81},
        "0xCA": {
          "ProgramFailCount": 1893,
          "EraseFailCount": 412,
          "MinNandEraseCycles": 2811,
          "MaxNandEraseCycles": 3462,
          "AverageNandEraseCycles": 3240,
          "CrcErrorCount": 12,
          "TimedWorkloadMediaWear": 110592,
          "TimedWorkloadHostReads": 37,
          "TimedWorkloadTimer": 2364720,
          "ThermalThrottleCount": 6,
          "MediaBytesWritten": 188377244,
          "HostBytesWritten": 150702765
        }
      }
    },
    {
      "kind": "SATA",
      "devicePath": "/dev/sda",
      "model": "NORVO SX3110 480GB",
      "serialNumber": "NSX3110C0004G480",
      "firmware": "SX31A044",
      "bootloader": "SX31B007",
      "capacity": 480103981056,
      "smartAttributes": {
        "226": {"raw": 512},
        "227": {"raw": 71},
        "228": {"raw": 9840}
      }
    },
    {
      "kind": "SATA",
      "devicePath": "/dev/sdb",
      "model": "NORVO SX3110 960GB",
      "serialNumber": "NSX3110C0005G960",
      "firmware": "SX31A040",
      "bootloader": "SX31B007",
      "capacity": 960197124096,
      "smartAttributes": {
        "5": {"normalized": 4, "worst": 4, "raw": 2216},
        "9": {"normalized": 96, "worst": 96, "raw": 30211},
        "12": {"raw": 388},
        "170": {"normalized": 14, "worst": 14, "raw": 2216},
        "171": {"raw": 61},
        "187": {"normalized": 69, "worst": 69, "raw": 31},
        "197": {"normalized": 95, "worst": 95, "raw": 24},
        "199": {"normalized": 98, "worst": 98, "raw": 187},
        "226": {"raw": 0},
        "227": {"raw": 0},
        "228": {"raw": 75},
        "232": {"normalized": 14, "worst": 14, "raw": 14},
        "233": {"normalized": 41, "worst": 41, "raw": 59}
      },
      "errorCount": 31,
      "errorLog": [
        {
          "commands": [
            {"Feature": 8, "Count": 40, "LBA7To0": 56, "LBA15To8": 30, "LBA23To16": 214,
             "LBA31To24": 8, "Device": 64, "Command": "0x60", "Timestamp": 81452210},
            {"Count": 8, "LBA7To0": 64, "LBA15To8": 30, "LBA23To16": 214, "LBA31To24": 8,
             "Device": 64, "Command": "0x25", "Timestamp": 81452318}
          ],
          "error": {"Error": "0x40", "Count": 8, "LBA7To0": 66, "LBA15To8": 30,
                    "LBA23To16": 214, "LBA31To24": 8, "Device": 64, "Status": "0x51",
                    "State": 3, "LifeTimestamp": 30208}
        },
        {
          "commands": [
            {"Count": 16, "LBA7To0": 128, "LBA15To8": 7, "LBA23To16": 19, "Device": 64,
             "Command": "0x35", "Timestamp": 12001877}
          ],
          "error": {"Error": "0x84", "Count": 16, "LBA7To0": 128, "LBA15To8": 7,
                    "LBA23To16": 19, "Device": 64, "Status": "0x51", "State": 3,
                    "LifeTimestamp": 29977}
        }
      ],
      "selfTestResults": [
        {"SelfTestNumber": 2, "ExecutionStatus": "0x79", "LifeTimestamp": 30209,
         "FailingLBA": 148250178},
        {"SelfTestNumber": 1, "ExecutionStatus": 0, "LifeTimestamp": 28800}
      ],
      "selfTestOutcome": 7,
      "selfTestFailingLba": 148250178,
      "smartData": {"SelfTestExecutionStatus": "0x79"},
      "deviceStatistics": {
        "1": {"LifetimePowerOnResets": 388, "PowerOnHours": 30211},
        "4": {"ReportedUncorrectableErrors": 31},
        "6": {"InterfaceCRCErrors": 187},
        "7": {"PercentageUsedEndurance": 59}
      },
      "phyEventCounters": {"0x001": 187, "0x002": 181, "0x004": 181, "0x005": 6, "0x007": 6,
                           "0x00B": 187, "0x00F": 181, "0x012": 6}
    },
    {
      "kind": "SATA",
      "devicePath": "/dev/sdc",
      "model": "NORVO SX3520 1.9TB",
      "serialNumber": "NSX3520D0006T1P9",
      "firmware": "SX35B102",
      "bootloader": "SX35B004",
      "capacity": 1920383410176,
      "partitions": [
        {"path": "/dev/sdc1", "fileSystemType": "vfat", "offset": 1048576, "size": 536870912},
        {"path": "/dev/sdc2", "fileSystemType": "ext4", "offset": 537919488,
         "size": 1919844089856}
      ],
      "security": {"isFrozen": true}
    },
    {
      "kind": "SATA",
      "devicePath": "/dev/sdd",
      "model": "NORVO SX3520 480GB",
      "serialNumber": "NSX3520D0007G480",
      "firmware": "SX35B102",
      "bootloader": "SX35B004",
      "capacity": 480103981056,
      "raid": {"volumeName": "Volume0", "setIndex": 0, "type": 1, "driveCount": 2,
               "stripeSize": 64}
    },
    {
      "kind": "SATA",
      "devicePath": "/dev/sde",
      "model": "NORVO SX3520 480GB",
      "serialNumber": "NSX3520D0008G480",
      "firmware": "SX35B102",
      "bootloader": "SX35B004",
      "capacity": 480103981056,
      "raid": {"volumeName": "Volume0", "setIndex": 0, "type": 1, "driveCount": 2,
               "stripeSize": 64}
    }
  ]
}
)json";

}  // namespace

std::string_view defaultFleet() {
    return DESCRIPTION;
}

}  // namespace orvel::simulator
