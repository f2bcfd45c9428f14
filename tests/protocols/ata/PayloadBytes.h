// Payloads for tests, byte by byte, and what a call throws.
#pragma once

#include "core/Payload.h"
#include "tests/protocols/ThrownCode.h"

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace orvel::protocols::ata {

inline core::Payload bytes(std::initializer_list<int> values) {
    const std::vector<std::uint8_t> data(values.begin(), values.end());
    return {data.data(), static_cast<std::uint32_t>(data.size())};
}

/// Puts bytes into a payload at an offset.
inline void put(const core::Payload& payload, std::uint32_t offset,
                std::initializer_list<int> values) {
    for (const int value : values)
        *payload.at(offset++) = static_cast<std::uint8_t>(value);
}

inline void putText(const core::Payload& payload, std::uint32_t offset, const std::string& text) {
    std::memcpy(payload.data() + offset, text.data(), text.size());
}

inline void putWord(const core::Payload& payload, std::uint32_t word, unsigned value) {
    put(payload, word * 2, {static_cast<int>(value & 0xFFU), static_cast<int>(value >> 8U)});
}

inline core::Payload filledWith(int byte, std::uint32_t size) {
    core::Payload payload(size);
    std::memset(payload.data(), byte, size);
    return payload;
}

}  // namespace orvel::protocols::ata
