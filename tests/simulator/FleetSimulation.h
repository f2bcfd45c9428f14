// A fleet of two drives, and a folder for it.
#pragma once

#include "Simulation.h"
#include "simulator/FleetFolder.h"
#include "simulator/FleetText.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <cstdint>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace orvel::simulator {

inline std::string readAll(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

inline void writeAll(const std::string& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

/// The NVMe drive of Simulation.h, and a SATA drive that says only a few words.
inline Fleet makeFleet() {
    Fleet fleet;
    SimulatedDrive nvme;
    nvme.drive = makeDrive();
    nvme.devicePath = "/dev/nvme0";
    fleet.drives.push_back(nvme);
    AtaDrive ataDrive;
    put(ataDrive.identifyDevice, 82 * 2, 0x0001, 2);  // SMART feature set supported
    put(ataDrive.identifyDevice, 85 * 2, 0x0001, 2);  // and enabled
    SimulatedDrive ata;
    ata.drive = ataDrive;
    ata.devicePath = "/dev/sda";
    fleet.drives.push_back(ata);
    return fleet;
}

inline NvmeDrive& nvmeDrive(Fleet& fleet) {
    return std::get<NvmeDrive>(fleet.drives.at(0).drive);
}

inline AtaDrive& ataDrive(Fleet& fleet) {
    return std::get<AtaDrive>(fleet.drives.at(1).drive);
}

/// A number of the NVMe drive that each test may use as it likes: its power cycles.
inline std::uint64_t counter(Fleet& fleet) {
    return get(nvmeDrive(fleet).smartHealthLog, 112, 8);
}

inline void setCounter(Fleet& fleet, std::uint64_t value) {
    put(nvmeDrive(fleet).smartHealthLog, 112, value, 8);
}

/// A folder with a state of its own.
struct FleetSimulation {
    explicit FleetSimulation(const Fleet& fleet = makeFleet()) {
        std::filesystem::create_directory(path);
        writeAll(state, writeFleet(fleet));
    }

    std::unique_ptr<FleetFolder> makeFolder() {
        return std::make_unique<FleetFolder>(path, [this] { return time; });
    }

    tavik::testing::TemporaryFolder temporary;
    std::string path = temporary.path("drives");
    std::string state = temporary.path("drives/state.json");
    std::chrono::milliseconds time{1000};
};

}  // namespace orvel::simulator
