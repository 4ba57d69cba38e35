// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: removing a table with everything that belongs to it.
#include "app/Tavenor.h"

#include "model/columns.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/recordlines.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "model/values.h"
#include "storage/RowPass.h"
#include "storage/reservedtables.h"
#include "storage/schemamessages.h"
#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"
#include "widgets/ownedwidgets.h"

#include <algorithm>
#include <functional>

namespace
{

// Takes the buttons that are meant away, as retireWidgets() does.
template<typename Meant>
void retireWhere(QLayout *layout, QList<ListButtonForm *> &buttons, const Meant &meant)
{
    const auto firstGone =
        std::stable_partition(buttons.begin(), buttons.end(),
                              [&meant](const ListButtonForm *button) { return !meant(button); });
    const int kept = static_cast<int>(firstGone - buttons.begin());
    QList<ListButtonForm *> gone = buttons.mid(kept);
    buttons = buttons.mid(0, kept);
    retireWidgets(layout, gone);
}

using Wanted = std::function<bool(const QString &)>;

// Rows of one of the program's own tables.
struct OwnRows {
    QString table;
    QVector<int> ids;
};

// The Ids of the rows whose text in this column is wanted; `error` gets the driver's text when not
// all of them could be read, and nothing is read where it has one already.
QVector<int> idsOfRows(const QString &table, const QString &column, QString *error,
                       const Wanted &wanted)
{
    QVector<int> ids;
    if (!error->isEmpty()) {
        return ids;
    }
    RowPass rows(table, {Markers::IdColumn, column});
    while (rows.next()) {
        const int id = Values::recordId(rows.value(0));
        if (id != 0 && wanted(rows.value(1).toString())) {
            ids.append(id);
        }
    }
    if (!rows.unreadable().isEmpty()) {
        *error = rows.unreadable();
    }
    return ids;
}

} // namespace

bool Tavenor::removeCurrentTable(bool batch)
{
    const QString table = currentTable;
    if (batch) {
        return db->dropTable(table);
    }
    const bool removed = db->inOneStep([this, &table] { return dropWithItsRows(table); });
    if (removed) {
        rebuildFilterButtons();
        removeFromTableList(table);
        checkWayBack();
        showTableAfterRemoval();
    }
    return removed;
}

bool Tavenor::dropWithItsRows(const QString &table)
{
    // The columns tell of the configurations only while the table is there.
    QString error;
    const QStringList bases = configurationsOf(table, &error);
    const auto belongs = [&bases](const QString &name) {
        return std::any_of(bases.begin(), bases.end(), [&name](const QString &base) {
            return SubTables::belongsToConfiguration(name, base);
        });
    };
    const auto isNamed = [&table](const QString &name) { return name == table; };
    const auto rowsOf = [&error](const QString &own, const QString &column, const Wanted &wanted) {
        return OwnRows{own, idsOfRows(own, column, &error, wanted)};
    };
    const OwnRows all[] = {
        rowsOf(Markers::SubTablesConfigsTable, ReservedTables::SubTablesConfigs::Name, belongs),
        rowsOf(Markers::SettingsTable, ReservedTables::Settings::TableName, isNamed),
        rowsOf(Markers::FiltersTable, ReservedTables::Filters::TableName, isNamed),
    };
    if (!error.isEmpty()) {
        // Some of it would stay behind, or that of another table would go.
        warn(SchemaMessages::dropFailed(table, error));
        return false;
    }
    // A table that stays keeps what belongs to it.
    if (!db->dropTable(table)) {
        return false;
    }
    for (const OwnRows &rows : all) {
        // The program's own table may be the one that is gone.
        if (!SqlNames::isSameName(rows.table, table)) {
            db->deleteRecords(rows.table, rows.ids);
        }
    }
    return true;
}

QStringList Tavenor::tablesNow() const
{
    QString error;
    const QStringList names = db->tables(&error);
    return error.isEmpty() ? names : allTables;
}

QStringList Tavenor::configurationsOf(const QString &table, QString *error) const
{
    const QStringList others = db->tables(error);
    if (!error->isEmpty()) {
        return {};
    }
    const QString shortName = table.section(Markers::HiddenTable, 1);
    const bool hasShortName = table.contains(Markers::HiddenTable) && !others.contains(shortName);
    const QStringList columns = db->fieldNames(table, error);
    QStringList bases;
    for (const QString &column : columns) {
        if (!column.contains(Formats::SubTable) || Columns::isReference(column)) {
            continue;
        }
        bases.append(SubTables::configurationBase(table, Names::fieldLabel(column)));
        if (hasShortName) {
            bases.append(SubTables::configurationBase(shortName, Names::fieldLabel(column)));
        }
    }
    // "Soci" with a field "Note_Prestiti" and "Soci_Note" with a field "Prestiti" share one.
    for (const QString &other : others) {
        if (bases.isEmpty() || !error->isEmpty()) {
            break;
        }
        if (other == table) {
            continue;
        }
        for (const QString &column : db->fieldNames(other, error)) {
            if (column.contains(Formats::SubTable)) {
                bases.removeAll(SubTables::configurationBase(other, Names::fieldLabel(column)));
            }
        }
    }
    return bases;
}

void Tavenor::removeFromTableList(const QString &table)
{
    allTables.removeAll(table);
    retireWhere(ui->listButtonLayout, listButtons,
                [&table](const ListButtonForm *button) { return button->tableName() == table; });
}

void Tavenor::showTableAfterRemoval()
{
    // Deliberate: the second name of the list, whichever it is; nothing when there is one name
    // left.
    const QString next = allTables.size() < 2 ? QString() : tableAt(1);
    if (next.isEmpty()) {
        showNoTable();
    } else {
        changeTable(next);
    }
}

void Tavenor::showNoTable()
{
    currentTable.clear();
    currentId = 0;
    currentRow = 0;
    emptyPages();
    disableFilters();
    markCurrentTable();
    ui->lbListName->setText(RecordLines::Empty);
    ui->lbViewInfo->setText(RecordLines::Empty);
    explainEmptyList(false);
}
