// Plain functions that compare text and turn values into text and back, and the small
// operating-system helpers beside them.
#pragma once

#include "core/Payload.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvel::core::strings {

// Comparison. `ignoreCase` lowers the letters A to Z on both sides, in whatever locale.
bool contains(std::string text, std::string part, bool ignoreCase);
bool contains(std::wstring text, std::wstring part, bool ignoreCase);
bool startsWith(std::string text, std::string part, bool ignoreCase);
bool startsWith(std::wstring text, std::wstring part, bool ignoreCase);
bool endsWith(std::string text, std::string part, bool ignoreCase);
bool endsWith(std::wstring text, std::wstring part, bool ignoreCase);
bool equals(std::string a, std::string b, bool ignoreCase);
bool equals(std::wstring a, std::wstring b, bool ignoreCase);

/// Whether the byte lies outside 0x20 to 0x7E.
bool isNotAscii(char character);

// Tests on text.

/// False for the empty string; otherwise every byte is a decimal digit.
bool isNumeric(const std::string& text);
bool isNumeric(const std::wstring& text);

/// As `isNumeric`, after an optional leading "-".
bool isSignedNumeric(const std::string& text);
bool isSignedNumeric(const std::wstring& text);

/// "0", "1", or "true" or "false" in any case.
bool isBooleanText(const std::string& text);
bool isBooleanText(const std::wstring& text);

/// Every byte is a hexadecimal digit; the empty string is true. Behind a prefix "0x" or "0X" the
/// first character isn't looked at.
bool isHexadecimal(const std::string& text);
bool isHexadecimal(const std::wstring& text);

// Text to text.

/// With small letters for A to Z, in whatever locale.
std::string lowered(std::string text);

/// Without the `blanks` at both ends.
std::string trimmed(std::string_view text, std::string_view blanks = " \t\r\n");

// Text to value.

/// Whether the text is "true", in any case.
bool toBool(const std::string& text);
bool toBool(const std::wstring& text);

/// Decimal if `isNumeric`, else hexadecimal if `isHexadecimal`, else 0. A number too large for 64
/// bits reads as the largest.
std::uint64_t toInteger(const std::string& text);
std::uint64_t toInteger(const std::wstring& text);
std::uint64_t toHexInteger(const std::string& text);
std::uint64_t toHexInteger(const std::wstring& text);
double toDouble(const std::string& text);
double toDouble(const std::wstring& text);

/// The parts between delimiters, untrimmed, empty ones included.
std::vector<std::string> split(const std::string& text, char delimiter);
std::vector<std::wstring> split(const std::wstring& text, wchar_t delimiter);

/// Bytes from two hexadecimal digits each. No bytes for a text of odd length or with a character
/// that is no hexadecimal digit.
Payload hexToBytes(const std::string& text);

// Value to text.

/// "True" or "False".
std::string toString(bool value);

// Decimal, padded with "0" to `width`. The 8-bit forms give the number.
std::string toString(std::int8_t value, int width = 0);
std::string toString(std::int16_t value, int width = 0);
std::string toString(std::int32_t value, int width = 0);
std::string toString(std::int64_t value, int width = 0);
std::string toString(std::uint8_t value, int width = 0);
std::string toString(std::uint16_t value, int width = 0);
std::string toString(std::uint32_t value, int width = 0);
std::string toString(std::uint64_t value, int width = 0);

/// Fixed notation with `precision` digits behind the point.
std::string toString(double value, int width, int precision);

// Upper-case hexadecimal without a prefix, padded with "0" to `width`.
std::string toHexString(std::int8_t value, int width);
std::string toHexString(std::int16_t value, int width);
std::string toHexString(std::int32_t value, int width);
std::string toHexString(std::int64_t value, int width);
std::string toHexString(std::uint8_t value, int width);
std::string toHexString(std::uint16_t value, int width);
std::string toHexString(std::uint32_t value, int width);
std::string toHexString(std::uint64_t value, int width);

/// Two upper-case digits for each byte.
std::string bytesToHex(const std::uint8_t* bytes, std::size_t size);
std::string bytesToHex(const Payload& payload);

/// The text up to the first NUL, at most `size` bytes; empty for a null pointer.
std::string fromBytes(const std::uint8_t* bytes, std::size_t size);

// Byte by byte between string and wide string.
std::wstring widen(const std::string& text);
std::string narrow(const std::wstring& text);

/// Lines of offset, bytes and characters; the last line has no newline and isn't padded. With 0
/// bytes per line all stand on one line.
std::string hexDump(const std::uint8_t* bytes, std::size_t size, std::size_t bytesPerLine);
std::string hexDump(const Payload& payload, std::size_t bytesPerLine);

/// A size in "MB" to "PB", to the base 1000 if `decimal` is set, else 1024; cut to an integer or
/// with 2 digits behind the point.
std::string bytesToCapacityString(std::uint64_t bytes, bool decimal, bool wholeNumber);

// Operating-system helpers.

/// Folder of the running program with its "/" at the end; "./" if it can't be told.
std::string getExecutablePath();

/// Runs a shell command and returns its output, errors included, without newlines. `exitCode`
/// receives the shell's exit code, or 1 if the command could not be started.
std::string runCommand(const std::string& command, const std::string& arguments, int& exitCode);

/// Appends each line of the command's output to `lines`; false if it could not be started.
bool runCommandLines(const std::string& command, std::vector<std::string>& lines);

/// `dlopen` and `dlsym`, for code that needs no status.
void* loadLibrary(const std::string& path);
void* getSymbol(void* handle, const std::string& name);

}  // namespace orvel::core::strings
