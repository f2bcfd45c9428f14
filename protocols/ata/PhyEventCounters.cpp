#include "protocols/ata/PhyEventCounters.h"

#include "core/CoreStatuses.h"
#include "protocols/Field.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/ata/Checksum.h"

#include <algorithm>
#include <iterator>

namespace orvel::protocols::ata {

namespace {

constexpr std::uint32_t FIRST_COUNTER = 4;  // bytes 0 to 3: reserved
constexpr std::uint32_t END = 511;          // the checksum
constexpr std::uint32_t ID_SIZE = 2;
constexpr std::uint32_t LARGEST_VALUE = 8;

// The identifier's parts.
constexpr std::uint16_t VENDOR_SPECIFIC = 1U << 15;
constexpr std::uint16_t COUNTER_MASK = 0x0FFF;
constexpr unsigned LENGTH_SHIFT = 12;  // the value's size in words of two bytes
constexpr unsigned LENGTH_MASK = 0x7;

struct CounterName {
    std::uint16_t id;
    const char* name;
};

constexpr CounterName COUNTER_NAMES[] = {
#define COUNTER(id, name) {id, name},
#include "protocols/ata/tables/PhyEventCounters.def"
};

Field numberAt(std::uint32_t offset, std::uint32_t size) {
    return {"Number", "Number", offset, size, Encoding::NUMBER};
}

bool isSize(std::uint32_t size) {
    return size > 0 && size <= LARGEST_VALUE && size % 2 == 0;
}

}  // namespace

std::vector<PhyEventCounter> readPhyEventCounters(const core::Payload& page) {
    if (page.size() < BLOCK_SIZE) throw core::statuses::requestOutOfBounds();
    std::vector<PhyEventCounter> counters;
    std::uint32_t offset = FIRST_COUNTER;
    while (offset + ID_SIZE <= END) {
        const auto identifier =
            static_cast<std::uint16_t>(readNumber(page, numberAt(offset, ID_SIZE)));
        const std::uint32_t size = (identifier >> LENGTH_SHIFT & LENGTH_MASK) * 2U;
        if (!isSize(size) || offset + ID_SIZE + size > END) break;
        counters.push_back(
            {static_cast<std::uint16_t>(identifier & (VENDOR_SPECIFIC | COUNTER_MASK)),
             static_cast<std::uint8_t>(size), readNumber(page, numberAt(offset + ID_SIZE, size))});
        offset += ID_SIZE + size;
    }
    return counters;
}

core::Payload makePhyEventCounters(const std::vector<PhyEventCounter>& counters) {
    core::Payload page(BLOCK_SIZE);
    std::uint32_t offset = FIRST_COUNTER;
    for (const auto& [id, size, value] : counters) {
        if (!isSize(size)) throw core::statuses::invalidArguments();
        if (offset + ID_SIZE + size > END) throw core::statuses::requestOutOfBounds();
        const unsigned length = size / 2U << LENGTH_SHIFT;
        writeNumber(page, numberAt(offset, ID_SIZE),
                    (id & (VENDOR_SPECIFIC | COUNTER_MASK)) | length);
        writeNumber(page, numberAt(offset + ID_SIZE, size), value);
        offset += ID_SIZE + size;
    }
    writeChecksum(page);
    return page;
}

const char* phyEventCounterName(std::uint16_t id) {
    if ((id & VENDOR_SPECIFIC) != 0) return "Vendor specific";
    const auto* const row = std::find_if(std::begin(COUNTER_NAMES), std::end(COUNTER_NAMES),
                                         [id](const auto& each) { return each.id == id; });
    return row == std::end(COUNTER_NAMES) ? "Unknown counter" : row->name;
}

}  // namespace orvel::protocols::ata
