// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's window over a database to measure with.
#include "bench/openwindow.h"

#include "bench/collection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

OpenWindow::OpenWindow(const QString &databasePath, const QString &table)
    : before(QDir::currentPath())
{
    QDir::setCurrent(directory.path());
    QFile remembered(QStringLiteral("lastDb.dat"));
    remembered.open(QIODevice::WriteOnly);
    remembered.write(databasePath.toUtf8());
    remembered.close();
    window = std::make_unique<Tavenor>();
    window->show();
    window->changeTable(table);
    QCoreApplication::processEvents();
}

OpenWindow::OpenWindow(int records)
    : OpenWindow(Collection::path(records), Collection::table())
{
}

void OpenWindow::sizes(benchmark::internal::Benchmark *row)
{
    row->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(0.4);
}

OpenWindow::~OpenWindow()
{
    window.reset();
    QDir::setCurrent(before);
}
