#include "core/XmlDepth.h"

#include <algorithm>
#include <array>

namespace orvel::core {

namespace {

constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

/// A set of characters, looked up by index: the walk asks for every character of a tag.
class CharacterSet {
public:
    constexpr explicit CharacterSet(std::string_view characters) {
        for (const char character : characters)
            members[indexOf(character)] = true;
    }

    constexpr bool contains(char character) const { return members[indexOf(character)]; }

private:
    static constexpr std::size_t indexOf(char character) {
        return static_cast<unsigned char>(character);
    }

    std::array<bool, 256> members{};
};

constexpr CharacterSet WHITESPACE(" \n\r\t");

// What ends a name, as the reader has it: an element's name may hold "<", "=" and quotes.
constexpr CharacterSet AFTER_ELEMENT_NAME(" \n\r\t/>?");
constexpr CharacterSet AFTER_ATTRIBUTE_NAME(" \n\r\t/<>=?!");

/// Walks the text as the reader does. Each step is false where the reader gives up.
class Walk {
public:
    explicit Walk(std::string_view text) : text(text) {
        if (text.starts_with(BYTE_ORDER_MARK)) position = BYTE_ORDER_MARK.size();
    }

    std::size_t deepestLevel() {
        while (skipToMarkup() && readMarkup()) {
        }
        return deepest;
    }

private:
    /// To the character behind the next "<". Outside the root, only whitespace stands before it.
    bool skipToMarkup() {
        if (depth == 0) {
            skipAll(WHITESPACE);
            return take('<');
        }
        return skipBehind("<");
    }

    bool readMarkup() {
        if (depth > 0 && take('/')) return readClosingTag();
        if (take('?')) return skipBehind("?>");
        if (take('!')) return readDeclaration();
        return readElement();
    }

    bool readClosingTag() {
        skipUntil(AFTER_ELEMENT_NAME);
        skipAll(WHITESPACE);
        if (!take('>')) return false;
        --depth;
        return true;
    }

    bool readDeclaration() {
        if (take("--")) return skipBehind("-->");
        if (take("[CDATA[")) return skipBehind("]]>");
        if (take("DOCTYPE")) {
            // Without a blank behind the word, it is none to the reader and ends at the next ">".
            if (WHITESPACE.contains(peek())) return readDoctype();
        }
        return skipBehind(">");
    }

    /// Up to the ">" that stands outside all square brackets.
    bool readDoctype() {
        std::size_t brackets = 0;
        for (; position < text.size(); ++position) {
            switch (text[position]) {
            case '[':
                ++brackets;
                break;
            case ']':
                if (brackets > 0) --brackets;
                break;
            case '>':
                if (brackets == 0) return take('>');
                break;
            default:
                break;
            }
        }
        return false;
    }

    bool readElement() {
        deepest = std::max(deepest, depth + 1);
        const std::size_t name = position;
        skipUntil(AFTER_ELEMENT_NAME);
        if (position == name) return false;
        skipAll(WHITESPACE);
        if (!readAttributes()) return false;
        if (take('>')) {
            ++depth;
            return true;
        }
        return take("/>");
    }

    bool readAttributes() {
        while (!AFTER_ATTRIBUTE_NAME.contains(peek())) {
            skipUntil(AFTER_ATTRIBUTE_NAME);
            skipAll(WHITESPACE);
            if (!take('=')) return false;
            skipAll(WHITESPACE);
            if (!(take('"') ? skipBehind("\"") : take('\'') && skipBehind("'"))) return false;
            skipAll(WHITESPACE);
        }
        return true;
    }

    /// The next character. The end reads as a character that ends every name and every tag.
    char peek() const { return position < text.size() ? text[position] : '?'; }

    bool take(char expected) {
        if (position == text.size() || text[position] != expected) return false;
        ++position;
        return true;
    }

    bool take(std::string_view expected) {
        if (!text.substr(position).starts_with(expected)) return false;
        position += expected.size();
        return true;
    }

    void skipAll(const CharacterSet& characters) {
        while (position < text.size() && characters.contains(text[position]))
            ++position;
    }

    void skipUntil(const CharacterSet& characters) {
        while (position < text.size() && !characters.contains(text[position]))
            ++position;
    }

    bool skipBehind(std::string_view end) {
        const std::size_t place = text.find(end, position);
        if (place == std::string_view::npos) return false;
        position = place + end.size();
        return true;
    }

    std::string_view text;
    std::size_t position = 0;
    std::size_t depth = 0;
    std::size_t deepest = 0;
};

}  // namespace

std::size_t xmlDepth(std::string_view text) {
    return Walk(text.substr(0, text.find('\0'))).deepestLevel();
}

}  // namespace orvel::core
