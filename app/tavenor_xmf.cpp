// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: export and import of records in Export Manager Files.
#include "app/Tavenor.h"

#include "app/databasepath.h"
#include "app/recordimport.h"
#include "app/tavenor_progress.h"
#include "exchange/wholefile.h"
#include "model/markers.h"
#include "storage/RowPass.h"
#include "ui_Tavenor.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>

namespace
{

const QString ExportTitle = QStringLiteral("Esportazione ");
// Deliberate: the exports of one record speak of an import.
const QString SingleExportTitle = QStringLiteral("Importazione ");
const QString ImportText = QStringLiteral("Importazione ");
const QString ImportTitle = QStringLiteral("Elaborazione");

// No table is called so; the name of a file that is none of ours may be any length.
constexpr int LongestShownName = 1000;

QString asked(QWidget *parent, const QString &folder, const QString &table)
{
    QDir().mkpath(folder);
    const QString name =
        DatabasePath::canBeFileName(table) ? table + QLatin1String(".xmf") : QString();
    return QFileDialog::getSaveFileName(parent, Tavenor::tr("Save File"), folder + name,
                                        Tavenor::tr("Export Manager File (*.xmf)"));
}

QStringList namesOf(const FieldPairs &record)
{
    QStringList names;
    for (const FieldPair &pair : record) {
        names.append(pair.first);
    }
    return names;
}

bool hasNames(const FieldPairs &record, const QStringList &names)
{
    const auto isNamed = [](const FieldPair &pair, const QString &name) {
        return pair.first == name;
    };
    return std::equal(record.begin(), record.end(), names.begin(), names.end(), isNamed);
}

/// The number of separators whose names and values were read before the line's last pair.
int lastPair(int separators)
{
    return qMax((separators - 1) / 2 * 2, 0);
}

} // namespace

void Tavenor::connectXmf()
{
    connect(ui->actionExport, &QAction::triggered, this, &Tavenor::exportToFile);
    connect(ui->actionExport_Selected_Record_To_File, &QAction::triggered, this,
            &Tavenor::exportSingleToFile);
    connect(ui->actionAutoExportAll, &QAction::triggered, this, &Tavenor::autoExportAll);
    connect(ui->actionImport_From_File_Export_Manager_File, &QAction::triggered, this,
            &Tavenor::importFromFile);
}

void Tavenor::exportToFile()
{
    if (!hasCurrentTable()) {
        return;
    }
    // Deliberate: a cancelled dialog gives the empty name, which cannot be written.
    exportTable(asked(this, databaseFolder + Markers::ExportsFolder, currentTable), currentTable);
}

void Tavenor::exportSingleToFile()
{
    if (!hasCurrentTable()) {
        return;
    }
    exportingSingleToFile(asked(this, databaseFolder + Markers::ExportsFolder, currentTable),
                          currentTable, currentId);
}

void Tavenor::autoExportAll()
{
    if (!hasDatabase()) {
        return;
    }
    const QString folder = databaseFolder + Markers::ExportsFolder;
    QDir().mkpath(folder);
    for (const QString &table : tablesNow()) {
        const QString fileName =
            QString::asprintf("%s/%s.xmf", folder.toUtf8().constData(), table.toUtf8().constData());
        exportTable(DatabasePath::canBeFileName(table) ? fileName : QString(), table);
    }
    inform(QStringLiteral("Esportazione Completata!"));
}

void Tavenor::writeFile(const QString &fileName, const ProgressTexts &texts, const QString &failure,
                        const std::function<bool(QTextStream &)> &write)
{
    bool isWritten = false;
    {
        WholeFile file(isOpenDatabase(fileName) ? QString() : fileName);
        if (file.isOpen()) {
            const Progress progress(*this, texts.title, texts.text);
            isWritten = write(file.stream()) && file.commit();
        }
    }
    if (!isWritten) {
        warn(failure);
    }
}

void Tavenor::writeRecords(const QString &fileName, const ProgressTexts &texts,
                           const std::function<bool(QTextStream &)> &write)
{
    // What the dialog says is set also where it is never shown.
    prepareProgress(texts.title, texts.text);
    writeFile(fileName, texts, QStringLiteral("ERRORE: Impossibile scrivere sul file!"), write);
}

void Tavenor::exportTable(const QString &fileName, const QString &tableName)
{
    writeRecords(fileName, {ExportTitle, ExportTitle + tableName}, [&](QTextStream &stream) {
        const QStringList columns = db->fieldNames(tableName);
        if (columns.isEmpty()) {
            // A file of empty lines must not take the place of an older one.
            return false;
        }
        const qint64 total = qint64(columns.size()) * RowPass::count(tableName);
        XmfFile::Writer writer(stream, tableName, columns);
        RowPass rows(tableName);
        for (qint64 done = columns.size() - 1; rows.next(); done += columns.size()) {
            updateValueProgress(done, total);
            for (int column = 0; column < columns.size(); ++column) {
                writer.add(rows.value(column).toString());
            }
            writer.endLine();
        }
        return !rows.failed();
    });
}

void Tavenor::exportingSingleToFile(QString fileName, QString tableName, int Id)
{
    writeRecords(fileName, {SingleExportTitle, ExportTitle + tableName}, [&](QTextStream &stream) {
        const QStringList columns = db->fieldNames(tableName);
        if (columns.isEmpty()) {
            // A file of empty lines must not take the place of an older one.
            return false;
        }
        // Deliberate: the total is that of the whole table, so the bar stays low.
        const qint64 total = qint64(columns.size()) * RowPass::count(tableName);
        XmfFile::Writer writer(stream, tableName, columns);
        RowPass rows(tableName, Id);
        if (rows.next()) {
            for (int column = 0; column < columns.size(); ++column) {
                updateValueProgress(column, total);
                writer.add(rows.value(column).toString());
            }
            writer.endWithoutLine();
        }
        return !rows.failed();
    });
}

void Tavenor::importFromFile()
{
    if (!hasDatabase()) {
        return;
    }
    const QString folder = databaseFolder + Markers::ExportsFolder;
    QDir().mkpath(folder);
    const QStringList files =
        QFileDialog::getOpenFileNames(this, tr("Select File"), folder, tr("xmf (*.xmf)"));
    importFiles(files);
}

void Tavenor::importFiles(const QStringList &fileNames)
{
    for (const QString &file : fileNames) {
        importFile(file);
    }
}

bool Tavenor::canBeImported(const QString &fileName) const
{
    // A pipe would be waited for, and a device may never end.
    return QFileInfo(fileName).isFile() && !isOpenDatabase(fileName);
}

void Tavenor::importFile(const QString &fileName)
{
    // Records that are there already are left out without a word.
    const QScopedValueRollback<bool> silence(reportInsertErrors, false);
    QFile file(fileName);
    if (!canBeImported(fileName) || !file.open(QIODevice::ReadOnly)) {
        warn(QStringLiteral("ERRORE: Impossibile aprire il file!"));
        return;
    }
    const qint64 total = XmfFile::countSeparators(file);
    file.seek(0);
    QTextStream stream(&file);
    XmfFile::Reader reader(stream);
    const QString table = reader.table();
    const QString text = ImportText + table.left(LongestShownName);
    prepareProgress(ImportTitle, text);
    QString error;
    const bool exists = db->tableExists(table, &error);
    if (!error.isEmpty()) {
        warnUnreadable(table, error);
        return;
    }
    if (!exists) {
        warn(QStringLiteral("ERRORE: La Tabella non esiste!"));
        return;
    }
    const Progress progress(*this, ImportTitle, text);
    if (!importRecords(reader, total)) {
        warn(QStringLiteral("ERRORE: Tabella Incompatibile!"));
    }
    showChanged(table);
}

bool Tavenor::importRecords(XmfFile::Reader &reader, qint64 total)
{
    const QString table = reader.table();
    QString error;
    const QStringList columns = db->fieldNames(table, &error);
    if (!error.isEmpty()) {
        warnUnreadable(table, error);
        return true;
    }
    RecordImport import(*db, table, columns, [&](const FieldPairs &record) {
        if (addRecord(table, record, true) > 0) {
            return RecordImport::Outcome::Kept;
        }
        QString failure;
        // One that is there already has not failed.
        const bool isThere = recordExists(table, record, true, &failure);
        if (!failure.isEmpty()) {
            return RecordImport::Outcome::Unreadable;
        }
        return isThere ? RecordImport::Outcome::Kept : RecordImport::Outcome::Refused;
    });
    QStringList proven;
    bool fits = true;
    for (qint64 done = 0; fits && !import.hasStopped() && reader.next();) {
        const int last = lastPair(reader.separators());
        updateValueProgress(done + last, total);
        done += last + 2;
        const FieldPairs &record = reader.record();
        if (proven.isEmpty() || !hasNames(record, proven)) {
            proven = namesOf(record);
            fits = proven == columns;
        }
        if (fits) {
            import.add(record);
        }
    }
    import.finish();
    return fits;
}
