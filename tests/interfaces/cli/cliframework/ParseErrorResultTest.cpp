// A line that the grammar or the declared commands refuse.
#include "interfaces/cli/cliframework/ParseErrorResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(ParseErrorResult, NamesNoTokenByDefault) {
    const ParseErrorResult result;
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: Invalid command.", result.outputText());
}

TEST(ParseErrorResult, NamesItsTokenInEachFormat) {
    const ParseErrorResult result(Token{"x", TokenType::Value});
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around 'x'.", result.outputText());
    EXPECT_EQ("<Error Type=\"201\">Syntax Error: Invalid command. Error at or around 'x'."
              "</Error>\n",
              result.outputXml());
    EXPECT_EQ("{\n"
              "\t\"Error_Type\":201,\n"
              "\t\"Error_Description\":\"Syntax Error: Invalid command. Error at or around 'x'.\"\n"
              "}\n",
              result.outputJson());
}

TEST(ParseErrorResult, ListsOnePotentialCommand) {
    ParseErrorResult result(Token{"x", TokenType::Value});
    result.setPotentialCommands({CommandSpec(0, "Version", "version", "")});
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around 'x'.\n"
              "Did you mean: \n"
              "version\n",
              result.outputText());
}

TEST(ParseErrorResult, TakesATokenOfAnyLengthAsItIs) {
    const std::string text = "%s%n" + std::string(100000, 'x');
    EXPECT_EQ("Syntax Error: Invalid command. Error at or around '" + text + "'.",
              ParseErrorResult(Token{text, TokenType::Value}).outputText());
}

}  // namespace
}  // namespace cli::framework
