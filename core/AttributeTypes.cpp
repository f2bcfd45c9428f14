#include "core/AttributeTypes.h"

namespace orvel::core::types {

// clang-format off
std::string string()           { return "string"; }
std::string sint8()            { return "sint8"; }
std::string sint16()           { return "sint16"; }
std::string sint32()           { return "sint32"; }
std::string sint64()           { return "sint64"; }
std::string uint8()            { return "uint8"; }
std::string uint16()           { return "uint16"; }
std::string uint32()           { return "uint32"; }
std::string uint64()           { return "uint64"; }
std::string ulong()            { return "ulong"; }
std::string boolean()          { return "boolean"; }
std::string bytepointer()      { return "bytepointer"; }
std::string list_uint64()      { return "list_uint64"; }
std::string vectorOfStrings()  { return "vectorOfStrings"; }
std::string hexValue()         { return "hexValue"; }
std::string vectorOfPayloads() { return "vectorOfPayloads"; }

// clang-format on

}  // namespace orvel::core::types
