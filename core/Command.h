// One thing that can be asked of a device.
#pragma once

#include "core/xml/XmlElement.h"

#include <memory>
#include <string>

namespace orvel::core {

/// Base of a protocol's commands. A command has no lock: each thread works on its own copy.
class Command {
public:
    /// `commandSetName` is what a device routes the command by, `name` is the command's own.
    Command(std::string commandSetName, std::string name);

    virtual ~Command() = default;

    /// A new copy.
    virtual std::unique_ptr<Command> clone() const = 0;

    /// The command as lines of text, without a newline at the end.
    virtual std::string toString() const = 0;

    /// The command as a new element, by custom an object of category "command".
    virtual std::unique_ptr<xml::XmlElement> toXml() const = 0;

    /// Copies both names.
    virtual void assign(const Command& other);

    const std::string& getCommandSetName() const { return commandSetName; }

    const std::string& getName() const { return name; }

protected:
    Command(const Command&) = default;
    Command& operator=(const Command&) = default;

private:
    std::string commandSetName;
    std::string name;
};

}  // namespace orvel::core
