// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Adds the records of a file to a table, in batches.
#pragma once

#include "app/referencetexts.h"
#include "model/columns.h"
#include "storage/BulkInsert.h"

#include <QStringList>
#include <QVector>

#include <functional>

class DataBase;

/// A batch is written in one step for the disk. One in which anything fails is done again record
/// by record, so that people see what is wrong and keep the rest; the outcome is always that of
/// adding the records one after the other.
class RecordImport
{
public:
    enum class Outcome {
        Kept,      ///< the table has the record now
        Refused,   ///< it could not be added
        Unreadable ///< the table could not even be looked at, so nothing can be added
    };
    /// Adds one record the plain way, with its messages.
    using AddPlainly = std::function<Outcome(const FieldPairs &)>;

    /// For a table with these columns, which every record names all, in their order.
    RecordImport(DataBase &db, const QString &table, const QStringList &columns,
                 const AddPlainly &addPlainly);

    /// Adds a record, whose values have their quotes doubled. A record whose Id is taken is
    /// left out.
    void add(const FieldPairs &record);
    /// Writes the records that no full batch holds yet.
    void finish();
    /// True once several records in a row could not be added, or the table could not be looked at:
    /// the others would not be added either.
    bool hasStopped() const { return stopped; }

private:
    struct Row {
        int id;
        FieldPairs values;
    };

    void addEachPlainly();
    bool writeQuietly();
    QString userPath(const FieldPair &title, QString *error);

    DataBase &db;
    const QString table;
    const AddPlainly addPlainly;
    BulkInsert bulk;
    const int pathPosition; // of the column that is worked out; -1 when there is none
    QVector<Row> batch;
    int characters = 0;
    ReferenceTexts titles;
    bool titlesAreRead = false;
    bool stopped = false;
};
