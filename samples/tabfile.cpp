// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Reader of the text files that hold the sample collection.
#include "samples/tabfile.h"

#include <QFile>
#include <QTextStream>

namespace
{

constexpr QLatin1Char Tab('\t');

} // namespace

bool TabFile::read(const QString &path)
{
    columns.clear();
    rows.clear();
    complaint.clear();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        complaint = QStringLiteral("Impossibile leggere %1").arg(path);
        return false;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    return readHeader(stream, path) && readRows(stream, path);
}

bool TabFile::readHeader(QTextStream &stream, const QString &path)
{
    columns = stream.readLine().split(Tab);
    if (columns.contains(QString()) || columns.removeDuplicates() > 0) {
        complaint = QStringLiteral("%1: intestazione non valida").arg(path);
        return false;
    }
    return true;
}

bool TabFile::readRows(QTextStream &stream, const QString &path)
{
    while (!stream.atEnd()) {
        const QStringList cells = stream.readLine().split(Tab);
        if (cells.size() != columns.size()) {
            // People count lines from 1, and the header is the first.
            complaint = QStringLiteral("%1, riga %2: %3 campi invece di %4")
                            .arg(path)
                            .arg(rows.size() + 2)
                            .arg(cells.size())
                            .arg(columns.size());
            return false;
        }
        rows.append(cells);
    }
    return true;
}

QString TabFile::value(int row, const QString &column) const
{
    return rows.at(row).value(columns.indexOf(column));
}

int TabFile::find(const QString &column, const QString &text) const
{
    for (int row = 0; row < rows.size(); ++row) {
        if (value(row, column) == text) {
            return row;
        }
    }
    return -1;
}
