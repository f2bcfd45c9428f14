// Completion entries: bytes, meaning and printed forms.
#include "protocols/nvme/CompletionEntry.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using core::Payload;
using tables::payloadOf;
using tables::payloadWith;

/// Feature Not Changeable (1h, 0Eh), CRD 2, More, Do Not Retry, phase 1: dword 3 is E21DABCDh.
Payload sampleBytes() {
    return payloadWith(16, {{0, "\x04\x03\x02\x01"},
                            {4, "\x08\x07\x06\x05"},
                            {8, "\x0A\x09"},
                            {10, "\x0C\x0B"},
                            {12, "\xCD\xAB"},
                            {14, "\x1D\xE2"}});
}

TEST(CompletionEntry, IsLaidOutAsTheStandardTells) {
    constexpr tables::ByteRow ROWS[] = {
        {"DW0", 3, 0},    {"DW1", 7, 4},   {"SQHD", 9, 8},
        {"SQID", 11, 10}, {"CID", 13, 12}, {"P_SF", 15, 14},
    };
    tables::expectFields(completion_entry::ALL, ROWS);
    tables::expectSound(completion_entry::ALL, 16);
    EXPECT_EQ(completion_entry::SIZE, 16U);
}

TEST(CompletionEntry, HasTheStandardsBitsInItsLastBytes) {
    constexpr tables::GroupedBits ALL[] = {
#define BITS(group, name, lowBit, bits, meaning) {#group, group::name},
#include "protocols/nvme/CompletionEntryBits.def"
    };
    constexpr tables::BitRow ROWS[] = {
        {"p_sf", "P", 0, 0},     {"p_sf", "SC", 8, 1},  {"p_sf", "SCT", 11, 9},
        {"p_sf", "CRD", 13, 12}, {"p_sf", "M", 14, 14}, {"p_sf", "DNR", 15, 15},
    };
    tables::expectBits(ALL, ROWS);
}

TEST(CompletionEntry, IsReadFromBytes) {
    const CompletionEntry entry(sampleBytes());
    EXPECT_EQ(entry.dword0, 0x01020304U);
    EXPECT_EQ(entry.dword1, 0x05060708U);
    EXPECT_EQ(entry.submissionQueueHead, 0x090AU);
    EXPECT_EQ(entry.submissionQueueId, 0x0B0CU);
    EXPECT_EQ(entry.commandId, 0xABCDU);
    EXPECT_TRUE(entry.phase);
    EXPECT_EQ(entry.status.type, 1U);
    EXPECT_EQ(entry.status.code, 0x0EU);
    EXPECT_EQ(entry.retryDelay, 2U);
    EXPECT_TRUE(entry.more);
    EXPECT_TRUE(entry.doNotRetry);
}

TEST(CompletionEntry, IsReadBitByBit) {
    struct Row {
        const char* what;
        std::string lastBytes;
        bool phase;
        unsigned code;
        unsigned type;
        unsigned retryDelay;
        bool more;
        bool doNotRetry;
    };

    // clang-format off
    const Row ROWS[] = {
        //                     bytes 14 and 15        P      SC    SCT CRD M      DNR
        {"nothing",            std::string(2, '\0'),  false, 0x00, 0,  0,  false, false},
        {"phase",              {"\x01\x00", 2},       true,  0x00, 0,  0,  false, false},
        {"lowest of SC",       {"\x02\x00", 2},       false, 0x01, 0,  0,  false, false},
        {"highest of SC",      {"\x00\x01", 2},       false, 0x80, 0,  0,  false, false},
        {"all of SC",          {"\xFE\x01", 2},       false, 0xFF, 0,  0,  false, false},
        {"lowest of SCT",      {"\x00\x02", 2},       false, 0x00, 1,  0,  false, false},
        {"all of SCT",         {"\x00\x0E", 2},       false, 0x00, 7,  0,  false, false},
        {"lowest of CRD",      {"\x00\x10", 2},       false, 0x00, 0,  1,  false, false},
        {"all of CRD",         {"\x00\x30", 2},       false, 0x00, 0,  3,  false, false},
        {"more",               {"\x00\x40", 2},       false, 0x00, 0,  0,  true,  false},
        {"do not retry",       {"\x00\x80", 2},       false, 0x00, 0,  0,  false, true},
        {"all",                {"\xFF\xFF", 2},       true,  0xFF, 7,  3,  true,  true},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        const Payload bytes = payloadWith(16, {{14, row.lastBytes}});
        const CompletionEntry entry(bytes);
        EXPECT_EQ(entry.phase, row.phase);
        EXPECT_EQ(entry.status.code, row.code);
        EXPECT_EQ(entry.status.type, row.type);
        EXPECT_EQ(entry.retryDelay, row.retryDelay);
        EXPECT_EQ(entry.more, row.more);
        EXPECT_EQ(entry.doNotRetry, row.doNotRetry);
        EXPECT_EQ(entry.toBytes(), bytes);
    }
}

TEST(CompletionEntry, IsWrittenAsBytes) {
    CompletionEntry entry;
    entry.dword0 = 0x01020304;
    entry.dword1 = 0x05060708;
    entry.submissionQueueHead = 0x090A;
    entry.submissionQueueId = 0x0B0C;
    entry.commandId = 0xABCD;
    entry.phase = true;
    entry.status = status_codes::FEATURE_NOT_CHANGEABLE;
    entry.retryDelay = 2;
    entry.more = true;
    entry.doNotRetry = true;
    EXPECT_EQ(entry.toBytes(), sampleBytes());
    EXPECT_EQ(CompletionEntry().toBytes(), payloadOf(16, '\0'));
}

TEST(CompletionEntry, LosesUpperBitsThatItsBytesHaveNoRoomFor) {
    CompletionEntry entry;
    entry.status = {.type = 9, .code = 0};
    entry.retryDelay = 5;
    EXPECT_EQ(entry.toBytes(), payloadWith(16, {{15, "\x12"}}));
}

TEST(CompletionEntry, SucceedsOnlyWithSuccessfulCompletion) {
    EXPECT_TRUE(CompletionEntry().isSuccess());
    EXPECT_TRUE(CompletionEntry(payloadWith(16, {{0, "\xFF"}, {14, "\x01"}})).isSuccess());
    EXPECT_FALSE(CompletionEntry(payloadWith(16, {{14, "\x02"}})).isSuccess());
    // code 0 of another type
    EXPECT_FALSE(CompletionEntry(payloadWith(16, {{15, "\x02"}})).isSuccess());
}

TEST(CompletionEntry, NeedsSixteenBytes) {
    for (const std::uint32_t size : {0U, 4U, 14U, 15U}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(thrownCode([&] { CompletionEntry entry((Payload(size))); }), 34);
    }
    EXPECT_EQ(thrownCode([&] { CompletionEntry entry((Payload(17))); }), -1);
}

TEST(CompletionEntry, ShowsItselfAsLines) {
    EXPECT_EQ(CompletionEntry(sampleBytes()).toString(), "DW0: 0x01020304\n"
                                                         "DW1: 0x05060708\n"
                                                         "SQHD: 2314\n"
                                                         "SQID: 2828\n"
                                                         "CID: 43981\n"
                                                         "P: 1\n"
                                                         "SCT: 0x1\n"
                                                         "SC: 0x0E\n"
                                                         "CRD: 2\n"
                                                         "M: 1\n"
                                                         "DNR: 1\n"
                                                         "Status: Feature Not Changeable");
}

TEST(CompletionEntry, ShowsItselfAsAnElement) {
    std::string text;
    CompletionEntry().toXml()->toXml(text);
    EXPECT_EQ(text, "<Object category=\"protocolResult\">"
                    "<Property name=\"DW0\" value=\"0x00000000\"/>"
                    "<Property name=\"DW1\" value=\"0x00000000\"/>"
                    "<Property name=\"SQHD\" value=\"0\"/>"
                    "<Property name=\"SQID\" value=\"0\"/>"
                    "<Property name=\"CID\" value=\"0\"/>"
                    "<Property name=\"P\" value=\"0\"/>"
                    "<Property name=\"SCT\" value=\"0x0\"/>"
                    "<Property name=\"SC\" value=\"0x00\"/>"
                    "<Property name=\"CRD\" value=\"0\"/>"
                    "<Property name=\"M\" value=\"0\"/>"
                    "<Property name=\"DNR\" value=\"0\"/>"
                    "<Property name=\"Status\" value=\"Successful Completion\"/>"
                    "</Object>");
}

TEST(CompletionEntry, IsCloned) {
    const CompletionEntry entry(sampleBytes());
    const std::unique_ptr<core::ProtocolResult> clone = entry.clone();
    const auto* copy = dynamic_cast<const CompletionEntry*>(clone.get());
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, &entry);
    EXPECT_EQ(copy->toBytes(), sampleBytes());
}

}  // namespace
}  // namespace orvel::protocols::nvme
