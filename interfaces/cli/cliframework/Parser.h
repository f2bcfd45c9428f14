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
    /// Works through `tokens`, narrowing `candidates` in place; null as `candidates` skips the
    /// narrowing. Returns null for a well-formed line. Starts from a cleared parser.
    std::unique_ptr<SyntaxErrorResult> parse(const std::vector<Token>& tokens,
                                             std::vector<CommandRef>* candidates);

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

    /// Removes each command of another verb. All filters work on the commands given to `parse`
    /// and do nothing if these were null.
    void filterOnVerb(const std::string& verbText);

    /// Removes each command that does not declare the option, target or property `token`, and
    /// marks the part as found in those that do. Returns whether commands are left.
    bool filterOn(const Token& token);

    void eraseAllRemainingCommands();

private:
    /// Who takes the next token; the two commas differ in whose value goes on.
    enum class State {
        Verb,
        Option,
        OptionValue,
        OptionComma,
        Target,
        TargetValue,
        TargetComma,
        Property,
        Equals,
        PropertyValue,
        End,
    };

    /// What a state decided: who takes the next token, or the end of the walk with its result,
    /// which is null for a well-formed line.
    struct Step {
        State next = State::End;
        std::unique_ptr<SyntaxErrorResult> result = nullptr;
    };

    std::unique_ptr<SyntaxErrorResult> parseLine(const std::vector<Token>& tokens);
    std::unique_ptr<SyntaxErrorResult> walkStates(const std::vector<Token>& tokens);
    std::unique_ptr<SyntaxErrorResult> filterOnOptions();
    void applyOutputRule(const std::vector<Token>& tokens);

    // Each state does its own token's work and then looks at the type of the token behind it;
    // `next` is null at the end of the line.
    Step runState(State state, const Token& token, const Token* next);
    Step stateVerb(const Token& token, const Token* next);
    Step stateOption(const Token& token, const Token* next);
    Step stateOptionValue(const Token& token, const Token* next);
    Step stateTarget(const Token& token, const Token* next);
    Step stateTargetValue(const Token& token, const Token* next);
    Step stateComma(const Token* next, TokenType kind);
    Step stateProperty(const Token& token, const Token* next);
    Step stateEquals(const Token& token, const Token* next);
    Step statePropertyValue(const Token& token, const Token* next);

    /// Ends the line at a token that has no place there; all commands left are offered.
    Step refuse(const Token& token);

    /// For an option, target or property that no command left has: offers those that the latest
    /// filter removed.
    std::unique_ptr<SyntaxErrorResult> unknownPart(const Token& token) const;

    /// Moves each command for which `keep` is false to the removed ones, the last one first.
    template <typename Keep>
    void removeUnless(Keep keep);

    std::vector<CommandRef>* commands = nullptr;  ///< borrowed from the caller of `parse`
    ParsedCommand parsedCommand;
    std::string currentProperty;
    std::string currentOption;
    std::string currentTarget;
    std::vector<CommandSpec> removedCommands;  ///< by the latest filter
};

}  // namespace cli::framework
