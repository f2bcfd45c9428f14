#include "interfaces/orveli/identification/AtaProtocolIdentifier.h"

#include "core/Device.h"
#include "features/DeviceAttributes.h"
#include "features/ProductIdentifiers.h"
#include "interfaces/orveli/access/AtaAccess.h"
#include "interfaces/orveli/access/DriveKind.h"
#include "interfaces/orveli/identification/Identification.h"
#include "interfaces/orveli/identification/NorvoProducts.h"
#include "protocols/ata/IdentifyDevice.h"
#include "protocols/ata/Structures.h"
#include "protocols/norvo/Structures.h"

#include <cstdint>
#include <iterator>

namespace orvel::interfaces::orveli::identification {

using core::Device;
using core::Payload;
using core::Status;
using protocols::readNumber;
using protocols::readText;
namespace attributes = orvel::features::device_attributes;
namespace ata = protocols::ata;
namespace words = ata::identify_device;

namespace {

constexpr std::uint16_t NOT_ROTATING = 0x0001;
constexpr std::uint16_t SLOWEST_ROTATION = 0x0401;
constexpr std::uint16_t FASTEST_ROTATION = 0xFFFE;

struct BitsRow {
    AttributeFunction attribute;
    words::Bits bits;
};

// clang-format off
constexpr BitsRow CAPABILITIES[] = {
//   attribute                                     bits
    {&attributes::TCGSupported,                    words::word_48::TRUSTED_COMPUTING},
    {&attributes::SanitizeSupported,               words::word_59::SANITIZE},
    {&attributes::SanitizeBlockEraseSupported,     words::word_59::BLOCK_ERASE_EXT},
    {&attributes::SanitizeCryptoScrambleSupported, words::word_59::CRYPTO_SCRAMBLE_EXT},
    {&attributes::NCQ,                             words::word_76::NCQ},
    {&attributes::SataGen1,                        words::word_76::GEN1},
    {&attributes::SataGen2,                        words::word_76::GEN2},
    {&attributes::SataGen3,                        words::word_76::GEN3},
    {&attributes::DIPMSupported,                   words::word_78::DEVICE_INITIATED_POWER_MANAGEMENT},
    {&attributes::DIPMEnabled,                     words::word_79::DEVICE_INITIATED_POWER_MANAGEMENT},
    {&attributes::WriteCacheSupported,             words::word_82::VOLATILE_WRITE_CACHE},
    {&attributes::DownloadMicrocodePossible,       words::word_83::DOWNLOAD_MICROCODE},
    {&attributes::SelfTestSupported,               words::word_84::SMART_SELF_TEST},
    {&attributes::SMARTSelfTestSupported,          words::word_84::SMART_SELF_TEST},
    {&attributes::WriteCacheEnabled,               words::word_85::VOLATILE_WRITE_CACHE},
    {&attributes::SMARTEnabled,                    words::word_85::SMART},
    {&attributes::AccessibleMaxAddressSupported,   words::word_119::ACCESSIBLE_MAX_ADDRESS},
    {&attributes::SecuritySupported,               words::word_128::SUPPORTED},
    {&attributes::SecurityEnabled,                 words::word_128::ENABLED},
    {&attributes::SecurityLocked,                  words::word_128::LOCKED},
    {&attributes::SecurityFrozen,                  words::word_128::FROZEN},
    {&attributes::TrimSupported,                   words::word_169::TRIM},
};

constexpr protocols::Field DEVICE_TEXTS[] = {
    words::SerialNumber,
    words::FirmwareRevision,
    words::ModelNumber,
};

/// Coded values of the signal speed.
constexpr const char* SPEEDS[] = {"", "1.5 Gb/s", "3.0 Gb/s", "6.0 Gb/s"};

// clang-format on

void storeSpeed(Device& device, const Payload& data) {
    if (!words::isValid(data, words::word_77::NEGOTIATED_SPEED)) return;
    const std::uint16_t code = words::readBits(data, words::word_77::NEGOTIATED_SPEED);
    if (code < std::size(SPEEDS)) {
        storeText(device, attributes::SataNegotiatedSpeed(), SPEEDS[code]);
    }
}

void storeRotation(Device& device, const Payload& data) {
    const std::uint16_t rate = words::readBits(data, words::word_217::ROTATION_RATE);
    if (rate == NOT_ROTATING) store(device, attributes::HDD(), false);
    if (rate >= SLOWEST_ROTATION && rate <= FASTEST_ROTATION) {
        store(device, attributes::HDD(), true);
    }
}

void storeSize(Device& device, const Payload& data) {
    const std::uint64_t sectors = words::sectorCount(data);
    if (sectors != 0) store(device, attributes::MaximumLBA(), sectors - 1);
    storeNumber(device, attributes::SectorSize(), words::sectorSize(data));
}

void storeIdentifyData(Device& device, const Payload& data) {
    requireText(data, DEVICE_TEXTS);
    const std::string model = readText(data, words::ModelNumber);
    storeText(device, attributes::ModelNumber(), model);
    storeText(device, attributes::SerialNumber(), readText(data, words::SerialNumber));
    storeText(device, attributes::Firmware(), readText(data, words::FirmwareRevision));
    if (isNorvoModel(model)) {
        storeText(device, attributes::Bootloader(),
                  readText(data, protocols::norvo::identify_device::Bootloader));
    }
    for (const BitsRow& row : CAPABILITIES) {
        store(device, row.attribute(), words::isReported(data, row.bits));
    }
    store(device, attributes::eDriveSupported(),
          device.isSet(attributes::TCGSupported()) &&
              words::isSet(data, words::word_69::IEEE_1667));
    if (device.isSet(attributes::TrimSupported())) {
        storeNumber(device, attributes::TrimSize(),
                    readNumber(data, words::MaximumDataSetManagementBlocks));
    }
    if (words::isReported(data, words::word_87::WORLD_WIDE_NAME)) {
        store(device, attributes::WWID(), words::readWorldWideName(data));
    }
    storeSpeed(device, data);
    storeRotation(device, data);
    storeSize(device, data);
}

/// A refusal is no failure: a drive may keep the address to itself while it is locked.
void storeNativeMaximum(Device& device) {
    if (!device.isSet(attributes::AccessibleMaxAddressSupported())) return;
    const auto answer = ata_access::ask(device, ata::getNativeMaxAddressExt());
    if (answer.returned.isSuccess()) {
        store(device, attributes::NativeMaxLBA(), answer.returned.lba);
    }
}

void identifyDrive(Device& device) {
    storeIdentifyData(device, ata_access::identifyDevice(device));
    storeNativeMaximum(device);
}

}  // namespace

Status AtaProtocolIdentifier::identify(Device& device) {
    if (!isAta(device)) return {};
    store(device, attributes::ProductProtocol(),
          orvel::features::product_identifiers::norvo_ssd::protocols::ATA);
    return attempt(device, [&] { identifyDrive(device); });
}

std::unique_ptr<core::ProtocolIdentifier> AtaProtocolIdentifier::clone() const {
    return std::make_unique<AtaProtocolIdentifier>(*this);
}

}  // namespace orvel::interfaces::orveli::identification
