#include "interfaces/cli/cliframework/SyntaxErrorUnexpectedValueResult.h"

namespace cli::framework {

// Intended: unlike the missing and the bad value, the type word keeps its capital.
SyntaxErrorUnexpectedValueResult::SyntaxErrorUnexpectedValueResult(TokenType tokenType,
                                                                   const std::string& name)
    : SyntaxErrorResult(stringFormat("%s '%s' does not accept a value.",
                                     tokenTypeToString(tokenType).c_str(), name.c_str())) {}

}  // namespace cli::framework
