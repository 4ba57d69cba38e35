// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: filters.
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"
#include "model/filters.h"
#include "widgets/inputDataForm.h"

#include <QCoreApplication>

namespace
{

struct Wanted {
    QString column;
    Filters::Comparison comparison;
    QString value;
    bool joinsWithAnd;
};

// The conditions that the floor compares in plain code.
QVector<Wanted> threeConditions()
{
    return {{QStringLiteral("NDATEFORMAT_Acquistato"), Filters::Comparison::Minor,
             QStringLiteral("01/01/2013"), true},
            {QStringLiteral("NINTEGERFORMAT_Anno"), Filters::Comparison::Major,
             QStringLiteral("1950"), true},
            {QStringLiteral("NSTRINGFORMAT_Luogo"), Filters::Comparison::Major,
             QStringLiteral("Scaffale 1"), false}};
}

void setConditions(const OpenWindow &window)
{
    for (inputDataForm *const form : window->findChildren<inputDataForm *>()) {
        for (const Wanted &wanted : threeConditions()) {
            if (form->columnName() == wanted.column) {
                form->setSetting({wanted.column, Filters::comparedFormat(wanted.column),
                                  wanted.value, wanted.comparison, true, wanted.joinsWithAnd,
                                  false});
            }
        }
    }
}

void filterFloor(benchmark::State &state)
{
    BareWindow bare(Collection::path(int(state.range(0))));
    for (auto _ : state) {
        bare.showRecord(bare.loadFilteredList());
    }
}

void filterOn(benchmark::State &state)
{
    const OpenWindow window(int(state.range(0)));
    setConditions(window);
    for (auto _ : state) {
        window->enableFilters();
        QCoreApplication::processEvents();
    }
}

BENCHMARK(filterFloor)->Name("filter on, three conditions|floor")->Apply(OpenWindow::sizes);
BENCHMARK(filterOn)->Name("filter on, three conditions")->Apply(OpenWindow::sizes);

} // namespace
