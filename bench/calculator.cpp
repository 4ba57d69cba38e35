// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: the calculator.
#include "app/Tavenor.h"
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace
{

void calculatorFloor(benchmark::State &state)
{
    BareWindow bare(Collection::path(int(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bare.sumColumns());
    }
}

void calculator(benchmark::State &state)
{
    const OpenWindow window(int(state.range(0)));
    window->changeToCalcPage();
    for (auto _ : state) {
        window->calcResult();
        QCoreApplication::processEvents();
    }
}

BENCHMARK(calculatorFloor)->Name("calculator|floor")->Apply(OpenWindow::sizes);
BENCHMARK(calculator)->Name("calculator")->Apply(OpenWindow::sizes);

} // namespace
