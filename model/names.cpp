// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// How stored names of tables and columns are read and built.
#include "model/names.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/subtables.h"

namespace Names
{

QString formatWord(QString keyword)
{
    return keyword.remove(Markers::Format);
}

QString fieldLabel(QString column)
{
    // Deliberate: a label that itself holds "FORMAT_" loses everything from there on.
    return column.section(Markers::FormatEnd, 1, 1);
}

QString formatKeyword(QString column)
{
    // Deliberate: the first character goes even when it is no required flag.
    return column.mid(1).section(Markers::FormatEnd, 0, 0) + Markers::Format;
}

QString flagAndType(QString column)
{
    return column.section(Markers::Format, 0, 0);
}

QString joinName(QString a, QString b)
{
    return a + QLatin1Char('_') + b;
}

QString sqlColumnType(QString keyword)
{
    Q_UNUSED(keyword)
    return QStringLiteral("text");
}

bool isReservedTable(QString name)
{
    // Deliberate: case-sensitive, so "Settings" is an ordinary table.
    return name == Markers::SettingsTable || name == Markers::FiltersTable ||
           name == Markers::SubTablesConfigsTable;
}

QString tableDisplayName(QString name)
{
    // Deliberate: a name hidden twice shows "##".
    name.replace(Markers::HiddenTable, Markers::ShownHidden);
    if (!name.contains(Markers::SubTable)) {
        return name;
    }
    const QString parent = name.section(Markers::SubTable, 0, 0);
    const QString sub = name.section(Markers::SubTableUser, 1, 1);
    const QString field =
        name.section(Formats::SubTable, 1, 1).section(Markers::SubTableUser, 0, 0).mid(1);
    // Deliberate: people read the sub-table before the field, names hold the field first.
    return parent + Markers::ShownArrow + sub + Markers::ShownArrow + field;
}

QString tableStoredName(QString shown)
{
    if (!shown.contains(Markers::ShownArrow)) {
        // Deliberate: a "#" in the middle of a name becomes the hidden marker too.
        return shown.replace(Markers::ShownHidden, Markers::HiddenTable);
    }
    shown.remove(Markers::ShownHidden).remove(Markers::HiddenTable);
    const QString parent = shown.section(Markers::ShownArrow, 0, 0);
    const QString sub = shown.section(Markers::ShownArrow, 1, 1);
    const QString field = shown.section(Markers::ShownArrow, 2, 2);
    return SubTables::composedName(parent, field, sub);
}

} // namespace Names
