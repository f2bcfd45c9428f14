// How commands and their results show registers.
#pragma once

#include "core/xml/XmlObject.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::protocols::ata {

/// Names and values, in the order in which they are shown.
using RegisterValues = std::vector<std::pair<std::string, std::string>>;

/// "0x" and `digits` upper-case hexadecimal digits.
std::string registerText(std::uint64_t value, int digits);

/// A line "name: value" for each, without a newline at the end.
std::string toLines(const RegisterValues& values);

/// A new object of this category with a property for each.
std::unique_ptr<core::xml::XmlObject> toObject(const std::string& category,
                                               const RegisterValues& values);

}  // namespace orvel::protocols::ata
