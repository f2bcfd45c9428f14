#include "core/XmlConverter.h"

#include "core/GlobalLogging.h"
#include "core/XmlDepth.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlMessage.h"

#include <boost/interprocess/streams/bufferstream.hpp>
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <exception>
#include <utility>

namespace orvel::core {

namespace {

using boost::property_tree::ptree;

constexpr const char* ATTRIBUTES = "<xmlattr>";
constexpr const char* NOT_CONVERTED = "Unable to convert the given xml string to an XmlElement";

/// The reader's tree. Reading alone decides the peak of memory: the stream looks at the text in
/// place, and the conversion below frees the tree as it goes.
ptree readTree(const std::string& text) {
    boost::interprocess::ibufferstream stream(text.data(), text.size());
    ptree tree;
    boost::property_tree::read_xml(stream, tree,
                                   boost::property_tree::xml_parser::trim_whitespace);
    return tree;
}

void takeAttributes(ptree& node, xml::XmlElement& element) {
    const auto found = node.find(ATTRIBUTES);
    if (found == node.not_found()) return;
    xml::XmlElement::Attributes::sequence_type rows;
    rows.reserve(found->second.size());
    for (auto& [key, value] : found->second) rows.emplace_back(key, std::move(value.data()));
    element.setAttributes(std::move(rows));
    found->second.clear();
}

template <class Element>
std::unique_ptr<Element> convert(ptree& node);

// Every child is freed as soon as it is converted. A name that the class doesn't know is dropped
// without a word, and so are the reader's pseudo-children: attributes, comments and text.

void takeChildren(ptree& node, xml::XmlContainer& container) {
    for (auto& [name, child] : node) {
        if (name == xml::XmlList::_type) {
            container.addList(convert<xml::XmlList>(child));
        } else if (name == xml::XmlObject::_type) {
            container.addObject(convert<xml::XmlObject>(child));
        } else if (name == xml::XmlProperty::_type) {
            container.addProperty(convert<xml::XmlProperty>(child));
        }
    }
}

void takeChildren(ptree& node, xml::XmlList& list) {
    for (auto& [name, child] : node) {
        if (name == xml::XmlObject::_type) list.addObject(convert<xml::XmlObject>(child));
    }
}

void takeChildren(ptree&, xml::XmlProperty&) {}

template <class Element>
std::unique_ptr<Element> convert(ptree& node) {
    auto element = std::make_unique<Element>();
    takeAttributes(node, *element);
    takeChildren(node, *element);
    node.clear();
    return element;
}

std::unique_ptr<xml::XmlElement> convertRoot(const std::string& name, ptree& node) {
    if (name == xml::XmlMessage::_type) return convert<xml::XmlMessage>(node);
    if (name == xml::XmlList::_type) return convert<xml::XmlList>(node);
    if (name == xml::XmlObject::_type) return convert<xml::XmlObject>(node);
    if (name == xml::XmlProperty::_type) return convert<xml::XmlProperty>(node);
    return nullptr;
}

/// Null for text that gives no element.
std::unique_ptr<xml::XmlElement> readElement(const std::string& text) {
    if (xmlDepth(text) > XmlConverter::MAX_DEPTH) return nullptr;
    ptree tree = readTree(text);
    if (tree.empty()) return nullptr;
    auto& [name, node] = tree.front();
    return convertRoot(name, node);
}

void logFailure(int line, const std::string& reason) {
    global_logging::writePlain(boost::log::trivial::error,
                               std::string("toXml(") + __FILE__ + ") " + std::to_string(line) +
                                   ": " + reason);
}

}  // namespace

std::unique_ptr<xml::XmlElement> XmlConverter::toXml(const std::string& text) {
    try {
        if (auto element = readElement(text)) return element;
        logFailure(__LINE__, NOT_CONVERTED);
    } catch (const std::exception& exception) {
        logFailure(__LINE__, exception.what());
    }
    return nullptr;
}

}  // namespace orvel::core
