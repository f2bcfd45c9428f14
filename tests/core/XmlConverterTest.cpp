// Text to tree, and domain objects to elements and back.
#include "core/XmlConverter.h"

#include "core/GlobalLogging.h"
#include "core/xml/XmlMessage.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvel::core {
namespace {

using namespace std::string_literals;

/// The tree of `text`, written again without the declaration; "null" if there is none.
std::string reread(const std::string& text) {
    const auto element = XmlConverter::toXml(text);
    if (!element) return "null";
    std::string written;
    element->toXml(written);
    return written;
}

struct TextRow {
    std::string text;
    std::string expected;
};

void expectRereads(std::initializer_list<TextRow> rows) {
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(reread(row.text), row.expected);
    }
}

TEST(XmlConverter, MakesTheClassThatTheElementNames) {
    for (const char* type : {"Message", "List", "Object", "Property"}) {
        SCOPED_TRACE(type);
        const auto element = XmlConverter::toXml("<"s + type + "/>");
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->getType(), type);
        EXPECT_TRUE(element->isEmpty());
    }
    EXPECT_NE(dynamic_cast<xml::XmlMessage*>(XmlConverter::toXml("<Message/>"s).get()), nullptr);
    EXPECT_NE(dynamic_cast<xml::XmlList*>(XmlConverter::toXml("<List/>"s).get()), nullptr);
    EXPECT_NE(dynamic_cast<xml::XmlObject*>(XmlConverter::toXml("<Object/>"s).get()), nullptr);
    EXPECT_NE(dynamic_cast<xml::XmlProperty*>(XmlConverter::toXml("<Property/>"s).get()), nullptr);
}

TEST(XmlConverter, ComparesElementNamesExactly) {
    expectRereads({
        {"<message/>", "null"},
        {"<MESSAGE/>", "null"},
        {"<Messages/>", "null"},
        {"<Foo/>", "null"},
        {"<Object><object/><OBJECT/><Objects/></Object>", "<Object></Object>"},
    });
}

TEST(XmlConverter, ReadsADocumentWithADeclaration) {
    expectRereads({
        {"<?xml version=\"1.0\" encoding=\"utf-8\"?><Message></Message>", "<Message></Message>"},
        {"<?xml version=\"1.0\"?>\n<!DOCTYPE Message [<!ELEMENT Message (Object)>]>\n<Message/>\n",
         "<Message></Message>"},
        {"\xEF\xBB\xBF<Message/>", "<Message></Message>"},
        {"<?pi x?><Message/>", "<Message></Message>"},
    });
}

TEST(XmlConverter, TakesTheFirstOfSeveralRoots) {
    expectRereads({
        {"<Object name='1'/><Object name='2'/>", "<Object name=\"1\"></Object>"},
        {"<Property/><Foo/>", "<Property/>"},
        {"<Foo/><Message/>", "null"},
    });
}

TEST(XmlConverter, TakesACommentInFrontForTheFirstNode) {
    expectRereads({
        {"<!-- c --><Message/>", "null"},
        {"<Message/><!-- c -->", "<Message></Message>"},
    });
}

TEST(XmlConverter, GivesNothingForTextThatIsNoXml) {
    for (const std::string& text : {""s,
                                    " "s,
                                    "\n"s,
                                    "garbage"s,
                                    "<"s,
                                    "<Message"s,
                                    "<Message>"s,
                                    "<Message></"s,
                                    "<Message><Object></Message>"s,
                                    "<Message a></Message>"s,
                                    "<Message a=b/>"s,
                                    "<Message a='b/>"s,
                                    "<Message/>garbage"s,
                                    "</Message>"s,
                                    "<!-- "s,
                                    "<?xml "s,
                                    "<Message><![CDATA[</Message>"s,
                                    "<Message a='&#x110000;'/>"s,
                                    "<Message a='&#1'/>"s,
                                    "\0<Message/>"s,
                                    "<Mess\0age/>"s,
                                    "<Message>\0</Message>"s,
                                    "\xFF\xFE<Message/>"s,
                                    "{\"Message\": {}}"s}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(XmlConverter::toXml(text), nullptr);
    }
}

TEST(XmlConverter, IgnoresWhatStandsBehindANulByte) {
    expectRereads({{"<Message/>\0<garbage"s, "<Message></Message>"}});
}

TEST(XmlConverter, ReadsAttributesAndOrdersThemByKey) {
    expectRereads({
        {"<Property value='v' name=\"n\" category = 'c'/>",
         "<Property category=\"c\" name=\"n\" value=\"v\"/>"},
        {"<Property name=''/>", "<Property name=\"\"/>"},
        {"<Property name='1' value='v' name='2'/>", "<Property name=\"2\" value=\"v\"/>"},
        {"<Property a.b='1' .='2'/>", "<Property .=\"2\" a.b=\"1\"/>"},
        {"<Property value='  a\n\t b  '/>", "<Property value=\"  a\n\t b  \"/>"},
        {"<Property value='\xC3\xA9\xFF\x80'/>", "<Property value=\"\xC3\xA9\xFF\x80\"/>"},
    });
}

TEST(XmlConverter, DecodesEntitiesOnce) {
    const TextRow rows[] = {
        {"&lt;&gt;&amp;&quot;&apos;", "<>&\"'"},
        {"&amp;lt;", "&lt;"},
        {"&amp;amp;", "&amp;"},
        {"&#65;&#x42;", "AB"},
        {"&#xE9;&#8364;&#x1F600;", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {"a&#0;b", "a\0b"s},
        {"&unknown; & &", "&unknown; & &"},
    };
    for (const TextRow& row : rows) {
        SCOPED_TRACE(row.text);
        const auto element = XmlConverter::toXml("<Property value=\"" + row.text + "\"/>");
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->getAttribute("value"), row.expected);
    }
}

TEST(XmlConverter, SortsChildrenByKindAndKeepsTheirOrder) {
    expectRereads({
        {"<Message>"
         "<Object name='o1'/><List name='l1'/><Property name='p1'/>"
         "<Object name='o2'/><List name='l2'/><Property name='p2'/>"
         "</Message>",
         "<Message>"
         "<Property name=\"p1\"/><Property name=\"p2\"/>"
         "<List name=\"l1\"></List><List name=\"l2\"></List>"
         "<Object name=\"o1\"></Object><Object name=\"o2\"></Object>"
         "</Message>"},
        {"<Object a='1'><List b='2'><Object c='3'><Property d='4'/></Object></List></Object>",
         "<Object a=\"1\"><List b=\"2\"><Object c=\"3\"><Property d=\"4\"/></Object></List>"
         "</Object>"},
    });
}

TEST(XmlConverter, DropsChildrenThatTheClassDoesNotKnow) {
    expectRereads({
        {"<Object><Foo/><Foo><Property/></Foo></Object>", "<Object></Object>"},
        {"<Object><Message/></Object>", "<Object></Object>"},
        {"<Message><Message><Property/></Message></Message>", "<Message></Message>"},
        {"<List><Property/><List/><Message/><Foo/><Object/></List>",
         "<List><Object></Object></List>"},
        {"<Property name='p'><Property/><Object/>text</Property>", "<Property name=\"p\"/>"},
    });
}

TEST(XmlConverter, DropsTextCommentsAndSections) {
    expectRereads({
        {"<Object>text</Object>", "<Object></Object>"},
        {"<Object> a <Property name='p'/> b &amp; <!-- c --> d </Object>",
         "<Object><Property name=\"p\"/></Object>"},
        {"<Object><![CDATA[<Property/>]]></Object>", "<Object></Object>"},
        {"<Object name='o'><!-- <Property/> --><?pi <Property/>?></Object>",
         "<Object name=\"o\"></Object>"},
        {"<Object>\n  <Property name='p'/>\n</Object>\n",
         "<Object><Property name=\"p\"/></Object>"},
    });
}

TEST(XmlConverter, LeavesClosingNamesUnchecked) {
    expectRereads({{"<Object><Property></Foo></Bar>", "<Object><Property/></Object>"}});
}

TEST(XmlConverter, ReadsBackWhatATreeWrote) {
    xml::XmlMessage message;
    message.setAttribute("name", "a & \"b\" 'c' \xC3\xA9\n");
    xml::XmlObject& object = message.addObject(std::make_unique<xml::XmlObject>());
    object.addProperty("n", "", "v");
    object.addList(std::make_unique<xml::XmlList>())
        .addObject(std::make_unique<xml::XmlObject>("x", "y", "z"));
    const auto copy = XmlConverter::toXml(message.toString());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getAttribute("name"), "a & \"b\" 'c' \xC3\xA9\n");
    EXPECT_EQ(copy->toString(), message.toString());
}

TEST(XmlConverter, ReadsAngleBracketsThatATreeWroteAsEntities) {
    xml::XmlProperty property;
    property.setAttribute("value", "<>");
    const auto copy = XmlConverter::toXml(property.toString());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->getAttribute("value"), "&lt;&gt;");
}

std::string nested(const std::string& open, const std::string& close, std::size_t levels) {
    std::string text;
    for (std::size_t i = 0; i < levels; ++i)
        text += open;
    for (std::size_t i = 0; i < levels; ++i)
        text += close;
    return text;
}

TEST(XmlConverter, ReadsTextNestedUpToTheLimit) {
    ASSERT_EQ(XmlConverter::MAX_DEPTH, 2048U);
    const std::string text = nested("<Object>", "</Object>", 2048);
    EXPECT_EQ(reread(text), text);
    EXPECT_EQ(reread("<Object>" + nested("<Foo>", "</Foo>", 2047) + "</Object>"),
              "<Object></Object>");
}

TEST(XmlConverter, RefusesTextNestedBeyondTheLimit) {
    for (const std::size_t levels : {2049U, 1'000'000U}) {
        SCOPED_TRACE(levels);
        EXPECT_EQ(XmlConverter::toXml(nested("<Object>", "</Object>", levels)), nullptr);
        EXPECT_EQ(XmlConverter::toXml(nested("<Object>", "", levels)), nullptr);
    }
    EXPECT_EQ(XmlConverter::toXml("<Object/>" + nested("<Foo>", "</Foo>", 2049)), nullptr);
}

TEST(XmlConverter, WalksTheDeepestTree) {
    const std::string text = nested("<Object name='n'><List>", "</List></Object>", 1024);
    const auto element = XmlConverter::toXml(text);
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->find("", "", "", false).size(), 0U);
    EXPECT_EQ(element->find("Object", "name", "absent", true).size(), 0U);
    const auto copy = element->clone();
    EXPECT_EQ(copy->toString(), element->toString());

    const auto objects = XmlConverter::toXml(
        nested("<Object>", "</Object>", 2047).insert(2047 * 8, "<Property name='p'/>"));
    ASSERT_NE(objects, nullptr);
    EXPECT_EQ(objects->find("Property", "", "", false).size(), 1U);
    static_cast<xml::XmlObject&>(*objects).removeProperties({"p"});
    EXPECT_EQ(objects->find("Property", "", "", false).size(), 0U);
}

TEST(XmlConverter, ReadsAnElementWithManyAttributes) {
    std::string text = "<Property";
    for (int i = 29'999; i >= 10'000; --i)
        text += " a" + std::to_string(i) + "='x'";
    const auto element = XmlConverter::toXml(text + "/>");
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->getAttributes().size(), 20'000U);
    EXPECT_EQ(element->getAttributes().begin()->first, "a10000");
}

/// Logs into a string for the length of each test.
class XmlConverterLog : public ::testing::Test {
protected:
    void SetUp() override {
        global_logging::initialize();
        global_logging::enableString();
        global_logging::enable();
    }

    void TearDown() override { global_logging::initialize(); }

    /// The logged line without its time, and with "#" for the line number.
    static std::string logged() {
        std::string text = global_logging::getString()->str();
        text.erase(0, text.find(' ') + 1);
        const std::size_t number = text.find(") ") + 2;
        if (text.find(':', number) == std::string::npos) return text;
        return text.replace(number, text.find(':', number) - number, "#");
    }
};

TEST_F(XmlConverterLog, LogsNothingForAGoodText) {
    EXPECT_NE(XmlConverter::toXml("<Message/>"s), nullptr);
    EXPECT_EQ(logged(), "");
}

TEST_F(XmlConverterLog, LogsTheReadersTextForTextThatIsNotWellFormed) {
    EXPECT_EQ(XmlConverter::toXml("\n<Message>"s), nullptr);
    EXPECT_EQ(logged(), "[error] toXml(core/XmlConverter.cpp) #: <unspecified file>(2): "
                        "unexpected end of data\n");
}

TEST_F(XmlConverterLog, LogsAFixedTextForAFirstElementOfAnotherName) {
    EXPECT_EQ(XmlConverter::toXml("<Foo/>"s), nullptr);
    EXPECT_EQ(logged(), "[error] toXml(core/XmlConverter.cpp) #: "
                        "Unable to convert the given xml string to an XmlElement\n");
}

TEST_F(XmlConverterLog, LogsTheFixedTextForTextNestedTooDeep) {
    EXPECT_EQ(XmlConverter::toXml(nested("<Object>", "</Object>", 2049)), nullptr);
    EXPECT_EQ(logged(), "[error] toXml(core/XmlConverter.cpp) #: "
                        "Unable to convert the given xml string to an XmlElement\n");
}

TEST_F(XmlConverterLog, LogsOneLineForAnEmptyText) {
    EXPECT_EQ(XmlConverter::toXml(""s), nullptr);
    EXPECT_TRUE(logged().starts_with("[error] toXml(core/XmlConverter.cpp) #: ")) << logged();
}

// Domain objects.

std::string written(const xml::XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

TEST(XmlConverter, WritesAnAttribute) {
    Attribute attribute("LogAddress", "Log Address", "uint8");
    attribute.setValue(std::uint8_t{7});
    EXPECT_EQ(written(*XmlConverter::toXml(attribute)),
              "<Property category=\"attribute\" displayName=\"Log Address\" name=\"LogAddress\" "
              "size=\"1\" type=\"uint8\" value=\"7\"/>");
    attribute.setDescription("a < b");
    EXPECT_EQ(written(*XmlConverter::toXml(attribute)),
              "<Property category=\"attribute\" description=\"a &amp;lt; b\" "
              "displayName=\"Log Address\" name=\"LogAddress\" size=\"1\" type=\"uint8\" "
              "value=\"7\"/>");
}

TEST(XmlConverter, WritesABlankAttribute) {
    EXPECT_EQ(written(*XmlConverter::toXml(Attribute("TargetID", "Target ID", "sint32"))),
              "<Property category=\"attribute\" displayName=\"Target ID\" name=\"TargetID\" "
              "size=\"0\" type=\"sint32\" value=\"-1\"/>");
}

TEST(XmlConverter, CountsTheTerminatorOfAString) {
    EXPECT_EQ(written(*XmlConverter::toXml(Attribute("file", "file.bin"))),
              "<Property category=\"attribute\" displayName=\"\" name=\"file\" size=\"9\" "
              "type=\"string\" value=\"file.bin\"/>");
}

TEST(XmlConverter, WritesAPayload) {
    EXPECT_EQ(written(*XmlConverter::toXml(Payload("\x0A\xFF\x00", 3))),
              "<Property category=\"payload\" displayName=\"payload\" name=\"payload\" size=\"3\" "
              "type=\"bytepointer\" value=\"0AFF00\"/>");
    EXPECT_EQ(written(*XmlConverter::toXml(Payload())),
              "<Property category=\"payload\" displayName=\"payload\" name=\"payload\" size=\"0\" "
              "type=\"bytepointer\" value=\"\"/>");
}

TEST(XmlConverter, WritesAStatus) {
    EXPECT_EQ(written(*XmlConverter::toXml(Status())),
              "<Object category=\"status\">"
              "<Property name=\"Category\" value=\"0\"/>"
              "<Property name=\"Code\" value=\"0\"/>"
              "<Property name=\"Message\" value=\"Completed successfully.\"/>"
              "</Object>");
}

TEST(XmlConverter, ReadsAStatusBackAsThreeProperties) {
    const auto text = XmlConverter::toXml(Status(10, -5, "It's done."))->toString();
    const auto element = XmlConverter::toXml(text);
    ASSERT_NE(element, nullptr);
    const auto& properties = dynamic_cast<xml::XmlObject&>(*element).getProperties();
    ASSERT_EQ(properties.size(), 3U);
    EXPECT_EQ(written(*properties[0]), "<Property name=\"Category\" value=\"10\"/>");
    EXPECT_EQ(written(*properties[1]), "<Property name=\"Code\" value=\"-5\"/>");
    EXPECT_EQ(properties[2]->getAttribute("value"), "It's done.");
}

TEST(XmlConverter, WritesAnAttributeList) {
    AttributeTable attributes;
    EXPECT_EQ(written(*XmlConverter::toXml(attributes)),
              "<Object category=\"attributeList\"></Object>");
    attributes.set(Attribute("b", true));
    attributes.set(Attribute("a", "x"));
    EXPECT_EQ(written(*XmlConverter::toXml(attributes)),
              "<Object category=\"attributeList\">"
              "<Property category=\"attribute\" displayName=\"\" name=\"b\" size=\"1\" "
              "type=\"boolean\" value=\"True\"/>"
              "<Property category=\"attribute\" displayName=\"\" name=\"a\" size=\"2\" "
              "type=\"string\" value=\"x\"/>"
              "</Object>");
}

xml::XmlProperty valueOf(const std::string& type, const std::string& value) {
    xml::XmlProperty property;
    property.setAttribute("name", "n");
    property.setAttribute("type", type);
    property.setAttribute("value", value);
    return property;
}

struct ValueRow {
    std::string type;
    std::string text;
    std::vector<int> bytes;
};

TEST(XmlConverter, ReadsAValueByItsType) {
    const ValueRow rows[] = {
        {"boolean", "True", {1}},
        {"boolean", "TRUE", {1}},
        {"boolean", "False", {0}},
        {"boolean", "1", {0}},
        {"boolean", "", {0}},
        {"sint16", "258", {2, 1}},
        {"sint16", "65535", {0xFF, 0xFF}},
        {"sint32", "67305985", {1, 2, 3, 4}},
        {"sint64", "1", {1, 0, 0, 0, 0, 0, 0, 0}},
        {"string", "ab", {'a', 'b', 0}},
        {"string", "", {0}},
        {"string", "a\0b"s, {'a', 0, 'b', 0}},
        {"uint8", "255", {0xFF}},
        {"uint8", "256", {0}},
        {"uint8", "0x1F", {0x1F}},
        {"uint16", "258", {2, 1}},
        {"uint32", "4294967295", {0xFF, 0xFF, 0xFF, 0xFF}},
        {"uint64", "18446744073709551615", {255, 255, 255, 255, 255, 255, 255, 255}},
        {"uint64", "99999999999999999999", {255, 255, 255, 255, 255, 255, 255, 255}},
        {"uint32", "garbage", {0, 0, 0, 0}},
        {"bytepointer", "0AFF", {0x0A, 0xFF}},
        {"bytepointer", "0aff", {0x0A, 0xFF}},
        {"bytepointer", "0AF", {}},
        {"bytepointer", "0AFG", {}},
        {"bytepointer", "", {}},
        {"list_uint64", "0102", {1, 2}},
        {"vectorOfStrings", "a~b", {'a', '~', 'b', 0}},
        {"hexValue", "0x1AB0", {0x1A, 0xB0}},
        {"hexValue", "1AB0", {0x1A, 0xB0}},
        {"hexValue", "0x1A0xB0", {0x1A, 0xB0}},
        {"hexValue", "00xx12", {}},
        {"hexValue", "0X1AB0", {}},
        {"hexValue", "0x0", {}},
        {"hexValue", "0xZZ", {}},
        {"hexValue", "", {}},
    };
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(row.type + " " + row.text);
        const auto attribute = XmlConverter::toAttribute(valueOf(row.type, row.text));
        ASSERT_TRUE(attribute.has_value());
        EXPECT_EQ(attribute->getType(), row.type);
        const Payload& bytes = attribute->getPayload();
        EXPECT_EQ(std::vector<int>(bytes.data(), bytes.data() + bytes.size()), row.bytes);
    }
}

TEST(XmlConverter, ReadsANegativeNumberAsZeroBecauseOnlyDigitsAreRead) {
    const auto attribute = XmlConverter::toAttribute(valueOf("sint16", "-1"));
    ASSERT_TRUE(attribute.has_value());
    EXPECT_EQ(attribute->valueAsString(), "0");
}

TEST(XmlConverter, PassesOverTypesThatAreWrittenOnlyAndUnknownOnes) {
    for (const char* type : {"sint8", "ulong", "vectorOfPayloads", "", "String", "uint128"}) {
        SCOPED_TRACE(type);
        EXPECT_FALSE(XmlConverter::toAttribute(valueOf(type, "1")).has_value());
    }
    EXPECT_FALSE(XmlConverter::toAttribute(xml::XmlProperty()).has_value());
}

TEST(XmlConverter, KeepsNamesAndDescriptionOfAnAttribute) {
    xml::XmlProperty property = valueOf("uint8", "7");
    property.setAttribute("displayName", "Log Address");
    property.setAttribute("description", "about it");
    property.setAttribute("size", "999");
    const auto attribute = XmlConverter::toAttribute(property);
    ASSERT_TRUE(attribute.has_value());
    EXPECT_EQ(attribute->getName(), "n");
    EXPECT_EQ(attribute->getDisplayName(), "Log Address");
    EXPECT_EQ(attribute->getDescription(), "about it");
    EXPECT_EQ(attribute->getPayload().size(), 1U);
}

TEST(XmlConverter, ReadsAnAttributeListAndSkipsWhatIsNone) {
    const auto element =
        XmlConverter::toXml("<Object>"
                            "<Property name='a' type='uint8' value='1'/>"
                            "<Property name='b' type='sint8' value='2'/>"
                            "<Property name='c' type='string' value='3'/>"
                            "<Object><Property name='d' type='uint8' value='4'/></Object>"
                            "</Object>"s);
    ASSERT_NE(element, nullptr);
    const AttributeTable attributes =
        XmlConverter::toAttributes(dynamic_cast<xml::XmlObject&>(*element));
    EXPECT_EQ(attributes.size(), 2U);
    ASSERT_NE(attributes.find("a"), nullptr);
    EXPECT_EQ(attributes.find("a")->valueAsString(), "1");
    ASSERT_NE(attributes.find("c"), nullptr);
    EXPECT_EQ(attributes.find("c")->valueAsString(), "3");
}

TEST(XmlConverter, LetsTheLaterOfTwoAttributesWithOneNameCount) {
    const auto element = XmlConverter::toXml("<Object>"
                                             "<Property name='a' type='uint8' value='1'/>"
                                             "<Property name='a' type='string' value='x'/>"
                                             "<Property name='a' type='ulong' value='9'/>"
                                             "</Object>"s);
    ASSERT_NE(element, nullptr);
    const AttributeTable attributes =
        XmlConverter::toAttributes(dynamic_cast<xml::XmlObject&>(*element));
    EXPECT_EQ(attributes.size(), 1U);
    ASSERT_NE(attributes.find("a"), nullptr);
    EXPECT_EQ(attributes.find("a")->getType(), "string");
    EXPECT_EQ(attributes.find("a")->valueAsString(), "x");
}

}  // namespace
}  // namespace orvel::core
