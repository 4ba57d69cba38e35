// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the two modes; emptying and removing tables wholesale.
#include "app/Tavenor.h"

#include "app/tavenor_progress.h"
#include "model/names.h"
#include "ui_Tavenor.h"
#include "widgets/progressBarForm.h"

void Tavenor::connectMaintenance()
{
    connect(ui->actionClear_Selected_List, &QAction::triggered, this, &Tavenor::clearTable);
    connect(ui->actionClear_All_Tables, &QAction::triggered, this, &Tavenor::clearAllTables);
    connect(ui->actionRemove_Table, &QAction::triggered, this, &Tavenor::removeTable);
    connect(ui->actionDelete_All_Database, &QAction::triggered, this, &Tavenor::deleteAll);
}

void Tavenor::administratorModeEnabled(bool on)
{
    administratorMode = on;
    for (QAction *const action :
         {ui->actionNew_Db, ui->actionRemove_Table, ui->actionDelete_All_Database,
          ui->actionShow_Hidden_Tables, ui->actionDeleteFilter}) {
        action->setVisible(on);
    }
    // Deliberate: hidden in either state; people reach these through entries of their own.
    for (QAction *const action : {ui->actionAdd_Field, ui->actionExport_All_Tables_Structures,
                                  ui->actionExport_Selected_Tables_Structure}) {
        action->setVisible(false);
    }
    // Deliberate: once hidden these two are never shown again.
    if (!on) {
        ui->actionTable->setVisible(false);
        ui->actionTech_Mod->setVisible(false);
    }
    updateCommands();
    if (db && currentTable.isEmpty()) {
        explainEmptyList(false);
    }
}

void Tavenor::enableTechMod()
{
    const bool before = advancedMode;
    advancedMode = ui->actionTech_Mod->isChecked() &&
                   confirm(QStringLiteral("Nel Modo Avanzato è possibile danneggiare il "
                                          "Database. Abilitare il Modo Avanzato?"));
    ui->actionTech_Mod->setChecked(advancedMode);
    updateCommands();
    if (advancedMode == before) {
        return;
    }
    allTables = tablesNow();
    rebuildTableList();
    showSystemConditions();
    // The Id and the attachment folder of the record are shown in this mode only.
    if (!listLines.isEmpty() || !viewWidgets.isEmpty()) {
        buildRecordView(currentId, currentTable);
    }
}

void Tavenor::clearTable()
{
    if (!hasCurrentTable()) {
        return;
    }
    const QString shown = Names::tableDisplayName(currentTable);
    if (!confirm(
            QString::asprintf("Eliminare tutti gli elementi di %s?", shown.toUtf8().constData()))) {
        return;
    }
    db->clearTable(currentTable);
    showChanged(currentTable);
}

void Tavenor::clearAllTables()
{
    if (!hasDatabase() ||
        !confirm(QStringLiteral("Eliminare tutti gli elementi in tutto il database?"))) {
        return;
    }
    // Deliberate: the program's own tables too, so icons, saved filters and sub-table
    // configurations go with the records.
    const QStringList names = tablesNow();
    const bool clearedAny = db->inOneStep([this, &names] {
        bool cleared = false;
        for (const QString &name : names) {
            cleared = db->clearTable(name) || cleared;
        }
        return cleared;
    });
    if (!clearedAny) {
        return;
    }
    rebuildTableList();
    rebuildFilterButtons();
    if (!currentTable.isEmpty()) {
        changeTable(currentTable);
    }
}

void Tavenor::removeTable()
{
    if (!hasCurrentTable()) {
        return;
    }
    const QString shown = Names::tableDisplayName(currentTable);
    if (confirm(QString::asprintf("Eliminare %s?", shown.toUtf8().constData()))) {
        removeCurrentTable(false);
    }
}

void Tavenor::deleteAll()
{
    if (!hasDatabase() || !confirm(QStringLiteral("Eliminare tutte le tabelle?"))) {
        return;
    }
    const Progress progress(*this, QStringLiteral("Eliminazione in corso"), QString());
    const QStringList names = tablesNow();
    const QString shown = currentTable;
    QStringList left;
    if (!db->inOneStep([&] { return removeTables(names, &left); })) {
        currentTable = shown;
        return;
    }
    allTables.clear();
    // A table that could not be removed keeps its place.
    for (const QString &name : qAsConst(left)) {
        if (!Names::isReservedTable(name)) {
            allTables.append(name);
        }
    }
    rebuildTableList();
    rebuildFilterButtons();
    showNoTable();
}

bool Tavenor::removeTables(const QStringList &names, QStringList *left)
{
    left->clear();
    for (int i = 0; i < names.size(); ++i) {
        currentTable = names.at(i);
        progressForm->setProgressText(currentTable);
        if (!removeCurrentTable(true)) {
            left->append(currentTable);
        }
        updateProgress(i, names.size());
    }
    progressForm->setProgressText(QStringLiteral("Elaborazione"));
    createSettingsTable();
    createFiltersTable();
    createSubTablesConfigsTable();
    return left->size() < names.size();
}
