// What a simulated SATA drive does for each command. Tables and sections are those of ACS-4, or of
// ACS-2 for the commands that it had last.
#pragma once

#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "simulator/AtaDrive.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace orvel::simulator {

/// A command's outcome, as far as its executor knows it.
struct AtaAnswer {
    std::uint8_t error = 0;  ///< the ERROR field; a command that isn't refused leaves it zero
    std::uint16_t count = 0;
    std::uint64_t lba = 0;
    core::Payload output = {};
    std::chrono::milliseconds duration{0};  ///< until it comes back, of commands that do much
};

/// What a drive says of a command that it doesn't have, doesn't allow, or doesn't understand.
inline AtaAnswer aborted() {
    return {.error = protocols::ata::error_bits::ABRT};
}

/// A command on its way through an executor. What a command doesn't take of the fields is zero.
struct AtaRequest {
    const protocols::ata::TaskFile& fields;
    const core::Payload& input;
    std::chrono::milliseconds now;
};

using AtaExecutor = AtaAnswer(AtaDrive& drive, const AtaRequest& request);

AtaExecutor executeIdentifyDevice;
AtaExecutor executeSmart;
AtaExecutor executeReadLogExt;  // READ LOG DMA EXT, too
AtaExecutor executeWriteLogExt;
AtaExecutor executeAtaSetFeatures;
AtaExecutor executeStandbyImmediate;
AtaExecutor executeCheckPowerMode;
AtaExecutor executeFlushCacheExt;
AtaExecutor executeAccessibleMaxAddress;
AtaExecutor executeReadNativeMaxAddressExt;
AtaExecutor executeSetMaxAddressExt;
AtaExecutor executeSanitize;
AtaExecutor executeSecuritySetPassword;
AtaExecutor executeSecurityUnlock;
AtaExecutor executeSecurityErasePrepare;
AtaExecutor executeSecurityEraseUnit;
AtaExecutor executeSecurityFreezeLock;
AtaExecutor executeSecurityDisablePassword;
AtaExecutor executeDownloadMicrocode;

// Parts of SMART.
AtaExecutor executeSmartReadLog;
AtaExecutor executeSmartWriteLog;
AtaExecutor executeOfflineImmediate;

/// An SCT command that a write to log address E0h brings.
AtaAnswer executeSct(AtaDrive& drive, const core::Payload& keyPage);

/// Hands over what the last SCT command has left.
AtaAnswer readSctData(AtaDrive& drive, std::uint32_t pages);

/// Whether IDENTIFY DEVICE data tells of the capability.
inline bool supports(const AtaDrive& drive, const protocols::ata::identify_device::Bits& bits) {
    return protocols::ata::identify_device::isSet(drive.identifyDevice, bits);
}

/// IDENTIFY DEVICE data as the drive shows it.
core::Payload makeIdentifyDevice(const AtaDrive& drive);

// Logs: all their pages, one behind the other; a drive without such a log has none.

/// The SMART directory has the logs that SMART READ LOG reads, the other one those of READ LOG EXT.
core::Payload makeLog(const AtaDrive& drive, std::uint8_t address,
                      protocols::ata::LogAccess access);
core::Payload makeSummaryErrorLog(const AtaDrive& drive);
core::Payload makeComprehensiveErrorLog(const AtaDrive& drive);
core::Payload makeExtendedErrorLog(const AtaDrive& drive);
core::Payload makeSelfTestLog(const AtaDrive& drive);
core::Payload makeExtendedSelfTestLog(const AtaDrive& drive);
core::Payload makeSctStatus(const AtaDrive& drive);

/// Raw value of a SMART attribute; nothing if the drive doesn't have it.
std::optional<std::uint64_t> rawAttribute(const AtaDrive& drive, std::uint8_t id);

/// Does nothing if the drive doesn't have the attribute.
void setRawAttribute(AtaDrive& drive, std::uint8_t id, std::uint64_t value);

/// LBA (23:8) of SMART RETURN STATUS.
std::uint16_t smartStatus(const AtaDrive& drive);

/// How a self-test ended: ACS-4, "Self-test execution status byte".
namespace ata_self_test_results {
inline constexpr std::uint8_t WITHOUT_ERROR = 0x0;
inline constexpr std::uint8_t ABORTED_BY_HOST = 0x1;
inline constexpr std::uint8_t INTERRUPTED_BY_RESET = 0x2;
inline constexpr std::uint8_t UNKNOWN_ERROR = 0x3;
inline constexpr std::uint8_t HANDLING_DAMAGE = 0x8;
inline constexpr std::uint8_t IN_PROGRESS = 0xF;
}  // namespace ata_self_test_results

/// Writes the result down if a self-test has come to its end.
void finishSelfTest(AtaDrive& drive, std::chrono::milliseconds now);

/// Ends a running self-test before its time; nothing if none is running.
void abortSelfTest(AtaDrive& drive, std::uint8_t result, std::chrono::milliseconds now);

/// The self-test execution status byte.
std::uint8_t selfTestStatus(const AtaDrive& drive, std::chrono::milliseconds now);

// What a power cycle does to settings.
void resetSettings(AtaDrive& drive);
void resetSct(AtaDrive& drive);
void resetMaxAddress(AtaDrive& drive);
void resetSecurity(AtaDrive& drive);

/// State of an SCT feature that is in force; nothing if the drive doesn't have it.
std::optional<std::uint16_t> sctFeatureState(const AtaDrive& drive, std::uint16_t code);

/// All user data is gone.
void eraseUserData(AtaDrive& drive, std::chrono::milliseconds now);

/// Starts the firmware.
void activateMicrocode(AtaDrive& drive, const std::string& revision);

}  // namespace orvel::simulator
