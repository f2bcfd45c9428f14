// Runs the tool on a case in a folder of its own and holds the outcome against the case.
#pragma once

#include "tests/golden/GoldenCase.h"

#include <filesystem>

namespace tavik::golden {

/// What stays the same for all cases.
struct Workshop {
    std::filesystem::path program;   ///< the tool, its installation folder being `opt`
    std::filesystem::path variants;  ///< of the stand-in library, a folder each
};

/// Runs the case as typed, and once more for each format that it has an output for. Each
/// difference becomes a failure of the running test.
void expectOutcome(const GoldenCase& golden, const Workshop& workshop);

}  // namespace tavik::golden
