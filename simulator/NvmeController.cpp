#include "simulator/NvmeController.h"

#include "simulator/NvmeExecutors.h"

#include <utility>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace identify_fields = identify_controller;

namespace {

/// What a drive doesn't support is as unknown to it as an opcode that nobody has defined.
NvmeAnswer optional(const BitField& capability, NvmeExecutor& executor, NvmeDrive& drive,
                    const NvmeRequest& request) {
    if (!supports(drive, identify_fields::OACS, capability)) {
        return refusal(status_codes::INVALID_COMMAND_OPCODE);
    }
    return executor(drive, request);
}

NvmeAnswer dispatch(NvmeDrive& drive, const NvmeRequest& request) {
    // clang-format off
    switch (request.fields.opcode) {
    case opcodes::GET_LOG_PAGE:            return executeGetLogPage (drive, request);
    case opcodes::IDENTIFY:                return executeIdentify   (drive, request);
    case opcodes::SET_FEATURES:            return executeSetFeatures(drive, request);
    case opcodes::GET_FEATURES:            return executeGetFeatures(drive, request);
    case opcodes::NAMESPACE_MANAGEMENT:    return optional(oacs::NAMESPACE_MANAGEMENT, executeNamespaceManagement, drive, request);
    case opcodes::FIRMWARE_COMMIT:         return optional(oacs::FIRMWARE,             executeFirmwareCommit,      drive, request);
    case opcodes::FIRMWARE_IMAGE_DOWNLOAD: return optional(oacs::FIRMWARE,             executeFirmwareDownload,    drive, request);
    case opcodes::DEVICE_SELF_TEST:        return optional(oacs::DEVICE_SELF_TEST,     executeDeviceSelfTest,      drive, request);
    case opcodes::NAMESPACE_ATTACHMENT:    return optional(oacs::NAMESPACE_MANAGEMENT, executeNamespaceAttachment, drive, request);
    case opcodes::FORMAT_NVM:              return optional(oacs::FORMAT_NVM,           executeFormatNvm,           drive, request);
    default:                               return refusal(status_codes::INVALID_COMMAND_OPCODE);
    }
    // clang-format on
}

/// Some status codes tell of a commit that was carried out, only that a reset is still to come.
bool isRefused(const StatusCode& status) {
    return status != status_codes::SUCCESSFUL_COMPLETION &&
           status != status_codes::FIRMWARE_REQUIRES_CONVENTIONAL_RESET &&
           status != status_codes::FIRMWARE_REQUIRES_NVM_SUBSYSTEM_RESET &&
           status != status_codes::FIRMWARE_REQUIRES_CONTROLLER_LEVEL_RESET;
}

CompletionEntry makeCompletion(const NvmeAnswer& answer) {
    const bool refused = isRefused(answer.status);
    CompletionEntry completion;
    completion.status = answer.status;
    completion.dword0 = refused ? 0 : answer.dword0;
    completion.more = refused;
    completion.doNotRetry = refused && answer.status != status_codes::DEVICE_SELF_TEST_IN_PROGRESS;
    return completion;
}

void countUp(const core::Payload& smartHealthLog, const protocols::Field& counter) {
    protocols::writeWideNumber(smartHealthLog, counter,
                               protocols::readWideNumber(smartHealthLog, counter) + 1);
}

std::size_t errorLogCapacity(const NvmeDrive& drive) {
    return protocols::readNumber(drive.identifyController, identify_fields::ELPE) + 1;
}

/// An entry of the Error Information log page (5.14.1.1).
void logError(NvmeDrive& drive, const AdminCommandFields& fields, const NvmeAnswer& answer) {
    namespace entry_fields = error_information_entry;
    constexpr std::uint16_t NO_PARAMETER = 0xFFFF;
    constexpr std::uint32_t STATUS_OFFSET = 14;

    const auto& errors = smart_health_log::NumberOfErrorInformationLogEntries;
    countUp(drive.smartHealthLog, errors);
    const core::Payload completion = makeCompletion(answer).toBytes();
    const StoredBytes entry(entry_fields::SIZE);
    protocols::writeNumber(entry, entry_fields::ErrorCount,
                           protocols::readNumber(drive.smartHealthLog, errors));
    protocols::writeBytes(entry, entry_fields::StatusField,
                          {completion.at(STATUS_OFFSET), entry_fields::StatusField.size});
    protocols::writeNumber(entry, entry_fields::ParameterErrorLocation, NO_PARAMETER);
    protocols::writeNumber(entry, entry_fields::Namespace, fields.nsid);
    protocols::writeNumber(entry, entry_fields::CommandSpecificInformation,
                           answer.errorInformation);

    drive.errorLog.push_front(entry);
    if (drive.errorLog.size() > errorLogCapacity(drive)) drive.errorLog.pop_back();
}

}  // namespace

NvmeController::NvmeController(NvmeDrive& drive, Clock clock)
    : drive(drive),
      clock(std::move(clock)) {}

NvmeController::Result NvmeController::execute(const AdminCommand& command,
                                               const core::Payload& input) {
    const NvmeRequest request{command.getFields(), input, clock()};
    finishSelfTest(drive, request.now);
    const NvmeAnswer answer = dispatch(drive, request);
    if (!isRefused(answer.status)) return {makeCompletion(answer), answer.output};
    logError(drive, request.fields, answer);
    return {makeCompletion(answer), {}};
}

NvmeController::Result NvmeController::refuse(const AdminCommand& command,
                                              const StatusCode& status) {
    const NvmeAnswer answer = refusal(status);
    if (isRefused(status)) logError(drive, command.getFields(), answer);
    return {makeCompletion(answer), {}};
}

void NvmeController::catchUp() {
    finishSelfTest(drive, clock());
}

void NvmeController::powerCycle() {
    finishSelfTest(drive, clock());
    // An extended self-test resumes when power is back.
    if (drive.runningSelfTest && drive.runningSelfTest->code == self_test::SHORT) {
        endSelfTest(drive, self_test_results::ABORTED_BY_RESET);
    }
    activateFirmware(drive, drive.nextSlot != 0 ? drive.nextSlot : drive.activeSlot);
    drive.downloadedImage.clear();
    for (auto& [id, feature] : drive.features)
        feature.current.clear();
    countUp(drive.smartHealthLog, smart_health_log::PowerCycles);
    // Nobody has told the drive to shut down.
    countUp(drive.smartHealthLog, smart_health_log::UnsafeShutdowns);
}

}  // namespace orvel::simulator
