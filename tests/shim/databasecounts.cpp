// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Counts what a program asks of SQLite and of the disk.
#include "tests/shim/databasecounts.h"

#include <QDir>
#include <QFile>

#include <dlfcn.h>
#include <sqlite3.h>

namespace
{

struct Counting {
    DatabaseCounts::Counts counts;
    bool on = false;
};

Counting &counting()
{
    static Counting state;
    return state;
}

int noteStatement(unsigned, void *, void *, void *text)
{
    if (counting().on) {
        counting().counts.statements.append(QString::fromUtf8(static_cast<const char *>(text)));
    }
    return 0;
}

int noteCommit(void *)
{
    counting().counts.commits += counting().on ? 1 : 0;
    return 0;
}

bool isInWorkingDirectory(int descriptor)
{
    const QString file =
        QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor)) + QLatin1Char('/');
    return file.startsWith(QDir::currentPath() + QLatin1Char('/'));
}

void noteSync(int descriptor)
{
    counting().counts.syncs += counting().on && isInWorkingDirectory(descriptor) ? 1 : 0;
}

int watch(sqlite3 *connection, const char **, const sqlite3_api_routines *)
{
    sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, noteStatement, nullptr);
    sqlite3_commit_hook(connection, noteCommit, nullptr);
    return SQLITE_OK;
}

} // namespace

namespace DatabaseCounts
{

void watchConnections()
{
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
}

void start()
{
    counting().counts = {};
    counting().on = true;
}

Counts stop()
{
    counting().on = false;
    return counting().counts;
}

} // namespace DatabaseCounts

extern "C" {

int fsync(int descriptor)
{
    static const auto original = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fsync"));
    noteSync(descriptor);
    return original(descriptor);
}

int fdatasync(int descriptor)
{
    static const auto original = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "fdatasync"));
    noteSync(descriptor);
    return original(descriptor);
}

} // extern "C"
