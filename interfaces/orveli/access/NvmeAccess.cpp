#include "interfaces/orveli/access/NvmeAccess.h"

#include "core/CommandResult.h"
#include "core/CoreStatuses.h"
#include "core/StatusWords.h"

namespace orvel::interfaces::orveli::nvme_access {

using core::Payload;
using core::Status;
using namespace protocols::nvme;

namespace {

Payload read(core::Device& device, const AdminCommand& command) {
    const Payload data = send(device, command).data;
    if (data.size() < command.getFields().transferLength)
        throw core::statuses::ioCommandReturnedTooLittleData();
    return data;
}

}  // namespace

Answer ask(core::Device& device, const AdminCommand& command, const Payload& input) {
    const core::CommandResult result = device.sendCommand(command, input);
    const auto* completion = dynamic_cast<const CompletionEntry*>(result.protocolResult.get());
    const bool isAnswered =
        completion != nullptr && (result.status == core::statuses::completedSuccessfully() ||
                                  result.status == core::statuses::nvmeCommandProblem());
    if (!isAnswered) throw result.status;
    return {*completion, result.outputPayload};
}

Answer send(core::Device& device, const AdminCommand& command, const Payload& input) {
    Answer answer = ask(device, command, input);
    if (!answer.completion.isSuccess()) throw refusal(command, answer.completion.status);
    return answer;
}

Status refusal(const AdminCommand& command, const StatusCode& status) {
    return core::withWords(core::statuses::nvmeCommandProblem(),
                           command.getName() + ": " + statusText(status) + ".");
}

Payload identify(core::Device& device, std::uint8_t cns, std::uint32_t nsid,
                 std::uint16_t controllerId) {
    return read(device, protocols::nvme::identify(cns, nsid, controllerId));
}

Payload logPage(core::Device& device, const LogPageRequest& request) {
    return read(device, getLogPage(request));
}

std::uint32_t feature(core::Device& device, const FeatureRequest& request) {
    return send(device, getFeatures(request)).completion.dword0;
}

}  // namespace orvel::interfaces::orveli::nvme_access
