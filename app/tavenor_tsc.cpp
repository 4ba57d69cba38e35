// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: export and import of table structures.
#include "app/Tavenor.h"

#include "app/databasepath.h"
#include "app/tavenor_progress.h"
#include "model/markers.h"
#include "model/names.h"
#include "model/sqlnames.h"
#include "storage/reservedtables.h"
#include "storage/RowPass.h"
#include "storage/schemamessages.h"
#include "ui_Tavenor.h"
#include "widgets/chooseNameForm.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>

namespace
{

const QString ExportTitle = QStringLiteral("Esportazione ");
const QString ImportTitle = QStringLiteral("Elaborazione");
const QString ImportText = QStringLiteral("Importazione Struttura ");
const QString Suffix = QStringLiteral(".tsc");

/// The name of the table that a structure file is for.
QString baseName(const QString &fileName)
{
    const QString name = DatabasePath::fileName(fileName);
    const int suffix = name.indexOf(Suffix);
    return suffix < 0 ? name : name.left(suffix);
}

/// Finds the stored path of the table's icon, empty when it has none; false when that could not
/// be read.
bool readIconPath(const QString &table, QString *path)
{
    RowPass rows(Markers::SettingsTable,
                 {ReservedTables::Settings::TableName, ReservedTables::Settings::IconPath});
    while (rows.next()) {
        if (rows.value(0).toString() == table) {
            *path = rows.value(1).toString();
            return true;
        }
    }
    return !rows.failed() || rows.isMissing();
}

} // namespace

void Tavenor::connectTsc()
{
    connect(ui->actionExport_Selected_Tables_Structure, &QAction::triggered, this,
            &Tavenor::exportSelectedStructure);
    connect(ui->actionExport_All_Tables_Structures, &QAction::triggered, this,
            &Tavenor::autoExportAllStructures);
    connect(ui->actionImport_Table_Structure, &QAction::triggered, this,
            &Tavenor::importTableStructure);
}

void Tavenor::exportSelectedStructure()
{
    if (hasCurrentTable()) {
        exportStructure(currentTable, db->fieldNames(currentTable));
    }
}

void Tavenor::autoExportAllStructures()
{
    if (!hasDatabase()) {
        return;
    }
    for (const QString &table : tablesNow()) {
        if (!Names::isReservedTable(table)) {
            exportStructure(table, db->fieldNames(table));
        }
    }
}

void Tavenor::exportStructure(const QString &tableName, const QStringList &columnNames)
{
    const QString folder = databaseFolder + Markers::ExportsFolder;
    QDir().mkpath(folder);
    const QString fileName =
        DatabasePath::canBeFileName(tableName) ? folder + tableName + Suffix : QString();
    const ProgressTexts texts = {ExportTitle, ExportTitle + tableName};
    const auto failure = QStringLiteral("ERRORE: Impossibile esportare la Struttura Tabella!");
    writeFile(fileName, texts, failure, [&](QTextStream &stream) {
        QString iconPath;
        const bool isRead = readIconPath(tableName, &iconPath);
        TscFile::write(stream, iconPath, columnNames,
                       [this](int done, int total) { updateProgress(done, total); });
        // Every table has columns; without any it could not be read.
        return isRead && !columnNames.isEmpty();
    });
}

void Tavenor::importTableStructure()
{
    if (!hasDatabase()) {
        return;
    }
    const QString folder = databaseFolder + Markers::ExportsFolder;
    QDir().mkpath(folder);
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Select File"), folder, tr("tsc (*.tsc)"));
    importStructures(files);
}

void Tavenor::importStructures(const QStringList &fileNames)
{
    if (fileNames.size() == 1) {
        structureFile = fileNames.first();
        askName(baseName(structureFile), &Tavenor::waitingForTableStructureName);
        return;
    }
    for (const QString &file : fileNames) {
        importStructure(file, baseName(file));
    }
}

void Tavenor::waitingForTableStructureName()
{
    importStructure(structureFile, nameForm->getName());
}

void Tavenor::importStructure(const QString &fileName, const QString &tableName)
{
    const auto cannotOpen = QStringLiteral("ERRORE: Impossibile aprire il file!");
    const QString name = SqlNames::withoutBlanks(tableName);
    QFile file(fileName);
    if (!canBeImported(fileName) || !file.open(QIODevice::ReadOnly)) {
        warn(cannotOpen);
        return;
    }
    QString error;
    const bool exists = db->tableExists(name, &error);
    if (!error.isEmpty()) {
        warn(SchemaMessages::createFailed(name, error));
        return;
    }
    if (exists) {
        warn(QStringLiteral("ERRORE: La Tabella è già presente nel Db!"));
        return;
    }
    Progress progress(*this, ImportTitle, ImportText + name);
    QTextStream stream(&file);
    TscFile::Structure structure;
    if (!TscFile::read(stream, &structure,
                       [this](int done, int total) { updateProgress(done, total); })) {
        warn(cannotOpen);
        return;
    }
    if (!makeTable(name, structure)) {
        // Deliberate: a failed import leaves its window up.
        progress.leaveUp();
        return;
    }
    addToTableList(name, !name.contains(Markers::HiddenTable));
    changeToUsersPage();
    showCurrentRecord();
}

bool Tavenor::makeTable(const QString &name, const TscFile::Structure &structure)
{
    QString error;
    const QString existing = existingTable(name, &error);
    if (!error.isEmpty()) {
        warn(SchemaMessages::createFailed(name, error));
        return false;
    }
    if (existing != name) {
        warnNameTaken(name);
        return false;
    }
    if (SqlNames::isNameOfReservedTable(name)) {
        warn(SchemaMessages::createFailed(name, SqlNames::programsWord(name)));
        return false;
    }
    bool isMade = false;
    db->inOneStep([&] {
        isMade = createTableChecked(name, structure.columns);
        if (isMade) {
            addRecord(Markers::SettingsTable, settingsRow(name, structure.iconPath), false);
        }
        return isMade;
    });
    return isMade;
}
