// General purpose logs of a SATA drive, of any length.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"

#include <cstdint>

namespace orvel::interfaces::orveli::jobs::ata_logs {

/// Of a page, in bytes.
inline constexpr std::uint32_t PAGE_SIZE = 512;

/// How many pages the log directory gives the address; 0 for a log that the drive doesn't have.
/// Throws core::Status by value: 10/3 for a drive that says that it has no such logs at all, 10/33
/// for something else than a log directory, else as `ata_access::read` does.
std::uint16_t pagesAt(core::Device& device, std::uint8_t logAddress);

/// Pages of a log, in pieces of a length that every adapter takes. Throws core::Status by value:
/// 0/14 for pages beyond the last that a log can have, else as `ata_access::read` does.
core::Payload read(core::Device& device, std::uint8_t logAddress, std::uint32_t firstPage,
                   std::uint32_t pages);

}  // namespace orvel::interfaces::orveli::jobs::ata_logs
