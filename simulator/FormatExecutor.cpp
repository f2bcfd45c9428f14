// Format NVM.
#include "simulator/NvmeExecutors.h"

#include "protocols/nvme/LbaFormats.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace in = identify_namespace;

bool isFormatAvailable(const core::Payload& identifyNamespace, const NamespaceFormat& format) {
    if (format.lbaFormat > protocols::readNumber(identifyNamespace, in::NLBAF) ||
        format.lbaFormat >= in::LBA_FORMATS.count) {
        return false;
    }
    if (blockSize(identifyNamespace, format.lbaFormat) == 0) return false;

    const auto metadata = metadataSize(identifyNamespace, format.lbaFormat);
    const BitField& placement = format.isExtended ? mc::EXTENDED : mc::SEPARATE;
    if (metadata != 0 && readBits(identifyNamespace, in::MC, placement) == 0) return false;

    if (format.protectionType == 0) return true;
    const BitField& place =
        format.isProtectionFirst ? dpc::FIRST_EIGHT_BYTES : dpc::LAST_EIGHT_BYTES;
    return isProtectionAvailable(identifyNamespace, format.lbaFormat, format.protectionType) &&
           readBits(identifyNamespace, in::DPC, place) != 0;
}

namespace {

NamespaceFormat wantedFormat(std::uint32_t cdw10) {
    return {.lbaFormat = readBits(cdw10, format_nvm_cdw10::LBAF),
            .isExtended = readBits(cdw10, format_nvm_cdw10::MSET) != 0,
            .protectionType = readBits(cdw10, format_nvm_cdw10::PI),
            .isProtectionFirst = readBits(cdw10, format_nvm_cdw10::PIL) != 0};
}

/// What the blocks of a namespace share, in bytes: what was allocated, so that a rest which is no
/// whole block isn't lost for good; but no more than what a lowered maximum address has left.
protocols::Number128 capacityOf(const core::Payload& identify) {
    const std::uint64_t size = blockSize(identify, formatInUse(identify));
    const protocols::Number128 allocated = protocols::readWideNumber(identify, in::NVMCAP);
    const protocols::Number128 blocks = protocols::readNumber(identify, in::NCAP);
    const bool isWhole = size == 0 || blocks == allocated / size;
    return isWhole ? allocated : blocks * size;
}

/// How many blocks the namespace has in the format, which is available; 0 if it can't have any.
std::uint64_t blocksIn(const core::Payload& identify, const NamespaceFormat& format) {
    const auto blocks = capacityOf(identify) / blockSize(identify, format.lbaFormat);
    return blocks > UINT64_MAX ? 0 : static_cast<std::uint64_t>(blocks);
}

bool changesBlocks(const core::Payload& identify, const NamespaceFormat& format) {
    return format.lbaFormat != formatInUse(identify);
}

/// The capacity in bytes stays; the number of blocks follows from it.
void applyFormat(const core::Payload& identify, const NamespaceFormat& format) {
    if (changesBlocks(identify, format)) {
        const std::uint64_t blocks = blocksIn(identify, format);
        protocols::writeNumber(identify, in::NSZE, blocks);
        protocols::writeNumber(identify, in::NCAP, blocks);
    }
    protocols::writeNumber(identify, in::NUSE, 0);
    writeBits(identify, in::FLBAS, flbas::FORMAT, format.lbaFormat);
    writeBits(identify, in::FLBAS, flbas::METADATA_AT_END, format.isExtended ? 1 : 0);
    writeBits(identify, in::DPS, dps::TYPE, format.protectionType);
    writeBits(identify, in::DPS, dps::FIRST_EIGHT_BYTES, format.isProtectionFirst ? 1 : 0);
}

bool isEraseAvailable(const NvmeDrive& drive, std::uint32_t settings) {
    switch (settings) {
    case secure_erase::NONE:
    case secure_erase::USER_DATA:
        return true;
    case secure_erase::CRYPTOGRAPHIC:
        return supports(drive, identify_controller::FNA, fna::CRYPTOGRAPHIC_ERASE);
    default:
        return false;
    }
}

std::vector<std::uint32_t> allocatedNamespaces(const NvmeDrive& drive) {
    std::vector<std::uint32_t> all;
    for (const auto& [nsid, one] : drive.namespaces)
        all.push_back(nsid);
    return all;
}

/// Some drives can only format, or only erase, all that there is: attached or not (Format NVM,
/// section 5.23: format scope and secure erase scope).
std::vector<std::uint32_t> targetsOf(const NvmeDrive& drive, const AdminCommandFields& fields) {
    const bool erases = readBits(fields.cdw10, format_nvm_cdw10::SES) != secure_erase::NONE;
    const bool isForAll =
        supports(drive, identify_controller::FNA, fna::FORMAT_ALL_NAMESPACES) ||
        (erases && supports(drive, identify_controller::FNA, fna::ERASE_ALL_NAMESPACES));
    if (isForAll) return allocatedNamespaces(drive);
    if (fields.nsid == ALL_NAMESPACES) return attachedNamespaces(drive);
    return {fields.nsid};
}

/// Whether nothing is left of what the controller shows.
bool coversAttached(const NvmeDrive& drive, const std::vector<std::uint32_t>& targets) {
    return std::ranges::includes(targets, attachedNamespaces(drive));
}

/// Whether the running self-test is one of these namespaces, alone or with all others.
bool isTested(const NvmeDrive& drive, const std::vector<std::uint32_t>& targets) {
    const auto& test = drive.runningSelfTest;
    if (!test) return false;
    return test->nsid == ALL_NAMESPACES || std::ranges::find(targets, test->nsid) != targets.end();
}

}  // namespace

NvmeAnswer executeFormatNvm(NvmeDrive& drive, const NvmeRequest& request) {
    const AdminCommandFields& fields = request.fields;
    if (fields.nsid != ALL_NAMESPACES) {
        const NamespaceState state = stateOf(drive, fields.nsid);
        if (state == NamespaceState::INVALID) {
            return refusal(status_codes::INVALID_NAMESPACE_OR_FORMAT);
        }
        if (state != NamespaceState::ATTACHED) {
            return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
        }
    }
    if (!isEraseAvailable(drive, readBits(fields.cdw10, format_nvm_cdw10::SES))) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }

    const NamespaceFormat format = wantedFormat(fields.cdw10);
    const auto targets = targetsOf(drive, fields);
    const bool isAvailable = std::ranges::all_of(targets, [&](std::uint32_t nsid) {
        const core::Payload& identify = drive.namespaces.at(nsid).identify;
        return isFormatAvailable(identify, format) &&
               (!changesBlocks(identify, format) || blocksIn(identify, format) != 0);
    });
    if (!isAvailable) return refusal(status_codes::INVALID_FORMAT);

    if (isTested(drive, targets)) endSelfTest(drive, self_test_results::ABORTED_BY_FORMAT);
    for (const std::uint32_t nsid : targets) {
        applyFormat(drive.namespaces.at(nsid).identify, format);
        drive.changedNamespaces.insert(nsid);
    }
    if (coversAttached(drive, targets)) ++drive.eraseCount;
    return {};
}

}  // namespace orvel::simulator
