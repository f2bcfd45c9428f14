#include "simulator/FirmwareImage.h"

namespace orvel::simulator {

std::optional<FirmwareImageHeader> readFirmwareImageHeader(const core::Payload& image) {
    if (image.size() < firmware_image::HEADER_SIZE) return {};
    if (protocols::readText(image, firmware_image::MAGIC) != firmware_image::MAGIC_TEXT) return {};
    FirmwareImageHeader header;
    header.revision = protocols::readText(image, firmware_image::REVISION);
    header.length =
        static_cast<std::uint32_t>(protocols::readNumber(image, firmware_image::LENGTH));
    if (header.revision.empty()) return {};
    return header;
}

}  // namespace orvel::simulator
