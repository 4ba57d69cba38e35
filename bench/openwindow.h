// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The program's window to measure with.
#pragma once

#include "app/Tavenor.h"
#include "bench/collection.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

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

private:
    QTemporaryDir directory;
    QString before;
    std::unique_ptr<Tavenor> window;
};
