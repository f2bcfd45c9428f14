// Fills in what NVMe drives tell of themselves.
#pragma once

#include "core/ProtocolIdentifier.h"

namespace orvel::interfaces::orveli::identification {

/// Asks by Identify Controller and Identify Namespace of the first active namespace. A command that
/// fails leaves its attributes away, and sets ErrorString to the failure's words and
/// DriverCommunicationError to its code. A device of another kind stays as it is.
class NvmeProtocolIdentifier : public core::ProtocolIdentifier {
public:
    /// The last failure; throws nothing.
    core::Status identify(core::Device& device) override;
    std::unique_ptr<core::ProtocolIdentifier> clone() const override;
};

}  // namespace orvel::interfaces::orveli::identification
