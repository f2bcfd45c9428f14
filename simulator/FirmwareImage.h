// The firmware image that simulated drives take, of whichever kind they are.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"

#include <cstdint>
#include <optional>
#include <string>

namespace orvel::simulator {

/// A header, then anything. Invented for simulated drives.
namespace firmware_image {
inline constexpr char MAGIC_TEXT[] = "TAVIKSIM";
inline constexpr protocols::Field MAGIC{"Magic", "TAVIKSIM", 0, 8, protocols::Encoding::TEXT};
inline constexpr protocols::Field REVISION{"Revision", "Firmware Revision", 8, 8,
                                           protocols::Encoding::TEXT};
inline constexpr protocols::Field LENGTH{"Length", "Bytes of the whole image", 16, 4,
                                         protocols::Encoding::NUMBER};
inline constexpr std::uint32_t HEADER_SIZE = 20;
}  // namespace firmware_image

struct FirmwareImageHeader {
    std::string revision;
    std::uint32_t length = 0;  ///< of the whole image in bytes
};

/// Of an image or its first piece; nothing if it isn't one.
std::optional<FirmwareImageHeader> readFirmwareImageHeader(const core::Payload& image);

}  // namespace orvel::simulator
