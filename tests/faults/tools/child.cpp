// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a part of a test in a process of its own, which may be ended in the middle.
#include "tests/faults/tools/child.h"

#include <QDataStream>
#include <QFile>

#include <array>

#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr unsigned LongestRun = 60; // in seconds

/// What the child does; it never returns into the test.
[[noreturn]] void live(int outgoing, const std::function<QStringList()> &task)
{
    alarm(LongestRun);
    const QStringList said = task();
    QFile pipe;
    if (pipe.open(outgoing, QIODevice::WriteOnly)) {
        QDataStream stream(&pipe);
        stream << said;
        pipe.close();
    }
    // Without the ends of what the parent has begun.
    _exit(0);
}

} // namespace

Child::Ended Child::run(const std::function<QStringList()> &task)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        qFatal("no pipe");
    }
    const pid_t child = fork();
    if (child < 0) {
        qFatal("no child");
    }
    if (child == 0) {
        close(ends[0]);
        live(ends[1], task);
    }
    close(ends[1]);
    Ended ended;
    QFile pipe;
    if (pipe.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        const QByteArray bytes = pipe.readAll();
        QDataStream stream(bytes);
        stream >> ended.said;
    }
    int status = 0;
    waitpid(child, &status, 0);
    ended.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return ended;
}
