// Looks into program files and lists of files, for the tests of what leaves the build.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace tavik::testing {

/// Runs the program (an absolute path, or a name that the path knows), which must succeed, in the
/// folder `/`, and gives what it wrote. Throws std::runtime_error with its errors otherwise.
std::string outputOf(const std::vector<std::string>& words);

std::vector<std::string> linesOf(const std::string& text);

/// The words of a line, cut at blanks.
std::vector<std::string> wordsOf(const std::string& line);

/// The values of the dynamic section's entries of this kind, such as "NEEDED": what stands behind
/// the kind in each line.
std::vector<std::string> dynamicEntries(const std::string& file, const std::string& kind);

/// The names of the libraries that the loader must find for the file.
std::set<std::string> neededLibraries(const std::string& file);

}  // namespace tavik::testing
