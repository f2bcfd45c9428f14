// Tests of the words and numbers that the tool and the feature library agree on.
#include "features/JobConstants.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>
#include <type_traits>

namespace orvel::features {
namespace {

struct WordRow {
    std::string constant;
    const char* text;
};

template <std::size_t Size>
void expectWords(const WordRow (&rows)[Size]) {
    for (const WordRow& row : rows) {
        EXPECT_EQ(row.constant, row.text);
    }
}

TEST(JobConstants, NameTheJobs) {
    namespace jobs = interfaces::orveli::jobs;
    // clang-format off
    const WordRow rows[] = {
        {jobs::AssertLog,              "AssertLog"},
        {jobs::BackgroundProcessing,   "BackgroundProcessing"},
        {jobs::BridgeNlog,             "BridgeNlog"},
        {jobs::DIPM,                   "DIPM"},
        {jobs::Directives,             "Directives"},
        {jobs::DriveSelfTest,          "DriveSelfTest"},
        {jobs::EnduranceAnalyzer,      "EnduranceAnalyzer"},
        {jobs::EnduranceManager,       "EnduranceManager"},
        {jobs::EraseAssert,            "EraseAssert"},
        {jobs::ErrorRecoveryControl,   "ErrorRecoveryControl"},
        {jobs::EventLog,               "EventLog"},
        {jobs::EyeDiagram,             "EyeDiagram"},
        {jobs::FirmwareActivate,       "FirmwareActivate"},
        {jobs::FirmwareUpdate,         "FirmwareUpdate"},
        {jobs::ForceFlush,             "ForceFlush"},
        {jobs::Format,                 "Format"},
        {jobs::GPL,                    "GPL"},
        {jobs::HDATemperature,         "HDATemperature"},
        {jobs::HealthMetrics,          "HealthMetrics"},
        {jobs::HealthScan,             "HealthScan"},
        {jobs::IEEE1667,               "EnableEdrive"},
        {jobs::Identify,               "Identify"},
        {jobs::NorvoSSD,               "NorvoSSD"},
        {jobs::LatencyTracking,        "LatencyTracking"},
        {jobs::LedActivity,            "LedActivity"},
        {jobs::LowLevelFormat,         "LowLevelFormat"},
        {jobs::MaxAddress,             "MaxAddress"},
        {jobs::NCQSupport,             "NCQSupport"},
        {jobs::NVMeAdminCommand,       "NVMeAdminCommand"},
        {jobs::NVMeFeatures,           "NVMeFeatures"},
        {jobs::NVMeGetLog,             "NVMeLog"},
        {jobs::NamespaceManagement,    "NamespaceManagement"},
        {jobs::Nlog,                   "Nlog"},
        {jobs::Optimizer,              "Optimizer"},
        {jobs::PSIDRevert,             "PSIDRevert"},
        {jobs::PartitionInformation,   "PartitionInformation"},
        {jobs::Performance,            "Performance"},
        {jobs::PhyConfig,              "PhyConfig"},
        {jobs::PhyCounters,            "PhyCounters"},
        {jobs::PhySpeed,               "PhySpeed"},
        {jobs::PowerGovernor,          "PowerGovernor"},
        {jobs::SCTFeatureControl,      "SCTFeatureControl"},
        {jobs::SMART,                  "SMART"},
        {jobs::SecurityInformation,    "SecurityInformation"},
        {jobs::SpreadSpectrumClocking, "SpreadSpectrumClocking"},
        {jobs::StandbyImmediate,       "StandbyImmediate"},
        {jobs::SystemParser,           "SystemParser"},
        {jobs::TelemetryLog,           "TelemetryLog"},
        {jobs::ThermalThrottle,        "ThermalThrottle"},
        {jobs::TimeToReady,            "TimeToReady"},
        {jobs::Trim,                   "Trim"},
        {jobs::WriteCache,             "WriteCache"},
        {jobs::WriteSame,              "WriteSame"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 53U);
    expectWords(rows);
}

TEST(JobConstants, NameTheLogs) {
    // clang-format off
    const WordRow rows[] = {
        {nvme_get_log::log_names::ErrorInfo,             "ErrorInfo"},
        {nvme_get_log::log_names::SmartHealthInfo,       "SmartHealthInfo"},
        {nvme_get_log::log_names::FirmwareSlotInfo,      "FirmwareSlotInfo"},
        {nvme_get_log::log_names::TemperatureStatistics, "TemperatureStatistics"},
        {nvme_get_log::log_names::QueueMetrics,          "QueueMetrics"},
        {nvme_get_log::log_names::ChangedNamespaceList,  "ChangedNamespaceList"},
        {nvme_get_log::log_names::CommandEffectsLog,     "CommandEffectsLog"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 7U);
    expectWords(rows);
}

TEST(JobConstants, NameTheSelfTestWords) {
    // clang-format off
    const WordRow rows[] = {
        {drive_self_test::constants::OFFLINE_MODE,         "offline"},
        {drive_self_test::constants::CAPTIVE_MODE,         "captive"},
        {drive_self_test::constants::TEST_TYPE_SHORT,      "short"},
        {drive_self_test::constants::TEST_TYPE_EXTENDED,   "extended"},
        {drive_self_test::constants::TEST_TYPE_CONVEYANCE, "conveyance"},
        {drive_self_test::constants::TEST_TYPE_STATUS,     "status"},
        {drive_self_test::constants::TEST_TYPE_ABORT,      "abort"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 7U);
    expectWords(rows);
}

TEST(JobConstants, NameTheFormatTypes) {
    // clang-format off
    const WordRow rows[] = {
        {format::types::ATA_SANITIZE,     "ATASanitize"},
        {format::types::ATA_SECURE_ERASE, "ATASecureErase"},
        {format::types::DELETE_TYPE,      "Delete"},
        {format::types::NVME_FORMAT,      "NVMeFormat"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 4U);
    expectWords(rows);
}

TEST(JobConstants, NameTheNamespaceActions) {
    // clang-format off
    const WordRow rows[] = {
        {namespace_management::actions::ATTACH,        "attach"},
        {namespace_management::actions::DETACH,        "detach"},
        {namespace_management::actions::CREATE,        "create"},
        {namespace_management::actions::DELETE_ACTION, "delete"},
    };
    // clang-format on
    ASSERT_EQ(std::size(rows), 4U);
    expectWords(rows);
}

TEST(JobConstants, NumberTheLogPages) {
    EXPECT_EQ(nvme_get_log::log_ids::ERROR_INFO, 1U);
    EXPECT_EQ(nvme_get_log::log_ids::SMART_HEALTH, 2U);
    EXPECT_EQ(nvme_get_log::log_ids::FIRMWARE_SLOT_INFO, 3U);
    EXPECT_EQ(nvme_get_log::log_ids::TEMP_STATISTICS, 197U);
    EXPECT_EQ(nvme_get_log::log_ids::QUEUE_METRICS, 203U);
}

TEST(JobConstants, NumberTheIdentifyStructures) {
    namespace structures = identify::nvme::structures;
    static_assert(std::is_same_v<decltype(structures::CONTROLLER_DATA), const std::uint8_t>);
    EXPECT_EQ(structures::CONTROLLER_DATA, 1U);
    EXPECT_EQ(structures::ATTACHED_NAMESPACE_LIST, 2U);
    EXPECT_EQ(structures::ALLOCATED_NAMESPACE_LIST, 16U);
    EXPECT_EQ(structures::NAMESPACE_DATA_WITH_NSID, 17U);
    EXPECT_EQ(structures::CONTROLLERS_ATTACHED_TO_NSID, 18U);
    EXPECT_EQ(structures::ALL_CONTROLLERS, 19U);
}

TEST(JobConstants, HoldTheSingleTexts) {
    EXPECT_EQ(std::string(PROPERTY_NOT_FOUND), "Property not found");
    EXPECT_EQ(std::string(health_scan::HEALTH_SCAN_STATUS_CODE_NAME), "HealthScanStatusCode");
}

}  // namespace
}  // namespace orvel::features
