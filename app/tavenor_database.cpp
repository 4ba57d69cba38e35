// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: opening, creating and bringing up a database.
#include "app/Tavenor.h"

#include "app/databasepath.h"
#include "app/workingfiles.h"
#include "model/markers.h"
#include "model/names.h"
#include "storage/reservedtables.h"
#include "storage/schemamessages.h"
#include "ui_Tavenor.h"
#include "widgets/ListButtonForm.h"

#include <QDir>
#include <QFileInfo>
#include <QFileDialog>

void Tavenor::connectDatabase()
{
    connect(ui->pbDbName, &QPushButton::toggled, this, &Tavenor::showDbPath);
    showDbPath(false);
}

void Tavenor::newDb()
{
    switchDatabase(QFileDialog::getSaveFileName(this, tr("Open File"), QStringLiteral("/home"),
                                                tr("DataBase (*.db)")));
}

void Tavenor::openDb()
{
    switchDatabase(QFileDialog::getOpenFileName(this, tr("Open File"), QStringLiteral("/home"),
                                                tr("DataBase (*.db)")));
}

void Tavenor::switchDatabase(const QString &path)
{
    if (path.isEmpty()) {
        return;
    }
    // Deliberate: the path is remembered before it is known that it can be opened.
    WorkingFiles::setLastDatabase(path);
    if (prepareDataFolders(path)) {
        setDatabase(true);
    }
}

void Tavenor::hideShowList(bool on)
{
    const bool hadFocus = ui->listFrame->isAncestorOf(focusWidget());
    ui->listFrame->setVisible(on);
    if (!on && hadFocus) {
        // Otherwise it would go to whatever comes next.
        focusPage();
    }
}

void Tavenor::showDbPath(bool on)
{
    ui->leDbName->setVisible(on);
}

bool Tavenor::prepareDataFolders(const QString &path)
{
    if (path.isEmpty() || !db->openDatabase(path)) {
        return false;
    }
    emptyPages();
    docFolderName = Markers::AttachmentsFolder;
    dataFolderName = Markers::IconsFolder;
    databaseFolder = DatabasePath::folder(path);
    databaseFile = DatabasePath::fileName(path);
    ui->leDbName->setText(path);
    ui->leDbName->setCursorPosition(0);
    ui->pbDbName->setText(databaseFile);
    ui->pbDbName->setAccessibleName(ui->leDbName->accessibleName() + QLatin1Char(' ') +
                                    databaseFile);
    docFolder = databaseFolder + docFolderName;
    dataFolder = databaseFolder + dataFolderName;
    if (!opensReadOnly) {
        QDir().mkdir(docFolder);
        QDir().mkdir(dataFolder);
    }
    QString error;
    allTables = db->tables(&error);
    if (!error.isEmpty()) {
        // It would pass for a database without tables.
        warn(QStringLiteral("ERRORE: Impossibile aprire il Db!"));
    }
    return true;
}

bool Tavenor::isOpenDatabase(const QString &fileName) const
{
    const QString file = QFileInfo(fileName).canonicalFilePath();
    const QString database = QFileInfo(ui->leDbName->text()).canonicalFilePath();
    if (file.isEmpty() || database.isEmpty() || !db->isOpen()) {
        return false;
    }
    const QStringList own = {database, database + QLatin1String("-journal"),
                             database + QLatin1String("-wal"), database + QLatin1String("-shm")};
    return own.contains(file);
}

void Tavenor::emptyPages()
{
    // A page that is open for what was there before leads nowhere now.
    clearInputPage();
    editing = false;
    clearCalculator();
    ui->stPages->setCurrentIndex(RecordsPage);
    clearRecordView();
    clearRecordList();
    // Conditions are about tables that may have the same names elsewhere.
    forgetFilters();
    ui->lbViewInfo->clear();
    ui->lbListIcon->clear();
    ui->lbToolbar->clear();
    // So does the place to go back to.
    ui->pbReturn->hide();
}

void Tavenor::setDatabase(bool skipLock)
{
    if (!skipLock && (opensReadOnly || !WorkingFiles::takeLock())) {
        setReadOnly(true);
    }
    updateCommands();
    rebuildTableList();
    showFirstTable();
    if (!db->isOpen()) {
        return;
    }
    // Deliberate: the table list was read before these exist, so a new database does not
    // list them until the list is read again.
    if (!readOnly) {
        createReservedTables();
    }
    if (allTables.size() > 1 && !currentTable.isEmpty()) {
        changeTable(currentTable);
    }
    rebuildFilterButtons();
}

void Tavenor::showFirstTable()
{
    currentTable = firstOrdinaryTable();
    currentId = 0;
    ui->lbListName->setText(Names::tableDisplayName(currentTable));
    markCurrentTable();
    explainEmptyList(false);
}

void Tavenor::setReadOnly(bool on)
{
    readOnly = on;
    if (on) {
        opensReadOnly = true;
        db->setReadOnly(true);
        setWindowTitle(QStringLiteral("DB Administration Tool - READONLY"));
    }
    updateCommands();
}

void Tavenor::createReservedTables()
{
    db->inOneStep([this] {
        createSettingsTable();
        createFiltersTable();
        createSubTablesConfigsTable();
        return true;
    });
}

void Tavenor::createSettingsTable()
{
    createIfMissing(Markers::SettingsTable, ReservedTables::settingsColumns());
}

void Tavenor::createFiltersTable()
{
    createIfMissing(Markers::FiltersTable, ReservedTables::filtersColumns());
}

void Tavenor::createSubTablesConfigsTable()
{
    createIfMissing(Markers::SubTablesConfigsTable, ReservedTables::subTablesConfigsColumns());
}

void Tavenor::createIfMissing(const QString &name, const ColumnDefinitions &columns)
{
    QString error;
    const bool exists = db->tableExists(name, &error);
    if (!error.isEmpty()) {
        warn(SchemaMessages::createFailed(name, error));
    } else if (!exists) {
        createTableChecked(name, columns);
    }
}

bool Tavenor::createTableChecked(const QString &name, const ColumnDefinitions &columns)
{
    if (db->tableExists(name)) {
        warnNameTaken(name);
        return false;
    }
    return db->createTable(name, columns);
}

void Tavenor::warnNameTaken(const QString &name)
{
    warn(QString::asprintf("ERRORE: Il nome '%s' è già stato usato per una tabella.\n",
                           name.toUtf8().constData()));
}
