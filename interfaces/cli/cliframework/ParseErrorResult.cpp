#include "interfaces/cli/cliframework/ParseErrorResult.h"

namespace cli::framework {

ParseErrorResult::ParseErrorResult() : SyntaxErrorResult("Invalid command.") {}

ParseErrorResult::ParseErrorResult(const Token& token)
    : SyntaxErrorResult(
          stringFormat("Invalid command. Error at or around '%s'.", token.text.c_str())) {}

}  // namespace cli::framework
