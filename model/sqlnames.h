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

/// True for the words that SQLite takes for its own, in any letter case.
bool isReservedWord(const QString &name);

/// Why `name` cannot stand in a statement, as people read it; empty when it can.
QString refusal(const QString &name);

/// True when also an unquoted "SELECT column" or "WHERE column" reads exactly this column. A
/// few more words mean something else there: CURRENT_DATE gives today instead of the column.
bool canBeRead(const QString &column);

/// Why no table can be made with the name `typed`, which would be stored as `stored`; empty when
/// one can. Beside what SQLite cannot take, a name must not hold the marks of the program's own
/// names (but it may be hidden), nor a format's keyword in any letter case, must not be that of a
/// reserved table in any letter case, hidden or not, and must not be longer than 100 bytes of
/// UTF-8.
QString tableRefusal(const QString &typed, const QString &stored);

/// Why no column of this format (its keyword) can be made with the label `typed`, which is stored
/// with its blanks as "_"; empty when one can. A label must not be that of one of the program's
/// own fields, nor hold a mark or a format's keyword in any letter case, nor a word that would
/// have the field's values written as numbers of another kind, nor be longer than 200 bytes of
/// UTF-8.
QString labelRefusal(const QString &typed, const QString &format);

/// Why no column named `column`, after the table or field that people see as `source`, can be
/// made; empty when one can. The text of a link whose name holds the word for a number would be
/// lost, and one whose name holds another format's keyword, in any letter case, would be shown
/// as that.
QString derivedRefusal(const QString &source, const QString &column);

/// The reason against a name that holds a word of the program's own.
QString programsWord(const QString &typed);

/// The reason against a row that describes nothing.
QString missingName();

/// The reason against a name that only one field of a table can have.
QString taken(const QString &typed);

/// `text` with every blank as "_", as typed names are stored.
QString withoutBlanks(QString text);

/// True when SQLite takes both for the same table: they are equal but for the case of ASCII
/// letters.
bool isSameName(const QString &name, const QString &other);

/// True for the name of one of the program's own tables, in any letter case, hidden or not.
bool isNameOfReservedTable(const QString &stored);

/// `text` with every printable ASCII character that a name must not hold in its full-width form,
/// white space as "_", and without control characters, format characters and halves of surrogate
/// pairs, so that a name derived from a record's title or from a shown table name can always be
/// stored. Texts that differ in such characters only give the same name.
QString madeSafe(const QString &text);

/// Turns the full-width forms of characters that a name must not hold into ASCII again.
QString madePlain(const QString &text);

} // namespace SqlNames
