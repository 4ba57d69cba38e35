// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Encoded column names taken apart and put together.
#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

/// A column to create: its stored name and its SQL type.
using ColumnDefinition = QPair<QString, QString>;
using ColumnDefinitions = QVector<ColumnDefinition>;

/// One value of a record to write: the column's stored name and the value text.
using FieldPair = QPair<QString, QString>;
using FieldPairs = QVector<FieldPair>;

namespace Columns
{

/// What the name of a reference column says.
struct Reference {
    QString table;       ///< stored name of the referenced table
    QString description; ///< encoded name after "_XDTX_", its duplicate suffix included
    QString field;       ///< column of the referenced table: the description without suffix
};

/// True when the column must be filled (its name begins with "R").
bool isRequired(const QString &column);

/// True when the column holds the Id of a record of another table (begins with "X").
bool isReference(const QString &column);

/// The parts of a reference column's name; texts are empty where the name lacks them, and all
/// are empty for a column that is no reference.
Reference reference(const QString &column);

/// The column whose format and label describe `column`: itself, or for a reference column
/// the referenced field's encoded name.
QString described(const QString &column);

/// The short format word: "NDATEFORMAT_x" gives "DATE"; of a reference column the
/// referenced field's. A name without "FORMAT_" gives all but its first character.
QString formatWord(const QString &column);

/// The label as stored, the duplicate suffix included; of a reference column the
/// referenced field's. Empty for a name without "FORMAT_".
QString label(const QString &column);

/// A label as people read it: the first duplicate marker is cut out, text after a second
/// one is dropped ("Nota_XMLTYX_2" gives "Nota2").
QString shownLabel(const QString &label);

/// What stands beside a field: the shown label, or the whole column name when the name
/// follows no rule and so has no label.
QString shownName(const QString &column);

/// True for the labels "Id" and "UserPath" in any letter case: the program's own fields,
/// shown in the advanced mode only.
bool isSystemLabel(const QString &label);

/// The name cut before its duplicate suffix.
QString withoutDuplicateSuffix(const QString &column);

/// The name that a column gets when `earlier` columns carry the same one: suffixed with
/// earlier + 1, except for link columns and when earlier is 0.
QString withDuplicateSuffix(const QString &column, int earlier);

/// The columns of a new table, with the one for the folder of a record's attachments before the
/// first column whose name tells of a picture or a PDF, or last.
ColumnDefinitions withUserPath(const ColumnDefinitions &columns);

/// True when the column is a link, or copies one, and is among `others` already: SQLite compares
/// without the case of ASCII letters, and a link gets no duplicate suffix.
bool isRepeatedLink(const QString &column, const QStringList &others);

/// The columns with names that one table can have: those that are equal but for the case of ASCII
/// letters get the duplicate suffix, and a repeated link is left out.
ColumnDefinitions creatable(const ColumnDefinitions &columns);

/// The stored name of the table that a LINK column leads to: its label is that table's shown
/// name, made safe for a column's name. A "#" stands for the hidden marker in the name of a plain
/// table or of a detail table's parent, full-width or not, and the outer two arrows divide the
/// parts of a detail table's name. So a table cannot be linked to when it has a full-width "＃"
/// in its name, or arrows of that kind in another place than the title that a detail table is
/// named after.
QString linkTarget(const QString &column);

} // namespace Columns
