// How many blocks namespace 1 of a Norvo drive can have.
#pragma once

#include "core/Payload.h"
#include "protocols/norvo/Structures.h"

#include <cstdint>

namespace orvel::protocols::norvo {

/// In blocks of `blockBytes`, of plain data: Identify Controller counts them in units of 512 bytes,
/// whatever the format. 0 if the drive doesn't tell, or for a block that is smaller than a unit.
inline std::uint64_t nativeBlocks(const core::Payload& controller, std::uint64_t blockBytes) {
    constexpr std::uint64_t UNIT = 512;
    const std::uint64_t native = readNumber(controller, identify_controller::NativeMaximumLBA);
    const std::uint64_t units = blockBytes / UNIT;
    // A number of all ones can't be meant, and comes out as none.
    return native == 0 || units == 0 ? 0 : (native + 1) / units;
}

}  // namespace orvel::protocols::norvo
