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
        CommandSpec::appendPart(text, part, isProperty);
        text += ' ';
    }
}

}  // namespace

CommandSpec::CommandSpec(std::int32_t id, std::string name, std::string verb, std::string helpText)
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

CommandPart& CommandSpec::addOption(std::string partName, bool required, std::string valueText,
                                    bool valueRequired, std::string partHelp,
                                    std::string shortName) {
    return addPart(options, {std::move(partName), required, std::move(valueText), valueRequired,
                             std::move(partHelp), std::move(shortName)});
}

CommandPart& CommandSpec::addTarget(std::string partName, bool required, std::string valueText,
                                    bool valueRequired, std::string partHelp) {
    return addPart(targets, {std::move(partName),
                             required,
                             std::move(valueText),
                             valueRequired,
                             std::move(partHelp),
                             {}});
}

CommandPart& CommandSpec::addProperty(std::string partName, bool required, std::string valueText,
                                      bool valueRequired, std::string partHelp) {
    return addPart(properties, {std::move(partName),
                                required,
                                std::move(valueText),
                                valueRequired,
                                std::move(partHelp),
                                {}});
}

void CommandSpec::appendPart(std::string& text, const CommandPart& part, bool isProperty) {
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
}

const std::vector<CommandPart>* CommandSpec::partsOf(TokenType type) const {
    switch (type) {
    // clang-format off
    case TokenType::Option:   return &options;
    case TokenType::Target:   return &targets;
    case TokenType::Property: return &properties;
    default:                  return nullptr;
        // clang-format on
    }
}

std::vector<CommandPart>* CommandSpec::partsOf(TokenType type) {
    return const_cast<std::vector<CommandPart>*>(std::as_const(*this).partsOf(type));
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
