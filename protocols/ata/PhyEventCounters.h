// The counters of the SATA Phy Event Counters log.
#pragma once

#include "core/Payload.h"

#include <cstdint>
#include <vector>

namespace orvel::protocols::ata {

struct PhyEventCounter {
    std::uint16_t id = 0;   ///< bits 11:0 of the identifier, and bit 15 if it is vendor specific
    std::uint8_t size = 4;  ///< of the value in bytes: 2, 4, 6 or 8
    std::uint64_t value = 0;

    bool operator==(const PhyEventCounter&) const = default;
};

/// The counters of a page of 512 bytes in order, up to the end mark, an identifier that gives no
/// length, or the end of the page. Throws core::Status by value, code 14, for a shorter payload.
std::vector<PhyEventCounter> readPhyEventCounters(const core::Payload& page);

/// A page of 512 bytes with its checksum. Throws core::Status by value, code 36, for a size that
/// none can have, and code 14 for more counters than fit.
core::Payload makePhyEventCounters(const std::vector<PhyEventCounter>& counters);

/// The standard's words; "Vendor specific", or "Unknown counter".
const char* phyEventCounterName(std::uint16_t id);

}  // namespace orvel::protocols::ata
