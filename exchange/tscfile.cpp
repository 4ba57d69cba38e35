// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Table structure files: a table's icon and columns as text.
#include "exchange/tscfile.h"

#include "exchange/linelimit.h"
#include "model/latin1.h"
#include "model/markers.h"
#include "model/names.h"

#include <QTextStream>
#include <QVector>

namespace
{

constexpr QLatin1String Separator = Latin1::text("###");
// SQLite cannot be built to allow more columns.
constexpr int MostColumns = 32767;
constexpr int LongestName = 100 * 1000;

/// Reads all lines; false when they are more, or longer, than those of a structure can be.
bool readLines(QTextStream &stream, QStringList *lines)
{
    qint64 characters = 0;
    for (QString line; LineLimit::read(stream, &line, LongestName);) {
        characters += line.size();
        if (line.size() > LongestName || lines->size() > MostColumns ||
            characters > LineLimit::LongestLine) {
            return false;
        }
        lines->append(line);
    }
    return true;
}

} // namespace

namespace TscFile
{

void write(QTextStream &stream, const QString &iconPath, const QStringList &columns,
           const Step &step)
{
    stream << iconPath << '\n';
    int written = 0;
    for (const QString &column : columns) {
        if (column == Markers::IdColumn) {
            continue;
        }
        stream << column << Separator << Names::sqlColumnType(Names::formatKeyword(column)) << '\n';
        step(written, columns.size());
        ++written;
    }
}

bool read(QTextStream &stream, Structure *structure, const Step &step)
{
    QStringList lines;
    if (!readLines(stream, &lines)) {
        return false;
    }
    structure->iconPath = lines.value(0);
    for (int i = 1; i < lines.size(); ++i) {
        step(i - 1, lines.size());
        const QVector<QStringRef> parts = lines.at(i).splitRef(Separator);
        structure->columns.append({parts.value(0).toString(), parts.value(1).toString()});
    }
    return true;
}

} // namespace TscFile
