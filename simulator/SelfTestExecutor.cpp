// Device Self-test of NVMe drives.
#include "simulator/NvmeExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::nvme;
using std::chrono::milliseconds;

namespace {

constexpr std::uint64_t FIRST_SEGMENT = 1;

milliseconds selfTestTime(const NvmeDrive& drive, std::uint8_t code) {
    if (code == self_test::SHORT) return drive.shortSelfTestTime;
    return std::chrono::minutes(
        protocols::readNumber(drive.identifyController, identify_controller::EDSTT));
}

StatusCode checkNamespace(const NvmeDrive& drive, std::uint32_t nsid) {
    if (nsid == 0 || nsid == ALL_NAMESPACES) return {};
    switch (stateOf(drive, nsid)) {
    case NamespaceState::INVALID:
        return status_codes::INVALID_NAMESPACE_OR_FORMAT;
    case NamespaceState::ATTACHED:
        return {};
    default:
        return status_codes::INVALID_FIELD_IN_COMMAND;
    }
}

}  // namespace

void endSelfTest(NvmeDrive& drive, std::uint8_t result) {
    namespace fields = self_test_result;
    if (!drive.runningSelfTest) return;
    const StoredBytes entry(fields::SIZE);
    writeBits(entry, fields::DeviceSelfTestStatus, self_test_status::RESULT, result);
    writeBits(entry, fields::DeviceSelfTestStatus, self_test_status::CODE,
              drive.runningSelfTest->code);
    if (result == self_test_results::FAILED_SEGMENT)
        protocols::writeNumber(entry, fields::SegmentNumber, FIRST_SEGMENT);
    protocols::writeNumber(
        entry, fields::POH,
        protocols::readNumber(drive.smartHealthLog, smart_health_log::PowerOnHours));
    drive.selfTestResults.push_front(entry);
    if (drive.selfTestResults.size() > self_test_log::RESULTS.count) {
        drive.selfTestResults.pop_back();
    }
    drive.runningSelfTest.reset();
}

void finishSelfTest(NvmeDrive& drive, milliseconds now) {
    const auto& test = drive.runningSelfTest;
    if (test && now - test->start >= selfTestTime(drive, test->code)) {
        endSelfTest(drive, drive.selfTestOutcome);
    }
}

std::uint8_t selfTestPercentage(const NvmeDrive& drive, milliseconds now) {
    constexpr std::int64_t WHOLE = 100;
    const auto& test = drive.runningSelfTest;
    const auto whole = selfTestTime(drive, test->code).count();
    const auto done = whole > 0 ? (now - test->start).count() * WHOLE / whole : 0;
    return static_cast<std::uint8_t>(std::clamp<std::int64_t>(done, 0, WHOLE - 1));
}

NvmeAnswer executeDeviceSelfTest(NvmeDrive& drive, const NvmeRequest& request) {
    const auto code =
        static_cast<std::uint8_t>(readBits(request.fields.cdw10, device_self_test_cdw10::STC));
    const StatusCode status = checkNamespace(drive, request.fields.nsid);
    if (status != status_codes::SUCCESSFUL_COMPLETION) return refusal(status);
    switch (code) {
    case self_test::SHORT:
    case self_test::EXTENDED:
        if (drive.runningSelfTest) return refusal(status_codes::DEVICE_SELF_TEST_IN_PROGRESS);
        drive.runningSelfTest = RunningSelfTest{code, request.fields.nsid, request.now};
        return {};
    case self_test::ABORT:
        endSelfTest(drive, self_test_results::ABORTED_BY_COMMAND);
        return {};
    default:
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
}

}  // namespace orvel::simulator
