// The simulated drives of one machine, with all that they remember.
#pragma once

#include "protocols/nvme/StatusCodes.h"
#include "simulator/AtaDrive.h"
#include "simulator/NvmeDrive.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace orvel::simulator {

/// What goes wrong with a drive, on purpose.
struct Fault {
    enum class Kind {
        REFUSE,      ///< the drive refuses the command with a status
        DELAY,       ///< the answer comes late
        LOSE,        ///< the drive is gone instead of answering, until the next power cycle
        SHORT_DATA,  ///< the command succeeds but moves fewer bytes
        GARBAGE      ///< the data is not what it should be
    };

    Kind kind = Kind::REFUSE;
    std::string command;      ///< the standard's name; empty for each command
    std::uint32_t after = 0;  ///< how many such commands of one request go well before
    protocols::nvme::StatusCode nvmeStatus;  ///< REFUSE, for NVMe drives
    std::uint8_t ataError = 0x04;            ///< REFUSE, for SATA drives: the ERROR field
    std::chrono::milliseconds delay{0};      ///< DELAY
    std::uint32_t bytes = 0;                 ///< SHORT_DATA: how many come

    bool operator==(const Fault&) const = default;
};

/// A partition as the operating system reports it.
struct PartitionFacts {
    std::string path;            ///< such as /dev/sdb1
    std::string fileSystemType;  ///< such as ext4; may be empty
    std::uint64_t offset = 0;    ///< in bytes
    std::uint64_t size = 0;      ///< in bytes

    bool operator==(const PartitionFacts&) const = default;
};

/// The RAID volume that a drive is a member of.
struct RaidFacts {
    std::string volumeName;
    std::uint32_t setIndex = 0;
    std::uint16_t type = 0;  ///< the RAID level
    std::uint16_t driveCount = 0;
    std::uint32_t stripeSize = 0;  ///< in KiB

    bool operator==(const RaidFacts&) const = default;
};

/// A drive with what the machine around it knows of it.
struct SimulatedDrive {
    std::variant<NvmeDrive, AtaDrive> drive;
    std::string devicePath;  ///< unique in its fleet
    std::vector<PartitionFacts> partitions;
    std::optional<RaidFacts> raid;
    std::vector<Fault> faults;
    bool isLost = false;  ///< doesn't show up until the next power cycle

    bool operator==(const SimulatedDrive&) const = default;
};

/// A plain record.
struct Fleet {
    std::vector<SimulatedDrive> drives;
    std::uint32_t timeFactor = 120;           ///< of simulated time to real time
    std::chrono::milliseconds latestTime{0};  ///< that any of the drives has seen
    std::chrono::milliseconds realTime{0};    ///< since 1970, when it was latestTime for the drives

    bool operator==(const Fleet&) const = default;
};

}  // namespace orvel::simulator
