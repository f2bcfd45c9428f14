// JSON text as a tree.
#pragma once

#include <boost/property_tree/ptree.hpp>

#include <cstddef>
#include <string_view>

namespace orvel::simulator {

/// Members of an object are children with keys, those of a list children without. Scalars of all
/// kinds are kept as their text.
using JsonTree = boost::property_tree::ptree;

/// In bytes: far more than any fleet takes. What is larger was not made for this.
constexpr std::size_t LONGEST_JSON = std::size_t{64} << 20U;

/// Throws FleetTextError: for text that is no JSON with the number of the line, for text that is
/// nested deeper than 64 times, longer than LONGEST_JSON, or of more than 8,000,000 values.
JsonTree readJson(std::string_view text);

}  // namespace orvel::simulator
