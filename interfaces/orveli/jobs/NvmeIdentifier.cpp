#include "interfaces/orveli/jobs/NvmeIdentifier.h"

#include "core/CoreStatuses.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace orvel::interfaces::orveli::jobs {

using core::Payload;
namespace nvme = protocols::nvme;

namespace {

constexpr std::uint32_t LAST_NAMESPACE = 0xFFFFFFFD;
constexpr std::uint16_t LAST_CONTROLLER = std::numeric_limits<std::uint16_t>::max();

Payload identify(core::Device& device, std::uint8_t cns, std::uint32_t nsid,
                 std::uint16_t firstController = 0) {
    const auto command = nvme::identify(cns, nsid, firstController);
    const auto answer = nvme_access::ask(device, command);
    const auto& status = answer.completion.status;
    if (status == nvme::status_codes::INVALID_NAMESPACE_OR_FORMAT)
        throw features::statuses::invalidNamespaceId();
    if (!answer.completion.isSuccess()) throw nvme_access::refusal(command, status);
    if (answer.data.size() < nvme::IDENTIFY_SIZE)
        throw core::statuses::ioCommandReturnedTooLittleData();
    return answer.data;
}

/// Both kinds of list are ascending, and what follows the end of one is asked for by it: a drive
/// that keeps to no order would be asked without end.
template <class Identifier>
void append(std::vector<Identifier>& all, const std::vector<Identifier>& part) {
    all.insert(all.end(), part.begin(), part.end());
    const bool isAscending =
        std::adjacent_find(all.begin(), all.end(), std::greater_equal<>()) == all.end();
    if (!isAscending) throw features::statuses::dataRetrievalFailed();
}

std::vector<std::uint16_t> controllersOf(const Payload& list) {
    const std::uint64_t count =
        protocols::readNumber(list, nvme::controller_list::NumberOfIdentifiers);
    if (count > nvme::controller_list::IDENTIFIERS.count)
        throw features::statuses::dataRetrievalFailed();
    return nvme::readControllerList(list);
}

}  // namespace

NvmeIdentifier::NvmeIdentifier(core::Device& device)
    : device(device),
      controller(identify(device, nvme::cns::CONTROLLER, 0)) {}

bool NvmeIdentifier::managesNamespaces() const {
    return readBits(controller, nvme::identify_controller::OACS,
                    nvme::oacs::NAMESPACE_MANAGEMENT) != 0;
}

std::uint16_t NvmeIdentifier::ownIdentifier() const {
    return static_cast<std::uint16_t>(
        protocols::readNumber(controller, nvme::identify_controller::CNTLID));
}

Payload NvmeIdentifier::readNamespace(std::uint32_t nsid) const {
    const bool isOne = nsid != 0 && nsid <= LAST_NAMESPACE;
    if (!isOne) throw features::statuses::invalidNamespaceId();
    const Payload structure = identify(
        device, managesNamespaces() ? nvme::cns::ALLOCATED_NAMESPACE : nvme::cns::NAMESPACE, nsid);
    // An identifier behind which no namespace is has a structure of zeroes.
    if (protocols::readNumber(structure, nvme::identify_namespace::NSZE) == 0)
        throw features::statuses::invalidNamespaceId();
    return structure;
}

std::vector<std::uint32_t> NvmeIdentifier::listAttachedNamespaces() const {
    return listNamespaces(nvme::cns::ACTIVE_NAMESPACE_LIST);
}

std::vector<std::uint32_t> NvmeIdentifier::listAllocatedNamespaces() const {
    return listNamespaces(managesNamespaces() ? nvme::cns::ALLOCATED_NAMESPACE_LIST
                                              : nvme::cns::ACTIVE_NAMESPACE_LIST);
}

std::vector<std::uint16_t> NvmeIdentifier::listControllers() const {
    if (!managesNamespaces()) return {ownIdentifier()};
    return listControllers(nvme::cns::CONTROLLER_LIST, 0);
}

std::vector<std::uint16_t> NvmeIdentifier::listControllersOf(std::uint32_t nsid) const {
    readNamespace(nsid);
    if (!managesNamespaces()) return {ownIdentifier()};
    return listControllers(nvme::cns::ATTACHED_CONTROLLER_LIST, nsid);
}

std::vector<std::uint32_t> NvmeIdentifier::listNamespaces(std::uint8_t cns) const {
    std::vector<std::uint32_t> all;
    while (true) {
        const std::uint32_t last = all.empty() ? 0 : all.back();
        if (last >= LAST_NAMESPACE) return all;
        const auto part = nvme::readNamespaceList(identify(device, cns, last));
        append(all, part);
        if (part.size() < nvme::namespace_list::IDENTIFIERS.count) return all;
    }
}

std::vector<std::uint16_t> NvmeIdentifier::listControllers(std::uint8_t cns,
                                                           std::uint32_t nsid) const {
    std::vector<std::uint16_t> all;
    std::uint16_t first = 0;
    while (true) {
        const auto part = controllersOf(identify(device, cns, nsid, first));
        append(all, part);
        const bool isWhole = part.size() < nvme::controller_list::IDENTIFIERS.count ||
                             part.back() == LAST_CONTROLLER;
        if (isWhole) return all;
        first = static_cast<std::uint16_t>(part.back() + 1);
    }
}

}  // namespace orvel::interfaces::orveli::jobs
