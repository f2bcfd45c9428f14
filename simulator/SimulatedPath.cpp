#include "simulator/SimulatedPath.h"

#include "core/CoreStatuses.h"
#include "core/QueueableCommand.h"
#include "core/Strings.h"
#include "simulator/SimulatedEngine.h"
#include "simulator/SystemStatus.h"

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

namespace orvel::simulator {

using core::Payload;
using core::Status;
using std::chrono::milliseconds;

namespace {

constexpr const char* EACH_COMMAND = "";

const Fault* find(const std::vector<Fault>& faults, Fault::Kind kind) {
    const auto found = std::ranges::find(faults, kind, &Fault::kind);
    return found == faults.end() ? nullptr : &*found;
}

Payload shortened(const Payload& output, std::uint32_t bytes) {
    return output.size() <= bytes ? output : Payload(output.data(), bytes);
}

/// The same bytes each time, and nothing that any structure could be.
Payload garbage(std::uint32_t size) {
    constexpr std::uint32_t MULTIPLIER = 1664525;
    constexpr std::uint32_t INCREMENT = 1013904223;
    constexpr std::uint32_t UPPER_BYTE = 24;
    Payload bytes(size);
    std::uint32_t number = 1;
    for (std::uint32_t i = 0; i < size; ++i) {
        number = number * MULTIPLIER + INCREMENT;
        *bytes.at(i) = static_cast<std::uint8_t>(number >> UPPER_BYTE);
    }
    return bytes;
}

std::uint32_t eraseCount(const SimulatedDrive& drive) {
    return std::visit([](const auto& one) { return one.eraseCount; }, drive.drive);
}

Status success() {
    return core::statuses::completedSuccessfully();
}

}  // namespace

SimulatedPath::SimulatedPath(std::string name, std::shared_ptr<FleetFolder> folder,
                             std::string devicePath, Wait wait)
    : CommandPath(nullptr, std::move(name)),
      folder(std::move(folder)),
      devicePath(std::move(devicePath)),
      // Somebody who asked for a drive that answers late wants to see the tool wait.
      wait(wait ? std::move(wait) : [](milliseconds time) { std::this_thread::sleep_for(time); }) {
    setAsyncEngine(std::make_unique<SimulatedEngine>());
}

Status SimulatedPath::checkPartitions() {
    return statusOf([this] {
        const SimulatedDrive* drive = findDrive();
        if (!drive) return systemError(ENODEV);
        return drive->partitions.empty() ? core::statuses::deviceHasNoPartitions()
                                         : core::statuses::deviceHasPartitions();
    });
}

core::CommandResult SimulatedPath::send(const core::Command& command, Payload input,
                                        core::Device& /*device*/) {
    using boost::posix_time::microsec_clock;
    core::CommandResult result;
    result.command = command.clone();
    result.inputPayload = input;
    result.startTime = microsec_clock::universal_time();
    const auto start = std::chrono::steady_clock::now();

    const auto work = [&] { return transact(command, input, result); };
    const auto* queueable = dynamic_cast<const core::QueueableCommand*>(&command);
    auto* engine = dynamic_cast<SimulatedEngine*>(getAsyncEngine());
    result.status = checkKind(command);
    if (result.status == success()) {
        result.status = statusOf([&] {
            return queueable && engine && isLong(command) ? engine->run(*queueable, input, work)
                                                          : work();
        });
    }

    // The time of day may be set meanwhile.
    result.duration =
        boost::posix_time::microseconds(std::chrono::duration_cast<std::chrono::microseconds>(
                                            std::chrono::steady_clock::now() - start)
                                            .count());
    result.endTime = result.startTime + result.duration;
    result.commandPath = clone();
    return result;
}

bool SimulatedPath::isAvailable(core::Device& /*device*/) {
    return statusOf([this] { return findDrive() ? success() : systemError(ENODEV); }) == success();
}

void SimulatedPath::assign(const core::CommandPath& other) {
    CommandPath::assign(other);
    const auto* simulated = dynamic_cast<const SimulatedPath*>(&other);
    if (!simulated) return;
    folder = simulated->folder;
    devicePath = simulated->devicePath;
    wait = simulated->wait;
    sentCommands = simulated->sentCommands;
}

SimulatedDrive* SimulatedPath::findDrive() {
    auto& drives = folder->open().drives;
    const auto found = std::ranges::find(drives, devicePath, &SimulatedDrive::devicePath);
    return found == drives.end() || found->isLost ? nullptr : &*found;
}

/// The faults that this command meets; counts it.
std::vector<Fault> SimulatedPath::takeFaults(const SimulatedDrive& drive,
                                             const core::Command& command) {
    const std::string& name = command.getName();
    std::vector<Fault> met;
    for (const Fault& fault : drive.faults) {
        const bool isForEach = fault.command.empty();
        if (!isForEach && !core::strings::equals(fault.command, name, true)) continue;
        if (sentCommands[isForEach ? EACH_COMMAND : name] >= fault.after) met.push_back(fault);
    }
    ++sentCommands[EACH_COMMAND];
    if (!name.empty()) ++sentCommands[name];
    return met;
}

Status SimulatedPath::transact(const core::Command& command, const Payload& input,
                               core::CommandResult& result) {
    SimulatedDrive* drive = findDrive();
    if (!drive) return systemError(ENODEV);
    const auto faults = takeFaults(*drive, command);
    if (find(faults, Fault::Kind::LOSE)) {
        drive->isLost = true;
        return systemError(ENODEV);
    }
    Answer given = answer(*drive, command, input, faults);
    if (Status late = takeTime(faults); !(late == success())) return late;

    result.protocolResult = std::move(given.protocolResult);
    if (given.isRefused) return refusalStatus();
    result.outputPayload = shortened(given.output, bytesToCome(command));
    return result.outputPayload.size() < bytesToCome(command)
               ? core::statuses::ioCommandReturnedTooLittleData()
               : success();
}

/// With the data as faults leave it.
SimulatedPath::Answer SimulatedPath::answer(SimulatedDrive& drive, const core::Command& command,
                                            const Payload& input,
                                            const std::vector<Fault>& faults) {
    if (const Fault* refusal = find(faults, Fault::Kind::REFUSE))
        return refuse(drive, *refusal, command);
    const std::uint32_t erasedBefore = eraseCount(drive);
    Answer given = execute(drive, command, input, [this] { return folder->now(); });
    if (eraseCount(drive) != erasedBefore) drive.partitions.clear();
    if (given.duration > milliseconds{0}) folder->pass(given.duration);
    if (find(faults, Fault::Kind::GARBAGE)) given.output = garbage(given.output.size());
    if (const Fault* fault = find(faults, Fault::Kind::SHORT_DATA))
        given.output = shortened(given.output, fault->bytes);
    return given;
}

/// Lets the time pass that an answer takes; what the drive did, it did all the same.
Status SimulatedPath::takeTime(const std::vector<Fault>& faults) {
    const Fault* delay = find(faults, Fault::Kind::DELAY);
    if (!delay || delay->delay <= milliseconds{0}) return success();
    const milliseconds limit = std::chrono::seconds(std::max(0, getTimeout()));
    const bool isLate = delay->delay > limit;
    const milliseconds time = std::min(delay->delay, limit);
    if (time > milliseconds{0}) wait(time);
    return isLate ? systemError(ETIMEDOUT) : success();
}

}  // namespace orvel::simulator
