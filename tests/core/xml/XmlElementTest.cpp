// What all elements share: attributes, their text, and the declaration.
#include "core/xml/XmlElement.h"

#include "core/xml/XmlMessage.h"
#include "core/xml/XmlObject.h"
#include "core/xml/XmlProperty.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace orvel::core::xml {
namespace {

using namespace std::string_literals;

std::string written(const XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

std::string writtenValue(const std::string& value) {
    XmlProperty property;
    property.setAttribute("value", value);
    return written(property);
}

TEST(XmlElement, KeepsTheTypeOfItsClass) {
    EXPECT_EQ(XmlMessage().getType(), "Message");
    EXPECT_EQ(XmlList().getType(), "List");
    EXPECT_EQ(XmlObject().getType(), "Object");
    EXPECT_EQ(XmlProperty().getType(), "Property");
}

TEST(XmlElement, GivesTheTextOfAnAttributeAwayAndKeepsAnEmptyOne) {
    XmlProperty property;
    property.setAttribute("name", "Index");
    property.setAttribute("value", "1");
    EXPECT_EQ(property.takeAttribute("value"), "1");
    EXPECT_EQ(property.takeAttribute("absent"), "");
    EXPECT_EQ(written(property), "<Property name=\"Index\" value=\"\"/>");
}

TEST(XmlElement, ReadsAnAbsentAttributeAsEmptyWithoutInsertingIt) {
    const XmlProperty property;
    EXPECT_EQ(property.getAttribute("name"), "");
    EXPECT_EQ(property.findAttribute("name"), nullptr);
    EXPECT_TRUE(property.getAttributes().empty());
}

TEST(XmlElement, FindsAnAttributeInPlace) {
    XmlProperty property;
    property.setAttribute("b", "2");
    property.setAttribute("a", "1");
    property.setAttribute("c", "");
    ASSERT_NE(property.findAttribute("b"), nullptr);
    EXPECT_EQ(*property.findAttribute("b"), "2");
    ASSERT_NE(property.findAttribute("c"), nullptr);
    EXPECT_EQ(*property.findAttribute("c"), "");
    EXPECT_EQ(property.findAttribute("B"), nullptr);
    EXPECT_EQ(property.findAttribute("d"), nullptr);
}

TEST(XmlElement, KeepsTheLastValueOfAnAttributeSetTwice) {
    XmlProperty property;
    property.setAttribute("name", "first");
    property.setAttribute("name", "second");
    EXPECT_EQ(property.getAttribute("name"), "second");
    EXPECT_EQ(written(property), "<Property name=\"second\"/>");
}

TEST(XmlElement, RemovesAnAttribute) {
    XmlProperty property;
    property.setAttribute("name", "n");
    property.setAttribute("value", "v");
    property.removeAttribute("name");
    property.removeAttribute("absent");
    EXPECT_EQ(written(property), "<Property value=\"v\"/>");
}

TEST(XmlElement, ClearsItsAttributes) {
    XmlProperty property;
    property.setAttribute("name", "n");
    property.setAttribute("value", "v");
    property.clearAttributes();
    EXPECT_TRUE(property.isEmpty());
    EXPECT_EQ(written(property), "<Property/>");
}

TEST(XmlElement, ReplacesAllAttributesByRowsInAnyOrder) {
    XmlProperty property;
    property.setAttribute("old", "o");
    XmlElement::Attributes::sequence_type rows;
    rows.emplace_back("value", "v");
    rows.emplace_back("category", "c");
    rows.emplace_back("name", "n");
    property.setAttributes(std::move(rows));
    EXPECT_EQ(written(property), "<Property category=\"c\" name=\"n\" value=\"v\"/>");
}

TEST(XmlElement, KeepsTheLastOfRowsWithOneKey) {
    XmlProperty property;
    XmlElement::Attributes::sequence_type rows;
    rows.emplace_back("b", "1");
    rows.emplace_back("a", "2");
    rows.emplace_back("b", "3");
    rows.emplace_back("a", "4");
    rows.emplace_back("b", "5");
    property.setAttributes(std::move(rows));
    EXPECT_EQ(written(property), "<Property a=\"4\" b=\"5\"/>");
}

TEST(XmlElement, KeepsTheLastOfNeighbouringRowsWithOneKey) {
    XmlProperty property;
    XmlElement::Attributes::sequence_type rows;
    rows.emplace_back("a", "1");
    rows.emplace_back("a", "2");
    property.setAttributes(std::move(rows));
    EXPECT_EQ(written(property), "<Property a=\"2\"/>");
}

TEST(XmlElement, WritesAttributesInKeyOrderWhateverTheOrderOfSetting) {
    XmlProperty property;
    property.setAttribute("value", "v");
    property.setAttribute("name", "n");
    property.setAttribute("category", "c");
    EXPECT_EQ(written(property), "<Property category=\"c\" name=\"n\" value=\"v\"/>");
}

TEST(XmlElement, OrdersKeysByTheirBytes) {
    XmlProperty property;
    property.setAttribute("a", "1");
    property.setAttribute("B", "2");
    property.setAttribute("\xC3\xA4", "3");
    EXPECT_EQ(written(property), "<Property B=\"2\" a=\"1\" \xC3\xA4=\"3\"/>");
}

struct EscapeRow {
    std::string value;
    std::string expected;
};

TEST(XmlElement, EscapesValues) {
    const EscapeRow rows[] = {
        {"", "<Property value=\"\"/>"},
        {"plain text", "<Property value=\"plain text\"/>"},
        {"<", "<Property value=\"&amp;lt;\"/>"},
        {">", "<Property value=\"&amp;gt;\"/>"},
        {"&", "<Property value=\"&amp;\"/>"},
        {"\"", "<Property value=\"&quot;\"/>"},
        {"'", "<Property value=\"&apos;\"/>"},
        {"<a b='c'>&\"", "<Property value=\"&amp;lt;a b=&apos;c&apos;&amp;gt;&amp;&quot;\"/>"},
        {"<<>>", "<Property value=\"&amp;lt;&amp;lt;&amp;gt;&amp;gt;\"/>"},
        {"&lt;", "<Property value=\"&amp;lt;\"/>"},
        {"&amp;", "<Property value=\"&amp;amp;\"/>"},
        {"&&x", "<Property value=\"&amp;&amp;x\"/>"},
        {"a\nb\tc\r", "<Property value=\"a\nb\tc\r\"/>"},
        {"\xC3\xA9\xFF\x80", "<Property value=\"\xC3\xA9\xFF\x80\"/>"},
        {"a\0<b"s, "<Property value=\"a\0&amp;lt;b\"/>"s},
    };
    for (const EscapeRow& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(writtenValue(row.value), row.expected);
    }
}

TEST(XmlElement, EscapesAngleBracketsTwiceAsThePeerExpects) {
    EXPECT_EQ(writtenValue("<"), "<Property value=\"&amp;lt;\"/>");
}

TEST(XmlElement, LeavesKeysUnescaped) {
    XmlProperty property;
    property.setAttribute("a&b", "1");
    EXPECT_EQ(written(property), "<Property a&b=\"1\"/>");
}

TEST(XmlElement, AppendsToTheText) {
    std::string text = "before";
    XmlProperty().toXml(text);
    EXPECT_EQ(text, "before<Property/>");
}

TEST(XmlElement, PutsTheDeclarationInFrontWithoutALineFeed) {
    EXPECT_EQ(XmlMessage().toString(),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?><Message></Message>");
    EXPECT_EQ(XmlProperty().toString(), "<?xml version=\"1.0\" encoding=\"utf-8\"?><Property/>");
}

TEST(XmlElement, IsCopiedThroughTheBaseClass) {
    XmlProperty property;
    property.setAttribute("name", "n");
    const XmlElement& base = property;
    const auto copy = base.clone();
    property.setAttribute("name", "changed");
    EXPECT_EQ(copy->getType(), "Property");
    EXPECT_EQ(written(*copy), "<Property name=\"n\"/>");
}

}  // namespace
}  // namespace orvel::core::xml
