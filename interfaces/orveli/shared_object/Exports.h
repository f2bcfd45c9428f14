// What a feature library exports: plain C, for programs that open the library at run time.
//
// Every function may be called from several threads at once. None lets an exception out.
#pragma once

#include <cstdint>

#pragma GCC visibility push(default)
extern "C" {

/// The version of this interface: 20000400.
std::uint64_t GetVer();

/// Makes the library ready; 0 for success. Calls count: as many calls of `Unload` undo it.
std::uint32_t Load(std::int32_t mode);

/// Forgets all answers when it was called as often as `Load`.
void Unload();

/// Carries the request out, which is `length` bytes of XML text, and puts a handle for its answer
/// into `handle`. 0 for success; otherwise a code of the job interface's statuses and handle 0: 6
/// for a null pointer, no byte or more than 64 MiB, 7 before `Load`; or 12 if memory ran out.
std::uint32_t SendXMLMessage(const char* request, std::uint32_t length, std::uint64_t* handle);

/// Copies the answer into `buffer`, of `size` bytes, and forgets it; 0 for success, with the
/// answer's length in `size`. 8 for a null or too short buffer, with the needed length in `size`;
/// the answer stays. 1 for a handle without an answer, 6 for a null `size`, 7 before `Load`, 12 if
/// memory ran out.
std::uint32_t ReceiveXMLMessage(std::uint64_t handle, void* buffer, std::uint32_t* size);

/// Lets the tool-kit's log go to the end of this file; 0 for success, 6 for a file that can't be
/// opened or is no plain one, or a null pointer. `severity` is the least severe kind of line, 0
/// trace to 5 fatal.
std::uint32_t EnableLogger(const char* path, std::uint32_t length, std::uint32_t reserved,
                           std::uint32_t severity);

/// Whether the adapter library of this path is of use. None is: drives behind such adapters aren't
/// simulated.
std::uint8_t SetLSIPath(const char* path, std::uint32_t length);

}  // extern "C"
#pragma GCC visibility pop
