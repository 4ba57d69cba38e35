// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a scenario in a child in which calls that write fail or end it.
#pragma once

#include "tests/faults/tools/child.h"
#include "tests/faults/tools/faultio.h"
#include "tests/faults/tools/scenarios.h"

#include <QFile>

namespace Trial
{

/// What became of a child.
struct Run {
    int signal = 0;      ///< that ended it; 0 when it came to its end
    int calls = 0;       ///< the calls that write between begin and end
    QStringList said;    ///< what the person saw, as Stage::say() has it
    QStringList told;    ///< the texts of the boxes
    QString middleFault; ///< what `look` found between the failures and the second try
};

/// Looks at what the failures have left, before things are done once more; the result is
/// Run::middleFault. It gets the texts of the boxes so far.
using Look = std::function<QString(const QStringList &told)>;

/// Does the scenario in a child, with its calls treated as planned.
Run once(const Workspace &here, const Scenarios::Scenario &scenario, const FaultIo::Plan &plan);

/// Does a scenario many times without starting anew: a child comes to the moment at which calls
/// begin to count and waits there. For each trial it sends a child of its own on from that moment.
class Crossroads
{
public:
    /// The files must be those that every trial begins with.
    Crossroads(const Workspace &here, const Scenarios::Scenario &scenario, const Look &look = {});
    ~Crossroads();
    Crossroads(const Crossroads &) = delete;
    Crossroads &operator=(const Crossroads &) = delete;

    /// One trial. The files have been put back before.
    Run go(const FaultIo::Plan &plan);

private:
    void wait(int requests, int answers, const Workspace &here, const Scenarios::Scenario &scenario,
              const Look &look);

    QFile toChild;
    QFile fromChild;
    pid_t child = -1;
};

/// What the trials of a scenario begin with and are compared with.
struct Ground {
    Scenarios::Files files; ///< that every trial begins with
    Scenarios::Files filesAfter;
    Scenarios::State before;
    Scenarios::State after;
    QStringList linesBefore; ///< of the list when the program is started, filled by addLines()
    QStringList linesAfter;
};

/// Makes the collection and does the scenario once without failures.
Ground prepare(const Workspace &here, const Scenarios::Scenario &scenario, int pageSize);
/// Starts the program on both states, for tests that start it on what is left.
void addLines(const Workspace &here, Ground &ground);

/// Numbers from 1 to `last`, at most `most` of them, spread evenly, with a `start` of their own.
QVector<int> spread(int last, int most, quint32 start);

/// The rows of a data table: one for each scenario, by its place in Scenarios::all(). In the short
/// form only every `step`-th from `first` on: the tests share the scenarios among them.
void addScenarioRows(int first, int step);

} // namespace Trial
