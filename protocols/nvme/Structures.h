// The structures that drives return and take, as NVM Express Base Specification 1.4 lays them out.
// In each namespace: a constant for each row of the table of the same name, all rows as `ALL`,
// and the size in bytes.
#pragma once

#include "core/Payload.h"
#include "protocols/Entries.h"
#include "protocols/Field.h"
#include "protocols/nvme/BitField.h"

#include <cstdint>
#include <span>
#include <vector>

namespace orvel::protocols::nvme {

/// Identify Controller data structure.
namespace identify_controller {
inline constexpr std::uint32_t SIZE = 4096;
#define FIELD_TABLE "protocols/nvme/IdentifyController.def"
#include "protocols/FieldTable.def"

/// As power_state_descriptor tells.
inline constexpr Entries POWER_STATES{2048, 32, 32};
}  // namespace identify_controller

/// Power State Descriptor data structure.
namespace power_state_descriptor {
inline constexpr std::uint32_t SIZE = 32;
#define FIELD_TABLE "protocols/nvme/PowerStateDescriptor.def"
#include "protocols/FieldTable.def"
}  // namespace power_state_descriptor

/// Identify Namespace data structure.
namespace identify_namespace {
inline constexpr std::uint32_t SIZE = 4096;
#define FIELD_TABLE "protocols/nvme/IdentifyNamespace.def"
#include "protocols/FieldTable.def"

/// As lba_format tells.
inline constexpr Entries LBA_FORMATS{128, 4, 16};
}  // namespace identify_namespace

/// LBA Format data structure.
namespace lba_format {
inline constexpr std::uint32_t SIZE = 4;
#define FIELD_TABLE "protocols/nvme/LbaFormat.def"
#include "protocols/FieldTable.def"
}  // namespace lba_format

/// What the host tells when it creates a namespace.
namespace namespace_management {
inline constexpr std::uint32_t SIZE = 4096;
#define FIELD_TABLE "protocols/nvme/NamespaceManagement.def"
#include "protocols/FieldTable.def"
}  // namespace namespace_management

/// An entry of the Error Information log page.
namespace error_information_entry {
inline constexpr std::uint32_t SIZE = 64;
#define FIELD_TABLE "protocols/nvme/ErrorInformationEntry.def"
#include "protocols/FieldTable.def"
}  // namespace error_information_entry

/// SMART / Health Information log page.
namespace smart_health_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/nvme/SmartHealthLog.def"
#include "protocols/FieldTable.def"
}  // namespace smart_health_log

/// Firmware Slot Information log page.
namespace firmware_slot_log {
inline constexpr std::uint32_t SIZE = 512;
#define FIELD_TABLE "protocols/nvme/FirmwareSlotLog.def"
#include "protocols/FieldTable.def"

/// The revisions; entry 0 belongs to slot 1.
inline constexpr Entries SLOTS{8, 8, 7};
}  // namespace firmware_slot_log

/// Commands Supported and Effects log page.
namespace commands_effects_log {
inline constexpr std::uint32_t SIZE = 4096;
#define FIELD_TABLE "protocols/nvme/CommandsEffectsLog.def"
#include "protocols/FieldTable.def"

/// One for each opcode; group `effects` tells the bits.
inline constexpr Entries ADMIN_COMMANDS{0, 4, 256};
inline constexpr Entries IO_COMMANDS{1024, 4, 256};
/// The row of each.
inline constexpr Field EFFECTS{"Effects", "Commands Supported and Effects data structure", 0, 4,
                               Encoding::NUMBER};
}  // namespace commands_effects_log

/// Device Self-test log page.
namespace self_test_log {
inline constexpr std::uint32_t SIZE = 564;
#define FIELD_TABLE "protocols/nvme/SelfTestLog.def"
#include "protocols/FieldTable.def"

/// Newest first, as self_test_result tells.
inline constexpr Entries RESULTS{4, 28, 20};
}  // namespace self_test_log

/// Self-test Result data structure.
namespace self_test_result {
inline constexpr std::uint32_t SIZE = 28;
#define FIELD_TABLE "protocols/nvme/SelfTestResult.def"
#include "protocols/FieldTable.def"
}  // namespace self_test_result

// The bits inside fields: namespaces `oacs`, `flbas` and so on, for `readBits` and `writeBits`.
#define BIT_TABLE "protocols/nvme/StructureBits.def"
#include "protocols/nvme/BitTable.def"

/// The entries of the Error Information log page, of which a drive keeps `count`: one more than
/// field ELPE of Identify Controller tells. Newest first.
constexpr Entries errorInformationEntries(std::uint32_t count) {
    return {0, error_information_entry::SIZE, count};
}

/// Namespace List: 1024 identifiers, ascending, the rest 0. Also the Changed Namespace List log
/// page (section 5.14.1.4), in which a first FFFFFFFFh stands for more changes than there is room
/// for.
namespace namespace_list {
inline constexpr std::uint32_t SIZE = 4096;
inline constexpr Entries IDENTIFIERS{0, 4, 1024};
}  // namespace namespace_list

/// The identifiers up to the first 0. Throws core::Status by value, code 14, if the payload ends
/// before the list does.
std::vector<std::uint32_t> readNamespaceList(const core::Payload& list);

/// A whole list. Throws core::Status by value, code 36, for more than 1024 identifiers.
core::Payload makeNamespaceList(std::span<const std::uint32_t> identifiers);

/// Controller List: a number, then up to 2047 identifiers, ascending.
namespace controller_list {
inline constexpr std::uint32_t SIZE = 4096;
inline constexpr Field NumberOfIdentifiers{"NumberOfIdentifiers", "Number of Identifiers", 0, 2,
                                           Encoding::NUMBER};
inline constexpr Entries IDENTIFIERS{2, 2, 2047};
}  // namespace controller_list

/// As many identifiers as the list says it has. Throws core::Status by value, code 14, if that is
/// more than a list can have, or if the payload ends before the last.
std::vector<std::uint16_t> readControllerList(const core::Payload& list);

/// A whole list. Throws core::Status by value, code 36, for more than 2047 identifiers.
core::Payload makeControllerList(std::span<const std::uint16_t> identifiers);

/// Parts of namespace_management. Sizes are in logical blocks.
struct NewNamespace {
    std::uint64_t size = 0;
    std::uint64_t capacity = 0;
    std::uint8_t formattedLbaSize = 0;  ///< as FLBAS of Identify Namespace
    std::uint8_t dataProtection = 0;    ///< as DPS
    std::uint8_t sharing = 0;           ///< as NMIC
    std::uint32_t anaGroup = 0;
    std::uint16_t nvmSet = 0;
};

/// The data of a Namespace Management command that creates a namespace.
core::Payload makeNewNamespace(const NewNamespace& wanted);

}  // namespace orvel::protocols::nvme
