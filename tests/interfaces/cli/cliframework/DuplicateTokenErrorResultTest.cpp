// An option, target or property that a line names twice.
#include "interfaces/cli/cliframework/DuplicateTokenErrorResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(DuplicateTokenErrorResult, KeepsTheCapitalOfTheTypeWord) {
    const DuplicateTokenErrorResult result(Token{"-norvossd", TokenType::Target});
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: Duplicate token found. The Target '-norvossd' was found more than "
              "once.",
              result.outputText());
    EXPECT_EQ("Syntax Error: Duplicate token found. The UNKNOWN '-x' was found more than once.",
              DuplicateTokenErrorResult(Token{"-x", TokenType::Unknown}).outputText());
}

}  // namespace
}  // namespace cli::framework
