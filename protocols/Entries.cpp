#include "protocols/Entries.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols {

Field fieldOf(const Entries& entries, std::uint32_t index, const Field& row) {
    if (index >= entries.count) throw core::statuses::requestOutOfBounds();
    Field moved = row;
    moved.offset += entries.offset + index * entries.size;
    return moved;
}

Field bytesOf(const Entries& entries, std::uint32_t index) {
    return fieldOf(entries, index, {"Entry", "Entry", 0, entries.size, Encoding::BYTES});
}

core::Payload readEntry(const core::Payload& structure, const Entries& entries,
                        std::uint32_t index) {
    return readBytes(structure, bytesOf(entries, index));
}

void writeEntry(const core::Payload& structure, const Entries& entries, std::uint32_t index,
                const core::Payload& entry) {
    writeBytes(structure, bytesOf(entries, index), entry);
}

}  // namespace orvel::protocols
