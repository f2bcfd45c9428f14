// What the words of a line add to a request, and which of them are refused.
#include "tool/DriveArguments.h"

#include "core/AttributeTypes.h"
#include "features/JobProperties.h"

#include <gtest/gtest.h>

#include <string>

namespace tavik::norvossd {
namespace {

using cli::framework::ParsedCommand;
using cli::framework::ResultBase;
using orvel::core::Attribute;
namespace features = orvel::features;
namespace types = orvel::core::types;

// The frame of every request here; what the words add stands between the two.
const std::string HEAD =
    R"(<?xml version="1.0" encoding="utf-8"?>)"
    R"(<Object name="Job" type="Method">)"
    R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
    R"(type="boolean" value="true"/>)";
const std::string TAIL = "</Object>";

const std::string SHORT_TEST =
    R"(<Property category="attribute" displayName="Test Type" name="TestType" size="0" )"
    R"(type="string" value="short"/>)";
const std::string CAPTIVE =
    R"(<Property category="attribute" displayName="Mode" name="Mode" size="0" )"
    R"(type="string" value="captive"/>)";

const std::string SELF_TEST_PROGRESS =
    "Running drive self-test routine. This can take several minutes to complete.";

class DriveArguments : public ::testing::Test {
protected:
    std::string sent() const { return request.getObject().toString(); }

    DriveRequest request{"Job", "Method", ""};
    ParsedCommand parsed;
};

void expectError(const std::unique_ptr<ResultBase>& result, const std::string& message) {
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getErrorCode(), 8);
    EXPECT_EQ(result->outputText(), "Error: " + message);
}

TEST_F(DriveArguments, RefuseWithACodeAndAMessage) {
    const auto result = refuse(-7, "Not this one.");

    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->getErrorCode(), -7);
    EXPECT_EQ(result->outputText(), "Error: Not this one.");
}

TEST_F(DriveArguments, TellAnEmptyValueFromAnAbsentWord) {
    const std::map<std::string, std::string> words = {{"-smart", ""}, {"-gpl", "0x10"}};

    ASSERT_NE(valueOf(words, "-smart"), nullptr);
    EXPECT_EQ(*valueOf(words, "-smart"), "");
    ASSERT_NE(valueOf(words, "-gpl"), nullptr);
    EXPECT_EQ(valueOf(words, "-gpl"), &words.at("-gpl"));
    EXPECT_EQ(valueOf(words, "-GPL"), nullptr);
    EXPECT_EQ(valueOf(words, ""), nullptr);
}

TEST_F(DriveArguments, ForceByTheOptionAlone) {
    EXPECT_FALSE(isForced(parsed));
    parsed.targets["-force"] = "";
    parsed.properties["-force"] = "";
    parsed.options["-f"] = "";
    EXPECT_FALSE(isForced(parsed));
    parsed.options["-force"] = "";
    EXPECT_TRUE(isForced(parsed));
}

TEST_F(DriveArguments, AddANamedPropertyAsItIsTyped) {
    parsed.properties = {{"LBAFormat", "not a number"}, {"Size", ""}};
    parsed.targets = {{"SecureEraseSetting", "1"}};
    parsed.options = {{"SecureEraseSetting", "1"}};

    addIfNamed(request, features::format::LBAFormat(), parsed);
    addIfNamed(request, features::format::SecureEraseSetting(), parsed);
    addIfNamed(request, features::namespace_management::Size(), parsed);

    EXPECT_EQ(sent(), HEAD +
                          R"(<Property category="attribute" displayName="LBA Format" )"
                          R"(name="LBAFormat" size="0" type="uint8" value="not a number"/>)"
                          R"(<Property category="attribute" displayName="Size" )"
                          R"(name="Size" size="0" type="uint64" value=""/>)" +
                          TAIL);
}

TEST_F(DriveArguments, AddAPropertyOfValidFormAsItIsTyped) {
    struct Row {
        std::string type;
        std::string value;
    };

    const Row rows[] = {
        {types::uint16(), "0"},    {types::uint16(), "65535"},      {types::uint16(), "0xFFFF"},
        {types::uint16(), "0x1a"}, {types::uint16(), "ff"},         {types::uint16(), ""},
        {types::uint16(), "007"},  {types::uint32(), "4294967295"}, {types::boolean(), "true"},
        {types::boolean(), "0"},   {types::string(), ""},           {types::string(), "any one"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type + " " + row.value);
        DriveRequest own("Job", "Method", "");
        parsed.properties["PageNum"] = row.value;

        EXPECT_EQ(addIfValid(own, Attribute("PageNum", "Page Num", row.type), parsed), nullptr);
        EXPECT_EQ(own.getObject().toString(),
                  HEAD +
                      R"(<Property category="attribute" displayName="Page Num" )"
                      R"(name="PageNum" size="0" type=")" +
                      row.type + R"(" value=")" + row.value + R"("/>)" + TAIL);
    }
}

TEST_F(DriveArguments, RefuseAPropertyOfInvalidForm) {
    struct Row {
        std::string type;
        std::string value;
    };

    const Row rows[] = {
        {types::uint16(), "page"},       {types::uint16(), "65536"},
        {types::uint16(), "0x10000"},    {types::uint8(), "256"},
        {types::uint32(), "4294967296"}, {types::boolean(), "maybe"},
        {types::vectorOfStrings(), "a"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.type + " " + row.value);
        parsed.properties["PageNum"] = row.value;

        expectError(addIfValid(request, Attribute("PageNum", "Page Num", row.type), parsed),
                    "Invalid PageNum given " + row.value);
        EXPECT_EQ(sent(), HEAD + TAIL);
    }
}

TEST_F(DriveArguments, CheckNoPropertyThatTheLineDoesNotName) {
    parsed.targets["PageNum"] = "page";

    EXPECT_EQ(addIfValid(request, features::gpl::PageNum(), parsed), nullptr);
    EXPECT_EQ(sent(), HEAD + TAIL);
}

TEST_F(DriveArguments, ChooseTheLatencyLogInAnyCase) {
    struct Row {
        std::string typed;
        std::string value;
    };

    const Row rows[] = {
        {"reads", "True"},   {"Reads", "True"},   {"READS", "True"},
        {"writes", "False"}, {"wRiTeS", "False"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        DriveRequest own("Job", "Method", "");
        parsed.targets["-latencystatistics"] = row.typed;

        EXPECT_EQ(chooseLatencyLog(own, parsed), nullptr);
        EXPECT_EQ(own.getObject().toString(),
                  HEAD +
                      R"(<Property category="attribute" )"
                      R"(displayName="Latency Statistics For Read Commands" )"
                      R"(name="LatencyStatisticsForReadCommands" size="0" type="boolean" )"
                      R"(value=")" +
                      row.value + R"("/>)" + TAIL);
    }
}

TEST_F(DriveArguments, RefuseEveryOtherLatencyLog) {
    const std::string message =
        "Invalid latency log given. Supported values are 'reads' and 'writes'.";

    expectError(chooseLatencyLog(request, parsed), message);
    for (const char* const typed : {"", "read", "reads ", "writess", "true"}) {
        SCOPED_TRACE(typed);
        parsed.targets["-latencystatistics"] = typed;

        expectError(chooseLatencyLog(request, parsed), message);
        EXPECT_EQ(sent(), HEAD + TAIL);
    }
}

TEST_F(DriveArguments, ChooseTheNVMeLogInAnyCase) {
    struct Row {
        std::string typed;
        std::string identifier;
    };

    const Row rows[] = {
        {"ErrorInfo", "1"},        {"SmartHealthInfo", "2"},
        {"FirmwareSlotInfo", "3"}, {"TemperatureStatistics", "197"},
        {"QueueMetrics", "203"},   {"errorinfo", "1"},
        {"QUEUEMETRICS", "203"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        DriveRequest own("Job", "Method", "");
        parsed.targets["-nvmelog"] = row.typed;

        EXPECT_EQ(chooseNVMeLog(own, parsed), nullptr);
        EXPECT_EQ(own.getObject().toString(),
                  HEAD +
                      R"(<Property category="attribute" displayName="Log Id" name="LogId" )"
                      R"(size="0" type="uint32" value=")" +
                      row.identifier + R"("/>)" + TAIL);
    }
}

TEST_F(DriveArguments, AskForAllNVMeLogsByNamingNone) {
    EXPECT_EQ(chooseNVMeLog(request, parsed), nullptr);
    parsed.targets["-nvmelog"] = "";
    EXPECT_EQ(chooseNVMeLog(request, parsed), nullptr);

    EXPECT_EQ(sent(), HEAD + TAIL);
}

TEST_F(DriveArguments, RefuseEveryOtherNVMeLog) {
    for (const char* const typed : {" ", "Error", "1", "CommandEffectsLog", "QueueMetrics,"}) {
        SCOPED_TRACE(typed);
        parsed.targets["-nvmelog"] = typed;

        expectError(chooseNVMeLog(request, parsed),
                    "Invalid NVMe log given. Supported values are 'ErrorInfo', "
                    "'SmartHealthInfo', 'FirmwareSlotInfo', 'TemperatureStatistics', "
                    "'QueueMetrics', or not specified for all of them.");
        EXPECT_EQ(sent(), HEAD + TAIL);
    }
}

// Intended: the two long tests are swapped, and the default stays ahead of the choice.
TEST_F(DriveArguments, SendTheChosenSelfTestBehindTheDefaultWithTheLongOnesSwapped) {
    struct Row {
        std::string typed;
        std::string second;
    };

    const Row rows[] = {
        {"short", "short"}, {"extended", "conveyance"}, {"conveyance", "extended"},
        {"SHORT", "short"}, {"Extended", "conveyance"}, {"conveyancE", "extended"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.typed);
        DriveRequest own("Job", "Method", "");
        parsed.targets["-selftest"] = row.typed;
        std::string progress;

        EXPECT_EQ(chooseSelfTest(own, parsed, progress), nullptr);
        EXPECT_EQ(own.getObject().toString(),
                  HEAD + SHORT_TEST + CAPTIVE +
                      R"(<Property category="attribute" displayName="Test Type" )"
                      R"(name="TestType" size="0" type="string" value=")" +
                      row.second + R"("/>)" + TAIL);
        EXPECT_EQ(progress, SELF_TEST_PROGRESS);
    }
}

TEST_F(DriveArguments, RunTheShortSelfTestIfTheLineChoosesNone) {
    parsed.targets["-selftest"] = "";
    std::string progress;

    EXPECT_EQ(chooseSelfTest(request, parsed, progress), nullptr);

    EXPECT_EQ(sent(), HEAD + SHORT_TEST + CAPTIVE + TAIL);
    EXPECT_EQ(progress, SELF_TEST_PROGRESS);
}

TEST_F(DriveArguments, TellNoProgressOfASelfTestThatTheLineDoesNotName) {
    std::string progress;

    EXPECT_EQ(chooseSelfTest(request, parsed, progress), nullptr);

    EXPECT_EQ(sent(), HEAD + SHORT_TEST + CAPTIVE + TAIL);
    EXPECT_EQ(progress, "");
}

TEST_F(DriveArguments, RefuseEveryOtherSelfTest) {
    for (const char* const typed : {"long", " short", "status", "abort"}) {
        SCOPED_TRACE(typed);
        parsed.targets["-selftest"] = typed;
        std::string progress;

        expectError(chooseSelfTest(request, parsed, progress),
                    "Invalid self test given. Supported values are 'short', 'extended', and "
                    "'conveyance'. If nothing is specified, a short test will be ran.");
    }
}

}  // namespace
}  // namespace tavik::norvossd
