#include "interfaces/orveli/access/AtaAccess.h"

#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"

#include <optional>

namespace orvel::interfaces::orveli::ata_access {

using core::Payload;
using core::Status;
using namespace protocols::ata;

namespace {

Status refusal(const AtaCommand& command, const ReturnedTaskFile& returned) {
    return core::withWords(core::statuses::ataCommandProblem(),
                           command.getName() + ": error register 0x" +
                               core::strings::toHexString(returned.error, 2) + ".");
}

Answer accepted(const AtaCommand& command, Answer answer) {
    if (!answer.returned.isSuccess()) throw refusal(command, answer.returned);
    return answer;
}

Payload complete(const AtaCommand& command, const Payload& data) {
    if (data.size() < command.getTransferLength())
        throw core::statuses::ioCommandReturnedTooLittleData();
    return data;
}

/// While SMART is disabled, its logs are closed. The way that is left then, or 10/60 if there is
/// none; nothing if SMART isn't what is in the way.
std::optional<LogAccess> findWayAroundSmart(core::Device& device) {
    using namespace identify_device;
    const AtaCommand command = protocols::ata::identifyDevice();
    const Answer answer = ask(device, command);
    const Payload& data = answer.data;
    if (!answer.returned.isSuccess() || data.size() < command.getTransferLength())
        return std::nullopt;
    if (!isValid(data, word_85::SMART) || isSet(data, word_85::SMART)) return std::nullopt;
    if (isReported(data, word_84::GPL) || isReported(data, word_87::GPL))
        return LogAccess::GENERAL_PURPOSE;
    throw features::statuses::smartNotEnabled();
}

struct SctAnswer {
    LogAccess access;
    AtaCommand command;
    Answer answer;
};

/// `make` is `sctCommand` or `sctStatus`.
SctAnswer askByEitherWay(core::Device& device, AtaCommand (*make)(LogAccess),
                         const Payload& input = {}) {
    SctAnswer first{LogAccess::SMART, make(LogAccess::SMART), {}};
    first.answer = ask(device, first.command, input);
    if (first.answer.returned.isSuccess()) return first;
    const auto other = findWayAroundSmart(device);
    if (!other) return first;
    const AtaCommand command = make(*other);
    return {*other, command, ask(device, command, input)};
}

}  // namespace

Answer ask(core::Device& device, const AtaCommand& command, const Payload& input) {
    const core::CommandResult result = device.sendCommand(command, input);
    const auto* returned = dynamic_cast<const ReturnedTaskFile*>(result.protocolResult.get());
    const bool isAnswered =
        returned != nullptr && (result.status == core::statuses::completedSuccessfully() ||
                                result.status == core::statuses::ataCommandProblem());
    if (!isAnswered) throw result.status;
    return {*returned, result.outputPayload};
}

Answer send(core::Device& device, const AtaCommand& command, const Payload& input) {
    return accepted(command, ask(device, command, input));
}

Payload read(core::Device& device, const AtaCommand& command) {
    return complete(command, send(device, command).data);
}

Payload identifyDevice(core::Device& device) {
    const AtaCommand command = protocols::ata::identifyDevice();
    const Payload data = read(device, command);
    if (identify_device::readIntegrity(data) == identify_device::Integrity::WRONG) {
        Status problem = features::statuses::dataRetrievalFailed();
        problem.setMessage(problem.getMessage() + " " + command.getName() + ": wrong checksum.");
        throw problem;
    }
    return data;
}

std::optional<Payload> tryToIdentify(core::Device& device) {
    try {
        return identifyDevice(device);
    } catch (const Status&) {
        return std::nullopt;
    }
}

bool lacksSct(const Payload& identify, const identify_device::Bits& command) {
    return !identify_device::isSet(identify, identify_device::word_206::SCT) ||
           !identify_device::isSet(identify, command);
}

void requireSct(core::Device& device, const identify_device::Bits& command) {
    const auto identify = tryToIdentify(device);
    if (identify && lacksSct(*identify, command))
        throw features::statuses::featureNotSupportedByDrive();
}

void requireGeneralPurposeLogs(core::Device& device) {
    namespace word_84 = identify_device::word_84;
    constexpr std::uint16_t VALID = 1;
    const auto identify = tryToIdentify(device);
    if (!identify || identify_device::readBits(*identify, word_84::VALIDITY) != VALID) return;
    if (!identify_device::isSet(*identify, word_84::GPL))
        throw features::statuses::featureNotSupportedByDrive();
}

Payload readLog(core::Device& device, std::uint8_t logAddress, std::uint16_t firstPage,
                std::uint16_t pages) {
    return read(device, readLogExt(logAddress, firstPage, pages));
}

Answer askSct(core::Device& device, const Payload& data) {
    return askByEitherWay(device, sctCommand, data).answer;
}

Answer sct(core::Device& device, const Payload& data) {
    const SctAnswer given = askByEitherWay(device, sctCommand, data);
    return accepted(given.command, given.answer);
}

Payload sctStatus(core::Device& device) {
    const SctAnswer given = askByEitherWay(device, protocols::ata::sctStatus);
    return complete(given.command, accepted(given.command, given.answer).data);
}

Payload sctTable(core::Device& device, std::uint16_t tableId, std::uint8_t pages) {
    const SctAnswer given = askByEitherWay(device, sctCommand, sct::readDataTable(tableId));
    accepted(given.command, given.answer);
    return read(device, sctReadData(given.access, pages));
}

std::uint16_t sctFeature(core::Device& device, sct::Feature feature) {
    return sct::returnedValue(sct(device, sct::returnFeatureState(feature)).returned);
}

}  // namespace orvel::interfaces::orveli::ata_access
