// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A program that is killed while it writes leaves everything as it was or as it was to be.
#include "tests/faults/tools/trial.h"
#include "tests/support/Campaign.h"

#include <QApplication>
#include <QtTest>

#include <csignal>

using FaultIo::Act;
using Scenarios::Scenario;

namespace
{

// The moments of one way of ending: before, in the middle of and after each call.
struct Moment {
    Act act;
    const char *name;
};
const QVector<Moment> Moments = {
    {Act::KillBefore, "before"}, {Act::KillHalf, "in the middle of"}, {Act::KillAfter, "after"}};

// Files with small pages are written in many pieces.
const QVector<int> PageSizes = {4096, 2048, 1024, 512};

// The program is started on what is left of every second case, one time in three as a second copy
// that finds the lock.
constexpr int StartEvery = 2;
constexpr int ReadOnlyEvery = 3;

} // namespace

class Kill : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyMomentLeavesOldOrNew_data();
    void everyMomentLeavesOldOrNew();
    void cleanupTestCase();

private:
    static QString faultAt(const Workspace &here, Trial::Crossroads &crossroads,
                           const Trial::Ground &ground, const FaultIo::Plan &plan);
};

void Kill::initTestCase()
{
    FaultIo::skipSynchronisation();
}

// What is wrong with what is left when the program ends as planned; empty when nothing is.
QString Kill::faultAt(const Workspace &here, Trial::Crossroads &crossroads,
                      const Trial::Ground &ground, const FaultIo::Plan &plan)
{
    Scenarios::restore(here, ground.files);
    const Trial::Run run = crossroads.go(plan);
    if (run.signal != SIGKILL) {
        return QStringLiteral("ended by signal %1").arg(run.signal);
    }
    const Scenarios::State left = Scenarios::stateOf(here);
    const QString fault = Scenarios::faultOf(left, ground.before, ground.after, true);
    if (!fault.isEmpty()) {
        return fault;
    }
    if (plan.at % StartEvery != 0) {
        return QString();
    }
    // The lock of a program that was killed is still there: the next one only reads.
    const bool keepsLock = plan.at % ReadOnlyEvery == 0;
    const QStringList lines = Scenarios::linesAfterStart(here, keepsLock);
    if (lines != ground.linesBefore && lines != ground.linesAfter) {
        return QStringLiteral("the next start shows: ") + lines.join(QLatin1Char('|'));
    }
    return QString();
}

void Kill::everyMomentLeavesOldOrNew_data()
{
    Trial::addScenarioRows(0, 2);
}

void Kill::everyMomentLeavesOldOrNew()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    Campaign::Row row(QStringLiteral("kill -9: %1").arg(QLatin1String(scenario.name)));
    const QVector<int> pageSizes = PageSizes.mid(0, Campaign::cases(1, PageSizes.size()));
    // Divided among the sizes and moments; those with fewer calls leave theirs to the later ones.
    int wanted = Campaign::cases(3, 310);
    int shares = pageSizes.size() * Moments.size();
    QStringList found;
    for (const int pageSize : pageSizes) {
        const Workspace here;
        Trial::Ground ground = Trial::prepare(here, scenario, pageSize);
        Trial::addLines(here, ground);
        QCOMPARE(ground.before.databases.first().first(), QStringLiteral("ok"));
        QVERIFY(ground.before.databases != ground.after.databases ||
                ground.before.files != ground.after.files);
        Trial::Crossroads crossroads(here, scenario);
        for (const Moment &moment : Moments) {
            Scenarios::restore(here, ground.files);
            // Counted in a run that nothing ends.
            const int calls = crossroads.go({moment.act, 0, 0}).calls;
            QVERIFY2(calls > 1, "the program is not watched");
            const QVector<int> chosen =
                Trial::spread(calls, wanted / shares, Campaign::start() + quint32(pageSize));
            --shares;
            wanted -= chosen.size();
            for (const int at : chosen) {
                const QString fault = faultAt(here, crossroads, ground, {moment.act, at, 0});
                row.ran();
                if (!fault.isEmpty()) {
                    found.append(QStringLiteral("%1 call %2 of %3, page size %4: %5")
                                     .arg(QLatin1String(moment.name))
                                     .arg(at)
                                     .arg(calls)
                                     .arg(pageSize)
                                     .arg(fault));
                }
            }
        }
    }
    row.failed(found.size());
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

void Kill::cleanupTestCase()
{
    Campaign::report();
}

QTEST_MAIN(Kill)

#include "faults_kill.moc"
