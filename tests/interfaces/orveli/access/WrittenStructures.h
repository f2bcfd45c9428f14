// Structures for scripted drives, written out byte by byte.
#pragma once

#include "core/Payload.h"

#include <cstdint>
#include <initializer_list>

namespace orvel::interfaces::orveli {

/// Bytes that stand somewhere in a structure.
struct BytesAt {
    std::uint32_t offset;
    std::initializer_list<int> bytes;
};

/// A structure of zeroes but for these parts.
inline core::Payload structure(std::uint32_t size, std::initializer_list<BytesAt> parts) {
    core::Payload bytes(size);
    for (const BytesAt& part : parts) {
        std::uint32_t place = part.offset;
        for (const int byte : part.bytes)
            *bytes.at(place++) = static_cast<std::uint8_t>(byte);
    }
    return bytes;
}

/// The same with 512 bytes, of which the last makes the sum of all zero.
inline core::Payload checkedStructure(std::initializer_list<BytesAt> parts) {
    core::Payload bytes = structure(512, parts);
    unsigned sum = 0;
    for (std::uint32_t i = 0; i < 511; ++i)
        sum += *bytes.at(i);
    *bytes.at(511) = static_cast<std::uint8_t>(0x100 - (sum & 0xFF));
    return bytes;
}

}  // namespace orvel::interfaces::orveli
