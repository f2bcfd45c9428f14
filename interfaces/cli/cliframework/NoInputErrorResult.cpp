#include "interfaces/cli/cliframework/NoInputErrorResult.h"

namespace cli::framework {

NoInputErrorResult::NoInputErrorResult() : SyntaxErrorResult("No Input.") {}

}  // namespace cli::framework
