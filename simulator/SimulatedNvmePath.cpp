#include "simulator/SimulatedNvmePath.h"

#include "core/CoreStatuses.h"
#include "protocols/nvme/AdminCommand.h"
#include "simulator/NvmeController.h"
#include "simulator/SystemStatus.h"

#include <cerrno>
#include <utility>

namespace orvel::simulator {

namespace nvme = protocols::nvme;

namespace {

/// Only for commands that passed `checkKind`.
const nvme::AdminCommand& adminCommand(const core::Command& command) {
    return dynamic_cast<const nvme::AdminCommand&>(command);
}

}  // namespace

SimulatedNvmePath::SimulatedNvmePath(std::shared_ptr<FleetFolder> folder, std::string devicePath,
                                     Wait wait)
    : SimulatedPath(NAME, std::move(folder), std::move(devicePath), std::move(wait)) {}

std::unique_ptr<core::CommandPath> SimulatedNvmePath::clone() const {
    auto copy = std::make_unique<SimulatedNvmePath>(getFolder(), getDevicePath(), getWait());
    copy->assign(*this);
    return copy;
}

core::Status SimulatedNvmePath::checkKind(const core::Command& command) const {
    return dynamic_cast<const nvme::AdminCommand*>(&command) != nullptr
               ? core::statuses::completedSuccessfully()
               : core::statuses::onlyNvmeCommandsSupported();
}

bool SimulatedNvmePath::isLong(const core::Command& command) const {
    switch (adminCommand(command).getFields().opcode) {
    case nvme::opcodes::FORMAT_NVM:
    case nvme::opcodes::DEVICE_SELF_TEST:
    case nvme::opcodes::FIRMWARE_IMAGE_DOWNLOAD:
    case nvme::opcodes::FIRMWARE_COMMIT:
        return true;
    default:
        return false;
    }
}

SimulatedPath::BytesToCome SimulatedNvmePath::bytesToCome(const core::Command& command) const {
    const nvme::AdminCommandFields& fields = adminCommand(command).getFields();
    return fields.dataDirection == nvme::DataDirection::FROM_DRIVE ? fields.transferLength : 0;
}

core::Status SimulatedNvmePath::refusalStatus() const {
    return core::statuses::nvmeCommandProblem();
}

SimulatedPath::Answer SimulatedNvmePath::execute(SimulatedDrive& drive,
                                                 const core::Command& command,
                                                 const core::Payload& input, const Clock& clock) {
    auto* nvmeDrive = std::get_if<NvmeDrive>(&drive.drive);
    if (!nvmeDrive) throw systemError(ENODEV);
    const auto result = NvmeController(*nvmeDrive, clock).execute(adminCommand(command), input);
    return {result.completion.clone(), result.output, !result.completion.isSuccess()};
}

SimulatedPath::Answer SimulatedNvmePath::refuse(const Fault& fault,
                                                const core::Command& /*command*/) const {
    auto completion = std::make_unique<nvme::CompletionEntry>();
    completion->status = fault.nvmeStatus;
    // A refusal without a reason.
    if (completion->isSuccess()) completion->status = nvme::status_codes::INTERNAL_ERROR;
    completion->doNotRetry = true;
    return {std::move(completion), {}, true};
}

}  // namespace orvel::simulator
