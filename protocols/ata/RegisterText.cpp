#include "protocols/ata/RegisterText.h"

#include "core/Strings.h"
#include "core/xml/Vocabulary.h"

namespace orvel::protocols::ata {

std::string registerText(std::uint64_t value, int digits) {
    return "0x" + core::strings::toHexString(value, digits);
}

std::string toLines(const RegisterValues& values) {
    std::string text;
    for (const auto& [name, value] : values) {
        if (!text.empty()) text += '\n';
        text += name;
        text += ": ";
        text += value;
    }
    return text;
}

std::unique_ptr<core::xml::XmlObject> toObject(const std::string& category,
                                               const RegisterValues& values) {
    auto object = std::make_unique<core::xml::XmlObject>();
    object->setAttribute(core::xml::tags::Category, category);
    for (const auto& [name, value] : values)
        object->addValue(name, value);
    return object;
}

}  // namespace orvel::protocols::ata
