// The XML forms of command paths, results and histories.
#include "core/CommandHistory.h"
#include "core/CommandResult.h"
#include "core/XmlConverter.h"
#include "core/xml/XmlProperty.h"
#include "tests/core/DeviceDoubles.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace orvel::core {
namespace {

using doubles::FakeCommand;
using doubles::FakeConnection;
using doubles::FakePath;
using doubles::FakeProtocolResult;

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::microseconds;
using boost::posix_time::minutes;
using boost::posix_time::ptime;
using boost::posix_time::seconds;
using boost::posix_time::time_duration;

std::string written(const xml::XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

template <class Object>
std::string xmlOf(const Object& object) {
    return written(*XmlConverter::toXml(object));
}

/// One whose XML is whatever the test wants.
class OddCommand : public FakeCommand {
public:
    explicit OddCommand(const xml::XmlElement* element)
        : FakeCommand("NVMe", "Odd"),
          element(element) {}

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return element == nullptr ? nullptr : element->clone();
    }

private:
    const xml::XmlElement* element;
};

class OddProtocolResult : public FakeProtocolResult {
public:
    explicit OddProtocolResult(const xml::XmlElement* element)
        : FakeProtocolResult(""),
          element(element) {}

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return element == nullptr ? nullptr : element->clone();
    }

private:
    const xml::XmlElement* element;
};

/// A command whose XML has children of its own.
class DeepCommand : public FakeCommand {
public:
    DeepCommand() : FakeCommand("NVMe", "Deep") {}

    std::unique_ptr<xml::XmlElement> toXml() const override {
        auto object = std::make_unique<xml::XmlObject>();
        object->setAttribute("category", "command");
        object->addValue("opcode", "06");
        object->addList(std::make_unique<xml::XmlList>());
        object->addObject(std::make_unique<xml::XmlObject>());
        return object;
    }
};

CommandResult timedResult() {
    CommandResult result;
    result.duration = seconds(1) + microseconds(500000);
    result.startTime = ptime(date(2024, 2, 29), hours(23) + minutes(59) + seconds(58));
    result.endTime = ptime(date(2024, 2, 29), hours(23) + minutes(59) + microseconds(59500000));
    return result;
}

// What follows the payloads in the XML of an otherwise default result.
constexpr const char* LOUD =
    "<Property category=\"quietToXml\" name=\"quietToXml\" value=\"False\"/>";
constexpr const char* NO_TIMES =
    "<Property category=\"startTime\" name=\"startTime\" value=\"not-a-date-time\"/>"
    "<Property category=\"endTime\" name=\"endTime\" value=\"not-a-date-time\"/>"
    "<Property category=\"duration\" name=\"duration\" value=\"00:00:00\"/>";
constexpr const char* NO_PAYLOADS =
    "<Property category=\"inputPayload\" displayName=\"payload\" name=\"payload\" size=\"0\""
    " type=\"bytepointer\" value=\"\"/>"
    "<Property category=\"outputPayload\" displayName=\"payload\" name=\"payload\" size=\"0\""
    " type=\"bytepointer\" value=\"\"/>";
constexpr const char* SUCCESS = "<Object category=\"status\">"
                                "<Property name=\"Category\" value=\"0\"/>"
                                "<Property name=\"Code\" value=\"0\"/>"
                                "<Property name=\"Message\" value=\"Completed successfully.\"/>"
                                "</Object>";

/// The XML of a default result with other objects around its status.
std::string defaultXml(const std::string& before, const std::string& behind) {
    return std::string("<Object category=\"commandResult\">") + NO_PAYLOADS + LOUD + NO_TIMES +
           before + SUCCESS + behind + "</Object>";
}

TEST(CommandXml, WritesAPathAsNameAndTimeout) {
    EXPECT_EQ(xmlOf<CommandPath>(FakePath("nvme0")), "<Object category=\"commandPath\">"
                                                     "<Property name=\"name\" value=\"nvme0\"/>"
                                                     "<Property name=\"timeout\" value=\"5\"/>"
                                                     "</Object>");
}

TEST(CommandXml, WritesNothingOfAPathsConnectionAndEngine) {
    FakePath path("nvme0", std::make_shared<FakeConnection>());
    path.setAsyncEngine(std::make_unique<doubles::FakeEngine>(doubles::newDiary()));
    EXPECT_EQ(xmlOf<CommandPath>(path), "<Object category=\"commandPath\">"
                                        "<Property name=\"name\" value=\"nvme0\"/>"
                                        "<Property name=\"timeout\" value=\"5\"/>"
                                        "</Object>");
}

TEST(CommandXml, WritesNegativeTimeoutsAndEscapesNames) {
    FakePath path("a<b & \"c\"");
    path.setTimeout(-1);
    EXPECT_EQ(xmlOf<CommandPath>(path),
              "<Object category=\"commandPath\">"
              "<Property name=\"name\" value=\"a&amp;lt;b &amp; &quot;c&quot;\"/>"
              "<Property name=\"timeout\" value=\"-1\"/>"
              "</Object>");
}

TEST(CommandXml, WritesPathsInKeyOrder) {
    std::map<std::string, std::shared_ptr<CommandPath>> paths;
    for (const char* name : {"b", "a", "C"})
        paths[name] = std::make_shared<FakePath>(name);
    paths["a"]->setTimeout(30);
    EXPECT_EQ(xmlOf(paths), "<List category=\"commandPathList\">"
                            "<Object category=\"commandPath\">"
                            "<Property name=\"name\" value=\"C\"/>"
                            "<Property name=\"timeout\" value=\"5\"/>"
                            "</Object>"
                            "<Object category=\"commandPath\">"
                            "<Property name=\"name\" value=\"a\"/>"
                            "<Property name=\"timeout\" value=\"30\"/>"
                            "</Object>"
                            "<Object category=\"commandPath\">"
                            "<Property name=\"name\" value=\"b\"/>"
                            "<Property name=\"timeout\" value=\"5\"/>"
                            "</Object>"
                            "</List>");
}

TEST(CommandXml, WritesNoPathsAsAnEmptyList) {
    EXPECT_EQ(xmlOf(std::map<std::string, std::shared_ptr<CommandPath>>()),
              "<List category=\"commandPathList\"></List>");
}

TEST(CommandXml, WritesAllOfAResult) {
    CommandResult result = timedResult();
    result.command = std::make_unique<FakeCommand>("NVMe", "Identify");
    result.status = Status(1, -5, "\"System\" error's <message>.");
    result.inputPayload = Payload("\x00\xFF"
                                  "A",
                                  3);
    result.outputPayload = Payload("0123456789ABCDEF!", 17);
    result.protocolResult = std::make_unique<FakeProtocolResult>("entry");
    result.commandPath = std::make_unique<FakePath>("nvme0");
    result.commandPath->setTimeout(30);

    EXPECT_EQ(
        xmlOf(result),
        "<Object category=\"commandResult\">"
        "<Property category=\"inputPayload\" displayName=\"payload\" name=\"payload\" size=\"3\""
        " type=\"bytepointer\" value=\"00FF41\"/>"
        "<Property category=\"outputPayload\" displayName=\"payload\" name=\"payload\" size=\"17\""
        " type=\"bytepointer\" value=\"3031323334353637383941424344454621\"/>"
        "<Property category=\"quietToXml\" name=\"quietToXml\" value=\"False\"/>"
        "<Property category=\"startTime\" name=\"startTime\" value=\"2024-Feb-29 23:59:58\"/>"
        "<Property category=\"endTime\" name=\"endTime\" value=\"2024-Feb-29 23:59:59.500000\"/>"
        "<Property category=\"duration\" name=\"duration\" value=\"00:00:01.500000\"/>"
        "<Object description=\"NVMe\" name=\"Identify\" value=\"1\"></Object>"
        "<Object description=\"\" name=\"result\" value=\"entry\"></Object>"
        "<Object category=\"status\">"
        "<Property name=\"Category\" value=\"1\"/>"
        "<Property name=\"Code\" value=\"-5\"/>"
        "<Property name=\"Message\""
        " value=\"&quot;System&quot; error&apos;s &amp;lt;message&amp;gt;.\"/>"
        "</Object>"
        "<Object category=\"commandPath\">"
        "<Property name=\"name\" value=\"nvme0\"/>"
        "<Property name=\"timeout\" value=\"30\"/>"
        "</Object>"
        "</Object>");
}

TEST(CommandXml, LeavesThePayloadsOutOfAQuietResultAndSaysSo) {
    CommandResult result = timedResult();
    result.inputPayload = Payload("in", 2);
    result.outputPayload = Payload("out", 3);
    result.quietToXml = true;
    EXPECT_EQ(
        xmlOf(result),
        "<Object category=\"commandResult\">"
        "<Property category=\"quietToXml\" name=\"quietToXml\" value=\"True\"/>"
        "<Property category=\"startTime\" name=\"startTime\" value=\"2024-Feb-29 23:59:58\"/>"
        "<Property category=\"endTime\" name=\"endTime\" value=\"2024-Feb-29 23:59:59.500000\"/>"
        "<Property category=\"duration\" name=\"duration\" value=\"00:00:01.500000\"/>"
        "<Object category=\"status\">"
        "<Property name=\"Category\" value=\"0\"/>"
        "<Property name=\"Code\" value=\"0\"/>"
        "<Property name=\"Message\" value=\"Completed successfully.\"/>"
        "</Object>"
        "</Object>");
}

TEST(CommandXml, WritesADefaultResultWithoutTimes) {
    EXPECT_EQ(
        xmlOf(CommandResult()),
        "<Object category=\"commandResult\">"
        "<Property category=\"inputPayload\" displayName=\"payload\" name=\"payload\" size=\"0\""
        " type=\"bytepointer\" value=\"\"/>"
        "<Property category=\"outputPayload\" displayName=\"payload\" name=\"payload\" size=\"0\""
        " type=\"bytepointer\" value=\"\"/>"
        "<Property category=\"quietToXml\" name=\"quietToXml\" value=\"False\"/>"
        "<Property category=\"startTime\" name=\"startTime\" value=\"not-a-date-time\"/>"
        "<Property category=\"endTime\" name=\"endTime\" value=\"not-a-date-time\"/>"
        "<Property category=\"duration\" name=\"duration\" value=\"00:00:00\"/>"
        "<Object category=\"status\">"
        "<Property name=\"Category\" value=\"0\"/>"
        "<Property name=\"Code\" value=\"0\"/>"
        "<Property name=\"Message\" value=\"Completed successfully.\"/>"
        "</Object>"
        "</Object>");
}

TEST(CommandXml, WritesEachOptionalPartWithoutTheOthers) {
    CommandResult withCommand;
    withCommand.command = std::make_unique<FakeCommand>("NVMe", "Identify");
    CommandResult withProtocolResult;
    withProtocolResult.protocolResult = std::make_unique<FakeProtocolResult>("entry");
    CommandResult withPath;
    withPath.commandPath = std::make_unique<FakePath>("nvme0");

    EXPECT_EQ(
        xmlOf(withCommand),
        defaultXml("<Object description=\"NVMe\" name=\"Identify\" value=\"1\"></Object>", ""));
    EXPECT_EQ(xmlOf(withProtocolResult),
              defaultXml("<Object description=\"\" name=\"result\" value=\"entry\"></Object>", ""));
    EXPECT_EQ(xmlOf(withPath), defaultXml("", "<Object category=\"commandPath\">"
                                              "<Property name=\"name\" value=\"nvme0\"/>"
                                              "<Property name=\"timeout\" value=\"5\"/>"
                                              "</Object>"));
}

TEST(CommandXml, WritesTheWholeXmlOfACommand) {
    CommandResult result;
    result.command = std::make_unique<DeepCommand>();
    EXPECT_EQ(xmlOf(result), defaultXml("<Object category=\"command\">"
                                        "<Property name=\"opcode\" value=\"06\"/>"
                                        "<List></List>"
                                        "<Object></Object>"
                                        "</Object>",
                                        ""));
}

TEST(CommandXml, LeavesOutWhatCanBeNoChildObject) {
    const xml::XmlProperty property;
    const xml::XmlList list;
    for (const xml::XmlElement* element : {static_cast<const xml::XmlElement*>(nullptr),
                                           static_cast<const xml::XmlElement*>(&property),
                                           static_cast<const xml::XmlElement*>(&list)}) {
        SCOPED_TRACE(element == nullptr ? "null" : element->getType());
        CommandResult result;
        result.command = std::make_unique<OddCommand>(element);
        result.protocolResult = std::make_unique<OddProtocolResult>(element);
        EXPECT_EQ(xmlOf(result), defaultXml("", ""));
    }
}

TEST(CommandXml, WritesTimesToTheMicrosecondAndSpansLikewise) {
    const date day(1999, 12, 31);

    struct Row {
        ptime start;
        ptime end;
        time_duration duration;
        const char* startText;
        const char* endText;
        const char* durationText;
    };

    const Row rows[] = {
        {ptime(day), ptime(day, microseconds(1)), microseconds(1), "1999-Dec-31 00:00:00",
         "1999-Dec-31 00:00:00.000001", "00:00:00.000001"},
        {ptime(day, hours(24) - microseconds(1)), ptime(day, hours(24)), hours(30),
         "1999-Dec-31 23:59:59.999999", "2000-Jan-01 00:00:00", "30:00:00"},
        {ptime(boost::posix_time::not_a_date_time), ptime(boost::posix_time::pos_infin),
         time_duration(boost::posix_time::not_a_date_time), "not-a-date-time", "+infinity",
         "not-a-date-time"},
        {ptime(boost::posix_time::neg_infin), ptime(day), -seconds(1), "-infinity",
         "1999-Dec-31 00:00:00", "-00:00:01"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.startText);
        CommandResult result;
        result.startTime = row.start;
        result.endTime = row.end;
        result.duration = row.duration;
        EXPECT_EQ(xmlOf(result),
                  std::string("<Object category=\"commandResult\">") + NO_PAYLOADS + LOUD +
                      "<Property category=\"startTime\" name=\"startTime\" value=\"" +
                      row.startText +
                      "\"/>"
                      "<Property category=\"endTime\" name=\"endTime\" value=\"" +
                      row.endText +
                      "\"/>"
                      "<Property category=\"duration\" name=\"duration\" value=\"" +
                      row.durationText + "\"/>" + SUCCESS + "</Object>");
    }
}

TEST(CommandXml, WritesAnEmptyHistoryWithItsSizes) {
    EXPECT_EQ(xmlOf(CommandHistory()),
              "<List category=\"commandHistory\" maxSize=\"1\" size=\"0\"></List>");
}

TEST(CommandXml, WritesTheLargestSizeOfAHistoryInDecimal) {
    CommandHistory history;
    history.setMaxSize(4294967295);
    EXPECT_EQ(xmlOf(history),
              "<List category=\"commandHistory\" maxSize=\"4294967295\" size=\"0\"></List>");
}

/// Three results in room for twelve, the middle one quiet, the last one full.
CommandHistory sampleHistory() {
    CommandHistory history;
    history.setMaxSize(12);
    CommandResult result;
    result.command = std::make_unique<FakeCommand>("NVMe", "First");
    history.add(result);
    result.command = nullptr;
    result.quietToXml = true;
    history.add(result);
    result.quietToXml = false;
    result.command = std::make_unique<FakeCommand>("NVMe", "Third");
    result.commandPath = std::make_unique<FakePath>("nvme0");
    history.add(result);
    return history;
}

std::string sampleHistoryXml() {
    return "<List category=\"commandHistory\" maxSize=\"12\" size=\"3\">" +
           defaultXml("<Object description=\"NVMe\" name=\"First\" value=\"1\"></Object>", "") +
           "<Object category=\"commandResult\">"
           "<Property category=\"quietToXml\" name=\"quietToXml\" value=\"True\"/>" +
           NO_TIMES + SUCCESS + "</Object>" +
           defaultXml("<Object description=\"NVMe\" name=\"Third\" value=\"1\"></Object>",
                      "<Object category=\"commandPath\">"
                      "<Property name=\"name\" value=\"nvme0\"/>"
                      "<Property name=\"timeout\" value=\"5\"/>"
                      "</Object>") +
           "</List>";
}

TEST(CommandXml, WritesTheResultsOfAHistoryOldestFirst) {
    EXPECT_EQ(xmlOf(sampleHistory()), sampleHistoryXml());
}

TEST(CommandXml, LeavesTheHistoryAsItWas) {
    const CommandHistory history = sampleHistory();

    EXPECT_EQ(xmlOf(history), sampleHistoryXml());

    EXPECT_EQ(history.size(), 3U);
    EXPECT_EQ(history.getMaxSize(), 12U);
    EXPECT_EQ(history.front().command->getName(), "First");
    EXPECT_EQ(history.back().command->getName(), "Third");
    EXPECT_EQ(xmlOf(history), sampleHistoryXml());
}

}  // namespace
}  // namespace orvel::core
