// A declared command together with the feature that carries it out.
#pragma once

#include "interfaces/cli/cliframework/CommandSpec.h"

#include <utility>

namespace cli::framework {

class FeatureBase;

/// Entry of the framework's and the parser's working lists.
struct CommandRef : CommandSpec {
    CommandRef() = default;

    CommandRef(CommandSpec spec, FeatureBase* owner)
        : CommandSpec(std::move(spec)),
          feature(owner) {}

    FeatureBase* feature = nullptr;  ///< borrowed from the framework's registry; may be null
};

}  // namespace cli::framework
