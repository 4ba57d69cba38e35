// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Adds many records to one table.
#pragma once

#include "storage/sqltext.h"

#include <QSet>

class DataBase;

/// What adding the records of a file must know of their table is read once and kept in memory,
/// instead of being asked of the database for every record.
class BulkInsert
{
public:
    /// Reads the Ids of the table, whose columns are `columns`.
    BulkInsert(DataBase &db, const QString &table, const QStringList &columns);

    /// False for a table of another program whose Ids are not kept as ours are, or cannot be
    /// read: its records must be added one by one.
    bool isPossible() const { return possible; }

    /// The Id of the next record, which is taken from then on: the wished one; 0 when another
    /// record has it; the largest + 1 when the wished one is below 1; -1 when there is none left.
    int takeId(int wished);

    /// Reads the Ids again, after something else was done than what takeId() was asked for.
    void readIds();

    /// Adds a record with this Id; its values stand in the order of the columns, quotes
    /// doubled. Silent. False when it fails.
    bool insert(int id, const FieldPairs &values);

private:
    DataBase &db;
    const QString table;
    const QStringList columns;
    const SqlText::RowInsertion insertion;
    QSet<int> taken;
    qint64 largest = 0;
    bool possible = false;
};
