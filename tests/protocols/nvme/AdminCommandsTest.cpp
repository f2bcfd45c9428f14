// The factories' dwords, written out as the standard tells.
#include "protocols/nvme/AdminCommands.h"

#include "tests/protocols/nvme/Tables.h"

namespace orvel::protocols::nvme {
namespace {

constexpr DataDirection NONE = DataDirection::NONE;
constexpr DataDirection FROM = DataDirection::FROM_DRIVE;
constexpr DataDirection TO = DataDirection::TO_DRIVE;

struct Row {
    const char* what;
    AdminCommand command;
    const char* name;
    AdminCommandFields fields;
};

void expectRows(std::initializer_list<Row> rows) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const AdminCommandFields& fields = row.command.getFields();
        EXPECT_EQ(row.command.getName(), row.name);
        EXPECT_EQ(fields.opcode, row.fields.opcode);
        EXPECT_EQ(fields.nsid, row.fields.nsid);
        EXPECT_EQ(fields.cdw10, row.fields.cdw10);
        EXPECT_EQ(fields.cdw11, row.fields.cdw11);
        EXPECT_EQ(fields.cdw12, row.fields.cdw12);
        EXPECT_EQ(fields.cdw13, row.fields.cdw13);
        EXPECT_EQ(fields.cdw14, row.fields.cdw14);
        EXPECT_EQ(fields.cdw15, row.fields.cdw15);
        EXPECT_EQ(fields.dataDirection, row.fields.dataDirection);
        EXPECT_EQ(fields.transferLength, row.fields.transferLength);
    }
}

// In the rows of expected fields: opcode, nsid, dwords 10 to 15, direction, length.
// clang-format off

TEST(AdminCommands, AskForStructuresWithIdentify) {
    expectRows({
        {"controller",              identify(0x01),
         "Identify",                {0x06, 0, 0x00000001, 0, 0, 0, 0, 0, FROM, 4096}},
        {"namespace",               identify(0x00, 0x12345678),
         "Identify",                {0x06, 0x12345678, 0, 0, 0, 0, 0, 0, FROM, 4096}},
        {"list from a controller",  identify(0x13, 0, 0xABCD),
         "Identify",                {0x06, 0, 0xABCD0013, 0, 0, 0, 0, 0, FROM, 4096}},
        {"whatever",                identify(0xFF, 0xFFFFFFFF, 0xFFFF),
         "Identify",                {0x06, 0xFFFFFFFF, 0xFFFF00FF, 0, 0, 0, 0, 0, FROM, 4096}},
    });
}

TEST(AdminCommands, AskForLogPagesWithAZeroesBasedNumberOfDwords) {
    expectRows({
        {"one dword",               getLogPage({.logPage = 0x02, .bytes = 4}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x00008002, 0, 0, 0, 0, 0, FROM, 4}},
        {"SMART / Health",          getLogPage({.logPage = 0x02, .bytes = 512}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x007F8002, 0, 0, 0, 0, 0, FROM, 512}},
        {"self-test",               getLogPage({.logPage = 0x06, .bytes = 564}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x008C0006, 0, 0, 0, 0, 0, FROM, 564}},
        {"of a namespace",          getLogPage({.logPage = 0x02, .nsid = 1, .bytes = 512}),
         "Get Log Page",            {0x02, 1, 0x007F8002, 0, 0, 0, 0, 0, FROM, 512}},
        {"last that fits 16 bits",  getLogPage({.logPage = 0x07, .bytes = 0x40000}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0xFFFF0007, 0, 0, 0, 0, 0, FROM, 0x40000}},
        {"first beyond 16 bits",    getLogPage({.logPage = 0x07, .bytes = 0x40004}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x00000007, 1, 0, 0, 0, 0, FROM, 0x40004}},
        {"both halves",             getLogPage({.logPage = 0x07, .bytes = 0x48D15A0}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x45670007, 0x0123, 0, 0, 0, 0, FROM, 0x48D15A0}},
        {"longest",                 getLogPage({.logPage = 0x07, .bytes = 0xFFFFFFFC}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0xFFFE0007, 0x3FFF, 0, 0, 0, 0, FROM, 0xFFFFFFFC}},
    });
}

TEST(AdminCommands, AskForPartsOfLogPages) {
    expectRows({
        {"lower offset",            getLogPage({.logPage = 0x07, .bytes = 512, .offset = 0x1000}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x007F0007, 0, 0x1000, 0, 0, 0, FROM, 512}},
        {"both halves of offset",   getLogPage({.logPage = 0x07, .bytes = 512, .offset = 0x0123456789ABCDEC}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x007F0007, 0, 0x89ABCDEC, 0x01234567, 0, 0, FROM, 512}},
        {"log specific field",      getLogPage({.logPage = 0x07, .bytes = 4, .logSpecificField = 0x0F}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x00000F07, 0, 0, 0, 0, 0, FROM, 4}},
        {"event cleared",           getLogPage({.logPage = 0x01, .bytes = 4, .retainAsynchronousEvent = false}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x00000001, 0, 0, 0, 0, 0, FROM, 4}},
        {"log specific identifier", getLogPage({.logPage = 0x09, .bytes = 0x40004, .logSpecificIdentifier = 0xBEEF}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x00000009, 0xBEEF0001, 0, 0, 0, 0, FROM, 0x40004}},
        {"UUID",                    getLogPage({.logPage = 0xC0, .bytes = 4, .uuidIndex = 0x7F}),
         "Get Log Page",            {0x02, 0xFFFFFFFF, 0x000000C0, 0, 0, 0, 0x7F, 0, FROM, 4}},
    });
}

TEST(AdminCommands, RetainTheEventsOfLogPagesThatHaveSome) {
    std::vector<unsigned> retaining;
    for (unsigned page = 0; page <= 0xFF; ++page) {
        const auto request = getLogPage({.logPage = static_cast<std::uint8_t>(page), .bytes = 4});
        if ((request.getFields().cdw10 & 0x8000U) != 0) retaining.push_back(page);
    }
    EXPECT_EQ(retaining, (std::vector<unsigned>{0x01, 0x02, 0x03, 0x04, 0x08, 0x0B, 0x0C, 0x0E,
                                                0x0F, 0x80, 0x81}));
}

TEST(AdminCommands, LeaveTheAlignmentOfAnOffsetToTheDrive) {
    EXPECT_EQ(getLogPage({.logPage = 0x07, .bytes = 4, .offset = 3}).getFields().cdw12, 3U);
}

TEST(AdminCommands, GetFeatures) {
    expectRows({
        {"current",                 getFeatures({.feature = 0x04, .cdw11 = 0x00110000}),
         "Get Features",            {0x0A, 0, 0x00000004, 0x00110000, 0, 0, 0, 0, NONE, 0}},
        {"default",                 getFeatures({.feature = 0x06, .select = 1}),
         "Get Features",            {0x0A, 0, 0x00000106, 0, 0, 0, 0, 0, NONE, 0}},
        {"saved",                   getFeatures({.feature = 0x06, .select = 2}),
         "Get Features",            {0x0A, 0, 0x00000206, 0, 0, 0, 0, 0, NONE, 0}},
        {"capabilities",            getFeatures({.feature = 0x06, .select = 3, .nsid = 5}),
         "Get Features",            {0x0A, 5, 0x00000306, 0, 0, 0, 0, 0, NONE, 0}},
        {"with data",               getFeatures({.feature = 0x0E, .bytes = 8}),
         "Get Features",            {0x0A, 0, 0x0000000E, 0, 0, 0, 0, 0, FROM, 8}},
        {"UUID",                    getFeatures({.feature = 0xC0, .select = 7, .uuidIndex = 0x15}),
         "Get Features",            {0x0A, 0, 0x000007C0, 0, 0, 0, 0x15, 0, NONE, 0}},
    });
}

TEST(AdminCommands, SetFeatures) {
    expectRows({
        {"until the next reset",    setFeatures({.feature = 0x06, .cdw11 = 1}),
         "Set Features",            {0x09, 0, 0x00000006, 1, 0, 0, 0, 0, NONE, 0}},
        {"saved",                   setFeatures({.feature = 0x02, .cdw11 = 0xFFFFFFFF, .save = true, .nsid = 0xFFFFFFFF}),
         "Set Features",            {0x09, 0xFFFFFFFF, 0x80000002, 0xFFFFFFFF, 0, 0, 0, 0, NONE, 0}},
        {"with all dwords",         setFeatures({.feature = 0x0D, .cdw11 = 1, .cdw12 = 2, .cdw13 = 3, .cdw14 = 4, .cdw15 = 5}),
         "Set Features",            {0x09, 0, 0x0000000D, 1, 2, 3, 4, 5, NONE, 0}},
        {"with data",               setFeatures({.feature = 0x0E, .bytes = 8}),
         "Set Features",            {0x09, 0, 0x0000000E, 0, 0, 0, 0, 0, TO, 8}},
    });
}

TEST(AdminCommands, FormatNvm) {
    expectRows({
        {"all namespaces",          formatNvm({}),
         "Format NVM",              {0x80, 0xFFFFFFFF, 0, 0, 0, 0, 0, 0, NONE, 0}},
        {"LBA format",              formatNvm({.nsid = 1, .lbaFormat = 15}),
         "Format NVM",              {0x80, 1, 0x00F, 0, 0, 0, 0, 0, NONE, 0}},
        {"metadata settings",       formatNvm({.nsid = 1, .metadataSettings = 1}),
         "Format NVM",              {0x80, 1, 0x010, 0, 0, 0, 0, 0, NONE, 0}},
        {"protection information",  formatNvm({.nsid = 1, .protectionInformation = 3}),
         "Format NVM",              {0x80, 1, 0x060, 0, 0, 0, 0, 0, NONE, 0}},
        {"its location",            formatNvm({.nsid = 1, .protectionInformationLocation = 1}),
         "Format NVM",              {0x80, 1, 0x100, 0, 0, 0, 0, 0, NONE, 0}},
        {"user data erase",         formatNvm({.nsid = 1, .secureEraseSettings = 1}),
         "Format NVM",              {0x80, 1, 0x200, 0, 0, 0, 0, 0, NONE, 0}},
        {"cryptographic erase",     formatNvm({.nsid = 1, .secureEraseSettings = 2}),
         "Format NVM",              {0x80, 1, 0x400, 0, 0, 0, 0, 0, NONE, 0}},
        {"all bits",                formatNvm({2, 15, 1, 7, 1, 7}),
         "Format NVM",              {0x80, 2, 0xFFF, 0, 0, 0, 0, 0, NONE, 0}},
    });
}

TEST(AdminCommands, ManageNamespaces) {
    expectRows({
        {"create",                  namespaceCreate(),
         "Namespace Management",    {0x0D, 0, 0, 0, 0, 0, 0, 0, TO, 4096}},
        {"delete",                  namespaceDelete(3),
         "Namespace Management",    {0x0D, 3, 1, 0, 0, 0, 0, 0, NONE, 0}},
        {"delete all",              namespaceDelete(0xFFFFFFFF),
         "Namespace Management",    {0x0D, 0xFFFFFFFF, 1, 0, 0, 0, 0, 0, NONE, 0}},
        {"attach",                  namespaceAttach(3),
         "Namespace Attachment",    {0x15, 3, 0, 0, 0, 0, 0, 0, TO, 4096}},
        {"detach",                  namespaceDetach(3),
         "Namespace Attachment",    {0x15, 3, 1, 0, 0, 0, 0, 0, TO, 4096}},
    });
}

TEST(AdminCommands, UpdateFirmware) {
    expectRows({
        {"one dword",               firmwareImageDownload(0, 4),
         "Firmware Image Download", {0x11, 0, 0, 0, 0, 0, 0, 0, TO, 4}},
        {"a piece",                 firmwareImageDownload(0x2000, 0x8000),
         "Firmware Image Download", {0x11, 0, 0x1FFF, 0x2000, 0, 0, 0, 0, TO, 0x8000}},
        {"largest",                 firmwareImageDownload(0xFFFFFFFF, 0xFFFFFFFC),
         "Firmware Image Download", {0x11, 0, 0x3FFFFFFE, 0xFFFFFFFF, 0, 0, 0, 0, TO, 0xFFFFFFFC}},
        {"slot of the drive's",     firmwareCommit(0, 1),
         "Firmware Commit",         {0x10, 0, 0x08, 0, 0, 0, 0, 0, NONE, 0}},
        {"slot and action",         firmwareCommit(2, 3),
         "Firmware Commit",         {0x10, 0, 0x1A, 0, 0, 0, 0, 0, NONE, 0}},
        {"largest slot and action", firmwareCommit(7, 7),
         "Firmware Commit",         {0x10, 0, 0x3F, 0, 0, 0, 0, 0, NONE, 0}},
        {"boot partition",          firmwareCommit(0, 6, 1),
         "Firmware Commit",         {0x10, 0, 0x80000030, 0, 0, 0, 0, 0, NONE, 0}},
    });
}

TEST(AdminCommands, StartSelfTests) {
    expectRows({
        {"short",                   deviceSelfTest(0xFFFFFFFF, 1),
         "Device Self-test",        {0x14, 0xFFFFFFFF, 1, 0, 0, 0, 0, 0, NONE, 0}},
        {"extended",                deviceSelfTest(1, 2),
         "Device Self-test",        {0x14, 1, 2, 0, 0, 0, 0, 0, NONE, 0}},
        {"abort",                   deviceSelfTest(0, 0xF),
         "Device Self-test",        {0x14, 0, 0xF, 0, 0, 0, 0, 0, NONE, 0}},
    });
}

// clang-format on

TEST(AdminCommands, RejectNumbersThatTheirBitsCannotHold) {
    EXPECT_EQ(thrownCode([] { getLogPage({.bytes = 4, .logSpecificField = 16}); }), 36);
    EXPECT_EQ(thrownCode([] { getLogPage({.bytes = 4, .uuidIndex = 0x80}); }), 36);
    EXPECT_EQ(thrownCode([] { getFeatures({.select = 8}); }), 36);
    EXPECT_EQ(thrownCode([] { getFeatures({.uuidIndex = 0x80}); }), 36);
    EXPECT_EQ(thrownCode([] { formatNvm({.lbaFormat = 16}); }), 36);
    EXPECT_EQ(thrownCode([] { formatNvm({.metadataSettings = 2}); }), 36);
    EXPECT_EQ(thrownCode([] { formatNvm({.protectionInformation = 8}); }), 36);
    EXPECT_EQ(thrownCode([] { formatNvm({.protectionInformationLocation = 2}); }), 36);
    EXPECT_EQ(thrownCode([] { formatNvm({.secureEraseSettings = 8}); }), 36);
    EXPECT_EQ(thrownCode([] { firmwareCommit(8, 0); }), 36);
    EXPECT_EQ(thrownCode([] { firmwareCommit(0, 8); }), 36);
    EXPECT_EQ(thrownCode([] { firmwareCommit(0, 0, 2); }), 36);
    EXPECT_EQ(thrownCode([] { deviceSelfTest(0, 16); }), 36);
}

TEST(AdminCommands, RejectLengthsThatAreNoDwords) {
    for (const std::uint32_t bytes : {0U, 1U, 2U, 3U, 5U, 511U, 513U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(bytes);
        EXPECT_EQ(thrownCode([&] { getLogPage({.logPage = 2, .bytes = bytes}); }), 36);
        EXPECT_EQ(thrownCode([&] { firmwareImageDownload(0, bytes); }), 36);
    }
}

TEST(AdminCommands, TellTheirLengthAndOffsetToWhoeverExecutesThem) {
    EXPECT_EQ(logPageBytes({.cdw10 = 0x00000002}), 4U);
    EXPECT_EQ(logPageBytes({.cdw10 = 0x007F0002}), 512U);
    EXPECT_EQ(logPageBytes({.cdw10 = 0x45678F07, .cdw11 = 0xBEEF0123}), 0x48D15A0U);
    EXPECT_EQ(logPageBytes({.cdw10 = 0xFFFF0002, .cdw11 = 0xFFFFFFFF}), 0x400000000U);
    EXPECT_EQ(logPageOffset({.cdw12 = 0x89ABCDEC, .cdw13 = 0x01234567}), 0x0123456789ABCDECU);
    EXPECT_EQ(logPageOffset({.cdw12 = 0xFFFFFFFF}), 0xFFFFFFFFU);
    EXPECT_EQ(firmwareImageBytes({.cdw10 = 0}), 4U);
    EXPECT_EQ(firmwareImageBytes({.cdw10 = 0x1FFF}), 0x8000U);
    EXPECT_EQ(firmwareImageBytes({.cdw10 = 0xFFFFFFFF}), 0x400000000U);
}

TEST(AdminCommands, HaveTheStandardsBits) {
    constexpr tables::GroupedBits ALL[] = {
#define BITS(group, name, lowBit, bits, meaning) {#group, group::name},
#include "protocols/nvme/CommandBits.def"
    };
    // clang-format off
    constexpr tables::BitRow ROWS[] = {
        {"identify_cdw10",             "CNS",         7,  0},
        {"identify_cdw10",             "CNTID",      31, 16},
        {"identify_cdw11",             "NVMSETID",   15,  0},
        {"get_log_page_cdw10",         "LID",         7,  0},
        {"get_log_page_cdw10",         "LSP",        11,  8},
        {"get_log_page_cdw10",         "RAE",        15, 15},
        {"get_log_page_cdw10",         "NUMDL",      31, 16},
        {"get_log_page_cdw11",         "NUMDU",      15,  0},
        {"get_log_page_cdw11",         "LSI",        31, 16},
        {"get_log_page_cdw12",         "LPOL",       31,  0},
        {"get_log_page_cdw13",         "LPOU",       31,  0},
        {"get_features_cdw10",         "FID",         7,  0},
        {"get_features_cdw10",         "SEL",        10,  8},
        {"set_features_cdw10",         "FID",         7,  0},
        {"set_features_cdw10",         "SV",         31, 31},
        {"uuid_cdw14",                 "UUID_INDEX",  6,  0},
        {"format_nvm_cdw10",           "LBAF",        3,  0},
        {"format_nvm_cdw10",           "MSET",        4,  4},
        {"format_nvm_cdw10",           "PI",          7,  5},
        {"format_nvm_cdw10",           "PIL",         8,  8},
        {"format_nvm_cdw10",           "SES",        11,  9},
        {"namespace_management_cdw10", "SEL",         3,  0},
        {"namespace_attachment_cdw10", "SEL",         3,  0},
        {"firmware_download_cdw10",    "NUMD",       31,  0},
        {"firmware_download_cdw11",    "OFST",       31,  0},
        {"firmware_commit_cdw10",      "FS",          2,  0},
        {"firmware_commit_cdw10",      "CA",          5,  3},
        {"firmware_commit_cdw10",      "BPID",       31, 31},
        {"device_self_test_cdw10",     "STC",         3,  0},
    };
    // clang-format on
    tables::expectBits(ALL, ROWS);
}

TEST(AdminCommands, HaveTheStandardsValues) {
    struct ValueRow {
        const char* group;
        const char* name;
        unsigned value;
    };

    constexpr ValueRow ALL[] = {
#define VALUE(group, value, name, words) {#group, #name, group::name},
#include "protocols/nvme/CommandValues.def"
    };
    // clang-format off
    constexpr ValueRow ROWS[] = {
        {"cns",               "NAMESPACE",                            0x00},
        {"cns",               "CONTROLLER",                           0x01},
        {"cns",               "ACTIVE_NAMESPACE_LIST",                0x02},
        {"cns",               "NAMESPACE_IDENTIFICATION_DESCRIPTORS", 0x03},
        {"cns",               "NVM_SET_LIST",                         0x04},
        {"cns",               "ALLOCATED_NAMESPACE_LIST",             0x10},
        {"cns",               "ALLOCATED_NAMESPACE",                  0x11},
        {"cns",               "ATTACHED_CONTROLLER_LIST",             0x12},
        {"cns",               "CONTROLLER_LIST",                      0x13},
        {"cns",               "PRIMARY_CONTROLLER_CAPABILITIES",      0x14},
        {"cns",               "SECONDARY_CONTROLLER_LIST",            0x15},
        {"cns",               "NAMESPACE_GRANULARITY_LIST",           0x16},
        {"cns",               "UUID_LIST",                            0x17},
        {"log_pages",         "ERROR_INFORMATION",                    0x01},
        {"log_pages",         "SMART_HEALTH_INFORMATION",             0x02},
        {"log_pages",         "FIRMWARE_SLOT_INFORMATION",            0x03},
        {"log_pages",         "CHANGED_NAMESPACE_LIST",               0x04},
        {"log_pages",         "COMMANDS_SUPPORTED_AND_EFFECTS",       0x05},
        {"log_pages",         "DEVICE_SELF_TEST",                     0x06},
        {"log_pages",         "TELEMETRY_HOST_INITIATED",             0x07},
        {"log_pages",         "TELEMETRY_CONTROLLER_INITIATED",       0x08},
        {"log_pages",         "ENDURANCE_GROUP_INFORMATION",          0x09},
        {"log_pages",         "PREDICTABLE_LATENCY_PER_NVM_SET",      0x0A},
        {"log_pages",         "PREDICTABLE_LATENCY_EVENT_AGGREGATE",  0x0B},
        {"log_pages",         "ASYMMETRIC_NAMESPACE_ACCESS",          0x0C},
        {"log_pages",         "PERSISTENT_EVENT_LOG",                 0x0D},
        {"log_pages",         "LBA_STATUS_INFORMATION",               0x0E},
        {"log_pages",         "ENDURANCE_GROUP_EVENT_AGGREGATE",      0x0F},
        {"log_pages",         "RESERVATION_NOTIFICATION",             0x80},
        {"log_pages",         "SANITIZE_STATUS",                      0x81},
        {"features",          "ARBITRATION",                          0x01},
        {"features",          "POWER_MANAGEMENT",                     0x02},
        {"features",          "LBA_RANGE_TYPE",                       0x03},
        {"features",          "TEMPERATURE_THRESHOLD",                0x04},
        {"features",          "ERROR_RECOVERY",                       0x05},
        {"features",          "VOLATILE_WRITE_CACHE",                 0x06},
        {"features",          "NUMBER_OF_QUEUES",                     0x07},
        {"features",          "INTERRUPT_COALESCING",                 0x08},
        {"features",          "INTERRUPT_VECTOR_CONFIGURATION",       0x09},
        {"features",          "WRITE_ATOMICITY",                      0x0A},
        {"features",          "ASYNCHRONOUS_EVENT_CONFIGURATION",     0x0B},
        {"features",          "AUTONOMOUS_POWER_STATE_TRANSITION",    0x0C},
        {"features",          "HOST_MEMORY_BUFFER",                   0x0D},
        {"features",          "TIMESTAMP",                            0x0E},
        {"features",          "KEEP_ALIVE_TIMER",                     0x0F},
        {"features",          "HOST_CONTROLLED_THERMAL_MANAGEMENT",   0x10},
        {"features",          "NON_OPERATIONAL_POWER_STATE_CONFIG",   0x11},
        {"features",          "READ_RECOVERY_LEVEL_CONFIG",           0x12},
        {"features",          "PREDICTABLE_LATENCY_MODE_CONFIG",      0x13},
        {"features",          "PREDICTABLE_LATENCY_MODE_WINDOW",      0x14},
        {"features",          "LBA_STATUS_REPORT_INTERVAL",           0x15},
        {"features",          "HOST_BEHAVIOR_SUPPORT",                0x16},
        {"features",          "SANITIZE_CONFIG",                      0x17},
        {"features",          "ENDURANCE_GROUP_EVENT_CONFIGURATION",  0x18},
        {"features",          "SOFTWARE_PROGRESS_MARKER",             0x80},
        {"features",          "HOST_IDENTIFIER",                      0x81},
        {"features",          "RESERVATION_NOTIFICATION_MASK",        0x82},
        {"features",          "RESERVATION_PERSISTENCE",              0x83},
        {"features",          "NAMESPACE_WRITE_PROTECTION_CONFIG",    0x84},
        {"feature_select",    "CURRENT",                              0},
        {"feature_select",    "DEFAULT",                              1},
        {"feature_select",    "SAVED",                                2},
        {"feature_select",    "SUPPORTED_CAPABILITIES",               3},
        {"secure_erase",      "NONE",                                 0},
        {"secure_erase",      "USER_DATA",                            1},
        {"secure_erase",      "CRYPTOGRAPHIC",                        2},
        {"management_select", "CREATE",                               0},
        {"management_select", "DELETE_NAMESPACE",                     1},
        {"attachment_select", "ATTACH",                               0},
        {"attachment_select", "DETACH",                               1},
        {"commit_action",     "REPLACE",                              0},
        {"commit_action",     "REPLACE_AND_ACTIVATE_AT_RESET",        1},
        {"commit_action",     "ACTIVATE_AT_RESET",                    2},
        {"commit_action",     "ACTIVATE_IMMEDIATELY",                 3},
        {"commit_action",     "REPLACE_BOOT_PARTITION",               6},
        {"commit_action",     "ACTIVATE_BOOT_PARTITION",              7},
        {"self_test",         "SHORT",                                0x1},
        {"self_test",         "EXTENDED",                             0x2},
        {"self_test",         "VENDOR_SPECIFIC",                      0xE},
        {"self_test",         "ABORT",                                0xF},
    };
    // clang-format on
    ASSERT_EQ(std::size(ALL), std::size(ROWS));
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        SCOPED_TRACE(std::string(ROWS[i].group) + " " + ROWS[i].name);
        EXPECT_STREQ(ALL[i].group, ROWS[i].group);
        EXPECT_STREQ(ALL[i].name, ROWS[i].name);
        EXPECT_EQ(ALL[i].value, ROWS[i].value);
    }
    EXPECT_EQ(ALL_NAMESPACES, 0xFFFFFFFFU);
}

}  // namespace
}  // namespace orvel::protocols::nvme
