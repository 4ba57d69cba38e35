// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a part of a test in a process of its own, which may be ended in the middle.
#pragma once

#include <QStringList>

#include <functional>

namespace Child
{

/// How a child ended.
struct Ended {
    /// The signal that ended it; 0 when it came to its end.
    int signal = 0;
    /// What the task returned; empty when it did not come to its end.
    QStringList said;
};

/// Goes on in two processes: true in the child, which ends with finish() and never returns into
/// what called; false in the parent, after the child's end, which `ended` then tells of. A child
/// that takes a minute is ended by SIGALRM.
bool branch(Ended *ended);
/// Ends a child of branch().
[[noreturn]] void finish(const QStringList &said);

/// Runs the task in a copy of this process, which has all that this one has, the application
/// among it, and waits for its end.
Ended run(const std::function<QStringList()> &task);

} // namespace Child
