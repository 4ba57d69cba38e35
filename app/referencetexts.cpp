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
    result.unreadable = rows.unreadable();
    return result;
}

QString ReferenceTexts::textOr(const QVariant &stored, const QString &missing) const
{
    const int id = Values::wholePart(stored);
    // Ids that do not fit are kept as 0 too, and no record of ours has it.
    return id == 0 ? missing : texts.value(id, missing);
}

QString ReferenceTexts::text(const QVariant &stored) const
{
    return texts.value(Values::wholePart(stored));
}
