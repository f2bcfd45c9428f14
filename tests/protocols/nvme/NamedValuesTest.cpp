// The two forms of named values.
#include "protocols/nvme/NamedValues.h"

#include <gtest/gtest.h>

namespace orvel::protocols::nvme {
namespace {

TEST(NamedValues, BecomeLinesWithoutANewlineAtTheEnd) {
    EXPECT_EQ(toLines({{"A", "1"}, {"B", ""}, {"C", "x y"}}), "A: 1\nB: \nC: x y");
    EXPECT_EQ(toLines({}), "");
}

TEST(NamedValues, BecomeAnObjectWithAPropertyForEach) {
    std::string text;
    toObject("word", {{"A", "1"}, {"B", "x"}})->toXml(text);
    EXPECT_EQ(text, "<Object category=\"word\"><Property name=\"A\" value=\"1\"/>"
                    "<Property name=\"B\" value=\"x\"/></Object>");
}

}  // namespace
}  // namespace orvel::protocols::nvme
