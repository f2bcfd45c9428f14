#include "interfaces/orveli/library/RequestDesk.h"

#include "core/CoreStatuses.h"
#include "core/Exceptions.h"
#include "core/StatusWords.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlList.h"
#include "features/DeviceAttributes.h"
#include "features/FeatureStatuses.h"
#include "features/JobInterfaceStatuses.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace orvel::interfaces::orveli::library {

namespace {

using core::Status;
using core::xml::XmlElement;
using core::xml::XmlList;
using core::xml::XmlObject;
using core::xml::XmlProperty;

namespace tags = core::xml::tags;
namespace identifiers = core::xml::identifiers;
namespace device_attributes = features::device_attributes;

// Words of a request's frame.
constexpr const char* SCAN = "Scan";
constexpr const char* SUPPORTED_PRODUCTS = "SupportedProducts";
constexpr const char* JOB_CATEGORY = "Job";
constexpr const char* OUTPUT_CATEGORY = "output";
constexpr char PRODUCT_SEPARATOR = '~';

template <class Elements>
auto* findNamed(const Elements& elements, const char* name) {
    const auto found = std::find_if(elements.begin(), elements.end(), [&](const auto& element) {
        return element->getAttribute(tags::Name) == name;
    });
    return found == elements.end() ? nullptr : found->get();
}

/// The value of a direct property; nothing if there is none of this name.
std::optional<std::string> readValue(const XmlObject& object, const char* name) {
    const XmlProperty* property = findNamed(object.getProperties(), name);
    if (property == nullptr) return std::nullopt;
    return property->getAttribute(tags::Value);
}

struct IdentifierRow {
    const char* name;
    Status (*notFound)();
};

// clang-format off
constexpr IdentifierRow IDENTIFIERS[] = {
//   name                          when no device matches
    {identifiers::Index,           &core::statuses::invalidDeviceIndex},
    {identifiers::SerialNumber,    &core::statuses::invalidDeviceSerial},
    {identifiers::CSMIIdentifier,  &core::statuses::invalidDeviceId},
    {identifiers::DriveId,         &core::statuses::invalidDeviceId},
    {identifiers::DriveLetter,     &core::statuses::invalidDevicePartition},
    {identifiers::Path,            &core::statuses::invalidDevicePath},
};

// clang-format on

Status notFound(const std::string& identifier) {
    const auto* row = std::find_if(std::begin(IDENTIFIERS), std::end(IDENTIFIERS),
                                   [&](const IdentifierRow& r) { return r.name == identifier; });
    return row == std::end(IDENTIFIERS) ? statuses::invalidDriveIdentifier() : row->notFound();
}

/// What tells a drive. A path that was typed comes as a serial number, which never has a slash in
/// front.
core::Attribute readIdentifier(const XmlProperty& property) {
    const std::string name = property.getAttribute(tags::Name);
    const std::string value = property.getAttribute(tags::Value);
    const bool isPath =
        name == identifiers::Path || (name == identifiers::SerialNumber && value.starts_with('/'));
    return {isPath ? identifiers::Path : name, value};
}

/// Which products a request allows: all of them if it doesn't say.
class ProductFilter {
public:
    explicit ProductFilter(const XmlObject& request) {
        if (const auto text = readValue(request, SUPPORTED_PRODUCTS))
            products = core::strings::split(*text, PRODUCT_SEPARATOR);
    }

    bool allows(const core::Device& device) const {
        if (!products) return true;
        const std::string product = device.readText(device_attributes::Product());
        return std::find(products->begin(), products->end(), product) != products->end();
    }

private:
    std::optional<std::vector<std::string>> products;
};

/// Why a drive isn't served. Of one that didn't tell its model it can't be said whose it is, but
/// what went wrong.
Status refusal(const core::Device& device) {
    const std::string cause = device.readText(device_attributes::ErrorString());
    const bool isKnown = device.hasAttribute(device_attributes::ModelNumber().getName());
    if (isKnown || cause.empty()) return features::statuses::notAnNorvoSsd();
    Status status = features::statuses::dataRetrievalFailed();
    const bool isSaid = cause.starts_with(status.getMessage());
    status.setMessage(isSaid ? cause : status.getMessage() + " " + cause);
    return status;
}

std::unique_ptr<XmlObject> newAnswer(const std::string& jobName, const Status& status) {
    auto answer = std::make_unique<XmlObject>();
    answer->setAttribute(tags::Category, JOB_CATEGORY);
    answer->setAttribute(tags::Name, jobName);
    answer->addObject(core::XmlConverter::toXml(status));
    return answer;
}

/// The object that `element` is, or null; `element` is empty afterwards.
std::unique_ptr<XmlObject> asObject(std::unique_ptr<XmlElement> element) {
    auto* object = dynamic_cast<XmlObject*>(element.get());
    if (object == nullptr) return nullptr;
    std::ignore = element.release();
    return std::unique_ptr<XmlObject>(object);
}

}  // namespace

std::unique_ptr<XmlObject> RequestDesk::serve(const std::string& text) {
    auto request = asObject(core::XmlConverter::toXml(text));
    if (!request) return newAnswer("", statuses::noInputXml());
    const std::string name = request->getAttribute(tags::Name);
    const auto job = jobs.make(name);
    if (!job) return newAnswer(name, statuses::jobNotFound());

    std::unique_ptr<XmlElement> response;
    job->setStatus(runAndFinish(*job, std::move(request), response));
    auto answer = job->toXml();
    if (auto output = asObject(std::move(response))) {
        output->setAttribute(tags::Category, OUTPUT_CATEGORY);
        answer->addObject(std::move(output));
    }
    return answer;
}

Status RequestDesk::runAndFinish(Job& job, std::unique_ptr<XmlElement> request,
                                 std::unique_ptr<XmlElement>& output) {
    Status status = run(job, std::move(request), output);
    Status end = finish ? core::guarded(finish) : Status();
    if (end == core::statuses::completedSuccessfully()) return status;
    output = nullptr;
    if (status == core::statuses::completedSuccessfully()) return end;
    return core::withWords(status, end.getMessage());
}

Status RequestDesk::run(Job& job, std::unique_ptr<XmlElement> request,
                        std::unique_ptr<XmlElement>& output) {
    // A request must come to its end, or others would wait for good.
    return core::guarded([&] {
        core::Device::Devices devices;
        Status selection = select(dynamic_cast<const XmlObject&>(*request), devices);
        if (!(selection == core::statuses::completedSuccessfully())) return selection;
        job.setDevices(std::move(devices));
        job.setRequest(std::move(request));
        return job.run(output);
    });
}

Status RequestDesk::select(const XmlObject& request, core::Device::Devices& devices) {
    const bool wantsScan = core::strings::toBool(readValue(request, SCAN).value_or(""));
    if (wantsScan || !hasScanned) {
        hasScanned = false;  // a scan that fails leaves what no request is to be served from
        manager.scan();
        hasScanned = true;
    }
    const ProductFilter filter(request);
    const XmlList* list = findNamed(request.getLists(), identifiers::Devices);
    if (list == nullptr) {
        devices = manager.getDevices();
        std::erase_if(devices, [&](const auto& device) { return !filter.allows(*device); });
        return {};
    }
    for (const auto& entry : list->getObjects()) {
        for (const auto& property : entry->getProperties()) {
            const core::Attribute identifier = readIdentifier(*property);
            const auto device = manager.GetDevice(identifier);
            if (!device) return notFound(identifier.getName());
            if (!filter.allows(*device)) return refusal(*device);
            if (std::find(devices.begin(), devices.end(), device) == devices.end())
                devices.push_back(device);
        }
    }
    return {};
}

}  // namespace orvel::interfaces::orveli::library
