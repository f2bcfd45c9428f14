// Equal parts that stand one behind the other inside a structure.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols {

/// Where the entries are. Offset and size are in bytes.
struct Entries {
    std::uint32_t offset;  ///< of entry 0
    std::uint32_t size;    ///< of each
    std::uint32_t count;
};

// Each throws core::Status by value, code 14, for an index beyond the last entry.

/// A row of the entry's table, moved to its place in the structure around it.
Field fieldOf(const Entries& entries, std::uint32_t index, const Field& row);

/// All bytes of one entry.
Field bytesOf(const Entries& entries, std::uint32_t index);

/// A copy of one entry; also throws 14 if the structure ends before it does.
core::Payload readEntry(const core::Payload& structure, const Entries& entries,
                        std::uint32_t index);

/// Puts one entry in its place: cut off if it is longer, filled up with zeroes if it is shorter.
/// Also throws 14 if the structure ends before the entry does.
void writeEntry(const core::Payload& structure, const Entries& entries, std::uint32_t index,
                const core::Payload& entry);

}  // namespace orvel::protocols
