// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Encoded column names taken apart and put together.
#include "model/columns.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"

#include <algorithm>

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

QString linkTarget(const QString &column)
{
    const QString shown = SqlNames::madePlain(Names::fieldLabel(column));
    return SqlNames::madeSafe(Names::tableStoredName(shown));
}

} // namespace Columns
