// Entries that repeat within a structure.
#include "protocols/Entries.h"

#include "tests/protocols/ThrownCode.h"

#include <gtest/gtest.h>

#include <string>

namespace orvel::protocols {
namespace {

using core::Payload;

constexpr Entries PAIRS{1, 3, 2};
constexpr Field SECOND{"Second", "the second byte", 1, 2, Encoding::NUMBER};

constexpr Entries OUTER{10, 100, 3};
constexpr Entries INNER{20, 8, 2};

Payload payload(const std::string& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

Payload sevenBytes() {
    return payload("\x10\x11\x12\x13\x14\x15\x16");
}

TEST(Entries, MoveARowToItsPlace) {
    const Field first = fieldOf(PAIRS, 0, SECOND);
    EXPECT_EQ(first.offset, 2U);
    const Field last = fieldOf(PAIRS, 1, SECOND);
    EXPECT_EQ(last.offset, 5U);
    EXPECT_EQ(last.size, 2U);
    EXPECT_EQ(last.encoding, Encoding::NUMBER);
    EXPECT_STREQ(last.name, "Second");
    EXPECT_STREQ(last.meaning, "the second byte");
    EXPECT_EQ(readNumber(sevenBytes(), last), 0x1615U);
}

TEST(Entries, LieWithinOtherEntries) {
    EXPECT_EQ(fieldOf(OUTER, 1, fieldOf(INNER, 1, SECOND)).offset, 139U);
}

TEST(Entries, AreFieldsOfBytesThemselves) {
    const Field field = bytesOf(OUTER, 1);
    EXPECT_EQ(field.offset, 110U);
    EXPECT_EQ(field.size, 100U);
    EXPECT_EQ(field.encoding, Encoding::BYTES);
}

TEST(Entries, AreReadAsCopies) {
    const Payload structure = sevenBytes();
    const Payload entry = readEntry(structure, PAIRS, 1);
    EXPECT_EQ(entry, payload("\x14\x15\x16"));
    *entry.at(0) = 9;
    EXPECT_EQ(structure, sevenBytes());
}

TEST(Entries, AreWrittenWhole) {
    const Payload structure = sevenBytes();
    writeEntry(structure, PAIRS, 0, payload("\x77"));
    EXPECT_EQ(structure, payload(std::string("\x10\x77\0\0\x14\x15\x16", 7)));
    writeEntry(structure, PAIRS, 1, payload("\x21\x22\x23\x24"));
    EXPECT_EQ(structure, payload(std::string("\x10\x77\0\0\x21\x22\x23", 7)));
}

TEST(Entries, EndWithTheLast) {
    const Payload structure(100);
    for (const std::uint32_t index : {2U, 3U, 0x55555556U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(thrownCode([&] { fieldOf(PAIRS, index, SECOND); }), 14);
        EXPECT_EQ(thrownCode([&] { bytesOf(PAIRS, index); }), 14);
        EXPECT_EQ(thrownCode([&] { readEntry(structure, PAIRS, index); }), 14);
        EXPECT_EQ(thrownCode([&] { writeEntry(structure, PAIRS, index, Payload()); }), 14);
    }
}

TEST(Entries, ThrowIfTheStructureEndsBefore) {
    const Payload structure(6);
    EXPECT_EQ(thrownCode([&] { readEntry(structure, PAIRS, 0); }), -1);
    EXPECT_EQ(thrownCode([&] { readEntry(structure, PAIRS, 1); }), 14);
    EXPECT_EQ(thrownCode([&] { writeEntry(structure, PAIRS, 1, Payload()); }), 14);
}

}  // namespace
}  // namespace orvel::protocols
