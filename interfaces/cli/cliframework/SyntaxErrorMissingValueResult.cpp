#include "interfaces/cli/cliframework/SyntaxErrorMissingValueResult.h"

namespace cli::framework {

SyntaxErrorMissingValueResult::SyntaxErrorMissingValueResult(TokenType tokenType,
                                                             const std::string& name)
    : SyntaxErrorResult(stringFormat(MISSING_VALUE_FORMAT,
                                     toLower(tokenTypeToString(tokenType)).c_str(), name.c_str())) {
}

}  // namespace cli::framework
