// A part that was named without the value it needs.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class SyntaxErrorMissingValueResult : public SyntaxErrorResult {
public:
    SyntaxErrorMissingValueResult(TokenType tokenType, const std::string& name);
};

}  // namespace cli::framework
