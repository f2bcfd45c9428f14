// The two forms in which commands and completions show their parts.
#pragma once

#include "core/xml/XmlObject.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::protocols::nvme {

using NamedValues = std::vector<std::pair<const char*, std::string>>;

/// A line "name: value" for each, without a newline at the end.
std::string toLines(const NamedValues& values);

/// An object of this category with a property for each.
std::unique_ptr<core::xml::XmlObject> toObject(const char* category, const NamedValues& values);

}  // namespace orvel::protocols::nvme
