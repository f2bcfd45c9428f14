// Turns the raw words of one command line into classified tokens.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"

#include <string>
#include <string_view>
#include <vector>

namespace cli::framework {

/// Knows no grammar: only the four vocabularies that the commands declare, and how words are cut
/// at "=" and ",". Refuses nothing.
class Lexer {
public:
    /// Copies the vocabularies. Targets and options that lack a leading "-" get one. Entries may
    /// repeat.
    Lexer(std::vector<std::string> verbs, std::vector<std::string> targets,
          std::vector<std::string> options, std::vector<std::string> properties);

    std::vector<Token> tokenize(int argc, const char* const* argv) const;
    std::vector<Token> tokenize(const std::vector<std::string>& words) const;

private:
    /// The token of one piece: with the entry's spelling if a vocabulary has it, as typed if not.
    Token classify(std::string_view item) const;

    std::vector<std::string> verbs;
    std::vector<std::string> targets;
    std::vector<std::string> options;
    std::vector<std::string> properties;
};

}  // namespace cli::framework
