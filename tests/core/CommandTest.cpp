// What all commands have in common: two names, and an assignment that copies them.
#include "core/Command.h"

#include "core/xml/XmlObject.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace orvel::core {
namespace {

/// Counts its own kind's destructions, and has a field that `Command` knows nothing of.
class CountingCommand : public Command {
public:
    CountingCommand(const std::string& commandSetName, const std::string& name, int& destroyed)
        : Command(commandSetName, name),
          destroyed(&destroyed) {}

    CountingCommand(const CountingCommand&) = default;
    CountingCommand& operator=(const CountingCommand&) = default;

    ~CountingCommand() override { ++*destroyed; }

    std::unique_ptr<Command> clone() const override {
        return std::make_unique<CountingCommand>(*this);
    }

    std::string toString() const override { return "text of " + getName(); }

    std::unique_ptr<xml::XmlElement> toXml() const override {
        return std::make_unique<xml::XmlObject>(getName(), "", "");
    }

    int flavour = 0;

private:
    int* destroyed;
};

/// Copies more than the two names.
class FlavouredCommand : public CountingCommand {
public:
    using CountingCommand::CountingCommand;

    void assign(const Command& other) override {
        Command::assign(other);
        flavour = dynamic_cast<const FlavouredCommand&>(other).flavour;
    }
};

class CommandTest : public ::testing::Test {
protected:
    int destroyed = 0;
};

static_assert(std::is_abstract_v<Command>);
static_assert(std::has_virtual_destructor_v<Command>);
static_assert(!std::is_copy_constructible_v<Command>, "a copy would leave the protocol's part out");
static_assert(!std::is_copy_assignable_v<Command>, "likewise");

TEST_F(CommandTest, KeepsTheNameOfItsSetAndItsOwn) {
    const CountingCommand command("NVMe", "Identify", destroyed);
    EXPECT_EQ(command.getCommandSetName(), "NVMe");
    EXPECT_EQ(command.getName(), "Identify");
}

TEST_F(CommandTest, MayHaveEmptyNames) {
    const CountingCommand command("", "", destroyed);
    EXPECT_EQ(command.getCommandSetName(), "");
    EXPECT_EQ(command.getName(), "");
}

TEST_F(CommandTest, KeepsItsNamesByteForByte) {
    const CountingCommand command(std::string("a\0b", 3), "\xC3\xA9\n ", destroyed);
    EXPECT_EQ(command.getCommandSetName(), std::string("a\0b", 3));
    EXPECT_EQ(command.getName(), "\xC3\xA9\n ");
}

TEST_F(CommandTest, AssignCopiesBothNames) {
    const CountingCommand source("NVMe", "Identify", destroyed);
    CountingCommand target("ATA", "Read", destroyed);

    target.assign(source);

    EXPECT_EQ(target.getCommandSetName(), "NVMe");
    EXPECT_EQ(target.getName(), "Identify");
}

TEST_F(CommandTest, AssignLeavesTheSourceAsItWas) {
    const CountingCommand source("NVMe", "Identify", destroyed);
    CountingCommand target("ATA", "Read", destroyed);

    target.assign(source);

    EXPECT_EQ(source.getCommandSetName(), "NVMe");
    EXPECT_EQ(source.getName(), "Identify");
}

TEST_F(CommandTest, AssignLeavesTheFieldsOfADerivedClassAlone) {
    CountingCommand source("NVMe", "Identify", destroyed);
    CountingCommand target("ATA", "Read", destroyed);
    source.flavour = 1;
    target.flavour = 2;

    target.assign(source);

    EXPECT_EQ(target.flavour, 2);
}

TEST_F(CommandTest, AssignMayBeExtended) {
    FlavouredCommand source("NVMe", "Identify", destroyed);
    FlavouredCommand target("ATA", "Read", destroyed);
    source.flavour = 1;
    Command& base = target;

    base.assign(source);

    EXPECT_EQ(target.flavour, 1);
    EXPECT_EQ(target.getName(), "Identify");
}

TEST_F(CommandTest, AssignToItselfChangesNothing) {
    CountingCommand command("NVMe", "Identify", destroyed);

    command.assign(command);

    EXPECT_EQ(command.getCommandSetName(), "NVMe");
    EXPECT_EQ(command.getName(), "Identify");
}

TEST_F(CommandTest, IsUsedThroughItsBase) {
    const CountingCommand original("NVMe", "Identify", destroyed);
    const Command& base = original;

    const std::unique_ptr<Command> copy = base.clone();

    EXPECT_NE(copy.get(), &original);
    EXPECT_EQ(copy->getCommandSetName(), "NVMe");
    EXPECT_EQ(copy->getName(), "Identify");
    EXPECT_EQ(base.toString(), "text of Identify");
    EXPECT_EQ(base.toXml()->getAttribute("name"), "Identify");
}

TEST_F(CommandTest, IsDestroyedWholeThroughItsBase) {
    std::unique_ptr<Command> command =
        std::make_unique<CountingCommand>("NVMe", "Identify", destroyed);

    command.reset();

    EXPECT_EQ(destroyed, 1);
}

}  // namespace
}  // namespace orvel::core
