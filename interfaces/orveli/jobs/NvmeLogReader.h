// Log pages of an NVMe drive, of any length.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "protocols/nvme/AdminCommands.h"

#include <cstdint>

namespace orvel::interfaces::orveli::jobs {

/// Reads a page in as many pieces as the drive's limit for one command asks for, or at once from a
/// drive that knows no offsets (LPA, bit 2).
class NvmeLogReader {
public:
    /// Identifies the controller. Throws core::Status by value as `nvme_access::identify` does.
    explicit NvmeLogReader(core::Device& device);

    /// `request.bytes` from `request.offset` on. Throws core::Status by value: 10/3 for a page that
    /// the drive doesn't have, and for a part that it can't be asked for; 0/25 for another refusal,
    /// 0/49 if data is missing, or the path's.
    core::Payload read(const protocols::nvme::LogPageRequest& request) const;

    /// Whether so many bytes from a page's start on can be read.
    bool canRead(std::uint32_t bytes) const { return hasOffsets || bytes <= largestPiece; }

    /// The Identify Controller data structure.
    const core::Payload& getController() const { return controller; }

private:
    core::Device& device;
    core::Payload controller;
    bool hasOffsets;             ///< and lengths of 32 bits
    std::uint32_t largestPiece;  ///< in bytes
};

}  // namespace orvel::interfaces::orveli::jobs
