#include "Simulation.h"

namespace orvel::simulator {
namespace {

AdminCommandFields getFeature(std::uint32_t cdw10, std::uint32_t cdw11 = 0,
                              std::uint32_t nsid = 0) {
    return {.opcode = 0x0A, .nsid = nsid, .cdw10 = cdw10, .cdw11 = cdw11};
}

AdminCommandFields setFeature(std::uint32_t cdw10, std::uint32_t cdw11, std::uint32_t nsid = 0) {
    return {.opcode = 0x09, .nsid = nsid, .cdw10 = cdw10, .cdw11 = cdw11};
}

std::uint32_t dword(Simulation& simulation, const AdminCommandFields& fields) {
    const auto result = simulation.run(fields);
    EXPECT_TRUE(result.completion.isSuccess()) << result.completion.toString();
    return result.completion.dword0;
}

TEST(FeatureExecutors, GiveDefaultsUntilSomebodySetsThem) {
    struct Row {
        std::uint32_t feature;
        std::uint32_t cdw11;
        std::uint32_t nsid;
        std::uint32_t value;
    };

    constexpr Row ROWS[] = {
        {0x01, 0, 0, 0x04},
        {0x02, 0, 0, 0},
        {0x04, 0, 0, 0x157},
        {0x04, 0x100000, 0, 0x100000},
        {0x04, 0x10000, 0, 0x1FFFF},
        {0x05, 0, 1, 0},
        {0x06, 0, 0, 1},
        {0x07, 0, 0, 0x00070007},
        {0x08, 0, 0, 0},
        {0x09, 0, 0, 0x00010000},
        {0x09, 1, 0, 1},
        {0x0A, 0, 0, 0},
        {0x0B, 0, 0, 0},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(testing::Message() << row.feature << " " << row.cdw11);
        Simulation simulation;
        for (const std::uint32_t select : {0x000U, 0x100U, 0x200U}) {
            EXPECT_EQ(dword(simulation, getFeature(select | row.feature, row.cdw11, row.nsid)),
                      row.value);
        }
    }
}

TEST(FeatureExecutors, TellTheCapabilities) {
    Simulation simulation;
    EXPECT_EQ(dword(simulation, getFeature(0x301)), 0x5U);
    EXPECT_EQ(dword(simulation, getFeature(0x302)), 0x4U);
    EXPECT_EQ(dword(simulation, getFeature(0x305)), 0x7U);
    EXPECT_EQ(dword(simulation, getFeature(0x30A)), 0x0U);
}

TEST(FeatureExecutors, SetTheCurrentValueOnly) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x06, 0)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x006)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x106)), 1U);
    EXPECT_EQ(dword(simulation, getFeature(0x206)), 1U);
}

TEST(FeatureExecutors, SetTheSavedValueToo) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x80000006, 0)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x006)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x106)), 1U);
    EXPECT_EQ(dword(simulation, getFeature(0x206)), 0U);
}

TEST(FeatureExecutors, DropReservedBits) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x08, 0xFFFF1234)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x08)), 0x1234U);
}

TEST(FeatureExecutors, KeepEachTemperatureThreshold) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x04, 0x00100111)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00100000)), 0x00100111U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00000000)), 0x157U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00010000)), 0x1FFFFU);
}

TEST(FeatureExecutors, SetAllThresholdsOfAType) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x04, 0x000F0150)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00000000)), 0x150U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00010000)), 0x10150U);
    EXPECT_EQ(dword(simulation, getFeature(0x04, 0x00100000)), 0x100000U);
}

TEST(FeatureExecutors, KeepAValueForEachNamespace) {
    Simulation simulation;
    simulation.drive.namespaces.emplace(3, makeNamespace({1}));
    EXPECT_EQ(simulation.status(setFeature(0x05, 0x10, 1)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x05, 0, 1)), 0x10U);
    EXPECT_EQ(dword(simulation, getFeature(0x05, 0, 3)), 0U);
    EXPECT_EQ(simulation.status(setFeature(0x05, 0x20, 0xFFFFFFFF)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x05, 0, 1)), 0x20U);
    EXPECT_EQ(dword(simulation, getFeature(0x05, 0, 3)), 0x20U);
}

TEST(FeatureExecutors, TakeTheNoticesThatTheDriveSends) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x0B, 0x3FF)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x0B)), 0x3FFU);
}

TEST(FeatureExecutors, Refuse) {
    const Refusal ROWS[] = {
        {"get: unknown", getFeature(0x7E), 0x002},
        {"get: LBA ranges", getFeature(0x03, 0, 1), 0x002},
        {"get: reserved select", getFeature(0x406), 0x002},
        {"get: no such sensor", getFeature(0x04, 0x00020000), 0x002},
        {"get: all sensors", getFeature(0x04, 0x000F0000), 0x002},
        {"get: no such vector", getFeature(0x09, 2), 0x002},
        {"get: invalid namespace", getFeature(0x05, 0, 5), 0x00B},
        {"get: detached namespace", getFeature(0x05, 0, 2), 0x002},
        {"set: unknown", setFeature(0x7E, 0), 0x002},
        {"set: not saveable", setFeature(0x80000002, 0), 0x10D},
        {"set: not changeable", setFeature(0x0A, 1), 0x10E},
        {"set: not namespace specific", setFeature(0x06, 0, 1), 0x10F},
        {"set: invalid namespace of a feature without", setFeature(0x06, 0, 5), 0x00B},
        {"set: namespace 0", setFeature(0x05, 0, 0), 0x00B},
        {"set: invalid namespace", setFeature(0x05, 0, 5), 0x00B},
        {"set: detached namespace", setFeature(0x05, 0, 2), 0x002},
        {"set: no such power state", setFeature(0x02, 3), 0x002},
        {"set: reserved type of threshold", setFeature(0x04, 0x00200000), 0x002},
        {"set: no such sensor", setFeature(0x04, 0x00020000), 0x002},
        {"set: no such vector", setFeature(0x09, 2), 0x002},
        {"set: too many submission queues", setFeature(0x07, 0x0000FFFF), 0x002},
        {"set: too many completion queues", setFeature(0x07, 0xFFFF0000), 0x002},
        {"set: queues in use", setFeature(0x07, 0x00030003), 0x00C},
        {"set: notices that the drive has not", setFeature(0x0B, 0x400), 0x002},
    };
    for (const Refusal& row : ROWS) {
        SCOPED_TRACE(row.what);
        Simulation simulation;
        const auto before = simulation.drive.features;
        EXPECT_EQ(simulation.status(row.fields), row.status);
        EXPECT_EQ(simulation.drive.features, before);
    }
}

TEST(FeatureExecutors, SetTheHighestPowerState) {
    Simulation simulation;
    EXPECT_EQ(simulation.status(setFeature(0x02, 2)), 0U);
    EXPECT_EQ(dword(simulation, getFeature(0x02)), 2U);
}

TEST(FeatureExecutors, NeitherSaveNorSelectWithoutTheCapability) {
    Simulation simulation;
    put(simulation.drive.identifyController, 520, 0, 2);
    EXPECT_EQ(simulation.status(setFeature(0x80000006, 0)), 0x10DU);
    EXPECT_EQ(simulation.status(getFeature(0x106)), 0x002U);
    EXPECT_EQ(simulation.status(getFeature(0x006)), 0U);
}

TEST(FeatureExecutors, KnowNoWriteCacheWhereThereIsNone) {
    Simulation simulation;
    put(simulation.drive.identifyController, 525, 0, 1);
    EXPECT_EQ(simulation.status(getFeature(0x06)), 0x002U);
    EXPECT_EQ(simulation.status(setFeature(0x06, 0)), 0x002U);
}

}  // namespace
}  // namespace orvel::simulator
