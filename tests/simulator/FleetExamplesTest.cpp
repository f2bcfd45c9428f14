// The descriptions of fleets in docs/simulated-drives.md.
#include "simulator/FleetText.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace orvel::simulator {

namespace {

/// What stands between "```json" and "```".
std::vector<std::string> examples() {
    std::ifstream page(SIMULATED_DRIVES_PAGE);
    std::vector<std::string> all;
    bool isInside = false;
    for (std::string line; std::getline(page, line);) {
        if (line == "```json") {
            all.emplace_back();
            isInside = true;
        } else if (line == "```") {
            isInside = false;
        } else if (isInside) {
            all.back() += line + "\n";
        }
    }
    return all;
}

TEST(FleetExamples, OfThePageAreRead) {
    constexpr std::size_t DRIVES[] = {2, 2, 3, 1, 1, 1};
    const std::vector<std::string> all = examples();
    ASSERT_EQ(all.size(), std::size(DRIVES));
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(all[i]);
        try {
            EXPECT_EQ(readFleet(all[i], Unmentioned::TYPICAL).drives.size(), DRIVES[i]);
        } catch (const FleetTextError& error) {
            ADD_FAILURE() << error.what();
        }
    }
}

}  // namespace

}  // namespace orvel::simulator
