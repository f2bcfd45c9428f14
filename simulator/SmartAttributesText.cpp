#include "simulator/SmartAttributesText.h"

#include "protocols/ata/Structures.h"

#include <cstdint>
#include <optional>

namespace orvel::simulator {

namespace ata = protocols::ata;
using protocols::Entries;
using protocols::Field;

namespace {

constexpr std::uint64_t BITS_PER_BYTE = 8;
constexpr const Entries& ATTRIBUTES = ata::smart_data::ATTRIBUTES;
constexpr const Entries& THRESHOLDS = ata::smart_thresholds::THRESHOLDS;

/// Where an entry of this number is; 0 is that of the free ones.
std::optional<std::uint32_t> find(const core::Payload& structure, const Entries& entries,
                                  std::uint64_t id) {
    const Field& idField = ata::smart_attribute::Id;  // at the same place in a threshold
    for (std::uint32_t i = 0; i < entries.count; ++i) {
        if (readNumber(structure, fieldOf(entries, i, idField)) == id) return i;
    }
    return {};
}

std::uint32_t findOrMake(const TextPlace& place, const core::Payload& structure,
                         const Entries& entries, std::uint64_t id) {
    if (const auto found = find(structure, entries, id)) return *found;
    const auto free = find(structure, entries, 0);
    if (!free) place.fail("at most " + std::to_string(entries.count) + " attributes were expected");
    writeNumber(structure, fieldOf(entries, *free, ata::smart_attribute::Id), id);
    return *free;
}

void remove(const core::Payload& structure, const Entries& entries, std::uint64_t id) {
    if (const auto found = find(structure, entries, id)) {
        writeEntry(structure, entries, *found, core::Payload(entries.size));
    }
}

class AttributeReader {
public:
    AttributeReader(const TextPlace& place, const AtaDrive& drive)
        : place(place),
          drive(drive),
          id(place.keyAsNumber(1, UINT8_MAX)) {}

    void read() {
        if (place.isNull()) {
            remove(drive.smartData, ATTRIBUTES, id);
            remove(drive.smartThresholds, THRESHOLDS, id);
            return;
        }
        place.expectObject();
        findOrMake(place, drive.smartData, ATTRIBUTES, id);
        for (const auto& [key, tree] : place.getTree())
            readMember({place, key, tree}, key);
    }

private:
    void readMember(const TextPlace& member, const std::string& key) {
        // clang-format off
        if      (key == "normalized") { write(member, drive.smartData,       ATTRIBUTES, ata::smart_attribute::Current); }
        else if (key == "worst")      { write(member, drive.smartData,       ATTRIBUTES, ata::smart_attribute::Worst); }
        else if (key == "raw")        { write(member, drive.smartData,       ATTRIBUTES, ata::smart_attribute::Raw); }
        else if (key == "flags")      { write(member, drive.smartData,       ATTRIBUTES, ata::smart_attribute::StatusFlags); }
        else if (key == "threshold")  { write(member, drive.smartThresholds, THRESHOLDS, ata::smart_threshold::Threshold); }
        else                          { member.fail("unknown key"); }
        // clang-format on
    }

    void write(const TextPlace& member, const core::Payload& structure, const Entries& entries,
               const Field& row) {
        const std::uint64_t most = (std::uint64_t{1} << BITS_PER_BYTE * row.size) - 1;
        const std::uint32_t index = findOrMake(place, structure, entries, id);
        writeNumber(structure, fieldOf(entries, index, row), member.number(0, most));
    }

    const TextPlace& place;
    const AtaDrive& drive;
    std::uint64_t id;
};

}  // namespace

void readSmartAttributes(const TextPlace& place, const AtaDrive& drive) {
    place.expectObject();
    for (const auto& [key, tree] : place.getTree()) {
        const TextPlace attribute(place, key, tree);
        AttributeReader(attribute, drive).read();
    }
}

}  // namespace orvel::simulator
