// The configuration file as its readers see it.
#include "tool/ToolConfiguration.h"

#include "core/XmlConverter.h"
#include "tests/support/InstallationFixture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace tavik::configuration {
namespace {

using orvel::core::Attribute;
using orvel::core::XmlConverter;

const std::string PATH = "opt/tavik_config.xml";

class ToolConfiguration : public tavik::testing::InstallationFixture {};

TEST_F(ToolConfiguration, HasThreeSettingsWithDefaults) {
    struct Row {
        Attribute setting;
        const char* name;
        const char* displayName;
        const char* value;
    };

    const Row rows[] = {
        {EnableLog(), "EnableLog", "Enable Log", "false"},
        {EnableLSIAdapter(), "EnableLSIAdapter", "Enable LSI Adapter", "false"},
        {LogFile(), "LogFile", "Log File", "/var/log/ORVELI.log"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.setting.getName(), row.name);
        EXPECT_EQ(row.setting.getDisplayName(), row.displayName);
        EXPECT_EQ(row.setting.getDescription(), "");
        EXPECT_EQ(row.setting.getType(), "string");
        EXPECT_EQ(row.setting.valueAsString(), row.value);
    }
}

TEST_F(ToolConfiguration, LiesInTheInstallationFolder) {
    EXPECT_EQ(getConfigPath(), PATH);
    put(PATH, "");
    EXPECT_EQ(getConfigPath(), PATH);
}

TEST_F(ToolConfiguration, IsReadByteForByte) {
    const std::string bytes("a\0\xFF\r\n b", 8);
    put(PATH, bytes);

    EXPECT_EQ(readText(), bytes);
}

TEST_F(ToolConfiguration, IsEmptyIfItCantBeRead) {
    EXPECT_EQ(readText(), "");
    EXPECT_FALSE(isAdapterEnabled());

    put(PATH, "");
    EXPECT_EQ(readText(), "");

    put(PATH, std::string(64UL * 1024 * 1024 + 1, 'x'));
    EXPECT_EQ(readText(), "");

    std::filesystem::remove(PATH);
    std::filesystem::create_directory(PATH);
    EXPECT_EQ(readText(), "");

    std::filesystem::remove(PATH);
    ASSERT_EQ(::mkfifo(PATH.c_str(), 0600), 0);
    EXPECT_EQ(readText(), "");
    EXPECT_FALSE(isAdapterEnabled());
}

TEST_F(ToolConfiguration, HoldsOneObject) {
    EXPECT_NE(parse("<Object/>"), nullptr);
    EXPECT_EQ(parse("<Object name=\"x\"></Object>")->getAttribute("name"), "x");
    for (const char* text : {"", "garbage", "<Object>", "<Message/>", "<List/>", "<Property/>",
                             "<Other/>", "<object/>", "\xFF\xFE"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(parse(text), nullptr);
    }
}

TEST_F(ToolConfiguration, HoldsTheTextOfASettingWithoutItsTerminator) {
    const auto settings = XmlConverter::toAttributes(
        *parse(R"(<Object><Property name="A" type="string" value="some text"/>)"
               R"(<Property name="B" type="string" value=""/>)"
               R"(<Property name="C" type="string"/>)"
               R"(<Property name="D" type="uint16" value="16961"/>)"
               R"(<Property name="E" type="bytepointer" value=""/>)"
               R"(<Property name="F" value="no type"/></Object>)"));

    EXPECT_EQ(valueOf(settings, "A"), "some text");
    EXPECT_EQ(valueOf(settings, "B"), "");
    EXPECT_EQ(valueOf(settings, "C"), "");
    // One byte less than the store has, whatever its type.
    EXPECT_EQ(valueOf(settings, "D"), "A");
    EXPECT_EQ(valueOf(settings, "E"), "");
    EXPECT_EQ(valueOf(settings, "F"), "");
    EXPECT_EQ(valueOf(settings, "a"), "");
}

TEST_F(ToolConfiguration, EnablesTheAdapterByOneWordOnly) {
    struct Row {
        std::string text;
        bool enabled;
    };

    const auto setting = [](const std::string& attributes) {
        return "<Object><Property " + attributes + "/></Object>";
    };
    const Row rows[] = {
        {setting(R"(name="EnableLSIAdapter" type="string" value="true")"), true},
        {setting(R"(name="EnableLSIAdapter" type="string" value="TRUE")"), true},
        {setting(R"(name="EnableLSIAdapter" type="string" value="True")"), true},
        {setting(R"(name="EnableLSIAdapter" type="string" value="false")"), false},
        {setting(R"(name="EnableLSIAdapter" type="string" value="1")"), false},
        {setting(R"(name="EnableLSIAdapter" type="string" value=" true")"), false},
        {setting(R"(name="EnableLSIAdapter" type="string" value="")"), false},
        {setting(R"(name="EnableLSIAdapter" value="true")"), false},
        {setting(R"(name="EnableLog" type="string" value="true")"), false},
        {"<Object></Object>", false},
        {"<Message/>", false},
        {"garbage", false},
        {"", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        put(PATH, row.text);
        EXPECT_EQ(isAdapterEnabled(), row.enabled);
    }
}

}  // namespace
}  // namespace tavik::configuration
