#include "core/Strings.h"

#include <dlfcn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <limits>
#include <locale>
#include <memory>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>

namespace orvel::core::strings {

namespace {

constexpr std::uint64_t LARGEST_INTEGER = std::numeric_limits<std::uint64_t>::max();
constexpr char HEX_DIGITS[] = "0123456789ABCDEF";

// The C locale's view of a character, whatever locale the process runs in.

template <typename Char>
constexpr Char toLower(Char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<Char>(character - 'A' + 'a')
                                                : character;
}

template <typename Char>
constexpr bool isSpace(Char character) {
    return character == ' ' || (character >= '\t' && character <= '\r');
}

template <typename Char>
constexpr bool isDigit(Char character) {
    return character >= '0' && character <= '9';
}

/// Value of a hexadecimal digit; 16 for any other character.
template <typename Char>
constexpr unsigned hexDigitValue(Char character) {
    if (isDigit(character)) return static_cast<unsigned>(character - '0');
    const Char letter = toLower(character);
    return letter >= 'a' && letter <= 'f' ? static_cast<unsigned>(letter - 'a') + 10 : 16;
}

template <typename Char>
constexpr bool isHexDigit(Char character) {
    return hexDigitValue(character) < 16;
}

template <typename Char>
void lowerIf(bool ignoreCase, std::basic_string<Char>& a, std::basic_string<Char>& b) {
    if (!ignoreCase) return;
    std::transform(a.begin(), a.end(), a.begin(), toLower<Char>);
    std::transform(b.begin(), b.end(), b.begin(), toLower<Char>);
}

/// Whether `text`, lowered, is `word`, which is lower case.
template <typename Char>
bool isWord(std::basic_string_view<Char> text, std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](Char a, char b) { return toLower(a) == static_cast<Char>(b); });
}

template <typename Char>
bool startsWithHexPrefix(std::basic_string_view<Char> text) {
    return text.size() >= 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
}

template <typename Char>
bool containsText(std::basic_string<Char> text, std::basic_string<Char> part, bool ignoreCase) {
    lowerIf(ignoreCase, text, part);
    return text.find(part) != std::basic_string<Char>::npos;
}

template <typename Char>
bool startsWithText(std::basic_string<Char> text, std::basic_string<Char> part, bool ignoreCase) {
    lowerIf(ignoreCase, text, part);
    return text.starts_with(part);
}

template <typename Char>
bool endsWithText(std::basic_string<Char> text, std::basic_string<Char> part, bool ignoreCase) {
    lowerIf(ignoreCase, text, part);
    return text.ends_with(part);
}

template <typename Char>
bool equalsText(std::basic_string<Char> a, std::basic_string<Char> b, bool ignoreCase) {
    lowerIf(ignoreCase, a, b);
    return a == b;
}

template <typename Char>
bool isNumericText(std::basic_string_view<Char> text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit<Char>);
}

template <typename Char>
bool isSignedNumericText(std::basic_string_view<Char> text) {
    if (!text.empty() && text.front() == '-') text.remove_prefix(1);
    return isNumericText(text);
}

template <typename Char>
bool isBoolean(std::basic_string_view<Char> text) {
    return isWord(text, "0") || isWord(text, "1") || isWord(text, "true") || isWord(text, "false");
}

template <typename Char>
bool isHexadecimalText(std::basic_string_view<Char> text) {
    if (startsWithHexPrefix(text)) {
        // Intended: the character right behind the prefix isn't looked at.
        text.remove_prefix(std::min<std::size_t>(3, text.size()));
    }
    return std::all_of(text.begin(), text.end(), isHexDigit<Char>);
}

/// The number that the leading digits of `text` write; no value if it takes more than 64 bits.
template <typename Char>
std::optional<std::uint64_t> readDigits(std::basic_string_view<Char> text, unsigned base) {
    std::uint64_t number = 0;
    for (const Char character : text) {
        const unsigned digit = hexDigitValue(character);
        if (digit >= base) break;
        if (number > (LARGEST_INTEGER - digit) / base) return std::nullopt;
        number = number * base + digit;
    }
    return number;
}

/// Reads as an input stream in hexadecimal mode does: blanks first, then a sign, which negates
/// modulo 2 to the power of 64, a prefix, and the digits up to the first other character.
template <typename Char>
std::uint64_t readHexInteger(std::basic_string_view<Char> text) {
    while (!text.empty() && isSpace(text.front())) {
        text.remove_prefix(1);
    }
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+')) text.remove_prefix(1);
    if (startsWithHexPrefix(text)) text.remove_prefix(2);
    const auto number = readDigits(text, 16);
    if (!number) return LARGEST_INTEGER;
    return negative ? 0 - *number : *number;
}

template <typename Char>
std::uint64_t readInteger(std::basic_string_view<Char> text) {
    if (isNumericText(text)) return readDigits(text, 10).value_or(LARGEST_INTEGER);
    return isHexadecimalText(text) ? readHexInteger(text) : 0;
}

template <typename Char>
double readDouble(const std::basic_string<Char>& text) {
    std::basic_istringstream<Char> stream(text);
    stream.imbue(std::locale::classic());
    double value = 0;
    stream >> value;
    return value;
}

template <typename Char>
std::vector<std::basic_string<Char>> splitText(const std::basic_string<Char>& text,
                                               Char delimiter) {
    std::vector<std::basic_string<Char>> parts;
    std::size_t start = 0;
    for (auto end = text.find(delimiter); end != std::basic_string<Char>::npos;
         end = text.find(delimiter, start)) {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

std::string padded(std::string text, int width) {
    const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
    if (text.size() < wanted) text.insert(0, wanted - text.size(), '0');
    return text;
}

std::string hexText(std::uint64_t value, int width) {
    std::string text;
    do {
        text.push_back(HEX_DIGITS[value % 16]);
        value /= 16;
    } while (value > 0);
    std::reverse(text.begin(), text.end());
    return padded(std::move(text), width);
}

void appendHexByte(std::string& text, std::uint8_t byte) {
    text.push_back(HEX_DIGITS[byte / 16]);
    text.push_back(HEX_DIGITS[byte % 16]);
}

template <typename Float>
std::string fixedText(Float value, int precision) {
    const int digits = std::max(precision, 0);
    // A sign, the digits before the point, the point and the digits behind it.
    std::string text(static_cast<std::size_t>(std::numeric_limits<Float>::max_exponent10) + 4 +
                         static_cast<std::size_t>(digits),
                     '\0');
    const auto written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, digits);
    text.resize(static_cast<std::size_t>(written.ptr - text.data()));
    return text;
}

struct PipeCloser {
    void operator()(std::FILE* pipe) const { pclose(pipe); }
};

using Pipe = std::unique_ptr<std::FILE, PipeCloser>;

Pipe openPipe(const std::string& command) {
    return Pipe(popen(command.c_str(), "re"));
}

std::string readAll(std::FILE* pipe) {
    std::string text;
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe)) {
        text.append(block.data(), count);
    }
    return text;
}

}  // namespace

bool contains(std::string text, std::string part, bool ignoreCase) {
    return containsText(std::move(text), std::move(part), ignoreCase);
}

bool contains(std::wstring text, std::wstring part, bool ignoreCase) {
    return containsText(std::move(text), std::move(part), ignoreCase);
}

bool startsWith(std::string text, std::string part, bool ignoreCase) {
    return startsWithText(std::move(text), std::move(part), ignoreCase);
}

bool startsWith(std::wstring text, std::wstring part, bool ignoreCase) {
    return startsWithText(std::move(text), std::move(part), ignoreCase);
}

bool endsWith(std::string text, std::string part, bool ignoreCase) {
    return endsWithText(std::move(text), std::move(part), ignoreCase);
}

bool endsWith(std::wstring text, std::wstring part, bool ignoreCase) {
    return endsWithText(std::move(text), std::move(part), ignoreCase);
}

bool equals(std::string a, std::string b, bool ignoreCase) {
    return equalsText(std::move(a), std::move(b), ignoreCase);
}

bool equals(std::wstring a, std::wstring b, bool ignoreCase) {
    return equalsText(std::move(a), std::move(b), ignoreCase);
}

bool isNotAscii(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte > 0x7E;
}

bool isNumeric(const std::string& text) {
    return isNumericText<char>(text);
}

bool isNumeric(const std::wstring& text) {
    return isNumericText<wchar_t>(text);
}

bool isSignedNumeric(const std::string& text) {
    return isSignedNumericText<char>(text);
}

bool isSignedNumeric(const std::wstring& text) {
    return isSignedNumericText<wchar_t>(text);
}

bool isBooleanText(const std::string& text) {
    return isBoolean<char>(text);
}

bool isBooleanText(const std::wstring& text) {
    return isBoolean<wchar_t>(text);
}

bool isHexadecimal(const std::string& text) {
    return isHexadecimalText<char>(text);
}

bool isHexadecimal(const std::wstring& text) {
    return isHexadecimalText<wchar_t>(text);
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), toLower<char>);
    return text;
}

std::string trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(blanks) - first + 1));
}

bool toBool(const std::string& text) {
    return isWord<char>(text, "true");
}

bool toBool(const std::wstring& text) {
    return isWord<wchar_t>(text, "true");
}

std::uint64_t toInteger(const std::string& text) {
    return readInteger<char>(text);
}

std::uint64_t toInteger(const std::wstring& text) {
    return readInteger<wchar_t>(text);
}

std::uint64_t toHexInteger(const std::string& text) {
    return readHexInteger<char>(text);
}

std::uint64_t toHexInteger(const std::wstring& text) {
    return readHexInteger<wchar_t>(text);
}

double toDouble(const std::string& text) {
    return readDouble(text);
}

double toDouble(const std::wstring& text) {
    return readDouble(text);
}

std::vector<std::string> split(const std::string& text, char delimiter) {
    return splitText(text, delimiter);
}

std::vector<std::wstring> split(const std::wstring& text, wchar_t delimiter) {
    return splitText(text, delimiter);
}

Payload hexToBytes(const std::string& text) {
    if (text.size() % 2 != 0 || !std::all_of(text.begin(), text.end(), isHexDigit<char>)) return {};
    Payload bytes(static_cast<std::uint32_t>(text.size() / 2));
    for (std::uint32_t i = 0; i < bytes.size(); ++i) {
        const std::size_t digit = std::size_t{2} * i;
        bytes.data()[i] = static_cast<std::uint8_t>(hexDigitValue(text[digit]) * 16 +
                                                    hexDigitValue(text[digit + 1]));
    }
    return bytes;
}

std::string toString(bool value) {
    return value ? "True" : "False";
}

std::string toString(std::int8_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::int16_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::int32_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::int64_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::uint8_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::uint16_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::uint32_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(std::uint64_t value, int width) {
    return padded(std::to_string(value), width);
}

std::string toString(double value, int width, int precision) {
    return padded(fixedText(value, precision), width);
}

std::string toHexString(std::int8_t value, int width) {
    return hexText(static_cast<std::uint8_t>(value), width);
}

std::string toHexString(std::int16_t value, int width) {
    return hexText(static_cast<std::uint16_t>(value), width);
}

std::string toHexString(std::int32_t value, int width) {
    return hexText(static_cast<std::uint32_t>(value), width);
}

std::string toHexString(std::int64_t value, int width) {
    return hexText(static_cast<std::uint64_t>(value), width);
}

std::string toHexString(std::uint8_t value, int width) {
    return hexText(value, width);
}

std::string toHexString(std::uint16_t value, int width) {
    return hexText(value, width);
}

std::string toHexString(std::uint32_t value, int width) {
    return hexText(value, width);
}

std::string toHexString(std::uint64_t value, int width) {
    return hexText(value, width);
}

std::string bytesToHex(const std::uint8_t* bytes, std::size_t size) {
    std::string text;
    text.reserve(2 * size);
    for (std::size_t i = 0; i < size; ++i) {
        appendHexByte(text, bytes[i]);
    }
    return text;
}

std::string bytesToHex(const Payload& payload) {
    return bytesToHex(payload.data(), payload.size());
}

std::string fromBytes(const std::uint8_t* bytes, std::size_t size) {
    if (bytes == nullptr) return {};
    return {bytes, std::find(bytes, bytes + size, std::uint8_t{0})};
}

std::wstring widen(const std::string& text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (const char character : text) {
        wide.push_back(static_cast<unsigned char>(character));
    }
    return wide;
}

std::string narrow(const std::wstring& text) {
    std::string narrowed;
    narrowed.reserve(text.size());
    for (const wchar_t character : text) {
        narrowed.push_back(static_cast<char>(character));
    }
    return narrowed;
}

std::string hexDump(const std::uint8_t* bytes, std::size_t size, std::size_t bytesPerLine) {
    constexpr std::size_t BYTES_PER_GROUP = 8;
    const std::size_t lineSize = bytesPerLine > 0 ? std::min(bytesPerLine, size) : size;
    std::string dump;
    for (std::size_t offset = 0; offset < size; offset += lineSize) {
        const std::size_t count = std::min(lineSize, size - offset);
        dump += toHexString(std::uint64_t{offset}, 4) + ": ";
        std::string characters;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint8_t byte = bytes[offset + i];
            appendHexByte(dump, byte);
            dump += ' ';
            if ((i + 1) % BYTES_PER_GROUP == 0 && i + 1 < count) dump += ' ';
            characters += byte >= 0x21 && byte <= 0x7E ? static_cast<char>(byte) : '.';
        }
        if (count < size - offset) characters += '\n';
        dump += ' ' + characters;
    }
    return dump;
}

std::string hexDump(const Payload& payload, std::size_t bytesPerLine) {
    return hexDump(payload.data(), payload.size(), bytesPerLine);
}

std::string bytesToCapacityString(std::uint64_t bytes, bool decimal, bool wholeNumber) {
    constexpr std::array<const char*, 4> UNITS = {"MB", "GB", "TB", "PB"};
    const long double base = decimal ? 1000 : 1024;
    long double value = static_cast<long double>(bytes) / base / base;
    std::size_t unit = 0;
    while (value >= base && unit + 1 < UNITS.size()) {
        value /= base;
        ++unit;
    }
    const std::string number =
        wholeNumber ? std::to_string(static_cast<std::uint64_t>(value)) : fixedText(value, 2);
    return number + ' ' + UNITS[unit];
}

std::string getExecutablePath() {
    std::string path(1024, '\0');
    for (;;) {
        const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
        if (length < 0) return "./";
        if (static_cast<std::size_t>(length) < path.size()) {
            path.resize(static_cast<std::size_t>(length));
            break;
        }
        // The link filled the buffer and may have been cut.
        path.resize(2 * path.size());
    }
    return path.substr(0, path.rfind('/') + 1);
}

std::string runCommand(const std::string& command, const std::string& arguments, int& exitCode) {
    exitCode = 1;
    Pipe pipe = openPipe(command + ' ' + arguments + " 2>&1");
    if (!pipe) return {};
    std::string output = readAll(pipe.get());
    std::erase(output, '\n');
    exitCode = WEXITSTATUS(pclose(pipe.release()));
    return output;
}

bool runCommandLines(const std::string& command, std::vector<std::string>& lines) {
    const Pipe pipe = openPipe(command);
    if (!pipe) return false;
    const std::string output = readAll(pipe.get());
    std::size_t start = 0;
    while (start < output.size()) {
        const std::size_t end = std::min(output.find('\n', start), output.size());
        lines.push_back(output.substr(start, end - start));
        start = end + 1;
    }
    return true;
}

void* loadLibrary(const std::string& path) {
    return dlopen(path.c_str(), RTLD_LAZY);
}

void* getSymbol(void* handle, const std::string& name) {
    return dlsym(handle, name.c_str());
}

}  // namespace orvel::core::strings
