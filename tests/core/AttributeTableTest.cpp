// Tests of the table of attributes.
#include "core/AttributeTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::core {
namespace {

std::vector<std::string> namesOf(const AttributeTable& table) {
    std::vector<std::string> names;
    for (const Attribute& attribute : table) {
        names.push_back(attribute.getName());
    }
    return names;
}

AttributeTable tableOf(const std::vector<std::string>& names) {
    AttributeTable table;
    for (const std::string& name : names) {
        table.set(Attribute(name, "value of " + name));
    }
    return table;
}

TEST(AttributeTable, IsEmptyAtFirst) {
    const AttributeTable table;
    EXPECT_TRUE(table.empty());
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(table.find("Index"), nullptr);
    EXPECT_EQ(table.begin(), table.end());
}

TEST(AttributeTable, FindsAnAttributeByItsName) {
    const AttributeTable table = tableOf({"Index", "Firmware"});
    ASSERT_TRUE(table.contains("Firmware"));
    EXPECT_EQ(table.find("Firmware")->valueAsString(), "value of Firmware");
    EXPECT_FALSE(table.contains("firmware"));
}

TEST(AttributeTable, KeepsTheOrderInWhichNamesCameIn) {
    const AttributeTable table = tableOf({"d", "a", "c", "b"});
    EXPECT_EQ(namesOf(table), (std::vector<std::string>{"d", "a", "c", "b"}));
}

TEST(AttributeTable, LetsAReplacedAttributeKeepItsPlace) {
    AttributeTable table = tableOf({"a", "b", "c"});
    table.set(Attribute("b", "later"));
    EXPECT_EQ(namesOf(table), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(table.find("b")->valueAsString(), "later");
    EXPECT_EQ(table.size(), 3U);
}

TEST(AttributeTable, FindsTheOthersAfterOneWasRemoved) {
    AttributeTable table = tableOf({"a", "b", "c", "d"});
    EXPECT_TRUE(table.remove("b"));
    EXPECT_EQ(namesOf(table), (std::vector<std::string>{"a", "c", "d"}));
    EXPECT_FALSE(table.contains("b"));
    EXPECT_EQ(table.find("a")->getName(), "a");
    EXPECT_EQ(table.find("c")->getName(), "c");
    EXPECT_EQ(table.find("d")->getName(), "d");
    table.set(Attribute("b", "again"));
    EXPECT_EQ(namesOf(table), (std::vector<std::string>{"a", "c", "d", "b"}));
}

TEST(AttributeTable, RemovesNothingForAnUnknownName) {
    AttributeTable table = tableOf({"a"});
    EXPECT_FALSE(table.remove("b"));
    EXPECT_EQ(table.size(), 1U);
}

TEST(AttributeTable, IsEmptyOnceCleared) {
    AttributeTable table = tableOf({"a", "b"});
    table.clear();
    EXPECT_TRUE(table.empty());
    EXPECT_FALSE(table.contains("a"));
    table.set(Attribute("b", "again"));
    EXPECT_EQ(namesOf(table), (std::vector<std::string>{"b"}));
}

TEST(AttributeTable, IsCopiedByValue) {
    const AttributeTable original = tableOf({"a"});
    AttributeTable copy = original;
    copy.set(Attribute("a", "changed"));
    copy.set(Attribute("b", "new"));
    EXPECT_EQ(original.find("a")->valueAsString(), "value of a");
    EXPECT_EQ(original.size(), 1U);
}

}  // namespace
}  // namespace orvel::core
