#include "interfaces/cli/cliframework/CommandSpec.h"

#include <algorithm>
#include <utility>

namespace cli::framework {

CommandSpec::CommandSpec(std::int32_t id, std::string name, std::string verb, std::string helpText)
    : id(id),
      name(std::move(name)),
      verb(std::move(verb)),
      helpText(std::move(helpText)) {}

CommandPart& CommandSpec::addPart(std::vector<CommandPart>& list, const CommandPart& part) {
    const auto held = std::find_if(list.begin(), list.end(), [&part](const CommandPart& entry) {
        return entry.name == part.name;
    });
    if (held != list.end()) return *held;
    return list.emplace_back(part);
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

CommandPart& CommandSpec::addOption(const std::string& partName, bool required,
                                    const std::string& valueText, bool valueRequired,
                                    const std::string& partHelp, const std::string& shortName) {
    return addOption({partName, required, valueText, valueRequired, partHelp, shortName});
}

CommandPart& CommandSpec::addTarget(const std::string& partName, bool required,
                                    const std::string& valueText, bool valueRequired,
                                    const std::string& partHelp) {
    return addTarget({partName, required, valueText, valueRequired, partHelp, ""});
}

CommandPart& CommandSpec::addProperty(const std::string& partName, bool required,
                                      const std::string& valueText, bool valueRequired,
                                      const std::string& partHelp) {
    return addProperty({partName, required, valueText, valueRequired, partHelp, ""});
}

std::string CommandSpec::listToString(const std::vector<CommandPart>& list, bool isProperty) {
    std::string text;
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
    return text;
}

std::string CommandSpec::asStr() const {
    std::string text = verb;
    text += ' ';
    text += listToString(options, false);
    text += listToString(targets, false);
    text += listToString(properties, true);
    // A spec without a verb and parts is blank, which `trim` does not take.
    return isBlank(text) ? std::string() : trim(text);
}

}  // namespace cli::framework
