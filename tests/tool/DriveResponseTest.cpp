// What an answer means: its status, its objects as a result, its payloads as files.
#include "tool/DriveResponse.h"

#include "core/XmlConverter.h"
#include "tests/support/InstallationFixture.h"
#include "tool/NorvoSSDFeature.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tavik::norvossd {
namespace {

using orvel::core::Status;
using orvel::core::XmlConverter;
using orvel::core::xml::XmlObject;

std::string property(const std::string& name, const std::string& value) {
    return "<Property name=\"" + name + "\" value=\"" + value + "\"/>";
}

std::string statusObject(const std::string& contents) {
    return "<Object category=\"status\">" + contents + "</Object>";
}

std::string object(const std::string& attributes, const std::string& contents) {
    return "<Object " + attributes + ">" + contents + "</Object>";
}

/// A whole answer with this output.
std::string answerWith(const std::string& output) {
    return R"(<?xml version="1.0" encoding="utf-8"?><Object category="Job" name="NorvoSSD">)" +
           statusObject(property("Category", "0") + property("Code", "0") +
                        property("Message", "Completed successfully.")) +
           output + "</Object>";
}

TEST(ResponseStatus, RefusesACodeOtherThanZeroWithTheLibrarysWords) {
    struct Row {
        std::string properties;
        const char* text;  ///< null: no error
        std::int32_t category;
        std::int32_t code;
        std::string message;
    };

    const std::string category = property("Category", "11");
    const Row rows[] = {
        {category + property("Code", "0") + property("Message", "Done."), nullptr, 11, 0, "Done."},
        {category + property("Code", "0") + property("Message", ""), nullptr, 11, 0, ""},
        {category + property("Code", "5") + property("Message", "Drive is busy."),
         "Error: Drive is busy.", 11, 5, "Drive is busy."},
        {property("Message", "Out of order") + property("Code", "5") + category,
         "Error: Out of order", 11, 5, "Out of order"},
        {category + property("Code", "5") + property("Message", ""),
         "Error: Category = 11 Code = 5", 11, 5, ""},
        {category + property("Code", "5"), "Error: Category = 11 Code = 5", 11, 5, ""},
        {property("Code", "5"), "Error: Category =  Code = 5", 0, 5, ""},
        {category + property("Message", "No code"), nullptr, 11, 0, "No code"},
        {"", nullptr, 0, 0, ""},
        {category + property("Code", "00"), nullptr, 11, 0, ""},
        {category + property("Code", "0x10"), "Error: Category = 11 Code = 0x10", 11, 16, ""},
        {category + property("Code", "A"), "Error: Category = 11 Code = A", 11, 10, ""},
        {category + property("Code", "no number"), nullptr, 11, 0, ""},
        {category + property("Code", "-1"), nullptr, 11, 0, ""},
        {property("Category", "nothing") + property("Code", "1"),
         "Error: Category = nothing Code = 1", 0, 1, ""},
        {property("category", "1") + property("CODE", "1") + property("message", "x"), nullptr, 0,
         0, ""},
        {property("Other", "1") + property("Code", "2") + property("Message", "Kept"),
         "Error: Kept", 0, 2, "Kept"},
        {"<Property name=\"Code\"/>", nullptr, 0, 0, ""},
        {property("Code", "0") + property("Code", "7"), "Error: Category =  Code = 7", 0, 7, ""},
        {property("Code", "1") + property("Message", "a &lt;b&gt; &amp; &quot;c&quot;"),
         "Error: a <b> & \"c\"", 0, 1, "a <b> & \"c\""},
        {property("Code", "1") + property("Message", "\xC3\xA4\xFF"), "Error: \xC3\xA4\xFF", 0, 1,
         "\xC3\xA4\xFF"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.properties);
        const auto element = XmlConverter::toXml(object("category=\"Job\"",  //
                                                        statusObject(row.properties)));
        ASSERT_NE(element, nullptr);
        Status status(99, 98, "before");
        const auto failure = checkResponseStatus(*element, status);
        ASSERT_EQ(failure == nullptr, row.text == nullptr);
        if (failure != nullptr) {
            EXPECT_EQ(failure->outputText(), row.text);
            EXPECT_EQ(failure->getErrorCode(), 3);
        }
        EXPECT_EQ(status.getCategory(), row.category);
        EXPECT_EQ(status.getCode(), row.code);
        EXPECT_EQ(status.getMessage(), row.message);
    }
}

TEST(ResponseStatus, RefusesACodeTooLargeForAnyNumber) {
    const auto element = XmlConverter::toXml(statusObject(property("Code", std::string(30, '9'))));
    Status status;

    const auto failure = checkResponseStatus(*element, status);

    ASSERT_NE(failure, nullptr);
    EXPECT_EQ(failure->outputText(), "Error: Category =  Code = 999999999999999999999999999999");
}

TEST(ResponseStatus, IsFoundWhereverItLies) {
    const std::string failed = statusObject(property("Code", "5") + property("Message", "Busy"));
    const std::string places[] = {
        failed,
        object("", failed),
        object("", object("", object("name=\"x\"", failed))),
        object("", "<List>" + object("", failed) + "</List>"),
        "<Message>" + failed + "</Message>",
        "<List>" + failed + "</List>",
    };
    for (const std::string& place : places) {
        SCOPED_TRACE(place);
        const auto element = XmlConverter::toXml(place);
        ASSERT_NE(element, nullptr);
        Status status;
        const auto failure = NorvoSSDFeature::checkResponseStatus(*element, status);
        ASSERT_NE(failure, nullptr);
        EXPECT_EQ(failure->outputText(), "Error: Busy");
    }
}

TEST(ResponseStatus, IsNoErrorUnlessThereIsExactlyOne) {
    const std::string failed = statusObject(property("Code", "5"));
    const std::string answers[] = {
        object("category=\"Job\"", ""),
        object("category=\"Job\"", failed + failed),
        object("category=\"Job\"", failed + object("category=\"output\"", failed)),
        object("category=\"status\"", property("Code", "5") + failed),
        object("category=\"Status\"", property("Code", "5")),
        "<Message category=\"status\">" + property("Code", "5") + "</Message>",
        "<List category=\"status\"></List>",
        "<Property category=\"status\" name=\"Code\" value=\"5\"/>",
    };
    for (const std::string& answer : answers) {
        SCOPED_TRACE(answer);
        const auto element = XmlConverter::toXml(answer);
        ASSERT_NE(element, nullptr);
        Status status(99, 98, "before");
        EXPECT_EQ(checkResponseStatus(*element, status), nullptr);
        EXPECT_EQ(status.getCategory(), 99);
        EXPECT_EQ(status.getCode(), 98);
        EXPECT_EQ(status.getMessage(), "before");
    }
}

/// Answers and what they look like in text, with the exit code.
struct AnswerRow {
    std::string answer;
    std::string text;
    int code = 0;
};

void expectAnswers(const std::vector<AnswerRow>& rows) {
    for (const AnswerRow& row : rows) {
        SCOPED_TRACE(row.answer);
        const auto result = NorvoSSDFeature::responseToResult(row.answer);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->outputText(), row.text);
        EXPECT_EQ(result->getErrorCode(), row.code);
    }
}

TEST(ResponseResult, IsEmptyWithoutAnOutput) {
    const std::string output = object("category=\"output\"", property("A", "1"));
    const std::string nothing = "\nNo results\n";
    expectAnswers({
        {"", nothing},
        {"no XML", nothing},
        {"<Object", nothing},
        {"<Other></Other>", nothing},
        {"<Property category=\"output\"/>", nothing},
        {"<List>" + output + "</List>", nothing},
        {"<Message>" + output + "</Message>", nothing},
        {"<Object></Object>", nothing},
        {answerWith(""), nothing},
        {answerWith(object("category=\"result\"", property("A", "1"))), nothing},
        {answerWith(object("", output)), nothing},
        {answerWith("<List>" + output + "</List>"), nothing},
        {output, nothing},
        {answerWith("<Property category=\"output\" name=\"A\" value=\"1\"/>"), nothing},
        {answerWith(object("category=\"output\"", "")), nothing},
    });
}

TEST(ResponseResult, IsTheFirstOutputInAnyCase) {
    const std::string text = "\nA : 1\n";
    expectAnswers({
        {answerWith(object("category=\"output\"", property("A", "1"))), text},
        {answerWith(object("category=\"Output\"", property("A", "1"))), text},
        {answerWith(object("category=\"OUTPUT\"", property("A", "1"))), text},
        {answerWith(object("category=\"output\"", property("A", "1")) +
                    object("category=\"output\"", property("B", "2"))),
         text},
        {answerWith(object("category=\"output\" name=\"Kept away\" key=\"1\"", property("A", "1"))),
         text},
        {"<Object>" + object("category=\"output\"", property("A", "1")) + "</Object>", text},
    });
}

TEST(ResponseResult, NeverShowsTheVendorUniqueIdentifyPayload) {
    const std::string hidden = property("VendorUniqueIdentifyPayload", "00FF");
    const std::string shown = property("A", "1");
    expectAnswers({
        {answerWith(object("category=\"output\"", hidden)), "\nNo results\n"},
        {answerWith(object("category=\"output\"", shown + hidden)), "\nA : 1\n"},
        {answerWith(object("category=\"output\"",
                           object("name=\"D\"", hidden + object("name=\"E\"", hidden + shown)))),
         "\n- D -\n\n- E -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"",
                           object("category=\"attributeList\" key=\"K\"",
                                  "<Property name=\"VendorUniqueIdentifyPayload\" "
                                  "type=\"bytepointer\" value=\"00FF\"/>"
                                  "<Property name=\"A\" type=\"uint8\" value=\"1\"/>"))),
         "\n- K -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"", property("vendoruniqueidentifypayload", "00"))),
         "\nvendoruniqueidentifypayload : 00\n"},
        // Only the first one of each object is taken away.
        {answerWith(object("category=\"output\"", hidden + hidden)),
         "\nVendorUniqueIdentifyPayload : 00FF\n"},
    });
}

TEST(ResponseResult, ShowsPropertiesAsTheyStand) {
    expectAnswers({
        {answerWith(object("category=\"output\"", property("B", "2") + property("A", "1") +
                                                      property("B", "3") + property("", "") +
                                                      "<Property/>")),
         "\nB : 2\nA : 1\nB : 3\n : \n : \n"},
        {answerWith(object("category=\"output\"",
                           R"(<Property name="A" description="the first" value="1"/>)"
                           R"(<Property name="B" description="" value="2"/>)")),
         "\nA - the first : 1\nB : 2\n"},
        {answerWith(object("category=\"output\"",
                           R"(<Property name="a\b\\c" description="d\e" value="\\.\X"/>)")),
         R"(
a\\b\\\\c - d\e : \\.\X
)"},
        {answerWith(object("category=\"output\"", property("&lt;A&gt;", "&amp;&quot;&apos;"))),
         "\n<A> : &\"'\n"},
        {answerWith(object("category=\"output\"", property("\xC3\xA4", "\xFF"))),
         "\n\xC3\xA4 : \xFF\n"},
        {answerWith(object("category=\"output\" description=\"About\" value=\"this\"",
                           property("A", "1"))),
         "\nAbout : this\nA : 1\n"},
        {answerWith(object("category=\"output\" description=\"About\"", "")), "\nAbout : \n"},
        {answerWith(object("category=\"output\" description=\"\" value=\"this\"", "")),
         "\nNo results\n"},
    });
}

TEST(ResponseResult, ShowsEachChildUnderItsNameAndKey) {
    const std::string inside = property("A", "1");
    expectAnswers({
        {answerWith(object("category=\"output\"", object("name=\"Norvo SSD\" key=\"0\"", inside))),
         "\n- Norvo SSD 0 -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"", object("name=\"Norvo SSD\"", inside))),
         "\n- Norvo SSD -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"", object("name=\"N\" key=\"\"", inside))),
         "\n- N -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"", object("key=\"0\"", inside))),
         "\n-  0 -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"", object("", inside))), "\nA : 1\n"},
        {answerWith(object("category=\"output\"", object("name=\"N\" key=\"0\"", ""))),
         "\n- N 0 -\n\nNo results\n"},
        {answerWith(object("category=\"output\"",
                           object("name=\"D\" key=\"0\"", object("name=\"E\"", inside)) +
                               object("name=\"D\" key=\"1\"", inside) + inside)),
         "\nA : 1\n\n- D 0 -\n\n- E -\n\nA : 1\n\n- D 1 -\n\nA : 1\n"},
        {answerWith(object("category=\"output\"",
                           object(R"(name="a\b" key="c\d" description="x" value="y")", ""))),
         "\n- a\\b c\\d -\n\nx : y\n"},
        // Lists hold nothing that is shown.
        {answerWith(object("category=\"output\"",
                           "<List name=\"L\"><Object name=\"D\">" + inside + "</Object></List>")),
         "\nNo results\n"},
    });
}

TEST(ResponseResult, TakesItsErrorCodeFromTheLastChild) {
    const auto status = [](const std::string& contents) {
        return object("category=\"STATUS\"", contents);
    };
    const std::string failed = status(property("Code", "5") + property("Message", "Busy"));
    const std::string succeeded = status(property("Code", "0") + property("Message", "Fine"));
    const auto drive = [](const std::string& contents) { return object("name=\"D\"", contents); };
    const auto output = [](const std::string& contents) {
        return answerWith(object("category=\"output\"", contents));
    };
    expectAnswers({
        {output(failed), "\nStatus : Busy\n", 3},
        {output(succeeded), "\nStatus : Fine\n", 0},
        {output(drive(failed)), "\n- D -\n\nStatus : Busy\n", 3},
        {output(drive(drive(failed))), "\n- D -\n\n- D -\n\nStatus : Busy\n", 3},
        {output(drive(failed + succeeded)), "\n- D -\n\nStatus : Busy\n\nStatus : Fine\n", 0},
        {output(drive(succeeded + failed)), "\n- D -\n\nStatus : Fine\n\nStatus : Busy\n", 3},
        {output(drive(failed) + drive(succeeded)),
         "\n- D -\n\nStatus : Busy\n\n- D -\n\nStatus : Fine\n", 0},
        {output(drive(failed) + drive(property("A", "1"))),
         "\n- D -\n\nStatus : Busy\n\n- D -\n\nA : 1\n", 0},
        {output(drive(succeeded) + drive(failed)),
         "\n- D -\n\nStatus : Fine\n\n- D -\n\nStatus : Busy\n", 3},
        // A list of attributes has no say.
        {output(failed + object("category=\"attributeList\" key=\"K\"", "")),
         "\nStatus : Busy\n\n- K -\n\nNo results\n", 3},
        // A child of a status counts more than the status itself.
        {output(status(property("Code", "5") + drive(""))), "\n- D -\n\nNo results\n", 0},
    });
}

TEST(ResponseResult, ShowsAStatusByItsMessageOnly) {
    const auto output = [](const std::string& contents) {
        return answerWith(object("category=\"output\"", object("category=\"status\"", contents)));
    };
    expectAnswers({
        {output(property("MESSAGE", "m") + property("code", "1") + property("Category", "1") +
                property("Other", "x")),
         "\nStatus : m\n", 3},
        {output(property("Message", "a") + property("Message", "b")), "\nStatus : a\nStatus : b\n",
         0},
        {output(property("Code", "00")), "\nNo results\n", 3},
        {output("<Property name=\"Code\"/>"), "\nNo results\n", 3},
        {output(property("Code", "1") + property("Code", "0")), "\nNo results\n", 3},
        // A description becomes part of the name, which then is none of the two.
        {output(R"(<Property name="Message" description="d" value="m"/>)"
                R"(<Property name="Code" description="d" value="1"/>)"),
         "\nNo results\n", 0},
        {answerWith(object("category=\"output\"",
                           object("category=\"status\" name=\"S\" description=\"About\" "
                                  "value=\"v\"",
                                  property("Message", "m")))),
         "\n- S -\n\nAbout : v\nStatus : m\n", 0},
    });
}

TEST(ResponseResult, ShowsAListOfAttributesSortedByName) {
    const auto output = [](const std::string& attributes, const std::string& contents) {
        return answerWith(object("category=\"output\"", object(attributes, contents)));
    };
    expectAnswers({
        {output("category=\"attributeList\" name=\"N\" key=\"K\" description=\"d\" value=\"v\"",
                R"(<Property name="alpha" type="string" value="1"/>)"
                R"(<Property name="Zeta" type="string" value="2"/>)"
                R"(<Property name="Beta" type="string" value="3"/>)"
                R"(<Property name="_x" type="string" value="4"/>)"),
         "\n- K -\n\nBeta : 3\nZeta : 2\n_x : 4\nalpha : 1\n"},
        {output("category=\"ATTRIBUTELIST\"", R"(<Property name="A" type="string" value="1"/>)"),
         "\nA : 1\n"},
        {output("category=\"attributeList\" key=\"K\"", ""), "\n- K -\n\nNo results\n"},
        {output("category=\"attributeList\" key=\"K\"",
                R"(<Property name="a" type="boolean" value="true"/>)"
                R"(<Property name="b" type="boolean" value="1"/>)"
                R"(<Property name="c" type="uint8" value="300"/>)"
                R"(<Property name="d" type="sint32" value="12"/>)"
                R"(<Property name="e" type="hexValue" value="0x00001AB0"/>)"
                R"(<Property name="f" type="bytepointer" value="0aff"/>)"
                R"(<Property name="g" type="bytepointer" value="0af"/>)"
                R"(<Property name="h" type="vectorOfStrings" value="x~y"/>)"
                R"(<Property name="i" type="uint64" value="99999999999999999999"/>)"
                R"(<Property name="j" type="string" value="a\b" description="c\d"/>)"
                R"(<Property name="k\l" type="string" value=""/>)"
                R"(<Property name="m" type="sint8" value="1"/>)"
                R"(<Property name="n" type="ulong" value="1"/>)"
                R"(<Property name="o" type="vectorOfPayloads" value="1"/>)"
                R"(<Property name="p" type="other" value="1"/>)"
                R"(<Property name="q" value="1"/>)"),
         "\n- K -\n\n"
         "a : True\n"
         "b : False\n"
         "c : 44\n"
         "d : 12\n"
         "e : 0x1AB0\n"
         "f : 0AFF\n"
         "g : \n"
         "h : x~y\n"
         "i : 18446744073709551615\n"
         "j : a\\\\b c\\d\n"
         "k\\l : \n"},
        {output("category=\"attributeList\" key=\"K\"",
                R"(<Property name="A" type="string" value="earlier"/>)"
                R"(<Property name="B" type="string" value="x"/>)"
                R"(<Property name="A" type="string" value="later"/>)"),
         "\n- K -\n\nA : later\nB : x\n"},
        // Objects inside a list of attributes are not looked at.
        {output("category=\"attributeList\" key=\"K\"", object("name=\"D\"", property("A", "1"))),
         "\n- K -\n\nNo results\n"},
    });
}

TEST(ResponseResult, ShowsDrivesInEveryFormat) {
    const auto result = NorvoSSDFeature::responseToResult(answerWith(object(
        "category=\"output\"",
        object("name=\"Norvo SSD\" key=\"0\"",
               property("Index", "0") + property("SerialNumber", "A1") +
                   object("category=\"status\" name=\"State\"",
                          property("Code", "9") + property("Message", "Say &quot;no&quot;"))))));

    EXPECT_EQ(result->getErrorCode(), 3);
    EXPECT_EQ(result->outputText(), "\n"
                                    "- Norvo SSD 0 -\n"
                                    "\n"
                                    "Index : 0\n"
                                    "SerialNumber : A1\n"
                                    "\n"
                                    "- State -\n"
                                    "\n"
                                    "Status : Say \"no\"\n");
    EXPECT_EQ(result->outputXml(), "<>\n"
                                   "\t<Norvo_SSD_0>\n"
                                   "\t\t<Index>0</Index>\n"
                                   "\t\t<SerialNumber>A1</SerialNumber>\n"
                                   "\n"
                                   "\t\t<State>\n"
                                   "\t\t\t<Status>Say \"no\"</Status>\n"
                                   "\t\t</State>\n"
                                   "\t</Norvo_SSD_0>\n"
                                   "</>\n");
    EXPECT_EQ(result->outputJson(), "{\n"
                                    "\t\"Norvo SSD 0\":\n"
                                    "\t{\n"
                                    "\t\t\"Index\":0,\n"
                                    "\t\t\"SerialNumber\":\"A1\",\n"
                                    "\t\t\"State\":\n"
                                    "\t\t{\n"
                                    "\t\t\t\"Status\":\"Say 'no'\"\n"
                                    "\t\t}\n"
                                    "\t}\n"
                                    "}");
    EXPECT_EQ(result->outputEsxXml(), "");
}

TEST(ResponseResult, MakesAResultOfAnyObject) {
    XmlObject drive("ignored", "About", "this");
    drive.addProperty("A", "the first", "1");

    const auto result = objectToResult(drive);

    EXPECT_EQ(result->getRoot(), "");
    EXPECT_EQ(result->outputText(), "\nAbout : this\nA - the first : 1\n");
}

TEST(ResponseResult, IsEmptyForNoAnswerAtAll) {
    EXPECT_EQ(responseToResult(nullptr)->outputText(), "\nNo results\n");
}

// --- Payloads ---

std::string payloadObject(const std::string& digits) {
    return "<Object category=\"payload\" value=\"" + digits + "\"></Object>";
}

std::string drive(const std::string& key, const std::string& contents) {
    return "<Object name=\"Nlog\" key=\"" + key + "\">" + contents + "</Object>";
}

std::string dumpOf(const std::string& drives) {
    return answerWith("<Object category=\"output\">" + drives + "</Object>");
}

class OutputPayload : public tavik::testing::InstallationFixture {
protected:
    /// Expects this text from the dump, whose exit code is 0 whatever happens.
    static void expectDump(const std::string& answer, const std::string& destination,
                           const std::string& text) {
        const auto result = NorvoSSDFeature::saveOutputPayload(answer, destination);
        ASSERT_NE(result, nullptr);
        EXPECT_EQ(result->outputText(), text);
        EXPECT_EQ(result->getErrorCode(), 0);
    }

    static std::vector<std::string> files() {
        auto names = namesIn(".");
        std::erase(names, "opt");
        return names;
    }
};

TEST_F(OutputPayload, IsWrittenToAFileNamedAfterTheLogAndTheDrive) {
    expectDump(dumpOf(drive("SN1", payloadObject("00FF41"))), "",
               "\nNlog_SN1 : Successfully written Nlog data to Nlog_SN1.bin\n");

    EXPECT_EQ(files(), std::vector<std::string>{"Nlog_SN1.bin"});
    EXPECT_EQ(get("Nlog_SN1.bin"), std::string("\x00\xFF\x41", 3));
}

TEST_F(OutputPayload, IsWrittenForEachDrive) {
    expectDump(dumpOf(drive("SN1", payloadObject("41")) + drive("SN2", payloadObject("42")) +
                      "<Object name=\"EventLog\">" + payloadObject("43") + "</Object>" +
                      "<Object>" + payloadObject("44") + "</Object>"),
               "",
               "\n"
               "Nlog_SN1 : Successfully written Nlog data to Nlog_SN1.bin\n"
               "Nlog_SN2 : Successfully written Nlog data to Nlog_SN2.bin\n"
               "EventLog_ : Successfully written EventLog data to EventLog_.bin\n"
               "_ : Successfully written  data to _.bin\n");

    EXPECT_EQ(get("Nlog_SN1.bin"), "A");
    EXPECT_EQ(get("Nlog_SN2.bin"), "B");
    EXPECT_EQ(get("EventLog_.bin"), "C");
    EXPECT_EQ(get("_.bin"), "D");
}

TEST_F(OutputPayload, IsWrittenToTheDestinationByEachDriveInTurn) {
    expectDump(dumpOf(drive("SN1", payloadObject("4141")) + drive("SN2", payloadObject("42"))),
               "log,1 .bin",
               "\n"
               "Nlog_SN1 : Successfully written Nlog data to log,1 .bin\n"
               "Nlog_SN2 : Successfully written Nlog data to log,1 .bin\n");

    EXPECT_EQ(files(), std::vector<std::string>{"log,1 .bin"});
    EXPECT_EQ(get("log,1 .bin"), "B");
}

TEST_F(OutputPayload, ReplacesAFileAndKeepsItsMode) {
    put("x.bin", "a long old text");
    std::filesystem::permissions("x.bin", std::filesystem::perms(0640));

    expectDump(dumpOf(drive("SN1", payloadObject("4142"))), "x.bin",
               "\nNlog_SN1 : Successfully written Nlog data to x.bin\n");

    EXPECT_EQ(get("x.bin"), "AB");
    EXPECT_EQ(std::filesystem::status("x.bin").permissions(), std::filesystem::perms(0640));
    EXPECT_EQ(files(), std::vector<std::string>{"x.bin"});
}

TEST_F(OutputPayload, IsNothingWithoutAnOutputOrADrive) {
    const std::string answers[] = {
        "",
        "no XML",
        "<Message><Object category=\"output\"><Object/></Object></Message>",
        answerWith(""),
        answerWith("<Object category=\"result\">" + drive("SN1", payloadObject("41")) +
                   "</Object>"),
        dumpOf(""),
        dumpOf(property("A", "1")),
    };
    for (const std::string& answer : answers) {
        SCOPED_TRACE(answer);
        expectDump(answer, "", "\nNo results\n");
        expectDump(answer, "x.bin", "\nNo results\n");
    }
    EXPECT_EQ(files(), std::vector<std::string>{});
    EXPECT_EQ(saveOutputPayload(nullptr, "x.bin")->outputText(), "\nNo results\n");
}

TEST_F(OutputPayload, TakesTheFirstOutputInAnyCase) {
    expectDump(answerWith("<Object category=\"OUTPUT\">" + drive("SN1", payloadObject("41")) +
                          "</Object><Object category=\"output\">" +
                          drive("SN2", payloadObject("42")) + "</Object>"),
               "", "\nNlog_SN1 : Successfully written Nlog data to Nlog_SN1.bin\n");

    EXPECT_EQ(files(), std::vector<std::string>{"Nlog_SN1.bin"});
}

TEST_F(OutputPayload, IsSkippedForADriveWhoseStatusHasACode) {
    const std::string busy = statusObject(property("Code", "5") + property("Message", "Busy"));
    expectDump(dumpOf(drive("SN1", busy + payloadObject("41")) +
                      drive("SN2", statusObject(property("Code", "0")) + payloadObject("42")) +
                      drive("SN3", statusObject(property("Code", "6"))) +
                      drive("SN4", busy + busy + payloadObject("44"))),
               "",
               "\n"
               "Nlog_SN1 : Error: Busy\n"
               "Nlog_SN2 : Successfully written Nlog data to Nlog_SN2.bin\n"
               "Nlog_SN3 : Error: Category =  Code = 6\n"
               "Nlog_SN4 : Successfully written Nlog data to Nlog_SN4.bin\n");

    EXPECT_EQ(files(), (std::vector<std::string>{"Nlog_SN2.bin", "Nlog_SN4.bin"}));
}

TEST_F(OutputPayload, IsMissedOnlyInADrivesChildObjects) {
    const std::string missing = "\nNlog_SN1 : Error: No Payload data found\n";
    const std::string drives[] = {
        drive("SN1", ""),
        drive("SN1", property("A", "1")),
        drive("SN1", "<Property category=\"payload\" value=\"41\"/>"),
        drive("SN1", object("category=\"data\"", payloadObject("41"))),
        drive("SN1", "<List>" + payloadObject("41") + "</List>"),
    };
    for (const std::string& contents : drives) {
        SCOPED_TRACE(contents);
        expectDump(dumpOf(contents), "", missing);
        expectDump(dumpOf(contents), "x.bin", missing);
    }
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(OutputPayload, IsReadTwoDigitsToAByte) {
    struct Row {
        std::string contents;
        std::string bytes;
    };

    const Row rows[] = {
        {payloadObject("41"), "A"},
        {payloadObject("6A6b"), "jk"},
        {payloadObject("0000"), std::string(2, '\0')},
        {"<Object category=\"PAYLOAD\" value=\"41\"></Object>", "A"},
        {object("category=\"other\" value=\"40\"", "") + payloadObject("41") + payloadObject("42"),
         "A"},
        // What is no list of bytes has none.
        {payloadObject(""), ""},
        {"<Object category=\"payload\"></Object>", ""},
        {payloadObject("4"), ""},
        {payloadObject("414"), ""},
        {payloadObject("4G"), ""},
        {payloadObject("41 42"), ""},
        {payloadObject(" 41 "), ""},
        {payloadObject("0x41"), ""},
        {payloadObject("-1"), ""},
        {payloadObject("\xC3\xA4"), ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.contents);
        put("x.bin", "old");
        expectDump(dumpOf(drive("SN1", row.contents)), "x.bin",
                   "\nNlog_SN1 : Successfully written Nlog data to x.bin\n");
        EXPECT_EQ(get("x.bin"), row.bytes);
    }
}

TEST_F(OutputPayload, TellsWhichFileCouldNotBeWritten) {
    std::filesystem::create_directory("folder");
    const std::string longName(300, 'x');
    const std::string destinations[] = {"folder", "none/x.bin", "folder/", "opt/../none/x",
                                        longName};
    for (const std::string& destination : destinations) {
        SCOPED_TRACE(destination);
        expectDump(dumpOf(drive("SN1", payloadObject("41"))), destination,
                   "\nNlog_SN1 : Error: Failed to write Nlog data to " + destination + "\n");
    }
    EXPECT_EQ(files(), std::vector<std::string>{"folder"});
    EXPECT_EQ(namesIn("folder"), std::vector<std::string>{});
}

TEST_F(OutputPayload, FailsForADriveWhoseKeyLeadsToAFolderThatIsNotThere) {
    expectDump(dumpOf(drive("A/B", payloadObject("41")) + drive("C", payloadObject("42"))), "",
               "\n"
               "Nlog_A/B : Error: Failed to write Nlog data to Nlog_A/B.bin\n"
               "Nlog_C : Successfully written Nlog data to Nlog_C.bin\n");

    EXPECT_EQ(files(), std::vector<std::string>{"Nlog_C.bin"});
}

TEST_F(OutputPayload, IsWrittenToADeviceWithoutReplacingIt) {
    expectDump(dumpOf(drive("SN1", payloadObject("41"))), "/dev/null",
               "\nNlog_SN1 : Successfully written Nlog data to /dev/null\n");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));

    expectDump(dumpOf(drive("SN1", payloadObject("41"))), "/dev/full",
               "\nNlog_SN1 : Error: Failed to write Nlog data to /dev/full\n");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(OutputPayload, DoesNotWaitForThePipesReader) {
    ASSERT_EQ(::mkfifo("pipe", 0600), 0);

    expectDump(dumpOf(drive("SN1", payloadObject("41"))), "pipe",
               "\nNlog_SN1 : Error: Failed to write Nlog data to pipe\n");

    EXPECT_TRUE(std::filesystem::is_fifo("pipe"));
}

TEST_F(OutputPayload, IsWrittenWhereALinkLeads) {
    put("target", "a long old text");
    std::filesystem::create_symlink("target", "link");
    std::filesystem::create_symlink("new", "dangling");
    std::filesystem::create_symlink("none/new", "broken");

    expectDump(dumpOf(drive("SN1", payloadObject("41"))), "link",
               "\nNlog_SN1 : Successfully written Nlog data to link\n");
    expectDump(dumpOf(drive("SN1", payloadObject("42"))), "dangling",
               "\nNlog_SN1 : Successfully written Nlog data to dangling\n");
    expectDump(dumpOf(drive("SN1", payloadObject("43"))), "broken",
               "\nNlog_SN1 : Error: Failed to write Nlog data to broken\n");

    EXPECT_TRUE(std::filesystem::is_symlink("link"));
    EXPECT_TRUE(std::filesystem::is_symlink("dangling"));
    EXPECT_TRUE(std::filesystem::is_symlink("broken"));
    EXPECT_EQ(get("target"), "A");
    EXPECT_EQ(get("new"), "B");
}

TEST_F(OutputPayload, MayBeLarge) {
    std::string digits;
    std::string bytes;
    for (int i = 0; i < 500000; ++i) {
        digits += "5A";
        bytes += 'Z';
    }

    expectDump(dumpOf(drive("SN1", payloadObject(digits))), "",
               "\nNlog_SN1 : Successfully written Nlog data to Nlog_SN1.bin\n");

    EXPECT_EQ(get("Nlog_SN1.bin"), bytes);
}

}  // namespace
}  // namespace tavik::norvossd
