// The route to a simulated SATA drive.
#pragma once

#include "simulator/SimulatedPath.h"

namespace orvel::simulator {

/// Carries ATA commands. Others give 0/21, a refusal 0/10 with the returned task file.
class SimulatedAtaPath : public SimulatedPath {
public:
    static constexpr const char* NAME = "Simulated ATA";

    /// As for SimulatedPath.
    SimulatedAtaPath(std::shared_ptr<FleetFolder> folder, std::string devicePath, Wait wait = {});

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
