#include "interfaces/orveli/jobs/NvmeSelfTest.h"

#include "interfaces/orveli/access/NvmeAccess.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using namespace protocols::nvme;
namespace statuses = orvel::features::statuses;
namespace ic = identify_controller;

namespace {

struct Outcome {
    std::uint32_t code;
    const char* words;
};

// Device Self-test Status: NVM Express Base Specification 1.4, section 5.14.1.6.
// clang-format off
//   code  words
constexpr Outcome OUTCOMES[] = {
  {  0x0,  "Operation completed without error."},
  {  0x1,  "Operation was aborted by a Device Self-test command."},
  {  0x2,  "Operation was aborted by a Controller Level Reset."},
  {  0x3,  "Operation was aborted due to a removal of a namespace from the namespace inventory."},
  {  0x4,  "Operation was aborted due to the processing of a Format NVM command."},
  {  0x5,  "A fatal error or unknown test error occurred while the controller was executing the device self-test operation and the operation did not complete."},
  {  0x6,  "Operation completed with a segment that failed and the segment that failed is not known."},
  {  0x7,  "Operation completed with one or more failed segments."},
  {  0x8,  "Operation was aborted for unknown reason."},
  {  0x9,  "Operation was aborted due to a sanitize operation."},
};
// clang-format on
constexpr std::uint32_t WITHOUT_ERROR = 0x0;
constexpr std::uint32_t WITH_FAILED_SEGMENT = 0x7;
constexpr std::uint32_t NOT_USED = 0xF;

Payload readLog(core::Device& device) {
    return nvme_access::logPage(
        device, {.logPage = log_pages::DEVICE_SELF_TEST, .bytes = self_test_log::SIZE});
}

std::uint32_t operationOf(const Payload& page) {
    return readBits(page, self_test_log::CurrentDeviceSelfTestOperation,
                    current_self_test_operation::OPERATION);
}

bool isRunning(const Payload& page) {
    return operationOf(page) != 0;
}

std::uint32_t percentOf(const Payload& page) {
    return readBits(page, self_test_log::CurrentDeviceSelfTestCompletion,
                    current_self_test_completion::PERCENT);
}

/// Time that has gone by, by the clock or by the pauses that were made, whichever is more.
class Waiting {
public:
    explicit Waiting(Pause& pause) : pause(pause) {}

    void wait(std::chrono::milliseconds time) {
        pause(time);
        paused += time;
    }

    std::chrono::milliseconds time() const {
        const auto byClock = std::chrono::steady_clock::now() - start;
        return std::max(paused, std::chrono::duration_cast<std::chrono::milliseconds>(byClock));
    }

private:
    Pause& pause;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
    std::chrono::milliseconds paused{0};
};

/// Twice what the drive says, but nobody can wait for hours, nor not at all.
std::chrono::minutes longestWait(std::uint64_t minutes) {
    constexpr std::uint64_t MOST = 10;
    return std::chrono::minutes(minutes == 0 ? MOST : std::min(2 * minutes, MOST));
}

Payload newestResult(const Payload& page) {
    return readEntry(page, self_test_log::RESULTS, 0);
}

std::uint32_t codeOf(const Payload& result) {
    return readBits(result, self_test_result::DeviceSelfTestStatus, self_test_status::RESULT);
}

std::string wordsOf(const Payload& result) {
    const std::uint32_t code = codeOf(result);
    if (code == NOT_USED) return "No device self-test has been run.";
    std::string text = "Unknown result.";
    for (const Outcome& outcome : OUTCOMES) {
        if (outcome.code == code) text = outcome.words;
    }
    if (code != WITH_FAILED_SEGMENT) return text;
    return text + " The first one is segment " +
           std::to_string(protocols::readNumber(result, self_test_result::SegmentNumber)) + ".";
}

std::uint8_t selfTestCode(SelfTest::Type type) {
    switch (type) {
    case SelfTest::Type::SHORT:
        return self_test::SHORT;
    case SelfTest::Type::EXTENDED:
        return self_test::EXTENDED;
    default:
        throw statuses::invalidDriveSelfTestParameters();
    }
}

}  // namespace

NvmeSelfTest::NvmeSelfTest(core::Device& device, Pause pause, Progress progress)
    : device(device),
      pause(std::move(pause)),
      progress(std::move(progress)) {}

Payload NvmeSelfTest::requireSupport() {
    const Payload controller = nvme_access::identify(device, cns::CONTROLLER);
    if (readBits(controller, ic::OACS, oacs::DEVICE_SELF_TEST) == 0)
        throw statuses::driveSelfTestNotSupported();
    return controller;
}

void NvmeSelfTest::send(std::uint8_t code) {
    const auto status =
        nvme_access::ask(device, deviceSelfTest(ALL_NAMESPACES, code)).completion.status;
    if (status == status_codes::SUCCESSFUL_COMPLETION) return;
    if (status == status_codes::DEVICE_SELF_TEST_IN_PROGRESS)
        throw statuses::driveSelfTestInProgress();
    throw failure(std::string(statusText(status)) + ".");
}

void NvmeSelfTest::start(Type type) {
    const std::uint8_t code = selfTestCode(type);
    requireSupport();
    send(code);
}

void NvmeSelfTest::runToEnd(Type type) {
    constexpr std::uint64_t SHORT_MINUTES = 2;  // the standard allows no more
    const std::uint8_t code = selfTestCode(type);
    const Payload controller = requireSupport();
    send(code);
    const Payload page =
        waitForEnd(code, type == Type::EXTENDED ? protocols::readNumber(controller, ic::EDSTT)
                                                : SHORT_MINUTES);
    const Payload result = newestResult(page);
    if (codeOf(result) != WITHOUT_ERROR) throw failure(wordsOf(result));
}

/// Other processes may have to wait as long as this one does.
Payload NvmeSelfTest::waitForEnd(std::uint8_t code, std::uint64_t minutes) {
    constexpr std::chrono::milliseconds BETWEEN_LOOKS{100};
    constexpr std::chrono::minutes WITHOUT_PROGRESS{3};  // a whole short test takes 2 at most
    const std::chrono::minutes longest = longestWait(minutes);
    Waiting waiting(pause);
    std::uint32_t percent = 0;
    std::chrono::milliseconds lastProgress{0};
    do {
        const Payload page = readLog(device);
        if (!isRunning(page)) return page;
        const std::uint32_t now = percentOf(page);
        if (operationOf(page) != code || now > WHOLE)
            throw failure("The drive's log tells nothing sensible of it.");
        if (now > percent) {
            percent = now;
            lastProgress = waiting.time();
        }
        progress(static_cast<std::uint8_t>(percent));
        waiting.wait(BETWEEN_LOOKS);
        if (waiting.time() - lastProgress > WITHOUT_PROGRESS)
            throw failure("It has made no progress for " +
                          std::to_string(WITHOUT_PROGRESS.count()) + " minutes.");
    } while (waiting.time() <= longest);
    throw failure("It has not come to an end after " + std::to_string(longest.count()) +
                  " minutes, and goes on in the drive.");
}

void NvmeSelfTest::abort() {
    requireSupport();
    send(self_test::ABORT);
}

SelfTest::State NvmeSelfTest::state() {
    requireSupport();
    const Payload page = readLog(device);
    if (isRunning(page)) {
        const auto percent = std::min(percentOf(page), std::uint32_t{WHOLE});
        return {"Operation in progress.", static_cast<std::uint8_t>(percent)};
    }
    const Payload result = newestResult(page);
    return {wordsOf(result), codeOf(result) == NOT_USED ? std::uint8_t{0} : WHOLE};
}

}  // namespace orvel::interfaces::orveli::jobs
