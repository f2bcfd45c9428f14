#include "protocols/ata/IdentifyDevice.h"

#include "protocols/ata/Checksum.h"
#include "protocols/ata/Structures.h"

#include <algorithm>
#include <iterator>

namespace orvel::protocols::ata::identify_device {

namespace {

constexpr std::uint16_t CHECKSUM_IS_THERE = 0xA5;
constexpr unsigned BITS_PER_WORD = 16;
constexpr Entries NAME_WORDS{WorldWideName.offset, WORD, 4};
constexpr Field NAME_WORD{"WorldWideName", "World wide name", 0, WORD, Encoding::NUMBER};

/// Words with bits that are 01b if the words are valid.
struct ValidityRow {
    std::uint16_t first;
    std::uint16_t last;
    const Bits& validity;
};

// clang-format off
constexpr ValidityRow VALIDITIES[] = {
//   words     validity
    { 48,  48, word_48::VALIDITY},
    { 50,  50, word_50::VALIDITY},
    { 82,  83, word_83::VALIDITY},
    { 84,  84, word_84::VALIDITY},
    { 85,  87, word_87::VALIDITY},
    {106, 106, word_106::VALIDITY},
    {119, 119, word_119::VALIDITY},
    {120, 120, word_120::VALIDITY},
    {209, 209, word_209::VALIDITY},
};

// clang-format on

constexpr std::uint16_t FIRST_OF_SERIAL_ATA = 76;
constexpr std::uint16_t LAST_OF_SERIAL_ATA = 79;

bool isSerialAta(const core::Payload& identify) {
    const std::uint64_t capabilities = readNumber(identify, SerialATACapabilities);
    return capabilities != 0x0000 && capabilities != 0xFFFF;
}

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

bool isValid(const core::Payload& identify, const Bits& bits) {
    constexpr std::uint16_t VALID = 0b01;
    const std::uint16_t word = bits.word;
    if (word >= FIRST_OF_SERIAL_ATA && word <= LAST_OF_SERIAL_ATA) return isSerialAta(identify);
    const auto* const row = std::ranges::find_if(
        VALIDITIES, [&](const ValidityRow& one) { return word >= one.first && word <= one.last; });
    if (row == std::end(VALIDITIES)) return true;
    const bool isAnnounced = word == word_119::VALIDITY.word || word == word_120::VALIDITY.word;
    if (isAnnounced && !isReported(identify, word_86::WORDS_119_TO_120_ARE_VALID)) return false;
    return readBits(identify, row->validity) == VALID;
}

bool isReported(const core::Payload& identify, const Bits& bits) {
    return isValid(identify, bits) && isSet(identify, bits);
}

std::uint64_t sectorCount(const core::Payload& identify) {
    if (isSet(identify, word_69::EXTENDED_SECTORS)) {
        const std::uint64_t sectors = readNumber(identify, ExtendedUserAddressableSectors);
        if (sectors != 0) return sectors;
    }
    return readNumber(identify, isReported(identify, word_83::ADDRESS_48_BIT)
                                    ? UserAddressableSectors
                                    : UserAddressableSectors28);
}

std::uint64_t sectorSize(const core::Payload& identify) {
    constexpr std::uint64_t SHORT_SECTOR = 512;
    if (!isReported(identify, word_106::LONG_LOGICAL_SECTOR)) return SHORT_SECTOR;
    const std::uint64_t bytes = readNumber(identify, LogicalSectorSize) * WORD;
    return bytes == 0 ? SHORT_SECTOR : bytes;
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
