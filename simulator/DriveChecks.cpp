#include "simulator/DriveChecks.h"

#include "protocols/ata/Structures.h"
#include "protocols/nvme/Structures.h"

#include <algorithm>
#include <string>

namespace orvel::simulator {

namespace ata = protocols::ata;
namespace nvme = protocols::nvme;
namespace ic = nvme::identify_controller;
namespace in = nvme::identify_namespace;
using protocols::readNumber;

namespace {

void require(bool holds, const TextPlace& place, const std::string& expected) {
    if (!holds) place.fail(expected + " was expected");
}

std::string named(const char* what, std::uint64_t number) {
    return what + std::to_string(number);
}

void checkFormats(const TextPlace& place, const core::Payload& identify, const std::string& owner) {
    const std::uint64_t last = readNumber(identify, in::NLBAF);
    require(last < in::LBA_FORMATS.count, place, "an NLBAF from 0 to 15 of " + owner);
    require(readBits(identify, in::FLBAS, nvme::flbas::FORMAT) <= last, place,
            "an LBA format up to " + std::to_string(last) + " of " + owner);
}

void checkNamespace(const TextPlace& place, const NvmeDrive& drive, std::uint32_t nsid,
                    const NvmeNamespace& one) {
    const std::string owner = named("namespace ", nsid);
    require(nsid <= readNumber(drive.identifyController, ic::NN), place,
            "an NN of at least " + std::to_string(nsid));
    checkFormats(place, one.identify, owner);
    require(std::ranges::includes(drive.controllers, one.controllers), place,
            "only controllers of the drive for " + owner);
}

void checkFeature(const TextPlace& place, std::uint8_t id, const NvmeFeature& feature) {
    require(!feature.isNamespaceSpecific || feature.defaults.contains(0), place,
            "a default of part 0 of " + named("feature ", id));
}

std::uint64_t accessibleSectors(const AtaDrive& drive) {
    return readNumber(drive.identifyDevice, ata::identify_device::UserAddressableSectors);
}

}  // namespace

void checkDrive(const TextPlace& place, const NvmeDrive& drive) {
    constexpr std::uint64_t LAST_POWER_STATE = ic::POWER_STATES.count - 1;
    const std::uint64_t errors = readNumber(drive.identifyController, ic::ELPE) + 1;
    require(drive.controllers.contains(controllerId(drive)), place,
            "a CNTLID that is one of the controllers");
    require(readNumber(drive.identifyController, ic::NPSS) <= LAST_POWER_STATE, place,
            "an NPSS from 0 to 31");
    require(drive.errorLog.size() <= errors, place,
            "an errorLog of at most " + std::to_string(errors) + " entries, as ELPE says,");
    checkFormats(place, drive.commonNamespace, "commonNamespace");
    for (const auto& [nsid, one] : drive.namespaces)
        checkNamespace(place, drive, nsid, one);
    for (const auto& [id, feature] : drive.features)
        checkFeature(place, id, feature);
}

void checkDrive(const TextPlace& place, const AtaDrive& drive) {
    // As many as fit into their page.
    constexpr std::size_t MOST_COUNTERS = 84;
    require(accessibleSectors(drive) <= drive.nativeMaxAddress + 1, place,
            "a nativeMaxAddress of at least UserAddressableSectors - 1");
    require(drive.maxAddressAtPowerOn.value_or(0) <= drive.nativeMaxAddress, place,
            "a maxAddressAtPowerOn up to nativeMaxAddress");
    require(drive.phyEventCounters.size() <= MOST_COUNTERS, place, "at most 84 phyEventCounters");
}

}  // namespace orvel::simulator
