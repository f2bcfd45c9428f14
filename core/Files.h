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

/// Replaces the plain file `path`, or makes it, by writing beside it, flushing to disk and
/// renaming; an old file keeps its mode and owner. What exists and is no plain file (a device, a
/// pipe, a link) is written to and never replaced. Where the folder takes no new file but the
/// file itself can be written, it is written over. False if the bytes could not be written; an
/// old plain file is then as it was.
bool replace(const std::string& path, std::string_view bytes);

}  // namespace orvel::core::files
