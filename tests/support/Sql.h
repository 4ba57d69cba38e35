// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Plain SQL on the open database, to prepare and to check what the tested code does.
#pragma once

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

namespace Sql
{

/// Runs a statement on the default connection; prints the driver's text when it fails.
inline bool run(const QString &statement)
{
    QSqlQuery query;
    const bool done = query.exec(statement);
    if (!done) {
        qWarning("%s: %s", qPrintable(statement), qPrintable(query.lastError().text()));
    }
    return done;
}

/// One line for each row of the result, the values as SQL literals joined by "|": 1|'Anna'|NULL.
inline QStringList lines(const QString &statement)
{
    QStringList lines;
    QSqlQuery query;
    query.setForwardOnly(true);
    query.exec(statement);
    while (query.next()) {
        QStringList values;
        for (int position = 0; position < query.record().count(); ++position) {
            const QVariant value = query.value(position);
            const bool isText = value.type() == QVariant::String;
            const QString text = isText ? QLatin1Char('\'') + value.toString() + QLatin1Char('\'')
                                        : value.toString();
            values.append(value.isNull() ? QStringLiteral("NULL") : text);
        }
        lines.append(values.join(QLatin1Char('|')));
    }
    return lines;
}

/// The rows of a table, as lines() gives them.
inline QStringList table(const QString &name)
{
    return lines(QStringLiteral("SELECT * FROM ") + name);
}

/// The statements with which the database's tables were made, in their order.
inline QStringList schema()
{
    QStringList statements;
    QSqlQuery query;
    query.exec(QStringLiteral("SELECT sql FROM sqlite_master ORDER BY rowid"));
    while (query.next()) {
        statements.append(query.value(0).toString());
    }
    return statements;
}

} // namespace Sql
