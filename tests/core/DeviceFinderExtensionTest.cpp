// Name and identifiers of an extension.
#include "core/DeviceFinderExtension.h"

#include "tests/core/FinderDoubles.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace orvel::core {
namespace {

using doubles::FakeExtension;
using doubles::FakeProductIdentifier;

Device::ProductIdentifiers oneIdentifier() {
    return {std::make_shared<FakeProductIdentifier>("one")};
}

TEST(DeviceFinderExtension, HasTheNameItWasMadeWithAndNoIdentifiers) {
    const FakeExtension extension("ahci");
    EXPECT_EQ(extension.getName(), "ahci");
    EXPECT_TRUE(extension.getProductIdentifiers().empty());
}

TEST(DeviceFinderExtension, SharesTheIdentifiersThatItIsHanded) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeExtension extension("ahci");
    extension.setProductIdentifiers(identifiers);
    EXPECT_EQ(extension.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinderExtension, ReplacesTheIdentifiersThatItHad) {
    FakeExtension extension("ahci");
    extension.setProductIdentifiers(oneIdentifier());
    extension.setProductIdentifiers({});
    EXPECT_TRUE(extension.getProductIdentifiers().empty());
}

TEST(DeviceFinderExtension, AssignCopiesTheName) {
    const FakeExtension other("nvme");
    FakeExtension extension("ahci");
    extension.assign(other);
    EXPECT_EQ(extension.getName(), "nvme");
}

TEST(DeviceFinderExtension, AssignReplacesTheIdentifiersByTheSharedOnesOfTheOther) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeExtension other("nvme");
    other.setProductIdentifiers(identifiers);
    FakeExtension extension("ahci");
    extension.setProductIdentifiers(oneIdentifier());
    extension.assign(other);
    EXPECT_EQ(extension.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinderExtension, AssignLeavesTheOtherAsItWas) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeExtension other("nvme");
    other.setProductIdentifiers(identifiers);
    FakeExtension extension("ahci");
    extension.assign(other);
    extension.setProductIdentifiers({});
    EXPECT_EQ(other.getName(), "nvme");
    EXPECT_EQ(other.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinderExtension, AssignToItselfChangesNothing) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeExtension extension("ahci");
    extension.setProductIdentifiers(identifiers);
    extension.assign(extension);
    EXPECT_EQ(extension.getName(), "ahci");
    EXPECT_EQ(extension.getProductIdentifiers(), identifiers);
}

TEST(DeviceFinderExtension, AssignDoesNotTakeOverHowTheOtherFinds) {
    const FakeExtension other(
        "nvme", [](const auto&, auto& devices) { devices.push_back(std::make_shared<Device>()); });
    FakeExtension extension("ahci");
    extension.assign(other);
    Device::Devices devices;
    extension.find(devices);
    EXPECT_TRUE(devices.empty());
}

TEST(DeviceFinderExtension, ACopyThroughTheBaseHasNameAndIdentifiers) {
    const Device::ProductIdentifiers identifiers = oneIdentifier();
    FakeExtension extension("ahci");
    extension.setProductIdentifiers(identifiers);
    const DeviceFinderExtension& base = extension;
    const std::unique_ptr<DeviceFinderExtension> copy = base.clone();
    EXPECT_NE(copy.get(), &base);
    EXPECT_EQ(copy->getName(), "ahci");
    EXPECT_EQ(copy->getProductIdentifiers(), identifiers);
}

TEST(DeviceFinderExtension, IsDeletedWholeThroughTheBase) {
    const auto held = std::make_shared<int>(0);
    std::unique_ptr<DeviceFinderExtension> extension =
        std::make_unique<FakeExtension>("ahci", [held](const auto&, auto&) {});
    EXPECT_EQ(held.use_count(), 2);
    extension.reset();
    EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace orvel::core
