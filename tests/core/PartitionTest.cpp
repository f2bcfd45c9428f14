// Tests of a device's partition.
#include "core/Partition.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace orvel::core {
namespace {

Partition partitionAt(const std::string& place) {
    Partition partition;
    partition.setAttribute(Attribute("Path", place));
    return partition;
}

Attribute path() {
    return {"Path", "Path", "string"};
}

TEST(Partition, HasNoAttributesAtFirst) {
    EXPECT_TRUE(Partition().getAttributes().empty());
}

TEST(Partition, HasTheAttributeOperationsOfADevice) {
    Partition partition = partitionAt("/dev/sda1");
    partition.setAttribute(Attribute("Offset", std::uint64_t{2048}));
    partition.setAttribute(Attribute("Mounted", true));

    EXPECT_TRUE(partition.hasAttribute("Path"));
    EXPECT_EQ(partition.getAttribute(path()).valueAsString(), "/dev/sda1");
    EXPECT_EQ(partition.readText(path()), "/dev/sda1");
    EXPECT_EQ(partition.readUnsigned64({"Offset", "", ""}), 2048U);
    EXPECT_EQ(partition.readSigned32({"Offset", "", ""}, -1), 2048);
    EXPECT_TRUE(partition.isSet({"Mounted", "", ""}));
    partition.removeAttribute("Path");
    EXPECT_FALSE(partition.hasAttribute("Path"));
    EXPECT_EQ(partition.getAttributes().size(), 2U);
}

TEST(Partition, IsCopiedWithAllItsAttributes) {
    const Partition original = partitionAt("/dev/sda1");
    const Partition copy = original;
    Partition assigned = partitionAt("/dev/sdb1");
    assigned.setAttribute(Attribute("Mounted", true));
    assigned = original;
    EXPECT_EQ(copy.readText(path()), "/dev/sda1");
    EXPECT_EQ(assigned.readText(path()), "/dev/sda1");
    EXPECT_FALSE(assigned.hasAttribute("Mounted"));
}

TEST(Partition, SharesNothingWithACopy) {
    Partition original = partitionAt("/dev/sda1");
    Partition copy = original;

    *copy.getAttribute(path()).getPayload().at(8) = '2';
    copy.setAttribute(Attribute("Mounted", true));
    original.setAttribute(Attribute("Offset", std::uint64_t{2048}));

    EXPECT_EQ(original.readText(path()), "/dev/sda1");
    EXPECT_EQ(copy.readText(path()), "/dev/sda2");
    EXPECT_FALSE(original.hasAttribute("Mounted"));
    EXPECT_FALSE(copy.hasAttribute("Offset"));
}

TEST(Partition, TakesItsAttributesAlongWhenMoved) {
    Partition original = partitionAt("/dev/sda1");
    Partition moved = std::move(original);
    Partition assigned = partitionAt("/dev/sdb1");
    assigned = std::move(moved);
    EXPECT_EQ(assigned.readText(path()), "/dev/sda1");
    EXPECT_EQ(assigned.getAttributes().size(), 1U);
}

TEST(Partition, KeepsItsAttributesInAListThatGrows) {
    std::vector<Partition> partitions;
    for (const char* place : {"/dev/sda1", "/dev/sda2", "/dev/sda3"})
        partitions.push_back(partitionAt(place));
    EXPECT_EQ(partitions[0].readText(path()), "/dev/sda1");
    EXPECT_EQ(partitions[1].readText(path()), "/dev/sda2");
    EXPECT_EQ(partitions[2].readText(path()), "/dev/sda3");
}

}  // namespace
}  // namespace orvel::core
