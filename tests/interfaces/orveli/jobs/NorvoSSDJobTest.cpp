#include "interfaces/orveli/jobs/NorvoSSDJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"
#include "tests/interfaces/orveli/jobs/AnswerLines.h"

#include <gtest/gtest.h>

#include <cstring>

namespace orvel::interfaces::orveli::jobs {
namespace {

namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t GET_FEATURES = 0x0A;
constexpr std::uint8_t SMART_HEALTH = 0x02;
constexpr std::uint8_t FIRMWARE_SLOT = 0x03;
constexpr std::uint8_t HEALTH_STATISTICS = 0xCA;
constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
constexpr std::uint8_t C24F00 = 0x00;  // the low byte of SMART's LBA
constexpr const char* ALL = R"(<Object name="NorvoSSD" type="GetProperties"/>)";

/// Knows of one newer firmware, and keeps what it was asked.
class SampleCatalogue : public FirmwareCatalogue {
public:
    std::optional<std::string>
    newerVersion(const std::string& product, const std::string& currentFirmware,
                 const std::vector<std::string>& additionalFolders) const override {
        asked = product + " " + currentFirmware;
        for (const std::string& folder : additionalFolders)
            asked += " " + folder;
        if (currentFirmware == "NX45A120") return "NX45A130";
        return std::nullopt;
    }

    mutable std::string asked;
};

template <class Value>
void set(ScriptedDrive& drive, core::Attribute descriptor, const Value& value) {
    descriptor.setValue(value);
    drive->setAttribute(descriptor);
}

ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin", "NVX4510A0001K1P6");
    set(drive, attributes::ModelNumber(), "NORVO NX4510 1.6TB");
    set(drive, attributes::Firmware(), "NX45A120");
    set(drive, attributes::Product(), "Quillbrook");
    set(drive, attributes::DeviceStatus(), "Healthy");
    set(drive, attributes::Norvo(), true);
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH, {{.data = structure(512, {})}});
    return drive;
}

ScriptedDrive sataDrive() {
    ScriptedDrive drive("ATA", "NSX3110C0004G480");
    set(drive, attributes::DeviceStatus(), "Healthy");
    set(drive, attributes::SMARTEnabled(), true);
    set(drive, attributes::Norvo(), true);
    drive.onAta(SMART, 0xDA, C24F00, {{.returned = {}}});
    drive.onAta(SMART, 0xD0, C24F00, {{.data = structure(512, {})}});
    return drive;
}

protocols::ata::ReturnedTaskFile returnedLba(std::uint64_t lba) {
    protocols::ata::ReturnedTaskFile returned;
    returned.lba = lba;
    return returned;
}

/// Asks for these properties.
std::string ask(ScriptedDrive& drive, const std::vector<std::string>& names,
                const std::shared_ptr<const FirmwareCatalogue>& catalogue = nullptr) {
    std::string request = R"(<Object name="NorvoSSD" type="GetProperties">)"
                          R"(<Property name="AdditionalModuleDirs" value="/one~/two"/>)"
                          R"(<Object name="Properties">)";
    for (const std::string& name : names)
        request += "<Property name=\"" + name + "\"/>";
    NorvoSSDJob job(catalogue);
    return answerLines(runJob(job, request + "</Object></Object>", {drive.getDevice()}).output);
}

std::string valueOf(ScriptedDrive& drive, const std::string& name) {
    const std::string start = "[Norvo SSD 0]\n " + name + "=";
    std::string answer = ask(drive, {name});
    EXPECT_EQ(answer.substr(0, start.size()), start);
    answer.erase(0, start.size());
    if (!answer.empty()) answer.pop_back();
    return answer;
}

TEST(NorvoSSDJob, AnswersInTheOrderOfTheRequestByIndex) {
    ScriptedDrive drive = nvmeDrive();
    NorvoSSDJob job(nullptr);
    EXPECT_EQ(runJob(job,
                     R"(<Object name="NorvoSSD" type="GetProperties"><Object name="Properties">)"
                     R"(<Property name="SerialNumber"/><Property name="modelnumber"/>)"
                     R"(<Property name="PhySpeed"/></Object></Object>)",
                     {drive.getDevice()})
                  .output,
              R"(<Object><Object key="0" name="Norvo SSD">)"
              R"(<Property category="attribute" displayName="Serial Number" name="SerialNumber" )"
              R"(size="17" type="string" value="NVX4510A0001K1P6"/>)"
              R"(<Property category="attribute" displayName="Model Number" name="ModelNumber" )"
              R"(size="19" type="string" value="NORVO NX4510 1.6TB"/>)"
              R"(<Property name="PhySpeed" value="Property not found"/></Object></Object>)");
    EXPECT_TRUE(drive.sentNvme().empty()) << "nothing that was asked for costs a command";
}

TEST(NorvoSSDJob, ShowsEverythingSortedByNameWithoutWhatCannotBeRead) {
    ScriptedDrive drive = nvmeDrive();
    set(drive, attributes::eDriveSupported(), false);
    set(drive, attributes::VendorUniqueIdentifyPayload(), core::Payload(4));
    drive.onNvme(GET_FEATURES, 0xC0, {{.dword0 = 1}});
    drive.onNvme(GET_FEATURES, 0x04, {{.dword0 = 0x161}});
    drive.onNvme(GET_FEATURES, 0x08, {{.dword0 = 0x0A03}});
    NorvoSSDJob job(nullptr);
    EXPECT_EQ(answerLines(runJob(job, ALL, {drive.getDevice()}).output),
              "[Norvo SSD 0]\n"
              " AggregationThreshold=3\n"
              " AggregationTime=10\n"
              " DeviceStatus=Healthy\n"
              " eDriveSupported=False\n"
              " Firmware=NX45A120\n"
              " FirmwareUpdateAvailable=The selected Norvo SSD contains current firmware as of "
              "this tool release.\n"
              " Index=0\n"
              " ModelNumber=NORVO NX4510 1.6TB\n"
              " Norvo=True\n"
              " PowerGovernorMode=1\n"
              " Product=Quillbrook\n"
              " SerialNumber=NVX4510A0001K1P6\n"
              " TempThreshold=80\n");
}

TEST(NorvoSSDJob, ExplainsWhatCannotBeRead) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(ask(drive, {"TempThreshold", "endurANCEanalyzer", "Nonsense"}),
              "[Norvo SSD 0]\n"
              " TempThreshold=NVMe command reported a problem. Get Features: Invalid Command "
              "Opcode.\n"
              " EnduranceAnalyzer=The selected drive does not support this feature.\n"
              " Nonsense=Property not found\n");
}

TEST(NorvoSSDJob, ReadsTheSettingsOfAnNvmeDrive) {
    struct Row {
        const char* name;
        std::uint8_t feature;
        std::uint32_t dword;
        const char* value;
    };

    // clang-format off
    const Row rows[] = {
    //   name                       feature  dword       value
        {"PowerGovernorMode",       0xC0,    2,          "2"},
        {"SMBusAddress",            0xC8,    0xFF,       "255"},
        {"LatencyTrackingEnabled",  0xE2,    1,          "True"},
        {"LatencyTrackingEnabled",  0xE2,    0,          "False"},
        {"TempThreshold",           0x04,    0x0157,     "70"},
        {"TempThreshold",           0x04,    0x0100,     "-17"},
        {"AggregationThreshold",    0x08,    0x1234,     "52"},
        {"AggregationTime",         0x08,    0x1234,     "18"},
        {"WriteCacheEnabled",       0x06,    1,          "True"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(GET_FEATURES, row.feature, {{.dword0 = row.dword}});
        EXPECT_EQ(valueOf(drive, row.name), row.value);
        ASSERT_EQ(drive.sentNvme().size(), 1U);
        EXPECT_EQ(drive.sentNvme()[0].fields.cdw10, row.feature) << "the current value";
    }
}

/// SCT commands go into log E0h, and what they return comes back with the write.
ScriptedDrive sataDriveReturning(std::uint8_t count, std::uint8_t lba) {
    ScriptedDrive drive = sataDrive();
    protocols::ata::ReturnedTaskFile returned = returnedLba(lba);
    returned.count = count;
    drive.onAta(SMART, 0xD6, 0xE0, {{.returned = returned}});
    return drive;
}

TEST(NorvoSSDJob, ReadsTheSettingsOfASataDrive) {
    struct Row {
        const char* name;
        int action;
        int function;
        int code;  // feature or timer
        std::uint8_t low;
        std::uint8_t high;
        const char* value;
    };

    // clang-format off
    const Row rows[] = {
    //   name                                action function code    low   high  value
        {"PhySpeed",                         4,     2,       0xD004, 1,    0,    "1.5"},
        {"PhySpeed",                         4,     2,       0xD004, 2,    0,    "3"},
        {"PhySpeed",                         4,     2,       0xD004, 3,    0,    "6"},
        {"PhySpeed",                         4,     2,       0xD004, 0,    0,    "Failed to retrieve data from selected device."},
        {"PhySpeed",                         4,     2,       0xD004, 4,    0,    "Failed to retrieve data from selected device."},
        {"PhyConfig",                        4,     2,       0xD003, 2,    0,    "2"},
        {"SSCEnabled",                       4,     2,       0xD005, 1,    0,    "True"},
        {"SSCEnabled",                       4,     2,       0xD005, 0,    0,    "False"},
        {"PLITestTimeInterval",              4,     2,       0xD000, 6,    0,    "6"},
        {"PhysicalSectorSize",               4,     2,       0xD001, 0,    0x10, "4096"},
        {"PowerGovernorMode",                4,     2,       0xD002, 1,    0,    "1"},
        {"TemperatureLoggingInterval",       4,     2,       3,      0x05, 0x01, "261"},
        {"TempLoggingInterval",              4,     2,       3,      0x05, 0x01, "261"},
        {"WriteCacheState",                  4,     2,       1,      3,    0,    "3"},
        {"WriteCacheReorderingStateEnabled", 4,     2,       2,      1,    0,    "True"},
        {"WriteCacheReorderingStateEnabled", 4,     2,       2,      2,    0,    "False"},
        {"ReadErrorRecoveryTimer",           3,     2,       1,      0x2C, 0x01, "300"},
        {"WriteErrorRecoveryTimer",          3,     2,       2,      70,   0,    "70"},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ScriptedDrive drive = sataDriveReturning(row.low, row.high);
        EXPECT_EQ(valueOf(drive, row.name), row.value);
        ASSERT_EQ(drive.sentAta().size(), 2U) << "and IDENTIFY DEVICE";
        const core::Payload& sent = drive.sentAta()[1].input;
        ASSERT_EQ(sent.size(), 512U);
        EXPECT_EQ(*sent.at(0), row.action);
        // Error recovery control has its functions and timers where features have theirs.
        EXPECT_EQ(*sent.at(2), row.function);
        EXPECT_EQ(*sent.at(4) | *sent.at(5) << 8, row.code);
    }
}

TEST(NorvoSSDJob, AsksADriveForNoSettingThatItSaysItLacks) {
    ScriptedDrive drive = sataDriveReturning(1, 0);
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = structure(512, {{412, {0x09}}})}});
    EXPECT_EQ(valueOf(drive, "WriteCacheState"),
              "The selected drive does not support this feature.");
    EXPECT_EQ(drive.sentAta().size(), 1U);
    EXPECT_EQ(valueOf(drive, "ReadErrorRecoveryTimer"), "1");
    NorvoSSDJob job(nullptr);
    const std::string all = answerLines(runJob(job, ALL, {drive.getDevice()}).output);
    EXPECT_NE(all.find(" WriteErrorRecoveryTimer=1\n"), std::string::npos) << all;
    for (const char* name : {"WriteCacheState", "PhySpeed", "TempLoggingInterval"})
        EXPECT_EQ(all.find(name), std::string::npos) << name;
}

TEST(NorvoSSDJob, SendsTheMakersCommandsToNoOtherMakersDrive) {
    ScriptedDrive nvme = nvmeDrive();
    ScriptedDrive sata = sataDriveReturning(1, 0);
    for (ScriptedDrive* drive : {&nvme, &sata}) {
        set(*drive, attributes::Norvo(), false);
        const bool isNvme = drive == &nvme;
        EXPECT_EQ(ask(*drive, {"PowerGovernorMode", isNvme ? "SMBusAddress" : "PhySpeed",
                               "EnduranceAnalyzer"}),
                  std::string("[Norvo SSD 0]\n"
                              " PowerGovernorMode=Property not found\n ") +
                      (isNvme ? "SMBusAddress" : "PhySpeed") +
                      "=Property not found\n"
                      " EnduranceAnalyzer=The selected drive does not support this feature.\n");
        EXPECT_TRUE(drive->sentNvme().empty());
        EXPECT_TRUE(drive->sentAta().empty());
    }
}

constexpr const char* UNHEALTHY = "Device is unhealthy based on device status calculations.";

TEST(NorvoSSDJob, AnNvmeDriveWithACriticalWarningIsUnhealthy) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), "Healthy");
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH, {{.data = structure(512, {{0, {0x04}}})}});
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), UNHEALTHY);
    EXPECT_EQ(drive.sentNvme()[0].fields.cdw10, 0x007F8002U) << "the event stays for others";
    EXPECT_EQ(drive.sentNvme()[0].fields.nsid, 0xFFFFFFFFU);
}

TEST(NorvoSSDJob, ASataDriveThatExceedsAThresholdIsUnhealthy) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0xC24F00)}});
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), "Healthy");
    drive.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0x2CF400)}});
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), UNHEALTHY);
}

TEST(NorvoSSDJob, ADriveWhoseHealthCannotBeReadIsNotHealthy) {
    ScriptedDrive refusing = nvmeDrive();
    refusing.onNvme(GET_LOG_PAGE, SMART_HEALTH, {});
    EXPECT_EQ(valueOf(refusing, "DeviceStatus"),
              "NVMe command reported a problem. Get Log Page: Invalid Command Opcode.");
    ScriptedDrive brief = nvmeDrive();
    brief.onNvme(GET_LOG_PAGE, SMART_HEALTH, {{.data = structure(511, {})}});
    EXPECT_EQ(valueOf(brief, "DeviceStatus"),
              "The IO command passed, but did not return the expected amount of data.");
    ScriptedDrive refusingSata = sataDrive();
    refusingSata.onAta(SMART, 0xDA, C24F00, {});
    EXPECT_EQ(valueOf(refusingSata, "DeviceStatus").substr(0, 31),
              "ATA command reported a problem.");
    ScriptedDrive unclear = sataDrive();
    unclear.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0)}});
    EXPECT_EQ(valueOf(unclear, "DeviceStatus"), "Failed to retrieve data from selected device.");
}

TEST(NorvoSSDJob, ASataDriveThatCannotShowItsSmartDataIsNotHealthy) {
    ScriptedDrive refusing = sataDrive();
    refusing.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0xC24F00)}});
    refusing.onAta(SMART, 0xD0, C24F00, {});
    EXPECT_EQ(valueOf(refusing, "DeviceStatus").substr(0, 47),
              "ATA command reported a problem. SMART READ DATA");
    ScriptedDrive garbled = sataDrive();
    garbled.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0xC24F00)}});
    garbled.onAta(SMART, 0xD0, C24F00, {{.data = structure(512, {{2, {1}}})}});
    EXPECT_EQ(valueOf(garbled, "DeviceStatus"), "Failed to retrieve data from selected device.");
    garbled.onAta(SMART, 0xDA, C24F00, {{.returned = returnedLba(0x2CF400)}});
    EXPECT_EQ(valueOf(garbled, "DeviceStatus"), UNHEALTHY);
}

TEST(NorvoSSDJob, AListOfEverythingDoesNotHideThatTheHealthCannotBeRead) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH, {});
    NorvoSSDJob job(nullptr);
    const std::string answer = answerLines(runJob(job, ALL, {drive.getDevice()}).output);
    EXPECT_NE(answer.find(" DeviceStatus=NVMe command reported a problem. Get Log Page: Invalid "
                          "Command Opcode.\n"),
              std::string::npos)
        << answer;
}

TEST(NorvoSSDJob, ADriveWithSmartDisabledSaysSoAndIsNotAsked) {
    ScriptedDrive drive = sataDrive();
    set(drive, attributes::SMARTEnabled(), false);
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), "SMART is not enabled.");
    EXPECT_TRUE(drive.sentAta().empty());
}

TEST(NorvoSSDJob, ShowsWhatTheIdentificationMetWith) {
    ScriptedDrive drive = nvmeDrive();
    set(drive, attributes::ErrorString(), "Bad things.");
    set(drive, attributes::DeviceStatus(), "Bad things.");
    EXPECT_EQ(valueOf(drive, "DeviceStatus"), "Bad things.");
    EXPECT_TRUE(drive.sentNvme().empty());
}

TEST(NorvoSSDJob, ShowsWhyADriveCannotBeReached) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, SMART_HEALTH,
                 {{.pathStatus = core::statuses::adminCommandNotSendable()}});
    EXPECT_EQ(valueOf(drive, "DeviceStatus"),
              "The given admin command could not be sent down the given command path.");
}

TEST(NorvoSSDJob, TellsOfNewerFirmware) {
    const auto catalogue = std::make_shared<SampleCatalogue>();
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(ask(drive, {"FirmwareUpdateAvailable"}, catalogue),
              "[Norvo SSD 0]\n FirmwareUpdateAvailable=Firmware update available for the "
              "selected Norvo SSD as of this tool release.\n");
    EXPECT_EQ(catalogue->asked, "Quillbrook NX45A120 /one /two");
    set(drive, attributes::Firmware(), "NX45A130");
    EXPECT_EQ(ask(drive, {"FirmwareUpdateAvailable"}, catalogue),
              "[Norvo SSD 0]\n FirmwareUpdateAvailable=The selected Norvo SSD contains current "
              "firmware as of this tool release.\n");
}

constexpr const char* AVAILABLE =
    "Firmware update available for the selected Norvo SSD as of this tool release.";
constexpr const char* CURRENT =
    "The selected Norvo SSD contains current firmware as of this tool release.";
constexpr const char* WAITING = "Firmware update successful. Please reboot to apply update.";

std::string updateAvailable(ScriptedDrive& drive) {
    const auto catalogue = std::make_shared<SampleCatalogue>();
    const std::string answer = ask(drive, {"FirmwareUpdateAvailable"}, catalogue);
    return answer.substr(answer.find('=') + 1, answer.rfind('\n') - answer.find('=') - 1);
}

TEST(NorvoSSDJob, FirmwareThatWaitsForAnNvmeDrivesResetIsTold) {
    struct Row {
        int activeFirmwareInfo;
        const char* slot2;
        const char* outcome;
    };

    const Row rows[] = {
        {0x21, "NX45A130", WAITING},   {0x01, "NX45A130", AVAILABLE}, {0x11, "NX45A130", AVAILABLE},
        {0x21, "NX45A120", AVAILABLE}, {0x31, "NX45A130", AVAILABLE},
    };
    for (const Row& row : rows) {
        ScriptedDrive drive = nvmeDrive();
        core::Payload page = structure(512, {{0, {row.activeFirmwareInfo}}});
        std::memcpy(page.at(8), "NX45A120", 8);
        std::memcpy(page.at(16), row.slot2, 8);
        drive.onNvme(GET_LOG_PAGE, FIRMWARE_SLOT, {{.data = page}});
        EXPECT_EQ(updateAvailable(drive), row.outcome) << row.activeFirmwareInfo << row.slot2;
    }
}

TEST(NorvoSSDJob, FirmwareThatWaitsForASataDrivesPowerCycleIsTold) {
    ScriptedDrive drive = sataDrive();
    set(drive, attributes::Product(), "Sablewold");
    set(drive, attributes::Firmware(), "NX45A120");
    core::Payload identify = structure(512, {});
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {{.data = identify}});
    EXPECT_EQ(updateAvailable(drive), AVAILABLE);
    std::memcpy(identify.at(266), "XN541A03", 8);  // in words 133 to 136
    EXPECT_EQ(updateAvailable(drive), WAITING);
    set(drive, attributes::Firmware(), "NX45A130");
    EXPECT_EQ(updateAvailable(drive), CURRENT);
    drive.onAta(IDENTIFY_DEVICE, 0, 0, {});
    set(drive, attributes::Firmware(), "NX45A120");
    EXPECT_EQ(updateAvailable(drive), AVAILABLE);
}

TEST(NorvoSSDJob, TellsOfNoFirmwareForAnUnknownProduct) {
    const auto catalogue = std::make_shared<SampleCatalogue>();
    ScriptedDrive drive = nvmeDrive();
    drive->removeAttribute("Product");
    EXPECT_EQ(ask(drive, {"FirmwareUpdateAvailable"}, catalogue),
              "[Norvo SSD 0]\n FirmwareUpdateAvailable=The selected drive does not support this "
              "feature.\n");
    EXPECT_EQ(catalogue->asked, "");
}

TEST(NorvoSSDJob, ACloneSharesTheCatalogue) {
    const auto catalogue = std::make_shared<SampleCatalogue>();
    NorvoSSDJob job(catalogue);
    ScriptedDrive drive = nvmeDrive();
    const auto clone = job.clone();
    const Outcome outcome = runJob(*clone, ALL, {drive.getDevice()});
    EXPECT_EQ(outcome.status, core::Status());
    EXPECT_EQ(catalogue->asked, "Quillbrook NX45A120");
}

TEST(NorvoSSDJob, EstimatesTheLifeOfAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive();
    // 1 % (1024) in 5256 minutes, a hundredth of a year.
    drive.onNvme(GET_LOG_PAGE, HEALTH_STATISTICS,
                 {{.data = structure(512, {{40, {0x00, 0x04}}, {56, {0x88, 0x14}}})}});
    EXPECT_EQ(valueOf(drive, "EnduranceAnalyzer"), "1.00 years");
}

TEST(NorvoSSDJob, EstimatesTheLifeOfASataDrive) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, 0xD0, C24F00,
                {{.data = checkedStructure(
                      {{2, {226, 0x32, 0x00, 100, 100, 0x80, 0x00}},        // 1/8 %
                       {14, {228, 0x32, 0x00, 100, 100, 0x3C, 0x00}}})}});  // in 60 minutes
    EXPECT_EQ(valueOf(drive, "EnduranceAnalyzer"), "0.09 years");
}

TEST(NorvoSSDJob, SaysWhatKindOfWorkloadTellsNothing) {
    const std::string reset = "Media Workload Indicators have reset values. Run 60+ minute "
                              "workload prior to running the endurance analyzer.";
    const std::string noWear =
        "Workload did not induce any wear on the drive. Expected life calculation is invalid. "
        "Ensure that workloads run for an hour or more for valid calculations.";

    struct Row {
        std::initializer_list<int> wear;
        int minutes;
        std::string value;
    };

    // clang-format off
    const Row rows[] = {
    //   wear    minutes value
        {{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, 90, reset},
        {{0x10},       59, reset},
        {{0x00},       59, reset},
        {{0x00},       60, noWear},
        {{0x00, 0x64}, 60, "0.00 years"},
        {{0x01},       60, "11.69 years"},
        {{0xFF, 0xFF}, 90, "0.00 years"},  // worn by 64 %
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(GET_LOG_PAGE, HEALTH_STATISTICS,
                     {{.data = structure(512, {{40, row.wear}, {56, {row.minutes}}})}});
        EXPECT_EQ(valueOf(drive, "EnduranceAnalyzer"), row.value);
    }
}

TEST(NorvoSSDJob, ASataDriveWithoutATimerHasNoEstimate) {
    ScriptedDrive drive = sataDrive();
    drive.onAta(SMART, 0xD0, C24F00, {{.data = checkedStructure({{2, {226, 0, 0, 100, 100, 1}}})}});
    EXPECT_EQ(valueOf(drive, "EnduranceAnalyzer"),
              "The selected drive does not support this feature.");
}

TEST(NorvoSSDJob, ShowsADriveOfWhichNothingIsKnown) {
    ScriptedDrive drive("Unheard of", "X");
    NorvoSSDJob job(nullptr);
    EXPECT_EQ(answerLines(runJob(job, ALL, {drive.getDevice()}).output),
              "[Norvo SSD 0]\n DeviceStatus=\n Index=0\n SerialNumber=X\n");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
