// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of sub-tables.
#include "model/subtables.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"

#include <algorithm>

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

QString configurationBase(const QString &table, const QString &column)
{
    return Names::joinName(table, Names::fieldLabel(column));
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
