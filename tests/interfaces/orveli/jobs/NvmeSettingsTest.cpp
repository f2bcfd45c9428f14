// The jobs that set properties of NVMe drives.
#include "interfaces/orveli/jobs/EnduranceAnalyzerJob.h"
#include "interfaces/orveli/jobs/LatencyTrackingJob.h"
#include "interfaces/orveli/jobs/NvmeFeaturesJob.h"
#include "interfaces/orveli/jobs/PowerGovernorJob.h"
#include "interfaces/orveli/jobs/WriteCacheJob.h"
#include "tests/interfaces/orveli/jobs/SettingSupport.h"

#include <gtest/gtest.h>

namespace orvel::interfaces::orveli::jobs {
namespace {

constexpr std::uint8_t GET_LOG_PAGE = 0x02;
constexpr std::uint8_t IDENTIFY = 0x06;
constexpr std::uint8_t SET_FEATURES = 0x09;
constexpr std::uint8_t GET_FEATURES = 0x0A;
constexpr std::uint8_t CONTROLLER = 0x01;

/// The completion's dword 0.
Reply dword(std::uint32_t value) {
    Reply reply;
    reply.dword0 = value;
    return reply;
}

Reply refused() {
    Reply reply;
    reply.nvmeStatus = {0, 2};
    reply.dword0 = 0x05;  // means nothing beside a refusal
    return reply;
}

Reply unreachable() {
    Reply reply;
    reply.pathStatus = core::Status(0, 50, "No way.");
    return reply;
}

/// A page of latency statistics: layout, number of buckets, and the buckets' limits and counts.
struct Bucket {
    std::uint32_t limit;
    std::uint64_t count;
};

Reply latencyPage(std::uint8_t version, std::uint16_t number, const std::vector<Bucket>& buckets) {
    Reply reply;
    reply.data = core::Payload(512);
    const auto put = [&](std::uint32_t offset, std::uint32_t bytes, std::uint64_t value) {
        for (std::uint32_t i = 0; i < bytes; ++i)
            *reply.data[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
    };
    put(0, 2, version);
    put(2, 2, number);
    std::uint32_t offset = 16;
    for (const Bucket& bucket : buckets) {
        put(offset, 4, bucket.limit);
        put(offset + 8, 8, bucket.count);
        offset += 16;
    }
    return reply;
}

class NvmeSettings : public testing::Test {
protected:
    NvmeSettings() { drive.setNorvo(true); }

    /// A drive that can save features, of which the one in question is saveable or not.
    void onFeature(std::uint8_t feature, std::deque<Reply> readings, std::uint8_t oncs = 0x10) {
        Reply controller;
        controller.data = core::Payload(4096);
        *controller.data[520] = oncs;
        drive.onNvme(IDENTIFY, CONTROLLER, {controller});
        drive.onNvme(SET_FEATURES, feature, {Reply{}});
        drive.onNvme(GET_FEATURES, feature, std::move(readings));
    }

    /// Opcode and dwords 10 to 12 of each command, as hexadecimal digits.
    std::vector<std::string> sent() {
        std::vector<std::string> lines;
        for (const SentNvme& one : drive.sentNvme()) {
            EXPECT_EQ(one.fields.nsid, 0U);
            lines.push_back(core::strings::toHexString(one.fields.opcode, 2) + " " +
                            core::strings::toHexString(one.fields.cdw10, 8) + " " +
                            core::strings::toHexString(one.fields.cdw11, 8) + " " +
                            core::strings::toHexString(one.fields.cdw12, 8));
        }
        return lines;
    }

    using Lines = std::vector<std::string>;

    ScriptedDrive drive{"NVMe Admin"};
    ScriptedDrive sataDrive{"ATA"};
};

// How features are set.

TEST_F(NvmeSettings, AFeatureThatTheDriveCanSaveIsSaved) {
    onFeature(0xC0, {dword(0x05), dword(2)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "2"}), DONE);
    EXPECT_EQ(sent(), (Lines{
                          "06 00000001 00000000 00000000",  // does it save at all
                          "0A 000003C0 00000000 00000000",  // does it save this
                          "09 800000C0 00000002 00000000",
                          "0A 000000C0 00000000 00000000",  // has it taken it
                      }));
}

TEST_F(NvmeSettings, AFeatureThatTheDriveCannotSaveIsSetUntilTheNextReset) {
    onFeature(0xC0, {dword(0x04), dword(1)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}), DONE);
    EXPECT_EQ(sent().at(2), "09 000000C0 00000001 00000000");

    drive.sentNvme().clear();
    onFeature(0xC0, {refused(), dword(1)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}), DONE);
    EXPECT_EQ(sent().at(2), "09 000000C0 00000001 00000000");
}

TEST_F(NvmeSettings, ADriveThatSavesNothingIsNotAskedAboutIt) {
    onFeature(0xC0, {dword(0)}, 0xEF);
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "0"}), DONE);
    EXPECT_EQ(sent(), (Lines{
                          "06 00000001 00000000 00000000",
                          "09 000000C0 00000000 00000000",
                          "0A 000000C0 00000000 00000000",
                      }));
}

TEST_F(NvmeSettings, ADriveMayRefuseAFeatureKeepItsValueOrBeOutOfReach) {
    const PropertyText property{"PowerGovernorMode", "uint32", "1"};
    onFeature(0xC0, {dword(0x05), dword(2)});
    EXPECT_EQ(set<PowerGovernorJob>(drive, property), VALUE_NOT_TAKEN);
    drive.onNvme(SET_FEATURES, 0xC0, {refused()});
    EXPECT_EQ(set<PowerGovernorJob>(drive, property),
              "0/25 NVMe command reported a problem. Set Features: Invalid Field in Command.");
    drive.onNvme(SET_FEATURES, 0xC0, {unreachable()});
    EXPECT_EQ(set<PowerGovernorJob>(drive, property), "0/50 No way.");
}

TEST_F(NvmeSettings, PowerGovernorHasThreeModes) {
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "3"}),
              "10/18 Invalid power mode given. Valid modes are 0 1 and 2.");
    EXPECT_EQ(sent(), Lines());
}

// WriteCache.

TEST_F(NvmeSettings, TheWriteCacheIsAFeature) {
    onFeature(0x06, {dword(0x01)});
    Reply controller;
    controller.data = core::Payload(4096);
    *controller.data[525] = 0x01;
    drive.onNvme(IDENTIFY, CONTROLLER, {controller});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}), DONE);
    EXPECT_EQ(sent(), (Lines{
                          "06 00000001 00000000 00000000",  // has it a cache
                          "06 00000001 00000000 00000000",  // does it save features
                          "09 00000006 00000001 00000000",
                          "0A 00000006 00000000 00000000",
                      }));
    drive.sentNvme().clear();
    drive.onNvme(GET_FEATURES, 0x06, {dword(0)});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "string", "0"}), DONE);
    EXPECT_EQ(sent().at(2), "09 00000006 00000000 00000000");
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}), VALUE_NOT_TAKEN);
}

TEST_F(NvmeSettings, NothingIsSetForADriveWithoutAWriteCache) {
    onFeature(0x06, {dword(1)});
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "boolean", "True"}),
              "10/48 Drive does not support Write Cache.");
    EXPECT_EQ(sent().size(), 1U);
}

TEST_F(NvmeSettings, TheWriteCacheHasOnePropertyOnly) {
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheState", "uint16", "2"}),
              NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheReorderingStateEnabled", "boolean", "True"}),
              NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCache", "boolean", "True"}), INVALID_PROPERTY);
    EXPECT_EQ(set<WriteCacheJob>(drive, {"WriteCacheEnabled", "string", "3"}),
              "10/36 Invalid property specified. WriteCacheEnabled must be true or false.");
    EXPECT_EQ(sent(), Lines());
}

// NVMeFeatures.

TEST_F(NvmeSettings, TheTemperatureThresholdIsSentInKelvins) {
    onFeature(0x04, {dword(0x05), dword(353)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"TempThreshold", "sint32", "80"}), DONE);
    EXPECT_EQ(sent().at(2), "09 80000004 00000161 00000000");
    EXPECT_EQ(sent().at(3), "0A 00000004 00000000 00000000");

    drive.sentNvme().clear();
    onFeature(0x04, {dword(0x05), dword(273)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"TempThreshold", "sint32", "0"}), DONE);
    EXPECT_EQ(sent().at(2), "09 80000004 00000111 00000000");
}

TEST_F(NvmeSettings, FeaturesHaveTheirRanges) {
    struct Row {
        const char* property;
        const char* type;
        const char* value;
        const char* outcome;
    };

    // clang-format off
    constexpr const char* THRESHOLD = "10/19 Invalid temperature threshold given.";
    constexpr const char* ADDRESS = "10/35 Invalid SM Bus address.";
    constexpr const char* AGGREGATION = "10/201 Invalid Aggregate threshold given.";
    constexpr const char* TIME = "10/202 Invalid Aggregate Time given.";
    constexpr Row ROWS[] = {
        {"TempThreshold",             "sint32",  "81",                    THRESHOLD},
        {"TempThreshold",             "uint32",  "4294967295",            THRESHOLD},
        {"TempThreshold",             "uint64",  "18446744073709551616",  THRESHOLD},
        {"TempThreshold",             "sint32",  "-1",                    THRESHOLD},
        {"TempThreshold",             "string",  "warm",                  THRESHOLD},
        {"TempThreshold",             "uint8",   "257",                   THRESHOLD},
        {"SMBusAddress",              "uint32",  "0",                     ADDRESS},
        {"SMBusAddress",              "uint32",  "256",                   ADDRESS},
        {"SMBusAddress",              "string",  "-1",                    ADDRESS},
        {"AggregationThreshold",      "uint32",  "256",                   AGGREGATION},
        {"AggregationThreshold",      "uint32",  "many",                  AGGREGATION},
        {"AggregationTime",           "uint32",  "256",                   TIME},
        {"AggregationTime",           "string",  "",                      TIME},
        {"ResetCRCError",             "boolean", "False",                 "10/36 Invalid property specified. ResetCRCError can only be set to true."},
        {"ResetCRCError",             "boolean", "maybe",                 "10/36 Invalid property specified. ResetCRCError must be true or false."},
        {"VolatileWriteCacheEnabled", "boolean", "True",                  INVALID_PROPERTY},
    };
    // clang-format on
    for (const Row& row : ROWS) {
        SCOPED_TRACE(std::string(row.property) + "=" + row.value);
        EXPECT_EQ(set<NvmeFeaturesJob>(drive, {row.property, row.type, row.value}), row.outcome);
    }
    EXPECT_EQ(sent(), Lines());
}

TEST_F(NvmeSettings, ANegativeThresholdIsRefusedWithoutARequestToo) {
    NvmeFeaturesJob job;
    job.setDevices({drive.getDevice()});
    EXPECT_EQ(textOf(job.runSetProperty(core::Attribute("TempThreshold", std::int32_t{-5}))),
              "10/19 Invalid temperature threshold given.");
}

TEST_F(NvmeSettings, TheSmBusAddressIsOneToTwoHundredAndFiftyFive) {
    onFeature(0xC8, {dword(0x05), dword(1)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"SMBusAddress", "uint32", "1"}), DONE);
    EXPECT_EQ(sent().at(2), "09 800000C8 00000001 00000000");
    drive.sentNvme().clear();
    onFeature(0xC8, {dword(0x05), dword(255)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"SMBusAddress", "uint32", "255"}), DONE);
    EXPECT_EQ(sent().at(2), "09 800000C8 000000FF 00000000");
}

TEST_F(NvmeSettings, TheHalvesOfInterruptCoalescingLeaveEachOtherAlone) {
    onFeature(0x08, {dword(0x1234), dword(0x05), dword(0x12FF)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"AggregationThreshold", "uint32", "255"}), DONE);
    EXPECT_EQ(sent(), (Lines{
                          "0A 00000008 00000000 00000000",
                          "06 00000001 00000000 00000000",
                          "0A 00000308 00000000 00000000",
                          "09 80000008 000012FF 00000000",
                          "0A 00000008 00000000 00000000",
                      }));

    drive.sentNvme().clear();
    onFeature(0x08, {dword(0x1234), dword(0x05), dword(0x0034)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"AggregationTime", "uint32", "0"}), DONE);
    EXPECT_EQ(sent().at(3), "09 80000008 00000034 00000000");
}

TEST_F(NvmeSettings, NothingIsSetIfInterruptCoalescingCannotBeRead) {
    onFeature(0x08, {refused()});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"AggregationTime", "uint32", "1"}),
              "10/203 Failed to retrieve Aggregate Data.");
    EXPECT_EQ(sent().size(), 1U);
}

TEST_F(NvmeSettings, TheCrcErrorCountIsResetAndNotSaved) {
    drive.onNvme(SET_FEATURES, 0xC7, {Reply{}});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"ResetCRCError", "boolean", "True"}), DONE);
    EXPECT_EQ(sent(), Lines{"09 000000C7 00000001 00000000"});
}

// EnduranceAnalyzer.

TEST_F(NvmeSettings, TheTimedWorkloadIsResetAndNotSaved) {
    const PropertyText property{"EnduranceAnalyzer", "string", "RESET"};
    drive.onNvme(SET_FEATURES, 0xC6, {Reply{}, refused()});
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, property), DONE);
    EXPECT_EQ(sent(), Lines{"09 000000C6 00000001 00000000"});
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, property),
              "10/95 Failed to reset the timed workload attributes.");
}

// LatencyTracking.

TEST_F(NvmeSettings, LatencyTrackingIsEnabledAndDisabled) {
    onFeature(0xE2, {dword(0x05), dword(1)});
    EXPECT_EQ(set<LatencyTrackingJob>(drive, {"LatencyTrackingEnabled", "boolean", "True"}), DONE);
    EXPECT_EQ(sent().at(2), "09 800000E2 00000001 00000000");
    drive.sentNvme().clear();
    onFeature(0xE2, {dword(0x05), dword(0)});
    EXPECT_EQ(set<LatencyTrackingJob>(drive, {"LatencyTrackingEnabled", "boolean", "False"}), DONE);
    EXPECT_EQ(sent().at(2), "09 800000E2 00000000 00000000");
    EXPECT_EQ(set<LatencyTrackingJob>(drive, {"LatencyTrackingEnabled", "uint8", "2"}),
              "10/36 Invalid property specified. LatencyTrackingEnabled must be true or false.");
    EXPECT_EQ(set<LatencyTrackingJob>(drive, {"Enabled", "boolean", "True"}), INVALID_PROPERTY);
}

/// The answer to the method, or its status if there is none.
std::string statistics(const ScriptedDrive& drive, const std::string& argument = "") {
    LatencyTrackingJob original;
    const auto job = original.clone();
    std::string request = R"(<Object name="LatencyTracking" type="Method">)";
    if (!argument.empty()) {
        request +=
            R"(<Property name="LatencyStatisticsForReadCommands" value=")" + argument + R"("/>)";
    }
    const Outcome outcome = runJob(*job, request + "</Object>", {drive.getDevice()});
    return outcome.output.empty() ? textOf(outcome.status) : outcome.output;
}

constexpr const char* READ_SECTION =
    R"(<Object name="Read Commands"><Property name="0 us - 32 us" value="18446744073709551615"/>)"
    R"(<Property name="32 us - 4294967294 us" value="2"/>)"
    R"(<Property name="4294967294 us or more" value="0"/></Object>)";
constexpr const char* WRITE_SECTION =
    R"(<Object name="Write Commands"><Property name="0 us - 64 us" value="7"/></Object>)";

std::string answerWith(const std::string& sections) {
    return R"(<Object><Object key="SERIAL1" name="Latency Statistics">)" + sections +
           "</Object></Object>";
}

Reply readPage() {
    return latencyPage(1, 3, {{32, UINT64_MAX}, {4294967294, 2}, {4294967295, 0}});
}

TEST_F(NvmeSettings, LatencyStatisticsAreThoseOfReadsOrWritesOrBoth) {
    drive.onNvme(GET_FEATURES, 0xE2, {dword(1)});
    drive.onNvme(GET_LOG_PAGE, 0xC1, {readPage()});
    drive.onNvme(GET_LOG_PAGE, 0xC2, {latencyPage(1, 1, {{64, 7}})});
    EXPECT_EQ(statistics(drive, "True"), answerWith(READ_SECTION));
    EXPECT_EQ(statistics(drive, "False"), answerWith(WRITE_SECTION));
    EXPECT_EQ(statistics(drive), answerWith(std::string(READ_SECTION) + WRITE_SECTION));
    ASSERT_EQ(drive.sentNvme().size(), 7U);
    // 512 bytes of the page are 128 dwords, told as one less.
    EXPECT_EQ(drive.sentNvme()[1].fields.cdw10, 0x007F00C1U);
    EXPECT_EQ(drive.sentNvme()[3].fields.cdw10, 0x007F00C2U);
}

TEST_F(NvmeSettings, LatencyStatisticsNeedTracking) {
    drive.onNvme(GET_FEATURES, 0xE2, {dword(0)});
    EXPECT_EQ(statistics(drive, "True"),
              "10/34 The desired feature is not supported. Latency tracking is not enabled. Set "
              "LatencyTrackingEnabled to true first.");
    EXPECT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(statistics(drive, "reads"),
              "10/36 Invalid property specified. LatencyStatisticsForReadCommands must be true or "
              "false.");
    EXPECT_EQ(drive.sentNvme().size(), 1U);
    EXPECT_EQ(statistics(sataDrive), NOT_SUPPORTED_BY_DRIVE);
}

TEST_F(NvmeSettings, ALatencyPageThatMakesNoSenseIsRefused) {
    const Reply pages[] = {
        latencyPage(0, 1, {{32, 1}}),
        latencyPage(2, 1, {{32, 1}}),
        latencyPage(1, 0, {{32, 1}}),
        latencyPage(1, 32, {{32, 1}}),
        latencyPage(1, 0xFFFF, {{32, 1}}),
        latencyPage(1, 1, {{0, 1}}),
        latencyPage(1, 2, {{32, 1}, {32, 1}}),
        latencyPage(1, 2, {{64, 1}, {32, 1}}),
        latencyPage(1, 2, {{4294967295, 1}, {0, 1}}),
    };
    drive.onNvme(GET_FEATURES, 0xE2, {dword(1)});
    for (const Reply& page : pages) {
        drive.onNvme(GET_LOG_PAGE, 0xC1, {page});
        EXPECT_EQ(statistics(drive, "true"), "10/33 Failed to retrieve data from selected device.");
    }
    Reply cutOff;
    cutOff.data = core::Payload(511);
    drive.onNvme(GET_LOG_PAGE, 0xC1, {cutOff});
    EXPECT_EQ(statistics(drive, "true"),
              "0/49 The IO command passed, but did not return the expected amount of data.");
}

TEST_F(NvmeSettings, ALatencyPageHasAtMostThirtyOneBuckets) {
    std::vector<Bucket> buckets;
    for (std::uint32_t i = 1; i <= 31; ++i)
        buckets.push_back({i, i});
    drive.onNvme(GET_FEATURES, 0xE2, {dword(1)});
    drive.onNvme(GET_LOG_PAGE, 0xC1, {latencyPage(1, 31, buckets)});
    EXPECT_NE(statistics(drive, "true").find(R"(name="30 us - 31 us" value="31"/></Object>)"),
              std::string::npos);
    drive.onNvme(GET_LOG_PAGE, 0xC1, {latencyPage(1, 32, buckets)});
    EXPECT_EQ(statistics(drive, "true"), "10/33 Failed to retrieve data from selected device.");
}

// All.

TEST_F(NvmeSettings, OtherMakersDrivesHaveFeaturesOfTheStandardOnly) {
    drive.setNorvo(false);
    EXPECT_EQ(set<PowerGovernorJob>(drive, {"PowerGovernorMode", "uint32", "1"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"SMBusAddress", "uint32", "1"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"ResetCRCError", "boolean", "True"}), NOT_A_NORVO_SSD);
    EXPECT_EQ(set<EnduranceAnalyzerJob>(drive, {"EnduranceAnalyzer", "string", "reset"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(set<LatencyTrackingJob>(drive, {"LatencyTrackingEnabled", "boolean", "True"}),
              NOT_A_NORVO_SSD);
    EXPECT_EQ(statistics(drive), NOT_A_NORVO_SSD);
    EXPECT_EQ(sent(), Lines());
    onFeature(0x04, {dword(0x05), dword(353)});
    EXPECT_EQ(set<NvmeFeaturesJob>(drive, {"TempThreshold", "sint32", "80"}), DONE);
}

TEST_F(NvmeSettings, SataDrivesAreRefused) {
    EXPECT_EQ(set<NvmeFeaturesJob>(sataDrive, {"TempThreshold", "sint32", "70"}),
              NOT_SUPPORTED_BY_DRIVE);
    EXPECT_EQ(set<LatencyTrackingJob>(sataDrive, {"LatencyTrackingEnabled", "boolean", "True"}),
              NOT_SUPPORTED_BY_DRIVE);
}

TEST_F(NvmeSettings, TheJobsHaveTheNamesOfTheirRequests) {
    EXPECT_EQ(NvmeFeaturesJob().getName(), "NVMeFeatures");
    EXPECT_EQ(LatencyTrackingJob().getName(), "LatencyTracking");
}

}  // namespace
}  // namespace orvel::interfaces::orveli::jobs
