// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which tables the sample collection has.
#pragma once

#include "model/columns.h"

#include <QString>
#include <QVector>

/// One table of the sample collection.
struct TablePlan {
    QString table;             ///< stored name
    QString source;            ///< name of its data file and of its icon, without ending
    ColumnDefinitions columns; ///< its columns without the Id, laid out as the designer would
};

namespace TablePlans
{

/// Stored name of the table of books, the one that the covers, sheets and loans belong to.
extern const QString Books;
/// Label of the books' field that holds their loans.
extern const QString LoansLabel;

/// The tables in the order in which they are made and so listed.
QVector<TablePlan> tables();

/// The columns that every book's table of loans has.
ColumnDefinitions loanColumns();

/// The heading under which a data file holds the values of `column`: its label, or for a
/// reference the name of the table that it refers to.
QString heading(const QString &column);

} // namespace TablePlans
