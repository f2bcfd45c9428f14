// A value for a part that takes none, or not this one.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class SyntaxErrorBadValueResult : public SyntaxErrorResult {
public:
    SyntaxErrorBadValueResult(TokenType tokenType, const std::string& name,
                              const std::string& value);
};

}  // namespace cli::framework
