// Log pages of an NVMe drive, of any length.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "protocols/nvme/AdminCommands.h"

#include <cstdint>

namespace orvel::interfaces::orveli::jobs {

/// Reads a page in as many pieces as the drive's limit for one command asks for.
class NvmeLogReader {
public:
    /// Identifies the controller. Throws core::Status by value as `nvme_access::identify` does.
    explicit NvmeLogReader(core::Device& device);

    /// `request.bytes` from the page's start on. Throws core::Status by value: 10/3 for a page that
    /// the drive doesn't have, 0/25 for another refusal, 0/49 if data is missing, or the path's.
    core::Payload read(const protocols::nvme::LogPageRequest& request) const;

    /// The Identify Controller data structure.
    const core::Payload& getController() const { return controller; }

private:
    core::Device& device;
    core::Payload controller;
    std::uint32_t largestPiece;  ///< in bytes
};

}  // namespace orvel::interfaces::orveli::jobs
