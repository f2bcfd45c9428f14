#include "simulator/JsonText.h"

#include "simulator/FleetText.h"

// The parser uses placeholders of Boost.Bind that are deprecated, and its header says so.
#define BOOST_BIND_GLOBAL_PLACEHOLDERS
#include <boost/property_tree/json_parser.hpp>

#include <algorithm>
#include <cstddef>
#include <istream>
#include <streambuf>
#include <string>

namespace orvel::simulator {

namespace {

constexpr std::size_t DEEPEST = 64;
constexpr std::size_t MOST_VALUES = 8'000'000;

/// Reads in place, without a copy of the text.
class ViewBuffer : public std::streambuf {
public:
    explicit ViewBuffer(std::string_view text) {
        // A stream buffer wants to write, but nobody writes to one that is only read from.
        char* const begin = const_cast<char*>(text.data());
        setg(begin, begin, begin + text.size());
    }
};

/// Looks at the brackets and commas outside of strings. The parser is recursive, and its tree takes
/// much more memory than the text: what it couldn't bear is found out before.
class Outline {
public:
    void take(char character) {
        if (isInString) {
            takeInString(character);
            return;
        }
        switch (character) {
        case '"':
            isInString = true;
            break;
        case '{':
        case '[':
            ++values;
            deepest = std::max(deepest, ++depth);
            break;
        case '}':
        case ']':
            if (depth > 0) --depth;
            break;
        case ',':
            ++values;
            break;
        default:
            break;
        }
    }

    std::size_t deepest = 0;
    std::size_t values = 0;

private:
    void takeInString(char character) {
        if (isEscaped) {
            isEscaped = false;
        } else if (character == '\\') {
            isEscaped = true;
        } else if (character == '"') {
            isInString = false;
        }
    }

    std::size_t depth = 0;
    bool isInString = false;
    bool isEscaped = false;
};

void checkOutline(std::string_view text) {
    if (text.size() > LONGEST_JSON) throw FleetTextError("at most 64 MiB of text were expected");
    Outline outline;
    for (const char character : text)
        outline.take(character);
    if (outline.deepest > DEEPEST) {
        throw FleetTextError("at most 64 levels of objects and lists were expected");
    }
    if (outline.values > MOST_VALUES) {
        throw FleetTextError("at most 8000000 values were expected");
    }
}

}  // namespace

JsonTree readJson(std::string_view text) {
    checkOutline(text);
    ViewBuffer buffer(text);
    std::istream stream(&buffer);
    JsonTree tree;
    try {
        boost::property_tree::read_json(stream, tree);
    } catch (const boost::property_tree::json_parser_error& error) {
        throw FleetTextError("line " + std::to_string(error.line()) + ": " + error.message());
    }
    return tree;
}

}  // namespace orvel::simulator
