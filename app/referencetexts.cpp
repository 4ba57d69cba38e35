// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The texts that a reference column's Ids stand for.
#include "app/referencetexts.h"

#include "model/markers.h"
#include "model/values.h"
#include "storage/RowPass.h"

ReferenceTexts ReferenceTexts::read(const Columns::Reference &reference)
{
    ReferenceTexts result;
    RowPass rows(reference.table, {Markers::IdColumn, reference.field});
    while (rows.next()) {
        result.texts.insert(Values::recordId(rows.value(0)), rows.value(1).toString());
    }
    return result;
}

bool ReferenceTexts::has(const QVariant &stored) const
{
    const int id = Values::wholePart(stored);
    return id != 0 && texts.contains(id);
}

QString ReferenceTexts::text(const QVariant &stored) const
{
    return texts.value(Values::wholePart(stored));
}
