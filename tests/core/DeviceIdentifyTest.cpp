// Tests of how a device is identified.
#include "core/Device.h"

#include "tests/core/DeviceParts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

namespace orvel::core {
namespace {

using doubles::Diary;
using doubles::newDiary;

TEST(Device, IdentifiesInAFixedOrder) {
    const Diary diary = newDiary();
    Device device;
    // Added out of the order in which they run.
    for (const char* name : {"product 1", "product 2"})
        device.addProductIdentifier(FakeProduct(diary, name));
    for (const std::string name : {"child 1", "child 2"}) {
        Device child;
        child.addProductIdentifier(FakeProduct(diary, name + " product"));
        child.addProtocolIdentifier(FakeProtocol(diary, name + " protocol"));
        Device grandchild;
        grandchild.addProtocolIdentifier(FakeProtocol(diary, name + " grandchild"));
        child.addChildDevice(grandchild);
        device.addChildDevice(child);
    }
    for (const char* name : {"protocol 1", "protocol 2"})
        device.addProtocolIdentifier(FakeProtocol(diary, name));

    expectSuccess(device.identify());

    EXPECT_EQ(*diary, (Lines{
                          "protocol 1",
                          "protocol 2",
                          "child 1 protocol",
                          "child 1 grandchild",
                          "child 1 product",
                          "child 2 protocol",
                          "child 2 grandchild",
                          "child 2 product",
                          "product 1",
                          "product 2",
                      }));
}

TEST(Device, HandsItselfToItsIdentifiers) {
    Device device;
    Lines seen;
    const auto note = [&](Device& got) {
        seen.push_back(&got == &device ? "itself" : "another");
        return Status();
    };
    device.addProtocolIdentifier(FakeProtocol(newDiary(), "", note));
    device.addProductIdentifier(FakeProduct(newDiary(), "", note));
    expectSuccess(device.identify());
    EXPECT_EQ(seen, (Lines{"itself", "itself"}));
}

TEST(Device, SetsTheSectorSizeBeforeAllIdentifiers) {
    Device device;
    device.setAttribute(Attribute("SectorSize", std::uint32_t{4096}));
    Lines seen;
    device.addProtocolIdentifier(protocolThat([&](Device& got) {
        for (const Attribute& attribute : got.getAttributes()) {
            seen.push_back(attribute.getName() + ", " + attribute.getDisplayName() + ", " +
                           attribute.getType() + ", " + attribute.valueAsString());
        }
        got.setAttribute(Attribute("SectorSize", std::uint32_t{520}));
        return Status();
    }));
    expectSuccess(device.identify());
    EXPECT_EQ(seen, (Lines{"SectorSize, Sector Size, uint32, 512"}));
    EXPECT_EQ(textIn(device, "SectorSize"), "520");
}

TEST(Device, StoresTheSectorSizeInFourBytes) {
    Device device;
    expectSuccess(device.identify());
    EXPECT_EQ(bytesOf(device.getAttribute(blank("SectorSize")).getPayload()),
              (Bytes{0x00, 0x02, 0x00, 0x00}));
}

TEST(Device, SetsStatusAndSizeAfterAllIdentifiers) {
    Device device;
    device.setAttribute(Attribute("DeviceStatus", "before"));
    device.setAttribute(Attribute("PhysicalSize", std::int64_t{-5}));
    device.setAttribute(Attribute("MaximumLBA", std::uint64_t{1}));
    Device child;
    Lines seen;
    child.addProtocolIdentifier(protocolThat([&](Device&) {
        seen.push_back(textIn(device, "DeviceStatus") + " " + textIn(device, "PhysicalSize"));
        return Status();
    }));
    device.addChildDevice(child);
    device.addProductIdentifier(FakeProduct(newDiary(), "", [&](Device& got) {
        seen.push_back(textIn(got, "DeviceStatus") + " " + textIn(got, "PhysicalSize"));
        got.setAttribute(Attribute("ErrorString", "worn out"));
        got.setAttribute(Attribute("SectorSize", std::uint32_t{4096}));
        got.setAttribute(Attribute("MaximumLBA", std::uint64_t{9}));
        return Status();
    }));
    expectSuccess(device.identify());
    EXPECT_EQ(seen, (Lines{"before -5", "before -5"}));
    EXPECT_EQ(textIn(device, "DeviceStatus"), "worn out");
    EXPECT_EQ(textIn(device, "PhysicalSize"), "40960");
}

TEST(Device, SetsItsAttributesInTheOrderOfTheSteps) {
    Device device;
    device.addProtocolIdentifier(protocolThat(setting(Attribute("MaximumLBA", std::uint64_t{9}))));
    expectSuccess(device.identify());
    EXPECT_EQ(namesIn(device), (Lines{"SectorSize", "MaximumLBA", "DeviceStatus", "PhysicalSize"}));
}

TEST(Device, DropsTheStatusesOfIdentifiersAndChildren) {
    const Diary diary = newDiary();
    const auto fail = [](Device&) { return Status(0, 13, "failed"); };
    Device child;
    child.addProtocolIdentifier(FakeProtocol(diary, "child", fail));
    Device device;
    device.addChildDevice(child);
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 1", fail));
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 2", fail));
    device.addProductIdentifier(FakeProduct(diary, "product 1", fail));
    device.addProductIdentifier(FakeProduct(diary, "product 2", fail));

    expectSuccess(device.identify());

    EXPECT_EQ(*diary, (Lines{"protocol 1", "protocol 2", "child", "product 1", "product 2"}));
    EXPECT_EQ(textIn(device, "DeviceStatus"), "Healthy");
    EXPECT_FALSE(device.hasAttribute("ErrorString"));
}

TEST(Device, GoesOnOverItsIdentifiersWhileTheyAddMore) {
    const Diary diary = newDiary();
    Device device;
    // Enough of them that the lists move.
    const auto addMore = [diary](Device& got) {
        for (int i = 0; i < 50; ++i) {
            got.addProtocolIdentifier(FakeProtocol(diary, "new protocol"));
            got.addProductIdentifier(FakeProduct(diary, "new product"));
        }
        return Status();
    };
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 1", addMore));
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 2"));
    device.addProductIdentifier(FakeProduct(diary, "product 1", addMore));
    device.addProductIdentifier(FakeProduct(diary, "product 2"));

    expectSuccess(device.identify());

    Lines expected{"protocol 1", "protocol 2", "product 1", "product 2"};
    expected.insert(expected.end(), 50, "new product");  // those of "protocol 1"
    EXPECT_EQ(*diary, expected);
    EXPECT_EQ(device.getProtocolIdentifiers().size(), 102U);
    EXPECT_EQ(device.getProductIdentifiers().size(), 102U);
}

TEST(Device, RunsAnIdentifierThatAddsItselfOnceEachTime) {
    const Diary diary = newDiary();
    Device device;
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol", [](Device& got) {
        got.addProtocolIdentifier(*got.getProtocolIdentifiers()[0]);
        return Status();
    }));
    expectSuccess(device.identify());
    EXPECT_EQ(diary->size(), 1U);
    expectSuccess(device.identify());
    EXPECT_EQ(diary->size(), 3U);
}

TEST(Device, KeepsAnIdentifierThatRemovesItselfUntilItIsDone) {
    const Diary diary = newDiary();
    Device device;
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 1", [diary](Device& got) {
        got.getProtocolIdentifiers().clear();
        diary->push_back("cleared");
        return Status();
    }));
    device.addProtocolIdentifier(FakeProtocol(diary, "protocol 2"));
    expectSuccess(device.identify());
    EXPECT_EQ((*diary)[0], "protocol 1");
    EXPECT_EQ((*diary)[1], "cleared");
    EXPECT_TRUE(device.getProtocolIdentifiers().empty());
}

TEST(Device, IdentifiesTheChildrenThatItsProtocolIdentifiersFound) {
    const Diary diary = newDiary();
    Device device;
    device.addProtocolIdentifier(protocolThat([](Device& got) {
        got.addChildDevice(Device());
        return Status();
    }));
    device.addProductIdentifier(FakeProduct(diary, "product", [diary](Device& got) {
        diary->push_back(textIn(*got.getChildDevices().at(0), "DeviceStatus"));
        got.addChildDevice(Device());
        return Status();
    }));
    expectSuccess(device.identify());
    EXPECT_EQ(*diary, (Lines{"product", "Healthy"}));
    ASSERT_EQ(device.getChildDevices().size(), 2U);
    EXPECT_FALSE(device.getChildDevices()[1]->hasAttribute("DeviceStatus"));
}

TEST(Device, TakesItsStatusFromTheErrorText) {
    const Bytes HEALTHY = {'H', 'e', 'a', 'l', 't', 'h', 'y', 0};

    const struct {
        const char* title;
        std::optional<Bytes> error;
        Bytes expected;
    } ROWS[] = {
        // clang-format off
//       title                           error text             status
        {"absent",                       std::nullopt,          HEALTHY},
        {"empty payload",                Bytes{},               HEALTHY},
        {"empty text",                   Bytes{0},              HEALTHY},
        {"one byte without terminator",  Bytes{'N'},            HEALTHY},
        {"text",                         Bytes{'N', 'o', 0},    {'N', 'o', 0}},
        {"text without terminator",      Bytes{'N', 'o', '!'},  {'N', 'o', 0}},
        {"a blank",                      Bytes{' ', 0},         {' ', 0}},
        {"zero inside",                  Bytes{'a', 0, 'b', 0}, {'a', 0, 'b', 0}},
        {"zero first",                   Bytes{0, 0},           {0, 0}},
        // clang-format on
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        Device device;
        device.setAttribute(Attribute("DeviceStatus", "before"));
        if (row.error) device.setAttribute(Attribute("ErrorString", payloadOf(*row.error)));
        expectSuccess(device.identify());
        const Attribute status = device.getAttribute(blank("DeviceStatus"));
        EXPECT_EQ(bytesOf(status.getPayload()), row.expected);
        EXPECT_EQ(status.getDisplayName(), "Device Status");
        EXPECT_EQ(status.getType(), "string");
    }
}

TEST(Device, KeepsTheErrorText) {
    Device device;
    device.setAttribute(Attribute("ErrorString", "worn out"));
    expectSuccess(device.identify());
    EXPECT_EQ(textIn(device, "ErrorString"), "worn out");
    device.removeAttribute("ErrorString");
    expectSuccess(device.identify());
    EXPECT_EQ(textIn(device, "DeviceStatus"), "Healthy");
}

TEST(Device, GetsItsPhysicalSizeFromTheMaximumLBAAndTheSectorSize) {
    const Bytes N999 = {0xE7, 0x03, 0, 0, 0, 0, 0, 0};
    const Bytes N512 = {0x00, 0x02, 0, 0};
    const Bytes TOP_54 = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x3F, 0x00};
    const Bytes TOP_55 = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x7F, 0x00};

    const struct {
        const char* title;
        Bytes maximumLBA;
        Bytes sectorSize;
        Bytes expected;
    } ROWS[] = {
        // clang-format off
//       title                           maximum LBA                     sector size                   physical size
        {"1000 sectors of 512",          N999,                           N512,                         {0x00, 0xD0, 0x07, 0, 0, 0, 0, 0}},
        {"1000 sectors of 4096",         N999,                           {0x00, 0x10, 0, 0},           {0x00, 0x80, 0x3E, 0, 0, 0, 0, 0}},
        {"one sector",                   {0, 0, 0, 0, 0, 0, 0, 0},       N512,                         {0x00, 0x02, 0, 0, 0, 0, 0, 0}},
        {"LBA of one byte",              {0xFF},                         N512,                         {0x00, 0x00, 0x02, 0, 0, 0, 0, 0}},
        {"LBA of two bytes",             {0xE7, 0x03},                   N512,                         {0x00, 0xD0, 0x07, 0, 0, 0, 0, 0}},
        {"LBA of no bytes",              {},                             N512,                         {0x00, 0x02, 0, 0, 0, 0, 0, 0}},
        {"LBA of nine bytes",            {0xE7, 3, 0, 0, 0, 0, 0, 0, 1}, N512,                         {0x00, 0xD0, 0x07, 0, 0, 0, 0, 0}},
        {"LBA beyond 32 bits",           {0xFF, 0xFF, 0xFF, 0xFF, 1},    N512,                         {0, 0, 0, 0, 0x00, 0x04, 0, 0}},
        {"sector size of one byte",      N999,                           {0x10},                       {0x80, 0x3E, 0, 0, 0, 0, 0, 0}},
        {"sector size of no bytes",      N999,                           {},                           {0, 0, 0, 0, 0, 0, 0, 0}},
        {"sector size of zero",          N999,                           {0, 0, 0, 0},                 {0, 0, 0, 0, 0, 0, 0, 0}},
        {"sector size beyond 32 bits",   N999,                           {0, 0, 0, 0, 1},              {0, 0, 0, 0, 0xE8, 0x03, 0, 0}},
        {"sector size of nine bytes",    N999,                           {0, 2, 0, 0, 0, 0, 0, 0, 1},  {0x00, 0xD0, 0x07, 0, 0, 0, 0, 0}},
        {"the sum wraps to zero",        Bytes(8, 0xFF),                 N512,                         {0, 0, 0, 0, 0, 0, 0, 0}},
        {"the product turns negative",   TOP_54,                         N512,                         {0, 0, 0, 0, 0, 0, 0, 0x80}},
        {"the product wraps to zero",    TOP_55,                         N512,                         {0, 0, 0, 0, 0, 0, 0, 0}},
        {"the product wraps beyond it",  {0, 0, 0, 0, 0, 0, 0x80, 0x00}, N512,                         {0x00, 0x02, 0, 0, 0, 0, 0, 0}},
        // clang-format on
    };

    for (const auto& row : ROWS) {
        SCOPED_TRACE(row.title);
        Device device;
        device.setAttribute(Attribute("PhysicalSize", "before"));
        device.addProtocolIdentifier(
            protocolThat(setting(Attribute("SectorSize", payloadOf(row.sectorSize)))));
        device.addProtocolIdentifier(
            protocolThat(setting(Attribute("MaximumLBA", payloadOf(row.maximumLBA)))));
        expectSuccess(device.identify());
        const Attribute size = device.getAttribute(blank("PhysicalSize"));
        EXPECT_EQ(bytesOf(size.getPayload()), row.expected);
        EXPECT_EQ(size.getDisplayName(), "Physical Size");
        EXPECT_EQ(size.getType(), "sint64");
    }
}

TEST(Device, HasAPhysicalSizeOfNoneWithoutASectorSize) {
    Device device;
    device.addProtocolIdentifier(protocolThat([](Device& got) {
        got.removeAttribute("SectorSize");
        got.setAttribute(Attribute("MaximumLBA", std::uint64_t{999}));
        return Status();
    }));
    expectSuccess(device.identify());
    EXPECT_EQ(textIn(device, "PhysicalSize"), "0");
    EXPECT_FALSE(device.hasAttribute("SectorSize"));
}

TEST(Device, LeavesThePhysicalSizeWithoutAMaximumLBA) {
    Device device;
    device.setAttribute(Attribute("NativeMaxLBA", std::uint64_t{999}));
    expectSuccess(device.identify());
    EXPECT_FALSE(device.hasAttribute("PhysicalSize"));
    EXPECT_FALSE(device.hasAttribute("MaximumLBA"));

    device.setAttribute(Attribute("PhysicalSize", "before"));
    expectSuccess(device.identify());
    EXPECT_EQ(textIn(device, "PhysicalSize"), "before");
}

TEST(Device, LeavesTheMaximumLBAAndItsPathsWhenIdentified) {
    DeviceWithPath only;
    only.device.setAttribute(Attribute("MaximumLBA", std::uint64_t{999}));
    expectSuccess(only.device.identify());
    EXPECT_EQ(textIn(only.device, "MaximumLBA"), "999");
    EXPECT_TRUE(only.path->diary->empty());
    EXPECT_EQ(only.device.getCommandHistory().size(), 0U);
}

}  // namespace
}  // namespace orvel::core
