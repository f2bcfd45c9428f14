#include "interfaces/cli/cliframework/ObjectListResult.h"

#include "interfaces/cli/cliframework/ResultText.h"

#include <algorithm>
#include <utility>

namespace cli::framework {

namespace {

constexpr const char* LIST_SUFFIX = "List";

/// Appends one cell of the table, left-justified, and the blank behind it.
void appendCell(const std::string& cell, std::size_t width, std::string& text) {
    text += cell;
    if (cell.size() < width) text.append(width - cell.size(), ' ');
    text += ' ';
}

}  // namespace

std::string ObjectListResult::outputText() const {
    if (entries.empty()) return NO_RESULTS_TEXT;
    std::string text;
    for (const auto& [key, list] : entries) {
        append(text, "- ", key, " -\n", list.output(), "\n");
    }
    return text;
}

std::string ObjectListResult::outputXml() const {
    std::string text;
    append(text, "<", root, LIST_SUFFIX, ">");
    if (!entries.empty()) text += '\n';
    for (const Entry& entry : entries) {
        text += entry.second.outputXml();
    }
    append(text, "</", root, LIST_SUFFIX, ">\n");
    return text;
}

std::string ObjectListResult::outputEsxXml() const {
    if (entries.size() == 1) return entries.front().second.outputEsxXml();
    std::string text;
    append(text, ESX_HEAD, ESX_LIST_OF_STRUCTURES);
    for (const Entry& entry : entries) {
        const PropertyListResult& list = entry.second;
        appendFormat(text, ESX_STRUCTURE_FORMAT, root);
        for (auto property = list.propertiesBegin(); property != list.propertiesEnd(); ++property) {
            appendFormat(text, ESX_FIELD_FORMAT, property->first);
            append(text, ESX_STRING, property->second->output(), ESX_STRING_END, ESX_FIELD_END);
        }
        append(text, ESX_STRUCTURE_END);
    }
    append(text, ESX_LIST_END, ESX_END);
    return text;
}

std::string ObjectListResult::outputTextTable() const {
    if (entries.empty()) return NO_RESULTS_TEXT;
    std::string text;
    const std::vector<std::size_t> widths = columnWidths();
    const PropertyListResult& first = entries.front().second;
    auto width = widths.begin();
    for (auto property = first.propertiesBegin(); property != first.propertiesEnd(); ++property) {
        appendCell(property->first, *width++, text);
    }
    text += '\n';
    for (const Entry& entry : entries) {
        const PropertyListResult& list = entry.second;
        width = widths.begin();
        for (auto property = list.propertiesBegin(); property != list.propertiesEnd(); ++property) {
            // Columns beyond those of the first entry have no width.
            appendCell(property->second->output(), width == widths.end() ? 0 : *width++, text);
        }
        text += '\n';
    }
    return text;
}

std::string ObjectListResult::outputJson() const {
    std::string text = "{\n";
    for (const Entry& entry : entries) {
        append(text, "\t\"", entry.first, "\":\n", entry.second.outputJson());
        if (&entry != &entries.back()) text += ',';
        text += '\n';
    }
    text += "}\n";
    return text;
}

std::string ObjectListResult::outputCSV() const {
    std::string text;
    for (const auto& [key, list] : entries) {
        append(text, key, ",\n", list.outputCSV(), ",\n");
    }
    return text;
}

void ObjectListResult::setRoot(std::string name) {
    root = std::move(name);
}

void ObjectListResult::insert(const std::string& key, PropertyListResult& list) {
    list.setName(key);
    entries.emplace_back(key, list);
}

std::vector<std::size_t> ObjectListResult::columnWidths() const {
    std::vector<std::size_t> widths;
    const PropertyListResult& first = entries.front().second;
    for (auto property = first.propertiesBegin(); property != first.propertiesEnd(); ++property) {
        const std::string& name = property->first;
        std::size_t width = name.size();
        for (const Entry& entry : entries) {
            width = std::max(width, entry.second[name].size());
        }
        widths.push_back(width);
    }
    return widths;
}

}  // namespace cli::framework
