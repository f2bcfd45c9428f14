// A few bits of a number that a structure, a command dword or a feature's value consists of.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"

#include <cstdint>

namespace orvel::protocols::nvme {

/// A row of a table of bits, within a number of up to 32 bits.
struct BitField {
    const char* name;
    const char* meaning;
    std::uint32_t lowBit;
    std::uint32_t bits;  ///< how many, 1 to 32

    /// The largest value that fits.
    constexpr std::uint32_t maximum() const { return UINT32_MAX >> (UINT32_WIDTH - bits); }

    /// The bits in their place.
    constexpr std::uint32_t mask() const { return maximum() << lowBit; }
};

std::uint32_t readBits(std::uint32_t number, const BitField& row);

/// `number` with these bits replaced; a value that is too large loses its upper bits.
[[nodiscard]] std::uint32_t withBits(std::uint32_t number, const BitField& row,
                                     std::uint32_t value);

/// The value in its place, in a number that is otherwise 0. For commands, which must not ask for
/// something else than what was meant: throws core::Status by value, code 36, if it doesn't fit.
std::uint32_t placeBits(const BitField& row, std::uint32_t value);

// The same within a structure's field of up to 4 bytes; core::Status 14 is thrown as by Field.h.

std::uint32_t readBits(const core::Payload& structure, const Field& field, const BitField& row);
/// Whether the bit, or one of several, is set.
bool has(const core::Payload& structure, const Field& field, const BitField& row);

void writeBits(const core::Payload& structure, const Field& field, const BitField& row,
               std::uint32_t value);

}  // namespace orvel::protocols::nvme
