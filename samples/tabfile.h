// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Reader of the text files that hold the sample collection.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

class QTextStream;

/// A table of texts: UTF-8, one row per line, cells between tabs, the first line naming the
/// columns. Values are looked up by column name, so columns may stand in any order.
class TabFile
{
public:
    /// Reads the whole file in place of what was read before. False, with problem() set, when it
    /// cannot be read, names no column or names one twice, or has a row with a wrong number of
    /// cells.
    bool read(const QString &path);

    /// What went wrong in read(), for people.
    QString problem() const { return complaint; }

    int rowCount() const { return rows.size(); }

    /// The text of one cell; empty for a column that the file does not have.
    QString value(int row, const QString &column) const;

    /// The first row whose cell in `column` is `text`; -1 when there is none.
    int find(const QString &column, const QString &text) const;

private:
    bool readHeader(QTextStream &stream, const QString &path);
    bool readRows(QTextStream &stream, const QString &path);

    QStringList columns;
    QVector<QStringList> rows;
    QString complaint;
};
