// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: table buttons, table icons.
#include "app/Tavenor.h"

#include "app/databasepath.h"
#include "app/pageforms.h"
#include "app/tableicons.h"
#include "model/attachments.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/values.h"
#include "storage/recordmessages.h"
#include "storage/reservedtables.h"
#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"
#include "widgets/attachfile.h"
#include "widgets/ownedwidgets.h"

#include <QFileDialog>
#include <QFileInfo>

namespace
{

const QSize HeadIconSize(100, 50);
const QString NoTable = QStringLiteral("Nessuna Tabella Caricata!");

} // namespace

void Tavenor::setTableTexts()
{
    ui->pbReturn->setText(QStringLiteral("Indietro"));
    ui->pbCalc->setText(QStringLiteral("Calcola"));
    ui->tablesScroll->setAccessibleName(QStringLiteral("Tabelle"));
    ui->leDbName->setAccessibleName(QStringLiteral("Database"));
    ui->pbDbName->setAccessibleName(ui->leDbName->accessibleName());
}

void Tavenor::fillTableList()
{
    const TableIcons icons(databaseFolder);
    for (const QString &name : qAsConst(allTables)) {
        if (Names::isReservedTable(name) && !advancedMode) {
            continue;
        }
        if (name.contains(Markers::HiddenTable) && !showHidden) {
            continue;
        }
        const QIcon icon = icons.icon(name);
        addTableButton(name, icon);
        // Deliberate: the head shows the icon of the first table listed in the file, whichever
        // table is current.
        if (name == allTables.first()) {
            ui->lbListIcon->setPixmap(icon.pixmap(HeadIconSize));
        }
    }
    markCurrentTable();
    if (currentTable.isEmpty()) {
        explainEmptyList(false);
    }
}

void Tavenor::rebuildTableList()
{
    const bool hadFocus = ui->tablesContents->isAncestorOf(focusWidget());
    retireWidgets(ui->listButtonLayout, listButtons);
    fillTableList();
    if (hadFocus) {
        focusPanel();
    }
}

void Tavenor::addTableButton(const QString &table, const QIcon &icon)
{
    auto *const button = new ListButtonForm;
    listButtons.append(button);
    button->setTableName(table);
    button->setIcon(icon);
    ui->listButtonLayout->addWidget(button);
    orderLast(listButtons, ui->tablesScroll);
    connect(button, &ListButtonForm::changeList, this, &Tavenor::changeTable);
}

void Tavenor::addToTableList(const QString &table, bool listed)
{
    allTables.append(table);
    if (listed) {
        addTableButton(table, tableIcon(table));
    }
    if (currentTable.isEmpty()) {
        explainEmptyList(false);
    }
}

FieldPairs Tavenor::settingsRow(const QString &table, const QString &iconPath) const
{
    return {{Markers::IdColumn, Values::oneCharacterId(db->rowCount(Markers::SettingsTable))},
            {ReservedTables::Settings::TableName, Values::quotesDoubled(table)},
            {ReservedTables::Settings::IconPath, Values::quotesDoubled(iconPath)}};
}

bool Tavenor::hasCurrentTable()
{
    if (currentTable.isEmpty()) {
        warn(NoTable);
        return false;
    }
    return true;
}

bool Tavenor::hasDatabase()
{
    if (!db->isOpen()) {
        warn(NoTable);
        return false;
    }
    return true;
}

QString Tavenor::firstOrdinaryTable() const
{
    for (const QString &name : qAsConst(allTables)) {
        if (!Names::isReservedTable(name) && !name.contains(Markers::HiddenTable)) {
            return name;
        }
    }
    return QString();
}

QString Tavenor::tableAt(int place) const
{
    const QString name = allTables.value(place);
    return Names::isReservedTable(name) && !advancedMode ? firstOrdinaryTable() : name;
}

void Tavenor::markCurrentTable()
{
    for (ListButtonForm *const button : qAsConst(listButtons)) {
        button->setCurrent(button->tableName() == currentTable);
    }
    explainEmptyFilters();
}

QIcon Tavenor::tableIcon(const QString &table) const
{
    return TableIcons(databaseFolder).icon(table);
}

void Tavenor::showTableHead(const QString &table)
{
    ui->lbListName->setText(Names::tableDisplayName(table));
    ui->lbListIcon->setPixmap(tableIcon(table).pixmap(HeadIconSize));
}

void Tavenor::changeTable(QString table)
{
    listTable(table);
    showFirstRecord();
}

void Tavenor::listTable(const QString &table)
{
    showTableHead(table);
    currentTable = table;
    markCurrentTable();
    forgetFilters();
    changeToUsersPage();
}

void Tavenor::showHiddenTable()
{
    allTables = tablesNow();
    showHidden = ui->actionShow_Hidden_Tables->isChecked();
    rebuildTableList();
}

QString Tavenor::chooseTableIcon()
{
    // Deliberate: a cancelled dialog goes on with an empty name, which leaves the table with
    // an empty icon.
    const QString chosen =
        QFileDialog::getOpenFileName(this, tr("Open File"), QStringLiteral("/home"),
                                     tr("Images (*.png *.jpg *.jpeg *.bmp *.tif)"));
    const QString fileName = DatabasePath::fileName(chosen);
    const QString storedPath = dataFolderName + QLatin1Char('/') + fileName;
    if (QFileInfo(chosen).isFile() && Attachments::mayBeOpened(databaseFolder, storedPath)) {
        // Deliberate: an icon that is there already is never overwritten.
        AttachFile::copyWhole(chosen, databaseFolder + storedPath);
    }
    return storedPath;
}

void Tavenor::changeTableIcon()
{
    if (!hasCurrentTable()) {
        return;
    }
    const QString iconPath = Values::quotesDoubled(chooseTableIcon());
    const QString iconColumn = ReservedTables::Settings::IconPath;
    QString error;
    const QSqlRecord settings = db->findRecord(
        Markers::SettingsTable, ReservedTables::Settings::TableName, currentTable, &error);
    if (!error.isEmpty()) {
        warn(RecordMessages::updateFailed(error));
        return;
    }
    if (settings.isEmpty()) {
        addRecord(Markers::SettingsTable,
                  {{ReservedTables::Settings::TableName, Values::quotesDoubled(currentTable)},
                   {iconColumn, iconPath}},
                  false);
    } else {
        const int id = DataBase::recordValue(settings, Markers::IdColumn).toInt();
        db->updateField(Markers::SettingsTable, id, iconColumn, iconPath);
    }
    showChangedButtons(Markers::SettingsTable);
    showTableHead(currentTable);
}

void Tavenor::showChangedButtons(const QString &table)
{
    if (table == Markers::SettingsTable) {
        rebuildTableList();
        rebuildFilterButtons();
    } else if (table == Markers::FiltersTable) {
        rebuildFilterButtons();
    }
}

void Tavenor::showChanged(const QString &table)
{
    showChangedButtons(table);
    if (!currentTable.isEmpty()) {
        changeTable(currentTable);
    }
}
