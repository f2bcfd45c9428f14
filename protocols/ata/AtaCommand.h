// A command of the ATA command set.
#pragma once

#include "core/QueueableCommand.h"
#include "protocols/ata/TaskFile.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::protocols::ata {

/// How the data of a command goes: ACS-4, "Protocol overview".
enum class Protocol {
    NON_DATA,
    PIO_IN,   ///< from the drive
    PIO_OUT,  ///< to the drive
    DMA_IN,
    DMA_OUT
};

/// The unit of transfers and logs.
inline constexpr std::uint32_t BLOCK_SIZE = 512;

/// A plain value. The data of a transfer isn't part of it.
class AtaCommand : public core::QueueableCommand {
public:
    /// What a device routes these commands by.
    static constexpr const char* COMMAND_SET = "ATA";

    /// `name` is the standard's. `transferLength` is in bytes, 0 without a transfer.
    AtaCommand(std::string name, const TaskFile& taskFile, Protocol protocol,
               std::uint32_t transferLength);

    std::unique_ptr<core::Command> clone() const override;
    std::string toString() const override;
    std::unique_ptr<core::xml::XmlElement> toXml() const override;

    const TaskFile& getTaskFile() const { return taskFile; }

    Protocol getProtocol() const { return protocol; }

    std::uint32_t getTransferLength() const { return transferLength; }

private:
    TaskFile taskFile;
    Protocol protocol;
    std::uint32_t transferLength;
};

/// The standard's words.
const char* protocolText(Protocol protocol);

}  // namespace orvel::protocols::ata
