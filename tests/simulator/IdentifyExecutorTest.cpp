#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields identify(std::uint32_t cdw10, std::uint32_t nsid) {
    return {.opcode = 0x06, .nsid = nsid, .cdw10 = cdw10, .transferLength = 4096};
}

TEST(IdentifyExecutor, GivesTheController) {
    Simulation simulation;
    const auto output = simulation.output(identify(0x01, 0));
    EXPECT_EQ(output, simulation.drive.identifyController);
    EXPECT_EQ(textAt(output, 4, 11), "SERIAL-0001");
}

TEST(IdentifyExecutor, GivesACopyOfWhatItRemembers) {
    Simulation simulation;
    put(simulation.output(identify(0x01, 0)), 4, 'X', 1);
    put(simulation.output(identify(0x00, 1)), 0, 1, 8);
    EXPECT_EQ(simulation.drive, makeDrive());
}

TEST(IdentifyExecutor, GivesNamespaces) {
    struct Row {
        std::uint32_t cdw10;
        std::uint32_t nsid;
        std::uint64_t size;
        std::uint64_t formats;
    };

    constexpr Row ROWS[] = {
        {0x00, 1, 0x4000, 3}, {0x00, 2, 0, 0},      {0x00, 3, 0, 0}, {0x00, 0xFFFFFFFF, 0, 3},
        {0x11, 1, 0x4000, 3}, {0x11, 2, 0x4000, 3}, {0x11, 3, 0, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(testing::Message() << row.cdw10 << " " << row.nsid);
        Simulation simulation;
        const auto output = simulation.output(identify(row.cdw10, row.nsid));
        EXPECT_EQ(output.size(), 4096U);
        EXPECT_EQ(get(output, 0, 8), row.size);
        EXPECT_EQ(get(output, 25, 1), row.formats);
    }
}

TEST(IdentifyExecutor, GivesListsAboveTheIdentifierOfTheCommand) {
    struct Row {
        const char* what;
        std::uint32_t cdw10;
        std::uint32_t nsid;
        std::uint64_t first;
        std::uint64_t second;
    };

    constexpr Row ROWS[] = {
        {"active", 0x02, 0, 1, 0},
        {"active above 1", 0x02, 1, 0, 0},
        {"allocated", 0x10, 0, 1, 2},
        {"allocated above 1", 0x10, 1, 2, 0},
        {"allocated above the last", 0x10, 0xFFFFFFFD, 0, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        const auto output = simulation.output(identify(row.cdw10, row.nsid));
        EXPECT_EQ(output.size(), 4096U);
        EXPECT_EQ(get(output, 0, 4), row.first);
        EXPECT_EQ(get(output, 4, 4), row.second);
    }
}

TEST(IdentifyExecutor, ListsControllersFromTheOneOfTheCommand) {
    struct Row {
        const char* what;
        std::uint32_t cdw10;
        std::uint32_t nsid;
        std::uint64_t count;
        std::uint64_t first;
    };

    constexpr Row ROWS[] = {
        {"all", 0x00000013, 0, 2, 1},
        {"from 2", 0x00020013, 0, 1, 2},
        {"from 3", 0x00030013, 0, 0, 0},
        {"attached", 0x00000012, 1, 1, 1},
        {"attached from 2", 0x00020012, 1, 0, 0},
        {"attached to none", 0x00000012, 2, 0, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        const auto output = simulation.output(identify(row.cdw10, row.nsid));
        EXPECT_EQ(output.size(), 4096U);
        EXPECT_EQ(get(output, 0, 2), row.count);
        EXPECT_EQ(get(output, 2, 2), row.first);
    }
}

TEST(IdentifyExecutor, RefusesWhatIsNotThere) {
    const Refusal ROWS[] = {
        {"namespace 0", identify(0x00, 0), 0x00B},
        {"namespace above NN", identify(0x00, 5), 0x00B},
        {"active list above the last", identify(0x02, 0xFFFFFFFE), 0x00B},
        {"active list above all", identify(0x02, 0xFFFFFFFF), 0x00B},
        {"allocated list above all", identify(0x10, 0xFFFFFFFF), 0x00B},
        {"allocated namespace 0", identify(0x11, 0), 0x00B},
        {"allocated namespace FFFFFFFFh", identify(0x11, 0xFFFFFFFF), 0x00B},
        {"controllers of namespace 0", identify(0x12, 0), 0x00B},
        {"controllers of namespace FFFFFFFFh", identify(0x12, 0xFFFFFFFF), 0x002},
        {"controllers of no namespace", identify(0x12, 3), 0x002},
        {"unknown structure", identify(0x7F, 1), 0x002},
        {"short buffer", {.opcode = 0x06, .cdw10 = 1, .transferLength = 4092}, 0x004},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields), row.status);
    }
}

TEST(IdentifyExecutor, KnowsNoManagementOfNamespacesWithoutTheCapability) {
    for (const std::uint32_t cns : {0x10U, 0x11U, 0x12U, 0x13U}) {
        SCOPED_TRACE(cns);
        Simulation simulation;
        put(simulation.drive.identifyController, 256, 0x0016, 2);
        EXPECT_EQ(simulation.status(identify(cns, 1)), 0x002U);
        EXPECT_EQ(simulation.status(identify(0x00, 0xFFFFFFFF)), 0x00BU);
    }
}

}  // namespace
}  // namespace orvel::simulator
