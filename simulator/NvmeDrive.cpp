#include "simulator/NvmeDrive.h"

namespace orvel::simulator {

using namespace protocols::nvme;

NamespaceState stateOf(const NvmeDrive& drive, std::uint32_t nsid) {
    const auto most = protocols::readNumber(drive.identifyController, identify_controller::NN);
    if (nsid == 0 || nsid > most) return NamespaceState::INVALID;
    const auto found = drive.namespaces.find(nsid);
    if (found == drive.namespaces.end()) return NamespaceState::UNALLOCATED;
    return found->second.controllers.contains(controllerId(drive)) ? NamespaceState::ATTACHED
                                                                   : NamespaceState::DETACHED;
}

std::uint16_t controllerId(const NvmeDrive& drive) {
    return static_cast<std::uint16_t>(
        protocols::readNumber(drive.identifyController, identify_controller::CNTLID));
}

std::vector<std::uint32_t> attachedNamespaces(const NvmeDrive& drive) {
    std::vector<std::uint32_t> attached;
    for (const auto& [nsid, one] : drive.namespaces) {
        if (one.controllers.contains(controllerId(drive))) attached.push_back(nsid);
    }
    return attached;
}

bool supports(const NvmeDrive& drive, const protocols::Field& field, const BitField& capability) {
    return readBits(drive.identifyController, field, capability) != 0;
}

}  // namespace orvel::simulator
