// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The naming utilities: how stored names of tables and columns are read and built.
#pragma once

#include <QString>

/// Pure functions over names. None of them fails: a name that follows no rule gives the
/// result that the rule's text operations give on it.
namespace Names
{

/// The keyword without any "FORMAT": "STRINGFORMAT" gives "STRING".
QString formatWord(QString keyword);

/// The label in an encoded column name: the text after the first "FORMAT_" and before the
/// next one; empty when the name holds no "FORMAT_".
QString fieldLabel(QString column);

/// The format keyword in an encoded column name: "RINTEGERFORMAT_Id" gives "INTEGERFORMAT".
QString formatKeyword(QString column);

/// Required flag and format word together: "RSTRINGFORMAT_x" gives "RSTRING".
QString flagAndType(QString column);

/// The two texts joined by "_".
QString joinName(QString a, QString b);

/// The SQL type of a user column of any format: always "text".
QString sqlColumnType(QString keyword);

/// True for the program's own tables, compared case-sensitively.
bool isReservedTable(QString name);

/// The form of a stored table name that people see: "#" for hidden, "#parent->sub->field"
/// for a sub-table.
QString tableDisplayName(QString name);

/// The stored name of a table that people see as `shown`; undoes tableDisplayName().
QString tableStoredName(QString shown);

} // namespace Names
