// IDENTIFY DEVICE data: every row of the table of bits, the world wide name, the integrity word,
// and a drive's data written out by the standard's word numbers.
#include "protocols/ata/IdentifyDevice.h"

#include "protocols/ata/Structures.h"
#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>

namespace orvel::protocols::ata::identify_device {
namespace {

using core::Payload;

struct Row {
    const Bits& bits;
    const char* name;
    std::uint16_t word;
    std::uint16_t mask;
};

// clang-format off
const Row ROWS[] = {
//   bits                                          name                               word  mask
    {word_0::NOT_AN_ATA_DEVICE,                  "NOT_AN_ATA_DEVICE",                    0, 0x8000},
    {word_0::RESPONSE_INCOMPLETE,                "RESPONSE_INCOMPLETE",                  0, 0x0004},

    {word_47::ALWAYS_80H,                        "ALWAYS_80H",                          47, 0xFF00},
    {word_47::MAXIMUM_SECTORS,                   "MAXIMUM_SECTORS",                     47, 0x00FF},

    {word_48::VALIDITY,                          "VALIDITY",                            48, 0xC000},
    {word_48::TRUSTED_COMPUTING,                 "TRUSTED_COMPUTING",                   48, 0x0001},

    {word_49::STANDARD_STANDBY_TIMER,            "STANDARD_STANDBY_TIMER",              49, 0x2000},
    {word_49::IORDY,                             "IORDY",                               49, 0x0800},
    {word_49::IORDY_DISABLE,                     "IORDY_DISABLE",                       49, 0x0400},
    {word_49::LBA,                               "LBA",                                 49, 0x0200},
    {word_49::DMA,                               "DMA",                                 49, 0x0100},
    {word_49::ALIGNMENT_ERROR_REPORTING,         "ALIGNMENT_ERROR_REPORTING",           49, 0x0003},

    {word_50::VALIDITY,                          "VALIDITY",                            50, 0xC000},
    {word_50::MINIMUM_STANDBY_TIMER,             "MINIMUM_STANDBY_TIMER",               50, 0x0001},

    {word_53::FREE_FALL_SENSITIVITY,             "FREE_FALL_SENSITIVITY",               53, 0xFF00},
    {word_53::WORD_88_IS_VALID,                  "WORD_88_IS_VALID",                    53, 0x0004},
    {word_53::WORDS_64_TO_70_ARE_VALID,          "WORDS_64_TO_70_ARE_VALID",            53, 0x0002},

    {word_59::BLOCK_ERASE_EXT,                   "BLOCK_ERASE_EXT",                     59, 0x8000},
    {word_59::OVERWRITE_EXT,                     "OVERWRITE_EXT",                       59, 0x4000},
    {word_59::CRYPTO_SCRAMBLE_EXT,               "CRYPTO_SCRAMBLE_EXT",                 59, 0x2000},
    {word_59::SANITIZE,                          "SANITIZE",                            59, 0x1000},
    {word_59::COMMANDS_DURING_SANITIZE,          "COMMANDS_DURING_SANITIZE",            59, 0x0800},
    {word_59::SANITIZE_ANTIFREEZE_LOCK_EXT,      "SANITIZE_ANTIFREEZE_LOCK_EXT",        59, 0x0400},
    {word_59::MULTIPLE_SETTING_IS_VALID,         "MULTIPLE_SETTING_IS_VALID",           59, 0x0100},
    {word_59::MULTIPLE_SETTING,                  "MULTIPLE_SETTING",                    59, 0x00FF},

    {word_63::MODE_2_SELECTED,                   "MODE_2_SELECTED",                     63, 0x0400},
    {word_63::MODE_1_SELECTED,                   "MODE_1_SELECTED",                     63, 0x0200},
    {word_63::MODE_0_SELECTED,                   "MODE_0_SELECTED",                     63, 0x0100},
    {word_63::MODE_2_AND_BELOW,                  "MODE_2_AND_BELOW",                    63, 0x0004},
    {word_63::MODE_1_AND_BELOW,                  "MODE_1_AND_BELOW",                    63, 0x0002},
    {word_63::MODE_0,                            "MODE_0",                              63, 0x0001},

    {word_64::MODE_4,                            "MODE_4",                              64, 0x0002},
    {word_64::MODE_3,                            "MODE_3",                              64, 0x0001},

    {word_69::DRAT,                              "DRAT",                                69, 0x4000},
    {word_69::ALIGNMENT_ERROR_REPORTING_CONTROL, "ALIGNMENT_ERROR_REPORTING_CONTROL",   69, 0x2000},
    {word_69::READ_BUFFER_DMA,                   "READ_BUFFER_DMA",                     69, 0x0800},
    {word_69::WRITE_BUFFER_DMA,                  "WRITE_BUFFER_DMA",                    69, 0x0400},
    {word_69::DOWNLOAD_MICROCODE_DMA,            "DOWNLOAD_MICROCODE_DMA",              69, 0x0100},
    {word_69::IEEE_1667,                         "IEEE_1667",                           69, 0x0080},
    {word_69::OPTIONAL_28_BIT_COMMANDS,          "OPTIONAL_28_BIT_COMMANDS",            69, 0x0040},
    {word_69::RZAT,                              "RZAT",                                69, 0x0020},
    {word_69::ENCRYPTS_ALL_USER_DATA,            "ENCRYPTS_ALL_USER_DATA",              69, 0x0010},
    {word_69::EXTENDED_SECTORS,                  "EXTENDED_SECTORS",                    69, 0x0008},
    {word_69::WRITE_CACHE_IS_NON_VOLATILE,       "WRITE_CACHE_IS_NON_VOLATILE",         69, 0x0004},
    {word_69::ZONED,                             "ZONED",                               69, 0x0003},

    {word_75::MAXIMUM_QUEUE_DEPTH,               "MAXIMUM_QUEUE_DEPTH",                 75, 0x001F},

    {word_76::READ_LOG_DMA_EXT_AS_READ_LOG_EXT,  "READ_LOG_DMA_EXT_AS_READ_LOG_EXT",    76, 0x8000},
    {word_76::DEVICE_AUTO_PARTIAL_TO_SLUMBER,    "DEVICE_AUTO_PARTIAL_TO_SLUMBER",      76, 0x4000},
    {word_76::HOST_AUTO_PARTIAL_TO_SLUMBER,      "HOST_AUTO_PARTIAL_TO_SLUMBER",        76, 0x2000},
    {word_76::NCQ_PRIORITY,                      "NCQ_PRIORITY",                        76, 0x1000},
    {word_76::UNLOAD_WHILE_NCQ,                  "UNLOAD_WHILE_NCQ",                    76, 0x0800},
    {word_76::PHY_EVENT_COUNTERS,                "PHY_EVENT_COUNTERS",                  76, 0x0400},
    {word_76::HOST_INITIATED_POWER_MANAGEMENT,   "HOST_INITIATED_POWER_MANAGEMENT",     76, 0x0200},
    {word_76::NCQ,                               "NCQ",                                 76, 0x0100},
    {word_76::GEN3,                              "GEN3",                                76, 0x0008},
    {word_76::GEN2,                              "GEN2",                                76, 0x0004},
    {word_76::GEN1,                              "GEN1",                                76, 0x0002},

    {word_77::POWER_DISABLE_ALWAYS_ENABLED,      "POWER_DISABLE_ALWAYS_ENABLED",        77, 0x0100},
    {word_77::DEVSLEEP_TO_REDUCED_POWER_STATE,   "DEVSLEEP_TO_REDUCED_POWER_STATE",     77, 0x0080},
    {word_77::SEND_AND_RECEIVE_FPDMA_QUEUED,     "SEND_AND_RECEIVE_FPDMA_QUEUED",       77, 0x0040},
    {word_77::NCQ_NON_DATA,                      "NCQ_NON_DATA",                        77, 0x0020},
    {word_77::NCQ_STREAMING,                     "NCQ_STREAMING",                       77, 0x0010},
    {word_77::NEGOTIATED_SPEED,                  "NEGOTIATED_SPEED",                    77, 0x000E},

    {word_78::POWER_DISABLE,                     "POWER_DISABLE",                       78, 0x1000},
    {word_78::REBUILD_ASSIST,                    "REBUILD_ASSIST",                      78, 0x0800},
    {word_78::HYBRID_INFORMATION,                "HYBRID_INFORMATION",                  78, 0x0200},
    {word_78::DEVICE_SLEEP,                      "DEVICE_SLEEP",                        78, 0x0100},
    {word_78::NCQ_AUTOSENSE,                     "NCQ_AUTOSENSE",                       78, 0x0080},
    {word_78::SOFTWARE_SETTINGS_PRESERVATION,    "SOFTWARE_SETTINGS_PRESERVATION",      78, 0x0040},
    {word_78::HARDWARE_FEATURE_CONTROL,          "HARDWARE_FEATURE_CONTROL",            78, 0x0020},
    {word_78::IN_ORDER_DATA_DELIVERY,            "IN_ORDER_DATA_DELIVERY",              78, 0x0010},
    {word_78::DEVICE_INITIATED_POWER_MANAGEMENT, "DEVICE_INITIATED_POWER_MANAGEMENT",   78, 0x0008},
    {word_78::DMA_SETUP_AUTO_ACTIVATION,         "DMA_SETUP_AUTO_ACTIVATION",           78, 0x0004},
    {word_78::NON_ZERO_BUFFER_OFFSETS,           "NON_ZERO_BUFFER_OFFSETS",             78, 0x0002},

    {word_79::REBUILD_ASSIST,                    "REBUILD_ASSIST",                      79, 0x0800},
    {word_79::POWER_DISABLE,                     "POWER_DISABLE",                       79, 0x0400},
    {word_79::HYBRID_INFORMATION,                "HYBRID_INFORMATION",                  79, 0x0200},
    {word_79::DEVICE_SLEEP,                      "DEVICE_SLEEP",                        79, 0x0100},
    {word_79::DEVICE_AUTO_PARTIAL_TO_SLUMBER,    "DEVICE_AUTO_PARTIAL_TO_SLUMBER",      79, 0x0080},
    {word_79::SOFTWARE_SETTINGS_PRESERVATION,    "SOFTWARE_SETTINGS_PRESERVATION",      79, 0x0040},
    {word_79::HARDWARE_FEATURE_CONTROL,          "HARDWARE_FEATURE_CONTROL",            79, 0x0020},
    {word_79::IN_ORDER_DATA_DELIVERY,            "IN_ORDER_DATA_DELIVERY",              79, 0x0010},
    {word_79::DEVICE_INITIATED_POWER_MANAGEMENT, "DEVICE_INITIATED_POWER_MANAGEMENT",   79, 0x0008},
    {word_79::DMA_SETUP_AUTO_ACTIVATION,         "DMA_SETUP_AUTO_ACTIVATION",           79, 0x0004},
    {word_79::NON_ZERO_BUFFER_OFFSETS,           "NON_ZERO_BUFFER_OFFSETS",             79, 0x0002},

    {word_80::ACS_4,                             "ACS_4",                               80, 0x0800},
    {word_80::ACS_3,                             "ACS_3",                               80, 0x0400},
    {word_80::ACS_2,                             "ACS_2",                               80, 0x0200},
    {word_80::ATA8_ACS,                          "ATA8_ACS",                            80, 0x0100},
    {word_80::ATA_ATAPI_7,                       "ATA_ATAPI_7",                         80, 0x0080},
    {word_80::ATA_ATAPI_6,                       "ATA_ATAPI_6",                         80, 0x0040},
    {word_80::ATA_ATAPI_5,                       "ATA_ATAPI_5",                         80, 0x0020},

    {word_82::NOP,                               "NOP",                                 82, 0x4000},
    {word_82::READ_BUFFER,                       "READ_BUFFER",                         82, 0x2000},
    {word_82::WRITE_BUFFER,                      "WRITE_BUFFER",                        82, 0x1000},
    {word_82::HPA,                               "HPA",                                 82, 0x0400},
    {word_82::READ_LOOK_AHEAD,                   "READ_LOOK_AHEAD",                     82, 0x0040},
    {word_82::VOLATILE_WRITE_CACHE,              "VOLATILE_WRITE_CACHE",                82, 0x0020},
    {word_82::PACKET,                            "PACKET",                              82, 0x0010},
    {word_82::POWER_MANAGEMENT,                  "POWER_MANAGEMENT",                    82, 0x0008},
    {word_82::SECURITY,                          "SECURITY",                            82, 0x0002},
    {word_82::SMART,                             "SMART",                               82, 0x0001},

    {word_83::VALIDITY,                          "VALIDITY",                            83, 0xC000},
    {word_83::FLUSH_CACHE_EXT,                   "FLUSH_CACHE_EXT",                     83, 0x2000},
    {word_83::FLUSH_CACHE,                       "FLUSH_CACHE",                         83, 0x1000},
    {word_83::DCO,                               "DCO",                                 83, 0x0800},
    {word_83::ADDRESS_48_BIT,                    "ADDRESS_48_BIT",                      83, 0x0400},
    {word_83::AAM,                               "AAM",                                 83, 0x0200},
    {word_83::SET_MAX_SECURITY,                  "SET_MAX_SECURITY",                    83, 0x0100},
    {word_83::SPIN_UP_BY_SET_FEATURES,           "SPIN_UP_BY_SET_FEATURES",             83, 0x0040},
    {word_83::PUIS,                              "PUIS",                                83, 0x0020},
    {word_83::APM,                               "APM",                                 83, 0x0008},
    {word_83::CFA,                               "CFA",                                 83, 0x0004},
    {word_83::DOWNLOAD_MICROCODE,                "DOWNLOAD_MICROCODE",                  83, 0x0001},

    {word_84::VALIDITY,                          "VALIDITY",                            84, 0xC000},
    {word_84::IDLE_IMMEDIATE_WITH_UNLOAD,        "IDLE_IMMEDIATE_WITH_UNLOAD",          84, 0x2000},
    {word_84::WORLD_WIDE_NAME,                   "WORLD_WIDE_NAME",                     84, 0x0100},
    {word_84::WRITE_FUA,                         "WRITE_FUA",                           84, 0x0040},
    {word_84::GPL,                               "GPL",                                 84, 0x0020},
    {word_84::STREAMING,                         "STREAMING",                           84, 0x0010},
    {word_84::SMART_SELF_TEST,                   "SMART_SELF_TEST",                     84, 0x0002},
    {word_84::SMART_ERROR_LOGGING,               "SMART_ERROR_LOGGING",                 84, 0x0001},

    {word_85::NOP,                               "NOP",                                 85, 0x4000},
    {word_85::READ_BUFFER,                       "READ_BUFFER",                         85, 0x2000},
    {word_85::WRITE_BUFFER,                      "WRITE_BUFFER",                        85, 0x1000},
    {word_85::HPA,                               "HPA",                                 85, 0x0400},
    {word_85::READ_LOOK_AHEAD,                   "READ_LOOK_AHEAD",                     85, 0x0040},
    {word_85::VOLATILE_WRITE_CACHE,              "VOLATILE_WRITE_CACHE",                85, 0x0020},
    {word_85::PACKET,                            "PACKET",                              85, 0x0010},
    {word_85::POWER_MANAGEMENT,                  "POWER_MANAGEMENT",                    85, 0x0008},
    {word_85::SECURITY,                          "SECURITY",                            85, 0x0002},
    {word_85::SMART,                             "SMART",                               85, 0x0001},

    {word_86::WORDS_119_TO_120_ARE_VALID,        "WORDS_119_TO_120_ARE_VALID",          86, 0x8000},
    {word_86::FLUSH_CACHE_EXT,                   "FLUSH_CACHE_EXT",                     86, 0x2000},
    {word_86::FLUSH_CACHE,                       "FLUSH_CACHE",                         86, 0x1000},
    {word_86::DCO,                               "DCO",                                 86, 0x0800},
    {word_86::ADDRESS_48_BIT,                    "ADDRESS_48_BIT",                      86, 0x0400},
    {word_86::AAM,                               "AAM",                                 86, 0x0200},
    {word_86::SET_MAX_SECURITY,                  "SET_MAX_SECURITY",                    86, 0x0100},
    {word_86::SPIN_UP_BY_SET_FEATURES,           "SPIN_UP_BY_SET_FEATURES",             86, 0x0040},
    {word_86::PUIS,                              "PUIS",                                86, 0x0020},
    {word_86::APM,                               "APM",                                 86, 0x0008},
    {word_86::CFA,                               "CFA",                                 86, 0x0004},
    {word_86::DOWNLOAD_MICROCODE,                "DOWNLOAD_MICROCODE",                  86, 0x0001},

    {word_87::VALIDITY,                          "VALIDITY",                            87, 0xC000},
    {word_87::IDLE_IMMEDIATE_WITH_UNLOAD,        "IDLE_IMMEDIATE_WITH_UNLOAD",          87, 0x2000},
    {word_87::WORLD_WIDE_NAME,                   "WORLD_WIDE_NAME",                     87, 0x0100},
    {word_87::WRITE_FUA,                         "WRITE_FUA",                           87, 0x0040},
    {word_87::GPL,                               "GPL",                                 87, 0x0020},
    {word_87::MEDIA_SERIAL_NUMBER_IS_VALID,      "MEDIA_SERIAL_NUMBER_IS_VALID",        87, 0x0004},
    {word_87::SMART_SELF_TEST,                   "SMART_SELF_TEST",                     87, 0x0002},
    {word_87::SMART_ERROR_LOGGING,               "SMART_ERROR_LOGGING",                 87, 0x0001},

    {word_88::MODE_6_SELECTED,                   "MODE_6_SELECTED",                     88, 0x4000},
    {word_88::MODE_5_SELECTED,                   "MODE_5_SELECTED",                     88, 0x2000},
    {word_88::MODE_4_SELECTED,                   "MODE_4_SELECTED",                     88, 0x1000},
    {word_88::MODE_3_SELECTED,                   "MODE_3_SELECTED",                     88, 0x0800},
    {word_88::MODE_2_SELECTED,                   "MODE_2_SELECTED",                     88, 0x0400},
    {word_88::MODE_1_SELECTED,                   "MODE_1_SELECTED",                     88, 0x0200},
    {word_88::MODE_0_SELECTED,                   "MODE_0_SELECTED",                     88, 0x0100},
    {word_88::MODE_6_AND_BELOW,                  "MODE_6_AND_BELOW",                    88, 0x0040},
    {word_88::MODE_5_AND_BELOW,                  "MODE_5_AND_BELOW",                    88, 0x0020},
    {word_88::MODE_4_AND_BELOW,                  "MODE_4_AND_BELOW",                    88, 0x0010},
    {word_88::MODE_3_AND_BELOW,                  "MODE_3_AND_BELOW",                    88, 0x0008},
    {word_88::MODE_2_AND_BELOW,                  "MODE_2_AND_BELOW",                    88, 0x0004},
    {word_88::MODE_1_AND_BELOW,                  "MODE_1_AND_BELOW",                    88, 0x0002},
    {word_88::MODE_0,                            "MODE_0",                              88, 0x0001},

    {word_89::EXTENDED_TIME_REPORTED,            "EXTENDED_TIME_REPORTED",              89, 0x8000},
    {word_89::EXTENDED_TIME,                     "EXTENDED_TIME",                       89, 0x7FFF},
    {word_89::TIME,                              "TIME",                                89, 0x00FF},

    {word_90::EXTENDED_TIME_REPORTED,            "EXTENDED_TIME_REPORTED",              90, 0x8000},
    {word_90::EXTENDED_TIME,                     "EXTENDED_TIME",                       90, 0x7FFF},
    {word_90::TIME,                              "TIME",                                90, 0x00FF},

    {word_91::APM_LEVEL,                         "APM_LEVEL",                           91, 0x00FF},

    {word_106::VALIDITY,                         "VALIDITY",                           106, 0xC000},
    {word_106::MULTIPLE_LOGICAL_PER_PHYSICAL,    "MULTIPLE_LOGICAL_PER_PHYSICAL",      106, 0x2000},
    {word_106::LONG_LOGICAL_SECTOR,              "LONG_LOGICAL_SECTOR",                106, 0x1000},
    {word_106::LOGICAL_PER_PHYSICAL_EXPONENT,    "LOGICAL_PER_PHYSICAL_EXPONENT",      106, 0x000F},

    {word_119::VALIDITY,                         "VALIDITY",                           119, 0xC000},
    {word_119::DSN,                              "DSN",                                119, 0x0200},
    {word_119::ACCESSIBLE_MAX_ADDRESS,           "ACCESSIBLE_MAX_ADDRESS",             119, 0x0100},
    {word_119::EPC,                              "EPC",                                119, 0x0080},
    {word_119::SENSE_DATA_REPORTING,             "SENSE_DATA_REPORTING",               119, 0x0040},
    {word_119::FREE_FALL_CONTROL,                "FREE_FALL_CONTROL",                  119, 0x0020},
    {word_119::DOWNLOAD_MICROCODE_MODE_3,        "DOWNLOAD_MICROCODE_MODE_3",          119, 0x0010},
    {word_119::LOG_DMA_EXT,                      "LOG_DMA_EXT",                        119, 0x0008},
    {word_119::WRITE_UNCORRECTABLE_EXT,          "WRITE_UNCORRECTABLE_EXT",            119, 0x0004},
    {word_119::WRITE_READ_VERIFY,                "WRITE_READ_VERIFY",                  119, 0x0002},

    {word_120::VALIDITY,                         "VALIDITY",                           120, 0xC000},
    {word_120::DSN,                              "DSN",                                120, 0x0200},
    {word_120::EPC,                              "EPC",                                120, 0x0080},
    {word_120::SENSE_DATA_REPORTING,             "SENSE_DATA_REPORTING",               120, 0x0040},
    {word_120::FREE_FALL_CONTROL,                "FREE_FALL_CONTROL",                  120, 0x0020},
    {word_120::DOWNLOAD_MICROCODE_MODE_3,        "DOWNLOAD_MICROCODE_MODE_3",          120, 0x0010},
    {word_120::LOG_DMA_EXT,                      "LOG_DMA_EXT",                        120, 0x0008},
    {word_120::WRITE_UNCORRECTABLE_EXT,          "WRITE_UNCORRECTABLE_EXT",            120, 0x0004},
    {word_120::WRITE_READ_VERIFY,                "WRITE_READ_VERIFY",                  120, 0x0002},

    {word_128::MASTER_PASSWORD_CAPABILITY,       "MASTER_PASSWORD_CAPABILITY",         128, 0x0100},
    {word_128::ENHANCED_ERASE,                   "ENHANCED_ERASE",                     128, 0x0020},
    {word_128::COUNT_EXPIRED,                    "COUNT_EXPIRED",                      128, 0x0010},
    {word_128::FROZEN,                           "FROZEN",                             128, 0x0008},
    {word_128::LOCKED,                           "LOCKED",                             128, 0x0004},
    {word_128::ENABLED,                          "ENABLED",                            128, 0x0002},
    {word_128::SUPPORTED,                        "SUPPORTED",                          128, 0x0001},

    {word_168::FORM_FACTOR,                      "FORM_FACTOR",                        168, 0x000F},

    {word_169::TRIM,                             "TRIM",                               169, 0x0001},

    {word_206::DATA_TABLES,                      "DATA_TABLES",                        206, 0x0020},
    {word_206::FEATURE_CONTROL,                  "FEATURE_CONTROL",                    206, 0x0010},
    {word_206::ERROR_RECOVERY_CONTROL,           "ERROR_RECOVERY_CONTROL",             206, 0x0008},
    {word_206::WRITE_SAME,                       "WRITE_SAME",                         206, 0x0004},
    {word_206::SCT,                              "SCT",                                206, 0x0001},

    {word_209::VALIDITY,                         "VALIDITY",                           209, 0xC000},
    {word_209::LOGICAL_SECTOR_OFFSET,            "LOGICAL_SECTOR_OFFSET",              209, 0x3FFF},

    {word_217::ROTATION_RATE,                    "ROTATION_RATE",                      217, 0xFFFF},

    {word_220::WRITE_READ_VERIFY_MODE,           "WRITE_READ_VERIFY_MODE",             220, 0x00FF},

    {word_222::TRANSPORT_TYPE,                   "TRANSPORT_TYPE",                     222, 0xF000},
    {word_222::SATA_3_3,                         "SATA_3_3",                           222, 0x0100},
    {word_222::SATA_3_2,                         "SATA_3_2",                           222, 0x0080},
    {word_222::SATA_3_1,                         "SATA_3_1",                           222, 0x0040},
    {word_222::SATA_3_0,                         "SATA_3_0",                           222, 0x0020},
    {word_222::SATA_2_6,                         "SATA_2_6",                           222, 0x0010},
    {word_222::SATA_2_5,                         "SATA_2_5",                           222, 0x0008},
    {word_222::SATA_II_EXTENSIONS,               "SATA_II_EXTENSIONS",                 222, 0x0004},
    {word_222::SATA_1_0A,                        "SATA_1_0A",                          222, 0x0002},
    {word_222::ATA8_AST,                         "ATA8_AST",                           222, 0x0001},

    {word_255::CHECKSUM,                         "CHECKSUM",                           255, 0xFF00},
    {word_255::CHECKSUM_VALIDITY_INDICATOR,      "CHECKSUM_VALIDITY_INDICATOR",        255, 0x00FF},
};

// clang-format on

unsigned wordOf(const Payload& identify, std::uint32_t word) {
    return *identify.at(word * 2) + *identify.at(word * 2 + 1) * 256U;
}

TEST(IdentifyDevice, HasEachRowOfItsBits) {
    ASSERT_EQ(std::size(ALL_BITS), std::size(ROWS));
    for (std::size_t i = 0; i < std::size(ROWS); ++i) {
        const Row& row = ROWS[i];
        SCOPED_TRACE(std::to_string(row.word) + " " + row.name);
        EXPECT_STREQ(ALL_BITS[i].name, row.name);
        EXPECT_STREQ(row.bits.name, row.name);
        EXPECT_EQ(row.bits.word, row.word);
        EXPECT_EQ(ALL_BITS[i].word, row.word);
        EXPECT_EQ(row.bits.mask(), row.mask);
        EXPECT_EQ(ALL_BITS[i].mask(), row.mask);
        EXPECT_LE(row.bits.high, 15);
        EXPECT_STRNE(row.bits.meaning, "");
    }
}

TEST(IdentifyDevice, ReadsEachRowFromItsWordAlone) {
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::to_string(row.word) + " " + row.name);
        const Payload identify(512);
        putWord(identify, row.word, row.mask);
        EXPECT_TRUE(isSet(identify, row.bits));
        putWord(identify, row.word, 0xFFFFU & ~unsigned{row.mask});
        EXPECT_FALSE(isSet(identify, row.bits));
    }
}

TEST(IdentifyDevice, GivesTheValueOfSeveralBits) {
    const Payload identify(512);
    putWord(identify, 75, 0x001F);
    putWord(identify, 77, 0x0006);
    putWord(identify, 106, 0x6003);
    putWord(identify, 222, 0x10FF);
    EXPECT_EQ(readBits(identify, word_75::MAXIMUM_QUEUE_DEPTH), 31);
    EXPECT_EQ(readBits(identify, word_77::NEGOTIATED_SPEED), 3);
    EXPECT_EQ(readBits(identify, word_106::VALIDITY), 1);
    EXPECT_EQ(readBits(identify, word_106::LOGICAL_PER_PHYSICAL_EXPONENT), 3);
    EXPECT_EQ(readBits(identify, word_222::TRANSPORT_TYPE), 1);
}

TEST(IdentifyDevice, WritesBitsAndLeavesTheOthers) {
    const Payload identify(512);
    putWord(identify, 77, 0xFFFF);
    writeBits(identify, word_77::NEGOTIATED_SPEED, 2);
    EXPECT_EQ(wordOf(identify, 77), 0xFFF5U);
    writeBits(identify, word_77::NEGOTIATED_SPEED, 0xFFF9);
    EXPECT_EQ(wordOf(identify, 77), 0xFFF3U);
    putWord(identify, 77, 0);
    writeBits(identify, word_77::NEGOTIATED_SPEED, 0xFFFF);
    EXPECT_EQ(wordOf(identify, 77), 0x000EU);
    EXPECT_EQ(wordOf(identify, 76), 0U);
    EXPECT_EQ(wordOf(identify, 78), 0U);
}

TEST(IdentifyDevice, ReadsADrivesData) {
    const Payload identify(512);
    putText(identify, 20, "BADC2143FE          ");  // words 10 to 19
    putText(identify, 46, "EV R.120");              // words 23 to 26
    putText(identify, 54, "ONVR OrDvi e");          // words 27 to 46
    std::memset(identify.data() + 66, ' ', 28);
    putWord(identify, 60, 0xFFFF);
    putWord(identify, 61, 0x0FFF);
    putWord(identify, 100, 0x12B0);
    putWord(identify, 101, 0x37E4);
    putWord(identify, 102, 0x0001);
    putWord(identify, 117, 0x0800);
    putWord(identify, 217, 0x0001);
    EXPECT_EQ(readText(identify, SerialNumber), "ABCD1234EF");
    EXPECT_EQ(readText(identify, FirmwareRevision), "VER 1.02");
    EXPECT_EQ(readText(identify, ModelNumber), "NORVO Drive");
    EXPECT_EQ(readNumber(identify, UserAddressableSectors28), 0x0FFFFFFFU);
    EXPECT_EQ(readNumber(identify, UserAddressableSectors), 0x000137E412B0U);
    EXPECT_EQ(readNumber(identify, LogicalSectorSize), 0x800U);
    EXPECT_EQ(readNumber(identify, NominalMediaRotationRate), 1U);
}

TEST(IdentifyDevice, ReadsTheWorldWideNameFromItsFirstWordDown) {
    const Payload identify(512);
    putWord(identify, 108, 0x5002);
    putWord(identify, 109, 0x538A);
    putWord(identify, 110, 0xBCDE);
    putWord(identify, 111, 0xF012);
    EXPECT_EQ(readWorldWideName(identify), 0x5002538ABCDEF012U);
    const Payload written(512);
    writeWorldWideName(written, 0x5002538ABCDEF012U);
    EXPECT_EQ(written, identify);
}

TEST(IdentifyDevice, KnowsWhetherItsChecksumIsRight) {
    const Payload identify(512);
    EXPECT_EQ(readIntegrity(identify), Integrity::NOT_REPORTED);
    putWord(identify, 0, 0x0040);
    putWord(identify, 10, 0x4142);
    // 40h + 42h + 41h + A5h = 168h, and 168h + 98h = 200h.
    putWord(identify, 255, 0x98A5);
    EXPECT_EQ(readIntegrity(identify), Integrity::RIGHT);
    putWord(identify, 10, 0x4143);
    EXPECT_EQ(readIntegrity(identify), Integrity::WRONG);
    putWord(identify, 255, 0x98A4);
    EXPECT_EQ(readIntegrity(identify), Integrity::NOT_REPORTED);
}

TEST(IdentifyDevice, LooksAtWhatMakesAWordValid) {
    struct ValidityCase {
        const Bits& bits;
        std::uint16_t validityWord;
    };

    const ValidityCase cases[] = {
        {word_48::TRUSTED_COMPUTING, 48},
        {word_50::MINIMUM_STANDBY_TIMER, 50},
        {word_82::SMART, 83},
        {word_83::DOWNLOAD_MICROCODE, 83},
        {word_84::GPL, 84},
        {word_85::SMART, 87},
        {word_86::DOWNLOAD_MICROCODE, 87},
        {word_87::GPL, 87},
        {word_106::LONG_LOGICAL_SECTOR, 106},
    };
    for (const ValidityCase& one : cases) {
        SCOPED_TRACE(one.bits.word);
        for (const unsigned check : {0x0000U, 0x8000U, 0xC000U, 0x4000U}) {
            const Payload identify(512);
            putWord(identify, one.validityWord, static_cast<std::uint16_t>(check));
            EXPECT_EQ(isValid(identify, one.bits), check == 0x4000U) << check;
            EXPECT_FALSE(isReported(identify, one.bits));
            writeBits(identify, one.bits, 1);
            EXPECT_EQ(isReported(identify, one.bits), check == 0x4000U) << check;
        }
    }
    const Payload identify(512);
    EXPECT_TRUE(isValid(identify, word_59::SANITIZE));
    EXPECT_FALSE(isReported(identify, word_59::SANITIZE));
    putWord(identify, 59, 0x1000);
    EXPECT_TRUE(isReported(identify, word_59::SANITIZE));
}

TEST(IdentifyDevice, OfSerialAtaTellsNothingUnlessItIsSerialAta) {
    for (const unsigned word76 : {0x0000U, 0xFFFFU, 0x0002U}) {
        SCOPED_TRACE(word76);
        const bool isSerial = word76 == 0x0002U;
        const Payload identify(512);
        putWord(identify, 76, static_cast<std::uint16_t>(word76));
        putWord(identify, 79, 0x0008);
        EXPECT_EQ(isReported(identify, word_76::GEN1), isSerial);
        EXPECT_EQ(isReported(identify, word_79::DEVICE_INITIATED_POWER_MANAGEMENT), isSerial);
    }
}

TEST(IdentifyDevice, AnnouncesWords119And120InWord86) {
    const Payload identify(512);
    putWord(identify, 119, 0x4100);
    putWord(identify, 120, 0x4080);
    putWord(identify, 86, 0x8000);
    EXPECT_FALSE(isReported(identify, word_119::ACCESSIBLE_MAX_ADDRESS));
    putWord(identify, 87, 0x4000);
    EXPECT_TRUE(isReported(identify, word_119::ACCESSIBLE_MAX_ADDRESS));
    EXPECT_TRUE(isReported(identify, word_120::EPC));
    putWord(identify, 119, 0x0100);
    EXPECT_FALSE(isReported(identify, word_119::ACCESSIBLE_MAX_ADDRESS));
    EXPECT_TRUE(isReported(identify, word_120::EPC));
    putWord(identify, 86, 0x0000);
    EXPECT_FALSE(isReported(identify, word_120::EPC));
}

TEST(IdentifyDevice, TellsItsSizeInTheWordsThatCount) {
    const Payload identify(512);
    EXPECT_EQ(sectorCount(identify), 0U);
    putWord(identify, 60, 28);
    putWord(identify, 100, 48);
    putWord(identify, 230, 69);
    putWord(identify, 83, 0x0400);
    EXPECT_EQ(sectorCount(identify), 28U);
    putWord(identify, 83, 0x4400);
    EXPECT_EQ(sectorCount(identify), 48U);
    putWord(identify, 69, 0x0008);
    EXPECT_EQ(sectorCount(identify), 69U);
    putWord(identify, 230, 0);
    EXPECT_EQ(sectorCount(identify), 48U);
}

TEST(IdentifyDevice, TellsTheSizeOfASectorUnlessItIs512Bytes) {
    const Payload identify(512);
    EXPECT_EQ(sectorSize(identify), 512U);
    putWord(identify, 117, 2048);
    putWord(identify, 106, 0x4000);
    EXPECT_EQ(sectorSize(identify), 512U);
    putWord(identify, 106, 0x1000);
    EXPECT_EQ(sectorSize(identify), 512U);
    putWord(identify, 106, 0x5000);
    EXPECT_EQ(sectorSize(identify), 4096U);
    putWord(identify, 117, 0);
    EXPECT_EQ(sectorSize(identify), 512U);
}

TEST(IdentifyDevice, WritesItsIntegrityWord) {
    const Payload identify(512);
    putWord(identify, 0, 0x0040);
    putWord(identify, 10, 0x4142);
    putWord(identify, 255, 0x1234);
    writeIntegrity(identify);
    EXPECT_EQ(wordOf(identify, 255), 0x98A5U);
}

TEST(IdentifyDevice, ThrowsForShortPayloads) {
    const Payload identify(510);
    EXPECT_EQ(thrownCode([&] { readBits(identify, word_255::CHECKSUM); }), 14);
    EXPECT_EQ(thrownCode([&] { writeBits(identify, word_255::CHECKSUM, 1); }), 14);
    EXPECT_EQ(thrownCode([&] { isSet(Payload(94), word_47::MAXIMUM_SECTORS); }), 14);
    EXPECT_EQ(thrownCode([&] { readWorldWideName(Payload(222)); }), 14);
    EXPECT_EQ(thrownCode([&] { readWorldWideName(Payload(224)); }), -1);
    EXPECT_EQ(thrownCode([&] { writeWorldWideName(Payload(222), 1); }), 14);
    EXPECT_EQ(thrownCode([&] { readIntegrity(identify); }), 14);
    EXPECT_EQ(thrownCode([&] { writeIntegrity(identify); }), 14);
}

}  // namespace
}  // namespace orvel::protocols::ata::identify_device
