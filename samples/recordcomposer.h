// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Turns the sample collection's data into tables and records.
#pragma once

#include "model/columns.h"
#include "samples/sampledata.h"
#include "samples/tableplan.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// A table to make with its records; in a new table these get the Ids 1, 2, 3...
struct SampleTable {
    QString name;
    ColumnDefinitions columns;
    QVector<FieldPairs> records; ///< raw value texts, quotes not doubled
};

/// Lays out every table of the collection, the program's own ones included, as the program
/// itself would have written it.
class RecordComposer
{
public:
    /// `data` is used until compose() has returned.
    explicit RecordComposer(const SampleData &data);

    /// Composes all tables. False, with problem() set, when a data file refers to something
    /// that is not there.
    bool compose();

    /// The tables in the order in which they are made.
    const QVector<SampleTable> &tables() const { return composed; }

    /// What went wrong in compose(), for people.
    QString problem() const { return complaint; }

private:
    QVector<SampleTable> userTables();
    QVector<SampleTable> loanTables();
    SampleTable filters();
    QVector<FieldPairs> filterRecords(const TabFile &file, const QString &name,
                                      const QStringList &columns) const;
    FieldPairs record(const ColumnDefinitions &columns, const TabFile &file, int row,
                      const QString &folder);
    QString valueText(const QString &column, const QString &cell, const QString &folder);
    QString idText(const QString &table, const QString &title);
    void complain(const QString &text);

    const SampleData &data;
    QVector<SampleTable> composed;
    QString complaint;
};
