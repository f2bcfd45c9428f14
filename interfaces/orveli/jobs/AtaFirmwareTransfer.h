// DOWNLOAD MICROCODE.
#pragma once

#include "core/Device.h"
#include "interfaces/orveli/jobs/FirmwareTransfer.h"
#include "protocols/ata/AtaCommands.h"

#include <utility>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// Borrows the device. An image goes in segments, by the deferred mode, which leaves the activation
/// to the next power-on, or else by the immediate mode; the other way round if it may be activated
/// at once.
class AtaFirmwareTransfer : public FirmwareTransfer {
public:
    AtaFirmwareTransfer(core::Device& device, Progress progress)
        : FirmwareTransfer(std::move(progress)),
          device(device) {}

    std::string requireReadiness() override;
    Outcome send(const FirmwareModule& module) override;

private:
    struct Segments {
        std::uint32_t blocks;  ///< of the whole image
        std::uint32_t each;    ///< blocks of each but the last
    };

    void sendSegment(const core::Payload& image, const Segments& segments, std::uint32_t offset,
                     protocols::ata::DownloadMode mode);

    /// The mode in which the drive took the first segment.
    protocols::ata::DownloadMode sendFirst(const core::Payload& image, const Segments& segments,
                                           const std::vector<protocols::ata::DownloadMode>& modes);

    core::Device& device;
};

}  // namespace orvel::interfaces::orveli::jobs
