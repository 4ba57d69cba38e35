// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a scenario in a child in which calls that write fail or end it.
#include "tests/faults/tools/trial.h"

#include "tests/support/Campaign.h"

#include <QDataStream>
#include <QtTest>

#include <array>

#include <sys/wait.h>
#include <unistd.h>

namespace Trial
{

namespace
{

// Does the scenario; what it says can be read by runOf().
QStringList act(const Workspace &here, const Scenarios::Scenario &scenario,
                const Scenarios::Stage::Moment &begin, const Look &look)
{
    QString calls;
    QString fault;
    Scenarios::Stage *current = nullptr;
    const auto end = [&] {
        calls = QString::number(FaultIo::disarm());
        fault = look ? look(current->answers().told()) : QString();
    };
    Scenarios::Stage stage(here, begin, end);
    current = &stage;
    scenario.run(stage);
    return QStringList{calls, fault, QString::number(stage.said().size())} + stage.said() +
           stage.answers().told();
}

Run runOf(const Child::Ended &ended)
{
    Run run;
    run.signal = ended.signal;
    run.calls = ended.said.value(0).toInt();
    run.middleFault = ended.said.value(1);
    const int said = ended.said.value(2).toInt();
    run.said = ended.said.mid(3, said);
    run.told = ended.said.mid(3 + said);
    return run;
}

std::array<int, 2> newPipe()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        qFatal("no pipe");
    }
    return ends;
}

} // namespace

Run once(const Workspace &here, const Scenarios::Scenario &scenario, const FaultIo::Plan &plan)
{
    return runOf(Child::run([&] {
        const auto begin = [&] { FaultIo::arm(here.path().toStdString(), plan); };
        return act(here, scenario, begin, {});
    }));
}

Crossroads::Crossroads(const Workspace &here, const Scenarios::Scenario &scenario, const Look &look)
{
    const std::array<int, 2> requests = newPipe();
    const std::array<int, 2> answers = newPipe();
    child = fork();
    if (child == 0) {
        close(requests[1]);
        close(answers[0]);
        wait(requests[0], answers[1], here, scenario, look);
    }
    close(requests[0]);
    close(answers[1]);
    // Unbuffered: a buffer would wait for more than there is.
    const bool isOpen = toChild.open(requests[1], QIODevice::WriteOnly | QIODevice::Unbuffered,
                                     QFileDevice::AutoCloseHandle) &&
                        fromChild.open(answers[0], QIODevice::ReadOnly | QIODevice::Unbuffered,
                                       QFileDevice::AutoCloseHandle);
    if (child < 0 || !isOpen) {
        qFatal("no child");
    }
}

Crossroads::~Crossroads()
{
    // Nothing more to read is the child's sign to end.
    toChild.close();
    waitpid(child, nullptr, 0);
}

// The life of the child; it never returns into the test.
void Crossroads::wait(int requests, int answers, const Workspace &here,
                      const Scenarios::Scenario &scenario, const Look &look)
{
    const auto begin = [&] {
        FaultIo::Plan plan;
        while (read(requests, &plan, sizeof plan) == ssize_t(sizeof plan)) {
            Child::Ended ended;
            if (Child::branch(&ended)) {
                FaultIo::arm(here.path().toStdString(), plan);
                return;
            }
            QFile pipe;
            pipe.open(answers, QIODevice::WriteOnly);
            QDataStream stream(&pipe);
            stream << ended.signal << ended.said;
        }
        _exit(0);
    };
    Child::finish(act(here, scenario, begin, look));
}

Run Crossroads::go(const FaultIo::Plan &plan)
{
    toChild.write(reinterpret_cast<const char *>(&plan), sizeof plan);
    Child::Ended ended;
    QDataStream stream(&fromChild);
    stream >> ended.signal >> ended.said;
    if (stream.status() != QDataStream::Ok) {
        qFatal("the child that waits has ended");
    }
    return runOf(ended);
}

Ground prepare(const Workspace &here, const Scenarios::Scenario &scenario, int pageSize)
{
    Scenarios::makeCollection(here, pageSize);
    here.remember(QLatin1String(scenario.database));
    Ground ground;
    ground.files = Scenarios::filesOf(here);
    ground.before = Scenarios::stateOf(here);
    once(here, scenario, {});
    ground.after = Scenarios::stateOf(here);
    ground.filesAfter = Scenarios::filesOf(here);
    Scenarios::restore(here, ground.files);
    return ground;
}

void addLines(const Workspace &here, Ground &ground)
{
    Scenarios::restore(here, ground.filesAfter);
    ground.linesAfter = Scenarios::linesAfterStart(here);
    Scenarios::restore(here, ground.files);
    ground.linesBefore = Scenarios::linesAfterStart(here);
    Scenarios::restore(here, ground.files);
}

QVector<int> spread(int last, int most, quint32 start)
{
    QVector<int> numbers;
    const double step = qMax(1.0, double(last) / most);
    const double offset = step > 1.0 ? start % 1000 / 1000.0 * step : 0.0;
    for (double at = offset; at < last; at += step) {
        numbers.append(int(at) + 1);
    }
    return numbers;
}

void addScenarioRows(int first, int step)
{
    QTest::addColumn<int>("index");
    for (int index = Campaign::cases(first, 0); index < Scenarios::all().size();
         index += Campaign::cases(step, 1)) {
        QTest::newRow(Scenarios::all().at(index).name) << index;
    }
}

} // namespace Trial
