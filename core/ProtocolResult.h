// What a transport itself says about a command that it carried.
#pragma once

#include "core/xml/XmlElement.h"

#include <memory>
#include <string>

namespace orvel::core {

/// Base of a protocol's results: an NVMe completion entry, a returned task file.
class ProtocolResult {
public:
    virtual ~ProtocolResult() = default;

    /// A new copy.
    virtual std::unique_ptr<ProtocolResult> clone() const = 0;

    /// The result as lines of text, without a newline at the end.
    virtual std::string toString() const = 0;

    /// The result as a new element, by custom an object of category "protocolResult".
    virtual std::unique_ptr<xml::XmlElement> toXml() const = 0;

protected:
    ProtocolResult() = default;
    ProtocolResult(const ProtocolResult&) = default;
    ProtocolResult& operator=(const ProtocolResult&) = default;
};

}  // namespace orvel::core
