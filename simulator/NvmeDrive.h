// What a simulated NVMe drive remembers.
#pragma once

#include "protocols/nvme/AdminCommands.h"
#include "protocols/nvme/Structures.h"
#include "simulator/StoredBytes.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace orvel::simulator {

struct NvmeNamespace {
    /// Size, format and so on stand in it.
    StoredBytes identify{protocols::nvme::identify_namespace::SIZE};
    std::set<std::uint16_t> controllers;  ///< to which it is attached, by controller ID

    bool operator==(const NvmeNamespace&) const = default;
};

/// What a feature that is just a dword has been set to. Some features have parts, which have
/// values of their own: each temperature threshold, each interrupt vector, or each namespace.
struct NvmeFeature {
    using Values = std::map<std::uint32_t, std::uint32_t>;  ///< by part

    bool isSaveable = false;
    bool isChangeable = true;
    bool isNamespaceSpecific = false;  ///< then part 0 has the default of every namespace
    Values defaults = {{0, 0}};        ///< a part that isn't in it doesn't exist
    Values saved = {};
    Values current = {};  ///< what has been set since power came

    bool operator==(const NvmeFeature&) const = default;
};

/// What a new firmware needs before it runs.
enum class FirmwareActivation { ANY_RESET, NVM_SUBSYSTEM_RESET, CONVENTIONAL_RESET };

struct RunningSelfTest {
    std::uint8_t code = 0;   ///< short or extended
    std::uint32_t nsid = 0;  ///< 0 for the controller alone
    std::chrono::milliseconds start{0};

    bool operator==(const RunningSelfTest&) const = default;
};

/// A plain record; a copy is a drive of its own. What stands in a structure that the drive shows
/// is kept there only. Firmware revisions go by slot, entry 0 is slot 1.
struct NvmeDrive {
    StoredBytes identifyController{protocols::nvme::identify_controller::SIZE};
    StoredBytes smartHealthLog{protocols::nvme::smart_health_log::SIZE};
    std::deque<StoredBytes> errorLog;  ///< entries, newest first

    /// What new namespaces have in common: formats and capabilities.
    StoredBytes commonNamespace{protocols::nvme::identify_namespace::SIZE};
    std::map<std::uint32_t, NvmeNamespace> namespaces;  ///< the allocated ones by identifier
    std::set<std::uint32_t> changedNamespaces;          ///< since somebody read about them
    std::set<std::uint16_t> controllers = {0};          ///< of the subsystem, this one included
    std::uint32_t eraseCount = 0;  ///< how often all attached namespaces have been erased

    std::array<std::string, 7> firmwareRevisions;  ///< empty for an empty slot
    std::uint8_t activeSlot = 1;
    std::uint8_t nextSlot = 0;  ///< to be activated at the next reset; 0 for none
    FirmwareActivation firmwareActivation = FirmwareActivation::ANY_RESET;
    std::map<std::uint64_t, StoredBytes> downloadedImage;  ///< pieces by offset in bytes

    std::map<std::uint8_t, NvmeFeature> features;  ///< by identifier; the others aren't supported

    std::map<std::uint8_t, StoredBytes> vendorLogs;  ///< whole log pages by identifier, C0h to FFh

    std::deque<StoredBytes> selfTestResults;  ///< newest first
    std::optional<RunningSelfTest> runningSelfTest;
    std::chrono::milliseconds shortSelfTestTime = std::chrono::minutes(2);
    std::uint8_t selfTestOutcome = 0;  ///< the result that a test comes to, once the time is up

    bool operator==(const NvmeDrive&) const = default;
};

/// What stands behind a namespace identifier.
enum class NamespaceState {
    INVALID,      ///< none of the identifiers that there can be
    UNALLOCATED,  ///< no such namespace now
    DETACHED,     ///< not attached to this controller
    ATTACHED
};

NamespaceState stateOf(const NvmeDrive& drive, std::uint32_t nsid);

/// Of the controller that commands go to.
std::uint16_t controllerId(const NvmeDrive& drive);

std::vector<std::uint32_t> attachedNamespaces(const NvmeDrive& drive);

/// Whether Identify Controller tells of the capability.
bool supports(const NvmeDrive& drive, const protocols::Field& field,
              const protocols::nvme::BitField& capability);

}  // namespace orvel::simulator
