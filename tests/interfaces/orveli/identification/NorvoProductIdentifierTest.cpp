#include "interfaces/orveli/identification/NorvoProductIdentifier.h"

#include "core/Device.h"
#include "features/DeviceAttributes.h"
#include "tests/interfaces/orveli/identification/AttributeLines.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::identification {
namespace {

namespace attributes = orvel::features::device_attributes;

core::Device drive(const std::string& model, const std::string& protocol) {
    core::Device device;
    core::Attribute attribute = attributes::ModelNumber();
    attribute.setValue(model);
    device.setAttribute(attribute);
    attribute = attributes::ProductProtocol();
    attribute.setValue(protocol);
    device.setAttribute(attribute);
    return device;
}

std::string identified(core::Device device) {
    NorvoProductIdentifier identifier;
    EXPECT_EQ(identifier.clone()->identify(device), core::Status());
    return attributeLines(device);
}

TEST(NorvoProductIdentifier, KnowsEachSeries) {
    struct Row {
        const char* model;
        const char* product;
        const char* family;
    };

    // clang-format off
    const Row rows[] = {
    //   model                   product        family
        {"NORVO NX4510 1.6TB",   "Quillbrook",  "Norvo SSD NX4510 Series"},
        {"NORVO NX4610 3.2TB",   "Rowanlade",   "Norvo SSD NX4610 Series"},
        {"NORVO SX3110 480GB",   "Sablewold",   "Norvo SSD SX3110 Series"},
        {"NORVO SX3520 1.9TB",   "Ravenstow",   "Norvo SSD SX3520 Series"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.model);
        core::Device device = drive(row.model, "");
        EXPECT_EQ(NorvoProductIdentifier().identify(device), core::Status());
        EXPECT_EQ(device.readText(attributes::Product()), row.product);
        EXPECT_EQ(device.readText(attributes::ProductFamily()), row.family);
        EXPECT_EQ(device.readText(attributes::OEM()), "Generic");
    }
}

TEST(NorvoProductIdentifier, MarksAnNvmeDrive) {
    EXPECT_EQ(identified(drive("NORVO NX4510 1.6TB", "NVME")),
              "ModelNumber=NORVO NX4510 1.6TB\n"
              "Norvo=True\n"
              "NorvoGen3SATA=False\n"
              "NorvoNVMe=True\n"
              "OEM=Generic\n"
              "Product=Quillbrook\n"
              "ProductFamily=Norvo SSD NX4510 Series\n"
              "ProductProtocol=NVME\n"
              "Vendor=Norvo\n");
}

TEST(NorvoProductIdentifier, MarksASataDriveOfTheThirdGeneration) {
    core::Device device = drive("NORVO SX3110 480GB", "ATA");
    core::Attribute generation = attributes::SataGen3();
    generation.setValue(true);
    device.setAttribute(generation);
    EXPECT_EQ(NorvoProductIdentifier().identify(device), core::Status());
    EXPECT_TRUE(device.isSet(attributes::NorvoGen3SATA()));
    EXPECT_FALSE(device.isSet(attributes::NorvoNVMe()));
}

TEST(NorvoProductIdentifier, KnowsTheMakersOtherDrivesWithoutAProduct) {
    EXPECT_EQ(identified(drive("NORVO XY1 1TB", "ATA")), "ModelNumber=NORVO XY1 1TB\n"
                                                         "Norvo=True\n"
                                                         "NorvoGen3SATA=False\n"
                                                         "NorvoNVMe=False\n"
                                                         "ProductProtocol=ATA\n"
                                                         "Vendor=Norvo\n");
}

TEST(NorvoProductIdentifier, TakesNoOtherMakersDriveForItsOwn) {
    for (const char* model : {"", "NORVO", "NORVO ", "NORVON NX4510", "OTHER NX4510 1.6TB"}) {
        SCOPED_TRACE(model);
        core::Device device = drive(model, "NVME");
        EXPECT_EQ(NorvoProductIdentifier().identify(device), core::Status());
        EXPECT_FALSE(device.isSet(attributes::Norvo()));
        EXPECT_FALSE(device.isSet(attributes::NorvoNVMe()));
        EXPECT_FALSE(device.hasAttribute("Product"));
        EXPECT_FALSE(device.hasAttribute("Vendor"));
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli::identification
