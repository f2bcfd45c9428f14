// The register values by which a drive answers an ATA command.
#pragma once

#include "core/Payload.h"
#include "core/ProtocolResult.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::protocols::ata {

/// Bits of the STATUS field: ACS-4, "STATUS field". Bit 4 is the command's own.
namespace status_bits {
inline constexpr std::uint8_t BSY = 1U << 7;   ///< Busy
inline constexpr std::uint8_t DRDY = 1U << 6;  ///< Device Ready
inline constexpr std::uint8_t DF = 1U << 5;    ///< Device Fault
inline constexpr std::uint8_t DRQ = 1U << 3;   ///< Data Request
inline constexpr std::uint8_t ALIGNMENT_ERROR = 1U << 2;
inline constexpr std::uint8_t SENSE_DATA_AVAILABLE = 1U << 1;
inline constexpr std::uint8_t ERR = 1U << 0;  ///< Error
}  // namespace status_bits

/// Bits of the ERROR field: ACS-4, "ERROR field". Bits 5, 3 and 1 are obsolete.
namespace error_bits {
inline constexpr std::uint8_t ICRC = 1U << 7;  ///< Interface CRC
inline constexpr std::uint8_t UNC = 1U << 6;   ///< Uncorrectable Error
inline constexpr std::uint8_t IDNF = 1U << 4;  ///< ID Not Found
inline constexpr std::uint8_t ABRT = 1U << 2;  ///< Abort
inline constexpr std::uint8_t CCTO = 1U << 0;  ///< Command Completion Time Out
}  // namespace error_bits

/// A plain value: ACS-4, "Normal outputs" and "Error outputs".
class ReturnedTaskFile : public core::ProtocolResult {
public:
    /// Of the ATA Status Return descriptor: SAT-3, table "ATA Status Return descriptor".
    static constexpr std::uint8_t DESCRIPTOR_CODE = 0x09;
    static constexpr std::uint32_t DESCRIPTOR_SIZE = 14;

    std::unique_ptr<core::ProtocolResult> clone() const override;
    std::string toString() const override;
    std::unique_ptr<core::xml::XmlElement> toXml() const override;

    /// Whether the command is done and failed in no way.
    bool isSuccess() const;

    bool operator==(const ReturnedTaskFile& other) const;

    /// Out of the sense data of a SCSI command, descriptor format (72h, 73h). Throws core::Status
    /// by value: code 17 without sense data, or with a response code of zero, as in a buffer that
    /// nobody filled; 15 without a descriptor of code 09h; 16 if the data ends before the
    /// descriptor does, or before the header.
    static ReturnedTaskFile fromSenseData(const core::Payload& senseData);

    /// Out of the descriptor by itself. Throws likewise: code 17 for no bytes, 15 for another
    /// descriptor code, 16 for less than 14 bytes or a length in byte 1 below 12.
    static ReturnedTaskFile fromDescriptor(const core::Payload& descriptor);

    /// The 14 bytes of the descriptor. Without `is48Bit` the upper bytes are zero.
    core::Payload toDescriptor() const;

    /// The sense data of a SCSI command around it: response code 72h, and as additional sense "ATA
    /// pass through information available" (00h/1Dh) at sense key 1h.
    core::Payload toSenseData() const;

    std::uint8_t status = 0;
    std::uint8_t error = 0;
    std::uint16_t count = 0;
    std::uint64_t lba = 0;  ///< 48 bits
    std::uint8_t device = 0;
    bool is48Bit = false;  ///< the EXTEND bit: the upper bytes of count and LBA mean something
};

}  // namespace orvel::protocols::ata
