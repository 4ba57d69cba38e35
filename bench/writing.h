// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What the measured operations that write need: a copy to write to, and the bare statements.
#pragma once

#include <QSqlDatabase>
#include <QStringList>

/// A copy of the collection with `records` records that the program has been started with
/// before; the copy made by the last call is gone.
QString writableCopy(int records);

/// A connection of its own that only runs statements.
class BareWriter
{
public:
    explicit BareWriter(const QString &databasePath);
    ~BareWriter();
    /// Runs the statements, several in one transaction.
    void run(const QStringList &statements);

private:
    QSqlDatabase database;
};
