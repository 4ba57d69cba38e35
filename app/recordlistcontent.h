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
    /// What is called while the work goes on, so that the window does not stand still.
    struct Steps {
        std::function<void(int)> lineRead; ///< before each line, with the number of records done
        std::function<void()> other;       ///< all the other time
    };

    QStringList lines;      ///< one line per record
    QVector<int> ids;       ///< the Id of each line's record
    QVector<bool> titled;   ///< whether each line is the record's title
    QMap<QString, int> map; ///< line text -> Id; of equal lines the last one's Id
    QString error;          ///< why the table could not be read to its end; empty when it was

    /// Reads the lines of `table`, whose columns are `columns`, in table order: one pass over
    /// it and, where the title is a reference, one over the referenced table. Records that do
    /// not pass `filter` have no line.
    static RecordListContent read(const QString &table, const QStringList &columns,
                                  const Steps &steps,
                                  const Filters::Predicate &filter = Filters::Predicate());

    /// Puts the lines in alphabetical order, equal ones in table order.
    void sort(const Steps &steps);

    /// Fills the map. Lines in their order are met near their neighbours, which at 100,000
    /// records costs a third of entering them in the order of the table: so sort first.
    void index(const Steps &steps);
};
