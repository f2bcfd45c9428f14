// The numbers of commands, subcommands and SCT functions against the standards'.
#include "protocols/ata/CommandCodes.h"
#include "protocols/ata/SctCodes.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace orvel::protocols::ata {
namespace {

struct Row {
    const char* name;
    std::uint64_t code;
    std::uint64_t expected;
};

template <std::size_t COUNT>
void expectCodes(const Row (&rows)[COUNT]) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.code, row.expected);
    }
}

// clang-format off

TEST(Codes, OfCommandsAreTheStandards) {
    namespace c = command_codes;
    constexpr Row ROWS[] = {
        {"READ NATIVE MAX ADDRESS EXT",          c::READ_NATIVE_MAX_ADDRESS_EXT,          0x27},
        {"READ LOG EXT",                         c::READ_LOG_EXT,                         0x2F},
        {"SET MAX ADDRESS EXT",                  c::SET_MAX_ADDRESS_EXT,                  0x37},
        {"WRITE LOG EXT",                        c::WRITE_LOG_EXT,                        0x3F},
        {"READ LOG DMA EXT",                     c::READ_LOG_DMA_EXT,                     0x47},
        {"Accessible Max Address Configuration", c::ACCESSIBLE_MAX_ADDRESS_CONFIGURATION, 0x78},
        {"DOWNLOAD MICROCODE",                   c::DOWNLOAD_MICROCODE,                   0x92},
        {"SMART",                                c::SMART,                                0xB0},
        {"SANITIZE DEVICE",                      c::SANITIZE_DEVICE,                      0xB4},
        {"STANDBY IMMEDIATE",                    c::STANDBY_IMMEDIATE,                    0xE0},
        {"CHECK POWER MODE",                     c::CHECK_POWER_MODE,                     0xE5},
        {"FLUSH CACHE EXT",                      c::FLUSH_CACHE_EXT,                      0xEA},
        {"IDENTIFY DEVICE",                      c::IDENTIFY_DEVICE,                      0xEC},
        {"SET FEATURES",                         c::SET_FEATURES,                         0xEF},
        {"SECURITY SET PASSWORD",                c::SECURITY_SET_PASSWORD,                0xF1},
        {"SECURITY UNLOCK",                      c::SECURITY_UNLOCK,                      0xF2},
        {"SECURITY ERASE PREPARE",               c::SECURITY_ERASE_PREPARE,               0xF3},
        {"SECURITY ERASE UNIT",                  c::SECURITY_ERASE_UNIT,                  0xF4},
        {"SECURITY FREEZE LOCK",                 c::SECURITY_FREEZE_LOCK,                 0xF5},
        {"SECURITY DISABLE PASSWORD",            c::SECURITY_DISABLE_PASSWORD,            0xF6},
    };
    expectCodes(ROWS);
}

TEST(Codes, OfSubcommandsAreTheStandards) {
    namespace smart = smart_subcommands;
    namespace sanitize = sanitize_subcommands;
    constexpr Row ROWS[] = {
        {"SMART READ DATA",                  smart::READ_DATA,                          0xD0},
        {"SMART READ THRESHOLDS",            smart::READ_THRESHOLDS,                    0xD1},
        {"SMART EXECUTE OFF-LINE IMMEDIATE", smart::EXECUTE_OFF_LINE_IMMEDIATE,         0xD4},
        {"SMART READ LOG",                   smart::READ_LOG,                           0xD5},
        {"SMART WRITE LOG",                  smart::WRITE_LOG,                          0xD6},
        {"SMART ENABLE OPERATIONS",          smart::ENABLE_OPERATIONS,                  0xD8},
        {"SMART DISABLE OPERATIONS",         smart::DISABLE_OPERATIONS,                 0xD9},
        {"SMART RETURN STATUS",              smart::RETURN_STATUS,                      0xDA},
        {"SANITIZE STATUS EXT",              sanitize::STATUS_EXT,                    0x0000},
        {"CRYPTO SCRAMBLE EXT",              sanitize::CRYPTO_SCRAMBLE_EXT,           0x0011},
        {"BLOCK ERASE EXT",                  sanitize::BLOCK_ERASE_EXT,               0x0012},
        {"OVERWRITE EXT",                    sanitize::OVERWRITE_EXT,                 0x0014},
        {"SANITIZE FREEZE LOCK EXT",         sanitize::FREEZE_LOCK_EXT,               0x0020},
        {"SANITIZE ANTIFREEZE LOCK EXT",     sanitize::ANTIFREEZE_LOCK_EXT,           0x0040},
        {"GET NATIVE MAX ADDRESS EXT",       max_address_subcommands::GET_NATIVE,        0x0},
        {"SET ACCESSIBLE MAX ADDRESS EXT",   max_address_subcommands::SET_ACCESSIBLE,    0x1},
        {"FREEZE ACCESSIBLE MAX ADDRESS",    max_address_subcommands::FREEZE_ACCESSIBLE, 0x2},
    };
    expectCodes(ROWS);
}

TEST(Codes, OfOtherFieldsOfCommandsAreTheStandards) {
    constexpr Row ROWS[] = {
        {"SMART",                       SMART_KEY,                                           0xC24F00},
        {"crypto scramble",             sanitize_keys::CRYPTO_SCRAMBLE,                    0x43727970},
        {"block erase",                 sanitize_keys::BLOCK_ERASE,                        0x426B4572},
        {"overwrite",                   sanitize_keys::OVERWRITE,                      0x4F5700000000},
        {"freeze lock",                 sanitize_keys::FREEZE_LOCK,                        0x46724C6B},
        {"antifreeze lock",             sanitize_keys::ANTIFREEZE_LOCK,                    0x416E7469},
        {"clear the failure",           sanitize_count::CLEAR_SANITIZE_OPERATION_FAILED,         0x01},
        {"failure mode",                sanitize_count::FAILURE_MODE,                            0x10},
        {"invert the pattern",          sanitize_count::INVERT_PATTERN,                          0x80},
        {"keep over power cycles",      VALUE_VOLATILE,                                          0x01},
        {"download, nothing told",      download_progress::NOT_REPORTED,                         0x00},
        {"download, more expected",     download_progress::MORE_EXPECTED,                        0x01},
        {"download, applied",           download_progress::APPLIED,                              0x02},
        {"download, deferred",          download_progress::DEFERRED,                             0x03},
        {"standby",                     power_modes::STANDBY,                                    0x00},
        {"active or idle",              power_modes::ACTIVE_OR_IDLE,                             0xFF},
    };
    expectCodes(ROWS);
}

TEST(Codes, OfSctAreTheStandards) {
    using namespace sct;
    constexpr Row ROWS[] = {
        {"error recovery control",      actions::ERROR_RECOVERY_CONTROL,              3},
        {"feature control",             actions::FEATURE_CONTROL,                     4},
        {"data tables",                 actions::DATA_TABLES,                         5},
        {"set timer",                   recovery_functions::SET_TIMER,                1},
        {"return timer",                recovery_functions::RETURN_TIMER,             2},
        {"set state",                   feature_functions::SET_STATE,                 1},
        {"return state",                feature_functions::RETURN_STATE,              2},
        {"return options",              feature_functions::RETURN_OPTIONS,            3},
        {"read table",                  table_functions::READ_TABLE,                  1},
        {"preserve over power cycles",  PRESERVE_OVER_POWER_CYCLES,                   1},
        {"success",                     extended_status::SUCCESS,                     0},
        {"invalid function",            extended_status::INVALID_FUNCTION,            1},
        {"block count overflow",        extended_status::BLOCK_COUNT_OVERFLOW,        3},
        {"invalid recovery function",   extended_status::INVALID_RECOVERY_FUNCTION,   4},
        {"invalid recovery selection",  extended_status::INVALID_RECOVERY_SELECTION,  5},
        {"read timer too short",        extended_status::READ_TIMER_TOO_SHORT,        6},
        {"write timer too short",       extended_status::WRITE_TIMER_TOO_SHORT,       7},
        {"no command before data",      extended_status::NO_COMMAND_BEFORE_DATA,     11},
        {"invalid feature function",    extended_status::INVALID_FEATURE_FUNCTION,   12},
        {"invalid feature",             extended_status::INVALID_FEATURE,            13},
        {"invalid feature state",       extended_status::INVALID_FEATURE_STATE,      14},
        {"invalid option flags",        extended_status::INVALID_OPTION_FLAGS,       15},
        {"invalid action",              extended_status::INVALID_ACTION,             16},
        {"invalid table",               extended_status::INVALID_TABLE,              17},
        {"active",                      device_states::ACTIVE,                        0},
        {"standby",                     device_states::STANDBY,                       1},
        {"self-test",                   device_states::SELF_TEST,                     3},
    };
    expectCodes(ROWS);
}

// clang-format on

}  // namespace
}  // namespace orvel::protocols::ata
