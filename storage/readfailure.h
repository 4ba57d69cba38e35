// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Tells what could not be read from what is not there.
#pragma once

#include <QSqlError>
#include <QSqlQuery>
#include <QString>

namespace ReadFailure
{

/// True when the query failed because there is no such table or column. A table that is locked
/// or damaged is there.
inline bool isMissing(const QSqlQuery &query)
{
    // SQLite could not prepare the statement, and not because of the file.
    const QSqlError error = query.lastError();
    return error.type() == QSqlError::StatementError &&
           error.nativeErrorCode() == QLatin1String("1");
}

/// The driver's text when the query could not be run, or not to its end, on what is there; empty
/// otherwise. Nothing may be written on the strength of what such a query has read.
inline QString text(const QSqlQuery &query)
{
    return isMissing(query) ? QString() : query.lastError().text();
}

/// Puts text() into `error`, where one is given and there is a failure.
inline void tell(const QSqlQuery &query, QString *error)
{
    const QString failure = text(query);
    if (error != nullptr && !failure.isEmpty()) {
        *error = failure;
    }
}

} // namespace ReadFailure
