// The leaf of the element tree.
#include "core/xml/XmlProperty.h"

#include <gtest/gtest.h>

#include <string>

namespace orvel::core::xml {
namespace {

std::string written(const XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

XmlProperty nameAndValue() {
    XmlProperty property;
    property.setAttribute("name", "Code");
    property.setAttribute("value", "0");
    return property;
}

TEST(XmlProperty, WritesItselfAsASelfClosingElement) {
    EXPECT_EQ(written(XmlProperty()), "<Property/>");
    EXPECT_EQ(written(nameAndValue()), "<Property name=\"Code\" value=\"0\"/>");
}

TEST(XmlProperty, IsEmptyWithoutAttributes) {
    EXPECT_TRUE(XmlProperty().isEmpty());
    EXPECT_FALSE(nameAndValue().isEmpty());
}

struct FindRow {
    const char* type;
    const char* key;
    const char* value;
    std::size_t found;
};

TEST(XmlProperty, FindsItselfByTypeAndAttributeWhateverIncludeSelfSays) {
    const FindRow rows[] = {
        // type       key     value   found
        {"", "", "", 1},
        {"Property", "", "", 1},
        {"property", "", "", 0},
        {"Object", "", "", 0},
        {"", "name", "Code", 1},
        {"", "name", "code", 0},
        {"Property", "name", "Code", 1},
        {"Object", "name", "Code", 0},
        {"", "", "Code", 1},
        {"", "size", "", 1},
        {"", "size", "0", 0},
        {"", "name", "", 0},
    };
    const XmlProperty property = nameAndValue();
    for (const FindRow& row : rows) {
        SCOPED_TRACE(std::string(row.type) + "/" + row.key + "/" + row.value);
        EXPECT_EQ(property.find(row.type, row.key, row.value, false).size(), row.found);
        EXPECT_EQ(property.find(row.type, row.key, row.value, true).size(), row.found);
    }
}

TEST(XmlProperty, HandsOutACopyFromFind) {
    XmlProperty property = nameAndValue();
    const auto found = property.find("", "", "", false);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(found.front().get(), &property);
    property.clearAttributes();
    EXPECT_EQ(written(*found.front()), "<Property name=\"Code\" value=\"0\"/>");
}

}  // namespace
}  // namespace orvel::core::xml
