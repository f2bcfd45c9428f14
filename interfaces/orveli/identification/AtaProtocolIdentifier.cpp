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

constexpr std::uint16_t VALID = 1;  // 01b in the upper bits of a word
constexpr std::uint16_t NOT_ROTATING = 0x0001;
constexpr std::uint16_t SLOWEST_ROTATION = 0x0401;
constexpr std::uint16_t FASTEST_ROTATION = 0xFFFE;

/// What must hold for a bit to mean something.
enum class Condition { NONE, WORD_48, WORD_83, WORD_84, WORD_87, SERIAL_ATA, WORD_119 };

bool holds(const Payload& data, Condition condition) {
    switch (condition) {
    case Condition::NONE:
        return true;
    case Condition::WORD_48:
        return words::readBits(data, words::word_48::VALIDITY) == VALID;
    case Condition::WORD_83:
        return words::readBits(data, words::word_83::VALIDITY) == VALID;
    case Condition::WORD_84:
        return words::readBits(data, words::word_84::VALIDITY) == VALID;
    case Condition::WORD_87:
        return words::readBits(data, words::word_87::VALIDITY) == VALID;
    case Condition::SERIAL_ATA: {
        const std::uint64_t word = readNumber(data, words::SerialATACapabilities);
        return word != 0x0000 && word != 0xFFFF;
    }
    case Condition::WORD_119:
        return words::isSet(data, words::word_86::WORDS_119_TO_120_ARE_VALID) &&
               words::readBits(data, words::word_119::VALIDITY) == VALID;
    }
    return false;
}

struct BitsRow {
    AttributeFunction attribute;
    words::Bits bits;
    Condition condition;
};

// clang-format off
constexpr BitsRow CAPABILITIES[] = {
//   attribute                                     bits                                                 condition
    {&attributes::TCGSupported,                    words::word_48::TRUSTED_COMPUTING,                   Condition::WORD_48},
    {&attributes::SanitizeSupported,               words::word_59::SANITIZE,                            Condition::NONE},
    {&attributes::SanitizeBlockEraseSupported,     words::word_59::BLOCK_ERASE_EXT,                     Condition::NONE},
    {&attributes::SanitizeCryptoScrambleSupported, words::word_59::CRYPTO_SCRAMBLE_EXT,                 Condition::NONE},
    {&attributes::NCQ,                             words::word_76::NCQ,                                 Condition::SERIAL_ATA},
    {&attributes::SataGen1,                        words::word_76::GEN1,                                Condition::SERIAL_ATA},
    {&attributes::SataGen2,                        words::word_76::GEN2,                                Condition::SERIAL_ATA},
    {&attributes::SataGen3,                        words::word_76::GEN3,                                Condition::SERIAL_ATA},
    {&attributes::DIPMSupported,                   words::word_78::DEVICE_INITIATED_POWER_MANAGEMENT,   Condition::SERIAL_ATA},
    {&attributes::DIPMEnabled,                     words::word_79::DEVICE_INITIATED_POWER_MANAGEMENT,   Condition::SERIAL_ATA},
    {&attributes::WriteCacheSupported,             words::word_82::VOLATILE_WRITE_CACHE,                Condition::WORD_83},
    {&attributes::DownloadMicrocodePossible,       words::word_83::DOWNLOAD_MICROCODE,                  Condition::WORD_83},
    {&attributes::SelfTestSupported,               words::word_84::SMART_SELF_TEST,                     Condition::WORD_84},
    {&attributes::SMARTSelfTestSupported,          words::word_84::SMART_SELF_TEST,                     Condition::WORD_84},
    {&attributes::WriteCacheEnabled,               words::word_85::VOLATILE_WRITE_CACHE,                Condition::WORD_87},
    {&attributes::SMARTEnabled,                    words::word_85::SMART,                               Condition::WORD_87},
    {&attributes::AccessibleMaxAddressSupported,   words::word_119::ACCESSIBLE_MAX_ADDRESS,             Condition::WORD_119},
    {&attributes::SecuritySupported,               words::word_128::SUPPORTED,                          Condition::NONE},
    {&attributes::SecurityEnabled,                 words::word_128::ENABLED,                            Condition::NONE},
    {&attributes::SecurityLocked,                  words::word_128::LOCKED,                             Condition::NONE},
    {&attributes::SecurityFrozen,                  words::word_128::FROZEN,                             Condition::NONE},
    {&attributes::TrimSupported,                   words::word_169::TRIM,                               Condition::NONE},
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
    if (!holds(data, Condition::SERIAL_ATA)) return;
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

std::uint64_t sectorCount(const Payload& data) {
    if (words::isSet(data, words::word_69::EXTENDED_SECTORS)) {
        const std::uint64_t sectors = readNumber(data, words::ExtendedUserAddressableSectors);
        if (sectors != 0) return sectors;
    }
    const bool has48Bits =
        holds(data, Condition::WORD_83) && words::isSet(data, words::word_83::ADDRESS_48_BIT);
    return readNumber(data,
                      has48Bits ? words::UserAddressableSectors : words::UserAddressableSectors28);
}

void storeSize(Device& device, const Payload& data) {
    const std::uint64_t sectors = sectorCount(data);
    if (sectors != 0) store(device, attributes::MaximumLBA(), sectors - 1);
    const bool isLong = words::readBits(data, words::word_106::VALIDITY) == VALID &&
                        words::isSet(data, words::word_106::LONG_LOGICAL_SECTOR);
    if (!isLong) return;
    const std::uint64_t size = readNumber(data, words::LogicalSectorSize) * ata::WORD;
    if (size != 0) storeNumber(device, attributes::SectorSize(), size);
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
        store(device, row.attribute(), holds(data, row.condition) && words::isSet(data, row.bits));
    }
    store(device, attributes::eDriveSupported(),
          device.isSet(attributes::TCGSupported()) &&
              words::isSet(data, words::word_69::IEEE_1667));
    if (device.isSet(attributes::TrimSupported())) {
        storeNumber(device, attributes::TrimSize(),
                    readNumber(data, words::MaximumDataSetManagementBlocks));
    }
    if (holds(data, Condition::WORD_87) && words::isSet(data, words::word_87::WORLD_WIDE_NAME)) {
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
