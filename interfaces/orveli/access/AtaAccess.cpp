#include "interfaces/orveli/access/AtaAccess.h"

#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/Strings.h"
#include "features/FeatureStatuses.h"

namespace orvel::interfaces::orveli::ata_access {

using core::Payload;
using core::Status;
using namespace protocols::ata;

namespace {

constexpr LogAccess ACCESS = LogAccess::SMART;

Status refusal(const AtaCommand& command, const ReturnedTaskFile& returned) {
    Status problem = core::statuses::ataCommandProblem();
    problem.setMessage(problem.getMessage() + " " + command.getName() + ": error register 0x" +
                       core::strings::toHexString(returned.error, 2) + ".");
    return problem;
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
    Answer answer = ask(device, command, input);
    if (!answer.returned.isSuccess()) throw refusal(command, answer.returned);
    return answer;
}

Payload read(core::Device& device, const AtaCommand& command) {
    const Payload data = send(device, command).data;
    if (data.size() < command.getTransferLength())
        throw core::statuses::ioCommandReturnedTooLittleData();
    return data;
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

Answer sct(core::Device& device, const Payload& data) {
    return send(device, sctCommand(ACCESS), data);
}

Payload sctStatus(core::Device& device) {
    return read(device, protocols::ata::sctStatus(ACCESS));
}

Payload sctTable(core::Device& device, std::uint16_t tableId, std::uint8_t pages) {
    sct(device, sct::readDataTable(tableId));
    return read(device, sctReadData(ACCESS, pages));
}

std::uint16_t sctFeature(core::Device& device, sct::Feature feature) {
    return sct::returnedValue(sct(device, sct::returnFeatureState(feature)).returned);
}

void setSctFeature(core::Device& device, sct::Feature feature, std::uint16_t state) {
    sct(device, sct::setFeature(feature, state, sct::FeatureLifetime::OVER_POWER_OFF));
}

}  // namespace orvel::interfaces::orveli::ata_access
