// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The lines that choice lists offer for the records of another table.
#pragma once

#include "model/columns.h"

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// Each list is read in one pass, in the order of the table. `error` gets the driver's text when
/// the table is there but could not be read, or not to its end; the list is then not to be offered.
namespace RecordChoices
{

/// Id and line of each record of a referenced table; the line is its Id and what stands in its
/// second column. `columns` are the table's.
QVector<QPair<int, QString>> idsAndTitles(const QString &table, const QStringList &columns,
                                          QString *error);

/// Id and referenced field of each record of a referenced table.
QVector<QPair<int, QString>> fieldValues(const Columns::Reference &reference, QString *error);

/// The link text of each record of a linked table: its Id and its line in the record list.
QStringList linkLines(const QString &table, const QStringList &columns, QString *error);

} // namespace RecordChoices
