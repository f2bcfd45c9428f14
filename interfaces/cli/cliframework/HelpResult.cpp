#include "interfaces/cli/cliframework/HelpResult.h"

#include "interfaces/cli/cliframework/Framework.h"
#include "interfaces/cli/cliframework/ResultText.h"

#include <algorithm>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace cli::framework {

namespace {

constexpr std::size_t INDENT = 4;

constexpr const char* NO_COMMANDS = "No commands to display";
constexpr const char* USAGE = "Usage";
constexpr const char* USAGE_PATTERN = "<verb>[<options>][<targets>][<properties>]";
constexpr const char* COMMANDS = "Commands";
constexpr const char* NAME = "Name";
constexpr const char* DESCRIPTION = "Description";
constexpr const char* SYNOPSIS = "Synopsis";
constexpr const char* VERB = "Verb";
constexpr const char* OPTIONS = "Options";
constexpr const char* TARGETS = "Targets";
constexpr const char* PROPERTIES = "Properties";
constexpr const char* HELP = "Help";
constexpr const char* COMMAND = "Command";
constexpr const char* OPTION = "Option";
constexpr const char* TARGET = "Target";
constexpr const char* PROPERTY = "Property";
constexpr const char* REQUIRED = "Required";
constexpr const char* VALUE = "Value";
constexpr const char* VALUE_REQUIRED = "ValueRequired";

const char* truthWord(bool value) {
    return value ? "True" : "False";
}

const char* lowerTruthWord(bool value) {
    return value ? "true" : "false";
}

/// Columns of a line behind its indent; 0 switches wrapping off.
std::size_t wrapWidth() {
    winsize window{};
    const bool isTerminal = ::ioctl(STDIN_FILENO, TIOCGWINSZ, &window) == 0;
    const std::size_t columns = isTerminal ? window.ws_col : 0;
    // Intended: no terminal, or one of less than 4 columns, wraps round to a width that no text
    // reaches.
    return columns - INDENT;
}

/// The part of `text` that goes on the next line.
std::string_view wrapLine(std::string_view text, std::size_t width) {
    if (text.size() <= width) return text;
    const auto blank = text.substr(0, width).rfind(' ');
    const bool isUsable = blank != std::string_view::npos && blank != 0;
    return text.substr(0, isUsable ? blank : width);
}

std::string partToString(const CommandPart& part, bool isProperty) {
    std::string text;
    CommandSpec::appendPart(text, part, isProperty);
    if (!part.helpText.empty()) append(text, " -- ", part.helpText);
    return text;
}

void appendAttribute(const char* key, std::string_view value, std::string& text) {
    append(text, " ", key, "=\"", value, "\"");
}

void listToXml(const char* listTag, const char* itemTag, const std::vector<CommandPart>& parts,
               std::string& text) {
    append(text, "\t\t<", listTag, ">");
    if (!parts.empty()) text += '\n';
    for (const CommandPart& part : parts) {
        append(text, "\t\t\t<", itemTag);
        appendAttribute(NAME, part.name, text);
        appendAttribute(DESCRIPTION, part.helpText, text);
        appendAttribute(REQUIRED, truthWord(part.required), text);
        appendAttribute(VALUE, part.valueText, text);
        appendAttribute(VALUE_REQUIRED, truthWord(part.valueRequired), text);
        text += "/>\n";
    }
    if (!parts.empty()) text += "\t\t";
    append(text, "</", listTag, ">\n");
}

/// Leaves the list's closing brace to the caller.
void listToJson(const char* listTag, const std::vector<CommandPart>& parts, std::string& text) {
    // Intended: the members of an entry are indented no deeper than the entry.
    constexpr const char* OPENING = "\t\t\t\"";
    append(text, "\t\t\"", listTag, "\": {\n");
    for (const CommandPart& part : parts) {
        append(text, OPENING, toApostrophes(part.name), "\": {\n");
        append(text, OPENING, DESCRIPTION, "\":\"", toApostrophes(part.helpText), "\",\n");
        append(text, OPENING, REQUIRED, "\":", lowerTruthWord(part.required), ",\n");
        append(text, OPENING, VALUE, "\":\"", toApostrophes(part.valueText), "\",\n");
        append(text, OPENING, VALUE_REQUIRED, "\":", lowerTruthWord(part.valueRequired), "\n");
        append(text, "\t\t\t}", &part == &parts.back() ? "\n" : ",\n");
    }
}

void listToCsv(const char* listTag, const std::vector<CommandPart>& parts, std::string& text) {
    append(text, listTag, ",\n");
    for (const CommandPart& part : parts) {
        append(text, part.name, ",\n");
        append(text, DESCRIPTION, ",", part.helpText, ",\n");
        append(text, REQUIRED, ",", lowerTruthWord(part.required), ",\n");
        append(text, VALUE, ",", part.valueText, ",\n");
        append(text, VALUE_REQUIRED, ",", lowerTruthWord(part.valueRequired), ",\n");
    }
}

}  // namespace

std::string HelpResult::outputText() const {
    if (commands.empty()) return std::string(NO_COMMANDS) + "\n";
    return commands.size() == 1 ? fullPage() : usageList();
}

std::string HelpResult::outputXml() const {
    std::string text;
    append(text, "<", HELP, ">");
    if (!commands.empty()) text += '\n';
    for (const CommandSpec& command : commands) {
        append(text, "\t<", COMMAND, " ", NAME, "=\"", command.name, "\">\n");
        append(text, "\t\t<", DESCRIPTION, ">", command.helpText, "</", DESCRIPTION, ">\n");
        append(text, "\t\t<", VERB, ">", command.verb, "</", VERB, ">\n");
        listToXml(OPTIONS, OPTION, command.options, text);
        listToXml(TARGETS, TARGET, command.targets, text);
        listToXml(PROPERTIES, PROPERTY, command.properties, text);
        append(text, "\t</", COMMAND, ">\n");
    }
    append(text, "</", HELP, ">\n");
    return text;
}

std::string HelpResult::outputEsxXml() const {
    return {};
}

std::string HelpResult::outputJson() const {
    std::string text = "{\n";
    for (const CommandSpec& command : commands) {
        append(text, "\t\"", command.name, "\": {\n");
        append(text, "\t\t\"", DESCRIPTION, "\":\"", command.helpText, "\",\n");
        append(text, "\t\t\"", VERB, "\":\"", command.verb, "\",\n");
        listToJson(OPTIONS, command.options, text);
        text += "\t\t},\n";
        listToJson(TARGETS, command.targets, text);
        text += "\t\t},\n";
        listToJson(PROPERTIES, command.properties, text);
        text += "\t\t}\n";
        append(text, "\t}", &command == &commands.back() ? "\n" : ",\n");
    }
    text += "}\n";
    return text;
}

std::string HelpResult::outputCSV() const {
    std::string text;
    for (const CommandSpec& command : commands) {
        append(text, command.name, ",\n");
        append(text, DESCRIPTION, ",", command.helpText, ",\n");
        append(text, VERB, ",", command.verb, ",\n");
        listToCsv(OPTIONS, command.options, text);
        text += ",\n";
        listToCsv(TARGETS, command.targets, text);
        text += ",\n";
        listToCsv(PROPERTIES, command.properties, text);
        text += ",\n";
    }
    return text;
}

void HelpResult::push_back(CommandSpec spec) {
    commands.push_back(std::move(spec));
}

std::string HelpResult::fullPage() const {
    const CommandSpec& command = commands.front();
    const std::size_t width = wrapWidth();
    std::string text;
    append(text, NAME, ": ", command.name, "\n");
    append(text, DESCRIPTION, ":\n");
    wrapText(INDENT, width, command.helpText, text);
    append(text, SYNOPSIS, ":\n");
    wrapText(INDENT, width, command.asStr(), text);
    append(text, VERB, ":\n    ", command.verb, "\n");
    append(text, OPTIONS, ":\n");
    listToString(command.options, false, INDENT, width, text);
    append(text, TARGETS, ":\n");
    listToString(command.targets, false, INDENT, width, text);
    append(text, PROPERTIES, ":\n");
    listToString(command.properties, true, INDENT, width, text);
    return text;
}

std::string HelpResult::usageList() const {
    const std::size_t width = wrapWidth();
    std::string text;
    append(text, USAGE, ":  ", Framework::getInstance().programName, " ", USAGE_PATTERN, "\n\n");
    append(text, COMMANDS, ": \n");
    for (const CommandSpec& command : commands) {
        append(text, command.name, ":\n");
        wrapText(INDENT, width, command.asStr(), text);
    }
    return text;
}

void HelpResult::wrapText(std::size_t indent, std::size_t width, std::string_view words,
                          std::string& text) const {
    if (!shouldWrap || width == 0) {
        text += words;
        return;
    }
    for (std::size_t position = 0; position < words.size();) {
        const std::string_view line = wrapLine(words.substr(position), width);
        text.append(std::max<std::size_t>(indent, 1), ' ');
        append(text, line, "\n");
        // Intended: the blank at the break is dropped, and where there is none, the byte.
        position += line.size() + 1;
    }
}

void HelpResult::listToString(const std::vector<CommandPart>& parts, bool isProperty,
                              std::size_t indent, std::size_t width, std::string& text) const {
    for (const CommandPart& part : parts) {
        wrapText(indent, width, partToString(part, isProperty), text);
    }
}

}  // namespace cli::framework
