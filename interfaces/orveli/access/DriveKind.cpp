#include "interfaces/orveli/access/DriveKind.h"

#include "protocols/ata/AtaCommand.h"
#include "protocols/nvme/AdminCommand.h"

namespace orvel::interfaces::orveli {

bool isNvme(const core::Device& device) {
    return device.supportsCommandSet(protocols::nvme::ADMIN_COMMAND_SET);
}

bool isAta(const core::Device& device) {
    return device.supportsCommandSet(protocols::ata::AtaCommand::COMMAND_SET);
}

}  // namespace orvel::interfaces::orveli
