// The folder in which the simulated drives live between commands.
#pragma once

#include "simulator/Clock.h"
#include "simulator/FileLock.h"
#include "simulator/Fleet.h"

#include <chrono>
#include <optional>
#include <string>

namespace orvel::simulator {

/// One command at a time works on the fleet, whatever process it belongs to: from `open` to
/// `commit` a file is locked, and others wait. In the folder, which is made at need:
///
/// - `fleet.json`: a description that a user may put there; read when there is no state yet.
/// - `state.json`: all that the drives remember. Made from the description, or from the default
///   fleet, at the first use. Replaced as a whole, so that a crash leaves the old or the new one.
/// - `lock`: the locked file.
/// - `power-cycle`: if it is there, all drives lose power and get it back before the next command;
///   then it is removed.
///
/// Whoever may only read the folder can do with the fleet what doesn't change it, once there is a
/// state. What drives note by themselves meanwhile is forgotten then: refused commands in their
/// error logs, and self-tests that came to their end, which do so again before the next command.
///
/// For one thread at a time.
class FleetFolder {
public:
    /// `realTime` may be any clock; without one it is the system's time of day.
    explicit FleetFolder(std::string path, Clock realTime = {});

    FleetFolder(const FleetFolder&) = delete;
    FleetFolder& operator=(const FleetFolder&) = delete;

    /// Unlocks, without keeping changes.
    ~FleetFolder() = default;

    /// Locks and loads, if it isn't open already. Throws core::Status by value: 10/54 with the
    /// file and what is wrong with it for one that can't be used, and nothing is written over then;
    /// 10/194 for a folder that can't be made; 10/168 if what is new can't be written. It stays
    /// closed then.
    Fleet& open();

    bool isOpen() const { return fleet.has_value(); }

    /// The simulated time: that of the fleet's clock, which never goes back. It goes on from where
    /// it was written down, by the real time since then; a real clock that is set back costs the
    /// time since the last look at it, no more. Only while open.
    std::chrono::milliseconds now();

    /// Lets simulated time pass at once, for all drives: nobody is kept waiting for a command that
    /// takes minutes. Only while open.
    void pass(std::chrono::milliseconds time);

    /// Keeps what has changed since `open`, if it isn't the time alone, and unlocks, if it is open.
    /// Throws core::Status by value, 10/168 with the file; it is unlocked all the same.
    void commit();

    /// Forgets what has changed and unlocks.
    void abandon();

private:
    std::string file(const char* name) const;
    void takeLock();
    void load();
    void write();
    void writeTimes();
    bool canWrite() const;
    Fleet withoutNotes(Fleet some);
    void powerCycle();

    std::string path;
    Clock realTime;
    FileLock lock;                   ///< held while open
    bool isLockedForChange = false;  ///< by the file that all who change something lock
    std::optional<Fleet> fleet;      ///< only while open
    std::optional<Fleet> kept;       ///< as the state file has it; nothing if there is none
    std::chrono::milliseconds latestTime{0};
    std::chrono::milliseconds latestRealTime{0};  ///< when it was latestTime
    bool wasClockSetBack = false;                 ///< since `open`, or before it
};

}  // namespace orvel::simulator
