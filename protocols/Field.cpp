#include "protocols/Field.h"

#include "core/CoreStatuses.h"
#include "core/Strings.h"

#include <boost/multiprecision/cpp_int.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>

namespace orvel::protocols {

namespace {

constexpr unsigned BITS_PER_BYTE = 8;
constexpr std::string_view FILLING(" \0", 2);

/// The field's bytes in place.
std::span<std::uint8_t> bytesOf(const core::Payload& structure, const Field& field) {
    if (field.size > structure.size() || field.offset > structure.size() - field.size)
        throw core::statuses::requestOutOfBounds();
    return {structure.data() + field.offset, field.size};
}

/// Angle brackets are ASCII, but the protocol escapes them twice: nobody could type what is shown.
bool isUnprintable(char character) {
    return core::strings::isNotAscii(character) || character == '<' || character == '>';
}

/// Exchanges the bytes of each pair; a last odd one stays.
void swapPairs(std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        std::swap(text[i], text[i + 1]);
}

}  // namespace

std::string toText(Number128 number) {
    return boost::multiprecision::uint128_t(number).str();
}

std::uint64_t readNumber(const core::Payload& structure, const Field& field) {
    std::uint64_t number = 0;
    unsigned shift = 0;
    for (const std::uint8_t byte :
         bytesOf(structure, field).first(std::min<std::size_t>(field.size, sizeof number))) {
        number |= static_cast<std::uint64_t>(byte) << shift;
        shift += BITS_PER_BYTE;
    }
    return number;
}

Number128 readWideNumber(const core::Payload& structure, const Field& field) {
    Number128 number = 0;
    unsigned shift = 0;
    for (const std::uint8_t byte :
         bytesOf(structure, field).first(std::min<std::size_t>(field.size, sizeof number))) {
        number |= static_cast<Number128>(byte) << shift;
        shift += BITS_PER_BYTE;
    }
    return number;
}

std::string readText(const core::Payload& structure, const Field& field) {
    const auto bytes = bytesOf(structure, field);
    std::string text(bytes.begin(), bytes.end());
    if (field.encoding == Encoding::SWAPPED_TEXT) swapPairs(text);
    text = core::strings::trimmed(text, FILLING);
    std::replace_if(text.begin(), text.end(), isUnprintable, '.');
    return text;
}

core::Payload readBytes(const core::Payload& structure, const Field& field) {
    const auto bytes = bytesOf(structure, field);
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

std::string valueAsText(const core::Payload& structure, const Field& field) {
    switch (field.encoding) {
    case Encoding::NUMBER:
        return core::strings::toString(readNumber(structure, field));
    case Encoding::WIDE_NUMBER:
        return toText(readWideNumber(structure, field));
    case Encoding::TEXT:
    case Encoding::SWAPPED_TEXT:
        return readText(structure, field);
    case Encoding::BYTES:
        return core::strings::bytesToHex(readBytes(structure, field));
    }
    return {};
}

void writeNumber(const core::Payload& structure, const Field& field, std::uint64_t value) {
    for (std::uint8_t& byte : bytesOf(structure, field)) {
        byte = static_cast<std::uint8_t>(value);
        value >>= BITS_PER_BYTE;
    }
}

void writeWideNumber(const core::Payload& structure, const Field& field, Number128 value) {
    for (std::uint8_t& byte : bytesOf(structure, field)) {
        byte = static_cast<std::uint8_t>(value & 0xFFU);
        value >>= BITS_PER_BYTE;
    }
}

void writeText(const core::Payload& structure, const Field& field, const std::string& text) {
    const auto bytes = bytesOf(structure, field);
    std::string filled = text;
    filled.resize(bytes.size(), ' ');
    if (field.encoding == Encoding::SWAPPED_TEXT) swapPairs(filled);
    std::copy(filled.begin(), filled.end(), bytes.begin());
}

void writeBytes(const core::Payload& structure, const Field& field, const core::Payload& bytes) {
    const auto place = bytesOf(structure, field);
    std::fill(place.begin(), place.end(), std::uint8_t{0});
    const std::size_t count = std::min<std::size_t>(place.size(), bytes.size());
    if (count > 0) std::memcpy(place.data(), bytes.data(), count);
}

}  // namespace orvel::protocols
