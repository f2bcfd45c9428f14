#include "interfaces/orveli/jobs/AtaSelfTest.h"

#include "core/Strings.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/jobs/TimeLimit.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/Smart.h"
#include "protocols/ata/StatusCodes.h"
#include "protocols/ata/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
using namespace protocols::ata;
namespace statuses = features::statuses;

namespace {

/// What differs from one test to the other.
struct Test {
    SelfTest::Type type;
    OfflineSubcommand offline;
    OfflineSubcommand captive;
    std::uint8_t capability;
    const protocols::Field& minutes;
};

using enum OfflineSubcommand;
using enum SelfTest::Type;
namespace can = offline_collection_capability;

// clang-format off
//  type        offline               captive                       capability                 recommended polling time
constexpr Test TESTS[] = {
  { SHORT,      SHORT_SELF_TEST,      CAPTIVE_SHORT_SELF_TEST,      can::SELF_TEST,            smart_data::ShortSelfTestPollingMinutes},
  { EXTENDED,   EXTENDED_SELF_TEST,   CAPTIVE_EXTENDED_SELF_TEST,   can::SELF_TEST,            smart_data::ExtendedSelfTestPollingMinutes},
  { CONVEYANCE, CONVEYANCE_SELF_TEST, CAPTIVE_CONVEYANCE_SELF_TEST, can::CONVEYANCE_SELF_TEST, smart_data::ConveyanceSelfTestPollingMinutes},
};

// clang-format on

const Test& testOf(SelfTest::Type type) {
    for (const Test& test : TESTS) {
        if (test.type == type) return test;
    }
    throw statuses::invalidDriveSelfTestParameters();
}

constexpr std::uint8_t WITHOUT_ERROR = 0x0;
constexpr std::uint8_t IN_PROGRESS = 0xF;

void requireSelfTests(const Payload& identify) {
    using namespace identify_device;
    const bool hasSelfTests = isReported(identify, word_84::SMART_SELF_TEST) ||
                              isReported(identify, word_87::SMART_SELF_TEST);
    if (!isReported(identify, word_82::SMART) || !hasSelfTests)
        throw statuses::smartSelfTestNotSupported();
    if (!isReported(identify, word_85::SMART)) throw statuses::smartNotEnabled();
}

SelfTestExecution execution(const Payload& smartData) {
    return selfTestExecution(
        static_cast<std::uint8_t>(readNumber(smartData, smart_data::SelfTestExecutionStatus)));
}

/// Twice what the drive recommends.
std::int32_t captiveSeconds(const Payload& smartData, const Test& test) {
    constexpr std::uint64_t SEE_WORD = 0xFF;
    constexpr std::uint64_t SECONDS = 60;
    std::uint64_t minutes = readNumber(smartData, test.minutes);
    if (test.type == EXTENDED && minutes == SEE_WORD) {
        minutes = readNumber(smartData, smart_data::ExtendedSelfTestPollingMinutesWord);
    }
    return static_cast<std::int32_t>(2 * minutes * SECONDS);
}

}  // namespace

Payload AtaSelfTest::smartData() {
    requireSelfTests(ata_access::identifyDevice(device));
    return ata_access::read(device, smartReadData());
}

/// A drive would end a running test for the new one.
Payload AtaSelfTest::requireStartable(Type type) {
    const Payload data = smartData();
    const auto capabilities = readNumber(data, smart_data::OfflineDataCollectionCapability);
    if ((capabilities & testOf(type).capability) == 0) throw statuses::smartSelfTestNotSupported();
    if (execution(data).status == IN_PROGRESS) throw statuses::driveSelfTestInProgress();
    return data;
}

void AtaSelfTest::start(Type type) {
    requireStartable(type);
    const auto answer = ata_access::ask(device, smartExecuteOfflineImmediate(testOf(type).offline));
    if (!answer.returned.isSuccess()) throw failure("The drive refused to start it.");
}

/// A test that failed makes the drive refuse the command; what failed is in the SMART data.
void AtaSelfTest::runToEnd(Type type) {
    const Test& test = testOf(type);
    const Payload before = requireStartable(type);
    const TimeLimit limit(device, AtaCommand::COMMAND_SET, captiveSeconds(before, test));
    const auto answer = ata_access::ask(device, smartExecuteOfflineImmediate(test.captive));
    const std::uint8_t status = execution(ata_access::read(device, smartReadData())).status;
    // Perhaps the drive only started it, whatever it was told.
    if (status == IN_PROGRESS) throw statuses::driveSelfTestInProgress();
    if (status != WITHOUT_ERROR) throw failure(statusText(StatusType::SELF_TEST, status));
    if (!answer.returned.isSuccess()) throw failure("The drive refused to start it.");
}

void AtaSelfTest::abort() {
    requireSelfTests(ata_access::identifyDevice(device));
    const auto answer = ata_access::ask(device, smartExecuteOfflineImmediate(ABORT_SELF_TEST));
    if (!answer.returned.isSuccess()) throw failure("The drive refused to abort it.");
}

SelfTest::State AtaSelfTest::state() {
    const auto now = execution(smartData());
    const int done = WHOLE - now.percentRemaining;
    return {statusText(StatusType::SELF_TEST, now.status),
            static_cast<std::uint8_t>(done < 0 ? 0 : done)};
}

}  // namespace orvel::interfaces::orveli::jobs
