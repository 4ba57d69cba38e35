// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The lines of the record list, read from a table.
#pragma once

#include "model/filters.h"

#include <QMap>
#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

/// What the record list shows of a table, gathered before any of it is shown.
struct RecordListContent {
    QStringList lines;      ///< one line per record
    QVector<int> ids;       ///< the Id of each line's record
    QVector<bool> titled;   ///< whether each line is the record's title
    QMap<QString, int> map; ///< line text -> Id; of equal lines the last one's Id
    QString error;          ///< why the table could not be read to its end; empty when it was

    /// Reads the lines of `table`, whose columns are `columns`, in table order: one pass over
    /// it and, where the title is a reference, one over the referenced table. Records that do
    /// not pass `filter` have no line. `step` is called before each line with the number of
    /// records done.
    static RecordListContent read(const QString &table, const QStringList &columns,
                                  const std::function<void(int)> &step,
                                  const Filters::Predicate &filter = Filters::Predicate());

    /// Puts the lines in alphabetical order, equal ones in table order.
    void sort();

    /// Fills the map. Lines in their order are met near their neighbours, which at 100,000
    /// records costs a third of entering them in the order of the table: so sort first.
    void index();
};
