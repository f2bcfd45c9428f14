// The words of messages: attribute names, category words and device identifiers.
#pragma once

// clang-format off: a table

namespace orvel::core::xml {

// Attribute names.
namespace tags {
inline constexpr const char* Category = "category";
inline constexpr const char* Description = "description";
inline constexpr const char* DisplayName = "displayName";
inline constexpr const char* Identifier = "identifier";
inline constexpr const char* Key = "key";
inline constexpr const char* Name = "name";
inline constexpr const char* Size = "size";
inline constexpr const char* Type = "type";
inline constexpr const char* Value = "value";
inline constexpr const char* MaxSize = "maxSize";
}  // namespace tags

// Values of the attribute "category". Intended: `Output` alone begins with a capital.
namespace categories {
inline constexpr const char* Attribute = "attribute";
inline constexpr const char* AttributeList = "attributeList";
inline constexpr const char* Command = "command";
inline constexpr const char* CommandPath = "commandPath";
inline constexpr const char* CommandPathList = "commandPathList";
inline constexpr const char* CommandSet = "commandSet";
inline constexpr const char* CommandSetList = "commandSetList";
inline constexpr const char* Connection = "connection";
inline constexpr const char* ConnectionList = "connectionList";
inline constexpr const char* Device = "device";
inline constexpr const char* DeviceList = "deviceList";
inline constexpr const char* Output = "Output";
inline constexpr const char* Partition = "partition";
inline constexpr const char* PartitionList = "partitionList";
inline constexpr const char* Payload = "payload";
inline constexpr const char* ProtocolResult = "protocolResult";
inline constexpr const char* Status = "status";
// Of the command history.
inline constexpr const char* CommandHistory = "commandHistory";
inline constexpr const char* CommandResult = "commandResult";
inline constexpr const char* Duration = "duration";
inline constexpr const char* EndTime = "endTime";
inline constexpr const char* InputPayload = "inputPayload";
inline constexpr const char* OutputPayload = "outputPayload";
inline constexpr const char* QuietToXml = "quietToXml";
inline constexpr const char* StartTime = "startTime";
}  // namespace categories

// Device identifiers.
namespace identifiers {
inline constexpr const char* CSMIIdentifier = "CSMIIdentifiers";
inline constexpr const char* Device = "Device";
inline constexpr const char* Devices = "Devices";
inline constexpr const char* DriveId = "DriveId";
inline constexpr const char* DriveLetter = "DriveLetter";
inline constexpr const char* Index = "Index";
inline constexpr const char* Path = "Path";
inline constexpr const char* SerialNumber = "SerialNumber";
}  // namespace identifiers

}  // namespace orvel::core::xml

// The job interface's own words.
namespace orvel::interfaces::orveli::xml::tags {

namespace types {
inline constexpr const char* Method = "Method";
inline constexpr const char* Parser = "Parser";
inline constexpr const char* GetProperties = "GetProperties";
inline constexpr const char* SetProperty = "SetProperty";
}  // namespace types

namespace names {
inline constexpr const char* Properties = "Properties";
}  // namespace names

}  // namespace orvel::interfaces::orveli::xml::tags
