// What a request over the XML interface runs: one job for each feature of a drive.
#pragma once

#include "core/Attribute.h"
#include "core/AttributeTable.h"
#include "core/Device.h"
#include "core/Status.h"
#include "core/xml/XmlElement.h"
#include "core/xml/XmlObject.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace orvel::interfaces::orveli {

/// Checks a request against itself, calls the operation that the request's method type asks for,
/// and keeps the outcome. It runs on one thread, while others may poll its state, progress, status
/// and times.
///
/// A concrete job overrides the operations that its feature has: `runMethod`, `runGetProperties`,
/// `runSetProperty`.
class Job {
public:
    /// Gives the current UTC time.
    using Clock = boost::posix_time::ptime (*)();

    /// Receives the context that it was set with, the job's identifier, and the job as XML, which
    /// dies when the call returns.
    using ProgressCallback = void (*)(std::uint32_t context, std::uint64_t identifier,
                                      std::unique_ptr<core::xml::XmlElement>* job);

    static boost::posix_time::ptime systemClock();

    // What `run` sets the state to. Other values are the concrete job's or its owner's business.
    static constexpr std::int32_t STATE_AT_START = 4;
    static constexpr std::int32_t STATE_AT_END = 7;

    explicit Job(std::string name, Clock clock = &systemClock);

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    virtual ~Job() = default;

    /// Runs the request and returns the outcome, which is kept too. May be called again. An
    /// exception of an operation passes through and leaves the state at `STATE_AT_START`, and end
    /// time and status as they were.
    virtual core::Status run(std::unique_ptr<core::xml::XmlElement>& response);

    /// A new job of the same kind, for a registry that holds one of each.
    virtual std::unique_ptr<Job> clone() const = 0;

    /// Whether the device has the feature.
    virtual bool supports(const core::Device& device) const = 0;

    /// Copies the status, the request unless the other has none, and the devices' handles.
    virtual void assign(const Job& other);

    /// Answers method type "Method". Intended: an answer in `response` counts as success, whatever
    /// the status. By default not supported: code 34, category 10, as for the next two.
    virtual core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response);

    /// Answers method type "GetProperties". Intended: `run` drops the status.
    virtual core::Status runGetProperties(std::unique_ptr<core::xml::XmlElement>& response);

    /// Answers method type "SetProperty", for one device and one property with a value.
    virtual core::Status runSetProperty(const core::Attribute& property);

    void setRequest(std::unique_ptr<core::xml::XmlElement> newRequest);

    /// Null until set.
    const core::xml::XmlElement* getRequest() const { return request.get(); }

    void setDevices(core::Device::Devices newDevices) { devices = std::move(newDevices); }

    const core::Device::Devices& getDevices() const { return devices; }

    const std::string& getName() const { return name; }

    std::uint8_t getProgress() const { return progress; }

    std::uint8_t getFirstFlag() const { return firstFlag; }

    std::uint8_t getSecondFlag() const { return secondFlag; }

    std::int32_t getState() const { return state; }

    void setState(std::int32_t value) { state = value; }

    core::Status getStatus() const;
    void setStatus(const core::Status& value);

    /// UTC; not-a-date-time before the first run.
    boost::posix_time::ptime getStartTime() const;
    boost::posix_time::ptime getEndTime() const;

    /// Null for no callback.
    void setProgressCallback(ProgressCallback callback, std::uint32_t context);

    /// Tells the callback, if there is one, how far the job is.
    void reportProgress();

    /// Name, state, progress and status. The identifier is the job's place in memory.
    std::unique_ptr<core::xml::XmlObject> toXml() const;

    /// Replaces `table` by the properties of a set request. Success for one property with a value,
    /// else the statuses 37, 38 or 39 of category 10.
    core::Status getRequestedSetProperties(core::AttributeTable& table) const;

protected:
    void setProgress(std::uint8_t value) { progress = value; }

    // The flags are the concrete job's alone: nothing here sets them.
    void setFirstFlag(std::uint8_t value) { firstFlag = value; }

    void setSecondFlag(std::uint8_t value) { secondFlag = value; }

private:
    core::Status runByType(const std::string& type,
                           std::unique_ptr<core::xml::XmlElement>& response);
    core::Status runSet();
    void store(boost::posix_time::ptime& place, boost::posix_time::ptime time);
    std::uint64_t getIdentifier() const;

    core::Device::Devices devices;
    std::unique_ptr<core::xml::XmlElement> request;
    std::string name;
    std::uint8_t progressEnabled = 0;
    std::uint32_t progressContext = 0;
    ProgressCallback progressCallback = nullptr;
    std::atomic<std::uint8_t> progress = 0;
    std::uint8_t firstFlag = 0;
    std::uint8_t secondFlag = 0;
    std::atomic<std::int32_t> state = 0;
    mutable boost::mutex mutex;
    core::Status status;                 ///< guarded by mutex
    boost::posix_time::ptime startTime;  ///< guarded by mutex
    boost::posix_time::ptime endTime;    ///< guarded by mutex
    Clock clock;
};

// The same for a job that may be absent: nothing happens for null.
void setStatus(Job* job, const core::Status& status);
void reportProgress(Job* job);

}  // namespace orvel::interfaces::orveli
