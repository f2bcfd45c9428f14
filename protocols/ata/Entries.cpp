#include "protocols/ata/Entries.h"

#include "core/CoreStatuses.h"

namespace orvel::protocols::ata {

Field fieldOf(const Entries& entries, std::uint32_t index, const Field& field) {
    if (index >= entries.count) throw core::statuses::requestOutOfBounds();
    Field shifted = field;
    shifted.offset += entries.offset + index * entries.size;
    return shifted;
}

Field bytesOf(const Entries& entries, std::uint32_t index) {
    return fieldOf(entries, index, {"Entry", "Entry", 0, entries.size, Encoding::BYTES});
}

}  // namespace orvel::protocols::ata
