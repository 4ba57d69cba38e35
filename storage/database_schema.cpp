// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The only owner of the SQLite connection: tables and their columns.
#include "storage/DataBase.h"

#include "storage/readfailure.h"
#include "storage/schemamessages.h"
#include "storage/sqltext.h"

#include <QSqlError>
#include <QSqlQuery>

#include <algorithm>

namespace
{

/// The form in which two column names are the same to people.
QString comparable(const QString &name)
{
    return name.toLower().simplified();
}

QString clearFailed(const QString &table, const QString &reason)
{
    return QString::asprintf("ERRORE: Impossibile pulire la tabella %s!\n%s", qUtf8Printable(table),
                             qUtf8Printable(reason));
}

/// Why no table can have this name; empty when one can.
QString nameRefusal(const QString &table)
{
    // Such a name can be read, but is SQLite's own.
    return table.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive)
               ? QString::asprintf("Il nome '%s' è una parola riservata.", qUtf8Printable(table))
               : SqlText::refusal({table});
}

/// Why no table can be made of this; empty when one can.
QString refusalOf(const QString &table, const ColumnDefinitions &columns)
{
    QString reason = nameRefusal(table);
    for (auto column = columns.begin(); reason.isEmpty() && column != columns.end(); ++column) {
        reason = SqlText::columnRefusal(*column);
    }
    return reason;
}

} // namespace

QStringList DataBase::tables(QString *error) const
{
    QSqlQuery query = run(SqlText::tableNames());
    QStringList names;
    while (query.next()) {
        names.append(query.value(0).toString());
    }
    ReadFailure::tell(query, error);
    // SQLite's own tables, which the driver lists too.
    const auto isInternal = [](const QString &name) {
        return name.startsWith(QLatin1String("sqlite_"), Qt::CaseInsensitive);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isInternal), names.end());
    return names;
}

bool DataBase::tableExists(const QString &table, QString *error) const
{
    return tables(error).contains(table);
}

QStringList DataBase::fieldNames(const QString &table, QString *error) const
{
    const QSqlQuery query = run(SqlText::selectAll(table));
    ReadFailure::tell(query, error);
    return namesIn(query);
}

QStringList DataBase::namesIn(const QSqlQuery &query)
{
    const QSqlRecord record = query.record();
    QStringList names;
    names.reserve(record.count());
    for (int position = 0; position < record.count(); ++position) {
        names.append(record.fieldName(position));
    }
    return names;
}

bool DataBase::hasFieldContaining(const QString &text, const QString &table) const
{
    const QStringList names = fieldNames(table);
    return std::any_of(names.begin(), names.end(),
                       [&text](const QString &name) { return name.contains(text); });
}

int DataBase::countFields(const QString &table, const QString &name, bool cutSuffix,
                          QString *error) const
{
    const QString wanted = comparable(name);
    const QStringList names = fieldNames(table, error);
    // Deliberate: only the existing names are cut, the asked one never is.
    const auto matches = [&wanted, cutSuffix](const QString &existing) {
        return comparable(cutSuffix ? Columns::withoutDuplicateSuffix(existing) : existing) ==
               wanted;
    };
    return static_cast<int>(std::count_if(names.begin(), names.end(), matches));
}

bool DataBase::createTable(const QString &table, const ColumnDefinitions &columns)
{
    // Deliberate: tested first, although the statement itself tolerates an existing table.
    QString error;
    if (tableExists(table, &error)) {
        report(QString::asprintf("ERRORE: La Tabella %s è già presente nel Db!\n",
                                 qUtf8Printable(table)));
        return false;
    }
    const auto message = [&table](const QString &reason) {
        return SchemaMessages::createFailed(table, reason);
    };
    return change(error.isEmpty() ? refusalOf(table, columns) : error,
                  SqlText::createTable(table, columns), message);
}

bool DataBase::addColumn(const QString &table, const QString &name, const QString &type)
{
    QString error;
    const int same = countFields(table, name, true, &error);
    const QString stored = Columns::withDuplicateSuffix(name, same);
    const auto message = [&table, &stored](const QString &reason) {
        return SchemaMessages::addColumnFailed(table, stored, reason);
    };
    return change(error.isEmpty() ? refusalOf(table, {{stored, type}}) : error,
                  SqlText::addColumn(table, stored, type), message);
}

bool DataBase::dropTable(const QString &table)
{
    const auto message = [&table](const QString &reason) {
        return SchemaMessages::dropFailed(table, reason);
    };
    return change(SqlText::refusal({table}), SqlText::dropTable(table), message);
}

bool DataBase::clearTable(const QString &table)
{
    const auto message = [&table](const QString &reason) { return clearFailed(table, reason); };
    return change(SqlText::refusal({table}), SqlText::clearTable(table), message);
}
