// IDENTIFY DEVICE data below its fields: bits and what makes them valid, the size, the world wide
// name, the integrity word.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::protocols::ata::identify_device {

/// A row of the table of bits.
struct Bits {
    const char* name;
    const char* meaning;
    std::uint16_t word;
    std::uint8_t high;
    std::uint8_t low;

    constexpr std::uint16_t mask() const {
        return static_cast<std::uint16_t>(((1U << (high - low + 1U)) - 1U) << low);
    }
};

// One namespace for each word: `word_82::SECURITY`.
#define BITS(word, high, low, name, meaning)                                                       \
    namespace word_##word {                                                                        \
        inline constexpr Bits name{#name, meaning, word, high, low};                               \
    }
#include "protocols/ata/tables/IdentifyDeviceBits.def"

/// In the order of the words, the upper bits first.
inline constexpr Bits ALL_BITS[] = {
#define BITS(word, high, low, name, meaning) word_##word::name,
#include "protocols/ata/tables/IdentifyDeviceBits.def"
};

// Each function throws core::Status by value, code 14, if the payload ends too early.

/// The bits' value, with their lowest as bit 0.
std::uint16_t readBits(const core::Payload& identify, const Bits& bits);

/// Leaves the word's other bits; what is too large loses its upper bits.
void writeBits(const core::Payload& identify, const Bits& bits, std::uint16_t value);

/// Whether any of the bits is one.
bool isSet(const core::Payload& identify, const Bits& bits);

/// Whether the bits' word means anything: ACS-4, "IDENTIFY DEVICE data", has a check for some
/// words.
bool isValid(const core::Payload& identify, const Bits& bits);

/// Whether any of the bits is one in a word that is valid.
bool isReported(const core::Payload& identify, const Bits& bits);

/// Logical sectors that the user can address, from whichever words tell them; 0 if none does.
std::uint64_t sectorCount(const core::Payload& identify);

/// Of a logical sector, in bytes.
std::uint64_t sectorSize(const core::Payload& identify);

/// Words 108 to 111, the first with the most significant bits.
std::uint64_t readWorldWideName(const core::Payload& identify);
void writeWorldWideName(const core::Payload& identify, std::uint64_t worldWideName);

/// What word 255 says. A drive may leave the checksum out.
enum class Integrity { NOT_REPORTED, RIGHT, WRONG };
Integrity readIntegrity(const core::Payload& identify);

/// Sets word 255: A5h and the checksum.
void writeIntegrity(const core::Payload& identify);

}  // namespace orvel::protocols::ata::identify_device
