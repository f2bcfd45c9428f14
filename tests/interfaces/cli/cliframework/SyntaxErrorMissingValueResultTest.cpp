// A part that was named without the value it needs.
#include "interfaces/cli/cliframework/SyntaxErrorMissingValueResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(SyntaxErrorMissingValueResult, LowersTheTypeWord) {
    const SyntaxErrorMissingValueResult result(TokenType::Option, "-display");
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: A value is required for the option '-display'.", result.outputText());
}

TEST(SyntaxErrorMissingValueResult, KeepsTheCaseOfTheName) {
    EXPECT_EQ("Syntax Error: A value is required for the property 'EnableLog'.",
              SyntaxErrorMissingValueResult(TokenType::Property, "EnableLog").outputText());
    EXPECT_EQ("Syntax Error: A value is required for the target '-norvossd'.",
              SyntaxErrorMissingValueResult(TokenType::Target, "-norvossd").outputText());
}

}  // namespace
}  // namespace cli::framework
