// The route to a simulated NVMe drive.
#pragma once

#include "simulator/SimulatedPath.h"

namespace orvel::simulator {

/// Carries admin commands. Others give 0/24, a refusal 0/25 with the completion.
class SimulatedNvmePath : public SimulatedPath {
public:
    static constexpr const char* NAME = "Simulated NVMe";

    /// As for SimulatedPath.
    SimulatedNvmePath(std::shared_ptr<FleetFolder> folder, std::string devicePath, Wait wait = {});

    std::unique_ptr<core::CommandPath> clone() const override;

private:
    core::Status checkKind(const core::Command& command) const override;
    bool isLong(const core::Command& command) const override;
    BytesToCome bytesToCome(const core::Command& command) const override;
    core::Status refusalStatus() const override;
    Answer execute(SimulatedDrive& drive, const core::Command& command, const core::Payload& input,
                   const Clock& clock) override;
    Answer refuse(SimulatedDrive& drive, const Fault& fault,
                  const core::Command& command) const override;
};

}  // namespace orvel::simulator
