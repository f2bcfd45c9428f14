#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

#include <utility>

namespace cli::framework {

SyntaxErrorResult::SyntaxErrorResult() : SyntaxErrorResult(std::string()) {}

SyntaxErrorResult::SyntaxErrorResult(std::string message)
    : ErrorResult(SYNTAX_ERROR_CODE, std::move(message)) {}

void SyntaxErrorResult::setPotentialCommands(std::vector<CommandSpec> commands) {
    potentialCommands = std::move(commands);
}

std::string SyntaxErrorResult::outputText() const {
    std::string text = ErrorResult::outputText();
    if (!potentialCommands.empty()) text += "\nDid you mean: \n";
    for (const CommandSpec& command : potentialCommands) {
        text += command.asStr();
        text += '\n';
    }
    return text;
}

std::string SyntaxErrorResult::outputXml() const {
    return ErrorResult::outputXml();
}

std::string SyntaxErrorResult::outputEsxXml() const {
    return ErrorResult::outputEsxXml();
}

std::string SyntaxErrorResult::outputJson() const {
    return ErrorResult::outputJson();
}

std::string SyntaxErrorResult::outputCSV() const {
    return ErrorResult::outputCSV();
}

}  // namespace cli::framework
