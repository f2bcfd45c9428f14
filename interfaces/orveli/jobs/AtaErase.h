// Erases a SATA drive.
#pragma once

#include "core/Device.h"
#include "core/Payload.h"
#include "core/Status.h"
#include "interfaces/orveli/jobs/Pause.h"
#include "protocols/ata/AtaCommands.h"
#include "protocols/ata/ReturnedTaskFile.h"
#include "protocols/ata/SecurityData.h"

#include <cstdint>
#include <functional>

namespace orvel::interfaces::orveli::jobs {

/// All user data of one drive goes. Borrows the device. Each operation throws core::Status by
/// value, from category 10 unless the path failed.
class AtaErase {
public:
    enum class Sanitize { BLOCK_ERASE, CRYPTO_SCRAMBLE };

    /// Is told how much is done, in percent.
    using Progress = std::function<void(std::uint8_t)>;

    /// A sanitize operation runs in the background, looked at with `pause` between two looks.
    AtaErase(core::Device& device, Pause pause, Progress progress);

    /// By BLOCK ERASE EXT if the drive can do that now, else by SECURITY ERASE UNIT: a locked drive
    /// refuses to sanitize. 7 for a drive
    /// in the frozen mode of ATA security, whichever way it would go.
    void eraseAnyWay();

    /// 20, 21 or 22 if the drive can't, 23 if sanitize is frozen, 25 if it failed, 26 if it doesn't
    /// come to an end.
    void sanitize(Sanitize method);

    /// A drive that has a password is erased only if it is the one that an interrupted erase
    /// leaves. 14 if the drive can't, 7 if security is frozen, 36 without the enhanced mode, 10 if
    /// no password can be set, 8 and 9 if the drive refuses the erase.
    void secureErase(protocols::ata::EraseMode mode);

private:
    protocols::ata::ReturnedTaskFile sanitizeStatus();
    void waitForSanitize();

    /// The failure, after the drive was told to forget it: until then it takes hardly a command.
    core::Status withoutSanitizeFailure(const core::Status& failure);

    void setPassword();
    void eraseWithOldPassword(const core::Payload& identify, protocols::ata::EraseMode mode);
    void prepareAndErase(protocols::ata::EraseMode mode);

    /// Throws `refusal` or the path's status, without the password.
    void sendWithPassword(const protocols::ata::AtaCommand& command, const core::Payload& data,
                          const core::Status& refusal);

    /// The failure, after the password that was set for the erase is taken away again.
    core::Status withoutPassword(const core::Status& failure);

    core::Device& device;
    Pause pause;
    Progress progress;
};

}  // namespace orvel::interfaces::orveli::jobs
