// What the words of a line add to a request, and which words are refused.
#include "tool/DriveArguments.h"

#include "features/JobProperties.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace tavik::norvossd {
namespace {

using cli::framework::ParsedCommand;
using cli::framework::ResultBase;
namespace gpl = orvel::features::gpl;

/// A line that names one target.
ParsedCommand target(const std::string& word, const std::string& value) {
    ParsedCommand parsed;
    parsed.targets[word] = value;
    return parsed;
}

ParsedCommand property(const std::string& word, const std::string& value) {
    ParsedCommand parsed;
    parsed.properties[word] = value;
    return parsed;
}

DriveRequest request() {
    return {"Job", "Method", ""};
}

/// What was added to `request()`.
std::string added(const DriveRequest& request) {
    const std::string before =
        R"(<?xml version="1.0" encoding="utf-8"?>)"
        R"(<Object name="Job" type="Method">)"
        R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
        R"(type="boolean" value="true"/>)";
    const std::string behind = "</Object>";
    const std::string text = request.getObject().toString();
    EXPECT_TRUE(text.starts_with(before) && text.ends_with(behind)) << text;
    return text.substr(before.size(), text.size() - before.size() - behind.size());
}

void expectRefusal(const std::unique_ptr<ResultBase>& result, const std::string& text) {
    ASSERT_NE(nullptr, result);
    EXPECT_EQ(8, result->getErrorCode());
    EXPECT_EQ("Error: " + text, result->output());
}

const std::string SHORT_TEST =
    R"(<Property category="attribute" displayName="Test Type" name="TestType" size="0" )"
    R"(type="string" value="short"/>)"
    R"(<Property category="attribute" displayName="Mode" name="Mode" size="0" )"
    R"(type="string" value="captive"/>)";

TEST(DriveArguments, RefuseWithACodeAndAMessage) {
    const auto refusal = refuse(7, "No.");
    EXPECT_EQ(7, refusal->getErrorCode());
    EXPECT_EQ("Error: No.", refusal->output());
}

TEST(DriveArguments, TellAnEmptyValueFromAnAbsentOne) {
    const std::map<std::string, std::string> words = {{"-smart", ""}};
    ASSERT_NE(nullptr, valueOf(words, "-smart"));
    EXPECT_EQ("", *valueOf(words, "-smart"));
    EXPECT_EQ(nullptr, valueOf(words, "-SMART"));
}

TEST(DriveArguments, AreForcedByTheOptionWhateverItsValue) {
    ParsedCommand parsed;
    EXPECT_FALSE(isForced(parsed));
    parsed.options["-force"] = "";
    EXPECT_TRUE(isForced(parsed));
}

TEST(DriveArguments, AddANamedPropertyUnchecked) {
    DriveRequest sent = request();
    addIfNamed(sent, gpl::PageNum(), property("PageNum", "no number"));
    addIfNamed(sent, gpl::SectorCount(), property("PageNum", "1"));
    EXPECT_EQ(R"(<Property category="attribute" displayName="Page Num" name="PageNum" size="0" )"
              R"(type="uint16" value="no number"/>)",
              added(sent));
}

TEST(DriveArguments, AddACheckedPropertyAsTypedAndRefuseABadOne) {
    DriveRequest sent = request();
    EXPECT_EQ(nullptr, addIfValid(sent, gpl::PageNum(), property("PageNum", "0x1F")));
    EXPECT_EQ(nullptr, addIfValid(sent, gpl::PageNum(), property("SectorCount", "no number")));
    expectRefusal(addIfValid(sent, gpl::PageNum(), property("PageNum", "65536")),
                  "Invalid PageNum given 65536");
    EXPECT_EQ(R"(<Property category="attribute" displayName="Page Num" name="PageNum" size="0" )"
              R"(type="uint16" value="0x1F"/>)",
              added(sent));
}

TEST(DriveArguments, ChooseALatencyLogInAnyCase) {
    struct Row {
        const char* word;
        const char* value;
    };

    const Row rows[] = {{"reads", "True"}, {"READS", "True"}, {"writes", "False"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        DriveRequest sent = request();
        EXPECT_EQ(nullptr, chooseLatencyLog(sent, target("-latencystatistics", row.word)));
        EXPECT_EQ(std::string(R"(<Property category="attribute" )"
                              R"(displayName="Latency Statistics For Read Commands" )"
                              R"(name="LatencyStatisticsForReadCommands" size="0" )"
                              R"(type="boolean" value=")") +
                      row.value + R"("/>)",
                  added(sent));
    }
}

TEST(DriveArguments, RefuseAnyOtherLatencyLog) {
    const ParsedCommand lines[] = {target("-latencystatistics", ""),
                                   target("-latencystatistics", "read"), ParsedCommand()};
    for (const ParsedCommand& line : lines) {
        DriveRequest sent = request();
        expectRefusal(chooseLatencyLog(sent, line),
                      "Invalid latency log given. Supported values are 'reads' and 'writes'.");
        EXPECT_EQ("", added(sent));
    }
}

TEST(DriveArguments, ChooseAnNVMeLogByItsNumber) {
    struct Row {
        const char* word;
        const char* id;
    };

    const Row rows[] = {
        {"ErrorInfo", "1"}, {"SmartHealthInfo", "2"},         {"FirmwareSlotInfo", "3"},
        {"errorinfo", "1"}, {"TemperatureStatistics", "197"}, {"QueueMetrics", "203"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        DriveRequest sent = request();
        EXPECT_EQ(nullptr, chooseNVMeLog(sent, target("-nvmelog", row.word)));
        EXPECT_EQ(std::string(R"(<Property category="attribute" displayName="Log Id" name="LogId" )"
                              R"(size="0" type="uint32" value=")") +
                      row.id + R"("/>)",
                  added(sent));
    }
}

TEST(DriveArguments, AskForEveryNVMeLogWithoutAWordAndRefuseAnUnknownOne) {
    DriveRequest sent = request();
    EXPECT_EQ(nullptr, chooseNVMeLog(sent, target("-nvmelog", "")));
    EXPECT_EQ(nullptr, chooseNVMeLog(sent, ParsedCommand()));
    expectRefusal(chooseNVMeLog(sent, target("-nvmelog", "1")),
                  "Invalid NVMe log given. Supported values are 'ErrorInfo', 'SmartHealthInfo', "
                  "'FirmwareSlotInfo', 'TemperatureStatistics', 'QueueMetrics', or not specified "
                  "for all of them.");
    EXPECT_EQ("", added(sent));
}

TEST(DriveArguments, SwapTheTwoLongSelfTests) {
    struct Row {
        const char* word;
        const char* type;
    };

    const Row rows[] = {{"short", "short"}, {"extended", "conveyance"}, {"Conveyance", "extended"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.word);
        DriveRequest sent = request();
        std::string progress;
        EXPECT_EQ(nullptr, chooseSelfTest(sent, target("-selftest", row.word), progress));
        EXPECT_EQ(SHORT_TEST +
                      R"(<Property category="attribute" displayName="Test Type" )"
                      R"(name="TestType" size="0" type="string" value=")" +
                      row.type + R"("/>)",
                  added(sent));
        EXPECT_EQ("Running drive self-test routine. This can take several minutes to complete.",
                  progress);
    }
}

TEST(DriveArguments, RunTheShortSelfTestWithoutAWordAndRefuseAnUnknownOne) {
    DriveRequest sent = request();
    std::string progress;
    EXPECT_EQ(nullptr, chooseSelfTest(sent, target("-selftest", ""), progress));
    EXPECT_EQ(SHORT_TEST, added(sent));

    DriveRequest refused = request();
    expectRefusal(chooseSelfTest(refused, target("-selftest", "long"), progress),
                  "Invalid self test given. Supported values are 'short', 'extended', and "
                  "'conveyance'. If nothing is specified, a short test will be ran.");
}

}  // namespace
}  // namespace tavik::norvossd
