// Formats the namespaces of an NVMe drive.
#pragma once

#include "core/Device.h"
#include "protocols/nvme/AdminCommands.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// Whatever isn't told stays as it is, for each namespace by itself.
struct NvmeFormat {
    std::uint32_t nsid = protocols::nvme::ALL_NAMESPACES;
    std::uint8_t secureErase = protocols::nvme::secure_erase::NONE;
    std::optional<std::uint8_t> lbaFormat = {};
    std::optional<std::uint8_t> protectionInformation = {};
    std::optional<std::uint8_t> protectionInformationLocation = {};
    std::optional<std::uint8_t> metadataSettings = {};
};

/// Formats the namespace, or all that are attached to the controller: nothing is sent before it is
/// clear that each of them can have the format.
///
/// Throws core::Status by value: 10/3 without Format NVM, 10/80 for a namespace that isn't
/// attached, 10/33 for lists of namespaces that make no sense, 10/27 to 10/31 for what a namespace
/// can't have, 10/171 with the drive's words if it refuses, or if it would format more than it was
/// asked to; and the path's status.
void formatNamespaces(core::Device& device, const NvmeFormat& wanted);

/// Namespaces that `formatNamespaces` doesn't reach because they are not attached to the
/// controller.
std::vector<std::uint32_t> detachedNamespaces(core::Device& device);

}  // namespace orvel::interfaces::orveli::jobs
