// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Main window: export of records as text for people to read.
#include "app/Tavenor.h"

#include "app/referencetexts.h"
#include "exchange/readabletext.h"
#include "model/markers.h"
#include "storage/RowPass.h"
#include "ui_Tavenor.h"

#include <QDir>
#include <QFileDialog>

#include <algorithm>

namespace
{

// Deliberate: the title speaks of an import, and the text another language.
const QString Title = QStringLiteral("Importazione ");
const QString Text = QStringLiteral("Exporting ");

/// How the values of a table's columns read, the texts of referenced records read once.
class ReadableValues
{
public:
    explicit ReadableValues(const QStringList &columns)
    {
        for (const QString &column : columns) {
            // Once one is known to fail, others would only be waited for.
            const bool refers = Columns::isReference(column) && !failed();
            references.append(refers);
            texts.append(refers ? ReferenceTexts::read(Columns::reference(column))
                                : ReferenceTexts());
        }
    }

    bool failed() const
    {
        return std::any_of(texts.begin(), texts.end(),
                           [](const ReferenceTexts &read) { return read.failed(); });
    }

    QString text(int column, const QVariant &value) const
    {
        return references.at(column) ? texts.at(column).textOr(value, missing) : value.toString();
    }

private:
    QVector<bool> references;
    QVector<ReferenceTexts> texts;
    const QString missing = ReadableText::missingText();
};

} // namespace

void Tavenor::connectReadable()
{
    connect(ui->actionExport_Selected_Record_To_File_txt, &QAction::triggered, this,
            &Tavenor::exportSingleToFileTxt);
    connect(ui->actionExport_To_File, &QAction::triggered, this,
            &Tavenor::exportToFileHumanReading);
}

QString Tavenor::askReadableFile()
{
    const QString folder = databaseFolder + Markers::ReadableFolder;
    QDir().mkpath(folder);
    return QFileDialog::getSaveFileName(this, tr("Save File"), folder, tr("txt (*.txt)"));
}

void Tavenor::exportSingleToFileTxt()
{
    if (hasCurrentTable()) {
        exportingSingleToFileHumanReading(askReadableFile(), currentTable, currentId);
    }
}

void Tavenor::exportToFileHumanReading()
{
    if (!hasCurrentTable()) {
        return;
    }
    const QString table = currentTable;
    writeRecords(askReadableFile(), {Title, Text + table}, [&](QTextStream &stream) {
        const QStringList columns = db->fieldNames(table);
        const ReadableValues values(columns);
        if (columns.isEmpty() || values.failed()) {
            // A file of empty lines must not take the place of an older one.
            return false;
        }
        const qint64 total = qint64(columns.size()) * RowPass::count(table);
        ReadableText::Writer writer(stream, columns);
        RowPass rows(table);
        for (qint64 done = columns.size() - 1; rows.next(); done += columns.size()) {
            updateValueProgress(done, total);
            for (int column = 0; column < columns.size(); ++column) {
                writer.addCell(values.text(column, rows.value(column)));
            }
            writer.endRecord();
        }
        return !rows.failed();
    });
}

void Tavenor::exportingSingleToFileHumanReading(QString fileName, QString selectedTable, int Id)
{
    writeRecords(fileName, {Title, Text + selectedTable}, [&](QTextStream &stream) {
        const QStringList columns = db->fieldNames(selectedTable);
        if (columns.isEmpty()) {
            // A file of empty lines must not take the place of an older one.
            return false;
        }
        const qint64 total = qint64(columns.size()) * RowPass::count(selectedTable);
        ReadableText::Writer writer(stream, columns);
        RowPass rows(selectedTable, Id);
        if (rows.next()) {
            const ReadableValues values(columns);
            if (values.failed()) {
                return false;
            }
            for (int column = 0; column < columns.size(); ++column) {
                // Deliberate: the total is that of the whole table, so the bar stays low.
                updateValueProgress(column, total);
                writer.addLine(values.text(column, rows.value(column)));
            }
        }
        return !rows.failed();
    });
}
