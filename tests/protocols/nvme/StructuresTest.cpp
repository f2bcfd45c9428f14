// The tables of structures against a second list of the standard's rows, last byte first, and the
// lists of identifiers.
#include "protocols/nvme/Structures.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

using core::Payload;
using tables::expectFields;
using tables::expectSound;
using tables::payloadOf;
using tables::payloadWith;

constexpr Encoding TEXT = Encoding::TEXT;
constexpr Encoding WIDE = Encoding::WIDE_NUMBER;
constexpr Encoding BYTES = Encoding::BYTES;

// clang-format off

TEST(Structures, IdentifyControllerHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"VID",          1,    0},
        {"SSVID",        3,    2},
        {"SN",          23,    4, TEXT},
        {"MN",          63,   24, TEXT},
        {"FR",          71,   64, TEXT},
        {"RAB",         72,   72},
        {"IEEE",        75,   73},
        {"CMIC",        76,   76},
        {"MDTS",        77,   77},
        {"CNTLID",      79,   78},
        {"VER",         83,   80},
        {"RTD3R",       87,   84},
        {"RTD3E",       91,   88},
        {"OAES",        95,   92},
        {"CTRATT",      99,   96},
        {"RRLS",       101,  100},
        {"CNTRLTYPE",  111,  111},
        {"FGUID",      127,  112, BYTES},
        {"CRDT1",      129,  128},
        {"CRDT2",      131,  130},
        {"CRDT3",      133,  132},
        {"NVMSR",      253,  253},
        {"VWCI",       254,  254},
        {"MEC",        255,  255},
        {"OACS",       257,  256},
        {"ACL",        258,  258},
        {"AERL",       259,  259},
        {"FRMW",       260,  260},
        {"LPA",        261,  261},
        {"ELPE",       262,  262},
        {"NPSS",       263,  263},
        {"AVSCC",      264,  264},
        {"APSTA",      265,  265},
        {"WCTEMP",     267,  266},
        {"CCTEMP",     269,  268},
        {"MTFA",       271,  270},
        {"HMPRE",      275,  272},
        {"HMMIN",      279,  276},
        {"TNVMCAP",    295,  280, WIDE},
        {"UNVMCAP",    311,  296, WIDE},
        {"RPMBS",      315,  312},
        {"EDSTT",      317,  316},
        {"DSTO",       318,  318},
        {"FWUG",       319,  319},
        {"KAS",        321,  320},
        {"HCTMA",      323,  322},
        {"MNTMT",      325,  324},
        {"MXTMT",      327,  326},
        {"SANICAP",    331,  328},
        {"HMMINDS",    335,  332},
        {"HMMAXD",     337,  336},
        {"NSETIDMAX",  339,  338},
        {"ENDGIDMAX",  341,  340},
        {"ANATT",      342,  342},
        {"ANACAP",     343,  343},
        {"ANAGRPMAX",  347,  344},
        {"NANAGRPID",  351,  348},
        {"PELS",       355,  352},
        {"SQES",       512,  512},
        {"CQES",       513,  513},
        {"MAXCMD",     515,  514},
        {"NN",         519,  516},
        {"ONCS",       521,  520},
        {"FUSES",      523,  522},
        {"FNA",        524,  524},
        {"VWC",        525,  525},
        {"AWUN",       527,  526},
        {"AWUPF",      529,  528},
        {"NVSCC",      530,  530},
        {"NWPC",       531,  531},
        {"ACWU",       533,  532},
        {"SGLS",       539,  536},
        {"MNAN",       543,  540},
        {"SUBNQN",    1023,  768, TEXT},
        {"IOCCSZ",    1795, 1792},
        {"IORCSZ",    1799, 1796},
        {"ICDOFF",    1801, 1800},
        {"FCATT",     1802, 1802},
        {"MSDBD",     1803, 1803},
        {"OFCS",      1805, 1804},
        {"PSD",       3071, 2048, BYTES},
        {"VS",        4095, 3072, BYTES},
    };
    expectFields(identify_controller::ALL, ROWS);
    expectSound(identify_controller::ALL, 4096);
    EXPECT_EQ(identify_controller::SIZE, 4096U);
}

TEST(Structures, PowerStateDescriptorHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"MP",         1,  0},
        {"MXPS_NOPS",  3,  3},
        {"ENLAT",      7,  4},
        {"EXLAT",     11,  8},
        {"RRT",       12, 12},
        {"RRL",       13, 13},
        {"RWT",       14, 14},
        {"RWL",       15, 15},
        {"IDLP",      17, 16},
        {"IPS",       18, 18},
        {"ACTP",      21, 20},
        {"APW_APS",   22, 22},
    };
    expectFields(power_state_descriptor::ALL, ROWS);
    expectSound(power_state_descriptor::ALL, 32);
    EXPECT_EQ(power_state_descriptor::SIZE, 32U);
}

TEST(Structures, IdentifyNamespaceHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"NSZE",        7,   0},
        {"NCAP",       15,   8},
        {"NUSE",       23,  16},
        {"NSFEAT",     24,  24},
        {"NLBAF",      25,  25},
        {"FLBAS",      26,  26},
        {"MC",         27,  27},
        {"DPC",        28,  28},
        {"DPS",        29,  29},
        {"NMIC",       30,  30},
        {"RESCAP",     31,  31},
        {"FPI",        32,  32},
        {"DLFEAT",     33,  33},
        {"NAWUN",      35,  34},
        {"NAWUPF",     37,  36},
        {"NACWU",      39,  38},
        {"NABSN",      41,  40},
        {"NABO",       43,  42},
        {"NABSPF",     45,  44},
        {"NOIOB",      47,  46},
        {"NVMCAP",     63,  48, WIDE},
        {"NPWG",       65,  64},
        {"NPWA",       67,  66},
        {"NPDG",       69,  68},
        {"NPDA",       71,  70},
        {"NOWS",       73,  72},
        {"ANAGRPID",   95,  92},
        {"NSATTR",     99,  99},
        {"NVMSETID",  101, 100},
        {"ENDGID",    103, 102},
        {"NGUID",     119, 104, BYTES},
        {"EUI64",     127, 120, BYTES},
        {"LBAF",      191, 128, BYTES},
        {"VS",       4095, 384, BYTES},
    };
    expectFields(identify_namespace::ALL, ROWS);
    expectSound(identify_namespace::ALL, 4096);
    EXPECT_EQ(identify_namespace::SIZE, 4096U);
}

TEST(Structures, LbaFormatHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {{"MS", 1, 0}, {"LBADS", 2, 2}, {"RP", 3, 3}};
    expectFields(lba_format::ALL, ROWS);
    expectSound(lba_format::ALL, 4);
    EXPECT_EQ(lba_format::SIZE, 4U);
}

TEST(Structures, NamespaceManagementHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"NSZE",       7,   0},
        {"NCAP",      15,   8},
        {"FLBAS",     26,  26},
        {"DPS",       29,  29},
        {"NMIC",      30,  30},
        {"ANAGRPID",  95,  92},
        {"NVMSETID", 101, 100},
    };
    expectFields(namespace_management::ALL, ROWS);
    expectSound(namespace_management::ALL, 4096);
    EXPECT_EQ(namespace_management::SIZE, 4096U);
}

TEST(Structures, ErrorInformationEntryHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"ErrorCount",                          7,  0},
        {"SubmissionQueueID",                   9,  8},
        {"CommandID",                          11, 10},
        {"StatusField",                        13, 12},
        {"ParameterErrorLocation",             15, 14},
        {"LBA",                                23, 16},
        {"Namespace",                          27, 24},
        {"VendorSpecificInformationAvailable", 28, 28},
        {"TRTYPE",                             29, 29},
        {"CommandSpecificInformation",         39, 32},
        {"TransportTypeSpecificInformation",   41, 40},
    };
    expectFields(error_information_entry::ALL, ROWS);
    expectSound(error_information_entry::ALL, 64);
    EXPECT_EQ(error_information_entry::SIZE, 64U);
}

TEST(Structures, SmartHealthLogHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"CriticalWarning",                                0,   0},
        {"CompositeTemperature",                           2,   1},
        {"AvailableSpare",                                 3,   3},
        {"AvailableSpareThreshold",                        4,   4},
        {"PercentageUsed",                                 5,   5},
        {"EnduranceGroupCriticalWarningSummary",           6,   6},
        {"DataUnitsRead",                                 47,  32, WIDE},
        {"DataUnitsWritten",                              63,  48, WIDE},
        {"HostReadCommands",                              79,  64, WIDE},
        {"HostWriteCommands",                             95,  80, WIDE},
        {"ControllerBusyTime",                           111,  96, WIDE},
        {"PowerCycles",                                  127, 112, WIDE},
        {"PowerOnHours",                                 143, 128, WIDE},
        {"UnsafeShutdowns",                              159, 144, WIDE},
        {"MediaAndDataIntegrityErrors",                  175, 160, WIDE},
        {"NumberOfErrorInformationLogEntries",           191, 176, WIDE},
        {"WarningCompositeTemperatureTime",              195, 192},
        {"CriticalCompositeTemperatureTime",             199, 196},
        {"TemperatureSensor1",                           201, 200},
        {"TemperatureSensor2",                           203, 202},
        {"TemperatureSensor3",                           205, 204},
        {"TemperatureSensor4",                           207, 206},
        {"TemperatureSensor5",                           209, 208},
        {"TemperatureSensor6",                           211, 210},
        {"TemperatureSensor7",                           213, 212},
        {"TemperatureSensor8",                           215, 214},
        {"ThermalManagementTemperature1TransitionCount", 219, 216},
        {"ThermalManagementTemperature2TransitionCount", 223, 220},
        {"TotalTimeForThermalManagementTemperature1",    227, 224},
        {"TotalTimeForThermalManagementTemperature2",    231, 228},
    };
    expectFields(smart_health_log::ALL, ROWS);
    expectSound(smart_health_log::ALL, 512);
    EXPECT_EQ(smart_health_log::SIZE, 512U);
}

TEST(Structures, FirmwareSlotLogHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"AFI",   0,  0},
        {"FRS1", 15,  8, TEXT},
        {"FRS2", 23, 16, TEXT},
        {"FRS3", 31, 24, TEXT},
        {"FRS4", 39, 32, TEXT},
        {"FRS5", 47, 40, TEXT},
        {"FRS6", 55, 48, TEXT},
        {"FRS7", 63, 56, TEXT},
    };
    expectFields(firmware_slot_log::ALL, ROWS);
    expectSound(firmware_slot_log::ALL, 512);
    EXPECT_EQ(firmware_slot_log::SIZE, 512U);
}

TEST(Structures, CommandsEffectsLogHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {{"ACS", 1023, 0, BYTES}, {"IOCS", 2047, 1024, BYTES}};
    expectFields(commands_effects_log::ALL, ROWS);
    expectSound(commands_effects_log::ALL, 4096);
    EXPECT_EQ(commands_effects_log::SIZE, 4096U);
}

TEST(Structures, SelfTestLogHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"CurrentDeviceSelfTestOperation",    0, 0},
        {"CurrentDeviceSelfTestCompletion",   1, 1},
        {"SelfTestResults",                 563, 4, BYTES},
    };
    expectFields(self_test_log::ALL, ROWS);
    expectSound(self_test_log::ALL, 564);
    EXPECT_EQ(self_test_log::SIZE, 564U);
}

TEST(Structures, SelfTestResultHasTheStandardsFields) {
    constexpr tables::ByteRow ROWS[] = {
        {"DeviceSelfTestStatus",        0,  0},
        {"SegmentNumber",               1,  1},
        {"ValidDiagnosticInformation",  2,  2},
        {"POH",                        11,  4},
        {"NSID",                       15, 12},
        {"FailingLBA",                 23, 16},
        {"StatusCodeType",             24, 24},
        {"StatusCode",                 25, 25},
        {"VendorSpecific",             27, 26},
    };
    expectFields(self_test_result::ALL, ROWS);
    expectSound(self_test_result::ALL, 28);
    EXPECT_EQ(self_test_result::SIZE, 28U);
}

TEST(Structures, HaveTheirEntriesWhereTheStandardPutsThem) {
    struct Row {
        const char* what;
        Entries entries;
        std::uint32_t first;      ///< byte of entry 0
        std::uint32_t second;     ///< byte of entry 1
        std::uint32_t lastByte;   ///< of the last entry
        std::uint32_t count;
    };
    const Row ROWS[] = {
        {"power states",        identify_controller::POWER_STATES,    2048, 2080, 3071,   32},
        {"LBA formats",         identify_namespace::LBA_FORMATS,       128,  132,  191,   16},
        {"firmware slots",      firmware_slot_log::SLOTS,                8,   16,   63,    7},
        {"admin commands",      commands_effects_log::ADMIN_COMMANDS,    0,    4, 1023,  256},
        {"I/O commands",        commands_effects_log::IO_COMMANDS,    1024, 1028, 2047,  256},
        {"self-test results",   self_test_log::RESULTS,                  4,   32,  563,   20},
        {"error entries",       errorInformationEntries(64),             0,   64, 4095,   64},
        {"namespace list",      namespace_list::IDENTIFIERS,             0,    4, 4095, 1024},
        {"controller list",     controller_list::IDENTIFIERS,            2,    4, 4095, 2047},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(row.entries.count, row.count);
        EXPECT_EQ(row.entries.offset, row.first);
        EXPECT_EQ(row.entries.offset + row.entries.size, row.second);
        EXPECT_EQ(row.entries.offset + row.entries.size * row.entries.count - 1, row.lastByte);
    }
    EXPECT_EQ(namespace_list::SIZE, 4096U);
    EXPECT_EQ(controller_list::SIZE, 4096U);
    EXPECT_EQ(controller_list::NumberOfIdentifiers.offset, 0U);
    EXPECT_EQ(controller_list::NumberOfIdentifiers.size, 2U);
    EXPECT_EQ(commands_effects_log::EFFECTS.offset, 0U);
    EXPECT_EQ(commands_effects_log::EFFECTS.size, 4U);
}

// clang-format on

struct Table {
    const char* what;
    Fields fields;
    std::uint32_t size;
};

const Table TABLES[] = {
    {"identify_controller", identify_controller::ALL, 4096},
    {"power_state_descriptor", power_state_descriptor::ALL, 32},
    {"identify_namespace", identify_namespace::ALL, 4096},
    {"lba_format", lba_format::ALL, 4},
    {"namespace_management", namespace_management::ALL, 4096},
    {"error_information_entry", error_information_entry::ALL, 64},
    {"smart_health_log", smart_health_log::ALL, 512},
    {"firmware_slot_log", firmware_slot_log::ALL, 512},
    {"commands_effects_log", commands_effects_log::ALL, 4096},
    {"self_test_log", self_test_log::ALL, 564},
    {"self_test_result", self_test_result::ALL, 28},
};

TEST(Structures, OfWhateverBytesCanBeShown) {
    for (const Table& table : TABLES) {
        SCOPED_TRACE(table.what);
        for (const char byte : {'\0', '\xFF', '\x55'}) {
            const Payload structure = payloadOf(table.size, byte);
            for (const Field& field : table.fields) {
                SCOPED_TRACE(field.name);
                EXPECT_EQ(thrownCode([&] { valueAsText(structure, field); }), -1);
            }
        }
    }
}

TEST(Structures, ThatAreTooShortThrow) {
    for (const Table& table : TABLES) {
        SCOPED_TRACE(table.what);
        for (const Field& field : table.fields) {
            SCOPED_TRACE(field.name);
            const std::uint32_t end = field.offset + field.size;
            EXPECT_EQ(thrownCode([&] { valueAsText(Payload(end), field); }), -1);
            EXPECT_EQ(thrownCode([&] { valueAsText(Payload(end - 1), field); }), 14);
            EXPECT_EQ(thrownCode([&] { valueAsText(Payload(), field); }), 14);
        }
    }
}

TEST(NamespaceList, EndsAtTheFirstZero) {
    const Payload list = payloadWith(
        4096, {{0, "\x01"}, {4, "\x78\x56\x34\x12"}, {8, "\xFE\xFF\xFF\xFF"}, {16, "\x09"}});
    EXPECT_EQ(readNamespaceList(list), (std::vector<std::uint32_t>{1, 0x12345678, 0xFFFFFFFE}));
    EXPECT_EQ(readNamespaceList(Payload(4096)), std::vector<std::uint32_t>());
}

TEST(NamespaceList, MayBeFull) {
    EXPECT_EQ(readNamespaceList(payloadOf(4096, '\x01')),
              std::vector<std::uint32_t>(1024, 0x01010101));
    EXPECT_EQ(readNamespaceList(payloadOf(5000, '\xFF')),
              std::vector<std::uint32_t>(1024, 0xFFFFFFFF));
}

TEST(NamespaceList, TellsOfTooManyChangesByOneIdentifier) {
    EXPECT_EQ(readNamespaceList(payloadWith(4096, {{0, "\xFF\xFF\xFF\xFF"}})),
              std::vector<std::uint32_t>{0xFFFFFFFF});
}

TEST(NamespaceList, ThrowsIfThePayloadEndsBeforeTheList) {
    EXPECT_EQ(thrownCode([] { readNamespaceList(Payload()); }), 14);
    EXPECT_EQ(thrownCode([] { readNamespaceList(payloadOf(7, '\x01')); }), 14);
    EXPECT_EQ(thrownCode([] { readNamespaceList(payloadOf(4092, '\x01')); }), 14);
    EXPECT_EQ(thrownCode([] { readNamespaceList(payloadWith(8, {{0, "\x01"}})); }), -1);
}

TEST(NamespaceList, IsMadeWhole) {
    const std::vector<std::uint32_t> identifiers{1, 0x12345678};
    EXPECT_EQ(makeNamespaceList(identifiers),
              payloadWith(4096, {{0, "\x01"}, {4, "\x78\x56\x34\x12"}}));
    EXPECT_EQ(makeNamespaceList({}), Payload(4096));
}

TEST(NamespaceList, HasRoomFor1024Identifiers) {
    const std::vector<std::uint32_t> full(1024, 0x02020202);
    EXPECT_EQ(makeNamespaceList(full), payloadOf(4096, '\x02'));
    const std::vector<std::uint32_t> tooMany(1025, 2);
    EXPECT_EQ(thrownCode([&] { makeNamespaceList(tooMany); }), 36);
}

TEST(ControllerList, HoldsAsManyIdentifiersAsItSays) {
    const Payload list =
        payloadWith(4096, {{0, "\x03"}, {4, "\x01"}, {6, "\xFF\xAB"}, {8, "\x09"}});
    EXPECT_EQ(readControllerList(list), (std::vector<std::uint16_t>{0, 1, 0xABFF}));
    EXPECT_EQ(readControllerList(Payload(4096)), std::vector<std::uint16_t>());
    EXPECT_EQ(readControllerList(Payload(2)), std::vector<std::uint16_t>());
}

TEST(ControllerList, ThrowsIfItSaysMoreThanItHolds) {
    EXPECT_EQ(thrownCode([] { readControllerList(Payload()); }), 14);
    EXPECT_EQ(thrownCode([] { readControllerList(Payload(1)); }), 14);
    EXPECT_EQ(thrownCode([] { readControllerList(payloadWith(5, {{0, "\x02"}})); }), 14);
    EXPECT_EQ(thrownCode([] { readControllerList(payloadWith(6, {{0, "\x02"}})); }), -1);
    EXPECT_EQ(thrownCode([] { readControllerList(payloadOf(4096, '\xFF')); }), 14);
    // 2048: one more than a list has room for, even in a longer payload
    EXPECT_EQ(thrownCode([] { readControllerList(payloadWith(8192, {{1, "\x08"}})); }), 14);
    EXPECT_EQ(thrownCode([] { readControllerList(payloadWith(4096, {{0, "\xFF\x07"}})); }), -1);
}

TEST(ControllerList, IsMadeWhole) {
    const std::vector<std::uint16_t> identifiers{0, 1, 0xABFF};
    EXPECT_EQ(makeControllerList(identifiers),
              payloadWith(4096, {{0, "\x03"}, {4, "\x01"}, {6, "\xFF\xAB"}}));
    EXPECT_EQ(makeControllerList({}), Payload(4096));
}

TEST(ControllerList, HasRoomFor2047Identifiers) {
    const std::vector<std::uint16_t> full(2047, 0x0505);
    EXPECT_EQ(makeControllerList(full),
              payloadWith(4096, {{0, "\xFF\x07"}, {2, std::string(4094, '\x05')}}));
    const std::vector<std::uint16_t> tooMany(2048, 5);
    EXPECT_EQ(thrownCode([&] { makeControllerList(tooMany); }), 36);
}

TEST(NewNamespace, IsMadeOfWhatTheHostTells) {
    EXPECT_EQ(makeNewNamespace({.size = 0x0807060504030201,
                                .capacity = 0x1817161514131211,
                                .formattedLbaSize = 0x12,
                                .dataProtection = 0x0B,
                                .sharing = 0x01,
                                .anaGroup = 0x44332211,
                                .nvmSet = 0x6655}),
              payloadWith(4096, {{0, "\x01\x02\x03\x04\x05\x06\x07\x08"},
                                 {8, "\x11\x12\x13\x14\x15\x16\x17\x18"},
                                 {26, "\x12"},
                                 {29, "\x0B"},
                                 {30, "\x01"},
                                 {92, "\x11\x22\x33\x44"},
                                 {100, "\x55\x66"}}));
    EXPECT_EQ(makeNewNamespace({}), Payload(4096));
}

}  // namespace
}  // namespace orvel::protocols::nvme
