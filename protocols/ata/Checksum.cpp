#include "protocols/ata/Checksum.h"

#include "core/CoreStatuses.h"
#include "protocols/ata/AtaCommand.h"

#include <numeric>
#include <span>

namespace orvel::protocols::ata {

namespace {

std::span<std::uint8_t> pageOf(const core::Payload& structure, std::uint32_t page) {
    if (page >= structure.size() / BLOCK_SIZE) throw core::statuses::requestOutOfBounds();
    return {structure.data() + static_cast<std::size_t>(page) * BLOCK_SIZE, BLOCK_SIZE};
}

std::uint8_t sumOf(std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint8_t>(std::accumulate(bytes.begin(), bytes.end(), 0U));
}

}  // namespace

bool isChecksumRight(const core::Payload& structure, std::uint32_t page) {
    return sumOf(pageOf(structure, page)) == 0;
}

void writeChecksum(const core::Payload& structure, std::uint32_t page) {
    const auto bytes = pageOf(structure, page);
    bytes.back() = static_cast<std::uint8_t>(-sumOf(bytes.first(BLOCK_SIZE - 1)));
}

}  // namespace orvel::protocols::ata
