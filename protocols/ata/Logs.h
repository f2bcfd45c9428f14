// What the logs' fields alone don't give: log directories, split addresses, temperatures.
#pragma once

#include "core/Payload.h"
#include "protocols/Field.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace orvel::protocols::ata {

/// The field of a log address in a directory read by SMART READ LOG or by READ LOG EXT. Throws
/// core::Status by value, code 14, for address 00h, which is the directory itself.
Field smartLogPages(std::uint8_t logAddress);
Field generalPurposeLogPages(std::uint8_t logAddress);

/// Page numbers of a log's page 00h, as the IDENTIFY DEVICE data log and the Device Statistics log
/// have them: as many as it tells. Throws core::Status by value, code 14, if the payload ends
/// before they do.
std::vector<std::uint8_t> readPageNumbers(const core::Payload& firstPage);

/// Pages of the IDENTIFY DEVICE data log: ACS-4, table "Defined IDENTIFY DEVICE data log pages".
namespace identify_device_page {
inline constexpr std::uint8_t LIST_OF_PAGES = 0x00;
inline constexpr std::uint8_t COPY_OF_IDENTIFY_DEVICE_DATA = 0x01;
inline constexpr std::uint8_t CAPACITY = 0x02;
inline constexpr std::uint8_t SUPPORTED_CAPABILITIES = 0x03;
inline constexpr std::uint8_t CURRENT_SETTINGS = 0x04;
inline constexpr std::uint8_t ATA_STRINGS = 0x05;
inline constexpr std::uint8_t SECURITY = 0x06;
inline constexpr std::uint8_t PARALLEL_ATA = 0x07;
inline constexpr std::uint8_t SERIAL_ATA = 0x08;
inline constexpr std::uint8_t ZONED_DEVICE_INFORMATION = 0x09;
}  // namespace identify_device_page

// The LBA of the extended error log's entries stands in the order (7:0), (31:24), (15:8), (39:32),
// (23:16), (47:40). `lba7To0` is the field of the first byte. Both throw core::Status by value,
// code 14, if the payload ends too early.
std::uint64_t readSplitLba(const core::Payload& log, const Field& lba7To0);
void writeSplitLba(const core::Payload& log, const Field& lba7To0, std::uint64_t lba);

/// A temperature of one byte, in degrees Celsius; nothing for 80h, which is no temperature. Throws
/// core::Status by value, code 14, if the payload ends before the field does.
std::optional<int> readTemperature(const core::Payload& structure, const Field& field);

}  // namespace orvel::protocols::ata
