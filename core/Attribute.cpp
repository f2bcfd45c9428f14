#include "core/Attribute.h"

#include "core/AttributeTypes.h"
#include "core/CoreStatuses.h"
#include "core/Strings.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orvel::core {

namespace {

constexpr char LIST_SEPARATOR = '~';

/// How the bytes of a value read as text.
enum class Encoding { TEXT, SIGNED, UNSIGNED, BOOLEAN, BYTES, HEX_NUMBER };

struct EncodingRow {
    std::string (*type)();
    Encoding encoding;
    std::uint32_t width;  ///< of an integer, in bytes
};

// clang-format off
constexpr EncodingRow ENCODINGS[] = {
//   type                     encoding               width
    {&types::string,          Encoding::TEXT,        0},
    {&types::sint8,           Encoding::SIGNED,      1},
    {&types::sint16,          Encoding::SIGNED,      2},
    {&types::sint32,          Encoding::SIGNED,      4},
    {&types::sint64,          Encoding::SIGNED,      8},
    {&types::uint8,           Encoding::UNSIGNED,    1},
    {&types::uint16,          Encoding::UNSIGNED,    2},
    {&types::uint32,          Encoding::UNSIGNED,    4},
    {&types::uint64,          Encoding::UNSIGNED,    8},
    {&types::ulong,           Encoding::UNSIGNED,    8},
    {&types::boolean,         Encoding::BOOLEAN,     1},
    {&types::bytepointer,     Encoding::BYTES,       0},
    {&types::list_uint64,     Encoding::BYTES,       0},
    {&types::vectorOfStrings, Encoding::TEXT,        0},
    {&types::hexValue,        Encoding::HEX_NUMBER,  0},
};
// clang-format on

constexpr std::uint64_t ANY_NUMBER = std::numeric_limits<std::uint64_t>::max();

/// What a value given as text must be.
enum class Form { TEXT, BOOLEAN, NUMBER };

struct FormRow {
    std::string (*type)();
    Form form;
    std::uint32_t width;    ///< of a number, in bytes
    std::uint64_t largest;  ///< largest number taken; what the width can't hold is cut off
};

// A type without a row can't be set from text.
// clang-format off
constexpr FormRow FORMS[] = {
//   type             form           width  largest
    {&types::string,  Form::TEXT,    0,     0},
    {&types::boolean, Form::BOOLEAN, 1,     0},
    {&types::sint16,  Form::NUMBER,  2,     ANY_NUMBER},
    {&types::sint32,  Form::NUMBER,  4,     ANY_NUMBER},
    {&types::sint64,  Form::NUMBER,  8,     ANY_NUMBER},
    {&types::uint8,   Form::NUMBER,  1,     255},
    {&types::uint16,  Form::NUMBER,  2,     65535},
    {&types::uint32,  Form::NUMBER,  4,     4294967295},
    {&types::ulong,   Form::NUMBER,  8,     4294967295},
    {&types::uint64,  Form::NUMBER,  8,     ANY_NUMBER},
};

// clang-format on

/// The row of a type word, or null.
template <typename Row, std::size_t Size>
const Row* findRow(const Row (&rows)[Size], const std::string& type) {
    const Row* row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const Row& candidate) { return candidate.type() == type; });
    return row == std::end(rows) ? nullptr : row;
}

/// The low `width` bytes of a number, least significant first.
Payload littleEndian(std::uint64_t number, std::uint32_t width) {
    Payload bytes(width);
    for (std::uint32_t i = 0; i < width; ++i) {
        bytes.data()[i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
    return bytes;
}

template <typename Integer>
Payload integerBytes(Integer value) {
    return littleEndian(static_cast<std::make_unsigned_t<Integer>>(value), sizeof(Integer));
}

/// Reads at most `width` bytes; a shorter payload is zero-extended.
std::uint64_t readLittleEndian(const Payload& bytes, std::uint32_t width) {
    std::uint64_t number = 0;
    for (std::uint32_t i = std::min(bytes.size(), width); i > 0; --i) {
        number = number << 8 | bytes.data()[i - 1];
    }
    return number;
}

std::string signedText(const Payload& bytes, std::uint32_t width) {
    if (bytes.size() == 0) return "-1";
    const unsigned unusedBits = 64 - 8 * width;
    const std::uint64_t number = readLittleEndian(bytes, width);
    // Shifting there and back spreads the sign bit of the type's width.
    return strings::toString(static_cast<std::int64_t>(number << unusedBits) >> unusedBits);
}

Payload textBytes(const std::string& text) {
    return {text.c_str(), static_cast<std::uint32_t>(text.size() + 1)};
}

std::string textOf(const Payload& bytes) {
    std::string text(bytes.data(), bytes.data() + bytes.size());
    if (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
}

std::string hexNumberText(const Payload& bytes) {
    if (bytes.size() == 0) return {};
    const std::uint8_t* first = bytes.data();
    const std::uint8_t* end = first + bytes.size();
    first = std::find_if(first, end, [](std::uint8_t byte) { return byte != 0; });
    if (first == end) return "0x0";
    return "0x" + strings::bytesToHex(first, static_cast<std::size_t>(end - first));
}

/// The bytes of a value given as text. False if the text hasn't the form, and `bytes` is untouched.
bool readForm(const FormRow& row, const std::string& text, Payload& bytes) {
    switch (row.form) {
    case Form::TEXT:
        bytes = textBytes(text);
        return true;
    case Form::BOOLEAN:
        if (!strings::isBooleanText(text)) return false;
        bytes = littleEndian(text == "0" || strings::equals(text, "false", true) ? 0 : 1, 1);
        return true;
    case Form::NUMBER:
        if (!strings::isNumeric(text) && !strings::isHexadecimal(text)) return false;
        const std::uint64_t number = strings::toInteger(text);
        if (number > row.largest) return false;
        bytes = littleEndian(number, row.width);
        return true;
    }
    return false;
}

}  // namespace

Attribute::Attribute(std::string name, std::string displayName, std::string type)
    : name(std::move(name)),
      displayName(std::move(displayName)),
      type(std::move(type)) {}

Attribute::Attribute(std::string name, const char* value)
    : Attribute(std::move(name), {}, types::string()) {
    setValue(value);
}

Attribute::Attribute(std::string name, const std::string& value)
    : Attribute(std::move(name), {}, types::string()) {
    setValue(value);
}

Attribute::Attribute(std::string name, bool value)
    : Attribute(std::move(name), {}, types::boolean()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::int8_t value)
    : Attribute(std::move(name), {}, types::sint8()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::int16_t value)
    : Attribute(std::move(name), {}, types::sint16()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::int32_t value)
    : Attribute(std::move(name), {}, types::sint32()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::int64_t value)
    : Attribute(std::move(name), {}, types::sint64()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::uint8_t value)
    : Attribute(std::move(name), {}, types::uint8()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::uint16_t value)
    : Attribute(std::move(name), {}, types::uint16()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::uint32_t value)
    : Attribute(std::move(name), {}, types::uint32()) {
    setValue(value);
}

Attribute::Attribute(std::string name, std::uint64_t value)
    : Attribute(std::move(name), {}, types::uint64()) {
    setValue(value);
}

Attribute::Attribute(std::string name, const Payload& value)
    : Attribute(std::move(name), {}, types::bytepointer()) {
    setValue(value);
}

Attribute::Attribute(std::string name, const std::vector<std::uint64_t>& value)
    : Attribute(std::move(name), {}, types::list_uint64()) {
    setValue(value);
}

Attribute::Attribute(std::string name, const std::vector<std::string>& value)
    : Attribute(std::move(name), {}, types::vectorOfStrings()) {
    setValue(value);
}

Attribute::Attribute(std::string name, const std::vector<Payload>& value)
    : Attribute(std::move(name), {}, types::vectorOfPayloads()) {
    setValue(value);
}

void Attribute::setValue(const char* newValue) {
    setValue(std::string(newValue == nullptr ? "" : newValue));
}

void Attribute::setValue(const std::string& newValue) {
    value = textBytes(newValue);
}

void Attribute::setValue(bool newValue) {
    value = littleEndian(newValue ? 1 : 0, 1);
}

void Attribute::setValue(std::int8_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::int16_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::int32_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::int64_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::uint8_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::uint16_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::uint32_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(std::uint64_t newValue) {
    value = integerBytes(newValue);
}

void Attribute::setValue(const Payload& newValue) {
    value = newValue;
}

void Attribute::setValue(const std::vector<std::uint64_t>& newValue) {
    constexpr std::uint32_t WIDTH = sizeof(std::uint64_t);
    Payload bytes(static_cast<std::uint32_t>(newValue.size() * WIDTH));
    std::uint8_t* place = bytes.data();
    for (const std::uint64_t number : newValue) {
        const Payload numberBytes = littleEndian(number, WIDTH);
        place = std::copy_n(numberBytes.data(), WIDTH, place);
    }
    value = bytes;
}

void Attribute::setValue(const std::vector<std::string>& newValue) {
    std::string joined;
    for (const std::string& text : newValue) {
        if (&text != &newValue.front()) joined += LIST_SEPARATOR;
        joined += text;
    }
    setValue(joined);
}

void Attribute::setValue(const std::vector<Payload>& newValue) {
    // Each payload follows its size, so that the list can be taken apart again.
    std::string bytes;
    for (const Payload& payload : newValue) {
        const Payload size = integerBytes(payload.size());
        bytes.append(size.data(), size.data() + size.size());
        bytes.append(payload.data(), payload.data() + payload.size());
    }
    value = Payload(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

Status Attribute::setValueFromText(const std::string& text) {
    const FormRow* row = findRow(FORMS, type);
    if (row != nullptr && readForm(*row, text, value)) return {};
    value = Payload();
    return statuses::invalidValueType();
}

std::string Attribute::valueAsString() const {
    const EncodingRow* row = findRow(ENCODINGS, type);
    if (row == nullptr) return {};
    switch (row->encoding) {
    case Encoding::TEXT:
        return textOf(value);
    case Encoding::SIGNED:
        return signedText(value, row->width);
    case Encoding::UNSIGNED:
        return strings::toString(readLittleEndian(value, row->width));
    case Encoding::BOOLEAN:
        return strings::toString(readLittleEndian(value, row->width) != 0);
    case Encoding::BYTES:
        return strings::bytesToHex(value);
    case Encoding::HEX_NUMBER:
        return hexNumberText(value);
    }
    return {};
}

}  // namespace orvel::core
