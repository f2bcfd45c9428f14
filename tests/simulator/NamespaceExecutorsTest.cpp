#include "Simulation.h"

namespace orvel::simulator {
namespace {

/// What a host tells of the namespace that it wants.
struct Wanted {
    std::uint64_t size;
    std::uint64_t capacity;
    std::uint8_t flbas;
    std::uint8_t dps;
    std::uint8_t nmic;
};

core::Payload dataOf(const Wanted& wanted) {
    core::Payload data(4096);
    put(data, 0, wanted.size, 8);
    put(data, 8, wanted.capacity, 8);
    put(data, 26, wanted.flbas, 1);
    put(data, 29, wanted.dps, 1);
    put(data, 30, wanted.nmic, 1);
    return data;
}

AdminCommandFields create() {
    return {.opcode = 0x0D, .transferLength = 4096};
}

AdminCommandFields remove(std::uint32_t nsid) {
    return {.opcode = 0x0D, .nsid = nsid, .cdw10 = 1};
}

AdminCommandFields attach(std::uint32_t nsid) {
    return {.opcode = 0x15, .nsid = nsid, .transferLength = 4096};
}

AdminCommandFields detach(std::uint32_t nsid) {
    return {.opcode = 0x15, .nsid = nsid, .cdw10 = 1, .transferLength = 4096};
}

core::Payload controllers(std::initializer_list<std::uint16_t> identifiers) {
    core::Payload data(4096);
    put(data, 0, identifiers.size(), 2);
    std::uint32_t offset = 2;
    for (const std::uint16_t one : identifiers) {
        put(data, offset, one, 2);
        offset += 2;
    }
    return data;
}

std::uint64_t unallocated(const Simulation& simulation) {
    return get(simulation.drive.identifyController, 296, 8);
}

TEST(NamespaceManagement, GivesEachNamespaceAWorldWideIdentifier) {
    Simulation simulation;
    simulation.drive.namespaces.clear();
    put(simulation.drive.identifyController, 296, 0x1000000, 8);
    simulation.run(create(), dataOf({0x800, 0x800, 1, 0, 1}));
    simulation.run(create(), dataOf({0x800, 0x800, 1, 0, 1}));
    ASSERT_EQ(simulation.drive.namespaces.size(), 2U);
    const auto first = get(simulation.drive.namespaces.at(1).identify, 120, 8);
    const auto second = get(simulation.drive.namespaces.at(2).identify, 120, 8);
    EXPECT_NE(first, 0U);
    EXPECT_NE(second, 0U);
    EXPECT_NE(first, second);
    EXPECT_TRUE(simulation.drive.namespaces.at(1).controllers.empty());
}

TEST(NamespaceManagement, CreatesWithTheLowestFreeIdentifier) {
    Simulation simulation;
    const auto result = simulation.run(create(), dataOf({0x800, 0x800, 1, 0, 1}));
    EXPECT_TRUE(result.completion.isSuccess());
    EXPECT_EQ(result.completion.dword0, 3U);
    const NvmeNamespace& made = simulation.drive.namespaces.at(3);
    EXPECT_EQ(get(made.identify, 0, 8), 0x800U);
    EXPECT_EQ(get(made.identify, 8, 8), 0x800U);
    EXPECT_EQ(get(made.identify, 16, 8), 0U);
    EXPECT_EQ(get(made.identify, 25, 1), 3U);
    EXPECT_EQ(get(made.identify, 26, 1), 1U);
    EXPECT_EQ(get(made.identify, 30, 1), 1U);
    EXPECT_EQ(get(made.identify, 48, 8), 0x800000U);
    EXPECT_TRUE(made.controllers.empty());
    EXPECT_EQ(unallocated(simulation), 0x800000U);
    EXPECT_EQ(get(simulation.drive.commonNamespace, 0, 8), 0U);
    EXPECT_EQ(simulation.drive.changedNamespaces, std::set<std::uint32_t>{3});
}

TEST(NamespaceManagement, CreatesWithProtection) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(create(), dataOf({16, 16, 2, 1, 0})), 0U);
    EXPECT_EQ(get(simulation.drive.namespaces.at(3).identify, 29, 1), 1U);
}

TEST(NamespaceManagement, TakesAllThatIsLeft) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(create(), dataOf({0x8000, 0x8000, 0, 0, 0})), 0U);
    EXPECT_EQ(unallocated(simulation), 0U);
    EXPECT_EQ(simulation.status(create(), dataOf({1, 1, 0, 0, 0})), 0x115U);
}

TEST(NamespaceManagement, RefusesToCreate) {
    struct Row {
        const char* what;
        Wanted wanted;
        unsigned status;
    };

    constexpr Row ROWS[] = {
        {"no size", {0, 0, 0, 0, 0}, 0x002},
        {"capacity above size", {16, 17, 0, 0, 0}, 0x002},
        {"capacity below size", {16, 15, 0, 0, 0}, 0x11B},
        {"no such format", {16, 16, 4, 0, 0}, 0x10A},
        {"format that is not available", {16, 16, 3, 0, 0}, 0x10A},
        {"extended metadata", {16, 16, 0x12, 0, 0}, 0x10A},
        {"protection without metadata", {16, 16, 0, 1, 0}, 0x10A},
        {"protection first", {16, 16, 2, 0x09, 0}, 0x10A},
        {"one block too many", {0x8001, 0x8001, 0, 0, 0}, 0x115},
        {"far too many", {UINT64_MAX, UINT64_MAX, 1, 0, 0}, 0x115},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(create(), dataOf(row.wanted)), row.status);
        EXPECT_EQ(simulation.drive.namespaces.size(), 2U);
        EXPECT_EQ(unallocated(simulation), 0x1000000U);
    }
}

TEST(NamespaceManagement, TellsHowMuchCapacityItWouldTake) {
    Simulation simulation;
    simulation.run(create(), dataOf({0x8001, 0x8001, 0, 0, 0}));
    EXPECT_EQ(get(simulation.log(0x01, 256), 32, 8), 0x1000200U);
}

TEST(NamespaceManagement, ProvisionsThinlyIfTheDriveCan) {
    Simulation simulation;
    put(simulation.drive.commonNamespace, 24, 0x01, 1);
    EXPECT_EQ(simulation.status(create(), dataOf({0x10000, 0x10, 0, 0, 0})), 0U);
    EXPECT_EQ(get(simulation.drive.namespaces.at(3).identify, 48, 8), 0x2000U);
}

TEST(NamespaceManagement, RunsOutOfIdentifiers) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(create(), dataOf({1, 1, 0, 0, 0})), 0U);
    EXPECT_EQ(simulation.status(create(), dataOf({1, 1, 0, 0, 0})), 0U);
    EXPECT_EQ(simulation.status(create(), dataOf({1, 1, 0, 0, 0})), 0x116U);
}

TEST(NamespaceManagement, RefusesShortDataAndReservedSelections) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(create(), core::Payload(4095)), 0x004U);
    EXPECT_EQ(simulation.status({.opcode = 0x0D, .nsid = 1, .cdw10 = 2}), 0x002U);
}

TEST(NamespaceManagement, DeletesAndGivesTheCapacityBack) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(remove(1)), 0U);
    EXPECT_FALSE(simulation.drive.namespaces.contains(1));
    EXPECT_TRUE(simulation.drive.namespaces.contains(2));
    EXPECT_EQ(unallocated(simulation), 0x1800000U);
    EXPECT_EQ(simulation.drive.changedNamespaces, std::set<std::uint32_t>{1});
}

TEST(NamespaceManagement, DeletesAll) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(remove(0xFFFFFFFF)), 0U);
    EXPECT_TRUE(simulation.drive.namespaces.empty());
    EXPECT_EQ(unallocated(simulation), 0x2000000U);
    EXPECT_EQ(simulation.status(remove(0xFFFFFFFF)), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 1U);
}

TEST(NamespaceManagement, CountsTheEraseOfTheLastAttachedNamespace) {
    Simulation simulation;
    simulation.drive.namespaces.emplace(3, makeNamespace({1}));
    EXPECT_EQ(simulation.status(remove(2)), 0U);
    EXPECT_EQ(simulation.status(remove(3)), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 0U);
    EXPECT_EQ(simulation.status(remove(1)), 0U);
    EXPECT_EQ(simulation.drive.eraseCount, 1U);
}

TEST(NamespaceManagement, RefusesToDeleteWhatIsNotThere) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(remove(0)), 0x00BU);
    EXPECT_EQ(simulation.status(remove(3)), 0x002U);
    EXPECT_EQ(simulation.status(remove(5)), 0x00BU);
    EXPECT_EQ(simulation.drive.namespaces.size(), 2U);
}

TEST(NamespaceManagement, ForgetsTheFeaturesOfADeletedNamespace) {
    Simulation simulation;
    simulation.run({.opcode = 0x09, .nsid = 1, .cdw10 = 0x80000005, .cdw11 = 5});
    simulation.run(remove(1));
    EXPECT_TRUE(simulation.drive.features.at(5).current.empty());
    EXPECT_TRUE(simulation.drive.features.at(5).saved.empty());
}

TEST(NamespaceManagement, AbortsTheSelfTestOfADeletedNamespace) {
    struct Row {
        std::uint32_t tested;
        std::uint32_t deleted;
        std::uint64_t result;
    };

    constexpr Row ROWS[] = {{1, 1, 0x13}, {0xFFFFFFFF, 2, 0x13}, {1, 2, 0x0F}, {0, 1, 0x0F}};
    for (const Row& row : ROWS) {
        SCOPED_TRACE(testing::Message() << row.tested << " " << row.deleted);
        Simulation simulation;
        simulation.run({.opcode = 0x14, .nsid = row.tested, .cdw10 = 1});
        simulation.run(remove(row.deleted));
        EXPECT_EQ(get(simulation.log(0x06, 564), 4, 1), row.result);
    }
}

TEST(NamespaceAttachment, AttachesAndDetaches) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(attach(2), controllers({1})), 0U);
    EXPECT_EQ(simulation.drive.namespaces.at(2).controllers, std::set<std::uint16_t>{1});
    EXPECT_EQ(simulation.drive.changedNamespaces, std::set<std::uint32_t>{2});
    EXPECT_EQ(simulation.status(detach(2), controllers({1})), 0U);
    EXPECT_TRUE(simulation.drive.namespaces.at(2).controllers.empty());
}

TEST(NamespaceAttachment, SharesANamespaceThatMayBeShared) {
    Simulation simulation;
    put(simulation.drive.namespaces.at(2).identify, 30, 1, 1);
    EXPECT_EQ(simulation.status(attach(2), controllers({1, 2})), 0U);
    EXPECT_EQ(simulation.status(detach(2), controllers({2})), 0U);
    EXPECT_EQ(simulation.drive.namespaces.at(2).controllers, std::set<std::uint16_t>{1});
}

TEST(NamespaceAttachment, Refuses) {
    struct Row {
        const char* what;
        AdminCommandFields fields;
        core::Payload list;
        unsigned status;
    };

    core::Payload endless = controllers({1});
    put(endless, 0, 2048, 2);
    const Row ROWS[] = {
        {"already attached", attach(1), controllers({1}), 0x118},
        {"private and attached elsewhere", attach(1), controllers({2}), 0x119},
        {"private to two", attach(2), controllers({1, 2}), 0x119},
        {"not attached", detach(2), controllers({1}), 0x11A},
        {"attached to one of two", detach(1), controllers({1, 2}), 0x11A},
        {"empty list", attach(2), controllers({}), 0x11C},
        {"no such controller", attach(2), controllers({3}), 0x11C},
        {"not ascending", attach(2), controllers({2, 1}), 0x11C},
        {"twice the same", attach(2), controllers({1, 1}), 0x11C},
        {"longer than a list can be", attach(2), endless, 0x11C},
        {"short data", attach(2), core::Payload(4095), 0x004},
        {"namespace 0", attach(0), controllers({1}), 0x00B},
        {"namespace above NN", detach(5), controllers({1}), 0x00B},
        {"all namespaces", attach(0xFFFFFFFF), controllers({1}), 0x00B},
        {"no namespace", attach(3), controllers({1}), 0x002},
        {"reserved selection", {.opcode = 0x15, .nsid = 2, .cdw10 = 2}, controllers({1}), 0x002},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        EXPECT_EQ(simulation.status(row.fields, row.list), row.status);
        EXPECT_EQ(simulation.drive.namespaces, makeDrive().namespaces);
        EXPECT_TRUE(simulation.drive.changedNamespaces.empty());
    }
}

}  // namespace
}  // namespace orvel::simulator
