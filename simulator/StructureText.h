// Structures of drives as text: each field by its name in the table of the structure.
#pragma once

#include "protocols/Entries.h"
#include "protocols/Field.h"
#include "simulator/JsonWriter.h"
#include "simulator/StoredBytes.h"
#include "simulator/TextPlace.h"

#include <cstdint>
#include <span>

namespace orvel::simulator {

struct StructureLayout;

/// Equal parts of a structure, such as the attributes of SMART data. A single one stands for
/// itself, several are a list.
struct StructurePart {
    const char* key;
    protocols::Entries entries;
    const StructureLayout& layout;
};

/// What the text of a structure can have.
struct StructureLayout {
    std::uint32_t size;
    std::span<const protocols::Fields> tables;  ///< the standard's, the vendor's
    std::span<const StructurePart> parts = {};
    bool hasWords = false;  ///< key "words" takes 16-bit words by number
};

/// Changes what the text mentions. Bytes without a field stand in "otherBytes", a list of
/// `{"offset": 480, "bytes": "0102"}`; fields go before them.
void readStructure(const TextPlace& place, const StructureLayout& layout, const StoredBytes& bytes);

/// Every byte that isn't zero, as an object. Also its size, if it isn't that of the layout.
void writeStructure(JsonWriter& out, const StructureLayout& layout, const StoredBytes& bytes);

/// A structure whose size key "size" may tell: at least that of the layout, a multiple of `unit`
/// and at most `most`.
struct SizeRule {
    std::uint32_t unit;
    std::uint32_t most;
};

void readSizedStructure(const TextPlace& place, const StructureLayout& layout, const SizeRule& rule,
                        StoredBytes& bytes);

}  // namespace orvel::simulator
