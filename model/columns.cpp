// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Encoded column names taken apart and put together.
#include "model/columns.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"

#include <algorithm>

namespace
{

bool isAmong(const QString &column, const QStringList &others)
{
    return std::any_of(others.begin(), others.end(), [&column](const QString &other) {
        return SqlNames::isSameName(column, other);
    });
}

/// The stored name of a table that is shown as `shown` and is no detail table.
QString plainStoredName(QString shown)
{
    shown.replace(SqlNames::madeSafe(Markers::ShownHidden), Markers::ShownHidden);
    return shown.replace(Markers::ShownHidden, Markers::HiddenTable);
}

} // namespace

namespace Columns
{

bool isRequired(const QString &column)
{
    return column.startsWith(Markers::RequiredFlag);
}

bool isReference(const QString &column)
{
    return column.startsWith(Markers::ReferencePrefix);
}

Reference reference(const QString &column)
{
    if (!isReference(column)) {
        return {};
    }
    const QString parts = column.mid(Markers::ReferencePrefix.size());
    Reference result;
    result.table = parts.section(Markers::Reference, 0, 0);
    result.description = parts.section(Markers::Reference, 1, 1);
    result.field = withoutDuplicateSuffix(result.description);
    return result;
}

QString described(const QString &column)
{
    return isReference(column) ? reference(column).description : column;
}

QString formatWord(const QString &column)
{
    return described(column).mid(1).section(Markers::FormatEnd, 0, 0);
}

QString label(const QString &column)
{
    return Names::fieldLabel(described(column));
}

QString shownLabel(const QString &label)
{
    return label.section(Markers::Duplicate, 0, 0) + label.section(Markers::Duplicate, 1, 1);
}

QString shownName(const QString &column)
{
    const QString shown = shownLabel(label(column));
    return shown.isEmpty() ? column : shown;
}

bool isSystemLabel(const QString &label)
{
    const auto same = [&label](QLatin1String column) {
        return label.compare(Names::fieldLabel(column), Qt::CaseInsensitive) == 0;
    };
    return same(Markers::IdColumn) || same(Markers::UserPathColumn);
}

QString withoutDuplicateSuffix(const QString &column)
{
    return column.section(Markers::Duplicate, 0, 0);
}

QString withDuplicateSuffix(const QString &column, int earlier)
{
    // Deliberate: a second link to the same table keeps its name, and SQLite then refuses it.
    if (earlier < 1 || column.contains(Formats::Link)) {
        return column;
    }
    return column + Markers::Duplicate + QString::number(earlier + 1);
}

ColumnDefinitions withUserPath(const ColumnDefinitions &columns)
{
    const auto isAttachment = [](const ColumnDefinition &column) {
        return column.first.contains(Formats::Image) || column.first.contains(Formats::Pdf);
    };
    ColumnDefinitions result = columns;
    result.insert(std::find_if(result.begin(), result.end(), isAttachment),
                  {Markers::UserPathColumn, QString()});
    return result;
}

bool isRepeatedLink(const QString &column, const QStringList &others)
{
    return column.contains(Formats::Link) && isAmong(column, others);
}

ColumnDefinitions creatable(const ColumnDefinitions &columns)
{
    ColumnDefinitions result;
    QStringList wanted;
    QStringList made;
    for (const ColumnDefinition &column : columns) {
        if (isRepeatedLink(column.first, made)) {
            continue;
        }
        int earlier =
            static_cast<int>(std::count_if(wanted.begin(), wanted.end(), [&](const QString &name) {
                return SqlNames::isSameName(column.first, name);
            }));
        QString name = withDuplicateSuffix(column.first, earlier);
        while (isAmong(name, made)) {
            name = withDuplicateSuffix(column.first, ++earlier);
        }
        wanted.append(column.first);
        made.append(name);
        result.append({name, column.second});
    }
    return result;
}

QString linkTarget(const QString &column)
{
    const int end = column.indexOf(Markers::FormatEnd);
    if (end < 0) {
        return QString();
    }
    // A table's name may hold the word at which a label is cut.
    const QString shown = column.mid(end + Markers::FormatEnd.size());
    // Older files have the arrow as it is shown.
    const QString arrow = shown.contains(Markers::ShownArrow)
                              ? QString(Markers::ShownArrow)
                              : SqlNames::madeSafe(Markers::ShownArrow);
    const int first = shown.indexOf(arrow);
    const int last = shown.lastIndexOf(arrow);
    const QString parent = plainStoredName(shown.left(first));
    if (first == last || !parent.startsWith(Markers::HiddenTable)) {
        return plainStoredName(shown);
    }
    // The title that a detail table is named after may hold any sign, arrows too.
    const int title = first + arrow.size();
    return SqlNames::madeSafe(SubTables::composedName(parent.mid(Markers::HiddenTable.size()),
                                                      shown.mid(last + arrow.size()),
                                                      shown.mid(title, last - title)));
}

} // namespace Columns
