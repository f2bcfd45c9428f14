// The pieces of text work that several result classes share.
#pragma once

#include <string>
#include <string_view>

namespace cli::framework {

/// Appends each piece in turn to `text`.
template <typename... Pieces>
void append(std::string& text, const Pieces&... pieces) {
    (text.append(std::string_view(pieces)), ...);
}

/// Appends `format` with `argument` in the place of its "%s".
void appendFormat(std::string& text, std::string_view format, std::string_view argument);

/// `name` with each blank replaced by "_". Nothing else is made fit for XML.
std::string toTag(std::string name);

/// `text` with each double quote replaced by an apostrophe.
std::string toApostrophes(std::string text);

/// Appends the JSON form of a property's value: a number or a truth value bare, anything else in
/// double quotes. Control characters and backslashes go through as they are.
void appendJsonValue(std::string& text, std::string_view value);

}  // namespace cli::framework
