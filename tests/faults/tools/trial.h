// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a scenario in a child in which calls that write fail or end it.
#pragma once

#include "tests/faults/tools/child.h"
#include "tests/faults/tools/faultio.h"
#include "tests/faults/tools/scenarios.h"

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

/// Does the scenario in a child, with its calls treated as planned. `look`, when given, is called
/// at the end of the failures, before things are done once more.
Run once(const Workspace &here, const Scenarios::Scenario &scenario, const FaultIo::Plan &plan,
         const std::function<QString(const QStringList &told)> &look = {});

/// What the trials of a scenario begin with and are compared with.
struct Ground {
    Scenarios::Files files;
    Scenarios::State before;
    Scenarios::State after;
    QStringList linesBefore;
    QStringList linesAfter;
};

/// Makes the collection and does the scenario once without failures.
Ground prepare(const Workspace &here, const Scenarios::Scenario &scenario, int pageSize);

/// Numbers from 1 to `last`, at most `most` of them, spread evenly, with a `start` of their own.
QVector<int> spread(int last, int most, quint32 start);

/// The rows of a data table: one for each scenario, by its place in Scenarios::all().
void addScenarioRows();

} // namespace Trial
