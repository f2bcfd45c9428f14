// Which drive a line means: what is accepted in form, and what it is taken for.
#include "tool/DriveTarget.h"

#include "tool/NorvoSSDFeature.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace tavik::norvossd {
namespace {

using cli::framework::CommandPart;
using cli::framework::ParsedCommand;

CommandPart drivePart(bool required, bool valueRequired) {
    CommandPart part;
    part.name = "-norvossd";
    part.required = required;
    part.valueRequired = valueRequired;
    return part;
}

ParsedCommand lineWith(std::map<std::string, std::string> targets) {
    ParsedCommand parsed;
    parsed.targets = std::move(targets);
    return parsed;
}

TEST(DriveTarget, InsistsOnTheTargetAndItsValueAsThePartSays) {
    struct Row {
        std::map<std::string, std::string> targets;
        bool required;
        bool valueRequired;
        const char* text;  ///< null: accepted
    };

    const char* const notFound = "Error: -norvossd target not found.";
    const char* const noIndex = "Error: Must specify an norvo ssd index.";
    const Row rows[] = {
        {{}, true, true, notFound},
        {{}, true, false, notFound},
        {{}, false, true, nullptr},
        {{}, false, false, nullptr},
        {{{"-smart", "1"}}, true, true, notFound},
        {{{"-NORVOSSD", "1"}}, true, true, notFound},
        {{{"-norvossd", ""}}, true, true, noIndex},
        {{{"-norvossd", ""}}, false, true, noIndex},
        {{{"-norvossd", ""}}, true, false, nullptr},
        {{{"-norvossd", ""}}, false, false, nullptr},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(::testing::PrintToString(row.targets) + (row.required ? " required" : "") +
                     (row.valueRequired ? " with value" : ""));
        std::string target = "LEFT OVER";
        const auto refusal = getNorvoSSDTarget(lineWith(row.targets), target,
                                               drivePart(row.required, row.valueRequired));
        ASSERT_EQ(refusal == nullptr, row.text == nullptr);
        if (refusal == nullptr) {
            EXPECT_EQ(target, "");
            continue;
        }
        EXPECT_EQ(refusal->outputText(), row.text);
        EXPECT_EQ(refusal->getErrorCode(), 8);
    }
}

TEST(DriveTarget, AcceptsAnIndexAPathOrASerialNumberInForm) {
    struct Row {
        std::string value;
        const char* text;  ///< null: accepted
        std::string target;
    };

    const char* const range = "Error: Index Out of Range.";
    const char* const path = "Error: Invalid Physical Drive Path";
    const char* const serial = "Error: Invalid norvossd target";
    const std::string sixty(60, 'a');
    const Row rows[] = {
        {"0", nullptr, "0"},
        {"9999", nullptr, "9999"},
        {"0000", nullptr, "0000"},
        {"10000", range, ""},
        {"00001", range, ""},
        {std::string(70, '1'), range, ""},

        {"physicaldrive1", nullptr, "PHYSICALDRIVE1"},
        {"PhysicalDrive", nullptr, "PHYSICALDRIVE"},
        {R"(\\.\PhysicalDrive12)", nullptr, R"(\\.\PHYSICALDRIVE12)"},
        {"PHYSICALDRIVE1234", nullptr, "PHYSICALDRIVE1234"},
        {"PHYSICALDRIVE12345", path, ""},
        {"PHYSICALDRIVE-1", nullptr, "PHYSICALDRIVE-1"},
        {"PHYSICALDRIVE-123", nullptr, "PHYSICALDRIVE-123"},
        {"PHYSICALDRIVE1.5", nullptr, "PHYSICALDRIVE1.5"},
        {"PHYSICALDRIVE-1.5", nullptr, "PHYSICALDRIVE-1.5"},
        {"PHYSICALDRIVE-1.25", path, ""},
        {"PHYSICALDRIVE1.5.", path, ""},
        {"PHYSICALDRIVE1-", path, ""},
        {"PHYSICALDRIVE--1", path, ""},
        {"PHYSICALDRIVE 1", path, ""},
        {"PHYSICALDRIVEx", path, ""},
        {"PHYSICALDRIVE0x1", path, ""},
        {"PHYSICALDRIVE01", nullptr, "PHYSICALDRIVE01"},
        {"PHYSICALDRIVE1PHYSICALDRIVE1", path, ""},
        {"SERIALPHYSICALDRIVE", nullptr, "SERIALPHYSICALDRIVE"},
        {std::string(80, 'x') + "PhysicalDrive1", nullptr, std::string(80, 'X') + "PHYSICALDRIVE1"},

        {"nx451234abcd", nullptr, "NX451234ABCD"},
        {"-1", nullptr, "-1"},
        {"1.5", nullptr, "1.5"},
        {"0x1F", nullptr, "0X1F"},
        {" ", nullptr, " "},
        {"1,2", nullptr, "1,2"},
        {"a<b>&\"'", nullptr, "A<B>&\"'"},
        {"\xC3\xA4", nullptr, "\xC3\xA4"},
        {"PHYSICALDRIV1", nullptr, "PHYSICALDRIV1"},
        {sixty, nullptr, std::string(60, 'A')},
        {sixty + "a", serial, ""},
        {std::string(1000000, 'a'), serial, ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value.substr(0, 100));
        for (const bool required : {true, false}) {
            std::string target;
            const auto refusal = NorvoSSDFeature::getNorvoSSDTarget(
                lineWith({{"-norvossd", row.value}}), target, drivePart(required, required));
            ASSERT_EQ(refusal == nullptr, row.text == nullptr);
            if (refusal == nullptr) {
                EXPECT_EQ(target, row.target);
                continue;
            }
            EXPECT_EQ(refusal->outputText(), row.text);
            EXPECT_EQ(refusal->getErrorCode(), 8);
        }
    }
}

TEST(DriveTarget, TellsTheKindsApart) {
    EXPECT_EQ(kindOfTarget("0"), TargetKind::index);
    EXPECT_EQ(kindOfTarget("123456"), TargetKind::index);
    EXPECT_EQ(kindOfTarget("PHYSICALDRIVE1"), TargetKind::path);
    EXPECT_EQ(kindOfTarget("physicaldrive1"), TargetKind::path);
    EXPECT_EQ(kindOfTarget("SNPHYSICALDRIVE"), TargetKind::path);
    EXPECT_EQ(kindOfTarget("NX451234"), TargetKind::serialNumber);
    EXPECT_EQ(kindOfTarget("-1"), TargetKind::serialNumber);
    EXPECT_EQ(kindOfTarget(""), TargetKind::serialNumber);
}

}  // namespace
}  // namespace tavik::norvossd
