// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: jumps from record to record, and the way back.
#include "app/Tavenor.h"

#include "model/columns.h"
#include "model/formats.h"
#include "model/recordlines.h"
#include "ui_Tavenor.h"
#include "widgets/buttonkeys.h"
#include "widgets/inputDataForm.h"

namespace
{

// Deliberate: whichever column has the table's name in its own takes part. A link to a hidden
// table carries the name as it is shown.
bool refersTo(const QString &column, const QString &table)
{
    const bool isLink = Formats::kindOf(Columns::formatWord(column)) == Formats::Kind::Link;
    return column.contains(table) || (isLink && Columns::linkTarget(column) == table);
}

} // namespace

void Tavenor::connectLinks()
{
    connect(ui->pbReturn, &QPushButton::clicked, this, &Tavenor::goBack);
    setButtonKey(ui->pbReturn, QKeySequence(Qt::ALT + Qt::Key_Left));
    ui->pbReturn->hide();
}

void Tavenor::rememberWayBack()
{
    ui->pbReturn->show();
    previousTable = currentTable;
    previousId = currentId;
}

void Tavenor::enterTable(const QString &listName)
{
    rememberWayBack();
    showTableHead(listName);
    currentTable = listName;
}

void Tavenor::checkWayBack()
{
    QString error;
    if (!db->tableExists(previousTable, &error) && error.isEmpty()) {
        ui->pbReturn->hide();
    }
}

void Tavenor::goToRequest(QString listName, int Id)
{
    rememberWayBack();
    showRecordOf(listName, Id);
}

QString Tavenor::linkedTable(const QString &nameOrValue, QString *error) const
{
    const QStringList tables = db->tables(error);
    if (tables.contains(nameOrValue)) {
        return nameOrValue;
    }
    for (const QPair<QString, QString> &field : linkFields) {
        if (field.first == nameOrValue) {
            return tables.contains(field.second) ? field.second : QString();
        }
    }
    return QString();
}

void Tavenor::callFilter(QString listName, int Id)
{
    QString error;
    const QString table = linkedTable(listName, &error);
    if (!error.isEmpty()) {
        warnUnreadable(currentTable, error);
        return;
    }
    if (table.isEmpty()) {
        return;
    }
    // The record's line is gone as soon as the other table is listed.
    const QString title = ui->lbViewInfo->text();
    enterTable(table);
    markCurrentTable();
    forgetFilters();
    linkToFilter(Id, previousTable, title);
}

void Tavenor::linkToFilter(int Id, QString callListName, QString recordTitle)
{
    const QString value = RecordLines::idAndTitle(Id, recordTitle);
    if (!refreshFilterPage()) {
        // Without the condition it is the whole table that was entered.
        changeToUsersPage();
        showFirstRecord();
        return;
    }
    for (inputDataForm *const widget : qAsConst(filterWidgets)) {
        if (!refersTo(widget->columnName(), callListName)) {
            widget->setConditionName(QStringLiteral("NO FILTER"));
            continue;
        }
        Filters::Setting setting = widget->setting();
        setting.value = value;
        setting.comparison = Filters::Comparison::Equal;
        setting.active = true;
        setting.joinsWithAnd = false;
        setting.followsLink = true;
        widget->setSetting(setting);
    }
    enableFilters();
}

void Tavenor::goBack()
{
    showRecordOf(previousTable, previousId);
    // Deliberate: the remembered place stays, only the button goes.
    ui->pbReturn->hide();
}
