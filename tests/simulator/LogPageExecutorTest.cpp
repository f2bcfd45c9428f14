#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields getLog(std::uint32_t cdw10, std::uint32_t bytes, std::uint32_t offset = 0,
                          std::uint32_t nsid = 0xFFFFFFFF) {
    return {.opcode = 0x02, .nsid = nsid, .cdw10 = cdw10, .cdw12 = offset, .transferLength = bytes};
}

TEST(LogPageExecutor, GivesTheHealthLog) {
    Simulation simulation;
    const auto output = simulation.log(0x02, 512);
    ASSERT_EQ(output.size(), 512U);
    EXPECT_EQ(get(output, 112, 8), 7U);
    EXPECT_EQ(get(output, 128, 8), 0x64U);
}

TEST(LogPageExecutor, WarnsOfASpareBelowItsThreshold) {
    Simulation simulation;
    put(simulation.drive.smartHealthLog, 4, 10, 1);  // threshold
    put(simulation.drive.smartHealthLog, 3, 10, 1);  // spare
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0U);
    put(simulation.drive.smartHealthLog, 3, 9, 1);
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0x01U);
    put(simulation.drive.smartHealthLog, 0, 0x0C, 1);
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0x0DU);
    EXPECT_EQ(get(simulation.drive.smartHealthLog, 0, 1), 0x0CU);
}

TEST(LogPageExecutor, WarnsOfATemperatureAtAThreshold) {
    struct Row {
        std::uint64_t kelvins;
        std::uint32_t threshold;  ///< command dword 11
        std::uint64_t warning;
    };

    constexpr Row ROWS[] = {
        {311, 0x00000138, 0x00}, {311, 0x00000137, 0x02}, {311, 0x00000136, 0x02},
        {311, 0x00100136, 0x00}, {311, 0x00100137, 0x02}, {311, 0x00100138, 0x02},
        {0, 0x00000000, 0x00},   {0, 0x00100001, 0x00},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.threshold);
        Simulation simulation;
        put(simulation.drive.smartHealthLog, 1, row.kelvins, 2);
        EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0U);
        simulation.run({.opcode = 0x09, .cdw10 = 0x04, .cdw11 = row.threshold});
        EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), row.warning);
    }
}

TEST(LogPageExecutor, WarnsOfTheTemperatureOfASensorThatHasAThreshold) {
    Simulation simulation;
    put(simulation.drive.smartHealthLog, 200, 400, 2);  // sensor 1
    put(simulation.drive.smartHealthLog, 202, 400, 2);  // sensor 2, which has no threshold
    simulation.run({.opcode = 0x09, .cdw10 = 0x04, .cdw11 = 0x00010191});
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0U);
    simulation.run({.opcode = 0x09, .cdw10 = 0x04, .cdw11 = 0x00010190});
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0x02U);
    simulation.drive.features.erase(0x04);
    EXPECT_EQ(get(simulation.log(0x02, 512), 0, 1), 0U);
}

TEST(LogPageExecutor, GivesAsManyDwordsAsAskedFrom) {
    Simulation simulation;
    const auto output = simulation.output(getLog(0x00010002, 8, 128));
    EXPECT_EQ(output.size(), 8U);
    EXPECT_EQ(get(output, 0, 8), 0x64U);
}

TEST(LogPageExecutor, FillsUpBehindTheEndWithZeroes) {
    Simulation simulation;
    put(simulation.drive.smartHealthLog, 508, 0xAABBCCDD, 4);
    const auto output = simulation.output(getLog(0x00010002, 8, 508));
    EXPECT_EQ(get(output, 0, 4), 0xAABBCCDDU);
    EXPECT_EQ(get(output, 4, 4), 0U);
    EXPECT_EQ(get(simulation.output(getLog(0x00010002, 8, 512)), 0, 8), 0U);
}

TEST(LogPageExecutor, TakesTheUpperNumberOfDwords) {
    Simulation simulation;
    put(simulation.drive.identifyController, 77, 0, 1);
    AdminCommandFields fields = getLog(0x00000002, 0x40004);
    fields.cdw11 = 1;
    EXPECT_EQ(simulation.output(fields).size(), 0x40004U);
}

TEST(LogPageExecutor, GivesAllThatTheDriveMovesAtOnce) {
    Simulation simulation;
    EXPECT_EQ(simulation.output(getLog(0x07FF0002, 8192)).size(), 8192U);
    EXPECT_EQ(simulation.status(getLog(0x08000002, 8196)), 0x002U);
}

TEST(LogPageExecutor, GivesTheFirmwareSlots) {
    Simulation simulation;
    simulation.drive.firmwareRevisions[2] = "NEW3";
    simulation.drive.nextSlot = 3;
    const auto output = simulation.log(0x03, 512);
    EXPECT_EQ(get(output, 0, 1), 0x31U);
    EXPECT_EQ(textAt(output, 8, 8), "FW000001");
    EXPECT_EQ(get(output, 16, 8), 0U);
    EXPECT_EQ(textAt(output, 24, 8), "NEW3    ");
}

TEST(LogPageExecutor, ForgetsChangedNamespacesOnceTheyAreRead) {
    Simulation simulation;
    simulation.drive.changedNamespaces = {2, 1};
    const auto retained = simulation.output(getLog(0x03FF8004, 4096));
    const auto output = simulation.log(0x04, 4096);
    EXPECT_EQ(get(retained, 0, 8), 0x0000000200000001U);
    EXPECT_EQ(output, retained);
    EXPECT_EQ(get(simulation.log(0x04, 4096), 0, 8), 0U);
}

TEST(LogPageExecutor, SaysOnlyThatTooManyNamespacesChanged) {
    Simulation simulation;
    for (std::uint32_t nsid = 1; nsid <= 1025; ++nsid)
        simulation.drive.changedNamespaces.insert(nsid);
    const auto output = simulation.log(0x04, 4096);
    EXPECT_EQ(get(output, 0, 8), 0x00000000FFFFFFFFU);
}

TEST(LogPageExecutor, GivesTheEffectsOfTheCommandsThatThereAre) {
    struct Row {
        std::uint32_t opcode;
        std::uint64_t effects;
    };

    constexpr Row ROWS[] = {{0x02, 0x01}, {0x06, 0x01}, {0x09, 0x01}, {0x0A, 0x01},
                            {0x0D, 0x0B}, {0x10, 0x11}, {0x11, 0x01}, {0x14, 0x01},
                            {0x15, 0x09}, {0x80, 0x07}, {0x84, 0x00}, {0x00, 0x00}};
    Simulation simulation;
    const auto output = simulation.log(0x05, 4096);
    put(simulation.drive.identifyController, 256, 0, 2);
    const auto without = simulation.log(0x05, 4096);
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.opcode);
        EXPECT_EQ(get(output, row.opcode * 4, 4), row.effects);
        EXPECT_EQ(get(without, row.opcode * 4, 4), row.opcode <= 0x0A ? row.effects : 0U);
    }
}

TEST(LogPageExecutor, Refuses) {
    const Refusal ROWS[] = {
        {"unknown page", getLog(0x007F00C0, 512), 0x109},
        {"page 0", getLog(0x007F0000, 512), 0x109},
        {"telemetry", getLog(0x007F0007, 512), 0x109},
        {"odd offset", getLog(0x00000002, 4, 2), 0x002},
        {"offset behind the end", getLog(0x00000002, 4, 516), 0x002},
        {"more than the drive moves at once", getLog(0x08000002, 8196), 0x002},
        {"short buffer", getLog(0x007F0002, 508), 0x004},
        {"health of one namespace", getLog(0x007F0002, 512, 0, 1), 0x002},
        {"slots of one namespace", getLog(0x007F0003, 512, 0, 1), 0x002},
        {"health of an invalid namespace", getLog(0x007F0002, 512, 0, 5), 0x00B},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields), row.status);
    }
}

TEST(LogPageExecutor, RefusesAnOffsetBeyondThirtyTwoBits) {
    Simulation simulation;
    AdminCommandFields fields = getLog(0x00000002, 4);
    fields.cdw13 = 1;
    EXPECT_EQ(simulation.status(fields), 0x002U);
}

TEST(LogPageExecutor, HasOnlyWhatTheCapabilitiesTell) {
    struct Row {
        const char* what;
        std::uint32_t offset;  ///< of the capability
        AdminCommandFields fields;
        unsigned status;
    };

    const Row ROWS[] = {
        {"changed namespaces", 93, getLog(0x03FF0004, 4096), 0x109},
        {"effects", 261, getLog(0x03FF0005, 4096), 0x109},
        {"offset", 261, getLog(0x00000002, 4, 4), 0x002},
        {"self-test", 256, getLog(0x008C0006, 564), 0x109},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields), 0U);
        put(simulation.drive.identifyController, row.offset, 0, 1);
        EXPECT_EQ(simulation.status(row.fields), row.status);
    }
}

TEST(LogPageExecutor, GivesTheHealthOfANamespaceIfTheDriveCan) {
    Simulation simulation;
    put(simulation.drive.identifyController, 261, 0x07, 1);
    EXPECT_EQ(simulation.status(getLog(0x007F0002, 512, 0, 1)), 0U);
    EXPECT_EQ(simulation.status(getLog(0x007F0002, 512, 0, 2)), 0x002U);
    EXPECT_EQ(simulation.status(getLog(0x007F0003, 512, 0, 1)), 0x002U);
}

}  // namespace
}  // namespace orvel::simulator
