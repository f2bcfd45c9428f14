#include "core/xml/XmlMessage.h"

namespace orvel::core::xml {

XmlMessage::XmlMessage() : XmlContainer(_type) {}

std::unique_ptr<XmlElement> XmlMessage::clone() const {
    return std::make_unique<XmlMessage>(*this);
}

}  // namespace orvel::core::xml
