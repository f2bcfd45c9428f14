#include "protocols/ata/IdentifyDevice.h"

#include "protocols/ata/Checksum.h"
#include "protocols/ata/Structures.h"

namespace orvel::protocols::ata::identify_device {

namespace {

constexpr std::uint16_t CHECKSUM_IS_THERE = 0xA5;
constexpr unsigned BITS_PER_WORD = 16;
constexpr Entries NAME_WORDS{WorldWideName.offset, WORD, 4};
constexpr Field NAME_WORD{"WorldWideName", "World wide name", 0, WORD, Encoding::NUMBER};

Field wordOf(const Bits& bits) {
    return {bits.name, bits.meaning, bits.word * WORD, WORD, Encoding::NUMBER};
}

}  // namespace

std::uint16_t readBits(const core::Payload& identify, const Bits& bits) {
    return static_cast<std::uint16_t>((readNumber(identify, wordOf(bits)) & bits.mask()) >>
                                      bits.low);
}

void writeBits(const core::Payload& identify, const Bits& bits, std::uint16_t value) {
    const std::uint64_t others = readNumber(identify, wordOf(bits)) & ~std::uint64_t{bits.mask()};
    const std::uint64_t own = (std::uint64_t{value} << bits.low) & bits.mask();
    writeNumber(identify, wordOf(bits), others | own);
}

bool isSet(const core::Payload& identify, const Bits& bits) {
    return readBits(identify, bits) != 0;
}

std::uint64_t readWorldWideName(const core::Payload& identify) {
    std::uint64_t name = 0;
    for (std::uint32_t i = 0; i < NAME_WORDS.count; ++i)
        name = name << BITS_PER_WORD | readNumber(identify, fieldOf(NAME_WORDS, i, NAME_WORD));
    return name;
}

void writeWorldWideName(const core::Payload& identify, std::uint64_t worldWideName) {
    for (std::uint32_t i = NAME_WORDS.count; i-- > 0;) {
        writeNumber(identify, fieldOf(NAME_WORDS, i, NAME_WORD), worldWideName);
        worldWideName >>= BITS_PER_WORD;
    }
}

Integrity readIntegrity(const core::Payload& identify) {
    if (readBits(identify, word_255::CHECKSUM_VALIDITY_INDICATOR) != CHECKSUM_IS_THERE)
        return Integrity::NOT_REPORTED;
    return isChecksumRight(identify) ? Integrity::RIGHT : Integrity::WRONG;
}

void writeIntegrity(const core::Payload& identify) {
    writeBits(identify, word_255::CHECKSUM_VALIDITY_INDICATOR, CHECKSUM_IS_THERE);
    writeChecksum(identify);
}

}  // namespace orvel::protocols::ata::identify_device
