#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace cli::framework {

namespace {

char lowered(char character) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isHexDigit(char character) {
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

constexpr bool REQUIRED = true;
constexpr bool OPTIONAL = false;
constexpr bool VALUE_REQUIRED = true;
constexpr bool VALUE_OPEN = false;
constexpr bool NO_VALUE = true;
constexpr bool VALUE_ALLOWED = false;

CommandPart part(const char* name, bool required, const char* valueText, bool valueRequired,
                 const char* helpText, const char* shortName, bool noValue) {
    return {Text::literal(name),
            required,
            Text::literal(valueText),
            valueRequired,
            Text::literal(helpText),
            Text::literal(shortName),
            noValue};
}

}  // namespace

// clang-format off
//                                                 name            required  value text           value required  help text                                                          short  no value
const CommandPart OPTION_ALL                    = part("-all",         OPTIONAL, "",                  VALUE_OPEN,     "Display all possible attributes.",                                "-a",  NO_VALUE);
const CommandPart OPTION_DISPLAY                = part("-display",     OPTIONAL, "Property1,...",     VALUE_REQUIRED, "Specify which attributes are displayed.",                         "-d",  VALUE_ALLOWED);
const CommandPart OPTION_WAIT                   = part("-wait",        OPTIONAL, "",                  VALUE_OPEN,     "Wait for the command to finish before returning.",                "-w",  NO_VALUE);
const CommandPart OPTION_FORCE                  = part("-force",       OPTIONAL, "",                  VALUE_OPEN,     "Force the operation",                                             "-f",  NO_VALUE);
const CommandPart OPTION_EXAMINE                = part("-examine",     OPTIONAL, "",                  VALUE_OPEN,     "Examine the source file",                                         "-x",  NO_VALUE);
const CommandPart OPTION_SOURCE                 = part("-source",      OPTIONAL, "path",              VALUE_REQUIRED, "Path to the source file.",                                        "",    VALUE_ALLOWED);
const CommandPart OPTION_SOURCE_REQUIRED        = part("-source",      REQUIRED, "path",              VALUE_REQUIRED, "Path to the source file.",                                        "",    VALUE_ALLOWED);
const CommandPart OPTION_DESTINATION            = part("-destination", OPTIONAL, "path",              VALUE_REQUIRED, "Path to the destination file.",                                   "",    VALUE_ALLOWED);
const CommandPart OPTION_DESTINATION_REQUIRED   = part("-destination", REQUIRED, "path",              VALUE_REQUIRED, "Path to the destination file.",                                   "",    VALUE_ALLOWED);
const CommandPart OPTION_OUTPUT                 = part("-output",      OPTIONAL, "text|nvmxml|json",  VALUE_REQUIRED, "Change the output format. One of \"text\", \"nvmxml\" or \"json\".", "-o", VALUE_ALLOWED);
// Intended: `noValue` is clear. FeatureBase::validate refuses a value in words of its own.
const CommandPart OPTION_HELP                   = part("-help",        OPTIONAL, "",                  VALUE_OPEN,     "Display help for the command.",                                   "-h",  VALUE_ALLOWED);
const CommandPart PROPERTY_VERB                 = part("verb",         OPTIONAL, "verb",              VALUE_REQUIRED, "Commands with verb to show help on.",                             "",    VALUE_ALLOWED);
const CommandPart PROPERTY_NAME                 = part("Name",         OPTIONAL, "name",              VALUE_REQUIRED, "Commands to show help on.",                                       "",    VALUE_ALLOWED);

// clang-format on

std::string toLower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lowered);
    return text;
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

std::string trim(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    return text.substr(first, last - first + 1);
}

bool stringsIEqual(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowered(x) == lowered(y); });
}

bool stringIsNumeric(std::string_view text, bool allowHex) {
    if (text.empty()) return false;
    if (allowHex && text.size() >= 3 && (text.starts_with("0x") || text.starts_with("0X"))) {
        return std::all_of(text.begin() + 2, text.end(), isHexDigit);
    }
    if (text.size() >= 2 && text.front() == '0') return false;
    if (text.front() == '-') text.remove_prefix(1);
    return std::all_of(text.begin(), text.end(), [](char c) { return c == '.' || isDigit(c); }) &&
           std::count(text.begin(), text.end(), '.') <= 1;
}

std::string tokenTypeToString(TokenType type) {
    switch (type) {
    // clang-format off
    case TokenType::Unknown:  return "UNKNOWN";
    case TokenType::Value:    return "Value";
    case TokenType::Verb:     return "Verb";
    case TokenType::Option:   return "Option";
    case TokenType::Target:   return "Target";
    case TokenType::Property: return "Property";
    case TokenType::Equal:    return "Equal";
    case TokenType::Comma:    return "Comma";
        // clang-format on
    }
    return "UNKNOWN";
}

std::vector<std::string> split(const char* text, char separator) {
    std::vector<std::string> pieces;
    const char* const end = text + std::strlen(text);
    for (const char* begin = text;;) {
        const char* const cut = std::find(begin, end, separator);
        pieces.push_back(trim(std::string(begin, cut)));
        if (cut == end) return pieces;
        begin = cut + 1;
    }
}

std::vector<std::string> splitNonBlank(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (;;) {
        const std::string_view piece = text.substr(0, text.find(separator));
        if (!isBlank(piece)) pieces.push_back(trim(std::string(piece)));
        if (piece.size() == text.size()) return pieces;
        text.remove_prefix(piece.size() + 1);
    }
}

}  // namespace cli::framework
