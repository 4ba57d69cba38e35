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

/// What a sub-table's stored name is made of; texts are empty where the name lacks them.
struct Parts {
    QString owner; ///< stored name of the table that owns the sub-table
    QString label; ///< label of its field there
    QString name;  ///< the sub-table's own name
};

/// The parts of a sub-table's stored name.
Parts parts(const QString &storedName);

/// True when both columns are fields with detail tables, and the same ones to SQLite: their
/// labels are equal but for duplicate suffixes and the case of ASCII letters.
bool isSameField(const QString &column, const QString &other);

/// The name under which the columns of the sub-tables of one field are written down: that of the
/// first of them.
QString configurationBase(const QString &owner, const QString &label);

/// The name of the column with this number, from 1, in the same configuration.
QString configurationName(const QString &base, int number);

/// True when `name` is the base itself, or the base with a number.
bool belongsToConfiguration(const QString &name, const QString &base);

} // namespace SubTables
