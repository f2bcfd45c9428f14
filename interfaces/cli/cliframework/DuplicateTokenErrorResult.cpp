#include "interfaces/cli/cliframework/DuplicateTokenErrorResult.h"

namespace cli::framework {

DuplicateTokenErrorResult::DuplicateTokenErrorResult(const Token& token)
    : SyntaxErrorResult(stringFormat("Duplicate token found. The %s '%s' was found more than once.",
                                     tokenTypeToString(token.tokenType).c_str(),
                                     token.text.c_str())) {}

}  // namespace cli::framework
