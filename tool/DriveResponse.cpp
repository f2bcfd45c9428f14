#include "tool/DriveResponse.h"

#include "core/Attribute.h"
#include "core/AttributeTable.h"
#include "core/Files.h"
#include "core/Payload.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlContainer.h"
#include "core/xml/XmlList.h"
#include "core/xml/XmlProperty.h"
#include "interfaces/cli/cliframework/SimpleResult.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace tavik::norvossd {

namespace {

using cli::framework::ErrorResult;
using cli::framework::ObjectResult;
using cli::framework::ResultBase;
using cli::framework::SimpleResult;
using cli::framework::stringsIEqual;
using orvel::core::Attribute;
using orvel::core::Payload;
using orvel::core::Status;
using orvel::core::XmlConverter;
namespace files = orvel::core::files;
namespace strings = orvel::core::strings;
namespace xml = orvel::core::xml;

/// Properties that no output shows.
const std::vector<std::string>& hiddenAttributes() {
    static const std::vector<std::string> NAMES = {"VendorUniqueIdentifyPayload"};
    return NAMES;
}

/// The attribute in place, or empty.
std::string_view attributeOf(const xml::XmlElement& element, std::string_view key) {
    const std::string* const value = element.findAttribute(key);
    return value != nullptr ? std::string_view(*value) : std::string_view();
}

bool hasCategory(const xml::XmlElement& element, std::string_view category) {
    return stringsIEqual(attributeOf(element, xml::tags::Category), category);
}

xml::XmlObject* firstOfCategory(const xml::XmlObject& parent, std::string_view category) {
    const auto& objects = parent.getObjects();
    const auto hit = std::find_if(objects.begin(), objects.end(), [category](const auto& object) {
        return hasCategory(*object, category);
    });
    return hit != objects.end() ? hit->get() : nullptr;
}

/// Adds the objects of category "status" in the subtree to `hits`, and stops at the second.
/// `XmlElement::find` would copy each with all that lies in it.
void findStatuses(const xml::XmlElement& element, std::vector<const xml::XmlObject*>& hits) {
    if (hits.size() > 1) return;
    if (const auto* const list = dynamic_cast<const xml::XmlList*>(&element)) {
        for (const auto& object : list->getObjects()) {
            findStatuses(*object, hits);
        }
        return;
    }
    const auto* const container = dynamic_cast<const xml::XmlContainer*>(&element);
    if (container == nullptr) return;
    const auto* const object = dynamic_cast<const xml::XmlObject*>(container);
    if (object != nullptr && attributeOf(*object, xml::tags::Category) == xml::categories::Status) {
        hits.push_back(object);
    }
    for (const auto& list : container->getLists()) {
        findStatuses(*list, hits);
    }
    for (const auto& child : container->getObjects()) {
        findStatuses(*child, hits);
    }
}

std::string doubleBackslashes(std::string text) {
    if (text.find('\\') == std::string::npos) return text;
    std::string doubled;
    doubled.reserve(text.size());
    for (const char character : text) {
        doubled += character;
        if (character == '\\') doubled += character;
    }
    return doubled;
}

/// Name and key with a blank between them.
std::string labelOf(const xml::XmlElement& element) {
    std::string label(attributeOf(element, xml::tags::Name));
    const auto key = attributeOf(element, xml::tags::Key);
    if (!key.empty()) {
        label += ' ';
        label += key;
    }
    return label;
}

/// Moves the property's texts into the result.
void moveProperty(xml::XmlProperty& property, ObjectResult& result, bool ofStatus) {
    std::string name = doubleBackslashes(property.takeAttribute(xml::tags::Name));
    std::string value = property.takeAttribute(xml::tags::Value);
    const auto description = attributeOf(property, xml::tags::Description);
    if (!description.empty()) {
        name += " - ";
        name += description;
    }
    if (!ofStatus) {
        result.insert(std::move(name), std::move(value));
    } else if (stringsIEqual(name, "Message")) {
        result.insert("Status", std::move(value));
    } else if (stringsIEqual(name, "Code") && value != "0") {
        result.setErrorCode(3);
    }
}

std::unique_ptr<ObjectResult> attributesToResult(const xml::XmlObject& object) {
    std::map<std::string, std::string> lines;
    for (const Attribute& attribute : XmlConverter::toAttributes(object)) {
        std::string value = doubleBackslashes(attribute.valueAsString());
        if (!attribute.getDescription().empty()) value += " " + attribute.getDescription();
        lines[attribute.getName()] = std::move(value);
    }
    auto result = std::make_unique<ObjectResult>();
    for (auto& [name, value] : lines) {
        result->insert(name, std::move(value));
    }
    return result;
}

void removeOwnProperties(xml::XmlObject& object, const std::vector<std::string>& names) {
    for (const std::string& name : names)
        object.removeProperty(name);
}

/// `objectToResult` for an object that is not needed any more: its texts are moved, not copied.
/// The properties of the names in `hidden` are removed from each object just before, so that a
/// large answer is walked once.
std::unique_ptr<ObjectResult> moveToResult(xml::XmlObject& object,
                                           const std::vector<std::string>& hidden) {
    removeOwnProperties(object, hidden);
    auto result = std::make_unique<ObjectResult>();
    result->reserve(object.getProperties().size(), object.getObjects().size());
    const auto description = attributeOf(object, xml::tags::Description);
    if (!description.empty()) {
        result->insert(std::string(description),
                       std::string(attributeOf(object, xml::tags::Value)));
    }
    const bool isStatus = hasCategory(object, xml::categories::Status);
    for (const auto& property : object.getProperties()) {
        moveProperty(*property, *result, isStatus);
    }
    for (const auto& child : object.getObjects()) {
        if (hasCategory(*child, xml::categories::AttributeList)) {
            removeOwnProperties(*child, hidden);
            result->insert(child->getAttribute(xml::tags::Key), attributesToResult(*child));
            continue;
        }
        auto sub = moveToResult(*child, hidden);
        // Intended: a code of 0 counts too, so that the last child decides.
        result->setErrorCode(sub->getErrorCode());
        result->insert(labelOf(*child), std::move(sub));
    }
    return result;
}

/// Writes one drive's payload to `destination`.
std::unique_ptr<ResultBase> savePayload(const xml::XmlObject& drive,
                                        const std::string& destination) {
    const xml::XmlObject* const payload = firstOfCategory(drive, xml::categories::Payload);
    if (payload == nullptr) return std::make_unique<ErrorResult>(2, "No Payload data found");

    const std::string name = drive.getAttribute(xml::tags::Name);
    const Payload bytes = strings::hexToBytes(payload->getAttribute(xml::tags::Value));
    const std::string_view contents(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    if (!files::replace(destination, contents)) {
        return std::make_unique<ErrorResult>(5,
                                             "Failed to write " + name + " data to " + destination);
    }
    return std::make_unique<SimpleResult>("Successfully written " + name + " data to " +
                                          destination);
}

}  // namespace

std::unique_ptr<ErrorResult> checkResponseStatus(const xml::XmlElement& element, Status& status) {
    std::vector<const xml::XmlObject*> hits;
    findStatuses(element, hits);
    if (hits.size() != 1) return nullptr;

    std::string category;
    std::string code;
    std::string message;
    for (const auto& property : hits.front()->getProperties()) {
        const auto name = attributeOf(*property, xml::tags::Name);
        const auto value = attributeOf(*property, xml::tags::Value);
        if (name == "Category") category = value;
        if (name == "Code") code = value;
        if (name == "Message") message = value;
    }
    status.set(static_cast<std::int32_t>(strings::toInteger(category)),
               static_cast<std::int32_t>(strings::toInteger(code)), message);
    if (strings::toInteger(code) == 0) return nullptr;
    if (message.empty()) message = "Category = " + category + " Code = " + code;
    return std::make_unique<ErrorResult>(3, message);
}

std::unique_ptr<ResultBase> responseToResult(std::unique_ptr<xml::XmlElement> response) {
    auto* const root = dynamic_cast<xml::XmlObject*>(response.get());
    if (root == nullptr) return std::make_unique<ObjectResult>();
    xml::XmlObject* const output = firstOfCategory(*root, xml::categories::Output);
    if (output == nullptr) return std::make_unique<ObjectResult>();
    return moveToResult(*output, hiddenAttributes());
}

std::unique_ptr<ObjectResult> objectToResult(const xml::XmlObject& object) {
    xml::XmlObject copy(object);
    return moveToResult(copy, {});
}

std::unique_ptr<ResultBase> saveOutputPayload(const xml::XmlElement* response,
                                              const std::string& destination) {
    auto result = std::make_unique<ObjectResult>();
    const auto* const root = dynamic_cast<const xml::XmlObject*>(response);
    if (root == nullptr) return result;
    const xml::XmlObject* const output = firstOfCategory(*root, xml::categories::Output);
    if (output == nullptr) return result;

    for (const auto& drive : output->getObjects()) {
        const std::string label =
            drive->getAttribute(xml::tags::Name) + "_" + drive->getAttribute(xml::tags::Key);
        const std::string file = destination.empty() ? label + ".bin" : destination;
        Status ignored;
        std::unique_ptr<ResultBase> outcome = checkResponseStatus(*drive, ignored);
        if (outcome == nullptr) outcome = savePayload(*drive, file);
        result->insert(label, outcome->output());
    }
    return result;
}

}  // namespace tavik::norvossd
