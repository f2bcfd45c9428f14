// Structures of Norvo drives whose bytes are written out by hand, read field by field.
#include "protocols/norvo/Structures.h"

#include "core/Strings.h"
#include "tests/protocols/ThrownCode.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>

namespace orvel::protocols::norvo {
namespace {

using core::Payload;

constexpr int UNUSED = 0xEE;  // in all bytes that a dump leaves out

struct Bytes {
    std::uint32_t offset;
    const char* hex;  ///< pairs of digits; blanks don't count
};

struct Row {
    const char* name;
    const char* value;
    std::uint32_t end;  ///< the first byte behind the field
};

Payload dump(std::uint32_t size, std::initializer_list<Bytes> parts) {
    const Payload structure(size);
    std::memset(structure.data(), UNUSED, size);
    for (const Bytes& part : parts) {
        std::uint32_t place = part.offset;
        const std::string hex = part.hex;
        for (std::size_t i = 0; i < hex.size(); i += hex[i] == ' ' ? 1 : 2) {
            if (hex[i] == ' ') continue;
            *structure.at(place++) =
                static_cast<std::uint8_t>(std::stoul(hex.substr(i, 2), nullptr, 16));
        }
    }
    return structure;
}

Payload firstBytes(const Payload& structure, std::uint32_t size) {
    return {structure.data(), size};
}

/// Each field has its name and value, needs no byte behind its end, and every byte before it.
void expectRows(const Payload& structure, Fields fields, std::initializer_list<Row> rows) {
    ASSERT_EQ(fields.size(), rows.size());
    const Field* field = fields.data();
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(field->name, row.name);
        EXPECT_STRNE(field->meaning, "");
        EXPECT_NE(field->encoding, Encoding::WIDE_NUMBER);  // none has more than 8 bytes
        EXPECT_EQ(valueAsText(structure, *field), row.value);
        EXPECT_EQ(valueAsText(firstBytes(structure, row.end), *field), row.value);
        EXPECT_EQ(thrownCode([&] { valueAsText(firstBytes(structure, row.end - 1), *field); }), 14);
        EXPECT_EQ(thrownCode([&] { valueAsText(Payload(), *field); }), 14);
        ++field;
    }
}

/// All of a structure's entries exist; none stands beyond them or in a structure cut short.
void expectEntries(const Payload& structure, const Entries& entries, std::uint32_t count,
                   std::uint32_t end) {
    EXPECT_EQ(entries.count, count);
    EXPECT_EQ(thrownCode([&] { readEntry(structure, entries, count - 1); }), -1);
    EXPECT_EQ(thrownCode([&] { readEntry(structure, entries, count); }), 14);
    const auto readLast = [&](std::uint32_t size) {
        return thrownCode([&] { readEntry(firstBytes(structure, size), entries, count - 1); });
    };
    EXPECT_EQ(readLast(end), -1);
    EXPECT_EQ(readLast(end - 1), 14);
    EXPECT_EQ(thrownCode([&] { readEntry(Payload(), entries, 0); }), 14);
}

// clang-format off

TEST(NorvoStructures, IdentifyControllerHasTheVendorsPart) {
    namespace s = identify_controller;
    const Payload structure = dump(4096, {
        {3072, "4E 56 42 4C 30 31 33 31"},      // NVBL0131
        {3080, "31 32 33 34 35 36 37 38"},
    });
    expectRows(structure, s::ALL, {
        {"Bootloader",       "NVBL0131",            3080},
        {"NativeMaximumLBA", "4050765991979987505", 3088},
    });
    EXPECT_EQ(readText(structure, s::Bootloader), "NVBL0131");
    EXPECT_EQ(readNumber(structure, s::NativeMaximumLBA), 0x3837363534333231U);
    EXPECT_EQ(s::SIZE, 4096U);
}

TEST(NorvoStructures, IdentifyDeviceHasTheVendorsPart) {
    namespace s = identify_device;
    const Payload structure = dump(512, {
        {258, "56 4E 4C 42 31 30 33 31"},       // NVBL0113, the bytes of each word exchanged
        {266, "58 53 31 33 30 41 34 34"},       // SX31A044
    });
    expectRows(structure, s::ALL, {
        {"Bootloader",      "NVBL0113", 266},
        {"PendingFirmware", "SX31A044", 274},
    });
    EXPECT_EQ(readText(structure, s::Bootloader), "NVBL0113");
    EXPECT_EQ(readText(structure, s::PendingFirmware), "SX31A044");
    EXPECT_EQ(s::SIZE, 512U);
}

TEST(NorvoStructures, StoredLogsHaveAHeader) {
    namespace s = stored_log;
    const Payload structure = dump(512, {
        {0, "45 56 4E 54 01 02 EE EE 13 24 35 46 57 68 79 0A"},
    });
    expectRows(structure, s::ALL, {
        {"Signature",  "EVNT",        4},
        {"Version",    "513",         6},
        {"Length",     "1177887763", 12},
        {"EntryCount", "175728727",  16},
    });
    EXPECT_EQ(readText(structure, s::Signature), "EVNT");
    EXPECT_EQ(readNumber(structure, s::Version), 0x0201U);
    EXPECT_EQ(readNumber(structure, s::Length), 0x46352413U);
    EXPECT_EQ(readNumber(structure, s::EntryCount), 0x0A796857U);
    EXPECT_EQ(s::SIZE, 512U);
    EXPECT_STREQ(s::NLOG_SIGNATURE, "NLOG");
    EXPECT_STREQ(s::EVENT_LOG_SIGNATURE, "EVNT");
    EXPECT_STREQ(s::ASSERT_LOG_SIGNATURE, "ASRT");
}

TEST(NorvoStructures, LatencyStatisticsCountInBuckets) {
    namespace s = latency_statistics;
    namespace bucket = latency_bucket;
    const Payload structure = dump(512, {
        {0,   "01 02 1F 03"},
        {16,  "64 65 66 67 EE EE EE EE 11 12 13 14 15 16 17 18"},
        {32,  "68 69 6A 6B EE EE EE EE 21 22 23 24 25 26 27 28"},
        {496, "FF FF FF FF EE EE EE EE 31 32 33 34 35 36 37 38"},
    });
    expectRows(structure, s::ALL, {
        {"Version",         "513", 2},
        {"NumberOfBuckets", "799", 4},
    });
    EXPECT_EQ(readNumber(structure, s::Version), 0x0201U);
    EXPECT_EQ(readNumber(structure, s::NumberOfBuckets), 0x031FU);
    EXPECT_EQ(s::SIZE, 512U);

    expectEntries(structure, s::BUCKETS, 31, 512);
    expectRows(readEntry(structure, s::BUCKETS, 0), bucket::ALL, {
        {"UpperLimit", "1734763876",           4},
        {"Count",      "1735880461161533969", 16},
    });
    expectRows(readEntry(structure, s::BUCKETS, 1), bucket::ALL, {
        {"UpperLimit", "1802135912",           4},
        {"Count",      "2893323226570760737", 16},
    });
    expectRows(readEntry(structure, s::BUCKETS, 30), bucket::ALL, {
        {"UpperLimit", "4294967295",           4},
        {"Count",      "4050765991979987505", 16},
    });
    EXPECT_EQ(readNumber(structure, fieldOf(s::BUCKETS, 1, bucket::UpperLimit)), 0x6B6A6968U);
    EXPECT_EQ(readNumber(structure, fieldOf(s::BUCKETS, 1, bucket::Count)), 0x2827262524232221U);
    EXPECT_EQ(bucket::SIZE, 16U);
}

TEST(NorvoStructures, TemperatureStatisticsHaveSevenNumbers) {
    namespace s = temperature_statistics;
    const Payload structure = dump(512, {
        {0,  "2A 01 02 03 04 05 06 07"},
        {8,  "2B 11 12 13 14 15 16 17"},
        {16, "2C 21 22 23 24 25 26 27"},
        {24, "2D 31 32 33 34 35 36 37"},
        {32, "D8 FF FF FF FF FF FF FF"},        // 40 degrees below zero
        {40, "2E 41 42 43 44 45 46 47"},
        {48, "2F 51 52 53 54 55 56 57"},
    });
    expectRows(structure, s::ALL, {
        {"CurrentTemperature",             "506097522914230570",    8},
        {"OvertempShutdownFlagLastChange", "1663540288323457323",  16},
        {"OvertempShutdownFlagLifetime",   "2820983053732684076",  24},
        {"HighestLifetimeTemperature",     "3978425819141910829",  32},
        {"LowestLifetimeTemperature",      "18446744073709551576", 40},
        {"SpecifiedPCBMaxOperatingTemp",   "5135868584551137582",  48},
        {"SpecifiedPCBMinOperatingTemp",   "6293311349960364335",  56},
    });
    EXPECT_EQ(readNumber(structure, s::CurrentTemperature), 0x070605040302012AU);
    EXPECT_EQ(readNumber(structure, s::OvertempShutdownFlagLastChange), 0x171615141312112BU);
    EXPECT_EQ(readNumber(structure, s::OvertempShutdownFlagLifetime), 0x272625242322212CU);
    EXPECT_EQ(readNumber(structure, s::HighestLifetimeTemperature), 0x373635343332312DU);
    EXPECT_EQ(readNumber(structure, s::LowestLifetimeTemperature), 0xFFFFFFFFFFFFFFD8U);
    EXPECT_EQ(readNumber(structure, s::SpecifiedPCBMaxOperatingTemp), 0x474645444342412EU);
    EXPECT_EQ(readNumber(structure, s::SpecifiedPCBMinOperatingTemp), 0x575655545352512FU);
    EXPECT_EQ(s::SIZE, 512U);
}

TEST(NorvoStructures, HealthStatisticsHaveWhatTheStandardLeavesOut) {
    namespace s = health_statistics;
    const Payload structure = dump(512, {
        {0,  "01 02 03 04 05 06 07 08"},
        {8,  "11 12 13 14 15 16 17 18"},
        {16, "21 22 23 24 25 26 EE EE"},
        {24, "31 32 33 34 35 36 37 38"},
        {32, "41 42 43 44 45 46 47 48"},
        {40, "51 52 53 54 55 56 57 58"},
        {48, "61 62 63 64 65 66 67 68"},
        {56, "71 72 73 74 75 76 77 78"},
        {64, "81 EE EE EE 91 92 93 94"},
        {72, "A1 A2 A3 A4 A5 A6 A7 A8"},
        {80, "B1 B2 B3 B4 B5 B6 B7 B8"},
    });
    expectRows(structure, s::ALL, {
        {"ProgramFailCount",            "578437695752307201",    8},
        {"EraseFailCount",              "1735880461161533969",  16},
        {"MinNandEraseCycles",          "8737",                 18},
        {"MaxNandEraseCycles",          "9251",                 20},
        {"AverageNandEraseCycles",      "9765",                 22},
        {"EndToEndErrorDetectionCount", "4050765991979987505",  32},
        {"CrcErrorCount",               "5208208757389214273",  40},
        {"TimedWorkloadMediaWear",      "6365651522798441041",  48},
        {"TimedWorkloadHostReads",      "7523094288207667809",  56},
        {"TimedWorkloadTimer",          "8680537053616894577",  64},
        {"ThermalThrottleStatus",       "129",                  65},
        {"ThermalThrottleCount",        "2492699281",           72},
        {"MediaBytesWritten",           "12152865349844574881", 80},
        {"HostBytesWritten",            "13310308115253801649", 88},
    });
    EXPECT_EQ(readNumber(structure, s::ProgramFailCount), 0x0807060504030201U);
    EXPECT_EQ(readNumber(structure, s::EraseFailCount), 0x1817161514131211U);
    EXPECT_EQ(readNumber(structure, s::MinNandEraseCycles), 0x2221U);
    EXPECT_EQ(readNumber(structure, s::MaxNandEraseCycles), 0x2423U);
    EXPECT_EQ(readNumber(structure, s::AverageNandEraseCycles), 0x2625U);
    EXPECT_EQ(readNumber(structure, s::EndToEndErrorDetectionCount), 0x3837363534333231U);
    EXPECT_EQ(readNumber(structure, s::CrcErrorCount), 0x4847464544434241U);
    EXPECT_EQ(readNumber(structure, s::TimedWorkloadMediaWear), 0x5857565554535251U);
    EXPECT_EQ(readNumber(structure, s::TimedWorkloadHostReads), 0x6867666564636261U);
    EXPECT_EQ(readNumber(structure, s::TimedWorkloadTimer), 0x7877767574737271U);
    EXPECT_EQ(readNumber(structure, s::ThermalThrottleStatus), 0x81U);
    EXPECT_EQ(readNumber(structure, s::ThermalThrottleCount), 0x94939291U);
    EXPECT_EQ(readNumber(structure, s::MediaBytesWritten), 0xA8A7A6A5A4A3A2A1U);
    EXPECT_EQ(readNumber(structure, s::HostBytesWritten), 0xB8B7B6B5B4B3B2B1U);
    EXPECT_EQ(s::SIZE, 512U);
    EXPECT_EQ(s::RESET_VALUE, 18446744073709551615U);
}

TEST(NorvoStructures, QueueMetricsHaveAnEntryForEachQueue) {
    namespace s = queue_metrics;
    namespace queue = queue_metrics_entry;
    const Payload structure = dump(512, {
        {0,   "01 02 1F 03"},
        {16,  "41 42 43 44 45 46 47 48 49 4A 4B 4C 4D 4E 4F 50"},
        {32,  "51 52 53 54 55 56 57 58 59 5A 5B 5C 5D 5E 5F 60"},
        {496, "61 62 63 64 65 66 67 68 69 6A 6B 6C 6D 6E 6F 70"},
    });
    expectRows(structure, s::ALL, {
        {"Version",        "513", 2},
        {"NumberOfQueues", "799", 4},
    });
    EXPECT_EQ(readNumber(structure, s::Version), 0x0201U);
    EXPECT_EQ(readNumber(structure, s::NumberOfQueues), 0x031FU);
    EXPECT_EQ(s::SIZE, 512U);

    expectEntries(structure, s::QUEUES, 31, 512);
    expectRows(readEntry(structure, s::QUEUES, 0), queue::ALL, {
        {"QueueId",             "16961",                2},
        {"Depth",               "17475",                4},
        {"OutstandingCommands", "17989",                6},
        {"HighestOutstanding",  "18503",                8},
        {"CompletedCommands",   "5786930140093827657", 16},
    });
    expectRows(readEntry(structure, s::QUEUES, 1), queue::ALL, {
        {"QueueId",             "21073",                2},
        {"Depth",               "21587",                4},
        {"OutstandingCommands", "22101",                6},
        {"HighestOutstanding",  "22615",                8},
        {"CompletedCommands",   "6944372905503054425", 16},
    });
    EXPECT_EQ(readNumber(structure, fieldOf(s::QUEUES, 30, queue::QueueId)), 0x6261U);
    EXPECT_EQ(readNumber(structure, fieldOf(s::QUEUES, 30, queue::Depth)), 0x6463U);
    EXPECT_EQ(readNumber(structure, fieldOf(s::QUEUES, 30, queue::OutstandingCommands)), 0x6665U);
    EXPECT_EQ(readNumber(structure, fieldOf(s::QUEUES, 30, queue::HighestOutstanding)), 0x6867U);
    EXPECT_EQ(readNumber(structure, fieldOf(s::QUEUES, 30, queue::CompletedCommands)),
              0x706F6E6D6C6B6A69U);
    EXPECT_EQ(queue::SIZE, 16U);
}

TEST(NorvoStructures, EyeDiagramsHaveARowOfCellsForEachVoltage) {
    namespace s = eye_diagram;
    const Payload structure = dump(2048, {
        {0,    "01 02 A3 A4 40 01 1F 02 3D 03 C8 04"},
        {64,   "91 92"},
        {128,  "93"},
        {2047, "94"},
    });
    expectRows(structure, s::ALL, {
        {"Version",   "513",   2},
        {"Group",     "163",   3},
        {"Lane",      "164",   4},
        {"Columns",   "320",   6},
        {"Rows",      "543",   8},
        {"EyeWidth",  "829",  10},
        {"EyeHeight", "1224", 12},
    });
    EXPECT_EQ(readNumber(structure, s::Version), 0x0201U);
    EXPECT_EQ(readNumber(structure, s::Group), 0xA3U);
    EXPECT_EQ(readNumber(structure, s::Lane), 0xA4U);
    EXPECT_EQ(readNumber(structure, s::Columns), 0x0140U);
    EXPECT_EQ(readNumber(structure, s::Rows), 0x021FU);
    EXPECT_EQ(readNumber(structure, s::EyeWidth), 0x033DU);
    EXPECT_EQ(readNumber(structure, s::EyeHeight), 0x04C8U);
    EXPECT_EQ(s::SIZE, 2048U);

    EXPECT_EQ(s::COLUMNS, 64U);
    EXPECT_EQ(s::ROWS, 31U);
    expectEntries(structure, s::CELLS, 1984, 2048);
    const auto cell = [&](std::uint32_t index) {
        return core::strings::bytesToHex(readEntry(structure, s::CELLS, index));
    };
    EXPECT_EQ(cell(0), "91");
    EXPECT_EQ(cell(1), "92");
    EXPECT_EQ(cell(64), "93");      // the first of the second row
    EXPECT_EQ(cell(1983), "94");
}

// clang-format on

}  // namespace
}  // namespace orvel::protocols::norvo
