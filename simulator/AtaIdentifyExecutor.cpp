// IDENTIFY DEVICE.
#include "protocols/norvo/Structures.h"
#include "simulator/AtaExecutors.h"

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

void writeSecurity(const core::Payload& identify, const AtaSecurity& security) {
    const bool isSupported = id::isSet(identify, id::word_82::SECURITY);
    const auto write = [&](const id::Bits& bits, bool value) {
        id::writeBits(identify, bits, isSupported && value ? 1 : 0);
    };
    write(id::word_85::SECURITY, security.isEnabled);
    write(id::word_128::SUPPORTED, true);
    write(id::word_128::ENABLED, security.isEnabled);
    write(id::word_128::LOCKED, security.isLocked);
    write(id::word_128::FROZEN, security.isFrozen);
    write(id::word_128::COUNT_EXPIRED, security.attemptsLeft == 0);
    write(id::word_128::ENHANCED_ERASE, id::isSet(identify, id::word_128::ENHANCED_ERASE));
    write(id::word_128::MASTER_PASSWORD_CAPABILITY, security.isMaximum);
}

void writePendingFirmware(const core::Payload& identify, const std::string& revision) {
    const auto& field = protocols::norvo::identify_device::PendingFirmware;
    if (revision.empty()) {
        protocols::writeBytes(identify, field, {});
    } else {
        protocols::writeText(identify, field, revision);
    }
}

}  // namespace

core::Payload makeIdentifyDevice(const AtaDrive& drive) {
    const core::Payload identify = drive.identifyDevice.copy();
    writeSecurity(identify, drive.security);
    writePendingFirmware(identify, drive.deferredRevision);
    id::writeIntegrity(identify);
    return identify;
}

AtaAnswer executeIdentifyDevice(AtaDrive& drive, const AtaRequest& /*request*/) {
    return {.output = makeIdentifyDevice(drive)};
}

}  // namespace orvel::simulator
