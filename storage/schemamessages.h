// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// What people read when a table cannot be made, changed or removed.
#pragma once

#include <QString>

/// The same words whether SQLite refuses a statement or a name was found wanting before.
namespace SchemaMessages
{

/// The table could not be made; `reason` is the driver's text or our own.
QString createFailed(const QString &table, const QString &reason);

/// The field could not be added to the table.
QString addColumnFailed(const QString &table, const QString &field, const QString &reason);

/// The table could not be removed.
QString dropFailed(const QString &table, const QString &reason);

} // namespace SchemaMessages
