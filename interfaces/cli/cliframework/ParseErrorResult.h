// A line that the grammar or the declared commands refuse.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class ParseErrorResult : public SyntaxErrorResult {
public:
    ParseErrorResult();

    /// Names the token that was refused.
    explicit ParseErrorResult(const Token& token);
};

}  // namespace cli::framework
