// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The lines that choice lists offer for the records of another table.
#include "app/recordchoices.h"

#include "app/recordlistcontent.h"
#include "model/markers.h"
#include "model/recordlines.h"
#include "model/values.h"
#include "storage/RowPass.h"

namespace
{

void tell(const RowPass &rows, QString *error)
{
    if (!rows.unreadable().isEmpty()) {
        *error = rows.unreadable();
    }
}

} // namespace

namespace RecordChoices
{

QVector<QPair<int, QString>> idsAndTitles(const QString &table, const QStringList &columns,
                                          QString *error)
{
    QVector<QPair<int, QString>> choices;
    RowPass rows(table, columns.mid(0, 2));
    while (rows.next()) {
        const QVariant id = rows.value(0);
        choices.append({Values::recordId(id),
                        RecordLines::idAndTitle(id.toLongLong(), rows.value(1).toString())});
    }
    tell(rows, error);
    return choices;
}

QVector<QPair<int, QString>> fieldValues(const Columns::Reference &reference, QString *error)
{
    QVector<QPair<int, QString>> choices;
    RowPass rows(reference.table, {Markers::IdColumn, reference.field});
    while (rows.next()) {
        choices.append({Values::recordId(rows.value(0)), rows.value(1).toString()});
    }
    tell(rows, error);
    return choices;
}

QStringList linkLines(const QString &table, const QStringList &columns, QString *error)
{
    if (columns.isEmpty()) {
        return {};
    }
    const RecordListContent content = RecordListContent::read(table, columns, {[](int) {}, [] {}});
    if (!content.error.isEmpty()) {
        *error = content.error;
    }
    QStringList lines;
    lines.reserve(content.lines.size());
    for (int row = 0; row < content.lines.size(); ++row) {
        lines.append(RecordLines::idAndTitle(content.ids.at(row), content.lines.at(row)));
    }
    return lines;
}

} // namespace RecordChoices
