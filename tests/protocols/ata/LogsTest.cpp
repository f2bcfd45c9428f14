// Logs byte by byte: directories, error logs, self-test logs, page lists, temperatures.
#include "protocols/ata/Logs.h"

#include "protocols/ata/Structures.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvel::protocols::ata {
namespace {

using core::Payload;

TEST(Logs, DirectoriesHaveAnEntryForEachAddress) {
    const Payload directory(512);
    put(directory, 0, {0x01, 0x00});
    put(directory, 2, {0x03, 0x02});
    put(directory, 0x11 * 2, {0x01, 0x00});
    put(directory, 510, {0x10, 0x20});
    EXPECT_EQ(readNumber(directory, log_directory::LoggingVersion), 1U);
    EXPECT_EQ(readNumber(directory, smartLogPages(0x01)), 3U);
    EXPECT_EQ(readNumber(directory, smartLogPages(0xFF)), 0x10U);
    EXPECT_EQ(readNumber(directory, generalPurposeLogPages(0x01)), 0x203U);
    EXPECT_EQ(readNumber(directory, generalPurposeLogPages(0x11)), 1U);
    EXPECT_EQ(readNumber(directory, generalPurposeLogPages(0xFF)), 0x2010U);
    EXPECT_EQ(thrownCode([] { smartLogPages(0); }), 14);
    EXPECT_EQ(thrownCode([] { generalPurposeLogPages(0); }), 14);
}

TEST(Logs, ErrorsHoldTheirCommands) {
    const Payload log(512);
    put(log, 0, {0x01, 0x02});
    // The second entry lies at 92; its fifth command at 92 + 48, its error at 92 + 60.
    put(log, 140, {0x08, 0xD5, 0x01, 0x06, 0x4F, 0xC2, 0xA0, 0xB0, 0x78, 0x56, 0x34, 0x12});
    put(log, 152, {0x00, 0x40, 0x08, 0x11, 0x22, 0x33, 0x44, 0x51});
    put(log, 179, {0x03, 0x39, 0x30});
    put(log, 452, {0x05, 0x01});
    const auto command = [](const Field& field) {
        return fieldOf(error_log::ERRORS, 1, fieldOf(error_log::COMMANDS, 4, field));
    };
    const auto error = [](const Field& field) {
        return fieldOf(error_log::ERRORS, 1, fieldOf(error_log::ERROR, 0, field));
    };
    EXPECT_EQ(readNumber(log, error_log::ErrorLogIndex), 2U);
    EXPECT_EQ(readNumber(log, error_log::DeviceErrorCount), 0x105U);
    EXPECT_EQ(readNumber(log, command(error_log_command::DeviceControl)), 0x08U);
    EXPECT_EQ(readNumber(log, command(error_log_command::Feature)), 0xD5U);
    EXPECT_EQ(readNumber(log, command(error_log_command::Count)), 1U);
    EXPECT_EQ(readNumber(log, command(error_log_command::LBA)), 0xC24F06U);
    EXPECT_EQ(readNumber(log, command(error_log_command::Device)), 0xA0U);
    EXPECT_EQ(readNumber(log, command(error_log_command::Command)), 0xB0U);
    EXPECT_EQ(readNumber(log, command(error_log_command::Timestamp)), 0x12345678U);
    EXPECT_EQ(readNumber(log, error(error_log_error::Error)), 0x40U);
    EXPECT_EQ(readNumber(log, error(error_log_error::LBA)), 0x332211U);
    EXPECT_EQ(readNumber(log, error(error_log_error::Status)), 0x51U);
    EXPECT_EQ(readNumber(log, error(error_log_error::State)), 3U);
    EXPECT_EQ(readNumber(log, error(error_log_error::LifeTimestamp)), 12345U);
}

TEST(Logs, ExtendedErrorsHoldTheirCommands) {
    const Payload log(512);
    put(log, 0, {0x01, 0x00, 0x34, 0x12});
    // The fourth entry lies at 376; its fifth command at 376 + 72, its error at 376 + 90.
    put(log, 448, {0x08, 0x01, 0x02, 0x03, 0x04, 0x06, 0xA3, 0x05, 0xA2, 0x04, 0xA1, 0x40, 0x25});
    put(log, 462, {0x78, 0x56, 0x34, 0x12});
    put(log, 466, {0x00, 0x10, 0x08, 0x07, 0x11, 0x44, 0x22, 0x55, 0x33, 0x66, 0x40, 0x51});
    put(log, 497, {0x04, 0x39, 0x30});
    put(log, 500, {0x02, 0x01});
    const auto command = [](const Field& field) {
        return fieldOf(extended_error_log::ERRORS, 3,
                       fieldOf(extended_error_log::COMMANDS, 4, field));
    };
    const auto error = [](const Field& field) {
        return fieldOf(extended_error_log::ERRORS, 3, fieldOf(extended_error_log::ERROR, 0, field));
    };
    EXPECT_EQ(readNumber(log, extended_error_log::ErrorLogIndex), 0x1234U);
    EXPECT_EQ(readNumber(log, extended_error_log::DeviceErrorCount), 0x102U);
    EXPECT_EQ(readNumber(log, command(extended_error_log_command::Feature)), 0x201U);
    EXPECT_EQ(readNumber(log, command(extended_error_log_command::Count)), 0x403U);
    EXPECT_EQ(readSplitLba(log, command(extended_error_log_command::LBA7To0)), 0xA1A2A3040506U);
    EXPECT_EQ(readNumber(log, command(extended_error_log_command::Command)), 0x25U);
    EXPECT_EQ(readNumber(log, command(extended_error_log_command::Timestamp)), 0x12345678U);
    EXPECT_EQ(readNumber(log, error(extended_error_log_error::Error)), 0x10U);
    EXPECT_EQ(readNumber(log, error(extended_error_log_error::Count)), 0x708U);
    EXPECT_EQ(readSplitLba(log, error(extended_error_log_error::LBA7To0)), 0x665544332211U);
    EXPECT_EQ(readNumber(log, error(extended_error_log_error::Status)), 0x51U);
    EXPECT_EQ(readNumber(log, error(extended_error_log_error::State)), 4U);
    EXPECT_EQ(readNumber(log, error(extended_error_log_error::LifeTimestamp)), 12345U);
}

TEST(Logs, WriteSplitAddresses) {
    const Payload log(8);
    const Field first{"LBA7To0", "", 1, 1, Encoding::NUMBER};
    writeSplitLba(log, first, 0xA1A2A3040506U);
    EXPECT_EQ(log, bytes({0, 0x06, 0xA3, 0x05, 0xA2, 0x04, 0xA1, 0}));
    EXPECT_EQ(thrownCode([&] { writeSplitLba(Payload(6), first, 1); }), 14);
    EXPECT_EQ(thrownCode([&] { readSplitLba(Payload(6), first); }), 14);
}

TEST(Logs, SelfTestsStandInTheirLogs) {
    const Payload log(512);
    put(log, 0, {0x01, 0x00});
    put(log, 482, {0x02, 0x7A, 0x39, 0x30, 0x05, 0x78, 0x56, 0x34, 0x12});  // the twenty-first
    put(log, 508, {21});
    const auto field = [](const Field& each) {
        return fieldOf(self_test_log::DESCRIPTORS, 20, each);
    };
    EXPECT_EQ(readNumber(log, self_test_log::SelfTestIndex), 21U);
    EXPECT_EQ(readNumber(log, field(self_test_descriptor::SelfTestNumber)), 2U);
    EXPECT_EQ(readNumber(log, field(self_test_descriptor::ExecutionStatus)), 0x7AU);
    EXPECT_EQ(readNumber(log, field(self_test_descriptor::LifeTimestamp)), 12345U);
    EXPECT_EQ(readNumber(log, field(self_test_descriptor::Checkpoint)), 5U);
    EXPECT_EQ(readNumber(log, field(self_test_descriptor::FailingLBA)), 0x12345678U);
}

TEST(Logs, ExtendedSelfTestsStandInTheirLog) {
    const Payload log(512);
    put(log, 0, {0x01, 0x00, 0x13, 0x01});
    put(log, 472, {0x81, 0x60, 0x39, 0x30, 0x05, 1, 2, 3, 4, 5, 6});  // the nineteenth
    const auto field = [](const Field& each) {
        return fieldOf(extended_self_test_log::DESCRIPTORS, 18, each);
    };
    EXPECT_EQ(readNumber(log, extended_self_test_log::SelfTestIndex), 0x113U);
    EXPECT_EQ(readNumber(log, field(extended_self_test_descriptor::SelfTestNumber)), 0x81U);
    EXPECT_EQ(readNumber(log, field(extended_self_test_descriptor::ExecutionStatus)), 0x60U);
    EXPECT_EQ(readNumber(log, field(extended_self_test_descriptor::LifeTimestamp)), 12345U);
    EXPECT_EQ(readNumber(log, field(extended_self_test_descriptor::FailingLBA)), 0x060504030201U);
}

TEST(Logs, ListTheirPages) {
    const Payload page(512);
    put(page, 0, {0x01, 0, 0, 0, 0, 0, 0, 0, 4, 0x00, 0x01, 0x03, 0x08, 0x09});
    EXPECT_EQ(readPageNumbers(page), (std::vector<std::uint8_t>{0, 1, 3, 8}));
    EXPECT_EQ(readPageNumbers(Payload(512)), std::vector<std::uint8_t>());
    EXPECT_EQ(readPageNumbers(filledWith(0xFF, 512)), std::vector<std::uint8_t>(255, 0xFF));
    EXPECT_EQ(thrownCode([] { readPageNumbers(Payload(8)); }), 14);
    EXPECT_EQ(thrownCode([] { readPageNumbers(bytes({1, 0, 0, 0, 0, 0, 0, 0, 2, 0})); }), 14);
}

TEST(Logs, NumberThePagesOfIdentifyDeviceData) {
    EXPECT_EQ(identify_device_page::LIST_OF_PAGES, 0x00);
    EXPECT_EQ(identify_device_page::COPY_OF_IDENTIFY_DEVICE_DATA, 0x01);
    EXPECT_EQ(identify_device_page::CAPACITY, 0x02);
    EXPECT_EQ(identify_device_page::SUPPORTED_CAPABILITIES, 0x03);
    EXPECT_EQ(identify_device_page::CURRENT_SETTINGS, 0x04);
    EXPECT_EQ(identify_device_page::ATA_STRINGS, 0x05);
    EXPECT_EQ(identify_device_page::SECURITY, 0x06);
    EXPECT_EQ(identify_device_page::PARALLEL_ATA, 0x07);
    EXPECT_EQ(identify_device_page::SERIAL_ATA, 0x08);
    EXPECT_EQ(identify_device_page::ZONED_DEVICE_INFORMATION, 0x09);
}

TEST(Logs, ReadTemperaturesWithTheirSign) {
    const Payload status(512);
    put(status, 200, {38, 0xFB, 0x7F, 0x80, 0x81});
    EXPECT_EQ(readTemperature(status, sct_status::Temperature), 38);
    EXPECT_EQ(readTemperature(status, sct_status::MinTemperature), -5);
    EXPECT_EQ(readTemperature(status, sct_status::MaxTemperature), 127);
    EXPECT_EQ(readTemperature(status, sct_status::LifeMinTemperature), std::nullopt);
    EXPECT_EQ(readTemperature(status, sct_status::LifeMaxTemperature), -127);
    EXPECT_EQ(thrownCode([] { readTemperature(Payload(200), sct_status::Temperature); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata
