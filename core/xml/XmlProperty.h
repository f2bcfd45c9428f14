// The leaf of the element tree: attributes only.
#pragma once

#include "core/xml/XmlElement.h"

namespace orvel::core::xml {

class XmlProperty : public XmlElement {
public:
    static constexpr const char* _type = "Property";

    XmlProperty();

    void toXml(std::string& text) const override;
    std::unique_ptr<XmlElement> clone() const override;
    bool isEmpty() const override;
};

}  // namespace orvel::core::xml
