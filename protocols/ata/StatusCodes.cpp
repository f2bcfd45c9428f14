#include "protocols/ata/StatusCodes.h"

#include <algorithm>
#include <iterator>

namespace orvel::protocols::ata {

namespace {

struct StatusRow {
    StatusType type;
    std::uint16_t code;
    const char* text;
};

constexpr StatusRow ROWS[] = {
#define STATUS(type, code, text) {StatusType::type, code, text},
#include "protocols/ata/tables/StatusCodes.def"
};

constexpr std::uint16_t AUTOMATIC_COLLECTION = 1U << 7;

}  // namespace

const char* statusText(StatusType type, std::uint16_t code) {
    if (type == StatusType::OFFLINE_COLLECTION)
        code = static_cast<std::uint16_t>(code & ~AUTOMATIC_COLLECTION);
    const auto* const row = std::find_if(std::begin(ROWS), std::end(ROWS), [&](const auto& each) {
        return each.type == type && each.code == code;
    });
    return row == std::end(ROWS) ? "Unknown status code" : row->text;
}

}  // namespace orvel::protocols::ata
