// A device's attributes as text, to be compared at one glance.
#pragma once

#include "core/Device.h"

#include <set>
#include <string>

namespace orvel::interfaces::orveli::identification {

/// "Name=value" for each attribute, in the order of the names, each with a newline.
inline std::string attributeLines(const core::Device& device) {
    std::set<std::string> lines;
    for (const core::Attribute& attribute : device.getAttributes())
        lines.insert(attribute.getName() + "=" + attribute.valueAsString() + "\n");
    std::string text;
    for (const std::string& line : lines)
        text += line;
    return text;
}

}  // namespace orvel::interfaces::orveli::identification
