// From a request's text to the answer's element.
#pragma once

#include "core/Device.h"
#include "core/DeviceManager.h"
#include "core/Status.h"
#include "core/xml/XmlObject.h"
#include "interfaces/orveli/library/JobRegistry.h"

#include <memory>
#include <string>

namespace orvel::interfaces::orveli::library {

/// Reads a request, finds its job and its devices, and runs the job. One request at a time: the
/// devices are the desk's while it works.
class RequestDesk {
public:
    RequestDesk(core::DeviceManager& manager, const JobRegistry& jobs)
        : manager(manager),
          jobs(jobs) {}

    /// Always an answer: the job as XML, with its status, and with its output as an object of
    /// category "output" if it has one. What goes wrong, exceptions included, is told in the
    /// status:
    ///
    /// Text that is no XML object: 11/2. Unknown job: 11/4. A device that is not there: 0/4 to 0/8
    /// by what named it, 11/10 for a name that is none. A selected device of a product that is not
    /// in the request's `SupportedProducts`: 10/1. An exception that is no status: 1/5, with its
    /// text.
    std::unique_ptr<core::xml::XmlObject> serve(const std::string& text);

private:
    core::Status run(Job& job, std::unique_ptr<core::xml::XmlElement> request,
                     std::unique_ptr<core::xml::XmlElement>& output);
    core::Status select(const core::xml::XmlObject& request, core::Device::Devices& devices);

    core::DeviceManager& manager;
    const JobRegistry& jobs;
    bool hasScanned = false;
};

}  // namespace orvel::interfaces::orveli::library
