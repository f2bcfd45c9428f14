#include "protocols/nvme/NamedValues.h"

#include "core/xml/Vocabulary.h"

namespace orvel::protocols::nvme {

std::string toLines(const NamedValues& values) {
    std::string text;
    for (const auto& [name, value] : values) {
        if (!text.empty()) text += "\n";
        text += name + (": " + value);
    }
    return text;
}

std::unique_ptr<core::xml::XmlObject> toObject(const char* category, const NamedValues& values) {
    auto object = std::make_unique<core::xml::XmlObject>();
    object->setAttribute(core::xml::tags::Category, category);
    for (const auto& [name, value] : values)
        object->addValue(name, value);
    return object;
}

}  // namespace orvel::protocols::nvme
