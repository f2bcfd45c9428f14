#include "simulator/TypicalDrives.h"

#include "Simulation.h"

#include <gtest/gtest.h>

#include <set>

namespace orvel::simulator {
namespace {

NvmeDrive typicalNvme() {
    DriveBasics basics = typicalNvmeBasics();
    basics.serialNumber = "A";
    return typicalNvmeDrive(basics);
}

AtaDrive typicalAta(const char* serialNumber = "A") {
    DriveBasics basics = typicalAtaBasics();
    basics.serialNumber = serialNumber;
    return typicalAtaDrive(basics);
}

TEST(TypicalDrives, AnswerFromTheirRecord) {
    NvmeDrive drive = typicalNvme();
    NvmeController controller(drive, [] { return std::chrono::milliseconds(0); });
    const auto run = [&](const AdminCommandFields& fields) {
        return controller.execute(protocols::nvme::AdminCommand(fields), {});
    };
    for (const std::uint32_t feature : {1U, 2U, 4U, 6U, 7U, 8U, 9U, 0xAU, 0xBU}) {
        SCOPED_TRACE(feature);
        EXPECT_TRUE(run({.opcode = 0x0A, .cdw10 = feature}).completion.isSuccess());
    }
    EXPECT_TRUE(run({.opcode = 0x0A, .nsid = 1, .cdw10 = 5}).completion.isSuccess());
    EXPECT_TRUE(run({.opcode = 0x14, .nsid = 1, .cdw10 = 1}).completion.isSuccess());
    // Format NVM with 4096 bytes.
    EXPECT_TRUE(run({.opcode = 0x80, .nsid = 1, .cdw10 = 1}).completion.isSuccess());
    EXPECT_EQ(get(drive.namespaces.at(1).identify, 0, 8), 390703446U);
}

TEST(TypicalDrives, HaveTheVendorsFeaturesAndLogs) {
    const NvmeDrive drive = typicalNvme();
    std::set<unsigned> features;
    for (const auto& [id, feature] : drive.features)
        features.insert(id);
    EXPECT_EQ(features, (std::set<unsigned>{0x01, 0x02, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x0A,
                                            0x0B, 0xC0, 0xC1, 0xC6, 0xC7, 0xC8, 0xE2}));
    std::set<unsigned> logs;
    for (const auto& [id, log] : drive.vendorLogs)
        logs.insert(id);
    EXPECT_EQ(logs, (std::set<unsigned>{0xC0, 0xC1, 0xC2, 0xC3, 0xC4, 0xC5, 0xC8, 0xCA, 0xCB}));
    EXPECT_EQ(textAt(drive.vendorLogs.at(0xC0), 0, 4), "NLOG");
    EXPECT_EQ(get(drive.vendorLogs.at(0xC0), 4, 8), 0x0000040000000001U);  // version, length
    EXPECT_EQ(textAt(drive.vendorLogs.at(0xC3), 0, 4), "EVNT");
    EXPECT_EQ(textAt(drive.vendorLogs.at(0xC4), 0, 4), "ASRT");
    EXPECT_EQ(get(drive.vendorLogs.at(0xC4), 12, 4), 0U);  // never asserted
}

TEST(TypicalDrives, HaveTheLogsAndSettingsOfSata) {
    const AtaDrive drive = typicalAta();
    EXPECT_EQ(drive.otherLogs.at(0xA0).size(), 2U);
    EXPECT_EQ(textAt(drive.otherLogs.at(0xA1).at(0), 0, 4), "EVNT");
    EXPECT_EQ(textAt(drive.otherLogs.at(0xA2).at(0), 0, 4), "ASRT");
    EXPECT_EQ(drive.sctFeatures.at(0xD001).defaultState, 4096);
    EXPECT_EQ(drive.sctFeatures.at(0xD004), (SctFeatureState{3, {}, {}, true}));
    EXPECT_EQ(drive.deviceStatistics.size(), 5U);
    EXPECT_EQ(get(drive.deviceStatistics.at(1), 0, 3), 0x010001U);
    EXPECT_EQ(get(drive.deviceStatistics.at(1), 16, 8), 0xC00000000000088EU);
    EXPECT_EQ(drive.phyEventCounters.size(), 16U);
    EXPECT_EQ(get(drive.identifyDevice, 2 * 82, 2), 0x706BU);
    EXPECT_EQ(get(drive.identifyDevice, 2 * 206, 2), 0x0039U);
}

TEST(TypicalDrives, HaveNamesOfTheirOwn) {
    const AtaDrive first = typicalAta();
    const AtaDrive second = typicalAta("B");
    EXPECT_EQ(get(first.identifyDevice, 2 * 108, 2) >> 12, 3U);  // locally assigned
    EXPECT_NE(get(first.identifyDevice, 2 * 108, 8), get(second.identifyDevice, 2 * 108, 8));
    const NvmeDrive drive = typicalNvme();
    EXPECT_EQ(get(typicalNamespace(drive, 1).identify, 120, 1), 2U);  // locally administered
    EXPECT_NE(get(typicalNamespace(drive, 1).identify, 120, 8),
              get(typicalNamespace(drive, 2).identify, 120, 8));
}

}  // namespace
}  // namespace orvel::simulator
