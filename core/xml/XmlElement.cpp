#include "core/xml/XmlElement.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvel::core::xml {

namespace {

constexpr const char* DECLARATION = R"(<?xml version="1.0" encoding="utf-8"?>)";

/// The replacement of a character, or an empty view for a character that stands for itself.
///
/// Intended: `<` and `>` are escaped twice. The protocol replaces them first and the ampersands
/// after them, and readers on the other side count on it.
std::string_view escapeOf(char character) {
    switch (character) {
    case '<':
        return "&amp;lt;";
    case '>':
        return "&amp;gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&apos;";
    default:
        return {};
    }
}

void writeEscaped(std::string& text, std::string_view value) {
    std::size_t written = 0;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string_view escape = escapeOf(value[i]);
        if (escape.empty()) continue;
        text.append(value, written, i - written).append(escape);
        written = i + 1;
    }
    text.append(value, written);
}

bool keysAscend(const XmlElement::Attributes::sequence_type& rows) {
    return std::adjacent_find(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
               return left.first >= right.first;
           }) == rows.end();
}

}  // namespace

XmlElement::XmlElement(std::string type) : elementType(std::move(type)) {}

std::vector<std::unique_ptr<XmlElement>> XmlElement::find(const std::string& type,
                                                          const std::string& key,
                                                          const std::string& value,
                                                          bool includeSelf) const {
    Matches found;
    collect({type, key, value, includeSelf}, found);
    return found;
}

void XmlElement::collect(const Query& query, Matches& found) const {
    collectSelf(query, found);
}

void XmlElement::collectSelf(const Query& query, Matches& found) const {
    if (!query.type.empty() && query.type != elementType) return;
    if (!query.key.empty()) {
        // An absent attribute reads as the empty string, here as everywhere.
        const std::string* actual = findAttribute(query.key);
        if (actual == nullptr ? !query.value.empty() : *actual != query.value) return;
    }
    found.push_back(clone());
}

std::string XmlElement::getAttribute(const std::string& key) const {
    const std::string* value = findAttribute(key);
    return value == nullptr ? std::string() : *value;
}

// A row of a few short keys is searched faster from end to end than by halves.
const std::string* XmlElement::findAttribute(std::string_view key) const {
    const auto place = std::find_if(attributes.begin(), attributes.end(),
                                    [key](const auto& row) { return row.first == key; });
    return place == attributes.end() ? nullptr : &place->second;
}

std::string XmlElement::takeAttribute(std::string_view key) {
    const auto place = std::find_if(attributes.begin(), attributes.end(),
                                    [key](const auto& row) { return row.first == key; });
    return place == attributes.end() ? std::string() : std::exchange(place->second, {});
}

void XmlElement::setAttribute(const std::string& key, std::string value) {
    attributes.insert_or_assign(key, std::move(value));
}

void XmlElement::setAttributes(Attributes::sequence_type rows) {
    if (!keysAscend(rows)) {
        std::stable_sort(rows.begin(), rows.end(), [](const auto& left, const auto& right) {
            return left.first < right.first;
        });
        // Seen from the end, the last row of each key comes first, and `unique` keeps it.
        const auto kept =
            std::unique(rows.rbegin(), rows.rend(), [](const auto& left, const auto& right) {
                return left.first == right.first;
            });
        rows.erase(rows.begin(), kept.base());
    }
    attributes.adopt_sequence(boost::container::ordered_unique_range, std::move(rows));
}

void XmlElement::removeAttribute(const std::string& key) {
    attributes.erase(key);
}

void XmlElement::clearAttributes() {
    attributes.clear();
}

std::string XmlElement::toString() const {
    std::string text = DECLARATION;
    toXml(text);
    return text;
}

void XmlElement::writeAttributes(std::string& text) const {
    for (const auto& [key, value] : attributes) {
        text.append(1, ' ').append(key).append("=\"");
        writeEscaped(text, value);
        text.append(1, '"');
    }
}

}  // namespace orvel::core::xml
