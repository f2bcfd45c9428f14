// A namespace identifier as users type it.
#pragma once

#include <cstdint>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// Decimal, or hexadecimal with or without "0x". Throws core::Status by value, 10/80, for other
/// text, for 0 and for more than 32 bits.
std::uint32_t readNamespaceNumber(const std::string& text);

}  // namespace orvel::interfaces::orveli::jobs
