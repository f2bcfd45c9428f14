#include "interfaces/orveli/jobs/NvmeFormat.h"

#include "core/StatusWords.h"
#include "features/FeatureStatuses.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/NvmeIdentifier.h"
#include "interfaces/orveli/jobs/TimeLimit.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using namespace protocols::nvme;
using protocols::readNumber;
namespace statuses = orvel::features::statuses;
namespace ic = identify_controller;
namespace in = identify_namespace;

namespace {

constexpr std::int32_t FORMAT_SECONDS = 4 * 60 * 60;

/// Some drives can only format, or only erase, all that there is: attached or not.
bool isForAll(const Payload& controller, const NvmeFormat& wanted) {
    return has(controller, ic::FNA, fna::FORMAT_ALL_NAMESPACES) ||
           (wanted.secureErase != secure_erase::NONE &&
            has(controller, ic::FNA, fna::ERASE_ALL_NAMESPACES));
}

std::vector<std::uint32_t> without(std::vector<std::uint32_t> all,
                                   const std::vector<std::uint32_t>& some) {
    std::erase_if(all,
                  [&](std::uint32_t nsid) { return std::ranges::find(some, nsid) != some.end(); });
    return all;
}

std::vector<std::uint32_t> targetsOf(const NvmeIdentifier& identifier, const NvmeFormat& wanted) {
    auto attached = identifier.listAttachedNamespaces();
    if (attached.empty())
        throw core::withWords(statuses::formatFailed(),
                              "No namespace is attached to the controller.");
    if (wanted.nsid == ALL_NAMESPACES) return attached;
    if (std::ranges::find(attached, wanted.nsid) == attached.end())
        throw statuses::invalidNamespaceId();
    std::vector<std::uint32_t> targets = {wanted.nsid};
    if (isForAll(identifier.getController(), wanted) &&
        !without(identifier.listAllocatedNamespaces(), targets).empty()) {
        throw core::withWords(
            statuses::formatFailed(),
            "The drive can only format all of its namespaces at once. Name 0xFFFFFFFF "
            "as the namespace to do that.");
    }
    return targets;
}

/// Where the metadata goes; no matter without any.
std::uint8_t metadataSettings(const Payload& identify, const NvmeFormat& wanted,
                              std::uint64_t metadataBytes) {
    const bool isExtendedNow = has(identify, in::FLBAS, flbas::METADATA_AT_END);
    const std::uint8_t now = isExtendedNow ? 1 : 0;
    if (metadataBytes == 0) return wanted.metadataSettings.value_or(now);
    const bool extended = has(identify, in::MC, mc::EXTENDED);
    const bool separate = has(identify, in::MC, mc::SEPARATE);
    if (!wanted.metadataSettings && extended != separate) return extended ? 1 : 0;
    const std::uint8_t settings = wanted.metadataSettings.value_or(now);
    if (settings == 1 ? !extended : !separate) throw statuses::invalidMetadataSettings();
    return settings;
}

std::uint8_t protectionType(const Payload& identify, const NvmeFormat& wanted,
                            std::uint64_t metadataBytes) {
    constexpr std::uint64_t PROTECTION_BYTES = 8;
    constexpr BitField TYPES[] = {dpc::TYPE_1, dpc::TYPE_2, dpc::TYPE_3};
    const auto now = static_cast<std::uint8_t>(readBits(identify, in::DPS, dps::TYPE));
    const std::uint8_t type = wanted.protectionInformation.value_or(now);
    if (type == 0) return type;
    if (type > std::size(TYPES) || metadataBytes < PROTECTION_BYTES ||
        !has(identify, in::DPC, TYPES[type - 1U])) {
        throw statuses::invalidProtectionInformation();
    }
    return type;
}

std::uint8_t protectionLocation(const Payload& identify, const NvmeFormat& wanted,
                                std::uint8_t type) {
    const bool isFirstNow = has(identify, in::DPS, dps::FIRST_EIGHT_BYTES);
    const std::uint8_t now = isFirstNow ? 1 : 0;
    if (type == 0) return wanted.protectionInformationLocation.value_or(0);
    const bool first = has(identify, in::DPC, dpc::FIRST_EIGHT_BYTES);
    const bool last = has(identify, in::DPC, dpc::LAST_EIGHT_BYTES);
    if (!wanted.protectionInformationLocation && first != last) return first ? 1 : 0;
    const std::uint8_t location = wanted.protectionInformationLocation.value_or(now);
    if (location == 1 ? !first : !last) throw statuses::invalidProtectionInformationLocation();
    return location;
}

FormatRequest requestFor(const Payload& identify, std::uint32_t nsid, const NvmeFormat& wanted) {
    FormatRequest request;
    request.nsid = nsid;
    request.secureEraseSettings = wanted.secureErase;
    request.lbaFormat = wanted.lbaFormat.value_or(
        static_cast<std::uint8_t>(readBits(identify, in::FLBAS, flbas::FORMAT)));
    if (request.lbaFormat > readNumber(identify, in::NLBAF) ||
        request.lbaFormat >= in::LBA_FORMATS.count) {
        throw statuses::invalidLbaFormat();
    }
    const auto metadataBytes =
        readNumber(identify, fieldOf(in::LBA_FORMATS, request.lbaFormat, lba_format::MS));
    request.metadataSettings = metadataSettings(identify, wanted, metadataBytes);
    request.protectionInformation = protectionType(identify, wanted, metadataBytes);
    request.protectionInformationLocation =
        protectionLocation(identify, wanted, request.protectionInformation);
    return request;
}

/// One command for all namespaces, if they are all to become the same.
std::vector<FormatRequest> requestsFor(Device& device, const std::vector<std::uint32_t>& targets,
                                       const NvmeFormat& wanted) {
    std::vector<FormatRequest> requests;
    requests.reserve(targets.size());
    for (const std::uint32_t nsid : targets)
        requests.push_back(
            requestFor(nvme_access::identify(device, cns::NAMESPACE, nsid), nsid, wanted));
    const auto cdw10 = [](const FormatRequest& one) { return formatNvm(one).getFields().cdw10; };
    const bool areEqual = std::ranges::all_of(
        requests, [&](const FormatRequest& one) { return cdw10(one) == cdw10(requests.front()); });
    if (wanted.nsid == ALL_NAMESPACES && areEqual) {
        requests.resize(1);
        requests.front().nsid = ALL_NAMESPACES;
    }
    return requests;
}

void send(Device& device, const FormatRequest& request) {
    const auto status = nvme_access::ask(device, formatNvm(request)).completion.status;
    if (status == status_codes::SUCCESSFUL_COMPLETION) return;
    if (status == status_codes::INVALID_NAMESPACE_OR_FORMAT) throw statuses::invalidNamespaceId();
    if (status == status_codes::INVALID_FORMAT) throw statuses::invalidLbaFormat();
    const std::string place =
        request.nsid == ALL_NAMESPACES ? "" : "Namespace " + std::to_string(request.nsid) + ": ";
    throw core::withWords(statuses::formatFailed(), place + statusText(status) + ".");
}

}  // namespace

DetachedNamespaces formatNamespaces(Device& device, const NvmeFormat& wanted) {
    const NvmeIdentifier identifier(device);
    const Payload& controller = identifier.getController();
    if (!has(controller, ic::OACS, oacs::FORMAT_NVM)) throw statuses::featureNotSupportedByDrive();
    if (wanted.secureErase == secure_erase::CRYPTOGRAPHIC &&
        !has(controller, ic::FNA, fna::CRYPTOGRAPHIC_ERASE)) {
        throw statuses::invalidSecureEraseSetting();
    }
    const auto targets = targetsOf(identifier, wanted);
    const auto requests = requestsFor(device, targets, wanted);
    DetachedNamespaces detached{.areFormatted = isForAll(controller, wanted)};
    if (wanted.nsid == ALL_NAMESPACES)
        detached.numbers = without(identifier.listAllocatedNamespaces(), targets);
    const TimeLimit limit(device, ADMIN_COMMAND_SET, FORMAT_SECONDS);
    for (const FormatRequest& request : requests)
        send(device, request);
    return detached;
}

}  // namespace orvel::interfaces::orveli::jobs
