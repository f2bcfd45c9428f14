#include "simulator/JsonWriter.h"

#include <cstddef>

namespace orvel::simulator {

namespace {

constexpr char HEX_DIGITS[] = "0123456789abcdef";

/// The bytes of a sequence in UTF-8 and the smallest code point that may take so many.
struct Sequence {
    std::size_t length;
    std::uint32_t smallest;
    std::uint32_t firstBits;  ///< of the first byte, those of the code point
};

Sequence sequenceOf(unsigned char first) {
    if (first < 0x80) return {1, 0, 0x7F};
    if (first >= 0xC0 && first < 0xE0) return {2, 0x80, 0x1F};
    if (first >= 0xE0 && first < 0xF0) return {3, 0x800, 0x0F};
    if (first >= 0xF0 && first < 0xF8) return {4, 0x10000, 0x07};
    return {0, 0, 0};
}

/// The length of the sequence at the beginning; 0 if there is none.
std::size_t validLength(std::string_view text) {
    constexpr std::uint32_t LAST = 0x10FFFF;
    const auto first = static_cast<unsigned char>(text.front());
    const Sequence sequence = sequenceOf(first);
    if (sequence.length == 0 || sequence.length > text.size()) return 0;
    std::uint32_t codePoint = first & sequence.firstBits;
    for (const char character : text.substr(1, sequence.length - 1)) {
        const auto byte = static_cast<unsigned char>(character);
        if ((byte & 0xC0U) != 0x80) return 0;
        codePoint = codePoint << 6U | (byte & 0x3FU);
    }
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return codePoint < sequence.smallest || codePoint > LAST || isSurrogate ? 0 : sequence.length;
}

}  // namespace

void JsonWriter::key(std::string_view key) {
    separate();
    quote(key);
    out += ':';
    needsComma = false;
}

void JsonWriter::number(std::uint64_t value) {
    separate();
    out += std::to_string(value);
}

void JsonWriter::wideNumber(const protocols::Number128& value) {
    separate();
    out += protocols::toText(value);
}

void JsonWriter::signedNumber(std::int64_t value) {
    separate();
    out += std::to_string(value);
}

void JsonWriter::flag(bool value) {
    separate();
    out += value ? "true" : "false";
}

void JsonWriter::text(std::string_view text) {
    separate();
    quote(text);
}

void JsonWriter::newLine() {
    if (needsComma) out += ',';
    needsComma = false;
    out += '\n';
}

void JsonWriter::begin(char bracket) {
    separate();
    out += bracket;
    needsComma = false;
}

void JsonWriter::end(char bracket) {
    out += bracket;
    needsComma = true;
}

void JsonWriter::separate() {
    if (needsComma) out += ',';
    needsComma = true;
}

void JsonWriter::quote(std::string_view text) {
    constexpr unsigned char FIRST_PRINTABLE = 0x20;
    out += '"';
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < FIRST_PRINTABLE) {
            out += "\\u00";
            out += HEX_DIGITS[byte >> 4U];
            out += HEX_DIGITS[byte & 0xFU];
            continue;
        }
        if (character == '"' || character == '\\') out += '\\';
        out += character;
    }
    out += '"';
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = validLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

}  // namespace orvel::simulator
