// Structures for tests, byte by byte.
#pragma once

#include "core/Payload.h"
#include "core/Strings.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>

namespace orvel::interfaces::orveli {

/// Bytes as hexadecimal digits at an offset.
struct Part {
    std::uint32_t offset;
    std::string digits;
};

/// Zeroes apart from these parts.
inline core::Payload bytesOf(std::uint32_t size, std::initializer_list<Part> parts = {}) {
    core::Payload structure(size);
    for (const Part& part : parts) {
        const core::Payload bytes = core::strings::hexToBytes(part.digits);
        if (bytes.size() == 0 || part.offset + bytes.size() > size)
            throw std::invalid_argument(part.digits);
        std::copy_n(bytes.data(), bytes.size(), structure.data() + part.offset);
    }
    return structure;
}

/// As many times the digits of a byte.
inline std::string repeated(const std::string& digits, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
        text += digits;
    return text;
}

}  // namespace orvel::interfaces::orveli
