#include "interfaces/orveli/jobs/MaxAddressJob.h"

#include "core/CoreStatuses.h"
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
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
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

/// Validity of words that have a check of their own.
constexpr std::uint16_t WORD_IS_VALID = 1;

// SATA.

enum class Method { ACCESSIBLE_MAX_ADDRESS, HOST_PROTECTED_AREA };

Method methodOf(const Device& device, const Payload& identify) {
    const bool hasAccessibleMaxAddress =
        device.isSet(features::device_attributes::AccessibleMaxAddressSupported()) ||
        (ata_identify::readBits(identify, ata_identify::word_119::VALIDITY) == WORD_IS_VALID &&
         ata_identify::isSet(identify, ata_identify::word_119::ACCESSIBLE_MAX_ADDRESS));
    if (hasAccessibleMaxAddress) return Method::ACCESSIBLE_MAX_ADDRESS;
    if (ata_identify::isSet(identify, ata_identify::word_82::HPA))
        return Method::HOST_PROTECTED_AREA;
    throw statuses::featureNotSupportedByDrive();
}

std::uint64_t sectorBytesOfAta(const Payload& identify) {
    const bool isLong =
        ata_identify::readBits(identify, ata_identify::word_106::VALIDITY) == WORD_IS_VALID &&
        ata_identify::isSet(identify, ata_identify::word_106::LONG_LOGICAL_SECTOR);
    if (!isLong) return ata::BLOCK_SIZE;
    return protocols::readNumber(identify, ata_identify::LogicalSectorSize) * ata::WORD;
}

std::uint64_t userSectors(const Payload& identify) {
    const bool isExtended = ata_identify::isSet(identify, ata_identify::word_69::EXTENDED_SECTORS);
    return protocols::readNumber(identify, isExtended ? ata_identify::ExtendedUserAddressableSectors
                                                      : ata_identify::UserAddressableSectors);
}

void setOnAta(Device& device, const MaxAddressGoal& goal) {
    const Payload identify = ata_access::identifyDevice(device);
    const bool isAccessible = methodOf(device, identify) == Method::ACCESSIBLE_MAX_ADDRESS;
    // SET MAX ADDRESS EXT has to follow READ NATIVE MAX ADDRESS EXT immediately.
    const auto native = ata_access::send(device, isAccessible ? ata::getNativeMaxAddressExt()
                                                              : ata::readNativeMaxAddressExt());
    const std::uint64_t lba = goal.toLba(native.returned.lba, sectorBytesOfAta(identify));
    const ata::AtaCommand command =
        isAccessible ? ata::setAccessibleMaxAddressExt(lba)
                     : ata::setMaxAddressExt(lba, ata::MaxAddressLifetime::OVER_POWER_OFF);
    setting_writes::explainRefusal(
        [&] { ata_access::send(device, command); },
        "A drive takes one change of its maximum address in a power cycle.");
    if (userSectors(ata_access::identifyDevice(device)) != lba + 1)
        throw setting_writes::valueNotTaken();
}

// NVMe.

constexpr std::uint32_t FIRST_NAMESPACE = 1;

/// What the native maximum is counted in, whatever the format.
constexpr std::uint64_t NATIVE_BLOCK_BYTES = 512;

struct BlockFormat {
    std::uint64_t dataBytes;
    bool hasMetadata;
};

/// Throws 10/3 if there is no such namespace, or nothing that can be its size.
BlockFormat readFormat(Device& device) {
    namespace in = nvme::identify_namespace;
    constexpr std::uint64_t SMALLEST_EXPONENT = 9;
    constexpr std::uint64_t LARGEST_EXPONENT = 31;
    const Payload identify = nvme_access::identify(device, nvme::cns::NAMESPACE, FIRST_NAMESPACE);
    const std::uint32_t format = nvme::readBits(identify, in::FLBAS, nvme::flbas::FORMAT);
    const Payload lbaFormat = protocols::readEntry(identify, in::LBA_FORMATS, format);
    const std::uint64_t exponent = protocols::readNumber(lbaFormat, nvme::lba_format::LBADS);
    if (exponent < SMALLEST_EXPONENT || exponent > LARGEST_EXPONENT)
        throw statuses::featureNotSupportedByDrive();
    return {std::uint64_t{1} << exponent,
            protocols::readNumber(lbaFormat, nvme::lba_format::MS) != 0};
}

/// The highest native LBA in blocks of this size. Throws 10/3 if the drive doesn't tell one.
std::uint64_t nativeMaximum(Device& device, std::uint64_t blockBytes) {
    const Payload controller = nvme_access::identify(device, nvme::cns::CONTROLLER);
    const std::uint64_t native =
        protocols::readNumber(controller, norvo::identify_controller::NativeMaximumLBA);
    const bool isTold = native != 0 && native != UINT64_MAX;
    const std::uint64_t blocks = isTold ? (native + 1) / (blockBytes / NATIVE_BLOCK_BYTES) : 0;
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
    if (device.checkPartitions() == core::statuses::deviceHasPartitions())
        throw statuses::driveContainsPartition();
    if (isNvme(device)) {
        setOnNvme(device, goal);
    } else {
        setOnAta(device, goal);
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::jobs
