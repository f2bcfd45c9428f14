#include "simulator/SimulatedAtaPath.h"

#include "core/CoreStatuses.h"
#include "protocols/ata/AtaCommand.h"
#include "protocols/ata/CommandCodes.h"
#include "simulator/AtaController.h"
#include "simulator/SystemStatus.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace orvel::simulator {

namespace ata = protocols::ata;

namespace {

struct LongCommand {
    std::uint8_t command;
    std::uint16_t feature;
};

// clang-format off
constexpr LongCommand LONG_COMMANDS[] = {
//   command                                 feature
    {ata::command_codes::SMART,              ata::smart_subcommands::EXECUTE_OFF_LINE_IMMEDIATE},
    {ata::command_codes::SANITIZE_DEVICE,    ata::sanitize_subcommands::CRYPTO_SCRAMBLE_EXT},
    {ata::command_codes::SANITIZE_DEVICE,    ata::sanitize_subcommands::BLOCK_ERASE_EXT},
    {ata::command_codes::SANITIZE_DEVICE,    ata::sanitize_subcommands::OVERWRITE_EXT},
};

// clang-format on

/// Only for commands that passed `checkKind`.
const ata::AtaCommand& ataCommand(const core::Command& command) {
    return dynamic_cast<const ata::AtaCommand&>(command);
}

bool isFromDrive(ata::Protocol protocol) {
    return protocol == ata::Protocol::PIO_IN || protocol == ata::Protocol::DMA_IN;
}

}  // namespace

SimulatedAtaPath::SimulatedAtaPath(std::shared_ptr<FleetFolder> folder, std::string devicePath,
                                   Wait wait)
    : SimulatedPath(NAME, std::move(folder), std::move(devicePath), std::move(wait)) {}

std::unique_ptr<core::CommandPath> SimulatedAtaPath::clone() const {
    auto copy = std::make_unique<SimulatedAtaPath>(getFolder(), getDevicePath(), getWait());
    copy->assign(*this);
    return copy;
}

core::Status SimulatedAtaPath::checkKind(const core::Command& command) const {
    return dynamic_cast<const ata::AtaCommand*>(&command) != nullptr
               ? core::statuses::completedSuccessfully()
               : core::statuses::onlyAtaCommandsSupported();
}

bool SimulatedAtaPath::isLong(const core::Command& command) const {
    const ata::TaskFile& taskFile = ataCommand(command).getTaskFile();
    switch (taskFile.command) {
    case ata::command_codes::SECURITY_ERASE_UNIT:
    case ata::command_codes::DOWNLOAD_MICROCODE:
        return true;
    default:
        return std::ranges::any_of(LONG_COMMANDS, [&](const LongCommand& row) {
            return row.command == taskFile.command && row.feature == taskFile.feature;
        });
    }
}

SimulatedPath::BytesToCome SimulatedAtaPath::bytesToCome(const core::Command& command) const {
    const ata::AtaCommand& own = ataCommand(command);
    return isFromDrive(own.getProtocol()) ? own.getTransferLength() : 0;
}

core::Status SimulatedAtaPath::refusalStatus() const {
    return core::statuses::ataCommandProblem();
}

SimulatedPath::Answer SimulatedAtaPath::execute(SimulatedDrive& drive, const core::Command& command,
                                                const core::Payload& input, const Clock& clock) {
    auto* ataDrive = std::get_if<AtaDrive>(&drive.drive);
    if (!ataDrive) throw systemError(ENODEV);
    const auto result = AtaController(*ataDrive, clock).execute(ataCommand(command), input);
    return {result.returned.clone(), result.output, !result.returned.isSuccess(), result.duration};
}

SimulatedPath::Answer SimulatedAtaPath::refuse(SimulatedDrive& /*drive*/, const Fault& fault,
                                               const core::Command& command) const {
    const ata::TaskFile& taskFile = ataCommand(command).getTaskFile();
    auto returned = std::make_unique<ata::ReturnedTaskFile>();
    returned->status = ata::status_bits::DRDY | ata::status_bits::ERR;
    returned->error = fault.ataError;
    returned->device = taskFile.device;
    returned->is48Bit = taskFile.is48Bit;
    return {std::move(returned), {}, true};
}

}  // namespace orvel::simulator
