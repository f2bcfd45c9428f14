// How the blocks of a namespace are laid out, from the bytes of Identify Namespace.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::protocols::nvme {

// Each throws core::Status by value, code 14, if the structure has no such format or ends before
// what is read of it.

/// The number of the format that the namespace has.
std::uint32_t formatInUse(const core::Payload& identifyNamespace);

/// Size of a data block in bytes, without metadata; 0 for a format that isn't available, or that
/// claims blocks of more than 2 GiB.
std::uint64_t blockSize(const core::Payload& identifyNamespace, std::uint32_t format);

/// Size of each block's metadata in bytes.
std::uint64_t metadataSize(const core::Payload& identifyNamespace, std::uint32_t format);

/// Whether blocks of the format have room for protection information of this type and the namespace
/// is capable of it. Type 0 is none, which all formats have.
bool isProtectionAvailable(const core::Payload& identifyNamespace, std::uint32_t format,
                           std::uint32_t type);

}  // namespace orvel::protocols::nvme
