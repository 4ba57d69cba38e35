// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Turns the sample collection's data into tables and records.
#include "samples/recordcomposer.h"

#include "model/attachments.h"
#include "model/formats.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "model/subtables.h"
#include "storage/reservedtables.h"

#include <algorithm>

namespace
{

const QString FilterHeading = QStringLiteral("Filtro");
const QString TableHeading = QStringLiteral("Tabella");
const QString FieldHeading = QStringLiteral("Campo");
const QString BookHeading = QStringLiteral("Libro");

TablePlan planOf(const QString &table)
{
    const QVector<TablePlan> plans = TablePlans::tables();
    const auto plan = std::find_if(plans.begin(), plans.end(),
                                   [&table](const TablePlan &each) { return each.table == table; });
    return plan == plans.end() ? TablePlan() : *plan;
}

bool takesCondition(const QString &column)
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

/// The columns on which the filter page of the table offers a condition.
QStringList conditionColumns(const QString &table)
{
    QStringList columns;
    const ColumnDefinitions defined = planOf(table).columns;
    if (!defined.isEmpty()) {
        columns.append(Markers::IdColumn);
    }
    for (const ColumnDefinition &column : defined) {
        if (takesCondition(column.first)) {
            columns.append(column.first);
        }
    }
    return columns;
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

/// The row of `file` that sets a condition of the filter `name` on `column`; -1 when the
/// column is free.
int conditionRow(const TabFile &file, const QString &name, const QString &column)
{
    for (int row = 0; row < file.rowCount(); ++row) {
        if (file.value(row, FilterHeading) == name && file.value(row, FieldHeading) == column) {
            return row;
        }
    }
    return -1;
}

QString numbered(const QString &name, QLatin1String marker, int place)
{
    return place == 0 ? name : name + marker + QString::number(place);
}

SampleTable loanConfiguration()
{
    using namespace ReservedTables;
    SampleTable result{Markers::SubTablesConfigsTable, subTablesConfigsColumns(), {}};
    const QString base = Names::joinName(TablePlans::Books, TablePlans::LoansLabel);
    for (const ColumnDefinition &column : TablePlans::loanColumns()) {
        result.records.append({{SubTablesConfigs::Name,
                                numbered(base, Markers::SubTableConfig, result.records.size())},
                               {SubTablesConfigs::FieldName, column.first},
                               {SubTablesConfigs::FieldType, column.second}});
    }
    return result;
}

FieldPairs iconRecord(const QString &table, const QString &source)
{
    const QString path = QStringLiteral("%1/%2.png").arg(Markers::IconsFolder, source);
    return {{ReservedTables::Settings::TableName, table},
            {ReservedTables::Settings::IconPath, path}};
}

SampleTable settings(const QVector<SampleTable> &loans)
{
    SampleTable result{Markers::SettingsTable, ReservedTables::settingsColumns(), {}};
    for (const TablePlan &plan : TablePlans::tables()) {
        result.records.append(iconRecord(plan.table, plan.source));
    }
    for (const SampleTable &loan : loans) {
        result.records.append(iconRecord(loan.name, SampleFiles::Loans));
    }
    return result;
}

} // namespace

RecordComposer::RecordComposer(const SampleData &data)
    : data(data)
{
}

bool RecordComposer::compose()
{
    complaint.clear();
    const QVector<SampleTable> loans = loanTables();
    composed = {settings(loans), filters(), loanConfiguration()};
    composed += userTables();
    composed += loans;
    return complaint.isEmpty();
}

QVector<SampleTable> RecordComposer::userTables()
{
    QVector<SampleTable> result;
    for (const TablePlan &plan : TablePlans::tables()) {
        SampleTable table{plan.table, plan.columns, {}};
        const TabFile file = data.file(plan.source);
        const QString titleHeading = TablePlans::heading(plan.columns.first().first);
        for (int row = 0; row < file.rowCount(); ++row) {
            const QString folder =
                Attachments::recordFolder(plan.table, file.value(row, titleHeading));
            table.records.append(record(plan.columns, file, row, folder));
        }
        result.append(table);
    }
    return result;
}

QVector<SampleTable> RecordComposer::loanTables()
{
    QVector<SampleTable> result;
    const TabFile loans = data.file(SampleFiles::Loans);
    for (int row = 0; row < loans.rowCount(); ++row) {
        const QString title = loans.value(row, BookHeading);
        // Asked only for its complaint: a loan of a book that is missing could not be reached.
        idText(TablePlans::Books, title);
        const QString name = SqlNames::madeSafe(
            SubTables::storedName(TablePlans::Books, TablePlans::LoansLabel, title));
        auto table = std::find_if(result.begin(), result.end(),
                                  [&name](const SampleTable &each) { return each.name == name; });
        if (table == result.end()) {
            result.append({name, TablePlans::loanColumns(), {}});
            table = result.end() - 1;
        }
        // Loans have no title: the Id that the record is going to get names its folder.
        const QString folder =
            Attachments::recordFolder(name, QString::number(table->records.size() + 1));
        table->records.append(record(table->columns, loans, row, folder));
    }
    return result;
}

SampleTable RecordComposer::filters()
{
    SampleTable result{Markers::FiltersTable, ReservedTables::filtersColumns(), {}};
    const TabFile file = data.file(SampleFiles::Filters);
    QStringList done;
    for (int row = 0; row < file.rowCount(); ++row) {
        const QString name = file.value(row, FilterHeading);
        const QString table = file.value(row, TableHeading);
        const QString field = file.value(row, FieldHeading);
        const QStringList columns = conditionColumns(table);
        if (!columns.contains(field)) {
            complain(
                QStringLiteral("Filtro %1: il campo %2 non c'è in %3").arg(name, field, table));
        }
        if (!done.contains(name)) {
            done.append(name);
            result.records += filterRecords(file, name, columns);
        }
    }
    return result;
}

/// One record for each condition that the filter page shows, the untouched ones included.
QVector<FieldPairs> RecordComposer::filterRecords(const TabFile &file, const QString &name,
                                                  const QStringList &columns) const
{
    using namespace ReservedTables;
    const QString table = file.value(file.find(FilterHeading, name), TableHeading);
    QVector<FieldPairs> records;
    for (const QString &column : columns) {
        const int row = conditionRow(file, name, column);
        const auto cell = [&file, row](const QString &heading, const QString &otherwise) {
            return row < 0 ? otherwise : file.value(row, heading);
        };
        records.append(
            {{Filters::Name, numbered(name, Markers::SavedFilter, records.size())},
             {Filters::TableName, table},
             {Filters::FieldName, column},
             {Filters::FieldValue, cell(QStringLiteral("Valore"), untouchedValue(column))},
             {Filters::FieldType, Columns::formatWord(column)},
             {Filters::Condition,
              cell(QStringLiteral("Condizione"), QStringLiteral("NoCondition"))},
             {Filters::AndOr, cell(QStringLiteral("Unione"), QStringLiteral("And"))}});
    }
    return records;
}

FieldPairs RecordComposer::record(const ColumnDefinitions &columns, const TabFile &file, int row,
                                  const QString &folder)
{
    FieldPairs values;
    for (const ColumnDefinition &column : columns) {
        const QString cell = file.value(row, TablePlans::heading(column.first));
        values.append({column.first, valueText(column.first, cell, folder)});
    }
    return values;
}

QString RecordComposer::valueText(const QString &column, const QString &cell, const QString &folder)
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

/// The Id of the record of this title; complains when there is none.
QString RecordComposer::idText(const QString &table, const QString &title)
{
    const TablePlan plan = planOf(table);
    const QString titleHeading = TablePlans::heading(plan.columns.first().first);
    const int row = data.file(plan.source).find(titleHeading, title);
    if (row < 0) {
        complain(QStringLiteral("«%1» non c'è nella tabella %2").arg(title, table));
    }
    return QString::number(row + 1);
}

/// Keeps the first reason, which often causes the others.
void RecordComposer::complain(const QString &text)
{
    if (complaint.isEmpty()) {
        complaint = text;
    }
}
