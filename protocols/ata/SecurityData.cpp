#include "protocols/ata/SecurityData.h"

#include "core/CoreStatuses.h"
#include "protocols/ata/Structures.h"

namespace orvel::protocols::ata {

namespace {

core::Payload passwordData(unsigned control, const Password& password) {
    if (password.size() > security_password::Password.size)
        throw core::statuses::invalidArguments();
    core::Payload data(security_password::SIZE);
    writeNumber(data, security_password::Control, control);
    writeBytes(data, security_password::Password, password);
    return data;
}

unsigned kindBit(PasswordKind kind) {
    return kind == PasswordKind::MASTER ? security_control::MASTER_PASSWORD : 0U;
}

}  // namespace

core::Payload userPasswordData(const Password& password, MasterPasswordCapability capability) {
    return passwordData(capability == MasterPasswordCapability::MAXIMUM
                            ? security_control::MASTER_CAPABILITY_MAXIMUM
                            : 0U,
                        password);
}

core::Payload masterPasswordData(const Password& password, std::uint16_t identifier) {
    core::Payload data = passwordData(kindBit(PasswordKind::MASTER), password);
    writeNumber(data, security_password::MasterPasswordIdentifier, identifier);
    return data;
}

core::Payload unlockData(PasswordKind kind, const Password& password) {
    return passwordData(kindBit(kind), password);
}

core::Payload disablePasswordData(PasswordKind kind, const Password& password) {
    return passwordData(kindBit(kind), password);
}

core::Payload eraseUnitData(PasswordKind kind, const Password& password, EraseMode mode) {
    const unsigned enhanced = mode == EraseMode::ENHANCED ? security_control::ENHANCED_ERASE : 0U;
    return passwordData(kindBit(kind) | enhanced, password);
}

}  // namespace orvel::protocols::ata
