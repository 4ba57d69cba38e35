// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One forward walk over a table.
#pragma once

#include <QSqlQuery>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// Walks the rows of a table once, in table order, on the default connection. Values are
/// read by position; nothing of a row is kept. The statement is finished when the last row is
/// passed or the walk is destroyed, so it never stands in the way of later changes to the table.
class RowPass
{
public:
    /// Begins a walk over `columns` (all columns in table order when empty), which are named
    /// as DataBase::fieldNames() gives them. A table or column that does not exist gives a
    /// pass without rows.
    explicit RowPass(const QString &table, const QStringList &columns = {});
    /// Begins a walk over the values of `column` that may hold `run`, a part of a text as
    /// SqlText::plainRun() gives it. Others may be among them.
    RowPass(const QString &table, const QString &column, const QString &run);
    /// Begins a walk over the row with this Id, all columns in table order.
    RowPass(const QString &table, int id);
    ~RowPass();
    RowPass(const RowPass &) = delete;
    RowPass &operator=(const RowPass &) = delete;

    /// Steps to the next row; false when there is none.
    bool next();

    /// The current row's value at `position` in the columns asked for; invalid beyond them.
    QVariant value(int position) const;

    /// The driver's text when the table could not be read, or not to its end; empty otherwise.
    QString error() const;
    /// True when the table could not be read, or not to its end: what was read is not all.
    bool failed() const;

    /// True when it failed because there is no such table or column.
    bool isMissing() const;
    /// error() of a table that is there; nothing may be written on the strength of its rows.
    QString unreadable() const;

    /// Number of rows of a table, counted by SQLite itself; 0 when it cannot be read.
    static int count(const QString &table);

private:
    /// Runs `statement`; when it cannot be run, walks over all columns to find these among them.
    void begin(const QString &table, const QStringList &columns, const QString &statement);

    QSqlQuery query;
    QVector<int> positions;
};
