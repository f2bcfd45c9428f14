// The element that stands for a thing.
#include "core/xml/XmlObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace orvel::core::xml {
namespace {

std::string written(const XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

void addNamed(XmlContainer& container, const std::string& name, const std::string& value = "") {
    XmlProperty& property = container.addProperty(std::make_unique<XmlProperty>());
    property.setAttribute("name", name);
    if (!value.empty()) property.setAttribute("value", value);
}

TEST(XmlObject, WritesAnOpeningAndAClosingTagWhenEmpty) {
    EXPECT_EQ(written(XmlObject()), "<Object></Object>");
}

TEST(XmlObject, TakesNameDescriptionAndValueAsItsOwnAttributes) {
    EXPECT_EQ(written(XmlObject("n", "d", "v")),
              "<Object description=\"d\" name=\"n\" value=\"v\"></Object>");
    EXPECT_EQ(written(XmlObject("", "", "")),
              "<Object description=\"\" name=\"\" value=\"\"></Object>");
}

TEST(XmlObject, AddsAPropertyWithEmptyTextsIncluded) {
    XmlObject object;
    XmlProperty& added = object.addProperty("Code", "", "0");
    EXPECT_EQ(object.getProperties().front().get(), &added);
    EXPECT_EQ(written(object),
              "<Object><Property description=\"\" name=\"Code\" value=\"0\"/></Object>");
}

TEST(XmlObject, AddsAValueWithoutADescription) {
    XmlObject object;
    XmlProperty& added = object.addValue("timeout", "5");
    object.addValue("", "");
    EXPECT_EQ(object.getProperties().front().get(), &added);
    EXPECT_EQ(written(object), "<Object><Property name=\"timeout\" value=\"5\"/>"
                               "<Property name=\"\" value=\"\"/></Object>");
}

TEST(XmlObject, AddsAValueBehindTheOnesOfItsName) {
    XmlObject object;
    object.addValue("timeout", "5");
    object.addValue("timeout", "<6>");
    EXPECT_EQ(written(object), "<Object><Property name=\"timeout\" value=\"5\"/>"
                               "<Property name=\"timeout\" value=\"&amp;lt;6&amp;gt;\"/></Object>");
}

TEST(XmlObject, WritesPropertiesThenListsThenObjectsEachInInsertionOrder) {
    XmlObject object;
    object.addObject(std::make_unique<XmlObject>()).setAttribute("name", "o1");
    object.addList(std::make_unique<XmlList>()).setAttribute("name", "l1");
    addNamed(object, "p1");
    object.addObject(std::make_unique<XmlObject>()).setAttribute("name", "o2");
    object.addList(std::make_unique<XmlList>()).setAttribute("name", "l2");
    addNamed(object, "p2");
    EXPECT_EQ(written(object), "<Object>"
                               "<Property name=\"p1\"/>"
                               "<Property name=\"p2\"/>"
                               "<List name=\"l1\"></List>"
                               "<List name=\"l2\"></List>"
                               "<Object name=\"o1\"></Object>"
                               "<Object name=\"o2\"></Object>"
                               "</Object>");
}

TEST(XmlObject, IsEmptyWithoutAnyChildAndAttribute) {
    EXPECT_TRUE(XmlObject().isEmpty());
    XmlObject withAttribute;
    withAttribute.setAttribute("a", "");
    EXPECT_FALSE(withAttribute.isEmpty());
    XmlObject withProperty;
    withProperty.addProperty(std::make_unique<XmlProperty>());
    EXPECT_FALSE(withProperty.isEmpty());
    XmlObject withList;
    withList.addList(std::make_unique<XmlList>());
    EXPECT_FALSE(withList.isEmpty());
    XmlObject withObject;
    withObject.addObject(std::make_unique<XmlObject>());
    EXPECT_FALSE(withObject.isEmpty());
}

/// An object "a" with the property "p"; in it a list with the object "b" with "p", and the object
/// "c" with "p" and "q".
void fill(XmlObject& object) {
    object.setAttribute("name", "a");
    addNamed(object, "p", "1");
    XmlObject& inList =
        object.addList(std::make_unique<XmlList>()).addObject(std::make_unique<XmlObject>());
    inList.setAttribute("name", "b");
    addNamed(inList, "p", "2");
    XmlObject& inner = object.addObject(std::make_unique<XmlObject>());
    inner.setAttribute("name", "c");
    addNamed(inner, "p", "3");
    addNamed(inner, "q", "4");
}

TEST(XmlObject, FindsPropertiesOfTheWholeSubtreeWithoutItself) {
    XmlObject object;
    fill(object);
    const auto found = object.find("Property", "name", "p", false);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(written(*found[0]), "<Property name=\"p\" value=\"1\"/>");
    EXPECT_EQ(written(*found[1]), "<Property name=\"p\" value=\"2\"/>");
    EXPECT_EQ(written(*found[2]), "<Property name=\"p\" value=\"3\"/>");
    EXPECT_EQ(object.find("", "", "", false).size(), 4U);
}

TEST(XmlObject, FindsContainersOnlyWithIncludeSelf) {
    XmlObject object;
    fill(object);
    EXPECT_EQ(object.find("Object", "", "", false).size(), 0U);
    EXPECT_EQ(object.find("Object", "", "", true).size(), 3U);
    EXPECT_EQ(object.find("", "", "", true).size(), 8U);
    const auto inner = object.find("Object", "name", "c", true);
    ASSERT_EQ(inner.size(), 1U);
    EXPECT_EQ(written(*inner.front()), "<Object name=\"c\">"
                                       "<Property name=\"p\" value=\"3\"/>"
                                       "<Property name=\"q\" value=\"4\"/>"
                                       "</Object>");
}

TEST(XmlObject, ClonesDeeply) {
    auto object = std::make_unique<XmlObject>();
    fill(*object);
    const auto copy = object->clone();
    object.reset();
    EXPECT_EQ(copy->getType(), "Object");
    EXPECT_EQ(written(*copy), "<Object name=\"a\">"
                              "<Property name=\"p\" value=\"1\"/>"
                              "<List>"
                              "<Object name=\"b\"><Property name=\"p\" value=\"2\"/></Object>"
                              "</List>"
                              "<Object name=\"c\">"
                              "<Property name=\"p\" value=\"3\"/>"
                              "<Property name=\"q\" value=\"4\"/>"
                              "</Object>"
                              "</Object>");
}

TEST(XmlObject, RemovesTheFirstPropertyOfAName) {
    XmlObject object;
    addNamed(object, "a", "1");
    addNamed(object, "b", "2");
    addNamed(object, "b", "3");
    EXPECT_TRUE(object.removeProperty("b"));
    EXPECT_EQ(written(object), "<Object>"
                               "<Property name=\"a\" value=\"1\"/>"
                               "<Property name=\"b\" value=\"3\"/>"
                               "</Object>");
}

TEST(XmlObject, RemovesNoPropertyWhoseNameDiffersInCase) {
    XmlObject object;
    addNamed(object, "Name");
    EXPECT_FALSE(object.removeProperty("name"));
    EXPECT_FALSE(object.removeProperty(""));
    EXPECT_EQ(object.getProperties().size(), 1U);
}

TEST(XmlObject, TakesAPropertyWithoutANameForOneWithAnEmptyName) {
    XmlObject object;
    object.addProperty(std::make_unique<XmlProperty>()).setAttribute("value", "v");
    EXPECT_TRUE(object.removeProperty(""));
    EXPECT_TRUE(object.getProperties().empty());
}

TEST(XmlObject, RemovesTheFirstPropertyOfEachNameInEveryChildObjectButNotInLists) {
    XmlObject object;
    fill(object);
    addNamed(object, "p", "5");
    object.removeProperties({"p", "absent", "q"});
    EXPECT_EQ(written(object), "<Object name=\"a\">"
                               "<Property name=\"p\" value=\"5\"/>"
                               "<List>"
                               "<Object name=\"b\"><Property name=\"p\" value=\"2\"/></Object>"
                               "</List>"
                               "<Object name=\"c\"></Object>"
                               "</Object>");
}

TEST(XmlObject, RemovesAsManyPropertiesOfANameAsTheNameIsListed) {
    XmlObject object;
    for (const char* value : {"1", "2", "3"})
        addNamed(object, "p", value);
    object.removeProperties({"p", "p"});
    EXPECT_EQ(written(object), "<Object><Property name=\"p\" value=\"3\"/></Object>");
}

TEST(XmlObject, RemovesNothingForNoNames) {
    XmlObject object;
    addNamed(object, "p");
    object.removeProperties({});
    EXPECT_EQ(object.getProperties().size(), 1U);
}

}  // namespace
}  // namespace orvel::core::xml
