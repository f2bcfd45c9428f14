// The text of an XML message to a tree and back, held against a plain model of the tree. So that
// short inputs can nest deeply, the byte 1 stands for 256 opening tags and the byte 2 for as many
// closing ones.

#include "core/XmlConverter.h"
#include "core/XmlDepth.h"
#include "core/xml/XmlContainer.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlObject.h"
#include "core/xml/XmlProperty.h"
#include "fuzz/FuzzSupport.h"

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using orvel::core::XmlConverter;
namespace fuzz = tavik::fuzz;
namespace xml = orvel::core::xml;

constexpr std::string_view DECLARATION = R"(<?xml version="1.0" encoding="utf-8"?>)";

std::string expand(std::string_view input) {
    constexpr int LEVELS = 256;
    constexpr int MOST_EXPANSIONS = 32;  // twice what the deepest allowed text takes
    int expansions = 0;
    std::string text;
    for (const char character : input) {
        if ((character != '\1' && character != '\2') || expansions == MOST_EXPANSIONS) {
            text += character;
            continue;
        }
        ++expansions;
        for (int level = 0; level < LEVELS; ++level)
            text += character == '\1' ? "<Object>" : "</Object>";
    }
    return text;
}

/// An element as the protocol has it, written for being easy to read.
struct Node {
    std::string type;
    std::map<std::string, std::string> attributes;
    std::vector<Node> properties;
    std::vector<Node> lists;
    std::vector<Node> objects;
};

Node modelOf(const xml::XmlElement& element) {
    Node node;
    node.type = element.getType();
    node.attributes.insert(element.getAttributes().begin(), element.getAttributes().end());
    if (const auto* container = dynamic_cast<const xml::XmlContainer*>(&element)) {
        for (const auto& property : container->getProperties())
            node.properties.push_back(modelOf(*property));
        for (const auto& list : container->getLists())
            node.lists.push_back(modelOf(*list));
        for (const auto& object : container->getObjects())
            node.objects.push_back(modelOf(*object));
    } else if (const auto* list = dynamic_cast<const xml::XmlList*>(&element)) {
        for (const auto& object : list->getObjects())
            node.objects.push_back(modelOf(*object));
    }
    return node;
}

void visit(const Node& node, const auto& visitor) {
    visitor(node);
    for (const auto* children : {&node.properties, &node.lists, &node.objects})
        for (const Node& child : *children)
            visit(child, visitor);
}

std::size_t depthOf(const Node& node) {
    std::size_t deepest = 0;
    for (const auto* children : {&node.properties, &node.lists, &node.objects})
        for (const Node& child : *children)
            deepest = std::max(deepest, depthOf(child));
    return deepest + 1;
}

std::size_t sizeOf(const Node& node) {
    std::size_t size = 0;
    visit(node, [&size](const Node& /*each*/) { ++size; });
    return size;
}

std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    while (true) {
        const std::size_t at = text.find(from);
        result += text.substr(0, at);
        if (at == std::string_view::npos) return result;
        result += to;
        text.remove_prefix(at + from.size());
    }
}

std::string escaped(std::string value) {
    value = replaced(value, "<", "&lt;");
    value = replaced(value, ">", "&gt;");
    value = replaced(value, "&", "&amp;");
    value = replaced(value, "\"", "&quot;");
    return replaced(value, "'", "&apos;");
}

void write(const Node& node, std::string& text) {
    text += "<" + node.type;
    for (const auto& [key, value] : node.attributes)
        text += " " + key + "=\"" + escaped(value) + "\"";
    if (node.type == "Property") {
        text += "/>";
        return;
    }
    text += ">";
    for (const auto* children : {&node.properties, &node.lists, &node.objects})
        for (const Node& child : *children)
            write(child, text);
    text += "</" + node.type + ">";
}

std::string written(const Node& node) {
    std::string text(DECLARATION);
    write(node, text);
    return text;
}

/// What one trip through text makes of a value: `<` and `>` are escaped twice and decoded once.
/// The next trip leaves it as it is.
void travel(Node& node) {
    for (auto& [key, value] : node.attributes)
        value = replaced(replaced(value, "<", "&lt;"), ">", "&gt;");
    for (auto* children : {&node.properties, &node.lists, &node.objects})
        for (Node& child : *children)
            travel(child);
}

void checkRoundTrip(const xml::XmlElement& element, const Node& model) {
    const std::string text = element.toString();
    fuzz::require(text == written(model), "an element writes what the model writes");
    const auto again = XmlConverter::toXml(text);
    if (text.find('\0') != std::string::npos) {
        fuzz::require(again == nullptr, "the reader takes a NUL byte for the end of the text");
        return;
    }
    fuzz::require(again != nullptr, "what was written can be read");
    fuzz::require(again->toString() == text, "a second trip writes the same text");
    Node travelled = model;
    travel(travelled);
    fuzz::require(written(modelOf(*again)) == written(travelled),
                  "a trip changes nothing but < and > in values");
}

void checkClone(const xml::XmlElement& element, const Node& model) {
    const auto copy = element.clone();
    fuzz::require(written(modelOf(*copy)) == written(model), "a clone is equal");
    copy->clearAttributes();
    fuzz::require(written(modelOf(element)) == written(model), "a clone stands for itself");
}

const std::string& attributeOf(const Node& node, const std::string& key) {
    static const std::string ABSENT;
    const auto attribute = node.attributes.find(key);
    return attribute == node.attributes.end() ? ABSENT : attribute->second;
}

void checkFind(const xml::XmlElement& element, const Node& model, const std::string& type,
               const std::string& key, const std::string& value, bool includeSelf) {
    std::vector<std::string> expected;
    visit(model, [&](const Node& node) {
        if (node.type != "Property" && !includeSelf) return;
        if (!type.empty() && node.type != type) return;
        if (!key.empty() && attributeOf(node, key) != value) return;
        expected.push_back(written(node));
    });
    std::vector<std::string> found;
    for (const auto& match : element.find(type, key, value, includeSelf))
        found.push_back(written(modelOf(*match)));

    // The model visits a container before its children as the elements do.
    fuzz::require(found == expected, "find gives copies of what matches, in order");
}

void checkFinds(const xml::XmlElement& element, const Node& model) {
    // Every match is a copy of a subtree: what nests deeply would cost its square.
    constexpr std::size_t MOST_ELEMENTS = 64;
    if (sizeOf(model) > MOST_ELEMENTS) return;
    std::string key;
    std::string value;
    visit(model, [&](const Node& node) {
        if (node.attributes.empty()) return;
        key = node.attributes.rbegin()->first;
        value = node.attributes.rbegin()->second;
    });
    for (const bool includeSelf : {false, true}) {
        for (const char* type : {"", "Object", "Property", "List", "Message"}) {
            checkFind(element, model, type, "", "", includeSelf);
            checkFind(element, model, type, key, value, includeSelf);
        }
        checkFind(element, model, "", key, "", includeSelf);
    }
}

void remove(Node& node, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        for (auto property = node.properties.begin(); property != node.properties.end();
             ++property) {
            if (attributeOf(*property, "name") != name) continue;
            node.properties.erase(property);
            break;
        }
    }
    for (Node& object : node.objects)
        remove(object, names);
}

void checkRemoval(const xml::XmlElement& element, Node model) {
    std::vector<std::string> names = {"VendorUniqueIdentifyPayload"};
    visit(model, [&names](const Node& node) {
        constexpr std::size_t MOST_NAMES = 8;
        if (node.type == "Property" && names.size() < MOST_NAMES)
            names.push_back(attributeOf(node, "name"));
    });
    const auto copy = element.clone();
    auto* const object = dynamic_cast<xml::XmlObject*>(copy.get());
    if (object == nullptr) return;
    object->removeProperties(names);
    remove(model, names);
    fuzz::require(written(modelOf(*object)) == written(model),
                  "the first property of each name is removed from each object");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text = expand(fuzz::textOf(data, size));
    const std::size_t depth = orvel::core::xmlDepth(text);
    const auto element = XmlConverter::toXml(text);
    if (element == nullptr) return 0;
    fuzz::require(depth <= XmlConverter::MAX_DEPTH, "what nests too deeply is not read");
    const Node model = modelOf(*element);
    fuzz::require(depthOf(model) <= depth, "the tree is no deeper than the text was told to be");
    checkRoundTrip(*element, model);
    checkClone(*element, model);
    checkFinds(*element, model);
    checkRemoval(*element, model);
    return 0;
}
