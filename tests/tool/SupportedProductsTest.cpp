// The drive families that every request names.
#include "tool/SupportedProducts.h"

#include <gtest/gtest.h>

#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace tavik::norvossd {
namespace {

TEST(SupportedProducts, AreThirtyEightFamiliesInAFixedOrder) {
    const std::vector<std::string> expected = {
        // clang-format off
        "Aldermoor",
        "Ashlade",
        "Bexmere",
        "Brackenway Point",
        "Brenwick",
        "Carrowby",
        "Cobblegate Reach",
        "Crosswick",
        "Deepholm",
        "Eldermoor",
        "Emberlade",
        "Farrowgate",
        "Fernstead Reach",
        "Galemoor",
        "Gorsewick",
        "Hallowstow",
        "Hazelholt",
        "Inglemoor",
        "Ivystead",
        "Juniperwick",
        "Kindlewold",
        "Lavenstow",
        "Maplewold",
        "Marrowby",
        "Merrowstead Reach",
        "Netherwold",
        "Oakenstow",
        "Orrismere Point",
        "Pennymarsh",
        "Quillbrook",
        "Ravenstow",
        "Rowanlade",
        "Sablewold",
        "Sedgeholm Point",
        "Swanlade",
        "Tealmarsh",
        "Umberholt",
        "Wrenstow",
        // clang-format on
    };

    const std::vector<std::string> names(std::begin(SUPPORTED_PRODUCTS),
                                         std::end(SUPPORTED_PRODUCTS));

    EXPECT_EQ(names, expected);
    EXPECT_EQ(names.size(), 38U);
}

TEST(SupportedProducts, AreToldApart) {
    const std::set<std::string> distinct(std::begin(SUPPORTED_PRODUCTS),
                                         std::end(SUPPORTED_PRODUCTS));

    EXPECT_EQ(distinct.size(), 38U);
}

TEST(SupportedProducts, CanBeJoinedAndCutAgain) {
    for (const std::string name : SUPPORTED_PRODUCTS) {
        EXPECT_FALSE(name.empty());
        EXPECT_EQ(name.find_first_of("~<>&\"'"), std::string::npos) << name;
    }
}

}  // namespace
}  // namespace tavik::norvossd
