// Firmware Image Download and Firmware Commit.
#pragma once

#include "core/Device.h"
#include "interfaces/orveli/jobs/FirmwareTransfer.h"

#include <utility>

namespace orvel::interfaces::orveli::jobs {

/// Borrows the device. The drive chooses the slot. An image is activated at once if it may be and
/// the drive can do that.
class NvmeFirmwareTransfer : public FirmwareTransfer {
public:
    NvmeFirmwareTransfer(core::Device& device, Progress progress)
        : FirmwareTransfer(std::move(progress)),
          device(device) {}

    std::string requireReadiness() override;
    Outcome send(const FirmwareModule& module) override;

private:
    void download(const core::Payload& controller, const core::Payload& image);
    Outcome commit(const core::Payload& controller, const FirmwareModule& module);

    core::Device& device;
};

}  // namespace orvel::interfaces::orveli::jobs
