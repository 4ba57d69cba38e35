// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Writes the sample collection's records into a new database.
#include "samples/databasefilling.h"

#include "model/attachments.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "model/values.h"
#include "storage/DataBase.h"
#include "storage/reservedtables.h"

#include <algorithm>

namespace
{

const QString FilterHeading = QStringLiteral("Filtro");
const QString FieldHeading = QStringLiteral("Campo");
const QString BookHeading = QStringLiteral("Libro");

bool refersToOthers(const TablePlan &plan)
{
    return std::any_of(
        plan.columns.begin(), plan.columns.end(),
        [](const ColumnDefinition &column) { return Columns::isReference(column.first); });
}

/// What a condition that was not touched is saved with.
QString untouchedValue(const QString &column)
{
    if (Columns::isReference(column)) {
        return {};
    }
    switch (Formats::kindOf(Columns::formatWord(column))) {
    case Formats::Kind::Integer:
        return QStringLiteral("0");
    case Formats::Kind::Bool:
        return QStringLiteral("FALSE");
    default:
        return {};
    }
}

bool hasCondition(const QString &column)
{
    switch (Formats::kindOf(Columns::formatWord(column))) {
    case Formats::Kind::Image:
    case Formats::Kind::Pdf:
    case Formats::Kind::SubTable:
        return false;
    default:
        return column != Markers::UserPathColumn;
    }
}

/// The row of `filters` that sets a condition of the filter `name` on `column`; -1 when the
/// column is free.
int conditionRow(const TabFile &filters, const QString &name, const QString &column)
{
    for (int row = 0; row < filters.rowCount(); ++row) {
        if (filters.value(row, FilterHeading) == name &&
            filters.value(row, FieldHeading) == column) {
            return row;
        }
    }
    return -1;
}

} // namespace

DatabaseFilling::DatabaseFilling(DataBase &database, const SampleData &data)
    : db(database)
    , data(data)
{
}

bool DatabaseFilling::fill()
{
    return db.inOneStep([this] {
        // A step that failed is done a second time, and must then begin afresh.
        idsByTitle.clear();
        complaint.clear();
        return createTables() && fillTables() && configureLoans() && fillLoans() && fillFilters();
    });
}

bool DatabaseFilling::createTables()
{
    QVector<QPair<QString, ColumnDefinitions>> all = {
        {Markers::SettingsTable, ReservedTables::settingsColumns()},
        {Markers::FiltersTable, ReservedTables::filtersColumns()},
        {Markers::SubTablesConfigsTable, ReservedTables::subTablesConfigsColumns()}};
    for (const TablePlan &plan : TablePlans::tables()) {
        all.append({plan.table, plan.columns});
    }
    for (const auto &table : qAsConst(all)) {
        if (!db.createTable(table.first, table.second)) {
            return complain(QStringLiteral("Impossibile creare la tabella %1").arg(table.first));
        }
    }
    return true;
}

bool DatabaseFilling::fillTables()
{
    QVector<TablePlan> plans = TablePlans::tables();
    // Records that others refer to need their Ids first.
    std::stable_partition(plans.begin(), plans.end(),
                          [](const TablePlan &plan) { return !refersToOthers(plan); });
    return std::all_of(plans.cbegin(), plans.cend(), [this](const TablePlan &plan) {
        return addIcon(plan.table, plan.source) && fillTable(plan);
    });
}

bool DatabaseFilling::fillTable(const TablePlan &plan)
{
    const TabFile file = data.file(plan.source);
    const QString titleHeading = TablePlans::heading(plan.columns.first().first);
    for (int row = 0; row < file.rowCount(); ++row) {
        const QString title = file.value(row, titleHeading);
        const QString folder = Attachments::recordFolder(plan.table, title);
        const int id = insert(plan.table, record(plan.columns, file, row, folder));
        if (id < 1) {
            return false;
        }
        idsByTitle[plan.table].insert(title, id);
    }
    return true;
}

bool DatabaseFilling::configureLoans()
{
    using namespace ReservedTables;
    const QString base = Names::joinName(TablePlans::Books, TablePlans::LoansLabel);
    const ColumnDefinitions columns = TablePlans::loanColumns();
    for (int place = 0; place < columns.size(); ++place) {
        const QString name =
            place == 0 ? base : base + Markers::SubTableConfig + QString::number(place);
        const FieldPairs row = {{SubTablesConfigs::Name, name},
                                {SubTablesConfigs::FieldName, columns.at(place).first},
                                {SubTablesConfigs::FieldType, columns.at(place).second}};
        if (insert(Markers::SubTablesConfigsTable, row) < 1) {
            return false;
        }
    }
    return true;
}

bool DatabaseFilling::fillLoans()
{
    const TabFile loans = data.file(SampleFiles::Loans);
    for (int row = 0; row < loans.rowCount(); ++row) {
        const QString title = loans.value(row, BookHeading);
        if (idText(TablePlans::Books, title).isEmpty()) {
            return false;
        }
        const QString table = SqlNames::madeSafe(
            SubTables::storedName(TablePlans::Books, TablePlans::LoansLabel, title));
        if (!createLoanTable(table) || !addLoan(loans, row, table)) {
            return false;
        }
    }
    return true;
}

bool DatabaseFilling::createLoanTable(const QString &table)
{
    if (db.tableExists(table)) {
        return true;
    }
    if (!db.createTable(table, TablePlans::loanColumns())) {
        return complain(QStringLiteral("Impossibile creare la tabella %1").arg(table));
    }
    return addIcon(table, SampleFiles::Loans);
}

bool DatabaseFilling::addLoan(const TabFile &loans, int row, const QString &table)
{
    // Loans have no title: the Id that the record is going to get names its folder.
    const QString folder = Attachments::recordFolder(table, QString::number(db.maxId(table) + 1));
    return insert(table, record(TablePlans::loanColumns(), loans, row, folder)) >= 1;
}

bool DatabaseFilling::addIcon(const QString &table, const QString &source)
{
    const QString path = QStringLiteral("%1/%2.png").arg(Markers::IconsFolder, source);
    return insert(Markers::SettingsTable, {{ReservedTables::Settings::TableName, table},
                                           {ReservedTables::Settings::IconPath, path}}) >= 1;
}

bool DatabaseFilling::fillFilters()
{
    const TabFile filters = data.file(SampleFiles::Filters);
    QStringList done;
    for (int row = 0; row < filters.rowCount(); ++row) {
        const QString name = filters.value(row, FilterHeading);
        const QString table = filters.value(row, QStringLiteral("Tabella"));
        const QString column = filters.value(row, FieldHeading);
        if (!conditionColumns(table).contains(column)) {
            return complain(
                QStringLiteral("Filtro %1: il campo %2 non c'è in %3").arg(name, column, table));
        }
        if (!done.contains(name)) {
            done.append(name);
            if (!fillFilter(filters, name, table)) {
                return false;
            }
        }
    }
    return true;
}

bool DatabaseFilling::fillFilter(const TabFile &filters, const QString &name, const QString &table)
{
    using namespace ReservedTables;
    const QStringList columns = conditionColumns(table);
    for (int place = 0; place < columns.size(); ++place) {
        const QString &column = columns.at(place);
        const int row = conditionRow(filters, name, column);
        const auto cell = [&filters, row](const QString &heading, const QString &otherwise) {
            return row < 0 ? otherwise : filters.value(row, heading);
        };
        const FieldPairs values = {
            {Filters::Name,
             place == 0 ? name : name + Markers::SavedFilter + QString::number(place)},
            {Filters::TableName, table},
            {Filters::FieldName, column},
            {Filters::FieldValue, cell(QStringLiteral("Valore"), untouchedValue(column))},
            {Filters::FieldType, Columns::formatWord(column)},
            {Filters::Condition, cell(QStringLiteral("Condizione"), QStringLiteral("NoCondition"))},
            {Filters::AndOr, cell(QStringLiteral("Unione"), QStringLiteral("And"))}};
        if (insert(Markers::FiltersTable, values) < 1) {
            return false;
        }
    }
    return true;
}

FieldPairs DatabaseFilling::record(const ColumnDefinitions &columns, const TabFile &file, int row,
                                   const QString &folder)
{
    FieldPairs values;
    for (const ColumnDefinition &column : columns) {
        const QString cell = file.value(row, TablePlans::heading(column.first));
        values.append({column.first, valueText(column.first, cell, folder)});
    }
    return values;
}

QString DatabaseFilling::valueText(const QString &column, const QString &cell,
                                   const QString &folder)
{
    if (column == Markers::UserPathColumn) {
        return folder;
    }
    if (Columns::isReference(column)) {
        return idText(Columns::reference(column).table, cell);
    }
    switch (Formats::kindOf(Columns::formatWord(column))) {
    case Formats::Kind::Image:
    case Formats::Kind::Pdf:
        return cell.isEmpty() ? QString() : folder + QLatin1Char('/') + cell;
    case Formats::Kind::SubTable:
        return Columns::label(column);
    case Formats::Kind::Link:
        return Columns::linkTarget(column);
    default:
        return cell;
    }
}

/// The Id of the record of this title; empty, with a complaint, when there is none.
QString DatabaseFilling::idText(const QString &table, const QString &title)
{
    const int id = idsByTitle.value(table).value(title);
    if (id < 1) {
        complain(QStringLiteral("«%1» non c'è nella tabella %2").arg(title, table));
        return {};
    }
    return QString::number(id);
}

/// The columns on which the filter page of the table offers a condition.
QStringList DatabaseFilling::conditionColumns(const QString &table) const
{
    QStringList columns;
    for (const QString &column : db.fieldNames(table)) {
        if (hasCondition(column)) {
            columns.append(column);
        }
    }
    return columns;
}

/// The new record's Id; 0 when an earlier complaint forbids it or the write fails.
int DatabaseFilling::insert(const QString &table, const FieldPairs &values)
{
    if (!complaint.isEmpty()) {
        return 0;
    }
    FieldPairs composed = values;
    for (FieldPair &pair : composed) {
        pair.second = Values::quotesDoubled(pair.second);
    }
    const int id = db.insertWhole(table, false, 0, composed);
    if (id < 1) {
        complain(QStringLiteral("Impossibile scrivere nella tabella %1").arg(table));
    }
    return qMax(id, 0);
}

/// Keeps the first reason, which is the one that counts; always false.
bool DatabaseFilling::complain(const QString &text)
{
    if (complaint.isEmpty()) {
        complaint = text;
    }
    return false;
}
