// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A working directory of a test's own, with databases made and read by plain SQL.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariant>
#include <QVector>

/// A fresh directory that is the process's working directory for as long as the object lives,
/// so that the program's small files and folders land in it. Paths are relative to it.
class Workspace
{
public:
    Workspace();
    ~Workspace();
    Workspace(const Workspace &) = delete;
    Workspace &operator=(const Workspace &) = delete;

    /// The absolute path of `name` in the directory; the directory itself for an empty name.
    QString path(const QString &name = QString()) const;

    /// Writes a file whole, making its folder where it is missing.
    void write(const QString &name, const QByteArray &bytes) const;
    /// A file's bytes; empty when it cannot be read.
    QByteArray read(const QString &name) const;
    /// True when the file or folder exists.
    bool exists(const QString &name) const;

    /// Makes `name` the database that the program opens when it starts.
    void remember(const QString &name) const;

    /// Runs statements on a database file over a connection of its own; fails the test when
    /// one of them does.
    void sql(const QString &name, const QStringList &statements) const;
    /// All rows of a query's result; fails the test when it cannot be run.
    QVector<QVariantList> rows(const QString &name, const QString &query) const;
    /// The first value of a query's result; invalid when there is none.
    QVariant value(const QString &name, const QString &query) const;
    /// The first column of a query's result as texts.
    QStringList column(const QString &name, const QString &query) const;

private:
    QTemporaryDir directory;
    QString before;
};
