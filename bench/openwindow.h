// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's window over a database to measure with.
#pragma once

#include "app/Tavenor.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>

/// The program's window over one database, in a working directory of its own.
class OpenWindow
{
public:
    /// Opens the database and makes `table` the current one.
    OpenWindow(const QString &databasePath, const QString &table);
    /// Opens the database with this many records and the table that is measured.
    explicit OpenWindow(int records);
    ~OpenWindow();
    Tavenor *operator->() const { return window.get(); }
    /// The widget of this name.
    template<typename Widget>
    Widget *get(const char *name) const
    {
        return window->findChild<Widget *>(QString::fromUtf8(name));
    }

    /// Answers the file dialog that is going to be opened with this file, and calls `gone` when it
    /// has left the screen: what comes then is the command's own.
    static void chooseFile(const QString &fileName, const std::function<void()> &gone);

    /// The numbers of records that each operation is measured with; a million only when the
    /// variable TAVENOR_BENCH_LARGE is set.
    static void sizes(benchmark::internal::Benchmark *row);

private:
    QTemporaryDir directory;
    QString before;
    std::unique_ptr<Tavenor> window;
};
