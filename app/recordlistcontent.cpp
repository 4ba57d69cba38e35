// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The lines of the record list, read from a table.
#include "app/recordlistcontent.h"

#include "app/referencetexts.h"
#include "model/columns.h"
#include "model/recordlines.h"
#include "model/values.h"
#include "storage/RowPass.h"

namespace
{

// Where each of `wanted` stands in `columns`; those that are missing there are added.
QVector<int> placesOf(const QStringList &wanted, QStringList &columns)
{
    QVector<int> places;
    for (const QString &column : wanted) {
        if (!columns.contains(column)) {
            columns.append(column);
        }
        places.append(columns.indexOf(column));
    }
    return places;
}

} // namespace

RecordListContent RecordListContent::read(const QString &table, const QStringList &columns,
                                          const Steps &steps, const Filters::Predicate &filter)
{
    RecordListContent content;
    if (columns.isEmpty()) {
        content.error = RowPass(table).error();
        return content;
    }
    const QString title = columns.value(1);
    const bool isReference = Columns::isReference(title);
    const ReferenceTexts titles =
        isReference ? ReferenceTexts::read(Columns::reference(title)) : ReferenceTexts();
    QStringList read = columns.mid(0, 2);
    const QVector<int> places = placesOf(filter.columns(), read);
    RowPass rows(table, read);
    const std::function<QVariant(int)> valueAt = [&rows, &places](int position) {
        return rows.value(places.at(position));
    };
    for (int done = 0; rows.next(); ++done) {
        if (!filter.passes(valueAt)) {
            steps.other();
            continue;
        }
        steps.lineRead(done);
        const int id = Values::recordId(rows.value(0));
        const QString text = isReference ? titles.text(rows.value(1)) : rows.value(1).toString();
        content.lines.append(RecordLines::listLine(text));
        content.ids.append(id);
        content.titled.append(!text.isEmpty());
        // Deliberate: where the title is a reference, the empty text has an entry, which no line
        // leads to.
        if (text.isEmpty() && isReference) {
            content.map.insert(QString(), id);
        }
    }
    content.error = rows.failed() ? rows.error() : titles.error();
    return content;
}

void RecordListContent::sort(const Steps &steps)
{
    const QVector<int> order = RecordLines::alphabeticalOrder(lines, steps.other);
    QStringList sortedLines;
    QVector<int> sortedIds;
    QVector<bool> sortedTitled;
    sortedLines.reserve(order.size());
    sortedIds.reserve(order.size());
    sortedTitled.reserve(order.size());
    for (const int row : order) {
        sortedLines.append(lines.at(row));
        sortedIds.append(ids.at(row));
        sortedTitled.append(titled.at(row));
    }
    lines.swap(sortedLines);
    ids.swap(sortedIds);
    titled.swap(sortedTitled);
}

void RecordListContent::index(const Steps &steps)
{
    for (int row = 0; row < lines.size(); ++row) {
        steps.other();
        // A record without a title has a line that opens nothing.
        if (titled.at(row)) {
            map.insert(map.constEnd(), lines.at(row), ids.at(row));
        }
    }
}
