// Get Features and Set Features.
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Features.h"
#include "simulator/NvmeExecutors.h"

#include <optional>

namespace orvel::simulator {

using namespace protocols::nvme;
namespace vendor = protocols::norvo::feature_ids;

namespace {

/// The bits of command dword 11 that features have: all that are defined, and those of them that
/// tell a part. LBA Range Type is left out: it has more than a dword.
struct FeatureRow {
    std::uint8_t feature;
    std::uint32_t bits;
    std::uint32_t partBits;
};

// clang-format off
constexpr FeatureRow ROWS[] = {
//   feature                                    bits        part
    {features::ARBITRATION,                     0xFFFFFF07, 0},
    {features::POWER_MANAGEMENT,                0x000000FF, 0},
    {features::TEMPERATURE_THRESHOLD,           0x003FFFFF, 0x003F0000},
    {features::ERROR_RECOVERY,                  0x0001FFFF, 0},
    {features::VOLATILE_WRITE_CACHE,            0x00000001, 0},
    {features::NUMBER_OF_QUEUES,                0xFFFFFFFF, 0},
    {features::INTERRUPT_COALESCING,            0x0000FFFF, 0},
    {features::INTERRUPT_VECTOR_CONFIGURATION,  0x0001FFFF, 0x0000FFFF},
    {features::WRITE_ATOMICITY,                 0x00000001, 0},
    {features::ASYNCHRONOUS_EVENT_CONFIGURATION, 0x00007FFF, 0},
    {vendor::POWER_GOVERNOR,                    0xFFFFFFFF, 0},
    {vendor::MAXIMUM_LBA,                       0xFFFFFFFF, 0},
    {vendor::RESET_TIMED_WORKLOAD,              0xFFFFFFFF, 0},
    {vendor::RESET_CRC_ERROR_COUNT,             0xFFFFFFFF, 0},
    {vendor::SMBUS_ADDRESS,                     0xFFFFFFFF, 0},
    {vendor::LATENCY_TRACKING,                  0xFFFFFFFF, 0},
};

// clang-format on

/// Null if the drive doesn't have the feature.
const FeatureRow* findFeature(const NvmeDrive& drive, std::uint32_t id) {
    for (const FeatureRow& row : ROWS) {
        const bool isCache = row.feature == features::VOLATILE_WRITE_CACHE;
        if (row.feature != id || !drive.features.contains(row.feature)) continue;
        if (isCache && !supports(drive, identify_controller::VWC, vwc::PRESENT)) return nullptr;
        return &row;
    }
    return nullptr;
}

std::uint32_t partOf(const NvmeFeature& feature, const FeatureRow& row,
                     const AdminCommandFields& fields) {
    return feature.isNamespaceSpecific ? fields.nsid : fields.cdw11 & row.partBits;
}

/// What the part comes from, without anybody setting it.
std::uint32_t defaultValue(const NvmeFeature& feature, std::uint32_t part) {
    return feature.defaults.at(feature.isNamespaceSpecific ? 0 : part);
}

std::uint32_t savedValue(const NvmeFeature& feature, std::uint32_t part) {
    const auto found = feature.saved.find(part);
    return found != feature.saved.end() ? found->second : defaultValue(feature, part);
}

/// Bit 0: saveable, bit 1: namespace specific, bit 2: changeable (5.13).
std::uint32_t capabilities(const NvmeFeature& feature) {
    return (feature.isSaveable ? 1U : 0U) | (feature.isNamespaceSpecific ? 2U : 0U) |
           (feature.isChangeable ? 4U : 0U);
}

StatusCode checkNamespace(const NvmeDrive& drive, std::uint32_t nsid) {
    switch (stateOf(drive, nsid)) {
    case NamespaceState::INVALID:
        return status_codes::INVALID_NAMESPACE_OR_FORMAT;
    case NamespaceState::ATTACHED:
        return {};
    default:
        return status_codes::INVALID_FIELD_IN_COMMAND;
    }
}

/// Whether a value makes sense for the drive.
StatusCode checkValue(const NvmeDrive& drive, std::uint8_t feature, std::uint32_t value) {
    namespace ic = identify_controller;
    constexpr std::uint32_t RESERVED_TYPE = 2;
    constexpr std::uint32_t TOO_MANY_QUEUES = 0xFFFF;
    constexpr std::uint32_t NOTICES = 0x00007F00;
    bool isValid = true;
    switch (feature) {
    case features::POWER_MANAGEMENT:
        isValid = readBits(value, power_management::PS) <=
                  protocols::readNumber(drive.identifyController, ic::NPSS);
        break;
    case features::TEMPERATURE_THRESHOLD:
        isValid = readBits(value, temperature_threshold::THSEL) < RESERVED_TYPE;
        break;
    case features::NUMBER_OF_QUEUES:
        isValid = readBits(value, number_of_queues::NSQR) != TOO_MANY_QUEUES &&
                  readBits(value, number_of_queues::NCQR) != TOO_MANY_QUEUES;
        // Queues are there as long as the drive is in use, and it is too late to ask for others.
        if (isValid) return status_codes::COMMAND_SEQUENCE_ERROR;
        break;
    case features::ASYNCHRONOUS_EVENT_CONFIGURATION:
        isValid =
            (value & NOTICES & ~protocols::readNumber(drive.identifyController, ic::OAES)) == 0;
        break;
    default:
        break;
    }
    return isValid ? StatusCode{} : status_codes::INVALID_FIELD_IN_COMMAND;
}

/// The parts that a Set Features is about: usually one; none if there is no such part.
std::vector<std::uint32_t> partsToSet(const NvmeDrive& drive, const NvmeFeature& feature,
                                      const FeatureRow& row, const AdminCommandFields& fields) {
    constexpr std::uint32_t ALL_SENSORS = 0xF;
    if (feature.isNamespaceSpecific && fields.nsid == ALL_NAMESPACES) {
        return attachedNamespaces(drive);
    }
    if (feature.isNamespaceSpecific) return {fields.nsid};
    const bool isForAll = row.feature == features::TEMPERATURE_THRESHOLD &&
                          readBits(fields.cdw11, temperature_threshold::TMPSEL) == ALL_SENSORS;
    std::vector<std::uint32_t> parts;
    for (const auto& [part, value] : feature.defaults) {
        const bool isMeant = isForAll ? readBits(part, temperature_threshold::THSEL) ==
                                            readBits(fields.cdw11, temperature_threshold::THSEL)
                                      : part == (fields.cdw11 & row.partBits);
        if (isMeant) parts.push_back(part);
    }
    return parts;
}

/// All that speaks against a Set Features, but for what it sets.
StatusCode checkChange(const NvmeDrive& drive, const NvmeFeature& feature, const FeatureRow& row,
                       const AdminCommandFields& fields) {
    const bool isSaved = readBits(fields.cdw10, set_features_cdw10::SV) != 0;
    const bool canSave =
        feature.isSaveable && supports(drive, identify_controller::ONCS, oncs::SAVE_AND_SELECT);
    const bool isForOneNamespace = fields.nsid != 0 && fields.nsid != ALL_NAMESPACES;
    if (isSaved && !canSave) return status_codes::FEATURE_IDENTIFIER_NOT_SAVEABLE;
    if (!feature.isChangeable) return status_codes::FEATURE_NOT_CHANGEABLE;
    if (!feature.isNamespaceSpecific && isForOneNamespace) {
        return stateOf(drive, fields.nsid) == NamespaceState::INVALID
                   ? status_codes::INVALID_NAMESPACE_OR_FORMAT
                   : status_codes::FEATURE_NOT_NAMESPACE_SPECIFIC;
    }
    if (feature.isNamespaceSpecific && fields.nsid != ALL_NAMESPACES) {
        const StatusCode status = checkNamespace(drive, fields.nsid);
        if (status != status_codes::SUCCESSFUL_COMPLETION) return status;
    }
    const StatusCode status = checkValue(drive, row.feature, fields.cdw11 & row.bits);
    if (status != status_codes::SUCCESSFUL_COMPLETION) return status;
    return checkVendorFeature(drive, row.feature, fields);
}

}  // namespace

std::uint32_t currentValue(const NvmeFeature& feature, std::uint32_t part) {
    const auto found = feature.current.find(part);
    return found != feature.current.end() ? found->second : savedValue(feature, part);
}

NvmeAnswer executeGetFeatures(NvmeDrive& drive, const NvmeRequest& request) {
    const AdminCommandFields& fields = request.fields;
    const std::uint32_t select = readBits(fields.cdw10, get_features_cdw10::SEL);
    const FeatureRow* row = findFeature(drive, readBits(fields.cdw10, get_features_cdw10::FID));
    const bool canSelect = supports(drive, identify_controller::ONCS, oncs::SAVE_AND_SELECT);
    if (!row || (select != feature_select::CURRENT && !canSelect)) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }

    const NvmeFeature& feature = drive.features.at(row->feature);
    const std::uint32_t part = partOf(feature, *row, fields);
    NvmeAnswer answer;
    if (select == feature_select::SUPPORTED_CAPABILITIES) {
        answer.dword0 = capabilities(feature);
        return answer;
    }
    if (feature.isNamespaceSpecific) {
        const StatusCode status = checkNamespace(drive, fields.nsid);
        if (status != status_codes::SUCCESSFUL_COMPLETION) return refusal(status);
    } else if (!feature.defaults.contains(part)) {
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    switch (select) {
    case feature_select::CURRENT:
        answer.dword0 = currentValue(feature, part);
        break;
    case feature_select::DEFAULT:
        answer.dword0 = defaultValue(feature, part);
        break;
    case feature_select::SAVED:
        answer.dword0 = savedValue(feature, part);
        break;
    default:
        return refusal(status_codes::INVALID_FIELD_IN_COMMAND);
    }
    answer.dword0 = vendorFeatureValue(drive, row->feature, select).value_or(answer.dword0);
    return answer;
}

NvmeAnswer executeSetFeatures(NvmeDrive& drive, const NvmeRequest& request) {
    const AdminCommandFields& fields = request.fields;
    const FeatureRow* row = findFeature(drive, readBits(fields.cdw10, set_features_cdw10::FID));
    if (!row) return refusal(status_codes::INVALID_FIELD_IN_COMMAND);

    NvmeFeature& feature = drive.features.at(row->feature);
    const StatusCode status = checkChange(drive, feature, *row, fields);
    if (status != status_codes::SUCCESSFUL_COMPLETION) return refusal(status);
    const auto parts = partsToSet(drive, feature, *row, fields);
    if (parts.empty()) return refusal(status_codes::INVALID_FIELD_IN_COMMAND);

    const FeatureStorage storage = applyVendorFeature(drive, row->feature, fields);
    if (storage == FeatureStorage::NONE) return {};
    const bool isSaved =
        storage == FeatureStorage::SAVED || readBits(fields.cdw10, set_features_cdw10::SV) != 0;
    for (const std::uint32_t part : parts) {
        const std::uint32_t partInValue = feature.isNamespaceSpecific ? 0 : part;
        const std::uint32_t value = (fields.cdw11 & row->bits & ~row->partBits) | partInValue;
        feature.current[part] = value;
        if (isSaved) feature.saved[part] = value;
    }
    return {};
}

}  // namespace orvel::simulator
