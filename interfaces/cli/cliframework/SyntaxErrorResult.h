// Refusal of a command line, with the commands that almost matched.
#pragma once

#include "interfaces/cli/cliframework/CommandSpec.h"
#include "interfaces/cli/cliframework/ErrorResult.h"

#include <string>
#include <vector>

namespace cli::framework {

/// Code 201. The text format lists the potential commands under "Did you mean: ".
class SyntaxErrorResult : public ErrorResult {
public:
    SyntaxErrorResult();
    explicit SyntaxErrorResult(std::string message);

    void setPotentialCommands(std::vector<CommandSpec> commands);

    std::string outputText() const override;
    std::string outputXml() const override;
    std::string outputEsxXml() const override;
    std::string outputJson() const override;
    std::string outputCSV() const override;

private:
    std::vector<CommandSpec> potentialCommands;
};

}  // namespace cli::framework
