// The checksum in the last byte of SMART structures and of IDENTIFY DEVICE data.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::protocols::ata {

// ACS-4: the sum of all 512 bytes of a page is zero, modulo 256. Both throw core::Status by value,
// code 14, if the payload ends before the page does.

bool isChecksumRight(const core::Payload& structure, std::uint32_t page = 0);

/// Sets byte 511 of the page.
void writeChecksum(const core::Payload& structure, std::uint32_t page = 0);

}  // namespace orvel::protocols::ata
