// From a request's text to the answer's element.
#pragma once

#include "core/Device.h"
#include "core/DeviceManager.h"
#include "core/Status.h"
#include "core/xml/XmlObject.h"
#include "interfaces/orveli/library/JobRegistry.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli::library {

/// Reads a request, finds its job and its devices, and runs the job. One request at a time: the
/// devices are the desk's while it works.
class RequestDesk {
public:
    /// Runs after each request that found its job, whatever became of it: keeps what the request
    /// has changed.
    using Finish = std::function<core::Status()>;

    /// `finish` may be empty.
    RequestDesk(core::DeviceManager& manager, const JobRegistry& jobs, Finish finish = {})
        : manager(manager),
          jobs(jobs),
          finish(std::move(finish)) {}

    /// Always an answer: the job as XML, with its status, and with its output as an object of
    /// category "output" if it has one. What goes wrong, exceptions included, is told in the
    /// status:
    ///
    /// Text that is no XML object: 11/2. Unknown job: 11/4. A device that is not there: 0/4 to 0/8
    /// by what named it, 11/10 for a name that is none. A selected device of a product that is not
    /// in the request's `SupportedProducts`: 10/1. An exception that is no status: 1/5, with its
    /// text. A request that could not be finished has no output, and the status of `finish`; if it
    /// had failed before, its own with the words of both.
    std::unique_ptr<core::xml::XmlObject> serve(const std::string& text);

private:
    core::Status run(Job& job, std::unique_ptr<core::xml::XmlElement> request,
                     std::unique_ptr<core::xml::XmlElement>& output);
    core::Status runAndFinish(Job& job, std::unique_ptr<core::xml::XmlElement> request,
                              std::unique_ptr<core::xml::XmlElement>& output);
    core::Status select(const core::xml::XmlObject& request, core::Device::Devices& devices);

    core::DeviceManager& manager;
    const JobRegistry& jobs;
    Finish finish;
    bool hasScanned = false;
};

}  // namespace orvel::interfaces::orveli::library
