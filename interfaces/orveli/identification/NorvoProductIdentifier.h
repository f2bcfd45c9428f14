// Fills in which of the maker's products a drive is.
#pragma once

#include "core/ProductIdentifier.h"

namespace orvel::interfaces::orveli::identification {

/// Judges by the model number and the protocol that the protocol identifiers filled in.
class NorvoProductIdentifier : public core::ProductIdentifier {
public:
    /// Success always. A drive of another maker is told by Norvo = False; one of the maker's in no
    /// known series has no Product and no ProductFamily.
    core::Status identify(core::Device& device) override;
    std::unique_ptr<core::ProductIdentifier> clone() const override;
};

}  // namespace orvel::interfaces::orveli::identification
