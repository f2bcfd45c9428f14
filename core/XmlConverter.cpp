#include "core/XmlConverter.h"

#include "core/AttributeTypes.h"
#include "core/GlobalLogging.h"
#include "core/Strings.h"
#include "core/XmlDepth.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlMessage.h"

#include <boost/algorithm/string/erase.hpp>
#include <boost/interprocess/streams/bufferstream.hpp>
#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <cstdint>
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
    boost::property_tree::read_xml(stream, tree, boost::property_tree::xml_parser::trim_whitespace);
    return tree;
}

void takeAttributes(ptree& node, xml::XmlElement& element) {
    const auto found = node.find(ATTRIBUTES);
    if (found == node.not_found()) return;
    xml::XmlElement::Attributes::sequence_type rows;
    rows.reserve(found->second.size());
    for (auto& [key, value] : found->second)
        rows.emplace_back(key, std::move(value.data()));
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
    global_logging::writePlain(boost::log::trivial::error, std::string("toXml(") + __FILE__ + ") " +
                                                               std::to_string(line) + ": " +
                                                               reason);
}

/// How a value's text becomes its bytes.
using Reader = void (*)(const std::string& text, Attribute& attribute);

void readBoolean(const std::string& text, Attribute& attribute) {
    attribute.setValue(strings::toBool(text));
}

template <class Integer>
void readInteger(const std::string& text, Attribute& attribute) {
    attribute.setValue(static_cast<Integer>(strings::toInteger(text)));
}

void readText(const std::string& text, Attribute& attribute) {
    attribute.setValue(text);
}

void readDigits(const std::string& text, Attribute& attribute) {
    attribute.setValue(strings::hexToBytes(text));
}

void readHexValue(const std::string& text, Attribute& attribute) {
    readDigits(boost::algorithm::erase_all_copy(text, "0x"), attribute);
}

struct ReaderRow {
    std::string (*type)();
    Reader read;
};

// Intended: "sint8", "ulong" and "vectorOfPayloads" are written but never read.
// clang-format off
constexpr ReaderRow READERS[] = {
//   type                     read
    {&types::boolean,         &readBoolean},
    {&types::sint16,          &readInteger<std::int16_t>},
    {&types::sint32,          &readInteger<std::int32_t>},
    {&types::sint64,          &readInteger<std::int64_t>},
    {&types::string,          &readText},
    {&types::uint8,           &readInteger<std::uint8_t>},
    {&types::uint16,          &readInteger<std::uint16_t>},
    {&types::uint32,          &readInteger<std::uint32_t>},
    {&types::uint64,          &readInteger<std::uint64_t>},
    {&types::bytepointer,     &readDigits},
    {&types::list_uint64,     &readDigits},
    {&types::vectorOfStrings, &readText},
    {&types::hexValue,        &readHexValue},
};

// clang-format on

Reader findReader(const std::string& type) {
    for (const ReaderRow& row : READERS) {
        if (row.type() == type) return row.read;
    }
    return nullptr;
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

std::unique_ptr<xml::XmlProperty> XmlConverter::toXml(const Attribute& attribute) {
    auto property = std::make_unique<xml::XmlProperty>();
    property->setAttribute(xml::tags::Category, xml::categories::Attribute);
    property->setAttribute(xml::tags::Type, attribute.getType());
    if (!attribute.getDescription().empty()) {
        property->setAttribute(xml::tags::Description, attribute.getDescription());
    }
    property->setAttribute(xml::tags::DisplayName, attribute.getDisplayName());
    property->setAttribute(xml::tags::Name, attribute.getName());
    property->setAttribute(xml::tags::Value, attribute.valueAsString());
    property->setAttribute(xml::tags::Size, strings::toString(attribute.getPayload().size()));
    return property;
}

std::unique_ptr<xml::XmlProperty> XmlConverter::toXml(const Payload& payload) {
    auto property = std::make_unique<xml::XmlProperty>();
    property->setAttribute(xml::tags::Category, xml::categories::Payload);
    property->setAttribute(xml::tags::Type, types::bytepointer());
    property->setAttribute(xml::tags::DisplayName, "payload");
    property->setAttribute(xml::tags::Name, "payload");
    property->setAttribute(xml::tags::Value, strings::bytesToHex(payload));
    property->setAttribute(xml::tags::Size, strings::toString(payload.size()));
    return property;
}

std::unique_ptr<xml::XmlObject> XmlConverter::toXml(const Status& status) {
    auto object = std::make_unique<xml::XmlObject>();
    object->setAttribute(xml::tags::Category, xml::categories::Status);
    object->addValue("Category", strings::toString(status.getCategory()));
    object->addValue("Code", strings::toString(status.getCode()));
    object->addValue("Message", status.getMessage());
    return object;
}

std::unique_ptr<xml::XmlObject> XmlConverter::toXml(const AttributeTable& attributes) {
    auto object = std::make_unique<xml::XmlObject>();
    object->setAttribute(xml::tags::Category, xml::categories::AttributeList);
    for (const Attribute& attribute : attributes)
        object->addProperty(toXml(attribute));
    return object;
}

std::optional<Attribute> XmlConverter::toAttribute(const xml::XmlProperty& property) {
    const std::string type = property.getAttribute(xml::tags::Type);
    const Reader read = findReader(type);
    if (read == nullptr) return std::nullopt;

    Attribute attribute(property.getAttribute(xml::tags::Name),
                        property.getAttribute(xml::tags::DisplayName), type);
    attribute.setDescription(property.getAttribute(xml::tags::Description));
    read(property.getAttribute(xml::tags::Value), attribute);
    return attribute;
}

AttributeTable XmlConverter::toAttributes(const xml::XmlObject& object) {
    AttributeTable attributes;
    for (const auto& property : object.getProperties()) {
        if (auto attribute = toAttribute(*property)) attributes.set(*std::move(attribute));
    }
    return attributes;
}

}  // namespace orvel::core
