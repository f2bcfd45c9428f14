#include "protocols/nvme/LbaFormats.h"

#include "protocols/nvme/Structures.h"

#include <iterator>

namespace orvel::protocols::nvme {

namespace {

std::uint64_t readOf(const core::Payload& identifyNamespace, std::uint32_t format,
                     const Field& row) {
    return readNumber(identifyNamespace, fieldOf(identify_namespace::LBA_FORMATS, format, row));
}

}  // namespace

std::uint32_t formatInUse(const core::Payload& identifyNamespace) {
    return readBits(identifyNamespace, identify_namespace::FLBAS, flbas::FORMAT);
}

std::uint64_t blockSize(const core::Payload& identifyNamespace, std::uint32_t format) {
    constexpr std::uint64_t SMALLEST_EXPONENT = 9;  // what is less is no format
    constexpr std::uint64_t LARGEST_EXPONENT = 31;
    const std::uint64_t exponent = readOf(identifyNamespace, format, lba_format::LBADS);
    if (exponent < SMALLEST_EXPONENT || exponent > LARGEST_EXPONENT) return 0;
    return std::uint64_t{1} << exponent;
}

std::uint64_t metadataSize(const core::Payload& identifyNamespace, std::uint32_t format) {
    return readOf(identifyNamespace, format, lba_format::MS);
}

bool isProtectionAvailable(const core::Payload& identifyNamespace, std::uint32_t format,
                           std::uint32_t type) {
    constexpr std::uint64_t PROTECTION_BYTES = 8;
    constexpr BitField TYPES[] = {dpc::TYPE_1, dpc::TYPE_2, dpc::TYPE_3};
    if (type == 0) return true;
    return type <= std::size(TYPES) &&
           metadataSize(identifyNamespace, format) >= PROTECTION_BYTES &&
           readBits(identifyNamespace, identify_namespace::DPC, TYPES[type - 1]) != 0;
}

}  // namespace orvel::protocols::nvme
