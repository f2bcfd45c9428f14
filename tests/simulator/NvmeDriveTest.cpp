#include "Simulation.h"

namespace orvel::simulator {
namespace {

TEST(NvmeDrive, IsCopiedWithAllItsBytes) {
    const NvmeDrive drive = makeDrive();
    const NvmeDrive copy = drive;
    EXPECT_EQ(copy, drive);

    put(copy.identifyController, 4, 'X', 1);
    put(copy.namespaces.at(1).identify, 0, 1, 8);
    EXPECT_EQ(textAt(drive.identifyController, 4, 11), "SERIAL-0001");
    EXPECT_EQ(get(drive.namespaces.at(1).identify, 0, 8), 0x4000U);
    EXPECT_NE(copy, drive);
}

TEST(NvmeDrive, IsAssignedWithAllItsBytes) {
    const NvmeDrive drive = makeDrive();
    NvmeDrive copy;
    copy = drive;
    put(copy.smartHealthLog, 112, 99, 8);
    EXPECT_EQ(get(drive.smartHealthLog, 112, 8), 7U);
}

TEST(NvmeDrive, TellsTheStateOfEachNamespaceIdentifier) {
    NvmeDrive drive = makeDrive();
    drive.namespaces.emplace(3, makeNamespace({2}));
    EXPECT_EQ(stateOf(drive, 0), NamespaceState::INVALID);
    EXPECT_EQ(stateOf(drive, 1), NamespaceState::ATTACHED);
    EXPECT_EQ(stateOf(drive, 2), NamespaceState::DETACHED);
    EXPECT_EQ(stateOf(drive, 3), NamespaceState::DETACHED);
    EXPECT_EQ(stateOf(drive, 4), NamespaceState::UNALLOCATED);
    EXPECT_EQ(stateOf(drive, 5), NamespaceState::INVALID);
    EXPECT_EQ(stateOf(drive, 0xFFFFFFFF), NamespaceState::INVALID);
}

}  // namespace
}  // namespace orvel::simulator
