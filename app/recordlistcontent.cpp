// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The lines of the record list, read from a table.
#include "app/recordlistcontent.h"

#include "app/referencetexts.h"
#include "model/columns.h"
#include "model/recordlines.h"
#include "model/values.h"
#include "storage/RowPass.h"

RecordListContent RecordListContent::read(const QString &table, const QStringList &columns,
                                          const std::function<void(int)> &step)
{
    RecordListContent content;
    if (columns.isEmpty()) {
        return content;
    }
    const QString title = columns.value(1);
    const bool isReference = Columns::isReference(title);
    const ReferenceTexts titles =
        isReference ? ReferenceTexts::read(Columns::reference(title)) : ReferenceTexts();
    RowPass rows(table, columns.mid(0, 2));
    for (int done = 0; rows.next(); ++done) {
        step(done);
        const int id = Values::recordId(rows.value(0));
        const QString text = isReference ? titles.text(rows.value(1)) : rows.value(1).toString();
        const QString line = RecordLines::listLine(text);
        // A record without a title has a line that opens nothing. Deliberate: where the title
        // is a reference, the empty text keeps its entry, which no line leads to.
        const bool titled = !text.isEmpty();
        if (titled || isReference) {
            content.map.insert(titled ? line : QString(), id);
        }
        content.lines.append(line);
        content.ids.append(id);
    }
    return content;
}

void RecordListContent::sort()
{
    const QVector<int> order = RecordLines::alphabeticalOrder(lines);
    QStringList sortedLines;
    QVector<int> sortedIds;
    sortedLines.reserve(order.size());
    sortedIds.reserve(order.size());
    for (const int row : order) {
        sortedLines.append(lines.at(row));
        sortedIds.append(ids.at(row));
    }
    lines.swap(sortedLines);
    ids.swap(sortedIds);
}
