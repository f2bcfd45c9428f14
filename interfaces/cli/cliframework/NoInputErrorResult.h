// A line without a single token.
#pragma once

#include "interfaces/cli/cliframework/SyntaxErrorResult.h"

namespace cli::framework {

class NoInputErrorResult : public SyntaxErrorResult {
public:
    NoInputErrorResult();
};

}  // namespace cli::framework
