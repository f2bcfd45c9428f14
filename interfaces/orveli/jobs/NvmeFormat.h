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

/// What became of namespaces that are not attached to the controller.
struct DetachedNamespaces {
    std::vector<std::uint32_t> numbers = {};
    bool areFormatted = false;  ///< they too, by a drive that can only format all that there is
};

/// Formats the namespace, or all that are attached to the controller: nothing is sent before it is
/// clear that each of them can have the format. Returns which others there are if it was to format
/// all.
///
/// Throws core::Status by value: 10/3 without Format NVM, 10/80 for a namespace that isn't
/// attached, 10/33 for lists of namespaces that make no sense, 10/27 to 10/31 for what a namespace
/// can't have, 10/171 with the drive's words if it refuses, or if it would format more than the
/// one namespace that it was asked to; and the path's status.
DetachedNamespaces formatNamespaces(core::Device& device, const NvmeFormat& wanted);

}  // namespace orvel::interfaces::orveli::jobs
