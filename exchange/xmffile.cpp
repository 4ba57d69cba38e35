// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Export Manager Files: the records of one table as text.
#include "exchange/xmffile.h"

#include "exchange/linelimit.h"
#include "model/latin1.h"
#include "model/values.h"

#include <QIODevice>
#include <QVector>

namespace
{

constexpr QLatin1String Separator = Latin1::text("###");
constexpr QLatin1Char Sign('#');
constexpr int SignsOfSeparator = 3;
constexpr int UsualSections = 64;
constexpr qint64 BlockSize = 64 * 1024;
// SQLite cannot be built to allow more columns, and an empty value has most separators.
constexpr int MostSeparators = 32767 * 4;

/// How often a row of `signs` signs holds the separator, overlapping occurrences included.
int occurrences(int signs)
{
    return qMax(signs - SignsOfSeparator + 1, 0);
}

/// The first place from `from` on that holds another character than the separator's.
int endOfSigns(const QString &line, int from)
{
    int end = from;
    while (end < line.size() && line.at(end) == Sign) {
        ++end;
    }
    return end;
}

/// A line cut at its separators, from the left, in one pass.
struct Sections {
    QVector<QStringRef> parts;
    int separators = 0;
};

Sections sectionsOf(const QString &line)
{
    Sections result;
    result.parts.reserve(UsualSections);
    int start = 0;
    int place = line.indexOf(Sign);
    while (place >= 0) {
        const int signs = endOfSigns(line, place) - place;
        const int end = place + signs;
        result.separators += occurrences(signs);
        for (; place + SignsOfSeparator <= end; place += SignsOfSeparator) {
            result.parts.append(line.midRef(start, place - start));
            start = place + SignsOfSeparator;
        }
        place = line.indexOf(Sign, end);
    }
    result.parts.append(line.midRef(start));
    return result;
}

/// A pair's name, shared with that of the record before where it is the same: in a file of
/// our own it always is.
QString nameOf(const QStringRef &name, const FieldPairs &before, int place)
{
    if (place < before.size() && name == before.at(place).first) {
        return before.at(place).first;
    }
    return Values::quotesDoubled(name.toString());
}

} // namespace

namespace XmfFile
{

Writer::Writer(QTextStream &stream, const QString &table, const QStringList &columns)
    : stream(stream)
{
    for (const QString &column : columns) {
        starts.append(column + Separator);
    }
    stream << table << '\n';
}

void Writer::add(const QString &value)
{
    line += starts.at(next);
    line += value;
    line += Separator;
    ++next;
}

void Writer::endLine()
{
    line += QLatin1Char('\n');
    endWithoutLine();
}

void Writer::endWithoutLine()
{
    stream << line;
    line.resize(0);
    next = 0;
}

int countSeparators(const QString &line)
{
    int count = 0;
    for (int place = line.indexOf(Sign); place >= 0;) {
        const int end = endOfSigns(line, place);
        count += occurrences(end - place);
        place = line.indexOf(Sign, end);
    }
    return count;
}

qint64 countSeparators(QIODevice &device)
{
    QByteArray block(int(BlockSize), Qt::Uninitialized);
    qint64 count = 0;
    int signs = 0;
    for (qint64 size = device.read(block.data(), BlockSize); size > 0;
         size = device.read(block.data(), BlockSize)) {
        for (qint64 i = 0; i < size; ++i) {
            // Capped, because a file may be one long row of signs.
            signs = block.at(int(i)) == '#' ? qMin(signs + 1, SignsOfSeparator) : 0;
            count += signs == SignsOfSeparator ? 1 : 0;
        }
    }
    return count;
}

FieldPairs pairs(const QString &line, const FieldPairs &before)
{
    const Sections sections = sectionsOf(line);
    FieldPairs result;
    result.reserve(sections.parts.size() / 2);
    // Deliberate: the occurrences decide how far the pairs go, so a line whose last value is
    // empty is read beyond its last separator; what is found there has no name.
    const int end = qMin(sections.separators, sections.parts.size());
    for (int i = 0; i < end; i += 2) {
        const QStringRef name = sections.parts.at(i);
        if (!name.isEmpty()) {
            result.append({nameOf(name, before, result.size()),
                           Values::quotesDoubled(sections.parts.value(i + 1).toString())});
        }
    }
    return result;
}

Reader::Reader(QTextStream &stream)
    : stream(stream)
{
    LineLimit::read(stream, &tableName);
}

bool Reader::next()
{
    if (!LineLimit::read(stream, &line)) {
        return false;
    }
    count = countSeparators(line);
    const bool fits = LineLimit::fits(line) && count <= MostSeparators && !line.contains(QChar(0));
    current = fits ? pairs(line, current) : FieldPairs();
    return true;
}

} // namespace XmfFile
