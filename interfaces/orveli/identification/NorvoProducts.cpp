#include "interfaces/orveli/identification/NorvoProducts.h"

#include "core/Strings.h"
#include "features/ProductIdentifiers.h"

#include <string_view>
#include <vector>

namespace orvel::interfaces::orveli::identification {

namespace products = orvel::features::product_identifiers::norvo_ssd::products;

namespace {

constexpr const char* MAKER = "NORVO";

// clang-format off
constexpr NorvoProduct PRODUCTS[] = {
//   series    product                family
    {"NX4510", products::Quillbrook,  "Norvo SSD NX4510 Series"},
    {"NX4610", products::Rowanlade,   "Norvo SSD NX4610 Series"},
    {"SX3110", products::Sablewold,   "Norvo SSD SX3110 Series"},
    {"SX3520", products::Ravenstow,   "Norvo SSD SX3520 Series"},
};

// clang-format on

/// The model's words if it is one of the maker's, else none.
std::vector<std::string> wordsOf(const std::string& modelNumber) {
    auto words = core::strings::split(modelNumber, ' ');
    const bool isNorvo = words.size() >= 2 && words[0] == MAKER && !words[1].empty();
    if (!isNorvo) words.clear();
    return words;
}

}  // namespace

bool isNorvoModel(const std::string& modelNumber) {
    return !wordsOf(modelNumber).empty();
}

const NorvoProduct* findProduct(const std::string& modelNumber) {
    const auto words = wordsOf(modelNumber);
    if (words.empty()) return nullptr;
    for (const NorvoProduct& product : PRODUCTS) {
        if (words[1] == product.series) return &product;
    }
    return nullptr;
}

}  // namespace orvel::interfaces::orveli::identification
