// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of sub-tables.
#include "model/subtables.h"

#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"

#include <algorithm>

namespace
{

/// The label of a field with detail tables; empty for any other.
QString detailLabel(const QString &column)
{
    const bool isField = !Columns::isReference(column) && column.contains(Formats::SubTable);
    return isField ? Columns::withoutDuplicateSuffix(Names::fieldLabel(column)) : QString();
}

} // namespace

namespace SubTables
{

QString composedName(const QString &owner, const QString &label, const QString &name)
{
    return Markers::HiddenTable + owner + Markers::SubTable + Formats::SubTable + QLatin1Char('_') +
           label + Markers::SubTableUser + name;
}

QString storedName(const QString &owner, const QString &label, const QString &title)
{
    return composedName(owner, label, title)
        .simplified()
        .replace(QLatin1Char(' '), QLatin1Char('_'));
}

Parts parts(const QString &storedName)
{
    Parts result;
    // A hidden owner keeps a prefix of its own.
    result.owner = storedName.section(Markers::HiddenTable, 1).section(Markers::SubTable, 0, 0);
    result.label =
        storedName.section(Formats::SubTable, 1, 1).section(Markers::SubTableUser, 0, 0).mid(1);
    result.name = storedName.section(Markers::SubTableUser, 1);
    return result;
}

bool isSameField(const QString &column, const QString &other)
{
    const QString label = detailLabel(column);
    return !label.isEmpty() && SqlNames::isSameName(label, detailLabel(other));
}

QString configurationBase(const QString &owner, const QString &label)
{
    return owner + QLatin1Char('_') + label;
}

QString configurationName(const QString &base, int number)
{
    return base + Markers::SubTableConfig + QString::number(number);
}

bool belongsToConfiguration(const QString &name, const QString &base)
{
    if (name == base) {
        return true;
    }
    const QString numbered = base + Markers::SubTableConfig;
    const QString number = name.mid(numbered.size());
    return name.startsWith(numbered) && !number.isEmpty() &&
           std::all_of(number.begin(), number.end(), [](QChar sign) {
               return sign >= QLatin1Char('0') && sign <= QLatin1Char('9');
           });
}

} // namespace SubTables
