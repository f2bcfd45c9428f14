#include "protocols/ata/ReturnedTaskFile.h"

#include "core/CoreStatuses.h"
#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "protocols/ata/RegisterText.h"

#include <span>
#include <tuple>

namespace orvel::protocols::ata {

namespace {

struct BitName {
    std::uint8_t bit;
    const char* name;
};

// clang-format off
constexpr BitName STATUS_BITS[] = {
//   bit                                 name
    {status_bits::BSY,                   "BSY"},
    {status_bits::DRDY,                  "DRDY"},
    {status_bits::DF,                    "DF"},
    {status_bits::DRQ,                   "DRQ"},
    {status_bits::ALIGNMENT_ERROR,       "ALIGNMENT ERROR"},
    {status_bits::SENSE_DATA_AVAILABLE,  "SENSE DATA AVAILABLE"},
    {status_bits::ERR,                   "ERR"},
};

constexpr BitName ERROR_BITS[] = {
//   bit                                 name
    {error_bits::ICRC,                   "ICRC"},
    {error_bits::UNC,                    "UNC"},
    {error_bits::IDNF,                   "IDNF"},
    {error_bits::ABRT,                   "ABRT"},
    {error_bits::CCTO,                   "CCTO"},
};

// The descriptor: which byte holds what.
constexpr std::uint32_t CODE         =  0;
constexpr std::uint32_t LENGTH       =  1;  // of what follows
constexpr std::uint32_t FLAGS        =  2;  // bit 0: EXTEND
constexpr std::uint32_t ERROR        =  3;
constexpr std::uint32_t COUNT_15_8   =  4;
constexpr std::uint32_t COUNT_7_0    =  5;
constexpr std::uint32_t LBA_31_24    =  6;
constexpr std::uint32_t LBA_7_0      =  7;
constexpr std::uint32_t LBA_39_32    =  8;
constexpr std::uint32_t LBA_15_8     =  9;
constexpr std::uint32_t LBA_47_40    = 10;
constexpr std::uint32_t LBA_23_16    = 11;
constexpr std::uint32_t DEVICE       = 12;
constexpr std::uint32_t STATUS       = 13;
// clang-format on

/// Of a descriptor: what the length doesn't count.
constexpr std::uint32_t DESCRIPTOR_HEADER = 2;
constexpr std::uint8_t EXTEND = 1U << 0;

// Sense data: SPC-4, "Descriptor format sense data".
constexpr std::uint8_t CURRENT_ERRORS = 0x72;
constexpr std::uint8_t DEFERRED_ERRORS = 0x73;
constexpr std::uint8_t RESPONSE_CODE_MASK = 0x7F;
constexpr std::uint32_t SENSE_HEADER = 8;
constexpr std::uint32_t ADDITIONAL_SENSE_LENGTH = 7;
constexpr std::uint8_t RECOVERED_ERROR = 0x01;
constexpr std::uint8_t ATA_PASS_THROUGH_INFORMATION = 0x1D;

std::string bitsText(std::uint8_t value, std::span<const BitName> bits) {
    std::string names;
    for (const auto& [bit, name] : bits) {
        if ((value & bit) == 0) continue;
        if (!names.empty()) names += ", ";
        names += name;
    }
    return registerText(value, 2) + (names.empty() ? "" : " (" + names + ")");
}

RegisterValues valuesOf(const ReturnedTaskFile& taskFile) {
    return {
        {"Status", bitsText(taskFile.status, STATUS_BITS)},
        {"Error", bitsText(taskFile.error, ERROR_BITS)},
        {"Count", registerText(taskFile.count, 4)},
        {"LBA", registerText(taskFile.lba, 12)},
        {"Device", registerText(taskFile.device, 2)},
        {"48-bit", core::strings::toString(taskFile.is48Bit)},
    };
}

/// The descriptor at the front of `bytes`.
ReturnedTaskFile parsed(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < ReturnedTaskFile::DESCRIPTOR_SIZE ||
        bytes[LENGTH] < ReturnedTaskFile::DESCRIPTOR_SIZE - DESCRIPTOR_HEADER)
        throw core::statuses::notEnoughSenseDataForAtaReturnDescriptor();
    const auto at = [&bytes](std::uint32_t index, unsigned shift) {
        return static_cast<std::uint64_t>(bytes[index]) << shift;
    };
    ReturnedTaskFile taskFile;
    taskFile.status = bytes[STATUS];
    taskFile.error = bytes[ERROR];
    taskFile.device = bytes[DEVICE];
    taskFile.is48Bit = (bytes[FLAGS] & EXTEND) != 0;
    taskFile.count = bytes[COUNT_7_0];
    taskFile.lba = at(LBA_23_16, 16) | at(LBA_15_8, 8) | at(LBA_7_0, 0);
    if (taskFile.is48Bit) {
        taskFile.count = static_cast<std::uint16_t>(taskFile.count | at(COUNT_15_8, 8));
        taskFile.lba |= at(LBA_47_40, 40) | at(LBA_39_32, 32) | at(LBA_31_24, 24);
    }
    return taskFile;
}

}  // namespace

std::unique_ptr<core::ProtocolResult> ReturnedTaskFile::clone() const {
    return std::make_unique<ReturnedTaskFile>(*this);
}

std::string ReturnedTaskFile::toString() const {
    return toLines(valuesOf(*this));
}

std::unique_ptr<core::xml::XmlElement> ReturnedTaskFile::toXml() const {
    return toObject(core::xml::categories::ProtocolResult, valuesOf(*this));
}

bool ReturnedTaskFile::isSuccess() const {
    constexpr std::uint8_t FAILURES =
        status_bits::BSY | status_bits::DF | status_bits::DRQ | status_bits::ERR;
    return (status & FAILURES) == 0;
}

bool ReturnedTaskFile::operator==(const ReturnedTaskFile& other) const {
    const auto values = [](const ReturnedTaskFile& file) {
        return std::tie(file.status, file.error, file.count, file.lba, file.device, file.is48Bit);
    };
    return values(*this) == values(other);
}

ReturnedTaskFile ReturnedTaskFile::fromSenseData(const core::Payload& senseData) {
    std::span<const std::uint8_t> bytes(senseData.data(), senseData.size());
    if (bytes.empty() || (bytes[0] & RESPONSE_CODE_MASK) == 0) throw core::statuses::noSenseData();
    const std::uint8_t responseCode = bytes[0] & RESPONSE_CODE_MASK;
    if (responseCode != CURRENT_ERRORS && responseCode != DEFERRED_ERRORS)
        throw core::statuses::noAtaReturnDescriptor();
    if (bytes.size() < SENSE_HEADER)
        throw core::statuses::notEnoughSenseDataForAtaReturnDescriptor();
    const std::size_t length = bytes[ADDITIONAL_SENSE_LENGTH];
    auto descriptors = bytes.subspan(SENSE_HEADER);
    if (length < descriptors.size()) descriptors = descriptors.first(length);
    while (descriptors.size() >= DESCRIPTOR_HEADER && descriptors[CODE] != DESCRIPTOR_CODE) {
        const std::size_t size = DESCRIPTOR_HEADER + descriptors[LENGTH];
        if (size > descriptors.size()) break;
        descriptors = descriptors.subspan(size);
    }
    if (descriptors.empty() || descriptors[CODE] != DESCRIPTOR_CODE)
        throw core::statuses::noAtaReturnDescriptor();
    return parsed(descriptors);
}

ReturnedTaskFile ReturnedTaskFile::fromDescriptor(const core::Payload& descriptor) {
    if (descriptor.size() == 0) throw core::statuses::noSenseData();
    if (*descriptor.at(CODE) != DESCRIPTOR_CODE) throw core::statuses::noAtaReturnDescriptor();
    return parsed({descriptor.data(), descriptor.size()});
}

core::Payload ReturnedTaskFile::toDescriptor() const {
    core::Payload descriptor(DESCRIPTOR_SIZE);
    const auto put = [&descriptor](std::uint32_t index, std::uint64_t value) {
        *descriptor.at(index) = static_cast<std::uint8_t>(value);
    };
    put(CODE, DESCRIPTOR_CODE);
    put(LENGTH, DESCRIPTOR_SIZE - DESCRIPTOR_HEADER);
    put(FLAGS, is48Bit ? EXTEND : 0U);
    put(ERROR, error);
    put(COUNT_7_0, count);
    put(LBA_7_0, lba);
    put(LBA_15_8, lba >> 8U);
    put(LBA_23_16, lba >> 16U);
    put(DEVICE, device);
    put(STATUS, status);
    if (is48Bit) {
        put(COUNT_15_8, static_cast<std::uint64_t>(count >> 8U));
        put(LBA_31_24, lba >> 24U);
        put(LBA_39_32, lba >> 32U);
        put(LBA_47_40, lba >> 40U);
    }
    return descriptor;
}

core::Payload ReturnedTaskFile::toSenseData() const {
    core::Payload senseData(SENSE_HEADER);
    *senseData.at(0) = CURRENT_ERRORS;
    *senseData.at(1) = RECOVERED_ERROR;
    *senseData.at(3) = ATA_PASS_THROUGH_INFORMATION;
    *senseData.at(ADDITIONAL_SENSE_LENGTH) = DESCRIPTOR_SIZE;
    senseData.append(toDescriptor());
    return senseData;
}

}  // namespace orvel::protocols::ata
