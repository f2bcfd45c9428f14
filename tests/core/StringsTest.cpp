// Tests of the plain string functions and the operating-system helpers beside them.
#include "core/Strings.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

namespace orvel::core::strings {
namespace {

constexpr std::uint64_t LARGEST = 18446744073709551615U;

Payload payloadOf(const std::string& bytes) {
    return {bytes.data(), static_cast<std::uint32_t>(bytes.size())};
}

std::string dumpOf(const std::string& bytes, std::size_t bytesPerLine) {
    return hexDump(payloadOf(bytes), bytesPerLine);
}

/// Bytes 0, 1, 2 and so on.
std::vector<std::uint8_t> countingBytes(std::size_t size) {
    std::vector<std::uint8_t> bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

struct ComparisonRow {
    const char* text;
    const char* part;
    bool contains, startsWith, endsWith, equals;
};

TEST(Strings, ComparesByteByByte) {
    // clang-format off
    const ComparisonRow rows[] = {
    //   text           part            contains starts  ends    equals
        {"NVMeLog",     "NVMeLog",      true,    true,   true,   true},
        {"NVMeLog",     "NVMe",         true,    true,   false,  false},
        {"NVMeLog",     "Log",          true,    false,  true,   false},
        {"NVMeLog",     "MeL",          true,    false,  false,  false},
        {"NVMeLog",     "nvme",         false,   false,  false,  false},
        {"NVMeLog",     "LOG",          false,   false,  false,  false},
        {"NVMeLog",     "nvmelog",      false,   false,  false,  false},
        {"NVMeLog",     "",             true,    true,   true,   false},
        {"",            "",             true,    true,   true,   true},
        {"",            "a",            false,   false,  false,  false},
        {"Log",         "NVMeLog",      false,   false,  false,  false},
    };
    // clang-format on
    for (const ComparisonRow& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.part);
        EXPECT_EQ(contains(row.text, row.part, false), row.contains);
        EXPECT_EQ(startsWith(row.text, row.part, false), row.startsWith);
        EXPECT_EQ(endsWith(row.text, row.part, false), row.endsWith);
        EXPECT_EQ(equals(row.text, row.part, false), row.equals);
    }
}

TEST(Strings, IgnoresCaseOfLatinLettersOnRequest) {
    // clang-format off
    const ComparisonRow rows[] = {
    //   text           part            contains starts  ends    equals
        {"NVMeLog",     "nvmeLOG",      true,    true,   true,   true},
        {"NVMeLog",     "nvme",         true,    true,   false,  false},
        {"NVMeLog",     "LOG",          true,    false,  true,   false},
        {"NVMeLog",     "mEl",          true,    false,  false,  false},
        {"NVMeLog",     "smart",        false,   false,  false,  false},
        {"log",         "NVMeLog",      false,   false,  false,  false},
        {"@[`{",        "`{@[",         false,   false,  false,  false},
        {"\xC4",        "\xE4",         false,   false,  false,  false},
    };
    // clang-format on
    for (const ComparisonRow& row : rows) {
        SCOPED_TRACE(std::string(row.text) + " / " + row.part);
        EXPECT_EQ(contains(row.text, row.part, true), row.contains);
        EXPECT_EQ(startsWith(row.text, row.part, true), row.startsWith);
        EXPECT_EQ(endsWith(row.text, row.part, true), row.endsWith);
        EXPECT_EQ(equals(row.text, row.part, true), row.equals);
    }
}

TEST(Strings, ComparesBytesBehindANul) {
    EXPECT_FALSE(equals(std::string("a\0b", 3), std::string("a\0c", 3), false));
    EXPECT_FALSE(equals(std::string("a\0b", 3), std::string("a\0c", 3), true));
    EXPECT_TRUE(equals(std::string("a\0b", 3), std::string("A\0B", 3), true));
}

TEST(Strings, ComparesWideText) {
    EXPECT_TRUE(contains(L"NVMeLog", L"mel", true));
    EXPECT_FALSE(contains(L"NVMeLog", L"mel", false));
    EXPECT_TRUE(startsWith(L"NVMeLog", L"nvme", true));
    EXPECT_FALSE(startsWith(L"NVMeLog", L"nvme", false));
    EXPECT_TRUE(endsWith(L"NVMeLog", L"LOG", true));
    EXPECT_FALSE(endsWith(L"NVMeLog", L"LOG", false));
    EXPECT_FALSE(endsWith(L"og", L"Log", true));
    EXPECT_TRUE(equals(L"NVMeLog", L"nvmelog", true));
    EXPECT_FALSE(equals(L"NVMeLog", L"nvmelog", false));
}

TEST(Strings, CallsBytesOutside0x20To0x7ENotAscii) {
    EXPECT_TRUE(isNotAscii('\x1F'));
    EXPECT_FALSE(isNotAscii('\x20'));
    EXPECT_FALSE(isNotAscii('\x7E'));
    EXPECT_TRUE(isNotAscii('\x7F'));
    EXPECT_TRUE(isNotAscii('\x80'));
    EXPECT_TRUE(isNotAscii('\xFF'));
    EXPECT_TRUE(isNotAscii('\0'));
}

struct FormRow {
    const char* text;
    bool numeric, signedNumeric, booleanText, hexadecimal;
};

TEST(Strings, TellsTheFormOfAText) {
    // clang-format off
    const FormRow rows[] = {
    //   text           numeric signed  boolean hexadecimal
        {"",            false,  false,  false,  true},
        {"0",           true,   true,   true,   true},
        {"1",           true,   true,   true,   true},
        {"2",           true,   true,   false,  true},
        {"00",          true,   true,   false,  true},
        {"0123456789",  true,   true,   false,  true},
        {"-",           false,  false,  false,  false},
        {"-5",          false,  true,   false,  false},
        {"--5",         false,  false,  false,  false},
        {"+5",          false,  false,  false,  false},
        {" 5",          false,  false,  false,  false},
        {"5 ",          false,  false,  false,  false},
        {"1.5",         false,  false,  false,  false},
        {"true",        false,  false,  true,   false},
        {"TRUE",        false,  false,  true,   false},
        {"fAlSe",       false,  false,  true,   false},
        {"tru",         false,  false,  false,  false},
        {"truer",       false,  false,  false,  false},
        {"yes",         false,  false,  false,  false},
        {"abcdef",      false,  false,  false,  true},
        {"ABCDEF09",    false,  false,  false,  true},
        {"abcdeg",      false,  false,  false,  false},
        {"0x1F",        false,  false,  false,  true},
        {"0XfF",        false,  false,  false,  true},
        {"0x1G",        false,  false,  false,  false},
        {"1x10",        false,  false,  false,  false},
        {"00x1",        false,  false,  false,  false},
        {"\xB2",        false,  false,  false,  false},
    };
    // clang-format on
    for (const FormRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(isNumeric(std::string(row.text)), row.numeric);
        EXPECT_EQ(isSignedNumeric(std::string(row.text)), row.signedNumeric);
        EXPECT_EQ(isBooleanText(std::string(row.text)), row.booleanText);
        EXPECT_EQ(isHexadecimal(std::string(row.text)), row.hexadecimal);
        const std::wstring wide = widen(row.text);
        EXPECT_EQ(isNumeric(wide), row.numeric);
        EXPECT_EQ(isSignedNumeric(wide), row.signedNumeric);
        EXPECT_EQ(isBooleanText(wide), row.booleanText);
        EXPECT_EQ(isHexadecimal(wide), row.hexadecimal);
    }
}

TEST(Strings, DoesNotLookAtTheCharacterRightBehindAHexadecimalPrefix) {
    EXPECT_TRUE(isHexadecimal(std::string("0xZ12")));
    EXPECT_TRUE(isHexadecimal(std::string("0Xg")));
    EXPECT_TRUE(isHexadecimal(std::string("0x")));
    EXPECT_FALSE(isHexadecimal(std::string("0x1Z2")));
    EXPECT_TRUE(isHexadecimal(std::wstring(L"0xZ12")));
}

TEST(Strings, TakesNoWideCharacterForTheDigitInItsLowByte) {
    EXPECT_FALSE(isNumeric(std::wstring(L"\x0131")));
    EXPECT_FALSE(isHexadecimal(std::wstring(L"\x0141")));
    EXPECT_EQ(toInteger(std::wstring(L"\x0131")), 0U);
}

TEST(Strings, LowersTheLettersAToZ) {
    EXPECT_EQ(lowered("AZaz @[`{ 09"), "azaz @[`{ 09");
    EXPECT_EQ(lowered("\xC4\xD6 \xC3\x84"), "\xC4\xD6 \xC3\x84");
    EXPECT_EQ(lowered(std::string("A\0B", 3)), std::string("a\0b", 3));
    EXPECT_EQ(lowered(""), "");
}

TEST(Strings, TrimsBlanksAtBothEndsOnly) {
    EXPECT_EQ(trimmed(" \t\r\nA \t\r\nB\n\r\t "), "A \t\r\nB");
    EXPECT_EQ(trimmed("A"), "A");
    EXPECT_EQ(trimmed(" \t\r\n"), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("\v\f\xA0"), "\v\f\xA0");
}

TEST(Strings, TrimsWhatTheCallerTakesForBlanks) {
    EXPECT_EQ(trimmed(" \tA\t ", " "), "\tA\t");
    EXPECT_EQ(trimmed(std::string_view("\0 A\0 B \0", 8), std::string_view(" \0", 2)),
              std::string("A\0 B", 4));
    EXPECT_EQ(trimmed(" A ", ""), " A ");
}

TEST(Strings, ReadsOnlyTheWordTrueAsTrue) {
    EXPECT_TRUE(toBool(std::string("true")));
    EXPECT_TRUE(toBool(std::string("True")));
    EXPECT_TRUE(toBool(std::string("TRUE")));
    EXPECT_FALSE(toBool(std::string("1")));
    EXPECT_FALSE(toBool(std::string("false")));
    EXPECT_FALSE(toBool(std::string("true ")));
    EXPECT_FALSE(toBool(std::string("")));
    EXPECT_TRUE(toBool(std::wstring(L"tRUE")));
    EXPECT_FALSE(toBool(std::wstring(L"1")));
}

TEST(Strings, ReadsBackItsOwnBoolean) {
    EXPECT_EQ(toString(true), "True");
    EXPECT_EQ(toString(false), "False");
    EXPECT_TRUE(toBool(toString(true)));
    EXPECT_FALSE(toBool(toString(false)));
}

struct IntegerRow {
    const char* text;
    std::uint64_t number;
};

TEST(Strings, ReadsAnInteger) {
    // clang-format off
    const IntegerRow rows[] = {
    //   text                           number
        {"",                            0},
        {"0",                           0},
        {"007",                         7},
        {"42",                          42},
        {"18446744073709551614",        18446744073709551614U},
        {"18446744073709551615",        LARGEST},
        {"18446744073709551616",        LARGEST},
        {"99999999999999999999999999",  LARGEST},
        {"ff",                          255},
        {"1a",                          26},
        {"0x10",                        16},
        {"0XFFFFFFFF",                  4294967295},
        {"0xFFFFFFFFFFFFFFFF",          LARGEST},
        {"0x10000000000000000",         LARGEST},
        {"0xZ12",                       0},
        {"0x",                          0},
        {"-1",                          0},
        {"12 ",                         0},
        {"one",                         0},
    };
    // clang-format on
    for (const IntegerRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(toInteger(std::string(row.text)), row.number);
        EXPECT_EQ(toInteger(widen(row.text)), row.number);
    }
}

TEST(Strings, ReadsAHexadecimalIntegerAsAStreamDoes) {
    // clang-format off
    const IntegerRow rows[] = {
    //   text                           number
        {"",                            0},
        {"10",                          16},
        {"0x10",                        16},
        {"0X1f",                        31},
        {"DEADbeef",                    3735928559},
        {"12G4",                        18},
        {"0xG",                         0},
        {"0x",                          0},
        {"x12",                         0},
        {"00x12",                       0},
        {"0x0x12",                      0},
        {"  \t\n12",                    18},
        {"+12",                         18},
        {"-1",                          LARGEST},
        {"-0x2",                        18446744073709551614U},
        {"- 1",                         0},
        {"0x 1",                        0},
        {"FFFFFFFFFFFFFFFF",            LARGEST},
        {"000000000000000000001",       1},
        {"10000000000000000",           LARGEST},
        {"-10000000000000000",          LARGEST},
    };
    // clang-format on
    for (const IntegerRow& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(toHexInteger(std::string(row.text)), row.number);
        EXPECT_EQ(toHexInteger(widen(row.text)), row.number);
    }
}

TEST(Strings, ReadsADoubleAsAStreamDoes) {
    EXPECT_EQ(toDouble(std::string("1.5")), 1.5);
    EXPECT_EQ(toDouble(std::string("  -2.25e2x")), -225.0);
    EXPECT_EQ(toDouble(std::string("1,5")), 1.0);
    EXPECT_EQ(toDouble(std::string("")), 0.0);
    EXPECT_EQ(toDouble(std::string("abc")), 0.0);
    EXPECT_EQ(toDouble(std::string("1e999")), std::numeric_limits<double>::max());
    EXPECT_EQ(toDouble(std::wstring(L"0.125")), 0.125);
}

TEST(Strings, SplitsAtEachDelimiterAndTrimsNothing) {
    using Parts = std::vector<std::string>;
    EXPECT_EQ(split(std::string("a,b,c"), ','), (Parts{"a", "b", "c"}));
    EXPECT_EQ(split(std::string(" a , b "), ','), (Parts{" a ", " b "}));
    EXPECT_EQ(split(std::string(",a,,b,"), ','), (Parts{"", "a", "", "b", ""}));
    EXPECT_EQ(split(std::string("abc"), ','), (Parts{"abc"}));
    EXPECT_EQ(split(std::string(""), ','), (Parts{""}));
    EXPECT_EQ(split(std::wstring(L"a~b~"), L'~'), (std::vector<std::wstring>{L"a", L"b", L""}));
}

TEST(Strings, ReadsBytesFromPairsOfHexadecimalDigits) {
    EXPECT_TRUE(hexToBytes("0AfF00") == payloadOf(std::string("\x0A\xFF\x00", 3)));
    EXPECT_EQ(hexToBytes("").size(), 0U);
}

TEST(Strings, ReadsNoBytesFromTextThatIsNotHexadecimalThroughout) {
    for (const char* text : {"0", "0AF", "0G", "0x0A", "0A 0B", "0A\n", "\xFF\xFF"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(hexToBytes(text).size(), 0U);
    }
}

TEST(Strings, WritesIntegersInDecimal) {
    EXPECT_EQ(toString(std::int8_t{-128}), "-128");
    EXPECT_EQ(toString(std::int8_t{65}), "65");
    EXPECT_EQ(toString(std::int16_t{-32768}), "-32768");
    EXPECT_EQ(toString(std::int32_t{-2147483647 - 1}), "-2147483648");
    EXPECT_EQ(toString(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(toString(std::uint8_t{65}), "65");
    EXPECT_EQ(toString(std::uint8_t{255}), "255");
    EXPECT_EQ(toString(std::uint16_t{65535}), "65535");
    EXPECT_EQ(toString(std::uint32_t{4294967295}), "4294967295");
    EXPECT_EQ(toString(LARGEST), "18446744073709551615");
}

TEST(Strings, PadsIntegersWithZeroesToTheWidth) {
    EXPECT_EQ(toString(std::int8_t{7}, 3), "007");
    EXPECT_EQ(toString(std::int16_t{7}, 3), "007");
    EXPECT_EQ(toString(std::int32_t{7}, 3), "007");
    EXPECT_EQ(toString(std::int64_t{7}, 3), "007");
    EXPECT_EQ(toString(std::uint8_t{7}, 3), "007");
    EXPECT_EQ(toString(std::uint16_t{7}, 3), "007");
    EXPECT_EQ(toString(std::uint32_t{7}, 3), "007");
    EXPECT_EQ(toString(std::uint64_t{7}, 3), "007");
    EXPECT_EQ(toString(std::uint32_t{1234}, 3), "1234");
    EXPECT_EQ(toString(std::uint32_t{0}, 0), "0");
    EXPECT_EQ(toString(std::uint32_t{1}, -5), "1");
}

TEST(Strings, WritesDoublesInFixedNotation) {
    EXPECT_EQ(toString(1.5, 0, 2), "1.50");
    EXPECT_EQ(toString(-0.125, 0, 3), "-0.125");
    EXPECT_EQ(toString(2.0, 0, 0), "2");
    EXPECT_EQ(toString(1e21, 0, 1), "1000000000000000000000.0");
    EXPECT_EQ(toString(1.5, 8, 2), "00001.50");
    EXPECT_EQ(toString(std::numeric_limits<double>::max(), 0, 1).size(), 311U);
    EXPECT_EQ(toString(-std::numeric_limits<double>::max(), 0, 1).size(), 312U);
}

TEST(Strings, WritesIntegersInUpperCaseHexadecimal) {
    EXPECT_EQ(toHexString(std::int8_t{-1}, 0), "FF");
    EXPECT_EQ(toHexString(std::int16_t{-2}, 0), "FFFE");
    EXPECT_EQ(toHexString(std::int32_t{-1}, 0), "FFFFFFFF");
    EXPECT_EQ(toHexString(std::int64_t{-1}, 0), "FFFFFFFFFFFFFFFF");
    EXPECT_EQ(toHexString(std::uint8_t{10}, 2), "0A");
    EXPECT_EQ(toHexString(std::uint16_t{0xABC}, 4), "0ABC");
    EXPECT_EQ(toHexString(std::uint32_t{0}, 0), "0");
    EXPECT_EQ(toHexString(std::uint32_t{0x1F}, 8), "0000001F");
    EXPECT_EQ(toHexString(std::uint64_t{0xDEADBEEF}, 4), "DEADBEEF");
}

TEST(Strings, WritesTwoUpperCaseDigitsForEachByte) {
    const std::uint8_t bytes[] = {0x0A, 0xFF, 0x00, 0x1B};
    EXPECT_EQ(bytesToHex(bytes, 4), "0AFF001B");
    EXPECT_EQ(bytesToHex(nullptr, 0), "");
    EXPECT_EQ(bytesToHex(payloadOf("\x01\xC0")), "01C0");
    EXPECT_EQ(bytesToHex(Payload()), "");
}

TEST(Strings, TakesTextFromBytesUpToTheFirstNul) {
    const std::uint8_t bytes[] = {'a', 'b', 0, 'c'};
    EXPECT_EQ(fromBytes(bytes, 4), "ab");
    EXPECT_EQ(fromBytes(bytes, 2), "ab");
    EXPECT_EQ(fromBytes(bytes, 1), "a");
    EXPECT_EQ(fromBytes(bytes, 0), "");
    EXPECT_EQ(fromBytes(nullptr, 4), "");
}

TEST(Strings, WidensAndNarrowsByteByByte) {
    EXPECT_EQ(widen("aZ"), L"aZ");
    EXPECT_EQ(widen("\xE4"), L"\x00E4");
    EXPECT_EQ(widen(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
    EXPECT_EQ(narrow(L"aZ"), "aZ");
    EXPECT_EQ(narrow(L"\x00E4"), "\xE4");
}

TEST(HexDump, OfNothingIsEmpty) {
    EXPECT_EQ(hexDump(nullptr, 0, 16), "");
    EXPECT_EQ(dumpOf("", 16), "");
}

TEST(HexDump, WritesTheLastLineWithoutPaddingAndNewline) {
    const auto bytes = countingBytes(17);
    EXPECT_EQ(hexDump(bytes.data(), bytes.size(), 16),
              "0000: 00 01 02 03 04 05 06 07  08 09 0A 0B 0C 0D 0E 0F  ................\n"
              "0010: 10  .");
}

TEST(HexDump, ShowsABlankAsADot) {
    EXPECT_EQ(dumpOf("A B", 16), "0000: 41 20 42  A.B");
}

TEST(HexDump, ShowsCharactersFrom0x21To0x7E) {
    EXPECT_EQ(dumpOf("\x20\x21\x7E\x7F\xFF", 16), "0000: 20 21 7E 7F FF  .!~..");
}

TEST(HexDump, SetsGroupsOfEightApartOnlyWhileTheLineGoesOn) {
    EXPECT_EQ(dumpOf("01234567", 16), "0000: 30 31 32 33 34 35 36 37  01234567");
    EXPECT_EQ(dumpOf("012345678", 16), "0000: 30 31 32 33 34 35 36 37  38  012345678");
    EXPECT_EQ(dumpOf("012345678", 8), "0000: 30 31 32 33 34 35 36 37  01234567\n"
                                      "0008: 38  8");
}

TEST(HexDump, EndsAFullLastLineWithoutNewline) {
    EXPECT_EQ(dumpOf("abcd", 2), "0000: 61 62  ab\n"
                                 "0002: 63 64  cd");
}

TEST(HexDump, LetsALongOffsetGrow) {
    const std::string dump = dumpOf(std::string(0x10001, 'x'), 0x8000);
    EXPECT_TRUE(startsWith(dump, "0000: 78 ", false));
    EXPECT_TRUE(contains(dump, "\n8000: 78 ", false));
    EXPECT_TRUE(endsWith(dump, "\n10000: 78  x", false));
}

TEST(HexDump, TakesZeroBytesPerLineAsOneLine) {
    EXPECT_EQ(dumpOf("ab", 0), "0000: 61 62  ab");
    EXPECT_EQ(dumpOf("ab", std::numeric_limits<std::size_t>::max()), "0000: 61 62  ab");
}

struct CapacityRow {
    std::uint64_t bytes;
    bool decimal;
    bool wholeNumber;
    const char* text;
};

TEST(Strings, WritesASizeInTheUnitThatFits) {
    // clang-format off
    const CapacityRow rows[] = {
    //   bytes                      decimal wholeNumber text
        {0,                         false,  false,      "0.00 MB"},
        {0,                         true,   true,       "0 MB"},
        {4999,                      true,   false,      "0.00 MB"},
        {500000,                    true,   false,      "0.50 MB"},
        {1048576,                   false,  false,      "1.00 MB"},
        {1048576,                   true,   false,      "1.05 MB"},
        {1048575,                   false,  true,       "0 MB"},
        {999999999,                 true,   true,       "999 MB"},
        {999999999,                 true,   false,      "1000.00 MB"},
        {1000000000,                true,   false,      "1.00 GB"},
        {1073741824,                false,  false,      "1.00 GB"},
        {480103981056,              true,   false,      "480.10 GB"},
        {480103981056,              true,   true,       "480 GB"},
        {480103981056,              false,  false,      "447.13 GB"},
        {1099511627776,             false,  false,      "1.00 TB"},
        {1000000000000,             true,   true,       "1 TB"},
        {1125899906842624,          false,  false,      "1.00 PB"},
        {LARGEST,                   false,  false,      "16384.00 PB"},
        {LARGEST,                   true,   false,      "18446.74 PB"},
        {LARGEST,                   true,   true,       "18446 PB"},
    };
    // clang-format on
    for (const CapacityRow& row : rows) {
        SCOPED_TRACE(std::to_string(row.bytes) + " as " + row.text);
        EXPECT_EQ(bytesToCapacityString(row.bytes, row.decimal, row.wholeNumber), row.text);
    }
}

/// What a copy of the printing program in `folder` prints.
std::string printedFolder(const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    std::filesystem::copy_file(EXECUTABLE_PATH_PRINTER, folder / "printer");
    int exitCode = -1;
    const std::string printed = runCommand("'" + (folder / "printer").string() + "'", "", exitCode);
    EXPECT_EQ(exitCode, 0);
    return printed;
}

TEST(Strings, TellsTheFolderOfTheRunningProgram) {
    const tavik::testing::TemporaryFolder temporary;
    EXPECT_EQ(printedFolder(temporary.path() / "a b"), temporary.path("a b") + "/");
}

TEST(Strings, TellsAFolderWhosePathIsLongerThanTheFirstBuffer) {
    const tavik::testing::TemporaryFolder temporary;
    std::filesystem::path folder = temporary.path();
    for (int i = 0; i < 10; ++i) {
        folder /= std::string(250, 'x');
    }
    EXPECT_EQ(printedFolder(folder), folder.string() + "/");
}

TEST(RunCommand, CollectsOutputAndErrorsWithoutNewlines) {
    int exitCode = -1;
    EXPECT_EQ(runCommand("printf 'a\\nb\\n'; echo", "c", exitCode), "abc");
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(runCommand("sh -c", "'echo out; echo err >&2'", exitCode), "outerr");
    EXPECT_EQ(exitCode, 0);
}

TEST(RunCommand, StoresTheExitCodeOfTheShell) {
    int exitCode = -1;
    EXPECT_EQ(runCommand("exit", "3", exitCode), "");
    EXPECT_EQ(exitCode, 3);
    runCommand("/nonexistent/command", "", exitCode);
    EXPECT_EQ(exitCode, 127);
}

TEST(RunCommand, KeepsNulBytesAndLongOutput) {
    int exitCode = -1;
    EXPECT_EQ(runCommand("printf", "'a\\000b'", exitCode), std::string("a\0b", 3));
    EXPECT_EQ(runCommand("head -c 100000 /dev/zero | tr '\\000'", "x", exitCode),
              std::string(100000, 'x'));
}

TEST(RunCommand, AppendsEachLine) {
    std::vector<std::string> lines = {"before"};
    EXPECT_TRUE(runCommandLines("printf 'one\\n\\n two \\nlast'", lines));
    EXPECT_EQ(lines, (std::vector<std::string>{"before", "one", "", " two ", "last"}));
    EXPECT_TRUE(runCommandLines("true", lines));
    EXPECT_EQ(lines.size(), 5U);
}

TEST(Strings, FindsAFunctionInALibrary) {
    void* library = loadLibrary("libm.so.6");
    ASSERT_NE(library, nullptr);
    EXPECT_NE(getSymbol(library, "cos"), nullptr);
    EXPECT_EQ(getSymbol(library, "noSuchFunctionAnywhere"), nullptr);
    EXPECT_EQ(loadLibrary("/nonexistent/library.so"), nullptr);
}

}  // namespace
}  // namespace orvel::core::strings
