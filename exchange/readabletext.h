// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Records as text for people to read.
#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

/// Nothing reads these texts back.
namespace ReadableText
{

/// Stands for the text of a referenced record that is gone.
QString missingText();

/// Writes records, column by column, each with its label.
class Writer
{
public:
    /// `columns` are the stored names; their labels are written.
    Writer(QTextStream &stream, const QStringList &columns);

    /// Writes the next column of the only record of a file: a line "label=value".
    void addLine(const QString &value);
    /// Adds the record's next column to its line: "label;value;".
    void addCell(const QString &value);
    /// Ends the line of a record.
    void endRecord();

private:
    QTextStream &stream;
    QStringList labels;
    QString line;
    int next = 0;
};

} // namespace ReadableText
