#include "core/xml/XmlContainer.h"

#include "core/xml/XmlObject.h"

#include <utility>

namespace orvel::core::xml {

XmlContainer::XmlContainer(std::string type) : XmlElement(std::move(type)) {}

XmlContainer::XmlContainer(const XmlContainer& other) : XmlElement(other) {
    lists.reserve(other.lists.size());
    for (const auto& list : other.lists)
        addList(std::make_unique<XmlList>(*list));
    properties.reserve(other.properties.size());
    for (const auto& property : other.properties) {
        addProperty(std::make_unique<XmlProperty>(*property));
    }
    objects.reserve(other.objects.size());
    for (const auto& object : other.objects)
        addObject(std::make_unique<XmlObject>(*object));
}

XmlContainer::~XmlContainer() = default;

void XmlContainer::toXml(std::string& text) const {
    const std::string name = getType();
    text.append(1, '<').append(name);
    writeAttributes(text);
    text.append(1, '>');
    for (const auto& property : properties)
        property->toXml(text);
    for (const auto& list : lists)
        list->toXml(text);
    for (const auto& object : objects)
        object->toXml(text);
    text.append("</").append(name).append(1, '>');
}

void XmlContainer::collect(const Query& query, Matches& found) const {
    if (query.includeSelf) collectSelf(query, found);
    for (const auto& property : properties)
        collectFrom(*property, query, found);
    for (const auto& list : lists)
        collectFrom(*list, query, found);
    for (const auto& object : objects)
        collectFrom(*object, query, found);
}

bool XmlContainer::isEmpty() const {
    return lists.empty() && properties.empty() && objects.empty() && getAttributes().empty();
}

XmlList& XmlContainer::addList(std::unique_ptr<XmlList> list) {
    return *lists.emplace_back(std::move(list));
}

XmlProperty& XmlContainer::addProperty(std::unique_ptr<XmlProperty> property) {
    return *properties.emplace_back(std::move(property));
}

XmlObject& XmlContainer::addObject(std::unique_ptr<XmlObject> object) {
    return *objects.emplace_back(std::move(object));
}

}  // namespace orvel::core::xml
