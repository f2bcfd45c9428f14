// Repeated parts of a structure.
#pragma once

#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// `count` parts of `size` bytes each, the first at `offset`.
struct Entries {
    std::uint32_t offset;
    std::uint32_t size;
    std::uint32_t count;
};

/// The field of one part, as a field of the structure around it. Throws core::Status by value, code
/// 14, for an index out of range.
Field fieldOf(const Entries& entries, std::uint32_t index, const Field& field);

/// All bytes of one part, likewise.
Field bytesOf(const Entries& entries, std::uint32_t index);

}  // namespace orvel::protocols::ata
