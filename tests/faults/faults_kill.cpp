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
const QVector<int> PageSizes = {4096, 1024, 512};

// One start in so many is that of a second copy.
constexpr int ReadOnlyEvery = 4;

} // namespace

class Kill : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyMomentLeavesOldOrNew_data();
    void everyMomentLeavesOldOrNew();

private:
    static QString faultAt(const Workspace &here, const Scenario &scenario,
                           const Trial::Ground &ground, const FaultIo::Plan &plan);
};

void Kill::initTestCase()
{
    FaultIo::skipSynchronisation();
}

// What is wrong with what is left when the program ends as planned; empty when nothing is.
QString Kill::faultAt(const Workspace &here, const Scenario &scenario, const Trial::Ground &ground,
                      const FaultIo::Plan &plan)
{
    Scenarios::restore(here, ground.files);
    const Trial::Run run = Trial::once(here, scenario, plan);
    if (run.signal != SIGKILL) {
        return QStringLiteral("ended by signal %1").arg(run.signal);
    }
    const Scenarios::State left = Scenarios::stateOf(here);
    const QString fault = Scenarios::faultOf(left, ground.before, ground.after, true);
    if (!fault.isEmpty()) {
        return fault;
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
    Trial::addScenarioRows();
}

void Kill::everyMomentLeavesOldOrNew()
{
    QFETCH(int, index);
    const Scenario &scenario = Scenarios::all().at(index);
    int cases = 0;
    QStringList found;
    const int pageSizes = Campaign::cases(1, PageSizes.size());
    for (int size = 0; size < pageSizes; ++size) {
        const Workspace here;
        const Trial::Ground ground = Trial::prepare(here, scenario, PageSizes.at(size));
        QCOMPARE(ground.before.databases.first().first(), QStringLiteral("ok"));
        QVERIFY(ground.before.databases != ground.after.databases ||
                ground.before.files != ground.after.files);
        for (const Moment &moment : Moments) {
            Scenarios::restore(here, ground.files);
            // Counted in a run that nothing ends.
            const Trial::Run whole = Trial::once(here, scenario, {moment.act, 0, 0});
            QVERIFY2(whole.calls > 1, "the program is not watched");
            const int most = Campaign::cases(1, 34);
            for (const int at :
                 Trial::spread(whole.calls, most, Campaign::start() + quint32(size))) {
                const QString fault = faultAt(here, scenario, ground, {moment.act, at, 0});
                ++cases;
                if (!fault.isEmpty()) {
                    found.append(QStringLiteral("%1 call %2 of %3, page size %4: %5")
                                     .arg(QLatin1String(moment.name))
                                     .arg(at)
                                     .arg(whole.calls)
                                     .arg(PageSizes.at(size))
                                     .arg(fault));
                }
            }
        }
    }
    Campaign::report(QStringLiteral("kill -9: %1").arg(QLatin1String(scenario.name)), cases,
                     QStringLiteral("%1 failures").arg(found.size()));
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
}

QTEST_MAIN(Kill)

#include "faults_kill.moc"
