// A value for a part that accepts none.
#include "interfaces/cli/cliframework/SyntaxErrorUnexpectedValueResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(SyntaxErrorUnexpectedValueResult, KeepsTheCapitalOfTheTypeWord) {
    const SyntaxErrorUnexpectedValueResult result(TokenType::Option, "-all");
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: Option '-all' does not accept a value.", result.outputText());
    EXPECT_EQ("Syntax Error: Property 'X' does not accept a value.",
              SyntaxErrorUnexpectedValueResult(TokenType::Property, "X").outputText());
}

}  // namespace
}  // namespace cli::framework
