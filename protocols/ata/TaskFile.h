// The register values by which an ATA command is given to a drive.
#pragma once

#include <cstdint>

namespace orvel::protocols::ata {

/// A plain record: ACS-4, "Command inputs". A 28-bit command takes the low 8 bits of feature and
/// count, the low 24 bits of the LBA, and its LBA (27:24) in the low 4 bits of `device`.
struct TaskFile {
    std::uint16_t feature = 0;
    std::uint16_t count = 0;
    std::uint64_t lba = 0;  ///< 48 bits
    std::uint8_t device = 0;
    std::uint8_t command = 0;
    bool is48Bit = false;

    bool operator==(const TaskFile&) const = default;
};

}  // namespace orvel::protocols::ata
