// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the table of detail records that belongs to one field of one record.
#include "app/Tavenor.h"

#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "ui_Tavenor.h"

void Tavenor::goToSubTableRequest(QString listName)
{
    const QString stored = SqlNames::madeSafe(listName);
    const bool exists = db->tableExists(stored);
    if (!exists && readOnly) {
        return;
    }
    enterTable(stored);
    if (!exists) {
        const QString label =
            stored.section(Formats::SubTable, 1, 1).section(Markers::SubTableUser, 0, 0).mid(1);
        const QString subName = stored.section(Markers::SubTableUser, 1);
        const QString parent =
            stored.section(Markers::HiddenTable, 1).section(Markers::SubTable, 0, 0);
        // Deliberate: the flag is always N here, whatever the field's own.
        createSubTable(QLatin1Char('N') + Names::joinName(Formats::SubTable, label), subName,
                       parent);
    }
    changeTable(stored);
    vwRecord(db->maxId(stored));
}

ColumnDefinitions Tavenor::subConfigColumns(const QString &base) const
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
    return columns;
}

void Tavenor::createSubTable(const QString &fieldColumn, const QString &subName,
                             const QString &parent)
{
    const QByteArray column = fieldColumn.toUtf8();
    if (subName.isEmpty() || fieldColumn.isEmpty() || parent.isEmpty()) {
        warn(QString::asprintf("ERRORE: Impossibile creare la sotto tabella %s di %s!\n",
                               column.constData(), subName.toUtf8().constData()));
        return;
    }
    const ColumnDefinitions columns =
        subConfigColumns(Names::joinName(parent, Names::fieldLabel(fieldColumn)));
    const QString name = SubTables::composedName(parent, Names::fieldLabel(fieldColumn), subName);
    if (!db->tableExists(name)) {
        db->createTable(name, columns);
    } else {
        // Deliberate: the message names the field's column.
        warn(QString::asprintf("ERRORE: Il nome '%s' è già stato usato per una tabella.\n",
                               column.constData()));
    }
}
