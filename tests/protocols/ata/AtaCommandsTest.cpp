// Every command's task file, protocol and length, as the standards write them.
#include "protocols/ata/AtaCommands.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>

namespace orvel::protocols::ata {
namespace {

/// The table's functions, in its order.
AtaCommand (*const TABLE[])() = {
#define COMMAND(function, name, command, feature, count, lba, device, addressing, protocol,        \
                blocks)                                                                            \
    &function,
#include "protocols/ata/tables/Commands.def"
};

struct Row {
    AtaCommand command;
    const char* name;
    TaskFile taskFile;
    Protocol protocol;
    std::uint32_t transferLength;
};

constexpr Protocol NON_DATA = Protocol::NON_DATA;
constexpr Protocol PIO_IN = Protocol::PIO_IN;
constexpr Protocol PIO_OUT = Protocol::PIO_OUT;
constexpr Protocol DMA_IN = Protocol::DMA_IN;
constexpr bool SHORT = false;
constexpr bool EXT = true;

constexpr auto ONLY_SANITIZE = SanitizeFailureMode::COMPLETED_SANITIZE_NEEDED;
constexpr auto STATUS_TOO = SanitizeFailureMode::STATUS_EXT_SUFFICES;
constexpr auto SAME = OverwritePattern::SAME_IN_EACH_PASS;
constexpr auto INVERTED = OverwritePattern::INVERTED_BETWEEN_PASSES;
constexpr auto BY_SMART = LogAccess::SMART;
constexpr auto BY_GPL = LogAccess::GENERAL_PURPOSE;
using Sub = OfflineSubcommand;

// clang-format off
const Row FIXED[] = {
//   command                           name                                  feature count   lba             device cmd   length  protocol  bytes
    {identifyDevice(),                 "IDENTIFY DEVICE",                  {0x0000, 0x0001, 0x000000000000, 0x00, 0xEC, SHORT}, PIO_IN,   512},
    {smartReadData(),                  "SMART READ DATA",                  {0x00D0, 0x0001, 0x000000C24F00, 0x00, 0xB0, SHORT}, PIO_IN,   512},
    {smartReadThresholds(),            "SMART READ THRESHOLDS",            {0x00D1, 0x0001, 0x000000C24F00, 0x00, 0xB0, SHORT}, PIO_IN,   512},
    {smartEnableOperations(),          "SMART ENABLE OPERATIONS",          {0x00D8, 0x0000, 0x000000C24F00, 0x00, 0xB0, SHORT}, NON_DATA,   0},
    {smartDisableOperations(),         "SMART DISABLE OPERATIONS",         {0x00D9, 0x0000, 0x000000C24F00, 0x00, 0xB0, SHORT}, NON_DATA,   0},
    {smartReturnStatus(),              "SMART RETURN STATUS",              {0x00DA, 0x0000, 0x000000C24F00, 0x00, 0xB0, SHORT}, NON_DATA,   0},
    {standbyImmediate(),               "STANDBY IMMEDIATE",                {0x0000, 0x0000, 0x000000000000, 0x00, 0xE0, SHORT}, NON_DATA,   0},
    {checkPowerMode(),                 "CHECK POWER MODE",                 {0x0000, 0x0000, 0x000000000000, 0x00, 0xE5, SHORT}, NON_DATA,   0},
    {flushCacheExt(),                  "FLUSH CACHE EXT",                  {0x0000, 0x0000, 0x000000000000, 0x00, 0xEA, EXT},   NON_DATA,   0},
    {readNativeMaxAddressExt(),        "READ NATIVE MAX ADDRESS EXT",      {0x0000, 0x0000, 0x000000000000, 0x40, 0x27, EXT},   NON_DATA,   0},
    {getNativeMaxAddressExt(),         "GET NATIVE MAX ADDRESS EXT",       {0x0000, 0x0000, 0x000000000000, 0x40, 0x78, EXT},   NON_DATA,   0},
    {freezeAccessibleMaxAddressExt(),  "FREEZE ACCESSIBLE MAX ADDRESS EXT",{0x0002, 0x0000, 0x000000000000, 0x40, 0x78, EXT},   NON_DATA,   0},
    {sanitizeFreezeLockExt(),          "SANITIZE FREEZE LOCK EXT",         {0x0020, 0x0000, 0x000046724C6B, 0x00, 0xB4, EXT},   NON_DATA,   0},
    {sanitizeAntifreezeLockExt(),      "SANITIZE ANTIFREEZE LOCK EXT",     {0x0040, 0x0000, 0x0000416E7469, 0x00, 0xB4, EXT},   NON_DATA,   0},
    {securitySetPassword(),            "SECURITY SET PASSWORD",            {0x0000, 0x0001, 0x000000000000, 0x00, 0xF1, SHORT}, PIO_OUT,  512},
    {securityUnlock(),                 "SECURITY UNLOCK",                  {0x0000, 0x0001, 0x000000000000, 0x00, 0xF2, SHORT}, PIO_OUT,  512},
    {securityErasePrepare(),           "SECURITY ERASE PREPARE",           {0x0000, 0x0000, 0x000000000000, 0x00, 0xF3, SHORT}, NON_DATA,   0},
    {securityEraseUnit(),              "SECURITY ERASE UNIT",              {0x0000, 0x0001, 0x000000000000, 0x00, 0xF4, SHORT}, PIO_OUT,  512},
    {securityFreezeLock(),             "SECURITY FREEZE LOCK",             {0x0000, 0x0000, 0x000000000000, 0x00, 0xF5, SHORT}, NON_DATA,   0},
    {securityDisablePassword(),        "SECURITY DISABLE PASSWORD",        {0x0000, 0x0001, 0x000000000000, 0x00, 0xF6, SHORT}, PIO_OUT,  512},
};

const Row WITH_ARGUMENTS[] = {
//   command                                           name                                 feature count   lba             device cmd   length  protocol  bytes
    {smartExecuteOfflineImmediate(Sub::OFFLINE_ROUTINE),              "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F00, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::SHORT_SELF_TEST),              "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F01, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::EXTENDED_SELF_TEST),           "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F02, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::CONVEYANCE_SELF_TEST),         "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F03, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::SELECTIVE_SELF_TEST),          "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F04, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::ABORT_SELF_TEST),              "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F7F, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::CAPTIVE_SHORT_SELF_TEST),      "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F81, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::CAPTIVE_EXTENDED_SELF_TEST),   "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F82, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::CAPTIVE_CONVEYANCE_SELF_TEST), "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F83, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartExecuteOfflineImmediate(Sub::CAPTIVE_SELECTIVE_SELF_TEST),  "SMART EXECUTE OFF-LINE IMMEDIATE", {0x00D4, 0x0000, 0x000000C24F84, 0x00, 0xB0, SHORT}, NON_DATA, 0},
    {smartReadLog(0x06, 1),                            "SMART READ LOG",   {0x00D5, 0x0001, 0x000000C24F06, 0x00, 0xB0, SHORT}, PIO_IN,  512},
    {smartReadLog(0xA0, 255),                          "SMART READ LOG",   {0x00D5, 0x00FF, 0x000000C24FA0, 0x00, 0xB0, SHORT}, PIO_IN,  130560},
    {smartWriteLog(0x80, 2),                           "SMART WRITE LOG",  {0x00D6, 0x0002, 0x000000C24F80, 0x00, 0xB0, SHORT}, PIO_OUT, 1024},
    {readLogExt(0x04, 0x0007, 1),                      "READ LOG EXT",     {0x0000, 0x0001, 0x000000000704, 0x00, 0x2F, EXT},   PIO_IN,  512},
    {readLogExt(0xA1, 0x1234, 0xFFFF, 0x0001),         "READ LOG EXT",     {0x0001, 0xFFFF, 0x0012000034A1, 0x00, 0x2F, EXT},   PIO_IN,  33553920},
    {readLogDmaExt(0x30, 0xFF08, 2, 0x8000),           "READ LOG DMA EXT", {0x8000, 0x0002, 0x00FF00000830, 0x00, 0x47, EXT},   DMA_IN,  1024},
    {writeLogExt(0x90, 0x02F1, 3),                     "WRITE LOG EXT",    {0x0000, 0x0003, 0x00020000F190, 0x00, 0x3F, EXT},   PIO_OUT, 1536},
    {sctCommand(BY_SMART),                             "SMART WRITE LOG",  {0x00D6, 0x0001, 0x000000C24FE0, 0x00, 0xB0, SHORT}, PIO_OUT, 512},
    {sctCommand(BY_GPL),                               "WRITE LOG EXT",    {0x0000, 0x0001, 0x0000000000E0, 0x00, 0x3F, EXT},   PIO_OUT, 512},
    {sctStatus(BY_SMART),                              "SMART READ LOG",   {0x00D5, 0x0001, 0x000000C24FE0, 0x00, 0xB0, SHORT}, PIO_IN,  512},
    {sctStatus(BY_GPL),                                "READ LOG EXT",     {0x0000, 0x0001, 0x0000000000E0, 0x00, 0x2F, EXT},   PIO_IN,  512},
    {sctReadData(BY_SMART, 1),                         "SMART READ LOG",   {0x00D5, 0x0001, 0x000000C24FE1, 0x00, 0xB0, SHORT}, PIO_IN,  512},
    {sctReadData(BY_GPL, 2),                           "READ LOG EXT",     {0x0000, 0x0002, 0x0000000000E1, 0x00, 0x2F, EXT},   PIO_IN,  1024},
    {setFeatures(0x82),                                "SET FEATURES",     {0x0082, 0x0000, 0x000000000000, 0x00, 0xEF, SHORT}, NON_DATA, 0},
    {setFeatures(0x10, 0x03),                          "SET FEATURES",     {0x0010, 0x0003, 0x000000000000, 0x00, 0xEF, SHORT}, NON_DATA, 0},
    {setAccessibleMaxAddressExt(0xFFFFFFFFFFFF),       "SET ACCESSIBLE MAX ADDRESS EXT", {0x0001, 0x0000, 0xFFFFFFFFFFFF, 0x40, 0x78, EXT}, NON_DATA, 0},
    {setMaxAddressExt(0x123456789ABC, MaxAddressLifetime::OVER_POWER_OFF),  "SET MAX ADDRESS EXT", {0x0000, 0x0001, 0x123456789ABC, 0x40, 0x37, EXT}, NON_DATA, 0},
    {setMaxAddressExt(0x000000000001, MaxAddressLifetime::UNTIL_POWER_OFF), "SET MAX ADDRESS EXT", {0x0000, 0x0000, 0x000000000001, 0x40, 0x37, EXT}, NON_DATA, 0},
    {sanitizeStatusExt(SanitizeFailure::KEEP),         "SANITIZE STATUS EXT", {0x0000, 0x0000, 0x000000000000, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {sanitizeStatusExt(SanitizeFailure::CLEAR),        "SANITIZE STATUS EXT", {0x0000, 0x0001, 0x000000000000, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {cryptoScrambleExt(ONLY_SANITIZE),                 "CRYPTO SCRAMBLE EXT", {0x0011, 0x0000, 0x000043727970, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {cryptoScrambleExt(STATUS_TOO),                    "CRYPTO SCRAMBLE EXT", {0x0011, 0x0010, 0x000043727970, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {blockEraseExt(ONLY_SANITIZE),                     "BLOCK ERASE EXT",     {0x0012, 0x0000, 0x0000426B4572, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {blockEraseExt(STATUS_TOO),                        "BLOCK ERASE EXT",     {0x0012, 0x0010, 0x0000426B4572, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {overwriteExt(ONLY_SANITIZE, 0x00000000, 1, SAME), "OVERWRITE EXT",       {0x0014, 0x0001, 0x4F5700000000, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {overwriteExt(STATUS_TOO, 0xFFAA5501, 15, INVERTED),"OVERWRITE EXT",      {0x0014, 0x009F, 0x4F57FFAA5501, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {overwriteExt(ONLY_SANITIZE, 0x12345678, 16, SAME),"OVERWRITE EXT",       {0x0014, 0x0000, 0x4F5712345678, 0x00, 0xB4, EXT}, NON_DATA, 0},
    {downloadMicrocode(DownloadMode::OFFSETS_AND_IMMEDIATE_ACTIVATION, 0x1234, 0x0102), "DOWNLOAD MICROCODE", {0x0003, 0x0002, 0x000000123401, 0x00, 0x92, SHORT}, PIO_OUT, 132096},
    {downloadMicrocode(DownloadMode::IMMEDIATE_ACTIVATION,             0x1234, 0xFFFF), "DOWNLOAD MICROCODE", {0x0007, 0x00FF, 0x0000000000FF, 0x00, 0x92, SHORT}, PIO_OUT, 33553920},
    {downloadMicrocode(DownloadMode::OFFSETS_AND_DEFERRED_ACTIVATION,  0xFFFE, 0x0040), "DOWNLOAD MICROCODE", {0x000E, 0x0040, 0x000000FFFE00, 0x00, 0x92, SHORT}, PIO_OUT, 32768},
    {downloadMicrocode(DownloadMode::ACTIVATE_DEFERRED,                0x1234, 0x0102), "DOWNLOAD MICROCODE", {0x000F, 0x0000, 0x000000000000, 0x00, 0x92, SHORT}, NON_DATA, 0},
};

// clang-format on

void expectRow(const Row& row, const AtaCommand& command) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(command.getCommandSetName(), "ATA");
    EXPECT_EQ(command.getName(), row.name);
    EXPECT_EQ(command.getTaskFile(), row.taskFile) << command.toString();
    EXPECT_EQ(command.getProtocol(), row.protocol);
    EXPECT_EQ(command.getTransferLength(), row.transferLength);
}

TEST(AtaCommands, MakesEachRowOfItsTable) {
    ASSERT_EQ(std::size(TABLE), std::size(FIXED));
    for (std::size_t i = 0; i < std::size(FIXED); ++i) {
        expectRow(FIXED[i], FIXED[i].command);
        expectRow(FIXED[i], TABLE[i]());
    }
}

TEST(AtaCommands, MakesThoseWithArguments) {
    for (const Row& row : WITH_ARGUMENTS)
        expectRow(row, row.command);
}

TEST(AtaCommands, RefusesAddressesOfMoreThan48Bits) {
    const std::uint64_t tooLarge = 0x1000000000000;
    EXPECT_EQ(thrownCode([&] { setAccessibleMaxAddressExt(tooLarge); }), 36);
    EXPECT_EQ(thrownCode([&] { setMaxAddressExt(tooLarge, MaxAddressLifetime::OVER_POWER_OFF); }),
              36);
}

TEST(AtaCommands, RefusesNumbersOfPassesThatCannotBeWritten) {
    EXPECT_EQ(thrownCode([] { overwriteExt(ONLY_SANITIZE, 0, 0, SAME); }), 36);
    EXPECT_EQ(thrownCode([] { overwriteExt(ONLY_SANITIZE, 0, 17, SAME); }), 36);
}

TEST(AtaCommands, HasTheStandardsConstants) {
    const struct {
        unsigned constant;
        unsigned value;
    } ROWS[] = {
        {log_address::DIRECTORY, 0x00},
        {log_address::SUMMARY_SMART_ERROR, 0x01},
        {log_address::COMPREHENSIVE_SMART_ERROR, 0x02},
        {log_address::EXTENDED_COMPREHENSIVE_SMART_ERROR, 0x03},
        {log_address::DEVICE_STATISTICS, 0x04},
        {log_address::SMART_SELF_TEST, 0x06},
        {log_address::EXTENDED_SMART_SELF_TEST, 0x07},
        {log_address::SELECTIVE_SELF_TEST, 0x09},
        {log_address::NCQ_COMMAND_ERROR, 0x10},
        {log_address::PHY_EVENT_COUNTERS, 0x11},
        {log_address::IDENTIFY_DEVICE_DATA, 0x30},
        {log_address::SCT_COMMAND_STATUS, 0xE0},
        {log_address::SCT_DATA_TRANSFER, 0xE1},
        {set_features::ENABLE_VOLATILE_WRITE_CACHE, 0x02},
        {set_features::SET_TRANSFER_MODE, 0x03},
        {set_features::ENABLE_APM, 0x05},
        {set_features::ENABLE_PUIS, 0x06},
        {set_features::PUIS_SPIN_UP, 0x07},
        {set_features::ENABLE_WRITE_READ_VERIFY, 0x0B},
        {set_features::ENABLE_SATA_FEATURE, 0x10},
        {set_features::EXTENDED_POWER_CONDITIONS, 0x4A},
        {set_features::DISABLE_READ_LOOK_AHEAD, 0x55},
        {set_features::DISABLE_REVERTING_TO_DEFAULTS, 0x66},
        {set_features::DISABLE_VOLATILE_WRITE_CACHE, 0x82},
        {set_features::DISABLE_APM, 0x85},
        {set_features::DISABLE_PUIS, 0x86},
        {set_features::DISABLE_WRITE_READ_VERIFY, 0x8B},
        {set_features::DISABLE_SATA_FEATURE, 0x90},
        {set_features::ENABLE_READ_LOOK_AHEAD, 0xAA},
        {set_features::SENSE_DATA_REPORTING, 0xC3},
        {set_features::ENABLE_REVERTING_TO_DEFAULTS, 0xCC},
        {sata_feature::NON_ZERO_BUFFER_OFFSETS, 0x01},
        {sata_feature::DMA_SETUP_AUTO_ACTIVATION, 0x02},
        {sata_feature::DEVICE_INITIATED_POWER_TRANSITIONS, 0x03},
        {sata_feature::IN_ORDER_DATA_DELIVERY, 0x04},
        {sata_feature::ASYNCHRONOUS_NOTIFICATION, 0x05},
        {sata_feature::SOFTWARE_SETTINGS_PRESERVATION, 0x06},
        {sata_feature::DEVICE_AUTO_PARTIAL_TO_SLUMBER, 0x07},
        {sata_feature::HARDWARE_FEATURE_CONTROL, 0x08},
        {sata_feature::DEVICE_SLEEP, 0x09},
        {sata_feature::HYBRID_INFORMATION, 0x0A},
        {sata_feature::POWER_DISABLE, 0x0B},
        {sanitize_status::COMPLETED_WITHOUT_ERROR, 0x8000},
        {sanitize_status::IN_PROGRESS, 0x4000},
        {sanitize_status::FROZEN, 0x2000},
        {sanitize_status::ANTIFREEZE, 0x1000},
        {sanitize_status::PROGRESS_PARTS, 65536},
    };

    for (const auto& row : ROWS)
        EXPECT_EQ(row.constant, row.value);
}

}  // namespace
}  // namespace orvel::protocols::ata
