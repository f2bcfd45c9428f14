#include "interfaces/orveli/identification/NvmeProtocolIdentifier.h"

#include "core/CoreStatuses.h"
#include "core/Device.h"
#include "features/DeviceAttributes.h"
#include "features/ProductIdentifiers.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/identification/Identification.h"
#include "interfaces/orveli/identification/NorvoProducts.h"
#include "protocols/norvo/NativeMaximum.h"
#include "protocols/norvo/Structures.h"
#include "protocols/nvme/LbaFormats.h"
#include "protocols/nvme/Structures.h"

#include <cstdint>

namespace orvel::interfaces::orveli::identification {

using core::Device;
using core::Payload;
using core::Status;
using protocols::Field;
using protocols::readNumber;
using protocols::readText;
namespace attributes = orvel::features::device_attributes;
namespace nvme = protocols::nvme;
namespace norvo = protocols::norvo;
namespace controller = nvme::identify_controller;
namespace name_space = nvme::identify_namespace;

namespace {

constexpr std::uint32_t FIRST_NAMESPACE = 1;

struct BitsRow {
    AttributeFunction attribute;
    Field field;
    nvme::BitField bits;
};

// clang-format off
constexpr BitsRow CAPABILITIES[] = {
//   attribute                                    field                bits
    {&attributes::IsDualPort,                     controller::CMIC,    nvme::cmic::MULTIPLE_PORTS},
    {&attributes::FormatNVMSupported,             controller::OACS,    nvme::oacs::FORMAT_NVM},
    {&attributes::DownloadMicrocodePossible,      controller::OACS,    nvme::oacs::FIRMWARE},
    {&attributes::NamespaceManagementSupported,   controller::OACS,    nvme::oacs::NAMESPACE_MANAGEMENT},
    {&attributes::SelfTestSupported,              controller::OACS,    nvme::oacs::DEVICE_SELF_TEST},
    {&attributes::DirectivesSupported,            controller::OACS,    nvme::oacs::DIRECTIVES},
    {&attributes::TelemetryLogSupported,          controller::LPA,     nvme::lpa::TELEMETRY},
    {&attributes::SanitizeBlockEraseSupported,    controller::SANICAP, nvme::sanicap::BES},
    {&attributes::SanitizeCryptoScrambleSupported,controller::SANICAP, nvme::sanicap::CES},
    {&attributes::TrimSupported,                  controller::ONCS,    nvme::oncs::DATASET_MANAGEMENT},
    {&attributes::FormatNVMCryptoEraseSupported,  controller::FNA,     nvme::fna::CRYPTOGRAPHIC_ERASE},
    {&attributes::WriteCacheSupported,            controller::VWC,     nvme::vwc::PRESENT},
};

constexpr BitsRow NAMESPACE_SETTINGS[] = {
//   attribute                                    field                bits
    {&attributes::LBAFormat,                      name_space::FLBAS,   nvme::flbas::FORMAT},
    {&attributes::MetadataSetting,                name_space::FLBAS,   nvme::flbas::METADATA_AT_END},
    {&attributes::ProtectionInformation,          name_space::DPS,     nvme::dps::TYPE},
    {&attributes::ProtectionInformationLocation,  name_space::DPS,     nvme::dps::FIRST_EIGHT_BYTES},
};

constexpr Field CONTROLLER_TEXTS[] = {
    controller::SN,
    controller::MN,
    controller::FR,
};

// clang-format on

void storeVersion(Device& device, const Payload& data) {
    const auto version = static_cast<std::uint32_t>(readNumber(data, controller::VER));
    const std::uint32_t major = nvme::readBits(version, nvme::version::MJR);
    const std::uint32_t minor = nvme::readBits(version, nvme::version::MNR);
    store(device, attributes::NVMe1Point2OrGreater(), major > 1 || (major == 1 && minor >= 2));
    store(device, attributes::NVMe1Point3OrGreater(), major > 1 || (major == 1 && minor >= 3));
    if (version == 0) return;  // a drive older than version 1.2 doesn't tell
    storeNumber(device, attributes::NVMeMajorVersion(), major);
    storeNumber(device, attributes::NVMeMinorVersion(), minor);
    storeNumber(device, attributes::NVMeTertiaryVersion(),
                nvme::readBits(version, nvme::version::TER));
}

void storeRpmb(Device& device, const Payload& data) {
    const auto rpmb = static_cast<std::uint32_t>(readNumber(data, controller::RPMBS));
    const bool isSupported = nvme::readBits(rpmb, nvme::rpmbs::NUMBER_OF_UNITS) != 0;
    store(device, attributes::RPMBSupported(), isSupported);
    if (isSupported) {
        storeNumber(device, attributes::RPMBAccessSize(),
                    nvme::readBits(rpmb, nvme::rpmbs::ACCESS_SIZE));
    }
}

void storeController(Device& device, const Payload& data) {
    requireText(data, CONTROLLER_TEXTS);
    const std::string model = readText(data, controller::MN);
    storeText(device, attributes::ModelNumber(), model);
    storeText(device, attributes::SerialNumber(), readText(data, controller::SN));
    storeText(device, attributes::Firmware(), readText(data, controller::FR));
    if (isNorvoModel(model)) {
        storeText(device, attributes::Bootloader(),
                  readText(data, norvo::identify_controller::Bootloader));
    }
    storeVersion(device, data);
    for (const BitsRow& row : CAPABILITIES)
        store(device, row.attribute(), nvme::readBits(data, row.field, row.bits) != 0);
    const bool isSanitizeSupported =
        nvme::readBits(data, controller::SANICAP, nvme::sanicap::CES) != 0 ||
        nvme::readBits(data, controller::SANICAP, nvme::sanicap::BES) != 0 ||
        nvme::readBits(data, controller::SANICAP, nvme::sanicap::OWS) != 0;
    store(device, attributes::SanitizeSupported(), isSanitizeSupported);
    storeRpmb(device, data);
    storeNumber(device, attributes::NVMeControllerID(), readNumber(data, controller::CNTLID));
    storeNumber(device, attributes::NumberOfNamespacesSupported(),
                readNumber(data, controller::NN));
    storeNumber(device, attributes::NumErrorLogPageEntries(),
                readNumber(data, controller::ELPE) + 1);
}

/// The first namespace that is attached to the controller, or 0.
std::uint32_t firstNamespace(Device& device) {
    try {
        const auto list = nvme::readNamespaceList(
            nvme_access::identify(device, nvme::cns::ACTIVE_NAMESPACE_LIST));
        return list.empty() ? 0 : list.front();
    } catch (const Status& status) {
        // Version 1.0 doesn't know the list.
        if (status == core::statuses::nvmeCommandProblem()) return FIRST_NAMESPACE;
        throw;
    }
}

void storeBlockSizes(Device& device, const Payload& data) {
    const std::uint32_t format = nvme::formatInUse(data);
    const std::uint64_t metadata = nvme::metadataSize(data, format);
    const std::uint64_t dataSize = nvme::blockSize(data, format);
    storeNumber(device, attributes::MetadataSize(), metadata);
    if (dataSize == 0) return;
    const bool isExtended =
        nvme::readBits(data, name_space::FLBAS, nvme::flbas::METADATA_AT_END) != 0;
    storeNumber(device, attributes::SectorDataSize(), dataSize);
    storeNumber(device, attributes::SectorSize(), isExtended ? dataSize + metadata : dataSize);
}

void storeNamespace(Device& device, std::uint32_t nsid, const Payload& data) {
    store(device, attributes::NamespaceId(), nsid);
    const std::uint64_t blocks = readNumber(data, name_space::NSZE);
    if (blocks != 0) store(device, attributes::MaximumLBA(), blocks - 1);
    for (const BitsRow& row : NAMESPACE_SETTINGS)
        storeNumber(device, row.attribute(), nvme::readBits(data, row.field, row.bits));
    storeNumber(device, attributes::NumLBAFormats(), readNumber(data, name_space::NLBAF) + 1);
    storeNumber(device, attributes::EndToEndDataProtCapabilities(),
                readNumber(data, name_space::DPC));
    storeBlockSizes(device, data);
}

/// In the blocks that the maximum LBA has, or the two couldn't be compared.
void storeNativeMaximum(Device& device, std::uint32_t nsid, const Payload& controllerData) {
    if (nsid != FIRST_NAMESPACE || !isNorvoModel(readText(controllerData, controller::MN))) return;
    const std::uint64_t blocks =
        norvo::nativeBlocks(controllerData, device.readUnsigned64(attributes::SectorDataSize()));
    if (blocks != 0) store(device, attributes::NativeMaxLBA(), blocks - 1);
}

void identifyDrive(Device& device) {
    const Payload data = nvme_access::identify(device, nvme::cns::CONTROLLER);
    storeController(device, data);
    const std::uint32_t nsid = firstNamespace(device);
    if (nsid == 0) return;
    storeNamespace(device, nsid, nvme_access::identify(device, nvme::cns::NAMESPACE, nsid));
    storeNativeMaximum(device, nsid, data);
}

}  // namespace

Status NvmeProtocolIdentifier::identify(Device& device) {
    if (!isNvme(device)) return {};
    store(device, attributes::ProductProtocol(),
          orvel::features::product_identifiers::norvo_ssd::protocols::NVME);
    return attempt(device, [&] { identifyDrive(device); });
}

std::unique_ptr<core::ProtocolIdentifier> NvmeProtocolIdentifier::clone() const {
    return std::make_unique<NvmeProtocolIdentifier>(*this);
}

}  // namespace orvel::interfaces::orveli::identification
