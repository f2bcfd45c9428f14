// Identify.
#include "simulator/NvmeExecutors.h"

namespace orvel::simulator {

using namespace protocols::nvme;

namespace {

NvmeAnswer give(const core::Payload& output) {
    NvmeAnswer answer;
    answer.output = output;
    return answer;
}

/// An identifier behind which no namespace is: its structure is all zeroes.
NvmeAnswer giveNothing() {
    return give(core::Payload(IDENTIFY_SIZE));
}

NvmeAnswer identifyNamespace(const NvmeDrive& drive, std::uint32_t nsid) {
    if (nsid == ALL_NAMESPACES &&
        supports(drive, identify_controller::OACS, oacs::NAMESPACE_MANAGEMENT)) {
        return give(drive.commonNamespace.copy());
    }
    switch (stateOf(drive, nsid)) {
    case NamespaceState::INVALID:
        return refusal(status_codes::INVALID_NAMESPACE_OR_FORMAT);
    case NamespaceState::ATTACHED:
        return give(drive.namespaces.at(nsid).identify.copy());
    default:
        return giveNothing();
    }
}

NvmeAnswer identifyAllocatedNamespace(const NvmeDrive& drive, std::uint32_t nsid) {
    switch (stateOf(drive, nsid)) {
    case NamespaceState::INVALID:
        return refusal(status_codes::INVALID_NAMESPACE_OR_FORMAT);
    case NamespaceState::UNALLOCATED:
        return giveNothing();
    default:
        return give(drive.namespaces.at(nsid).identify.copy());
    }
}

std::vector<std::uint32_t> allocatedNamespaces(const NvmeDrive& drive) {
    std::vector<std::uint32_t> allocated;
    for (const auto& [nsid, one] : drive.namespaces)
        allocated.push_back(nsid);
    return allocated;
}

/// The identifiers above the one that the command names, as many as a list has room for.
NvmeAnswer listNamespaces(std::vector<std::uint32_t> identifiers, std::uint32_t nsid) {
    constexpr std::uint32_t LAST = 0xFFFFFFFD;
    if (nsid > LAST) return refusal(status_codes::INVALID_NAMESPACE_OR_FORMAT);
    std::erase_if(identifiers, [nsid](std::uint32_t one) { return one <= nsid; });
    if (identifiers.size() > namespace_list::IDENTIFIERS.count) {
        identifiers.resize(namespace_list::IDENTIFIERS.count);
    }
    return give(makeNamespaceList(identifiers));
}

NvmeAnswer listControllers(const std::set<std::uint16_t>& controllers, std::uint32_t cdw10) {
    const auto first =
        static_cast<std::uint16_t>(readBits(cdw10, protocols::nvme::identify_cdw10::CNTID));
    std::vector<std::uint16_t> identifiers(controllers.lower_bound(first), controllers.end());
    if (identifiers.size() > controller_list::IDENTIFIERS.count) {
        identifiers.resize(controller_list::IDENTIFIERS.count);
    }
    return give(makeControllerList(identifiers));
}

NvmeAnswer listAttachedControllers(const NvmeDrive& drive, const AdminCommandFields& fields) {
    if (fields.nsid == ALL_NAMESPACES) return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    switch (stateOf(drive, fields.nsid)) {
    case NamespaceState::INVALID:
        return refusal(status_codes::INVALID_NAMESPACE_OR_FORMAT);
    case NamespaceState::UNALLOCATED:
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    default:
        return listControllers(drive.namespaces.at(fields.nsid).controllers, fields.cdw10);
    }
}

/// What goes with namespace management.
NvmeAnswer identifyForManagement(const NvmeDrive& drive, const AdminCommandFields& fields) {
    if (!supports(drive, identify_controller::OACS, oacs::NAMESPACE_MANAGEMENT)) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    // clang-format off
    switch (readBits(fields.cdw10, identify_cdw10::CNS)) {
    case cns::ALLOCATED_NAMESPACE_LIST: return listNamespaces(allocatedNamespaces(drive), fields.nsid);
    case cns::ALLOCATED_NAMESPACE:      return identifyAllocatedNamespace(drive, fields.nsid);
    case cns::ATTACHED_CONTROLLER_LIST: return listAttachedControllers(drive, fields);
    case cns::CONTROLLER_LIST:          return listControllers(drive.controllers, fields.cdw10);
    default:                            return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    // clang-format on
}

}  // namespace

NvmeAnswer executeIdentify(NvmeDrive& drive, const NvmeRequest& request) {
    const AdminCommandFields& fields = request.fields;
    if (fields.transferLength < IDENTIFY_SIZE) return refusal(status_codes::DATA_TRANSFER_ERROR);
    // clang-format off
    switch (readBits(fields.cdw10, identify_cdw10::CNS)) {
    case cns::NAMESPACE:             return identifyNamespace(drive, fields.nsid);
    case cns::CONTROLLER:            return give(drive.identifyController.copy());
    case cns::ACTIVE_NAMESPACE_LIST: return listNamespaces(attachedNamespaces(drive), fields.nsid);
    default:                         return identifyForManagement(drive, fields);
    }
    // clang-format on
}

}  // namespace orvel::simulator
