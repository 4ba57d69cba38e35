// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of sub-tables: the detail table that belongs to one field of one record.
#pragma once

#include <QString>

namespace SubTables
{

/// The stored name with exactly these parts: the table that owns the sub-table, the label of
/// its field there, and the sub-table's own name. Nothing is cleaned.
QString composedName(const QString &owner, const QString &label, const QString &name);

/// The stored name of the detail table of the record titled `title` of table `owner`, for
/// the field shown as `label`: white space simplified, blanks as "_".
QString storedName(const QString &owner, const QString &label, const QString &title);

/// The base of the configuration of a SUBTABLE column: the name of its first row. The rows that
/// follow carry the base and a number.
QString configurationBase(const QString &table, const QString &column);

/// True when `name` is the base itself, or the base with a number.
bool belongsToConfiguration(const QString &name, const QString &base);

} // namespace SubTables
