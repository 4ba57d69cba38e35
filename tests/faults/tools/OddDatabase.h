// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Databases as they reach a program in the end: good ones that were damaged, and foreign ones.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QRandomGenerator>
#include <QString>
#include <QStringList>

/// Makes database files out of random numbers: the same numbers give the same file.
class OddDatabase
{
public:
    /// What is wrong with a file.
    enum class Kind { FlippedBytes, Truncated, SwappedPages, ZeroedPages, Foreign };

    /// The kinds, in their order, as the campaign's table calls them.
    static QStringList kinds();

    /// Writes a file of this kind in place of `path`.
    void write(const QString &path, Kind kind, QRandomGenerator &random);

    /// `name` in double quotes, as SQL takes every name.
    static QString quoted(const QString &name);

    /// Runs the statements on the file one after the other; those that fail are left out.
    static void run(const QString &path, const QStringList &statements);

private:
    QByteArray goodFile(const QString &path, QRandomGenerator &random);
    static void writeForeign(const QString &path, QRandomGenerator &random);

    QHash<QString, QByteArray> goodFiles;
};
