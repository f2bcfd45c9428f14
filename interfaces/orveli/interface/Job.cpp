#include "interfaces/orveli/interface/Job.h"

#include "core/CoreStatuses.h"
#include "core/GlobalLogging.h"
#include "core/ScopedTrace.h"
#include "core/Strings.h"
#include "core/XmlConverter.h"
#include "core/xml/Vocabulary.h"
#include "core/xml/XmlContainer.h"
#include "features/FeatureStatuses.h"
#include "features/JobInterfaceStatuses.h"

#include <boost/thread/lock_guard.hpp>

#include <tuple>
#include <utility>

namespace orvel::interfaces::orveli {

namespace {

using core::Status;
using core::xml::XmlElement;
using Lock = boost::lock_guard<boost::mutex>;

namespace tags = core::xml::tags;
namespace feature_statuses = features::statuses;

constexpr const char* CATEGORY = "Job";
constexpr const char* STATE = "State";
constexpr const char* PROGRESS = "Progress";

void logInfo(const core::global_logging::Place& place, const std::string& text) {
    core::global_logging::write(boost::log::trivial::info, place, text);
}

/// The attribute's value. Intended: one that the element lacks is added to it as empty.
std::string lookUp(XmlElement& element, const char* key) {
    if (element.findAttribute(key) == nullptr) element.setAttribute(key, "");
    return element.getAttribute(key);
}

/// The properties in the element's child object "Properties"; none without such a child.
core::AttributeTable readProperties(const XmlElement* request) {
    const auto* container = dynamic_cast<const core::xml::XmlContainer*>(request);
    if (container == nullptr) return {};
    for (const auto& child : container->getObjects()) {
        if (child->getAttribute(tags::Name) == xml::tags::names::Properties)
            return core::XmlConverter::toAttributes(*child);
    }
    return {};
}

}  // namespace

boost::posix_time::ptime Job::systemClock() {
    return boost::posix_time::microsec_clock::universal_time();
}

Job::Job(std::string name, Clock clock) : name(std::move(name)), clock(clock) {}

Status Job::run(std::unique_ptr<XmlElement>& response) {
    const core::global_logging::ScopedTrace trace(ORVEL_HERE);
    state = STATE_AT_START;
    store(startTime, clock());
    Status result = statuses::noInputXml();
    if (request) {
        const std::string type = lookUp(*request, tags::Type);
        logInfo(ORVEL_HERE, "Type = " + type);
        const std::string requestedName = lookUp(*request, tags::Name);
        logInfo(ORVEL_HERE, "Method Name = " + requestedName);
        result = requestedName == name ? runByType(type, response) : statuses::invalidJobName();
    }
    store(endTime, clock());
    setStatus(result);
    state = STATE_AT_END;
    return result;
}

Status Job::runByType(const std::string& type, std::unique_ptr<XmlElement>& response) {
    if (type == xml::tags::types::Method) {
        Status result = runMethod(response);
        return response && !response->isEmpty() ? core::statuses::completedSuccessfully() : result;
    }
    if (type == xml::tags::types::GetProperties) {
        std::ignore = runGetProperties(response);
        return core::statuses::completedSuccessfully();
    }
    if (type == xml::tags::types::SetProperty) return runSet();
    return statuses::invalidMethodType();
}

Status Job::runSet() {
    if (devices.empty()) return feature_statuses::noDeviceSelected();
    if (devices.size() > 1) return feature_statuses::multipleDevicesSelected();
    core::AttributeTable table;
    Status result = getRequestedSetProperties(table);
    if (result == core::statuses::completedSuccessfully()) result = runSetProperty(*table.begin());
    return result;
}

Status Job::getRequestedSetProperties(core::AttributeTable& table) const {
    table = readProperties(request.get());
    if (table.size() > 1) {
        logInfo(ORVEL_HERE, "Too many properties");
        return feature_statuses::tooManyProperties();
    }
    if (table.empty()) {
        logInfo(ORVEL_HERE, "No properties found");
        return feature_statuses::noProperties();
    }
    if (table.begin()->getPayload().size() == 0) {
        logInfo(ORVEL_HERE, "Property has no value");
        return feature_statuses::propertyWithoutValue();
    }
    return {};
}

void Job::assign(const Job& other) {
    setStatus(other.getStatus());
    if (other.request) request = other.request->clone();
    devices = other.devices;
}

Status Job::runMethod(std::unique_ptr<XmlElement>&) {
    return feature_statuses::featureNotSupported();
}

Status Job::runGetProperties(std::unique_ptr<XmlElement>&) {
    return feature_statuses::featureNotSupported();
}

Status Job::runSetProperty(const core::Attribute&) {
    return feature_statuses::featureNotSupported();
}

void Job::setRequest(std::unique_ptr<XmlElement> newRequest) {
    request = std::move(newRequest);
}

Status Job::getStatus() const {
    const Lock lock(mutex);
    return status;
}

void Job::setStatus(const Status& value) {
    const Lock lock(mutex);
    status = value;
}

void Job::store(boost::posix_time::ptime& place, boost::posix_time::ptime time) {
    const Lock lock(mutex);
    place = time;
}

boost::posix_time::ptime Job::getStartTime() const {
    const Lock lock(mutex);
    return startTime;
}

boost::posix_time::ptime Job::getEndTime() const {
    const Lock lock(mutex);
    return endTime;
}

void Job::setProgressCallback(ProgressCallback callback, std::uint32_t context) {
    progressEnabled = callback != nullptr;
    progressContext = context;
    progressCallback = callback;
}

void Job::reportProgress() {
    if (progressEnabled == 0 || progressCallback == nullptr) return;
    std::unique_ptr<XmlElement> element = toXml();
    progressCallback(progressContext, getIdentifier(), &element);
}

std::unique_ptr<core::xml::XmlObject> Job::toXml() const {
    auto object = std::make_unique<core::xml::XmlObject>();
    object->setAttribute(tags::Name, name);
    object->setAttribute(tags::Category, CATEGORY);
    object->setAttribute(tags::Identifier, core::strings::toString(getIdentifier()));
    object->addValue(STATE, core::strings::toString(getState()));
    object->addValue(PROGRESS, core::strings::toString(getProgress()));
    object->addObject(core::XmlConverter::toXml(getStatus()));
    return object;
}

std::uint64_t Job::getIdentifier() const {
    return reinterpret_cast<std::uintptr_t>(this);
}

void setStatus(Job* job, const Status& status) {
    if (job != nullptr) job->setStatus(status);
}

void reportProgress(Job* job) {
    if (job != nullptr) job->reportProgress();
}

}  // namespace orvel::interfaces::orveli
