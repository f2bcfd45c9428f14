// The 512 bytes that the security commands bring to the drive.
#pragma once

#include "core/Payload.h"

#include <cstdint>

namespace orvel::protocols::ata {

/// Bits of the control word: ACS-4, the tables of the security commands' data content.
namespace security_control {
inline constexpr std::uint16_t MASTER_PASSWORD = 1U << 0;            ///< 0 = user password
inline constexpr std::uint16_t ENHANCED_ERASE = 1U << 1;             ///< of SECURITY ERASE UNIT
inline constexpr std::uint16_t MASTER_CAPABILITY_MAXIMUM = 1U << 8;  ///< of SECURITY SET PASSWORD
}  // namespace security_control

enum class PasswordKind { USER, MASTER };
enum class MasterPasswordCapability { HIGH, MAXIMUM };
enum class EraseMode { NORMAL, ENHANCED };

/// The bytes as they go to the drive: up to 32, filled up with zeroes. A longer one makes the
/// functions below throw core::Status by value, code 36: cut, it would lock the owner out.
using Password = core::Payload;

// The data of SECURITY SET PASSWORD. The capability comes with the user password, the identifier
// with the master password.
core::Payload userPasswordData(const Password& password, MasterPasswordCapability capability);
core::Payload masterPasswordData(const Password& password, std::uint16_t identifier);

core::Payload unlockData(PasswordKind kind, const Password& password);
core::Payload disablePasswordData(PasswordKind kind, const Password& password);
core::Payload eraseUnitData(PasswordKind kind, const Password& password, EraseMode mode);

}  // namespace orvel::protocols::ata
