// Bytes as a value.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::simulator {

/// A payload of its own: unlike handles of core::Payload, copies share nothing. Reads and writes
/// go through the functions for payloads.
class StoredBytes {
public:
    /// All zeroes.
    explicit StoredBytes(std::uint32_t size = 0) : bytes(size) {}

    explicit StoredBytes(const core::Payload& payload);

    StoredBytes(const StoredBytes& other);
    StoredBytes& operator=(const StoredBytes& other);
    ~StoredBytes() = default;

    /// The bytes themselves: what is written to them is stored. Valid as long as this object.
    /// Implicit, so that the functions for payloads take it as it is.
    operator const core::Payload&() const { return bytes; }

    /// For whoever gets them out of the drive.
    core::Payload copy() const;

    bool operator==(const StoredBytes&) const = default;

private:
    core::Payload bytes;
};

}  // namespace orvel::simulator
