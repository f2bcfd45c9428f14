// Tests of the type words.
#include "core/AttributeTypes.h"

#include <gtest/gtest.h>

namespace orvel::core {
namespace {

TEST(AttributeTypes, AreTheWordsOfTheMessages) {
    EXPECT_EQ(types::string(), "string");
    EXPECT_EQ(types::sint8(), "sint8");
    EXPECT_EQ(types::sint16(), "sint16");
    EXPECT_EQ(types::sint32(), "sint32");
    EXPECT_EQ(types::sint64(), "sint64");
    EXPECT_EQ(types::uint8(), "uint8");
    EXPECT_EQ(types::uint16(), "uint16");
    EXPECT_EQ(types::uint32(), "uint32");
    EXPECT_EQ(types::uint64(), "uint64");
    EXPECT_EQ(types::ulong(), "ulong");
    EXPECT_EQ(types::boolean(), "boolean");
    EXPECT_EQ(types::bytepointer(), "bytepointer");
    EXPECT_EQ(types::list_uint64(), "list_uint64");
    EXPECT_EQ(types::vectorOfStrings(), "vectorOfStrings");
    EXPECT_EQ(types::hexValue(), "hexValue");
    EXPECT_EQ(types::vectorOfPayloads(), "vectorOfPayloads");
}

}  // namespace
}  // namespace orvel::core
