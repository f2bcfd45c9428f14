// Admin commands to a device, for jobs: sent, checked, and their data handed over.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "protocols/nvme/AdminCommands.h"
#include "protocols/nvme/CompletionEntry.h"

#include <cstdint>

namespace orvel::interfaces::orveli::nvme_access {

struct Answer {
    protocols::nvme::CompletionEntry completion;
    core::Payload data;
};

/// The drive's answer, also a refusal. Throws core::Status by value if there is none: the path's
/// status.
Answer ask(core::Device& device, const protocols::nvme::AdminCommand& command,
           const core::Payload& input = {});

/// As `ask`, and throws 0/25 with the drive's words for a refusal.
Answer send(core::Device& device, const protocols::nvme::AdminCommand& command,
            const core::Payload& input = {});

/// 0/25 with the drive's words.
core::Status refusal(const protocols::nvme::AdminCommand& command,
                     const protocols::nvme::StatusCode& status);

// Whole structures. As `send`, and throw 0/49 for fewer bytes than were asked for.
core::Payload identify(core::Device& device, std::uint8_t cns, std::uint32_t nsid = 0,
                       std::uint16_t controllerId = 0);
core::Payload logPage(core::Device& device, const protocols::nvme::LogPageRequest& request);

/// The feature's dword. As `send`.
std::uint32_t feature(core::Device& device, const protocols::nvme::FeatureRequest& request);

}  // namespace orvel::interfaces::orveli::nvme_access
