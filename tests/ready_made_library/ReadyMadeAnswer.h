// The answers of a feature library that has two invented drives.
#pragma once

#include <string>
#include <string_view>

namespace tavik::testing {

/// The answer to a request: the two drives if it asks for properties, otherwise a plain success.
/// The request is not looked at any closer: target and wanted properties change nothing.
std::string readyMadeAnswer(std::string_view request);

}  // namespace tavik::testing
