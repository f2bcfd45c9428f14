// The jobs that set properties of SATA drives.
#include "interfaces/orveli/jobs/DipmJob.h"
#include "interfaces/orveli/jobs/EnduranceAnalyzerJob.h"
#include "interfaces/orveli/jobs/ErrorRecoveryControlJob.h"
#include "interfaces/orveli/jobs/PhyConfigJob.h"
#include "interfaces/orveli/jobs/PhySpeedJob.h"
#include "interfaces/orveli/jobs/PowerGovernorJob.h"
#include "interfaces/orveli/jobs/SctFeatureControlJob.h"
#include "interfaces/orveli/jobs/SpreadSpectrumClockingJob.h"
#include "interfaces/orveli/jobs/WriteCacheJob.h"
#include "tests/interfaces/orveli/jobs/SettingSupport.h"

#include <gtest/gtest.h>

#include <map>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr std::uint8_t SMART = 0xB0;
constexpr std::uint16_t SMART_READ_LOG = 0xD5;
constexpr std::uint16_t SMART_WRITE_LOG = 0xD6;
constexpr std::uint8_t SCT = 0xE0;
constexpr std::uint8_t IDENTIFY_DEVICE = 0xEC;
constexpr std::uint8_t SET_FEATURES = 0xEF;

/// A drive's answer to an SCT command that returns a value.
Reply valued(std::uint16_t value) {
    Reply reply;
    reply.returned.count = value & 0xFF;
    reply.returned.lba = value >> 8U;
    return reply;
}

Reply refused() {
    Reply reply;
    reply.returned.status = 0x51;
    reply.returned.error = 0x04;
    return reply;
}

Reply unreachable() {
    Reply reply;
    reply.pathStatus = core::Status(0, 50, "No way.");
    return reply;
}

/// IDENTIFY DEVICE data with these words, and with what makes all of them valid, of a drive that
/// has SCT unless they say otherwise.
Reply identified(const std::map<std::uint32_t, std::uint16_t>& own) {
    Reply reply;
    reply.data = core::Payload(512);
    auto words = own;
    words.insert({{76, 0x0100}, {83, 0x4000}, {85, 0x0001}, {87, 0x4000}, {206, 0x003D}});
    for (const auto& [word, value] : words) {
        *reply.data[word * 2] = static_cast<std::uint8_t>(value);
        *reply.data[word * 2 + 1] = static_cast<std::uint8_t>(value >> 8U);
    }
    return reply;
}

class SataSettings : public testing::Test {
protected:
    SataSettings() { drive.setNorvo(true); }

    void onSct(std::deque<Reply> replies) {
        drive.onAta(SMART, SMART_WRITE_LOG, SCT, std::move(replies));
    }

    void onIdentify(std::deque<Reply> replies) {
        drive.onAta(IDENTIFY_DEVICE, 0, 0, std::move(replies));
    }

    /// What was sent but IDENTIFY DEVICE.
    std::vector<SentAta> sentCommands() {
        std::vector<SentAta> sent = drive.sentAta();
        std::erase_if(sent,
                      [](const SentAta& one) { return one.taskFile.command == IDENTIFY_DEVICE; });
        return sent;
    }

    /// The data of an SCT command, up to what its standard defines. Checks the command around it.
    std::string sctData(std::size_t index) {
        const auto commands = sentCommands();
        if (index >= commands.size()) return "not sent";
        const SentAta& sent = commands[index];
        const protocols::ata::TaskFile expected{0xD6, 1, 0xC24FE0, 0, 0xB0, false};
        EXPECT_EQ(sent.taskFile, expected);
        EXPECT_EQ(sent.input.size(), 512U);
        return startOf(sent.input, 10);
    }

    std::size_t sentCount() { return sentCommands().size(); }

    ScriptedDrive drive{"ATA"};
    ScriptedDrive nvmeDrive{"NVMe Admin"};
};

// PhyConfig.

TEST_F(SataSettings, PhyConfigTakesFourConfigurationsWithAPowerCycle) {
    onSct({Reply{}});
    for (const char* value : {"0", "1", "2", "3"})
        EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint16", value}), DONE_AFTER_POWER_CYCLE);
    ASSERT_EQ(sentCount(), 4U);
    EXPECT_EQ(sctData(0), "0400010003D000000100");
    EXPECT_EQ(sctData(3), "0400010003D003000100");
}

TEST_F(SataSettings, PhyConfigRefusesWhatIsNoConfiguration) {
    constexpr const char* REFUSAL =
        "10/89 Invalid PHY Config value given. Supported values are: 0 1 2 and 3.";
    for (const char* value : {"4", "65536", "-1", "1.0", "+1", "one", "0x", "0x4", "", "1 2"}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint16", value}), REFUSAL);
    }
    EXPECT_EQ(sentCount(), 0U);
}

TEST_F(SataSettings, ANumberMayHaveBlanksAroundItOrBeHexadecimalOrCarryAnotherType) {
    onSct({Reply{}});
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "string", " 2 "}), DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint64", "0x2"}), DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "sint32", "2"}), DONE_AFTER_POWER_CYCLE);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(sctData(i), "0400010003D002000100");
}

TEST_F(SataSettings, WithoutARequestTheAttributeItselfTellsTheValue) {
    onSct({Reply{}});
    PhyConfigJob job;
    job.setDevices({drive.getDevice()});
    EXPECT_EQ(textOf(job.runSetProperty(core::Attribute("PhyConfig", std::uint16_t{1}))),
              DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(sctData(0), "0400010003D001000100");
    EXPECT_EQ(textOf(job.runSetProperty(core::Attribute("PhyConfig", std::int8_t{-1}))),
              "10/89 Invalid PHY Config value given. Supported values are: 0 1 2 and 3.");
}

TEST_F(SataSettings, PhyConfigThatTheDriveRefusesHasWordsOfItsOwn) {
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint16", "1"}),
              "10/90 Invalid PHY Config settings given.");
}

TEST_F(SataSettings, AWayThatFailsIsNoRefusal) {
    onSct({unreachable()});
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint16", "1"}), "0/50 No way.");
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"}),
              "0/50 No way.");
    onIdentify({unreachable()});
    EXPECT_EQ(set<DipmJob>(drive, {"DIPMEnabled", "boolean", "True"}), "0/50 No way.");
}

// PhySpeed.

TEST_F(SataSettings, PhySpeedIsAGenerationToTheDrive) {
    struct Row {
        const char* value;
        const char* data;
    };

    onIdentify({identified({{76, 0x000E}})});
    onSct({Reply{}});
    constexpr Row ROWS[] = {
        {"1.5", "0400010004D001000100"}, {"3", "0400010004D002000100"},
        {"3.0", "0400010004D002000100"}, {"6", "0400010004D003000100"},
        {"6.0", "0400010004D003000100"}, {" 6 ", "0400010004D003000100"},
    };
    for (const Row& row : ROWS) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", row.value}),
                  DONE_AFTER_POWER_CYCLE);
        EXPECT_EQ(sctData(sentCount() - 1), row.data);
    }
}

TEST_F(SataSettings, PhySpeedRefusesOtherSpeedsAndThoseThatTheDriveLacks) {
    constexpr const char* REFUSAL =
        "10/51 Invalid PHY speed given. Supported values are: 1.5 3.0 and 6.0.";
    for (const char* value : {"2", "1", "1.50", "12", "6.1", "fast", "", "-3"}) {
        SCOPED_TRACE(value);
        EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", value}), REFUSAL);
    }
    EXPECT_EQ(sentCount(), 0U);
    onIdentify({identified({{76, 0x0006}})});
    EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", "6"}), REFUSAL);
    EXPECT_EQ(sentCount(), 0U);
    EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", "6.0"}), REFUSAL);
    EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", "3"}), INVALID_SCT_FEATURE);
    EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", "3.0"}), INVALID_SCT_FEATURE);
}

// SpreadSpectrumClocking.

TEST_F(SataSettings, SpreadSpectrumClockingIsOnOrOff) {
    onSct({Reply{}});
    const auto setClocking = [this](const char* value) {
        return set<SpreadSpectrumClockingJob>(drive, {"SSCEnabled", "boolean", value});
    };
    EXPECT_EQ(setClocking("True"), DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(setClocking("false"), DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(setClocking("1"), DONE_AFTER_POWER_CYCLE);
    EXPECT_EQ(setClocking("0"), DONE_AFTER_POWER_CYCLE);
    ASSERT_EQ(sentCount(), 4U);
    EXPECT_EQ(sctData(0), "0400010005D001000100");
    EXPECT_EQ(sctData(1), "0400010005D000000100");
    EXPECT_EQ(sctData(2), "0400010005D001000100");
    EXPECT_EQ(sctData(3), "0400010005D000000100");
    EXPECT_EQ(setClocking("yes"),
              "10/36 Invalid property specified. SSCEnabled must be true or false.");
    EXPECT_EQ(setClocking("2"),
              "10/36 Invalid property specified. SSCEnabled must be true or false.");
    EXPECT_EQ(sentCount(), 4U);
    onSct({refused()});
    EXPECT_EQ(setClocking("true"), INVALID_SCT_FEATURE);
}

// SCTFeatureControl.

TEST_F(SataSettings, SctFeaturesAreSetToOutlastPowerCyclesAndReadBack) {
    struct Row {
        const char* property;
        const char* value;
        std::uint16_t state;
        const char* setting;
        const char* reading;
    };

    // clang-format off
    constexpr Row ROWS[] = {
    //   property                      value    state  set                     read back
        {"PhysicalSectorSize",         "512",   512,   "0400010001D000020100", "0400020001D000000000"},
        {"PhysicalSectorSize",         "4096",  4096,  "0400010001D000100100", "0400020001D000000000"},
        {"PLITestTimeInterval",        "0",     0,     "0400010000D000000100", "0400020000D000000000"},
        {"PLITestTimeInterval",        "6",     6,     "0400010000D006000100", "0400020000D000000000"},
        {"TemperatureLoggingInterval", "1",     1,     "04000100030001000100", "04000200030000000000"},
        {"TemperatureLoggingInterval", "65535", 65535, "040001000300FFFF0100", "04000200030000000000"},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.property) + "=" + row.value);
        drive.sentAta().clear();
        onSct({Reply{}, valued(row.state)});
        EXPECT_EQ(set<SctFeatureControlJob>(drive, {row.property, "uint16", row.value}), DONE);
        ASSERT_EQ(sentCount(), 2U);
        EXPECT_EQ(sctData(0), row.setting);
        EXPECT_EQ(sctData(1), row.reading);
    }
}

TEST_F(SataSettings, SctFeaturesHaveTheirRanges) {
    struct Row {
        const char* property;
        const char* value;
        const char* outcome;
    };

    // clang-format off
    constexpr const char* SECTOR_SIZE = "10/59 Invalid sector size.";
    constexpr const char* INTERVAL = "10/58 Invalid value given for PLI test time interval. Valid values are: 0-6 (inclusive).";
    constexpr const char* LOGGING = "10/36 Invalid property specified. TemperatureLoggingInterval must be 1 to 65535 minutes.";
    constexpr Row ROWS[] = {
        {"PhysicalSectorSize",         "511",   SECTOR_SIZE},
        {"PhysicalSectorSize",         "513",   SECTOR_SIZE},
        {"PhysicalSectorSize",         "520",   SECTOR_SIZE},
        {"PhysicalSectorSize",         "4095",  SECTOR_SIZE},
        {"PhysicalSectorSize",         "4097",  SECTOR_SIZE},
        {"PhysicalSectorSize",         "66048", SECTOR_SIZE},
        {"PhysicalSectorSize",         "big",   SECTOR_SIZE},
        {"PLITestTimeInterval",        "7",     INTERVAL},
        {"PLITestTimeInterval",        "-1",    INTERVAL},
        {"TemperatureLoggingInterval", "0",     LOGGING},
        {"TemperatureLoggingInterval", "65536", LOGGING},
        {"TemperatureLoggingInterval", "often", LOGGING},
        {"FeatureCode",                "1",     INVALID_PROPERTY},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.property) + "=" + row.value);
        EXPECT_EQ(set<SctFeatureControlJob>(drive, {row.property, "uint16", row.value}),
                  row.outcome);
    }
    EXPECT_EQ(sentCount(), 0U);
}

TEST_F(SataSettings, ADriveMayRefuseAnSctFeatureOrKeepItsState) {
    const PropertyText property{"PhysicalSectorSize", "uint16", "4096"};
    EXPECT_EQ(set<SctFeatureControlJob>(drive, property), INVALID_SCT_FEATURE);
    onSct({Reply{}, valued(512)});
    EXPECT_EQ(set<SctFeatureControlJob>(drive, property), VALUE_NOT_TAKEN);
    onSct({Reply{}, refused()});
    EXPECT_EQ(set<SctFeatureControlJob>(drive, property),
              "0/10 ATA command reported a problem. SMART WRITE LOG: error register 0x04.");
}

// PowerGovernor.

TEST_F(SataSettings, PowerGovernorHasThreeModes) {
    constexpr const char* REFUSAL = "10/18 Invalid power mode given. Valid modes are 0 1 and 2.";
    onSct({Reply{}, valued(0)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "0"}), DONE);
    onSct({Reply{}, valued(2)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "2"}), DONE);
    ASSERT_EQ(sentCount(), 4U);
    EXPECT_EQ(sctData(0), "0400010002D000000100");
    EXPECT_EQ(sctData(2), "0400010002D002000100");
    EXPECT_EQ(sctData(3), "0400020002D000000000");
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "3"}), REFUSAL);
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "4294967296"}), REFUSAL);
    EXPECT_EQ(sentCount(), 4U);
    onSct({refused()});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}),
              INVALID_SCT_FEATURE);
}

// ErrorRecoveryControl.

/// The least time that the drive takes, in units of 100 ms.
Reply sctStatus(std::uint16_t shortestTime) {
    Reply reply;
    reply.data = core::Payload(512);
    *reply.data[216] = static_cast<std::uint8_t>(shortestTime);
    *reply.data[217] = static_cast<std::uint8_t>(shortestTime >> 8U);
    return reply;
}

constexpr const char* INVALID_TIMER = "10/62 Invalid Error Recovery Timer value.";

TEST_F(SataSettings, RecoveryTimersAreSetAndReadBack) {
    drive.onAta(SMART, SMART_READ_LOG, SCT, {sctStatus(0x0102)});
    onSct({Reply{}, valued(0x0102)});
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"ReadErrorRecoveryTimer", "uint16", "258"}),
              DONE);
    ASSERT_EQ(sentCount(), 3U);
    const protocols::ata::TaskFile status{0xD5, 1, 0xC24FE0, 0, 0xB0, false};
    EXPECT_EQ(sentCommands()[0].taskFile, status);
    EXPECT_EQ(sctData(1), "03000100010002010000");
    EXPECT_EQ(sctData(2), "03000200010000000000");

    drive.sentAta().clear();
    onSct({Reply{}, valued(0xFFFF)});
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"WriteErrorRecoveryTimer", "uint16", "65535"}),
              DONE);
    ASSERT_EQ(sentCount(), 3U);
    EXPECT_EQ(sctData(1), "030001000200FFFF0000");
    EXPECT_EQ(sctData(2), "03000200020000000000");
}

TEST_F(SataSettings, ARecoveryTimerOfZeroIsNoLimitWhateverTheMinimum) {
    drive.onAta(SMART, SMART_READ_LOG, SCT, {sctStatus(70)});
    onSct({Reply{}, valued(0)});
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"ReadErrorRecoveryTimer", "uint16", "0"}), DONE);
    ASSERT_EQ(sentCount(), 2U);
    EXPECT_EQ(sctData(0), "03000100010000000000");
}

TEST_F(SataSettings, RecoveryTimersHaveTheirRanges) {
    drive.onAta(SMART, SMART_READ_LOG, SCT, {sctStatus(70)});
    onSct({Reply{}, valued(70)});
    const auto setTimer = [this](const char* value) {
        return set<ErrorRecoveryControlJob>(drive, {"ReadErrorRecoveryTimer", "uint16", value});
    };
    EXPECT_EQ(setTimer("65536"), INVALID_TIMER);
    EXPECT_EQ(setTimer("soon"), INVALID_TIMER);
    EXPECT_EQ(sentCount(), 0U);
    EXPECT_EQ(setTimer("1"), INVALID_TIMER);
    EXPECT_EQ(setTimer("69"), INVALID_TIMER);
    EXPECT_EQ(sentCount(), 2U);
    EXPECT_EQ(setTimer("70"), DONE);
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"ErrorRecoveryTimer", "uint16", "70"}),
              INVALID_PROPERTY);
}

TEST_F(SataSettings, ADriveMayRefuseARecoveryTimeOrKeepItsOwn) {
    drive.onAta(SMART, SMART_READ_LOG, SCT, {sctStatus(1)});
    const PropertyText property{"WriteErrorRecoveryTimer", "uint16", "70"};
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, property), INVALID_TIMER);
    onSct({Reply{}, valued(71)});
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, property), VALUE_NOT_TAKEN);
}

// DIPM.

TEST_F(SataSettings, DipmIsEnabledAndDisabledBySetFeatures) {
    drive.onAta(SET_FEATURES, 0x10, 0, {Reply{}});
    drive.onAta(SET_FEATURES, 0x90, 0, {Reply{}});
    onIdentify({identified({{78, 0x0008}}), identified({{78, 0x0008}, {79, 0x0008}}),
                identified({{78, 0x0008}, {79, 0x0008}}), identified({{78, 0x0008}})});
    EXPECT_EQ(set<DipmJob>(drive, {"DIPMEnabled", "boolean", "True"}), DONE);
    EXPECT_EQ(set<DipmJob>(drive, {"DIPMEnabled", "boolean", "False"}), DONE);
    ASSERT_EQ(sentCount(), 2U);
    const protocols::ata::TaskFile enabling{0x10, 3, 0, 0, 0xEF, false};
    const protocols::ata::TaskFile disabling{0x90, 3, 0, 0, 0xEF, false};
    EXPECT_EQ(sentCommands()[0].taskFile, enabling);
    EXPECT_EQ(sentCommands()[1].taskFile, disabling);
}

TEST_F(SataSettings, DipmMayBeMissingRefusedOrIgnored) {
    const PropertyText property{"DIPMEnabled", "boolean", "True"};
    onIdentify({identified({{79, 0x0008}})});
    EXPECT_EQ(set<DipmJob>(drive, property), "10/47 Drive does not support DIPM.");
    EXPECT_EQ(sentCount(), 0U);
    onIdentify({identified({{76, 0x0000}, {78, 0x0008}})});
    EXPECT_EQ(set<DipmJob>(drive, property), "10/47 Drive does not support DIPM.");
    onIdentify({identified({{78, 0x0008}})});
    EXPECT_EQ(set<DipmJob>(drive, property),
              "0/10 ATA command reported a problem. SET FEATURES: error register 0x04.");
    drive.onAta(SET_FEATURES, 0x10, 0, {Reply{}});
    EXPECT_EQ(set<DipmJob>(drive, property), VALUE_NOT_TAKEN);
    EXPECT_EQ(set<DipmJob>(drive, {"DIPMEnabled", "string", "on"}),
              "10/36 Invalid property specified. DIPMEnabled must be true or false.");
    EXPECT_EQ(set<DipmJob>(drive, {"DIPM", "boolean", "True"}), INVALID_PROPERTY);
}

// WriteCache.

constexpr std::uint16_t WRITE_CACHE = 0x0020;

TEST_F(SataSettings, TheWriteCacheIsEnabledAndDisabledBySetFeatures) {
    drive.onAta(SET_FEATURES, 0x02, 0, {Reply{}});
    drive.onAta(SET_FEATURES, 0x82, 0, {Reply{}});
    onIdentify({identified({{82, WRITE_CACHE}}), identified({{82, WRITE_CACHE}, {85, WRITE_CACHE}}),
                identified({{82, WRITE_CACHE}, {85, WRITE_CACHE}}),
                identified({{82, WRITE_CACHE}})});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}), DONE);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "False"}), DONE);
    ASSERT_EQ(sentCount(), 2U);
    const protocols::ata::TaskFile enabling{0x02, 0, 0, 0, 0xEF, false};
    const protocols::ata::TaskFile disabling{0x82, 0, 0, 0, 0xEF, false};
    EXPECT_EQ(sentCommands()[0].taskFile, enabling);
    EXPECT_EQ(sentCommands()[1].taskFile, disabling);
}

TEST_F(SataSettings, AWriteCacheThatStaysAsItWasIsTold) {
    drive.onAta(SET_FEATURES, 0x82, 0, {Reply{}});
    onIdentify({identified({{82, WRITE_CACHE}, {85, WRITE_CACHE}})});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "False"}),
              "10/164 Configuration update failed. The drive kept another value. WriteCacheState "
              "may decide it.");
    drive.onAta(SET_FEATURES, 0x82, 0, {refused()});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "False"}),
              "0/10 ATA command reported a problem. SET FEATURES: error register 0x04. "
              "WriteCacheState may decide it.");
    drive.onAta(SET_FEATURES, 0x82, 0, {unreachable()});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "False"}), "0/50 No way.");
}

TEST_F(SataSettings, WriteCacheStatesAreSctFeatures) {
    struct Row {
        const char* property;
        const char* value;
        std::uint16_t state;
        const char* data;
    };

    // clang-format off
    constexpr Row ROWS[] = {
        {"WriteCacheState",                  "1",     1, "04000100010001000100"},
        {"WriteCacheState",                  "3",     3, "04000100010003000100"},
        {"WriteCacheReorderingStateEnabled", "True",  1, "04000100020001000100"},
        {"WriteCacheReorderingStateEnabled", "False", 2, "04000100020002000100"},
    };
    // clang-format on
    onIdentify({identified({{82, WRITE_CACHE}})});
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.property) + "=" + row.value);
        drive.sentAta().clear();
        onSct({Reply{}, valued(row.state)});
        EXPECT_EQ(set<WriteCacheJob>(drive, {row.property, "string", row.value}), DONE);
        ASSERT_EQ(sentCount(), 2U);
        EXPECT_EQ(sctData(0), row.data);
    }
    onSct({refused()});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheState", "uint16", "2"}), INVALID_SCT_FEATURE);
}

TEST_F(SataSettings, WriteCachePropertiesHaveTheirRanges) {
    struct Row {
        const char* property;
        const char* value;
        const char* outcome;
    };

    // clang-format off
    constexpr const char* STATE = "10/57 Invalid write cache state option given. Valid options are: 1 2 and 3.";
    constexpr Row ROWS[] = {
        {"WriteCacheState",                  "0",   STATE},
        {"WriteCacheState",                  "4",   STATE},
        {"WriteCacheState",                  "off", STATE},
        {"WriteCacheEnabled",                "3",   "10/36 Invalid property specified. WriteCacheEnabled must be true or false."},
        {"WriteCacheReorderingStateEnabled", "3",   "10/36 Invalid property specified. WriteCacheReorderingStateEnabled must be true or false."},
        {"WriteCache",                       "1",   INVALID_PROPERTY},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.property) + "=" + row.value);
        EXPECT_EQ(set<WriteCacheJob>(drive, {row.property, "string", row.value}), row.outcome);
    }
    EXPECT_EQ(sentCount(), 0U);
}

TEST_F(SataSettings, NothingIsSetForADriveWithoutAWriteCache) {
    constexpr const char* REFUSAL = "10/48 Drive does not support Write Cache.";
    onIdentify({identified({{85, WRITE_CACHE}})});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}), REFUSAL);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheState", "uint16", "2"}), REFUSAL);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheReorderingStateEnabled", "boolean", "True"}),
              REFUSAL);
    EXPECT_EQ(sentCount(), 0U);
    onIdentify({identified({{82, WRITE_CACHE}, {83, 0xFFFF}})});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}), REFUSAL);
}

// EnduranceAnalyzer.

TEST_F(SataSettings, TheTimedWorkloadIsResetByAnSctFeatureThatIsNotKept) {
    onSct({Reply{}});
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"}), DONE);
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", " Reset "}), DONE);
    ASSERT_EQ(sentCount(), 2U);
    EXPECT_EQ(sctData(0), "0400010006D001000000");
}

TEST_F(SataSettings, TheTimedWorkloadTakesNoOtherWordAndMayNotBeReset) {
    for (const char* value : {"resets", "", "true", "1"}) {
        EXPECT_EQ(
            set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", value}),
            "10/36 Invalid property specified. EnduranceAnalyzer can only be set to 'reset'.");
    }
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"Endurance", "string", "reset"}), INVALID_PROPERTY);
    EXPECT_EQ(sentCount(), 0U);
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"}),
              "10/95 Failed to reset the timed workload attributes.");
}

// All.

TEST_F(SataSettings, ADriveThatSaysThatItLacksAnSctCommandIsNotAskedForIt) {
    onSct({Reply{}, valued(1)});
    drive.onAta(SMART, SMART_READ_LOG, SCT, {sctStatus(1)});
    // No SCT at all, and one without the command.
    for (const auto& [featureControl, recoveryControl] :
         {std::pair<std::uint16_t, std::uint16_t>{0x003C, 0x003C}, {0x002D, 0x0035}}) {
        onIdentify({identified({{206, featureControl}, {76, 0x000E}, {82, WRITE_CACHE}})});
        for (const std::string& outcome :
             {set<PhyConfigJob>(drive, {"PhyConfig", "uint16", "1"}),
              set<PhySpeedJob>(drive, {"PhySpeed", "string", "3"}),
              set<SpreadSpectrumClockingJob>(drive, {"SSCEnabled", "boolean", "True"}),
              set<SctFeatureControlJob>(drive, {"PLITestTimeInterval", "uint16", "1"}),
              set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}),
              set<WriteCacheJob>(drive, {"WriteCacheState", "uint16", "1"}),
              set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"})}) {
            EXPECT_EQ(outcome, NOT_SUPPORTED_BY_DRIVE);
        }
        onIdentify({identified({{206, recoveryControl}})});
        EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"ReadErrorRecoveryTimer", "uint16", "1"}),
                  NOT_SUPPORTED_BY_DRIVE);
    }
    EXPECT_EQ(sentCount(), 0U);
    onIdentify({identified({{206, 0x0011}})});
    EXPECT_EQ(set<SctFeatureControlJob>(drive, {"PLITestTimeInterval", "uint16", "1"}), DONE);
    onIdentify({identified({{206, 0x0009}})});
    EXPECT_EQ(set<ErrorRecoveryControlJob>(drive, {"ReadErrorRecoveryTimer", "uint16", "1"}), DONE);
}

TEST_F(SataSettings, OtherMakersDrivesHaveFeaturesOfTheStandardOnly) {
    drive.setNorvo(false);
    EXPECT_EQ(set<PhyConfigJob>(drive, {"PhyConfig", "uint16", "1"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<PhySpeedJob>(drive, {"PhySpeed", "string", "3"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<SpreadSpectrumClockingJob>(drive, {"SSCEnabled", "boolean", "True"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(set<SctFeatureControlJob>(drive, {"PhysicalSectorSize", "uint16", "512"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(set<SctFeatureControlJob>(drive, {"PLITestTimeInterval", "uint16", "1"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"}),
              NOT_A_NORVO_SSD);
    EXPECT_TRUE(drive.sentAta().empty());
    EXPECT_NE(set<SctFeatureControlJob>(drive, {"TemperatureLoggingInterval", "uint16", "1"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(sentCount(), 1U);
}

TEST_F(SataSettings, OtherPropertiesAndOtherDrivesAreRefused) {
    const PropertyText other{"Other", "string", "1"};
    EXPECT_EQ(set<PhyConfigJob>(drive, other), INVALID_PROPERTY);
    EXPECT_EQ(set<PhySpeedJob>(drive, other), INVALID_PROPERTY);
    EXPECT_EQ(set<PowerGovernorJob>(drive, other), INVALID_PROPERTY);
    EXPECT_EQ(set<SpreadSpectrumClockingJob>(drive, other), INVALID_PROPERTY);
    EXPECT_EQ(set<PhyConfigJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<PhySpeedJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<SpreadSpectrumClockingJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<SctFeatureControlJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<ErrorRecoveryControlJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<DipmJob>(nvmeDrive, other), NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(sentCount(), 0U);
}

TEST_F(SataSettings, TheJobsHaveTheNamesOfTheirRequests) {
    EXPECT_EQ(PhyConfigJob().getName(), "PhyConfig");
    EXPECT_EQ(PhySpeedJob().getName(), "PhySpeed");
    EXPECT_EQ(SpreadSpectrumClockingJob().getName(), "SpreadSpectrumClocking");
    EXPECT_EQ(SctFeatureControlJob().getName(), "SCTFeatureControl");
    EXPECT_EQ(PowerGovernorJob().getName(), "PowerGovernor");
    EXPECT_EQ(ErrorRecoveryControlJob().getName(), "ErrorRecoveryControl");
    EXPECT_EQ(DipmJob().getName(), "DIPM");
    EXPECT_EQ(WriteCacheJob().getName(), "WriteCache");
    EXPECT_EQ(EnduranceAnalyzerJob().getName(), "EnduranceAnalyzer");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
