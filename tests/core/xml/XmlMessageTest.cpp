// A message: an object in all but its name.
#include "core/xml/XmlMessage.h"

#include "core/xml/XmlObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orvel::core::xml {
namespace {

std::string written(const XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

void fill(XmlMessage& message) {
    message.setAttribute("name", "m");
    message.addObject(std::make_unique<XmlObject>()).setAttribute("name", "o");
    message.addList(std::make_unique<XmlList>()).setAttribute("name", "l");
    message.addProperty(std::make_unique<XmlProperty>()).setAttribute("name", "p");
}

constexpr const char* FILLED = "<Message name=\"m\">"
                               "<Property name=\"p\"/>"
                               "<List name=\"l\"></List>"
                               "<Object name=\"o\"></Object>"
                               "</Message>";

TEST(XmlMessage, WritesAnOpeningAndAClosingTagWhenEmpty) {
    EXPECT_EQ(written(XmlMessage()), "<Message></Message>");
}

TEST(XmlMessage, WritesPropertiesThenListsThenObjects) {
    XmlMessage message;
    fill(message);
    EXPECT_EQ(written(message), FILLED);
}

TEST(XmlMessage, IsEmptyWithoutChildrenAndAttributes) {
    EXPECT_TRUE(XmlMessage().isEmpty());
    XmlMessage message;
    message.addProperty(std::make_unique<XmlProperty>());
    EXPECT_FALSE(message.isEmpty());
}

TEST(XmlMessage, FindsInTheOrderPropertiesListsObjects) {
    XmlMessage message;
    fill(message);
    const auto all = message.find("", "", "", true);
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0]->getType(), "Message");
    EXPECT_EQ(all[1]->getType(), "Property");
    EXPECT_EQ(all[2]->getType(), "List");
    EXPECT_EQ(all[3]->getType(), "Object");
    EXPECT_EQ(message.find("Message", "", "", false).size(), 0U);
}

TEST(XmlMessage, ClonesDeeply) {
    auto message = std::make_unique<XmlMessage>();
    fill(*message);
    const auto copy = message->clone();
    message.reset();
    EXPECT_EQ(copy->getType(), "Message");
    EXPECT_EQ(written(*copy), FILLED);
}

}  // namespace
}  // namespace orvel::core::xml
