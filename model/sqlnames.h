// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Which names may stand in a statement without quotes.
#pragma once

#include <QString>

namespace SqlNames
{

/// True when SQLite reads `name`, unquoted, as exactly this name of a table, or of a column
/// that is made, filled or changed: letters, digits, "_" and "$" of ASCII, printable characters
/// above U+007F, beginning with neither a digit nor "$", and none of the words that SQLite
/// reserves. Names beginning with "sqlite_" pass: they can be read, but no table can be made so.
bool canStandUnquoted(const QString &name);

/// Why `name` cannot stand in a statement, as people read it; empty when it can.
QString refusal(const QString &name);

/// True when also an unquoted "SELECT column" or "WHERE column" reads exactly this column. A
/// few more words mean something else there: CURRENT_DATE gives today instead of the column.
bool canBeRead(const QString &column);

/// `text` with every ASCII character that a name must not hold in its full-width form, so that
/// a name derived from a record's title or from a shown table name can always be stored.
QString madeSafe(const QString &text);

/// Undoes madeSafe(): full-width forms of characters that a name must not hold become ASCII
/// again.
QString madePlain(const QString &text);

} // namespace SqlNames
