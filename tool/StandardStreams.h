// The process's standard streams, made safe to use whatever state the caller left them in.
#pragma once

#include <string_view>

namespace tavik::standard_streams {

/// To be called first in the process. Opens /dev/null in place of a closed stream, so that no
/// file or device opened later gets its number and the text meant for it. Keeps a closed pipe or
/// a full file-size limit from ending the process by a signal: the write fails instead. Lets
/// standard input be read one byte at a time, leaving the rest to whoever reads next.
void prepare();

/// Writes all of `text` to standard output; false if it did not take it all.
bool writeOutput(std::string_view text);

}  // namespace tavik::standard_streams
