#include "simulator/AtaController.h"

#include "protocols/ata/CommandCodes.h"
#include "protocols/ata/DeviceStatistics.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>
#include <utility>

namespace orvel::simulator {

using namespace protocols::ata;

namespace {

constexpr bool YES = true;
constexpr bool NO = false;

/// A command that drives may have. The columns between say which forms and states go with it:
/// ACS-4, table "Security mode command actions" and "Sanitize Operation Failed".
struct CommandRow {
    std::uint8_t code;
    bool takes48Bits;
    bool worksLocked;
    bool worksFrozen;
    bool worksAfterFailedSanitize;
    const identify_device::Bits* capability;  ///< null: every drive has the command
    AtaExecutor* executor;
};

namespace id = identify_device;

// clang-format off
constexpr CommandRow COMMANDS[] = {
//   code                                                 48   locked frozen failed capability                          executor
    {command_codes::IDENTIFY_DEVICE,                      NO,  YES,   YES,   YES,   nullptr,                            executeIdentifyDevice},
    {command_codes::SMART,                                NO,  YES,   YES,   YES,   &id::word_82::SMART,                executeSmart},
    {command_codes::READ_LOG_EXT,                         YES, YES,   YES,   YES,   &id::word_84::GPL,                  executeReadLogExt},
    {command_codes::READ_LOG_DMA_EXT,                     YES, YES,   YES,   YES,   &id::word_119::LOG_DMA_EXT,         executeReadLogExt},
    {command_codes::WRITE_LOG_EXT,                        YES, NO,    YES,   NO,    &id::word_84::GPL,                  executeWriteLogExt},
    {command_codes::SET_FEATURES,                         NO,  YES,   YES,   NO,    nullptr,                            executeAtaSetFeatures},
    {command_codes::STANDBY_IMMEDIATE,                    NO,  YES,   YES,   YES,   nullptr,                            executeStandbyImmediate},
    {command_codes::CHECK_POWER_MODE,                     NO,  YES,   YES,   YES,   nullptr,                            executeCheckPowerMode},
    {command_codes::FLUSH_CACHE_EXT,                      YES, NO,    YES,   NO,    &id::word_83::FLUSH_CACHE_EXT,      executeFlushCacheExt},
    {command_codes::ACCESSIBLE_MAX_ADDRESS_CONFIGURATION, YES, NO,    YES,   NO,    &id::word_119::ACCESSIBLE_MAX_ADDRESS, executeAccessibleMaxAddress},
    {command_codes::READ_NATIVE_MAX_ADDRESS_EXT,          YES, YES,   YES,   NO,    &id::word_82::HPA,                  executeReadNativeMaxAddressExt},
    {command_codes::SET_MAX_ADDRESS_EXT,                  YES, NO,    YES,   NO,    &id::word_82::HPA,                  executeSetMaxAddressExt},
    {command_codes::SANITIZE_DEVICE,                      YES, YES,   YES,   YES,   &id::word_59::SANITIZE,             executeSanitize},
    {command_codes::DOWNLOAD_MICROCODE,                   NO,  NO,    YES,   NO,    &id::word_83::DOWNLOAD_MICROCODE,   executeDownloadMicrocode},
    {command_codes::SECURITY_SET_PASSWORD,                NO,  NO,    NO,    NO,    &id::word_82::SECURITY,             executeSecuritySetPassword},
    {command_codes::SECURITY_UNLOCK,                      NO,  YES,   NO,    NO,    &id::word_82::SECURITY,             executeSecurityUnlock},
    {command_codes::SECURITY_ERASE_PREPARE,               NO,  YES,   NO,    NO,    &id::word_82::SECURITY,             executeSecurityErasePrepare},
    {command_codes::SECURITY_ERASE_UNIT,                  NO,  YES,   NO,    NO,    &id::word_82::SECURITY,             executeSecurityEraseUnit},
    {command_codes::SECURITY_FREEZE_LOCK,                 NO,  NO,    YES,   NO,    &id::word_82::SECURITY,             executeSecurityFreezeLock},
    {command_codes::SECURITY_DISABLE_PASSWORD,            NO,  NO,    NO,    NO,    &id::word_82::SECURITY,             executeSecurityDisablePassword},
};

// clang-format on

/// Null for a command that the drive refuses, whatever its other fields say.
const CommandRow* findCommand(const AtaDrive& drive, std::uint8_t code) {
    const auto* const row = std::ranges::find(COMMANDS, code, &CommandRow::code);
    if (row == std::end(COMMANDS)) return nullptr;
    if (row->capability && !supports(drive, *row->capability)) return nullptr;
    if (drive.security.isLocked && !row->worksLocked) return nullptr;
    if (drive.security.isFrozen && !row->worksFrozen) return nullptr;
    if (drive.sanitize.hasFailed && !row->worksAfterFailedSanitize) return nullptr;
    return row;
}

/// Only what the command takes, in the form in which it came.
TaskFile readableFields(const TaskFile& fields, bool takes48Bits) {
    constexpr std::uint16_t BYTE = 0xFF;
    constexpr std::uint64_t LBA_28_BIT = 0xFFFFFF;
    constexpr std::uint64_t LBA_48_BIT = 0xFFFFFFFFFFFF;
    TaskFile readable = fields;
    readable.is48Bit = takes48Bits && fields.is48Bit;
    readable.lba &= readable.is48Bit ? LBA_48_BIT : LBA_28_BIT;
    if (!readable.is48Bit) {
        readable.feature &= BYTE;
        readable.count &= BYTE;
    }
    return readable;
}

AtaController::Result makeResult(const TaskFile& fields, const AtaAnswer& answer,
                                 std::uint32_t transferLength) {
    constexpr std::uint8_t READY = status_bits::DRDY | 1U << 4;  // bit 4: seek complete
    const bool isRefused = answer.error != 0;
    AtaController::Result result;
    result.returned.status = isRefused ? READY | status_bits::ERR : READY;
    result.returned.error = answer.error;
    result.returned.count = answer.count;
    result.returned.lba = answer.lba;
    result.returned.device = fields.device;
    result.returned.is48Bit = fields.is48Bit;
    // The host takes no more than it has room for.
    if (!isRefused && answer.output.size() > 0) {
        result.output = {answer.output.data(), std::min(answer.output.size(), transferLength)};
    }
    return result;
}

/// Some commands have to follow right behind another one.
void noteCommand(AtaDrive& drive, std::uint8_t code, bool isDone) {
    drive.volatileState.isErasePrepared = isDone && code == command_codes::SECURITY_ERASE_PREPARE;
    drive.volatileState.hasReadNativeMaxAddress =
        isDone && code == command_codes::READ_NATIVE_MAX_ADDRESS_EXT;
}

/// Nothing if the drive doesn't have the attribute.
void countUpAttribute(AtaDrive& drive, std::uint8_t attribute) {
    setRawAttribute(drive, attribute, rawAttribute(drive, attribute).value_or(0) + 1);
}

/// A drive in standby has been told that power may go.
void countPowerCycle(AtaDrive& drive, bool isInStandby) {
    constexpr std::uint8_t POWER_CYCLES = 12;
    constexpr std::uint8_t UNEXPECTED_POWER_LOSSES = 174;
    constexpr std::uint8_t UNSAFE_SHUTDOWNS = 192;
    countUpAttribute(drive, POWER_CYCLES);
    if (!isInStandby) {
        countUpAttribute(drive, UNEXPECTED_POWER_LOSSES);
        countUpAttribute(drive, UNSAFE_SHUTDOWNS);
    }
    const auto page = drive.deviceStatistics.find(statistics_page::GENERAL);
    if (page == drive.deviceStatistics.end()) return;
    const auto& field = general_statistics::LifetimePowerOnResets;
    Statistic resets = readStatistic(page->second, field);
    if (!resets.isValid()) return;
    ++resets.value;
    writeStatistic(page->second, field, resets);
}

}  // namespace

AtaController::AtaController(AtaDrive& drive, Clock clock)
    : drive(drive),
      clock(std::move(clock)) {}

AtaController::Result AtaController::execute(const AtaCommand& command,
                                             const core::Payload& input) {
    const std::chrono::milliseconds now = clock();
    finishSelfTest(drive, now);
    const std::uint8_t code = command.getTaskFile().command;
    const CommandRow* row = findCommand(drive, code);
    const TaskFile fields = readableFields(command.getTaskFile(), row && row->takes48Bits);
    const AtaAnswer answer = row ? row->executor(drive, {fields, input, now}) : aborted();
    noteCommand(drive, code, answer.error == 0);
    Result result = makeResult(fields, answer, command.getTransferLength());
    result.duration = answer.duration;
    return result;
}

void AtaController::catchUp() {
    finishSelfTest(drive, clock());
}

void AtaController::powerCycle() {
    const std::chrono::milliseconds now = clock();
    finishSelfTest(drive, now);
    abortSelfTest(drive, ata_self_test_results::INTERRUPTED_BY_RESET, now);
    if (!drive.deferredRevision.empty()) activateMicrocode(drive, drive.deferredRevision);
    drive.downloadedMicrocode.clear();
    resetSettings(drive);
    resetSct(drive);
    resetMaxAddress(drive);
    resetSecurity(drive);
    drive.sanitize.isFrozen = false;
    drive.sanitize.isAntifrozen = false;
    countPowerCycle(drive, drive.isInStandby);
    drive.isInStandby = false;
}

}  // namespace orvel::simulator
