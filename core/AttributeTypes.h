// The type words of attributes: how a value's bytes are encoded.
#pragma once

#include <string>

namespace orvel::core::types {

std::string string();
std::string sint8();
std::string sint16();
std::string sint32();
std::string sint64();
std::string uint8();
std::string uint16();
std::string uint32();
std::string uint64();
std::string ulong();
std::string boolean();
std::string bytepointer();
std::string list_uint64();
std::string vectorOfStrings();
std::string hexValue();
std::string vectorOfPayloads();

}  // namespace orvel::core::types
