// Setting the features that are Norvo's own.
#include "protocols/norvo/NativeMaximum.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/LbaFormats.h"
#include "simulator/NvmeExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace norvo = protocols::norvo;
namespace ids = norvo::feature_ids;
namespace in = identify_namespace;

namespace {

constexpr std::uint32_t ONLY_NAMESPACE = 1;

/// The namespace that MAXIMUM_LBA is about: null unless it is the only one.
const core::Payload* onlyNamespace(const NvmeDrive& drive) {
    const auto found = drive.namespaces.find(ONLY_NAMESPACE);
    if (found == drive.namespaces.end() || drive.namespaces.size() != 1) return nullptr;
    const core::Payload& identify = found->second.identify;
    return &identify;
}

std::uint64_t currentBlockSize(const core::Payload& identify) {
    return blockSize(identify, formatInUse(identify));
}

/// The number of blocks that the drive can have, in those of the current format; 0 if it has none.
std::uint64_t nativeBlocks(const NvmeDrive& drive, const core::Payload& identify) {
    return norvo::nativeBlocks(drive.identifyController, currentBlockSize(identify));
}

std::uint64_t wantedMaximumLba(const AdminCommandFields& fields) {
    constexpr int UPPER_HALF = 32;
    return std::uint64_t{fields.cdw12} << UPPER_HALF | fields.cdw11;
}

/// In bytes: what the namespace has, and what it could take.
protocols::Number128 reachableCapacity(const NvmeDrive& drive, const core::Payload& identify) {
    return protocols::readWideNumber(identify, in::NVMCAP) +
           protocols::readWideNumber(drive.identifyController, identify_controller::UNVMCAP);
}

protocols::Number128 capacityOf(std::uint64_t blocks, const core::Payload& identify) {
    return protocols::Number128(blocks) * currentBlockSize(identify);
}

StatusCode checkMaximumLba(const NvmeDrive& drive, const AdminCommandFields& fields) {
    const core::Payload* identify = onlyNamespace(drive);
    const std::uint64_t wanted = wantedMaximumLba(fields);
    if (!identify || wanted >= nativeBlocks(drive, *identify) ||
        capacityOf(wanted + 1, *identify) > reachableCapacity(drive, *identify)) {
        return status_codes::LBA_OUT_OF_RANGE;
    }
    return {};
}

void setMaximumLba(NvmeDrive& drive, const AdminCommandFields& fields) {
    const core::Payload& identify = *onlyNamespace(drive);
    const std::uint64_t blocks = wantedMaximumLba(fields) + 1;
    const protocols::Number128 reachable = reachableCapacity(drive, identify);
    const protocols::Number128 capacity = capacityOf(blocks, identify);
    protocols::writeWideNumber(identify, in::NVMCAP, capacity);
    protocols::writeWideNumber(drive.identifyController, identify_controller::UNVMCAP,
                               reachable - capacity);
    protocols::writeNumber(identify, in::NSZE, blocks);
    protocols::writeNumber(identify, in::NCAP, blocks);
    protocols::writeNumber(identify, in::NUSE,
                           std::min(protocols::readNumber(identify, in::NUSE), blocks));
    drive.changedNamespaces.insert(ONLY_NAMESPACE);
}

/// Null if the drive doesn't have the page as it should be.
const core::Payload* vendorLog(const NvmeDrive& drive, std::uint8_t page, std::uint32_t size) {
    const auto found = drive.vendorLogs.find(page);
    if (found == drive.vendorLogs.end()) return nullptr;
    const core::Payload& bytes = found->second;
    return bytes.size() < size ? nullptr : &bytes;
}

const core::Payload* healthStatistics(const NvmeDrive& drive) {
    return vendorLog(drive, norvo::log_pages::HEALTH_STATISTICS, norvo::health_statistics::SIZE);
}

void resetTimedWorkload(const NvmeDrive& drive) {
    namespace fields = norvo::health_statistics;
    const core::Payload* page = healthStatistics(drive);
    if (!page) return;
    protocols::writeNumber(*page, fields::TimedWorkloadMediaWear, fields::RESET_VALUE);
    protocols::writeNumber(*page, fields::TimedWorkloadHostReads, fields::RESET_VALUE);
    protocols::writeNumber(*page, fields::TimedWorkloadTimer, 0);
}

void resetCrcErrorCount(const NvmeDrive& drive) {
    const core::Payload* page = healthStatistics(drive);
    if (page) protocols::writeNumber(*page, norvo::health_statistics::CrcErrorCount, 0);
}

/// The limits of the buckets stay.
void clearLatencies(const NvmeDrive& drive) {
    namespace fields = norvo::latency_statistics;
    for (const std::uint8_t id :
         {norvo::log_pages::READ_LATENCY_STATISTICS, norvo::log_pages::WRITE_LATENCY_STATISTICS}) {
        const core::Payload* page = vendorLog(drive, id, fields::SIZE);
        for (std::uint32_t i = 0; page && i < fields::BUCKETS.count; ++i)
            protocols::writeNumber(*page, fieldOf(fields::BUCKETS, i, norvo::latency_bucket::Count),
                                   0);
    }
}

StatusCode invalidUnless(bool isValid) {
    return isValid ? StatusCode{} : status_codes::INVALID_FIELD_IN_COMMAND;
}

}  // namespace

bool isLatencyTracked(const NvmeDrive& drive) {
    const auto found = drive.features.find(ids::LATENCY_TRACKING);
    return found != drive.features.end() && found->second.defaults.contains(0) &&
           currentValue(found->second, 0) == 1;
}

std::optional<std::uint32_t> vendorFeatureValue(const NvmeDrive& drive, std::uint8_t feature,
                                                std::uint32_t select) {
    if (feature != ids::MAXIMUM_LBA) return {};
    const core::Payload* identify = onlyNamespace(drive);
    if (!identify) return {};
    const std::uint64_t blocks = select == feature_select::DEFAULT
                                     ? nativeBlocks(drive, *identify)
                                     : protocols::readNumber(*identify, in::NSZE);
    return blocks == 0 ? 0 : static_cast<std::uint32_t>((blocks - 1) & UINT32_MAX);
}

StatusCode checkVendorFeature(const NvmeDrive& drive, std::uint8_t feature,
                              const AdminCommandFields& fields) {
    constexpr std::uint32_t LOW_POWER = 2;
    constexpr std::uint32_t SMBUS_DISABLED = 255;
    switch (feature) {
    case ids::POWER_GOVERNOR:
        return invalidUnless(fields.cdw11 <= LOW_POWER);
    case ids::MAXIMUM_LBA:
        return checkMaximumLba(drive, fields);
    case ids::RESET_TIMED_WORKLOAD:
    case ids::RESET_CRC_ERROR_COUNT:
        return invalidUnless(fields.cdw11 == 1);
    case ids::SMBUS_ADDRESS:
        return invalidUnless(fields.cdw11 >= 1 && fields.cdw11 <= SMBUS_DISABLED);
    case ids::LATENCY_TRACKING:
        return invalidUnless(fields.cdw11 <= 1);
    default:
        return {};
    }
}

FeatureStorage applyVendorFeature(NvmeDrive& drive, std::uint8_t feature,
                                  const AdminCommandFields& fields) {
    switch (feature) {
    case ids::MAXIMUM_LBA:
        setMaximumLba(drive, fields);
        return FeatureStorage::NONE;
    case ids::RESET_TIMED_WORKLOAD:
        resetTimedWorkload(drive);
        return FeatureStorage::NONE;
    case ids::RESET_CRC_ERROR_COUNT:
        resetCrcErrorCount(drive);
        return FeatureStorage::NONE;
    case ids::SMBUS_ADDRESS:
        return FeatureStorage::SAVED;
    case ids::LATENCY_TRACKING:
        if (fields.cdw11 == 1 && !isLatencyTracked(drive)) clearLatencies(drive);
        return FeatureStorage::AS_ASKED;
    default:
        return FeatureStorage::AS_ASKED;
    }
}

}  // namespace orvel::simulator
