// The drive feature's language, spelled out: each command in the order in which help lists it,
// with its usage line and every flag and text of its parts.
#include "tool/DriveCommandTable.h"

#include "tool/NorvoSSDFeature.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace tavik::norvossd {
namespace {

using cli::framework::CommandPart;
using cli::framework::CommandSpec;

constexpr bool OPTIONAL = false;
constexpr bool REQUIRED = true;

/// What a named part's value is.
enum class Value { required, open, none };

struct Part {
    const char* name;
    bool required;
    Value value;
    const char* shortName;
    const char* valueText;
    const char* helpText;
};

struct Command {
    int id;
    const char* verb;
    const char* name;
    const char* helpText;
    std::vector<const Part*> targets;
    std::vector<const Part*> options;
    std::vector<Part> properties;
    const char* usage;
};

// clang-format off

// name, presence, value, short form, value text, help text
const Part HELP = {"-help", OPTIONAL, Value::open, "-h",
    "",
    "Display help for the command."};
const Part DISPLAY = {"-display", OPTIONAL, Value::required, "-d",
    "Property1,...",
    "Specify which attributes are displayed."};
const Part ALL = {"-all", OPTIONAL, Value::none, "-a",
    "",
    "Display all possible attributes."};
const Part FORCE = {"-force", OPTIONAL, Value::none, "-f",
    "",
    "Force the operation"};
const Part DESTINATION = {"-destination", OPTIONAL, Value::required, "",
    "path",
    "Path to the destination file."};

const Part ASSERTLOG = {"-assertlog", REQUIRED, Value::none, "",
    "",
    "assertlog target is required."};
const Part EVENTLOG = {"-eventlog", REQUIRED, Value::none, "",
    "",
    "eventlog target is required."};
const Part EYE_DIAGRAM = {"-eye_diagram", REQUIRED, Value::none, "",
    "",
    "Target for reading the eye diagram."};
const Part GPL = {"-gpl", REQUIRED, Value::required, "",
    "log address",
    "Specify the GPL log address to ready from"};
const Part HDATEMPERATURE = {"-hdatemperature", REQUIRED, Value::none, "",
    "",
    "HDA temperature target is required."};
const Part IDENTIFY = {"-identify", REQUIRED, Value::none, "",
    "",
    "Identify target is required."};
const Part NORVOSSD_A = {"-norvossd", REQUIRED, Value::required, "",
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path is required."};
const Part NORVOSSD_B = {"-norvossd", REQUIRED, Value::open, "",
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path can be used to select a single Norvo SSD."};
const Part NORVOSSD_C = {"-norvossd", OPTIONAL, Value::open, "",
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path"};
const Part LATENCYSTATISTICS = {"-latencystatistics", REQUIRED, Value::required, "",
    "'reads'|'writes'",
    "Latency statistics logs for read and write commands."};
const Part NAMESPACE_A = {"-namespace", REQUIRED, Value::required, "",
    "namespace id",
    "Namespace target and namespace ID is required."};
const Part NAMESPACE_B = {"-namespace", REQUIRED, Value::none, "",
    "",
    "Namespace target is required."};
const Part NAMESPACE_C = {"-namespace", OPTIONAL, Value::required, "",
    "integer | 'attached' | 'allocated'",
    "Namespace target is required."};
const Part NAMESPACE_D = {"-namespace", OPTIONAL, Value::required, "",
    "namespace id",
    "Namespace target is optional. Must specify namespace ID if being used."};
const Part NLOG = {"-nlog", REQUIRED, Value::none, "",
    "",
    "nlog target is required."};
const Part NVMECONTROLLER_A = {"-nvmecontroller", REQUIRED, Value::none, "",
    "",
    "NVMeController target."};
const Part NVMECONTROLLER_B = {"-nvmecontroller", OPTIONAL, Value::required, "",
    "controller ID integer",
    "NVMe Controller target is option. Must specify controller ID if being used."};
const Part NVMECONTROLLER_C = {"-nvmecontroller", OPTIONAL, Value::none, "",
    "",
    "NVMeController target."};
const Part NVMEFORMAT = {"-nvmeformat", REQUIRED, Value::none, "",
    "",
    "Target for issuing NVMe format."};
const Part NVMELOG = {"-nvmelog", REQUIRED, Value::open, "",
    "'ErrorInfo'|'SmartHealthInfo'|'FirmwareSlotInfo'|'TemperatureStatistics'|'QueueMetrics'",
    "Read and parse the given NVMe log."};
const Part PERFORMANCE = {"-performance", REQUIRED, Value::none, "",
    "",
    "Performance target is required."};
const Part PHYCOUNTERS = {"-phycounters", REQUIRED, Value::none, "",
    "",
    "PHY Counters target is required."};
const Part SELFTEST = {"-selftest", REQUIRED, Value::open, "",
    "'short'|'extended'|'conveyance'",
    "Run a drive selft test on the selected device(s). Unless specified, a short test is ran."};
const Part SENSOR = {"-sensor", REQUIRED, Value::none, "",
    "",
    "Sensor target is required."};
const Part SMART = {"-smart", REQUIRED, Value::open, "",
    "id",
    "Smart target is required."};
const Part STANDBY = {"-standby", REQUIRED, Value::none, "",
    "",
    "standby target is required."};

const Command COMMANDS[] = {
    {0, "show", "NorvoSSD",
     "Get a list of Norvo SSDs attached to a system. The default behavior is to list a few key "
     "properties for each device; the options can be used to expand/restrict the output. If more "
     "than one device is installed output can be restricted to a single device by supplying its "
     "index.",
     {&NORVOSSD_B}, {&HELP, &DISPLAY, &ALL},
     {},
     "show [-help|-h] [-display|-d (Property1,...)] [-all|-a] -norvossd "
     "[(Index|SerialNumber|PhysicalPath)]"},
    {1, "set", "EnduranceAnalyzer",
     "Reset the device's timed workload indicators used to calculate the EnduranceAnalyzer "
     "property. Supports SATA and NVMe devices.",
     {&NORVOSSD_A}, {&HELP},
     {{"EnduranceAnalyzer", REQUIRED, Value::required, "",
       "'reset'",
       ""}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) EnduranceAnalyzer = ('reset')"},
    {3, "set", "PhyConfig",
     "Set the SATA device's PHY configuration. The device must be power cycled after changing "
     "the configuration.",
     {&NORVOSSD_A}, {&HELP},
     {{"PhyConfig", REQUIRED, Value::required, "",
       "0|1|2|3",
       "0 = Default enterprise settings. 1 = Client settings. 2 = Alternate enterprise settings. "
       "3 = Server settings."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) PhyConfig = (0|1|2|3)"},
    {4, "set", "PhysicalSectorSize",
     "Set the SATA device's physical sector size.",
     {&NORVOSSD_A}, {&HELP},
     {{"PhysicalSectorSize", REQUIRED, Value::required, "",
       "512|4096",
       "Values are in byte units."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) PhysicalSectorSize = (512|4096)"},
    {5, "set", "PLITestTimeInterval",
     "Set the SATA device's PLI test time interval. All values except 0 will do an immediate "
     "test when set.",
     {&NORVOSSD_A}, {&HELP},
     {{"PLITestTimeInterval", REQUIRED, Value::required, "",
       "0-6",
       "0 = stop, no immediate test. 1 = stop. 2 = 60 min. 3 = 1440 min. 4 = 4320 min. 5 = 10080 "
       "min. 6 = 20160 min."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) PLITestTimeInterval = (0-6)"},
    {6, "set", "PowerGovernorMode",
     "Set the device's Power Governor Mode. Supports SATA and NVMe devices.",
     {&NORVOSSD_A}, {&HELP},
     {{"PowerGovernorMode", REQUIRED, Value::required, "",
       "0|1|2",
       "0 = SATA: Unconstrained, NVMe: High. 1 = SATA: Typical(7W), NVMe: Medium. 2 = SATA: "
       "Low(5W), NVMe: Low."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) PowerGovernorMode = (0|1|2)"},
    {7, "set", "ReadErrorRecoveryTime",
     "Set the SATA device's read error recovery control timer value.",
     {&NORVOSSD_A}, {&HELP},
     {{"ReadErrorRecoveryTimer", REQUIRED, Value::required, "",
       "value",
       "value must be a decimal integer literal. Supported values are 0-65535. Value is in 100ms "
       "units (e.g., a value of 1 = 100 ms, 2 = 200 ms)."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) ReadErrorRecoveryTimer = (value)"},
    {42, "reset", "ResetCRC",
     "Reset the NVMe device's CRC error count.",
     {&NORVOSSD_A}, {&HELP},
     {{"ResetCRCError", REQUIRED, Value::required, "",
       "true",
       "Must specify 'true' to reset the CRC error count."}},
     "reset [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) ResetCRCError = (true)"},
    {43, "set", "AggregationThreshold",
     "Set the Aggregation Threshold.",
     {&NORVOSSD_A}, {&HELP},
     {{"AggregationThreshold", REQUIRED, Value::required, "",
       "value",
       "Max value = 255."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) AggregationThreshold = (value)"},
    {44, "set", "AggregationTime",
     "Set the Aggregation Time.",
     {&NORVOSSD_A}, {&HELP},
     {{"AggregationTime", REQUIRED, Value::required, "",
       "value",
       "value is specified in 100 microseconds increments. Max value = 255."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) AggregationTime = (value)"},
    {8, "set", "PhySpeed",
     "Set the SATA device's PHY Speed. The actual operating speed is still negoatiated between "
     "the device and the controller hardware it is attached to. The device must be power cycled "
     "after changing the configuration.",
     {&NORVOSSD_A}, {&HELP},
     {{"PhySpeed", REQUIRED, Value::required, "",
       "1.5|3|6",
       "Valid gigabits-per-second are: 1.5, 3, or 6"}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) PhySpeed = (1.5|3|6)"},
    {9, "set", "SSCEnabled",
     "Enable or disable the device's spread spectrum clocking (SSC) feature.",
     {&NORVOSSD_A}, {&HELP},
     {{"SSCEnabled", REQUIRED, Value::required, "",
       "'true'|'false'",
       "true = enable SSC. false = disable SSC."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) SSCEnabled = ('true'|'false')"},
    {10, "set", "TemperatureLoggingInterval",
     "Set the SATA device's temperature logging interval time.",
     {&NORVOSSD_A}, {&HELP},
     {{"TemperatureLoggingInterval", REQUIRED, Value::required, "",
       "time",
       "time is specified in minutes. Max time = 65535."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) TemperatureLoggingInterval = "
     "(time)"},
    {11, "set", "TempThreshold",
     "Set the NVMe device's temperature threshold.",
     {&NORVOSSD_A}, {&HELP},
     {{"TempThreshold", REQUIRED, Value::required, "",
       "value",
       "value is specified in Celsius. Max value = 80."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) TempThreshold = (value)"},
    {15, "set", "WriteErrorRecoveryTime",
     "Set the SATA device's write error recovery control timer value.",
     {&NORVOSSD_A}, {&HELP},
     {{"WriteErrorRecoveryTimer", REQUIRED, Value::required, "",
       "value",
       "value must be a decimal integer literal. Supported values are 0-65535. Value is in 100ms "
       "units (e.g., a value of 1 = 100 ms, 2 = 200 ms)."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) WriteErrorRecoveryTimer = "
     "(value)"},
    {12, "set", "WriteCacheState",
     "Set the SATA device's write cache state.",
     {&NORVOSSD_A}, {&HELP},
     {{"WriteCacheState", REQUIRED, Value::required, "",
       "1|2|3",
       "1 = write cache state is determined by Set Features. 2 = write cache is enabled. 3 = "
       "write cache is disabled."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) WriteCacheState = (1|2|3)"},
    {2, "set", "MaximumLBA",
     "Set the device's maximum logical block address (LBA). Set this property if you wish to "
     "over provision your device. Value cannot exceed the device's native maximum LBA. Supports "
     "SATA and NVMe devices.",
     {&NORVOSSD_A}, {&HELP},
     {{"MaximumLBA", REQUIRED, Value::required, "",
       "numGB|1-100%|LBA|'native'",
       "The maximum LBA value can be set based on: number of gigabytes, percentage of capacity, "
       "and decimal LBA value. You can also set it back to the device's native max value."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) MaximumLBA = "
     "(numGB|1-100%|LBA|'native')"},
    {17, "load", "FirmwareUpdate",
     "Update the device's firmware. See the device's FirmwareUpdateAvailable property for any "
     "eligible updates. To by-pass the prompt specify the -force option.",
     {&NORVOSSD_A}, {&HELP, &FORCE},
     {},
     "load [-help|-h] [-force|-f] -norvossd (Index|SerialNumber|PhysicalPath)"},
    {18, "show", "SMART",
     "Show device's SMART attributes. Each attribute could have the following properties: ID, "
     "Description, Normalized, Threshold, Worst, Status, and Action. Specific properties can be "
     "selected using the -display option and providing a comma-separated list of Properties. "
     "Results can be filtered by specifying an ID.",
     {&SMART, &NORVOSSD_C}, {&HELP, &DISPLAY, &ALL},
     {},
     "show [-help|-h] [-display|-d (Property1,...)] [-all|-a] -smart [(id)] [-norvossd "
     "[(Index|SerialNumber|PhysicalPath)]]"},
    {19, "show", "Sensors",
     "Show properties related to device health sensors.",
     {&SENSOR, &NORVOSSD_C}, {&HELP, &DISPLAY, &ALL},
     {},
     "show [-help|-h] [-display|-d (Property1,...)] [-all|-a] -sensor [-norvossd "
     "[(Index|SerialNumber|PhysicalPath)]]"},
    {20, "show", "Performance",
     "Show properties related to device performance metrics.",
     {&PERFORMANCE, &NORVOSSD_C}, {&HELP, &DISPLAY, &ALL},
     {},
     "show [-help|-h] [-display|-d (Property1,...)] [-all|-a] -performance [-norvossd "
     "[(Index|SerialNumber|PhysicalPath)]]"},
    {40, "show", "NVMeLog",
     "Show the NVMe log page. If a log is not specified all logs are parsed.",
     {&NORVOSSD_C, &NVMELOG}, {&HELP},
     {},
     "show [-help|-h] [-norvossd [(Index|SerialNumber|PhysicalPath)]] -nvmelog "
     "[('ErrorInfo'|'SmartHealthInfo'|'FirmwareSlotInfo'|'TemperatureStatistics'|'QueueMetrics')]"},
    {24, "delete", "Delete",
     "Delete all the data on the selected device. To by-pass the prompt, specify the -force "
     "option.",
     {&NORVOSSD_A}, {&HELP, &FORCE},
     {},
     "delete [-help|-h] [-force|-f] -norvossd (Index|SerialNumber|PhysicalPath)"},
    {25, "set", "SMBusAddress",
     "Set the NVMe device's SM Bus Address.",
     {&NORVOSSD_A}, {&HELP},
     {{"SMBusAddress", REQUIRED, Value::required, "",
       "address",
       "The address value can be between 1 and 255. A value of 255 disables the SM Bus ASIC "
       "access."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) SMBusAddress = (address)"},
    {26, "set", "LatencyTrackingEnabled",
     "Enable or disable the device's Latency Tracking feature.",
     {&NORVOSSD_A}, {&HELP},
     {{"LatencyTrackingEnabled", REQUIRED, Value::required, "",
       "true|false",
       "Set to true to enable latency tracking log. Otherwise, set to false."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) LatencyTrackingEnabled = "
     "(true|false)"},
    {14, "set", "DIPM",
     "Enable or disable the SATA device's DIPM.",
     {&NORVOSSD_A}, {&HELP},
     {{"DIPMEnabled", REQUIRED, Value::required, "",
       "'true' | 'false'",
       "true = enable DIPM. false = disable DIPM."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) DIPMEnabled = ('true' | 'false')"},
    {16, "set", "WriteCache",
     "Enable or disable the SATA device's Write Cache via set features.",
     {&NORVOSSD_A}, {&HELP},
     {{"WriteCacheEnabled", REQUIRED, Value::required, "",
       "'true' | 'false'",
       "true = enable Write Cache. false = disable Write Cache."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) WriteCacheEnabled = ('true' | "
     "'false')"},
    {13, "set", "WriteCacheReorderingState",
     "Enable or disable the SATA device's write cache reordering state.",
     {&NORVOSSD_A}, {&HELP},
     {{"WriteCacheReorderingStateEnabled", REQUIRED, Value::required, "",
       "'true'|'false'",
       "true = enable write cache reordering state. false = disable write cache reordering state."}},
     "set [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) "
     "WriteCacheReorderingStateEnabled = ('true'|'false')"},
    {27, "create", "CreateNamespace",
     "Create a namespace. Supported on NVMe 1.2+ devices.",
     {&NAMESPACE_B, &NORVOSSD_A}, {&HELP},
     {{"Size", REQUIRED, Value::required, "",
       "blocks",
       "The size in blocks of the new Namespace."},
      {"LBAFormat", OPTIONAL, Value::required, "",
       "0-NumLBAFormats",
       "Supported LBA formats are definied in Namespace Identify. See NumLBAFormats property."},
      {"ProtectionInformation", OPTIONAL, Value::required, "",
       "0|1",
       "0 = Protection Information not enabled. 1 = Type 1 enabled."},
      {"MultiPathIoCapabilities", OPTIONAL, Value::required, "",
       "0|1",
       "0 = Private namespace. 1 = Shared namespace {Default}."}},
     "create [-help|-h] -namespace -norvossd (Index|SerialNumber|PhysicalPath) Size = (blocks) "
     "[LBAFormat = (0-NumLBAFormats)] [ProtectionInformation = (0|1)] [MultiPathIoCapabilities = "
     "(0|1)]"},
    {28, "delete", "DeleteNamespace",
     "Delete a namespace. Supported on NVMe 1.2+ devices.",
     {&NAMESPACE_A, &NORVOSSD_A}, {&HELP, &FORCE},
     {},
     "delete [-help|-h] [-force|-f] -namespace (namespace id) -norvossd "
     "(Index|SerialNumber|PhysicalPath)"},
    {29, "attach", "AttachNamespace",
     "Attach a namespace. May specify an NVMe controller ID using the -nvmecontrollerid target. "
     "Supported on NVMe 1.2+ devices.",
     {&NAMESPACE_A, &NORVOSSD_A, &NVMECONTROLLER_B}, {&HELP},
     {},
     "attach [-help|-h] -namespace (namespace id) -norvossd (Index|SerialNumber|PhysicalPath) "
     "[-nvmecontroller (controller ID integer)]"},
    {30, "detach", "DetachNamespace",
     "Detach a namespace. Supported on NVMe 1.2+ devices.",
     {&NAMESPACE_A, &NORVOSSD_A, &NVMECONTROLLER_B}, {&HELP},
     {},
     "detach [-help|-h] -namespace (namespace id) -norvossd (Index|SerialNumber|PhysicalPath) "
     "[-nvmecontroller (controller ID integer)]"},
    {31, "show", "IdentifyDevice",
     "Show the device identify structures. Use the -nvmecontroller and -namespace targets to "
     "select specific identify strutures for NVMe devices.",
     {&IDENTIFY, &NAMESPACE_C, &NVMECONTROLLER_C, &NORVOSSD_C}, {&HELP},
     {},
     "show [-help|-h] -identify [-namespace (integer | 'attached' | 'allocated')] "
     "[-nvmecontroller] [-norvossd [(Index|SerialNumber|PhysicalPath)]]"},
    {32, "start", "NVMeFormat",
     "Issue an NVMe format to the selected drive. To by-pass the prompt, specify the -force "
     "option.",
     {&NORVOSSD_A, &NVMEFORMAT, &NAMESPACE_D}, {&HELP, &FORCE},
     {{"LBAFormat", OPTIONAL, Value::required, "",
       "0-NumLBAFormats",
       "Value corresponds to one of the supported LBA Formats described in Identify Namespace."},
      {"SecureEraseSetting", OPTIONAL, Value::required, "",
       "0|1|2",
       "0 = No Secure erase. 1 = User data erase. 2 = Crypto Erase"},
      {"ProtectionInformation", OPTIONAL, Value::required, "",
       "0|1",
       "0 = Protection Information not enabled. 1 = Type 1 enabled."},
      {"MetadataSettings", OPTIONAL, Value::required, "",
       "0|1",
       "0 = Metadata is transferred as part of a separate contiguous buffer. 1 = Metadata is "
       "transferred as part of an extended data LBA."}},
     "start [-help|-h] [-force|-f] -norvossd (Index|SerialNumber|PhysicalPath) -nvmeformat "
     "[-namespace (namespace id)] [LBAFormat = (0-NumLBAFormats)] [SecureEraseSetting = (0|1|2)] "
     "[ProtectionInformation = (0|1)] [MetadataSettings = (0|1)]"},
    {35, "show", "LatencyStatistics",
     "Parse the latency statistics log for read or write commands. LatencyTrackingEnabled must "
     "be True for this command to work.",
     {&LATENCYSTATISTICS, &NORVOSSD_C}, {&HELP},
     {},
     "show [-help|-h] -latencystatistics ('reads'|'writes') [-norvossd "
     "[(Index|SerialNumber|PhysicalPath)]]"},
    {33, "show", "HDATemperature",
     "Parse the SATA HDA Temperature data. Includes temperature history data.",
     {&HDATEMPERATURE, &NORVOSSD_C}, {&HELP},
     {},
     "show [-help|-h] -hdatemperature [-norvossd [(Index|SerialNumber|PhysicalPath)]]"},
    {36, "dump", "Nlog",
     "Read the nlog binary data from the device and save it to binary file. Use -destination to "
     "specify a filename. Othersize 'nlog_SERIALNUMBER.bin' will used.",
     {&NORVOSSD_C, &NLOG}, {&HELP, &DESTINATION},
     {},
     "dump [-help|-h] [-destination (path)] [-norvossd [(Index|SerialNumber|PhysicalPath)]] -nlog"},
    {38, "dump", "AssertLog",
     "Read the Assert log binary data from the device and save it to binary file. Use "
     "-destination to specify a filename. Othersize 'assert_SERIALNUMBER.bin' will used.",
     {&NORVOSSD_C, &ASSERTLOG}, {&HELP, &DESTINATION},
     {},
     "dump [-help|-h] [-destination (path)] [-norvossd [(Index|SerialNumber|PhysicalPath)]] "
     "-assertlog"},
    {37, "dump", "EventLog",
     "Read the event log binary data from the device and save it to binary file. Use "
     "-destination to specify a filename. Othersize 'eventlog_SERIALNUMBER.bin' will used.",
     {&NORVOSSD_C, &EVENTLOG}, {&HELP, &DESTINATION},
     {},
     "dump [-help|-h] [-destination (path)] [-norvossd [(Index|SerialNumber|PhysicalPath)]] "
     "-eventlog"},
    {39, "dump", "SATAGeneralPurposeLog",
     "Read the general purpose log from the device and save it to binary file. Only supported on "
     "SATA devices. Use -destination to specify a filename. Othersize 'gpl_SERIALNUMBER.bin' "
     "will used.",
     {&NORVOSSD_C, &GPL}, {&HELP, &DESTINATION},
     {{"PageNum", OPTIONAL, Value::open, "",
       "page #",
       "Default = 0. Page number to start reading at from the given LogAddress. Value can be "
       "decimal literal or hex string."},
      {"SectorCount", OPTIONAL, Value::open, "",
       "sectors",
       "Default = 1. Number of sectors to read from the specified GPL. Value can be decimal "
       "literal or hex string."}},
     "dump [-help|-h] [-destination (path)] [-norvossd [(Index|SerialNumber|PhysicalPath)]] -gpl "
     "(log address) [PageNum = [(page #)]] [SectorCount = [(sectors)]]"},
    {34, "show", "PhyCounters",
     "Parse the SATA PHY Counters log page.",
     {&PHYCOUNTERS, &NORVOSSD_C}, {&HELP},
     {},
     "show [-help|-h] -phycounters [-norvossd [(Index|SerialNumber|PhysicalPath)]]"},
    {22, "start", "DriveSelfTest",
     "Run a device self-test on the selected ATA device. If no test is specified a short test is "
     "executed.",
     {&NORVOSSD_A, &SELFTEST}, {&HELP},
     {},
     "start [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) -selftest "
     "[('short'|'extended'|'conveyance')]"},
    {23, "start", "Standby",
     "Issue an ATA Standby Immediate command to the selected device.",
     {&NORVOSSD_A, &STANDBY}, {&HELP},
     {},
     "start [-help|-h] -norvossd (Index|SerialNumber|PhysicalPath) -standby"},
    {41, "show", "NVMeControllerList",
     "Show the devices list of controllers. Use the -namespace target to list controllers "
     "attached to that given namespace ID.",
     {&NAMESPACE_D, &NVMECONTROLLER_A, &NORVOSSD_C}, {&HELP},
     {},
     "show [-help|-h] [-namespace (namespace id)] -nvmecontroller [-norvossd "
     "[(Index|SerialNumber|PhysicalPath)]]"},
    {45, "show", "EyeDiagram",
     "Show the eye diagram for the given PCIe Lane and Group. Default is Lane 0, Group A.",
     {&EYE_DIAGRAM, &NORVOSSD_A}, {&HELP},
     {{"Lane", OPTIONAL, Value::required, "",
       "[0-1]",
       "The bitmap of lanes for which the eye diagram is requested. Default is Lane 0."},
      {"Group", OPTIONAL, Value::required, "",
       "[A-B]",
       "The SerDes group for which an eye diagram is requested. Default is Group A."}},
     "show [-help|-h] -eye_diagram -norvossd (Index|SerialNumber|PhysicalPath) [Lane = ([0-1])] "
     "[Group = ([A-B])]"},
};

// clang-format on

void expectPart(const CommandPart& declared, const Part& expected) {
    SCOPED_TRACE(expected.name);
    EXPECT_EQ(declared.name, expected.name);
    EXPECT_EQ(declared.required, expected.required);
    EXPECT_EQ(declared.valueRequired, expected.value == Value::required);
    EXPECT_EQ(declared.noValue, expected.value == Value::none);
    EXPECT_EQ(declared.shortName, expected.shortName);
    EXPECT_EQ(declared.valueText, expected.valueText);
    EXPECT_EQ(declared.helpText, expected.helpText);
    EXPECT_FALSE(declared.found);
}

void expectParts(const std::vector<CommandPart>& declared,
                 const std::vector<const Part*>& expected) {
    ASSERT_EQ(declared.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        expectPart(declared[i], *expected[i]);
    }
}

std::vector<CommandSpec> declaredCommands() {
    std::vector<CommandSpec> commands;
    appendDriveCommands(commands);
    return commands;
}

TEST(DriveCommandTable, DeclaresEachCommandInTheOrderOfHelp) {
    const auto declared = declaredCommands();

    ASSERT_EQ(std::size(COMMANDS), 45U);
    ASSERT_EQ(declared.size(), 45U);
    for (std::size_t i = 0; i < declared.size(); ++i) {
        SCOPED_TRACE(COMMANDS[i].name);
        EXPECT_EQ(declared[i].id, COMMANDS[i].id);
        EXPECT_EQ(declared[i].verb, COMMANDS[i].verb);
        EXPECT_EQ(declared[i].name, COMMANDS[i].name);
        EXPECT_EQ(declared[i].helpText, COMMANDS[i].helpText);
        EXPECT_EQ(declared[i].asStr(), COMMANDS[i].usage);
    }
}

TEST(DriveCommandTable, DeclaresThePartsOfEachCommand) {
    const auto declared = declaredCommands();

    ASSERT_EQ(declared.size(), std::size(COMMANDS));
    for (std::size_t i = 0; i < declared.size(); ++i) {
        SCOPED_TRACE(COMMANDS[i].name);
        expectParts(declared[i].options, COMMANDS[i].options);
        expectParts(declared[i].targets, COMMANDS[i].targets);
        std::vector<const Part*> properties;
        for (const Part& property : COMMANDS[i].properties) {
            properties.push_back(&property);
        }
        expectParts(declared[i].properties, properties);
    }
}

TEST(DriveCommandTable, UsesEachIdOnceAndLeavesOutTwentyOne) {
    std::set<int> ids;
    for (const CommandSpec& command : declaredCommands()) {
        ids.insert(command.id);
    }

    EXPECT_EQ(ids.size(), 45U);
    EXPECT_EQ(*ids.begin(), 0);
    EXPECT_EQ(*ids.rbegin(), 45);
    EXPECT_FALSE(ids.contains(21));
}

TEST(DriveCommandTable, AppendsToWhatTheListHolds) {
    std::vector<CommandSpec> commands = {CommandSpec(7, "Other", "show", "")};

    NorvoSSDFeature().getPaths(commands);

    ASSERT_EQ(commands.size(), 46U);
    EXPECT_EQ(commands[0].name, "Other");
    EXPECT_EQ(commands[1].name, "NorvoSSD");
    EXPECT_EQ(commands[45].name, "EyeDiagram");
}

TEST(DriveCommandTable, NamesTheDriveOnlyWhereTheCommandNeedsOne) {
    const std::set<int> withoutDrive = {0, 18, 19, 20, 31, 33, 34, 35, 36, 37, 38, 39, 40, 41};
    for (const CommandSpec& command : declaredCommands()) {
        SCOPED_TRACE(command.name);
        const auto drive =
            std::find_if(command.targets.begin(), command.targets.end(),
                         [](const CommandPart& part) { return part.name == "-norvossd"; });
        ASSERT_NE(drive, command.targets.end());
        EXPECT_EQ(drive->required && drive->valueRequired, !withoutDrive.contains(command.id));
    }
}

TEST(DriveCommandTable, NamesThePropertyApartFromTheCommand) {
    struct Row {
        int id;
        const char* command;
        const char* property;
    };

    const Row rows[] = {
        {7, "ReadErrorRecoveryTime", "ReadErrorRecoveryTimer"},
        {13, "WriteCacheReorderingState", "WriteCacheReorderingStateEnabled"},
        {14, "DIPM", "DIPMEnabled"},
        {15, "WriteErrorRecoveryTime", "WriteErrorRecoveryTimer"},
        {16, "WriteCache", "WriteCacheEnabled"},
    };
    const auto declared = declaredCommands();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.command);
        const auto command =
            std::find_if(declared.begin(), declared.end(),
                         [&row](const CommandSpec& spec) { return spec.id == row.id; });
        ASSERT_NE(command, declared.end());
        EXPECT_EQ(command->name, row.command);
        ASSERT_EQ(command->properties.size(), 1U);
        EXPECT_EQ(command->properties[0].name, row.property);
    }
}

}  // namespace
}  // namespace tavik::norvossd
