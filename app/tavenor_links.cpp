// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: jumps from record to record, and the way back.
#include "app/Tavenor.h"

#include "ui_Tavenor.h"

void Tavenor::connectLinks()
{
    connect(ui->pbReturn, &QPushButton::clicked, this, &Tavenor::goBack);
    ui->pbReturn->hide();
}

void Tavenor::enterTable(const QString &listName)
{
    ui->pbReturn->show();
    previousTable = currentTable;
    previousId = currentId;
    showTableHead(listName);
    currentTable = listName;
}

void Tavenor::checkWayBack()
{
    if (!db->tableExists(previousTable)) {
        ui->pbReturn->hide();
    }
}

void Tavenor::goToRequest(QString listName, int Id)
{
    enterTable(listName);
    currentId = Id;
    changeTable(currentTable);
    // changeTable() ends on the first line of the list.
    currentId = Id;
    vwRecord(Id);
}

void Tavenor::goBack()
{
    showTableHead(previousTable);
    currentTable = previousTable;
    changeTable(currentTable);
    currentId = previousId;
    vwRecord(currentId);
    // Deliberate: the remembered place stays, only the button goes.
    ui->pbReturn->hide();
}
