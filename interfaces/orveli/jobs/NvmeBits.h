// Single bits of NVMe structures.
#pragma once

#include "protocols/nvme/Structures.h"

namespace orvel::interfaces::orveli::jobs {

/// Whether the bit, or one of several, of the structure's field is set.
inline bool has(const core::Payload& structure, const protocols::Field& field,
                const protocols::nvme::BitField& bit) {
    return protocols::nvme::readBits(structure, field, bit) != 0;
}

}  // namespace orvel::interfaces::orveli::jobs
