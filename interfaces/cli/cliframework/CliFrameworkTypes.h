// The small types that all of the framework shares, the shared constants, and the helpers for
// comparing and cutting strings.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace cli::framework {

/// Class of one word of a command line.
enum class TokenType : std::int32_t {
    Unknown = 0,
    Value = 1,
    Verb = 2,
    Option = 3,
    Target = 4,
    Property = 5,
    Equal = 6,
    Comma = 7,
};

/// One classified word of a command line.
struct Token {
    std::string text;
    TokenType tokenType = TokenType::Unknown;
};

/// One declared option, target or property of a command.
struct CommandPart {
    std::string name;            ///< the word that the line uses, such as "-display"
    bool required = false;       ///< the command is complete only if the line names this part
    std::string valueText;       ///< placeholder of the value in usage text; empty: takes none
    bool valueRequired = false;  ///< if named, the part must have a non-empty value
    std::string helpText;        ///< one line of description
    std::string shortName;       ///< short form of an option, such as "-d"; may be empty
    bool noValue = false;        ///< if named, the part must have no value
    bool found = false;          ///< set by the parser when a token matched this part
};

/// What one line amounts to. Keys are canonical names, values the text given, or empty.
struct ParsedCommand {
    std::string verb;
    std::map<std::string, std::string> options;
    std::map<std::string, std::string> targets;
    std::map<std::string, std::string> properties;
};

/// Output format of a result. Value 3 is a slot of the result classes that no word selects.
enum class OutputType : std::uint32_t {
    text = 0,
    nvmxml = 1,
    esx = 2,
    textTable = 3,
    json = 4,
    csv = 5,
};

// Verbs and words.
inline constexpr const char* SUCCESS_TEXT = "Success";
inline constexpr const char* VERB_SHOW = "show";
inline constexpr const char* VERB_START = "start";
inline constexpr const char* VERB_CREATE = "create";
inline constexpr const char* VERB_DUMP = "dump";
inline constexpr const char* VERB_SET = "set";
inline constexpr const char* VERB_LOAD = "load";
inline constexpr const char* VERB_DELETE = "delete";
inline constexpr const char* VERB_HELP = "help";
inline constexpr const char* VERB_VERSION = "version";
inline constexpr const char* VERB_RESET = "reset";
inline constexpr const char* NO_RESULTS_TEXT = "No results";
inline constexpr const char* OUTPUT_TEXT = "text";
inline constexpr const char* OUTPUT_NVMXML = "nvmxml";
inline constexpr const char* OUTPUT_ESX = "esx";
inline constexpr const char* OUTPUT_JSON = "json";
inline constexpr const char* OUTPUT_CSV = "csv";

// Message formats and field names that several result classes share.
inline constexpr const char* MISSING_VALUE_FORMAT = "A value is required for the %s '%s'.";
inline constexpr const char* BAD_VALUE_FORMAT = "'%s' is not a valid setting for the %s '%s'.";
inline constexpr const char* FIELD_RESULT = "Result";
inline constexpr const char* FIELD_ERROR = "Error";
inline constexpr const char* FIELD_ERROR_DESCRIPTION = "Error_Description";
inline constexpr const char* FIELD_TYPE = "Type";

// Fixed pieces of the esxcli form.
inline constexpr const char* ESX_HEAD =
    "<?xml version=\"1.0\"?><output xmlns=\"http://www.vmware.com/Products/ESX/5.0/esxcli/\">";
inline constexpr const char* ESX_END = "</output>";
inline constexpr const char* ESX_LIST_OF_STRINGS = "<list type=\"string\">";
inline constexpr const char* ESX_LIST_OF_STRUCTURES = "<list type=\"structure\">";
inline constexpr const char* ESX_LIST_END = "</list>";
inline constexpr const char* ESX_STRING = "<string>";
inline constexpr const char* ESX_STRING_END = "</string>";
inline constexpr const char* ESX_KEY_VALUE = "<structure typeName=\"KeyValue\">";
inline constexpr const char* ESX_STRUCTURE_FORMAT = "<structure typeName=\"%s\">";
inline constexpr const char* ESX_STRUCTURE_END = "</structure>";
inline constexpr const char* ESX_FIELD_NAME = "<field name=\"Attribute Name\">";
inline constexpr const char* ESX_FIELD_VALUE = "<field name=\"Value\">";
inline constexpr const char* ESX_FIELD_FORMAT = "<field name=\"%s\">";
inline constexpr const char* ESX_FIELD_END = "</field>";

// Shared parts. `found` is clear in all of them. Intended: `noValue` is clear in OPTION_HELP:
// FeatureBase::validate refuses a value there in words of its own.
// clang-format off
//                                                       name             required  value text           value required  help text                                                              short  no value
inline const CommandPart OPTION_ALL                  = {"-all",          false,    "",                  false,          "Display all possible attributes.",                                    "-a",  true};
inline const CommandPart OPTION_DISPLAY              = {"-display",      false,    "Property1,...",     true,           "Specify which attributes are displayed.",                             "-d",  false};
inline const CommandPart OPTION_WAIT                 = {"-wait",         false,    "",                  false,          "Wait for the command to finish before returning.",                    "-w",  true};
inline const CommandPart OPTION_FORCE                = {"-force",        false,    "",                  false,          "Force the operation",                                                 "-f",  true};
inline const CommandPart OPTION_EXAMINE              = {"-examine",      false,    "",                  false,          "Examine the source file",                                             "-x",  true};
inline const CommandPart OPTION_SOURCE               = {"-source",       false,    "path",              true,           "Path to the source file.",                                            "",    false};
inline const CommandPart OPTION_SOURCE_REQUIRED      = {"-source",       true,     "path",              true,           "Path to the source file.",                                            "",    false};
inline const CommandPart OPTION_DESTINATION          = {"-destination",  false,    "path",              true,           "Path to the destination file.",                                       "",    false};
inline const CommandPart OPTION_DESTINATION_REQUIRED = {"-destination",  true,     "path",              true,           "Path to the destination file.",                                       "",    false};
inline const CommandPart OPTION_OUTPUT               = {"-output",       false,    "text|nvmxml|json",  true,           "Change the output format. One of \"text\", \"nvmxml\" or \"json\".",  "-o",  false};
inline const CommandPart OPTION_HELP                 = {"-help",         false,    "",                  false,          "Display help for the command.",                                       "-h",  false};
inline const CommandPart PROPERTY_VERB               = {"verb",          false,    "verb",              true,           "Commands with verb to show help on.",                                 "",    false};
inline const CommandPart PROPERTY_NAME               = {"Name",          false,    "name",              true,           "Commands to show help on.",                                           "",    false};
// clang-format on

/// A copy of `text` with `tolower` applied to each byte.
std::string toLower(std::string text);

/// Whether `text` is empty or holds nothing but blanks and tabs.
bool isBlank(std::string_view text);

/// The text from the first to the last character that is neither blank nor tab. Throws
/// std::out_of_range if there is no such character: callers hand over non-blank text.
std::string trim(const std::string& text);

/// True if both have the same length and are equal after `toLower`.
bool stringsIEqual(std::string_view a, std::string_view b);

/// Whether JSON output may write `text` bare: a decimal number without a leading zero, with one
/// leading "-" and at most one "." allowed; with `allowHex`, "0x" and digits as well. "-", "."
/// and "-." count as numeric.
bool stringIsNumeric(std::string_view text, bool allowHex);

/// The display word of a token type; "UNKNOWN" for every number without a name.
std::string tokenTypeToString(TokenType type);

/// Cuts `text` at each `separator`; each piece goes through `trim`, whose exception it inherits
/// for blank pieces.
std::vector<std::string> split(const char* text, char separator);

/// As `split`, but leaves blank pieces out: for text as a user typed it. Never throws for them.
std::vector<std::string> splitNonBlank(std::string_view text, char separator);

}  // namespace cli::framework
