// The checksum of a page.
#include "protocols/ata/Checksum.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

TEST(Checksum, IsRightIfAllBytesAddUpToZero) {
    const Payload page(512);
    EXPECT_TRUE(isChecksumRight(page));
    put(page, 0, {0xFF, 0x80});
    EXPECT_FALSE(isChecksumRight(page));
    put(page, 511, {0x81});
    EXPECT_TRUE(isChecksumRight(page));
    EXPECT_TRUE(isChecksumRight(filledWith(0xFF, 512)));
}

TEST(Checksum, IsWrittenToTheLastByte) {
    const Payload page(512);
    put(page, 0, {0xFF, 0x80});
    put(page, 510, {0x01, 0x77});
    writeChecksum(page);
    EXPECT_EQ(*page.at(511), 0x80);
    EXPECT_EQ(*page.at(510), 0x01);
}

TEST(Checksum, IsOfOnePage) {
    const Payload pages(1024);
    put(pages, 0, {1});
    put(pages, 512, {2});
    writeChecksum(pages, 1);
    EXPECT_EQ(*pages.at(511), 0);
    EXPECT_EQ(*pages.at(1023), 0xFE);
    EXPECT_FALSE(isChecksumRight(pages, 0));
    EXPECT_TRUE(isChecksumRight(pages, 1));
}

TEST(Checksum, ThrowsForShortPayloads) {
    EXPECT_EQ(thrownCode([] { isChecksumRight(Payload()); }), 14);
    EXPECT_EQ(thrownCode([] { isChecksumRight(Payload(511)); }), 14);
    EXPECT_EQ(thrownCode([] { isChecksumRight(Payload(1023), 1); }), 14);
    EXPECT_EQ(thrownCode([] { isChecksumRight(Payload(512), 0x800000); }), 14);
    EXPECT_EQ(thrownCode([] { writeChecksum(Payload(511)); }), 14);
    EXPECT_EQ(thrownCode([] { writeChecksum(Payload(512), 1); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata
