// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the table of detail records that belongs to one field of one record.
#include "app/Tavenor.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "storage/schemamessages.h"
#include "ui_Tavenor.h"

#include <algorithm>

namespace
{

// Of `tables` the one that SQLite takes for this name, which may differ in letter case; the name
// itself when there is none.
QString tableLike(const QString &name, const QStringList &tables)
{
    const auto same = std::find_if(tables.begin(), tables.end(), [&name](const QString &table) {
        return SqlNames::isSameName(table, name);
    });
    return same == tables.end() ? name : *same;
}

// The detail table with this name, made safe; or one that another program has made under the name
// as it is.
QString detailTable(const QString &listName, const QStringList &tables)
{
    const QString safe = tableLike(SqlNames::madeSafe(listName), tables);
    const QString asAsked = tableLike(listName, tables);
    return !tables.contains(safe) && tables.contains(asAsked) ? asAsked : safe;
}

} // namespace

void Tavenor::goToSubTableRequest(QString listName)
{
    QString error;
    const QStringList tables = db->tables(&error);
    const QString stored = detailTable(listName, tables);
    const bool exists = tables.contains(stored);
    const int newest = exists ? db->maxId(stored, &error) : 0;
    if (!error.isEmpty()) {
        warnUnreadable(stored, error);
        return;
    }
    if (!exists && readOnly) {
        return;
    }
    rememberWayBack();
    if (!exists) {
        const SubTables::Parts parts = SubTables::parts(listName);
        // Deliberate: the flag is always N here, whatever the field's own.
        createSubTable(Markers::OptionalFlag + Names::joinName(Formats::SubTable, parts.label),
                       parts.name, parts.owner);
    }
    showRecordOf(stored, newest);
}

QString Tavenor::existingTable(const QString &name, QString *error) const
{
    return tableLike(name, db->tables(error));
}

void Tavenor::createSubTableConfig(const QString &table, const QString &column,
                                   const ColumnDefinitions &columns)
{
    const QString base = SubTables::configurationBase(table, Names::fieldLabel(column));
    for (int i = 0; i < columns.size(); ++i) {
        // Deliberate: a row that is left out still takes its number.
        addSubConfigRow(i == 0 ? base : SubTables::configurationName(base, i), columns.at(i));
    }
}

void Tavenor::addSubConfigRow(const QString &name, const ColumnDefinition &column)
{
    const bool isFolder = column.first == Markers::UserPathColumn;
    if (isFolder || (!column.first.isEmpty() && !column.second.isEmpty())) {
        addRecord(
            Markers::SubTablesConfigsTable,
            {{Markers::IdColumn, QString()},
             {ReservedTables::SubTablesConfigs::Name, Values::quotesDoubled(name)},
             {ReservedTables::SubTablesConfigs::FieldName, Values::quotesDoubled(column.first)},
             {ReservedTables::SubTablesConfigs::FieldType, column.second}},
            false);
    }
}

ColumnDefinitions Tavenor::subConfigColumns(const QString &base, QString *error) const
{
    ColumnDefinitions columns;
    RowPass rows(Markers::SubTablesConfigsTable, {ReservedTables::SubTablesConfigs::Name,
                                                  ReservedTables::SubTablesConfigs::FieldName,
                                                  ReservedTables::SubTablesConfigs::FieldType});
    while (rows.next()) {
        // Deliberate: a base that occurs inside another configuration's name takes that one's
        // columns too.
        if (rows.value(0).toString().contains(base)) {
            columns.append({rows.value(1).toString(), rows.value(2).toString()});
        }
    }
    if (!rows.unreadable().isEmpty()) {
        *error = rows.unreadable();
    }
    return columns;
}

void Tavenor::createSubTable(const QString &fieldColumn, const QString &subName,
                             const QString &parent)
{
    if (subName.isEmpty() || fieldColumn.isEmpty() || parent.isEmpty()) {
        warn(QString::asprintf("ERRORE: Impossibile creare la sotto tabella %s di %s!\n",
                               qUtf8Printable(fieldColumn), qUtf8Printable(subName)));
        return;
    }
    const QString label = Names::fieldLabel(fieldColumn);
    QString error;
    const ColumnDefinitions columns =
        subConfigColumns(SubTables::configurationBase(parent, label), &error);
    const QString name = SqlNames::madeSafe(SubTables::composedName(parent, label, subName));
    const bool exists = db->tableExists(name, &error);
    if (!error.isEmpty()) {
        // It would be made without its columns.
        warn(SchemaMessages::createFailed(name, error));
    } else if (!exists) {
        // Files from before a second link to one table was refused have it written down.
        if (db->createTable(name, Columns::creatable(columns))) {
            addToTableList(name, showHidden);
        }
    } else {
        // Deliberate: the message names the field's column.
        warnNameTaken(fieldColumn);
    }
}
