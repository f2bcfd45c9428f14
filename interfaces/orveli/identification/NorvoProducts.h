// Norvo's drives by what their model numbers say.
#pragma once

#include <string>

namespace orvel::interfaces::orveli::identification {

/// A series of drives.
struct NorvoProduct {
    const char* series;   ///< the second word of the model number
    const char* product;  ///< the family's code name, one of features/ProductIdentifiers.h
    const char* family;   ///< for people
};

/// Whether the model number is one of the maker's: "NORVO" and another word.
bool isNorvoModel(const std::string& modelNumber);

/// The series of a model number such as "NORVO NX4510 1.6TB", or null.
const NorvoProduct* findProduct(const std::string& modelNumber);

}  // namespace orvel::interfaces::orveli::identification
