#include "core/xml/XmlList.h"

#include "core/xml/XmlObject.h"

#include <utility>

namespace orvel::core::xml {

XmlList::XmlList() : XmlElement(_type) {}

XmlList::XmlList(const XmlList& other) : XmlElement(other) {
    objects.reserve(other.objects.size());
    for (const auto& object : other.objects)
        addObject(std::make_unique<XmlObject>(*object));
}

XmlList::~XmlList() = default;

void XmlList::toXml(std::string& text) const {
    text.append("<List");
    writeAttributes(text);
    text.append(1, '>');
    for (const auto& object : objects)
        object->toXml(text);
    text.append("</List>");
}

void XmlList::collect(const Query& query, Matches& found) const {
    if (query.includeSelf) collectSelf(query, found);
    for (const auto& object : objects)
        collectFrom(*object, query, found);
}

std::unique_ptr<XmlElement> XmlList::clone() const {
    return std::make_unique<XmlList>(*this);
}

bool XmlList::isEmpty() const {
    return objects.empty() && getAttributes().empty();
}

XmlObject& XmlList::addObject(std::unique_ptr<XmlObject> object) {
    return *objects.emplace_back(std::move(object));
}

}  // namespace orvel::core::xml
