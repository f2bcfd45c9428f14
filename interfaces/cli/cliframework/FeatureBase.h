// The interface of everything that can contribute commands, and the comparator that orders them.
#pragma once

#include "interfaces/cli/cliframework/CliFrameworkTypes.h"
#include "interfaces/cli/cliframework/CommandRef.h"
#include "interfaces/cli/cliframework/ResultBase.h"

#include <memory>
#include <vector>

namespace cli::framework {

/// A feature declares its commands in `getPaths` and carries them out in `run`.
class FeatureBase {
public:
    FeatureBase() = default;
    FeatureBase(const FeatureBase&) = delete;
    FeatureBase& operator=(const FeatureBase&) = delete;
    virtual ~FeatureBase() = default;

    /// Carries out `command`; never returns null.
    virtual std::unique_ptr<ResultBase> run(const CommandSpec& command,
                                            const ParsedCommand& parsed) = 0;

    /// Checks the options that every command shares; null lets the command go on.
    virtual std::unique_ptr<ResultBase> validate(const ParsedCommand& parsed);

    /// Appends the declarations of this feature's commands.
    virtual void getPaths(std::vector<CommandSpec>& commands) = 0;
};

/// Whether `a` goes before `b` in lists of commands: descending by the letters of the name of the
/// second option, but a name that is a prefix of the other comes first.
bool SortOption(const CommandRef& a, const CommandRef& b);

}  // namespace cli::framework
