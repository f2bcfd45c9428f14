// What the jobs of drives have in common.
#pragma once

#include "core/Attribute.h"
#include "core/Device.h"
#include "core/Status.h"
#include "core/XmlConverter.h"
#include "core/xml/XmlElement.h"
#include "core/xml/XmlObject.h"
#include "interfaces/orveli/interface/Job.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvel::interfaces::orveli::jobs {

/// A concrete job says which kind of drive has its feature, and what to do with one drive: `report`
/// for its methods, which answer, and `set` for a property. It knows drives by `core::Device`
/// alone, so that it serves whatever path leads to one.
///
/// Whatever goes wrong with a drive is thrown as core::Status by value, or returned.
class DriveJob : public Job {
public:
    /// Drives that have the feature.
    enum class Kind { ATA, NVME, ANY };

    /// By kind. A job that looks closer does so in `report` and `set`.
    bool supports(const core::Device& device) const override;

    /// `set` on the one selected drive, or status 10/3.
    core::Status runSetProperty(const core::Attribute& property) final;

protected:
    /// `title` names the object that each drive gets in the answer.
    DriveJob(std::string name, Kind kind, std::string title);

    /// Answers with an object for each selected drive, filled in by `report`; the overrides of
    /// `runMethod` and `runGetProperties` call it.
    ///
    /// A failure goes into the drive's object as a status object. But a method that fails for its
    /// only drive returns the status and no answer, which is how a method tells of failure. A drive
    /// with nothing to report gets the words of success as its property "Status".
    core::Status reportEach(std::unique_ptr<core::xml::XmlElement>& response);

    /// As `reportEach`, for what must not meet a drive that nobody named: 10/5 if the request has
    /// no list of devices, which would mean all of them, and 10/6 if it selects several.
    core::Status reportSelected(std::unique_ptr<core::xml::XmlElement>& response);

    /// Fills in what there is to say of one drive. By default not supported: 10/34.
    virtual core::Status report(core::Device& device, core::xml::XmlObject& drive);

    /// Sets the property, whose name and range are still to be checked. By default 10/34. The
    /// status of success may carry words of its own for the user.
    virtual core::Status set(core::Device& device, const core::Attribute& property);

    /// What the object of a drive is known by: its serial number, unless a job has another key.
    /// Characters that a file's name or a JSON text can't have are "_".
    virtual std::string keyOf(const core::Device& device) const;

    /// The text of a property of the request's root, of two with one name the last; nothing if
    /// there is none.
    std::optional<std::string> findArgument(const core::Attribute& descriptor) const;

    /// The same as a number. Throws 10/36 with the name for a text that is none.
    std::optional<std::uint64_t> findNumber(const core::Attribute& descriptor) const;

    /// Names that a "GetProperties" request asks for, in its order; none if it wants all.
    std::vector<std::string> requestedNames() const;

    /// Leaves `drive` only the properties that the request asks for, in its order and whatever
    /// their case; what isn't there has "Property not found" as its value. All if it names none.
    void keepRequested(core::xml::XmlObject& drive) const;

private:
    core::Status reportOne(core::Device& device, core::xml::XmlObject& drive);

    Kind kind;
    std::string title;
};

/// Adds the catalogue's descriptor with this value as a property.
template <class Value>
void put(core::xml::XmlObject& object, core::Attribute descriptor, const Value& value) {
    descriptor.setValue(value);
    object.addProperty(core::XmlConverter::toXml(descriptor));
}

/// Adds an empty object of this name and key and returns it in place.
core::xml::XmlObject& addSection(core::xml::XmlObject& parent, const std::string& name,
                                 const std::string& key = "");

/// Adds bytes that the user's side may save to a file.
void addPayload(core::xml::XmlObject& parent, const core::Payload& bytes);

/// Throws 10/12 for a RAID member: whatever destroys data is not for one drive of a volume.
void requireNoRaidMember(const core::Device& device);

/// Throws 10/94 for a drive with partitions, and a path's status if it can't tell whether there are
/// any: to the device that counts as none.
void requireNoPartitions(core::Device& device);

/// Throws 10/1 for a drive of another maker: what the maker's identifiers mean there, nobody knows.
/// For commands with features, log pages and log addresses of protocols/norvo/Vendor.h.
void requireNorvo(const core::Device& device);

}  // namespace orvel::interfaces::orveli::jobs
