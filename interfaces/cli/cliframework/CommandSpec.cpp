#include "interfaces/cli/cliframework/CommandSpec.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace cli::framework {

namespace {

/// Room for the text form of most commands.
constexpr std::size_t USUAL_LENGTH = 256;

CommandPart* findPart(std::vector<CommandPart>& list, std::string_view name) {
    const auto held = std::find_if(
        list.begin(), list.end(), [&name](const CommandPart& entry) { return entry.name == name; });
    return held != list.end() ? &*held : nullptr;
}

/// Appends each part followed by one blank.
void appendList(std::string& text, const std::vector<CommandPart>& list, bool isProperty) {
    for (const CommandPart& part : list) {
        if (!part.required) text += '[';
        text += part.name;
        if (!part.shortName.empty()) {
            text += '|';
            text += part.shortName;
        }
        if (!part.valueText.empty()) {
            text += isProperty ? " = " : " ";
            text += part.valueRequired ? "(" : "[(";
            text += part.valueText;
            text += part.valueRequired ? ")" : ")]";
        }
        if (!part.required) text += ']';
        text += ' ';
    }
}

}  // namespace

CommandSpec::CommandSpec(std::int32_t id, Text name, Text verb, Text helpText)
    : id(id),
      name(std::move(name)),
      verb(std::move(verb)),
      helpText(std::move(helpText)) {}

CommandPart& CommandSpec::addPart(std::vector<CommandPart>& list, const CommandPart& part) {
    if (CommandPart* const held = findPart(list, part.name)) return *held;
    return list.emplace_back(part);
}

CommandPart& CommandSpec::addPart(std::vector<CommandPart>& list, CommandPart&& part) {
    if (CommandPart* const held = findPart(list, part.name)) return *held;
    return list.emplace_back(std::move(part));
}

CommandPart& CommandSpec::addOption(const CommandPart& part) {
    return addPart(options, part);
}

CommandPart& CommandSpec::addTarget(const CommandPart& part) {
    return addPart(targets, part);
}

CommandPart& CommandSpec::addProperty(const CommandPart& part) {
    return addPart(properties, part);
}

CommandPart& CommandSpec::addOption(Text partName, bool required, Text valueText,
                                    bool valueRequired, Text partHelp, Text shortName) {
    return addPart(options, {std::move(partName), required, std::move(valueText), valueRequired,
                             std::move(partHelp), std::move(shortName)});
}

CommandPart& CommandSpec::addTarget(Text partName, bool required, Text valueText,
                                    bool valueRequired, Text partHelp) {
    return addPart(targets, {std::move(partName),
                             required,
                             std::move(valueText),
                             valueRequired,
                             std::move(partHelp),
                             {}});
}

CommandPart& CommandSpec::addProperty(Text partName, bool required, Text valueText,
                                      bool valueRequired, Text partHelp) {
    return addPart(properties, {std::move(partName),
                                required,
                                std::move(valueText),
                                valueRequired,
                                std::move(partHelp),
                                {}});
}

std::string CommandSpec::listToString(const std::vector<CommandPart>& list, bool isProperty) {
    std::string text;
    appendList(text, list, isProperty);
    return text;
}

std::string CommandSpec::asStr() const {
    std::string text;
    text.reserve(USUAL_LENGTH);
    text += verb;
    text += ' ';
    appendList(text, options, false);
    appendList(text, targets, false);
    appendList(text, properties, true);
    // As `trim`, which does not take the blank text of a spec without a verb and parts.
    text.resize(text.find_last_not_of(" \t") + 1);
    text.erase(0, text.find_first_not_of(" \t"));
    return text;
}

}  // namespace cli::framework
