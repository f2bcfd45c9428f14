#include "interfaces/orveli/jobs/SMARTJob.h"

#include "tests/interfaces/orveli/access/ScriptedDrive.h"
#include "tests/interfaces/orveli/access/WrittenStructures.h"
#include "tests/interfaces/orveli/jobs/AnswerLines.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

namespace attributes = orvel::features::device_attributes;

constexpr std::uint8_t SMART_COMMAND = 0xB0;
constexpr std::uint16_t READ_DATA = 0xD0;
constexpr std::uint16_t READ_THRESHOLDS = 0xD1;
constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr const char* ALL = R"(<Object name="SMART" type="GetProperties"/>)";

void setFlag(ScriptedDrive& drive, core::Attribute descriptor, bool value) {
    descriptor.setValue(value);
    drive->setAttribute(descriptor);
}

core::Payload smartData() {
    return checkedStructure({{2, {0x05, 0x33, 0x00, 10, 9, 0x34, 0x12, 0, 0, 0, 0x01}},
                             {14, {0x09, 0x32, 0x00, 10, 10, 0x00, 0x01}},
                             {38, {0xAA, 0x13, 0x00, 11, 10, 0}},
                             {50, {0xFE, 0x00, 0x00, 1, 1, 0}}});
}

core::Payload thresholds() {
    return checkedStructure({{2, {0x05, 10}}, {14, {0x09, 10}}, {26, {0xAA, 10}}});
}

ScriptedDrive sataDrive() {
    ScriptedDrive drive("ATA", "NSX3110C0005G960");
    drive.onAta(SMART_COMMAND, READ_DATA, 0, {{.data = smartData()}});
    drive.onAta(SMART_COMMAND, READ_THRESHOLDS, 0, {{.data = thresholds()}});
    return drive;
}

std::string run(ScriptedDrive& drive, const std::string& request) {
    SMARTJob job;
    return runJob(job, request, {drive.getDevice()}).output;
}

std::string selected(ScriptedDrive& drive, const std::string& id) {
    return answerLines(run(drive, R"(<Object name="SMART" type="GetProperties"><Property name="ID")"
                                  " value=\"" +
                                      id +
                                      R"("/><Object name="Properties"><Property )"
                                      R"(name="ID"/></Object></Object>)"));
}

TEST(SMARTJob, ShowsEachAttributeOfASataDrive) {
    ScriptedDrive drive = sataDrive();
    EXPECT_EQ(answerLines(run(drive, ALL)), "[SMART Attributes NSX3110C0005G960]\n"
                                            " [05 ]\n"
                                            "  ID=05\n"
                                            "  Description=Reallocated Sector Count\n"
                                            "  Normalized=10\n"
                                            "  Worst=9\n"
                                            "  Threshold=10\n"
                                            "  Status=0x0033\n"
                                            "  Action=Fail\n"
                                            "  Raw=1099511632436\n"
                                            " [09 ]\n"
                                            "  ID=09\n"
                                            "  Description=Power-On Hours\n"
                                            "  Normalized=10\n"
                                            "  Worst=10\n"
                                            "  Threshold=10\n"
                                            "  Status=0x0032\n"
                                            "  Action=Pass\n"
                                            "  Raw=256\n"
                                            " [AA ]\n"
                                            "  ID=AA\n"
                                            "  Description=Available Reserved Space\n"
                                            "  Normalized=11\n"
                                            "  Worst=10\n"
                                            "  Threshold=10\n"
                                            "  Status=0x0013\n"
                                            "  Action=Pass\n"
                                            "  Raw=0\n"
                                            " [FE ]\n"
                                            "  ID=FE\n"
                                            "  Description=Unknown Attribute\n"
                                            "  Normalized=1\n"
                                            "  Worst=1\n"
                                            "  Threshold=0\n"
                                            "  Status=0x0000\n"
                                            "  Action=Pass\n"
                                            "  Raw=0\n");
}

TEST(SMARTJob, ShowsOnlyWhatTheRequestNames) {
    ScriptedDrive drive = sataDrive();
    EXPECT_EQ(run(drive, R"(<Object name="SMART" type="GetProperties"><Property name="ID" )"
                         R"(value="AA"/><Object name="Properties"><Property name="raw"/>)"
                         R"(<Property name="ID"/><Property name="Colour"/></Object></Object>)"),
              R"(<Object><Object key="NSX3110C0005G960" name="SMART Attributes"><Object name="AA">)"
              R"(<Property name="Raw" value="0"/><Property name="ID" value="AA"/><Property )"
              R"(name="Colour" value="Property not found"/></Object></Object></Object>)");
}

TEST(SMARTJob, SelectsOneAttributeByItsIdentifier) {
    for (const char* id : {"AA", "aa", "0xAA", "0Xaa", "170", "0AA"}) {
        SCOPED_TRACE(id);
        ScriptedDrive drive = sataDrive();
        EXPECT_EQ(selected(drive, id), "[SMART Attributes NSX3110C0005G960]\n [AA ]\n  ID=AA\n");
    }
    for (const char* id : {"5", "05", "0x5", "005"}) {
        SCOPED_TRACE(id);
        ScriptedDrive drive = sataDrive();
        EXPECT_EQ(selected(drive, id), "[SMART Attributes NSX3110C0005G960]\n [05 ]\n  ID=05\n");
    }
}

TEST(SMARTJob, RefusesAnIdentifierThatTheDriveDoesNotHave) {
    for (const char* id :
         {"01", "00", "G5", "x5", "0x", "0x0x5", "1AA", "426", "-5", "00005", "5 "}) {
        SCOPED_TRACE(id);
        ScriptedDrive drive = sataDrive();
        EXPECT_EQ(selected(drive, id), "[SMART Attributes NSX3110C0005G960]\n"
                                       " [ status]\n"
                                       "  Category=10\n"
                                       "  Code=36\n"
                                       "  Message=Invalid property specified. There is no SMART "
                                       "attribute " +
                                           std::string(id) + ".\n");
    }
}

TEST(SMARTJob, RepeatsNoQuotationMarksThatAMessageIsPutInto) {
    ScriptedDrive drive = sataDrive();
    EXPECT_NE(selected(drive, "x&quot;y").find("There is no SMART attribute x'y.\n"),
              std::string::npos);
}

TEST(SMARTJob, AnEmptyIdentifierSelectsAll) {
    ScriptedDrive drive = sataDrive();
    EXPECT_EQ(selected(drive, ""), "[SMART Attributes NSX3110C0005G960]\n [05 ]\n  ID=05\n"
                                   " [09 ]\n  ID=09\n [AA ]\n  ID=AA\n [FE ]\n  ID=FE\n");
}

std::string statusLines(const std::string& code, const std::string& message) {
    return "[SMART Attributes NSX3110C0005G960]\n [ status]\n  Category=" +
           std::string(code == "10" || code == "49" ? "0" : "10") + "\n  Code=" + code +
           "\n  Message=" + message + "\n";
}

TEST(SMARTJob, SaysSoIfSmartIsDisabled) {
    ScriptedDrive drive = sataDrive();
    setFlag(drive, attributes::SMARTEnabled(), false);
    EXPECT_EQ(answerLines(run(drive, ALL)), statusLines("60", "SMART is not enabled."));
    EXPECT_TRUE(drive.sentAta().empty());
}

TEST(SMARTJob, ADriveThatRefusesItsThresholdsHasNone) {
    ScriptedDrive drive = sataDrive();
    setFlag(drive, attributes::SMARTEnabled(), true);
    drive.onAta(SMART_COMMAND, READ_THRESHOLDS, 0, {});
    const std::string answer = answerLines(run(drive, ALL));
    EXPECT_NE(answer.find("Threshold=0\n  Status=0x0033\n  Action=Pass"), std::string::npos);
}

TEST(SMARTJob, ReportsWhatGoesWrong) {
    ScriptedDrive refusing = sataDrive();
    refusing.onAta(SMART_COMMAND, READ_DATA, 0, {});
    EXPECT_EQ(answerLines(run(refusing, ALL)),
              statusLines("10", "ATA command reported a problem. SMART READ DATA: error register "
                                "0x04."));
    ScriptedDrive brief = sataDrive();
    brief.onAta(SMART_COMMAND, READ_DATA, 0, {{.data = core::Payload(10)}});
    EXPECT_EQ(answerLines(run(brief, ALL)),
              statusLines("49", "The IO command passed, but did not return the expected amount of "
                                "data."));
    for (const std::uint16_t command : {READ_DATA, READ_THRESHOLDS}) {
        ScriptedDrive damaged = sataDrive();
        damaged.onAta(SMART_COMMAND, command, 0, {{.data = structure(512, {{2, {5}}})}});
        EXPECT_EQ(answerLines(run(damaged, ALL)),
                  statusLines("33", "Failed to retrieve data from selected device."));
    }
}

core::Payload smartHealth(int criticalWarning) {
    return structure(512, {{0, {criticalWarning, 0x3E, 0x01, 4, 10, 30}},
                           {32, {0x02, 0x01}},   // read
                           {48, {0x04, 0x03}},   // written
                           {112, {7}},           // power cycles
                           {128, {0x10, 0x27}},  // hours
                           {144, {3}},           // unsafe shutdowns
                           {160, {0, 0, 0, 0, 0, 0, 0, 0, 1}}});
}

ScriptedDrive nvmeDrive() {
    ScriptedDrive drive("NVMe Admin", "NVX4510A0003H800");
    setFlag(drive, attributes::Norvo(), true);
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = smartHealth(0x01)}});
    drive.onNvme(GET_LOG_PAGE, 0xCA,
                 {{.data = structure(512, {{0, {11}},
                                           {8, {12}},
                                           {20, {13}},
                                           {24, {14}},
                                           {32, {15}},
                                           {40, {16}},
                                           {48, {17}},
                                           {56, {18}},
                                           {64, {19}},
                                           {72, {20}}})}});
    return drive;
}

std::string column(ScriptedDrive& drive, const std::string& name) {
    const std::string request =
        R"(<Object name="SMART" type="GetProperties"><Object name="Properties"><Property name=")" +
        name + R"("/></Object></Object>)";
    return answerLines(run(drive, request));
}

TEST(SMARTJob, ShowsWhatAnNvmeDrivesLogsTellInTheSameForm) {
    ScriptedDrive drive = nvmeDrive();
    EXPECT_EQ(column(drive, "Raw"), "[SMART Attributes NVX4510A0003H800]\n"
                                    " [09 ]\n  Raw=10000\n"
                                    " [0C ]\n  Raw=7\n"
                                    " [AA ]\n  Raw=4\n"
                                    " [AB ]\n  Raw=11\n"
                                    " [AC ]\n  Raw=12\n"
                                    " [AD ]\n  Raw=13\n"
                                    " [B8 ]\n  Raw=14\n"
                                    " [BB ]\n  Raw=18446744073709551616\n"
                                    " [C0 ]\n  Raw=3\n"
                                    " [C2 ]\n  Raw=45\n"
                                    " [C7 ]\n  Raw=15\n"
                                    " [E2 ]\n  Raw=16\n"
                                    " [E3 ]\n  Raw=17\n"
                                    " [E4 ]\n  Raw=18\n"
                                    " [E9 ]\n  Raw=30\n"
                                    " [EA ]\n  Raw=19\n"
                                    " [F1 ]\n  Raw=11\n"
                                    " [F2 ]\n  Raw=3\n"
                                    " [F9 ]\n  Raw=20\n");
    EXPECT_EQ(drive.sentNvme().size(), 2U) << "each log page is read once";
}

TEST(SMARTJob, JudgesTheSpareOfAnNvmeDrive) {
    ScriptedDrive drive = nvmeDrive();
    const std::string request = R"(<Object name="SMART" type="GetProperties"><Property name="ID" )"
                                R"(value="AA"/></Object>)";
    EXPECT_EQ(answerLines(run(drive, request)), "[SMART Attributes NVX4510A0003H800]\n"
                                                " [AA ]\n"
                                                "  ID=AA\n"
                                                "  Description=Available Reserved Space\n"
                                                "  Normalized=4\n"
                                                "  Worst=4\n"
                                                "  Threshold=10\n"
                                                "  Status=0x0033\n"
                                                "  Action=Fail\n"
                                                "  Raw=4\n");
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = smartHealth(0x02)}});
    EXPECT_NE(answerLines(run(drive, request)).find("Action=Fail"), std::string::npos)
        << "the spare is below its threshold, whatever the drive warns of";
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {{0, {0x02}}, {3, {11, 10}}})}});
    EXPECT_NE(answerLines(run(drive, request)).find("Action=Pass"), std::string::npos);
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {{0, {0x01}}, {3, {11, 10}}})}});
    EXPECT_NE(answerLines(run(drive, request)).find("Action=Fail"), std::string::npos);
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {})}});
    EXPECT_NE(answerLines(run(drive, request)).find("Action=Pass"), std::string::npos);
}

TEST(SMARTJob, CountsTheWearOfAnNvmeDriveDownwards) {
    ScriptedDrive drive = nvmeDrive();
    const std::string request =
        R"(<Object name="SMART" type="GetProperties"><Property name="ID" value="E9"/><Object )"
        R"(name="Properties"><Property name="Normalized"/><Property name="Status"/></Object>)"
        R"(</Object>)";
    EXPECT_EQ(answerLines(run(drive, request)), "[SMART Attributes NVX4510A0003H800]\n [E9 ]\n"
                                                "  Normalized=70\n  Status=0x0032\n");
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {{5, {255}}})}});
    EXPECT_EQ(answerLines(run(drive, request)), "[SMART Attributes NVX4510A0003H800]\n [E9 ]\n"
                                                "  Normalized=0\n  Status=0x0032\n");
}

TEST(SMARTJob, CountsTheDataOfAnNvmeDriveAsThatOfASataDrive) {
    struct Row {
        core::Payload health;
        const char* units;
    };

    const Row rows[] = {
        {structure(512, {{32, {0x41}}}), "0"},
        {structure(512, {{32, {0x42}}}), "1"},
        {structure(512, {{32, {0x76, 0x5E, 0xDF, 0x01}}}), "479368"},
        {structure(512, {{47, {0x80}}}), "2596148429267413814265248164610048000"},
    };
    for (const Row& row : rows) {
        ScriptedDrive drive = nvmeDrive();
        drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = row.health}});
        EXPECT_NE(column(drive, "Raw").find(std::string(" [F2 ]\n  Raw=") + row.units + "\n"),
                  std::string::npos)
            << column(drive, "Raw");
    }
}

TEST(SMARTJob, LeavesOutATemperatureThatAnNvmeDriveDoesNotTell) {
    ScriptedDrive drive = nvmeDrive();
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {})}});
    EXPECT_EQ(column(drive, "Raw").find("C2"), std::string::npos);
    drive.onNvme(GET_LOG_PAGE, 0x02, {{.data = structure(512, {{1, {1, 0}}})}});
    EXPECT_NE(column(drive, "Raw").find(" [C2 ]\n  Raw=-272\n"), std::string::npos);
}

TEST(SMARTJob, ShowsTheStandardsPartOfAnotherMakersDrive) {
    ScriptedDrive drive = nvmeDrive();
    setFlag(drive, attributes::Norvo(), false);
    EXPECT_EQ(column(drive, "ID"), "[SMART Attributes NVX4510A0003H800]\n"
                                   " [09 ]\n  ID=09\n [0C ]\n  ID=0C\n [AA ]\n  ID=AA\n"
                                   " [BB ]\n  ID=BB\n [C0 ]\n  ID=C0\n [C2 ]\n  ID=C2\n"
                                   " [E9 ]\n  ID=E9\n [F1 ]\n  ID=F1\n [F2 ]\n  ID=F2\n");
    EXPECT_EQ(drive.sentNvme().size(), 1U);
}

TEST(SMARTJob, ANewCloneRunsByItself) {
    ScriptedDrive drive = sataDrive();
    const auto clone = SMARTJob().clone();
    EXPECT_EQ(runJob(*clone, ALL, {drive.getDevice()}).status, core::Status());
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
