#include "simulator/StructureLayouts.h"

#include "protocols/ata/DeviceStatistics.h"
#include "protocols/ata/Structures.h"
#include "protocols/norvo/Structures.h"
#include "protocols/norvo/Vendor.h"
#include "protocols/nvme/Structures.h"

namespace orvel::simulator::layouts {

namespace ata = protocols::ata;
namespace norvo = protocols::norvo;
namespace nvme = protocols::nvme;
using protocols::Fields;

namespace {

// clang-format off
constexpr Fields POWER_STATE_TABLES[]      = {nvme::power_state_descriptor::ALL};
constexpr Fields LBA_FORMAT_TABLES[]       = {nvme::lba_format::ALL};
constexpr Fields ATTRIBUTE_TABLES[]        = {ata::smart_attribute::ALL};
constexpr Fields THRESHOLD_TABLES[]        = {ata::smart_threshold::ALL};
constexpr Fields ERROR_COMMAND_TABLES[]    = {ata::extended_error_log_command::ALL};
constexpr Fields ERROR_ERROR_TABLES[]      = {ata::extended_error_log_error::ALL};
constexpr Fields LATENCY_BUCKET_TABLES[]   = {norvo::latency_bucket::ALL};
constexpr Fields QUEUE_TABLES[]            = {norvo::queue_metrics_entry::ALL};

const StructureLayout POWER_STATE    {nvme::power_state_descriptor::SIZE,    POWER_STATE_TABLES};
const StructureLayout LBA_FORMAT     {nvme::lba_format::SIZE,                LBA_FORMAT_TABLES};
const StructureLayout ATTRIBUTE      {ata::smart_attribute::SIZE,            ATTRIBUTE_TABLES};
const StructureLayout THRESHOLD      {ata::smart_threshold::SIZE,            THRESHOLD_TABLES};
const StructureLayout ERROR_COMMAND  {ata::extended_error_log_command::SIZE, ERROR_COMMAND_TABLES};
const StructureLayout ERROR_ERROR    {ata::extended_error_log_error::SIZE,   ERROR_ERROR_TABLES};
const StructureLayout LATENCY_BUCKET {norvo::latency_bucket::SIZE,           LATENCY_BUCKET_TABLES};
const StructureLayout QUEUE          {norvo::queue_metrics_entry::SIZE,      QUEUE_TABLES};

const StructurePart POWER_STATES[] = {{"powerStates",   nvme::identify_controller::POWER_STATES, POWER_STATE}};
const StructurePart LBA_FORMATS[]  = {{"lbaFormats",    nvme::identify_namespace::LBA_FORMATS,   LBA_FORMAT}};
const StructurePart ATTRIBUTES[]   = {{"attributes",    ata::smart_data::ATTRIBUTES,             ATTRIBUTE}};
const StructurePart THRESHOLDS[]   = {{"thresholds",    ata::smart_thresholds::THRESHOLDS,       THRESHOLD}};
const StructurePart ERROR_PARTS[]  = {{"commands",      ata::extended_error_log::COMMANDS,       ERROR_COMMAND},
                                      {"error",         ata::extended_error_log::ERROR,          ERROR_ERROR}};
const StructurePart BUCKETS[]      = {{"buckets",       norvo::latency_statistics::BUCKETS,      LATENCY_BUCKET}};
const StructurePart QUEUES[]       = {{"queues",        norvo::queue_metrics::QUEUES,            QUEUE}};

constexpr Fields IDENTIFY_CONTROLLER_TABLES[]     = {nvme::identify_controller::ALL, norvo::identify_controller::ALL};
constexpr Fields IDENTIFY_NAMESPACE_TABLES[]      = {nvme::identify_namespace::ALL};
constexpr Fields SMART_HEALTH_TABLES[]            = {nvme::smart_health_log::ALL};
constexpr Fields ERROR_INFORMATION_TABLES[]       = {nvme::error_information_entry::ALL};
constexpr Fields SELF_TEST_RESULT_TABLES[]        = {nvme::self_test_result::ALL};
constexpr Fields IDENTIFY_DEVICE_TABLES[]         = {ata::identify_device::ALL, norvo::identify_device::ALL};
constexpr Fields SMART_DATA_TABLES[]              = {ata::smart_data::ALL};
constexpr Fields SMART_THRESHOLDS_TABLES[]        = {ata::smart_thresholds::ALL};
constexpr Fields SELF_TEST_DESCRIPTOR_TABLES[]    = {ata::extended_self_test_descriptor::ALL};
constexpr Fields SCT_STATUS_TABLES[]              = {ata::sct_status::ALL};
constexpr Fields GENERAL_TABLES[]                 = {ata::general_statistics::ALL};
constexpr Fields GENERAL_ERRORS_TABLES[]          = {ata::general_errors_statistics::ALL};
constexpr Fields TEMPERATURE_TABLES[]             = {ata::temperature_statistics::ALL};
constexpr Fields TRANSPORT_TABLES[]               = {ata::transport_statistics::ALL};
constexpr Fields SOLID_STATE_TABLES[]             = {ata::solid_state_device_statistics::ALL};
constexpr Fields STORED_LOG_TABLES[]              = {norvo::stored_log::ALL};
constexpr Fields LATENCY_TABLES[]                 = {norvo::latency_statistics::ALL};
constexpr Fields NVME_TEMPERATURE_TABLES[]        = {norvo::temperature_statistics::ALL};
constexpr Fields EYE_DIAGRAM_TABLES[]             = {norvo::eye_diagram::ALL};
constexpr Fields HEALTH_TABLES[]                  = {norvo::health_statistics::ALL};
constexpr Fields QUEUE_METRICS_TABLES[]           = {norvo::queue_metrics::ALL};

const StructureLayout GENERAL          {ata::general_statistics::SIZE,             GENERAL_TABLES};
const StructureLayout GENERAL_ERRORS   {ata::general_errors_statistics::SIZE,      GENERAL_ERRORS_TABLES};
const StructureLayout TEMPERATURE      {ata::temperature_statistics::SIZE,         TEMPERATURE_TABLES};
const StructureLayout TRANSPORT        {ata::transport_statistics::SIZE,           TRANSPORT_TABLES};
const StructureLayout SOLID_STATE      {ata::solid_state_device_statistics::SIZE,  SOLID_STATE_TABLES};
const StructureLayout STORED_LOG       {norvo::stored_log::SIZE,                   STORED_LOG_TABLES};
const StructureLayout LATENCY          {norvo::latency_statistics::SIZE,           LATENCY_TABLES, BUCKETS};
const StructureLayout NVME_TEMPERATURE {norvo::temperature_statistics::SIZE,       NVME_TEMPERATURE_TABLES};
const StructureLayout EYE_DIAGRAM      {norvo::eye_diagram::SIZE,                  EYE_DIAGRAM_TABLES};
const StructureLayout HEALTH           {norvo::health_statistics::SIZE,            HEALTH_TABLES};
const StructureLayout QUEUE_METRICS    {norvo::queue_metrics::SIZE,                QUEUE_METRICS_TABLES, QUEUES};

constexpr std::uint32_t PASSWORD_SIZE = 32;
constexpr std::uint32_t BLOCK_SIZE = 512;
// clang-format on

}  // namespace

// clang-format off
const StructureLayout IDENTIFY_CONTROLLER           {nvme::identify_controller::SIZE,          IDENTIFY_CONTROLLER_TABLES, POWER_STATES};
const StructureLayout IDENTIFY_NAMESPACE            {nvme::identify_namespace::SIZE,           IDENTIFY_NAMESPACE_TABLES, LBA_FORMATS};
const StructureLayout SMART_HEALTH_LOG              {nvme::smart_health_log::SIZE,             SMART_HEALTH_TABLES};
const StructureLayout ERROR_INFORMATION_ENTRY       {nvme::error_information_entry::SIZE,      ERROR_INFORMATION_TABLES};
const StructureLayout SELF_TEST_RESULT              {nvme::self_test_result::SIZE,             SELF_TEST_RESULT_TABLES};
const StructureLayout IDENTIFY_DEVICE               {ata::identify_device::SIZE,               IDENTIFY_DEVICE_TABLES, {}, true};
const StructureLayout SMART_DATA                    {ata::smart_data::SIZE,                    SMART_DATA_TABLES, ATTRIBUTES};
const StructureLayout SMART_THRESHOLDS              {ata::smart_thresholds::SIZE,              SMART_THRESHOLDS_TABLES, THRESHOLDS};
const StructureLayout EXTENDED_ERROR                {ata::extended_error_log::ERRORS.size,     {}, ERROR_PARTS};
const StructureLayout EXTENDED_SELF_TEST_DESCRIPTOR {ata::extended_self_test_descriptor::SIZE, SELF_TEST_DESCRIPTOR_TABLES};
const StructureLayout SCT_STATUS                    {ata::sct_status::SIZE,                    SCT_STATUS_TABLES};
const StructureLayout PASSWORD                      {PASSWORD_SIZE,                            {}};
const StructureLayout BLOCK                         {BLOCK_SIZE,                               {}};
const StructureLayout IMAGE_PIECE                   {0,                                        {}};

// clang-format on

const StructureLayout& vendorLog(std::uint8_t identifier) {
    // clang-format off
    switch (identifier) {
    case norvo::log_pages::NLOG:
    case norvo::log_pages::EVENT_LOG:
    case norvo::log_pages::ASSERT_LOG:               return STORED_LOG;
    case norvo::log_pages::READ_LATENCY_STATISTICS:
    case norvo::log_pages::WRITE_LATENCY_STATISTICS: return LATENCY;
    case norvo::log_pages::TEMPERATURE_STATISTICS:   return NVME_TEMPERATURE;
    case norvo::log_pages::EYE_DIAGRAM:              return EYE_DIAGRAM;
    case norvo::log_pages::HEALTH_STATISTICS:        return HEALTH;
    case norvo::log_pages::QUEUE_METRICS:            return QUEUE_METRICS;
    default:                                         return BLOCK;
    }
    // clang-format on
}

const StructureLayout& deviceStatistics(std::uint8_t page) {
    // clang-format off
    switch (page) {
    case ata::statistics_page::GENERAL:            return GENERAL;
    case ata::statistics_page::GENERAL_ERRORS:     return GENERAL_ERRORS;
    case ata::statistics_page::TEMPERATURE:        return TEMPERATURE;
    case ata::statistics_page::TRANSPORT:          return TRANSPORT;
    case ata::statistics_page::SOLID_STATE_DEVICE: return SOLID_STATE;
    default:                                       return BLOCK;
    }
    // clang-format on
}

const StructureLayout& logPage(std::uint8_t logAddress, std::size_t page) {
    const bool hasHeader = logAddress == norvo::log_addresses::NLOG ||
                           logAddress == norvo::log_addresses::EVENT_LOG ||
                           logAddress == norvo::log_addresses::ASSERT_LOG;
    return hasHeader && page == 0 ? STORED_LOG : BLOCK;
}

}  // namespace orvel::simulator::layouts
