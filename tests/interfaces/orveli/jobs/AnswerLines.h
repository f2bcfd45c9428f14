// A job's answer as a reader sees it.
#pragma once

#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlObject.h"

#include <memory>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// "[name key]" for an object and "name=value" for a property, one a line; an object's depth as
/// blanks in front.
inline std::string answerLines(const core::xml::XmlObject& object, const std::string& indent) {
    std::string text;
    for (const auto& property : object.getProperties()) {
        text +=
            indent + property->getAttribute("name") + "=" + property->getAttribute("value") + "\n";
    }
    for (const auto& child : object.getObjects()) {
        text += indent + "[" + child->getAttribute("name") + " " + child->getAttribute("key") +
                child->getAttribute("category") + "]\n" + answerLines(*child, indent + " ");
    }
    return text;
}

inline std::string answerLines(const std::string& output) {
    const auto element = core::XmlConverter::toXml(output);
    const auto* object = dynamic_cast<const core::xml::XmlObject*>(element.get());
    return object == nullptr ? "" : answerLines(*object, "");
}

}  // namespace orvel::interfaces::orveli::jobs
