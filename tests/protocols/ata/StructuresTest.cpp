// Every row of every structure's table against the offsets in bytes that the standards give.
#include "protocols/ata/Structures.h"

#include "tests/protocols/ata/PayloadBytes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>

namespace orvel::protocols::ata {
namespace {

struct Row {
    const Field& field;
    const char* name;
    std::uint32_t offset;
    std::uint32_t size;
    Encoding encoding;
};

constexpr Encoding NUMBER = Encoding::NUMBER;
constexpr Encoding TEXT = Encoding::SWAPPED_TEXT;
constexpr Encoding BYTES = Encoding::BYTES;

void expectRows(Fields all, std::initializer_list<Row> rows) {
    ASSERT_EQ(all.size(), rows.size());
    std::size_t i = 0;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Field& field = all[i++];
        EXPECT_STREQ(field.name, row.name);
        EXPECT_STREQ(row.field.name, row.name);
        EXPECT_STRNE(field.meaning, "");
        EXPECT_EQ(field.offset, row.offset);
        EXPECT_EQ(field.size, row.size);
        EXPECT_EQ(field.encoding, row.encoding);
    }
}

/// Reads and writes every field of payloads that make no sense, or end too early.
void expectBounds(Fields all, std::uint32_t size) {
    for (const Field& field : all) {
        SCOPED_TRACE(field.name);
        EXPECT_EQ(thrownCode([&] { valueAsText(filledWith(0xFF, size), field); }), -1);
        EXPECT_EQ(thrownCode([&] { valueAsText(core::Payload(size), field); }), -1);
        EXPECT_EQ(thrownCode([&] { valueAsText(core::Payload(field.offset + field.size), field); }),
                  -1);
        EXPECT_EQ(
            thrownCode([&] { valueAsText(core::Payload(field.offset + field.size - 1), field); }),
            14);
    }
}

void expectEntries(const Entries& entries, std::uint32_t offset, std::uint32_t size,
                   std::uint32_t count) {
    EXPECT_EQ(entries.offset, offset);
    EXPECT_EQ(entries.size, size);
    EXPECT_EQ(entries.count, count);
}

// clang-format off: tables

TEST(AtaStructures, HasIdentifyDevice) {
    namespace s = identify_device;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(
        s::ALL,
        {
            //  field                                name                                offset size
            //  encoding
            {s::GeneralConfiguration, "GeneralConfiguration", 0, 2, NUMBER},
            {s::SpecificConfiguration, "SpecificConfiguration", 4, 2, NUMBER},
            {s::SerialNumber, "SerialNumber", 20, 20, TEXT},
            {s::FirmwareRevision, "FirmwareRevision", 46, 8, TEXT},
            {s::ModelNumber, "ModelNumber", 54, 40, TEXT},
            {s::SectorsPerDRQDataBlock, "SectorsPerDRQDataBlock", 94, 2, NUMBER},
            {s::TrustedComputing, "TrustedComputing", 96, 2, NUMBER},
            {s::Capabilities49, "Capabilities49", 98, 2, NUMBER},
            {s::Capabilities50, "Capabilities50", 100, 2, NUMBER},
            {s::FieldValidity, "FieldValidity", 106, 2, NUMBER},
            {s::SanitizeAndMultiple, "SanitizeAndMultiple", 118, 2, NUMBER},
            {s::UserAddressableSectors28, "UserAddressableSectors28", 120, 4, NUMBER},
            {s::MultiwordDMA, "MultiwordDMA", 126, 2, NUMBER},
            {s::PIOModes, "PIOModes", 128, 2, NUMBER},
            {s::MinimumMultiwordDMACycleTime, "MinimumMultiwordDMACycleTime", 130, 2, NUMBER},
            {s::RecommendedMultiwordDMACycleTime, "RecommendedMultiwordDMACycleTime", 132, 2,
             NUMBER},
            {s::MinimumPIOCycleTime, "MinimumPIOCycleTime", 134, 2, NUMBER},
            {s::MinimumPIOCycleTimeWithIORDY, "MinimumPIOCycleTimeWithIORDY", 136, 2, NUMBER},
            {s::AdditionalSupported, "AdditionalSupported", 138, 2, NUMBER},
            {s::QueueDepth, "QueueDepth", 150, 2, NUMBER},
            {s::SerialATACapabilities, "SerialATACapabilities", 152, 2, NUMBER},
            {s::SerialATAAdditionalCapabilities, "SerialATAAdditionalCapabilities", 154, 2, NUMBER},
            {s::SerialATAFeaturesSupported, "SerialATAFeaturesSupported", 156, 2, NUMBER},
            {s::SerialATAFeaturesEnabled, "SerialATAFeaturesEnabled", 158, 2, NUMBER},
            {s::MajorVersion, "MajorVersion", 160, 2, NUMBER},
            {s::MinorVersion, "MinorVersion", 162, 2, NUMBER},
            {s::FeaturesSupported82, "FeaturesSupported82", 164, 2, NUMBER},
            {s::FeaturesSupported83, "FeaturesSupported83", 166, 2, NUMBER},
            {s::FeaturesSupported84, "FeaturesSupported84", 168, 2, NUMBER},
            {s::FeaturesEnabled85, "FeaturesEnabled85", 170, 2, NUMBER},
            {s::FeaturesEnabled86, "FeaturesEnabled86", 172, 2, NUMBER},
            {s::FeaturesEnabled87, "FeaturesEnabled87", 174, 2, NUMBER},
            {s::UltraDMA, "UltraDMA", 176, 2, NUMBER},
            {s::NormalEraseTime, "NormalEraseTime", 178, 2, NUMBER},
            {s::EnhancedEraseTime, "EnhancedEraseTime", 180, 2, NUMBER},
            {s::APMLevel, "APMLevel", 182, 2, NUMBER},
            {s::MasterPasswordIdentifier, "MasterPasswordIdentifier", 184, 2, NUMBER},
            {s::HardwareResetResult, "HardwareResetResult", 186, 2, NUMBER},
            {s::StreamMinimumRequestSize, "StreamMinimumRequestSize", 190, 2, NUMBER},
            {s::StreamingTransferTimeDMA, "StreamingTransferTimeDMA", 192, 2, NUMBER},
            {s::StreamingAccessLatency, "StreamingAccessLatency", 194, 2, NUMBER},
            {s::StreamingPerformanceGranularity, "StreamingPerformanceGranularity", 196, 4, NUMBER},
            {s::UserAddressableSectors, "UserAddressableSectors", 200, 8, NUMBER},
            {s::StreamingTransferTimePIO, "StreamingTransferTimePIO", 208, 2, NUMBER},
            {s::MaximumDataSetManagementBlocks, "MaximumDataSetManagementBlocks", 210, 2, NUMBER},
            {s::SectorSizes, "SectorSizes", 212, 2, NUMBER},
            {s::InterSeekDelay, "InterSeekDelay", 214, 2, NUMBER},
            {s::WorldWideName, "WorldWideName", 216, 8, BYTES},
            {s::LogicalSectorSize, "LogicalSectorSize", 234, 4, NUMBER},
            {s::FeaturesSupported119, "FeaturesSupported119", 238, 2, NUMBER},
            {s::FeaturesEnabled120, "FeaturesEnabled120", 240, 2, NUMBER},
            {s::SecurityStatus, "SecurityStatus", 256, 2, NUMBER},
            {s::VendorSpecific, "VendorSpecific", 258, 62, BYTES},
            {s::NominalFormFactor, "NominalFormFactor", 336, 2, NUMBER},
            {s::DataSetManagement, "DataSetManagement", 338, 2, NUMBER},
            {s::AdditionalProductIdentifier, "AdditionalProductIdentifier", 340, 8, TEXT},
            {s::CurrentMediaSerialNumber, "CurrentMediaSerialNumber", 352, 60, TEXT},
            {s::SCTCommandTransport, "SCTCommandTransport", 412, 2, NUMBER},
            {s::SectorAlignment, "SectorAlignment", 418, 2, NUMBER},
            {s::WriteReadVerifyMode3Count, "WriteReadVerifyMode3Count", 420, 4, NUMBER},
            {s::WriteReadVerifyMode2Count, "WriteReadVerifyMode2Count", 424, 4, NUMBER},
            {s::NominalMediaRotationRate, "NominalMediaRotationRate", 434, 2, NUMBER},
            {s::WriteReadVerifyMode, "WriteReadVerifyMode", 440, 2, NUMBER},
            {s::TransportMajorVersion, "TransportMajorVersion", 444, 2, NUMBER},
            {s::TransportMinorVersion, "TransportMinorVersion", 446, 2, NUMBER},
            {s::ExtendedUserAddressableSectors, "ExtendedUserAddressableSectors", 460, 8, NUMBER},
            {s::MinimumDownloadBlocks, "MinimumDownloadBlocks", 468, 2, NUMBER},
            {s::MaximumDownloadBlocks, "MaximumDownloadBlocks", 470, 2, NUMBER},
            {s::IntegrityWord, "IntegrityWord", 510, 2, NUMBER},
        });
}

TEST(AtaStructures, HasIdentifyDeviceLog) {
    namespace s = identify_device_log;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::PAGE_NUMBERS, 9, 1, 503);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field               name               offset size encoding
                           {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                           {s::PageNumber, "PageNumber", 2, 1, NUMBER},
                           {s::NumberOfEntries, "NumberOfEntries", 8, 1, NUMBER},
                       });
}

TEST(AtaStructures, HasSmartData) {
    namespace s = smart_data;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::ATTRIBUTES, 2, 12, 30);
    expectBounds(s::ALL, s::SIZE);
    expectRows(
        s::ALL,
        {
            //  field                                  name offset size encoding
            {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
            {s::OfflineDataCollectionStatus, "OfflineDataCollectionStatus", 362, 1, NUMBER},
            {s::SelfTestExecutionStatus, "SelfTestExecutionStatus", 363, 1, NUMBER},
            {s::OfflineDataCollectionSeconds, "OfflineDataCollectionSeconds", 364, 2, NUMBER},
            {s::OfflineDataCollectionCapability, "OfflineDataCollectionCapability", 367, 1, NUMBER},
            {s::SmartCapability, "SmartCapability", 368, 2, NUMBER},
            {s::ErrorLoggingCapability, "ErrorLoggingCapability", 370, 1, NUMBER},
            {s::ShortSelfTestPollingMinutes, "ShortSelfTestPollingMinutes", 372, 1, NUMBER},
            {s::ExtendedSelfTestPollingMinutes, "ExtendedSelfTestPollingMinutes", 373, 1, NUMBER},
            {s::ConveyanceSelfTestPollingMinutes, "ConveyanceSelfTestPollingMinutes", 374, 1,
             NUMBER},
            {s::ExtendedSelfTestPollingMinutesWord, "ExtendedSelfTestPollingMinutesWord", 375, 2,
             NUMBER},
            {s::VendorSpecific, "VendorSpecific", 386, 125, BYTES},
            {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
        });
}

TEST(AtaStructures, HasSmartAttribute) {
    namespace s = smart_attribute;
    EXPECT_EQ(s::SIZE, 12U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field           name           offset size encoding
                           {s::Id, "Id", 0, 1, NUMBER},
                           {s::StatusFlags, "StatusFlags", 1, 2, NUMBER},
                           {s::Current, "Current", 3, 1, NUMBER},
                           {s::Worst, "Worst", 4, 1, NUMBER},
                           {s::Raw, "Raw", 5, 6, NUMBER},
                       });
}

TEST(AtaStructures, HasSmartThresholds) {
    namespace s = smart_thresholds;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::THRESHOLDS, 2, 12, 30);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                   {s::VendorSpecific, "VendorSpecific", 380, 131, BYTES},
                   {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
               });
}

TEST(AtaStructures, HasSmartThreshold) {
    namespace s = smart_threshold;
    EXPECT_EQ(s::SIZE, 12U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field         name         offset size encoding
                           {s::Id, "Id", 0, 1, NUMBER},
                           {s::Threshold, "Threshold", 1, 1, NUMBER},
                       });
}

TEST(AtaStructures, HasLogDirectory) {
    namespace s = log_directory;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::ADDRESSES, 2, 2, 255);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field              name              offset size encoding
                           {s::LoggingVersion, "LoggingVersion", 0, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasSmartLogDirectoryEntry) {
    namespace s = smart_log_directory_entry;
    EXPECT_EQ(s::SIZE, 2U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field             name             offset size encoding
                           {s::NumberOfPages, "NumberOfPages", 0, 1, NUMBER},
                       });
}

TEST(AtaStructures, HasGeneralPurposeLogDirectoryEntry) {
    namespace s = general_purpose_log_directory_entry;
    EXPECT_EQ(s::SIZE, 2U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field             name             offset size encoding
                           {s::NumberOfPages, "NumberOfPages", 0, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasErrorLog) {
    namespace s = error_log;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::ERRORS, 2, 90, 5);
    expectEntries(s::COMMANDS, 0, 12, 5);
    expectEntries(s::ERROR, 60, 30, 1);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::LogVersion, "LogVersion", 0, 1, NUMBER},
                   {s::ErrorLogIndex, "ErrorLogIndex", 1, 1, NUMBER},
                   {s::DeviceErrorCount, "DeviceErrorCount", 452, 2, NUMBER},
                   {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
               });
}

TEST(AtaStructures, HasErrorLogCommand) {
    namespace s = error_log_command;
    EXPECT_EQ(s::SIZE, 12U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field             name             offset size encoding
                           {s::DeviceControl, "DeviceControl", 0, 1, NUMBER},
                           {s::Feature, "Feature", 1, 1, NUMBER},
                           {s::Count, "Count", 2, 1, NUMBER},
                           {s::LBA, "LBA", 3, 3, NUMBER},
                           {s::Device, "Device", 6, 1, NUMBER},
                           {s::Command, "Command", 7, 1, NUMBER},
                           {s::Timestamp, "Timestamp", 8, 4, NUMBER},
                       });
}

TEST(AtaStructures, HasErrorLogError) {
    namespace s = error_log_error;
    EXPECT_EQ(s::SIZE, 30U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                        name                        offset size encoding
                   {s::Error, "Error", 1, 1, NUMBER},
                   {s::Count, "Count", 2, 1, NUMBER},
                   {s::LBA, "LBA", 3, 3, NUMBER},
                   {s::Device, "Device", 6, 1, NUMBER},
                   {s::Status, "Status", 7, 1, NUMBER},
                   {s::ExtendedErrorInformation, "ExtendedErrorInformation", 8, 19, BYTES},
                   {s::State, "State", 27, 1, NUMBER},
                   {s::LifeTimestamp, "LifeTimestamp", 28, 2, NUMBER},
               });
}

TEST(AtaStructures, HasExtendedErrorLog) {
    namespace s = extended_error_log;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::ERRORS, 4, 124, 4);
    expectEntries(s::COMMANDS, 0, 18, 5);
    expectEntries(s::ERROR, 90, 34, 1);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::LogVersion, "LogVersion", 0, 1, NUMBER},
                   {s::ErrorLogIndex, "ErrorLogIndex", 2, 2, NUMBER},
                   {s::DeviceErrorCount, "DeviceErrorCount", 500, 2, NUMBER},
                   {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
               });
}

TEST(AtaStructures, HasExtendedErrorLogCommand) {
    namespace s = extended_error_log_command;
    EXPECT_EQ(s::SIZE, 18U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field             name             offset size encoding
                           {s::DeviceControl, "DeviceControl", 0, 1, NUMBER},
                           {s::Feature, "Feature", 1, 2, NUMBER},
                           {s::Count, "Count", 3, 2, NUMBER},
                           {s::LBA7To0, "LBA7To0", 5, 1, NUMBER},
                           {s::LBA31To24, "LBA31To24", 6, 1, NUMBER},
                           {s::LBA15To8, "LBA15To8", 7, 1, NUMBER},
                           {s::LBA39To32, "LBA39To32", 8, 1, NUMBER},
                           {s::LBA23To16, "LBA23To16", 9, 1, NUMBER},
                           {s::LBA47To40, "LBA47To40", 10, 1, NUMBER},
                           {s::Device, "Device", 11, 1, NUMBER},
                           {s::Command, "Command", 12, 1, NUMBER},
                           {s::Timestamp, "Timestamp", 14, 4, NUMBER},
                       });
}

TEST(AtaStructures, HasExtendedErrorLogError) {
    namespace s = extended_error_log_error;
    EXPECT_EQ(s::SIZE, 34U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                        name                        offset size encoding
                   {s::TransportSpecific, "TransportSpecific", 0, 1, NUMBER},
                   {s::Error, "Error", 1, 1, NUMBER},
                   {s::Count, "Count", 2, 2, NUMBER},
                   {s::LBA7To0, "LBA7To0", 4, 1, NUMBER},
                   {s::LBA31To24, "LBA31To24", 5, 1, NUMBER},
                   {s::LBA15To8, "LBA15To8", 6, 1, NUMBER},
                   {s::LBA39To32, "LBA39To32", 7, 1, NUMBER},
                   {s::LBA23To16, "LBA23To16", 8, 1, NUMBER},
                   {s::LBA47To40, "LBA47To40", 9, 1, NUMBER},
                   {s::Device, "Device", 10, 1, NUMBER},
                   {s::Status, "Status", 11, 1, NUMBER},
                   {s::ExtendedErrorInformation, "ExtendedErrorInformation", 12, 19, BYTES},
                   {s::State, "State", 31, 1, NUMBER},
                   {s::LifeTimestamp, "LifeTimestamp", 32, 2, NUMBER},
               });
}

TEST(AtaStructures, HasSelfTestLog) {
    namespace s = self_test_log;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::DESCRIPTORS, 2, 24, 21);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                   {s::VendorSpecific, "VendorSpecific", 506, 2, BYTES},
                   {s::SelfTestIndex, "SelfTestIndex", 508, 1, NUMBER},
                   {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
               });
}

TEST(AtaStructures, HasSelfTestDescriptor) {
    namespace s = self_test_descriptor;
    EXPECT_EQ(s::SIZE, 24U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field               name               offset size encoding
                           {s::SelfTestNumber, "SelfTestNumber", 0, 1, NUMBER},
                           {s::ExecutionStatus, "ExecutionStatus", 1, 1, NUMBER},
                           {s::LifeTimestamp, "LifeTimestamp", 2, 2, NUMBER},
                           {s::Checkpoint, "Checkpoint", 4, 1, NUMBER},
                           {s::FailingLBA, "FailingLBA", 5, 4, NUMBER},
                           {s::VendorSpecific, "VendorSpecific", 9, 15, BYTES},
                       });
}

TEST(AtaStructures, HasExtendedSelfTestLog) {
    namespace s = extended_self_test_log;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::DESCRIPTORS, 4, 26, 19);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::LogVersion, "LogVersion", 0, 1, NUMBER},
                   {s::SelfTestIndex, "SelfTestIndex", 2, 2, NUMBER},
                   {s::VendorSpecific, "VendorSpecific", 498, 2, BYTES},
                   {s::DataStructureChecksum, "DataStructureChecksum", 511, 1, NUMBER},
               });
}

TEST(AtaStructures, HasExtendedSelfTestDescriptor) {
    namespace s = extended_self_test_descriptor;
    EXPECT_EQ(s::SIZE, 26U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field               name               offset size encoding
                           {s::SelfTestNumber, "SelfTestNumber", 0, 1, NUMBER},
                           {s::ExecutionStatus, "ExecutionStatus", 1, 1, NUMBER},
                           {s::LifeTimestamp, "LifeTimestamp", 2, 2, NUMBER},
                           {s::Checkpoint, "Checkpoint", 4, 1, NUMBER},
                           {s::FailingLBA, "FailingLBA", 5, 6, NUMBER},
                           {s::VendorSpecific, "VendorSpecific", 11, 15, BYTES},
                       });
}

TEST(AtaStructures, HasSctStatus) {
    namespace s = sct_status;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field                  name                  offset size encoding
                           {s::FormatVersion, "FormatVersion", 0, 2, NUMBER},
                           {s::SCTVersion, "SCTVersion", 2, 2, NUMBER},
                           {s::SCTSpecification, "SCTSpecification", 4, 2, NUMBER},
                           {s::StatusFlags, "StatusFlags", 6, 4, NUMBER},
                           {s::DeviceState, "DeviceState", 10, 1, NUMBER},
                           {s::ExtendedStatusCode, "ExtendedStatusCode", 14, 2, NUMBER},
                           {s::ActionCode, "ActionCode", 16, 2, NUMBER},
                           {s::FunctionCode, "FunctionCode", 18, 2, NUMBER},
                           {s::LBA, "LBA", 40, 8, NUMBER},
                           {s::Temperature, "Temperature", 200, 1, NUMBER},
                           {s::MinTemperature, "MinTemperature", 201, 1, NUMBER},
                           {s::MaxTemperature, "MaxTemperature", 202, 1, NUMBER},
                           {s::LifeMinTemperature, "LifeMinTemperature", 203, 1, NUMBER},
                           {s::LifeMaxTemperature, "LifeMaxTemperature", 204, 1, NUMBER},
                           {s::MaxOpLimit, "MaxOpLimit", 205, 1, NUMBER},
                           {s::OverLimitCount, "OverLimitCount", 206, 4, NUMBER},
                           {s::UnderLimitCount, "UnderLimitCount", 210, 4, NUMBER},
                           {s::SmartStatus, "SmartStatus", 214, 2, NUMBER},
                           {s::MinErcTimeLimit, "MinErcTimeLimit", 216, 2, NUMBER},
                           {s::VendorSpecific, "VendorSpecific", 480, 32, BYTES},
                       });
}

TEST(AtaStructures, HasSctTemperatureHistory) {
    namespace s = sct_temperature_history;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::SAMPLES, 34, 1, 478);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field              name              offset size encoding
                           {s::FormatVersion, "FormatVersion", 0, 2, NUMBER},
                           {s::SamplingPeriod, "SamplingPeriod", 2, 2, NUMBER},
                           {s::Interval, "Interval", 4, 2, NUMBER},
                           {s::MaxOpLimit, "MaxOpLimit", 6, 1, NUMBER},
                           {s::OverLimit, "OverLimit", 7, 1, NUMBER},
                           {s::MinOpLimit, "MinOpLimit", 8, 1, NUMBER},
                           {s::UnderLimit, "UnderLimit", 9, 1, NUMBER},
                           {s::CBSize, "CBSize", 30, 2, NUMBER},
                           {s::CBIndex, "CBIndex", 32, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasSctErrorRecoveryControl) {
    namespace s = sct_error_recovery_control;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field                 name                 offset size encoding
                           {s::ActionCode, "ActionCode", 0, 2, NUMBER},
                           {s::FunctionCode, "FunctionCode", 2, 2, NUMBER},
                           {s::SelectionCode, "SelectionCode", 4, 2, NUMBER},
                           {s::RecoveryTimeLimit, "RecoveryTimeLimit", 6, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasSctFeatureControl) {
    namespace s = sct_feature_control;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field            name            offset size encoding
                           {s::ActionCode, "ActionCode", 0, 2, NUMBER},
                           {s::FunctionCode, "FunctionCode", 2, 2, NUMBER},
                           {s::FeatureCode, "FeatureCode", 4, 2, NUMBER},
                           {s::State, "State", 6, 2, NUMBER},
                           {s::OptionFlags, "OptionFlags", 8, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasSctDataTable) {
    namespace s = sct_data_table;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field            name            offset size encoding
                           {s::ActionCode, "ActionCode", 0, 2, NUMBER},
                           {s::FunctionCode, "FunctionCode", 2, 2, NUMBER},
                           {s::TableID, "TableID", 4, 2, NUMBER},
                       });
}

TEST(AtaStructures, HasSecurityPassword) {
    namespace s = security_password;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                        name                        offset size encoding
                   {s::Control, "Control", 0, 2, NUMBER},
                   {s::Password, "Password", 2, 32, BYTES},
                   {s::MasterPasswordIdentifier, "MasterPasswordIdentifier", 34, 2, NUMBER},
               });
}

TEST(AtaStructures, HasDeviceStatisticsList) {
    namespace s = device_statistics_list;
    EXPECT_EQ(s::SIZE, 512U);
    expectEntries(s::PAGE_NUMBERS, 9, 1, 503);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field               name               offset size encoding
                           {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                           {s::PageNumber, "PageNumber", 2, 1, NUMBER},
                           {s::NumberOfEntries, "NumberOfEntries", 8, 1, NUMBER},
                       });
}

TEST(AtaStructures, HasGeneralStatistics) {
    namespace s = general_statistics;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                     name                     offset size encoding
                   {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                   {s::PageNumber, "PageNumber", 2, 1, NUMBER},
                   {s::LifetimePowerOnResets, "LifetimePowerOnResets", 8, 4, NUMBER},
                   {s::PowerOnHours, "PowerOnHours", 16, 4, NUMBER},
                   {s::LogicalSectorsWritten, "LogicalSectorsWritten", 24, 6, NUMBER},
                   {s::NumberOfWriteCommands, "NumberOfWriteCommands", 32, 6, NUMBER},
                   {s::LogicalSectorsRead, "LogicalSectorsRead", 40, 6, NUMBER},
                   {s::NumberOfReadCommands, "NumberOfReadCommands", 48, 6, NUMBER},
                   {s::DateAndTimeTimestamp, "DateAndTimeTimestamp", 56, 6, NUMBER},
                   {s::PendingErrorCount, "PendingErrorCount", 64, 4, NUMBER},
                   {s::WorkloadUtilization, "WorkloadUtilization", 72, 2, NUMBER},
                   {s::UtilizationUsageRate, "UtilizationUsageRate", 80, 6, NUMBER},
               });
}

TEST(AtaStructures, HasGeneralErrorsStatistics) {
    namespace s = general_errors_statistics;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(
        s::ALL,
        {
            //  field                           name                           offset size encoding
            {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
            {s::PageNumber, "PageNumber", 2, 1, NUMBER},
            {s::ReportedUncorrectableErrors, "ReportedUncorrectableErrors", 8, 4, NUMBER},
            {s::ResetsDuringCommands, "ResetsDuringCommands", 16, 4, NUMBER},
        });
}

TEST(AtaStructures, HasTemperatureStatistics) {
    namespace s = temperature_statistics;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(
        s::ALL,
        {
            //  field                         name                         offset size encoding
            {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
            {s::PageNumber, "PageNumber", 2, 1, NUMBER},
            {s::CurrentTemperature, "CurrentTemperature", 8, 1, NUMBER},
            {s::AverageShortTerm, "AverageShortTerm", 16, 1, NUMBER},
            {s::AverageLongTerm, "AverageLongTerm", 24, 1, NUMBER},
            {s::HighestTemperature, "HighestTemperature", 32, 1, NUMBER},
            {s::LowestTemperature, "LowestTemperature", 40, 1, NUMBER},
            {s::HighestAverageShortTerm, "HighestAverageShortTerm", 48, 1, NUMBER},
            {s::LowestAverageShortTerm, "LowestAverageShortTerm", 56, 1, NUMBER},
            {s::HighestAverageLongTerm, "HighestAverageLongTerm", 64, 1, NUMBER},
            {s::LowestAverageLongTerm, "LowestAverageLongTerm", 72, 1, NUMBER},
            {s::TimeInOverTemperature, "TimeInOverTemperature", 80, 4, NUMBER},
            {s::SpecifiedMaximumOperating, "SpecifiedMaximumOperating", 88, 1, NUMBER},
            {s::TimeInUnderTemperature, "TimeInUnderTemperature", 96, 4, NUMBER},
            {s::SpecifiedMinimumOperating, "SpecifiedMinimumOperating", 104, 1, NUMBER},
        });
}

TEST(AtaStructures, HasTransportStatistics) {
    namespace s = transport_statistics;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL, {
                           //  field                  name                  offset size encoding
                           {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                           {s::PageNumber, "PageNumber", 2, 1, NUMBER},
                           {s::HardwareResets, "HardwareResets", 8, 4, NUMBER},
                           {s::ASREvents, "ASREvents", 16, 4, NUMBER},
                           {s::InterfaceCRCErrors, "InterfaceCRCErrors", 24, 4, NUMBER},
                       });
}

TEST(AtaStructures, HasSolidStateDeviceStatistics) {
    namespace s = solid_state_device_statistics;
    EXPECT_EQ(s::SIZE, 512U);
    expectBounds(s::ALL, s::SIZE);
    expectRows(s::ALL,
               {
                   //  field                       name                       offset size encoding
                   {s::RevisionNumber, "RevisionNumber", 0, 2, NUMBER},
                   {s::PageNumber, "PageNumber", 2, 1, NUMBER},
                   {s::PercentageUsedEndurance, "PercentageUsedEndurance", 8, 1, NUMBER},
               });
}

// clang-format on

}  // namespace
}  // namespace orvel::protocols::ata
