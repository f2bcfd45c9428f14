// Reading of a CSMI address and port, and of a Windows device interface path.
#include "core/DeviceIdentifiers.h"

#include "core/Attribute.h"
#include "core/Payload.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace orvel::core {
namespace {

using tavik::testing::LogCapture;
using namespace std::string_literals;

using Bytes = std::vector<std::uint8_t>;

Payload payloadOf(const Bytes& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

const Bytes ADDRESS = {0x50, 0x00, 0xC5, 0x00, 0xA1, 0xB2, 0xC3, 0xD4};

/// What "5000c500a1b2c3d4,3" reads as.
constexpr CsmiIdentifiers IDENTIFIERS = {0xD4C3B2A100C50050, 3};

/// A CSMI device at that address and port.
Device csmiDevice() {
    Device device;
    device.setAttribute(Attribute("CSMI", true));
    device.setAttribute(Attribute("SCSIPortNumber", std::int32_t{3}));
    device.setAttribute(Attribute("SASAddress", payloadOf(ADDRESS)));
    return device;
}

TEST(DeviceIdentifiers, ReadASasAddressInReverseByteOrderAndADecimalPort) {
    struct Row {
        std::string text;
        std::uint64_t address;
        std::int32_t port;
    };

    const Row rows[] = {
        {"5000c500a1b2c3d4,3", 0xD4C3B2A100C50050, 3},
        {"5000C500A1B2C3D4,3", 0xD4C3B2A100C50050, 3},
        {"0102030405060708,10", 0x0807060504030201, 10},
        {"1,2", 0x0100000000000000, 2},
        {"0,0", 0, 0},
        {"0010,010", 0x1000000000000000, 10},
        {"10,10", 0x1000000000000000, 10},
        {"FFFFFFFFFFFFFFFF,2147483647", 0xFFFFFFFFFFFFFFFF,
         std::numeric_limits<std::int32_t>::max()},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto identifiers = readCsmiIdentifiers(row.text);
        ASSERT_TRUE(identifiers);
        EXPECT_EQ(identifiers->sasAddress, row.address);
        EXPECT_EQ(identifiers->scsiPort, row.port);
    }
}

TEST(DeviceIdentifiers, ReadNothingWithoutALogLineFromTwoPartsThatAreNoNumbers) {
    const std::string rows[] = {
        ",",
        ",3",
        "1,",
        "5000c500a1b2c3dg,3",
        "g,3",
        "0x50,3",
        "1 ,3",
        " 1,3",
        "-1,3",
        "+1,3",
        "12345678901234567,3",
        "1,a",
        "1,3a",
        "1,0x3",
        "1, 3",
        "1,3 ",
        "1,3.0",
        "1,-",
        "1,2147483648",
        "1,99999999999999999999",
        "1\0,3"s,
        "1,3\0"s,
    };
    const LogCapture log;
    for (const std::string& text : rows) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(readCsmiIdentifiers(text));
    }
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST(DeviceIdentifiers, LogATextThatIsNotTwoParts) {
    const std::vector<std::string> oneLine = {
        "[debug] DeviceIdentifiers.cpp readCsmiIdentifiers: "
        "Failed to split passed in CSMI string into the two recognized identifiers"};
    for (const std::string text : {"", "5000c500a1b2c3d4", "1;2", "1,2,", ",1,2", "1,2,3", ",,"}) {
        SCOPED_TRACE(text);
        const LogCapture log;
        EXPECT_FALSE(readCsmiIdentifiers(text));
        EXPECT_EQ(log.lines(), oneLine);
    }
}

TEST(DeviceIdentifiers, LogNothingForATextOfTwoNumbers) {
    const LogCapture log;
    EXPECT_TRUE(readCsmiIdentifiers("1,2"));
    EXPECT_EQ(log.lines(), std::vector<std::string>{});
}

TEST(DeviceIdentifiers, MatchTheCsmiDeviceAtThePortAndTheAddress) {
    EXPECT_TRUE(matches(csmiDevice(), IDENTIFIERS));
}

TEST(DeviceIdentifiers, MatchNoDeviceWithoutAttributes) {
    EXPECT_FALSE(matches(Device(), {0, 0}));
}

TEST(DeviceIdentifiers, MatchADeviceWhoseCsmiAttributeBeginsWithOne) {
    struct Row {
        const char* text;
        Bytes value;
        bool expected;
    };

    const Row rows[] = {
        {"one", {1}, true},   {"one and more", {1, 0}, true},
        {"zero", {0}, false}, {"zero, one", {0, 1}, false},
        {"two", {2}, false},  {"255", {255}, false},
        {"empty", {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Device device = csmiDevice();
        device.setAttribute(Attribute("CSMI", payloadOf(row.value)));
        EXPECT_EQ(matches(device, IDENTIFIERS), row.expected);
    }
}

TEST(DeviceIdentifiers, MatchNoDeviceWithoutTheCsmiAttribute) {
    Device device = csmiDevice();
    device.removeAttribute("CSMI");
    EXPECT_FALSE(matches(device, IDENTIFIERS));
}

TEST(DeviceIdentifiers, MatchThePortByAtMostFourBytes) {
    struct Row {
        const char* text;
        Bytes value;
        bool expected;
    };

    const Row rows[] = {
        {"four bytes", {3, 0, 0, 0}, true},
        {"one byte", {3}, true},
        {"eight bytes, of which four count", {3, 0, 0, 0, 1, 1, 1, 1}, true},
        {"the third byte counts", {3, 0, 1}, false},
        {"the fourth byte counts", {3, 0, 0, 1}, false},
        {"other order of bytes", {0, 0, 0, 3}, false},
        {"another port", {4, 0, 0, 0}, false},
        {"empty", {}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Device device = csmiDevice();
        device.setAttribute(Attribute("SCSIPortNumber", payloadOf(row.value)));
        EXPECT_EQ(matches(device, IDENTIFIERS), row.expected);
    }
}

TEST(DeviceIdentifiers, MatchPortZeroWhereThePortIsAbsent) {
    Device device = csmiDevice();
    device.removeAttribute("SCSIPortNumber");
    EXPECT_TRUE(matches(device, {0xD4C3B2A100C50050, 0}));
    EXPECT_FALSE(matches(device, {0xD4C3B2A100C50050, -1}));
}

TEST(DeviceIdentifiers, MatchAnAddressOfExactlyEightBytes) {
    struct Row {
        const char* text;
        Bytes value;
        std::uint64_t address;
        bool expected;
    };

    const Row rows[] = {
        {"eight", {1, 2, 3, 4, 5, 6, 7, 8}, 0x0807060504030201, true},
        {"as a number of the other order", {1, 2, 3, 4, 5, 6, 7, 8}, 0x0102030405060708, false},
        {"last byte differs", {1, 2, 3, 4, 5, 6, 7, 9}, 0x0807060504030201, false},
        {"first byte differs", {0, 2, 3, 4, 5, 6, 7, 8}, 0x0807060504030201, false},
        {"seven", {1, 2, 3, 4, 5, 6, 7}, 0x0007060504030201, false},
        {"nine", {1, 2, 3, 4, 5, 6, 7, 8, 0}, 0x0807060504030201, false},
        {"nine, led by a zero", {0, 1, 2, 3, 4, 5, 6, 7, 8}, 0x0807060504030201, false},
        {"none", {}, 0, false},
        {"eight zeroes", {0, 0, 0, 0, 0, 0, 0, 0}, 0, true},
        {"seven zeroes", {0, 0, 0, 0, 0, 0, 0}, 0, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        Device device = csmiDevice();
        device.setAttribute(Attribute("SASAddress", payloadOf(row.value)));
        EXPECT_EQ(matches(device, {row.address, 3}), row.expected);
    }
}

TEST(DeviceIdentifiers, MatchNoAddressWhereItIsAbsent) {
    Device device = csmiDevice();
    device.removeAttribute("SASAddress");
    EXPECT_FALSE(matches(device, {0, 3}));
}

TEST(DeviceIdentifiers, ReadADriveIdIntoItsPnpString) {
    struct Row {
        std::string text;
        std::optional<std::string> expected;
    };

    // clang-format off
    const Row rows[] = {
        {R"(\\?\scsi#disk&ven_norvo#4&1a2b&0&000000#{53f56307-b6bf-11d0-94f2-00a0c91efb8b})",
         R"(SCSI\DISK&VEN_NORVO\4&1A2B&0&000000)"},
        // Without a class identifier.
        {R"(\\?\scsi#disk&ven_norvo#4&1a2b&0&000000)", R"(SCSI\DISK&VEN_NORVO\4&1A2B&0&000000)"},
        {R"(\\?\scsi#disk#)",                         R"(SCSI\DISK\)"},
        // Without the prefix nothing is cut or replaced.
        {R"(scsi\disk&ven_norvo\4&1a2b&0&000000)",    R"(SCSI\DISK&VEN_NORVO\4&1A2B&0&000000)"},
        {"scsi#disk#{53f56307}",                      "SCSI#DISK#{53F56307}"},
        {R"(\\.\physicaldrive0)",                     R"(\\.\PHYSICALDRIVE0)"},
        {R"(\?\scsi#disk)",                           R"(\?\SCSI#DISK)"},
        // The last brace counts, and whatever stands in front of it goes too.
        {R"(\\?\a#{b}#c#{d})",                        R"(A\{B}\C)"},
        {R"(\\?\a#b{c})",                             R"(A\)"},
        {R"(\\?\ab}{)",                               "AB"},
        {R"(\\?\#{53f56307})",                        ""},
        // No character stands in front of a brace that comes first.
        {R"(\\?\{53f56307})",                         "{53F56307}"},
        {R"(\\?\{)",                                  "{"},
        // Four characters go from the front, wherever the prefix stands.
        {R"(ab\\?\c#d)",                              R"(?\C\D)"},
        {R"(\\?\\\?\ab)",                             R"(\\?\AB)"},
        // Shortest texts.
        {R"(\\?\a)",                                  "A"},
        {R"(\\?\)",                                   std::nullopt},
        {"abcde",                                     "ABCDE"},
        {"abcd",                                      std::nullopt},
        {"a",                                         std::nullopt},
        {"",                                          std::nullopt},
        // Upper case is that of ASCII.
        {"\xC3\xA4" "b\xE4z{",                        "\xC3\xA4" "B\xE4Z{"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(readDriveId(row.text), row.expected);
    }
}

}  // namespace
}  // namespace orvel::core
