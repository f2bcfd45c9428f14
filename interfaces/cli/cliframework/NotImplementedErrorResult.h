// The answer to a command id that a feature has no code for.
#pragma once

#include "interfaces/cli/cliframework/ErrorResult.h"

#include <cstdint>
#include <string>

namespace cli::framework {

class NotImplementedErrorResult : public ErrorResult {
public:
    /// Code 3.
    NotImplementedErrorResult(std::int32_t commandSpecId, std::string featureName);

    std::int32_t getCommandSpecId() const { return commandSpecId; }

    std::string getFeatureName() const { return featureName; }

private:
    std::int32_t commandSpecId;
    std::string featureName;
};

}  // namespace cli::framework
