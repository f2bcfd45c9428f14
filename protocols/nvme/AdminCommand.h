// A command of the NVMe Admin Command Set.
#pragma once

#include "core/QueueableCommand.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::protocols::nvme {

/// What a device routes admin commands by.
inline constexpr const char* ADMIN_COMMAND_SET = "NVMe Admin";

namespace opcodes {
#define OPCODE(code, name, words) inline constexpr std::uint8_t name = code;
#include "protocols/nvme/Opcodes.def"
}  // namespace opcodes

/// The standard's name of an admin opcode; "Vendor Specific" from C0h on, "Reserved" for the rest.
const char* opcodeName(std::uint8_t opcode);

enum class DataDirection { NONE, FROM_DRIVE, TO_DRIVE };

/// What stands in the submission queue entry (NVM Express Base Specification 1.4, section 4.2),
/// and what data goes along. Command identifier and data pointer are the driver's business.
struct AdminCommandFields {
    std::uint8_t opcode = 0;
    std::uint32_t nsid = 0;  ///< namespace identifier; 0 if the command has none
    std::uint32_t cdw10 = 0;
    std::uint32_t cdw11 = 0;
    std::uint32_t cdw12 = 0;
    std::uint32_t cdw13 = 0;
    std::uint32_t cdw14 = 0;
    std::uint32_t cdw15 = 0;
    DataDirection dataDirection = DataDirection::NONE;
    std::uint32_t transferLength = 0;  ///< in bytes

    bool operator==(const AdminCommandFields&) const = default;
};

/// A plain value, named after its opcode. The data isn't part of it: it goes to and comes from
/// the device beside the command. Factories for the commands that are in use: AdminCommands.h.
class AdminCommand : public core::QueueableCommand {
public:
    explicit AdminCommand(const AdminCommandFields& fields);

    const AdminCommandFields& getFields() const { return fields; }

    std::unique_ptr<core::Command> clone() const override;
    std::string toString() const override;
    std::unique_ptr<core::xml::XmlElement> toXml() const override;

private:
    AdminCommandFields fields;
};

}  // namespace orvel::protocols::nvme
