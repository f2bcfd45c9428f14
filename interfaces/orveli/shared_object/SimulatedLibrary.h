// A whole feature library with simulated drives, put together.
#pragma once

#include "core/DeviceManager.h"
#include "interfaces/orveli/library/AnswerStore.h"
#include "interfaces/orveli/library/JobRegistry.h"
#include "interfaces/orveli/library/RequestDesk.h"
#include "simulator/FleetFolder.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::interfaces::orveli::shared_object {

/// For one thread at a time, but for `receive`, which any thread may call.
class SimulatedLibrary {
public:
    /// `stateFolder` has the drives, `firmwareModules` the library's own modules. Neither need be
    /// there.
    SimulatedLibrary(const std::string& stateFolder, const std::string& firmwareModules);

    SimulatedLibrary(const SimulatedLibrary&) = delete;
    SimulatedLibrary& operator=(const SimulatedLibrary&) = delete;
    ~SimulatedLibrary() = default;

    /// Carries the request out and returns the handle of its answer.
    std::uint64_t send(const std::string& request);

    /// As `AnswerStore::fetch`.
    std::uint32_t receive(std::uint64_t handle, char* buffer, std::uint32_t* size);

private:
    core::Status finish();

    library::AnswerStore answers;
    std::shared_ptr<simulator::FleetFolder> folder;
    core::DeviceManager manager;
    library::JobRegistry jobs;
    library::RequestDesk desk;
};

}  // namespace orvel::interfaces::orveli::shared_object
