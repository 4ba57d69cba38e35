// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// A transaction as a scope.
#pragma once

#include <QSqlDatabase>

/// Begins a transaction; when the object is destroyed, everything that was not committed is
/// rolled back.
class Transaction
{
public:
    explicit Transaction(const QSqlDatabase &connection);
    ~Transaction();
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    /// False when the transaction could not be begun, or has ended.
    bool isOpen() const { return open; }

    /// Makes the writes durable. False when that fails; they are then rolled back at the end
    /// of the scope.
    bool commit();

private:
    QSqlDatabase connection;
    bool open;
};
