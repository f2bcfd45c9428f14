#include "interfaces/orveli/firmware_modules/FirmwareModule.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli {
namespace {

using core::Payload;

constexpr const char* MINIMAL = "Norvo Firmware Module 1\n"
                                "Product: Quillbrook\n"
                                "Version: NX45A130\n"
                                "Audience: Generic\n"
                                "Length: 5\n"
                                "Checksum: 3269C6EF\n"
                                "\n"
                                "IMAGE";

/// `MINIMAL` with one part of it exchanged.
std::string with(const std::string& part, const std::string& other) {
    std::string text = MINIMAL;
    return text.replace(text.find(part), part.size(), other);
}

TEST(FirmwareModule, ReadsAFileWithoutOptionalLines) {
    const FirmwareModule module = FirmwareModule::parse(MINIMAL);
    EXPECT_EQ(module.damage, "");
    EXPECT_EQ(module.product, "Quillbrook");
    EXPECT_EQ(module.version, "NX45A130");
    EXPECT_EQ(module.audience, "Generic");
    EXPECT_TRUE(module.upgrades.empty());
    EXPECT_EQ(module.activation, FirmwareModule::Activation::AT_RESET);
    EXPECT_EQ(module.image, Payload("IMAGE", 5));
    EXPECT_TRUE(module.canUpgrade("anything"));
}

TEST(FirmwareModule, ReadsAFileWithAllLinesInWhateverOrderAndABinaryImage) {
    const std::string file = std::string("Norvo Firmware Module 1\n"
                                         "Checksum: 906723cc\n"
                                         "Length: 9\n"
                                         "Activation: immediate\n"
                                         "Upgrades: NX45A100,  NX45A110 ,NX45A120\n"
                                         "Audience: Calvexa\n"
                                         "Version: 130\n"
                                         "Product: Merrowstead Reach\n"
                                         "\n") +
                             std::string("image\0\xFF\n\n", 9);
    const FirmwareModule module = FirmwareModule::parse(file);
    EXPECT_EQ(module.damage, "");
    EXPECT_EQ(module.product, "Merrowstead Reach");
    EXPECT_EQ(module.version, "130");
    EXPECT_EQ(module.audience, "Calvexa");
    EXPECT_EQ(module.upgrades, (std::vector<std::string>{"NX45A100", "NX45A110", "NX45A120"}));
    EXPECT_EQ(module.activation, FirmwareModule::Activation::IMMEDIATE);
    EXPECT_EQ(module.image, Payload("image\0\xFF\n\n", 9));
    EXPECT_TRUE(module.canUpgrade("NX45A110"));
    EXPECT_FALSE(module.canUpgrade("NX45A11"));
}

TEST(FirmwareModule, ActivatesAtAResetIfTold) {
    const FirmwareModule module =
        FirmwareModule::parse(with("Length", "Activation: reset\nLength"));
    EXPECT_EQ(module.damage, "");
    EXPECT_EQ(module.activation, FirmwareModule::Activation::AT_RESET);
}

TEST(FirmwareModule, TellsWhatIsWrongWithAFileAndForWhomItWas) {
    struct Row {
        const char* part;
        const char* other;
        const char* damage;
    };

    constexpr Row ROWS[] = {
        {"Module 1", "Module 2", "It doesn't begin as a firmware module."},
        {"\n\nIMAGE", "\n", "Its header doesn't end."},
        {"\n\nIMAGE", "", "Its header doesn't end."},
        {"Audience", "audience", "Its header has a line of an unknown kind."},
        {"Audience", "Comment: none\nAudience", "Its header has a line of an unknown kind."},
        {"Audience: Generic", "Audience:Generic", "Its header has a line of an unknown kind."},
        {"Length: 5", "Length: 5\nLength: 5", "Its header has 'Length' twice."},
        {"Length: 5\n", "", "Its header has no 'Length'."},
        {"Checksum: 3269C6EF\n", "", "Its header has no 'Checksum'."},
        {"Audience: Generic\n", "", "Its header has no 'Audience'."},
        {"Generic", "", "Its audience is no name."},
        {"Generic", "Gen\teric", "Its audience is no name."},
        {"Length", "Upgrades: NX45A1000\nLength", "It upgrades what is no firmware revision."},
        {"Length", "Upgrades: \nLength", "It upgrades what is no firmware revision."},
        {"Length", "Upgrades: A,,B\nLength", "It upgrades what is no firmware revision."},
        {"Length", "Activation: now\nLength", "Its activation is neither 'immediate' nor 'reset'."},
        {"5\n", "0\n", "Its length is no number of bytes that an image may have."},
        {"5\n", "5 \n", "Its length is no number of bytes that an image may have."},
        {"5\n", "67108865\n", "Its length is no number of bytes that an image may have."},
        {"5\n", "-5\n", "Its length is no number of bytes that an image may have."},
        {"5\n", "0x5\n", "Its length is no number of bytes that an image may have."},
        {"5\n", "99999999999999999999999\n",
         "Its length is no number of bytes that an image may have."},
        {"Length: 5", "Length: 6", "Its image is cut off."},
        {"Length: 5", "Length: 4", "It goes on behind the image."},
        {"3269C6EF", "3269C6E", "Its checksum is no number of 8 hexadecimal digits."},
        {"3269C6EF", "03269C6EF", "Its checksum is no number of 8 hexadecimal digits."},
        {"3269C6EF", "3269C6EG", "Its checksum is no number of 8 hexadecimal digits."},
        {"3269C6EF", "3269C6EE", "Its image doesn't match the checksum."},
        {"IMAGE", "IMAGF", "Its image doesn't match the checksum."},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.part) + " -> " + row.other);
        const FirmwareModule module = FirmwareModule::parse(with(row.part, row.other));
        EXPECT_EQ(module.damage, row.damage);
        EXPECT_EQ(module.product, "Quillbrook");
        EXPECT_EQ(module.image.size(), 0U);
    }
}

TEST(FirmwareModule, NeedsANameAndARevision) {
    EXPECT_EQ(FirmwareModule::parse(with("Quillbrook", " Quillbrook")).damage,
              "Its product is no name.");
    EXPECT_EQ(FirmwareModule::parse(with("Quillbrook", std::string(65, 'Q'))).damage,
              "Its product is no name.");
    EXPECT_EQ(FirmwareModule::parse(with("Product: Quillbrook\n", "")).damage,
              "Its header has no 'Product'.");
    for (const char* version : {"", "NX45A1300", "NX 45", "NX45\x01"})
        EXPECT_EQ(FirmwareModule::parse(with("NX45A130", version)).damage,
                  "Its version is no firmware revision.");
}

TEST(FirmwareModule, TakesAHeaderOf4096BytesAndNoMore) {
    // The header of MINIMAL has 110 bytes; the line "Upgrades: A,A,...,A\n" fills it up.
    const auto withHeader = [](std::size_t bytes) {
        std::string line = "Upgrades: A";
        while (line.size() + 2 < bytes - 110)
            line += ",A";
        line.append(bytes - 110 - line.size() - 1, ' ');
        return with("Length", line + "\nLength");
    };
    ASSERT_EQ(std::string(MINIMAL).size(), 110U + 5U);
    ASSERT_EQ(withHeader(4096).size(), 4096U + 5U);
    EXPECT_EQ(FirmwareModule::parse(withHeader(4095)).damage, "");
    EXPECT_EQ(FirmwareModule::parse(withHeader(4096)).damage, "");
    EXPECT_EQ(FirmwareModule::parse(withHeader(4097)).damage, "Its header doesn't end.");
}

TEST(FirmwareModule, IsDamagedIfItIsAnythingElse) {
    for (const std::string& bytes :
         {std::string(), std::string("\n"), std::string("\n\n"), std::string(3, '\0'),
          std::string(100000, '\n'), std::string(100000, 'x'), std::string(100000, ':')}) {
        const FirmwareModule module = FirmwareModule::parse(bytes);
        EXPECT_EQ(module.damage, "It doesn't begin as a firmware module.");
        EXPECT_EQ(module.product, "");
    }
}

}  // namespace
}  // namespace orvel::interfaces::orveli
