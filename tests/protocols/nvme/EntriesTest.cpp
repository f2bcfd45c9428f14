// Entries that repeat within a structure.
#include "protocols/nvme/Entries.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using core::Payload;
using tables::payloadWith;
using tables::thrownCode;

constexpr Entries PAIRS{1, 3, 2};
constexpr Field SECOND{"Second", "the second byte", 1, 2, Encoding::NUMBER};

Payload sevenBytes() {
    return payloadWith(7, {{0, "\x10\x11\x12\x13\x14\x15\x16"}});
}

TEST(Entries, MoveARowToItsPlace) {
    const Field first = fieldOfEntry(PAIRS, 0, SECOND);
    EXPECT_EQ(first.offset, 2U);
    const Field last = fieldOfEntry(PAIRS, 1, SECOND);
    EXPECT_EQ(last.offset, 5U);
    EXPECT_EQ(last.size, 2U);
    EXPECT_EQ(last.encoding, Encoding::NUMBER);
    EXPECT_STREQ(last.name, "Second");
    EXPECT_STREQ(last.meaning, "the second byte");
    EXPECT_EQ(readNumber(sevenBytes(), last), 0x1615U);
}

TEST(Entries, AreReadAsCopies) {
    const Payload structure = sevenBytes();
    const Payload entry = readEntry(structure, PAIRS, 1);
    EXPECT_EQ(entry, payloadWith(3, {{0, "\x14\x15\x16"}}));
    *entry.at(0) = 9;
    EXPECT_EQ(structure, sevenBytes());
}

TEST(Entries, AreWrittenWhole) {
    const Payload structure = sevenBytes();
    writeEntry(structure, PAIRS, 0, payloadWith(1, {{0, "\x77"}}));
    EXPECT_EQ(structure, payloadWith(7, {{0, "\x10\x77"}, {4, "\x14\x15\x16"}}));
    writeEntry(structure, PAIRS, 1, payloadWith(4, {{0, "\x21\x22\x23\x24"}}));
    EXPECT_EQ(structure, payloadWith(7, {{0, "\x10\x77"}, {4, "\x21\x22\x23"}}));
}

TEST(Entries, EndWithTheLast) {
    const Payload structure(100);
    for (const std::uint32_t index : {2U, 3U, 0x55555556U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(index);
        EXPECT_EQ(thrownCode([&] { fieldOfEntry(PAIRS, index, SECOND); }), 14);
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
}  // namespace orvel::protocols::nvme
