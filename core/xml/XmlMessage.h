// A message: like an object but for its element name.
#pragma once

#include "core/xml/XmlContainer.h"

namespace orvel::core::xml {

class XmlMessage : public XmlContainer {
public:
    static constexpr const char* _type = "Message";

    XmlMessage();

    std::unique_ptr<XmlElement> clone() const override;
};

}  // namespace orvel::core::xml
