// What the benchmarks of the engine send, and how those without the engine deliver it.
#pragma once

#include "core/AsyncEngineCommand.h"
#include "core/CompletionRecord.h"
#include "core/QueueableCommand.h"
#include "core/xml/XmlObject.h"

#include <memory>
#include <string>

namespace tavik::bench {

class SampleCommand : public orvel::core::QueueableCommand {
public:
    SampleCommand() : QueueableCommand("ATA", "IDENTIFY DEVICE") {}

    std::unique_ptr<orvel::core::Command> clone() const override {
        return std::make_unique<SampleCommand>(*this);
    }

    std::string toString() const override { return getName(); }

    std::unique_ptr<orvel::core::xml::XmlElement> toXml() const override {
        return std::make_unique<orvel::core::xml::XmlObject>(getName(), getCommandSetName(), "");
    }
};

/// The same steps as the engine's delivery, which is its own affair.
inline void deliver(orvel::core::AsyncEngineCommand& command) {
    orvel::core::CompletionRecord& record = command.getCommand()->getCompletionRecord();
    if (record.callback == nullptr) return;
    record.payload = command.getPayload();
    record.statusCode = command.getStatus().getCode();
    record.duration = command.getDuration();
    record.callback(&record);
}

}  // namespace tavik::bench
