#include "interfaces/cli/cliframework/NotImplementedErrorResult.h"

#include <utility>

namespace cli::framework {

NotImplementedErrorResult::NotImplementedErrorResult(std::int32_t commandSpecId,
                                                     std::string featureName)
    : ErrorResult(
          3, stringFormat("CommandSpecId %d of Feature %s is not supported in the current context.",
                          commandSpecId, featureName.c_str())),
      commandSpecId(commandSpecId),
      featureName(std::move(featureName)) {}

}  // namespace cli::framework
