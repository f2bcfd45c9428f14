// A whole-program case: a folder of files that say what to type and what must come back.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavik::golden {

using Files = std::map<std::string, std::string>;  ///< bytes by path, relative to their folder

struct GoldenCase {
    std::vector<std::string> words;  ///< behind the program's name
    int code = 0;
    std::string out;
    std::string err;
    Files outByFormat;  ///< by the word behind `-output`

    std::optional<std::string> input;
    bool isInputClosed = false;
    std::optional<unsigned short> columns;

    std::map<std::string, std::string> variants;  ///< of the library, by place: "exe", "opt"
    Files orders;
    Files requests;  ///< by file name
    std::optional<std::string> calls;

    std::optional<std::string> config;  ///< nothing for no file
    std::optional<std::string> configAfter;
    bool isConfigFolder = false;

    Files files;  ///< that the command leaves in its working directory
};

/// Cuts a line at blanks; '...' and "..." keep theirs and may hold the other quote. Throws
/// std::runtime_error for a quote without an end.
std::vector<std::string> splitWords(const std::string& line);

/// Throws std::runtime_error for a folder that lacks a file, has one that means nothing, or says
/// something that can't be.
GoldenCase readCase(const std::filesystem::path& folder);

/// The folders below `root` that are cases: those with a file or with nothing in them.
std::vector<std::filesystem::path> findCases(const std::filesystem::path& root);

/// Every file below `folder`; for an empty folder, a link or a special file a word for its kind.
/// What `without` names is left out.
Files readFiles(const std::filesystem::path& folder, const std::set<std::string>& without = {});

}  // namespace tavik::golden
