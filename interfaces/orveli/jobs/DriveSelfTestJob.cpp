#include "interfaces/orveli/jobs/DriveSelfTestJob.h"

#include "core/Strings.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/jobs/AtaSelfTest.h"
#include "interfaces/orveli/jobs/NvmeSelfTest.h"

#include <utility>

namespace orvel::interfaces::orveli::jobs {

using core::Status;
using core::strings::equals;
namespace properties = features::drive_self_test;
namespace words = features::drive_self_test::constants;

namespace {

struct Test {
    const char* word;
    SelfTest::Type type;
};

constexpr Test TESTS[] = {{words::TEST_TYPE_SHORT, SelfTest::Type::SHORT},
                          {words::TEST_TYPE_EXTENDED, SelfTest::Type::EXTENDED},
                          {words::TEST_TYPE_CONVEYANCE, SelfTest::Type::CONVEYANCE}};

const Test* findTest(const std::string& word) {
    for (const Test& test : TESTS) {
        if (equals(word, test.word, true)) return &test;
    }
    return nullptr;
}

}  // namespace

DriveSelfTestJob::DriveSelfTestJob(Pause pause)
    : DriveJob(DriveSelfTest, Kind::ANY, "Drive Self-Test"),
      pause(std::move(pause)) {}

std::unique_ptr<Job> DriveSelfTestJob::clone() const {
    return std::make_unique<DriveSelfTestJob>(pause);
}

Status DriveSelfTestJob::runMethod(std::unique_ptr<core::xml::XmlElement>& response) {
    return reportEach(response);
}

std::string DriveSelfTestJob::wantedType() const {
    std::string word = findArgument(properties::TestType()).value_or(words::TEST_TYPE_SHORT);
    const bool isKnown = findTest(word) != nullptr || equals(word, words::TEST_TYPE_STATUS, true) ||
                         equals(word, words::TEST_TYPE_ABORT, true);
    if (!isKnown) throw features::statuses::invalidDriveSelfTestParameters();
    return word;
}

DriveSelfTestJob::Mode DriveSelfTestJob::wantedMode() const {
    const std::string word = findArgument(properties::Mode()).value_or(words::CAPTIVE_MODE);
    if (equals(word, words::CAPTIVE_MODE, true)) return Mode::CAPTIVE;
    if (equals(word, words::OFFLINE_MODE, true)) return Mode::OFFLINE;
    throw features::statuses::invalidDriveSelfTestParameters();
}

std::unique_ptr<SelfTest> DriveSelfTestJob::selfTestOf(core::Device& device) {
    if (isAta(device)) return std::make_unique<AtaSelfTest>(device);
    return std::make_unique<NvmeSelfTest>(device, pause, [this](std::uint8_t percent) {
        setProgress(percent);
        reportProgress();
    });
}

Status DriveSelfTestJob::report(core::Device& device, core::xml::XmlObject& drive) {
    const std::string type = wantedType();
    const Mode mode = wantedMode();
    const auto selfTest = selfTestOf(device);
    const Test* test = findTest(type);
    if (test != nullptr && mode == Mode::CAPTIVE) selfTest->runToEnd(test->type);
    if (test != nullptr && mode == Mode::OFFLINE) selfTest->start(test->type);
    if (equals(type, words::TEST_TYPE_ABORT, true)) selfTest->abort();

    const SelfTest::State state = selfTest->state();
    if (test != nullptr) put(drive, properties::TestType(), std::string(test->word));
    put(drive, properties::SelfTestStatus(), state.words);
    put(drive, properties::SelfTestProgress(), state.percent);
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
