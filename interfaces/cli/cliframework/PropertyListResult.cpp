#include "interfaces/cli/cliframework/PropertyListResult.h"

#include "interfaces/cli/cliframework/ResultText.h"
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <algorithm>
#include <utility>

namespace cli::framework {

namespace {

PropertyListResult::Properties::const_iterator
findProperty(const PropertyListResult::Properties& properties, std::string_view key) {
    return std::find_if(properties.begin(), properties.end(),
                        [key](const PropertyListResult::Property& property) {
                            return stringsIEqual(property.first, key);
                        });
}

}  // namespace

std::string PropertyListResult::outputText() const {
    if (properties.empty()) return std::string(NO_RESULTS_TEXT) + "\n";
    std::string text;
    for (const auto& [name, cell] : properties) {
        append(text, name, ": ", cell->output(), "\n");
    }
    return text;
}

std::string PropertyListResult::outputXml() const {
    const std::string tag = toTag(root);
    std::string text;
    append(text, "<", tag, ">");
    if (!properties.empty()) text += '\n';
    for (const auto& [name, cell] : properties) {
        // Intended: brackets stay in the tag, unlike in an object result.
        const std::string propertyTag = toTag(name);
        append(text, "\t<", propertyTag, ">", cell->output(), "</", propertyTag, ">\n");
    }
    append(text, "</", tag, ">\n");
    return text;
}

std::string PropertyListResult::outputEsxXml() const {
    std::string text;
    append(text, ESX_HEAD, ESX_LIST_OF_STRUCTURES);
    for (const auto& [name, cell] : properties) {
        append(text, ESX_KEY_VALUE);
        append(text, ESX_FIELD_NAME, ESX_STRING, name, ESX_STRING_END, ESX_FIELD_END);
        append(text, ESX_FIELD_VALUE, ESX_STRING, cell->output(), ESX_STRING_END, ESX_FIELD_END);
        append(text, ESX_STRUCTURE_END);
    }
    append(text, ESX_LIST_END, ESX_END);
    return text;
}

std::string PropertyListResult::outputJson() const {
    std::string text = "\t{\n";
    for (const Property& property : properties) {
        append(text, "\t\t\"", property.first, "\":");
        appendJsonValue(text, property.second->output());
        if (&property != &properties.back()) text += ',';
        text += '\n';
    }
    text += "\t}";
    return text;
}

std::string PropertyListResult::outputCSV() const {
    std::string text;
    for (const auto& [name, cell] : properties) {
        append(text, name, ",", cell->output(), ",");
    }
    return text;
}

void PropertyListResult::setName(std::string name) {
    root = std::move(name);
}

void PropertyListResult::insert(std::string key, std::string value) {
    insert(std::move(key), std::make_shared<SimpleResult>(std::move(value)));
}

void PropertyListResult::insert(std::string key, std::shared_ptr<const ResultBase> cell) {
    properties.emplace_back(std::move(key), std::move(cell));
}

bool PropertyListResult::contains(std::string_view key) const {
    return findProperty(properties, key) != properties.end();
}

std::string PropertyListResult::operator[](std::string_view key) const {
    const auto property = findProperty(properties, key);
    return property == properties.end() ? std::string() : property->second->output();
}

}  // namespace cli::framework
