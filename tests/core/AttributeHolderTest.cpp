// Tests of the attribute operations that devices and partitions share.
#include "core/AttributeHolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace orvel::core {
namespace {

using namespace std::string_literals;

class Bag : public AttributeHolder {};

using Bytes = std::vector<std::uint8_t>;

Attribute attributeOf(const std::string& name, const Bytes& bytes) {
    return {name, Payload(bytes.data(), static_cast<std::uint32_t>(bytes.size()))};
}

Attribute blank(const std::string& name) {
    return {name, "", ""};
}

/// Holds one attribute, named "Fact", with this value; none where there is no value.
Bag bagOf(const std::optional<Bytes>& value) {
    Bag bag;
    if (value) bag.setAttribute(attributeOf("Fact", *value));
    return bag;
}

std::vector<std::string> namesIn(const AttributeHolder& holder) {
    std::vector<std::string> names;
    for (const Attribute& attribute : holder.getAttributes())
        names.push_back(attribute.getName());
    return names;
}

std::string textIn(const AttributeHolder& holder, const std::string& name) {
    return holder.getAttribute(blank(name)).valueAsString();
}

TEST(AttributeHolder, HoldsNothingAtFirst) {
    const Bag bag;
    EXPECT_TRUE(bag.getAttributes().empty());
    EXPECT_FALSE(bag.hasAttribute("Fact"));
    EXPECT_FALSE(bag.hasAttribute(""));
}

TEST(AttributeHolder, GivesACopyOfTheStoredAttributeWithAllItsFields) {
    Bag bag;
    Attribute stored("Fact", "A Fact", "uint16");
    stored.setDescription("what it is");
    stored.setValue(std::uint16_t{0x1234});
    bag.setAttribute(stored);

    const Attribute got = bag.getAttribute({"Fact", "another display name", "string"});

    EXPECT_EQ(got.getName(), "Fact");
    EXPECT_EQ(got.getDisplayName(), "A Fact");
    EXPECT_EQ(got.getDescription(), "what it is");
    EXPECT_EQ(got.getType(), "uint16");
    EXPECT_EQ(got.getPayload(), Payload("\x34\x12", 2));
}

TEST(AttributeHolder, GivesACopyOfTheArgumentForAnAbsentAttribute) {
    const Bag bag;
    Attribute argument("Fact", "A Fact", "uint16");
    argument.setDescription("what it is");
    argument.setValue(std::uint16_t{0x1234});

    const Attribute got = bag.getAttribute(argument);

    EXPECT_EQ(got.getName(), "Fact");
    EXPECT_EQ(got.getDisplayName(), "A Fact");
    EXPECT_EQ(got.getDescription(), "what it is");
    EXPECT_EQ(got.getType(), "uint16");
    EXPECT_EQ(got.getPayload(), Payload("\x34\x12", 2));
}

TEST(AttributeHolder, StoresNothingWhenAnAbsentAttributeIsAskedFor) {
    Bag bag;
    bag.getAttribute(Attribute("Fact", "value"));
    EXPECT_FALSE(bag.hasAttribute("Fact"));
}

TEST(AttributeHolder, LeavesTheStoredAttributeWhenTheCopyThatItGaveIsSet) {
    Bag bag;
    bag.setAttribute(Attribute("Fact", "stored"));
    Attribute got = bag.getAttribute(blank("Fact"));
    got.setValue("changed");
    got.setDisplayName("Changed");
    EXPECT_EQ(textIn(bag, "Fact"), "stored");
    EXPECT_EQ(bag.getAttribute(blank("Fact")).getDisplayName(), "");
}

TEST(AttributeHolder, ComparesKeysExactly) {
    Bag bag;
    bag.setAttribute({"SectorSize", "Sector Size", "uint32"});
    EXPECT_TRUE(bag.hasAttribute("SectorSize"));
    for (const char* other : {"sectorsize", "Sector Size", "SectorSize ", "Sector", ""}) {
        SCOPED_TRACE(other);
        EXPECT_FALSE(bag.hasAttribute(other));
    }
}

TEST(AttributeHolder, ReplacesAnAttributeOfTheSameNameWhole) {
    Bag bag;
    bag.setAttribute(Attribute("Fact", "text"));
    bag.setAttribute(Attribute("Other", "other"));
    bag.setAttribute(Attribute("Fact", std::uint8_t{7}));
    EXPECT_EQ(bag.getAttribute(blank("Fact")).getType(), "uint8");
    EXPECT_EQ(textIn(bag, "Fact"), "7");
    EXPECT_EQ(namesIn(bag), (std::vector{"Fact"s, "Other"s}));
}

TEST(AttributeHolder, RemovesAnAttribute) {
    Bag bag;
    bag.setAttribute(Attribute("Fact", "text"));
    bag.setAttribute(Attribute("Other", "other"));
    bag.removeAttribute("Fact");
    EXPECT_FALSE(bag.hasAttribute("Fact"));
    EXPECT_EQ(namesIn(bag), (std::vector{"Other"s}));
}

TEST(AttributeHolder, RemovesNothingForAnUnknownKey) {
    Bag bag;
    bag.setAttribute(Attribute("Fact", "text"));
    bag.removeAttribute("fact");
    EXPECT_EQ(namesIn(bag), (std::vector{"Fact"s}));
}

TEST(AttributeHolder, RemovesByAKeyOutOfItsOwnTable) {
    Bag bag;
    bag.setAttribute(Attribute("Fact", "text"));
    bag.removeAttribute(bag.getAttributes().begin()->getName());
    EXPECT_TRUE(bag.getAttributes().empty());
}

TEST(AttributeHolder, HandsOutTheTableItself) {
    Bag bag;
    bag.getAttributes().set(Attribute("Fact", "text"));
    EXPECT_TRUE(bag.hasAttribute("Fact"));
    const Bag& constBag = bag;
    EXPECT_EQ(&constBag.getAttributes(), &bag.getAttributes());
}

TEST(AttributeHolder, ReadsTextWithoutTheLastByte) {
    const struct {
        const char* title;
        std::optional<Bytes> value;
        std::string expected;
    } ROWS[] = {
        {"absent", std::nullopt, ""},
        {"empty payload", Bytes{}, ""},
        {"terminator alone", Bytes{0}, ""},
        {"text", Bytes{'a', 'b', 0}, "ab"},
        {"the last byte is dropped whatever it is", Bytes{'a', 'b', 'c'}, "ab"},
        {"one byte that is no terminator", Bytes{'a'}, ""},
        {"zero inside", Bytes{'a', 0, 'b', 0}, "a\0b"s},
        {"two zeroes at the end", Bytes{'a', 0, 0}, "a\0"s},
        {"bytes above 127", Bytes{0xC3, 0xA9, 0}, "\xC3\xA9"},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(bagOf(row.value).readText(blank("Fact")), row.expected);
    }
}

TEST(AttributeHolder, ReadsBackTheTextThatWasSet) {
    for (const std::string& text : {""s, "text"s, "with\0zero"s, std::string(5000, 'x')}) {
        SCOPED_TRACE(text);
        Bag bag;
        bag.setAttribute(Attribute("Fact", text));
        EXPECT_EQ(bag.readText(blank("Fact")), text);
    }
}

TEST(AttributeHolder, ReadsUnsignedNumbersFromAtMostEightBytes) {
    const struct {
        const char* title;
        std::optional<Bytes> value;
        std::uint64_t expected;
    } ROWS[] = {
        {"absent", std::nullopt, 0},
        {"empty payload", Bytes{}, 0},
        {"one byte", Bytes{0xFF}, 255},
        {"two bytes, the low one first", Bytes{0x34, 0x12}, 0x1234},
        {"three bytes", Bytes{0x56, 0x34, 0x12}, 0x123456},
        {"four bytes with the top bit", Bytes{0, 0, 0, 0x80}, 0x80000000},
        {"eight bytes", Bytes{8, 7, 6, 5, 4, 3, 2, 1}, 0x0102030405060708},
        {"all bits", Bytes(8, 0xFF), std::numeric_limits<std::uint64_t>::max()},
        {"the ninth byte is left", Bytes{1, 0, 0, 0, 0, 0, 0, 0, 0xFF}, 1},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(bagOf(row.value).readUnsigned64(blank("Fact")), row.expected);
    }
}

TEST(AttributeHolder, ReadsSignedNumbersFromAtMostFourBytes) {
    const struct {
        const char* title;
        std::optional<Bytes> value;
        std::int32_t expected;
    } ROWS[] = {
        {"absent", std::nullopt, -77},
        {"empty payload", Bytes{}, -77},
        {"one byte is zero-extended", Bytes{0xFF}, 255},
        {"three bytes", Bytes{0x56, 0x34, 0x12}, 0x123456},
        {"four bytes", Bytes{0x78, 0x56, 0x34, 0x12}, 0x12345678},
        {"all bits", Bytes{0xFF, 0xFF, 0xFF, 0xFF}, -1},
        {"the least", Bytes{0, 0, 0, 0x80}, std::numeric_limits<std::int32_t>::min()},
        {"the fifth byte is left", Bytes{1, 0, 0, 0, 0xFF}, 1},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(bagOf(row.value).readSigned32(blank("Fact"), -77), row.expected);
    }
}

TEST(AttributeHolder, CountsAnAttributeAsSetIfItsFirstByteIsOne) {
    const struct {
        const char* title;
        std::optional<Bytes> value;
        bool expected;
    } ROWS[] = {
        {"absent", std::nullopt, false},
        {"empty payload", Bytes{}, false},
        {"one", Bytes{1}, true},
        {"zero", Bytes{0}, false},
        {"two", Bytes{2}, false},
        {"255", Bytes{0xFF}, false},
        {"one in front of others", Bytes{1, 0, 5}, true},
        {"one behind a zero", Bytes{0, 1}, false},
        {"the digit", Bytes{'1', 0}, false},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        EXPECT_EQ(bagOf(row.value).isSet(blank("Fact")), row.expected);
    }
}

TEST(AttributeHolder, ReadsTheValueInTheTableAndNotThatOfTheDescriptor) {
    const Attribute descriptor = attributeOf("Fact", {1, 1});
    const Bag empty;
    EXPECT_EQ(empty.readText(descriptor), "");
    EXPECT_EQ(empty.readUnsigned64(descriptor), 0U);
    EXPECT_EQ(empty.readSigned32(descriptor, -1), -1);
    EXPECT_FALSE(empty.isSet(descriptor));

    const Bag bag = bagOf(Bytes{'A', 0});
    EXPECT_EQ(bag.readText(descriptor), "A");
    EXPECT_EQ(bag.readUnsigned64(descriptor), 65U);
    EXPECT_EQ(bag.readSigned32(descriptor, -1), 65);
    EXPECT_FALSE(bag.isSet(descriptor));
}

TEST(AttributeHolder, KeepsTheOrderAndAllFieldsInACopy) {
    Bag bag;
    Attribute stored("Fact", "A Fact", "uint16");
    stored.setDescription("what it is");
    stored.setValue(std::uint16_t{0x1234});
    bag.setAttribute(Attribute("z", "1"));
    bag.setAttribute(stored);
    bag.setAttribute(blank("a"));

    const Bag copy = bag;

    EXPECT_EQ(namesIn(copy), (std::vector{"z"s, "Fact"s, "a"s}));
    const Attribute got = copy.getAttribute(blank("Fact"));
    EXPECT_EQ(got.getDisplayName(), "A Fact");
    EXPECT_EQ(got.getDescription(), "what it is");
    EXPECT_EQ(got.getType(), "uint16");
    EXPECT_EQ(got.getPayload(), Payload("\x34\x12", 2));
    EXPECT_EQ(copy.getAttribute(Attribute("a", "absent")).getPayload().size(), 0U);
}

TEST(AttributeHolder, SharesNoByteWithACopy) {
    Bag bag = bagOf(Bytes{1, 2});
    const Bag copied = bag;
    Bag assigned = bagOf(Bytes{9, 9, 9});
    assigned = bag;

    *bag.getAttribute(blank("Fact")).getPayload().at(0) = 7;
    *assigned.getAttribute(blank("Fact")).getPayload().at(1) = 8;

    EXPECT_EQ(bag.getAttribute(blank("Fact")).getPayload(), Payload("\x07\x02", 2));
    EXPECT_EQ(copied.getAttribute(blank("Fact")).getPayload(), Payload("\x01\x02", 2));
    EXPECT_EQ(assigned.getAttribute(blank("Fact")).getPayload(), Payload("\x01\x08", 2));
}

TEST(AttributeHolder, HasOnlyTheOthersAttributesOnceAssigned) {
    Bag bag;
    bag.setAttribute(Attribute("Old", "1"));
    bag = bagOf(Bytes{1});
    EXPECT_EQ(namesIn(bag), (std::vector{"Fact"s}));
    EXPECT_FALSE(bag.hasAttribute("Old"));
}

TEST(AttributeHolder, StaysAsItWasWhenAssignedToItself) {
    Bag bag = bagOf(Bytes{1, 2});
    const Bag& same = bag;
    bag = same;
    EXPECT_EQ(namesIn(bag), (std::vector{"Fact"s}));
    EXPECT_EQ(bag.getAttribute(blank("Fact")).getPayload(), Payload("\x01\x02", 2));
}

}  // namespace
}  // namespace orvel::core
