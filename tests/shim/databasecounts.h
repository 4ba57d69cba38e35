// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Counts what a program asks of SQLite and of the disk.
#pragma once

#include <QStringList>

/// SQLite itself tells of every statement and commit, on all connections of the process. The
/// synchronisations are counted where the program and its libraries call the system for them:
/// the functions here stand before the system's own. Of these only files in the working directory
/// count, not what the toolkit keeps elsewhere for itself.
namespace DatabaseCounts
{

/// What was done between start() and stop().
struct Counts {
    QStringList statements; ///< in the order in which they began
    int commits = 0;        ///< of what was written
    int syncs = 0;          ///< waits for the disk
};

/// Makes connections count that are opened from now on.
void watchConnections();

/// Begins to count.
void start();

/// Ends the counting that start() began.
Counts stop();

} // namespace DatabaseCounts
