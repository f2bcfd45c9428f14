#include "protocols/ata/Logs.h"

#include "protocols/ata/Structures.h"

#include <array>

namespace orvel::protocols::ata {

namespace {

constexpr std::uint8_t NO_TEMPERATURE = 0x80;

/// By how much each byte of a split LBA is shifted.
constexpr std::array<unsigned, 6> LBA_SHIFTS = {0, 24, 8, 32, 16, 40};

Field directoryField(std::uint8_t logAddress, const Field& pages) {
    // Below address 01h the index wraps, and is out of range.
    return fieldOf(log_directory::ADDRESSES, logAddress - 1U, pages);
}

Entries bytesFrom(const Field& first) {
    return {first.offset, 1, LBA_SHIFTS.size()};
}

constexpr Field BYTE{"Byte", "Byte", 0, 1, Encoding::NUMBER};

}  // namespace

Field smartLogPages(std::uint8_t logAddress) {
    return directoryField(logAddress, smart_log_directory_entry::NumberOfPages);
}

Field generalPurposeLogPages(std::uint8_t logAddress) {
    return directoryField(logAddress, general_purpose_log_directory_entry::NumberOfPages);
}

std::vector<std::uint8_t> readPageNumbers(const core::Payload& firstPage) {
    const std::uint64_t count = readNumber(firstPage, identify_device_log::NumberOfEntries);
    std::vector<std::uint8_t> numbers;
    for (std::uint32_t i = 0; i < count; ++i)
        numbers.push_back(static_cast<std::uint8_t>(
            readNumber(firstPage, fieldOf(identify_device_log::PAGE_NUMBERS, i, BYTE))));
    return numbers;
}

std::uint64_t readSplitLba(const core::Payload& log, const Field& lba7To0) {
    std::uint64_t lba = 0;
    for (std::uint32_t i = 0; i < LBA_SHIFTS.size(); ++i)
        lba |= readNumber(log, fieldOf(bytesFrom(lba7To0), i, BYTE)) << LBA_SHIFTS[i];
    return lba;
}

void writeSplitLba(const core::Payload& log, const Field& lba7To0, std::uint64_t lba) {
    for (std::uint32_t i = 0; i < LBA_SHIFTS.size(); ++i)
        writeNumber(log, fieldOf(bytesFrom(lba7To0), i, BYTE), lba >> LBA_SHIFTS[i]);
}

std::optional<int> readTemperature(const core::Payload& structure, const Field& field) {
    const auto byte = static_cast<std::uint8_t>(readNumber(structure, field));
    if (byte == NO_TEMPERATURE) return std::nullopt;
    return static_cast<std::int8_t>(byte);
}

}  // namespace orvel::protocols::ata
