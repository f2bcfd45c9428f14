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

NvmeDrive& nvmeDrive(SimulatedDrive& drive) {
    auto* found = std::get_if<NvmeDrive>(&drive.drive);
    if (!found) throw systemError(ENODEV);
    return *found;
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
    const auto result =
        NvmeController(nvmeDrive(drive), clock).execute(adminCommand(command), input);
    return {result.completion.clone(), result.output, !result.completion.isSuccess()};
}

SimulatedPath::Answer SimulatedNvmePath::refuse(SimulatedDrive& drive, const Fault& fault,
                                                const core::Command& command) const {
    // A refusal without a reason.
    const bool hasReason = !(fault.nvmeStatus == nvme::status_codes::SUCCESSFUL_COMPLETION);
    const auto status = hasReason ? fault.nvmeStatus : nvme::status_codes::INTERNAL_ERROR;
    const auto result = NvmeController(nvmeDrive(drive), {}).refuse(adminCommand(command), status);
    return {result.completion.clone(), {}, true};
}

}  // namespace orvel::simulator
