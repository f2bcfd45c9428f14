// The root of all results: dispatch by format, the -output option, and formatted messages.
#include "interfaces/cli/cliframework/ResultBase.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

/// Answers each format with the operation's name, except for the table, which it inherits.
class NamingResult : public ResultBase {
public:
    std::string outputText() const override { return "outputText"; }

    std::string outputXml() const override { return "outputXml"; }

    std::string outputEsxXml() const override { return "outputEsxXml"; }

    std::string outputJson() const override { return "outputJson"; }

    std::string outputCSV() const override { return "outputCSV"; }
};

class TableResult : public NamingResult {
public:
    std::string outputTextTable() const override { return "outputTextTable"; }
};

TEST(ResultBase, StartsAsASuccessInText) {
    const NamingResult result;
    EXPECT_EQ(0, result.getErrorCode());
    EXPECT_EQ(OutputType::text, result.getOutputType());
    EXPECT_EQ("outputText", result.output());
}

TEST(ResultBase, KeepsItsErrorCode) {
    NamingResult result;
    result.setErrorCode(-201);
    EXPECT_EQ(-201, result.getErrorCode());
}

TEST(ResultBase, CallsTheOperationOfItsOutputType) {
    struct Row {
        unsigned type;
        const char* operation;
    };

    constexpr Row ROWS[] = {
        {0, "outputText"},
        {1, "outputXml"},
        {2, "outputEsxXml"},
        {3, "outputTextTable"},
        {4, "outputJson"},
        {5, "outputCSV"},
        {6, ""},
        {0xFFFFFFFFU, ""},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.type);
        TableResult result;
        result.setOutputType(static_cast<OutputType>(row.type));
        EXPECT_EQ(row.operation, result.output());
    }
}

TEST(ResultBase, GivesItsTextAsTheTable) {
    NamingResult result;
    result.setOutputType(OutputType::textTable);
    EXPECT_EQ("outputText", result.output());
}

TEST(ResultBase, TakesItsOutputTypeFromTheOption) {
    struct Row {
        const char* value;
        OutputType type;
    };

    constexpr Row ROWS[] = {
        {"nvmxml", OutputType::nvmxml}, {"text", OutputType::text}, {"esx", OutputType::esx},
        {"json", OutputType::json},     {"csv", OutputType::csv},   {"JSON", OutputType::json},
        {"NvmXml", OutputType::nvmxml},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.value);
        NamingResult result;
        result.setOutputType(OutputType::textTable);
        EXPECT_TRUE(result.setOutputOption({{"-output", row.value}}));
        EXPECT_EQ(row.type, result.getOutputType());
    }
}

TEST(ResultBase, KeepsItsOutputTypeForAWordThatIsNoFormat) {
    for (const char* value : {"", "pdf", "jso", "json ", "textTable", "3"}) {
        SCOPED_TRACE(value);
        NamingResult result;
        result.setOutputType(OutputType::json);
        EXPECT_FALSE(result.setOutputOption({{"-output", value}}));
        EXPECT_EQ(OutputType::json, result.getOutputType());
    }
}

TEST(ResultBase, KeepsItsOutputTypeWithoutTheOption) {
    NamingResult result;
    result.setOutputType(OutputType::json);
    EXPECT_TRUE(result.setOutputOption({}));
    EXPECT_TRUE(result.setOutputOption({{"-o", "text"}, {"-OUTPUT", "text"}}));
    EXPECT_EQ(OutputType::json, result.getOutputType());
}

TEST(StringFormat, FormatsLikePrintf) {
    EXPECT_EQ("a 1 2a%", stringFormat("%s %d %x%%", "a", 1, 0x2AU));
    EXPECT_EQ("", stringFormat("%s", ""));
}

TEST(StringFormat, HasNoLimitOnLength) {
    const std::string text(1000000, 'x');
    EXPECT_EQ("<" + text + ">", stringFormat("<%s>", text.c_str()));
}

}  // namespace
}  // namespace cli::framework
