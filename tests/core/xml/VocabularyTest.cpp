// The words of messages, row by row.
#include "core/xml/Vocabulary.h"

#include <gtest/gtest.h>

#include <string>

namespace orvel::core::xml {
namespace {

namespace jobs = interfaces::orveli::xml::tags;

struct WordRow {
    const char* actual;
    const char* expected;
};

// clang-format off
constexpr WordRow WORDS[] = {
    {tags::Category,    "category"},
    {tags::Description, "description"},
    {tags::DisplayName, "displayName"},
    {tags::Identifier,  "identifier"},
    {tags::Key,         "key"},
    {tags::Name,        "name"},
    {tags::Size,        "size"},
    {tags::Type,        "type"},
    {tags::Value,       "value"},
    {tags::MaxSize,     "maxSize"},

    {categories::Attribute,       "attribute"},
    {categories::AttributeList,   "attributeList"},
    {categories::Command,         "command"},
    {categories::CommandPath,     "commandPath"},
    {categories::CommandPathList, "commandPathList"},
    {categories::CommandSet,      "commandSet"},
    {categories::CommandSetList,  "commandSetList"},
    {categories::Connection,      "connection"},
    {categories::ConnectionList,  "connectionList"},
    {categories::Device,          "device"},
    {categories::DeviceList,      "deviceList"},
    {categories::Output,          "Output"},
    {categories::Partition,       "partition"},
    {categories::PartitionList,   "partitionList"},
    {categories::Payload,         "payload"},
    {categories::ProtocolResult,  "protocolResult"},
    {categories::Status,          "status"},
    {categories::CommandHistory,  "commandHistory"},
    {categories::CommandResult,   "commandResult"},
    {categories::Duration,        "duration"},
    {categories::EndTime,         "endTime"},
    {categories::InputPayload,    "inputPayload"},
    {categories::OutputPayload,   "outputPayload"},
    {categories::QuietToXml,      "quietToXml"},
    {categories::StartTime,       "startTime"},

    {identifiers::CSMIIdentifier, "CSMIIdentifiers"},
    {identifiers::Device,         "Device"},
    {identifiers::Devices,        "Devices"},
    {identifiers::DriveId,        "DriveId"},
    {identifiers::DriveLetter,    "DriveLetter"},
    {identifiers::Index,          "Index"},
    {identifiers::Path,           "Path"},
    {identifiers::SerialNumber,   "SerialNumber"},

    {jobs::types::Method,        "Method"},
    {jobs::types::Parser,        "Parser"},
    {jobs::types::GetProperties, "GetProperties"},
    {jobs::types::SetProperty,   "SetProperty"},
    {jobs::names::Properties,    "Properties"},
};

// clang-format on

TEST(Vocabulary, SpellsEachWordAsTheProtocolDoes) {
    for (const WordRow& row : WORDS) {
        SCOPED_TRACE(row.expected);
        EXPECT_EQ(row.actual, std::string(row.expected));
    }
}

}  // namespace
}  // namespace orvel::core::xml
