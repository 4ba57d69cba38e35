// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's window, open over a database to measure with.
#pragma once

#include "app/Tavenor.h"
#include "bench/collection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

/// The program's window over one database, in a working directory of its own.
class OpenWindow
{
public:
    explicit OpenWindow(int records)
        : before(QDir::currentPath())
    {
        QDir::setCurrent(directory.path());
        QFile remembered(QStringLiteral("lastDb.dat"));
        remembered.open(QIODevice::WriteOnly);
        remembered.write(Collection::path(records).toUtf8());
        remembered.close();
        window = std::make_unique<Tavenor>();
        window->show();
        window->changeTable(Collection::table());
        QCoreApplication::processEvents();
    }
    ~OpenWindow()
    {
        window.reset();
        QDir::setCurrent(before);
    }
    Tavenor *operator->() const { return window.get(); }
    template<typename Widget>
    Widget *get(const char *name) const
    {
        return window->findChild<Widget *>(QString::fromUtf8(name));
    }

    /// The numbers of records that each operation is measured with.
    static void sizes(benchmark::internal::Benchmark *row)
    {
        row->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.4);
    }

private:
    QTemporaryDir directory;
    QString before;
    std::unique_ptr<Tavenor> window;
};
