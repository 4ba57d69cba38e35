// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: the administrator and the advanced mode.
#include "app/Tavenor.h"

#include "ui_Tavenor.h"

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
    allTables = db->tables();
    rebuildTableList();
    showSystemConditions();
    // The Id and the attachment folder of the record are shown in this mode only.
    if (!viewWidgets.isEmpty()) {
        buildRecordView(currentId, currentTable);
    }
}
