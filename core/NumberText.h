// Numbers that are the whole of a text.
#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <system_error>

namespace orvel::core {

/// The number that all of the text spells in digits of this base; nothing for anything else, and
/// for a number that the type can't hold.
template <class Number>
std::optional<Number> readWhole(const std::string& text, int base = 10) {
    Number number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

}  // namespace orvel::core
