#include "interfaces/orveli/jobs/MaxAddressJob.h"

#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobConstants.h"
#include "features/JobProperties.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/access/NvmeAccess.h"
#include "interfaces/orveli/jobs/MaxAddressGoal.h"
#include "interfaces/orveli/jobs/SettingWrites.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/norvo/NativeMaximum.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/LbaFormats.h"
#include "protocols/nvme/Structures.h"

namespace orvel::interfaces::orveli::jobs {

using core::Device;
using core::Payload;
using core::Status;
namespace ata = protocols::ata;
namespace ata_identify = protocols::ata::identify_device;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
namespace statuses = features::statuses;

namespace {

// SATA.

enum class Method { ACCESSIBLE_MAX_ADDRESS, HOST_PROTECTED_AREA };

Method methodOf(const Device& device, const Payload& identify) {
    const bool hasAccessibleMaxAddress =
        device.isSet(features::device_attributes::AccessibleMaxAddressSupported()) ||
        ata_identify::isReported(identify, ata_identify::word_119::ACCESSIBLE_MAX_ADDRESS);
    if (hasAccessibleMaxAddress) return Method::ACCESSIBLE_MAX_ADDRESS;
    if (ata_identify::isReported(identify, ata_identify::word_82::HPA))
        return Method::HOST_PROTECTED_AREA;
    throw statuses::featureNotSupportedByDrive();
}

void setOnAta(Device& device, const MaxAddressGoal& goal) {
    const Payload identify = ata_access::identifyDevice(device);
    const bool isAccessible = methodOf(device, identify) == Method::ACCESSIBLE_MAX_ADDRESS;
    // SET MAX ADDRESS EXT has to follow READ NATIVE MAX ADDRESS EXT immediately.
    const auto native = ata_access::send(device, isAccessible ? ata::getNativeMaxAddressExt()
                                                              : ata::readNativeMaxAddressExt());
    const std::uint64_t lba = goal.toLba(native.returned.lba, ata_identify::sectorSize(identify));
    const ata::AtaCommand command =
        isAccessible ? ata::setAccessibleMaxAddressExt(lba)
                     : ata::setMaxAddressExt(lba, ata::MaxAddressLifetime::OVER_POWER_OFF);
    setting_writes::explainRefusal(
        [&] { ata_access::send(device, command); },
        "A drive takes one change of its maximum address in a power cycle.");
    if (ata_identify::sectorCount(ata_access::identifyDevice(device)) != lba + 1)
        throw setting_writes::valueNotTaken();
}

// NVMe.

constexpr std::uint32_t FIRST_NAMESPACE = 1;

struct BlockFormat {
    std::uint64_t dataBytes;
    bool hasMetadata;
};

/// Throws 10/3 if there is no such namespace, or nothing that can be its size.
BlockFormat readFormat(Device& device) {
    const Payload identify = nvme_access::identify(device, nvme::cns::NAMESPACE, FIRST_NAMESPACE);
    const std::uint32_t format = nvme::formatInUse(identify);
    const std::uint64_t dataBytes = nvme::blockSize(identify, format);
    if (dataBytes == 0) throw statuses::featureNotSupportedByDrive();
    return {dataBytes, nvme::metadataSize(identify, format) != 0};
}

/// The highest native LBA in blocks of this size. Throws 10/3 if the drive doesn't tell one.
std::uint64_t nativeMaximum(Device& device, std::uint64_t blockBytes) {
    const Payload controller = nvme_access::identify(device, nvme::cns::CONTROLLER);
    const std::uint64_t blocks = norvo::nativeBlocks(controller, blockBytes);
    if (blocks == 0) throw statuses::featureNotSupportedByDrive();
    return blocks - 1;
}

void setOnNvme(Device& device, const MaxAddressGoal& goal) {
    constexpr unsigned UPPER_DWORD = 32;
    requireNorvo(device);
    const BlockFormat format = readFormat(device);
    // Capacities are counted in blocks of plain data.
    const std::uint64_t lba = goal.toLba(nativeMaximum(device, format.dataBytes),
                                         format.hasMetadata ? 0 : format.dataBytes);
    const nvme::FeatureChange change{.feature = norvo::feature_ids::MAXIMUM_LBA,
                                     .cdw11 = static_cast<std::uint32_t>(lba),
                                     .cdw12 = static_cast<std::uint32_t>(lba >> UPPER_DWORD)};
    setting_writes::explainRefusal([&] { setting_writes::set(device, change); },
                                   "A drive takes it while namespace 1 is its only one.");
    // The feature's value tells but the lower half of the LBA.
    const Payload identify = nvme_access::identify(device, nvme::cns::NAMESPACE, FIRST_NAMESPACE);
    if (protocols::readNumber(identify, nvme::identify_namespace::NSZE) != lba + 1)
        throw setting_writes::valueNotTaken();
}

}  // namespace

MaxAddressJob::MaxAddressJob() : SettingJob(MaxAddress, Kind::ANY) {}

std::unique_ptr<Job> MaxAddressJob::clone() const {
    return std::make_unique<MaxAddressJob>();
}

Status MaxAddressJob::set(Device& device, const core::Attribute& property) {
    requireName(property, features::max_address::MaximumLBA());
    const MaxAddressGoal goal(textOf(property));
    requireNoRaidMember(device);
    requireNoPartitions(device);
    if (isNvme(device)) {
        setOnNvme(device, goal);
    } else {
        setOnAta(device, goal);
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
