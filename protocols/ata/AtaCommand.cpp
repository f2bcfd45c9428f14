#include "protocols/ata/AtaCommand.h"

#include "core/Strings.h"
#include "core/xml/Vocabulary.h"
#include "protocols/ata/RegisterText.h"

#include <utility>

namespace orvel::protocols::ata {

namespace {

RegisterValues valuesOf(const AtaCommand& command) {
    const TaskFile& taskFile = command.getTaskFile();
    return {
        {"Command Set", command.getCommandSetName()},
        {"Name", command.getName()},
        {"Command", registerText(taskFile.command, 2)},
        {"Feature", registerText(taskFile.feature, 4)},
        {"Count", registerText(taskFile.count, 4)},
        {"LBA", registerText(taskFile.lba, 12)},
        {"Device", registerText(taskFile.device, 2)},
        {"48-bit", core::strings::toString(taskFile.is48Bit)},
        {"Protocol", protocolText(command.getProtocol())},
        {"Transfer Length", core::strings::toString(command.getTransferLength())},
    };
}

}  // namespace

AtaCommand::AtaCommand(std::string name, const TaskFile& taskFile, Protocol protocol,
                       std::uint32_t transferLength)
    : QueueableCommand(COMMAND_SET, std::move(name)),
      taskFile(taskFile),
      protocol(protocol),
      transferLength(transferLength) {}

std::unique_ptr<core::Command> AtaCommand::clone() const {
    return std::make_unique<AtaCommand>(*this);
}

std::string AtaCommand::toString() const {
    return toLines(valuesOf(*this));
}

std::unique_ptr<core::xml::XmlElement> AtaCommand::toXml() const {
    return toObject(core::xml::categories::Command, valuesOf(*this));
}

const char* protocolText(Protocol protocol) {
    switch (protocol) {
    case Protocol::NON_DATA:
        return "Non-Data";
    case Protocol::PIO_IN:
        return "PIO Data-In";
    case Protocol::PIO_OUT:
        return "PIO Data-Out";
    case Protocol::DMA_IN:
        return "DMA Data-In";
    case Protocol::DMA_OUT:
        return "DMA Data-Out";
    }
    return "";
}

}  // namespace orvel::protocols::ata
