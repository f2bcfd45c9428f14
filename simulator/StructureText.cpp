#include "simulator/StructureText.h"

#include "core/Strings.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>

namespace orvel::simulator {

using protocols::Encoding;
using protocols::Entries;
using protocols::Field;
using protocols::Number128;

namespace {

constexpr const char* OTHER_BYTES = "otherBytes";
constexpr const char* SIZE = "size";
constexpr const char* WORDS = "words";
constexpr unsigned BITS_PER_BYTE = 8;

/// Longer ones are mostly zeroes, and parts or the vendor's fields lie in them.
constexpr std::uint32_t LONGEST_BYTES_BY_NAME = 32;

Field movedBy(const Field& row, std::uint32_t offset) {
    Field moved = row;
    moved.offset += offset;
    return moved;
}

Field bytesAt(std::uint32_t offset, std::uint32_t size) {
    return {"", "", offset, size, Encoding::BYTES};
}

core::Payload toPayload(const std::vector<std::uint8_t>& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

// Reading.

/// The largest number that fits.
Number128 maximumOf(const Field& field) {
    const unsigned bits = field.size * BITS_PER_BYTE;
    const Number128 all = ~Number128(0);
    constexpr unsigned WIDEST = 128;
    return bits >= WIDEST ? all : all >> (WIDEST - bits);
}

void readField(const TextPlace& place, const core::Payload& bytes, const Field& field) {
    switch (field.encoding) {
    case Encoding::NUMBER:
        protocols::writeNumber(bytes, field,
                               place.number(0, static_cast<std::uint64_t>(maximumOf(field))));
        break;
    case Encoding::WIDE_NUMBER:
        protocols::writeWideNumber(bytes, field, place.wideNumber(maximumOf(field)));
        break;
    case Encoding::TEXT:
    case Encoding::SWAPPED_TEXT:
        protocols::writeText(bytes, field, place.printableText(field.size));
        break;
    case Encoding::BYTES:
        protocols::writeBytes(bytes, field, toPayload(place.bytes(field.size)));
        break;
    }
}

/// Fields by name. Most texts have them in their order, so each search begins where the last one
/// ended.
class FieldSearch {
public:
    explicit FieldSearch(const StructureLayout& layout) : layout(layout) {}

    /// Null if there is none.
    const Field* find(std::string_view name) {
        for (const protocols::Fields& table : layout.tables) {
            if (const Field* found = findIn(table, name)) return found;
        }
        return nullptr;
    }

private:
    const Field* findIn(const protocols::Fields& table, std::string_view name) {
        for (std::size_t i = 0; i < table.size(); ++i) {
            const std::size_t index = (next + i) % table.size();
            if (name != table[index].name) continue;
            next = index + 1;
            return &table[index];
        }
        return nullptr;
    }

    const StructureLayout& layout;
    std::size_t next = 0;
};

class StructureReader {
public:
    explicit StructureReader(const core::Payload& bytes) : bytes(bytes) {}

    /// A structure may be longer than its fields, so `size` tells where it ends.
    void read(const TextPlace& place, const StructureLayout& layout, std::uint32_t offset,
              std::uint32_t size) {
        place.expectObject();
        const JsonTree& tree = place.getTree();
        const auto patches = tree.find(OTHER_BYTES);
        if (patches != tree.not_found()) {
            readPatches({place, OTHER_BYTES, patches->second}, offset, size);
        }
        FieldSearch search(layout);
        for (const auto& [key, value] : tree) {
            if (key == OTHER_BYTES) continue;
            readMember({place, key, value}, key, search, layout, offset);
        }
    }

private:
    void readMember(const TextPlace& place, std::string_view key, FieldSearch& search,
                    const StructureLayout& layout, std::uint32_t offset) {
        if (const Field* field = search.find(key)) {
            readField(place, bytes, movedBy(*field, offset));
            return;
        }
        const auto part = std::ranges::find(layout.parts, key, &StructurePart::key);
        if (part != layout.parts.end()) {
            readPart(place, *part, offset);
        } else if (layout.hasWords && key == WORDS) {
            readWords(place, offset);
        } else if (offset == 0 && key == SIZE) {
            if (place.number(0, UINT32_MAX) != bytes.size()) {
                place.fail("the size " + std::to_string(bytes.size()) + " was expected");
            }
        } else {
            place.fail("unknown key");
        }
    }

    void readPart(const TextPlace& place, const StructurePart& part, std::uint32_t offset) {
        const Entries& entries = part.entries;
        if (entries.count == 1) {
            read(place, part.layout, offset + entries.offset, entries.size);
            return;
        }
        place.expectList();
        if (place.getTree().size() > entries.count) {
            place.fail("at most " + std::to_string(entries.count) + " entries were expected");
        }
        std::uint32_t index = 0;
        for (const auto& [key, value] : place.getTree()) {
            read({place, std::size_t{index}, value}, part.layout,
                 offset + entries.offset + index * entries.size, entries.size);
            ++index;
        }
    }

    void readWords(const TextPlace& place, std::uint32_t offset) {
        constexpr std::uint32_t WORD_SIZE = 2;
        const std::uint32_t count = bytes.size() / WORD_SIZE;
        place.expectObject();
        for (const auto& [key, value] : place.getTree()) {
            const TextPlace member(place, key, value);
            const auto word = static_cast<std::uint32_t>(member.keyAsNumber(0, count - 1));
            readField(member, bytes,
                      {"", "", offset + word * WORD_SIZE, WORD_SIZE, Encoding::NUMBER});
        }
    }

    void readPatches(const TextPlace& place, std::uint32_t offset, std::uint32_t size) {
        place.expectList();
        std::size_t index = 0;
        for (const auto& [key, value] : place.getTree()) {
            readPatch({place, index, value}, offset, size);
            ++index;
        }
    }

    void readPatch(const TextPlace& place, std::uint32_t offset, std::uint32_t size) {
        place.expectObject();
        const JsonTree& tree = place.getTree();
        const auto start = tree.find("offset");
        const auto content = tree.find("bytes");
        constexpr std::size_t MEMBERS = 2;
        if (start == tree.not_found() || content == tree.not_found() || tree.size() != MEMBERS) {
            place.fail("an offset and bytes were expected");
        }
        const auto from =
            static_cast<std::uint32_t>(TextPlace(place, "offset", start->second).number(0, size));
        const auto patch = TextPlace(place, "bytes", content->second).bytes(size - from);
        protocols::writeBytes(bytes,
                              bytesAt(offset + from, static_cast<std::uint32_t>(patch.size())),
                              toPayload(patch));
    }

    const core::Payload& bytes;
};

// Writing.

bool isZero(const core::Payload& bytes, const Field& field) {
    const std::uint8_t* const begin = bytes.data() + field.offset;
    return std::all_of(begin, begin + field.size, [](std::uint8_t byte) { return byte == 0; });
}

/// Whether the field's text gives the same bytes again.
bool isExactText(const core::Payload& bytes, const Field& field) {
    const core::Payload again(field.size);
    Field alone = field;
    alone.offset = 0;
    protocols::writeText(again, alone, protocols::readText(bytes, field));
    return again == protocols::readBytes(bytes, field);
}

bool canBeWritten(const core::Payload& bytes, const Field& field) {
    switch (field.encoding) {
    case Encoding::TEXT:
    case Encoding::SWAPPED_TEXT:
        return isExactText(bytes, field);
    case Encoding::BYTES:
        return field.size <= LONGEST_BYTES_BY_NAME;
    default:
        return true;
    }
}

class StructureWriter {
public:
    StructureWriter(JsonWriter& out, const StoredBytes& bytes) : out(out), rest(bytes.copy()) {}

    void write(const StructureLayout& layout) {
        out.beginObject();
        if (rest.size() != layout.size) {
            out.key(SIZE);
            out.number(rest.size());
        }
        // Shorter than its fields: there is no use in naming some of them.
        if (rest.size() >= layout.size) writeFields(layout, 0);
        writeRest();
        out.endObject();
    }

private:
    void writeFields(const StructureLayout& layout, std::uint32_t offset) {
        for (const protocols::Fields& table : layout.tables) {
            for (const Field& row : table)
                writeField(movedBy(row, offset));
        }
        for (const StructurePart& part : layout.parts)
            writePart(part, offset);
    }

    void writeField(const Field& field) {
        if (isZero(rest, field) || !canBeWritten(rest, field)) return;
        out.key(field.name);
        switch (field.encoding) {
        case Encoding::NUMBER:
            out.number(protocols::readNumber(rest, field));
            break;
        case Encoding::WIDE_NUMBER:
            out.wideNumber(protocols::readWideNumber(rest, field));
            break;
        case Encoding::TEXT:
        case Encoding::SWAPPED_TEXT:
            out.text(protocols::readText(rest, field));
            break;
        case Encoding::BYTES:
            out.text(core::strings::bytesToHex(protocols::readBytes(rest, field)));
            break;
        }
        std::fill_n(rest.data() + field.offset, field.size, std::uint8_t{0});
    }

    void writePart(const StructurePart& part, std::uint32_t offset) {
        const std::uint32_t start = offset + part.entries.offset;
        const std::uint32_t used = usedEntries(part.entries, start);
        if (used == 0) return;
        out.key(part.key);
        if (part.entries.count > 1) out.beginList();
        for (std::uint32_t i = 0; i < used; ++i) {
            out.beginObject();
            writeFields(part.layout, start + i * part.entries.size);
            out.endObject();
        }
        if (part.entries.count > 1) out.endList();
    }

    /// Up to the last one that isn't all zeroes.
    std::uint32_t usedEntries(const Entries& entries, std::uint32_t start) const {
        std::uint32_t used = entries.count;
        while (used > 0 && isZero(rest, bytesAt(start + (used - 1) * entries.size, entries.size))) {
            --used;
        }
        return used;
    }

    /// All that is left, in as few pieces as it pays to make.
    void writeRest() {
        constexpr std::uint32_t LONGEST_GAP = 12;
        std::uint32_t begin = nextByte(0);
        if (begin == rest.size()) return;
        out.key(OTHER_BYTES);
        out.beginList();
        while (begin < rest.size()) {
            std::uint32_t end = begin + 1;
            std::uint32_t next = nextByte(end);
            while (next < rest.size() && next - end <= LONGEST_GAP) {
                end = next + 1;
                next = nextByte(end);
            }
            writePatch(begin, end);
            begin = next;
        }
        out.endList();
    }

    /// The first one from here that isn't zero.
    std::uint32_t nextByte(std::uint32_t from) const {
        const std::uint8_t* const begin = rest.data();
        const auto* const found = std::find_if(begin + from, begin + rest.size(),
                                               [](std::uint8_t byte) { return byte != 0; });
        return static_cast<std::uint32_t>(found - begin);
    }

    void writePatch(std::uint32_t begin, std::uint32_t end) {
        out.beginObject();
        out.key("offset");
        out.number(begin);
        out.key("bytes");
        out.text(core::strings::bytesToHex(rest.data() + begin, end - begin));
        out.endObject();
    }

    JsonWriter& out;
    core::Payload rest;  ///< what isn't written yet
};

}  // namespace

void readStructure(const TextPlace& place, const StructureLayout& layout,
                   const StoredBytes& bytes) {
    const core::Payload& whole = bytes;
    StructureReader(whole).read(place, layout, 0, whole.size());
}

void readSizedStructure(const TextPlace& place, const StructureLayout& layout, const SizeRule& rule,
                        StoredBytes& bytes) {
    const core::Payload& before = bytes;
    const auto told = place.getTree().find(SIZE);
    std::uint64_t size = std::max(before.size(), layout.size);
    if (told != place.getTree().not_found()) {
        const TextPlace member(place, SIZE, told->second);
        size = member.number(layout.size, rule.most);
        if (size % rule.unit != 0) {
            member.fail("a multiple of " + std::to_string(rule.unit) + " was expected");
        }
    }
    place.takeBytes(size);
    if (size != before.size()) {
        const StoredBytes resized(static_cast<std::uint32_t>(size));
        protocols::writeBytes(resized, bytesAt(0, static_cast<std::uint32_t>(size)), before);
        bytes = resized;
    }
    readStructure(place, layout, bytes);
}

void writeStructure(JsonWriter& out, const StructureLayout& layout, const StoredBytes& bytes) {
    StructureWriter(out, bytes).write(layout);
}

}  // namespace orvel::simulator
