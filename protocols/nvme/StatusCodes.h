// What a drive says about a command's outcome, in two numbers: type and code.
#pragma once

#include <cstdint>

namespace orvel::protocols::nvme {

/// Status code types (NVM Express Base Specification 1.4, section 4.6.1).
namespace status_code_types {
inline constexpr std::uint8_t GENERIC = 0;
inline constexpr std::uint8_t COMMAND_SPECIFIC = 1;
inline constexpr std::uint8_t MEDIA_AND_DATA_INTEGRITY = 2;
inline constexpr std::uint8_t PATH_RELATED = 3;
// 4 to 6: reserved
inline constexpr std::uint8_t VENDOR_SPECIFIC = 7;
}  // namespace status_code_types

/// Success is the default-constructed value.
struct StatusCode {
    std::uint8_t type = status_code_types::GENERIC;  ///< 3 bits
    std::uint8_t code = 0;

    constexpr bool operator==(const StatusCode&) const = default;
};

namespace status_codes {
#define STATUS(type, code, name, words)                                                            \
    inline constexpr StatusCode name{status_code_types::type, code};
#include "protocols/nvme/StatusCodes.def"
}  // namespace status_codes

/// The standard's words, or "Unknown status code".
const char* statusText(const StatusCode& status);

}  // namespace orvel::protocols::nvme
