// The security commands of SATA drives.
#include "protocols/ata/SecurityData.h"
#include "simulator/AtaExecutors.h"

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

constexpr std::uint8_t MOST_ATTEMPTS = 5;

/// What the 512 bytes of a security command say.
struct SecurityRequest {
    std::uint16_t control = 0;
    StoredBytes password;
    std::uint16_t masterIdentifier = 0;

    bool has(std::uint16_t bit) const { return (control & bit) != 0; }
};

/// Nothing for data that is too short.
std::optional<SecurityRequest> readRequest(const core::Payload& input) {
    namespace fields = security_password;
    if (input.size() < fields::SIZE) return {};
    SecurityRequest request;
    request.control = static_cast<std::uint16_t>(readNumber(input, fields::Control));
    request.password = StoredBytes(readBytes(input, fields::Password));
    request.masterIdentifier =
        static_cast<std::uint16_t>(readNumber(input, fields::MasterPasswordIdentifier));
    return request;
}

/// There is no user password before security has been enabled.
bool isPasswordRight(const AtaSecurity& security, const SecurityRequest& request) {
    if (request.has(security_control::MASTER_PASSWORD)) {
        return request.password == security.masterPassword;
    }
    return security.isEnabled && request.password == security.userPassword;
}

/// At the level Maximum the master password is good for nothing but to erase.
bool mayUnlock(const AtaSecurity& security, const SecurityRequest& request) {
    const bool isUseless = security.isMaximum && request.has(security_control::MASTER_PASSWORD);
    return !isUseless && isPasswordRight(security, request);
}

/// The master password stays.
void disable(AtaSecurity& security) {
    security.isEnabled = false;
    security.isLocked = false;
    security.isMaximum = false;
    security.userPassword = AtaSecurity().userPassword;
}

/// 0000h and FFFFh say that there is no identifier.
void setMasterPassword(AtaDrive& drive, const SecurityRequest& request) {
    constexpr std::uint16_t NONE = 0x0000;
    constexpr std::uint16_t NONE_EITHER = 0xFFFF;
    drive.security.masterPassword = request.password;
    const auto own = readNumber(drive.identifyDevice, id::MasterPasswordIdentifier);
    const bool hasIdentifiers = own != NONE && own != NONE_EITHER;
    const bool isIdentifier =
        request.masterIdentifier != NONE && request.masterIdentifier != NONE_EITHER;
    if (hasIdentifiers && isIdentifier) {
        writeNumber(drive.identifyDevice, id::MasterPasswordIdentifier, request.masterIdentifier);
    }
}

}  // namespace

AtaAnswer executeSecuritySetPassword(AtaDrive& drive, const AtaRequest& request) {
    const auto wanted = readRequest(request.input);
    if (!wanted) return aborted();
    if (wanted->has(security_control::MASTER_PASSWORD)) {
        setMasterPassword(drive, *wanted);
        return {};
    }
    drive.security.userPassword = wanted->password;
    drive.security.isMaximum = wanted->has(security_control::MASTER_CAPABILITY_MAXIMUM);
    drive.security.isEnabled = true;
    return {};
}

AtaAnswer executeSecurityUnlock(AtaDrive& drive, const AtaRequest& request) {
    AtaSecurity& security = drive.security;
    const auto wanted = readRequest(request.input);
    if (!wanted || security.attemptsLeft == 0) return aborted();
    if (!mayUnlock(security, *wanted)) {
        if (security.isLocked) --security.attemptsLeft;
        return aborted();
    }
    security.isLocked = false;
    return {};
}

AtaAnswer executeSecurityErasePrepare(AtaDrive& /*drive*/, const AtaRequest& /*request*/) {
    return {};  // the controller remembers it
}

AtaAnswer executeSecurityEraseUnit(AtaDrive& drive, const AtaRequest& request) {
    AtaSecurity& security = drive.security;
    const auto wanted = readRequest(request.input);
    if (!wanted || !drive.volatileState.isErasePrepared || security.attemptsLeft == 0)
        return aborted();
    if (!isPasswordRight(security, *wanted)) return aborted();
    if (wanted->has(security_control::ENHANCED_ERASE) &&
        !supports(drive, id::word_128::ENHANCED_ERASE)) {
        return aborted();
    }
    disable(security);
    eraseUserData(drive, request.now);
    return {};
}

AtaAnswer executeSecurityFreezeLock(AtaDrive& drive, const AtaRequest& /*request*/) {
    drive.security.isFrozen = true;
    return {};
}

AtaAnswer executeSecurityDisablePassword(AtaDrive& drive, const AtaRequest& request) {
    const auto wanted = readRequest(request.input);
    if (!wanted || !mayUnlock(drive.security, *wanted)) return aborted();
    disable(drive.security);
    return {};
}

void resetSecurity(AtaDrive& drive) {
    AtaSecurity& security = drive.security;
    security.isLocked = security.isEnabled;
    // A locked drive can't be frozen: nobody could unlock it.
    security.isFrozen = security.isFrozenAtPowerOn && !security.isLocked;
    drive.volatileState.isErasePrepared = false;
    security.attemptsLeft = MOST_ATTEMPTS;
}

}  // namespace orvel::simulator
