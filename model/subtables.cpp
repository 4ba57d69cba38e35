// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Names of sub-tables.
#include "model/subtables.h"

#include "model/formats.h"
#include "model/markers.h"

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

} // namespace SubTables
