// Repeated parts of a structure.
#include "protocols/ata/Entries.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

namespace orvel::protocols::ata {
namespace {

constexpr Entries OUTER{10, 100, 3};
constexpr Entries INNER{20, 8, 2};
constexpr Field FIELD{"F", "A field", 5, 2, Encoding::NUMBER};

TEST(Entries, ShiftFieldsByTheirIndex) {
    const Field field = fieldOf(OUTER, 2, FIELD);
    EXPECT_EQ(field.offset, 215U);
    EXPECT_EQ(field.size, 2U);
    EXPECT_STREQ(field.name, "F");
    EXPECT_STREQ(field.meaning, "A field");
    EXPECT_EQ(field.encoding, Encoding::NUMBER);
    EXPECT_EQ(fieldOf(OUTER, 0, FIELD).offset, 15U);
}

TEST(Entries, LieWithinOtherEntries) {
    EXPECT_EQ(fieldOf(OUTER, 1, fieldOf(INNER, 1, FIELD)).offset, 143U);
}

TEST(Entries, AreFieldsOfBytesThemselves) {
    const Field field = bytesOf(OUTER, 1);
    EXPECT_EQ(field.offset, 110U);
    EXPECT_EQ(field.size, 100U);
    EXPECT_EQ(field.encoding, Encoding::BYTES);
}

TEST(Entries, ThrowForAnIndexOutOfRange) {
    EXPECT_EQ(thrownCode([] { fieldOf(OUTER, 2, FIELD); }), -1);
    EXPECT_EQ(thrownCode([] { fieldOf(OUTER, 3, FIELD); }), 14);
    EXPECT_EQ(thrownCode([] { fieldOf(OUTER, 0xFFFFFFFF, FIELD); }), 14);
    EXPECT_EQ(thrownCode([] { bytesOf(OUTER, 3); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata
