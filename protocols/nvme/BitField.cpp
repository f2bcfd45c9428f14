#include "protocols/nvme/BitField.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols::nvme {

std::uint32_t readBits(std::uint32_t number, const BitField& row) {
    return (number & row.mask()) >> row.lowBit;
}

std::uint32_t withBits(std::uint32_t number, const BitField& row, std::uint32_t value) {
    return (number & ~row.mask()) | ((value << row.lowBit) & row.mask());
}

std::uint32_t placeBits(const BitField& row, std::uint32_t value) {
    if (value > row.maximum()) throw core::statuses::invalidArguments();
    return withBits(0, row, value);
}

std::uint32_t readBits(const core::Payload& structure, const Field& field, const BitField& row) {
    return readBits(static_cast<std::uint32_t>(readNumber(structure, field)), row);
}

bool has(const core::Payload& structure, const Field& field, const BitField& row) {
    return readBits(structure, field, row) != 0;
}

void writeBits(const core::Payload& structure, const Field& field, const BitField& row,
               std::uint32_t value) {
    const auto number = static_cast<std::uint32_t>(readNumber(structure, field));
    writeNumber(structure, field, withBits(number, row, value));
}

}  // namespace orvel::protocols::nvme
