// How deep a text of XML is nested, told without recursion.
#pragma once

#include <cstddef>
#include <string_view>

namespace orvel::core {

/// Levels of elements, the root being the first. Reads what Boost's XML reader reads, oddities
/// included: up to the first NUL byte and up to the first thing that the reader refuses. So the
/// count is never less than the levels that the reader enters, and exact for well-formed text.
std::size_t xmlDepth(std::string_view text);

}  // namespace orvel::core
