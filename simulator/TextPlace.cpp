#include "simulator/TextPlace.h"

#include "core/Strings.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <system_error>

namespace orvel::simulator {

using protocols::Number128;

namespace {

constexpr std::size_t PAIR = 2;

/// What a message has of foreign text: one line of moderate length, without the quotation marks
/// that the message may be put into.
std::string shortened(std::string_view text) {
    constexpr std::size_t LONGEST = 40;
    std::string shown(text.substr(0, LONGEST));
    std::replace_if(shown.begin(), shown.end(), core::strings::isNotAscii, '.');
    std::replace(shown.begin(), shown.end(), '"', '\'');
    if (text.size() > LONGEST) shown += "...";
    return shown;
}

bool looksLikeNumber(std::string_view text) {
    if (text.empty()) return false;
    return text.front() == '-' || (text.front() >= '0' && text.front() <= '9');
}

int baseOf(std::string_view& digits) {
    constexpr int DECIMAL = 10;
    constexpr int HEXADECIMAL = 16;
    if (!digits.starts_with("0x") && !digits.starts_with("0X")) return DECIMAL;
    digits.remove_prefix(PAIR);
    return HEXADECIMAL;
}

template <typename T>
std::optional<T> parsed(std::string_view digits, int base) {
    T value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value, base);
    if (error != std::errc() || stop != end) return {};
    return value;
}

std::optional<std::uint64_t> parseNumber(std::string_view digits) {
    const int base = baseOf(digits);
    return parsed<std::uint64_t>(digits, base);
}

/// Digit by digit, because 16 bytes are more than what the standard library reads.
std::optional<Number128> parseWideNumber(std::string_view digits, const Number128& most) {
    const int base = baseOf(digits);
    const auto factor = static_cast<Number128>(base);
    if (digits.empty()) return {};
    Number128 value = 0;
    for (const char& digit : digits) {
        const auto next = parsed<unsigned>({&digit, 1}, base);
        if (!next || *next > most || value > (most - *next) / factor) return {};
        value = value * factor + *next;
    }
    return value;
}

}  // namespace

std::uint64_t TextPlace::number(std::uint64_t least, std::uint64_t most) const {
    const auto value = tree.empty() ? parseNumber(tree.data()) : std::nullopt;
    if (value && *value >= least && *value <= most) return *value;
    failValue("a number from " + std::to_string(least) + " to " + std::to_string(most));
}

Number128 TextPlace::wideNumber(const Number128& most) const {
    const auto value = tree.empty() ? parseWideNumber(tree.data(), most) : std::nullopt;
    if (value) return *value;
    failValue("a number from 0 to " + protocols::toText(most));
}

std::int64_t TextPlace::signedNumber(std::int64_t least, std::int64_t most) const {
    constexpr int DECIMAL = 10;
    const auto value = tree.empty() ? parsed<std::int64_t>(tree.data(), DECIMAL) : std::nullopt;
    if (value && *value >= least && *value <= most) return *value;
    failValue("a number from " + std::to_string(least) + " to " + std::to_string(most));
}

bool TextPlace::flag() const {
    const bool isTrue = tree.data() == "true";
    if (!tree.empty() || (!isTrue && tree.data() != "false")) failValue("true or false");
    return isTrue;
}

std::string TextPlace::text(std::size_t longest) const {
    if (tree.size() == 1 && tree.front().first == "bytes") {
        const auto bytes = TextPlace(*this, "bytes", tree.front().second).bytes(longest);
        return {bytes.begin(), bytes.end()};
    }
    if (!tree.empty() || tree.data().size() > longest) {
        failValue("a text of at most " + std::to_string(longest) + " bytes");
    }
    return tree.data();
}

std::string TextPlace::printableText(std::size_t longest) const {
    const std::string& text = tree.data();
    if (!tree.empty() || text.size() > longest ||
        std::any_of(text.begin(), text.end(), core::strings::isNotAscii)) {
        failValue("a text of at most " + std::to_string(longest) + " printable ASCII characters");
    }
    return text;
}

std::vector<std::uint8_t> TextPlace::bytes(std::size_t most) const {
    constexpr int HEXADECIMAL = 16;
    const std::string_view digits = tree.data();
    bool isRight = tree.empty() && digits.size() % PAIR == 0 && digits.size() / PAIR <= most;
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; isRight && i < digits.size(); i += PAIR) {
        const auto byte = parsed<std::uint8_t>(digits.substr(i, PAIR), HEXADECIMAL);
        isRight = byte.has_value();
        bytes.push_back(byte.value_or(0));
    }
    if (!isRight)
        failValue("text of at most " + std::to_string(most) + " pairs of hexadecimal digits");
    return bytes;
}

std::uint64_t TextPlace::keyAsNumber(std::uint64_t least, std::uint64_t most) const {
    const auto value = parseNumber(key);
    if (value && *value >= least && *value <= most) return *value;
    fail("a number from " + std::to_string(least) + " to " + std::to_string(most) +
         " was expected as the key");
}

void TextPlace::expectObject() const {
    if (!tree.data().empty()) failValue("an object");
    std::vector<std::string_view> keys;
    keys.reserve(tree.size());
    for (const auto& [name, value] : tree) {
        if (name.empty()) failValue("an object");
        keys.push_back(name);
    }
    std::sort(keys.begin(), keys.end());
    const auto twice = std::adjacent_find(keys.begin(), keys.end());
    if (twice != keys.end()) TextPlace(*this, *twice, tree).fail("the key was expected only once");
}

void TextPlace::expectList() const {
    const bool hasKeys =
        std::any_of(tree.begin(), tree.end(), [](const auto& one) { return !one.first.empty(); });
    if (!tree.data().empty() || hasKeys) failValue("a list");
}

void TextPlace::takeBytes(std::uint64_t bytes) const {
    if (bytes > reading.bytesLeft) fail("drives of at most 256 MiB together were expected");
    reading.bytesLeft -= bytes;
}

void TextPlace::fail(const std::string& problem) const {
    const std::string place = path();
    throw FleetTextError(place.empty() ? problem : place + ": " + problem);
}

void TextPlace::failValue(const std::string& expected) const {
    std::string value;
    if (!tree.empty()) {
        value = tree.front().first.empty() ? "a list" : "an object";
    } else if (looksLikeNumber(tree.data())) {
        value = shortened(tree.data());
    } else {
        value = "'" + shortened(tree.data()) + "'";
    }
    fail(expected + " was expected, not " + value);
}

std::string TextPlace::path() const {
    if (!parent) return {};
    const std::string before = parent->path();
    if (key.empty()) return before + '[' + std::to_string(index) + ']';
    return (before.empty() ? before : before + '.') + shortened(key);
}

}  // namespace orvel::simulator
