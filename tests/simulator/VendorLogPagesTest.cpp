#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields getLog(std::uint32_t cdw10, std::uint32_t bytes, std::uint32_t offset = 0,
                          std::uint32_t cdw11 = 0) {
    return {.opcode = 0x02,
            .nsid = 0xFFFFFFFF,
            .cdw10 = (bytes / 4 - 1) << 16 | cdw10,
            .cdw11 = cdw11,
            .cdw12 = offset,
            .transferLength = bytes};
}

struct VendorSimulation : Simulation {
    VendorSimulation() {
        drive.vendorLogs[0xC0] = StoredBytes(1024);
        put(drive.vendorLogs.at(0xC0), 1020, 0xAABBCCDD, 4);
        drive.vendorLogs[0xC1] = StoredBytes(512);
        drive.vendorLogs[0xC2] = StoredBytes(512);
        drive.vendorLogs[0xFF] = StoredBytes(4);
        drive.features[0xE2] = {.isSaveable = true};
        drive.vendorLogs[0xC8] = StoredBytes(2048);
        put(drive.vendorLogs.at(0xC8), 8, 50, 2);    // EyeWidth: half a unit interval
        put(drive.vendorLogs.at(0xC8), 10, 100, 2);  // EyeHeight
    }

    /// A row of the eye, a digit for each cell.
    static std::string row(const core::Payload& page, std::uint32_t number) {
        std::string text;
        for (std::uint32_t i = 0; i < 64; ++i)
            text += "0123456789ABC"[get(page, 64 + 64 * number + i, 1) % 13];
        return text;
    }
};

TEST(VendorLogPages, AreGivenAsTheyAre) {
    VendorSimulation simulation;
    EXPECT_EQ(simulation.log(0xC0, 1024), simulation.drive.vendorLogs.at(0xC0).copy());
    EXPECT_EQ(get(simulation.output(getLog(0xC0, 8, 1020)), 0, 8), 0xAABBCCDDU);
    EXPECT_EQ(get(simulation.log(0xFF, 16), 0, 8), 0U);
}

TEST(VendorLogPages, AreRefused) {
    const Refusal ROWS[] = {
        {"not there", getLog(0xC3, 512), 0x109},
        {"behind the end", getLog(0xC0, 4, 1028), 0x002},
        {"odd offset", getLog(0xC0, 4, 2), 0x002},
        {"latencies that aren't tracked: reads", getLog(0xC1, 512), 0x109},
        {"latencies that aren't tracked: writes", getLog(0xC2, 512), 0x109},
        {"eye: no such group", getLog(0x2C8, 2048), 0x002},
        {"eye: no such lane", getLog(0x0C8, 2048, 0, 0x20000), 0x002},
        {"eye: lane 65535", getLog(0x0C8, 2048, 0, 0xFFFF0000), 0x002},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        VendorSimulation simulation;
        EXPECT_EQ(simulation.status(row.fields), row.status);
    }
}

TEST(VendorLogPages, TellLatenciesWhileTheyAreTracked) {
    VendorSimulation simulation;
    put(simulation.drive.vendorLogs.at(0xC1), 24, 7, 8);
    simulation.drive.features.at(0xE2).current[0] = 1;
    EXPECT_EQ(get(simulation.log(0xC1, 512), 24, 8), 7U);
    EXPECT_EQ(get(simulation.log(0xC2, 512), 24, 8), 0U);
    simulation.drive.features.erase(0xE2);
    EXPECT_EQ(simulation.status(getLog(0xC1, 512)), 0x109U);
}

TEST(VendorLogPages, TellNothingOfAnEyeThatTheDriveDoesNotMeasure) {
    VendorSimulation simulation;
    simulation.drive.vendorLogs.at(0xC8) = StoredBytes(64);
    EXPECT_EQ(simulation.status(getLog(0x0C8, 2048)), 0x109U);
    simulation.drive.vendorLogs.erase(0xC8);
    EXPECT_EQ(simulation.status(getLog(0x0C8, 2048)), 0x109U);
}

TEST(VendorLogPages, DrawAnOpenEye) {
    VendorSimulation simulation;
    const auto page = simulation.log(0xC8, 2048);
    EXPECT_EQ(get(page, 0, 2), 1U);
    EXPECT_EQ(get(page, 2, 1), 0U);
    EXPECT_EQ(get(page, 3, 1), 0U);
    EXPECT_EQ(get(page, 4, 2), 64U);
    EXPECT_EQ(get(page, 6, 2), 31U);
    EXPECT_EQ(get(page, 8, 2), 50U);
    EXPECT_EQ(get(page, 10, 2), 100U);
    EXPECT_EQ(VendorSimulation::row(page, 15),
              "3455677899AABBCC00000000000000000000000000000000CCBBAA9987765543");
    EXPECT_EQ(VendorSimulation::row(page, 11),
              "12234556778899AABBBCCC00000000000000000000CCCBBBAA99887765543221");
    EXPECT_EQ(VendorSimulation::row(page, 0), std::string(64, '1'));
    for (std::uint32_t i = 0; i < 15; ++i)
        EXPECT_EQ(VendorSimulation::row(page, i), VendorSimulation::row(page, 30 - i));
}

TEST(VendorLogPages, DrawAnEyeForEachLane) {
    VendorSimulation simulation;
    const auto page = simulation.output(getLog(0x1C8, 2048, 0, 0x10000));
    EXPECT_EQ(get(page, 2, 1), 1U);
    EXPECT_EQ(get(page, 3, 1), 1U);
    EXPECT_EQ(get(page, 8, 2), 46U);
    EXPECT_EQ(get(page, 10, 2), 91U);
    EXPECT_EQ(simulation.output(getLog(0x1C8, 2048, 0, 0x10000)), page);
}

TEST(VendorLogPages, DrawAnEyeThatIsShut) {
    VendorSimulation simulation;
    put(simulation.drive.vendorLogs.at(0xC8), 8, 0, 4);
    const auto page = simulation.log(0xC8, 2048);
    for (std::uint32_t i = 0; i < 31; ++i)
        EXPECT_EQ(VendorSimulation::row(page, i), std::string(64, '1'));
}

TEST(VendorLogPages, DrawAnEyeThatIsWiderThanTheDiagram) {
    VendorSimulation simulation;
    put(simulation.drive.vendorLogs.at(0xC8), 8, 0xFFFFFFFF, 4);
    const auto page = simulation.log(0xC8, 2048);
    EXPECT_EQ(VendorSimulation::row(page, 0), std::string(64, '0'));
}

}  // namespace
}  // namespace orvel::simulator
