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
                                   {Act::FailOn, ENOSPC, "full from"},
                                   {Act::FailOnce, EIO, "failing at"},
                                   {Act::FailOn, EIO, "failing from"}};

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

} // namespace

class DiskFull : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void secondTryWorks_data();
    void secondTryWorks();

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
    if (!run.middleFault.isEmpty()) {
        return QStringLiteral("left by the failures: ") + run.middleFault +
               QLatin1String(", told: ") + run.told.join(QLatin1Char('|'));
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
    Trial::addScenarioRows();
}

void DiskFull::secondTryWorks()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    const Workspace here;
    const Trial::Ground ground = Trial::prepare(here, scenario, 4096);
    Trial::Crossroads crossroads(here, scenario, [&](const QStringList &told) {
        return faultAfterFailures(Scenarios::stateOf(here), ground, told);
    });
    int cases = 0;
    QStringList found;
    for (const Failure &failure : Failures) {
        Scenarios::restore(here, ground.files);
        const int calls = crossroads.go({failure.act, 1000000, failure.error}).calls;
        QVERIFY2(calls > 1, "the program is not watched");
        for (const int at : Trial::spread(calls, Campaign::cases(1, 25), Campaign::start())) {
            const QString fault =
                faultAt(here, crossroads, ground, {failure.act, at, failure.error});
            ++cases;
            if (!fault.isEmpty()) {
                found.append(QStringLiteral("%1 call %2 of %3: %4")
                                 .arg(QLatin1String(failure.name))
                                 .arg(at)
                                 .arg(calls)
                                 .arg(fault));
            }
        }
    }
    Campaign::report(QStringLiteral("disk full or failing: %1").arg(QLatin1String(scenario.name)),
                     cases, QStringLiteral("%1 failures").arg(found.size()));
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

QTEST_MAIN(DiskFull)

#include "faults_diskfull.moc"
