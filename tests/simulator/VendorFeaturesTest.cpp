#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields getFeature(std::uint32_t cdw10) {
    return {.opcode = 0x0A, .cdw10 = cdw10};
}

AdminCommandFields setFeature(std::uint32_t cdw10, std::uint32_t cdw11, std::uint32_t cdw12 = 0) {
    return {.opcode = 0x09, .cdw10 = cdw10, .cdw11 = cdw11, .cdw12 = cdw12};
}

std::uint32_t dword(Simulation& simulation, const AdminCommandFields& fields) {
    const auto result = simulation.run(fields);
    EXPECT_TRUE(result.completion.isSuccess()) << result.completion.toString();
    return result.completion.dword0;
}

constexpr std::uint8_t FEATURES[] = {0xC0, 0xC1, 0xC6, 0xC7, 0xC8, 0xE2};
constexpr std::uint8_t LATENCY_PAGES[] = {0xC1, 0xC2};

/// One namespace of 8 MiB on a drive that could have 16 MiB of it.
struct VendorSimulation : Simulation {
    VendorSimulation() {
        drive.namespaces.erase(2);
        put(drive.identifyController, 3080, 0x7FFF, 8);
        for (const std::uint8_t feature : FEATURES)
            drive.features[feature] = {.isSaveable = true};
        drive.features[0xC8].defaults = {{0, 0x6A}};
        drive.vendorLogs[0xC1] = StoredBytes(512);
        drive.vendorLogs[0xC2] = StoredBytes(512);
        drive.vendorLogs[0xCA] = StoredBytes(512);
    }

    const core::Payload& vendorLog(std::uint8_t page) { return drive.vendorLogs.at(page); }

    const core::Payload& identify() { return drive.namespaces.at(1).identify; }
};

TEST(VendorFeatures, KeepTheirValue) {
    VendorSimulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0xC0, 2)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x0C0)), 2U);
    EXPECT_EQ(dword(simulation, getFeature(0x1C0)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x2C0)), 0U);
    EXPECT_EQ(simulation.status(setFeature(0x800000C0, 1)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x2C0)), 1U);
}

TEST(VendorFeatures, SaveTheSmBusAddressWithoutBeingAsked) {
    VendorSimulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0xC8, 255)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x0C8)), 255U);
    EXPECT_EQ(dword(simulation, getFeature(0x1C8)), 0x6AU);
    EXPECT_EQ(dword(simulation, getFeature(0x2C8)), 255U);
    simulation.controller.powerCycle();
    EXPECT_EQ(dword(simulation, getFeature(0x0C8)), 255U);
}

TEST(VendorFeatures, Refuse) {
    const Refusal ROWS[] = {
        {"no such power level", setFeature(0xC0, 3), 0x002},
        {"upper bits of a power level", setFeature(0xC0, 0x80000001), 0x002},
        {"address 0", setFeature(0xC8, 0), 0x002},
        {"address 256", setFeature(0xC8, 256), 0x002},
        {"latency tracking 2", setFeature(0xE2, 2), 0x002},
        {"reset of the timed workload by 0", setFeature(0xC6, 0), 0x002},
        {"reset of the timed workload by 2", setFeature(0xC6, 2), 0x002},
        {"reset of the CRC errors by 0", setFeature(0xC7, 0), 0x002},
        {"more than the native maximum", setFeature(0xC1, 0x8000), 0x080},
        {"far more than the native maximum", setFeature(0xC1, 0, 1), 0x080},
        {"the largest number", setFeature(0xC1, 0xFFFFFFFF, 0xFFFFFFFF), 0x080},
        {"unknown", setFeature(0xE0, 1), 0x002},
        {"for one namespace", {.opcode = 0x09, .nsid = 1, .cdw10 = 0xC0, .cdw11 = 1}, 0x10F},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        VendorSimulation simulation;
        const auto features = simulation.drive.features;
        const auto namespaces = simulation.drive.namespaces;
        EXPECT_EQ(simulation.status(row.fields), row.status);
        EXPECT_EQ(simulation.drive.features, features);
        EXPECT_EQ(simulation.drive.namespaces, namespaces);
    }
}

TEST(VendorFeatures, AreThoseThatTheDriveHas) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(getFeature(0xC0)), 0x002U);
    EXPECT_EQ(simulation.status(setFeature(0xC0, 1)), 0x002U);
}

TEST(VendorFeatures, ResetTheTimedWorkload) {
    VendorSimulation simulation;
    const auto& page = simulation.vendorLog(0xCA);
    for (const std::uint32_t offset : {32U, 40U, 48U, 56U, 64U})
        put(page, offset, 7, 8);
    EXPECT_EQ(simulation.status(setFeature(0xC6, 1)), 0U);
    EXPECT_EQ(get(page, 32, 8), 7U);
    EXPECT_EQ(get(page, 40, 8), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(get(page, 48, 8), 0xFFFFFFFFFFFFFFFFU);
    EXPECT_EQ(get(page, 56, 8), 0U);
    EXPECT_EQ(get(page, 64, 8), 7U);
    EXPECT_EQ(dword(simulation, getFeature(0xC6)), 0U);
}

TEST(VendorFeatures, ResetTheCrcErrors) {
    VendorSimulation simulation;
    const auto& page = simulation.vendorLog(0xCA);
    for (const std::uint32_t offset : {24U, 32U, 40U})
        put(page, offset, 7, 8);
    EXPECT_EQ(simulation.status(setFeature(0xC7, 1)), 0U);
    EXPECT_EQ(get(page, 24, 8), 7U);
    EXPECT_EQ(get(page, 32, 8), 0U);
    EXPECT_EQ(get(page, 40, 8), 7U);
    EXPECT_EQ(dword(simulation, getFeature(0xC7)), 0U);
}

TEST(VendorFeatures, ResetNothingOnADriveWithoutStatistics) {
    VendorSimulation simulation;
    simulation.drive.vendorLogs.clear();
    simulation.drive.vendorLogs[0xCA] = StoredBytes(16);
    for (const std::uint32_t feature : {0xC6U, 0xC7U, 0xE2U})
        EXPECT_EQ(simulation.status(setFeature(feature, 1)), 0U);
    EXPECT_EQ(simulation.drive.vendorLogs.at(0xCA), StoredBytes(16));
}

TEST(VendorFeatures, ClearTheLatenciesWhenTheyAreTrackedAnew) {
    VendorSimulation simulation;
    for (const std::uint8_t page : LATENCY_PAGES) {
        put(simulation.vendorLog(page), 16, 100, 4);     // limit of bucket 0
        put(simulation.vendorLog(page), 24, 7, 8);       // its count
        put(simulation.vendorLog(page), 496 + 8, 7, 8);  // count of bucket 30
    }
    EXPECT_EQ(simulation.status(setFeature(0xE2, 1)), 0U);
    for (const std::uint8_t page : LATENCY_PAGES) {
        EXPECT_EQ(get(simulation.vendorLog(page), 16, 4), 100U);
        EXPECT_EQ(get(simulation.vendorLog(page), 24, 8), 0U);
        EXPECT_EQ(get(simulation.vendorLog(page), 496 + 8, 8), 0U);
        put(simulation.vendorLog(page), 24, 9, 8);
    }
    EXPECT_EQ(simulation.status(setFeature(0xE2, 1)), 0U);
    EXPECT_EQ(get(simulation.vendorLog(0xC1), 24, 8), 9U);
    EXPECT_EQ(simulation.status(setFeature(0xE2, 0)), 0U);
    EXPECT_EQ(get(simulation.vendorLog(0xC1), 24, 8), 9U);
}

TEST(VendorFeatures, SetTheMaximumLba) {
    VendorSimulation simulation;
    put(simulation.identify(), 16, 0x4000, 8);  // NUSE
    EXPECT_EQ(dword(simulation, getFeature(0xC1)), 0x3FFFU);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x0FFF)), 0U);
    EXPECT_EQ(get(simulation.identify(), 0, 8), 0x1000U);
    EXPECT_EQ(get(simulation.identify(), 8, 8), 0x1000U);
    EXPECT_EQ(get(simulation.identify(), 16, 8), 0x1000U);
    EXPECT_EQ(dword(simulation, getFeature(0xC1)), 0x0FFFU);
    EXPECT_EQ(simulation.drive.changedNamespaces, (std::set<std::uint32_t>{1}));
}

TEST(VendorFeatures, SetTheMaximumLbaBackToTheNativeOne) {
    VendorSimulation simulation;
    EXPECT_EQ(dword(simulation, getFeature(0x1C1)), 0x7FFFU);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x7FFF)), 0U);
    EXPECT_EQ(get(simulation.identify(), 0, 8), 0x8000U);
}

TEST(VendorFeatures, MoveCapacityWithTheMaximumLba) {
    VendorSimulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x0FFF)), 0U);
    EXPECT_EQ(get(simulation.identify(), 48, 8), 0x0200000U);                 // NVMCAP
    EXPECT_EQ(get(simulation.drive.identifyController, 296, 8), 0x1600000U);  // UNVMCAP
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x7FFF)), 0U);
    EXPECT_EQ(get(simulation.identify(), 48, 8), 0x1000000U);
    EXPECT_EQ(get(simulation.drive.identifyController, 296, 8), 0x0800000U);
}

TEST(VendorFeatures, SetNoMaximumLbaBeyondTheCapacityThatIsThere) {
    VendorSimulation simulation;
    put(simulation.drive.identifyController, 296, 0x200, 8);  // UNVMCAP: one block
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x4001)), 0x080U);
    EXPECT_EQ(get(simulation.identify(), 0, 8), 0x4000U);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x4000)), 0U);
    EXPECT_EQ(get(simulation.drive.identifyController, 296, 8), 0U);
}

TEST(VendorFeatures, TakeTheUpperHalfOfTheMaximumLba) {
    VendorSimulation simulation;
    put(simulation.drive.identifyController, 296, 0x400'0000'0000, 8);  // UNVMCAP
    put(simulation.drive.identifyController, 3080, 0x2'0000'0000, 8);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 5, 1)), 0U);
    EXPECT_EQ(get(simulation.identify(), 0, 8), 0x1'0000'0006U);
    EXPECT_EQ(dword(simulation, getFeature(0xC1)), 5U);
}

TEST(VendorFeatures, CountTheMaximumLbaInBlocksOfTheFormat) {
    VendorSimulation simulation;
    put(simulation.identify(), 26, 1, 1);  // FLBAS: 4096 bytes
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x1000)), 0x080U);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x0FFF)), 0U);
    EXPECT_EQ(get(simulation.identify(), 0, 8), 0x1000U);
}

TEST(VendorFeatures, SetNoMaximumLbaOnSeveralNamespaces) {
    VendorSimulation simulation;
    simulation.drive.namespaces.emplace(3, makeNamespace({1}));
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x0FFF)), 0x080U);
    simulation.drive.namespaces.erase(1);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0x0FFF)), 0x080U);
    EXPECT_EQ(dword(simulation, getFeature(0xC1)), 0U);
}

TEST(VendorFeatures, SetNoMaximumLbaWithoutAnAvailableFormat) {
    VendorSimulation simulation;
    put(simulation.identify(), 26, 3, 1);  // FLBAS: not available
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0)), 0x080U);
    put(simulation.identify(), 26, 0, 1);
    put(simulation.drive.identifyController, 3080, 0xFFFFFFFFFFFFFFFF, 8);
    EXPECT_EQ(simulation.status(setFeature(0xC1, 0)), 0x080U);
}

}  // namespace
}  // namespace orvel::simulator
