// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A program that is killed while it writes leaves everything as it was or as it was to be.
#include "tests/faults/tools/child.h"
#include "tests/faults/tools/faultio.h"
#include "tests/faults/tools/scenarios.h"
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

struct Run {
    Child::Ended ended;
    long calls = 0;
};

// Does the scenario in a child that ends as planned.
Run runOnce(const Workspace &here, const Scenario &scenario, const FaultIo::Plan &plan)
{
    Run run;
    run.ended = Child::run([&] {
        long calls = 0;
        const std::string folder = here.path().toStdString();
        Scenarios::Stage stage(
            here, [&] { FaultIo::arm(folder, plan); }, [&] { calls = FaultIo::disarm(); });
        scenario.run(stage);
        return QStringList(QString::number(calls)) + stage.said() + stage.answers().told();
    });
    run.calls = run.ended.said.value(0).toLong();
    return run;
}

// Numbers from 1 to `last`, at most `most` of them, spread evenly with a start of their own.
QVector<long> spread(long last, int most, quint32 start)
{
    QVector<long> numbers;
    const double step = qMax(1.0, double(last) / most);
    const double offset = step > 1.0 ? start % 1000 / 1000.0 * step : 0.0;
    for (double at = offset; at < last; at += step) {
        numbers.append(long(at) + 1);
    }
    return numbers;
}

} // namespace

class Kill : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyMomentLeavesOldOrNew_data();
    void everyMomentLeavesOldOrNew();

private:
    // What one scenario is compared with.
    struct Ground {
        Scenarios::Files files;
        Scenarios::State before;
        Scenarios::State after;
        QStringList linesBefore;
        QStringList linesAfter;
    };
    static Ground prepare(const Workspace &here, const Scenario &scenario, int pageSize);
    static QString faultAt(const Workspace &here, const Scenario &scenario, const Ground &ground,
                           const FaultIo::Plan &plan);
};

void Kill::initTestCase()
{
    FaultIo::skipSynchronisation();
}

Kill::Ground Kill::prepare(const Workspace &here, const Scenario &scenario, int pageSize)
{
    Scenarios::makeCollection(here, pageSize);
    Ground ground;
    ground.files = Scenarios::filesOf(here);
    ground.before = Scenarios::stateOf(here);
    ground.linesBefore = Scenarios::linesAfterStart(here);
    Scenarios::restore(here, ground.files);
    runOnce(here, scenario, {});
    ground.after = Scenarios::stateOf(here);
    ground.linesAfter = Scenarios::linesAfterStart(here);
    return ground;
}

// What is wrong with what is left when the program ends as planned; empty when nothing is.
QString Kill::faultAt(const Workspace &here, const Scenario &scenario, const Ground &ground,
                      const FaultIo::Plan &plan)
{
    Scenarios::restore(here, ground.files);
    const Run run = runOnce(here, scenario, plan);
    if (run.ended.signal != SIGKILL) {
        return QStringLiteral("ended by signal %1").arg(run.ended.signal);
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
    QTest::addColumn<int>("index");
    for (int index = 0; index < Scenarios::all().size(); ++index) {
        QTest::newRow(Scenarios::all().at(index).name) << index;
    }
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
        const Ground ground = prepare(here, scenario, PageSizes.at(size));
        QCOMPARE(ground.before.databases.first().first(), QStringLiteral("ok"));
        QVERIFY(ground.before.databases != ground.after.databases ||
                ground.before.files != ground.after.files);
        for (const Moment &moment : Moments) {
            Scenarios::restore(here, ground.files);
            // Counted in a run that nothing ends.
            const Run whole = runOnce(here, scenario, {moment.act, 0, 0});
            QVERIFY2(whole.calls > 1, "the program is not watched");
            const int most = Campaign::cases(1, 60);
            for (const long at : spread(whole.calls, most, Campaign::start() + quint32(size))) {
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
