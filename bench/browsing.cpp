// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Measured operations: browsing.
#include "bench/collection.h"
#include "bench/floors.h"
#include "bench/openwindow.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QListWidget>

#include <benchmark/benchmark.h>

namespace
{

void barePass(benchmark::State &state)
{
    BareWindow bare(Collection::path(int(state.range(0))));
    for (auto _ : state) {
        bare.readAll();
    }
}

void listLoadFloor(benchmark::State &state)
{
    BareWindow bare(Collection::path(int(state.range(0))));
    for (auto _ : state) {
        bare.loadList();
    }
}

void listLoad(benchmark::State &state)
{
    const OpenWindow window(Collection::path(int(state.range(0))), Collection::table());
    for (auto _ : state) {
        window->changeToUsersPage();
        QCoreApplication::processEvents();
    }
}

void recordFloor(benchmark::State &state)
{
    const int records = int(state.range(0));
    BareWindow bare(Collection::path(records));
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        bare.showRecord(records / 2 + (odd ? 1 : 0));
    }
}

void jump(benchmark::State &state)
{
    const int records = int(state.range(0));
    const OpenWindow window(Collection::path(records), Collection::table());
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        window->vwRecord(odd ? records : 1);
        QCoreApplication::processEvents();
    }
}

void nextPrevious(benchmark::State &state)
{
    const int records = int(state.range(0));
    const OpenWindow window(Collection::path(records), Collection::table());
    window.get<QListWidget>("userListWidget")->setCurrentRow(records / 2);
    bool forward = false;
    for (auto _ : state) {
        forward = !forward;
        if (forward) {
            window->nextRecord();
        } else {
            window->prevRecord();
        }
        QCoreApplication::processEvents();
    }
}

void searchFloor(benchmark::State &state)
{
    const int records = int(state.range(0));
    BareWindow bare(Collection::path(records));
    bare.loadList();
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        benchmark::DoNotOptimize(
            bare.search(odd ? Collection::searchText() : QStringLiteral("moneta")));
        bare.showRecord(records / 2 + (odd ? 1 : 0));
    }
}

void searchKeystroke(benchmark::State &state)
{
    const OpenWindow window(Collection::path(int(state.range(0))), Collection::table());
    auto *const edit = window.get<QLineEdit>("userSearchEdit");
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        edit->setText(odd ? Collection::searchText() : QStringLiteral("moneta"));
        QCoreApplication::processEvents();
    }
}

void sizes(benchmark::internal::Benchmark *row)
{
    row->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.4);
}

BENCHMARK(barePass)->Name("bare pass")->Apply(sizes);
BENCHMARK(listLoadFloor)->Name("list load|floor")->Apply(sizes);
BENCHMARK(listLoad)->Name("list load")->Apply(sizes);
BENCHMARK(recordFloor)->Name("record by Id|floor")->Apply(sizes);
BENCHMARK(jump)->Name("record by Id")->Apply(sizes);
BENCHMARK(recordFloor)->Name("next, previous|floor")->Apply(sizes);
BENCHMARK(nextPrevious)->Name("next, previous")->Apply(sizes);
BENCHMARK(searchFloor)->Name("search keystroke|floor")->Apply(sizes);
BENCHMARK(searchKeystroke)->Name("search keystroke")->Apply(sizes);

} // namespace
