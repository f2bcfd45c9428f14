// Name and identifiers of a finder.
#include "core/DeviceFinder.h"

#include "tests/core/FinderDoubles.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orvel::core {
namespace {

using doubles::FakeFinder;
using doubles::FakeProductIdentifier;

Device::ProductIdentifiers oneIdentifier() {
    return {std::make_shared<FakeProductIdentifier>("one")};
}

TEST(DeviceFinder, HasTheNameItWasMadeWithAndNoIdentifiers) {
    const FakeFinder finder("ahci");
    EXPECT_EQ(finder.getName(), "ahci");
    EXPECT_TRUE(finder.getProductIdentifiers().empty());
}

TEST(DeviceFinder, SharesTheIdentifiersThatItIsHanded) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeFinder finder("ahci");
    finder.setProductIdentifiers(identifiers);
    EXPECT_EQ(finder.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinder, ReplacesTheIdentifiersThatItHad) {
    FakeFinder finder("ahci");
    finder.setProductIdentifiers(oneIdentifier());
    finder.setProductIdentifiers({});
    EXPECT_TRUE(finder.getProductIdentifiers().empty());
}

TEST(DeviceFinder, AssignCopiesTheName) {
    const FakeFinder other("nvme");
    FakeFinder finder("ahci");
    finder.assign(other);
    EXPECT_EQ(finder.getName(), "nvme");
}

TEST(DeviceFinder, AssignReplacesTheIdentifiersByTheSharedOnesOfTheOther) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeFinder other("nvme");
    other.setProductIdentifiers(identifiers);
    FakeFinder finder("ahci");
    finder.setProductIdentifiers(oneIdentifier());
    finder.assign(other);
    EXPECT_EQ(finder.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinder, AssignLeavesTheOtherAsItWas) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeFinder other("nvme");
    other.setProductIdentifiers(identifiers);
    FakeFinder finder("ahci");
    finder.assign(other);
    finder.setProductIdentifiers({});
    EXPECT_EQ(other.getName(), "nvme");
    EXPECT_EQ(other.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinder, AssignToItselfChangesNothing) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeFinder finder("ahci");
    finder.setProductIdentifiers(identifiers);
    finder.assign(finder);
    EXPECT_EQ(finder.getName(), "ahci");
    EXPECT_EQ(finder.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinder, AssignDoesNotTakeOverHowTheOtherFinds) {
    const FakeFinder other(
        "nvme", [](const auto&, auto& devices) { devices.push_back(std::make_shared<Device>()); });
    FakeFinder finder("ahci");
    finder.assign(other);
    Device::Devices devices;
    finder.find(devices);
    EXPECT_TRUE(devices.empty());
}

TEST(DeviceFinder, ACopyThroughTheBaseHasNameAndIdentifiers) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeFinder finder("ahci");
    finder.setProductIdentifiers(identifiers);
    const DeviceFinder& base = finder;
    const std::unique_ptr<DeviceFinder> copy = base.clone();
    EXPECT_NE(copy.get(), &base);
    EXPECT_EQ(copy->getName(), "ahci");
    EXPECT_EQ(copy->getProductIdentifiers(), identifiers);
}

TEST(DeviceFinder, IsDeletedWholeThroughTheBase) {
    const auto held = std::make_shared<int>(0);
    std::unique_ptr<DeviceFinder> finder =
        std::make_unique<FakeFinder>("ahci", [held](const auto&, auto&) {});
    EXPECT_EQ(held.use_count(), 2);
    finder.reset();
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace orvel::core
