#include "protocols/ata/Smart.h"

#include <algorithm>
#include <iterator>

namespace orvel::protocols::ata {

namespace {

constexpr unsigned STATUS_SHIFT = 4;
constexpr unsigned REMAINING_MASK = 0xF;
constexpr unsigned PERCENT_PER_STEP = 10;

struct AttributeName {
    std::uint8_t id;
    const char* name;
};

constexpr AttributeName ATTRIBUTE_NAMES[] = {
#define ATTRIBUTE(id, name) {id, name},
#include "protocols/ata/tables/SmartAttributeNames.def"
};

}  // namespace

SelfTestExecution selfTestExecution(std::uint8_t statusByte) {
    return {static_cast<std::uint8_t>(statusByte >> STATUS_SHIFT),
            static_cast<std::uint8_t>((statusByte & REMAINING_MASK) * PERCENT_PER_STEP)};
}

std::uint8_t selfTestExecutionByte(const SelfTestExecution& execution) {
    const unsigned remaining = execution.percentRemaining / PERCENT_PER_STEP;
    return static_cast<std::uint8_t>(static_cast<unsigned>(execution.status) << STATUS_SHIFT |
                                     (remaining & REMAINING_MASK));
}

SmartHealth smartHealth(const ReturnedTaskFile& returned) {
    const auto key = static_cast<std::uint16_t>(returned.lba >> 8U);
    if (key == SMART_GOOD) return SmartHealth::GOOD;
    if (key == SMART_THRESHOLD_EXCEEDED) return SmartHealth::THRESHOLD_EXCEEDED;
    return SmartHealth::UNKNOWN;
}

const char* smartAttributeName(std::uint8_t id) {
    const auto* const row = std::find_if(std::begin(ATTRIBUTE_NAMES), std::end(ATTRIBUTE_NAMES),
                                         [id](const auto& each) { return each.id == id; });
    return row == std::end(ATTRIBUTE_NAMES) ? "Unknown Attribute" : row->name;
}

}  // namespace orvel::protocols::ata
