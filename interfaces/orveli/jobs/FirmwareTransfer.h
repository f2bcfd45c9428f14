// How firmware gets into a drive, whatever the drive speaks.
#pragma once

#include "core/Payload.h"
#include "core/Status.h"
#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/firmware_modules/FirmwareModule.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli::jobs {

/// For one drive.
class FirmwareTransfer {
public:
    /// When the drive runs the new firmware.
    enum class Outcome { NOW, AFTER_RESET };

    /// Is told how much of an image is sent, in percent.
    using Progress = std::function<void(std::uint8_t)>;

    virtual ~FirmwareTransfer() = default;

    FirmwareTransfer& operator=(const FirmwareTransfer&) = delete;

    /// The firmware that the drive runs. Throws core::Status by value: 10/69 if it takes no other,
    /// 10/15 if its security is in the way, or the path's status.
    virtual std::string requireReadiness() = 0;

    /// Sends the image and makes it the drive's firmware. Throws core::Status by value: 10/53 with
    /// words, what the drive answers, or the path's status.
    virtual Outcome send(const FirmwareModule& module) = 0;

protected:
    explicit FirmwareTransfer(Progress progress) : progress(std::move(progress)) {}

    FirmwareTransfer(const FirmwareTransfer&) = default;

    void tellProgress(std::uint64_t done, std::uint64_t whole) const {
        constexpr std::uint64_t PERCENT = 100;
        progress(static_cast<std::uint8_t>(std::min(done * PERCENT / whole, PERCENT)));
    }

    static core::Status failure(const std::string& words) {
        return core::withWords(features::statuses::firmwareUpdateFailed(), words);
    }

    /// What must be true after an activation.
    static void requireRunning(const std::string& running, const FirmwareModule& module) {
        if (running != module.version) throw failure("The drive still runs " + running + ".");
    }

    /// `size` bytes of the image from `offset` on, with zeroes behind its end.
    static core::Payload pieceOf(const core::Payload& image, std::uint32_t offset,
                                 std::uint32_t size) {
        core::Payload piece(size);
        std::copy_n(image.data() + offset, std::min(size, image.size() - offset), piece.data());
        return piece;
    }

private:
    Progress progress;
};

}  // namespace orvel::interfaces::orveli::jobs
