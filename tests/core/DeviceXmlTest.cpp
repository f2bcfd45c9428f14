// Devices, their paths, command sets and partitions as elements.
#include "core/Device.h"
#include "core/XmlConverter.h"

#include "tests/core/DeviceDoubles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvel::core {
namespace {

using doubles::FakeCommand;
using doubles::FakePath;

std::string written(const xml::XmlElement& element) {
    std::string text;
    element.toXml(text);
    return text;
}

std::shared_ptr<FakePath> pathOf(const std::string& name, std::int32_t timeout) {
    auto path = std::make_shared<FakePath>(name);
    path->setTimeout(timeout);
    return path;
}

Partition partitionAt(const std::string& path) {
    Partition partition;
    Attribute attribute("Path", "Path", "string");
    attribute.setValue(path);
    partition.setAttribute(attribute);
    return partition;
}

TEST(DeviceXml, WritesACommandPath) {
    EXPECT_EQ(written(*XmlConverter::toXml(*pathOf("NVMe", 30))),
              R"(<Object category="commandPath">)"
              R"(<Property name="name" value="NVMe"/>)"
              R"(<Property name="timeout" value="30"/>)"
              R"(</Object>)");
}

TEST(DeviceXml, WritesTheTimeoutOfACommandPathInDecimal) {
    const struct {
        std::int32_t timeout;
        const char* expected;
    } ROWS[] = {
        {5, R"(<Property name="timeout" value="5"/>)"},
        {0, R"(<Property name="timeout" value="0"/>)"},
        {-1, R"(<Property name="timeout" value="-1"/>)"},
        {2147483647, R"(<Property name="timeout" value="2147483647"/>)"},
        {-2147483647 - 1, R"(<Property name="timeout" value="-2147483648"/>)"},
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(written(*XmlConverter::toXml(*pathOf("p", row.timeout))),
                  R"(<Object category="commandPath"><Property name="name" value="p"/>)" +
                      std::string(row.expected) + "</Object>");
    }
}

TEST(DeviceXml, EscapesTheNameOfACommandPathAsAllValues) {
    EXPECT_EQ(written(*XmlConverter::toXml(*pathOf(R"(<a & "b">)", 5))),
              R"(<Object category="commandPath">)"
              R"(<Property name="name" value="&amp;lt;a &amp; &quot;b&quot;&amp;gt;"/>)"
              R"(<Property name="timeout" value="5"/>)"
              R"(</Object>)");
}

TEST(DeviceXml, WritesCommandPathsInKeyOrder) {
    Device device;
    device.addCommandPath(pathOf("beta", 20));
    device.addCommandPath(pathOf("alpha", 10));
    EXPECT_EQ(written(*XmlConverter::toXml(device.getCommandPaths())),
              R"(<List category="commandPathList">)"
              R"(<Object category="commandPath">)"
              R"(<Property name="name" value="alpha"/>)"
              R"(<Property name="timeout" value="10"/>)"
              R"(</Object>)"
              R"(<Object category="commandPath">)"
              R"(<Property name="name" value="beta"/>)"
              R"(<Property name="timeout" value="20"/>)"
              R"(</Object>)"
              R"(</List>)");
}

TEST(DeviceXml, WritesAnEmptyCommandPathList) {
    EXPECT_EQ(written(*XmlConverter::toXml(Device::CommandPaths())),
              R"(<List category="commandPathList"></List>)");
}

TEST(DeviceXml, WritesCommandSetsInKeyOrder) {
    const Device::CommandSets sets = {{"SCSI", "alpha"}, {"ATA", "beta"}, {"NVMe", ""}};
    EXPECT_EQ(written(*XmlConverter::toXml(sets)),
              R"(<List category="commandSetList">)"
              R"(<Object category="commandSet">)"
              R"(<Property name="name" value="ATA"/>)"
              R"(<Property name="commandPathName" value="beta"/>)"
              R"(</Object>)"
              R"(<Object category="commandSet">)"
              R"(<Property name="name" value="NVMe"/>)"
              R"(<Property name="commandPathName" value=""/>)"
              R"(</Object>)"
              R"(<Object category="commandSet">)"
              R"(<Property name="name" value="SCSI"/>)"
              R"(<Property name="commandPathName" value="alpha"/>)"
              R"(</Object>)"
              R"(</List>)");
}

TEST(DeviceXml, WritesAnEmptyCommandSetList) {
    EXPECT_EQ(written(*XmlConverter::toXml(Device::CommandSets())),
              R"(<List category="commandSetList"></List>)");
}

TEST(DeviceXml, WritesPartitionsInListOrder) {
    Partition first = partitionAt("/dev/sdb1");
    first.setAttribute(Attribute("Offset", std::uint64_t{2048}));
    const std::vector<Partition> partitions = {first, partitionAt("/dev/sda1"), Partition()};
    EXPECT_EQ(written(*XmlConverter::toXml(partitions)),
              R"(<List category="partitionList">)"
              R"(<Object category="partition">)"
              R"(<Property category="attribute" displayName="Path" name="Path" size="10")"
              R"( type="string" value="/dev/sdb1"/>)"
              R"(<Property category="attribute" displayName="" name="Offset" size="8")"
              R"( type="uint64" value="2048"/>)"
              R"(</Object>)"
              R"(<Object category="partition">)"
              R"(<Property category="attribute" displayName="Path" name="Path" size="10")"
              R"( type="string" value="/dev/sda1"/>)"
              R"(</Object>)"
              R"(<Object category="partition"></Object>)"
              R"(</List>)");
}

TEST(DeviceXml, WritesAnEmptyPartitionList) {
    EXPECT_EQ(written(*XmlConverter::toXml(std::vector<Partition>())),
              R"(<List category="partitionList"></List>)");
}

constexpr const char* EMPTY_DEVICE = R"(<Object category="device">)"
                                     R"(<List category="commandSetList"></List>)"
                                     R"(<List category="commandPathList"></List>)"
                                     R"(<List category="partitionList"></List>)"
                                     R"(<Object category="attributeList"></Object>)"
                                     R"(</Object>)";

TEST(DeviceXml, WritesAnEmptyDevice) {
    EXPECT_EQ(written(*XmlConverter::toXml(Device())), EMPTY_DEVICE);
}

/// Something in every field; what has no place in the XML form is in it too.
Device fullDevice() {
    class Nothing : public ProtocolIdentifier {
    public:
        Status identify(Device&) override { return {}; }

        std::unique_ptr<ProtocolIdentifier> clone() const override {
            return std::make_unique<Nothing>();
        }
    };

    Device device;
    Attribute serial("SerialNumber", "Serial Number", "string");
    serial.setValue("NV123");
    serial.setDescription("on the label");
    device.setAttribute(serial);
    device.setAttribute(Attribute("MaximumLBA", std::uint64_t{999}));
    device.addProtocolIdentifier(Nothing());
    device.addCommandPath(pathOf("scsi path", 5));
    device.addCommandPath(pathOf("ata path", 60));
    device.addCommandSet("SCSI", "scsi path");
    device.addCommandSet("ATA", "ata path");
    device.addPartition(partitionAt("/dev/sda1"));
    device.addChildDevice(Device());
    device.sendCommand(FakeCommand("ATA", "Identify"));
    return device;
}

constexpr const char* FULL_DEVICE =
    R"(<Object category="device">)"
    R"(<List category="commandSetList">)"
    R"(<Object category="commandSet">)"
    R"(<Property name="name" value="ATA"/>)"
    R"(<Property name="commandPathName" value="ata path"/>)"
    R"(</Object>)"
    R"(<Object category="commandSet">)"
    R"(<Property name="name" value="SCSI"/>)"
    R"(<Property name="commandPathName" value="scsi path"/>)"
    R"(</Object>)"
    R"(</List>)"
    R"(<List category="commandPathList">)"
    R"(<Object category="commandPath">)"
    R"(<Property name="name" value="ata path"/>)"
    R"(<Property name="timeout" value="60"/>)"
    R"(</Object>)"
    R"(<Object category="commandPath">)"
    R"(<Property name="name" value="scsi path"/>)"
    R"(<Property name="timeout" value="5"/>)"
    R"(</Object>)"
    R"(</List>)"
    R"(<List category="partitionList">)"
    R"(<Object category="partition">)"
    R"(<Property category="attribute" displayName="Path" name="Path" size="10")"
    R"( type="string" value="/dev/sda1"/>)"
    R"(</Object>)"
    R"(</List>)"
    R"(<Object category="attributeList">)"
    R"(<Property category="attribute" description="on the label" displayName="Serial Number")"
    R"( name="SerialNumber" size="6" type="string" value="NV123"/>)"
    R"(<Property category="attribute" displayName="" name="MaximumLBA" size="8" type="uint64")"
    R"( value="999"/>)"
    R"(</Object>)"
    R"(</Object>)";

TEST(DeviceXml, WritesADeviceWithEverything) {
    EXPECT_EQ(written(*XmlConverter::toXml(fullDevice())), FULL_DEVICE);
}

TEST(DeviceXml, LeavesTheDeviceAsItWas) {
    const Device device = fullDevice();
    XmlConverter::toXml(device);
    EXPECT_EQ(written(*XmlConverter::toXml(device)), FULL_DEVICE);
    EXPECT_EQ(device.getCommandHistory().size(), 1U);
}

TEST(DeviceXml, WritesTheAttributesOfAnIdentifiedDevice) {
    Device device;
    device.setAttribute(Attribute("MaximumLBA", std::uint64_t{999}));
    ASSERT_EQ(device.identify(), Status());
    EXPECT_EQ(written(*XmlConverter::toXml(device.getAttributes())),
              R"(<Object category="attributeList">)"
              R"(<Property category="attribute" displayName="" name="MaximumLBA" size="8")"
              R"( type="uint64" value="999"/>)"
              R"(<Property category="attribute" displayName="Sector Size" name="SectorSize")"
              R"( size="4" type="uint32" value="512"/>)"
              R"(<Property category="attribute" displayName="Device Status" name="DeviceStatus")"
              R"( size="8" type="string" value="Healthy"/>)"
              R"(<Property category="attribute" displayName="Physical Size" name="PhysicalSize")"
              R"( size="8" type="sint64" value="512000"/>)"
              R"(</Object>)");
}

TEST(DeviceXml, KeepsTheContentsOfADeviceInTheirOrder) {
    const auto object = XmlConverter::toXml(fullDevice());
    EXPECT_TRUE(object->getProperties().empty());
    ASSERT_EQ(object->getLists().size(), 3U);
    EXPECT_EQ(object->getLists()[0]->getAttribute("category"), "commandSetList");
    EXPECT_EQ(object->getLists()[1]->getAttribute("category"), "commandPathList");
    EXPECT_EQ(object->getLists()[2]->getAttribute("category"), "partitionList");
    ASSERT_EQ(object->getObjects().size(), 1U);
    EXPECT_EQ(object->getObjects()[0]->getAttribute("category"), "attributeList");
}

TEST(DeviceXml, WritesDevicesInListOrder) {
    const Device::Devices devices = {
        std::make_shared<Device>(),
        std::make_shared<Device>(fullDevice()),
        std::make_shared<Device>(),
    };
    EXPECT_EQ(written(*XmlConverter::toXml(devices)), R"(<List category="deviceList">)" +
                                                          std::string(EMPTY_DEVICE) + FULL_DEVICE +
                                                          EMPTY_DEVICE + "</List>");
}

TEST(DeviceXml, WritesAnEmptyDeviceList) {
    EXPECT_EQ(written(*XmlConverter::toXml(Device::Devices())),
              R"(<List category="deviceList"></List>)");
}

}  // namespace
}  // namespace orvel::core
