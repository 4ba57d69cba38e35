// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Export Manager Files: the records of one table as text.
#pragma once

#include "model/columns.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

class QIODevice;

/// The first line names the table. Each further line is a record: for each column its name, "###",
/// its value, "###". Nothing is escaped, so a value that holds "###" or a line break makes its
/// line unreadable.
namespace XmfFile
{

/// Writes one table: its name first, then its records value by value.
class Writer
{
public:
    /// Writes the line of the table.
    Writer(QTextStream &stream, const QString &table, const QStringList &columns);

    /// Adds the value of the record's next column.
    void add(const QString &value);
    /// Ends the line of a record.
    void endLine();
    /// Ends the only record of a file: no line end follows.
    void endWithoutLine();

private:
    QTextStream &stream;
    QStringList starts; // each column's name and separator
    QString line;
    int next = 0;
};

/// How often the separator occurs in a text; occurrences may overlap, so the two separators
/// around an empty value count four times.
int countSeparators(const QString &line);

/// The same for everything from the device's position to its end.
qint64 countSeparators(QIODevice &device);

/// The columns and values of a record's line, in its order, every quote doubled for SQL. Pairs
/// without a name are left out. Names that are those of the record `before` are shared with it.
FieldPairs pairs(const QString &line, const FieldPairs &before = {});

/// Reads a file line by line.
class Reader
{
public:
    /// Reads the line of the table.
    explicit Reader(QTextStream &stream);

    /// The name in the first line.
    const QString &table() const { return tableName; }

    /// Steps to the next record; false at the end of the file.
    bool next();

    /// The current record. Empty for a line that no record can be: one that holds a NUL
    /// character, which no statement can carry, is too long, or has more columns than a table.
    const FieldPairs &record() const { return current; }
    /// countSeparators() of the current line.
    int separators() const { return count; }

private:
    QTextStream &stream;
    QString tableName;
    QString line;
    FieldPairs current;
    int count = 0;
};

} // namespace XmfFile
