// A list of objects.
#include "core/xml/XmlList.h"

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

/// <List name="drives"> with two objects, the first of which holds a property.
void fill(XmlList& list) {
    list.setAttribute("name", "drives");
    XmlObject& first = list.addObject(std::make_unique<XmlObject>());
    first.setAttribute("name", "one");
    auto property = std::make_unique<XmlProperty>();
    property->setAttribute("name", "p");
    first.addProperty(std::move(property));
    list.addObject(std::make_unique<XmlObject>()).setAttribute("name", "two");
}

constexpr const char* FILLED = "<List name=\"drives\">"
                               "<Object name=\"one\"><Property name=\"p\"/></Object>"
                               "<Object name=\"two\"></Object>"
                               "</List>";

TEST(XmlList, WritesAnOpeningAndAClosingTagWhenEmpty) {
    EXPECT_EQ(written(XmlList()), "<List></List>");
}

TEST(XmlList, WritesItsObjectsInOrder) {
    XmlList list;
    fill(list);
    EXPECT_EQ(written(list), FILLED);
}

TEST(XmlList, IsEmptyWithoutChildrenAndAttributes) {
    XmlList list;
    EXPECT_TRUE(list.isEmpty());
    list.setAttribute("name", "");
    EXPECT_FALSE(list.isEmpty());
    list.clearAttributes();
    list.addObject(std::make_unique<XmlObject>());
    EXPECT_FALSE(list.isEmpty());
}

TEST(XmlList, ReturnsTheAddedObjectInPlace) {
    XmlList list;
    XmlObject& object = list.addObject(std::make_unique<XmlObject>());
    ASSERT_EQ(list.getObjects().size(), 1U);
    EXPECT_EQ(list.getObjects().front().get(), &object);
}

TEST(XmlList, CountsItselfOnlyWithIncludeSelf) {
    XmlList list;
    fill(list);
    EXPECT_EQ(list.find("List", "", "", false).size(), 0U);
    const auto found = list.find("List", "", "", true);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(written(*found.front()), FILLED);
}

TEST(XmlList, FindsTheWholeSubtreeOrItsPropertiesOnly) {
    XmlList list;
    fill(list);
    const auto properties = list.find("", "", "", false);
    ASSERT_EQ(properties.size(), 1U);
    EXPECT_EQ(written(*properties.front()), "<Property name=\"p\"/>");

    const auto all = list.find("", "", "", true);
    ASSERT_EQ(all.size(), 4U);
    EXPECT_EQ(all[0]->getAttribute("name"), "drives");
    EXPECT_EQ(all[1]->getAttribute("name"), "one");
    EXPECT_EQ(all[2]->getAttribute("name"), "p");
    EXPECT_EQ(all[3]->getAttribute("name"), "two");
}

TEST(XmlList, ClonesDeeply) {
    auto list = std::make_unique<XmlList>();
    fill(*list);
    const auto copy = list->clone();
    list.reset();
    EXPECT_EQ(copy->getType(), "List");
    EXPECT_EQ(written(*copy), FILLED);
}

}  // namespace
}  // namespace orvel::core::xml
