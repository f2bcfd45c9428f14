// Fields of a structure: reading, writing, and what lies out of bounds.
#include "protocols/Field.h"

#include "tests/protocols/ThrownCode.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace orvel::protocols {
namespace {

using core::Payload;

constexpr Field NUMBER{"N", "", 1, 2, Encoding::NUMBER};
constexpr Field BIG{"B", "", 0, 16, Encoding::WIDE_NUMBER};
constexpr Field TEXT{"T", "", 1, 6, Encoding::TEXT};
constexpr Field SWAPPED{"S", "", 0, 6, Encoding::SWAPPED_TEXT};
constexpr Field ODD_SWAPPED{"S", "", 0, 3, Encoding::SWAPPED_TEXT};
constexpr Field BYTES{"Y", "", 1, 3, Encoding::BYTES};

Payload payload(const std::string& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

TEST(Field, ReadsNumbersLittleEndian) {
    EXPECT_EQ(readNumber(payload("\x01\x34\x12\xFF"), NUMBER), 0x1234U);
    const Payload wide = payload(std::string("\x01\x02\x03\x04\x05\x06\x07\x08"
                                             "\x09\x00\x00\x00\x00\x00\x00\x80",
                                             16));
    EXPECT_EQ(readNumber(wide, BIG), 0x0807060504030201U);
    EXPECT_EQ(toText(readWideNumber(wide, BIG)), "170141183460469231898286438075022377473");
}

TEST(Field, ReadsTextWithoutItsFilling) {
    EXPECT_EQ(readText(payload("xAB C  y"), TEXT), "AB C");
    EXPECT_EQ(readText(payload(std::string("x\0 A\0\0 y", 8)), TEXT), "A");
    EXPECT_EQ(readText(payload("xA\x01\x7F\xC3zz"), TEXT), "A...zz");
    EXPECT_EQ(readText(payload("xA<B>\"&z"), TEXT), "A.B.\"&");
    EXPECT_EQ(readText(payload("x      y"), TEXT), "");
}

TEST(Field, ReadsTextWithItsPairsExchanged) {
    EXPECT_EQ(readText(payload("ONVR O"), SWAPPED), "NORVO");
    EXPECT_EQ(readText(payload("ONV"), ODD_SWAPPED), "NOV");
}

TEST(Field, ReadsBytesAsACopy) {
    const Payload structure = payload("\x01\x02\x03\x04\x05");
    const Payload bytes = readBytes(structure, BYTES);
    *bytes.at(0) = 9;
    EXPECT_EQ(*structure.at(1), 2);
    EXPECT_EQ(bytes, payload("\x09\x03\x04"));
}

TEST(Field, ShowsEachEncodingAsText) {
    EXPECT_EQ(valueAsText(payload("\x01\x34\x12\xFF"), NUMBER), "4660");
    EXPECT_EQ(valueAsText(payload(std::string(16, '\xFF')), BIG),
              "340282366920938463463374607431768211455");
    EXPECT_EQ(valueAsText(payload("xAB    y"), TEXT), "AB");
    EXPECT_EQ(valueAsText(payload("ONVR O"), SWAPPED), "NORVO");
    EXPECT_EQ(valueAsText(payload("\x01\x02\xAB\x04\x05"), BYTES), "02AB04");
}

TEST(Field, TellsWideNumbersInDecimal) {
    EXPECT_EQ(toText(0), "0");
    EXPECT_EQ(toText(10), "10");
    EXPECT_EQ(toText(~Number128(0)), "340282366920938463463374607431768211455");
}

TEST(Field, WritesWhatItReads) {
    const Payload structure(16);
    writeNumber(structure, NUMBER, 0xABCD1234U);
    EXPECT_EQ(structure, payload(std::string("\x00\x34\x12\x00", 4) + std::string(12, '\0')));
    writeWideNumber(structure, BIG, Number128(0x8000000000000009U) << 64 | 0x0807060504030201U);
    EXPECT_EQ(structure, payload(std::string("\x01\x02\x03\x04\x05\x06\x07\x08"
                                             "\x09\x00\x00\x00\x00\x00\x00\x80",
                                             16)));
    writeNumber(structure, BIG, 1);
    EXPECT_EQ(structure, payload("\x01" + std::string(15, '\0')));
}

TEST(Field, WritesTextFilledUpWithBlanks) {
    const Payload structure(8);
    writeText(structure, TEXT, "AB");
    EXPECT_EQ(structure, payload(std::string("\0AB    \0", 8)));
    writeText(structure, TEXT, "ABCDEFGH");
    EXPECT_EQ(structure, payload(std::string("\0ABCDEF\0", 8)));
    const Payload ata(6);
    writeText(ata, SWAPPED, "NORVO");
    EXPECT_EQ(ata, payload("ONVR O"));
}

TEST(Field, WritesBytesFilledUpWithZeroes) {
    const Payload structure = payload("\x01\x02\x03\x04\x05");
    writeBytes(structure, BYTES, payload("\x09"));
    EXPECT_EQ(structure, payload(std::string("\x01\x09\x00\x00\x05", 5)));
    writeBytes(structure, BYTES, Payload());
    EXPECT_EQ(structure, payload(std::string("\x01\x00\x00\x00\x05", 5)));
    writeBytes(structure, BYTES, payload("\x06\x07\x08\x09"));
    EXPECT_EQ(structure, payload("\x01\x06\x07\x08\x05"));
}

TEST(Field, ThrowsForWhatLiesOutOfBounds) {
    constexpr Field FAR{"F", "", std::numeric_limits<std::uint32_t>::max(), 2, Encoding::NUMBER};
    const Payload structure = payload("\x01\x02\x03\x04");
    EXPECT_EQ(thrownCode([&] { readNumber(payload("\x01\x02"), NUMBER); }), 14);
    EXPECT_EQ(thrownCode([&] { readNumber(payload("\x01\x02\x03"), NUMBER); }), -1);
    EXPECT_EQ(thrownCode([&] { readNumber(structure, FAR); }), 14);
    EXPECT_EQ(thrownCode([&] { readWideNumber(structure, BIG); }), 14);
    EXPECT_EQ(thrownCode([&] { readText(structure, TEXT); }), 14);
    EXPECT_EQ(thrownCode([&] { readBytes(Payload(), BYTES); }), 14);
    EXPECT_EQ(thrownCode([&] { valueAsText(structure, TEXT); }), 14);
    EXPECT_EQ(thrownCode([&] { writeNumber(structure, FAR, 1); }), 14);
    EXPECT_EQ(thrownCode([&] { writeWideNumber(structure, BIG, 1); }), 14);
    EXPECT_EQ(thrownCode([&] { writeText(structure, TEXT, ""); }), 14);
    EXPECT_EQ(thrownCode([&] { writeBytes(Payload(), BYTES, Payload()); }), 14);
}

TEST(Fields, AreInOrderIfNoneReachesIntoTheNextOrBeyondTheEnd) {
    constexpr Field FIRST{"A", "", 0, 2, Encoding::NUMBER};
    constexpr Field SECOND{"B", "", 2, 2, Encoding::NUMBER};
    constexpr Field OVERLAPPING{"C", "", 1, 2, Encoding::NUMBER};
    constexpr Field GOOD[] = {FIRST, SECOND};
    constexpr Field SHARED[] = {FIRST, OVERLAPPING};
    constexpr Field REVERSED[] = {SECOND, FIRST};
    EXPECT_TRUE(areInOrder(GOOD, 4));
    EXPECT_FALSE(areInOrder(GOOD, 3));
    EXPECT_FALSE(areInOrder(SHARED, 4));
    EXPECT_FALSE(areInOrder(REVERSED, 4));
}

}  // namespace
}  // namespace orvel::protocols
