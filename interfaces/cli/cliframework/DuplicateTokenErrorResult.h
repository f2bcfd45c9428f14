// An option, target or property that a line names twice.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class DuplicateTokenErrorResult : public SyntaxErrorResult {
public:
    explicit DuplicateTokenErrorResult(const Token& token);
};

}  // namespace cli::framework
