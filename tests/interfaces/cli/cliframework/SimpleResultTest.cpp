// The smallest result, in each format.
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

/// The document of the esxcli form around `text`.
std::string esxDocument(const std::string& text) {
    return ESX_HEAD + ("<string>" + text) + "</string></output>";
}

TEST(SimpleResult, StartsAsASuccessInText) {
    const SimpleResult result("text");
    EXPECT_EQ(0, result.getErrorCode());
    EXPECT_EQ(OutputType::text, result.getOutputType());
    EXPECT_EQ("text", result.output());
}

TEST(SimpleResult, RendersTwoLinesInEachFormat) {
    const SimpleResult result("Set\nOK");
    EXPECT_EQ("Set\nOK", result.outputText());
    EXPECT_EQ("<Result>Set\nOK</Result>\n", result.outputXml());
    EXPECT_EQ(esxDocument("Set\nOK"), result.outputEsxXml());
    EXPECT_EQ("Set\nOK", result.outputTextTable());
    EXPECT_EQ("{\n"
              "\t\"Result\":\"Set OK\"\n"
              "}",
              result.outputJson());
    EXPECT_EQ("Result,Set OK,\n", result.outputCSV());
}

TEST(SimpleResult, RendersAnEmptyTextInEachFormat) {
    const SimpleResult result("");
    EXPECT_EQ("", result.outputText());
    EXPECT_EQ("<Result></Result>\n", result.outputXml());
    EXPECT_EQ(esxDocument(""), result.outputEsxXml());
    EXPECT_EQ("", result.outputTextTable());
    EXPECT_EQ("{\n"
              "\t\"Result\":\"\"\n"
              "}",
              result.outputJson());
    EXPECT_EQ("Result,,\n", result.outputCSV());
}

TEST(SimpleResult, EscapesNothing) {
    const SimpleResult result("<a> & \"b\" 'c', \xFF\r\\");
    EXPECT_EQ("<a> & \"b\" 'c', \xFF\r\\", result.outputText());
    EXPECT_EQ("<Result><a> & \"b\" 'c', \xFF\r\\</Result>\n", result.outputXml());
    EXPECT_EQ(esxDocument("<a> & \"b\" 'c', \xFF\r\\"), result.outputEsxXml());
    EXPECT_EQ("{\n"
              "\t\"Result\":\"<a> & \"b\" 'c', \xFF\r\\\"\n"
              "}",
              result.outputJson());
    EXPECT_EQ("Result,<a> & \"b\" 'c', \xFF\r\\,\n", result.outputCSV());
}

TEST(SimpleResult, TurnsEachLineFeedIntoABlankInJsonAndCsv) {
    const SimpleResult result("\na\n\nb\n");
    EXPECT_EQ("{\n"
              "\t\"Result\":\" a  b \"\n"
              "}",
              result.outputJson());
    EXPECT_EQ("Result, a  b ,\n", result.outputCSV());
}

TEST(SimpleResult, OwnsItsText) {
    std::string text = "kept";
    const SimpleResult result(text);
    text = "gone";
    EXPECT_EQ("kept", result.outputText());
}

}  // namespace
}  // namespace cli::framework
