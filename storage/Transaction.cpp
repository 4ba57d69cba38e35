// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A transaction as a scope.
#include "storage/Transaction.h"

Transaction::Transaction(const QSqlDatabase &connection)
    : connection(connection)
    , open(this->connection.transaction())
{
}

Transaction::~Transaction()
{
    // SQLite may have rolled back by itself after a full disk; a second time does no harm.
    if (open) {
        connection.rollback();
    }
}

bool Transaction::commit()
{
    if (!open || !connection.commit()) {
        return false;
    }
    open = false;
    return true;
}
