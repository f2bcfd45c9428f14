// What the jobs share that dump a log of the firmware: Nlog, event log, assert log.
#pragma once

#include "core/Payload.h"
#include "interfaces/orveli/jobs/DriveJob.h"

#include <cstdint>
#include <memory>
#include <string>

namespace orvel::interfaces::orveli::jobs {

/// Where a log is, and what is wrong with one that isn't as its header says.
struct StoredLogKind {
    const char* signature;
    std::uint8_t nvmeLogPage;
    std::uint8_t ataLogAddress;
    core::Status (*invalidData)();
};

/// Answers with the bytes of the whole log, header included; 10/1 for a drive of another maker.
class StoredLogJob : public DriveJob {
public:
    core::Status runMethod(std::unique_ptr<core::xml::XmlElement>& response) override;

protected:
    /// `title` is what the user's file is called by.
    StoredLogJob(std::string name, std::string title, const StoredLogKind& log);

    core::Status report(core::Device& device, core::xml::XmlObject& drive) override;

    /// Throws core::Status by value for a log that holds nothing to dump. By default there is none.
    virtual void checkHeader(const core::Payload& header) const;

private:
    core::Payload read(core::Device& device) const;
    core::Payload readNvme(core::Device& device) const;
    core::Payload readAta(core::Device& device) const;
    std::uint32_t checkedLength(const core::Payload& header, std::uint32_t largest) const;

    StoredLogKind log;
};

}  // namespace orvel::interfaces::orveli::jobs
