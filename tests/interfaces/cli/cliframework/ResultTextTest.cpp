// The text work that result classes share: tags, quotes and the JSON form of a value.
#include "interfaces/cli/cliframework/ResultText.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace cli::framework;

std::string jsonValue(const std::string& value) {
    std::string text;
    appendJsonValue(text, value);
    return text;
}

TEST(ResultText, AppendsEachPieceInTurn) {
    std::string text = "a";
    append(text, "b", std::string("c"), std::string_view("d"));
    EXPECT_EQ(text, "abcd");
}

TEST(ResultText, KeepsNulBytesOfItsPieces) {
    std::string text;
    append(text, std::string("a\0b", 3));
    appendFormat(text, "<%s>", std::string("c\0d", 3));
    EXPECT_EQ(text, std::string("a\0b<c\0d>", 8));
}

TEST(ResultText, PutsTheArgumentIntoTheFormat) {
    std::string text = "x";
    appendFormat(text, "<field name=\"%s\">", "50 %s");
    EXPECT_EQ(text, "x<field name=\"50 %s\">");
}

TEST(ResultText, ReplacesOnlyBlanksInATag) {
    EXPECT_EQ(toTag(" Drive  0 (x)\t<&"), "_Drive__0_(x)\t<&");
    EXPECT_EQ(toTag(""), "");
}

TEST(ResultText, ReplacesDoubleQuotesByApostrophes) {
    EXPECT_EQ(toApostrophes("a \"b\" 'c' \\"), "a 'b' 'c' \\");
}

TEST(ResultText, WritesNumbersAndTruthValuesBareAndTheRestInQuotes) {
    struct Row {
        const char* value;
        const char* json;
    };

    // clang-format off
    constexpr Row ROWS[] = {
    //   value          in JSON
        {"123",         "123"},
        {"-5",          "-5"},
        {"1.5",         "1.5"},
        {"0",           "0"},
        {"-0.5",        "-0.5"},
        {"0123",        "\"0123\""},
        {"0.5",         "\"0.5\""},
        {"0x1F",        "\"0x1F\""},
        {"00",          "\"00\""},
        {"1.2.3",       "\"1.2.3\""},
        {"1e5",         "\"1e5\""},
        {"+1",          "\"+1\""},
        {"--1",         "\"--1\""},
        {"1 ",          "\"1 \""},
        {"-",           "-"},
        {".",           "."},
        {"-.",          "-."},
        {"true",        "true"},
        {"True",        "true"},
        {"TRUE",        "true"},
        {"false",       "false"},
        {"FALSE",       "false"},
        {"trueish",     "\"trueish\""},
        {"tru",         "\"tru\""},
        {"",            "\"\""},
        {"a \"b\" c",   "\"a 'b' c\""},
        {"\"true\"",    "\"'true'\""},
        {"C:\\x",       "\"C:\\x\""},
        {"a\n\tb\x01",  "\"a\n\tb\x01\""},
        {"caf\xc3\xa9", "\"caf\xc3\xa9\""},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(jsonValue(row.value), row.json);
    }
}

TEST(ResultText, KeepsANulByteInAValue) {
    EXPECT_EQ(jsonValue(std::string("1\0", 2)), std::string("\"1\0\"", 4));
}

}  // namespace
