// Healthy drives, complete, as descriptions of fleets start from them.
#pragma once

#include "simulator/AtaDrive.h"
#include "simulator/NvmeDrive.h"

#include <cstdint>
#include <string>

namespace orvel::simulator {

/// What tells one drive of a kind from the next.
struct DriveBasics {
    std::string model;
    std::string serialNumber;
    std::string firmware;
    std::string bootloader;
    std::uint64_t capacity = 0;  ///< in bytes, a multiple of 512
};

/// What a drive that isn't named otherwise is called, without a serial number.
DriveBasics typicalNvmeBasics();
DriveBasics typicalAtaBasics();

/// A data center drive of NVMe 1.3, with one namespace that takes all of its capacity.
NvmeDrive typicalNvmeDrive(const DriveBasics& basics);

/// A drive of SATA 3.2.
AtaDrive typicalAtaDrive(const DriveBasics& basics);

/// A namespace of the drive's formats, attached to the drive's controller, without any capacity.
NvmeNamespace typicalNamespace(const NvmeDrive& drive, std::uint32_t nsid);

/// Sets size, capacity and utilization to as many blocks of the namespace's format as fit into
/// `bytes`.
void setNamespaceCapacity(const NvmeNamespace& one, std::uint64_t bytes);

/// Sets the capacity in bytes to what the capacity in blocks says.
void setNamespaceBytes(const NvmeNamespace& one);

}  // namespace orvel::simulator
