// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// One forward walk over a table.
#include "storage/RowPass.h"

#include "model/sqlnames.h"
#include "storage/readfailure.h"
#include "storage/sqltext.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlRecord>

#include <algorithm>

namespace
{

/// The query, run on the default connection; inactive when it fails.
QSqlQuery run(const QString &statement)
{
    const QSqlDatabase connection =
        QSqlDatabase::database(QLatin1String(QSqlDatabase::defaultConnection), false);
    QSqlQuery query(connection);
    query.setForwardOnly(true);
    if (connection.isOpen()) {
        query.exec(statement);
    }
    return query;
}

bool isUnreadable(const QSqlQuery &query)
{
    return !ReadFailure::text(query).isEmpty();
}

bool canBeNamed(const QStringList &columns)
{
    return std::all_of(columns.begin(), columns.end(), SqlNames::canBeRead);
}

/// Where `columns` stand in a row of all columns; empty when one of them is missing.
QVector<int> positionsOf(const QStringList &columns, const QSqlRecord &row)
{
    QVector<int> positions;
    positions.reserve(columns.size());
    for (const QString &column : columns) {
        const int position = row.indexOf(column);
        if (position < 0) {
            return {};
        }
        positions.append(position);
    }
    return positions;
}

} // namespace

RowPass::RowPass(const QString &table, const QStringList &columns)
{
    if (columns.isEmpty()) {
        query = run(SqlText::selectAll(table));
        return;
    }
    begin(table, columns, canBeNamed(columns) ? SqlText::selectColumns(table, columns) : QString());
}

RowPass::RowPass(const QString &table, const QString &column, const QString &run)
{
    begin(table, {column},
          canBeNamed({column}) ? SqlText::selectColumnHolding(table, column, run) : QString());
}

void RowPass::begin(const QString &table, const QStringList &columns, const QString &statement)
{
    if (!statement.isEmpty()) {
        query = run(statement);
    }
    if (!query.isActive() && !isUnreadable(query)) {
        // Names that SQL would misread, or that the driver gives otherwise than SQL knows them
        // (it leaves out quotes), are found among the names of all columns.
        query = run(SqlText::selectAll(table));
        positions = positionsOf(columns, query.record());
        if (positions.isEmpty()) {
            query.finish();
        }
    }
}

RowPass::RowPass(const QString &table, int id)
    : query(run(SqlText::selectById(table, id)))
{
}

RowPass::~RowPass() = default;

bool RowPass::next()
{
    return query.next();
}

QString RowPass::error() const
{
    return query.lastError().text();
}

QVariant RowPass::value(int position) const
{
    if (positions.isEmpty()) {
        return query.value(position);
    }
    return position < positions.size() ? query.value(positions.at(position)) : QVariant();
}

bool RowPass::failed() const
{
    return query.lastError().isValid();
}

bool RowPass::isMissing() const
{
    return ReadFailure::isMissing(query);
}

QString RowPass::unreadable() const
{
    return ReadFailure::text(query);
}

int RowPass::count(const QString &table)
{
    QSqlQuery query = run(SqlText::countRows(table));
    return query.next() ? query.value(0).toInt() : 0;
}
