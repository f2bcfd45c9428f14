// The layout of blocks, from the bytes of Identify Namespace written out at the standard's offsets.
#include "protocols/nvme/LbaFormats.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using tables::payloadWith;

TEST(LbaFormats, AreNumberedByTheLowerBitsOfFlbas) {
    EXPECT_EQ(formatInUse(payloadWith(4096, {{26, "\xFA"}})), 10U);
    EXPECT_EQ(formatInUse(payloadWith(27, {{26, "\x1F"}})), 15U);
    EXPECT_EQ(formatInUse(core::Payload(4096)), 0U);
}

TEST(LbaFormats, HaveBlocksOf512BytesTo2GiB) {
    struct Row {
        const char* lbads;
        std::uint64_t bytes;
    };

    constexpr Row ROWS[] = {
        {"\x08", 0},     {"\x09", 512},        {"\x0A", 1024}, {"\x0C", 4096},
        {"\x10", 65536}, {"\x1F", 2147483648}, {"\x20", 0},    {"\xFF", 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.bytes);
        EXPECT_EQ(blockSize(payloadWith(4096, {{130, row.lbads}}), 0), row.bytes);
        EXPECT_EQ(blockSize(payloadWith(4096, {{134, row.lbads}}), 1), row.bytes);
        EXPECT_EQ(blockSize(payloadWith(192, {{190, row.lbads}}), 15), row.bytes);
    }
    EXPECT_EQ(blockSize(core::Payload(4096), 0), 0U);
}

TEST(LbaFormats, HaveMetadataOfAnySize) {
    const core::Payload bytes = payloadWith(4096, {{128, "\x08"}, {132, "\x40\x01"}});
    EXPECT_EQ(metadataSize(bytes, 0), 8U);
    EXPECT_EQ(metadataSize(bytes, 1), 320U);
    EXPECT_EQ(metadataSize(bytes, 2), 0U);
}

TEST(LbaFormats, HaveTheProtectionThatTheNamespaceIsCapableOf) {
    struct Row {
        const char* dpc;
        bool types[5];
    };

    constexpr Row ROWS[] = {
        {"\x18", {true, false, false, false, false}},  // bits 3 and 4 tell where it stands
        {"\x01", {true, true, false, false, false}},   //
        {"\x02", {true, false, true, false, false}},   //
        {"\x04", {true, false, false, true, false}},   //
        {"\xFF", {true, true, true, true, false}},
    };
    for (const Row& row : ROWS) {
        const core::Payload bytes = payloadWith(4096, {{28, row.dpc}, {128, "\x08"}});
        for (std::uint32_t type = 0; type < std::size(row.types); ++type) {
            SCOPED_TRACE(type);
            EXPECT_EQ(isProtectionAvailable(bytes, 0, type), row.types[type]);
        }
        EXPECT_FALSE(isProtectionAvailable(bytes, 0, 0xFFFFFFFF));
    }
}

TEST(LbaFormats, NeedEightBytesOfMetadataForProtection) {
    const core::Payload bytes =
        payloadWith(4096, {{28, "\x07"}, {128, "\x07"}, {132, "\x08"}, {137, "\x01"}});
    EXPECT_FALSE(isProtectionAvailable(bytes, 0, 1));
    EXPECT_TRUE(isProtectionAvailable(bytes, 1, 1));
    EXPECT_TRUE(isProtectionAvailable(bytes, 2, 1));
    EXPECT_FALSE(isProtectionAvailable(bytes, 3, 1));
    EXPECT_TRUE(isProtectionAvailable(bytes, 3, 0));
}

TEST(LbaFormats, ThrowForFormatsBeyondTheStructure) {
    const core::Payload whole(4096);
    EXPECT_EQ(thrownCode([&] { blockSize(whole, 16); }), 14);
    EXPECT_EQ(thrownCode([&] { metadataSize(whole, 16); }), 14);
    EXPECT_EQ(thrownCode([&] { isProtectionAvailable(whole, 16, 1); }), 14);
    EXPECT_EQ(thrownCode([] { formatInUse(core::Payload(26)); }), 14);
    EXPECT_EQ(thrownCode([] { blockSize(core::Payload(130), 0); }), 14);
    EXPECT_EQ(thrownCode([] { metadataSize(core::Payload(129), 0); }), 14);
    EXPECT_EQ(thrownCode([] { isProtectionAvailable(core::Payload(129), 0, 1); }), 14);
    EXPECT_EQ(thrownCode([] { formatInUse({}); }), 14);
    EXPECT_EQ(thrownCode([] { blockSize({}, 0); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::nvme
