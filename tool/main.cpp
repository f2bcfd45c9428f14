// The whole life of a run: make the features, carry the line out, tear down, print the result.

#include "interfaces/cli/cliframework/Framework.h"
#include "tool/NorvoSSDFeature.h"
#include "tool/StandardStreams.h"
#include "tool/SystemFeature.h"
#include "tool/VersionFeature.h"

#include <malloc.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

/// An answer is turned from tree to tree, each freed bit by bit while the next one grows. Small
/// pieces that wait in the allocator's lists to be merged later cost a third of a long run.
void mergeFreedMemoryAtOnce() {
    ::mallopt(M_MXFAST, 0);
}

}  // namespace

int main(int argc, char* argv[]) {
    using cli::framework::Framework;

    mergeFreedMemoryAtOnce();
    tavik::standard_streams::prepare();

    Framework& framework = Framework::getInstance();
    framework.addFeature("NorvoSSD", std::make_unique<tavik::norvossd::NorvoSSDFeature>());
    framework.addFeature("Version", std::make_unique<cli::version::VersionFeature>());
    framework.addFeature("System", std::make_unique<tavik::system::SystemFeature>());
    if (argc > 0) framework.programName = argv[0];

    const std::vector<std::string> line(argv + (argc > 0 ? 1 : 0), argv + argc);
    const auto result = framework.execute(line);

    // The feature library is unloaded before a byte of the result is written.
    Framework::tearDown();
    if (result == nullptr) return 0;

    const std::int32_t code = result->getErrorCode();
    // In one piece, so that runs which share an output do not mix their lines.
    std::string text = result->output();
    text += '\n';
    // An output that takes no more does not change the outcome of the command.
    static_cast<void>(tavik::standard_streams::writeOutput(text));
    return code;
}
