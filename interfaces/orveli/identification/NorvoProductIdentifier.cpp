#include "interfaces/orveli/identification/NorvoProductIdentifier.h"

#include "core/Device.h"
#include "features/DeviceAttributes.h"
#include "features/ProductIdentifiers.h"
#include "interfaces/orveli/identification/Identification.h"
#include "interfaces/orveli/identification/NorvoProducts.h"

namespace orvel::interfaces::orveli::identification {

using core::Device;
using core::Status;
namespace attributes = orvel::features::device_attributes;
namespace norvo_ssd = orvel::features::product_identifiers::norvo_ssd;

namespace {

constexpr const char* VENDOR = "Norvo";

}  // namespace

Status NorvoProductIdentifier::identify(Device& device) {
    const std::string model = device.readText(attributes::ModelNumber());
    const std::string protocol = device.readText(attributes::ProductProtocol());
    const bool isNorvo = isNorvoModel(model);
    store(device, attributes::Norvo(), isNorvo);
    store(device, attributes::NorvoNVMe(), isNorvo && protocol == norvo_ssd::protocols::NVME);
    store(device, attributes::NorvoGen3SATA(), isNorvo && device.isSet(attributes::SataGen3()));
    if (isNorvo) store(device, attributes::Vendor(), VENDOR);
    if (const NorvoProduct* product = findProduct(model)) {
        store(device, attributes::Product(), product->product);
        store(device, attributes::ProductFamily(), product->family);
        store(device, attributes::OEM(), norvo_ssd::oems::Generic);
    }
    return {};
}

std::unique_ptr<core::ProductIdentifier> NorvoProductIdentifier::clone() const {
    return std::make_unique<NorvoProductIdentifier>(*this);
}

}  // namespace orvel::interfaces::orveli::identification
