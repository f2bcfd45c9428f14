// One field of a structure that a drive returns, as its standard lays it out.
#pragma once

#include "core/Payload.h"

#include <cstdint>
#include <span>
#include <string>

namespace orvel::protocols {

/// The compiler's own: a class would cost every source unit that looks at a structure a second.
__extension__ using Number128 = unsigned __int128;

/// In decimal.
std::string toText(Number128 number);

/// How the bytes of a field are to be read.
enum class Encoding {
    NUMBER,        ///< little-endian, up to 8 bytes
    WIDE_NUMBER,   ///< little-endian, up to 16 bytes
    TEXT,          ///< ASCII, filled up with blanks
    SWAPPED_TEXT,  ///< ASCII with the two bytes of each 16-bit word exchanged, as in ATA
    BYTES
};

/// A row of a structure's table. Offset and size are in bytes.
struct Field {
    const char* name;     ///< the standard's abbreviation, or its words joined
    const char* meaning;  ///< the standard's words
    std::uint32_t offset;
    std::uint32_t size;
    Encoding encoding;
};

/// The rows of one structure, in the order of their offsets.
using Fields = std::span<const Field>;

/// Whether the fields stand in order, share no byte and end before `size`.
constexpr bool areInOrder(Fields fields, std::uint32_t size) {
    std::uint32_t end = 0;
    for (const Field& field : fields) {
        if (field.offset < end) return false;
        end = field.offset + field.size;
    }
    return end <= size;
}

// Reading. Each throws core::Status by value, code 14, if the payload ends before the field does;
// whoever may hold less than a whole structure looks at its size first.

/// The low 64 bits of a number of any width.
std::uint64_t readNumber(const core::Payload& structure, const Field& field);
Number128 readWideNumber(const core::Payload& structure, const Field& field);

/// Without the blanks and NULs at both ends; a byte that is no printable ASCII reads as ".".
std::string readText(const core::Payload& structure, const Field& field);

/// A copy.
core::Payload readBytes(const core::Payload& structure, const Field& field);

/// The value for people: decimal for numbers, text as it is, bytes as hexadecimal digits.
std::string valueAsText(const core::Payload& structure, const Field& field);

// Writing, for whoever makes structures up. The same exception; what is too large for a field
// loses its upper bytes or its last characters.

void writeNumber(const core::Payload& structure, const Field& field, std::uint64_t value);
void writeWideNumber(const core::Payload& structure, const Field& field, Number128 value);

/// Fills up with blanks.
void writeText(const core::Payload& structure, const Field& field, const std::string& text);

/// Fills up with zeroes.
void writeBytes(const core::Payload& structure, const Field& field, const core::Payload& bytes);

}  // namespace orvel::protocols
