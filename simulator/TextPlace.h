// A place in a fleet's text: where a value stands, and what is wrong with it.
#pragma once

#include "protocols/Field.h"
#include "simulator/FleetText.h"
#include "simulator/JsonText.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::simulator {

/// What all places of one text have in common.
struct TextReading {
    Unmentioned unmentioned = Unmentioned::BLANK;

    /// How many bytes the records may still take, so that a few keys of text can't ask for all
    /// memory that there is.
    std::uint64_t bytesLeft = std::uint64_t{256} << 20U;
};

/// Refers to the place around it, which has to live as long. Each function that reads throws
/// FleetTextError with the place and what was expected, for another kind of value or one out of
/// range.
class TextPlace {
public:
    /// The whole text.
    TextPlace(const JsonTree& tree, TextReading& reading) : tree(tree), reading(reading) {}

    /// A member of an object.
    TextPlace(const TextPlace& parent, std::string_view key, const JsonTree& tree)
        : parent(&parent),
          key(key),
          tree(tree),
          reading(parent.reading) {}

    /// An entry of a list.
    TextPlace(const TextPlace& parent, std::size_t index, const JsonTree& tree)
        : parent(&parent),
          index(index),
          tree(tree),
          reading(parent.reading) {}

    const JsonTree& getTree() const { return tree; }

    bool isTypical() const { return reading.unmentioned == Unmentioned::TYPICAL; }

    /// JSON's word for nothing.
    bool isNull() const { return tree.empty() && tree.data() == "null"; }

    bool has(const char* member) const { return tree.count(member) > 0; }

    /// Decimal, or hexadecimal with "0x".
    std::uint64_t number(std::uint64_t least, std::uint64_t most) const;
    protocols::Number128 wideNumber(const protocols::Number128& most) const;
    std::int64_t signedNumber(std::int64_t least, std::int64_t most) const;
    bool flag() const;

    /// Of any bytes: those that JSON can't have stand as `{"bytes": "ff00"}`.
    std::string text(std::size_t longest) const;

    /// Only of characters that drives can show.
    std::string printableText(std::size_t longest) const;

    /// Pairs of hexadecimal digits.
    std::vector<std::uint8_t> bytes(std::size_t most) const;

    /// The place's own key.
    std::uint64_t keyAsNumber(std::uint64_t least, std::uint64_t most) const;

    /// Throws for anything but an object (which may be empty) and for keys that are there twice.
    void expectObject() const;
    void expectList() const;

    /// Throws if there have been too many already.
    void takeBytes(std::uint64_t bytes) const;

    /// "at.this.place: <problem>"
    [[noreturn]] void fail(const std::string& problem) const;

    /// "at.this.place: <expected> was expected, not <the value>"
    [[noreturn]] void failValue(const std::string& expected) const;

private:
    std::string path() const;

    const TextPlace* parent = nullptr;
    std::string_view key = {};  ///< empty for an entry of a list
    std::size_t index = 0;
    const JsonTree& tree;
    TextReading& reading;
};

}  // namespace orvel::simulator
