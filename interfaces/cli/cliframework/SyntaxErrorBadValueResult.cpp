#include "interfaces/cli/cliframework/SyntaxErrorBadValueResult.h"

namespace cli::framework {

SyntaxErrorBadValueResult::SyntaxErrorBadValueResult(TokenType tokenType, const std::string& name,
                                                     const std::string& value)
    : SyntaxErrorResult(stringFormat(BAD_VALUE_FORMAT, value.c_str(),
                                     toLower(tokenTypeToString(tokenType)).c_str(), name.c_str())) {
}

}  // namespace cli::framework
