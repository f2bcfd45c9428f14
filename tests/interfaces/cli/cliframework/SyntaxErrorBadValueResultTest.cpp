// A value for a part that takes none, or not this one.
#include "interfaces/cli/cliframework/SyntaxErrorBadValueResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(SyntaxErrorBadValueResult, LowersTheTypeWord) {
    const SyntaxErrorBadValueResult result(TokenType::Option, "-output", "pdf");
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: 'pdf' is not a valid setting for the option '-output'.",
              result.outputText());
}

TEST(SyntaxErrorBadValueResult, KeepsTheCaseOfNameAndValue) {
    EXPECT_EQ("Syntax Error: 'Yes' is not a valid setting for the property 'EnableLog'.",
              SyntaxErrorBadValueResult(TokenType::Property, "EnableLog", "Yes").outputText());
    EXPECT_EQ("Syntax Error: 'A' is not a valid setting for the target '-system'.",
              SyntaxErrorBadValueResult(TokenType::Target, "-system", "A").outputText());
    EXPECT_EQ("Syntax Error: '' is not a valid setting for the unknown 'x'.",
              SyntaxErrorBadValueResult(TokenType::Unknown, "x", "").outputText());
}

}  // namespace
}  // namespace cli::framework
