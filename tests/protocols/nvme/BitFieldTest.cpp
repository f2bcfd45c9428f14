// Bits of numbers and of structures' fields.
#include "protocols/nvme/BitField.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using core::Payload;
using tables::payloadWith;

constexpr BitField MIDDLE{"M", "", 4, 3};
constexpr BitField TOP{"T", "", 31, 1};
constexpr BitField WHOLE{"W", "", 0, 32};
constexpr Field WORD{"F", "", 1, 2, Encoding::NUMBER};

TEST(BitField, KnowsItsLargestValueAndItsMask) {
    EXPECT_EQ(MIDDLE.maximum(), 7U);
    EXPECT_EQ(MIDDLE.mask(), 0x70U);
    EXPECT_EQ(TOP.maximum(), 1U);
    EXPECT_EQ(TOP.mask(), 0x80000000U);
    EXPECT_EQ(WHOLE.maximum(), 0xFFFFFFFFU);
    EXPECT_EQ(WHOLE.mask(), 0xFFFFFFFFU);
}

TEST(BitField, IsReadFromANumber) {
    EXPECT_EQ(readBits(0x5A, MIDDLE), 5U);
    EXPECT_EQ(readBits(0xFFFFFF8F, MIDDLE), 0U);
    EXPECT_EQ(readBits(0x80000000, TOP), 1U);
    EXPECT_EQ(readBits(0x7FFFFFFF, TOP), 0U);
    EXPECT_EQ(readBits(0x89ABCDEF, WHOLE), 0x89ABCDEFU);
}

TEST(BitField, IsReplacedWithinANumber) {
    EXPECT_EQ(withBits(0, MIDDLE, 5), 0x50U);
    EXPECT_EQ(withBits(0xFFFFFFFF, MIDDLE, 2), 0xFFFFFFAFU);
    EXPECT_EQ(withBits(1, TOP, 1), 0x80000001U);
    EXPECT_EQ(withBits(1, WHOLE, 0x12345678), 0x12345678U);
}

TEST(BitField, LosesTheUpperBitsOfAValueThatIsTooLarge) {
    EXPECT_EQ(withBits(0, MIDDLE, 0xFD), 0x50U);
    EXPECT_EQ(withBits(0, TOP, 2), 0U);
}

TEST(BitField, IsPlacedForCommandsOnlyIfItFits) {
    EXPECT_EQ(placeBits(MIDDLE, 7), 0x70U);
    EXPECT_EQ(placeBits(WHOLE, 0xFFFFFFFF), 0xFFFFFFFFU);
    EXPECT_EQ(thrownCode([] { placeBits(MIDDLE, 8); }), 36);
    EXPECT_EQ(thrownCode([] { placeBits(TOP, 2); }), 36);
}

TEST(BitField, IsReadAndWrittenWithinAStructure) {
    const Payload structure = payloadWith(4, {{0, "\xFF\xD3\x12\xFF"}});
    EXPECT_EQ(readBits(structure, WORD, MIDDLE), 5U);
    writeBits(structure, WORD, MIDDLE, 2);
    EXPECT_EQ(structure, payloadWith(4, {{0, "\xFF\xA3\x12\xFF"}}));
}

TEST(BitField, ThrowsForAStructureThatIsTooShort) {
    const Payload structure(2);
    EXPECT_EQ(thrownCode([&] { readBits(structure, WORD, MIDDLE); }), 14);
    EXPECT_EQ(thrownCode([&] { writeBits(structure, WORD, MIDDLE, 1); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::nvme
