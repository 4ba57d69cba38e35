// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Stands between a test program and the system: counts, fails, logs or ends at calls that write.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A program that is linked with this unit (and exports its symbols) calls the functions of this
/// unit where it, the toolkit or SQLite would call those of the C library. Until it is armed
/// every call goes on to the system. The README beside this file tells the whole.
///
/// Only the standard library is used here: the toolkit itself calls these functions.
namespace FaultIo
{

/// What happens at the call whose number is `Plan::at`, counted from 1.
enum class Act {
    Count,      ///< nothing: the calls are counted
    KillBefore, ///< the process ends as by kill -9 before the call
    KillHalf,   ///< it ends after half of the bytes; only calls that write bytes are counted
    KillAfter,  ///< it ends after the call
    FailOnce,   ///< the call fails with `Plan::error`
    FailOn,     ///< it fails, and so does every later one
    NoRoom      ///< files may grow by `Plan::at` bytes together, then the disk is full
};

/// What is done to the calls that write below the folder.
struct Plan {
    Act act = Act::Count;
    long at = 0;
    int error = 0;
};

/// What a call has done to a file or a folder.
struct Event {
    enum class Kind { Make, Write, Truncate, Sync, SyncFolder, Unlink, Rename, Link, MakeFolder };
    Kind kind = Kind::Write;
    ino_t file = 0;    ///< of Make, Write, Truncate, Sync, Rename and Link
    std::string path;  ///< what the call names; empty where it has a descriptor only
    std::string other; ///< the new name of Rename
    off_t place = 0;   ///< where Write begins; the length of Truncate
    std::string bytes; ///< of Write
};

/// From here on the calls that write to files below `folder` (an absolute path without symbolic
/// links) are counted and treated as planned.
void arm(const std::string &folder, const Plan &plan);
/// Ends that. Returns the number of calls that were counted.
long disarm();

/// From here on what is done to files below `folder` is noted in `log` as well.
void record(const std::string &folder, std::vector<Event> *log);

/// From here on nothing waits for the disk: a killed process loses nothing of what the system
/// has taken, so the tests that only kill need no synchronisation.
void skipSynchronisation();

} // namespace FaultIo
