// Namespace Management and Namespace Attachment.
#include "simulator/NvmeExecutors.h"

#include "protocols/nvme/LbaFormats.h"
#include "simulator/TypicalDrives.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace ic = identify_controller;
namespace in = identify_namespace;
namespace nm = namespace_management;
using protocols::Number128;
using protocols::readNumber;

namespace {

/// The lowest identifier that is free; 0 if none is.
std::uint32_t freeIdentifier(const NvmeDrive& drive) {
    const auto most = readNumber(drive.identifyController, ic::NN);
    for (std::uint32_t nsid = 1; nsid <= most && nsid != 0; ++nsid) {
        if (!drive.namespaces.contains(nsid)) return nsid;
    }
    return 0;
}

Number128 unallocatedCapacity(const NvmeDrive& drive) {
    return protocols::readWideNumber(drive.identifyController, ic::UNVMCAP);
}

NamespaceFormat wantedFormat(const core::Payload& wanted) {
    return {.lbaFormat = readBits(wanted, nm::FLBAS, flbas::FORMAT),
            .isExtended = readBits(wanted, nm::FLBAS, flbas::METADATA_AT_END) != 0,
            .protectionType = readBits(wanted, nm::DPS, dps::TYPE),
            .isProtectionFirst = readBits(wanted, nm::DPS, dps::FIRST_EIGHT_BYTES) != 0};
}

/// In bytes.
Number128 wantedCapacity(const NvmeDrive& drive, const core::Payload& wanted) {
    return Number128(readNumber(wanted, nm::NCAP)) *
           blockSize(drive.commonNamespace, wantedFormat(wanted).lbaFormat);
}

StatusCode checkNewNamespace(const NvmeDrive& drive, const core::Payload& wanted) {
    const std::uint64_t size = readNumber(wanted, nm::NSZE);
    const std::uint64_t capacity = readNumber(wanted, nm::NCAP);
    if (size == 0 || capacity > size) return status_codes::INVALID_FIELD_IN_COMMAND;
    if (!isFormatAvailable(drive.commonNamespace, wantedFormat(wanted))) {
        return status_codes::INVALID_FORMAT;
    }
    if (capacity < size &&
        readBits(drive.commonNamespace, in::NSFEAT, nsfeat::THIN_PROVISIONING) == 0) {
        return status_codes::THIN_PROVISIONING_NOT_SUPPORTED;
    }
    if (wantedCapacity(drive, wanted) > unallocatedCapacity(drive)) {
        return status_codes::NAMESPACE_INSUFFICIENT_CAPACITY;
    }
    if (freeIdentifier(drive) == 0) return status_codes::NAMESPACE_IDENTIFIER_UNAVAILABLE;
    return {};
}

NvmeAnswer create(NvmeDrive& drive, const core::Payload& wanted) {
    if (wanted.size() < nm::SIZE) return refusal(status_codes::DATA_TRANSFER_ERROR);
    if (const StatusCode status = checkNewNamespace(drive, wanted);
        status != status_codes::SUCCESSFUL_COMPLETION) {
        NvmeAnswer answer = refusal(status);
        if (status == status_codes::NAMESPACE_INSUFFICIENT_CAPACITY) {
            // How much there would have to be.
            const Number128 most = UINT64_MAX;
            answer.errorInformation =
                static_cast<std::uint64_t>(std::min(wantedCapacity(drive, wanted), most));
        }
        return answer;
    }

    const Number128 capacity = wantedCapacity(drive, wanted);
    // With an identifier of its own.
    const std::uint32_t nsid = freeIdentifier(drive);
    NvmeNamespace made = typicalNamespace(drive, nsid);
    made.controllers.clear();
    protocols::writeNumber(made.identify, in::NSZE, readNumber(wanted, nm::NSZE));
    protocols::writeNumber(made.identify, in::NCAP, readNumber(wanted, nm::NCAP));
    protocols::writeNumber(made.identify, in::NUSE, 0);
    protocols::writeNumber(made.identify, in::FLBAS, readNumber(wanted, nm::FLBAS));
    protocols::writeNumber(made.identify, in::DPS, readNumber(wanted, nm::DPS));
    protocols::writeNumber(made.identify, in::NMIC, readNumber(wanted, nm::NMIC));
    protocols::writeWideNumber(made.identify, in::NVMCAP, capacity);
    protocols::writeWideNumber(drive.identifyController, ic::UNVMCAP,
                               unallocatedCapacity(drive) - capacity);
    NvmeAnswer answer;
    answer.dword0 = nsid;
    drive.namespaces.emplace(nsid, made);
    drive.changedNamespaces.insert(nsid);
    return answer;
}

void remove(NvmeDrive& drive, std::uint32_t nsid) {
    const auto found = drive.namespaces.find(nsid);
    const bool wasAttached = stateOf(drive, nsid) == NamespaceState::ATTACHED;
    protocols::writeWideNumber(drive.identifyController, ic::UNVMCAP,
                               unallocatedCapacity(drive) +
                                   protocols::readWideNumber(found->second.identify, in::NVMCAP));
    drive.namespaces.erase(found);
    if (wasAttached && attachedNamespaces(drive).empty()) ++drive.eraseCount;
    drive.changedNamespaces.insert(nsid);
    for (auto& [id, feature] : drive.features) {
        if (!feature.isNamespaceSpecific) continue;
        feature.saved.erase(nsid);
        feature.current.erase(nsid);
    }
    const auto& test = drive.runningSelfTest;
    if (test && (test->nsid == nsid || test->nsid == ALL_NAMESPACES)) {
        endSelfTest(drive, self_test_results::ABORTED_BY_NAMESPACE_REMOVAL);
    }
}

/// An identifier of a namespace that there is, attached or not.
StatusCode checkAllocated(const NvmeDrive& drive, std::uint32_t nsid) {
    switch (stateOf(drive, nsid)) {
    case NamespaceState::INVALID:
        return status_codes::INVALID_NAMESPACE_OR_FORMAT;
    case NamespaceState::UNALLOCATED:
        return status_codes::INVALID_FIELD_IN_COMMAND;
    default:
        return {};
    }
}

NvmeAnswer removeOneOrAll(NvmeDrive& drive, std::uint32_t nsid) {
    if (nsid == ALL_NAMESPACES) {
        while (!drive.namespaces.empty())
            remove(drive, drive.namespaces.begin()->first);
        return {};
    }
    if (const StatusCode status = checkAllocated(drive, nsid);
        status != status_codes::SUCCESSFUL_COMPLETION) {
        return refusal(status);
    }
    remove(drive, nsid);
    return {};
}

/// At least one, ascending, all of the subsystem.
bool isValidList(const NvmeDrive& drive, const std::vector<std::uint16_t>& list) {
    return !list.empty() &&
           std::ranges::adjacent_find(list, std::greater_equal<>()) == list.end() &&
           std::ranges::all_of(list,
                               [&](std::uint16_t one) { return drive.controllers.contains(one); });
}

StatusCode attach(NvmeNamespace& target, const std::vector<std::uint16_t>& list) {
    for (const std::uint16_t one : list) {
        if (target.controllers.contains(one)) return status_codes::NAMESPACE_ALREADY_ATTACHED;
    }
    const bool isShared = readBits(target.identify, in::NMIC, nmic::SHARED) != 0;
    if (!isShared && target.controllers.size() + list.size() > 1) {
        return status_codes::NAMESPACE_IS_PRIVATE;
    }
    target.controllers.insert(list.begin(), list.end());
    return {};
}

StatusCode detach(NvmeNamespace& target, const std::vector<std::uint16_t>& list) {
    for (const std::uint16_t one : list) {
        if (!target.controllers.contains(one)) return status_codes::NAMESPACE_NOT_ATTACHED;
    }
    for (const std::uint16_t one : list)
        target.controllers.erase(one);
    return {};
}

}  // namespace

NvmeAnswer executeNamespaceManagement(NvmeDrive& drive, const NvmeRequest& request) {
    switch (readBits(request.fields.cdw10, namespace_management_cdw10::SEL)) {
    case management_select::CREATE:
        return create(drive, request.input);
    case management_select::DELETE_NAMESPACE:
        return removeOneOrAll(drive, request.fields.nsid);
    default:
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
}

NvmeAnswer executeNamespaceAttachment(NvmeDrive& drive, const NvmeRequest& request) {
    const std::uint32_t nsid = request.fields.nsid;
    const std::uint32_t select = readBits(request.fields.cdw10, namespace_attachment_cdw10::SEL);
    if (select > attachment_select::DETACH) return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    if (const StatusCode status = checkAllocated(drive, nsid);
        status != status_codes::SUCCESSFUL_COMPLETION) {
        return refusal(status);
    }
    if (request.input.size() < controller_list::SIZE) {
        return refusal(status_codes::DATA_TRANSFER_ERROR);
    }
    if (readNumber(request.input, controller_list::NumberOfIdentifiers) >
        controller_list::IDENTIFIERS.count) {
        return refusal(status_codes::CONTROLLER_LIST_INVALID);
    }
    const auto list = readControllerList(request.input);
    if (!isValidList(drive, list)) return refusal(status_codes::CONTROLLER_LIST_INVALID);

    NvmeNamespace& target = drive.namespaces.at(nsid);
    const StatusCode status =
        select == attachment_select::ATTACH ? attach(target, list) : detach(target, list);
    if (status == status_codes::SUCCESSFUL_COMPLETION) drive.changedNamespaces.insert(nsid);
    NvmeAnswer answer;
    answer.status = status;
    return answer;
}

}  // namespace orvel::simulator
