// The drive families that the tool serves: what every request tells the feature library.
#pragma once

#include "features/ProductIdentifiers.h"

#include <iterator>

namespace tavik::norvossd {

namespace products = orvel::features::product_identifiers::norvo_ssd::products;

inline constexpr const char* SUPPORTED_PRODUCTS[] = {
    products::Aldermoor,         products::Ashlade,     products::Bexmere,
    products::Brackenway_Point,  products::Brenwick,    products::Carrowby,
    products::Cobblegate_Reach,  products::Crosswick,   products::Deepholm,
    products::Eldermoor,         products::Emberlade,   products::Farrowgate,
    products::Fernstead_Reach,   products::Galemoor,    products::Gorsewick,
    products::Hallowstow,        products::Hazelholt,   products::Inglemoor,
    products::Ivystead,          products::Juniperwick, products::Kindlewold,
    products::Lavenstow,         products::Maplewold,   products::Marrowby,
    products::Merrowstead_Reach, products::Netherwold,  products::Oakenstow,
    products::Orrismere_Point,   products::Pennymarsh,  products::Quillbrook,
    products::Ravenstow,         products::Rowanlade,   products::Sablewold,
    products::Sedgeholm_Point,   products::Swanlade,    products::Tealmarsh,
    products::Umberholt,         products::Wrenstow,
};

static_assert(std::size(SUPPORTED_PRODUCTS) == 38);

}  // namespace tavik::norvossd
