#include "interfaces/orveli/firmware_modules/FirmwareModules.h"

#include "core/Status.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace orvel::interfaces::orveli {
namespace {

using core::Status;

/// A folder with modules.
class Folder {
public:
    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder.path(name), std::ios::binary) << bytes;
    }

    /// A module with the image "IMAGE".
    void add(const std::string& name, const std::string& version, const std::string& more = "",
             const std::string& audience = "Generic",
             const std::string& product = "Quillbrook") const {
        write(name, "Norvo Firmware Module 1\nProduct: " + product + "\nVersion: " + version +
                        "\nAudience: " + audience + "\n" + more +
                        "Length: 5\nChecksum: 3269C6EF\n\nIMAGE");
    }

    /// The same with a wrong checksum.
    void addDamaged(const std::string& name, const std::string& version,
                    const std::string& more = "") const {
        write(name, "Norvo Firmware Module 1\nProduct: Quillbrook\nVersion: " + version +
                        "\nAudience: Generic\n" + more + "Length: 5\nChecksum: 00000000\n\nIMAGE");
    }

    std::string path() const { return folder.path().string(); }

    std::string path(const std::string& name) const { return folder.path(name); }

private:
    tavik::testing::TemporaryFolder folder;
};

const FirmwareModules::Drive DRIVE{"Quillbrook", "NX45A120", ""};

/// The version for the drive; else what stands in the way, as "code message", or "current".
std::string choose(const FirmwareModules& modules, const FirmwareModules::Drive& drive = DRIVE,
                   const std::vector<std::string>& folders = {}) {
    try {
        const auto module = modules.moduleFor(drive, folders);
        return module ? module->version : "current";
    } catch (const Status& status) {
        return std::to_string(status.getCode()) + " " + status.getMessage();
    }
}

TEST(FirmwareModules, ChoosesTheNewestForTheDrive) {
    Folder folder;
    folder.add("a.nfm", "NX45A130");
    folder.add("b.nfm", "NX45A140", "Activation: immediate\n");
    folder.add("c.nfm", "NX45A110");
    folder.add("d.nfm", "SX31A044", "", "Generic", "Sablewold");
    folder.add("e.bin", "NX45A150");
    std::filesystem::create_directory(folder.path("f.nfm"));
    const FirmwareModules modules(folder.path());
    const auto module = modules.moduleFor(DRIVE, {});
    ASSERT_TRUE(module.has_value());
    EXPECT_EQ(module->version, "NX45A140");
    EXPECT_EQ(module->image, core::Payload("IMAGE", 5));
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A140");
    EXPECT_EQ(modules.newerVersion("Sablewold", "SX31A040", {}), "SX31A044");
}

TEST(FirmwareModules, HasNothingForADriveWhoseFirmwareIsAsNewOrNewer) {
    Folder folder;
    folder.add("a.nfm", "NX45A120");
    const FirmwareModules modules(folder.path());
    EXPECT_EQ(choose(modules), "current");
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45B100", ""}), "current");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), std::nullopt);
    EXPECT_EQ(modules.newerVersion("Rowanlade", "NX45A100", {}), std::nullopt);
}

TEST(FirmwareModules, LooksIntoItsOwnFolderFirstThenIntoTheOthers) {
    Folder own;
    Folder first;
    Folder second;
    own.add("z.nfm", "NX45A130", "Activation: immediate\n");
    first.add("a.nfm", "NX45A130");
    second.add("a.nfm", "NX45A140");
    const FirmwareModules modules(own.path());
    const auto module = modules.moduleFor(DRIVE, {"/nonexistent/modules", "", first.path()});
    ASSERT_TRUE(module.has_value());
    EXPECT_EQ(module->activation, FirmwareModule::Activation::IMMEDIATE);
    EXPECT_EQ(choose(modules, DRIVE, {first.path(), second.path()}), "NX45A140");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {second.path()}), "NX45A140");
}

TEST(FirmwareModules, TakesTheFirstByNameOfOneVersion) {
    Folder folder;
    folder.add("b.nfm", "NX45A130");
    folder.add("a.nfm", "NX45A130", "Activation: immediate\n");
    const auto module = FirmwareModules(folder.path()).moduleFor(DRIVE, {});
    ASSERT_TRUE(module.has_value());
    EXPECT_EQ(module->activation, FirmwareModule::Activation::IMMEDIATE);
}

TEST(FirmwareModules, TellsModulesThatAreMissingFromModulesForOthers) {
    Folder folder;
    EXPECT_EQ(choose(FirmwareModules("/nonexistent/modules")),
              "52 No firmware file provided or module found.");
    EXPECT_EQ(choose(FirmwareModules("")), "52 No firmware file provided or module found.");
    EXPECT_EQ(choose(FirmwareModules(folder.path())),
              "52 No firmware file provided or module found.");
    folder.add("a.nfm", "SX31A044", "", "Generic", "Sablewold");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), "71 No firmware module found.");
}

TEST(FirmwareModules, GivesADriveWhatItMayTake) {
    Folder folder;
    folder.add("a.nfm", "NX45A140", "Upgrades: NX45A130\n");
    const FirmwareModules modules(folder.path());
    EXPECT_EQ(choose(modules),
              "70 Please contact your Norvo representative about firmware update for this drive.");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), std::nullopt);
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45A130", ""}), "NX45A140");

    folder.add("b.nfm", "NX45A130", "Upgrades: NX45A110, NX45A120\n");
    EXPECT_EQ(choose(modules), "NX45A130");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A130");
}

TEST(FirmwareModules, KeepsWhatIsMadeForAnOemToItsDrives) {
    Folder folder;
    folder.add("a.nfm", "NX45A140", "", "Calvexa");
    const FirmwareModules modules(folder.path());
    EXPECT_EQ(choose(modules), "72 Invalid target audience.");
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45A120", "Dorvane"}),
              "72 Invalid target audience.");
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45A120", "CALVEXA"}), "NX45A140");
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45A140", ""}), "current");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), std::nullopt);
}

TEST(FirmwareModules, NamesADamagedModuleIfItWouldBeTheOne) {
    Folder folder;
    folder.add("a.nfm", "NX45A130");
    folder.addDamaged("b.nfm", "NX45A140");
    const FirmwareModules modules(folder.path());
    EXPECT_EQ(choose(modules), "73 Invalid firmware module type. " + folder.path("b.nfm") +
                                   ": Its image doesn't match the checksum.");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A130");

    folder.addDamaged("b.nfm", "NX45A140", "Upgrades: NX45A130\n");
    EXPECT_EQ(choose(modules), "NX45A130");
    folder.addDamaged("b.nfm", "NX45A125");
    EXPECT_EQ(choose(modules), "NX45A130");
    folder.addDamaged("b.nfm", "NX45A110");
    EXPECT_EQ(choose(modules, {"Quillbrook", "NX45A130", ""}), "current");
}

TEST(FirmwareModules, NamesADamagedModuleThatDoesNotTellItsVersion) {
    Folder folder;
    folder.write("a.nfm", "Norvo Firmware Module 1\nProduct: Quillbrook\n");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), "73 Invalid firmware module type. " +
                                                          folder.path("a.nfm") +
                                                          ": Its header doesn't end.");
    folder.add("b.nfm", "NX45A130");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), "NX45A130");
}

TEST(FirmwareModules, NamesAFileThatItCannotReadIfThereIsNothingElse) {
    Folder folder;
    std::filesystem::create_symlink("nowhere", folder.path("a.nfm"));
    const std::string expected = "54 Failed reading a file necessary for the feature. Reboot and "
                                 "try again. " +
                                 folder.path("a.nfm");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), expected);
    folder.add("b.nfm", "NX45A120");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), expected);
    folder.add("b.nfm", "NX45A130");
    EXPECT_EQ(choose(FirmwareModules(folder.path())), "NX45A130");
}

TEST(FirmwareModules, NeitherWaitsForAPipeNorTakesItForAModule) {
    Folder folder;
    ASSERT_EQ(mkfifo(folder.path("a.nfm").c_str(), 0600), 0);
    EXPECT_EQ(choose(FirmwareModules(folder.path())),
              "54 Failed reading a file necessary for the feature. Reboot and try again. " +
                  folder.path("a.nfm"));
}

TEST(FirmwareModules, DoesNotReadAFileThatIsTooLarge) {
    Folder folder;
    folder.add("a.nfm", "NX45A130");
    std::filesystem::resize_file(folder.path("a.nfm"), 64U * 1024U * 1024U + 4096U + 1U);
    EXPECT_EQ(choose(FirmwareModules(folder.path())), "71 No firmware module found.");
}

TEST(FirmwareModules, NoticesThatAFileHasChanged) {
    Folder folder;
    folder.add("a.nfm", "NX45A130");
    const FirmwareModules modules(folder.path());
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A130");
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A130");
    folder.add("a.nfm", "NX45A140");
    const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(1);
    std::filesystem::last_write_time(folder.path("a.nfm"), later);
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), "NX45A140");
    std::filesystem::remove(folder.path("a.nfm"));
    EXPECT_EQ(modules.newerVersion("Quillbrook", "NX45A120", {}), std::nullopt);
}

TEST(FirmwareModules, HasAnUpdateForTwoFamiliesOfSimulatedDrives) {
    const FirmwareModules modules(SIMULATOR_MODULES);
    const auto nvme = modules.moduleFor(DRIVE, {});
    ASSERT_TRUE(nvme.has_value());
    EXPECT_EQ(nvme->version, "NX45A130");
    EXPECT_EQ(nvme->image.size(), 33024U);
    EXPECT_EQ(core::Payload(nvme->image.data(), 20),
              core::Payload("TAVIKSIMNX45A130\x00\x81\x00\x00", 20));
    const auto sata = modules.moduleFor({"Sablewold", "SX31A040", ""}, {});
    ASSERT_TRUE(sata.has_value());
    EXPECT_EQ(sata->version, "SX31A044");
    EXPECT_EQ(core::Payload(sata->image.data(), 20),
              core::Payload("TAVIKSIMSX31A044\x68\x80\x00\x00", 20));
}

}  // namespace
}  // namespace orvel::interfaces::orveli
