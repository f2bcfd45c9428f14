// The framework's shared constants and its helpers for comparing and cutting strings.
#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace cli::framework {
namespace {

using Pieces = std::vector<std::string>;

TEST(TokenType, HasANumberAndAWordForEachName) {
    struct Row {
        int number;
        TokenType type;
        const char* word;
    };

    constexpr Row ROWS[] = {
        {0, TokenType::Unknown, "UNKNOWN"}, {1, TokenType::Value, "Value"},
        {2, TokenType::Verb, "Verb"},       {3, TokenType::Option, "Option"},
        {4, TokenType::Target, "Target"},   {5, TokenType::Property, "Property"},
        {6, TokenType::Equal, "Equal"},     {7, TokenType::Comma, "Comma"},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.word);
        EXPECT_EQ(row.number, static_cast<int>(row.type));
        EXPECT_EQ(row.word, tokenTypeToString(row.type));
    }
}

TEST(TokenType, ReadsUnknownForANumberWithoutAName) {
    EXPECT_EQ("UNKNOWN", tokenTypeToString(static_cast<TokenType>(9)));
    EXPECT_EQ("UNKNOWN", tokenTypeToString(static_cast<TokenType>(-1)));
}

TEST(OutputType, KeepsNumberThreeForTheTable) {
    EXPECT_EQ(0U, static_cast<unsigned>(OutputType::text));
    EXPECT_EQ(1U, static_cast<unsigned>(OutputType::nvmxml));
    EXPECT_EQ(2U, static_cast<unsigned>(OutputType::esx));
    EXPECT_EQ(3U, static_cast<unsigned>(OutputType::textTable));
    EXPECT_EQ(4U, static_cast<unsigned>(OutputType::json));
    EXPECT_EQ(5U, static_cast<unsigned>(OutputType::csv));
}

TEST(SharedConstants, HaveTheirWords) {
    EXPECT_STREQ("Success", SUCCESS_TEXT);
    EXPECT_STREQ("show", VERB_SHOW);
    EXPECT_STREQ("start", VERB_START);
    EXPECT_STREQ("create", VERB_CREATE);
    EXPECT_STREQ("dump", VERB_DUMP);
    EXPECT_STREQ("set", VERB_SET);
    EXPECT_STREQ("load", VERB_LOAD);
    EXPECT_STREQ("delete", VERB_DELETE);
    EXPECT_STREQ("help", VERB_HELP);
    EXPECT_STREQ("version", VERB_VERSION);
    EXPECT_STREQ("reset", VERB_RESET);
    EXPECT_STREQ("No results", NO_RESULTS_TEXT);
    EXPECT_STREQ("text", OUTPUT_TEXT);
    EXPECT_STREQ("nvmxml", OUTPUT_NVMXML);
    EXPECT_STREQ("esx", OUTPUT_ESX);
    EXPECT_STREQ("json", OUTPUT_JSON);
    EXPECT_STREQ("csv", OUTPUT_CSV);
    EXPECT_STREQ("Result", FIELD_RESULT);
    EXPECT_STREQ("Error", FIELD_ERROR);
    EXPECT_STREQ("Error_Description", FIELD_ERROR_DESCRIPTION);
    EXPECT_STREQ("Type", FIELD_TYPE);
    EXPECT_STREQ("A value is required for the %s '%s'.", MISSING_VALUE_FORMAT);
    EXPECT_STREQ("'%s' is not a valid setting for the %s '%s'.", BAD_VALUE_FORMAT);
}

TEST(SharedConstants, HaveThePiecesOfTheEsxcliForm) {
    const std::string head = ESX_HEAD;
    EXPECT_TRUE(head.starts_with("<?xml version=\"1.0\"?><output xmlns=\"")) << head;
    EXPECT_TRUE(head.ends_with("/Products/ESX/5.0/esxcli/\">")) << head;
    EXPECT_STREQ("</output>", ESX_END);
    EXPECT_STREQ("<list type=\"string\">", ESX_LIST_OF_STRINGS);
    EXPECT_STREQ("<list type=\"structure\">", ESX_LIST_OF_STRUCTURES);
    EXPECT_STREQ("</list>", ESX_LIST_END);
    EXPECT_STREQ("<string>", ESX_STRING);
    EXPECT_STREQ("</string>", ESX_STRING_END);
    EXPECT_STREQ("<structure typeName=\"KeyValue\">", ESX_KEY_VALUE);
    EXPECT_STREQ("<structure typeName=\"%s\">", ESX_STRUCTURE_FORMAT);
    EXPECT_STREQ("</structure>", ESX_STRUCTURE_END);
    EXPECT_STREQ("<field name=\"Attribute Name\">", ESX_FIELD_NAME);
    EXPECT_STREQ("<field name=\"Value\">", ESX_FIELD_VALUE);
    EXPECT_STREQ("<field name=\"%s\">", ESX_FIELD_FORMAT);
    EXPECT_STREQ("</field>", ESX_FIELD_END);
}

TEST(SharedParts, HaveTheirFields) {
    // In the order of the declarations.
    struct Row {  // NOLINT(clang-analyzer-optin.performance.Padding)
        const CommandPart& part;
        const char* name;
        bool required;
        const char* valueText;
        bool valueRequired;
        const char* shortName;
        bool noValue;
        const char* helpText;
    };

    constexpr bool YES = true;
    constexpr bool NO = false;
    // clang-format off
    const Row rows[] = {
        // part                       name            req. value text          req. short no value  help text
        {OPTION_ALL,                  "-all",         NO,  "",                 NO,  "-a", YES, "Display all possible attributes."},
        {OPTION_DISPLAY,              "-display",     NO,  "Property1,...",    YES, "-d", NO,  "Specify which attributes are displayed."},
        {OPTION_WAIT,                 "-wait",        NO,  "",                 NO,  "-w", YES, "Wait for the command to finish before returning."},
        {OPTION_FORCE,                "-force",       NO,  "",                 NO,  "-f", YES, "Force the operation"},
        {OPTION_EXAMINE,              "-examine",     NO,  "",                 NO,  "-x", YES, "Examine the source file"},
        {OPTION_SOURCE,               "-source",      NO,  "path",             YES, "",   NO,  "Path to the source file."},
        {OPTION_SOURCE_REQUIRED,      "-source",      YES, "path",             YES, "",   NO,  "Path to the source file."},
        {OPTION_DESTINATION,          "-destination", NO,  "path",             YES, "",   NO,  "Path to the destination file."},
        {OPTION_DESTINATION_REQUIRED, "-destination", YES, "path",             YES, "",   NO,  "Path to the destination file."},
        {OPTION_OUTPUT,               "-output",      NO,  "text|nvmxml|json", YES, "-o", NO,  "Change the output format. One of \"text\", \"nvmxml\" or \"json\"."},
        {OPTION_HELP,                 "-help",        NO,  "",                 NO,  "-h", NO,  "Display help for the command."},
        {PROPERTY_VERB,               "verb",         NO,  "verb",             YES, "",   NO,  "Commands with verb to show help on."},
        {PROPERTY_NAME,               "Name",         NO,  "name",             YES, "",   NO,  "Commands to show help on."},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.name, row.part.name);
        EXPECT_EQ(row.required, row.part.required);
        EXPECT_EQ(row.valueText, row.part.valueText);
        EXPECT_EQ(row.valueRequired, row.part.valueRequired);
        EXPECT_EQ(row.shortName, row.part.shortName);
        EXPECT_EQ(row.noValue, row.part.noValue);
        EXPECT_EQ(row.helpText, row.part.helpText);
        EXPECT_FALSE(row.part.found);
    }
}

TEST(ToLower, ChangesTheLettersOfAsciiOnly) {
    EXPECT_EQ("-output[]`{ 09", toLower("-OutPut[]`{ 09"));
    EXPECT_EQ("\xC4\xD6\xFF", toLower("\xC4\xD6\xFF"));
    EXPECT_EQ("", toLower(""));
}

TEST(IsBlank, KnowsBlanksAndTabsOnly) {
    EXPECT_TRUE(isBlank(""));
    EXPECT_TRUE(isBlank(" \t "));
    EXPECT_FALSE(isBlank("\n"));
    EXPECT_FALSE(isBlank(" a "));
}

TEST(Trim, CutsBlanksAndTabsFromBothEnds) {
    EXPECT_EQ("a b", trim(" \ta b\t "));
    EXPECT_EQ("a", trim("a"));
    EXPECT_EQ("\na\r", trim(" \na\r "));
}

TEST(Trim, ThrowsForTextWithoutACharacterToStartFrom) {
    EXPECT_THROW(trim(""), std::out_of_range);
    EXPECT_THROW(trim(" \t "), std::out_of_range);
}

TEST(StringsIEqual, ComparesWholeTextsWithoutCase) {
    EXPECT_TRUE(stringsIEqual("-OUTPUT", "-output"));
    EXPECT_TRUE(stringsIEqual("", ""));
    EXPECT_FALSE(stringsIEqual("-out", "-output"));
    EXPECT_FALSE(stringsIEqual("-output", "-out"));
    EXPECT_FALSE(stringsIEqual("a", "b"));
    EXPECT_FALSE(stringsIEqual("\xE4", "\xC4"));
}

TEST(StringIsNumeric, DecidesByItsRules) {
    struct Row {
        const char* text;
        bool plain;
        bool withHex;
    };

    constexpr Row ROWS[] = {
        // rule 1
        {"", false, false},
        // rule 2
        {"0x1F", false, true},
        {"0X1f", false, true},
        {"0xg", false, false},
        {"0x", false, false},
        {"0x1.2", false, false},
        {"-0x1F", false, false},
        // rule 3
        {"0", true, true},
        {"00", false, false},
        {"007", false, false},
        {"0.5", false, false},
        {"0x10", false, true},
        // rule 4
        {"1", true, true},
        {"12.5", true, true},
        {"1.2.3", false, false},
        {"-1", true, true},
        {"-0.5", true, true},
        {"-007", true, true},
        {"--1", false, false},
        {"1-", false, false},
        {"+1", false, false},
        {"1e5", false, false},
        {" 1", false, false},
        {"1,2", false, false},
        // nothing is required after the sign or around the point
        {"-", true, true},
        {".", true, true},
        {"-.", true, true},
        {"1.", true, true},
        {".1", true, true},
        {"..", false, false},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(row.plain, stringIsNumeric(row.text, false));
        EXPECT_EQ(row.withHex, stringIsNumeric(row.text, true));
    }
}

TEST(Split, TrimsEachPiece) {
    EXPECT_EQ((Pieces{"a", "b"}), split("a, b", ','));
    EXPECT_EQ((Pieces{"a b", "c", "d"}), split("\ta b ;c; d", ';'));
    EXPECT_EQ((Pieces{"a,b"}), split("a,b", ';'));
}

TEST(Split, InheritsTheRangeErrorForBlankPieces) {
    EXPECT_THROW(split("", ','), std::out_of_range);
    EXPECT_THROW(split(" ", ','), std::out_of_range);
    EXPECT_THROW(split("a,,b", ','), std::out_of_range);
    EXPECT_THROW(split("a,", ','), std::out_of_range);
}

TEST(SplitNonBlank, LeavesBlankPiecesOut) {
    EXPECT_EQ((Pieces{"a", "b"}), splitNonBlank(" a ,, \t,b,", ','));
    EXPECT_EQ((Pieces{"a"}), splitNonBlank("a", ','));
    EXPECT_EQ((Pieces{}), splitNonBlank("", ','));
    EXPECT_EQ((Pieces{}), splitNonBlank(" , ", ','));
}

}  // namespace
}  // namespace cli::framework
