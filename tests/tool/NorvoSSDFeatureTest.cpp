// The drive commands in process: what each sends for the line that it is given, what it refuses
// before it sends anything, and what it makes of the answer.
#include "tool/NorvoSSDFeature.h"

#include "tests/tool/LibraryFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace tavik::norvossd {
namespace {

using cli::framework::CommandSpec;
using cli::framework::ParsedCommand;
using orvel::core::Status;
using orvel::core::xml::XmlObject;
using Words = std::map<std::string, std::string>;

const std::string PRODUCTS =
    R"(<Property category="attribute" displayName="Supported Products" name="SupportedProducts" )"
    R"(size="416" type="vectorOfStrings" value=")"
    R"(Aldermoor~Ashlade~Bexmere~Brackenway Point~Brenwick~Carrowby~Cobblegate Reach~)"
    R"(Crosswick~Deepholm~Eldermoor~Emberlade~Farrowgate~Fernstead Reach~Galemoor~)"
    R"(Gorsewick~Hallowstow~Hazelholt~Inglemoor~Ivystead~Juniperwick~Kindlewold~)"
    R"(Lavenstow~Maplewold~Marrowby~Merrowstead Reach~Netherwold~Oakenstow~)"
    R"(Orrismere Point~Pennymarsh~Quillbrook~Ravenstow~Rowanlade~Sablewold~)"
    R"(Sedgeholm Point~Swanlade~Tealmarsh~Umberholt~Wrenstow)"
    R"("/>)";

const std::string MODULE_FOLDERS =
    R"(<Property category="attribute" displayName="Additional Module Directories" )"
    R"(name="AdditionalModuleDirs" size="0" type="string" value="opt/FirmwareModules"/>)";

/// One line as the parser hands it over, with what is typed at a question.
struct Line {
    int id = 0;
    Words options;
    Words targets;
    Words properties;
    std::string typed;
};

/// What a line sends, apart from what every request holds.
struct Request {
    std::string job;
    std::string method;
    std::string properties;
    std::string selection;
    std::string index;  ///< of the device that is selected; empty for none
};

std::string textOf(const Request& request) {
    std::string text = R"(<?xml version="1.0" encoding="utf-8"?><Object name=")" + request.job +
                       R"(" type=")" + request.method + R"(">)" +
                       R"(<Property category="attribute" displayName="Scan" name="Scan" )"
                       R"(size="0" type="boolean" value="true"/>)" +
                       request.properties + PRODUCTS + MODULE_FOLDERS;
    if (!request.index.empty()) {
        text += R"(<List name="Devices"><Object name="Device"><Property category="attribute" )"
                R"(name="Index" type="string" value=")" +
                request.index + R"("/></Object></List>)";
    }
    if (!request.selection.empty()) {
        text += R"(<Object name="Properties">)" + request.selection + "</Object>";
    }
    return text + "</Object>";
}

/// A property whose value crosses as it was typed.
std::string typed(const std::string& name, const std::string& displayName, const std::string& type,
                  const std::string& value) {
    return R"(<Property category="attribute" displayName=")" + displayName + R"(" name=")" + name +
           R"(" size="0" type=")" + type + R"(" value=")" + value + R"("/>)";
}

/// An attribute that is asked for.
std::string wanted(const std::string& name) {
    return typed(name, "", "string", "");
}

const std::string DONE = R"(<Object category="Job"><Object category="status">)"
                         R"(<Property name="Category" value="0"/>)"
                         R"(<Property name="Code" value="0"/>)"
                         R"(<Property name="Message" value="Completed successfully."/></Object>)"
                         R"(<Object category="output"><Property name="A" value="1"/></Object>)"
                         R"(</Object>)";

std::string configuration(const std::string& enableLog, const std::string& enableAdapter,
                          const std::string& logFile) {
    return R"(<?xml version="1.0" encoding="utf-8"?>)"
           R"(<Object category="attributeList" name="TAVIK Config">)"
           R"(<Property category="attribute" displayName="Enable Log" name="EnableLog" size="6" )"
           R"(type="string" value=")" +
           enableLog +
           R"("/><Property category="attribute" displayName="Enable LSI Adapter" )"
           R"(name="EnableLSIAdapter" size="6" type="string" value=")" +
           enableAdapter +
           R"("/><Property category="attribute" displayName="Log File" name="LogFile" size="20" )"
           R"(type="string" value=")" +
           logFile + R"("/></Object>)";
}

class NorvoSSDFeatureTest : public tavik::testing::LibraryFixture {
protected:
    NorvoSSDFeatureTest() {
        install("full");
        put("opt/tavik_config.xml", configuration("false", "false", "/var/log/ORVELI.log"));
        order("reply.xml", DONE);
    }

    /// What a command came to: "code text", and what it wrote to the log stream.
    struct Outcome {
        std::string result;
        std::string log;
    };

    static Outcome run(const Line& line) {
        const std::string text = inChild([&line] {
            std::istringstream in(line.typed);
            std::ostringstream log;
            std::cin.rdbuf(in.rdbuf());
            std::clog.rdbuf(log.rdbuf());
            NorvoSSDFeature feature;
            CommandSpec command;
            command.id = line.id;
            ParsedCommand parsed;
            parsed.options = line.options;
            parsed.targets = line.targets;
            parsed.properties = line.properties;
            const auto result = feature.run(command, parsed);
            std::clog.flush();
            return std::to_string(result->getErrorCode()) + " " + result->outputText() + SEPARATOR +
                   log.str();
        });
        const std::size_t end = text.find(SEPARATOR);
        return end == std::string::npos ? Outcome{text, ""}
                                        : Outcome{text.substr(0, end), text.substr(end + 1)};
    }

    static void startAnew() {
        clearOrders();
        order("reply.xml", DONE);
    }

    static bool hasSent() { return std::filesystem::exists("standin/request.xml"); }

    static std::string request() { return get("standin/request.xml"); }

    static constexpr char SEPARATOR = '\x1F';
};

// --- What is sent ---

TEST_F(NorvoSSDFeatureTest, SetsEachPropertyThroughItsJob) {
    struct Row {
        int id;
        const char* job;
        const char* property;
        const char* typed;
        const char* sent;
    };

    // clang-format off
    const Row rows[] = {
        { 1, "EnduranceAnalyzer", "EnduranceAnalyzer", "reset",
         R"(<Property category="attribute" displayName="Endurance Analyzer" name="EnduranceAnalyzer" size="6" type="string" value="reset"/>)"},
        { 2, "MaxAddress", "MaximumLBA", "reset",
         R"(<Property category="attribute" displayName="Maximum LBA" name="MaximumLBA" size="6" type="string" value="reset"/>)"},
        { 3, "PhyConfig", "PhyConfig", "3",
         R"(<Property category="attribute" displayName="Phy Config" name="PhyConfig" size="2" type="uint16" value="3"/>)"},
        { 4, "SCTFeatureControl", "PhysicalSectorSize", "3",
         R"(<Property category="attribute" displayName="Physical Sector Size" name="PhysicalSectorSize" size="2" type="uint16" value="3"/>)"},
        { 5, "SCTFeatureControl", "PLITestTimeInterval", "3",
         R"(<Property category="attribute" displayName="PLI Test Time Interval" name="PLITestTimeInterval" size="2" type="uint16" value="3"/>)"},
        { 6, "PowerGovernor", "PowerGovernorMode", "3",
         R"(<Property category="attribute" displayName="Power Governor Mode" name="PowerGovernorMode" size="4" type="uint32" value="3"/>)"},
        { 7, "ErrorRecoveryControl", "ReadErrorRecoveryTimer", "3",
         R"(<Property category="attribute" displayName="Read Error Recovery Timer" name="ReadErrorRecoveryTimer" size="2" type="uint16" value="3"/>)"},
        { 8, "PhySpeed", "PhySpeed", "reset",
         R"(<Property category="attribute" displayName="Phy Speed" name="PhySpeed" size="6" type="string" value="reset"/>)"},
        { 9, "SpreadSpectrumClocking", "SSCEnabled", "true",
         R"(<Property category="attribute" displayName="SSC Enabled" name="SSCEnabled" size="1" type="boolean" value="True"/>)"},
        {10, "SCTFeatureControl", "TemperatureLoggingInterval", "3",
         R"(<Property category="attribute" displayName="Temperature Logging Interval" name="TemperatureLoggingInterval" size="2" type="uint16" value="3"/>)"},
        {11, "NVMeFeatures", "TempThreshold", "3",
         R"(<Property category="attribute" displayName="Temperature Threshold" name="TempThreshold" size="4" type="sint32" value="3"/>)"},
        {12, "WriteCache", "WriteCacheState", "3",
         R"(<Property category="attribute" displayName="Write Cache State" name="WriteCacheState" size="2" type="uint16" value="3"/>)"},
        {13, "WriteCache", "WriteCacheReorderingStateEnabled", "true",
         R"(<Property category="attribute" displayName="Write Cache Reordering State Enabled" name="WriteCacheReorderingStateEnabled" size="1" type="boolean" value="True"/>)"},
        {14, "DIPM", "DIPMEnabled", "true",
         R"(<Property category="attribute" displayName="DIPM Enabled" name="DIPMEnabled" size="1" type="boolean" value="True"/>)"},
        {15, "ErrorRecoveryControl", "WriteErrorRecoveryTimer", "3",
         R"(<Property category="attribute" displayName="Write Error Recovery Timer" name="WriteErrorRecoveryTimer" size="2" type="uint16" value="3"/>)"},
        {16, "WriteCache", "WriteCacheEnabled", "true",
         R"(<Property category="attribute" displayName="Write Cache Enabled" name="WriteCacheEnabled" size="1" type="boolean" value="True"/>)"},
        {25, "NVMeFeatures", "SMBusAddress", "3",
         R"(<Property category="attribute" displayName="SM Bus Address" name="SMBusAddress" size="4" type="uint32" value="3"/>)"},
        {26, "LatencyTracking", "LatencyTrackingEnabled", "true",
         R"(<Property category="attribute" displayName="Latency Tracking Enabled" name="LatencyTrackingEnabled" size="1" type="boolean" value="True"/>)"},
        {42, "NVMeFeatures", "ResetCRCError", "true",
         R"(<Property category="attribute" displayName="Reset CRC Error" name="ResetCRCError" size="1" type="boolean" value="True"/>)"},
        {43, "NVMeFeatures", "AggregationThreshold", "3",
         R"(<Property category="attribute" displayName="Aggregation Threshold" name="AggregationThreshold" size="4" type="uint32" value="3"/>)"},
        {44, "NVMeFeatures", "AggregationTime", "3",
         R"(<Property category="attribute" displayName="Aggregation Time" name="AggregationTime" size="4" type="uint32" value="3"/>)"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.id);
        startAnew();
        const Outcome outcome = run({.id = row.id,
                                     .options = {{"-force", ""}},
                                     .targets = {{"-norvossd", "1"}},
                                     .properties = {{row.property, row.typed}},
                                     .typed = ""});
        EXPECT_EQ(outcome.result,
                  std::string("0 Set ") + row.property + " successful. Completed successfully.");
        EXPECT_EQ(outcome.log, "");
        EXPECT_EQ(request(), textOf({.job = row.job,
                                     .method = "SetProperty",
                                     .properties = "",
                                     .selection = row.sent,
                                     .index = "1"}));
    }
}

/// A line that is carried out.
struct SentRow {
    const char* about;
    Line line;
    Request request;
    std::string log;
};

const std::string TAKES_LONG = "(This can take several minutes to complete)\n";
const std::string SELF_TEST_LOG =
    "Running drive self-test routine. This can take several minutes to complete.\n";

std::string formatProperties(const std::string& type, const std::string& chosen,
                             const std::string& force) {
    return typed("Type", "Type", "string", type) + chosen +
           typed("Force", "Force", "boolean", force);
}

std::string identifyProperties(const std::string& structure, const std::string& namespaceId) {
    return typed("ControllerNamespaceStructure", "Controller Namespace Structure", "uint8",
                 structure) +
           typed("NamespaceId", "NamespaceId", "uint32", namespaceId);
}

std::string selfTestProperties(const std::string& second) {
    std::string properties = typed("TestType", "Test Type", "string", "short") +
                             typed("Mode", "Mode", "string", "captive");
    if (!second.empty()) properties += typed("TestType", "Test Type", "string", second);
    return properties;
}

std::vector<SentRow> showRows() {
    const std::string all = wanted("ModelNumber") + wanted("SerialNumber") + wanted("Firmware") +
                            wanted("ProductFamily") + wanted("Index") + wanted("DevicePath") +
                            wanted("Bootloader") + wanted("FirmwareUpdateAvailable") +
                            wanted("DeviceStatus");
    const std::string get = "GetProperties";
    return {
        {"drives", {0, {}, {{"-norvossd", ""}}, {}, ""}, {"NorvoSSD", get, "", all, ""}, ""},
        {"a drive", {0, {}, {{"-norvossd", "1"}}, {}, ""}, {"NorvoSSD", get, "", all, "1"}, ""},
        {"no target at all", {0, {}, {}, {}, ""}, {"NorvoSSD", get, "", all, ""}, ""},
        {"all attributes",
         {0, {{"-all", ""}}, {{"-norvossd", "0"}}, {}, ""},
         {"NorvoSSD", get, "", "", "0"},
         ""},
        {"all beats display",
         {0, {{"-all", ""}, {"-display", "Index"}}, {{"-norvossd", "0"}}, {}, ""},
         {"NorvoSSD", get, "", "", "0"},
         ""},
        {"one attribute",
         {0, {{"-display", "SerialNumber"}}, {{"-norvossd", "0"}}, {}, ""},
         {"NorvoSSD", get, "", wanted("SerialNumber"), "0"},
         ""},
        {"attributes, nothing trimmed",
         {0, {{"-display", "Foo, Index,,foo"}}, {{"-norvossd", ""}}, {}, ""},
         {"NorvoSSD", get, "", wanted("Foo") + wanted(" Index") + wanted("") + wanted("foo"), ""},
         ""},
        {"a blank attribute",
         {0, {{"-display", " "}}, {{"-norvossd", ""}}, {}, ""},
         {"NorvoSSD", get, "", wanted(" "), ""},
         ""},
        {"SMART", {18, {}, {{"-smart", ""}}, {}, ""}, {"SMART", get, "", "", ""}, ""},
        {"a SMART attribute",
         {18, {}, {{"-smart", "AF"}, {"-norvossd", "1"}}, {}, ""},
         {"SMART", get, typed("ID", "ID", "string", "AF"), "", "1"},
         ""},
        {"properties of SMART",
         {18, {{"-display", "ID,Worst"}}, {{"-smart", "5"}}, {}, ""},
         {"SMART", get, typed("ID", "ID", "string", "5"), wanted("ID") + wanted("Worst"), ""},
         ""},
        {"sensors", {19, {}, {{"-sensor", ""}}, {}, ""}, {"HealthMetrics", get, "", "", ""}, ""},
        {"performance",
         {20, {}, {{"-performance", ""}}, {}, ""},
         {"Performance", get, "", "", ""},
         ""},
        {"an eye diagram",
         {45, {}, {{"-eye_diagram", ""}, {"-norvossd", "1"}}, {}, ""},
         {"EyeDiagram", get, "", "", "1"},
         ""},
        {"an eye diagram of a lane and a group",
         {45, {}, {{"-norvossd", "1"}}, {{"Lane", "0x1"}, {"Group", "B"}}, ""},
         {"EyeDiagram", get,
          typed("Group", "Group", "string", "B") + typed("Lane", "Lane", "uint16", "0x1"), "", "1"},
         ""},
    };
}

std::vector<SentRow> methodRows() {
    const std::string call = "Method";
    const auto log = [](const std::string& id) { return typed("LogId", "Log Id", "uint32", id); };
    const auto reads = [](const std::string& value) {
        return typed("LatencyStatisticsForReadCommands", "Latency Statistics For Read Commands",
                     "boolean", value);
    };
    const auto selfTest = [](const std::string& value) {
        return Line{22, {}, {{"-norvossd", "1"}, {"-selftest", value}}, {}, ""};
    };
    const auto nvmeLog = [](const std::string& value) {
        return Line{40, {}, {{"-nvmelog", value}}, {}, ""};
    };
    const auto latency = [](const std::string& value) {
        return Line{35, {}, {{"-latencystatistics", value}}, {}, ""};
    };
    return {
        {"self-test",
         selfTest(""),
         {"DriveSelfTest", call, selfTestProperties(""), "", "1"},
         SELF_TEST_LOG},
        {"short self-test",
         selfTest("SHORT"),
         {"DriveSelfTest", call, selfTestProperties("short"), "", "1"},
         SELF_TEST_LOG},
        {"extended self-test, which asks for the other long one",
         selfTest("extended"),
         {"DriveSelfTest", call, selfTestProperties("conveyance"), "", "1"},
         SELF_TEST_LOG},
        {"conveyance self-test, which asks for the other long one",
         selfTest("Conveyance"),
         {"DriveSelfTest", call, selfTestProperties("extended"), "", "1"},
         SELF_TEST_LOG},
        {"self-test without its target",
         {22, {}, {}, {}, ""},
         {"DriveSelfTest", call, selfTestProperties(""), "", ""},
         ""},
        {"standby",
         {23, {}, {{"-norvossd", "1"}, {"-standby", ""}}, {}, ""},
         {"StandbyImmediate", call, "", "", "1"},
         ""},
        {"standby without a drive",
         {23, {}, {{"-standby", ""}}, {}, ""},
         {"StandbyImmediate", call, "", "", ""},
         ""},
        {"temperature",
         {33, {}, {{"-hdatemperature", ""}}, {}, ""},
         {"HDATemperature", call, "", "", ""},
         ""},
        {"counters",
         {34, {}, {{"-phycounters", ""}}, {}, ""},
         {"PhyCounters", call, "", "", ""},
         ""},
        {"reads", latency("Reads"), {"LatencyTracking", call, reads("True"), "", ""}, ""},
        {"writes", latency("WRITES"), {"LatencyTracking", call, reads("False"), "", ""}, ""},
        {"all logs", nvmeLog(""), {"NVMeLog", call, "", "", ""}, ""},
        {"no log named", {40, {}, {}, {}, ""}, {"NVMeLog", call, "", "", ""}, ""},
        {"errors", nvmeLog("ErrorInfo"), {"NVMeLog", call, log("1"), "", ""}, ""},
        {"health", nvmeLog("smarthealthinfo"), {"NVMeLog", call, log("2"), "", ""}, ""},
        {"firmware", nvmeLog("FIRMWARESLOTINFO"), {"NVMeLog", call, log("3"), "", ""}, ""},
        {"statistics", nvmeLog("TemperatureStatistics"), {"NVMeLog", call, log("197"), "", ""}, ""},
        {"queues", nvmeLog("QueueMetrics"), {"NVMeLog", call, log("203"), "", ""}, ""},
    };
}

std::vector<SentRow> formatRows() {
    const std::string call = "Method";
    const std::string warning = "WARNING! You have selected to delete all the data on the drive! \n"
                                "Proceed with the delete? (Y|N): ";
    const std::string formatWarning = "WARNING! You have selected to format the drive! \n"
                                      "Proceed with the format? (Y|N): ";
    const auto id = [](const std::string& value) {
        return typed("NamespaceId", "NamespaceId", "uint32", value);
    };
    const Words forced = {{"-force", ""}};
    const Words drive = {{"-norvossd", "1"}};
    const auto inNamespace = [](const std::string& value) {
        return Words{{"-norvossd", "1"}, {"-nvmeformat", ""}, {"-namespace", value}};
    };
    return {
        {"a forced delete",
         {24, forced, drive, {}, ""},
         {"Format", call, formatProperties("Delete", "", "true"), "", "1"},
         "Deleting..." + TAKES_LONG},
        {"an agreed delete, which is not forced",
         {24, {}, drive, {}, "y"},
         {"Format", call, formatProperties("Delete", "", "false"), "", "1"},
         warning + "Deleting..." + TAKES_LONG},
        {"a forced format",
         {32, forced, drive, {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true"), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"an agreed format",
         {32, {}, drive, {}, "Yes\n"},
         {"Format", call, formatProperties("NVMeFormat", "", "false"), "", "1"},
         formatWarning + "Formatting..." + TAKES_LONG},
        {"every property of a format, as typed",
         {32,
          forced,
          drive,
          {{"LBAFormat", "x"},
           {"MetadataSettings", "2"},
           {"ProtectionInformation", "-1"},
           {"SecureEraseSetting", ""}},
          ""},
         {"Format", call,
          formatProperties(
              "NVMeFormat",
              typed("SecureEraseSetting", "Secure Erase Setting", "uint8", "") +
                  typed("LBAFormat", "LBA Format", "uint8", "x") +
                  typed("ProtectionInformation", "Protection Information", "uint8", "-1") +
                  typed("MetadataSettings", "Metadata Settings", "uint8", "2"),
              "true"),
          "", "1"},
         "Formatting..." + TAKES_LONG},
        {"all namespaces",
         {32, forced, inNamespace("0xFFFFFFFF"), {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true") + id("0xFFFFFFFF"), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"a namespace",
         {32, forced, inNamespace("12"), {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true") + id("12"), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"digits without a prefix",
         {32, forced, inNamespace("fF"), {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true") + id("fF"), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"the digit behind the prefix isn't looked at",
         {32, forced, inNamespace("0xZ1"), {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true") + id("0xZ1"), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"an empty namespace passes as hexadecimal",
         {32, forced, inNamespace(""), {}, ""},
         {"Format", call, formatProperties("NVMeFormat", "", "true") + id(""), "", "1"},
         "Formatting..." + TAKES_LONG},
        {"firmware, forced",
         {17, forced, {{"-norvossd", "0"}}, {}, ""},
         {"FirmwareUpdate", call, "", "", "0"},
         "Updating firmware...\n"},
        {"firmware, agreed, with a source that goes nowhere",
         {17, {{"-source", "x"}}, {{"-norvossd", "0"}}, {}, "Y"},
         {"FirmwareUpdate", call, "", "", "0"},
         "WARNING! You have selected to update the drives firmware! \n"
         "Proceed with the update? (Y|N): Updating firmware...\n"},
    };
}

std::vector<SentRow> namespaceRows() {
    const std::string call = "Method";
    const std::string job = "NamespaceManagement";
    const auto action = [](const std::string& word) {
        return typed("Action", "Action", "string", word);
    };
    const auto sharing = [](const std::string& value) {
        return typed("MultiPathIoCapabilities", "Multi Path IO Capabilities", "uint8", value);
    };
    const auto id = [](const std::string& value) {
        return typed("NamespaceId", "NamespaceId", "uint32", value);
    };
    const auto controller = [](const std::string& value) {
        return typed("NVMeControllerID", "NVMe Controller ID", "uint16", value);
    };
    const auto at = [](const std::string& value) {
        return Words{{"-namespace", value}, {"-norvossd", "1"}};
    };
    const auto identify = [](int command, const Words& targets) {
        return Line{command, {}, targets, {}, ""};
    };
    return {
        {"create",
         {27, {}, at(""), {{"Size", "1000"}}, ""},
         {job, call,
          action("create") + typed("Size", "Size", "uint64", "1000") + sharing("1") + id(""), "",
          "1"},
         ""},
        {"create with every property, as typed",
         {27,
          {},
          at(""),
          {{"LBAFormat", "3"},
           {"MultiPathIoCapabilities", "x"},
           {"ProtectionInformation", "1"},
           {"Size", "big"}},
          ""},
         {job, call,
          action("create") + typed("Size", "Size", "uint64", "big") +
              typed("LBAFormat", "LBA Format", "uint8", "3") +
              typed("ProtectionInformation", "Protection Information", "uint8", "1") +
              sharing("x") + id(""),
          "", "1"},
         ""},
        {"delete, agreed",
         {28, {}, at("2"), {}, "y"},
         {job, call, action("delete") + sharing("1") + id("2"), "", "1"},
         "WARNING! You have selected to delete the namespace!\nProceed with the delete? (Y|N): "},
        {"delete, forced",
         {28, {{"-force", ""}}, at("2"), {}, ""},
         {job, call, action("delete") + sharing("1") + id("2"), "", "1"},
         ""},
        {"attach, its namespace as typed",
         {29, {}, at("x,y"), {}, ""},
         {job, call, action("attach") + sharing("1") + id("x,y"), "", "1"},
         ""},
        {"attach to a controller",
         {29, {}, {{"-namespace", "1"}, {"-norvossd", "1"}, {"-nvmecontroller", "007"}}, {}, ""},
         {job, call, action("attach") + sharing("1") + id("1") + controller("007"), "", "1"},
         ""},
        {"detach",
         {30, {}, {{"-namespace", "1"}, {"-norvossd", "1"}, {"-nvmecontroller", "0"}}, {}, ""},
         {job, call, action("detach") + sharing("1") + id("1") + controller("0"), "", "1"},
         ""},

        {"no structure", identify(31, {{"-identify", ""}}), {"Identify", call, "", "", ""}, ""},
        {"a controller",
         identify(31, {{"-identify", ""}, {"-nvmecontroller", ""}}),
         {"Identify", call, identifyProperties("1", "0"), "", ""},
         ""},
        {"a controller whose value goes nowhere",
         identify(31, {{"-nvmecontroller", "5"}, {"-norvossd", "1"}}),
         {"Identify", call, identifyProperties("1", "0"), "", "1"},
         ""},
        {"attached namespaces",
         identify(31, {{"-namespace", "ATTACHED"}}),
         {"Identify", call, identifyProperties("2", "0"), "", ""},
         ""},
        {"allocated namespaces",
         identify(31, {{"-namespace", "Allocated"}}),
         {"Identify", call, identifyProperties("16", "0"), "", ""},
         ""},
        {"a namespace",
         identify(31, {{"-namespace", "012"}}),
         {"Identify", call, identifyProperties("17", "012"), "", ""},
         ""},
        {"a namespace that is none",
         identify(31, {{"-namespace", "foo"}}),
         {"Identify", call, "", "", ""},
         ""},
        {"a namespace in hexadecimal",
         identify(31, {{"-namespace", "0x1"}}),
         {"Identify", call, "", "", ""},
         ""},
        {"every controller",
         identify(41, {{"-nvmecontroller", ""}}),
         {"Identify", call, identifyProperties("19", "0"), "", ""},
         ""},
        {"the controllers of a namespace",
         identify(41, {{"-nvmecontroller", ""}, {"-namespace", "3"}, {"-norvossd", "1"}}),
         {"Identify", call, identifyProperties("18", "3"), "", "1"},
         ""},
    };
}

std::vector<SentRow> dumpRows() {
    const std::string call = "Method";
    const auto address = [](const std::string& value) {
        return typed("LogAddress", "Log Address", "uint8", value);
    };
    return {
        {"nlog", {36, {}, {{"-nlog", ""}}, {}, ""}, {"Nlog", call, "", "", ""}, ""},
        {"nlog of a drive",
         {36, {{"-destination", "x.bin"}}, {{"-nlog", ""}, {"-norvossd", "0"}}, {}, ""},
         {"Nlog", call, "", "", "0"},
         ""},
        {"event log", {37, {}, {{"-eventlog", ""}}, {}, ""}, {"EventLog", call, "", "", ""}, ""},
        {"assert log", {38, {}, {{"-assertlog", ""}}, {}, ""}, {"AssertLog", call, "", "", ""}, ""},
        {"log page", {39, {}, {{"-gpl", "1"}}, {}, ""}, {"GPL", call, address("1"), "", ""}, ""},
        {"a page of a log, as typed",
         {39,
          {},
          {{"-gpl", "0xFF"}, {"-norvossd", "0"}},
          {{"SectorCount", "0x10"}, {"PageNum", "2"}},
          ""},
         {"GPL", call,
          address("0xFF") + typed("PageNum", "Page Num", "uint16", "2") +
              typed("SectorCount", "Sector Count", "uint32", "0x10"),
          "", "0"},
         ""},
        {"an empty destination is none",
         {36, {{"-destination", ""}}, {{"-nlog", ""}}, {}, ""},
         {"Nlog", call, "", "", ""},
         ""},
        // The empty text counts as hexadecimal.
        {"values left out",
         {39, {}, {{"-gpl", ""}}, {{"PageNum", ""}, {"SectorCount", ""}}, ""},
         {"GPL", call,
          address("") + typed("PageNum", "Page Num", "uint16", "") +
              typed("SectorCount", "Sector Count", "uint32", ""),
          "", ""},
         ""},
    };
}

TEST_F(NorvoSSDFeatureTest, SendsWhatTheLineAsksFor) {
    for (const auto& rows : {showRows(), methodRows(), formatRows(), namespaceRows(), dumpRows()}) {
        for (const SentRow& row : rows) {
            SCOPED_TRACE(row.about);
            startAnew();
            const Outcome outcome = run(row.line);
            const bool isDump = row.line.id >= 36 && row.line.id <= 39;
            EXPECT_EQ(outcome.result, isDump ? "0 \nNo results\n" : "0 \nA : 1\n");
            EXPECT_EQ(outcome.log, row.log);
            EXPECT_EQ(request(), textOf(row.request));
        }
    }
}

// --- What is refused ---

TEST_F(NorvoSSDFeatureTest, RefusesALineBeforeAnythingIsSent) {
    struct Row {
        Line line;
        std::string result;
        std::string log;
    };

    const Words drive = {{"-norvossd", "1"}};
    const std::string noDrive = "8 Error: -norvossd target not found.";
    const std::string noIndex = "8 Error: Must specify an norvo ssd index.";
    const std::string range = "8 Error: Index Out of Range.";
    const std::string latency =
        "8 Error: Invalid latency log given. Supported values are 'reads' and 'writes'.";
    const std::string nvmeLog =
        "8 Error: Invalid NVMe log given. Supported values are 'ErrorInfo', 'SmartHealthInfo', "
        "'FirmwareSlotInfo', 'TemperatureStatistics', 'QueueMetrics', or not specified for all of "
        "them.";
    const std::string selfTest =
        "8 Error: Invalid self test given. Supported values are 'short', 'extended', and "
        "'conveyance'. If nothing is specified, a short test will be ran.";
    const std::string controller =
        "8 Error: Invalid value for -nvmecontroller target. The value must be an integer.";
    const std::string formatId = "8 Error: Invalid value for -namespace target. The value must be "
                                 "a valid namespace ID or 0xFFFFFFFF.";
    const std::string listId =
        "8 Error: Invalid value for -namespace target. The value must be a valid namespace ID.";
    const std::string destination =
        "8 Error: -destination can only be used when one -norvossd is selected.";
    const std::string deleteQuestion =
        "WARNING! You have selected to delete all the data on the drive! \n"
        "Proceed with the delete? (Y|N): ";
    const Row rows[] = {
        {{21, {}, drive, {}, ""},
         "3 Error: CommandSpecId 21 of Feature NorvoSSD is not supported in the current context.",
         ""},
        {{46, {}, drive, {}, ""},
         "3 Error: CommandSpecId 46 of Feature NorvoSSD is not supported in the current context.",
         ""},
        {{-1, {}, drive, {}, ""},
         "3 Error: CommandSpecId -1 of Feature NorvoSSD is not supported in the current context.",
         ""},

        {{8, {}, {}, {{"PhySpeed", "3"}}, ""}, noDrive, ""},
        {{8, {}, {{"-norvossd", ""}}, {{"PhySpeed", "3"}}, ""}, noIndex, ""},
        {{8, {}, {{"-norvossd", "12345"}}, {{"PhySpeed", "3"}}, ""}, range, ""},
        {{8, {}, drive, {}, ""}, "7 Error: Property not found: PhySpeed", ""},
        {{8, {}, drive, {{"physpeed", "3"}}, ""}, "7 Error: Property not found: PhySpeed", ""},
        {{8, {}, drive, {{"PhySpeed", ""}}, ""},
         "8 Error: Must specify a value for the given property: PhySpeed",
         ""},
        {{3, {}, drive, {{"PhyConfig", "x"}}, ""},
         "8 Error: Invalid value given for PhyConfig",
         ""},
        {{3, {}, drive, {{"PhyConfig", "1,2"}}, ""},
         "8 Error: Invalid value given for PhyConfig",
         ""},
        {{3, {}, drive, {{"PhyConfig", "65536"}}, ""},
         "8 Error: Invalid value given for PhyConfig",
         ""},
        {{3, {}, drive, {{"PhyConfig", "99999999999999999999"}}, ""},
         "8 Error: Invalid value given for PhyConfig",
         ""},
        {{9, {}, drive, {{"SSCEnabled", "yes"}}, ""},
         "8 Error: Invalid value given for SSCEnabled",
         ""},
        {{7, {}, drive, {{"ReadErrorRecoveryTimer", "-1"}}, ""},
         "8 Error: Invalid value given for ReadErrorRecoveryTimer",
         ""},

        {{0, {}, {{"-norvossd", "12345"}}, {}, ""}, range, ""},
        {{0, {}, {{"-norvossd", "physicaldrivex"}}, {}, ""},
         "8 Error: Invalid Physical Drive Path",
         ""},
        {{0, {}, {{"-norvossd", std::string(61, 's')}}, {}, ""},
         "8 Error: Invalid norvossd target",
         ""},
        {{45, {}, drive, {{"Lane", "x"}}, ""}, "8 Error: Invalid Lane given x", ""},
        {{45, {}, drive, {{"Lane", "65536"}, {"Group", "A"}}, ""},
         "8 Error: Invalid Lane given 65536",
         ""},

        {{35, {}, {{"-latencystatistics", "both"}}, {}, ""}, latency, ""},
        {{35, {}, {{"-latencystatistics", ""}}, {}, ""}, latency, ""},
        {{35, {}, {}, {}, ""}, latency, ""},
        {{40, {}, {{"-nvmelog", "ChangedNamespaceList"}}, {}, ""}, nvmeLog, ""},
        {{40, {}, {{"-nvmelog", " "}}, {}, ""}, nvmeLog, ""},
        {{22, {}, {{"-norvossd", "1"}, {"-selftest", "long"}}, {}, ""}, selfTest, ""},

        {{24, {}, {}, {}, "y"}, noDrive, ""},
        {{24, {{"-force", ""}}, {{"-norvossd", ""}}, {}, ""}, noIndex, ""},
        {{24, {}, drive, {}, "n"}, "0 Cancelled", deleteQuestion},
        {{24, {}, drive, {}, "\n"}, "0 Cancelled", deleteQuestion},
        {{24, {}, drive, {}, ""}, "0 Cancelled", deleteQuestion},
        {{32, {}, drive, {}, "no"},
         "0 Cancelled",
         "WARNING! You have selected to format the drive! \nProceed with the format? (Y|N): "},
        {{32, {{"-force", ""}}, {{"-norvossd", "1"}, {"-namespace", "all"}}, {}, ""}, formatId, ""},
        {{32, {{"-force", ""}}, {{"-norvossd", "1"}, {"-namespace", "-1"}}, {}, ""}, formatId, ""},
        // The question comes before the check of the namespace.
        {{24, {}, {{"-norvossd", "1"}, {"-namespace", "all"}}, {}, "y"}, formatId, deleteQuestion},

        {{28, {}, drive, {}, "x"},
         "0 Cancelled",
         "WARNING! You have selected to delete the namespace!\nProceed with the delete? (Y|N): "},
        {{27, {}, {{"-namespace", ""}}, {{"Size", "1"}}, ""}, noDrive, ""},
        {{30, {}, {{"-namespace", "1"}, {"-norvossd", "0"}, {"-nvmecontroller", "x"}}, {}, ""},
         controller,
         ""},
        {{29, {}, {{"-namespace", "1"}, {"-norvossd", "0"}, {"-nvmecontroller", ""}}, {}, ""},
         controller,
         ""},
        {{29, {}, {{"-namespace", "1"}, {"-norvossd", "0"}, {"-nvmecontroller", "0x1"}}, {}, ""},
         controller,
         ""},

        {{31, {}, {{"-namespace", "1"}, {"-nvmecontroller", ""}}, {}, ""},
         "8 Error: Conflicting targets provided. Please specify -nvmecontroller or -namespace, not "
         "both.",
         ""},
        {{41, {}, {{"-namespace", "attached"}}, {}, ""}, listId, ""},
        {{41, {}, {{"-namespace", ""}}, {}, ""}, listId, ""},
        {{41, {}, {{"-namespace", "0x1"}}, {}, ""}, listId, ""},

        {{17, {}, {}, {}, "y"}, noDrive, ""},
        {{17, {}, drive, {}, "n"},
         "0 Cancelled",
         "WARNING! You have selected to update the drives firmware! \n"
         "Proceed with the update? (Y|N): "},

        {{36, {{"-destination", "x.bin"}}, {{"-nlog", ""}}, {}, ""}, destination, ""},
        {{36, {{"-destination", "x.bin"}}, {{"-nlog", ""}, {"-norvossd", ""}}, {}, ""},
         destination,
         ""},
        {{39, {}, {{"-gpl", "x"}}, {}, ""}, "8 Error: Invalid log address given x", ""},
        {{39, {}, {{"-gpl", "256"}}, {}, ""}, "8 Error: Invalid log address given 256", ""},
        {{39, {}, {{"-gpl", "1"}}, {{"PageNum", "65536"}}, ""},
         "8 Error: Invalid PageNum given 65536",
         ""},
        {{39, {}, {{"-gpl", "1"}}, {{"SectorCount", "1,2"}}, ""},
         "8 Error: Invalid SectorCount given 1,2",
         ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.line.id) + ": " + row.result);
        startAnew();
        const Outcome outcome = run(row.line);
        EXPECT_EQ(outcome.result, row.result);
        EXPECT_EQ(outcome.log, row.log);
        EXPECT_FALSE(hasSent());
    }
    EXPECT_FALSE(std::filesystem::exists("x.bin"));
}

// --- Setting ---

TEST_F(NorvoSSDFeatureTest, NotesWhatATemperatureThresholdDoes) {
    Line line = {11, {}, {{"-norvossd", "1"}}, {{"TempThreshold", "70"}}, ""};
    EXPECT_EQ(run(line).log,
              "NOTE: NVMe* 2.5\" Drives begin thermal throttling at 66 deg C and NVMe* AIC drives "
              "begin thermal throttling at 75 deg C. Setting a TempThreshold value above these "
              "temperatures will mean the drive will start being thermally throttled before the "
              "drive generates a warning. Please consult the product specifications for the drive "
              "being used to set this value correctly.\n");
    EXPECT_TRUE(hasSent());

    line.options = {{"-force", ""}};
    EXPECT_EQ(run(line).log, "");
}

TEST_F(NorvoSSDFeatureTest, TellsTheNoteBeforeItLooksAtTheValue) {
    const Outcome outcome = run({11, {}, {{"-norvossd", "1"}}, {{"TempThreshold", "hot"}}, ""});

    EXPECT_EQ(outcome.result, "8 Error: Invalid value given for TempThreshold");
    EXPECT_EQ(outcome.log.substr(0, 11), "NOTE: NVMe*");
    EXPECT_FALSE(hasSent());
}

TEST_F(NorvoSSDFeatureTest, ReadsAValueByTheTypeOfItsProperty) {
    struct Row {
        int id;
        const char* name;
        const char* typed;
        const char* sent;
    };

    const Row rows[] = {
        {3, "PhyConfig", "0x10",
         R"(displayName="Phy Config" name="PhyConfig" size="2" type="uint16" value="16")"},
        {3, "PhyConfig", "ff",
         R"(displayName="Phy Config" name="PhyConfig" size="2" type="uint16" value="255")"},
        {9, "SSCEnabled", "FALSE",
         R"(displayName="SSC Enabled" name="SSCEnabled" size="1" type="boolean" value="False")"},
        {9, "SSCEnabled", "0",
         R"(displayName="SSC Enabled" name="SSCEnabled" size="1" type="boolean" value="False")"},
        {9, "SSCEnabled", "1",
         R"(displayName="SSC Enabled" name="SSCEnabled" size="1" type="boolean" value="True")"},
        {8, "PhySpeed", "a,b <1.5>",
         R"(displayName="Phy Speed" name="PhySpeed" size="10" type="string" )"
         R"(value="a,b &amp;lt;1.5&amp;gt;")"},
        {2, "MaximumLBA", "50%",
         R"(displayName="Maximum LBA" name="MaximumLBA" size="4" type="string" value="50%")"},
        {25, "SMBusAddress", "4294967295",
         R"(displayName="SM Bus Address" name="SMBusAddress" size="4" type="uint32" )"
         R"(value="4294967295")"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        startAnew();
        run({row.id, {}, {{"-norvossd", "1"}}, {{row.name, row.typed}}, ""});
        EXPECT_NE(request().find(std::string(R"(<Object name="Properties"><Property )"
                                             R"(category="attribute" )") +
                                 row.sent + "/></Object></Object>"),
                  std::string::npos)
            << request();
    }
}

TEST_F(NorvoSSDFeatureTest, AnswersASetWithTheLibrarysWords) {
    struct Row {
        std::string answer;
        std::string result;
    };

    const auto answer = [](const std::string& code, const std::string& message) {
        return R"(<Object><Object category="status"><Property name="Code" value=")" + code +
               R"("/><Property name="Message" value=")" + message + R"("/></Object></Object>)";
    };
    const Row rows[] = {
        {answer("0", "Completed successfully."),
         "0 Set PhySpeed successful. Completed successfully."},
        {answer("0", ""), "0 Set PhySpeed successful."},
        {answer("9", "Not supported."), "3 Error: Not supported."},
        {answer("9", ""), "3 Error: Category =  Code = 9"},
        // An answer without a status leaves the default one, which tells of success.
        {"<Object/>", "0 Set PhySpeed successful. Completed successfully."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.answer);
        startAnew();
        order("reply.xml", row.answer);
        EXPECT_EQ(run({8, {}, {{"-norvossd", "1"}}, {{"PhySpeed", "3"}}, ""}).result, row.result);
    }
}

// --- The road to the library and back ---

TEST_F(NorvoSSDFeatureTest, AnswersTheFailuresOfTheLink) {
    struct Row {
        const char* order;
        std::string value;
        std::string result;
    };

    const std::string failed =
        "2 Error: ORVEL Interface failure receiving XML Response. ORVEL Interface error code = ";
    const std::string noXml = "10 Error: ORVEL Interface failure receiving XML Response. No valid "
                              "data received.";
    const Row rows[] = {
        {"receive_codes", "5", failed + "5"},
        {"receive_codes", "4294967295", failed + "4294967295"},
        {"receive_codes", "8 8", failed + "8"},
        {"receive_codes", "8 5", failed + "5"},
        {"receive_codes", "0", failed + "0"},
        {"filled_size", "0", noXml},
        {"filled_size", "20", noXml},
        {"reply.xml", "garbage", noXml},
        {"reply.xml", "<Object", noXml},
        {"reply.xml", "<Other/>", noXml},
        {"reply.xml", std::string("\0<Object/>", 10), noXml},
        {"reply.xml", "", failed + "0"},
        {"version", "1", "1 Error: Invalid ORVEL Interface version."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.order) + " " + row.value);
        startAnew();
        order(row.order, row.value);
        for (const Line& line : {Line{0, {}, {}, {}, ""}, Line{36, {}, {{"-nlog", ""}}, {}, ""},
                                 Line{8, {}, {{"-norvossd", "1"}}, {{"PhySpeed", "3"}}, ""}}) {
            EXPECT_EQ(run(line).result, row.result);
        }
    }
}

TEST_F(NorvoSSDFeatureTest, IgnoresASizeBeyondTheBuffer) {
    order("filled_size", "4000000000");

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, "0 \nA : 1\n");
}

TEST_F(NorvoSSDFeatureTest, AnswersEveryCommandAlikeWithoutTheLibrary) {
    std::filesystem::remove("opt/libNorvo.SSDFeatures.so.2.0.0");

    for (const int id : {0, 8, 17, 21, 24, 31, 36, 45, 99}) {
        SCOPED_TRACE(id);
        const Outcome outcome = run({id, {}, {}, {}, "y"});
        EXPECT_EQ(outcome.result,
                  "1 Error: Failed to find valid library: libNorvo.SSDFeatures.so.2.0.0");
        EXPECT_EQ(outcome.log, "");
    }
}

TEST_F(NorvoSSDFeatureTest, SavesThePayloadsOfADump) {
    order("reply.xml", R"(<Object><Object category="output"><Object name="Nlog" key="SN1">)"
                       R"(<Object category="payload" value="4142"/></Object></Object></Object>)");

    EXPECT_EQ(run({36, {}, {{"-nlog", ""}}, {}, ""}).result,
              "0 \nNlog_SN1 : Successfully written Nlog data to Nlog_SN1.bin\n");
    EXPECT_EQ(run({36, {{"-destination", "x"}}, {{"-norvossd", "sn1"}}, {}, ""}).result,
              "0 \nNlog_SN1 : Successfully written Nlog data to x\n");

    EXPECT_EQ(get("Nlog_SN1.bin"), "AB");
    EXPECT_EQ(get("x"), "AB");
}

TEST_F(NorvoSSDFeatureTest, SavesNothingIfTheWholeRequestFailed) {
    order("reply.xml", R"(<Object><Object category="status"><Property name="Code" value="5"/>)"
                       R"(</Object><Object category="output"><Object name="Nlog" key="SN1">)"
                       R"(<Object category="payload" value="4142"/></Object></Object></Object>)");

    EXPECT_EQ(run({36, {}, {{"-nlog", ""}}, {}, ""}).result, "3 Error: Category =  Code = 5");

    EXPECT_FALSE(std::filesystem::exists("Nlog_SN1.bin"));
}

TEST_F(NorvoSSDFeatureTest, UnloadsTheLibraryWhenItGoes) {
    run({0, {}, {}, {}, ""});

    EXPECT_EQ(calls(), "GetVer() = 20000400\n"
                       "Load(1)\n"
                       "SendXMLMessage(request.xml) handle 4294967297\n"
                       "ReceiveXMLMessage(4294967297, null, 0) = 8, size 260\n"
                       "ReceiveXMLMessage(4294967297, buffer, 260) = 0, size 260\n"
                       "Unload()\n");
}

TEST_F(NorvoSSDFeatureTest, DoesNothingWithTheLibraryUntilACommandRuns) {
    EXPECT_EQ(inChild([] {
                  std::vector<CommandSpec> commands;
                  NorvoSSDFeature().getPaths(commands);
                  return std::to_string(commands.size());
              }),
              "45");
    EXPECT_EQ(calls(), "");
}

TEST_F(NorvoSSDFeatureTest, SendsNothingBeforeItIsLoaded) {
    EXPECT_EQ(inChild([] {
                  NorvoSSDFeature feature;
                  XmlObject object;
                  std::string text = "before";
                  Status status;
                  return feature.sendRequest(object, text)->outputText() + "|" +
                         feature.receiveResponse(1, text, status)->outputText() + "|" + text;
              }),
              "Error: ORVEL Interface not loaded|Error: ORVEL Interface not loaded|before");
    EXPECT_EQ(calls(), "");
}

TEST_F(NorvoSSDFeatureTest, HandsBackTheTextAndTheStatusOfAnAnswer) {
    EXPECT_EQ(inChild([] {
                  NorvoSSDFeature feature;
                  if (feature.loadFeatureLibrary() != nullptr) return std::string("not loaded");
                  XmlObject object;
                  std::string text;
                  Status status(1, 2, "before");
                  if (feature.sendRequest(object, text, status) != nullptr) {
                      return std::string("refused");
                  }
                  return text + "|" + std::to_string(status.getCategory()) + "|" +
                         std::to_string(status.getCode()) + "|" + status.getMessage();
              }),
              DONE + "|0|0|Completed successfully.");
    EXPECT_EQ(request(), R"(<?xml version="1.0" encoding="utf-8"?><Object>)" + PRODUCTS +
                             MODULE_FOLDERS + "</Object>");
}

// --- The tool's configuration ---

TEST_F(NorvoSSDFeatureTest, AppliesTheConfigurationToTheLibrary) {
    struct Row {
        const char* about;
        std::string file;
        std::string result;
        std::string calls;  ///< those behind Load
    };

    const std::string shown = "0 \nA : 1\n";
    const std::string corrupted =
        "4 Error: Invalid or corrupted configuration file: opt/tavik_config.xml";
    const std::string beside =
        "SetLSIPath(\"" + std::filesystem::read_symlink("/proc/self/exe").parent_path().string() +
        "/libLSI.AdapterAPI.so.4.02\") = true\n";
    const std::string sent = "SendXMLMessage(request.xml) handle 4294967297\n"
                             "ReceiveXMLMessage(4294967297, null, 0) = 8, size 260\n"
                             "ReceiveXMLMessage(4294967297, buffer, 260) = 0, size 260\n";
    const std::string logged = "EnableLogger(\"/var/log/x.log\", 0, 1) = 0\n";
    const auto setting = [](const std::string& type, const std::string& value) {
        return R"(<Object><Property name="EnableLog" type=")" + type + R"(" value=")" + value +
               R"("/><Property name="LogFile" type="string" value="f"/></Object>)";
    };
    const Row rows[] = {
        {"log off", configuration("false", "false", "/var/log/x.log"), shown, sent},
        {"log on", configuration("true", "false", "/var/log/x.log"), shown, logged + sent},
        {"log on, capitals", configuration("TRUE", "False", "/var/log/x.log"), shown,
         logged + sent},
        {"neither", configuration("maybe", "maybe", "/var/log/x.log"), shown, sent},
        {"adapter on", configuration("false", "True", "/var/log/x.log"), shown, beside + sent},
        {"both", configuration("true", "true", "/var/log/x.log"), shown, logged + beside + sent},
        {"an empty log file", configuration("true", "false", ""), shown,
         "EnableLogger(\"\", 0, 1) = 0\n" + sent},
        {"no settings", "<Object></Object>", shown, sent},
        {"another name of the top element", setting("string", "true"), shown,
         "EnableLogger(\"f\", 0, 1) = 0\n" + sent},
        {"a setting of another type", setting("boolean", "true"), shown, sent},
        {"a setting of no type", setting("", "true"), shown, sent},
        {"an empty file", "", corrupted, ""},
        {"no XML", "garbage", corrupted, ""},
        {"cut short", configuration("true", "false", "x").substr(0, 100), corrupted, ""},
        {"another top element", "<Other/>", corrupted, ""},
        {"bytes beyond ASCII", configuration("true", "false", "\xC3\xA4\xFF"), shown,
         "EnableLogger(\"\xC3\xA4\xFF\", 0, 1) = 0\n" + sent},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.about);
        startAnew();
        put("opt/tavik_config.xml", row.file);
        EXPECT_EQ(run({0, {}, {}, {}, ""}).result, row.result);
        EXPECT_EQ(calls(), "GetVer() = 20000400\nLoad(1)\n" + row.calls + "Unload()\n");
        EXPECT_EQ(get("opt/tavik_config.xml"), row.file);
    }
}

TEST_F(NorvoSSDFeatureTest, RefusesAMissingConfiguration) {
    std::filesystem::remove("opt/tavik_config.xml");
    const std::string corrupted =
        "4 Error: Invalid or corrupted configuration file: opt/tavik_config.xml";

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, corrupted);
    EXPECT_FALSE(hasSent());

    std::filesystem::create_directory("opt/tavik_config.xml");
    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, corrupted);
}

TEST_F(NorvoSSDFeatureTest, RefusesALogFileThatTheLibraryDoesNotTake) {
    put("opt/tavik_config.xml", configuration("true", "true", "/none/x.log"));
    order("enable_logger_code", "6");
    order("set_lsi_path", "false false");

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, "4 Error: Invalid debug LogFile given: /none/x.log");

    // The adapter is announced all the same.
    const std::string beside = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    EXPECT_EQ(calls(), "GetVer() = 20000400\n"
                       "Load(1)\n"
                       "EnableLogger(\"/none/x.log\", 0, 1) = 6\n"
                       "SetLSIPath(\"" +
                           beside +
                           "/libLSI.AdapterAPI.so.4.02\") = false\n"
                           "SetLSIPath(\"/usr/lib/tavik/libLSI.AdapterAPI.so.4.02\") = false\n"
                           "Unload()\n");
}

TEST_F(NorvoSSDFeatureTest, TakesAnyOtherCodeOfTheLogAsSuccess) {
    put("opt/tavik_config.xml", configuration("true", "false", "/none/x.log"));
    order("enable_logger_code", "5");

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, "0 \nA : 1\n");
}

TEST_F(NorvoSSDFeatureTest, LeavesTheConfigurationAloneWithoutALogger) {
    install("without-EnableLogger");
    put("opt/tavik_config.xml", "garbage");

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, "0 \nA : 1\n");
}

TEST_F(NorvoSSDFeatureTest, AnnouncesNoAdapterToALibraryThatTakesNone) {
    install("without-SetLSIPath");
    put("opt/tavik_config.xml", configuration("false", "true", "x"));

    EXPECT_EQ(run({0, {}, {}, {}, ""}).result, "0 \nA : 1\n");
}

}  // namespace
}  // namespace tavik::norvossd
