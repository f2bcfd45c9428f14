// How registers are shown.
#include "protocols/ata/RegisterText.h"

#include <gtest/gtest.h>

namespace orvel::protocols::ata {
namespace {

TEST(RegisterText, FillsUpWithZeroes) {
    EXPECT_EQ(registerText(0xA, 2), "0x0A");
    EXPECT_EQ(registerText(0x123, 2), "0x123");
    EXPECT_EQ(registerText(0, 12), "0x000000000000");
}

TEST(RegisterText, MakesALineOfEachValue) {
    EXPECT_EQ(toLines({}), "");
    EXPECT_EQ(toLines({{"A", "1"}}), "A: 1");
    EXPECT_EQ(toLines({{"A", "1"}, {"B", ""}}), "A: 1\nB: ");
}

TEST(RegisterText, MakesAPropertyOfEachValue) {
    EXPECT_EQ(toObject("command", {{"A", "1"}, {"B", "2"}})->toString(),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>"
              "<Object category=\"command\">"
              "<Property name=\"A\" value=\"1\"/><Property name=\"B\" value=\"2\"/>"
              "</Object>");
}

}  // namespace
}  // namespace orvel::protocols::ata
