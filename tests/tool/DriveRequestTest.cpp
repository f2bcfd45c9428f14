// The XML of a request: its frame, the device that it selects and the properties that it carries.
#include "tool/DriveRequest.h"

#include "core/AttributeTypes.h"
#include "features/JobProperties.h"

#include <gtest/gtest.h>

#include <string>

namespace tavik::norvossd {
namespace {

using orvel::core::Attribute;
namespace types = orvel::core::types;

TEST(DriveRequest, AsksForAScanOfEveryDriveWithoutATarget) {
    const DriveRequest request("NorvoSSD", "GetProperties", "");

    EXPECT_EQ(request.getObject().toString(),
              R"(<?xml version="1.0" encoding="utf-8"?>)"
              R"(<Object name="NorvoSSD" type="GetProperties">)"
              R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
              R"(type="boolean" value="true"/>)"
              R"(</Object>)");
}

TEST(DriveRequest, SelectsTheDeviceThatTheTargetMeans) {
    struct Row {
        std::string target;
        std::string name;
        std::string value;
    };

    const Row rows[] = {
        {"1", "Index", "1"},
        {"0000", "Index", "0000"},
        {"NX451234ABCD", "SerialNumber", "NX451234ABCD"},
        {"-1", "SerialNumber", "-1"},
        {"1,2", "SerialNumber", "1,2"},
        {" ", "SerialNumber", " "},
        {"PHYSICALDRIVE1", "Path", R"(\\.\PHYSICALDRIVE1)"},
        {"PHYSICALDRIVE", "Path", R"(\\.\PHYSICALDRIVE)"},
        {R"(\\.\PHYSICALDRIVE1)", "Path", R"(\\.\PHYSICALDRIVE1)"},
        {"SNPHYSICALDRIVE1", "Path", "SNPHYSICALDRIVE1"},
        {"PHYSICAL.PHYSICALDRIVE1", "Path", "PHYSICAL.PHYSICALDRIVE1"},
        {"A<B>&\"'", "SerialNumber", "A&amp;lt;B&amp;gt;&amp;&quot;&apos;"},
        {"\xC3\xA4", "SerialNumber", "\xC3\xA4"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.target);
        EXPECT_EQ(DriveRequest("Nlog", "Method", row.target).getObject().toString(),
                  R"(<?xml version="1.0" encoding="utf-8"?>)"
                  R"(<Object name="Nlog" type="Method">)"
                  R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
                  R"(type="boolean" value="true"/>)"
                  R"(<List name="Devices"><Object name="Device">)"
                  R"(<Property category="attribute" name=")" +
                      row.name + R"(" type="string" value=")" + row.value +
                      R"("/></Object></List></Object>)");
    }
}

TEST(DriveRequest, KeepsTheOrderOfTheCallsAndTheSizeOfTheBlankDescriptor) {
    DriveRequest request("GPL", "Method", "0");
    Attribute filled("PageNum", "Page Num", types::uint16());
    ASSERT_TRUE(filled.setValueFromText("0x10") == orvel::core::Status());
    Attribute described("Note", "A note", types::string());
    described.setDescription("For people");
    described.setValue("text");

    request.addAsTyped(orvel::features::gpl::LogAddress(), "0x1F");
    request.add(filled);
    request.addAsTyped(orvel::features::gpl::LogAddress(), "");
    request.add(described);

    EXPECT_EQ(request.getObject().toString(),
              R"(<?xml version="1.0" encoding="utf-8"?>)"
              R"(<Object name="GPL" type="Method">)"
              R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
              R"(type="boolean" value="true"/>)"
              R"(<Property category="attribute" displayName="Log Address" name="LogAddress" )"
              R"(size="0" type="uint8" value="0x1F"/>)"
              R"(<Property category="attribute" displayName="Page Num" name="PageNum" )"
              R"(size="2" type="uint16" value="16"/>)"
              R"(<Property category="attribute" displayName="Log Address" name="LogAddress" )"
              R"(size="0" type="uint8" value=""/>)"
              R"(<Property category="attribute" description="For people" displayName="A note" )"
              R"(name="Note" size="5" type="string" value="text"/>)"
              R"(<List name="Devices"><Object name="Device">)"
              R"(<Property category="attribute" name="Index" type="string" value="0"/>)"
              R"(</Object></List></Object>)");
}

TEST(DriveRequest, SelectsAttributesInOneChildObject) {
    DriveRequest request("NorvoSSD", "GetProperties", "");
    request.select(Attribute("ModelNumber", "", types::string()));
    request.select(Attribute("", "", types::string()));
    request.select(Attribute("A,B", "", types::string()));
    request.addAsTyped(orvel::features::smart::ID(), "5");

    EXPECT_EQ(request.getObject().toString(),
              R"(<?xml version="1.0" encoding="utf-8"?>)"
              R"(<Object name="NorvoSSD" type="GetProperties">)"
              R"(<Property category="attribute" displayName="Scan" name="Scan" size="0" )"
              R"(type="boolean" value="true"/>)"
              R"(<Property category="attribute" displayName="ID" name="ID" size="0" )"
              R"(type="string" value="5"/>)"
              R"(<Object name="Properties">)"
              R"(<Property category="attribute" displayName="" name="ModelNumber" size="0" )"
              R"(type="string" value=""/>)"
              R"(<Property category="attribute" displayName="" name="" size="0" )"
              R"(type="string" value=""/>)"
              R"(<Property category="attribute" displayName="" name="A,B" size="0" )"
              R"(type="string" value=""/>)"
              R"(</Object></Object>)");
}

TEST(DriveRequest, AddsAPropertyToAnyObject) {
    orvel::core::xml::XmlObject object;

    addPropertyAsTyped(object, Attribute("Flag", "The flag", types::boolean()), "maybe");

    EXPECT_EQ(object.toString(),
              R"(<?xml version="1.0" encoding="utf-8"?><Object>)"
              R"(<Property category="attribute" displayName="The flag" name="Flag" size="0" )"
              R"(type="boolean" value="maybe"/></Object>)");
}

}  // namespace
}  // namespace tavik::norvossd
