// Fills structures from tables.
#pragma once

#include "protocols/Field.h"
#include "simulator/StoredBytes.h"

#include <cstdint>
#include <span>
#include <string>

namespace orvel::simulator {

/// What stands in a field of up to 8 bytes.
struct NumberRow {
    const protocols::Field& field;
    std::uint64_t value;
};

void writeRows(const core::Payload& structure, std::span<const NumberRow> rows);

/// A log of the firmware in its own form: the header, then entries of 16 bytes, which have a time
/// in milliseconds, a code and an argument. `size` is in bytes, a multiple of 512.
StoredBytes makeStoredLog(const std::string& signature, std::uint32_t entries, std::uint32_t size);

/// Always the same for the same text, and hardly ever that of another one.
std::uint64_t numberFromText(const std::string& text);

}  // namespace orvel::simulator
