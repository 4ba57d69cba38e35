// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Runs a scenario in a child in which calls that write fail or end it.
#include "tests/faults/tools/trial.h"

#include <QtTest>

namespace Trial
{

Run once(const Workspace &here, const Scenarios::Scenario &scenario, const FaultIo::Plan &plan,
         const std::function<QString(const QStringList &told)> &look)
{
    const Child::Ended ended = Child::run([&] {
        QString calls;
        QString fault;
        Scenarios::Stage *current = nullptr;
        const auto begin = [&] { FaultIo::arm(here.path().toStdString(), plan); };
        const auto end = [&] {
            calls = QString::number(FaultIo::disarm());
            fault = look ? look(current->answers().told()) : QString();
        };
        Scenarios::Stage stage(here, begin, end);
        current = &stage;
        scenario.run(stage);
        return QStringList{calls, fault, QString::number(stage.said().size())} + stage.said() +
               stage.answers().told();
    });
    Run run;
    run.signal = ended.signal;
    run.calls = ended.said.value(0).toInt();
    run.middleFault = ended.said.value(1);
    const int said = ended.said.value(2).toInt();
    run.said = ended.said.mid(3, said);
    run.told = ended.said.mid(3 + said);
    return run;
}

Ground prepare(const Workspace &here, const Scenarios::Scenario &scenario, int pageSize)
{
    Scenarios::makeCollection(here, pageSize);
    Ground ground;
    ground.files = Scenarios::filesOf(here);
    ground.before = Scenarios::stateOf(here);
    ground.linesBefore = Scenarios::linesAfterStart(here);
    Scenarios::restore(here, ground.files);
    once(here, scenario, {});
    ground.after = Scenarios::stateOf(here);
    ground.linesAfter = Scenarios::linesAfterStart(here);
    return ground;
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

void addScenarioRows()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < Scenarios::all().size(); ++index) {
        QTest::newRow(Scenarios::all().at(index).name) << index;
    }
}

} // namespace Trial
