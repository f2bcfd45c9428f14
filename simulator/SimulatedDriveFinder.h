// Finds the simulated drives.
#pragma once

#include "core/DeviceFinder.h"
#include "simulator/FleetFolder.h"
#include "simulator/SimulatedPath.h"

#include <memory>
#include <string>

namespace orvel::simulator {

/// Makes a device of each drive that isn't lost: with its path, with what the system around it
/// knows, and with the identifiers that find out the rest. Opens the fleet and leaves it open.
class SimulatedDriveFinder : public core::DeviceFinder {
public:
    /// What asks the drives about themselves, by kind.
    struct Identifiers {
        core::Device::ProtocolIdentifiers nvme;
        core::Device::ProtocolIdentifiers ata;
    };

    /// Copies share `folder`, which is never null. Without `wait` paths sleep.
    SimulatedDriveFinder(std::shared_ptr<FleetFolder> folder, Identifiers identifiers,
                         SimulatedPath::Wait wait = {});

    /// Throws core::Status by value if the fleet can't be opened.
    void find(core::Device::Devices& devices) override;

    std::unique_ptr<core::DeviceFinder> clone() const override;

private:
    std::shared_ptr<core::Device> makeDevice(const SimulatedDrive& drive) const;

    std::shared_ptr<FleetFolder> folder;
    Identifiers identifiers;
    SimulatedPath::Wait wait;
};

}  // namespace orvel::simulator
