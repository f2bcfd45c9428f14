// The one object that turns a command line into a result.
#pragma once

#include "interfaces/cli/cliframework/CommandRef.h"
#include "interfaces/cli/cliframework/FeatureBase.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cli::framework {

class Parser;

/// Holds the registry of features, collects every command that they declare, narrows these down
/// to the one that the line means, and calls its feature. One thread.
class Framework {
public:
    /// The instance, made with its `HelpFeature` if there is none.
    static Framework& getInstance();

    /// Ends the instance with its features and lists. A later `getInstance` makes a fresh one.
    static void tearDown();

    ~Framework();

    /// Takes `feature` over and returns true. With a key that is present nothing changes and the
    /// feature stays with the caller; null is not taken either.
    bool addFeature(const std::string& key, std::unique_ptr<FeatureBase>&& feature);
    void removeFeature(const std::string& key);
    void clearFeatureList();

    /// Carries out one line, given without the program name.
    std::unique_ptr<ResultBase> execute(const std::vector<std::string>& args);
    std::unique_ptr<ResultBase> execute(int argc, const char* const* argv);

    /// Every command of every feature, in the order of the feature keys, each with the options
    /// -help and -output.
    std::vector<CommandRef> buildCommands();

    std::vector<Token> tokenize(int argc, const char* const* argv,
                                const std::vector<CommandRef>& commands) const;

    /// Drops each command of which a required part of the kind `tokenType` was not found.
    void filterIncompleteCommands(TokenType tokenType, std::vector<CommandRef>& commands);

    /// Carries out the one command that `parser` left: checks what the line says, then runs the
    /// command's feature, or its help if the line has -help.
    static std::unique_ptr<ResultBase> runCommand(const CommandRef& command, const Parser& parser);

    /// The list of parts of a kind; null for kinds that have none.
    static const std::vector<CommandPart>* getCommandPart(TokenType tokenType,
                                                          const CommandSpec& command);

    static std::string tokenArrayToString(int argc, const char* const* argv);
    static std::string tokenArrayToString(const std::vector<Token>& tokens);

    std::string programName;  ///< first word of the process's arguments; empty at first

    static bool instanceFlag;                          ///< true while the instance exists
    static std::unique_ptr<Framework> pFrameworkInst;  ///< the instance

private:
    Framework() = default;

    /// Drops the commands whose required parts are missing from the line.
    void narrow(std::vector<CommandRef>& commands);

    /// As `narrow`, for a line that asks for help: only as far as needed to tell which command
    /// is meant.
    void narrowForHelp(std::vector<CommandRef>& commands);

    /// Runs the command left; none left and more than one left are refused.
    std::unique_ptr<ResultBase> runOnlyCommand(const std::vector<CommandRef>& commands,
                                               const Parser& parser);

    std::map<std::string, std::unique_ptr<FeatureBase>> features;
    std::vector<CommandSpec> filteredCommands;  ///< dropped during the current `execute`
};

}  // namespace cli::framework
