// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The two small files that the program keeps in its working directory.
#pragma once

#include <QString>

/// "lastDb.dat" remembers the last database; "lockDb.dat" marks the directory as in use by
/// a copy that writes. Both are per working directory, whatever database is open.
namespace WorkingFiles
{

/// The remembered path: the first line of "lastDb.dat", which is created empty when it is
/// missing; empty when it cannot be read.
QString lastDatabase();

/// Remembers `path` in place of what was remembered. A failure is ignored.
void setLastDatabase(const QString &path);

/// True when another copy holds the lock. Writes nothing.
bool isLocked();

/// Takes the lock unless another copy holds it; true when this copy may write. A lock file
/// that cannot be written or read counts as free.
bool takeLock();

/// Removes the lock.
void releaseLock();

} // namespace WorkingFiles
