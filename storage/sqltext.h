// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Composes the text of every statement.
#pragma once

#include "model/columns.h"

#include <QString>
#include <QStringList>
#include <QVector>

/// Arguments to statement text; nothing is run here. In statements that only read, a name that
/// SQL would misread is put in double quotes, so that tables made by other programs can be
/// shown. In statements that write, names stand as they are: the caller makes sure that
/// refusal() has nothing against them.
namespace SqlText
{

/// How the value of a field is written.
enum class ValueKind { Id, Integer, Real, Text };

/// Why a writing statement cannot be composed of these names, as people read it; empty when
/// it can.
QString refusal(const QStringList &names);
/// The same for the SQL type of a column: letters, or nothing.
QString typeRefusal(const QString &type);
/// The same for a column that a new table gets.
QString columnRefusal(const ColumnDefinition &column);
/// The same for a field's value: in a text, a quote that stands alone would end the value too
/// early.
QString valueRefusal(const FieldPair &pair);

/// All rows with all columns, in table order.
QString selectAll(const QString &table);
/// All rows with these columns, in the same order. The columns must be readable by their bare
/// names.
QString selectColumns(const QString &table, const QStringList &columns);
/// The texts of a column that hold `run`, which is one of plainRun(), in any letter case, and all
/// values that are no texts. The column must be readable by its bare name.
QString selectColumnHolding(const QString &table, const QString &column, const QString &run);
/// The longest part of a lower-case text that SQLite is sure to find in whatever reads so in lower
/// case: ASCII letters and digits, with "_" for any character in place of those that others turn
/// into. Empty when there is none.
QString plainRun(const QString &lowerCaseText);
/// The rows whose Id column equals id.
QString selectById(const QString &table, int id);
/// The rows whose field equals a text, which is taken as it is: its quotes are doubled here.
QString selectByField(const QString &table, const QString &field, const QString &text);
/// The largest value of the Id column.
QString selectLargestId(const QString &table);
/// The number of rows.
QString countRows(const QString &table);

/// Makes a table with the Id column first; a repeated name gets the duplicate suffix.
QString createTable(const QString &table, const ColumnDefinitions &columns);
/// Adds one column.
QString addColumn(const QString &table, const QString &name, const QString &type);
/// Removes a table.
QString dropTable(const QString &table);
/// Removes all rows.
QString clearTable(const QString &table);
/// Adds one row that names all of `fields`: the Id, the values given, "0" for the rest.
QString insert(const QString &table, const QStringList &fields, int id,
               const FieldPairs &values = {});
/// Writes at least one field of the row with this Id.
QString update(const QString &table, int id, const FieldPairs &values);
/// Removes the row with this Id.
QString deleteById(const QString &table, int id);
/// Removes the rows with these Ids.
QString deleteByIds(const QString &table, const QVector<int> &ids);

/// The statements of insert() for many records of one table. What is the same in all of them is
/// composed once.
class RowInsertion
{
public:
    RowInsertion(const QString &table, const QStringList &fields);

    /// refusal() of the names.
    QString refusal() const { return namesRefusal; }
    /// valueRefusal() of a record's values, which stand in the order of the fields.
    QString valuesRefusal(const FieldPairs &values) const;
    /// The statement that adds the record of these values with this Id.
    QString statement(int id, const FieldPairs &values) const;

private:
    QString start;
    QString namesRefusal;
    QVector<ValueKind> kinds;
};

/// Reads the head of the file.
QString schemaVersion();
/// The names of all tables, in the driver's order.
QString tableNames();
/// Reads the list of tables, which SQLite checks at that.
QString schemaEntries();
/// Keeps a connection from writing.
QString queryOnly();

} // namespace SqlText
