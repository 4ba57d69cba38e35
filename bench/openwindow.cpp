// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's window over a database to measure with.
#include "bench/openwindow.h"

#include "bench/collection.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTimer>

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
    if (qEnvironmentVariableIsSet("TAVENOR_BENCH_LARGE")) {
        row->Arg(1000000);
    }
}

void OpenWindow::chooseFile(const QString &fileName, const std::function<void()> &gone)
{
    QTimer::singleShot(0, qApp, [fileName, gone] {
        auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(fileName);
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        QObject::connect(dialog, &QObject::destroyed, qApp, gone);
        QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
    });
}

OpenWindow::~OpenWindow()
{
    window.reset();
    QDir::setCurrent(before);
}
