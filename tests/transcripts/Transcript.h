// What somebody types at a shell, line by line, and every byte that comes back.
#pragma once

#include <string>
#include <vector>

namespace tavik::transcripts {

/// One line typed, and what it comes to.
struct Step {
    std::string command;  ///< for the shell
    std::string out;
    std::string err;
    int code = 0;
};

/// Reads a transcript. A line that starts with "$ " is typed. What follows until the next such
/// line is standard output, but for lines that start with "2> ", which are standard error, and a
/// last line such as "[3]", the exit code if it isn't 0. Lines before the first "$ " are comments.
/// Output whose last line has no line feed reads as if it had one.
std::vector<Step> readTranscript(const std::string& text);

/// The transcripts among a page's blocks: those between "```console" and "```", joined.
std::string transcriptOfPage(const std::string& markdown);

/// The steps as text, for people who compare.
std::string writeTranscript(const std::vector<Step>& steps);

}  // namespace tavik::transcripts
