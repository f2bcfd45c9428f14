// What the text of each structure can have.
#pragma once

#include "simulator/StructureText.h"

#include <cstdint>

namespace orvel::simulator::layouts {

// NVMe.
extern const StructureLayout IDENTIFY_CONTROLLER;
extern const StructureLayout IDENTIFY_NAMESPACE;
extern const StructureLayout SMART_HEALTH_LOG;
extern const StructureLayout ERROR_INFORMATION_ENTRY;
extern const StructureLayout SELF_TEST_RESULT;

// SATA.
extern const StructureLayout IDENTIFY_DEVICE;
extern const StructureLayout SMART_DATA;
extern const StructureLayout SMART_THRESHOLDS;
extern const StructureLayout EXTENDED_ERROR;
extern const StructureLayout EXTENDED_SELF_TEST_DESCRIPTOR;
extern const StructureLayout SCT_STATUS;

/// Without fields.
extern const StructureLayout PASSWORD;
extern const StructureLayout BLOCK;
extern const StructureLayout IMAGE_PIECE;

/// A vendor's log page of an NVMe drive by its identifier.
const StructureLayout& vendorLog(std::uint8_t identifier);

/// By page number.
const StructureLayout& deviceStatistics(std::uint8_t page);

/// A page of a log of a SATA drive; only the first has a header.
const StructureLayout& logPage(std::uint8_t logAddress, std::size_t page);

}  // namespace orvel::simulator::layouts
