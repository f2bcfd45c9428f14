// What the tests of tables share: a second list of each table, as the standard writes its rows.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"
#include "protocols/nvme/BitField.h"
#include "tests/protocols/ThrownCode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <utility>

namespace orvel::protocols::nvme::tables {

/// A row as the standard has it: last byte first.
struct ByteRow {
    const char* name;
    std::uint32_t last;
    std::uint32_t first;
    Encoding encoding = Encoding::NUMBER;
};

inline void expectFields(Fields fields, std::span<const ByteRow> rows) {
    ASSERT_EQ(fields.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(rows[i].name);
        EXPECT_STREQ(fields[i].name, rows[i].name);
        EXPECT_EQ(fields[i].offset, rows[i].first);
        EXPECT_EQ(fields[i].offset + fields[i].size - 1, rows[i].last);
        EXPECT_EQ(fields[i].encoding, rows[i].encoding);
        EXPECT_STRNE(fields[i].meaning, "");
    }
}

/// Rows stand in order, none reaches into the next or beyond the structure, and no encoding is
/// asked for more bytes than it reads.
inline void expectSound(Fields fields, std::uint32_t size) {
    std::uint32_t end = 0;
    for (const Field& field : fields) {
        SCOPED_TRACE(field.name);
        EXPECT_GE(field.offset, end);
        EXPECT_GT(field.size, 0U);
        end = field.offset + field.size;
        EXPECT_TRUE(field.encoding != Encoding::NUMBER || field.size <= 8);
        EXPECT_TRUE(field.encoding != Encoding::WIDE_NUMBER || field.size == 16);
    }
    EXPECT_LE(end, size);
}

/// A row of bits with its namespace.
struct GroupedBits {
    const char* group;
    BitField row;
};

/// A row as the standard has it: highest bit first.
struct BitRow {
    const char* group;
    const char* name;
    std::uint32_t high;
    std::uint32_t low;
};

inline void expectBits(std::span<const GroupedBits> fields, std::span<const BitRow> rows) {
    ASSERT_EQ(fields.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(std::string(rows[i].group) + " " + rows[i].name);
        EXPECT_STREQ(fields[i].group, rows[i].group);
        EXPECT_STREQ(fields[i].row.name, rows[i].name);
        EXPECT_EQ(fields[i].row.lowBit, rows[i].low);
        EXPECT_EQ(fields[i].row.lowBit + fields[i].row.bits - 1, rows[i].high);
        EXPECT_STRNE(fields[i].row.meaning, "");
    }
}

/// A payload of zeroes but for runs of bytes at literal offsets.
inline core::Payload
payloadWith(std::uint32_t size, std::initializer_list<std::pair<std::uint32_t, std::string>> runs) {
    core::Payload payload(size);
    for (const auto& [offset, bytes] : runs) {
        std::uint32_t place = offset;
        for (const char byte : bytes)
            *payload.at(place++) = static_cast<std::uint8_t>(byte);
    }
    return payload;
}

/// All bytes alike.
inline core::Payload payloadOf(std::uint32_t size, char byte) {
    return {std::string(size, byte).data(), size};
}

}  // namespace orvel::protocols::nvme::tables
