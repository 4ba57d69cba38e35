// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// Makes the sample collection in a folder.
#include "samples/SampleCollection.h"

#include "model/markers.h"
#include "model/values.h"
#include "samples/attachedfiles.h"
#include "samples/placing.h"
#include "samples/recordcomposer.h"
#include "samples/sampledata.h"
#include "storage/DataBase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>

/// The linker leaves a static library's resources out unless somebody asks for them; Qt wants
/// the request outside any namespace.
static void takeInBuiltInData()
{
    Q_INIT_RESOURCE(data);
}

namespace
{

bool insert(DataBase &database, const QString &table, FieldPairs values)
{
    for (FieldPair &pair : values) {
        pair.second = Values::quotesDoubled(pair.second);
    }
    return database.insertWhole(table, false, 0, values) >= 1;
}

bool fill(DataBase &database, const QVector<SampleTable> &tables)
{
    return std::all_of(tables.begin(), tables.end(), [&database](const SampleTable &table) {
        return database.createTable(table.name, table.columns) &&
               std::all_of(
                   table.records.begin(), table.records.end(),
                   [&](const FieldPairs &values) { return insert(database, table.name, values); });
    });
}

} // namespace

SampleCollection::SampleCollection(const QString &source)
    : source(source)
{
    if (source.isEmpty()) {
        takeInBuiltInData();
        this->source = QStringLiteral(":/samples");
    }
}

QString SampleCollection::databasePath(const QString &folder)
{
    return QDir::cleanPath(QDir(folder).absoluteFilePath(QStringLiteral("biblioteca.db")));
}

SampleCollection::Outcome SampleCollection::makeIn(const QString &folder)
{
    const QFileInfo database(databasePath(folder));
    if (database.exists() || database.isSymLink()) {
        return Outcome::AlreadyThere;
    }
    complaint.clear();
    if (!QDir().mkpath(folder)) {
        complain(QStringLiteral("Impossibile creare la cartella %1").arg(folder));
        return Outcome::Failed;
    }
    // Inside the folder, because only a move on the same disk is done at once.
    const QTemporaryDir workshop(
        QDir(folder).absoluteFilePath(QStringLiteral(".biblioteca-XXXXXX")));
    if (!workshop.isValid()) {
        complain(QStringLiteral("Impossibile scrivere in %1").arg(folder));
        return Outcome::Failed;
    }
    const bool made =
        build(workshop.path()) && place(workshop.path(), folder) && rememberDatabase(folder);
    return made ? Outcome::Made : Outcome::Failed;
}

bool SampleCollection::build(const QString &folder)
{
    SampleData data(source);
    if (!data.read()) {
        return complain(data.problem());
    }
    RecordComposer records(data);
    if (!records.compose()) {
        return complain(records.problem());
    }
    const QString problem = AttachedFiles::make(folder, data);
    if (!problem.isEmpty()) {
        return complain(problem);
    }
    DataBase database;
    return (database.openDatabase(databasePath(folder)) &&
            database.inOneStep([&] { return fill(database, records.tables()); })) ||
           complain(QStringLiteral("Impossibile creare il database"));
}

bool SampleCollection::place(const QString &from, const QString &folder)
{
    for (const QString &name :
         {QString(Markers::AttachmentsFolder), QString(Markers::IconsFolder)}) {
        const QString target = QDir(folder).absoluteFilePath(name);
        if (!QDir().mkpath(target) ||
            !Placing::moveContents(QDir(from).absoluteFilePath(name), target)) {
            return complain(QStringLiteral("Impossibile scrivere in %1").arg(target));
        }
    }
    // The database last: where it stands, everything that it names stands too.
    return QFile::rename(databasePath(from), databasePath(folder)) ||
           complain(QStringLiteral("Impossibile scrivere %1").arg(databasePath(folder)));
}

bool SampleCollection::rememberDatabase(const QString &folder)
{
    QFile file(QDir(folder).absoluteFilePath(QStringLiteral("lastDb.dat")));
    if (file.exists() && file.size() > 0) {
        return true;
    }
    // The program reads the path in the system's own encoding.
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream stream(&file);
        stream << databasePath(folder);
        stream.flush();
        if (stream.status() == QTextStream::Ok && file.flush()) {
            return true;
        }
    }
    return complain(QStringLiteral("Impossibile scrivere %1").arg(file.fileName()));
}

bool SampleCollection::complain(const QString &text)
{
    complaint = text;
    return false;
}
