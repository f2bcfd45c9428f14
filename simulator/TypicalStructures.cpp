#include "simulator/TypicalStructures.h"

#include "protocols/Entries.h"
#include "protocols/norvo/Structures.h"

namespace orvel::simulator {

using protocols::Encoding;
using protocols::Entries;
using protocols::Field;
namespace stored_log = protocols::norvo::stored_log;

void writeRows(const core::Payload& structure, std::span<const NumberRow> rows) {
    for (const auto& [field, value] : rows)
        writeNumber(structure, field, value);
}

StoredBytes makeStoredLog(const std::string& signature, std::uint32_t entries, std::uint32_t size) {
    constexpr Field TIME{"Time", "Milliseconds since the drive was made", 0, 8, Encoding::NUMBER};
    constexpr Field CODE{"Code", "What happened", 8, 4, Encoding::NUMBER};
    constexpr Field ARGUMENT{"Argument", "What it was about", 12, 4, Encoding::NUMBER};
    constexpr std::uint64_t STEP = 3'600'123;
    constexpr std::uint64_t FIRST_CODE = 0x1000;
    constexpr std::uint64_t CODES = 7;
    constexpr std::uint32_t HEADER_SIZE = 16;
    constexpr std::uint32_t ENTRY_SIZE = 16;

    StoredBytes log(size);
    writeText(log, stored_log::Signature, signature);
    writeNumber(log, stored_log::Version, 1);
    writeNumber(log, stored_log::Length, size);
    writeNumber(log, stored_log::EntryCount, entries);
    const Entries places{HEADER_SIZE, ENTRY_SIZE, entries};
    for (std::uint32_t i = 0; i < entries; ++i) {
        writeNumber(log, fieldOf(places, i, TIME), (i + 1) * STEP);
        writeNumber(log, fieldOf(places, i, CODE), FIRST_CODE + i % CODES);
        writeNumber(log, fieldOf(places, i, ARGUMENT), i);
    }
    return log;
}

std::uint64_t numberFromText(const std::string& text) {
    // FNV-1a.
    constexpr std::uint64_t PRIME = 0x100000001B3;
    std::uint64_t number = 0xCBF29CE484222325;
    for (const char character : text)
        number = (number ^ static_cast<unsigned char>(character)) * PRIME;
    return number;
}

}  // namespace orvel::simulator
