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
    const OpenWindow window(int(state.range(0)));
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
    const OpenWindow window(records);
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
    const OpenWindow window(records);
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
    const OpenWindow window(int(state.range(0)));
    auto *const edit = window.get<QLineEdit>("userSearchEdit");
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        edit->setText(odd ? Collection::searchText() : QStringLiteral("moneta"));
        QCoreApplication::processEvents();
    }
}

BENCHMARK(barePass)->Name("bare pass")->Apply(OpenWindow::sizes);
BENCHMARK(listLoadFloor)->Name("list load|floor")->Apply(OpenWindow::sizes);
BENCHMARK(listLoad)->Name("list load")->Apply(OpenWindow::sizes);
BENCHMARK(recordFloor)->Name("record by Id|floor")->Apply(OpenWindow::sizes);
BENCHMARK(jump)->Name("record by Id")->Apply(OpenWindow::sizes);
BENCHMARK(recordFloor)->Name("next, previous|floor")->Apply(OpenWindow::sizes);
BENCHMARK(nextPrevious)->Name("next, previous")->Apply(OpenWindow::sizes);
BENCHMARK(searchFloor)->Name("search keystroke|floor")->Apply(OpenWindow::sizes);
BENCHMARK(searchKeystroke)->Name("search keystroke")->Apply(OpenWindow::sizes);

} // namespace
