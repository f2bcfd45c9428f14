// What the routes to both kinds of simulated drives have in common.
#pragma once

#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/ProtocolResult.h"
#include "simulator/Fleet.h"
#include "simulator/FleetFolder.h"
#include "simulator/NvmeDrive.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvel::simulator {

/// Leads to one drive of a fleet, which is opened at need and stays open: whoever hands the path
/// out decides when to commit. A drive that is gone or lost gives 1/ENODEV, an answer that comes
/// later than the path's timeout 1/ETIMEDOUT.
///
/// Faults of the drive come in as they are described; the commands before them are counted by each
/// path of its own. A copy goes on with the count.
class SimulatedPath : public core::CommandPath {
public:
    /// Lets so much real time pass.
    using Wait = std::function<void(std::chrono::milliseconds)>;

    core::Status checkPartitions() override;
    core::CommandResult send(const core::Command& command, core::Payload input,
                             core::Device& device) override;
    bool isAvailable(core::Device& device) override;
    void assign(const core::CommandPath& other) override;

    const std::string& getDevicePath() const { return devicePath; }

protected:
    struct Answer {
        std::unique_ptr<core::ProtocolResult> protocolResult;
        core::Payload output;
        bool isRefused = false;
        std::chrono::milliseconds duration{0};  ///< simulated time that it took, if much
    };

    /// What a command moves from the drive, in bytes; 0 for one that moves nothing, or to it.
    using BytesToCome = std::uint32_t;

    /// Without `wait` it sleeps. The other paths share `folder`, which is never null.
    SimulatedPath(std::string name, std::shared_ptr<FleetFolder> folder, std::string devicePath,
                  Wait wait);

    const std::shared_ptr<FleetFolder>& getFolder() const { return folder; }

    const Wait& getWait() const { return wait; }

    // What each kind of drive has of its own. Commands of another kind come to `checkKind` alone.

    /// Success, or why the command is none of this path's.
    virtual core::Status checkKind(const core::Command& command) const = 0;

    /// Whether a drive takes so long that others are not kept waiting: it goes through the engine.
    virtual bool isLong(const core::Command& command) const = 0;
    virtual BytesToCome bytesToCome(const core::Command& command) const = 0;
    virtual core::Status refusalStatus() const = 0;

    /// What the drive does and says. Throws core::Status by value if it is of another kind.
    virtual Answer execute(SimulatedDrive& drive, const core::Command& command,
                           const core::Payload& input, const Clock& clock) = 0;

    /// What the drive says on purpose. Throws as `execute` does.
    virtual Answer refuse(SimulatedDrive& drive, const Fault& fault,
                          const core::Command& command) const = 0;

private:
    SimulatedDrive* findDrive();
    std::vector<Fault> takeFaults(const SimulatedDrive& drive, const core::Command& command);
    core::Status transact(const core::Command& command, const core::Payload& input,
                          core::CommandResult& result);
    Answer answer(SimulatedDrive& drive, const core::Command& command, const core::Payload& input,
                  const std::vector<Fault>& faults);
    core::Status takeTime(const std::vector<Fault>& faults);

    std::shared_ptr<FleetFolder> folder;
    std::string devicePath;
    Wait wait;
    std::map<std::string, std::uint32_t> sentCommands;  ///< by name; those without are all
};

}  // namespace orvel::simulator
