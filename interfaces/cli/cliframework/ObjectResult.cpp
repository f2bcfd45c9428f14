#include "interfaces/cli/cliframework/ObjectResult.h"

#include "interfaces/cli/cliframework/ResultText.h"
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace cli::framework {

namespace {

std::string toPropertyTag(const std::string& name) {
    std::string tag = toTag(name);
    std::erase_if(tag, [](char character) { return character == '(' || character == ')'; });
    return tag;
}

/// The text of a cell, not copied if the cell is of the common kind; `holder` then stays unused.
std::string_view textOf(const ResultBase& cell, std::string& holder) {
    if (typeid(cell) == typeid(SimpleResult) && cell.getOutputType() == OutputType::text) {
        return static_cast<const SimpleResult&>(cell).getText();
    }
    holder = cell.output();
    return holder;
}

void indent() {
    ObjectResult::tab += '\t';
}

void unindent() {
    const auto last = ObjectResult::tab.find_last_of('\t');
    if (last != std::string::npos) ObjectResult::tab.erase(last);
}

}  // namespace

std::string ObjectResult::tab;

ObjectResult::ObjectResult(std::string root) : root(std::move(root)) {}

std::string ObjectResult::outputText() const {
    std::string text;
    writeText(text);
    return text;
}

std::string ObjectResult::outputXml() const {
    std::string text;
    writeXml(text);
    return text;
}

std::string ObjectResult::outputEsxXml() const {
    return {};
}

std::string ObjectResult::outputJson() const {
    std::string text;
    writeJson(text);
    return text;
}

std::string ObjectResult::outputCSV() const {
    std::string text;
    writeCsv(text);
    return text;
}

void ObjectResult::OutputPropertyJson(const Properties& list, std::string_view prefix,
                                      std::string& stream) const {
    std::string holder;
    for (const Property& property : list) {
        append(stream, "\t", tab, prefix, "\"", property.first, "\":");
        appendJsonValue(stream, textOf(*property.second, holder));
        const bool isLast = &property == &list.back();
        if (!isLast || !children.empty()) stream += ',';
        stream += '\n';
    }
}

void ObjectResult::setRoot(std::string name) {
    root = std::move(name);
}

void ObjectResult::reserve(std::size_t propertyCount, std::size_t childCount) {
    properties.reserve(propertyCount);
    children.reserve(childCount);
}

void ObjectResult::appendChild(const std::string& key, std::unique_ptr<ObjectResult> child) {
    child->setRoot(key);
    children.push_back(std::move(child));
}

void ObjectResult::insert(std::string key, std::string value) {
    insert(std::move(key), std::make_unique<SimpleResult>(std::move(value)));
}

void ObjectResult::insert(std::string key, std::unique_ptr<ResultBase> cell) {
    properties.emplace_back(std::move(key), std::move(cell));
}

bool ObjectResult::contains(std::string_view key) const {
    return std::any_of(properties.begin(), properties.end(), [key](const Property& property) {
        return stringsIEqual(property.first, key);
    });
}

void ObjectResult::writeChild(const ObjectResult& child, Writer writer, Operation operation,
                              std::string& text) {
    // Through the operation, each level would copy the text of all levels below it. A derived
    // class may have put something else in the operation's place, though.
    if (typeid(child) == typeid(ObjectResult)) {
        (child.*writer)(text);
    } else {
        text += (child.*operation)();
    }
}

void ObjectResult::writeText(std::string& text) const {
    if (!root.empty()) append(text, "\n- ", root, " -\n");
    if (!properties.empty()) text += '\n';
    std::string holder;
    for (const auto& [name, cell] : properties) {
        append(text, name, " : ", textOf(*cell, holder), "\n");
    }
    for (const auto& child : children) {
        writeChild(*child, &ObjectResult::writeText, &ObjectResult::outputText, text);
    }
    if (properties.empty() && children.empty()) append(text, "\n", NO_RESULTS_TEXT, "\n");
}

void ObjectResult::writeXml(std::string& text) const {
    const std::string tag = toTag(root);
    append(text, tab, "<", tag, ">");
    std::string holder;
    for (const auto& [name, cell] : properties) {
        const std::string propertyTag = toPropertyTag(name);
        append(text, "\n", tab, "\t<", propertyTag, ">", textOf(*cell, holder), "</", propertyTag,
               ">");
    }
    if (!properties.empty()) text += '\n';
    if (!children.empty()) {
        indent();
        // Intended: behind properties, this makes an empty line before the first child.
        text += '\n';
        for (const auto& child : children) {
            writeChild(*child, &ObjectResult::writeXml, &ObjectResult::outputXml, text);
        }
        unindent();
    }
    if (properties.empty() && children.empty()) text += '\n';
    append(text, tab, "</", tag, ">\n");
}

void ObjectResult::writeJson(std::string& text) const {
    append(text, tab, "{\n");
    OutputPropertyJson(properties, "", text);
    if (!children.empty()) {
        indent();
        for (const auto& child : children) {
            append(text, tab, "\"", child->root, "\":\n");
            writeChild(*child, &ObjectResult::writeJson, &ObjectResult::outputJson, text);
            if (child != children.back()) text += ',';
            text += '\n';
        }
        unindent();
    }
    append(text, tab, "}");
}

void ObjectResult::writeCsv(std::string& text) const {
    std::string holder;
    for (const auto& [name, cell] : properties) {
        append(text, name, ",", textOf(*cell, holder), ",");
    }
    for (const auto& child : children) {
        append(text, child->root, ",\n");
        writeChild(*child, &ObjectResult::writeCsv, &ObjectResult::outputCSV, text);
        text += ",\n";
    }
}

}  // namespace cli::framework
