// Small stand-ins for what a transport supplies: a connection, a command, its result, a path and
// an engine.
#pragma once

#include "core/AsyncEngine.h"
#include "core/Command.h"
#include "core/CommandPath.h"
#include "core/CommandResult.h"
#include "core/Connection.h"
#include "core/Device.h"
#include "core/ProtocolResult.h"
#include "core/QueueableCommand.h"
#include "core/xml/XmlObject.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orvel::core::doubles {

/// Writes down what is done with it, in order; shared by all clones of a double.
using Diary = std::shared_ptr<std::vector<std::string>>;

inline Diary newDiary() {
    return std::make_shared<std::vector<std::string>>();
}

class FakeConnection : public Connection {
public:
    Status open() override {
        isOpenNow = true;
        return {status_categories::SYSTEM, 7, "opened"};
    }

    Status close() override {
        isOpenNow = false;
        return {status_categories::SYSTEM, 8, "closed"};
    }

    bool isOpen() override { return isOpenNow; }

    std::unique_ptr<Connection> clone() const override {
        return std::make_unique<FakeConnection>();
    }

private:
    bool isOpenNow = false;
};

class FakeCommand : public QueueableCommand {
public:
    using QueueableCommand::QueueableCommand;

    std::unique_ptr<Command> clone() const override { return std::make_unique<FakeCommand>(*this); }

    std::string toString() const override { return getCommandSetName() + "/" + getName(); }

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return std::make_unique<xml::XmlObject>(getName(), getCommandSetName(), "1");
    }
};

class FakeProtocolResult : public ProtocolResult {
public:
    explicit FakeProtocolResult(std::string text) : text(std::move(text)) {}

    std::unique_ptr<ProtocolResult> clone() const override {
        return std::make_unique<FakeProtocolResult>(*this);
    }

    std::string toString() const override { return text; }

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return std::make_unique<xml::XmlObject>("result", "", text);
    }

    std::string text;
};

/// Starts no thread unless something is added.
class FakeEngine : public AsyncEngine {
public:
    explicit FakeEngine(Diary diary) : AsyncEngine(1, 1), diary(std::move(diary)) {}

    ~FakeEngine() override { diary->push_back("engine deleted"); }

    std::unique_ptr<AsyncEngine> clone() const override {
        diary->push_back("engine cloned");
        return std::make_unique<FakeEngine>(diary);
    }

protected:
    void onThreadsStarting() override {}

    void onThreadsStopped() override { diary->push_back("engine stopped"); }

    void ioSend(int, std::unique_ptr<AsyncEngineCommand>&) override {}

private:
    Diary diary;
};

/// Answers as it was told to and notes each question in its diary.
class FakePath : public CommandPath {
public:
    using Sender = std::function<CommandResult(const Command&, const Payload&, Device&)>;

    explicit FakePath(const std::string& name, std::shared_ptr<Connection> connection = nullptr)
        : CommandPath(std::move(connection), name),
          diary(newDiary()) {}

    Status checkPartitions() override {
        diary->push_back(getName() + " checkPartitions");
        return partitionStatus;
    }

    std::unique_ptr<CommandPath> clone() const override {
        auto copy = std::make_unique<FakePath>(getName());
        copy->assign(*this);
        copy->diary = diary;
        copy->sender = sender;
        copy->partitionStatus = partitionStatus;
        copy->available = available;
        return copy;
    }

    CommandResult send(const Command& command, Payload input, Device& device) override {
        diary->push_back(getName() + " send " + command.getName());
        if (sender) return sender(command, input, device);
        CommandResult result;
        result.command = command.clone();
        result.inputPayload = input;
        return result;
    }

    bool isAvailable(Device&) override {
        diary->push_back(getName() + " isAvailable");
        return available;
    }

    using CommandPath::setAsyncEngine;

    Diary diary;
    Sender sender;  ///< none: success, with the command and its input
    Status partitionStatus;
    bool available = true;
};

}  // namespace orvel::core::doubles
