// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: menu actions, which of them can be used when, and the marks of the modes.
#include "app/Tavenor.h"

#include "app/firstsize.h"
#include "ui_Tavenor.h"
#include "widgets/CardFrame.h"
#include "widgets/icons.h"

#include <QHBoxLayout>
#include <QLabel>

namespace
{

struct ActionText {
    QAction *action;
    QString text;
    QString toolTip;
};

QVector<ActionText> actionTexts(const Ui::Tavenor &form)
{
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    return {
        {form.actionTable, text("Crea Tabella"), text("Crea Nuova Tabella")},
        {form.actionAdd_Field, text("Aggiungi Campo"),
         text("Aggiungi un campo alla tabella selezionata")},
        {form.actionRemove_Table, text("Elimina Tabella"), text("Elimina la tabella selezionata")},
        {form.actionTech_Mod, text("Modo Avanzato"), QString()},
        {form.actionDelete_All_Database, text("Elimina Tutte Le Tabelle"),
         text("Elimina tutte le tabelle dal database")},
        {form.actionExport, text("Esporta su file (Export Manager File)"), QString()},
        {form.actionExport_To_File, text("Esporta su file (Tabella leggibile)"), QString()},
        {form.actionAutoExportAll, text("Esporta Tutto (Export Manager File)"),
         text("Esporta tutte le tabelle (Export Manager File)")},
        {form.actionClear_Selected_List, text("Pulisci La Tabella Selezionata"),
         text("Pulisci la tabella selezionata")},
        {form.actionImport_From_File_Export_Manager_File,
         text("Importa da File (Export Manager File)"), QString()},
        {form.actionNew_Db, text("Nuovo Db"), QString()},
        {form.actionOpen_Db, text("Apri Db"), QString()},
        {form.actionShow_Hidden_Tables, text("Mostra Tabelle Nascoste"),
         text("Mostra le tabella nascoste")},
        {form.actionImport_Table_Structure, text("Importa Strutture"),
         text("Importa strutture di tabelle")},
        {form.actionAdministrator_Mode, text("Modo Amministratore"), QString()},
        {form.actionChange_Table_Icon, text("Cambia Icona Tabella"),
         text("Cambia l'icona della tabella")},
        {form.actionExit, text("Chiudi"), text("Chiudi il programma")},
        {form.actionDeleteFilter, text("Elimina filtro"), text("Elimina il filtro attivo")},
        {form.actionClear_All_Tables, text("Pulisci Database"),
         text("Cancella tutti i dati del database")},
        {form.actionExport_Selected_Record_To_File,
         text("Esporta Record su file (Export Manager File)"),
         text("Esporta il Record Selezionato su file (Export Manager File)")},
        {form.actionExport_All_Tables_Structures, text("Esporta Strutture"),
         text("Esporta tutte le Strutture Tabella")},
        {form.actionExport_Selected_Tables_Structure, text("Esporta Struttura Tabella"),
         text("Esporta la Struttura Tabella selezionata")},
        {form.actionExport_Selected_Record_To_File_txt,
         text("Esporta Record su file (Formato Leggibile)"),
         text("Esporta il Record Selezionato su file (Formato Leggibile)")},
    };
}

QList<QAction *> writingActions(const Ui::Tavenor &form)
{
    return {form.actionAdministrator_Mode,
            form.actionNew_Db,
            form.actionTable,
            form.actionAdd_Field,
            form.actionRemove_Table,
            form.actionChange_Table_Icon,
            form.actionDeleteFilter,
            form.actionClear_Selected_List,
            form.actionClear_All_Tables,
            form.actionExport,
            form.actionExport_To_File,
            form.actionExport_Selected_Record_To_File,
            form.actionExport_Selected_Record_To_File_txt,
            form.actionExport_All_Tables_Structures,
            form.actionExport_Selected_Tables_Structure,
            form.actionImport_Table_Structure,
            form.actionImport_From_File_Export_Manager_File,
            form.actionAutoExportAll,
            form.actionDelete_All_Database};
}

QList<QWidget *> writingButtons(const Ui::Tavenor &form)
{
    return {form.pbNewUser, form.pbEditUser, form.pbDeleteUser, form.pbNewFilter};
}

// The commands that the modes hide everywhere else.
QList<QAction *> doorTwins(const Ui::Tavenor &form)
{
    return {form.actionTable, form.actionAdd_Field, form.actionTech_Mod,
            form.actionExport_All_Tables_Structures, form.actionExport_Selected_Tables_Structure};
}

// What would leave or rebuild the entry page.
QList<QAction *> leavingActions(const Ui::Tavenor &form)
{
    return {form.actionNew_Db,
            form.actionOpen_Db,
            form.actionTable,
            form.actionAdd_Field,
            form.actionRemove_Table,
            form.actionTech_Mod,
            form.actionChange_Table_Icon,
            form.actionDeleteFilter,
            form.actionClear_Selected_List,
            form.actionClear_All_Tables,
            form.actionDelete_All_Database,
            form.actionShow_Hidden_Tables,
            form.actionImport_Table_Structure,
            form.actionImport_From_File_Export_Manager_File};
}

// Adds a hidden mark to the row at the end of the tool bar.
QWidget *addModeMark(QLayout *row, const QString &text)
{
    auto *const mark = new CardFrame(row->parentWidget());
    auto *const inside = new QHBoxLayout(mark);
    inside->setContentsMargins(8, 4, 8, 4);
    inside->addWidget(new QLabel(text, mark));
    mark->hide();
    row->addWidget(mark);
    row->setAlignment(mark, Qt::AlignVCenter);
    return mark;
}

QList<QWidget *> leavingWidgets(const Ui::Tavenor &form)
{
    return {form.listFrame, form.pbFilter, form.pbCalc, form.pbReturn};
}

} // namespace

void Tavenor::setActionTexts()
{
    ui->menuFile->setTitle(QStringLiteral("File"));
    ui->menuOptions->setTitle(QStringLiteral("Opzioni"));
    for (const ActionText &entry : actionTexts(*ui)) {
        entry.action->setText(entry.text);
        if (!entry.toolTip.isEmpty()) {
            entry.action->setToolTip(entry.toolTip);
        }
    }
    ui->actionOpen_Db->setShortcut(QKeySequence::Open);
    ui->actionExit->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_Q));
}

void Tavenor::connectActions()
{
    connect(ui->actionNew_Db, &QAction::triggered, this, &Tavenor::newDb);
    connect(ui->actionOpen_Db, &QAction::triggered, this, &Tavenor::openDb);
    connect(ui->actionExit, &QAction::triggered, this, &Tavenor::close);
    connect(ui->actionTool, &QAction::triggered, this, &Tavenor::about);
    connect(ui->actionAdministrator_Mode, &QAction::triggered, this,
            &Tavenor::administratorModeEnabled);
    connect(ui->actionTech_Mod, &QAction::triggered, this, &Tavenor::enableTechMod);
    connect(ui->actionShow_Hidden_Tables, &QAction::triggered, this, &Tavenor::showHiddenTable);
    connect(ui->actionChange_Table_Icon, &QAction::triggered, this, &Tavenor::changeTableIcon);
}

void Tavenor::makeSecondDoor()
{
    // The two modes hide these commands everywhere else, so they get entries of their own.
    QAction *const separator = ui->menuOptions->insertSeparator(ui->actionTool);
    secondDoor.append(separator);
    for (QAction *const twin : doorTwins(*ui)) {
        auto *const entry = new QAction(twin->icon(), twin->text(), this);
        entry->setToolTip(twin->toolTip());
        entry->setCheckable(twin->isCheckable());
        ui->menuOptions->insertAction(separator, entry);
        secondDoor.append(entry);
        connect(entry, &QAction::triggered, twin, &QAction::trigger);
    }
    techModDoor = secondDoor.at(3);
    secondDoor.at(1)->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_T));
    secondDoor.at(2)->setShortcut(QKeySequence(Qt::CTRL + Qt::SHIFT + Qt::Key_T));
}

void Tavenor::makeModeMarks()
{
    showListAction =
        new QAction(Icons::shared(QStringLiteral(":/panelIcon")), QStringLiteral("Tabelle"), this);
    showListAction->setCheckable(true);
    showListAction->setChecked(FirstSize::hasRoomForPanel(width()));
    hideShowList(showListAction->isChecked());
    ui->mainToolBar->addSeparator();
    ui->mainToolBar->addAction(showListAction);
    showListAction->setShortcut(QKeySequence(Qt::Key_F9));
    connect(showListAction, &QAction::triggered, this, &Tavenor::hideShowList);

    auto *const marks = new QWidget(ui->mainToolBar);
    auto *const row = new QHBoxLayout(marks);
    row->setContentsMargins(8, 0, 4, 0);
    row->setSpacing(8);
    row->addStretch();
    ui->mainToolBar->addWidget(marks);
    administratorMark = addModeMark(row, ui->actionAdministrator_Mode->text());
    advancedMark = addModeMark(row, ui->actionTech_Mod->text());
    readOnlyMark = addModeMark(row, QStringLiteral("READONLY"));
}

void Tavenor::updateSecondDoor()
{
    const bool open = !readOnly && !typed && db && db->isOpen();
    for (QAction *const entry : qAsConst(secondDoor)) {
        entry->setVisible(administratorMode);
        entry->setEnabled(open);
    }
}

void Tavenor::updateCommands()
{
    for (QAction *const action : writingActions(*ui)) {
        action->setEnabled(!readOnly);
    }
    for (QWidget *const button : writingButtons(*ui)) {
        button->setEnabled(!readOnly);
    }
    for (QAction *const action : leavingActions(*ui)) {
        const bool writes = writingActions(*ui).contains(action);
        action->setEnabled(!typed && !(writes && readOnly));
    }
    for (QWidget *const widget : leavingWidgets(*ui)) {
        widget->setEnabled(!typed);
    }
    updateSecondDoor();
    techModDoor->setChecked(ui->actionTech_Mod->isChecked());
    administratorMark->setVisible(administratorMode);
    advancedMark->setVisible(advancedMode);
    readOnlyMark->setVisible(readOnly);
}
