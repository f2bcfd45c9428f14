// What a simulated SATA drive remembers.
#pragma once

#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/Structures.h"
#include "simulator/StoredBytes.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace orvel::simulator {

/// A setting of SCT Feature Control.
struct SctFeatureState {
    std::uint16_t defaultState = 0;
    std::optional<std::uint16_t> saved = {};    ///< outlasts power cycles
    std::optional<std::uint16_t> current = {};  ///< since power came
    bool isAppliedAtPowerOn = false;            ///< a change shows after the next power cycle

    bool operator==(const SctFeatureState&) const = default;
};

struct AtaSecurity {
    bool isEnabled = false;
    bool isLocked = false;
    bool isFrozen = false;
    StoredBytes userPassword{32};
    StoredBytes masterPassword{32};
    bool isMaximum = false;  ///< the master password can't unlock
    std::uint8_t attemptsLeft = 5;
    bool isFrozenAtPowerOn = false;  ///< as hosts' firmware does

    bool operator==(const AtaSecurity&) const = default;
};

struct AtaSanitize {
    bool isFrozen = false;
    bool isAntifrozen = false;
    bool hasCompleted = false;  ///< the last operation, without an error
    bool hasFailed = false;
    bool isFailureClearable = false;  ///< by SANITIZE STATUS EXT

    bool operator==(const AtaSanitize&) const = default;
};

struct RunningAtaSelfTest {
    std::uint8_t subcommand = 0;  ///< of SMART EXECUTE OFF-LINE IMMEDIATE
    std::chrono::milliseconds start{0};

    bool operator==(const RunningAtaSelfTest&) const = default;
};

/// Settings of SET FEATURES. Those that the drive doesn't support count for nothing.
struct AtaSettings {
    bool isWriteCacheEnabled = true;
    bool isReadLookAheadEnabled = true;
    bool isDeviceInitiatedPowerManagementEnabled = false;
    std::uint8_t apmLevel = 0;  ///< 0 for disabled

    bool operator==(const AtaSettings&) const = default;
};

/// What a SATA drive knows of the last command only. It outlasts neither the end of those commands
/// that belong together nor power.
struct AtaVolatileState {
    bool isErasePrepared = false;          ///< it was SECURITY ERASE PREPARE
    bool hasReadNativeMaxAddress = false;  ///< it was READ NATIVE MAX ADDRESS EXT
    std::uint16_t sctExtendedStatus = 0;   ///< of the last SCT command
    std::uint16_t sctAction = 0;
    std::uint16_t sctFunction = 0;
    StoredBytes sctData;  ///< of the last SCT command, until it is read
};

/// A part that the comparison of the whole passes over: any two are equal.
template <class Part>
struct NotCompared : Part {
    bool operator==(const NotCompared& /*other*/) const { return true; }
};

/// A plain record; a copy is a drive of its own. What stands in a structure that the drive shows is
/// kept there only; checksums and what follows from other parts are made when a command reads it.
struct AtaDrive {
    /// Settings and the accessible size are kept in it, too; all of word 128 but the bit of the
    /// enhanced erase follows from `security`.
    StoredBytes identifyDevice{protocols::ata::identify_device::SIZE};
    AtaSettings powerOnSettings;                       ///< what the settings are when power comes
    std::uint64_t nativeMaxAddress = 0;                ///< the highest LBA there is
    std::optional<std::uint64_t> maxAddressAtPowerOn;  ///< after a change for this power cycle only
    bool hasMaxAddressBeenSet = false;  ///< in this power cycle: only once is allowed
    bool isMaxAddressFrozen = false;    ///< until the next power cycle
    StoredBytes smartData{protocols::ata::smart_data::SIZE};
    StoredBytes smartThresholds{protocols::ata::smart_thresholds::SIZE};
    std::deque<StoredBytes> errorLog;         ///< extended_error_log::ERRORS, newest first
    std::uint16_t errorCount = 0;             ///< of the drive's life
    std::deque<StoredBytes> selfTestResults;  ///< extended_self_test_descriptor, newest first
    std::optional<RunningAtaSelfTest> runningSelfTest;
    std::uint8_t selfTestOutcome = 0;      ///< the status that a test comes to, once the time is up
    std::uint64_t selfTestFailingLba = 0;  ///< of a test that fails

    StoredBytes sctStatus{
        protocols::ata::sct_status::SIZE};  ///< without what `volatileState` has of it
    std::map<std::uint16_t, SctFeatureState> sctFeatures;  ///< by feature code
    std::array<std::uint16_t, 2> recoveryTimers = {0, 0};  ///< read and write, units of 100 ms
    std::array<std::uint16_t, 2> recoveryTimersAtPowerOn = {0, 0};
    std::deque<std::int8_t> temperatureHistory;  ///< degrees Celsius, newest first

    std::map<std::uint8_t, StoredBytes> deviceStatistics;        ///< pages by number
    std::map<std::uint16_t, std::uint64_t> phyEventCounters;     ///< by identifier
    std::map<std::uint8_t, std::vector<StoredBytes>> otherLogs;  ///< pages by log address

    AtaSecurity security;
    AtaSanitize sanitize;
    std::uint32_t eraseCount = 0;  ///< how often all user data has been erased
    bool isInStandby = false;

    std::map<std::uint32_t, StoredBytes> downloadedMicrocode;  ///< pieces by offset in blocks
    std::string deferredRevision;  ///< firmware that waits for its activation; empty for none

    NotCompared<AtaVolatileState> volatileState;  ///< a drive that was only looked at is the same

    bool operator==(const AtaDrive&) const = default;
};

}  // namespace orvel::simulator
