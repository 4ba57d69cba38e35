// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What a record must hold before it may be saved.
#include "model/recordfields.h"

#include "model/markers.h"

namespace RecordFields
{

int lastEmptyRequired(const FieldPairs &pairs)
{
    for (int i = pairs.size() - 1; i >= 0; --i) {
        if (Columns::isRequired(pairs.at(i).first) && pairs.at(i).second.isEmpty()) {
            return i;
        }
    }
    return -1;
}

QString requiredFieldName(const QString &column)
{
    QString name = column.section(QLatin1Char('_'), 1);
    const int marker = name.indexOf(Markers::Duplicate);
    if (marker >= 0) {
        name.remove(marker, Markers::Duplicate.size());
    }
    return name;
}

} // namespace RecordFields
