// The accessible maximum address of SATA drives, and the native one.
#include "protocols/ata/CommandCodes.h"
#include "simulator/AtaExecutors.h"

#include <algorithm>

namespace orvel::simulator {

using namespace protocols::ata;
namespace id = identify_device;

namespace {

std::uint64_t accessibleMaxAddress(const AtaDrive& drive) {
    const auto sectors = readNumber(drive.identifyDevice, id::UserAddressableSectors);
    return sectors == 0 ? 0 : sectors - 1;
}

void setAccessibleMaxAddress(AtaDrive& drive, std::uint64_t maxAddress) {
    constexpr std::uint64_t MOST_OF_28_BITS = 0x0FFFFFFF;
    const std::uint64_t sectors = maxAddress + 1;
    writeNumber(drive.identifyDevice, id::UserAddressableSectors, sectors);
    writeNumber(drive.identifyDevice, id::UserAddressableSectors28,
                std::min(sectors, MOST_OF_28_BITS));
    if (supports(drive, id::word_69::EXTENDED_SECTORS)) {
        writeNumber(drive.identifyDevice, id::ExtendedUserAddressableSectors, sectors);
    }
}

AtaAnswer notFound() {
    return {.error = error_bits::IDNF};
}

AtaAnswer setAccessible(AtaDrive& drive, std::uint64_t maxAddress) {
    if (drive.isMaxAddressFrozen || drive.hasMaxAddressBeenSet) return aborted();
    if (maxAddress > drive.nativeMaxAddress) return notFound();
    setAccessibleMaxAddress(drive, maxAddress);
    drive.hasMaxAddressBeenSet = true;
    return {};
}

}  // namespace

AtaAnswer executeAccessibleMaxAddress(AtaDrive& drive, const AtaRequest& request) {
    switch (request.fields.feature) {
    case max_address_subcommands::GET_NATIVE:
        return {.lba = drive.nativeMaxAddress};
    case max_address_subcommands::SET_ACCESSIBLE:
        return setAccessible(drive, request.fields.lba);
    case max_address_subcommands::FREEZE_ACCESSIBLE:
        drive.isMaxAddressFrozen = true;
        return {};
    default:
        return aborted();
    }
}

AtaAnswer executeReadNativeMaxAddressExt(AtaDrive& drive, const AtaRequest& /*request*/) {
    return {.lba = drive.nativeMaxAddress};
}

AtaAnswer executeSetMaxAddressExt(AtaDrive& drive, const AtaRequest& request) {
    const bool outlastsPowerCycles = (request.fields.count & VALUE_VOLATILE) != 0;
    if (!drive.volatileState.hasReadNativeMaxAddress) return aborted();
    if (request.fields.lba > drive.nativeMaxAddress) return aborted();
    if (outlastsPowerCycles && drive.hasMaxAddressBeenSet) return notFound();
    if (outlastsPowerCycles) {
        drive.hasMaxAddressBeenSet = true;
        drive.maxAddressAtPowerOn.reset();
    } else if (!drive.maxAddressAtPowerOn) {
        drive.maxAddressAtPowerOn = accessibleMaxAddress(drive);
    }
    setAccessibleMaxAddress(drive, request.fields.lba);
    return {};
}

void resetMaxAddress(AtaDrive& drive) {
    if (drive.maxAddressAtPowerOn) setAccessibleMaxAddress(drive, *drive.maxAddressAtPowerOn);
    drive.maxAddressAtPowerOn.reset();
    drive.hasMaxAddressBeenSet = false;
    drive.volatileState.hasReadNativeMaxAddress = false;
    drive.isMaxAddressFrozen = false;
}

}  // namespace orvel::simulator
