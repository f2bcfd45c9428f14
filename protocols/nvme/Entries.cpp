#include "protocols/nvme/Entries.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols::nvme {

namespace {

Field wholeEntry(const Entries& entries, std::uint32_t index) {
    return fieldOfEntry(entries, index, {"Entry", "", 0, entries.size, Encoding::BYTES});
}

}  // namespace

Field fieldOfEntry(const Entries& entries, std::uint32_t index, const Field& row) {
    if (index >= entries.count) throw core::statuses::requestOutOfBounds();
    Field moved = row;
    moved.offset += entries.offset + index * entries.size;
    return moved;
}

core::Payload readEntry(const core::Payload& structure, const Entries& entries,
                        std::uint32_t index) {
    return readBytes(structure, wholeEntry(entries, index));
}

void writeEntry(const core::Payload& structure, const Entries& entries, std::uint32_t index,
                const core::Payload& entry) {
    writeBytes(structure, wholeEntry(entries, index), entry);
}

}  // namespace orvel::protocols::nvme
