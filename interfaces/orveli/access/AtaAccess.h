// ATA commands to a device, for jobs: sent, checked, and their data handed over.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "protocols/ata/Sct.h"

#include <cstdint>
#include <optional>

namespace orvel::interfaces::orveli::ata_access {

struct Answer {
    protocols::ata::ReturnedTaskFile returned;
    core::Payload data;
};

/// The drive's answer, also a refusal. Throws core::Status by value if there is none: the path's
/// status.
Answer ask(core::Device& device, const protocols::ata::AtaCommand& command,
           const core::Payload& input = {});

/// As `ask`, and throws 0/10 with the command's name and the ERROR field for a refusal.
Answer send(core::Device& device, const protocols::ata::AtaCommand& command,
            const core::Payload& input = {});

/// As `send`, and throws 0/49 for fewer bytes than were asked for.
core::Payload read(core::Device& device, const protocols::ata::AtaCommand& command);

/// IDENTIFY DEVICE data. As `read`, and throws 10/33 if its checksum is wrong.
core::Payload identifyDevice(core::Device& device);

/// Pages of a log by READ LOG EXT. As `read`.
core::Payload readLog(core::Device& device, std::uint8_t logAddress, std::uint16_t firstPage,
                      std::uint16_t pages);

// What a drive lacks by its own word is better not asked for: it would log the refusal as an error.

/// As `identifyDevice`, but nothing if the data can't be had or believed: what depends on it is
/// then up to the drive.
std::optional<core::Payload> tryToIdentify(core::Device& device);

/// Whether IDENTIFY DEVICE data says that the drive hasn't this SCT command, of word 206.
bool lacksSct(const core::Payload& identify, const protocols::ata::identify_device::Bits& command);

/// Throws 10/3 for a drive that says so.
void requireSct(core::Device& device, const protocols::ata::identify_device::Bits& command);

/// Throws 10/3 for a drive that says that it hasn't the General Purpose Logging feature set.
void requireGeneralPurposeLogs(core::Device& device);

// SCT through SMART logs, or while SMART is disabled by General Purpose Logging. As `send` and
// `read`, and each throws 10/60 for a drive with SMART disabled that has nothing else.

/// Gives the SCT command of `data` and returns the drive's answer, also a refusal.
Answer askSct(core::Device& device, const core::Payload& data);

/// The same, but throws a refusal.
Answer sct(core::Device& device, const core::Payload& data);
core::Payload sctStatus(core::Device& device);
core::Payload sctTable(core::Device& device, std::uint16_t tableId, std::uint8_t pages);

/// State of an SCT feature.
std::uint16_t sctFeature(core::Device& device, protocols::ata::sct::Feature feature);

}  // namespace orvel::interfaces::orveli::ata_access
