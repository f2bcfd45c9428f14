// Whole files: read at once, and replaced so that a crash leaves the old or the new one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvel::core::files {

/// The bytes of a plain file, following links. Nothing if it can't be read, is no plain file, or
/// is larger than `limit` bytes. Never blocks on a pipe.
std::optional<std::string> read(const std::string& path, std::size_t limit);

/// Whether a plain file of this path can be opened for reading.
bool isReadable(const std::string& path);

/// The plain file that the link `path` leads to. `path` itself if it is anything else, also a link
/// to nowhere. What `replace` does to the outcome, it does beside the target: the link stays.
std::string resolve(const std::string& path);

/// Replaces the plain file `path`, or makes it, by writing beside it, flushing to disk and
/// renaming; an old file keeps its mode and owner. What exists and is no plain file (a device, a
/// pipe, a link) is written to and never replaced. A file is written over in place, too, if it
/// has other names, if its folder takes no new file, or if a new one could not have its mode and
/// owner: safe from a failure, but not from a crash in the middle of it.
///
/// False if the bytes could not be written; an old plain file is then as it was. The exception is
/// one that is written over and may not be read: it keeps its length, but perhaps not its bytes.
///
/// The process must live on after SIGPIPE and SIGXFSZ, which writing can raise.
bool replace(const std::string& path, std::string_view bytes);

/// Replaces the plain file `path`, or makes it, by renaming and in no other way: whatever happens,
/// it has the old bytes or the new ones. Keeps the mode, and the owner if the system allows that;
/// another name of the old file keeps the old bytes. False, with the old file as it was, if the
/// bytes could not be written, if the old file may not be written to, or is no plain file (links
/// are not followed).
///
/// The new bytes stand in `.<name>.new` beside it until then. A process that is killed leaves that
/// file behind, and the next replacement takes it away. So only one at a time may replace a path.
bool replaceByRename(const std::string& path, std::string_view bytes);

}  // namespace orvel::core::files
