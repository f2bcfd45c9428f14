// SMART EXECUTE OFF-LINE IMMEDIATE: off-line data collection and self-tests.
#include "protocols/ata/CommandCodes.h"
#include "protocols/ata/Smart.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
using std::chrono::milliseconds;
namespace results = ata_self_test_results;

namespace {

constexpr std::uint8_t CAPTIVE = 0x80;
constexpr std::int64_t WHOLE = 100;

milliseconds minutes(const AtaDrive& drive, const protocols::Field& field) {
    return std::chrono::minutes(readNumber(drive.smartData, field));
}

milliseconds extendedTime(const AtaDrive& drive) {
    constexpr std::uint64_t IN_THE_WORD = 0xFF;
    const bool isInWord =
        readNumber(drive.smartData, smart_data::ExtendedSelfTestPollingMinutes) == IN_THE_WORD;
    return minutes(drive, isInWord ? smart_data::ExtendedSelfTestPollingMinutesWord
                                   : smart_data::ExtendedSelfTestPollingMinutes);
}

milliseconds selfTestTime(const AtaDrive& drive, std::uint8_t subcommand) {
    switch (static_cast<OfflineSubcommand>(subcommand)) {
    case OfflineSubcommand::EXTENDED_SELF_TEST:
        return extendedTime(drive);
    case OfflineSubcommand::CONVEYANCE_SELF_TEST:
        return minutes(drive, smart_data::ConveyanceSelfTestPollingMinutes);
    default:
        return minutes(drive, smart_data::ShortSelfTestPollingMinutes);
    }
}

std::uint8_t percentRemaining(const AtaDrive& drive, milliseconds now) {
    const auto& test = drive.runningSelfTest;
    const auto whole = selfTestTime(drive, test->subcommand).count();
    const auto passed = std::clamp<std::int64_t>((now - test->start).count(), 0, whole);
    const auto remaining = whole > 0 ? WHOLE - passed * WHOLE / whole : 0;
    return static_cast<std::uint8_t>(std::min(remaining, WHOLE - 1));
}

bool isFailure(std::uint8_t status) {
    return status > results::INTERRUPTED_BY_RESET;
}

/// A test that is over isn't in progress, nor anything else that the standard doesn't have.
std::uint8_t outcome(const AtaDrive& drive) {
    return drive.selfTestOutcome > results::HANDLING_DAMAGE ? results::UNKNOWN_ERROR
                                                            : drive.selfTestOutcome;
}

/// An entry of the Extended SMART Self-Test log; the other log is made from it.
void logResult(AtaDrive& drive, std::uint8_t subcommand, const SelfTestExecution& execution) {
    namespace entry_fields = extended_self_test_descriptor;
    constexpr std::uint8_t POWER_ON_HOURS = 9;
    const std::uint8_t status = selfTestExecutionByte(execution);
    const StoredBytes entry(entry_fields::SIZE);
    writeNumber(entry, entry_fields::SelfTestNumber, subcommand);
    writeNumber(entry, entry_fields::ExecutionStatus, status);
    writeNumber(entry, entry_fields::LifeTimestamp,
                rawAttribute(drive, POWER_ON_HOURS).value_or(0));
    if (isFailure(execution.status)) {
        writeNumber(entry, entry_fields::FailingLBA, drive.selfTestFailingLba);
    }
    drive.selfTestResults.push_front(entry);
    if (drive.selfTestResults.size() > self_test_log::DESCRIPTORS.count) {
        drive.selfTestResults.pop_back();
    }
    writeNumber(drive.smartData, smart_data::SelfTestExecutionStatus, status);
}

bool isAvailable(const AtaDrive& drive, OfflineSubcommand test) {
    namespace can = offline_collection_capability;
    if (!supports(drive, identify_device::word_84::SMART_SELF_TEST)) return false;
    const auto capability =
        readNumber(drive.smartData, smart_data::OfflineDataCollectionCapability);
    switch (test) {
    case OfflineSubcommand::SHORT_SELF_TEST:
    case OfflineSubcommand::EXTENDED_SELF_TEST:
    case OfflineSubcommand::ABORT_SELF_TEST:
        return (capability & can::SELF_TEST) != 0;
    case OfflineSubcommand::CONVEYANCE_SELF_TEST:
        return (capability & can::CONVEYANCE_SELF_TEST) != 0;
    default:
        return false;
    }
}

/// Nobody waits for the collection: it has nothing to collect.
AtaAnswer collectOffline(AtaDrive& drive) {
    constexpr std::uint64_t COMPLETED = 0x02;
    constexpr std::uint64_t AUTOMATIC = 0x80;
    const auto& field = smart_data::OfflineDataCollectionStatus;
    const std::uint64_t automatic = readNumber(drive.smartData, field) & AUTOMATIC;
    writeNumber(drive.smartData, field, automatic | COMPLETED);
    return {};
}

/// The command comes back when the test is over, and tells of the outcome.
AtaAnswer testInCaptiveMode(AtaDrive& drive, std::uint8_t subcommand) {
    constexpr unsigned KEY_SHIFT = 8;
    logResult(drive, subcommand, {outcome(drive), 0});
    const bool isPassed = outcome(drive) == results::WITHOUT_ERROR;
    AtaAnswer answer = isPassed ? AtaAnswer() : aborted();
    answer.lba =
        (isPassed ? SMART_KEY : std::uint64_t{SMART_THRESHOLD_EXCEEDED} << KEY_SHIFT) | subcommand;
    answer.duration = selfTestTime(drive, static_cast<std::uint8_t>(subcommand & ~CAPTIVE));
    return answer;
}

}  // namespace

void abortSelfTest(AtaDrive& drive, std::uint8_t result, milliseconds now) {
    if (!drive.runningSelfTest) return;
    logResult(drive, drive.runningSelfTest->subcommand, {result, percentRemaining(drive, now)});
    drive.runningSelfTest.reset();
}

void finishSelfTest(AtaDrive& drive, milliseconds now) {
    const auto& test = drive.runningSelfTest;
    if (!test || now - test->start < selfTestTime(drive, test->subcommand)) return;
    logResult(drive, test->subcommand, {outcome(drive), 0});
    drive.runningSelfTest.reset();
}

std::uint8_t selfTestStatus(const AtaDrive& drive, milliseconds now) {
    if (drive.runningSelfTest) {
        return selfTestExecutionByte({results::IN_PROGRESS, percentRemaining(drive, now)});
    }
    return static_cast<std::uint8_t>(
        readNumber(drive.smartData, smart_data::SelfTestExecutionStatus));
}

AtaAnswer executeOfflineImmediate(AtaDrive& drive, const AtaRequest& request) {
    namespace can = offline_collection_capability;
    const auto subcommand = static_cast<std::uint8_t>(request.fields.lba);
    const bool isCaptive = (subcommand & CAPTIVE) != 0;
    const auto test = static_cast<OfflineSubcommand>(subcommand & ~CAPTIVE);
    const bool isCollection = test == OfflineSubcommand::OFFLINE_ROUTINE && !isCaptive;
    const bool isAbort = test == OfflineSubcommand::ABORT_SELF_TEST;
    const auto capability =
        readNumber(drive.smartData, smart_data::OfflineDataCollectionCapability);
    if ((capability & can::EXECUTE_OFFLINE_IMMEDIATE) == 0) return aborted();
    if (isAbort && isCaptive) return aborted();
    if (!isCollection && !isAvailable(drive, test)) return aborted();

    abortSelfTest(drive, results::ABORTED_BY_HOST, request.now);
    if (isAbort) return {};
    drive.isInStandby = false;
    if (isCollection) return collectOffline(drive);
    if (isCaptive) return testInCaptiveMode(drive, subcommand);
    drive.runningSelfTest = RunningAtaSelfTest{subcommand, request.now};
    return {};
}

}  // namespace orvel::simulator
