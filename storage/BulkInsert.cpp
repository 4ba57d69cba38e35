// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Adds many records to one table.
#include "storage/BulkInsert.h"

#include "model/markers.h"
#include "storage/DataBase.h"
#include "storage/RowPass.h"

#include <limits>

namespace
{

constexpr int LargestPossibleId = std::numeric_limits<int>::max();

} // namespace

BulkInsert::BulkInsert(DataBase &db, const QString &table, const QStringList &columns)
    : db(db)
    , table(table)
    , columns(columns)
    , insertion(table, columns)
{
    readIds();
}

void BulkInsert::readIds()
{
    taken.clear();
    largest = 0;
    possible = columns.value(0) == Markers::IdColumn && insertion.refusal().isEmpty();
    RowPass rows(table, {Markers::IdColumn});
    while (possible && rows.next()) {
        const QVariant stored = rows.value(0);
        possible = stored.type() == QVariant::LongLong && !stored.isNull();
        const qint64 id = stored.toLongLong();
        largest = qMax(largest, id);
        if (id >= 1 && id <= LargestPossibleId) {
            taken.insert(int(id));
        }
    }
    possible = possible && !rows.failed();
}

int BulkInsert::takeId(int wished)
{
    if (wished >= 1) {
        if (taken.contains(wished)) {
            return 0;
        }
    } else if (largest >= LargestPossibleId) {
        return -1;
    }
    const int id = wished >= 1 ? wished : int(largest) + 1;
    taken.insert(id);
    largest = qMax(largest, qint64(id));
    return id;
}

bool BulkInsert::insert(int id, const FieldPairs &values)
{
    return db.insertRow(insertion, id, values);
}
