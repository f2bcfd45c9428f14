#include "core/xml/XmlObject.h"

#include "core/xml/Vocabulary.h"

#include <algorithm>

namespace orvel::core::xml {

namespace {

void setTexts(XmlElement& element, const std::string& name, const std::string& description,
              const std::string& value) {
    element.setAttribute(tags::Name, name);
    element.setAttribute(tags::Description, description);
    element.setAttribute(tags::Value, value);
}

/// An absent name reads as the empty string.
std::string_view nameOf(const XmlElement& element) {
    const std::string* name = element.findAttribute(tags::Name);
    return name == nullptr ? std::string_view() : std::string_view(*name);
}

/// Erases from the front as many properties of each name as `removals` says.
void eraseProperties(std::vector<std::unique_ptr<XmlProperty>>& properties,
                     const std::unordered_map<std::string_view, std::size_t>& removals) {
    std::unordered_map<std::string_view, std::size_t> erased;
    std::erase_if(properties, [&](const auto& property) {
        const auto removal = removals.find(nameOf(*property));
        return removal != removals.end() && erased[removal->first]++ < removal->second;
    });
}

}  // namespace

XmlObject::XmlObject() : XmlContainer(_type) {}

XmlObject::XmlObject(const std::string& name, const std::string& description,
                     const std::string& value)
    : XmlObject() {
    setTexts(*this, name, description, value);
}

XmlProperty& XmlObject::addProperty(const std::string& name, const std::string& description,
                                    const std::string& value) {
    XmlProperty& property = addProperty(std::make_unique<XmlProperty>());
    setTexts(property, name, description, value);
    return property;
}

XmlProperty& XmlObject::addValue(const std::string& name, const std::string& value) {
    auto property = std::make_unique<XmlProperty>();
    property->setAttribute(tags::Name, name);
    property->setAttribute(tags::Value, value);
    return addProperty(std::move(property));
}

bool XmlObject::removeProperty(const std::string& name) {
    const auto place =
        std::find_if(properties.begin(), properties.end(),
                     [&](const auto& property) { return nameOf(*property) == name; });
    if (place == properties.end()) return false;
    properties.erase(place);
    return true;
}

void XmlObject::removeProperties(const std::vector<std::string>& names) {
    Removals removals;
    for (const std::string& name : names)
        ++removals[name];
    if (!removals.empty()) apply(removals);
}

// One pass for all names: a command line may name thousands, and an answer hold as many objects.
void XmlObject::apply(const Removals& removals) {
    eraseProperties(properties, removals);
    for (const auto& object : objects)
        object->apply(removals);
}

std::unique_ptr<XmlElement> XmlObject::clone() const {
    return std::make_unique<XmlObject>(*this);
}

}  // namespace orvel::core::xml
