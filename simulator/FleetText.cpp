#include "simulator/FleetText.h"

#include "protocols/ata/Structures.h"
#include "protocols/nvme/Structures.h"
#include "simulator/JsonText.h"
#include "simulator/RecordText.h"
#include "simulator/SimulatedDriveText.h"
#include "simulator/TextPlace.h"

#include <map>
#include <new>

namespace orvel::simulator {

using namespace forms;

namespace {

constexpr std::size_t MOST_DRIVES = 4096;

/// More would carry the clock out of the range of times.
constexpr std::uint64_t LARGEST_FACTOR = 10000;

struct DriveForm {
    void read(const TextPlace& place, SimulatedDrive& drive) const {
        readSimulatedDrive(place, drive);
    }

    void write(JsonWriter& out, const SimulatedDrive& drive) const {
        out.newLine();
        writeSimulatedDrive(out, drive);
    }
};

struct FleetMembers {
    template <class Text>
    static void describe(Text& text) {
        text.member("timeFactor", &Fleet::timeFactor, Number<std::uint32_t>{1, LARGEST_FACTOR});
        text.member("latestTime", &Fleet::latestTime, Time{});
        text.member("realTime", &Fleet::realTime, Time{});
        text.member("drives", &Fleet::drives, List{DriveForm{}, MOST_DRIVES});
    }
};

std::string serialNumberOf(const SimulatedDrive& drive) {
    if (const auto* nvmeDrive = std::get_if<NvmeDrive>(&drive.drive)) {
        return protocols::readText(nvmeDrive->identifyController,
                                   protocols::nvme::identify_controller::SN);
    }
    return protocols::readText(std::get<AtaDrive>(drive.drive).identifyDevice,
                               protocols::ata::identify_device::SerialNumber);
}

/// What tells drives apart must not be there twice.
void checkUnique(const Fleet& fleet) {
    std::map<std::string, std::size_t> paths;
    std::map<std::string, std::size_t> serialNumbers;
    for (std::size_t i = 0; i < fleet.drives.size(); ++i) {
        const std::string place = "drives[" + std::to_string(i) + "]: ";
        const auto [path, isNewPath] = paths.emplace(fleet.drives[i].devicePath, i);
        if (!isNewPath) {
            throw FleetTextError(place + "another device path than that of drives[" +
                                 std::to_string(path->second) + "] was expected");
        }
        const std::string serialNumber = serialNumberOf(fleet.drives[i]);
        if (serialNumber.empty()) continue;
        const auto [earlier, isNew] = serialNumbers.emplace(serialNumber, i);
        if (!isNew) {
            throw FleetTextError(place + "another serial number than that of drives[" +
                                 std::to_string(earlier->second) + "] was expected");
        }
    }
}

/// The parser's tree has the same for an empty list as for an empty object and an empty text.
/// Beside no drives there are only numbers, so that the list can't be mistaken for part of a text.
void checkEmptyList(std::string_view json, const JsonTree& tree) {
    const auto drives = tree.find("drives");
    if (drives == tree.not_found() || !drives->second.empty()) return;
    std::string packed(json);
    std::erase_if(packed,
                  [](char one) { return one == ' ' || one == '\t' || one == '\r' || one == '\n'; });
    if (packed.find(R"("drives":[])") == std::string::npos)
        throw FleetTextError("drives: a list was expected");
}

Fleet readTree(const JsonTree& tree, Unmentioned unmentioned) {
    TextReading reading{.unmentioned = unmentioned};
    Fleet fleet;
    readMembers<FleetMembers>(TextPlace(tree, reading), fleet);
    checkUnique(fleet);
    return fleet;
}

}  // namespace

Fleet readFleet(std::string_view json, Unmentioned unmentioned) {
    try {
        const JsonTree tree = readJson(json);
        Fleet fleet = readTree(tree, unmentioned);
        checkEmptyList(json, tree);
        return fleet;
    } catch (const std::bad_alloc&) {
        throw FleetTextError("less text was expected: there isn't enough memory for it");
    }
}

std::string writeFleet(const Fleet& fleet) {
    JsonWriter out;
    forms::Record<FleetMembers>{}.write(out, fleet);
    return out.written() + '\n';
}

}  // namespace orvel::simulator
