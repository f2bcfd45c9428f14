// A command that an asynchronous engine can carry.
#pragma once

#include "core/Command.h"
#include "core/CompletionRecord.h"

#include <string>

namespace orvel::core {

/// A command with a completion record, by which its submitter hears of the outcome.
class QueueableCommand : public Command {
public:
    /// The record is zeroes, with an empty payload and no callback.
    QueueableCommand(std::string commandSetName, std::string name);

    using Command::assign;

    /// Copies the record and both names.
    virtual void assign(const QueueableCommand& other);

    const CompletionRecord& getCompletionRecord() const { return completionRecord; }

    CompletionRecord& getCompletionRecord() { return completionRecord; }

    void setCompletionRecord(const CompletionRecord& record) { completionRecord = record; }

protected:
    QueueableCommand(const QueueableCommand&) = default;
    QueueableCommand& operator=(const QueueableCommand&) = default;

private:
    CompletionRecord completionRecord;
};

}  // namespace orvel::core
