#include "protocols/nvme/AdminCommand.h"

#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "protocols/nvme/NamedValues.h"

namespace orvel::protocols::nvme {

namespace {

constexpr std::uint8_t FIRST_VENDOR_SPECIFIC = 0xC0;

std::string hexByte(std::uint8_t value) {
    return "0x" + core::strings::toHexString(value, 2);
}

std::string hexDword(std::uint32_t value) {
    return "0x" + core::strings::toHexString(value, 8);
}

const char* directionName(DataDirection direction) {
    switch (direction) {
    case DataDirection::FROM_DRIVE:
        return "From Drive";
    case DataDirection::TO_DRIVE:
        return "To Drive";
    case DataDirection::NONE:
        break;
    }
    return "None";
}

NamedValues partsOf(const AdminCommand& command) {
    const AdminCommandFields& fields = command.getFields();
    return {
        {"CommandSet", command.getCommandSetName()},
        {"Command", command.getName()},
        {"Opcode", hexByte(fields.opcode)},
        {"NSID", hexDword(fields.nsid)},
        {"CDW10", hexDword(fields.cdw10)},
        {"CDW11", hexDword(fields.cdw11)},
        {"CDW12", hexDword(fields.cdw12)},
        {"CDW13", hexDword(fields.cdw13)},
        {"CDW14", hexDword(fields.cdw14)},
        {"CDW15", hexDword(fields.cdw15)},
        {"DataDirection", directionName(fields.dataDirection)},
        {"TransferLength", core::strings::toString(fields.transferLength)},
    };
}

}  // namespace

const char* opcodeName(std::uint8_t opcode) {
    switch (opcode) {
#define OPCODE(code, name, words)                                                                  \
    case code:                                                                                     \
        return words;
#include "protocols/nvme/Opcodes.def"
    default:
        return opcode >= FIRST_VENDOR_SPECIFIC ? "Vendor Specific" : "Reserved";
    }
}

AdminCommand::AdminCommand(const AdminCommandFields& fields)
    : QueueableCommand(ADMIN_COMMAND_SET, opcodeName(fields.opcode)),
      fields(fields) {}

std::unique_ptr<core::Command> AdminCommand::clone() const {
    return std::make_unique<AdminCommand>(*this);
}

std::string AdminCommand::toString() const {
    return toLines(partsOf(*this));
}

std::unique_ptr<core::xml::XmlElement> AdminCommand::toXml() const {
    return toObject(core::xml::categories::Command, partsOf(*this));
}

}  // namespace orvel::protocols::nvme
