// The answer to a command id that a feature has no code for.
#include "interfaces/cli/cliframework/NotImplementedErrorResult.h"

#include <gtest/gtest.h>

namespace cli::framework {
namespace {

TEST(NotImplementedErrorResult, NamesCommandAndFeature) {
    const NotImplementedErrorResult result(12, "NorvoSSD");
    EXPECT_EQ(3, result.getErrorCode());
    EXPECT_EQ(12, result.getCommandSpecId());
    EXPECT_EQ("NorvoSSD", result.getFeatureName());
    EXPECT_EQ("Error: CommandSpecId 12 of Feature NorvoSSD is not supported in the current "
              "context.",
              result.outputText());
}

TEST(NotImplementedErrorResult, WritesANegativeIdWithItsSign) {
    EXPECT_EQ("Error: CommandSpecId -1 of Feature  is not supported in the current context.",
              NotImplementedErrorResult(-1, "").outputText());
}

}  // namespace
}  // namespace cli::framework
