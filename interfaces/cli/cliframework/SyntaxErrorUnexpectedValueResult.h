// A value for an option that accepts none.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class SyntaxErrorUnexpectedValueResult : public SyntaxErrorResult {
public:
    SyntaxErrorUnexpectedValueResult(TokenType tokenType, const std::string& name);
};

}  // namespace cli::framework
