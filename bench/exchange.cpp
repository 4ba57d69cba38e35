// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: export and import of records.
#include "bench/bareexchange.h"
#include "bench/collection.h"
#include "bench/openwindow.h"

#include <QElapsedTimer>
#include <QFile>

#include <benchmark/benchmark.h>

namespace
{

using Copy = QString (*)(int records);

double seconds(const QElapsedTimer &clock)
{
    return double(clock.nsecsElapsed()) / 1e9;
}

void exportFloor(benchmark::State &state, void (BareExchange::*write)(const QString &))
{
    BareExchange bare(Collection::path(int(state.range(0))));
    const QTemporaryDir folder;
    for (auto _ : state) {
        QElapsedTimer clock;
        clock.start();
        (bare.*write)(folder.filePath(QStringLiteral("out")));
        state.SetIterationTime(seconds(clock));
    }
}

void exportThrough(benchmark::State &state, void (Tavenor::*command)())
{
    const OpenWindow window(Collection::path(int(state.range(0))), QStringLiteral("autori"));
    window->changeTable(Collection::table());
    const QTemporaryDir folder;
    for (auto _ : state) {
        // Both begin with an older file from the second time on.
        QElapsedTimer clock;
        OpenWindow::chooseFile(folder.filePath(QStringLiteral("out")), [&] { clock.start(); });
        ((*window.operator->()).*command)();
        state.SetIterationTime(seconds(clock));
    }
}

void tableExportFloor(benchmark::State &state)
{
    exportFloor(state, &BareExchange::writeTable);
}

void tableExport(benchmark::State &state)
{
    exportThrough(state, &Tavenor::exportToFile);
}

void readableExportFloor(benchmark::State &state)
{
    exportFloor(state, &BareExchange::writeReadable);
}

void readableExport(benchmark::State &state)
{
    exportThrough(state, &Tavenor::exportToFileHumanReading);
}

void importFloor(benchmark::State &state, Copy target)
{
    const int records = int(state.range(0));
    const QString file = ExchangeFiles::exported(records);
    for (auto _ : state) {
        BareExchange bare(target(records));
        QElapsedTimer clock;
        clock.start();
        bare.readTable(file);
        state.SetIterationTime(seconds(clock));
    }
}

void importThrough(benchmark::State &state, Copy target)
{
    const int records = int(state.range(0));
    const QString file = ExchangeFiles::exported(records);
    for (auto _ : state) {
        const OpenWindow window(target(records), QStringLiteral("autori"));
        QElapsedTimer clock;
        OpenWindow::chooseFile(file, [&] { clock.start(); });
        window->importFromFile();
        state.SetIterationTime(seconds(clock));
    }
}

void emptyFloor(benchmark::State &state)
{
    importFloor(state, ExchangeFiles::emptiedCopy);
}

void intoEmpty(benchmark::State &state)
{
    importThrough(state, ExchangeFiles::emptiedCopy);
}

void fullFloor(benchmark::State &state)
{
    importFloor(state, ExchangeFiles::fullCopy);
}

void intoFull(benchmark::State &state)
{
    importThrough(state, ExchangeFiles::fullCopy);
}

void exportSizes(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    row->UseManualTime()->MinTime(1.0);
}

void importSizes(benchmark::internal::Benchmark *row)
{
    OpenWindow::sizes(row);
    row->UseManualTime()->MinTime(0.5);
}

BENCHMARK(tableExportFloor)->Name("table export|floor")->Apply(exportSizes);
BENCHMARK(tableExport)->Name("table export")->Apply(exportSizes);
BENCHMARK(readableExportFloor)->Name("readable export|floor")->Apply(exportSizes);
BENCHMARK(readableExport)->Name("readable export")->Apply(exportSizes);
BENCHMARK(emptyFloor)->Name("import into an empty table|floor")->Apply(importSizes);
BENCHMARK(intoEmpty)->Name("import into an empty table")->Apply(importSizes);
BENCHMARK(fullFloor)->Name("import into a full table|floor")->Apply(importSizes);
BENCHMARK(intoFull)->Name("import into a full table")->Apply(importSizes);

} // namespace
