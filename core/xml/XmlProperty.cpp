#include "core/xml/XmlProperty.h"

namespace orvel::core::xml {

XmlProperty::XmlProperty() : XmlElement(_type) {}

void XmlProperty::toXml(std::string& text) const {
    text.append("<Property");
    writeAttributes(text);
    text.append("/>");
}

std::unique_ptr<XmlElement> XmlProperty::clone() const {
    return std::make_unique<XmlProperty>(*this);
}

bool XmlProperty::isEmpty() const {
    return getAttributes().empty();
}

}  // namespace orvel::core::xml
