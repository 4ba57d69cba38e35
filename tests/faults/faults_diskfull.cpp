// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A disk that is full or fails: the person is told, nothing is lost, and a second try works.
#include "tests/faults/tools/trial.h"
#include "tests/support/Campaign.h"

#include <QApplication>
#include <QSet>
#include <QtTest>

#include <cerrno>

using FaultIo::Act;
using Scenarios::Scenario;
using Scenarios::State;

namespace
{

// The ways in which calls fail.
struct Failure {
    Act act;
    int error;
    const char *name;
};
const QVector<Failure> Failures = {{Act::FailOnce, ENOSPC, "full at"},
                                   {Act::FailOn, EIO, "failing from"},
                                   {Act::FailOn, ENOSPC, "full from"},
                                   {Act::FailOnce, EIO, "failing at"}};
// In the short form.
constexpr int UsualFailures = 2;

// More than any scenario needs, in bytes.
constexpr int MostRoom = 200000;

// The first lines of the boxes that tell of a failed statement or file.
const QStringList Messages = {
    QStringLiteral("ERRORE: Impossibile aggiungere un elemento alla tabella "),
    QStringLiteral("ERRORE: Impossibile aggiornare il Record!"),
    QStringLiteral("ERRORE: Impossibile cancellare il record!"),
    QStringLiteral("ERRORE: Impossibile creare la tabella "),
    QStringLiteral("ERRORE: Impossibile aggiungere il campo "),
    QStringLiteral("ERRORE: Impossibile cancellare la tabella "),
    QStringLiteral("ERRORE: Impossibile pulire la tabella "),
    QStringLiteral("ERRORE: Impossibile scrivere sul file!"),
    QStringLiteral("ERRORE: Impossibile esportare la Struttura Tabella!"),
    QStringLiteral("ERRORE: Impossibile aprire il Db!"),
    QStringLiteral("ERRORE: Impossibile leggere la tabella "),
    // Of the whole export, whatever became of the single files.
    QStringLiteral("Esportazione Completata!"),
};

QString strangeBox(const QStringList &told)
{
    for (const QString &text : told) {
        const auto begins = [&text](const QString &message) { return text.startsWith(message); };
        if (std::none_of(Messages.begin(), Messages.end(), begins)) {
            return QStringLiteral("a box says: ") + text;
        }
    }
    return QString();
}

// A box that tells of a failure.
bool isTold(const QStringList &told)
{
    return std::any_of(told.begin(), told.end(), [](const QString &text) {
        return text.startsWith(QLatin1String("ERRORE"));
    });
}

// What is wrong with the state that the failures have left.
QString faultAfterFailures(const State &now, const Trial::Ground &ground, const QStringList &told)
{
    const QString fault = Scenarios::faultOf(now, ground.before, ground.after, false);
    if (!fault.isEmpty()) {
        return fault;
    }
    if (now.databases != ground.after.databases && !isTold(told)) {
        return QStringLiteral("nobody is told");
    }
    return QString();
}

// The same where some room is left, so that small statements still succeed: what could not be
// written is missing, but told of, and nothing else is touched.
QString faultAfterLittleRoom(const State &now, const Trial::Ground &ground, const QStringList &told)
{
    State files = now;
    files.databases = ground.before.databases;
    const QString fault = Scenarios::faultOf(files, ground.before, ground.after, false);
    if (!fault.isEmpty()) {
        return fault;
    }
    for (auto database = now.databases.begin(); database != now.databases.end(); ++database) {
        if (database->value(0) != QLatin1String("ok")) {
            return database.key() + QLatin1String(": ") + database->value(0);
        }
        const QStringList &older = ground.before.databases[database.key()];
        const QStringList &newer = ground.after.databases[database.key()];
        const QSet<QString> lines(database->begin(), database->end());
        const QSet<QString> olderLines(older.begin(), older.end());
        const QSet<QString> newerLines(newer.begin(), newer.end());
        if (!lines.contains(QSet<QString>(olderLines).intersect(newerLines))) {
            return database.key() + QLatin1String(": something is lost");
        }
        const bool isHalf = !QSet<QString>(olderLines).unite(newerLines).contains(lines);
        if ((isHalf || *database != newer) && !isTold(told)) {
            return database.key() + QLatin1String(": nobody is told");
        }
    }
    return QString();
}

} // namespace

class DiskFull : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void secondTryWorks_data();
    void secondTryWorks();
    void littleRoomLosesNothing_data();
    void littleRoomLosesNothing();
    void cleanupTestCase();

private:
    static QString faultAt(const Workspace &here, Trial::Crossroads &crossroads,
                           const Trial::Ground &ground, const FaultIo::Plan &plan);
};

void DiskFull::initTestCase()
{
    FaultIo::skipSynchronisation();
}

// What is wrong when calls fail as planned; empty when nothing is.
QString DiskFull::faultAt(const Workspace &here, Trial::Crossroads &crossroads,
                          const Trial::Ground &ground, const FaultIo::Plan &plan)
{
    Scenarios::restore(here, ground.files);
    const Trial::Run run = crossroads.go(plan);
    if (run.signal != 0) {
        return QStringLiteral("ended by signal %1").arg(run.signal);
    }
    if (run.calls < plan.at) {
        return QStringLiteral("nothing has failed");
    }
    if (!run.middleFault.isEmpty()) {
        return QStringLiteral("left by the failures: ") + run.middleFault +
               QLatin1String(", told: ") + run.told.join(QLatin1Char('|'));
    }
    if (run.said.contains(Scenarios::lostTyping())) {
        return Scenarios::lostTyping();
    }
    const QString strange = strangeBox(run.told);
    if (!strange.isEmpty()) {
        return strange;
    }
    const State now = Scenarios::stateOf(here);
    const QString fault = Scenarios::faultOf(now, ground.after, ground.after, true);
    return fault.isEmpty() ? QString() : QStringLiteral("after the second try: ") + fault;
}

void DiskFull::secondTryWorks_data()
{
    Trial::addScenarioRows(1, 2);
}

void DiskFull::secondTryWorks()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    Campaign::Row row(QStringLiteral("disk full or failing: %1").arg(QLatin1String(scenario.name)));
    const Workspace here;
    const Trial::Ground ground = Trial::prepare(here, scenario, 4096);
    Trial::Crossroads crossroads(here, scenario, [&](const QStringList &told) {
        return faultAfterFailures(Scenarios::stateOf(here), ground, told);
    });
    QStringList found;
    for (const Failure &failure :
         Failures.mid(0, Campaign::cases(UsualFailures, Failures.size()))) {
        Scenarios::restore(here, ground.files);
        const int calls = crossroads.go({failure.act, 1000000, failure.error}).calls;
        QVERIFY2(calls > 1, "the program is not watched");
        for (const int at : Trial::spread(calls, Campaign::cases(1, 25), Campaign::start())) {
            const QString fault =
                faultAt(here, crossroads, ground, {failure.act, at, failure.error});
            row.ran();
            if (!fault.isEmpty()) {
                found.append(QStringLiteral("%1 call %2 of %3: %4")
                                 .arg(QLatin1String(failure.name))
                                 .arg(at)
                                 .arg(calls)
                                 .arg(fault));
            }
        }
    }
    row.failed(found.size());
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void DiskFull::littleRoomLosesNothing_data()
{
    Trial::addScenarioRows(0, 6);
}

void DiskFull::littleRoomLosesNothing()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    Campaign::Row row(QStringLiteral("little room: %1").arg(QLatin1String(scenario.name)));
    const Workspace here;
    const Trial::Ground ground = Trial::prepare(here, scenario, 4096);
    Trial::Crossroads crossroads(here, scenario, [&](const QStringList &told) {
        return faultAfterLittleRoom(Scenarios::stateOf(here), ground, told);
    });
    QStringList found;
    const QVector<int> rooms = Trial::spread(MostRoom, Campaign::cases(1, 30), Campaign::start());
    for (const int room : rooms) {
        Scenarios::restore(here, ground.files);
        const Trial::Run run = crossroads.go({Act::NoRoom, room, 0});
        row.ran();
        const QString fault = run.signal != 0 ? QStringLiteral("ended by signal %1").arg(run.signal)
                                              : run.middleFault + strangeBox(run.told);
        if (!fault.isEmpty()) {
            found.append(QStringLiteral("room for %1 bytes: %2").arg(room).arg(fault));
        }
    }
    row.failed(found.size());
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void DiskFull::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(DiskFull)

#include "faults_diskfull.moc"
