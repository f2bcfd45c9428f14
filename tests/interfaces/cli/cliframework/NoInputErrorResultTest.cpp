// A line without a single token.
#include "interfaces/cli/cliframework/NoInputErrorResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(NoInputErrorResult, SaysSo) {
    const NoInputErrorResult result;
    EXPECT_EQ(201, result.getErrorCode());
    EXPECT_EQ("Syntax Error: No Input.", result.outputText());
}

}  // namespace
}  // namespace cli::framework
