// SMART attributes of SATA drives: values and thresholds brought together.
#pragma once

#include "core/Device.h"

#include <cstdint>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// One attribute.
struct SmartAttribute {
    std::uint8_t id = 0;
    std::uint16_t flags = 0;  ///< bits of ata::smart_attribute_flags
    std::uint8_t normalized = 0;
    std::uint8_t worst = 0;
    std::uint8_t threshold = 0;  ///< 0 for none
    std::uint64_t raw = 0;       ///< 48 bits

    /// Whether the value has come down to the threshold: for a pre-failure attribute the drive is
    /// about to fail, for another it has lived its life.
    bool isAtThreshold() const { return threshold != 0 && normalized <= threshold; }

    bool isPreFailure() const;
};

/// As the drive has them, in its order. A drive that refuses its thresholds has attributes without
/// them. Throws core::Status by value: 10/60 if SMART is known to be disabled, 10/33 for data with
/// a wrong checksum, and what the commands throw.
std::vector<SmartAttribute> readSmartAttributes(core::Device& device);

/// The attribute of this identifier, or null. The pointer is into `attributes`.
const SmartAttribute* findAttribute(const std::vector<SmartAttribute>& attributes, std::uint8_t id);

}  // namespace orvel::interfaces::orveli::jobs
