#include "protocols/nvme/StatusCodes.h"

namespace orvel::protocols::nvme {

namespace {

/// Both numbers in one, for a switch, in which no pair can stand twice.
constexpr unsigned pairOf(std::uint8_t type, std::uint8_t code) {
    return type * 256U + code;
}

}  // namespace

const char* statusText(const StatusCode& status) {
    using namespace status_code_types;
    switch (pairOf(status.type, status.code)) {
#define STATUS(type, code, name, words)                                                            \
    case pairOf(type, code):                                                                       \
        return words;
#include "protocols/nvme/StatusCodes.def"
    default:
        return "Unknown status code";
    }
}

}  // namespace orvel::protocols::nvme
