// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people do in the window while the disk fails, and the collection that they do it to.
#pragma once

#include "tests/faults/tools/answers.h"
#include "tests/support/Workspace.h"

#include <QMap>
#include <QVector>

#include <functional>

class Tavenor;

namespace Scenarios
{

/// What a scenario is told by the test that runs it.
class Stage
{
public:
    /// The moment at which the calls of the command begin to count, and the one after it.
    using Moment = std::function<void()>;

    Stage(const Workspace &here, const Moment &begin, const Moment &end);

    const Workspace &workspace() const { return here; }
    Answers &answers() { return answering; }

    void begin() { beginning(); }
    void end() { ending(); }

    /// Notes what the person sees; Child::run() hands it to the test.
    void say(const QString &text) { heard.append(text); }
    const QStringList &said() const { return heard; }

private:
    const Workspace &here;
    Moment beginning;
    Moment ending;
    Answers answering;
    QStringList heard;
};

/// What Stage::said() holds when a page was left, or lost what was typed, although nothing was
/// saved.
QString lostTyping();

/// One thing that people do.
struct Scenario {
    /// As it stands in the table of results: "record saved".
    const char *name;
    /// Does it in the window, between Stage::begin() and Stage::end(); then, where the window
    /// does not show that it was done, does it once more, as a person would who has made room.
    void (*run)(Stage &stage);
    /// The database that the program opens when it starts.
    const char *database = "books.db";
};

/// All of them.
const QVector<Scenario> &all();

/// The collection: two tables of some dozen records, a saved filter, older exports, files to
/// attach and to import, another database. Small pages of the file make many writes.
void makeCollection(const Workspace &here, int pageSize);

/// All files of the working directory with their bytes, and its folders, whose names end in "/".
using Files = QMap<QString, QByteArray>;
Files filesOf(const Workspace &here);
/// Puts the working directory back.
void restore(const Workspace &here, const Files &files);

/// What the program keeps: every table, row and value of the databases, and the bytes of every
/// other file but its lock.
struct State {
    QMap<QString, QStringList> databases;
    Files files;
};
/// Reads the state from copies of the databases, so that the program itself is the first to open
/// what is left. An integrity check is part of what is read.
State stateOf(const Workspace &here);

/// What is wrong with a state between `before` and `after`: each database must be as in one of
/// the two (an imported table may also hold the first whole batches), each file too; empty when
/// nothing is. `isWhole` asks in addition that the files of a record are there when it is.
QString faultOf(const State &now, const State &before, const State &after, bool isWhole);

/// The lines of the record list after the next start, the lock of a killed program removed
/// before unless `keepsLock`.
QStringList linesAfterStart(const Workspace &here, bool keepsLock = false);

} // namespace Scenarios
