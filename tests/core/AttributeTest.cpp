// Tests of the attribute: its encodings, its text and values given as text.
#include "core/Attribute.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvel::core {
namespace {

Payload payloadOf(const std::string& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

std::string bytesOf(const Attribute& attribute) {
    const Payload& payload = attribute.getPayload();
    return {payload.data(), payload.data() + payload.size()};
}

Attribute blank(const std::string& type) {
    return {"Name", "Display Name", type};
}

/// A string literal's bytes, NULs included, its terminator not.
template <std::size_t Size>
std::string raw(const char (&literal)[Size]) {
    return std::string(literal, Size - 1);
}

TEST(Attribute, IsBlankAsADescriptor) {
    const Attribute attribute("LogAddress", "Log Address", "uint8");
    EXPECT_EQ(attribute.getName(), "LogAddress");
    EXPECT_EQ(attribute.getDisplayName(), "Log Address");
    EXPECT_EQ(attribute.getType(), "uint8");
    EXPECT_EQ(attribute.getDescription(), "");
    EXPECT_EQ(attribute.getPayload().size(), 0U);
}

TEST(Attribute, TakesDisplayNameAndDescription) {
    Attribute attribute = blank("string");
    attribute.setDisplayName("Other");
    attribute.setDescription("What it is");
    EXPECT_EQ(attribute.getDisplayName(), "Other");
    EXPECT_EQ(attribute.getDescription(), "What it is");
    EXPECT_EQ(attribute.getName(), "Name");
}

struct ValueRow {
    Attribute attribute;
    const char* type;
    std::string bytes;
    std::string text;
};

TEST(Attribute, HoldsNameTypeAndBytesOfAValue) {
    const std::vector<std::uint64_t> numbers = {1, 0xFFFFFFFFFFFFFFFE};
    const std::vector<std::string> texts = {"one", "", "three"};
    // clang-format off
    const ValueRow rows[] = {
        {Attribute("A", "text"),                       "string",          raw("text\0"),              "text"},
        {Attribute("A", std::string("te\xFCt")),       "string",          raw("te\xFCt\0"),           "te\xFCt"},
        {Attribute("A", ""),                           "string",          raw("\0"),                  ""},
        {Attribute("A", std::string("a\0b", 3)),       "string",          raw("a\0b\0"),              raw("a\0b")},
        {Attribute("A", true),                         "boolean",         raw("\1"),                  "True"},
        {Attribute("A", false),                        "boolean",         raw("\0"),                  "False"},
        {Attribute("A", std::int8_t{-2}),              "sint8",           raw("\xFE"),                "-2"},
        {Attribute("A", std::int16_t{-2}),             "sint16",          raw("\xFE\xFF"),            "-2"},
        {Attribute("A", std::int32_t{-2}),             "sint32",          raw("\xFE\xFF\xFF\xFF"),    "-2"},
        {Attribute("A", std::int64_t{-2}),             "sint64",          raw("\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), "-2"},
        {Attribute("A", std::uint8_t{200}),            "uint8",           raw("\xC8"),                "200"},
        {Attribute("A", std::uint16_t{0x1234}),        "uint16",          raw("\x34\x12"),            "4660"},
        {Attribute("A", std::uint32_t{0x12345678}),    "uint32",          raw("\x78\x56\x34\x12"),    "305419896"},
        {Attribute("A", std::uint64_t{0x1122334455667788}), "uint64",
                                                       raw("\x88\x77\x66\x55\x44\x33\x22\x11"),       "1234605616436508552"},
        {Attribute("A", payloadOf("\x0A\xFF")),        "bytepointer",     raw("\x0A\xFF"),            "0AFF"},
        {Attribute("A", numbers),                      "list_uint64",
             raw("\x01\0\0\0\0\0\0\0\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), "0100000000000000FEFFFFFFFFFFFFFF"},
        {Attribute("A", texts),                        "vectorOfStrings", raw("one~~three\0"),        "one~~three"},
        {Attribute("A", std::vector<std::string>{}),   "vectorOfStrings", raw("\0"),                  ""},
        {Attribute("A", std::vector<Payload>{payloadOf("ab"), Payload(), payloadOf("c")}), "vectorOfPayloads",
             raw("\2\0\0\0ab\0\0\0\0\1\0\0\0c"), ""},
    };
    // clang-format on
    for (const ValueRow& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.text);
        EXPECT_EQ(row.attribute.getName(), "A");
        EXPECT_EQ(row.attribute.getDisplayName(), "");
        EXPECT_EQ(row.attribute.getType(), row.type);
        EXPECT_EQ(bytesOf(row.attribute), row.bytes);
        EXPECT_EQ(row.attribute.valueAsString(), row.text);
    }
}

TEST(Attribute, TakesANullPointerAsEmptyText) {
    const char* nothing = nullptr;
    EXPECT_EQ(bytesOf(Attribute("A", nothing)), raw("\0"));
}

TEST(Attribute, KeepsTheTypeWordWhenAValueIsSet) {
    Attribute attribute("DurationBase", "Duration Base", "uint32");
    attribute.setValue("Milliseconds");
    EXPECT_EQ(attribute.getType(), "uint32");
    EXPECT_EQ(bytesOf(attribute), raw("Milliseconds\0"));
    EXPECT_EQ(attribute.valueAsString(), "1819044173");
}

TEST(Attribute, KeepsItsBytesWhenACopyIsSet) {
    const Attribute original("A", std::uint8_t{1});
    Attribute copy = original;
    copy.setValue(std::uint8_t{2});
    EXPECT_EQ(original.valueAsString(), "1");
    EXPECT_EQ(copy.valueAsString(), "2");
}

struct TextRow {
    const char* type;
    std::string bytes;
    std::string text;
};

TEST(Attribute, ReadsItsBytesByTheTypeWord) {
    // clang-format off
    const TextRow rows[] = {
    //   type               bytes                                       text
        {"string",          "",                                         ""},
        {"string",          raw("\0"),                                  ""},
        {"string",          raw("abc\0"),                               "abc"},
        {"sint8",           "",                                         "-1"},
        {"sint8",           raw("\x80"),                                "-128"},
        {"sint8",           raw("\x7F\xFF"),                            "127"},
        {"sint16",          "",                                         "-1"},
        {"sint16",          raw("\xFF"),                                "255"},
        {"sint16",          raw("\x00\x80"),                            "-32768"},
        {"sint32",          "",                                         "-1"},
        {"sint32",          raw("\xFF\xFF"),                            "65535"},
        {"sint32",          raw("\x00\x00\x00\x80"),                    "-2147483648"},
        {"sint64",          "",                                         "-1"},
        {"sint64",          raw("\xFF\xFF\xFF\xFF"),                    "4294967295"},
        {"sint64",          raw("\x00\x00\x00\x00\x00\x00\x00\x80"),    "-9223372036854775808"},
        {"uint8",           "",                                         "0"},
        {"uint8",           raw("\xFF\x01"),                            "255"},
        {"uint16",          "",                                         "0"},
        {"uint16",          raw("\x12"),                                "18"},
        {"uint16",          raw("\x00\x01\x01"),                        "256"},
        {"uint32",          "",                                         "0"},
        {"uint32",          raw("\x01\x02\x03"),                        "197121"},
        {"uint32",          raw("\xFF\xFF\xFF\xFF\xFF"),                "4294967295"},
        {"uint64",          "",                                         "0"},
        {"uint64",          raw("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),    "18446744073709551615"},
        {"ulong",           "",                                         "0"},
        {"ulong",           raw("\x00\x00\x00\x00\x01\x00\x00\x00"),    "4294967296"},
        {"ulong",           raw("\x05"),                                "5"},
        {"boolean",         "",                                         "False"},
        {"boolean",         raw("\0"),                                  "False"},
        {"boolean",         raw("\x01"),                                "True"},
        {"boolean",         raw("\x80"),                                "True"},
        {"bytepointer",     "",                                         ""},
        {"bytepointer",     raw("\x0A\xFF"),                            "0AFF"},
        {"list_uint64",     raw("\x0A\xFF\x00"),                        "0AFF00"},
        {"vectorOfStrings", "",                                         ""},
        {"vectorOfStrings", raw("a~b\0"),                               "a~b"},
        {"hexValue",        "",                                         ""},
        {"hexValue",        raw("\x00"),                                "0x0"},
        {"hexValue",        raw("\x00\x00\x00"),                        "0x0"},
        {"hexValue",        raw("\x00\x00\x1A\xB0"),                    "0x1AB0"},
        {"hexValue",        raw("\x00\x0A\x00"),                        "0x0A00"},
        {"hexValue",        raw("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),
                                                                        "0xFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"},
        {"vectorOfPayloads", raw("abc"),                                ""},
        {"String",          raw("abc\0"),                               ""},
        {"",                raw("abc\0"),                               ""},
    };
    // clang-format on
    for (const TextRow& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.text);
        Attribute attribute = blank(row.type);
        attribute.setValue(payloadOf(row.bytes));
        EXPECT_EQ(attribute.valueAsString(), row.text);
    }
}

TEST(Attribute, KeepsTheLastCharacterOfAnUnterminatedText) {
    Attribute attribute = blank("string");
    attribute.setValue(payloadOf("abc"));
    EXPECT_EQ(attribute.valueAsString(), "abc");
}

TEST(Attribute, TakesAValueGivenAsText) {
    // clang-format off
    const TextRow rows[] = {
    //   type       bytes                                       text
        {"string",  raw("\0"),                                  ""},
        {"string",  raw("12 GB\0"),                             "12 GB"},
        {"boolean", raw("\0"),                                  "0"},
        {"boolean", raw("\1"),                                  "1"},
        {"boolean", raw("\0"),                                  "FALSE"},
        {"boolean", raw("\1"),                                  "tRue"},
        {"sint16",  raw("\xFF\xFF"),                            "65535"},
        {"sint16",  raw("\x00\x00"),                            "65536"},
        {"sint32",  raw("\x50\x00\x00\x00"),                    "80"},
        {"sint32",  raw("\xFF\xFF\xFF\xFF"),                    "18446744073709551615"},
        {"sint64",  raw("\x10\x00\x00\x00\x00\x00\x00\x00"),    "0x10"},
        {"uint8",   raw("\xFF"),                                "255"},
        {"uint8",   raw("\x00"),                                ""},
        {"uint8",   raw("\x10"),                                "0x10"},
        {"uint8",   raw("\xFF"),                                "ff"},
        {"uint8",   raw("\x00"),                                "0xZ9"},
        {"uint16",  raw("\xFF\xFF"),                            "65535"},
        {"uint32",  raw("\xFF\xFF\xFF\xFF"),                    "4294967295"},
        {"ulong",   raw("\xFF\xFF\xFF\xFF\x00\x00\x00\x00"),    "4294967295"},
        {"uint64",  raw("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),    "18446744073709551615"},
        {"uint64",  raw("\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"),    "99999999999999999999"},
    };
    // clang-format on
    for (const TextRow& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.text);
        Attribute attribute = blank(row.type);
        EXPECT_TRUE(attribute.setValueFromText(row.text) == Status());
        EXPECT_EQ(bytesOf(attribute), row.bytes);
        EXPECT_EQ(attribute.getType(), row.type);
    }
}

struct RefusedRow {
    const char* type;
    const char* text;
};

TEST(Attribute, IsBlankAfterARefusedText) {
    // clang-format off
    const RefusedRow rows[] = {
    //   type                text
        {"sint8",            "1"},
        {"sint16",           "-1"},
        {"sint32",           "x"},
        {"sint64",           "1.5"},
        {"uint8",            "256"},
        {"uint8",            "-1"},
        {"uint8",            "10 "},
        {"uint16",           "65536"},
        {"uint16",           "0x10000"},
        {"uint32",           "4294967296"},
        {"uint32",           "all"},
        {"ulong",            "4294967296"},
        {"ulong",            "?"},
        {"uint64",           "twelve"},
        {"boolean",          ""},
        {"boolean",          "2"},
        {"boolean",          "yes"},
        {"bytepointer",      "0AFF"},
        {"list_uint64",      "1"},
        {"vectorOfStrings",  "a"},
        {"vectorOfPayloads", "00"},
        {"hexValue",         "0x10"},
        {"unknown",          "1"},
        {"",                 "1"},
    };
    // clang-format on
    for (const RefusedRow& row : rows) {
        SCOPED_TRACE(std::string(row.type) + " " + row.text);
        Attribute attribute = blank(row.type);
        attribute.setValue("old value");
        const Status status = attribute.setValueFromText(row.text);
        EXPECT_EQ(status.getCategory(), 0);
        EXPECT_EQ(status.getCode(), 40);
        EXPECT_EQ(status.getMessage(), "Invalid value type provided for the attribute.");
        EXPECT_EQ(attribute.getPayload().size(), 0U);
        EXPECT_EQ(attribute.getName(), "Name");
        EXPECT_EQ(attribute.getType(), row.type);
    }
}

}  // namespace
}  // namespace orvel::core
