#include "tool/DriveCommandTable.h"

#include "core/Attribute.h"
#include "features/JobProperties.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace tavik::norvossd {

namespace {

using namespace cli::framework;
using namespace orvel::features;

constexpr std::string_view VERB_ATTACH = "attach";
constexpr std::string_view VERB_DETACH = "detach";

/// Whether a part must be named.
enum Presence : bool { OPTIONAL = false, REQUIRED = true };

/// What a named part's value is.
enum class Value { required, open, none };

struct TargetRow {
    std::string_view name;
    Presence presence;
    Value value;
    std::string_view valueText;
    std::string_view helpText;
};

struct PropertyRow {
    orvel::core::Attribute (*descriptor)();  ///< null ends the row's properties
    Presence presence;
    std::string_view valueText;
    Value value;
    std::string_view helpText;
};

struct CommandRow {
    std::int32_t id;
    std::string_view verb;
    std::string_view name;
    std::string_view helpText;
    const TargetRow* targets[4];    ///< null ends the list
    const CommandPart* options[3];  ///< null ends the list
    PropertyRow properties[4];
};

// clang-format off

//                                             name                  presence  value
//  value text
//  help text
constexpr TargetRow ASSERTLOG                = {"-assertlog",         REQUIRED, Value::none,
    "",
    "assertlog target is required."};
constexpr TargetRow EVENTLOG                 = {"-eventlog",          REQUIRED, Value::none,
    "",
    "eventlog target is required."};
constexpr TargetRow EYE_DIAGRAM              = {"-eye_diagram",       REQUIRED, Value::none,
    "",
    "Target for reading the eye diagram."};
constexpr TargetRow GPL                      = {"-gpl",               REQUIRED, Value::required,
    "log address",
    "Specify the GPL log address to ready from"};
constexpr TargetRow HDATEMPERATURE           = {"-hdatemperature",    REQUIRED, Value::none,
    "",
    "HDA temperature target is required."};
constexpr TargetRow IDENTIFY                 = {"-identify",          REQUIRED, Value::none,
    "",
    "Identify target is required."};
constexpr TargetRow DRIVE_REQUIRED           = {"-norvossd",          REQUIRED, Value::required,
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path is required."};
constexpr TargetRow DRIVE_OPEN               = {"-norvossd",          REQUIRED, Value::open,
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path can be used to select a single Norvo SSD."};
constexpr TargetRow DRIVE_OPTIONAL           = {"-norvossd",          OPTIONAL, Value::open,
    "Index|SerialNumber|PhysicalPath",
    "Device index or serial number or physical path"};
constexpr TargetRow LATENCYSTATISTICS        = {"-latencystatistics", REQUIRED, Value::required,
    "'reads'|'writes'",
    "Latency statistics logs for read and write commands."};
constexpr TargetRow NAMESPACE_ID_REQUIRED    = {"-namespace",         REQUIRED, Value::required,
    "namespace id",
    "Namespace target and namespace ID is required."};
constexpr TargetRow NAMESPACE_WORD           = {"-namespace",         REQUIRED, Value::none,
    "",
    "Namespace target is required."};
constexpr TargetRow NAMESPACE_CHOICE         = {"-namespace",         OPTIONAL, Value::required,
    "integer | 'attached' | 'allocated'",
    "Namespace target is required."};
constexpr TargetRow NAMESPACE_ID_OPTIONAL    = {"-namespace",         OPTIONAL, Value::required,
    "namespace id",
    "Namespace target is optional. Must specify namespace ID if being used."};
constexpr TargetRow NLOG                     = {"-nlog",              REQUIRED, Value::none,
    "",
    "nlog target is required."};
constexpr TargetRow CONTROLLER_WORD_REQUIRED = {"-nvmecontroller",    REQUIRED, Value::none,
    "",
    "NVMeController target."};
constexpr TargetRow CONTROLLER_ID            = {"-nvmecontroller",    OPTIONAL, Value::required,
    "controller ID integer",
    "NVMe Controller target is option. Must specify controller ID if being used."};
constexpr TargetRow CONTROLLER_WORD          = {"-nvmecontroller",    OPTIONAL, Value::none,
    "",
    "NVMeController target."};
constexpr TargetRow NVMEFORMAT               = {"-nvmeformat",        REQUIRED, Value::none,
    "",
    "Target for issuing NVMe format."};
constexpr TargetRow NVMELOG                  = {"-nvmelog",           REQUIRED, Value::open,
    "'ErrorInfo'|'SmartHealthInfo'|'FirmwareSlotInfo'|'TemperatureStatistics'|'QueueMetrics'",
    "Read and parse the given NVMe log."};
constexpr TargetRow PERFORMANCE              = {"-performance",       REQUIRED, Value::none,
    "",
    "Performance target is required."};
constexpr TargetRow PHYCOUNTERS              = {"-phycounters",       REQUIRED, Value::none,
    "",
    "PHY Counters target is required."};
constexpr TargetRow SELFTEST                 = {"-selftest",          REQUIRED, Value::open,
    "'short'|'extended'|'conveyance'",
    "Run a drive selft test on the selected device(s). Unless specified, a short test is ran."};
constexpr TargetRow SENSOR                   = {"-sensor",            REQUIRED, Value::none,
    "",
    "Sensor target is required."};
constexpr TargetRow SMART                    = {"-smart",             REQUIRED, Value::open,
    "id",
    "Smart target is required."};
constexpr TargetRow STANDBY                  = {"-standby",           REQUIRED, Value::none,
    "",
    "standby target is required."};

// In the order in which help lists them. Id 21 is not declared by any command.
constexpr CommandRow COMMANDS[] = {
//   id  verb          name
//  help text
//  targets, options
//  properties: descriptor, presence, value text, value, help text
  {  0, VERB_SHOW,    "NorvoSSD",
    "Get a list of Norvo SSDs attached to a system. The default behavior is to list a few key "
    "properties for each device; the options can be used to expand/restrict the output. If more "
    "than one device is installed output can be restricted to a single device by supplying its "
    "index.",
    {&DRIVE_OPEN}, {&OPTION_HELP, &OPTION_DISPLAY, &OPTION_ALL},
    {}},
  {  1, VERB_SET,     "EnduranceAnalyzer",
    "Reset the device's timed workload indicators used to calculate the EnduranceAnalyzer "
    "property. Supports SATA and NVMe devices.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{endurance_analyzer::EnduranceAnalyzer, REQUIRED, "'reset'", Value::required,
      ""}}},
  {  3, VERB_SET,     "PhyConfig",
    "Set the SATA device's PHY configuration. The device must be power cycled after changing the "
    "configuration.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{phy_config::PhyConfig, REQUIRED, "0|1|2|3", Value::required,
      "0 = Default enterprise settings. 1 = Client settings. 2 = Alternate enterprise settings. "
      "3 = Server settings."}}},
  {  4, VERB_SET,     "PhysicalSectorSize",
    "Set the SATA device's physical sector size.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{sct_feature_control::PhysicalSectorSize, REQUIRED, "512|4096", Value::required,
      "Values are in byte units."}}},
  {  5, VERB_SET,     "PLITestTimeInterval",
    "Set the SATA device's PLI test time interval. All values except 0 will do an immediate test "
    "when set.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{sct_feature_control::PLITestTimeInterval, REQUIRED, "0-6", Value::required,
      "0 = stop, no immediate test. 1 = stop. 2 = 60 min. 3 = 1440 min. 4 = 4320 min. 5 = 10080 "
      "min. 6 = 20160 min."}}},
  {  6, VERB_SET,     "PowerGovernorMode",
    "Set the device's Power Governor Mode. Supports SATA and NVMe devices.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{power_governor::PowerGovernorMode, REQUIRED, "0|1|2", Value::required,
      "0 = SATA: Unconstrained, NVMe: High. 1 = SATA: Typical(7W), NVMe: Medium. 2 = SATA: "
      "Low(5W), NVMe: Low."}}},
  {  7, VERB_SET,     "ReadErrorRecoveryTime",
    "Set the SATA device's read error recovery control timer value.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{error_recovery_control::ReadErrorRecoveryTimer, REQUIRED, "value", Value::required,
      "value must be a decimal integer literal. Supported values are 0-65535. Value is in 100ms "
      "units (e.g., a value of 1 = 100 ms, 2 = 200 ms)."}}},
  { 42, VERB_RESET,   "ResetCRC",
    "Reset the NVMe device's CRC error count.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{nvme_features::ResetCRCError, REQUIRED, "true", Value::required,
      "Must specify 'true' to reset the CRC error count."}}},
  { 43, VERB_SET,     "AggregationThreshold",
    "Set the Aggregation Threshold.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{nvme_features::AggregationThreshold, REQUIRED, "value", Value::required,
      "Max value = 255."}}},
  { 44, VERB_SET,     "AggregationTime",
    "Set the Aggregation Time.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{nvme_features::AggregationTime, REQUIRED, "value", Value::required,
      "value is specified in 100 microseconds increments. Max value = 255."}}},
  {  8, VERB_SET,     "PhySpeed",
    "Set the SATA device's PHY Speed. The actual operating speed is still negoatiated between "
    "the device and the controller hardware it is attached to. The device must be power cycled "
    "after changing the configuration.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{phy_speed::PhySpeed, REQUIRED, "1.5|3|6", Value::required,
      "Valid gigabits-per-second are: 1.5, 3, or 6"}}},
  {  9, VERB_SET,     "SSCEnabled",
    "Enable or disable the device's spread spectrum clocking (SSC) feature.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{spread_spectrum_clocking::SSCEnabled, REQUIRED, "'true'|'false'", Value::required,
      "true = enable SSC. false = disable SSC."}}},
  { 10, VERB_SET,     "TemperatureLoggingInterval",
    "Set the SATA device's temperature logging interval time.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{sct_feature_control::TemperatureLoggingInterval, REQUIRED, "time", Value::required,
      "time is specified in minutes. Max time = 65535."}}},
  { 11, VERB_SET,     "TempThreshold",
    "Set the NVMe device's temperature threshold.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{nvme_features::TempThreshold, REQUIRED, "value", Value::required,
      "value is specified in Celsius. Max value = 80."}}},
  { 15, VERB_SET,     "WriteErrorRecoveryTime",
    "Set the SATA device's write error recovery control timer value.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{error_recovery_control::WriteErrorRecoveryTimer, REQUIRED, "value", Value::required,
      "value must be a decimal integer literal. Supported values are 0-65535. Value is in 100ms "
      "units (e.g., a value of 1 = 100 ms, 2 = 200 ms)."}}},
  { 12, VERB_SET,     "WriteCacheState",
    "Set the SATA device's write cache state.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{write_cache::WriteCacheState, REQUIRED, "1|2|3", Value::required,
      "1 = write cache state is determined by Set Features. 2 = write cache is enabled. 3 = "
      "write cache is disabled."}}},
  {  2, VERB_SET,     "MaximumLBA",
    "Set the device's maximum logical block address (LBA). Set this property if you wish to over "
    "provision your device. Value cannot exceed the device's native maximum LBA. Supports SATA "
    "and NVMe devices.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{max_address::MaximumLBA, REQUIRED, "numGB|1-100%|LBA|'native'", Value::required,
      "The maximum LBA value can be set based on: number of gigabytes, percentage of capacity, "
      "and decimal LBA value. You can also set it back to the device's native max value."}}},
  { 17, VERB_LOAD,    "FirmwareUpdate",
    "Update the device's firmware. See the device's FirmwareUpdateAvailable property for any "
    "eligible updates. To by-pass the prompt specify the -force option.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP, &OPTION_FORCE},
    {}},
  { 18, VERB_SHOW,    "SMART",
    "Show device's SMART attributes. Each attribute could have the following properties: ID, "
    "Description, Normalized, Threshold, Worst, Status, and Action. Specific properties can be "
    "selected using the -display option and providing a comma-separated list of Properties. "
    "Results can be filtered by specifying an ID.",
    {&SMART, &DRIVE_OPTIONAL}, {&OPTION_HELP, &OPTION_DISPLAY, &OPTION_ALL},
    {}},
  { 19, VERB_SHOW,    "Sensors",
    "Show properties related to device health sensors.",
    {&SENSOR, &DRIVE_OPTIONAL}, {&OPTION_HELP, &OPTION_DISPLAY, &OPTION_ALL},
    {}},
  { 20, VERB_SHOW,    "Performance",
    "Show properties related to device performance metrics.",
    {&PERFORMANCE, &DRIVE_OPTIONAL}, {&OPTION_HELP, &OPTION_DISPLAY, &OPTION_ALL},
    {}},
  { 40, VERB_SHOW,    "NVMeLog",
    "Show the NVMe log page. If a log is not specified all logs are parsed.",
    {&DRIVE_OPTIONAL, &NVMELOG}, {&OPTION_HELP},
    {}},
  { 24, VERB_DELETE,  "Delete",
    "Delete all the data on the selected device. To by-pass the prompt, specify the -force "
    "option.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP, &OPTION_FORCE},
    {}},
  { 25, VERB_SET,     "SMBusAddress",
    "Set the NVMe device's SM Bus Address.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{nvme_features::SMBusAddress, REQUIRED, "address", Value::required,
      "The address value can be between 1 and 255. A value of 255 disables the SM Bus ASIC "
      "access."}}},
  { 26, VERB_SET,     "LatencyTrackingEnabled",
    "Enable or disable the device's Latency Tracking feature.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{latency_tracking::LatencyTrackingEnabled, REQUIRED, "true|false", Value::required,
      "Set to true to enable latency tracking log. Otherwise, set to false."}}},
  { 14, VERB_SET,     "DIPM",
    "Enable or disable the SATA device's DIPM.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{dipm::DIPMEnabled, REQUIRED, "'true' | 'false'", Value::required,
      "true = enable DIPM. false = disable DIPM."}}},
  { 16, VERB_SET,     "WriteCache",
    "Enable or disable the SATA device's Write Cache via set features.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{write_cache::WriteCacheEnabled, REQUIRED, "'true' | 'false'", Value::required,
      "true = enable Write Cache. false = disable Write Cache."}}},
  { 13, VERB_SET,     "WriteCacheReorderingState",
    "Enable or disable the SATA device's write cache reordering state.",
    {&DRIVE_REQUIRED}, {&OPTION_HELP},
    {{write_cache::WriteCacheReorderingStateEnabled, REQUIRED, "'true'|'false'", Value::required,
      "true = enable write cache reordering state. false = disable write cache reordering state."}}},
  { 27, VERB_CREATE,  "CreateNamespace",
    "Create a namespace. Supported on NVMe 1.2+ devices.",
    {&NAMESPACE_WORD, &DRIVE_REQUIRED}, {&OPTION_HELP},
    {{namespace_management::Size, REQUIRED, "blocks", Value::required,
      "The size in blocks of the new Namespace."},
     {format::LBAFormat, OPTIONAL, "0-NumLBAFormats", Value::required,
      "Supported LBA formats are definied in Namespace Identify. See NumLBAFormats property."},
     {format::ProtectionInformation, OPTIONAL, "0|1", Value::required,
      "0 = Protection Information not enabled. 1 = Type 1 enabled."},
     {namespace_management::MultiPathIoCapabilities, OPTIONAL, "0|1", Value::required,
      "0 = Private namespace. 1 = Shared namespace {Default}."}}},
  { 28, VERB_DELETE,  "DeleteNamespace",
    "Delete a namespace. Supported on NVMe 1.2+ devices.",
    {&NAMESPACE_ID_REQUIRED, &DRIVE_REQUIRED}, {&OPTION_HELP, &OPTION_FORCE},
    {}},
  { 29, VERB_ATTACH,  "AttachNamespace",
    "Attach a namespace. May specify an NVMe controller ID using the -nvmecontrollerid target. "
    "Supported on NVMe 1.2+ devices.",
    {&NAMESPACE_ID_REQUIRED, &DRIVE_REQUIRED, &CONTROLLER_ID}, {&OPTION_HELP},
    {}},
  { 30, VERB_DETACH,  "DetachNamespace",
    "Detach a namespace. Supported on NVMe 1.2+ devices.",
    {&NAMESPACE_ID_REQUIRED, &DRIVE_REQUIRED, &CONTROLLER_ID}, {&OPTION_HELP},
    {}},
  { 31, VERB_SHOW,    "IdentifyDevice",
    "Show the device identify structures. Use the -nvmecontroller and -namespace targets to "
    "select specific identify strutures for NVMe devices.",
    {&IDENTIFY, &NAMESPACE_CHOICE, &CONTROLLER_WORD, &DRIVE_OPTIONAL}, {&OPTION_HELP},
    {}},
  { 32, VERB_START,   "NVMeFormat",
    "Issue an NVMe format to the selected drive. To by-pass the prompt, specify the -force "
    "option.",
    {&DRIVE_REQUIRED, &NVMEFORMAT, &NAMESPACE_ID_OPTIONAL}, {&OPTION_HELP, &OPTION_FORCE},
    {{format::LBAFormat, OPTIONAL, "0-NumLBAFormats", Value::required,
      "Value corresponds to one of the supported LBA Formats described in Identify Namespace."},
     {format::SecureEraseSetting, OPTIONAL, "0|1|2", Value::required,
      "0 = No Secure erase. 1 = User data erase. 2 = Crypto Erase"},
     {format::ProtectionInformation, OPTIONAL, "0|1", Value::required,
      "0 = Protection Information not enabled. 1 = Type 1 enabled."},
     {format::MetadataSettings, OPTIONAL, "0|1", Value::required,
      "0 = Metadata is transferred as part of a separate contiguous buffer. 1 = Metadata is "
      "transferred as part of an extended data LBA."}}},
  { 35, VERB_SHOW,    "LatencyStatistics",
    "Parse the latency statistics log for read or write commands. LatencyTrackingEnabled must be "
    "True for this command to work.",
    {&LATENCYSTATISTICS, &DRIVE_OPTIONAL}, {&OPTION_HELP},
    {}},
  { 33, VERB_SHOW,    "HDATemperature",
    "Parse the SATA HDA Temperature data. Includes temperature history data.",
    {&HDATEMPERATURE, &DRIVE_OPTIONAL}, {&OPTION_HELP},
    {}},
  { 36, VERB_DUMP,    "Nlog",
    "Read the nlog binary data from the device and save it to binary file. Use -destination to "
    "specify a filename. Othersize 'nlog_SERIALNUMBER.bin' will used.",
    {&DRIVE_OPTIONAL, &NLOG}, {&OPTION_HELP, &OPTION_DESTINATION},
    {}},
  { 38, VERB_DUMP,    "AssertLog",
    "Read the Assert log binary data from the device and save it to binary file. Use "
    "-destination to specify a filename. Othersize 'assert_SERIALNUMBER.bin' will used.",
    {&DRIVE_OPTIONAL, &ASSERTLOG}, {&OPTION_HELP, &OPTION_DESTINATION},
    {}},
  { 37, VERB_DUMP,    "EventLog",
    "Read the event log binary data from the device and save it to binary file. Use -destination "
    "to specify a filename. Othersize 'eventlog_SERIALNUMBER.bin' will used.",
    {&DRIVE_OPTIONAL, &EVENTLOG}, {&OPTION_HELP, &OPTION_DESTINATION},
    {}},
  { 39, VERB_DUMP,    "SATAGeneralPurposeLog",
    "Read the general purpose log from the device and save it to binary file. Only supported on "
    "SATA devices. Use -destination to specify a filename. Othersize 'gpl_SERIALNUMBER.bin' will "
    "used.",
    {&DRIVE_OPTIONAL, &GPL}, {&OPTION_HELP, &OPTION_DESTINATION},
    {{gpl::PageNum, OPTIONAL, "page #", Value::open,
      "Default = 0. Page number to start reading at from the given LogAddress. Value can be "
      "decimal literal or hex string."},
     {gpl::SectorCount, OPTIONAL, "sectors", Value::open,
      "Default = 1. Number of sectors to read from the specified GPL. Value can be decimal "
      "literal or hex string."}}},
  { 34, VERB_SHOW,    "PhyCounters",
    "Parse the SATA PHY Counters log page.",
    {&PHYCOUNTERS, &DRIVE_OPTIONAL}, {&OPTION_HELP},
    {}},
  { 22, VERB_START,   "DriveSelfTest",
    "Run a device self-test on the selected ATA device. If no test is specified a short test is "
    "executed.",
    {&DRIVE_REQUIRED, &SELFTEST}, {&OPTION_HELP},
    {}},
  { 23, VERB_START,   "Standby",
    "Issue an ATA Standby Immediate command to the selected device.",
    {&DRIVE_REQUIRED, &STANDBY}, {&OPTION_HELP},
    {}},
  { 41, VERB_SHOW,    "NVMeControllerList",
    "Show the devices list of controllers. Use the -namespace target to list controllers "
    "attached to that given namespace ID.",
    {&NAMESPACE_ID_OPTIONAL, &CONTROLLER_WORD_REQUIRED, &DRIVE_OPTIONAL}, {&OPTION_HELP},
    {}},
  { 45, VERB_SHOW,    "EyeDiagram",
    "Show the eye diagram for the given PCIe Lane and Group. Default is Lane 0, Group A.",
    {&EYE_DIAGRAM, &DRIVE_REQUIRED}, {&OPTION_HELP},
    {{eye_diagram::Lane, OPTIONAL, "[0-1]", Value::required,
      "The bitmap of lanes for which the eye diagram is requested. Default is Lane 0."},
     {eye_diagram::Group, OPTIONAL, "[A-B]", Value::required,
      "The SerDes group for which an eye diagram is requested. Default is Group A."}}},
};

// clang-format on

consteval bool idsAreUnique() {
    for (std::size_t i = 0; i < std::size(COMMANDS); ++i) {
        for (std::size_t j = i + 1; j < std::size(COMMANDS); ++j) {
            if (COMMANDS[i].id == COMMANDS[j].id) return false;
        }
    }
    return true;
}

static_assert(std::size(COMMANDS) == 45 && idsAreUnique());

CommandPart toPart(const TargetRow& row) {
    CommandPart part;
    part.name = Text::literal(row.name);
    part.required = row.presence == REQUIRED;
    part.valueText = Text::literal(row.valueText);
    part.valueRequired = row.value == Value::required;
    part.helpText = Text::literal(row.helpText);
    part.noValue = row.value == Value::none;
    return part;
}

CommandSpec toSpec(const CommandRow& row) {
    CommandSpec spec(row.id, Text::literal(row.name), Text::literal(row.verb),
                     Text::literal(row.helpText));
    // The framework adds two options to each command.
    spec.options.reserve(std::size(row.options) + 2);
    for (const CommandPart* option : row.options) {
        if (option != nullptr) spec.addOption(*option);
    }
    spec.targets.reserve(2);
    for (const TargetRow* target : row.targets) {
        if (target != nullptr) CommandSpec::addPart(spec.targets, toPart(*target));
    }
    for (const PropertyRow& property : row.properties) {
        if (property.descriptor == nullptr) break;
        spec.addProperty(property.descriptor().getName(), property.presence == REQUIRED,
                         property.valueText, property.value == Value::required, property.helpText);
    }
    return spec;
}

}  // namespace

void appendDriveCommands(std::vector<CommandSpec>& commands) {
    commands.reserve(commands.size() + std::size(COMMANDS));
    std::transform(std::begin(COMMANDS), std::end(COMMANDS), std::back_inserter(commands), toSpec);
}

}  // namespace tavik::norvossd
