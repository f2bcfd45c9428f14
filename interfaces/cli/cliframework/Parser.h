// Walks the tokens of one line as a state machine and narrows the candidate commands.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "interfaces/cli/cliframework/CommandRef.h"
#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

#include <memory>
#include <string>
#include <vector>

namespace cli::framework {

/// Records what a line says in a `ParsedCommand` and removes every candidate that does not
/// declare what the line names.
///
/// Line: Verb option* target* property*, strictly in this order.
class Parser {
public:
    /// Works through `tokens`, narrowing `commands` in place; null as `commands` skips the
    /// narrowing. Returns null for a well-formed line. Starts from a cleared parser.
    std::unique_ptr<SyntaxErrorResult> parse(const std::vector<Token>& tokens,
                                             std::vector<CommandRef>* commands);

    /// Empties the verb, the three maps and the removed commands.
    void initialize();

    ParsedCommand getParsedCommand() const { return parsedCommand; }

    /// Look-ups by exact name: the value, or the empty string for an absent key; `found`, unless
    /// null, tells the two apart.
    static std::string getOptionValue(const ParsedCommand& parsed, const std::string& key,
                                      bool* found = nullptr);
    static std::string getTargetValue(const ParsedCommand& parsed, const std::string& key,
                                      bool* found = nullptr);
    static std::string getPropertyValue(const ParsedCommand& parsed, const std::string& key,
                                        bool* found = nullptr);

    /// As `getTargetValue`, cut at ","; an empty or absent value gives an empty list.
    static std::vector<std::string> getTargetValues(const ParsedCommand& parsed,
                                                    const std::string& key, bool* found = nullptr);

    /// Value rules of the one command left; null if they hold.
    std::unique_ptr<SyntaxErrorResult> checkParsedCommand(const CommandSpec& command) const;
};

}  // namespace cli::framework
