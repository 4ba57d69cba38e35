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

// Of the child, to its parent.
int outgoing = -1;

} // namespace

bool Child::branch(Ended *ended)
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
        outgoing = ends[1];
        alarm(LongestRun);
        return true;
    }
    close(ends[1]);
    QFile pipe;
    if (pipe.open(ends[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        const QByteArray bytes = pipe.readAll();
        QDataStream stream(bytes);
        stream >> ended->said;
    }
    int status = 0;
    waitpid(child, &status, 0);
    ended->signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return false;
}

void Child::finish(const QStringList &said)
{
    QFile pipe;
    if (pipe.open(outgoing, QIODevice::WriteOnly)) {
        QDataStream stream(&pipe);
        stream << said;
        pipe.close();
    }
    // Without the ends of what the parent has begun.
    _exit(0);
}

Child::Ended Child::run(const std::function<QStringList()> &task)
{
    Ended ended;
    if (branch(&ended)) {
        finish(task());
    }
    return ended;
}
