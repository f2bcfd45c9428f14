#include "simulator/FleetText.h"

#include "Simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace orvel::simulator {
namespace {

std::string errorOf(const std::string& json, Unmentioned unmentioned) {
    try {
        readFleet(json, unmentioned);
    } catch (const FleetTextError& error) {
        return error.what();
    }
    return "no error";
}

/// Of a description of drives.
Fleet described(const std::string& drives) {
    return readFleet("{\"drives\":[" + drives + "]}", Unmentioned::TYPICAL);
}

const NvmeDrive& nvmeOf(const Fleet& fleet, std::size_t index = 0) {
    return std::get<NvmeDrive>(fleet.drives.at(index).drive);
}

const AtaDrive& ataOf(const Fleet& fleet, std::size_t index = 0) {
    return std::get<AtaDrive>(fleet.drives.at(index).drive);
}

Fault faultOf(Fault::Kind kind) {
    Fault fault;
    fault.kind = kind;
    return fault;
}

SimulatedDrive driveAt(const std::string& devicePath, std::variant<NvmeDrive, AtaDrive> drive) {
    SimulatedDrive made;
    made.drive = std::move(drive);
    made.devicePath = devicePath;
    return made;
}

/// With a value in each byte, so that none can get lost unseen.
StoredBytes filled(std::uint32_t size, unsigned seed) {
    StoredBytes bytes(size);
    for (std::uint32_t i = 0; i < size; ++i)
        put(bytes, i, 1 + (i * 7 + i / 256 + seed) % 255, 1);
    return bytes;
}

/// Each member has another value than a drive that nobody has touched.
NvmeDrive fullNvmeDrive() {
    NvmeDrive drive = makeDrive();
    drive.identifyController = filled(4096, 1);
    put(drive.identifyController, 78, 7, 2);     // CNTLID
    put(drive.identifyController, 262, 2, 1);    // ELPE
    put(drive.identifyController, 263, 31, 1);   // NPSS
    put(drive.identifyController, 516, 128, 4);  // NN
    drive.smartHealthLog = filled(512, 2);
    drive.errorLog = {filled(64, 3), filled(64, 4)};
    drive.commonNamespace = filled(4096, 5);
    put(drive.commonNamespace, 25, 0x0203, 2);  // NLBAF, FLBAS
    drive.namespaces = {{1, {commonNamespace(), {7, 9}}}, {128, {commonNamespace(), {}}}};
    drive.changedNamespaces = {1, 5, 0xFFFFFFFE};
    drive.controllers = {7, 9, 65535};
    drive.firmwareRevisions = {"FW000001", "", "FW \"3\\", "", "", "", "7"};
    drive.activeSlot = 3;
    drive.nextSlot = 7;
    drive.firmwareActivation = FirmwareActivation::CONVENTIONAL_RESET;
    drive.downloadedImage = {{0, filled(4096, 6)}, {4096, filled(8, 7)}};
    drive.features = {};
    drive.features[0x04] = {.isSaveable = true,
                            .isChangeable = false,
                            .isNamespaceSpecific = true,
                            .defaults = {{0, 1}, {0x10000, 2}},
                            .saved = {{1, 3}},
                            .current = {{0xFFFFFFFF, 4}}};
    drive.features[0xC8] = {.defaults = {}};
    drive.vendorLogs = {{0xC0, filled(1024, 8)},  {0xC1, filled(512, 9)},
                        {0xCA, filled(512, 10)},  {0xCB, filled(4096, 11)},
                        {0xC8, filled(2048, 12)}, {0xFF, filled(516, 13)}};
    drive.selfTestResults = {filled(28, 14), filled(28, 15)};
    drive.runningSelfTest = RunningSelfTest{2, 0xFFFFFFFF, std::chrono::milliseconds(123456789)};
    drive.shortSelfTestTime = std::chrono::milliseconds(1);
    drive.selfTestOutcome = 7;
    drive.eraseCount = 4;
    return drive;
}

AtaDrive fullAtaDrive() {
    AtaDrive drive;
    drive.identifyDevice = filled(512, 1);
    put(drive.identifyDevice, 200, 0x12345, 8);  // words 100 to 103
    drive.powerOnSettings = {false, false, true, 0x80};
    drive.nativeMaxAddress = 0xFFFFFFFFFFFF;
    drive.maxAddressAtPowerOn = 0;
    drive.hasMaxAddressBeenSet = true;
    drive.isMaxAddressFrozen = true;
    drive.smartData = filled(512, 2);
    drive.smartThresholds = filled(512, 3);
    drive.errorLog = {filled(124, 4), filled(124, 5)};
    drive.errorCount = 65535;
    drive.selfTestResults = {filled(26, 6)};
    drive.runningSelfTest = RunningAtaSelfTest{2, std::chrono::milliseconds(5)};
    drive.selfTestOutcome = 7;
    drive.selfTestFailingLba = 0x123456789A;
    drive.sctStatus = filled(512, 7);
    drive.sctFeatures = {{1, {1, 0, 65535, true}}, {0xD004, {.defaultState = 3}}};
    drive.recoveryTimers = {70, 0};
    drive.recoveryTimersAtPowerOn = {0, 75};
    drive.temperatureHistory = {-128, -1, 0, 127};
    drive.deviceStatistics = {{1, filled(512, 9)},  {4, filled(512, 10)}, {5, filled(512, 11)},
                              {6, filled(512, 12)}, {7, filled(512, 13)}, {255, filled(512, 14)}};
    drive.phyEventCounters = {{1, 0}, {0x8001, UINT64_MAX}};
    drive.otherLogs = {{0xA0, {filled(512, 15), filled(512, 16)}},
                       {0xA2, {StoredBytes(512)}},
                       {0x42, {filled(512, 17)}}};
    drive.security = {true, true, true, filled(32, 18), filled(32, 19), true, 0, true};
    drive.sanitize = {true, true, true, true, true};
    drive.eraseCount = 9;
    drive.isInStandby = true;
    drive.downloadedMicrocode = {{0, filled(512, 20)}, {65535, filled(1024, 21)}};
    drive.deferredRevision = "SX31A045";
    return drive;
}

Fleet fullFleet() {
    Fleet fleet;
    fleet.timeFactor = 1;
    fleet.latestTime = std::chrono::milliseconds(90'000'000'000'000'000);
    fleet.realTime = std::chrono::milliseconds(89'000'000'000'000'000);
    fleet.drives.push_back({.drive = fullNvmeDrive(),
                            .devicePath = "/dev/nvme0",
                            .partitions = {{"/dev/nvme0n1p1", "ext4", 1048576, UINT64_MAX}, {}},
                            .raid = RaidFacts{"V\u00F6l\n\x01", 1, 2, 3, 4},
                            .faults = {{.kind = Fault::Kind::REFUSE,
                                        .command = "Format NVM",
                                        .after = 3,
                                        .nvmeStatus = {7, 0xFF},
                                        .ataError = 0x10,
                                        .delay = std::chrono::milliseconds(7),
                                        .bytes = 8},
                                       faultOf(Fault::Kind::GARBAGE),
                                       faultOf(Fault::Kind::SHORT_DATA),
                                       faultOf(Fault::Kind::LOSE),
                                       faultOf(Fault::Kind::DELAY)},
                            .isLost = true});
    fleet.drives.push_back(driveAt(std::string("/\xFF\0", 3), fullAtaDrive()));
    return fleet;
}

TEST(FleetText, KeepsEveryMemberOfBothKindsOfDrives) {
    const Fleet fleet = fullFleet();
    const Fleet read = readFleet(writeFleet(fleet), Unmentioned::BLANK);
    ASSERT_EQ(read.drives.size(), 2U);
    EXPECT_EQ(nvmeOf(read), nvmeOf(fleet));
    EXPECT_EQ(ataOf(read, 1), ataOf(fleet, 1));
    EXPECT_EQ(read, fleet);
}

TEST(FleetText, KeepsDrivesThatNobodyHasTouched) {
    Fleet fleet;
    fleet.drives.push_back(driveAt("/dev/nvme0", NvmeDrive()));
    fleet.drives.push_back(driveAt("/dev/sda", AtaDrive()));
    EXPECT_EQ(readFleet(writeFleet(fleet), Unmentioned::BLANK), fleet);
}

TEST(FleetText, KeepsTypicalDrives) {
    const Fleet fleet = described(R"({"kind":"NVMe","devicePath":"/dev/nvme0"},)"
                                  R"({"kind":"SATA","devicePath":"/dev/sda"})");
    EXPECT_EQ(readFleet(writeFleet(fleet), Unmentioned::BLANK), fleet);
}

TEST(FleetText, WritesNothingButWhatADriveHas) {
    NvmeDrive nvme;
    putText(nvme.identifyController, 4, "SERIAL-0001         ");
    put(nvme.identifyController, 516, 4, 4);          // NN
    put(nvme.identifyController, 2048 + 32, 900, 2);  // the second power state's MP
    put(nvme.identifyController, 300, 1, 1);          // in UNVMCAP, bit 32
    put(nvme.identifyController, 1030, 0x55, 1);      // reserved
    put(nvme.identifyController, 1040, 0x66, 1);      // reserved, close by
    put(nvme.identifyController, 4095, 0x77, 1);      // vendor specific
    nvme.errorLog = {StoredBytes(64)};
    nvme.features[0xC8] = {.isSaveable = true, .defaults = {{0, 106}}};
    AtaDrive ata;
    putText(ata.identifyDevice, 20, "ESIRLA0-00 1        ");
    put(ata.identifyDevice, 2 * 170, 'A', 2);  // text that isn't filled up with blanks
    put(ata.smartData, 2 + 12, 5, 1);          // the second attribute
    ata.sctFeatures[0xD004] = {.saved = 2};
    Fleet fleet;
    fleet.latestTime = std::chrono::milliseconds(5);
    fleet.drives.push_back(driveAt("/dev/nvme0", nvme));
    fleet.drives.push_back(driveAt("/dev/sda", ata));

    EXPECT_EQ(
        writeFleet(fleet),
        R"({"latestTime":5,"drives":[)"
        "\n"
        R"({"kind":"NVMe","devicePath":"/dev/nvme0","identifyController":{"SN":"SERIAL-0001",)"
        R"("UNVMCAP":4294967296,"NN":4,"powerStates":[{},{"MP":900}],)"
        R"("otherBytes":[{"offset":1030,"bytes":"5500000000000000000066"},)"
        R"({"offset":4095,"bytes":"77"}]},"errorLog":[{}],)"
        R"("features":{"0xC8":{"saveable":true,"defaults":{"0":106}}}},)"
        "\n"
        R"({"kind":"SATA","devicePath":"/dev/sda","identifyDevice":{"SerialNumber":)"
        R"("SERIAL-0001","otherBytes":[{"offset":340,"bytes":"41"}]},)"
        R"("smartData":{"attributes":[{},{"Id":5}]},)"
        R"("sctFeatures":{"0xD004":{"saved":2}}}]})"
        "\n");
}

TEST(FleetText, WritesAFleetWithoutDrives) {
    EXPECT_EQ(writeFleet(Fleet()), "{}\n");
    EXPECT_EQ(readFleet("{}", Unmentioned::BLANK), Fleet());
    EXPECT_EQ(readFleet("{}", Unmentioned::TYPICAL), Fleet());
}

TEST(FleetText, ReadsWhatStandsAroundADrive) {
    const Fleet fleet = readFleet(R"({
        "timeFactor": 60, "latestTime": "0x10",
        "drives": [
            {"kind": "SATA", "devicePath": "/dev/sdb", "lost": true,
             "partitions": [{"path": "/dev/sdb1", "fileSystemType": "ext4",
                             "offset": 1048576, "size": 2097152}],
             "raid": {"volumeName": "Volume0", "setIndex": 3, "type": 5, "driveCount": 4,
                      "stripeSize": 128},
             "faults": [{"fault": "refuse", "command": "SMART READ DATA", "error": "0x40"},
                        {"fault": "delay", "after": 2, "milliseconds": 700}]},
            {"kind": "NVMe", "devicePath": "/dev/nvme0",
             "faults": [{"fault": "refuse", "command": "Format NVM", "status": "0x10A"},
                        {"fault": "shortData", "command": "Identify", "bytes": 16},
                        {"fault": "garbage"}, {"fault": "lose"}]}
        ]})",
                                  Unmentioned::TYPICAL);
    EXPECT_EQ(fleet.timeFactor, 60U);
    EXPECT_EQ(fleet.latestTime, std::chrono::milliseconds(16));
    const SimulatedDrive& sata = fleet.drives.at(0);
    EXPECT_EQ(sata.devicePath, "/dev/sdb");
    EXPECT_TRUE(sata.isLost);
    EXPECT_EQ(sata.partitions,
              (std::vector<PartitionFacts>{{"/dev/sdb1", "ext4", 1048576, 2097152}}));
    EXPECT_EQ(sata.raid, (RaidFacts{"Volume0", 3, 5, 4, 128}));
    EXPECT_EQ(sata.faults.at(0).kind, Fault::Kind::REFUSE);
    EXPECT_EQ(sata.faults.at(0).command, "SMART READ DATA");
    EXPECT_EQ(sata.faults.at(0).ataError, 0x40);
    EXPECT_EQ(sata.faults.at(1).kind, Fault::Kind::DELAY);
    EXPECT_EQ(sata.faults.at(1).after, 2U);
    EXPECT_EQ(sata.faults.at(1).delay, std::chrono::milliseconds(700));
    const SimulatedDrive& nvme = fleet.drives.at(1);
    EXPECT_EQ(nvme.faults.at(0).nvmeStatus.type, 1);
    EXPECT_EQ(nvme.faults.at(0).nvmeStatus.code, 0x0A);
    EXPECT_EQ(nvme.faults.at(1).kind, Fault::Kind::SHORT_DATA);
    EXPECT_EQ(nvme.faults.at(1).bytes, 16U);
    EXPECT_EQ(nvme.faults.at(2).kind, Fault::Kind::GARBAGE);
    EXPECT_EQ(nvme.faults.at(3).kind, Fault::Kind::LOSE);
    EXPECT_FALSE(nvme.raid.has_value());
}

TEST(FleetText, MakesADriveFromAFewWords) {
    const Fleet fleet = described(
        R"({"kind":"NVMe","devicePath":"/dev/nvme0","model":"NORVO NX4510 800GB",)"
        R"("serialNumber":"NVX0000000000001","firmware":"NX45A120","bootloader":"NX45B099",)"
        R"("capacity":800166076416},)"
        R"({"kind":"SATA","devicePath":"/dev/sda","model":"NORVO SX3110 960GB",)"
        R"("serialNumber":"NSX0000000000002","firmware":"SX31A040","bootloader":"SX31B099",)"
        R"("capacity":960197124096},{"kind":"SATA","devicePath":"/dev/sdb"})");
    const NvmeDrive& nvme = nvmeOf(fleet);
    EXPECT_EQ(textAt(nvme.identifyController, 4, 20), "NVX0000000000001    ");
    EXPECT_EQ(textAt(nvme.identifyController, 24, 20), "NORVO NX4510 800GB  ");
    EXPECT_EQ(textAt(nvme.identifyController, 64, 8), "NX45A120");
    EXPECT_EQ(textAt(nvme.identifyController, 3072, 8), "NX45B099");
    EXPECT_EQ(nvme.firmwareRevisions.at(0), "NX45A120");
    EXPECT_EQ(get(nvme.identifyController, 280, 8), 800166076416U);  // TNVMCAP
    EXPECT_EQ(get(nvme.identifyController, 296, 8), 0U);             // UNVMCAP
    EXPECT_EQ(get(nvme.identifyController, 3080, 8), 1562824367U);   // NativeMaximumLBA
    const core::Payload& identify = nvme.namespaces.at(1).identify;
    EXPECT_EQ(get(identify, 0, 8), 1562824368U);     // NSZE
    EXPECT_EQ(get(identify, 8, 8), 1562824368U);     // NCAP
    EXPECT_EQ(get(identify, 16, 8), 1562824368U);    // NUSE
    EXPECT_EQ(get(identify, 48, 8), 800166076416U);  // NVMCAP

    const AtaDrive& ata = ataOf(fleet, 1);
    EXPECT_EQ(textAt(ata.identifyDevice, 20, 20), "SN0X000000000020    ");
    EXPECT_EQ(textAt(ata.identifyDevice, 46, 8), "XS130A04");
    EXPECT_EQ(textAt(ata.identifyDevice, 54, 18), "ONVR OXS13019 06BG");
    EXPECT_EQ(textAt(ata.identifyDevice, 258, 8), "XS130B99");
    EXPECT_EQ(get(ata.identifyDevice, 120, 4), 0x0FFFFFFFU);
    EXPECT_EQ(get(ata.identifyDevice, 200, 8), 1875385008U);
    EXPECT_EQ(ata.nativeMaxAddress, 1875385007U);

    EXPECT_EQ(textAt(ataOf(fleet, 2).identifyDevice, 20, 10), "ISDMVEDS B");
}

TEST(FleetText, LaysNamespacesOutAsTheDescriptionSays) {
    const Fleet fleet = described(
        R"({"kind":"NVMe","devicePath":"/dev/nvme0","capacity":1000000000512,"namespaces":{)"
        R"("1":{"capacity":400000000000},)"
        R"("0x7":{"capacity":500000001000,"controllers":[],"identify":{"FLBAS":1,"NMIC":1}}}})");
    const NvmeDrive& drive = nvmeOf(fleet);
    ASSERT_EQ(drive.namespaces.size(), 2U);
    const NvmeNamespace& first = drive.namespaces.at(1);
    EXPECT_EQ(get(first.identify, 0, 8), 781250000U);
    EXPECT_EQ(get(first.identify, 48, 8), 400000000000U);
    EXPECT_EQ(first.controllers, std::set<std::uint16_t>{0});
    const NvmeNamespace& second = drive.namespaces.at(7);
    EXPECT_EQ(get(second.identify, 0, 8), 122070312U);
    EXPECT_EQ(get(second.identify, 48, 8), 499999997952U);
    EXPECT_EQ(get(second.identify, 30, 1), 1U);
    EXPECT_EQ(second.controllers, std::set<std::uint16_t>{});
    EXPECT_EQ(get(drive.identifyController, 296, 8), 100000002560U);  // UNVMCAP
}

TEST(FleetText, GivesANamespaceWithoutACapacityWhatIsLeft) {
    const Fleet fleet =
        described(R"({"kind":"NVMe","devicePath":"/dev/nvme0","capacity":1000000000000,)"
                  R"("identifyController":{"CNTLID":4},"controllers":[3,4],"namespaces":{)"
                  R"("1":{"identify":{"NSZE":1000,"NCAP":1000}},"2":{}}})");
    EXPECT_EQ(get(nvmeOf(fleet).namespaces.at(1).identify, 48, 8), 512000U);
    EXPECT_EQ(get(nvmeOf(fleet).namespaces.at(2).identify, 48, 8), 999999488000U);
    EXPECT_EQ(nvmeOf(fleet).namespaces.at(2).controllers, std::set<std::uint16_t>{4});
    EXPECT_EQ(get(nvmeOf(fleet).identifyController, 296, 8), 0U);
}

TEST(FleetText, ChangesTypicalDrivesOnlyWhereTheDescriptionSaysSo) {
    const Fleet fleet = described(
        R"({"kind":"NVMe","devicePath":"/dev/nvme0",)"
        R"("smartHealthLog":{"AvailableSpare":4,"DataUnitsRead":"0x100000000000000000",)"
        R"("otherBytes":[{"offset":510,"bytes":"abCD"}]},)"
        R"("features":{"0xE2":{"saved":{"0":1}},"6":null},"vendorLogs":{"0xC0":{"EntryCount":9,)"
        R"("size":2048},"0xC4":null},"firmwareRevisions":["NX45A130","NX45A140"],)"
        R"("activeSlot":2,"selfTestResults":[{"DeviceSelfTestStatus":"0x17","POH":12}],)"
        R"("runningSelfTest":{"code":1,"nsid":"0xFFFFFFFF","start":5}},)"
        R"({"kind":"SATA","devicePath":"/dev/sda","smartAttributes":{)"
        R"("5":{"normalized":3,"worst":2,"raw":2048,"threshold":9,"flags":50},"199":{"raw":77},)"
        R"("12":null,"250":{"raw":1,"threshold":4}},)"
        R"("identifyDevice":{"words":{"82":"0x1234","0x81":7}},)"
        R"("deviceStatistics":{"6":{"InterfaceCRCErrors":12}},"temperatureHistory":[-5,30],)"
        R"("sctFeatures":{"0xD004":{"saved":2}},"recoveryTimers":[70,80]})");
    const NvmeDrive& nvme = nvmeOf(fleet);
    EXPECT_EQ(get(nvme.smartHealthLog, 3, 1), 4U);
    EXPECT_EQ(get(nvme.smartHealthLog, 4, 1), 10U);  // typical
    EXPECT_EQ(get(nvme.smartHealthLog, 32, 8), 0U);
    EXPECT_EQ(get(nvme.smartHealthLog, 40, 8), 16U);
    EXPECT_EQ(get(nvme.smartHealthLog, 510, 2), 0xCDABU);
    EXPECT_FALSE(nvme.features.contains(6));
    EXPECT_EQ(nvme.features.at(0xE2).saved, (NvmeFeature::Values{{0, 1}}));
    EXPECT_TRUE(nvme.features.at(0xE2).isSaveable);  // typical
    EXPECT_FALSE(nvme.vendorLogs.contains(0xC4));
    const core::Payload& log = nvme.vendorLogs.at(0xC0);
    EXPECT_EQ(log.size(), 2048U);
    EXPECT_EQ(textAt(log, 0, 4), "NLOG");
    EXPECT_EQ(get(log, 12, 4), 9U);
    EXPECT_EQ(textAt(nvme.identifyController, 64, 8), "NX45A140");
    EXPECT_EQ(nvme.selfTestResults.size(), 1U);
    EXPECT_EQ(get(nvme.selfTestResults.at(0), 0, 8), 0x0000000C00000017U);
    EXPECT_EQ(nvme.runningSelfTest, (RunningSelfTest{1, 0xFFFFFFFF, std::chrono::milliseconds(5)}));

    const AtaDrive& ata = ataOf(fleet, 1);
    EXPECT_EQ(get(ata.smartData, 2, 8), 0x0008000203003205U);
    EXPECT_EQ(get(ata.smartThresholds, 2, 2), 0x0905U);
    EXPECT_EQ(get(ata.smartData, 2 + 2 * 12, 4), 0x000000FAU);  // in the place of attribute 12
    EXPECT_EQ(get(ata.smartData, 2 + 2 * 12 + 5, 6), 1U);
    EXPECT_EQ(get(ata.smartThresholds, 2 + 2 * 12, 2), 0x04FAU);
    EXPECT_EQ(get(ata.smartData, 2 + 15 * 12, 6), 0x4D6464003EC7U);
    EXPECT_EQ(get(ata.smartData, 2 + 15 * 12 + 5, 6), 77U);
    EXPECT_EQ(get(ata.identifyDevice, 164, 2), 0x1234U);
    EXPECT_EQ(get(ata.identifyDevice, 258, 2), 7U);
    EXPECT_EQ(get(ata.deviceStatistics.at(6), 24, 8), 0xC00000000000000CU);  // with its flags
    EXPECT_EQ(ata.temperatureHistory, (std::deque<std::int8_t>{-5, 30}));
    EXPECT_EQ(ata.sctFeatures.at(0xD004), (SctFeatureState{3, 2, {}, true}));
    EXPECT_EQ(ata.recoveryTimers, (std::array<std::uint16_t, 2>{70, 80}));
}

TEST(FleetText, CountsTheErrorsOfALogThatSaysNothingElse) {
    const Fleet fleet = described(
        R"({"kind":"SATA","devicePath":"/dev/sda","errorLog":[{"error":{"Error":64,"Status":81},)"
        R"("commands":[{"Command":"0x25","LBA7To0":1},{"Command":"0x60"}]},{}]},)"
        R"({"kind":"SATA","devicePath":"/dev/sdb","errorLog":[{}],"errorCount":300})");
    EXPECT_EQ(ataOf(fleet).errorCount, 2);
    EXPECT_EQ(get(ataOf(fleet).errorLog.at(0), 12, 1), 0x25U);
    EXPECT_EQ(get(ataOf(fleet).errorLog.at(0), 18 + 12, 1), 0x60U);
    EXPECT_EQ(get(ataOf(fleet).errorLog.at(0), 90 + 1, 1), 64U);
    EXPECT_EQ(get(ataOf(fleet).errorLog.at(0), 90 + 11, 1), 81U);
    EXPECT_EQ(ataOf(fleet, 1).errorCount, 300);
}

struct WrongText {
    const char* drives;  ///< what stands in the list
    const char* message;
};

std::string driveWith(const char* kind, const char* members) {
    return std::string(R"({"drives":[{"kind":")") + kind + R"(","devicePath":"/dev/a",)" + members +
           "}]}";
}

// clang-format off
constexpr WrongText WRONG_FLEETS[] = {
    {R"()",                                            "line 1: expected value"},
    {"{\n\"drives\": [,]}",                            "line 2: expected value"},
    {"{\"drives\":[]\n}\n}",                           "line 3: garbage after data"},
    {R"({"drives":"\x"})",                             "line 1: invalid escape sequence"},
    {"{\"drives\":\"\xFF\"}",                          "line 1: invalid code sequence"},
    {R"([])",                                          "no error"},
    {R"([1])",                                         "an object was expected, not a list"},
    {R"("drives")",                                    "an object was expected, not 'drives'"},
    {R"({"drive":[]})",                                "drive: unknown key"},
    {R"({"":[]})",                                     "an object was expected, not a list"},
    {R"({"drives":[],"drives":[]})",                   "drives: the key was expected only once"},
    {R"({"drives":{"a":1}})",                          "drives: a list was expected, not an object"},
    {R"({"drives":{}})",                               "drives: a list was expected"},
    {R"({"timeFactor":1,"drives" : { }})",             "drives: a list was expected"},
    {R"({"drives":""})",                               "drives: a list was expected"},
    {R"({"drives" : [ ],"timeFactor":1})",             "no error"},
    {R"({"timeFactor":1})",                            "no error"},
    {R"({"drives":7})",                                "drives: a list was expected, not 7"},
    {R"({"drives":[7]})",                              "drives[0]: an object was expected, not 7"},
    {R"({"timeFactor":0})",                            "timeFactor: a number from 1 to 10000 was expected, not 0"},
    {R"({"timeFactor":1.5})",                          "timeFactor: a number from 1 to 10000 was expected, not 1.5"},
    {R"({"timeFactor":10001})",                        "timeFactor: a number from 1 to 10000 was expected, not 10001"},
    {R"({"timeFactor":[1]})",                          "timeFactor: a number from 1 to 10000 was expected, not a list"},
    {R"({"latestTime":-1})",                           "latestTime: a number from 0 to 90000000000000000 was expected, not -1"},
    {R"({"latestTime":90000000000000001})",            "latestTime: a number from 0 to 90000000000000000 was expected, not 90000000000000001"},
    {R"({"drives":[{}]})",                             "drives[0]: the key kind was expected"},
    {R"({"drives":[{"kind":"SAS"}]})",                 "drives[0].kind: one of NVMe, SATA was expected, not 'SAS'"},
    {R"({"drives":[{"kind":"S\"A\\S"}]})",              "drives[0].kind: one of NVMe, SATA was expected, not 'S.A.S'"},
    {R"({"drives":[{"kind":"SATA"}]})",                "drives[0]: a devicePath such as /dev/nvme0 was expected"},
    {R"({"drives":[{"kind":"SATA","devicePath":"sda"}]})", "drives[0]: a devicePath such as /dev/nvme0 was expected"},
    {R"({"drives":[{"kind":"SATA","devicePath":"/a"},{"kind":"NVMe","devicePath":"/a"}]})",
                                                       "drives[1]: another device path than that of drives[0] was expected"},
    {R"({"drives":[{"kind":"SATA","devicePath":"/a","serialNumber":"7"},{"kind":"NVMe","devicePath":"/b"},{"kind":"NVMe","devicePath":"/c","serialNumber":" 7 "}]})",
                                                       "drives[2]: another serial number than that of drives[0] was expected"},
};

constexpr WrongText WRONG_NVME_DRIVES[] = {
    {R"("model":"N\u00F6rvo")",                        "drives[0].model: a text of at most 40 printable ASCII characters was expected, not 'N..rvo'"},
    {R"("serialNumber":"123456789012345678901")",      "drives[0].serialNumber: a text of at most 20 printable ASCII characters was expected, not 123456789012345678901"},
    {R"("capacity":1048575)",                          "drives[0].capacity: a number from 1048576 to 72057594037927936 was expected, not 1048575"},
    {R"("capacity":1048577)",                          "drives[0]: a capacity of whole blocks of 512 bytes was expected"},
    {R"("lost":1)",                                    "drives[0].lost: true or false was expected, not 1"},
    {R"("smartAttributes":{})",                        "drives[0].smartAttributes: unknown key"},
    {R"("smartHealthLog":{"AvailableSpare":"lots"})",  "drives[0].smartHealthLog.AvailableSpare: a number from 0 to 255 was expected, not 'lots'"},
    {R"("smartHealthLog":{"AvailableSpare":256})",     "drives[0].smartHealthLog.AvailableSpare: a number from 0 to 255 was expected, not 256"},
    {R"("smartHealthLog":{"AvailableSpare":"0x"})",    "drives[0].smartHealthLog.AvailableSpare: a number from 0 to 255 was expected, not 0x"},
    {R"("smartHealthLog":{"AvailableSpare":null})",    "drives[0].smartHealthLog.AvailableSpare: a number from 0 to 255 was expected, not 'null'"},
    {R"("smartHealthLog":{"PowerCycles":"0x1000000000000000000000000000000000000000"})",
                                                       "drives[0].smartHealthLog.PowerCycles: a number from 0 to 340282366920938463463374607431768211455 was expected, not 0x10000000000000000000000000000000000000..."},
    {R"("smartHealthLog":{"Spare":1})",                "drives[0].smartHealthLog.Spare: unknown key"},
    {R"("smartHealthLog":{"size":513})",               "drives[0].smartHealthLog.size: the size 512 was expected"},
    {R"("smartHealthLog":{"otherBytes":[{"offset":511,"bytes":"0102"}]})", "drives[0].smartHealthLog.otherBytes[0].bytes: text of at most 1 pairs of hexadecimal digits was expected, not 0102"},
    {R"("smartHealthLog":{"otherBytes":[{"offset":513,"bytes":""}]})", "drives[0].smartHealthLog.otherBytes[0].offset: a number from 0 to 512 was expected, not 513"},
    {R"("smartHealthLog":{"otherBytes":[{"offset":1}]})", "drives[0].smartHealthLog.otherBytes[0]: an offset and bytes were expected"},
    {R"("smartHealthLog":{"otherBytes":[{"offset":1,"bytes":"1g"}]})", "drives[0].smartHealthLog.otherBytes[0].bytes: text of at most 511 pairs of hexadecimal digits was expected, not 1g"},
    {R"("identifyController":{"SN":"123456789012345678901"})", "drives[0].identifyController.SN: a text of at most 20 printable ASCII characters was expected, not 123456789012345678901"},
    {R"("identifyController":{"FGUID":"0"})",          "drives[0].identifyController.FGUID: text of at most 16 pairs of hexadecimal digits was expected, not 0"},
    {R"("identifyController":{"powerStates":[{"MP":65536}]})", "drives[0].identifyController.powerStates[0].MP: a number from 0 to 65535 was expected, not 65536"},
    {R"("identifyController":{"powerStates":[{"otherBytes":[{"offset":33,"bytes":""}]}]})",
                                                       "drives[0].identifyController.powerStates[0].otherBytes[0].offset: a number from 0 to 32 was expected, not 33"},
    {R"("identifyController":{"CNTLID":1})",           "drives[0]: a CNTLID that is one of the controllers was expected"},
    {R"("identifyController":{"NPSS":32})",            "drives[0]: an NPSS from 0 to 31 was expected"},
    {R"("identifyController":{"ELPE":0},"errorLog":[{},{}])", "drives[0]: an errorLog of at most 1 entries, as ELPE says, was expected"},
    {R"("identifyController":{"NN":0})",               "drives[0]: an NN of at least 1 was expected"},
    {R"("commonNamespace":{"NLBAF":16})",              "drives[0]: an NLBAF from 0 to 15 of commonNamespace was expected"},
    {R"("commonNamespace":{"lbaFormats":[{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{}]})", "drives[0].commonNamespace.lbaFormats: at most 16 entries were expected"},
    {R"("namespaces":{"1":{"identify":{"FLBAS":2}}})", "drives[0]: an LBA format up to 1 of namespace 1 was expected"},
    {R"("namespaces":{"0":{}})",                       "drives[0].namespaces.0: a number from 1 to 4294967293 was expected as the key"},
    {R"("namespaces":{"1":{},"0x1":{}})",              "drives[0].namespaces: the key 1 was expected only once"},
    {R"("namespaces":{"1":{"controllers":[1]}})",      "drives[0]: only controllers of the drive for namespace 1 was expected"},
    {R"("namespaces":{"1":{"capacity":1600321314817}})", "drives[0].namespaces.1.capacity: a number from 0 to 1600321314816 was expected, not 1600321314817"},
    {R"("namespaces":{"1":{"identify":{"NSZE":4000000000,"NCAP":4000000000}}})", "drives[0].namespaces.1: at most 1600321314816 bytes were expected"},
    {R"("activeSlot":0)",                              "drives[0].activeSlot: a number from 1 to 7 was expected, not 0"},
    {R"("activeSlot":8)",                              "drives[0].activeSlot: a number from 1 to 7 was expected, not 8"},
    {R"("nextSlot":8)",                                "drives[0].nextSlot: a number from 0 to 7 was expected, not 8"},
    {R"("firmwareRevisions":["123456789"])",           "drives[0].firmwareRevisions[0]: a text of at most 8 printable ASCII characters was expected, not 123456789"},
    {R"("firmwareRevisions":["","","","","","","",""])", "drives[0].firmwareRevisions: at most 7 entries were expected"},
    {R"("firmwareActivation":"never")",                "drives[0].firmwareActivation: one of anyReset, nvmSubsystemReset, conventionalReset was expected, not 'never'"},
    {R"("features":{"256":{}})",                       "drives[0].features.256: a number from 0 to 255 was expected as the key"},
    {R"("features":{"5":{"defaults":{"1":1}}})",       "drives[0]: a default of part 0 of feature 5 was expected"},
    {R"("features":{"5":{"default":1}})",              "drives[0].features.5.default: unknown key"},
    {R"("vendorLogs":{"0xBF":{}})",                    "drives[0].vendorLogs.0xBF: a number from 192 to 255 was expected as the key"},
    {R"("vendorLogs":{"0xC0":{"size":511}})",          "drives[0].vendorLogs.0xC0.size: a number from 512 to 16777216 was expected, not 511"},
    {R"("vendorLogs":{"0xC0":{"size":513}})",          "drives[0].vendorLogs.0xC0.size: a multiple of 4 was expected"},
    {R"("vendorLogs":{"0xC0":{"size":4294967295}})",   "drives[0].vendorLogs.0xC0.size: a number from 512 to 16777216 was expected, not 4294967295"},
    {R"("selfTestResults":[{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{},{}])", "drives[0].selfTestResults: at most 20 entries were expected"},
    {R"("runningSelfTest":{"code":3})",                "drives[0].runningSelfTest.code: a number from 1 to 2 was expected, not 3"},
    {R"("faults":[{}])",                               "drives[0].faults[0]: the key fault was expected"},
    {R"("faults":[{"fault":"refuse"}])",               "drives[0].faults[0]: the key status was expected"},
    {R"("faults":[{"fault":"refuse","status":0}])",    "drives[0].faults[0]: a status of a command that fails was expected"},
    {R"("faults":[{"fault":"refuse","status":2048}])", "drives[0].faults[0].status: a number from 0 to 2047 was expected, not 2048"},
    {R"("faults":[{"fault":"refuse","status":1,"error":4}])", "drives[0].faults[0]: the key error means nothing to such a fault"},
    {R"("faults":[{"fault":"lose","bytes":1}])",       "drives[0].faults[0]: the key bytes means nothing to such a fault"},
    {R"("faults":[{"fault":"delay"}])",                "drives[0].faults[0]: the key milliseconds was expected"},
    {R"("faults":[{"fault":"lose","command":"IDENTIFY DEVICE"}])", "drives[0].faults[0].command: a command of NVMe, such as Format NVM, was expected, not 'IDENTIFY DEVICE'"},
    {R"("raid":{"type":65536})",                       "drives[0].raid.type: a number from 0 to 65535 was expected, not 65536"},
    {R"("partitions":[{"name":"a"}])",                 "drives[0].partitions[0].name: unknown key"},
};

constexpr WrongText WRONG_SATA_DRIVES[] = {
    {R"("errorLog":[{"commands":[{"otherBytes":[{"offset":0,"bytes":"00000000000000000000000000000000000000"}]}]}])",
                                                       "drives[0].errorLog[0].commands[0].otherBytes[0].bytes: text of at most 18 pairs of hexadecimal digits was expected, not 00000000000000000000000000000000000000"},
    {R"("errorLog":[{"error":{"Error":256}}])",        "drives[0].errorLog[0].error.Error: a number from 0 to 255 was expected, not 256"},
    {R"("identifyDevice":{"words":{"256":1}})",        "drives[0].identifyDevice.words.256: a number from 0 to 255 was expected as the key"},
    {R"("identifyDevice":{"words":{"82":65536}})",     "drives[0].identifyDevice.words.82: a number from 0 to 65535 was expected, not 65536"},
    {R"("smartData":{"words":{}})",                    "drives[0].smartData.words: unknown key"},
    {R"("nativeMaxAddress":1)",                        "drives[0]: a nativeMaxAddress of at least UserAddressableSectors - 1 was expected"},
    {R"("nativeMaxAddress":281474976710656)",          "drives[0].nativeMaxAddress: a number from 0 to 281474976710655 was expected, not 281474976710656"},
    {R"("maxAddressAtPowerOn":937703088)",             "drives[0]: a maxAddressAtPowerOn up to nativeMaxAddress was expected"},
    {R"("smartAttributes":{"0":{}})",                  "drives[0].smartAttributes.0: a number from 1 to 255 was expected as the key"},
    {R"("smartAttributes":{"5":{"raw":281474976710656}})", "drives[0].smartAttributes.5.raw: a number from 0 to 281474976710655 was expected, not 281474976710656"},
    {R"("smartAttributes":{"5":{"value":1}})",         "drives[0].smartAttributes.5.value: unknown key"},
    {R"("smartAttributes":{"30":{},"31":{},"32":{},"33":{},"34":{}})", "drives[0].smartAttributes.34: at most 30 attributes were expected"},
    {R"("temperatureHistory":[128])",                  "drives[0].temperatureHistory[0]: a number from -128 to 127 was expected, not 128"},
    {R"("otherLogs":{"0xA0":{"a":1}})",                "drives[0].otherLogs.0xA0: a list was expected, not an object"},
    {R"("otherLogs":{"0xA0":[{"size":1024}]})",        "drives[0].otherLogs.0xA0[0].size: the size 512 was expected"},
    {R"("security":{"attemptsLeft":6})",               "drives[0].security.attemptsLeft: a number from 0 to 5 was expected, not 6"},
    {R"("security":{"userPassword":"abc"})",           "drives[0].security.userPassword: an object was expected, not 'abc'"},
    {R"("recoveryTimers":[1,2,3])",                    "drives[0].recoveryTimers: at most 2 entries were expected"},
    {R"("faults":[{"fault":"refuse","error":0}])",     "drives[0].faults[0]: a status of a command that fails was expected"},
    {R"("faults":[{"fault":"refuse","status":1}])",    "drives[0].faults[0]: the key status means nothing to such a fault"},
    {R"("faults":[{"fault":"lose","command":"Format NVM"}])", "drives[0].faults[0].command: a command of ATA, such as IDENTIFY DEVICE, was expected, not 'Format NVM'"},
    {R"("namespaces":{})",                             "drives[0].namespaces: unknown key"},
};

// clang-format on

TEST(FleetText, TellsWhatIsWrongWithAFleet) {
    for (const auto& [text, message] : WRONG_FLEETS) {
        SCOPED_TRACE(text);
        EXPECT_EQ(errorOf(text, Unmentioned::TYPICAL), message);
    }
}

TEST(FleetText, TellsWhatIsWrongWithADrive) {
    for (const auto& [members, message] : WRONG_NVME_DRIVES) {
        SCOPED_TRACE(members);
        EXPECT_EQ(errorOf(driveWith("NVMe", members), Unmentioned::TYPICAL), message);
    }
    for (const auto& [members, message] : WRONG_SATA_DRIVES) {
        SCOPED_TRACE(members);
        EXPECT_EQ(errorOf(driveWith("SATA", members), Unmentioned::TYPICAL), message);
    }
}

TEST(FleetText, KnowsTheKeysOfDescriptionsOnlyInDescriptions) {
    for (const char* key : {"model", "serialNumber", "firmware", "bootloader", "capacity"}) {
        const std::string member = std::string("\"") + key + "\":\"1048576\"";
        const std::string message = std::string("drives[0].") + key + ": unknown key";
        EXPECT_EQ(errorOf(driveWith("NVMe", member.c_str()), Unmentioned::BLANK), message);
        EXPECT_EQ(errorOf(driveWith("SATA", member.c_str()), Unmentioned::BLANK), message);
    }
    EXPECT_EQ(errorOf(driveWith("SATA", R"("smartAttributes":{})"), Unmentioned::BLANK),
              "drives[0].smartAttributes: unknown key");
    EXPECT_EQ(
        errorOf(driveWith("NVMe", R"("namespaces":{"1":{"capacity":0}})"), Unmentioned::BLANK),
        "drives[0].namespaces.1.capacity: unknown key");
}

TEST(FleetText, RefusesTextThatIsTooMuch) {
    const auto repeated = [](const char* text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i)
            all += text;
        return all;
    };
    for (const auto unmentioned : {Unmentioned::BLANK, Unmentioned::TYPICAL}) {
        EXPECT_EQ(errorOf(repeated("[", 1 << 20), unmentioned),
                  "at most 64 levels of objects and lists were expected");
        EXPECT_EQ(errorOf(repeated("{\"a\":", 65), unmentioned),
                  "at most 64 levels of objects and lists were expected");
        EXPECT_EQ(errorOf(repeated("[", 64) + repeated("]", 64), unmentioned),
                  "an object was expected, not a list");
        EXPECT_EQ(errorOf("{\"drives\":[" + repeated("{},", 4096) + "{}]}", unmentioned),
                  "drives: at most 4096 entries were expected");
    }
    EXPECT_EQ(
        errorOf(R"({"a":"[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[\"["})",
                Unmentioned::BLANK),
        "a: unknown key");
}

TEST(FleetText, RefusesDrivesThatAskForTooMuchMemory) {
    std::string logs;
    for (int id = 0xC0; id < 0xD0; ++id)
        logs += (logs.empty() ? "\"" : ",\"") + std::to_string(id) + R"(":{"size":16777216})";
    const std::string drive = driveWith("NVMe", ("\"vendorLogs\":{" + logs + "}").c_str());
    EXPECT_EQ(errorOf(drive, Unmentioned::BLANK),
              "drives[0].vendorLogs.207: drives of at most 256 MiB together were expected");
}

}  // namespace
}  // namespace orvel::simulator
