#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields format(std::uint32_t cdw10, std::uint32_t nsid = 1) {
    return {.opcode = 0x80, .nsid = nsid, .cdw10 = cdw10};
}

TEST(FormatExecutor, ChangesTheFormatAndKeepsTheCapacity) {
    struct Row {
        const char* what;
        std::uint32_t cdw10;
        std::uint64_t blocks;
        std::uint64_t flbas;
        std::uint64_t dps;
    };

    constexpr Row ROWS[] = {
        {"the same", 0x000, 0x4000, 0x00, 0x00},
        {"larger blocks", 0x001, 0x0800, 0x01, 0x00},
        {"metadata", 0x002, 0x4000, 0x02, 0x00},
        {"protection", 0x022, 0x4000, 0x02, 0x01},
        {"user data erase", 0x201, 0x0800, 0x01, 0x00},
        {"cryptographic erase", 0x400, 0x4000, 0x00, 0x00},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(format(row.cdw10)), 0U);
        const auto& identify = simulation.drive.namespaces.at(1).identify;
        EXPECT_EQ(get(identify, 0, 8), row.blocks);
        EXPECT_EQ(get(identify, 8, 8), row.blocks);
        EXPECT_EQ(get(identify, 16, 8), 0U);
        EXPECT_EQ(get(identify, 26, 1), row.flbas);
        EXPECT_EQ(get(identify, 29, 1), row.dps);
        EXPECT_EQ(simulation.drive.changedNamespaces, std::set<std::uint32_t>{1});
    }
}

TEST(FormatExecutor, GoesBackToSmallBlocks) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(format(1)), 0U);
    EXPECT_EQ(simulation.status(format(0)), 0U);
    EXPECT_EQ(get(simulation.drive.namespaces.at(1).identify, 0, 8), 0x4000U);
}

TEST(FormatExecutor, LosesNoBlocksThatALargerSizeLeavesOver) {
    Simulation simulation;
    const auto& identify = simulation.drive.namespaces.at(1).identify;
    put(identify, 0, 15, 8);
    put(identify, 8, 15, 8);
    put(identify, 48, 7680, 8);
    EXPECT_EQ(simulation.status(format(1)), 0U);
    EXPECT_EQ(get(identify, 0, 8), 1U);
    EXPECT_EQ(simulation.status(format(0)), 0U);
    EXPECT_EQ(get(identify, 0, 8), 15U);
    EXPECT_EQ(get(identify, 8, 8), 15U);
}

TEST(FormatExecutor, RefusesBlocksThatAreLargerThanTheNamespace) {
    Simulation simulation;
    const auto& identify = simulation.drive.namespaces.at(1).identify;
    put(identify, 0, 7, 8);
    put(identify, 8, 7, 8);
    put(identify, 48, 3584, 8);
    EXPECT_EQ(simulation.status(format(1)), 0x10AU);
    EXPECT_EQ(get(identify, 0, 8), 7U);
    EXPECT_EQ(simulation.status(format(0)), 0U);
}

TEST(FormatExecutor, KeepsALoweredMaximumAddress) {
    Simulation simulation;
    const auto& identify = simulation.drive.namespaces.at(1).identify;
    put(identify, 0, 0x1000, 8);
    put(identify, 8, 0x1000, 8);
    EXPECT_EQ(simulation.status(format(1)), 0U);
    EXPECT_EQ(get(identify, 0, 8), 0x200U);
}

TEST(FormatExecutor, CountsBytesBeyondSixtyFourBits) {
    Simulation simulation;
    const auto& identify = simulation.drive.namespaces.at(1).identify;
    put(identify, 0, 0x0080000000000008, 8);
    put(identify, 8, 0x0080000000000008, 8);
    put(identify, 48, 0x1000, 8);
    put(identify, 56, 1, 8);
    EXPECT_EQ(simulation.status(format(1)), 0U);
    EXPECT_EQ(get(identify, 0, 8), 0x0010000000000001U);
}

TEST(FormatExecutor, PutsMetadataAndProtectionWhereTheNamespaceCan) {
    Simulation simulation;
    put(simulation.drive.namespaces.at(1).identify, 27, 0x01, 1);
    put(simulation.drive.namespaces.at(1).identify, 28, 0x0A, 1);
    EXPECT_EQ(simulation.status(format(0x152)), 0U);  // extended, type 2, first eight bytes
    EXPECT_EQ(get(simulation.drive.namespaces.at(1).identify, 26, 1), 0x12U);
    EXPECT_EQ(get(simulation.drive.namespaces.at(1).identify, 29, 1), 0x0AU);
    EXPECT_EQ(simulation.status(format(0x142)), 0x10AU);  // separate
    EXPECT_EQ(simulation.status(format(0x052)), 0x10AU);  // last eight bytes
}

TEST(FormatExecutor, Refuses) {
    const Refusal ROWS[] = {
        {"format above NLBAF", format(0x004), 0x10A},
        {"format that is not available", format(0x003), 0x10A},
        {"extended metadata", format(0x012), 0x10A},
        {"protection without metadata", format(0x020), 0x10A},
        {"protection type 2", format(0x042), 0x10A},
        {"protection type 3", format(0x062), 0x10A},
        {"reserved protection type", format(0x0E2), 0x10A},
        {"protection first", format(0x122), 0x10A},
        {"reserved erase", format(0x600), 0x002},
        {"last erase", format(0xE00), 0x002},
        {"namespace 0", format(0, 0), 0x00B},
        {"namespace above NN", format(0, 5), 0x00B},
        {"detached namespace", format(0, 2), 0x002},
        {"no namespace", format(0, 3), 0x002},
        {"bad format for all", format(0x004, 0xFFFFFFFF), 0x10A},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields), row.status);
        EXPECT_EQ(simulation.drive.namespaces, makeDrive().namespaces);
    }
}

TEST(FormatExecutor, RefusesCryptographicEraseWithoutTheCapability) {
    Simulation simulation;
    put(simulation.drive.identifyController, 524, 0, 1);
    EXPECT_EQ(simulation.status(format(0x400)), 0x002U);
    EXPECT_EQ(simulation.status(format(0x200)), 0U);
}

TEST(FormatExecutor, FormatsAllNamespacesWhereItMust) {
    struct Row {
        const char* what;
        std::uint64_t fna;
        std::uint32_t cdw10;
        std::uint32_t nsid;
        std::uint64_t other;       ///< format of the other attached namespace afterwards
        std::uint64_t detached;    ///< and of the one that isn't attached
        std::uint32_t eraseCount;  ///< counts where nothing is left to the host
    };

    constexpr Row ROWS[] = {
        {"one", 0, 0x001, 1, 0, 0, 0},
        {"broadcast", 0, 0x001, 0xFFFFFFFF, 1, 0, 1},
        {"formats all", 1, 0x001, 1, 1, 1, 1},
        {"formats all by broadcast", 1, 0x001, 0xFFFFFFFF, 1, 1, 1},
        {"erases all, but only formats", 2, 0x001, 1, 0, 0, 0},
        {"erases all, but only formats by broadcast", 2, 0x001, 0xFFFFFFFF, 1, 0, 1},
        {"erases all", 2, 0x201, 1, 1, 1, 1},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        simulation.drive.namespaces.emplace(3, makeNamespace({1, 2}));
        put(simulation.drive.identifyController, 524, row.fna, 1);
        EXPECT_EQ(simulation.status(format(row.cdw10, row.nsid)), 0U);
        EXPECT_EQ(get(simulation.drive.namespaces.at(1).identify, 26, 1), 1U);
        EXPECT_EQ(get(simulation.drive.namespaces.at(3).identify, 26, 1), row.other);
        EXPECT_EQ(get(simulation.drive.namespaces.at(2).identify, 26, 1), row.detached);
        EXPECT_EQ(simulation.drive.eraseCount, row.eraseCount);
    }
}

TEST(FormatExecutor, ErasesAllThatTheHostSeesWithItsOnlyNamespace) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(format(0x004)), 0x10AU);
    EXPECT_EQ(simulation.drive.eraseCount, 0U);
    EXPECT_EQ(simulation.status(format(0)), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 1U);
}

TEST(FormatExecutor, AbortsASelfTest) {
    Simulation simulation;
    simulation.run({.opcode = 0x14, .nsid = 1, .cdw10 = 1});
    EXPECT_EQ(simulation.status(format(0)), 0U);
    EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), 0x14U);
}

TEST(FormatExecutor, AbortsASelfTestOfWhatItFormatsOnly) {
    struct Row {
        std::uint32_t tested;
        std::uint64_t running;
    };

    constexpr Row ROWS[] = {{0, 1}, {1, 0}, {2, 1}, {0xFFFFFFFF, 0}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.tested);
        Simulation simulation;
        simulation.drive.runningSelfTest = RunningSelfTest{1, row.tested, simulation.time};
        EXPECT_EQ(simulation.status(format(0)), 0U);
        EXPECT_EQ(get(simulation.log(0x06, 564), 0, 1), row.running);
    }
}

}  // namespace
}  // namespace orvel::simulator
